#include "model/othermodule.h"

#include "model/modules.h"
#include "model/typewalk.h"
#include "store/classify.h"
#include "store/records.h"

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

AsnModule *findOtherModule(AsnType *type, RecNr *recOut, StopAt stopAt) {
    readRec(type->posModule, REC_TNODE, type->posRecord);
    ChainGuard guard(REC_TNODE);
    do
        guard.step(currModule(REC_TNODE));
    while (followReference(stopAt));
    *recOut = recJustRead[REC_TNODE].nr;
    return newAsnModule(currModule(REC_TNODE));
}

bool isReference(const AsnType *type) {
    return type->firstMainType == TYP_SYNONYM || type->firstMainType == TYP_FIELDLIST;
}

/* Builds a handle on record `rec` of `module`, calls, and deletes both. The record was asked for by
   its number, so it may be one that walks leave out. */
void callForRecord(AsnModule *module, RecNr rec, const char *failure,
                   Call<void(AsnType *defined)> func) {
    if (!takeTNode(module, KIND_TYPE, rec, true))
        fatalError(FATAL_INTERNAL, failure);
    AsnType *defined = newAsnType(module, module);
    getTypePath(nullptr, defined);
    func(defined);
    delAsnType(defined);
    delAsnModule(module);
}

constexpr const char *NOT_IN_OTHER_MODULE =
    "Unable to construct AsnType for a type defined in another module.";
constexpr const char *NOT_A_TYPE = "Unable to construct AsnType for a type.";

} // namespace

AsnModule *findTheAnotherModuleOfType(AsnType *type, RecNr *recOut) {
    return findOtherModule(type, recOut, StopAt::ChainEnd);
}

AsnModule *findTheAnotherModuleOfSynType(AsnType *type, RecNr *recOut, bool nextDefined) {
    return findOtherModule(type, recOut, nextDefined ? StopAt::Definition : StopAt::OtherModule);
}

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func) {
    requireCall(func);
    if (!isReference(type))
        return;
    RecNr rec = 0;
    AsnModule *module = findTheAnotherModuleOfType(type, &rec);
    callForRecord(module, rec, NOT_IN_OTHER_MODULE, func);
}

void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func) {
    requireCall(func);
    if (!isReference(type) && !type->inCompOf)
        return;
    RecNr rec = 0;
    AsnModule *module = findTheAnotherModuleOfType(type, &rec);
    callForRecord(module, rec, NOT_IN_OTHER_MODULE, [&](AsnType *defined) { func(type, defined); });
}

void forSynonymTypeInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func) {
    if (!isReference(type))
        return;
    RecNr rec = 0;
    AsnModule *module = findTheAnotherModuleOfSynType(type, &rec, false);
    callForRecord(module, rec, NOT_IN_OTHER_MODULE, func);
}

void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func) {
    if (!isReference(type))
        return;
    RecNr rec = 0;
    AsnModule *module = findTheAnotherModuleOfSynType(type, &rec, true);
    callForRecord(module, rec, NOT_A_TYPE, func);
}

void forNextDefinedTypeAndBaseType(AsnType *type,
                                   Call<void(AsnType *type, AsnType *defined)> func) {
    if (!isReference(type))
        return;
    RecNr rec = 0;
    AsnModule *module = findTheAnotherModuleOfSynType(type, &rec, true);
    callForRecord(module, rec, NOT_A_TYPE, [&](AsnType *defined) { func(type, defined); });
}
