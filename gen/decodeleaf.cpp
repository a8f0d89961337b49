#include "gen/decodeleaf.h"

#include "base/files.h"
#include "cbet/comptests.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "gen/leaves.h"
#include "gen/valuecalls.h"
#include "gen/valuetests.h"
#include "gen/warnings.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

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

void decInteger(AsnType *type, TypeFuncRun &run) {
    if (isExtensibleIntegerValueSet(type))
        decWarnOfExtendedConstraint(run.outFile, type, "INTEGER");
    decNumber(run.outFile, type);
}

void decEnum(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    decNumber(file, type);
    if (isSimpleIntegerValueSet(type) || !cCheckIntegerValueSet(file, type))
        return;
    cOpenBrace(file);
    if (isExtensibleEnumeratedList(type))
        genExtendedMark(file, type);
    else
        cReportError(file, "ENUM_ERR");
    cCloseBrace(file);
}

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
    cOpenBrace(file);
    cReportError(file, "AM_FAIL");
    cCloseBrace(file);
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
    notYetSupported(type, formatText("Decoding of extended %s constraint", what).c_str());
    putF(file, " /*?!?: Invalid decoding follows - extended ", what, " constraint.*/\n");
}

void decLeaf(AsnType *type, TypeFuncRun &run) {
    genLeaf(type, run, leafCalls);
}
