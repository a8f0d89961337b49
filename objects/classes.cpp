#include "objects/classes.h"

#include "base/fatal.h"
#include "model/hooks.h"
#include "model/modules.h"
#include "model/typewalk.h"
#include "objects/classchain.h"
#include "objects/objects.h"
#include "objects/objectsets.h"

namespace {

/* All handles, and those that were given back; their memory stays valid, so giving one back twice
   does no harm. A fatal error leaves some in use: the list is never destroyed. */
std::vector<std::unique_ptr<AsnObjClass>> &allClasses =
    *new std::vector<std::unique_ptr<AsnObjClass>>;
std::vector<AsnObjClass *> freeClasses;

/* A meta record is being made, and no handle may be filled meanwhile. */
bool constructingMetaRec = false;

/* Gives back what the handle owns; its modules stay for a refill. */
void clearAsnObjClass(AsnObjClass *objClass) {
    if (objClass->metaRec != nullptr && modelHooks.deleteBEClassMetaRec != nullptr)
        modelHooks.deleteBEClassMetaRec(objClass->metaRec);
    AsnObjClass empty;
    empty.embeddingEntries = std::move(objClass->embeddingEntries);
    empty.embeddingEntries.clear();
    empty.walkModule = objClass->walkModule;
    empty.ownerModule = objClass->ownerModule;
    empty.walkSteps = objClass->walkSteps;
    empty.live = true;
    *objClass = std::move(empty);
}

void makeMetaRec(AsnObjClass *objClass) {
    if (objClass->compId.id == nullptr && objClass->baseId.id == nullptr &&
        !isPredefinedObjClass(objClass))
        return;
    if (constructingMetaRec)
        fatalError(FATAL_INTERNAL, "Class iterator called inside BEClassMetaRec constructor.");
    if (modelHooks.newBEClassMetaRec == nullptr)
        return;
    const WalkCursors kept = objClass->walkModule->cursors;
    constructingMetaRec = true;
    objClass->metaRec = modelHooks.newBEClassMetaRec(objClass);
    constructingMetaRec = false;
    objClass->walkModule->cursors = kept;
}

RecNr &classCursor(AsnModule *module) {
    return module->cursors[KIND_CLASS];
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

/* A handle on the current TNode, on a module of its own. */
AsnObjClass *newGovernor(AsnModule *module) {
    AsnObjClass *objClass = newAsnObjClass(module, module);
    getClassPath(nullptr, objClass);
    return objClass;
}

} // namespace

AsnObjClass *newAsnObjClass(AsnModule *walkModule, AsnModule *ownerModule) {
    if (freeClasses.empty()) {
        allClasses.push_back(std::make_unique<AsnObjClass>());
        freeClasses.push_back(allClasses.back().get());
    }
    AsnObjClass *objClass = freeClasses.back();
    freeClasses.pop_back();
    objClass->walkModule = walkModule;
    objClass->ownerModule = ownerModule;
    objClass->walkSteps = 0;
    objClass->live = true;
    return objClass;
}

void delAsnObjClass(AsnObjClass *objClass) {
    if (objClass == nullptr || !objClass->live)
        return;
    clearAsnObjClass(objClass);
    objClass->live = false;
    freeClasses.push_back(objClass);
}

void getClassPath(AsnObjClass *father, AsnObjClass *objClass) {
    fillClassPath(objClass, father, true);
    if (!isClassKind(objClass->base.mainType))
        fatalError(FATAL_INTERNAL, "Non ObjectClass TNode found in the end of chain");
    makeMetaRec(objClass);
    /* Options come last, since the meta record takes them. */
    applyClassOptions(objClass, true, [&](const char *option, bool last) {
        if (modelHooks.classBEOptionOK != nullptr && objClass->metaRec != nullptr)
            modelHooks.classBEOptionOK(objClass, objClass->metaRec, option, last);
    });
}

AsnObjClass *firstObjClass(AsnModule *module) {
    classCursor(module) = module->modRec->firstType;
    if (!nextTNode(module, KIND_CLASS, false)) {
        classCursor(module) = 0;
        return nullptr;
    }
    AsnObjClass *objClass = newAsnObjClass(module, module);
    getClassPath(nullptr, objClass);
    return objClass;
}

AsnObjClass *nextObjClass(AsnObjClass *objClass) {
    AsnModule *module = objClass->walkModule;
    clearAsnObjClass(objClass);
    if (!nextTNode(module, KIND_CLASS, false)) {
        classCursor(module) = 0;
        delAsnObjClass(objClass);
        return nullptr;
    }
    if (++objClass->walkSteps > recCount(module->modRec, REC_TNODE))
        treeInconsistent(module->modRec);
    getClassPath(nullptr, objClass);
    return objClass;
}

void forEachObjClass(AsnModule *module, Call<void(AsnObjClass *objClass, int nbr)> func) {
    requireCall(func);
    int nbr = 0;
    for (AsnObjClass *objClass = firstObjClass(module); objClass != nullptr;
         objClass = nextObjClass(objClass)) {
        const RecNr cursor = classCursor(module);
        func(objClass, nbr++);
        classCursor(module) = cursor;
    }
}

AsnObjClass *governorForAsnObject(AsnObject *object, std::int32_t moduleIndex, RecNr recNr) {
    AsnModule *module = newAsnModule(getModPtr(object->posModule, moduleIndex));
    /* An object that is written in a set may name the set instead of its class. */
    if (!takeTNode(module, KIND_CLASS, recNr, true) &&
        !takeTNode(module, KIND_OBJECT_SET, recNr, true)) {
        delAsnModule(module);
        return nullptr;
    }
    const bool isReference = tNode.mainType == TYP_SYNONYM;
    goToDefinedClass();
    AsnObjClass *objClass = newGovernor(module);
    if (objClass->compId.id == nullptr && isReference)
        nameByDefinition(objClass, module->modRec, recNr);
    return objClass;
}

AsnObjClass *governorForAsnObjectSet(AsnObjectSet *objectSet, std::int32_t moduleIndex,
                                     RecNr recNr) {
    AsnModule *module = newAsnModule(getModPtr(objectSet->posModule, moduleIndex));
    if (!takeTNode(module, KIND_CLASS, recNr, true)) {
        delAsnModule(module);
        return nullptr;
    }
    return newGovernor(module);
}

void delGovernorClass(AsnObjClass *objClass) {
    if (objClass == nullptr)
        return;
    AsnModule *module = objClass->walkModule;
    delAsnObjClass(objClass);
    delAsnModule(module);
}

AsnModule *findTheAnotherModuleOfObjClass(AsnObjClass *objClass, RecNr *recNr) {
    readRec(objClass->posModule, REC_TNODE, objClass->posRecord);
    readBeginOfClassChain();
    goThroughClassSynChain({true, [](bool) {}, nullptr});
    *recNr = saveNodeContext(REC_TNODE).nr;
    return newAsnModule(currModule(REC_TNODE));
}

void forObjClassDefinedInAnotherModule(AsnObjClass *objClass,
                                       Call<void(AsnObjClass *defined)> func) {
    requireCall(func);
    RecNr recNr = 0;
    AsnModule *module = findTheAnotherModuleOfObjClass(objClass, &recNr);
    if (!takeTNode(module, KIND_CLASS, recNr, true))
        fatalError(FATAL_INTERNAL,
                   "Unable to construct AsnObjClass for a class defined in another module.");
    AsnObjClass *defined = newGovernor(module);
    func(defined);
    delGovernorClass(defined);
}
