#include "objects/objects.h"

#include "base/fatal.h"
#include "model/beoptions.h"
#include "model/hooks.h"
#include "model/modules.h"
#include "model/nametexts.h"
#include "model/valuechain.h"
#include "model/valuewalk.h"
#include "store/classify.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* The options of the current VNode; comments count only on the position. */
void applyObjectOptions(AsnObject *object, bool first) {
    auto apply = [&](const char *text, const char *comment) {
        if (comment != nullptr)
            object->hasCommentOption = object->hasCommentOption || first;
        else if (modelHooks.objectBEOptionOK != nullptr)
            modelHooks.objectBEOptionOK(object, object->metaRec, text);
    };
    forEachBEOption(currModule(REC_VNODE), vNode.tedFirst, vNode.tedLast, apply);
}

RecNr &objectCursor(AsnModule *module) {
    return module->cursors[KIND_OBJECT];
}

/* Gives back what the handle owns; its modules stay for a refill. */
void clearAsnObject(AsnObject *object) {
    if (object->metaRec != nullptr && modelHooks.deleteBEObjMetaRec != nullptr)
        modelHooks.deleteBEObjMetaRec(object->metaRec);
    delGovernorClass(object->governor);
    AsnObject empty;
    empty.walkModule = object->walkModule;
    empty.ownerModule = object->ownerModule;
    empty.walkSteps = object->walkSteps;
    empty.live = true;
    *object = empty;
}

} // namespace

void constructAsnObject(AsnObject *object, AsnModule *walkModule, AsnModule *ownerModule) {
    *object = AsnObject();
    object->walkModule = walkModule;
    object->ownerModule = ownerModule;
    object->live = true;
}

void destructAsnObject(AsnObject *object) {
    if (object == nullptr || !object->live)
        return;
    clearAsnObject(object);
    object->live = false;
}

AsnObject *newAsnObject(AsnModule *walkModule, AsnModule *ownerModule) {
    auto *object = new AsnObject;
    constructAsnObject(object, walkModule, ownerModule);
    return object;
}

void delAsnObject(AsnObject *object) {
    destructAsnObject(object);
    delete object;
}

void getObjectPath(AsnObject *father, AsnObject *object, int kind) {
    const NodePlace position = saveNodeContext(REC_VNODE);
    const RecNr governorRec = vNode.governorRec;
    const std::int32_t governorModule = vNode.governorModule;
    object->father = father;
    object->posModule = position.module;
    object->posRecord = position.nr;
    object->compStatus = vNode.compStatus;
    getFixRec(&object->compId, kind);

    std::uint8_t flags = 0;
    goThroughValueChain([&](bool) { flags = static_cast<std::uint8_t>(flags | vNode.valueFlags); });
    const NodePlace base = saveNodeContext(REC_VNODE);
    object->baseModule = base.module;
    object->baseRecord = base.nr;
    object->base = vNode;
    object->base.valueFlags =
        static_cast<std::uint8_t>(vNode.valueFlags | (flags & VALUE_INHERITED));
    if (base == position)
        object->baseId = object->compId;
    else
        getFixRec(&object->baseId, kind);

    object->governor = governorForAsnObject(object, governorModule, governorRec);
    if (object->governor == nullptr)
        fatalError(FATAL_INTERNAL, "Using class method with a non-class construct.");
    if (modelHooks.newBEObjMetaRec != nullptr)
        object->metaRec = modelHooks.newBEObjMetaRec(object);

    readRec(position.module, REC_VNODE, position.nr);
    bool atStart = true;
    goThroughValueChain([&](bool first) {
        applyObjectOptions(object, first);
        atStart = false;
    });
    applyObjectOptions(object, atStart);
}

AsnObject *firstObject(AsnModule *module) {
    objectCursor(module) = module->modRec->firstValue;
    if (!nextVNode(module, KIND_OBJECT, false))
        return nullptr;
    AsnObject *object = newAsnObject(module, module);
    getObjectPath(nullptr, object, KIND_OBJECT);
    return object;
}

AsnObject *nextObject(AsnObject *object) {
    AsnModule *module = object->walkModule;
    if (!nextVNode(module, KIND_OBJECT, false)) {
        delAsnObject(object);
        return nullptr;
    }
    if (++object->walkSteps > recCount(module->modRec, REC_VNODE))
        treeInconsistent(module->modRec);
    const NodePlace found = saveNodeContext(REC_VNODE);
    clearAsnObject(object);
    restoreNodeContext(REC_VNODE, found);
    getObjectPath(nullptr, object, KIND_OBJECT);
    return object;
}

void forEachObject(AsnModule *module, Call<void(AsnObject *object, int nbr)> func) {
    requireCall(func);
    int nbr = 0;
    for (AsnObject *object = firstObject(module); object != nullptr; object = nextObject(object)) {
        const RecNr cursor = objectCursor(module);
        func(object, nbr++);
        objectCursor(module) = cursor;
    }
}

void forObjectByRecNr(AsnModule *module, Call<void(AsnObject *object, int nbr)> func, RecNr recNr) {
    requireCall(func);
    if (recNr == 0)
        return;
    readRec(module->modRec, REC_VNODE, recNr);
    if (!isObjVNode())
        return;
    const RecNr cursor = objectCursor(module);
    objectCursor(module) = vNode.next;
    AsnObject *object = newAsnObject(module, module);
    getObjectPath(nullptr, object, KIND_OBJECT);
    func(object, 0);
    delAsnObject(object);
    objectCursor(module) = cursor;
}

AsnObjClass *getObjClassOfObject(AsnObject *object) {
    return object->governor;
}
AsnModule *getModuleOfObject(AsnObject *object) {
    return object->ownerModule;
}
BEObjMetaRec *getBEObjMetaRec(AsnObject *object) {
    return object->metaRec;
}
std::int32_t getObjectCompStatus(AsnObject *object) {
    return object->compStatus;
}
std::int32_t getBaseObjectCompStatus(AsnObject *object) {
    return object->base.compStatus;
}
bool isDefinedObject(AsnObject *object) {
    return object->compStatus == VCS_DEFINITION;
}
bool isDefinedBaseObject(AsnObject *object) {
    return object->base.compStatus == VCS_DEFINITION;
}
bool isObjectCommentOption(AsnObject *object) {
    return object->hasCommentOption;
}
RecNr getUniqueObjectNr(AsnObject *object) {
    return object->posRecord - 1;
}
RecNr getUniqueBaseObjectNr(AsnObject *object) {
    return object->baseRecord - 1;
}
std::int32_t getObjectDefinitionLine(AsnObject *object) {
    const NodeContext kept(REC_VNODE);
    readRec(object->posModule, REC_VNODE, object->posRecord);
    return vNode.lineNr;
}

Text getObjectRef(AsnObject *object) {
    return orEmpty(object->compId.id);
}
Text getBaseObjectRef(AsnObject *object) {
    return orEmpty(object->baseId.id);
}
Text getObjectId(AsnObject *object) {
    return printFixRec(object->compId);
}
Text getBaseObjectId(AsnObject *object) {
    return printFixRec(object->baseId);
}
