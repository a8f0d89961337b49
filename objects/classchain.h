#pragma once

#include "base/call.h"
#include "model/backend.h"
#include "model/beoptions.h"
#include "model/nametexts.h"
#include "store/classify.h"
#include "store/ketramac.h"
#include "store/records.h"
#include "store/strings.h"

/* From the record at which a class or an object set is met to the class behind it, with what is
   gathered on the way. Handles of both kinds (`Handle`) have the same fields for that. All of these
   work on the current TNode. */

/* One pass along the chain. */
struct ClassChainWalk {
    bool selectionIsFatal = false;
    Call<void(bool first)> leave;   /* for each record that a synonym leaves; it may read records */
    NodePlace *firstName = nullptr; /* receives the first record behind the start that isn't an
                                       instantiation; untouched if there is none */
};

/* The current record may be an instantiation: then the chain begins at what it is one of. */
inline void readBeginOfClassChain() {
    if (isInstantiatedTNode())
        readRec(getModPtr(currModule(REC_TNODE), tNode.refModule), REC_TNODE, tNode.refRecord);
}

/* To the end of the chain; the result tells whether that is where it began. */
bool goThroughClassSynChain(const ClassChainWalk &walk);

/* The options of the current record: comments set `*hasComment` if that is given, all others go to
   `option`. */
void forEachClassOption(bool *hasComment, Call<void(const char *option)> option);

/* What the current record says of the position. */
template <typename Handle> void initClassPosition(Handle *handle, Handle *father) {
    const NodePlace position = saveNodeContext(REC_TNODE);
    handle->posModule = position.module;
    handle->posRecord = position.nr;
    handle->father = father;
    handle->compStatus = tNode.compStatus;
    handle->defaultValue = tNode.defaultValue;
    handle->stamp = tNode.stamp;
    handle->auxRecord = tNode.auxRecord;
    const int definitionKind = isSetTNode() ? KIND_OBJECT_SET : KIND_CLASS;
    getFixRec(&handle->compId, tNode.compStatus == TCS_HEADER ? definitionKind : KIND_FIELD);

    unsigned flags = tNode.typeFlags;
    if (isInstantiatedTNode()) {
        flags |= TYPE_INSTANTIATED;
        if (isTopLevelInstantiatedTNode())
            flags |= TYPE_TOP_LEVEL_INSTANTIATED;
        readBeginOfClassChain();
        flags |= tNode.typeFlags;
    }
    handle->firstMainType = tNode.mainType;
    handle->firstTypeFlags = static_cast<std::uint16_t>(flags);
    handle->typeOptions = tNode.typeOptions;
}

template <typename Handle> void addEmbeddedText(Handle *handle) {
    if ((tNode.optionBits & optionMask(OPT_EMBEDDED_TEXT)) == 0)
        return;
    const NodePlace place = saveNodeContext(REC_TNODE);
    DynaNode entry;
    entry.module = place.module;
    entry.record = place.nr;
    entry.flags = DYNA_EMBEDDED_TEXT;
    entry.tedFirst = tNode.tedFirst;
    entry.tedLast = tNode.tedLast;
    handle->embeddingEntries.push_back(entry);
}

/* The name of the base; the base is current, before and afterwards. */
template <typename Handle>
void setBaseClassId(Handle *handle, const Handle *father, const NodePlace &firstName) {
    const NodePlace base = saveNodeContext(REC_TNODE);
    const bool instantiated = (handle->firstTypeFlags & TYPE_INSTANTIATED) != 0;
    const bool topLevel = (handle->firstTypeFlags & TYPE_TOP_LEVEL_INSTANTIATED) != 0;
    if (base == NodePlace{handle->posModule, handle->posRecord} || topLevel) {
        handle->baseId = handle->compId;
    } else if (instantiated && father != nullptr) {
        handle->baseId = father->baseId;
    } else {
        restoreNodeContext(REC_TNODE, firstName.module == nullptr ? base : firstName);
        getFixRec(&handle->baseId, KIND_CLASS);
        restoreNodeContext(REC_TNODE, base);
    }
}

/* The copy of the base record, which is current, with the option bits of the records before it. */
template <typename Handle> void copyClassBase(Handle *handle, std::uint32_t chainOptions) {
    const bool instantiated = (handle->firstTypeFlags & TYPE_INSTANTIATED) != 0;
    TNode &base = handle->base;
    base = tNode;
    if ((handle->firstTypeFlags & TYPE_TOP_LEVEL_INSTANTIATED) != 0)
        base.compStatus = handle->compStatus;
    if (base.compStatus == TCS_PARAM_HEAD && !instantiated &&
        (handle->firstMainType == TYP_SYNONYM || handle->firstMainType == TYP_SELECTION ||
         handle->firstMainType == TYP_FIELDLIST))
        base.compStatus = TCS_HEADER;
    base.optionBits |= chainOptions;
    base.optionBits &=
        ~(optionMask(OPT_EMBEDDED_TEXT) | optionMask(OPT_BIT_2) | optionMask(OPT_NAMING));
}

/* Fills all fields but the meta record and the comment flag; the base is current afterwards. */
template <typename Handle>
void fillClassPath(Handle *handle, Handle *father, bool selectionIsFatal) {
    initClassPosition(handle, father);
    std::uint32_t chainOptions = 0;
    NodePlace firstName;
    auto leave = [&](bool) {
        chainOptions |= tNode.optionBits;
        addEmbeddedText(handle);
        ++handle->chainDepth;
    };
    goThroughClassSynChain({selectionIsFatal, leave, &firstName});
    handle->baseModule = currModule(REC_TNODE);
    handle->baseRecord = saveNodeContext(REC_TNODE).nr;
    if ((handle->firstTypeFlags & TYPE_INSTANTIATED) != 0)
        handle->firstMainType = tNode.mainType;
    setBaseClassId(handle, father, firstName);
    addEmbeddedText(handle);
    copyClassBase(handle, chainOptions);
    if (father != nullptr) {
        if (handle->base.compStatus != TCS_HEADER)
            handle->baseId = father->baseId;
        handle->defLevel = father->defLevel;
    }
}

/* Reads the options of each record from the position to the base. */
template <typename Handle>
void applyClassOptions(Handle *handle, bool selectionIsFatal,
                       Call<void(const char *option, bool last)> apply) {
    readRec(handle->posModule, REC_TNODE, handle->posRecord);
    readBeginOfClassChain();
    auto read = [&](bool first, bool last) {
        forEachClassOption(first ? &handle->hasCommentOption : nullptr,
                           [&](const char *option) { apply(option, last); });
    };
    const bool atStart = goThroughClassSynChain(
        {selectionIsFatal, [&](bool first) { read(first, false); }, nullptr});
    read(atStart, true);
}
