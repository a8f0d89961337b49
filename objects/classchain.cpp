#include "objects/classchain.h"

#include "base/fatal.h"

namespace {

void noteFirstName(NodePlace **firstName) {
    if (*firstName == nullptr || isInstantiatedTNode())
        return;
    **firstName = saveNodeContext(REC_TNODE);
    *firstName = nullptr;
}

} // namespace

bool goThroughClassSynChain(const ClassChainWalk &walk) {
    NodePlace *firstName = walk.firstName;
    bool first = true;
    ChainGuard guard(REC_TNODE);
    for (;;) {
        guard.step(currModule(REC_TNODE));
        if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
            const NodePlace place = saveNodeContext(REC_TNODE);
            walk.leave(first);
            restoreNodeContext(REC_TNODE, place);
        } else if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0) {
            if (walk.selectionIsFatal)
                fatalError(FATAL_INTERNAL, nullptr);
            return first;
        }
        if (!followTypeReference())
            return first;
        noteFirstName(&firstName);
        first = false;
    }
}

void forEachClassOption(bool *hasComment, Call<void(const char *option)> option) {
    auto apply = [&](const char *text, const char *comment) {
        if (comment == nullptr)
            option(text);
        else if (hasComment != nullptr)
            *hasComment = true;
    };
    forEachBEOption(currModule(REC_TNODE), tNode.tedFirst, tNode.tedLast, apply);
}
