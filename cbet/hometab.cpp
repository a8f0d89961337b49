#include "cbet/entryfuncs.h"
#include "model/modules.h"
#include "model/typequeries.h"

bool glbGeneratingEntryFunction = false;

bool cIsHometab(AsnType *type) {
    return glbGeneratingEntryFunction && isEntryType(type) &&
           isMorlaApplication(getModuleOfType(type));
}
