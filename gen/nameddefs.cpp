#include "gen/nameddefs.h"

#include "base/files.h"
#include "cbet/constants.h"
#include "cbet/engine.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/names.h"
#include "cbet/typefuncinfo.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "options/ketracnf.h"

namespace {

/* setNamedDef (ASNG_F(asntstg) "red", 1L); */
void callSetNamedDef(TypeFuncRun &run, const Text &name, sint64 value) {
    /* C has no constant for the least number. */
    const Text number = i64ismin(value) ? "MIN_LONG" : i64tostr(value) + "L";
    putF(run.outFile, "setNamedDef (ASNG_F(asntstg) ", name, ", ", number, ");\n");
}

/* setNamedDef (ASNG_F(asntstg) "red", 1L); cut to "NAMELEN=" characters */
void setNamedDef(AsnType *type, AsnValue *value, TypeFuncRun &run) {
    const Text name = cCutName(convertUnderscores(getRefOf(value)), type);
    callSetNamedDef(run, "\"" + name + "\"", int64Value(value));
}

} // namespace

bool needsSetNamedDefs(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED) || cIsFrameType(type) || !isNamedNumbers(type))
        return false;
    const int covered = getGlobalOptions(getModuleOfType(type))->setN;
    return covered >=
           (getTypeMainType(type) == TYP_BITSTR ? SETN_NAMED_NUMBERS_AND_BITS : SETN_NAMED_NUMBERS);
}

/* void aColor (ASNG_F(ASNTSTG *asntstg) Color *home)
   {
     setNamedDef (ASNG_F(asntstg) NULL, 2L);
     setNamedDef (ASNG_F(asntstg) "red", 1L);
     ...
   } */
void genNamedDefFunc(AsnType *type, TypeFuncRun &run) {
    if (!isDefinedType(type) || !needsSetNamedDefs(type))
        return;
    putF(run.extFile, "\n");
    putF(run.outFile, "\n");
    cFunctionProto(run.extFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    cFunctionDef(run.outFile, run.funcPrefix.c_str(), run.info.gIndex, type);
    const Block body(run.outFile);
    tstInitTypeWithNamedNumbers(type, run);
}

/* The first call, without a name, says how many follow. */
void tstInitTypeWithNamedNumbers(AsnType *type, TypeFuncRun &run) {
    callSetNamedDef(run, "NULL", i64ltosint64(getNrOfNamedNumbers(type)));
    auto callForEach = [&run](AsnType *numbered, AsnValue *value, int) {
        setNamedDef(numbered, value, run);
    };
    forEachNamedNumber(type, callForEach);
}

/* aColor (ASNG_F(asntstg) NULL); */
void callSeprSetNamedDefFunc(AsnType *type, TypeFuncRun &run) {
    cDeclareForeignFunction(type, run);
    /* aColor (ASNG_F(asntstg) NULL); */
    putF(run.outFile, cFunctionName(run.funcPrefix, type), " (ASNG_F(", cGetGName(run.info.gIndex),
         ") NULL);\n");
}

void genNamedDefCalls(AsnType *type, TypeFuncRun &run) {
    if (!needsSetNamedDefs(type))
        return;
    if (cIsDefinedBaseType(type))
        callSeprSetNamedDefFunc(type, run);
    else
        tstInitTypeWithNamedNumbers(type, run);
}

/* "name", in the ASN.1 spelling, or NULL */
Text tstCompId(AsnType *type) {
    Text name;
    if (isComponentType(type))
        name = getTypeCompRef(type);
    else if (!isElemType(type))
        name = getTypeRef(type);
    return name.empty() ? "NULL" : "\"" + cCutName(convertUnderscores(name), type) + "\"";
}

void printIntEndpoint(int file, const char *prefix, int valueForm, sint64 value,
                      const char *suffix) {
    if (valueForm == VF_I64 || valueForm == VF_UI64) {
        putF(file, prefix);
        putF(file, cSint64(value));
        putF(file, suffix);
    } else if (i64ismax(value)) {
        putF(file, prefix, "MAXLONG", suffix);
    } else if (i64ismin(value)) {
        putF(file, prefix, "MINLONG", suffix);
    } else {
        const bool isLarge = valueForm == VF_UI32 && i64cmpl(value, 0x7FFFFFFF) > 0;
        putF(file, prefix, i64tostr(value), isLarge ? "UL" : "", suffix);
    }
}
