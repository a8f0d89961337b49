#include "cbet/engine.h"

#include <algorithm>

#include "base/files.h"
#include "cbet/embedding.h"
#include "cbet/entryfuncs.h"
#include "cbet/foreignfuncs.h"
#include "cbet/functions.h"
#include "cbet/predicates.h"
#include "cbet/skipped.h"
#include "cbet/vars.h"
#include "model/backvar.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"
#include "store/records.h"

const TypeFuncInfo *glbInfo = nullptr;
EmbeddingHooks embeddingHooks;

void cInitTypeFuncInfo(TypeFuncInfo *info) {
    *info = TypeFuncInfo();
}

void callTypeFunc(TypeFunc func, AsnType *type) {
    if (func != nullptr)
        func(type, glbInfo);
}

bool isConstructingKind() {
    return glbInfo->funcKind == decodingKind || glbInfo->funcKind == askingKind;
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

namespace {

void printAllTEDs(AsnType *type, int place) {
    if (embeddingHooks.printTypeEmbeddingOptions != nullptr)
        embeddingHooks.printTypeEmbeddingOptions(glbInfo->outFile, type, place);
}

void printOwnTEDs(AsnType *type, int place) {
    if (embeddingHooks.printLocalTypeEmbeddingOptions != nullptr)
        embeddingHooks.printLocalTypeEmbeddingOptions(glbInfo->outFile, type, place);
}

} // namespace

void printCompTEDs(AsnType *type, int place) {
    if (cIsDefinedBaseType(type) && (isStructuredType(type) || isListType(type)))
        printOwnTEDs(type, place);
    else
        printAllTEDs(type, place);
}

void printLocalTEDs(AsnType *type, int place) {
    if (isDefinedType(type))
        printOwnTEDs(type, place);
    else
        forDefinedBaseType(type, [&](AsnType *base) { printOwnTEDs(base, place); });
}

/* --- referred types --- */

namespace {

/* The body of the synonym's base goes into the entry function, so the base itself gets no function
   on its account. */
bool glbReferringTypeIsNonVisibleMorlaEntry = false;

constexpr int MORLA_ENTRY_BIT = 6;

void genNormalFuncForReferredType(AsnType *type) {
    genNormalFunc(type, true);
}

bool wantsFunc(AsnType *type) {
    const bool isDone = cIsDefinedBaseType(type) && getBaseTypeStamp(type) >= stampGIP;
    return isFuncGeneratedInThisModuleFile(type) && !isDone && !cIsFrameType(type) &&
           !isTypeExtensionmarker(type);
}

/* A type on the way down carries stampGIP and isn't entered again, so recursive types end here. */
void funcForReferredTypes(AsnType *, AsnType *comp, int) {
    static int depth = 0;
    NestingGuard guard(&depth, comp->posModule);
    if (!wantsFunc(comp))
        return;
    handleReferredIgnorableType(comp);
    if (testTypeOption(comp, OPT_SKIPPED))
        return;
    pushPath();
    if (cIsDefinedBaseType(comp)) {
        if (isDefinedType(comp))
            genNormalFuncForReferredType(comp);
        else
            forDefinedBaseType(comp, genNormalFuncForReferredType);
    } else if (typeHasBody(comp)) {
        forEachTypeCompOrElem(comp, funcForReferredTypes);
    }
    popPath();
}

void funcForReferredBaseType(AsnType *type) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    if (isSynonymType(type)) {
        forSynonymType(type, funcForReferredBaseType);
    } else if (!glbReferringTypeIsNonVisibleMorlaEntry) {
        funcForReferredTypes(nullptr, type, 0);
    } else if (typeHasBody(type)) {
        forEachTypeCompOrElem(type, funcForReferredTypes);
    }
}

bool isNonVisibleMorlaEntry(AsnType *type) {
    AsnModule *module = getModuleOfType(type);
    return !isVisibleType(type) && isMorlaApplication(module) && getNrOfEntryTypes(module) > 0 &&
           ((type->entryFlags >> MORLA_ENTRY_BIT) & 1) != 0;
}

void genReferredTypes(AsnType *type) {
    if (!isSynonymType(type)) {
        forEachTypeCompOrElem(type, funcForReferredTypes);
        return;
    }
    bool saved = glbReferringTypeIsNonVisibleMorlaEntry;
    glbReferringTypeIsNonVisibleMorlaEntry = isNonVisibleMorlaEntry(type);
    forSynonymType(type, funcForReferredBaseType);
    glbReferringTypeIsNonVisibleMorlaEntry = saved;
}

/* --- normal functions --- */

void writeNormalFunc(AsnType *type) {
    int file = glbInfo->outFile;
    callTypeFunc(glbInfo->beforeBodyFunc, type);
    endlToF(glbInfo->extFile);
    endlToF(file);
    cFunctionProto(glbInfo->extFile, glbInfo->funcPrefix, glbInfo->gIndex, glbInfo->funcArgs, type);
    cFunctionDef(file, glbInfo->funcPrefix, glbInfo->gIndex, glbInfo->funcArgs, type);
    cOpenBrace(file);
    printLocalTEDs(type, glbInfo->tedBefore);
    funcForStructuredTypeAndCompsOrElems(type);
    printLocalTEDs(type, glbInfo->tedAfter);
    cCloseBrace(file);
    callTypeFunc(glbInfo->afterBodyFunc, type);
}

} // namespace

void genNormalFunc(AsnType *type, bool generateBody) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    if (!isFuncGeneratedInThisModuleFile(type))
        return;
    bool synonym = isSynonymType(type);
    const int before = getBaseTypeStamp(type);
    if (typeHasBody(type) || synonym) {
        bool first = getTypeStamp(type) < stampGHD;
        if (!(synonym && first))
            setBaseTypeStamp(type, std::max(before, stampGIP));
        if (first)
            genReferredTypes(type);
    }
    if (!synonym) {
        taviUseTypeNode(type);
        if (generateBody && typeHasBody(type))
            writeNormalFunc(type);
        else
            callTypeFunc(glbInfo->noBodyFunc, type);
        if (generateBody && cIsIgnorable(type))
            genFuncForIgnorable(type);
    }
    /* What was done on another's account stays done. */
    setBaseTypeStamp(type, std::max(before, generateBody ? stampGAD : stampGHD));
}

/* --- the functions of a module --- */

namespace {

void normalFuncOfDefinition(AsnType *type, bool generateBody) {
    if (testTypeOption(type, OPT_SKIPPED)) {
        handleReferredIgnorableType(type);
        resetPath();
        genFuncForIgnorable(type);
    } else {
        resetPath();
        pushPath();
        genNormalFunc(type, generateBody);
    }
}

void entryFuncOfDefinition(AsnType *type) {
    resetPath();
    pushPath();
    genEntryFunc(type);
}

} // namespace

void genFunc(AsnType *type, int) {
    int generate = getGlobalOptions(getModuleOfType(type))->generate;
    bool visible = isVisibleType(type);
    bool wanted = getTypeStamp(type) < stampGAD && !cIsFrameType(type);
    if ((generate == GENERATE_VISIBLES || generate == GENERATE_BOTH) && visible && wanted)
        normalFuncOfDefinition(type, true);
    if (generate != GENERATE_ENTRIES && generate != GENERATE_BOTH)
        return;
    if (!isEntryTypeFunction(type, glbInfo->entryBit))
        return;
    if ((generate == GENERATE_ENTRIES || !visible) && wanted)
        normalFuncOfDefinition(type, isSeparateNormalFunction(type));
    entryFuncOfDefinition(type);
}

void cGenerateTypeFunctions(AsnModule *module, const TypeFuncInfo *info) {
    glbInfo = info;
    cStartForeignFunctions();
    forEachEntryVisType(module, genFunc);
    resetPath();
    glbInfo = nullptr;
}
