#include "objects/objectsets.h"

#include "base/fatal.h"
#include "model/modules.h"
#include "store/classify.h"
#include "store/records.h"

namespace {

int setDepth = 0;

struct SetWalk {
    Call<void(AsnObject *object, int index)> func;
    bool withMarker = false;
    int index = 0;
};

void showObject(SetWalk *walk, ModRec *module, RecNr valueRec) {
    readRec(module, REC_VNODE, valueRec);
    skipValues(true);
    const RecNr nr = saveNodeContext(REC_VNODE).nr;
    AsnModule *own = getAsnModule(currModule(REC_VNODE));
    forObjectByRecNr(
        own, [&](AsnObject *object, int) { walk->func(object, walk->index++); }, nr);
}

/* The constraint of a contained set; none if the set has no constraint. */
NodePlace containedConstraint(ModRec *module, RecNr valueRec) {
    readRec(module, REC_VNODE, valueRec);
    readRec(vNode.refModule == 0 ? module : getModPtr(module, vNode.refModule), REC_TNODE,
            vNode.refRecord);
    ChainGuard guard(REC_TNODE);
    while (tNode.constraintRec == 0 && tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
    return {currModule(REC_TNODE), tNode.constraintRec};
}

void constructSetObjects(SetWalk *walk, const NodePlace &place) {
    if (place.nr == 0)
        return;
    NestingGuard nesting(&setDepth, place.module, MAX_NESTING);
    readRec(place.module, REC_SUB, place.nr);
    const SubRec sub = subRec;
    switch (sub.subKind) {
    case SUB_UNION: {
        ChainGuard guard(REC_SUB);
        for (RecNr nr = sub.first; nr != 0;) {
            guard.step(place.module);
            constructSetObjects(walk, {place.module, nr});
            readRec(place.module, REC_SUB, nr);
            nr = subRec.next;
        }
        return;
    }
    case SUB_SINGLE_VALUE:
        return showObject(walk, place.module, sub.first);
    case SUB_INCLUDES:
        return constructSetObjects(walk, containedConstraint(place.module, sub.first));
    case SUB_EXTENDED_VALUE_SET:
        if (walk->withMarker)
            return;
        [[fallthrough]];
    default:
        fatalError(FATAL_INTERNAL, "Too complex object set");
    }
}

} // namespace

/* Sets may contain sets of other modules. The walk goes by places of constraints, since the
   handles of those sets are never needed. */

NodePlace findSetConstraint() {
    ChainGuard guard(REC_TNODE);
    while (tNode.compStatus != TCS_HEADER && tNode.constraintRec == 0 &&
           tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
    return {currModule(REC_TNODE), tNode.constraintRec};
}

void forObjectsOfConstraint(const NodePlace &place, bool withMarker,
                            Call<void(AsnObject *object, int index)> func) {
    requireCall(func);
    SetWalk walk{func, withMarker};
    constructSetObjects(&walk, place);
}
