#include "model/typevalues.h"

#include "store/classify.h"
#include "store/endpoints.h"
#include "store/ketramac.h"
#include "store/values.h"

namespace {

bool hasEndpoints(int mainType) {
    return mainType == TYP_INTEGER || mainType == TYP_ENUM || mainType == TYP_REAL ||
           hasSizeKind(mainType);
}

/* Does the current VNode, which an endpoint search left there, hold a number of this kind? */
bool isNumberCurrent(int kind) {
    if (currModule(REC_VNODE) == nullptr)
        return false;
    const NodePlace place = saveNodeContext(REC_VNODE);
    skipValues(true);
    const bool is = vNode.valueKind == kind;
    readRec(place.module, REC_VNODE, place.nr);
    return is;
}

/* Fills `value` with one end of a type's values or sizes; the result tells whether it is closed. */
bool getEndpointValue(AsnValue *value, AsnType *type, bool plus) {
    const int kind = type->base.mainType == TYP_REAL ? TYP_REAL : TYP_INTEGER;
    readRec(type->contentModule, REC_TNODE, type->contentRecord);
    /* The record that gives the end is to be the one left current, not one of an earlier walk. */
    recJustRead[REC_VNODE] = NodePlace{};
    VNode end;
    std::uint8_t flag = 0;
    if (!getEndpoint(&end, &flag, plus))
        fatalError(FATAL_INTERNAL, "Cannot obtain endpoint for a type.");
    const bool isClosed = (flag & (plus ? SUB_UPPER_CLOSED : SUB_LOWER_CLOSED)) != 0;
    const bool invalid = isInvalidEndpoint(end);
    end.valueKind = static_cast<std::uint8_t>(kind);
    const bool infinite =
        !invalid && (testInfinity(end, true, kind) || testInfinity(end, false, kind));
    if (!infinite && isNumberCurrent(kind)) {
        getValuePath(nullptr, value, KIND_VALUE);
        return isClosed;
    }
    if (invalid)
        setInfinity(&end, plus, kind);
    initInfinityValue(value, end);
    return isClosed;
}

} // namespace

void forTypeEndpoints(
    AsnType *type,
    Call<void(AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed)>
        func) {
    requireCall(func);
    if (!hasEndpoints(type->base.mainType))
        return;
    AsnValue low(type->walkModule, type->ownerModule);
    AsnValue high(type->walkModule, type->ownerModule);
    const bool lowClosed = getEndpointValue(&low, type, false);
    const bool highClosed = getEndpointValue(&high, type, true);
    func(type, &low, lowClosed, &high, highClosed);
}
