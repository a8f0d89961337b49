#include "cbet/engine.h"

#include <map>
#include <unordered_set>
#include <utility>

#include "base/files.h"
#include "cbet/engineparts.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "store/records.h"

namespace {

/* What the entries of one module reach inside it, as the engine goes there. */
struct Reach {
    bool isKnown = false;
    int depth = 0; /* of types within one another */
    std::unordered_set<NodePlace, PlaceHash> seen;
    std::unordered_set<NodePlace, PlaceHash> functions; /* types whose normal functions are written */
};

/* By module and bit of the entry mask. */
std::map<std::pair<ModRec *, int>, Reach> reaches;

NodePlace placeOf(const AsnType *type) {
    return {type->baseModule, type->baseRecord};
}

void reachType(AsnType *type, bool withBody, Reach *reach);

/* As funcForReferredType of the engine decides, without writing anything. */
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
    NestingGuard guard(&reach->depth, type->posModule);
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

/* Worked out once for a module and kind: trees don't change while C is written. */
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

/* By "GENERATE=" of the module that has the definition. */
bool isDeclaredByItsModule(AsnType *definition, int entryBit) {
    AsnModule *module = getModuleOfType(definition);
    const int generate = getGlobalOptions(module)->generate;
    if (generate == GENERATE_VISIBLES || generate == GENERATE_BOTH)
        return true;
    return generate == GENERATE_ENTRIES &&
           reachOf(module, entryBit).functions.contains(placeOf(definition));
}

} // namespace

void cDeclareForeignFunction(AsnType *type, TypeFuncRun &run) {
    if (isFuncGeneratedInThisModuleFile(type) || run.extFile == 0 ||
        !run.declared.insert(placeOf(type)).second)
        return;
    bool isKnown = false;
    forDefBaseTypeDefinedInAnotherModule(type, [&](AsnType *, AsnType *definition) {
        isKnown = isDeclaredByItsModule(definition, run.info.entryBit);
    });
    if (isKnown)
        return;
    putF(run.extFile, "\n");
    cBaseFunctionProto(run.extFile, run.funcPrefix.c_str(), run.info.gIndex, type);
}

/* eFoo (ASNG_F(asncodg) &home->x); */
void cCallNormalFunc(AsnType *type, TypeFuncRun &run) {
    cDeclareForeignFunction(type, run);
    cFunctionRef(run.outFile, run.funcPrefix.c_str(), run.info.gIndex, type);
}
