#include "cbet/engine.h"

#include <algorithm>

#include "base/files.h"
#include "cbet/engineparts.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"
#include "store/records.h"

/* --- questions that the engine's sources share --- */

void callTypeFunc(TypeFunc func, AsnType *type, TypeFuncRun &run) {
    if (func != nullptr)
        func(type, run);
}

bool isConstructingKind(const TypeFuncRun &run) {
    return run.info.funcKind == decodingKind || run.info.funcKind == askingKind;
}

bool typeHasBody(AsnType *type) {
    return (getNrOfTypeComps(type) != 0 || isTypeExtensionmarkerComp(type)) &&
           !testTypeOption(type, OPT_SKIPPED);
}

/* What was taken over from elsewhere and has no name of its own is written where it was taken to. */
bool isFuncGeneratedInThisModuleFile(AsnType *type) {
    if (isBaseTypeInCurrentModule(type) || isInstantiatedType(type))
        return true;
    AsnType *structure = structureTakenInto(type);
    return structure != nullptr && !cIsDefinedBaseType(type) &&
           isFuncGeneratedInThisModuleFile(structure);
}

/* --- embedded text --- */

void printCompTEDs(AsnType *type, TedPlace place, TypeFuncRun &run) {
    if (cIsDefinedBaseType(type) && (isStructuredType(type) || isListType(type)))
        printLocalTypeEmbeddingOptions(run.outFile, type, place);
    else
        printTypeEmbeddingOptions(run.outFile, type, place);
}

void printLocalTEDs(AsnType *type, TedPlace place, TypeFuncRun &run) {
    if (isDefinedType(type))
        printLocalTypeEmbeddingOptions(run.outFile, type, place);
    else
        forDefinedBaseType(type, [&](AsnType *base) {
            printLocalTypeEmbeddingOptions(run.outFile, base, place);
        });
}

/* --- referred types --- */

namespace {

constexpr int MORLA_ENTRY_BIT = 6;

/* The stamp tells what this run has written, or is writing, already. */
bool wantsFunc(AsnType *type) {
    const bool isDone = cIsDefinedBaseType(type) && getBaseTypeStamp(type) >= stampGIP;
    return isFuncGeneratedInThisModuleFile(type) && !isDone && !cIsFrameType(type) &&
           !isTypeExtensionmarker(type);
}

/* A type on the way down carries stampGIP and isn't entered again, so recursive types end here. */
void genNormalFunc(AsnType *type, bool generateBody, TypeFuncRun &run);
void funcForReferredType(AsnType *type, TypeFuncRun &run);

void funcForReferredTypes(AsnType *type, TypeFuncRun &run) {
    forEachTypeCompOrElem(
        type, [&run](AsnType *, AsnType *comp, int) { funcForReferredType(comp, run); });
}

/* What a type refers to is written in front of it, however deep inside it is named. */
void funcForReferredType(AsnType *type, TypeFuncRun &run) {
    NestingGuard guard(&run.depth, type->posModule);
    if (!wantsFunc(type) || testTypeOption(type, OPT_SKIPPED))
        return;
    pushPath();
    if (cIsDefinedBaseType(type)) {
        if (isDefinedType(type))
            genNormalFunc(type, true, run);
        else
            forDefinedBaseType(type, [&run](AsnType *base) { genNormalFunc(base, true, run); });
    } else if (typeHasBody(type)) {
        funcForReferredTypes(type, run);
    }
    popPath();
}

/* With `isBodyInEntry` the body of the synonym's base goes into the entry function, so the base
   itself gets no function on its account. */
void funcForReferredBaseType(AsnType *type, bool isBodyInEntry, TypeFuncRun &run) {
    NestingGuard guard(&run.depth, type->posModule);
    if (isSynonymType(type))
        forSynonymType(
            type, [&](AsnType *base) { funcForReferredBaseType(base, isBodyInEntry, run); });
    else if (!isBodyInEntry)
        funcForReferredType(type, run);
    else if (typeHasBody(type))
        funcForReferredTypes(type, run);
}

/* Its components are variables of the application; nobody calls a function for the whole. */
bool isNonVisibleMorlaEntry(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    return !isVisibleType(type) && isMorlaApplication(module) && getNrOfEntryTypes(module) > 0 &&
           ((type->entryFlags >> MORLA_ENTRY_BIT) & 1) != 0;
}

void genReferredTypes(AsnType *type, TypeFuncRun &run) {
    if (!isSynonymType(type))
        return funcForReferredTypes(type, run);
    const bool isBodyInEntry = isNonVisibleMorlaEntry(type);
    forSynonymType(type,
                   [&](AsnType *base) { funcForReferredBaseType(base, isBodyInEntry, run); });
}

/* --- normal functions --- */

/* void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home)
   {
     ... the components
   } */
void writeNormalFunc(AsnType *type, TypeFuncRun &run) {
    putF(run.extFile, "\n");
    putF(run.outFile, "\n");
    cFunctionProto(run.extFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    cFunctionDef(run.outFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    const Block body(run.outFile);
    printLocalTEDs(type, run.info.tedBefore, run);
    funcForStructuredTypeAndCompsOrElems(type, run);
    printLocalTEDs(type, run.info.tedAfter, run);
}

/* The normal function of a type after those of the types that it refers to. Without `generateBody`
   only the latter. */
void genNormalFunc(AsnType *type, bool generateBody, TypeFuncRun &run) {
    if (!isFuncGeneratedInThisModuleFile(type))
        return;
    bool synonym = isSynonymType(type);
    const int before = getBaseTypeStamp(type);
    if (typeHasBody(type) || synonym) {
        bool first = getTypeStamp(type) < stampGHD;
        if (!(synonym && first))
            setBaseTypeStamp(type, std::max(before, stampGIP));
        if (first)
            genReferredTypes(type, run);
    }
    if (!synonym) {
        taviUseTypeNode(type);
        if (generateBody && typeHasBody(type))
            writeNormalFunc(type, run);
        else
            callTypeFunc(run.info.noBodyFunc, type, run);
    }
    /* What was done on another's account stays done. */
    setBaseTypeStamp(type, std::max(before, generateBody ? stampGAD : stampGHD));
}

/* --- the functions of a module --- */

/* Each definition begins a path of its own. */
void normalFuncOfDefinition(AsnType *type, bool generateBody, TypeFuncRun &run) {
    resetPath();
    if (testTypeOption(type, OPT_SKIPPED))
        return;
    pushPath();
    genNormalFunc(type, generateBody, run);
}

void entryFuncOfDefinition(AsnType *type, TypeFuncRun &run) {
    resetPath();
    pushPath();
    genEntryFunc(type, run);
}

/* The functions of one entry or visible type, by "GENERATE=". */
void genFunc(AsnType *type, TypeFuncRun &run) {
    int generate = getGlobalOptions(getModuleOfType(type))->generate;
    bool visible = isVisibleType(type);
    bool wanted = getTypeStamp(type) < stampGAD && !cIsFrameType(type);
    if ((generate == GENERATE_VISIBLES || generate == GENERATE_BOTH) && visible && wanted)
        normalFuncOfDefinition(type, true, run);
    if (generate != GENERATE_ENTRIES && generate != GENERATE_BOTH)
        return;
    if (!isEntryTypeFunction(type, run.info.entryBit))
        return;
    if ((generate == GENERATE_ENTRIES || !visible) && wanted)
        normalFuncOfDefinition(type, isSeparateNormalFunction(type), run);
    entryFuncOfDefinition(type, run);
}

} // namespace

void cGenerateTypeFunctions(AsnModule *module, TypeFuncRun run) {
    initStamps();
    forEachEntryVisType(module, [&run](AsnType *type, int) { genFunc(type, run); });
    resetPath();
}
