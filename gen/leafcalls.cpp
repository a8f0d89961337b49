#include "gen/leafcalls.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/builtintypes.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/typefuncinfo.h"
#include "gen/messages.h"
#include "model/any.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

/* --- calls that kinds of function make alike --- */

bool isAnyOrOpen(AsnType *type) {
    const int mainType = getTypeMainType(type);
    return mainType == TYP_ANY || mainType == TYP_OPEN;
}

void genNoText(AsnType *, TypeFuncRun &) {}

/* extern void anyEncValue_Msg (ASNG_F(ASNCODG *asncodg) ANY *, BYTE_TYPE *);
   anyEncValue_Msg (ASNG_F(asncodg) &home->value, (BYTE_TYPE *)(&home->id)); */
void genAnyFunction(AsnType *type, TypeFuncRun &run, const char *prefix) {
    putF(run.extFile, "\n");
    cAnyFunctionProto(run.extFile, prefix, run.info.gIndex, type);
    bool called = false;
    auto callWithClassifier = [&called, &run, prefix](AsnType *, AsnType *classifier,
                                                      AsnType *any) {
        cAnyFunctionRef(run.outFile, prefix, run.info.gIndex, any, classifier);
        called = true;
    };
    AsnType *father = getFatherOfTypeComp(type);
    if (isAnyDefinedByType(type) && father != nullptr)
        forAnyDefinedByClassifierType(father, type, callWithClassifier);
    if (!called)
        cAnyFunctionRef(run.outFile, prefix, run.info.gIndex, type, nullptr);
}

/* a_Frame_0 (&home->x); */
void genOpenFrame(int file, const char *call, AsnType *type) {
    putF(file, call);
    putF(file, cHome(type, HOME_ADDRESS), ");\n");
}

/* d_Frame (&home->x, TYP_INTEGER); */
void genTypedFrame(int file, const char *call, AsnType *type) {
    putF(file, call);
    putF(file, cHome(type, HOME_ADDRESS), ",");
    putF(file, " ", getTypeMainTypeStri(type), ");\n");
}

/* --- decoding and asking --- */

/* d_uint8 (&home->id, and what the caller puts behind it */
void genFillCall(int file, const char *prefix, AsnType *type, const char *postfix) {
    putF(file, prefix, cBuiltinName(type), " (");
    putF(file, cHome(type, HOME_ADDRESS), postfix);
}

/* d_NullType (); */
void genNullCall(int file, const char *prefix, AsnType *type) {
    putF(file, prefix, cBuiltinName(type), " (");
    putF(file, ");\n");
}

/* d_IA5String8 (&home->name, 1, 8); */
void genFillString(int file, const char *prefix, AsnType *type, bool unbounded) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    putF(file, prefix, cBuiltinStringCFunc(type), " (");
    putF(file, cHome(type, HOME_ADDRESS), ",");
    putF(file, " ", i64tostr(low), ",");
    if (unbounded)
        putF(file, " MAXLONG");
    else
        putF(file, " ", i64tostr(alloc));
    putF(file, ");\n");
}

/* The library can read no EMBEDDED PDV and the like; the run says so and goes on. */
void genNoFillCall(AsnType *type, TypeFuncRun &) {
    switch (getTypeMainType(type)) {
    case TYP_EMB_PDV:
        notYetSupported(type, "EMBEDDED PDV");
        break;
    case TYP_INSTANCE_OF:
        notYetSupported(type, "Instance-of");
        break;
    default:
        cRefuseType(type, "CHARACTER STRING has no functions; mark it as skipped.");
        break;
    }
}

/* --- encoding and printing --- */

/* " 16,": the size that the string has no member for */
void genFixedSize(int file, AsnType *type) {
    if (getVFSize(type) != VF_NONE || getVF(type) == VF_LIST)
        return;
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    putF(file, " ", i64tostr(low), ",");
}

void warnOfNoCall(AsnType *type, TypeFuncRun &) {
    switch (getTypeMainType(type)) {
    case TYP_EMB_PDV:
        notYetSupported(type, "EMBEDDED PDV");
        break;
    case TYP_CHASTR:
        notYetSupported(type, "CHARACTER STRING");
        break;
    case TYP_INSTANCE_OF:
        notYetSupported(type, "Instance-of");
        break;
    default:
        bugInTool("Unrecognized leaf type.");
        break;
    }
}

/* --- the choice among the calls of a kind --- */

namespace {

/* The column for a sort of value. */
TypeFunc callFor(LeafSort sort, const LeafCalls &calls) {
    switch (sort) {
    case LeafSort::BOOLEAN:
        return calls.boolean;
    case LeafSort::INTEGER:
        return calls.integer;
    case LeafSort::ENUMERATED:
        return calls.enumerated;
    case LeafSort::REAL:
        return calls.real;
    case LeafSort::STRING:
        return calls.string;
    case LeafSort::NULL_TYPE:
        return calls.null;
    case LeafSort::EMPTY_STRUCTURE:
        return calls.emptyStructure;
    case LeafSort::SIMPLE:
        return calls.simple;
    case LeafSort::EXTERNAL:
        return calls.external;
    default:
        return calls.other;
    }
}

} // namespace

void genLeaf(AsnType *type, TypeFuncRun &run, const LeafCalls &calls) {
    const LeafSort sort = cBuiltinType(getTypeMainType(type)).leaf;
    if (sort == LeafSort::ANY)
        genAnyFunction(type, run, calls.anyPrefix);
    else
        callFor(sort, calls)(type, run);
}
