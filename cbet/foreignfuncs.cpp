#include "cbet/foreignfuncs.h"

#include <map>
#include <unordered_set>
#include <utility>

#include "base/files.h"
#include "cbet/engine.h"
#include "cbet/entryfuncs.h"
#include "cbet/functions.h"
#include "cbet/predicates.h"
#include "model/backvar.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "store/records.h"

namespace {

/* What the entries of one module reach inside it, as the engine goes there. */
struct Reach {
    bool isKnown = false;
    std::unordered_set<NodePlace, PlaceHash> seen;
    std::unordered_set<NodePlace, PlaceHash> functions; /* types whose normal functions are written */
};

/* By module and bit of the entry mask. */
std::map<std::pair<ModRec *, int>, Reach> reaches;
std::unordered_set<NodePlace, PlaceHash> declared;

NodePlace placeOf(const AsnType *type) {
    return {type->baseModule, type->baseRecord};
}

void reachType(AsnType *type, bool withBody, Reach *reach);

void reachPart(AsnType *part, Reach *reach) {
    if (!isFuncGeneratedInThisModuleFile(part) || cIsFrameType(part) || isTypeExtensionmarker(part) ||
        testTypeOption(part, OPT_SKIPPED))
        return;
    if (isDefinedType(part))
        reachType(part, true, reach);
    else if (cIsDefinedBaseType(part))
        forDefinedBaseType(part, [reach](AsnType *base) { reachType(base, true, reach); });
    else if (typeHasBody(part))
        forEachTypeCompOrElem(part, [reach](AsnType *, AsnType *inner, int) { reachPart(inner, reach); });
}

/* Without `withBody` only the types that it refers to have functions. */
void reachType(AsnType *type, bool withBody, Reach *reach) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    if (!isFuncGeneratedInThisModuleFile(type))
        return;
    if (isSynonymType(type)) {
        forSynonymType(type, [reach](AsnType *base) { reachPart(base, reach); });
        return;
    }
    if (withBody || !typeHasBody(type))
        reach->functions.insert(placeOf(type));
    if (reach->seen.insert(placeOf(type)).second)
        forEachTypeCompOrElem(type, [reach](AsnType *, AsnType *part, int) { reachPart(part, reach); });
}

const Reach &reachOf(AsnModule *module, int entryBit) {
    Reach &reach = reaches[{module->modRec, entryBit}];
    if (std::exchange(reach.isKnown, true))
        return reach;
    forEachEntryVisType(module, [&](AsnType *type, int) {
        if (isEntryTypeFunction(type, entryBit) && !cIsFrameType(type) &&
            !testTypeOption(type, OPT_SKIPPED))
            reachType(type, isSeparateNormalFunction(type), &reach);
    });
    return reach;
}

bool isDeclaredByItsModule(AsnType *definition) {
    AsnModule *module = getModuleOfType(definition);
    const int generate = getGlobalOptions(module)->generate;
    if (generate == GENERATE_VISIBLES || generate == GENERATE_BOTH)
        return true;
    return generate == GENERATE_ENTRIES &&
           reachOf(module, glbInfo->entryBit).functions.contains(placeOf(definition));
}

} // namespace

void cStartForeignFunctions() {
    declared.clear();
}

void cDeclareForeignFunction(AsnType *type) {
    if (isFuncGeneratedInThisModuleFile(type) || glbInfo->extFile == 0 ||
        !declared.insert(placeOf(type)).second)
        return;
    bool isKnown = false;
    forDefBaseTypeDefinedInAnotherModule(type, [&isKnown](AsnType *, AsnType *definition) {
        isKnown = isDeclaredByItsModule(definition);
    });
    if (isKnown)
        return;
    endlToF(glbInfo->extFile);
    cBaseFunctionProto(glbInfo->extFile, glbInfo->funcPrefix, glbInfo->gIndex, glbInfo->funcArgs, type);
}
