#include "gen/nameddefs.h"

#include <algorithm>

#include "base/files.h"
#include "cbet/foreignfuncs.h"
#include "cbet/functions.h"
#include "cbet/forms.h"
#include "cbet/typefuncinfo.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "options/ketracnf.h"

namespace {

/* setNamedDef (ASNG_F(asntstg) "red", 1L); */
void callSetNamedDef(TypeFuncRun &run, const Text *name, sint64 value) {
    const char *quote = name == nullptr ? "" : "\"";
    /* C has no constant for the least number. */
    const Text number = i64ismin(value) ? "MIN_LONG" : i64tostr(value) + "L";
    printfToF(run.outFile, "setNamedDef (ASNG_F(asntstg) %s%s%s, %s);\n", quote,
              name == nullptr ? "NULL" : name->c_str(), quote, number.c_str());
}

void setNamedDef(AsnType *type, AsnValue *value, TypeFuncRun &run) {
    Text name;
    getValueRef(name, nullptr, value, nullptr);
    name.resize(
        std::min<std::size_t>(name.size(), getGlobalOptions(getModuleOfType(type))->nameLen));
    callSetNamedDef(run, &convertUnderscores(name), int64Value(value));
}

} // namespace

bool needsSetNamedDefs(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED) || cIsFrameType(type) || !isNamedNumbers(type))
        return false;
    const int covered = getGlobalOptions(getModuleOfType(type))->setN;
    return covered >=
           (getTypeMainType(type) == TYP_BITSTR ? SETN_NAMED_NUMBERS_AND_BITS : SETN_NAMED_NUMBERS);
}

void genNamedDefFunc(AsnType *type, TypeFuncRun &run) {
    if (!isDefinedType(type) || !needsSetNamedDefs(type))
        return;
    endlToF(run.extFile);
    endlToF(run.outFile);
    cFunctionProto(run.extFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    cFunctionDef(run.outFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    wToF(run.outFile, "{\n");
    ++fArr[run.outFile].indent;
    tstInitTypeWithNamedNumbers(type, run);
    --fArr[run.outFile].indent;
    wToF(run.outFile, "}\n");
}

void tstInitTypeWithNamedNumbers(AsnType *type, TypeFuncRun &run) {
    callSetNamedDef(run, nullptr, i64ltosint64(getNrOfNamedNumbers(type)));
    auto callForEach = [&run](AsnType *numbered, AsnValue *value, int) {
        setNamedDef(numbered, value, run);
    };
    forEachNamedNumber(type, callForEach);
}

void callSeprSetNamedDefFunc(AsnType *type, TypeFuncRun &run) {
    cDeclareForeignFunction(type, run);
    Text name;
    /* aColor (ASNG_F(asntstg) NULL); */
    printfToF(run.outFile, "%s%s (ASNG_F(%s) NULL);\n", run.funcPrefix.c_str(),
              getDefBaseTypeId(name, nullptr, type, nullptr).c_str(), cGetGName(run.info.gIndex));
}

void genNamedDefCalls(AsnType *type, TypeFuncRun &run) {
    if (!needsSetNamedDefs(type))
        return;
    if (cIsDefinedBaseType(type))
        callSeprSetNamedDefFunc(type, run);
    else
        tstInitTypeWithNamedNumbers(type, run);
}

void tstCompId(int file, const char *prefix, AsnType *type, const char *suffix) {
    Text name;
    if (isComponentType(type))
        getTypeCompRef(name, nullptr, type, nullptr);
    else if (!isElemType(type))
        getTypeRef(name, nullptr, type, nullptr);
    if (name.empty()) {
        printfToF(file, "%sNULL%s", orEmpty(prefix), orEmpty(suffix));
        return;
    }
    printfToF(file, "%s\"%.*s\"%s", orEmpty(prefix),
              getGlobalOptions(getModuleOfType(type))->nameLen, convertUnderscores(name).c_str(),
              orEmpty(suffix));
}

void printIntEndpoint(int file, const char *prefix, int valueForm, sint64 value,
                      const char *suffix) {
    if (valueForm == VF_I64 || valueForm == VF_UI64) {
        int64AsSint64ToF(file, prefix, value, suffix);
    } else if (i64ismax(value)) {
        printfToF(file, "%sMAXLONG%s", orEmpty(prefix), orEmpty(suffix));
    } else if (i64ismin(value)) {
        printfToF(file, "%sMINLONG%s", orEmpty(prefix), orEmpty(suffix));
    } else if (valueForm == VF_UI32 && i64cmpl(value, 0x7FFFFFFF) > 0) {
        Text unsignedSuffix = "UL";
        int64ToF(file, prefix, value, (unsignedSuffix += orEmpty(suffix)).c_str());
    } else {
        int64ToF(file, prefix, value, suffix);
    }
}
