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

/* Classes and object sets share this walk; they differ in what they take from the records on the
   way. */

void goThroughClassSynChain(const ClassChainWalk &walk) {
    NodePlace *firstName = walk.firstName;
    ChainGuard guard(REC_TNODE);
    for (;;) {
        guard.step(currModule(REC_TNODE));
        if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
            const NodePlace place = saveNodeContext(REC_TNODE);
            walk.leave();
            restoreNodeContext(REC_TNODE, place);
        } else if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0) {
            if (walk.selectionIsFatal)
                fatalError(FATAL_INTERNAL, nullptr);
            return;
        }
        if (!followTypeReference())
            return;
        noteFirstName(&firstName);
    }
}
