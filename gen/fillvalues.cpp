#include "gen/fillvalues.h"

#include "base/files.h"
#include "cbet/comptests.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/names.h"
#include "cbet/reports.h"
#include "cbet/typefuncinfo.h"
#include "gen/leafcalls.h"
#include "gen/messages.h"
#include "gen/nameddefs.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "model/valuesets.h"
#include "options/ketracnf.h"

/* --- what decoding and asking write alike --- */

namespace {

/* Least and greatest value of the type's set, holes left out of account. */
Int64Range outerBounds(AsnType *type) {
    Int64Range bounds = {i64min(), i64max()};
    auto widen = [&bounds](AsnType *, const Int64Range *range, int nbr) {
        if (nbr == 0)
            bounds.lower = range->lower;
        bounds.upper = range->upper;
    };
    forInt64ValueSet(type, widen);
    return bounds;
}

const char *closure(bool closed) {
    return closed ? "CLOS" : "OPEN";
}

void genRealEndpoints(int file, AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high,
                      bool highClosed) {
    putF(file, " ", closure(lowClosed), "_", closure(highClosed), ",");
    if (testCGenerationOption(getModuleOfType(type), CGEN_REAL)) {
        putF(file, " ", doubleRealValueStri(low), ",");
        putF(file, " ", doubleRealValueStri(high), ");\n");
        return;
    }
    if (isMinusInfinity(low))
        putF(file, " REAL_MINUS_INF, 0.0,");
    else
        putF(file, " REAL_NORMAL, ", doubleRealValueStri(low), ",");
    if (isPlusInfinity(high))
        putF(file, " REAL_PLUS_INF, 0.0);\n");
    else
        putF(file, " REAL_NORMAL, ", doubleRealValueStri(high), ");\n");
}

} // namespace

/* " 0, 255);" */
void genIntegerBounds(int file, AsnType *type) {
    const Int64Range bounds = outerBounds(type);
    printIntEndpoint(file, " ", getVF(type), bounds.lower, ",");
    printIntEndpoint(file, " ", getVF(type), bounds.upper, ");\n");
}

sint64 leastValue(AsnType *type) {
    return outerBounds(type).lower;
}

/* " CLOS_OPEN, REAL_NORMAL, 0.0, REAL_PLUS_INF, 0.0);" */
void genRealBounds(int file, AsnType *type) {
    auto genEndpoints = [file](AsnType *real, AsnValue *low, bool lowClosed, AsnValue *high,
                               bool highClosed) {
        genRealEndpoints(file, real, low, lowClosed, high, highClosed);
    };
    forTypeEndpoints(type, genEndpoints);
}

/* home->x.extended = TRUE; */
void genExtendedMark(int file, AsnType *type) {
    putF(file, cHome(type, HOME_MEMBER), "extended = TRUE;\n");
}

/* if (home->ok){
     home->ok = 0xFF;
   } */
void genNormalisedTrue(int file, AsnType *type) {
    if (!testTypeOption(type, OPT_NORMALISE_TRUE))
        return;
    putF(file, "if (", cHome(type, HOME_VALUE), ")");
    const Block block(file);
    putF(file, cHome(type, HOME_VALUE), " = 0xFF;\n");
}

void genUpperBound(int file, const char *call, AsnType *list, AsnType *elem) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(list, &low, &high, &alloc);
    /* d_UpperBound ((AsnAllocType **) &home->elem, 9, sizeof (uint8)); */
    putF(file, call);
    const char *cast = "(AsnAllocType **) ";
    if (testTypeOption(list, OPT_HOME)) /* in the block of that home */
        putF(file, cast, cStructHome(list, HOME_MEMBER_ADDRESS), "elem,");
    else
        putF(file, cast, cHome(list, HOME_MEMBER_ADDRESS), "elem,");
    putF(file, " ", i64tostr(alloc), ",");
    const bool inHome = testTypeOption(elem, OPT_HOME);
    const bool isPointer =
        inHome || testTypeOption(elem, OPT_POINTER) || cIsFrameType(elem) || isRecursiveType(elem);
    putF(file, " sizeof (");
    putF(file, inHome ? Text("ASNHOME") : cBaseTypeId(elem));
    if (isPointer)
        putF(file, " *");
    putF(file, "));\n");
}

/* --- leaves of decoders --- */

namespace {

/* d_Boolean (&home->ok); */
void decCall(int file, AsnType *type, const char *postfix) {
    genFillCall(file, "d_", type, postfix);
}

void decBoolean(AsnType *type, TypeFuncRun &run) {
    decCall(run.outFile, type, ");\n");
    genNormalisedTrue(run.outFile, type);
}

/* d_uint8 (&home->id, 0, 255); */
void decNumber(int file, AsnType *type) {
    decCall(file, type, ",");
    genIntegerBounds(file, type);
}

/* What an extension adds to the range can't be told from a value that is out of it. */
void decInteger(AsnType *type, TypeFuncRun &run) {
    if (isExtensibleIntegerValueSet(type))
        decWarnOfExtendedConstraint(run.outFile, type, "INTEGER");
    decNumber(run.outFile, type);
}

/* The bounds leave holes, which the test behind the call finds. */
void decEnum(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    decNumber(file, type);
    if (isSimpleIntegerValueSet(type) || !cCheckIntegerValueSet(file, type))
        return;
    const Block block(file);
    if (isExtensibleEnumeratedList(type))
        genExtendedMark(file, type);
    else
        cReportError(file, "ENUM_ERR");
}

/* d_Real64 (&home->x, CLOS_CLOS, 0.0, 1.0); */
void decReal(AsnType *type, TypeFuncRun &run) {
    decCall(run.outFile, type, ",");
    genRealBounds(run.outFile, type);
}

/* if (asncodg_info->len > 8) */
void decTestSizeLimit(int file, AsnType *type) {
    const TypeOptions *options = getTypeOptions(type);
    if (options->sizeLimit == 0 || options->sizeLimitMode != 1)
        return;
    putF(file, "if (asncodg_info->len > ", options->sizeLimit, ")");
    const Block block(file);
    cReportError(file, "AM_FAIL");
}

/* d_IA5String8 (&home->name, 1, 8); */
void decString(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isExtensibleSizeConstraintValueSet(type)) {
        decWarnOfExtendedConstraint(file, type, "string");
        return;
    }
    decTestSizeLimit(file, type);
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    genFillString(file, "d_", type, i64ismax(high));
}

void decNull(AsnType *type, TypeFuncRun &run) {
    genNullCall(run.outFile, "d_", type);
}

void decEmpty(AsnType *, TypeFuncRun &run) {
    putF(run.outFile, "d_EOC ();\n");
}

void decSimple(AsnType *type, TypeFuncRun &run) {
    decCall(run.outFile, type, ");\n");
}

constexpr LeafCalls leafCalls = {
    .boolean = decBoolean,
    .integer = decInteger,
    .enumerated = decEnum,
    .real = decReal,
    .string = decString,
    .null = decNull,
    .emptyStructure = decEmpty,
    .anyPrefix = "anyDec",
    .simple = decSimple,
    .external = decSimple,
    .other = genNoFillCall,
};

} // namespace

void decWarnOfExtendedConstraint(int file, AsnType *type, const char *what) {
    notYetSupported(type, concat("Decoding of extended ", what, " constraint").c_str());
    putF(file, " /*?!?: Invalid decoding follows - extended ", what, " constraint.*/\n");
}

void decLeaf(AsnType *type, TypeFuncRun &run) {
    genLeaf(type, run, leafCalls);
}
