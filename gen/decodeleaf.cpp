#include "gen/decodeleaf.h"

#include "cbet/builtin.h"
#include "cbet/comptests.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/typefuncinfo.h"
#include "cbet/vars.h"
#include "driver/files.h"
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

/* d_uint8 (&home->id, 0, 255); */
void decInteger(int file, AsnType *type) {
    if (isExtensibleIntegerValueSet(type) && getTypeMainType(type) == TYP_INTEGER)
        decWarnOfExtendedConstraint(file, type, "INTEGER");
    decCall(file, type, ",");
    genIntegerBounds(file, type);
}

void decEnum(int file, AsnType *type) {
    decInteger(file, type);
    if (isSimpleIntegerValueSet(type) || !cCheckIntegerValueSet(file, type))
        return;
    cOpenBrace(file);
    if (isExtensibleEnumeratedList(type))
        genExtendedMark(file, type);
    else
        cReportError(file, "ENUM_ERR");
    cCloseBrace(file);
}

/* if (asncodg_info->len > 8) */
void decTestSizeLimit(int file, AsnType *type) {
    const TypeOptions *options = getTypeOptions(type);
    if (options->sizeLimit == 0 || options->sizeLimitMode != 1)
        return;
    printfToF(file, "if (asncodg_info->len > %lu)", static_cast<unsigned long>(options->sizeLimit));
    cOpenBrace(file);
    cReportError(file, "AM_FAIL");
    cCloseBrace(file);
}

/* d_IA5String8 (&home->name, 1, 8); */
void decString(int file, AsnType *type) {
    if (isExtensibleSizeConstraintValueSet(type)) {
        decWarnOfExtendedConstraint(file, type, "string");
        return;
    }
    decTestSizeLimit(file, type);
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    genFillString(file, "d_", type, i64ismax(high));
}

} // namespace

void decWarnOfExtendedConstraint(int file, AsnType *type, const char *what) {
    notYetSupported(type, formatText("Decoding of extended %s constraint", what).c_str());
    printfToF(file, " /*?!?: Invalid decoding follows - extended %s constraint.*/\n", what);
}

void decLeaf(AsnType *type, const TypeFuncInfo *info) {
    const int file = info->outFile;
    Text text;
    if (isStringLeaf(type) || getTypeMainType(type) == TYP_UNISTR) {
        decString(file, type);
        return;
    }
    switch (getTypeMainType(type)) {
    case TYP_BOOLEAN:
        decCall(file, type, ");\n");
        genNormalisedTrue(file, type);
        break;
    case TYP_INTEGER:
        decInteger(file, type);
        break;
    case TYP_ENUM:
        decEnum(file, type);
        break;
    case TYP_REAL:
        decCall(file, type, ",");
        genRealBounds(file, type);
        break;
    case TYP_NULL:
        wToF(file, cBuiltinCFunc(text, "d_", type, " ("));
        wToF(file, ");\n");
        break;
    case TYP_SEQ: /* an empty structure */
    case TYP_SET:
        wToF(file, "d_EOC ();\n");
        break;
    case TYP_ANY:
    case TYP_OPEN:
        genAnyFunction(type, info, "anyDec");
        break;
    case TYP_OBJID:
    case TYP_GENTIME:
    case TYP_UTCTIME:
    case TYP_EXTERNAL_1990:
    case TYP_EXTERNAL_1994:
        decCall(file, type, ");\n");
        break;
    default:
        genNoFillCall(file, type);
        break;
    }
}
