#include "model/walk.h"

#include "store/classify.h"
#include "store/ketramac.h"

namespace {

bool isVNodeKind(int kind) {
    return kind == KIND_VALUE || kind == KIND_OBJECT || kind == KIND_NAMED_NUMBER ||
           kind == KIND_VALUE_PART;
}

bool isDefinitionKind(int kind) {
    return kind != KIND_COMPONENT && kind != KIND_NAMED_NUMBER && kind != KIND_VALUE_PART;
}

/* Is the current TNode of the kind? It moves. */
bool isTNodeOfKind(int kind) {
    const bool setLike = kind == KIND_VALUE_SET || kind == KIND_OBJECT_SET;
    const bool classLike = kind == KIND_CLASS || kind == KIND_OBJECT_SET;
    if (kind != KIND_TYPE && setLike != isSetTNode())
        return false;
    skipTypes(true);
    return classLike == isClassKind(tNode.mainType);
}

/* Is the current VNode? A named number is told by its status. */
bool isVNodeOfKind(int kind) {
    const bool isNumber = vNode.compStatus == 0 || vNode.compStatus == 1;
    if (kind != KIND_VALUE_PART && isNumber != (kind == KIND_NAMED_NUMBER))
        return false;
    return isObjVNode() == (kind == KIND_OBJECT);
}

} // namespace

ListWalk::ListWalk(ModRec *module, int kind, RecNr first)
    : module_(module), kind_(kind), next_(first),
      guard_(isVNodeKind(kind) ? REC_VNODE : REC_TNODE) {}

ListWalk::ListWalk(ModRec *module, int kind)
    : ListWalk(module, kind, isVNodeKind(kind) ? module->firstValue : module->firstType) {}

/* A walk remembers its place, not the current record, so that calls may read what they like in
   between. */

bool ListWalk::next() {
    const bool ofValues = isVNodeKind(kind_);
    const RecKind records = ofValues ? REC_VNODE : REC_TNODE;
    while (next_ != 0) {
        guard_.step(module_);
        const RecNr nr = next_;
        readRec(module_, records, nr);
        next_ = ofValues ? vNode.next : tNode.next;
        if (isDefinitionKind(kind_) && (ofValues ? vNode.skipInWalk : tNode.skipInWalk) != 0)
            continue;
        if (ofValues ? isVNodeOfKind(kind_) : isTNodeOfKind(kind_)) {
            readRec(module_, records, nr);
            return true;
        }
    }
    return false;
}

bool takeTNode(ModRec *module, int kind, RecNr rec) {
    if (rec == 0)
        return false;
    readRec(module, REC_TNODE, rec);
    if (!isTNodeOfKind(kind))
        return false;
    readRec(module, REC_TNODE, rec);
    return true;
}

bool takeVNode(ModRec *module, int kind, RecNr rec) {
    if (rec == 0)
        return false;
    readRec(module, REC_VNODE, rec);
    if (isObjVNode() != (kind == KIND_OBJECT))
        return false;
    readRec(module, REC_VNODE, rec);
    return true;
}
