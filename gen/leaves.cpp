#include "gen/leaves.h"

#include "gen/valuecalls.h"
#include "model/typequeries.h"

namespace {

TypeFunc callFor(int mainType, const LeafCalls &calls) {
    switch (mainType) {
    case TYP_BOOLEAN:
        return calls.boolean;
    case TYP_INTEGER:
        return calls.integer;
    case TYP_ENUM:
        return calls.enumerated;
    case TYP_REAL:
        return calls.real;
    case TYP_BITSTR:
    case TYP_OCTSTR:
    case TYP_NUMSTR:
    case TYP_PRISTR:
    case TYP_TELSTR:
    case TYP_VIDSTR:
    case TYP_VISSTR:
    case TYP_IA5STR:
    case TYP_GRASTR:
    case TYP_GENSTR:
    case TYP_BMPSTR:
    case TYP_UNISTR:
    case TYP_OBJDESCR:
        return calls.string;
    case TYP_NULL:
        return calls.null;
    case TYP_SEQ:
    case TYP_SET:
        return calls.emptyStructure;
    case TYP_OBJID:
    case TYP_GENTIME:
    case TYP_UTCTIME:
        return calls.simple;
    case TYP_EXTERNAL_1990:
    case TYP_EXTERNAL_1994:
        return calls.external;
    default:
        return calls.other;
    }
}

} // namespace

void genLeaf(AsnType *type, TypeFuncRun &run, const LeafCalls &calls) {
    if (isAnyOrOpen(type))
        genAnyFunction(type, run, calls.anyPrefix);
    else
        callFor(getTypeMainType(type), calls)(type, run);
}
