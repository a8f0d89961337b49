#include "model/othermodule.h"

#include "model/modules.h"
#include "model/typewalk.h"
#include "model/walk.h"
#include "store/classify.h"

namespace {

/* Where a walk along references ends before the chain does. */
enum class StopAt {
    ChainEnd,
    OtherModule, /* at the first record of another module */
    Definition,  /* there, or at a definition before */
};

/* One step from the current TNode; false if it is the last one. */
bool followReference(StopAt stopAt) {
    ModRec *module = currModule(REC_TNODE);
    if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        followSynonymType();
        if (stopAt == StopAt::Definition && tNode.compStatus == TCS_HEADER)
            return false;
        return stopAt == StopAt::ChainEnd || currModule(REC_TNODE) == module;
    }
    if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0)
        return selectsDefinition() && followTypeReference();
    if (tNode.mainType == TYP_FIELDLIST && tNode.auxRecord != 0) {
        skipFieldList();
        return true;
    }
    return false;
}

NodePlace findEnd(AsnType *type, StopAt stopAt) {
    readRec(type->posModule, REC_TNODE, type->posRecord);
    ChainGuard guard(REC_TNODE);
    do
        guard.step(currModule(REC_TNODE));
    while (followReference(stopAt));
    return saveNodeContext(REC_TNODE);
}

bool isReference(const AsnType *type) {
    return type->firstMainType == TYP_SYNONYM || type->firstMainType == TYP_FIELDLIST;
}

/* Calls with a handle on the record where the walk along the references ends, with the handle on its
   module. It was asked for by its number, so it may be one that walks leave out. */
void callForEnd(AsnType *type, StopAt stopAt, Call<void(AsnType *defined)> func) {
    const NodePlace end = findEnd(type, stopAt);
    if (!takeTNode(end.module, KIND_TYPE, end.nr))
        fatalError(FATAL_INTERNAL, stopAt == StopAt::Definition
                                       ? "Unable to construct AsnType for a type."
                                       : "Unable to construct AsnType for a type defined in "
                                         "another module.");
    AsnModule *module = getAsnModule(end.module);
    AsnType defined(module, module);
    getTypePath(nullptr, &defined);
    func(&defined);
}

} // namespace

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func) {
    requireCall(func);
    if (isReference(type))
        callForEnd(type, StopAt::ChainEnd, func);
}

void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func) {
    requireCall(func);
    if (isReference(type) || type->inCompOf)
        callForEnd(type, StopAt::ChainEnd, [&](AsnType *defined) { func(type, defined); });
}

void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func) {
    if (isReference(type))
        callForEnd(type, StopAt::Definition, func);
}
