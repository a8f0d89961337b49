#include "objects/objectsets.h"

#include "base/fatal.h"
#include "model/walk.h"
#include "objects/classchain.h"

namespace {

/* The number under which the set's module knows the current TNode's; 0 if it doesn't import it. */
std::int32_t getModNrOfGoverningClass(const AsnObjectSet *objectSet) {
    const ModRec *module = currModule(REC_TNODE);
    if (module == objectSet->posModule)
        return 1;
    for (const auto &import : objectSet->posModule->imports)
        if (import->picMod == module)
            return import->picNr;
    return 0;
}

/* The class at the current TNode. One that is reached through a further module has no number in the
   set's own module, and is taken where it stands. */
AsnObjClass *governorAtCurrent(AsnObjectSet *objectSet) {
    const NodePlace place = saveNodeContext(REC_TNODE);
    const std::int32_t moduleNr = getModNrOfGoverningClass(objectSet);
    if (moduleNr != 0)
        return governorForAsnObjectSet(objectSet->posModule, moduleNr, place.nr);
    return governorForAsnObjectSet(place.module, 1, place.nr);
}

/* An instance of a parameterised class lends the set its name. */
AsnObjClass *findGovernor(AsnObjectSet *objectSet) {
    readRec(objectSet->posModule, REC_TNODE, objectSet->posRecord);
    readBeginOfChain();
    NodePlace instance;
    skipTypesCatchInst(true, &instance);
    const NodePlace end = saveNodeContext(REC_TNODE);
    AsnObjClass *governor = nullptr;
    if (instance.module != nullptr) {
        restoreNodeContext(REC_TNODE, instance);
        governor = governorAtCurrent(objectSet);
    }
    if (governor == nullptr) {
        restoreNodeContext(REC_TNODE, end);
        governor = governorAtCurrent(objectSet);
    }
    if (governor == nullptr)
        fatalError(FATAL_INTERNAL, "Using class method with a non-class construct.");
    return governor;
}

} // namespace

/* A set is a TNode with a constraint that lists objects. Its base is its class, so questions
   about the set itself ask its position. */

void getObjectSetPath(AsnObjectSet *objectSet) {
    fillClassPath(objectSet, false, [] {});
    objectSet->governor = findGovernor(objectSet);
}

void forEachObjectSet(AsnModule *module, Call<void(AsnObjectSet *objectSet, int nbr)> func) {
    forEachDefinition<AsnObjectSet>(module, KIND_OBJECT_SET, getObjectSetPath, func);
}

void forObjectSet(AsnObjectSet *objectSet,
                  Call<void(AsnObjectSet *father, AsnObject *object, int index)> func) {
    requireCall(func);
    readRec(objectSet->posModule, REC_TNODE, objectSet->posRecord);
    if (tNode.refRecord == 0)
        return;
    forObjectsOfConstraint({objectSet->posModule, tNode.constraintRec}, true,
                           [&](AsnObject *object, int index) { func(nullptr, object, index); });
}

AsnObjClass *getObjClassOfObjectSet(AsnObjectSet *objectSet) {
    return objectSet->governor;
}
std::int32_t getObjectSetDefinitionLine(AsnObjectSet *objectSet) {
    /* The base is the class. */
    const NodeContext kept(REC_TNODE);
    readRec(objectSet->posModule, REC_TNODE, objectSet->posRecord);
    return tNode.lineNr;
}

Text getDefObjectSetId(AsnObjectSet *objectSet) {
    if (objectSet->compStatus == TCS_HEADER)
        return printFixRec(objectSet->compId);
    if (objectSet->base.compStatus == TCS_HEADER)
        return printFixRec(objectSet->baseId);
    return "?!?";
}
