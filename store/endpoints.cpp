#include "store/endpoints.h"

#include "store/classify.h"
#include "store/ketramac.h"
#include "store/records.h"
#include "store/values.h"

namespace {

/* What one computation carries along. */
struct EndpointWalk {
    int depth = 0;
    int subCode = 0; /* kind of the size operator whose members are walked, 0 outside */
};

/* An end, with the record that has its value; no record for an infinite one. */
struct Endpoint {
    VNode node;
    std::uint8_t flag = 0;
    NodePlace place;
};

std::uint8_t closedFlag(bool plus) {
    return plus ? SUB_UPPER_CLOSED : SUB_LOWER_CLOSED;
}

Endpoint infinity(bool plus, int kind) {
    Endpoint end;
    end.node.valueKind = static_cast<std::uint8_t>(kind);
    setInfinity(&end.node, plus, kind);
    return end;
}

Endpoint invalidEndpoint() {
    Endpoint end;
    end.node.valueKind = TYP_INVALID;
    return end;
}

/* The value of the current VNode as an open end. */
Endpoint currentValueAsEnd(int kind) {
    Endpoint end;
    end.node = vNode;
    if (!testInfinity(vNode, true, kind) && !testInfinity(vNode, false, kind))
        end.place = saveNodeContext(REC_VNODE);
    return end;
}

/* Is `a` further out than `b`, seen from the end that is looked for? */
bool isBeyond(const VNode &a, const VNode &b, int kind, bool plus) {
    const int order = compareNumber(a, b, kind);
    return plus ? order > 0 : order < 0;
}

/* A union takes the member that reaches furthest, the other operators the one that reaches least.
 */
void combine(Endpoint *dst, const Endpoint &member, int subKind, int kind, bool plus) {
    if (isBeyond(member.node, dst->node, kind, subKind == SUB_UNION ? plus : !plus))
        *dst = member;
}

/* A union none of whose members has an end here has none itself. */
void settleUnion(Endpoint *dst, int kind, bool plus) {
    if (testInfinity(dst->node, !plus, kind))
        *dst = infinity(plus, kind);
}

bool isOperator(int subKind) {
    return subKind == SUB_UNION || subKind == SUB_INTERSECTION || subKind == SUB_CATENATION;
}

/* Calls func() with each member of an operator as the current SubRec, until one call returns true;
   that is the result. */
template <typename F> bool forMembersUntil(ModRec *module, const SubRec &sub, F &&func) {
    ChainGuard guard(REC_SUB);
    for (RecNr nr = sub.first; nr != 0;) {
        guard.step(module);
        readRec(module, REC_SUB, nr);
        nr = subRec.next;
        if (func())
            return true;
    }
    return false;
}

template <typename F> void forEachMember(ModRec *module, const SubRec &sub, F &&func) {
    forMembersUntil(module, sub, [&] {
        func();
        return false;
    });
}

bool endpointOfType(EndpointWalk *walk, Endpoint *dst, bool plus);
void getRangeEndpoint(EndpointWalk *walk, ModRec *module, const SubRec &range, Endpoint *dst,
                      bool plus);
bool getNumberEndpoint(EndpointWalk *walk, Endpoint *dst, int kind, bool plus);
bool getSizeEndpoint(EndpointWalk *walk, Endpoint *dst, bool plus);

/* What the current TNode is behind all references. */
int finalMainType() {
    const NodeContext keep(REC_TNODE);
    skipTypes(true);
    return tNode.mainType;
}

/* --- ranges --- */

/* Is the current SubRec a range, or a catenation with a range in it? If so, that range becomes
   current; if not, any SubRec may be. */
bool isRangeInSub(EndpointWalk *walk) {
    ModRec *module = currModule(REC_SUB);
    const NestingGuard level(&walk->depth, module, MAX_NESTING);
    if (subRec.subKind != SUB_CATENATION)
        return subRec.subKind == SUB_RANGE;
    return forMembersUntil(module, SubRec(subRec), [&] { return isRangeInSub(walk); });
}

/* The end that the type under the current one, a synonym, has; false if the reference leads
   nowhere. Moves the current TNode and SubRec. */
bool parentEndpoint(EndpointWalk *walk, Endpoint *dst, bool plus) {
    ChainGuard guard(REC_TNODE);
    bool found = false;
    while (!found && tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
        if (tNode.constraintRec != 0) {
            readRec(currModule(REC_TNODE), REC_SUB, tNode.constraintRec);
            found = isRangeInSub(walk);
        }
    }
    if (tNode.mainType == TYP_SYNONYM && tNode.constraintRec == 0)
        return false;
    /* A constraint other than a range stands at the end of the chain, or none: MIN to MAX. */
    const bool isNumber = tNode.mainType == TYP_INTEGER || tNode.mainType == TYP_REAL;
    if (!found && isNumber && tNode.constraintRec != 0) {
        readRec(currModule(REC_TNODE), REC_SUB, tNode.constraintRec);
        *dst = infinity(!plus, tNode.mainType);
        if (getNumberEndpoint(walk, dst, tNode.mainType, plus))
            return true;
    }
    getRangeEndpoint(walk, currModule(REC_SUB), found ? SubRec(subRec) : SubRec(), dst, plus);
    return true;
}

/* The end that a range names, record `nr`. It must lie inside what the type under a synonym allows.
 */
bool explicitRangeEndpoint(EndpointWalk *walk, ModRec *module, const SubRec &range, Endpoint *dst,
                           bool plus, int kind) {
    readRec(module, REC_VNODE, plus ? range.second : range.first);
    skipValues(true);
    if (vNode.valueKind != kind)
        return false;
    *dst = currentValueAsEnd(kind);
    const std::uint8_t closed = range.subFlags & closedFlag(plus);
    if (tNode.mainType == TYP_SYNONYM) {
        Endpoint parent;
        if (!parentEndpoint(walk, &parent, plus) || parent.node.valueKind != kind)
            return false;
        const int order = compareValue(parent.node, dst->node);
        const bool inside = plus ? order > 0 : order < 0;
        if (!inside && !(closed != 0 && order == 0))
            return false;
    }
    dst->flag = closed;
    return true;
}

/* The current TNode is the type of the range and stays current. */
void getRangeEndpoint(EndpointWalk *walk, ModRec *module, const SubRec &range, Endpoint *dst,
                      bool plus) {
    const NestingGuard level(&walk->depth, currModule(REC_TNODE), MAX_NESTING);
    const NodeContext keepType(REC_TNODE);
    const int kind = finalMainType();

    bool valid = false;
    if (kind == TYP_INTEGER || kind == TYP_REAL) {
        if ((plus ? range.second : range.first) != 0) {
            valid = explicitRangeEndpoint(walk, module, range, dst, plus, kind);
        } else if (tNode.mainType == kind) {
            *dst = infinity(plus, kind);
            valid = true;
        } else if (tNode.mainType == TYP_SYNONYM) {
            valid = parentEndpoint(walk, dst, plus);
        }
    }
    if (!valid)
        *dst = invalidEndpoint();
}

/* --- values --- */

/* The value widens what `dst` has so far; an end that is one value is open. */
bool singleValueEndpoint(ModRec *module, RecNr value, Endpoint *dst, int kind, bool plus) {
    readRec(module, REC_VNODE, value);
    skipValues(true);
    if (vNode.valueKind != kind)
        return false;
    if (isBeyond(vNode, dst->node, kind, plus))
        *dst = currentValueAsEnd(kind);
    return true;
}

/* The end of the type that VNode `value` names. */
bool containedTypeEndpoint(EndpointWalk *walk, ModRec *module, RecNr value, Endpoint *dst,
                           bool plus) {
    const NodeContext keepType(REC_TNODE);
    readRec(module, REC_VNODE, value);
    readRec(vNode.refModule == 0 ? module : getModPtr(module, vNode.refModule), REC_TNODE,
            vNode.refRecord);
    skipTypes(true);
    Endpoint contained;
    if (!endpointOfType(walk, &contained, plus))
        return false;
    *dst = contained;
    return true;
}

bool numberOperatorEndpoint(EndpointWalk *walk, ModRec *module, const SubRec &sub, Endpoint *dst,
                            int kind, bool plus) {
    const bool isUnion = sub.subKind == SUB_UNION;
    *dst = infinity(isUnion ? !plus : plus, kind);
    forEachMember(module, sub, [&] {
        Endpoint member = infinity(!plus, kind);
        if (getNumberEndpoint(walk, &member, kind, plus))
            combine(dst, member, sub.subKind, kind, plus);
    });
    if (isUnion)
        settleUnion(dst, kind, plus);
    return true;
}

/* The end that the current SubRec leaves of an INTEGER or REAL; false if it says nothing about it.
   `dst` comes with the end so far. */
bool getNumberEndpoint(EndpointWalk *walk, Endpoint *dst, int kind, bool plus) {
    ModRec *module = currModule(REC_SUB);
    const NestingGuard level(&walk->depth, module, MAX_NESTING);
    const SubRec sub = subRec;
    if (isOperator(sub.subKind))
        return numberOperatorEndpoint(walk, module, sub, dst, kind, plus);
    if (sub.subKind == SUB_SINGLE_VALUE)
        return singleValueEndpoint(module, sub.first, dst, kind, plus);
    if (sub.subKind == SUB_INCLUDES)
        return containedTypeEndpoint(walk, module, sub.first, dst, plus);
    if (sub.subKind != SUB_RANGE)
        return false;
    getRangeEndpoint(walk, module, sub, dst, plus);
    return true;
}

/* --- sizes --- */

/* What a running end starts with under the current SubRec: an operator that narrows starts at the
   end looked for, one that widens at the other; a catenation goes on from `saved`, if there is one.
 */
void initSizeEndpointElem(Endpoint *dst, const Endpoint *saved, bool plus) {
    if (subRec.subKind == SUB_CATENATION && saved != nullptr)
        *dst = *saved;
    else if (isOperator(subRec.subKind))
        *dst = infinity(subRec.subKind == SUB_UNION ? !plus : plus, TYP_INTEGER);
}

bool getUnionIntersectionCatenationSizeEndpoint(EndpointWalk *walk, ModRec *module, Endpoint *dst,
                                                bool plus) {
    const SubRec sub = subRec;
    const int outerSubCode = walk->subCode;
    walk->subCode = sub.subKind;
    Endpoint member;
    initSizeEndpointElem(&member, dst, plus);
    forEachMember(module, sub, [&] {
        member.flag = 0;
        if (getSizeEndpoint(walk, &member, plus))
            combine(dst, member, sub.subKind, TYP_INTEGER, plus);
    });
    if (sub.subKind == SUB_UNION)
        settleUnion(dst, TYP_INTEGER, plus);
    walk->subCode = outerSubCode;
    return true;
}

/* The range speaks of a number that stands for the size, so it has a type of its own. */
void getRangeSizeEndpoint(EndpointWalk *walk, ModRec *module, Endpoint *dst, bool plus) {
    const NodeContext keepType(REC_TNODE);
    const SubRec range = subRec;
    readRec(getModPtr(module, range.compModule), REC_TNODE, range.compTNode);
    getRangeEndpoint(walk, module, range, dst, plus);
}

/* Under an operator that narrows, the value has to narrow the running end too. */
bool getSingleValueSizeEndpoint(EndpointWalk *walk, Endpoint *dst, bool plus) {
    const bool narrows = walk->subCode == SUB_INTERSECTION || walk->subCode == SUB_CATENATION;
    if (!getNumberEndpoint(walk, dst, TYP_INTEGER, narrows ? !plus : plus))
        return false;
    dst->flag = closedFlag(plus);
    return true;
}

/* The same as getNumberEndpoint for the size of a string or list. */
bool getSizeEndpoint(EndpointWalk *walk, Endpoint *dst, bool plus) {
    ModRec *module = currModule(REC_SUB);
    const NestingGuard level(&walk->depth, module, MAX_NESTING);
    if (isOperator(subRec.subKind))
        return getUnionIntersectionCatenationSizeEndpoint(walk, module, dst, plus);
    switch (subRec.subKind) {
    case SUB_RANGE:
        getRangeSizeEndpoint(walk, module, dst, plus);
        return true;
    case SUB_SIZE:
        readRec(module, REC_SUB, subRec.first);
        return getSizeEndpoint(walk, dst, plus);
    case SUB_SINGLE_VALUE:
        return getSingleValueSizeEndpoint(walk, dst, plus);
    default:
        return false;
    }
}

/* --- types --- */

/* The list of items may go on into other definitions, so it ends where the governor changes. */
bool getEnumEndpoint(Endpoint *dst, bool plus) {
    const NodePlace type = saveNodeContext(REC_TNODE);
    *dst = infinity(!plus, TYP_INTEGER);
    bool allNumbers = true;
    ChainGuard guard(REC_VNODE);
    for (RecNr nr = tNode.namedNumbersRec; nr != 0;) {
        guard.step(type.module);
        readRec(type.module, REC_VNODE, nr);
        if (vNode.compStatus != 0 || vNode.governorRec != type.nr)
            break;
        nr = vNode.next;
        skipValues(true);
        if (vNode.valueKind == TYP_EXTENSION_MARKER)
            continue;
        if (vNode.valueKind != TYP_INTEGER)
            allNumbers = false;
        else if (isBeyond(vNode, dst->node, TYP_INTEGER, plus))
            *dst = currentValueAsEnd(TYP_INTEGER);
    }
    return allNumbers;
}

/* Reads the constraint of the current TNode, if it has one. */
bool readConstraint() {
    if (tNode.constraintRec == 0)
        return false;
    readRec(currModule(REC_TNODE), REC_SUB, tNode.constraintRec);
    return true;
}

/* The end of the current TNode; false, and an invalid end, if it has none. */
bool endpointOfType(EndpointWalk *walk, Endpoint *dst, bool plus) {
    const NestingGuard level(&walk->depth, currModule(REC_TNODE), MAX_NESTING);
    const NodeContext keepType(REC_TNODE);
    /* A synonym that was not followed has the ends of its own constraint. */
    const int mainType = tNode.mainType == TYP_SYNONYM ? finalMainType() : tNode.mainType;

    bool known = true;
    if (mainType == TYP_ENUM) {
        known = getEnumEndpoint(dst, plus);
    } else if (mainType == TYP_INTEGER || mainType == TYP_REAL) {
        *dst = infinity(!plus, mainType);
        if (!readConstraint() || !getNumberEndpoint(walk, dst, mainType, plus)) {
            *dst = infinity(plus, mainType);
            dst->flag = closedFlag(plus);
        }
    } else if (hasSizeKind(mainType)) {
        *dst = infinity(!plus, TYP_INTEGER);
        const bool constrained = readConstraint();
        if (constrained)
            initSizeEndpointElem(dst, nullptr, plus);
        if (!constrained || !getSizeEndpoint(walk, dst, plus))
            *dst = infinity(plus, TYP_INTEGER);
    } else {
        known = false;
    }
    if (!known)
        *dst = invalidEndpoint();
    return known;
}

} // namespace

bool getEndpoint(VNode *end, std::uint8_t *flag, bool plus) {
    EndpointWalk walk;
    Endpoint found;
    const bool known = endpointOfType(&walk, &found, plus);
    restoreNodeContext(REC_VNODE, found.place);
    *end = found.node;
    *flag = found.flag;
    return known;
}
