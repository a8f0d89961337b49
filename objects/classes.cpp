#include "objects/classes.h"

#include <unordered_map>

#include "base/fatal.h"
#include "model/typechain.h"
#include "model/hooks.h"
#include "model/modules.h"
#include "model/walk.h"
#include "objects/classchain.h"

namespace {

/* A meta record is being made, and no handle may be filled meanwhile. */
bool constructingMetaRec = false;

void makeMetaRec(AsnObjClass *objClass) {
    if (objClass->compId.id == nullptr && objClass->baseId.id == nullptr &&
        !isPredefinedObjClass(objClass))
        return;
    if (constructingMetaRec)
        fatalError(FATAL_INTERNAL, "Class iterator called inside BEClassMetaRec constructor.");
    if (modelHooks.newBEClassMetaRec == nullptr)
        return;
    constructingMetaRec = true;
    objClass->metaRec.reset(modelHooks.newBEClassMetaRec(objClass));
    constructingMetaRec = false;
}

/* Embedded text of the current record. */
void addEmbeddedText(AsnObjClass *objClass) {
    if ((tNode.optionBits & optionMask(OPT_EMBEDDED_TEXT)) == 0)
        return;
    const NodePlace place = saveNodeContext(REC_TNODE);
    DynaNode entry;
    entry.module = place.module;
    entry.record = place.nr;
    entry.flags = DYNA_EMBEDDED_TEXT;
    entry.tedFirst = tNode.tedFirst;
    entry.tedLast = tNode.tedLast;
    objClass->embeddingEntries.push_back(entry);
}

/* Options are read from the position to the base, which is the last one. */
void applyClassOptions(AsnObjClass *objClass) {
    if (modelHooks.classBEOptionOK == nullptr || objClass->metaRec == nullptr)
        return;
    readRec(objClass->posModule, REC_TNODE, objClass->posRecord);
    readBeginOfChain();
    auto apply = [&](bool last) {
        forEachBEOption(currModule(REC_TNODE), tNode.tedFirst, tNode.tedLast,
                        [&](const char *option) {
                            modelHooks.classBEOptionOK(objClass, objClass->metaRec.get(), option,
                                                       last);
                        });
    };
    goThroughClassSynChain({true, [&] { apply(false); }, nullptr});
    apply(true);
}

/* From a reference to the definition that it names. The name of a set is none of its class. */
void goToDefinedClass() {
    ChainGuard guard(REC_TNODE);
    while ((tNode.compStatus != TCS_HEADER || isSetTNode()) && tNode.mainType == TYP_SYNONYM &&
           tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
}

bool isClassDefinition() {
    return tNode.compStatus == TCS_HEADER || tNode.compStatus == TCS_PARAM_HEAD;
}

/* A nameless class goes by the name of the definition behind the reference that led to it. */
void nameByDefinition(AsnObjClass *objClass, ModRec *module, RecNr recNr) {
    readRec(module, REC_TNODE, recNr);
    ChainGuard guard(REC_TNODE);
    while (!isClassDefinition() && tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
    if (isClassDefinition() &&
        !(currModule(REC_TNODE) == module && saveNodeContext(REC_TNODE).nr == recNr))
        getFixRec(&objClass->compId, KIND_CLASS);
}

using KeptClasses = std::unordered_map<NodePlace, std::unique_ptr<AsnObjClass>, PlaceHash>;

/* A handle on the current TNode, which is reached from `place`. */
AsnObjClass *keepGovernor(KeptClasses *kept, const NodePlace &place) {
    AsnModule *module = getAsnModule(place.module);
    std::unique_ptr<AsnObjClass> &governor = (*kept)[place];
    governor = std::make_unique<AsnObjClass>(module, module);
    getClassPath(governor.get());
    return governor.get();
}

} // namespace

/* Filling a handle: the chain to the class, then the generator's record, then the options that
   speak to it. */

void getClassPath(AsnObjClass *objClass) {
    fillClassPath(objClass, true, [&] { addEmbeddedText(objClass); });
    if (!isClassKind(objClass->base.mainType))
        fatalError(FATAL_INTERNAL, "Non ObjectClass TNode found in the end of chain");
    makeMetaRec(objClass);
    /* Options come last, since the meta record takes them. */
    applyClassOptions(objClass);
}

void forEachObjClass(AsnModule *module, Call<void(AsnObjClass *objClass, int nbr)> func) {
    forEachDefinition<AsnObjClass>(module, KIND_CLASS, getClassPath, func);
}

/* Governors. Thousands of objects name one class, so their handles are kept for the run, by the
   record that names them. */

AsnObjClass *governorForAsnObject(ModRec *fromModule, std::int32_t moduleIndex, RecNr recNr) {
    static KeptClasses kept;
    const NodePlace place{getModPtr(fromModule, moduleIndex), recNr};
    if (const auto found = kept.find(place); found != kept.end())
        return found->second.get();
    /* An object that is written in a set may name the set instead of its class. */
    if (!takeTNode(place.module, KIND_CLASS, recNr) &&
        !takeTNode(place.module, KIND_OBJECT_SET, recNr))
        return nullptr;
    const bool isReference = tNode.mainType == TYP_SYNONYM;
    goToDefinedClass();
    AsnObjClass *objClass = keepGovernor(&kept, place);
    if (objClass->compId.id == nullptr && isReference)
        nameByDefinition(objClass, place.module, recNr);
    return objClass;
}

AsnObjClass *governorForAsnObjectSet(ModRec *fromModule, std::int32_t moduleIndex, RecNr recNr) {
    static KeptClasses kept;
    const NodePlace place{getModPtr(fromModule, moduleIndex), recNr};
    if (const auto found = kept.find(place); found != kept.end())
        return found->second.get();
    return takeTNode(place.module, KIND_CLASS, recNr) ? keepGovernor(&kept, place) : nullptr;
}

void forObjClassDefinedInAnotherModule(AsnObjClass *objClass,
                                       Call<void(AsnObjClass *defined)> func) {
    requireCall(func);
    readRec(objClass->posModule, REC_TNODE, objClass->posRecord);
    readBeginOfChain();
    goThroughClassSynChain({true, [] {}, nullptr});
    const NodePlace end = saveNodeContext(REC_TNODE);
    if (!takeTNode(end.module, KIND_CLASS, end.nr))
        fatalError(FATAL_INTERNAL,
                   "Unable to construct AsnObjClass for a class defined in another module.");
    AsnModule *module = getAsnModule(end.module);
    AsnObjClass defined(module, module);
    getClassPath(&defined);
    func(&defined);
}
