#include "gen/valuecalls.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/typefuncinfo.h"
#include "gen/warnings.h"
#include "model/any.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

bool isAnyOrOpen(AsnType *type) {
    const int mainType = getTypeMainType(type);
    return mainType == TYP_ANY || mainType == TYP_OPEN;
}

void genNoText(AsnType *, TypeFuncRun &) {}

void genAnyFunction(AsnType *type, TypeFuncRun &run, const char *prefix) {
    endlToF(run.extFile);
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
    Text text;
    wToF(file, call);
    wToF(file, cHome(text, nullptr, true, type, nullptr, ");\n"));
}

/* d_Frame (&home->x, TYP_INTEGER); */
void genTypedFrame(int file, const char *call, AsnType *type) {
    Text text;
    wToF(file, call);
    wToF(file, cHome(text, nullptr, true, type, nullptr, ","));
    putF(file, " ", getTypeMainTypeStri(type), ");\n");
}

void genFillCall(int file, const char *prefix, AsnType *type, const char *postfix) {
    Text text;
    wToF(file, cBuiltinCFunc(text, prefix, type, " ("));
    wToF(file, cHome(text, nullptr, true, type, nullptr, postfix));
}

void genNullCall(int file, const char *prefix, AsnType *type) {
    Text text;
    wToF(file, cBuiltinCFunc(text, prefix, type, " ("));
    wToF(file, ");\n");
}

void genFillString(int file, const char *prefix, AsnType *type, bool unbounded) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    Text text;
    wToF(file, cBuiltinStringCFunc(text, prefix, type, " ("));
    wToF(file, cHome(text, nullptr, true, type, nullptr, ","));
    printfToF(file, " %s,", i64tostr(low).c_str());
    if (unbounded)
        wToF(file, " MAXLONG");
    else
        printfToF(file, " %s", i64tostr(alloc).c_str());
    wToF(file, ");\n");
}

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

void genFixedSize(int file, AsnType *type) {
    if (getVFSize(type) != VF_NONE || getVF(type) == VF_LIST)
        return;
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    printfToF(file, " %s,", i64tostr(low).c_str());
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
