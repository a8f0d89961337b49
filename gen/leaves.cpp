#include "gen/leaves.h"

#include "cbet/builtintypes.h"
#include "gen/valuecalls.h"
#include "model/typequeries.h"

namespace {

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
