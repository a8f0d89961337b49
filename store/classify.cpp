#include "store/classify.h"

#include <cstdlib>
#include <cstring>

#include "base/fatal.h"
#include "store/ketramac.h"
#include "store/records.h"
#include "store/strings.h"
#include "store/values.h"

void readLastSNode(ModRec *module, RecNr first) {
    ChainGuard guard(REC_SNODE);
    for (readRec(module, REC_SNODE, first); sNode.next != 0;) {
        guard.step(module);
        readRec(module, REC_SNODE, sNode.next);
    }
}

void followSynonymType() {
    readRec(getModPtr(currModule(REC_TNODE), tNode.refModule), REC_TNODE, tNode.refRecord);
}

void followSynonymValue() {
    readRec(getModPtr(currModule(REC_VNODE), vNode.refModule), REC_VNODE, vNode.refRecord);
}

namespace {

/* The number behind a reference to a VNode, which is written negated; 0 stands for one that no
   record can have. */
RecNr negated(RecNr nr) {
    return nr <= 0 && nr != INT32_MIN ? -nr : 0;
}

/* The module that the last step of a path names; `module` is that of the path. */
ModRec *moduleOfPathEnd(ModRec *module, RecNr first) {
    readLastSNode(module, first);
    ModRec *target = getModPtr(module, sNode.refModule);
    if (target == nullptr)
        fatalError(FATAL_READ_RECORD, nullptr);
    return target;
}

/* From a field list to the field at the end of its path. Into the predefined module a path can't be
   followed: then the record is read that the field list itself names, and the result is false. */
bool stepFieldList() {
    ModRec *module = currModule(REC_TNODE);
    ModRec *target = moduleOfPathEnd(module, tNode.auxRecord);
    if (target->moduleName == PREDEFINED_MODULE) {
        readRec(module, REC_TNODE, tNode.refRecord);
        return false;
    }
    if (sNode.refRecord < 1) {
        readRec(target, REC_VNODE, negated(sNode.refRecord));
        readRec(target, REC_TNODE, vNode.refRecord);
    } else {
        readRec(target, REC_TNODE, sNode.refRecord);
    }
    return true;
}

/* Calls a question of the record reached by all references; the current TNode stays. */
template <typename F> bool askFinalType(F &&question) {
    const NodeContext keep(REC_TNODE);
    skipTypes(true);
    return question();
}

bool finalValueIsClass() {
    const NodeContext keep(REC_VNODE);
    skipValues(true);
    return isClassKind(vNode.valueKind);
}

bool currentTypeIsClass() {
    return isClassKind(tNode.mainType);
}

} // namespace

/* To the end of a chain of references, from the current record. A path through fields of a class
   is followed only where it is asked for: what stands at its start says more about names and
   options. */

void skipValues(bool throughFields) {
    ChainGuard guard(REC_VNODE);
    for (;;) {
        guard.step(currModule(REC_VNODE));
        if (!isValueReference() || (vNode.valueKind == TYP_FIELDLIST && !throughFields))
            return;
        followValueReference();
    }
}

bool isValueReference() {
    return vNode.valueKind == TYP_SYNONYM
               ? vNode.refRecord != 0
               : vNode.valueKind == TYP_FIELDLIST && vNode.auxRecord != 0;
}

void followValueReference() {
    if (vNode.valueKind == TYP_SYNONYM)
        return followSynonymValue();
    ModRec *target = moduleOfPathEnd(currModule(REC_VNODE), vNode.auxRecord);
    readRec(target, REC_VNODE, negated(sNode.refRecord));
}

namespace {

/* To the alternative. */
void followSelection() {
    ModRec *module = currModule(REC_TNODE);
    readRec(module, REC_SNODE, tNode.auxRecord);
    readRec(getModPtr(module, sNode.refModule), REC_TNODE, sNode.refRecord);
}

} // namespace

bool followTypeReference() {
    if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0)
        followSynonymType();
    else if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0)
        followSelection();
    else if (tNode.mainType == TYP_FIELDLIST && tNode.auxRecord != 0)
        skipFieldList();
    else
        return false;
    return true;
}

bool selectsDefinition() {
    const NodeContext selection(REC_TNODE);
    ChainGuard guard(REC_TNODE);
    while (followTypeReference()) {
        guard.step(currModule(REC_TNODE));
        if (tNode.compStatus == TCS_HEADER || tNode.compStatus == TCS_PARAM_HEAD)
            return true;
    }
    return false;
}

void skipTypesCatchInst(bool throughFields, NodePlace *instantiation) {
    if (instantiation != nullptr)
        *instantiation = {};
    ChainGuard guard(REC_TNODE);
    for (int references = 0;; ++references) {
        if (references >= FEW_REFERENCES)
            leapOverPlainReferences();
        ModRec *module = currModule(REC_TNODE);
        guard.step(module);
        if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
            if (instantiation != nullptr && isTopLevelInstantiatedTNode()) {
                *instantiation = saveNodeContext(REC_TNODE);
                instantiation = nullptr;
            }
            followSynonymType();
        } else if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0) {
            followSelection();
        } else if (tNode.mainType == TYP_FIELDLIST && tNode.auxRecord != 0 &&
                   (throughFields || tNode.refModule == FIELDLIST_ALWAYS_FOLLOWED)) {
            if (!stepFieldList()) {
                /* What stands in for the path is followed to its end, whatever was asked for. */
                throughFields = true;
                instantiation = nullptr;
            }
        } else {
            return;
        }
    }
}

void skipTypes(bool throughFields) {
    skipTypesCatchInst(throughFields, nullptr);
}

bool skipFieldList() {
    if (stepFieldList())
        return true;
    skipTypes(true);
    return false;
}

/* What a record says of itself, and what only the end of its chain can say: a reference to a set
   looks like one to a type. */

bool isInstantiatedTNode() {
    return tNode.auxRecord != 0 && tNode.mainType != TYP_SELECTION && tNode.mainType != TYP_ANY &&
           tNode.mainType != TYP_FIELDLIST;
}

bool isTopLevelInstantiatedTNode() {
    return isInstantiatedTNode() && tNode.parentRec == 0;
}
bool isSetTNode() {
    return (tNode.nodeFlags & NODE_SET) != 0;
}
bool isValFieldTNode() {
    return tNode.nameIdx < 0;
}
bool isValSetFieldTNode() {
    return tNode.nameIdx > 0 && isSetTNode();
}
bool isVariabTypeFieldTNode() {
    return (tNode.nodeFlags & NODE_VARIABLE_TYPE_FIELD) != 0;
}

bool isClassTNode() {
    return askFinalType([] { return !isSetTNode() && currentTypeIsClass(); });
}
bool isObjSetTNode() {
    return isSetTNode() && askFinalType(currentTypeIsClass);
}

bool isObjVNode() {
    return (vNode.valueFlags & VALUE_SET) == 0 && finalValueIsClass();
}

namespace {

/* Looks a name up along the definition list, going on where the last look-up stopped: each
   definition is passed once, however many names are asked for. `stored` gives a record by its
   number. */
template <typename Stored>
RecNr findDefinition(ModRec *module, DefinitionIndex *index, RecNr first, RecNr count,
                     const char *name, Stored &&stored) {
    if (const auto known = index->byName.find(name); known != index->byName.end())
        return known->second;
    if (!index->begun) {
        index->begun = true;
        index->next = first;
    }
    while (index->next != 0) {
        const RecNr nr = index->next;
        const auto &node = stored(module, nr);
        if (index->walked++ >= static_cast<std::size_t>(count))
            treeInconsistent(module);
        index->next = node.next;
        if (node.nameIdx == 0)
            continue;
        const char *nodeName = getStri(module, node.nameIdx);
        index->byName.emplace(nodeName, nr);
        if (std::strcmp(nodeName, name) == 0)
            return nr;
    }
    return 0;
}

} // namespace

/* Definitions by name. A module's names are put into an index as far as a search had to go. */

bool findTypeById(ModRec *module, const char *name) {
    const RecNr nr = findDefinition(module, &module->typesByName, module->firstType,
                                    recCount(module, REC_TNODE), name, storedTNode);
    if (nr != 0)
        readRec(module, REC_TNODE, nr);
    return nr != 0;
}

bool findValueById(ModRec *module, const char *name) {
    const RecNr nr = findDefinition(module, &module->valuesByName, module->firstValue,
                                    recCount(module, REC_VNODE), name, storedVNode);
    if (nr != 0)
        readRec(module, REC_VNODE, nr);
    return nr != 0;
}

int compareNumber(const VNode &a, const VNode &b, int kind) {
    if (kind == TYP_INTEGER)
        return i64cmp(valueInt(a), valueInt(b));
    if (kind == TYP_REAL)
        return compareReal(valueReal(a), valueReal(b));
    return 0;
}

int compareValue(const VNode &a, const VNode &b) {
    return compareNumber(a, b, a.valueKind);
}
