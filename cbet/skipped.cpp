#include "cbet/skipped.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/engine.h"
#include "cbet/homes.h"
#include "cbet/listsizes.h"
#include "cbet/predicates.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/bounds.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "store/records.h"

namespace {

enum IgnoreMode : int { IGNORE_BY_CALL = 0, IGNORE_BY_TRAVERSAL = 1 };
enum SkipKind : int { SKIP_IGNORE = 0, SKIP_BY_CALL = 1 };

bool traverses() {
    return glbInfo->ignoreMode == IGNORE_BY_TRAVERSAL;
}

void skipIgnoreTraverse(AsnType *type);

} // namespace

/* --- skipped types --- */

void skipType(AsnType *type) {
    switch (getTypeOptions(type)->skipKind) {
    case SKIP_IGNORE:
        skipIgnore(type);
        break;
    case SKIP_BY_CALL:
        callTypeFunc(glbInfo->skipFunc, type);
        break;
    default:
        fatalError(FATAL_INTERNAL, "Unknown SKIP option value.");
    }
}

void skipIgnore(AsnType *type) {
    if (traverses())
        skipIgnoreTraverse(type);
    else
        callTypeFunc(glbInfo->ignoreFunc, type);
}

bool cIsIgnorable(AsnType *type) {
    return (type->base.typeFlags & TYPE_IGNORABLE) != 0;
}

bool cIsSizeLimit(AsnType *type) {
    return getTypeOptions(type)->sizeLimit > 0;
}

namespace {

/* A linked list has no member for the number of elements that were passed over: a decoder reports
   more than the limit. */
bool isRefusedLimit(AsnType *type) {
    if (getVF(type) != VF_LIST)
        return false;
    sint64 low, upper, limit;
    getInt64SizeEndpoints(type, &low, &upper, &limit);
    return i64cmp(limit, upper) != 0;
}

} // namespace

bool cIsIgnoringSizeLimit(AsnType *type) {
    return cIsSizeLimit(type) && getTypeOptions(type)->sizeLimitMode == 0 && !isRefusedLimit(type);
}

/* --- the tail of a bounded list --- */

bool extraElemsVarUsed() {
    return traverses() ? glbInfo->travTestFunc == nullptr : glbInfo->extraTestFunc == nullptr;
}

namespace {

LoopFunc extraElemsLoop() {
    return traverses() ? glbInfo->travLoopFunc : glbInfo->extraLoopFunc;
}

void testIfExtraElems(AsnType *father) {
    if (extraElemsVarUsed())
        printfToF(glbInfo->outFile, "if (extraElems%d)", cVarCount(VAR_N));
    else
        callTypeFunc(traverses() ? glbInfo->travTestFunc : glbInfo->extraTestFunc, father);
}

void beginLoopExtraElems(AsnType *elem) {
    if (LoopFunc loop = extraElemsLoop())
        loop(glbInfo->outFile, elem);
    else
        wToF(glbInfo->outFile, "while (TRUE)");
}

/* if (n1 >= 9){
   reportError (ASNG_F(asncodg) AM_FAIL);
   } */
void testIfTooManyExtraElems(AsnType *father, sint64 upper) {
    if (extraElemsLoop() != nullptr)
        return;
    int file = glbInfo->outFile;
    Text counter, bound = cSizeBoundText(father, upper);
    cNVarRef(counter, nullptr, nullptr);
    printfToF(file, "if (%s >= %s)", counter.c_str(), bound.c_str());
    cOpenBrace(file);
    if (glbInfo->funcKind == decodingKind)
        cReportError(file, glbInfo->tooManyError != nullptr ? glbInfo->tooManyError : "AM_FAIL");
    else
        wToF(file, "break;\n");
    cCloseBrace(file);
}

} // namespace

/* home->nIgnored = 0;
   if (extraElems1){
   while (TRUE){
   ... the value is passed over
   home->nIgnored++;
   n1++;
   ... the test that ends the loop
   }
   } */
void ignoreTrailingListElems(AsnType *father, AsnType *elem) {
    sint64 low, upper, limit;
    getInt64SizeEndpoints(father, &low, &upper, &limit);
    if (cIsSizeLimit(father) && getTypeOptions(father)->sizeLimitMode == 0 && isRefusedLimit(father) &&
        glbInfo->funcKind == decodingKind)
        cRefuseType(father, "A linked list can't pass over elements beyond its limit; hold it in an "
                            "array.");
    if (!cIsIgnoringSizeLimit(father) || limit == upper)
        return;
    int file = glbInfo->outFile;
    Text ignored, counter;
    cHomeRef(ignored, "", false, father, ".", "nIgnored");
    printfToF(file, "%s = 0;\n", ignored.c_str());
    testIfExtraElems(father);
    cOpenBrace(file);
    beginLoopExtraElems(elem);
    cOpenBrace(file);
    testIfTooManyExtraElems(father, upper);
    skipIgnore(elem);
    printfToF(file, "%s++;\n", ignored.c_str());
    wToF(file, cNVarRef(counter, nullptr, "++;\n"));
    callTypeFunc(traverses() ? glbInfo->travCompFunc : glbInfo->extraMoreFunc, elem);
    cCloseBrace(file);
    cCloseBrace(file);
}

/* --- traversal of skipped values --- */

namespace {

/* Bits of the type's info cache. */
constexpr int CACHE_IGNORABLE_HANDLED = 7;
constexpr int CACHE_REFERRED_BEGUN = 8;

bool isMarked(AsnType *type, int bit) {
    return ((getTypeInfoCache(type)->answers >> bit) & 1u) != 0;
}

void mark(AsnType *type, int bit) {
    setTypeInfoCacheBetFlag(getTypeInfoCache(type), bit, true);
}

bool isWanted(TypeTest test, AsnType *type) {
    return test == nullptr || test(type, glbInfo);
}

/* A leaf if it weren't skipped, since the inside of a skipped value counts here. */
bool isNonSkippedLeafType(AsnType *type) {
    std::uint32_t saved = type->base.optionBits;
    type->base.optionBits &= ~optionMask(OPT_SKIPPED);
    bool leaf = isLeafType(type);
    type->base.optionBits = saved;
    return leaf;
}

void traverseComponent(AsnType *comp) {
    callTypeFunc(glbInfo->travCompFunc, comp);
    callTypeFunc(glbInfo->travCompFunc2, comp);
    skipIgnoreTraverse(comp);
    callTypeFunc(glbInfo->travCompPostFunc, comp);
}

void skipIgnoreTravComponent(AsnType *father, AsnType *comp, int) {
    if (glbInfo->travMarkerFunc == nullptr) {
        traverseComponent(comp);
        return;
    }
    if (!isWanted(glbInfo->extraLoopWanted, father))
        return;
    if (isExtensionRootComponent(father, comp))
        traverseComponent(comp);
    else if (isTypeExtensionmarker(comp))
        callTypeFunc(glbInfo->travMarkerFunc, father);
}

void skipIgnoreTravStruct(AsnType *type) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    callTypeFunc(glbInfo->extraTestFunc, type);
    forEachTypeCompOrElem(type, skipIgnoreTravComponent);
    callTypeFunc(glbInfo->travStruPostFunc, type);
}

void skipIgnoreTraverse(AsnType *type) {
    if (isNonSkippedLeafType(type))
        callTypeFunc(glbInfo->travLeafFunc, type);
    else if (!cIsDefinedBaseType(type))
        skipIgnoreTravStruct(type);
    else
        callTypeFunc(glbInfo->travDefinedFunc, type);
}

void genIgnoreTraverseFunc(AsnType *type) {
    if (!isWanted(glbInfo->ignoreWanted, type))
        return;
    callTypeFunc(glbInfo->extraMoreFunc, type);
    if (isNonSkippedLeafType(type))
        callTypeFunc(glbInfo->travLeafFunc, type);
    else
        skipIgnoreTravStruct(type);
    callTypeFunc(glbInfo->travFuncPostFunc, type);
}

} // namespace

void genFuncForIgnorable(AsnType *type) {
    if (!traverses() || !cIsIgnorable(type) || isMarked(type, CACHE_IGNORABLE_HANDLED))
        return;
    pushPath();
    genIgnoreTraverseFunc(type);
    mark(type, CACHE_IGNORABLE_HANDLED);
    popPath();
}

namespace {

void funcForReferredIgnorable(AsnType *type);

void referredIgnorableComp(AsnType *, AsnType *comp, int) {
    funcForReferredIgnorable(comp);
}
void handleReferredComp(AsnType *, AsnType *comp, int) {
    handleReferredIgnorableType(comp);
}

bool hasComponents(AsnType *type) {
    return isListType(type) || isStructuredType(type);
}

void funcForTypesReferredFromIgnDefType(AsnType *type) {
    if (isSynonymType(type))
        forSynonymType(type, handleReferredIgnorableType);
    else if (hasComponents(type))
        forEachTypeCompOrElem(type, handleReferredComp);
}

void funcForTypesReferredFromIgnorableType(AsnType *type) {
    if (isDefinedType(type))
        funcForTypesReferredFromIgnDefType(type);
    else if (cIsDefinedBaseType(type))
        forDefinedBaseType(type, funcForReferredIgnorable);
    else if (hasComponents(type))
        forEachTypeCompOrElem(type, referredIgnorableComp);
}

void funcForReferredIgnorable(AsnType *type) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    if (!isFuncGeneratedInThisModuleFile(type) || isMarked(type, CACHE_IGNORABLE_HANDLED) ||
        isMarked(type, CACHE_REFERRED_BEGUN))
        return;
    mark(type, CACHE_REFERRED_BEGUN);
    funcForTypesReferredFromIgnorableType(type);
    if (isDefinedType(type) && !isSynonymType(type))
        genFuncForIgnorable(type);
}

} // namespace

void handleReferredIgnorableType(AsnType *type) {
    if (!traverses() || isMarked(type, CACHE_IGNORABLE_HANDLED))
        return;
    if (cIsIgnorable(type))
        funcForReferredIgnorable(type);
    mark(type, CACHE_IGNORABLE_HANDLED);
}
