#pragma once

#include "model/backend.h"
#include "store/classify.h"
#include "store/records.h"

/* How all handles are filled: the position and the base that they have in common. */

/* The current TNode may be an instantiation: then the chain of references begins at the parameterised
   definition. */
inline void readBeginOfChain() {
    if (isInstantiatedTNode())
        readRec(getModPtr(currModule(REC_TNODE), tNode.refModule), REC_TNODE, tNode.refRecord);
}

template <typename Handle> bool isInstance(const Handle *handle) {
    return (handle->firstTypeFlags & TYPE_INSTANTIATED) != 0;
}
/* An instance that is a definition of its own. */
template <typename Handle> bool isTopLevelInstance(const Handle *handle) {
    return (handle->firstTypeFlags & TYPE_TOP_LEVEL_INSTANTIATED) != 0;
}

/* Where it was met, and its name there. */
template <typename Handle>
void takePlace(Handle *handle, Handle *father, const NodePlace &place, std::int32_t status,
               int nameKind) {
    handle->father = father;
    handle->posModule = place.module;
    handle->posRecord = place.nr;
    handle->compStatus = status;
    getFixRec(&handle->compId, nameKind);
}

/* What the current TNode says of the position of a type, class or object set; afterwards the record
   is current at which the chain of references begins. */
template <typename Handle> void takePosition(Handle *handle, Handle *father, int nameKind) {
    takePlace(handle, father, saveNodeContext(REC_TNODE), tNode.compStatus, nameKind);
    handle->typeOptions = tNode.typeOptions;
    unsigned flags = tNode.typeFlags;
    if (isInstantiatedTNode()) {
        flags |= TYPE_INSTANTIATED;
        if (isTopLevelInstantiatedTNode())
            flags |= TYPE_TOP_LEVEL_INSTANTIATED;
        readBeginOfChain();
        flags |= tNode.typeFlags;
        handle->typeOptions.definiteLength = tNode.typeOptions.definiteLength;
    }
    handle->firstMainType = tNode.mainType;
    handle->firstTypeFlags = static_cast<std::uint16_t>(flags);
}

/* The name of the base. That of a definition is the one it has at `named`, where the chain came to a
   name last or first; a detail of a parameterised definition goes by the name of its father. */
template <typename Handle>
void takeBaseName(Handle *handle, const Handle *father, const NodePlace &named, int nameKind) {
    const NodePlace position{handle->posModule, handle->posRecord};
    if (NodePlace{handle->baseModule, handle->baseRecord} == position ||
        isTopLevelInstance(handle)) {
        handle->baseId = handle->compId;
    } else if (isInstance(handle) && father != nullptr) {
        handle->baseId = father->baseId;
    } else {
        const NodeContext kept(REC_TNODE);
        restoreNodeContext(REC_TNODE, named);
        getFixRec(&handle->baseId, nameKind);
    }
}

/* The option bits of a base; those that speak of the record alone don't count. */
inline std::uint32_t inheritedBits(std::uint32_t bits) {
    return bits &
           ~(optionMask(OPT_EMBEDDED_TEXT) | optionMask(OPT_BIT_2) | optionMask(OPT_NAMING));
}

/* The status of a parameterised head is what the reference to it makes of it. */
template <typename Handle> void settleBaseStatus(Handle *handle) {
    if (isTopLevelInstance(handle))
        handle->base.compStatus = handle->compStatus;
    else if (handle->base.compStatus == TCS_PARAM_HEAD && !isInstance(handle) &&
             (handle->firstMainType == TYP_SYNONYM || handle->firstMainType == TYP_SELECTION ||
              handle->firstMainType == TYP_FIELDLIST))
        handle->base.compStatus = TCS_HEADER;
}

/* Position and base of a value or an object, from the current VNode; the base is current
   afterwards. */
template <typename Handle> void takeValue(Handle *handle, Handle *father, int nameKind) {
    const NodePlace position = saveNodeContext(REC_VNODE);
    takePlace(handle, father, position, vNode.compStatus, nameKind);
    skipValues(true);
    const NodePlace base = saveNodeContext(REC_VNODE);
    handle->baseModule = base.module;
    handle->baseRecord = base.nr;
    handle->base = vNode;
    if (base == position)
        handle->baseId = handle->compId;
    else
        getFixRec(&handle->baseId, nameKind);
}
