#include "cbet/homes.h"

#include <cstring>

#include "base/fatal.h"
#include "cbet/names.h"
#include "cbet/vars.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typepath.h"
#include "model/typequeries.h"

/* --- elements of the path --- */

const char *cGetSeparatorInTypePath(AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    if (father == nullptr)
        return "";
    return testTypeOption(father, OPT_POINTER) ? "->" : ".";
}

void cAddNameToPath(AsnType *comp, const char *name) {
    Text elem = Text(cGetSeparatorInTypePath(comp)) + name;
    addElemToPath(elem.c_str());
    comp->path = getPath();
    comp->pathLength = static_cast<int>(std::strlen(comp->path));
}

namespace {

/* What is reached through a list item, or as a whole marker, is not a member of a structure. */
bool standsInPath(AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    return !isTypeExtensionmarker(comp) && !(father != nullptr && getVF(father) == VF_LIST);
}

/* The text that names the component in its father's C structure. */
Text pathElement(AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    switch (getTypeCompStatus(comp)) {
    case TCS_MANDATORY:
    case TCS_OPTIONAL:
        return cMemberName(comp);
    case TCS_CHOICE: {
        bool homes = father != nullptr && testTypeOption(father, OPT_COMPS_AS_POINTERS);
        return concat(homes ? "" : "i1.", cMemberName(comp));
    }
    case TCS_MULTIPLE:
        return "elem [" + cNVarRef() + "]";
    case TCS_HEADER:
        return getDefTypeId(comp);
    default:
        fatalError(FATAL_INTERNAL, "Unable to construct a type name path.");
    }
}

} // namespace

/* --- one component, for the time of its text --- */

void addCompNameToPath(AsnType *comp) {
    if (standsInPath(comp))
        cAddNameToPath(comp, pathElement(comp).c_str());
}

void removeCompNameFromPath(AsnType *comp) {
    if (standsInPath(comp))
        removeElemFromPath();
}
