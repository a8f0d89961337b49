#include "model/valuechain.h"

#include "store/classify.h"
#include "store/records.h"

void goThroughValueChain(Call<void(bool first)> leave) {
    ChainGuard guard(REC_VNODE);
    for (bool first = true; isValueReference(); first = false) {
        guard.step(currModule(REC_VNODE));
        const NodePlace place = saveNodeContext(REC_VNODE);
        leave(first);
        restoreNodeContext(REC_VNODE, place);
        followValueReference();
    }
}
