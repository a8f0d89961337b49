#include "cbet/engineparts.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/homes.h"
#include "cbet/lists.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

namespace {

enum SkipKind : int { SKIP_IGNORE = 0, SKIP_BY_CALL = 1 };

} // namespace

/* --- skipped types --- */

void skipType(AsnType *type, TypeFuncRun &run) {
    switch (getTypeOptions(type)->skipKind) {
    case SKIP_IGNORE:
        callTypeFunc(run.info.ignoreFunc, type, run);
        break;
    case SKIP_BY_CALL:
        callTypeFunc(run.info.skipFunc, type, run);
        break;
    default:
        fatalError(FATAL_INTERNAL, "Unknown SKIP option value.");
    }
}

namespace {

/* Elements beyond the type's size limit are to be passed over. */
bool asksToIgnore(AsnType *type) {
    const TypeOptions *options = getTypeOptions(type);
    return options->sizeLimit > 0 && options->sizeLimitMode == 0;
}

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
    return asksToIgnore(type) && !isRefusedLimit(type);
}

/* --- the tail of a bounded list --- */

namespace {

/* if (n1 >= 9){
   reportError (ASNG_F(asncodg) AM_FAIL);
   } */
void testIfTooManyExtraElems(AsnType *father, sint64 upper, TypeFuncRun &run) {
    int file = run.outFile;
    putF(file, "if (", cNVarRef(), " >= ", cSizeBoundText(father, upper), ")");
    const Block block(file);
    if (run.info.funcKind == decodingKind)
        cReportError(file, "AM_FAIL");
    else
        putF(file, "break;\n");
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
void ignoreTrailingListElems(AsnType *father, AsnType *elem, TypeFuncRun &run) {
    sint64 low, upper, limit;
    getInt64SizeEndpoints(father, &low, &upper, &limit);
    if (asksToIgnore(father) && isRefusedLimit(father) && run.info.funcKind == decodingKind)
        cRefuseType(father, "A linked list can't pass over elements beyond its limit; hold it in an "
                            "array.");
    if (!cIsIgnoringSizeLimit(father) || limit == upper)
        return;
    int file = run.outFile;
    const Text ignored = cHomeRef(father, HOME_MEMBER) + "nIgnored";
    putF(file, ignored, " = 0;\n");
    putF(file, "if (", cExtraElemsVarRef(), ")");
    const Block extra(file);
    putF(file, "while (TRUE)");
    const Block loop(file);
    testIfTooManyExtraElems(father, upper, run);
    callTypeFunc(run.info.ignoreFunc, elem, run);
    putF(file, ignored, "++;\n");
    putF(file, cNVarRef(), "++;\n");
    callTypeFunc(run.info.extraMoreFunc, elem, run);
}
