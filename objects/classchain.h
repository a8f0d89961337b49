#pragma once

#include "base/call.h"
#include "model/position.h"
#include "options/naming.h"

/* From the record at which a class or an object set is met to the class behind it, with what is
   gathered on the way. All of these work on the current TNode. */

/* One pass along the chain. */
struct ClassChainWalk {
    bool selectionIsFatal = false;
    Call<void()> leave;             /* for each record that a synonym leaves; it may read records */
    NodePlace *firstName = nullptr; /* receives the first record behind the start that isn't an
                                       instantiation; untouched if there is none */
};

/* To the end of the chain. */
void goThroughClassSynChain(const ClassChainWalk &walk);

/* Fills what handles on classes and object sets (`Handle`) have in common; the base is current
   afterwards. `gather` sees each record of the chain, the base too. */
template <typename Handle>
void fillClassPath(Handle *handle, bool selectionIsFatal, Call<void()> gather) {
    const int definitionKind = isSetTNode() ? KIND_OBJECT_SET : KIND_CLASS;
    takePosition<Handle>(handle, nullptr,
                         tNode.compStatus == TCS_HEADER ? definitionKind : KIND_FIELD);
    std::uint32_t chainOptions = 0;
    NodePlace firstName;
    auto leave = [&] {
        chainOptions |= tNode.optionBits;
        gather();
    };
    goThroughClassSynChain({selectionIsFatal, leave, &firstName});
    gather();
    const NodePlace base = saveNodeContext(REC_TNODE);
    handle->baseModule = base.module;
    handle->baseRecord = base.nr;
    if (isInstance(handle))
        handle->firstMainType = tNode.mainType;
    takeBaseName<Handle>(handle, nullptr, firstName, KIND_CLASS);
    handle->base = tNode;
    settleBaseStatus(handle);
    handle->base.optionBits = inheritedBits(tNode.optionBits | chainOptions);
}
