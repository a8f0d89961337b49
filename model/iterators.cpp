#include "model/iterators.h"

#include <unordered_map>

#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "store/classify.h"
#include "store/records.h"

namespace {

AsnType *noType(AsnModule *module) {
    module->cursors[KIND_TYPE] = 0;
    return nullptr;
}

/* The walk under all walks over a module's types. */
template <typename Wanted>
void forWantedTypes(AsnModule *module, const TypeCall &func, Wanted wanted) {
    requireCall(func);
    int nbr = 0;
    AsnType *type = firstType(module);
    while (type != nullptr) {
        if (wanted(type)) {
            const RecNr cursor = module->cursors[KIND_TYPE];
            func(type, nbr++);
            module->cursors[KIND_TYPE] = cursor;
        }
        type = nextType(type);
    }
}

/* A handle on the current TNode for the time of a call. */
void callForCurrentTNode(AsnModule *walkModule, AsnModule *ownerModule, BaseTypeCall func) {
    AsnType *type = newAsnType(walkModule, ownerModule);
    getTypePath(nullptr, type);
    func(type);
    delAsnType(type);
}

using EntryNumbers = std::unordered_map<RecNr, int>;

/* The numbers of a module's entry types by record; made at the first question. */
const EntryNumbers &entryNumbers(AsnModule *module) {
    static std::unordered_map<const ModRec *, EntryNumbers> byModule;
    const auto [place, isNew] = byModule.try_emplace(module->modRec);
    EntryNumbers &numbers = place->second;
    if (!isNew || getNrOfEntryTypes(module) <= 0)
        return numbers;
    const RecNr cursor = module->cursors[KIND_TYPE];
    module->cursors[KIND_TYPE] = module->modRec->firstType;
    ChainGuard guard(REC_TNODE);
    while (nextTNode(module, KIND_TYPE, false)) {
        guard.step(module->modRec);
        if ((tNode.entryFlags & ENTRY_TYPE_FLAG) != 0)
            numbers.emplace(recJustRead[REC_TNODE].nr, static_cast<int>(numbers.size()));
    }
    module->cursors[KIND_TYPE] = cursor;
    return numbers;
}

bool refersToDefinition(const AsnType *type) {
    return type->firstMainType == TYP_SYNONYM || type->firstMainType == TYP_FIELDLIST;
}

} // namespace

AsnType *firstType(AsnModule *module) {
    if (module == nullptr)
        return nullptr;
    module->cursors[KIND_TYPE] = module->modRec->firstType;
    if (!nextTNode(module, KIND_TYPE, false))
        return noType(module);
    AsnType *type = newAsnType(module, module);
    getTypePath(nullptr, type);
    return type;
}

AsnType *nextType(AsnType *type) {
    if (type == nullptr)
        return nullptr;
    AsnModule *walkModule = type->walkModule;
    AsnModule *ownerModule = type->ownerModule;
    const RecNr steps = type->walkSteps + 1;
    if (steps > recCount(walkModule->modRec, REC_TNODE))
        treeInconsistent(walkModule->modRec);
    clearAsnType(type);
    if (!nextTNode(walkModule, KIND_TYPE, false)) {
        delAsnType(type);
        return noType(walkModule);
    }
    type->walkModule = walkModule;
    type->ownerModule = ownerModule;
    type->walkSteps = steps;
    getTypePath(nullptr, type);
    return type;
}

void forEachType(AsnModule *module, TypeCall func) {
    forWantedTypes(module, func, [](AsnType *) { return true; });
}

void forEachEntryType(AsnModule *module, TypeCall func) {
    forWantedTypes(module, func, isEntryType);
}

void forEachVisType(AsnModule *module, TypeCall func) {
    forWantedTypes(module, func, isVisibleType);
}

void forEachEntryVisType(AsnModule *module, TypeCall func) {
    forWantedTypes(module, func,
                   [](AsnType *type) { return isEntryType(type) || isVisibleType(type); });
}

void forTypeByRecNr(AsnModule *module, TypeCall func, int kind, RecNr rec) {
    requireCall(func);
    if (kind != KIND_TYPE && kind != KIND_VALUE_SET && kind != KIND_OBJECT_SET)
        return;
    RecNr &cursor = module->cursors[static_cast<std::size_t>(kind)];
    const RecNr kept = cursor;
    if (takeTNode(module, kind, rec, true))
        callForCurrentTNode(module, module, [&](AsnType *type) { func(type, 0); });
    cursor = kept;
}

void forEntryTypeByRecNr(AsnModule *module, TypeCall func, RecNr rec) {
    requireCall(func);
    const EntryNumbers &numbers = entryNumbers(module);
    const auto entry = numbers.find(rec);
    if (entry == numbers.end())
        return;
    const RecNr kept = module->cursors[KIND_TYPE];
    if (takeTNode(module, KIND_TYPE, rec, false))
        callForCurrentTNode(module, module, [&](AsnType *type) { func(type, entry->second); });
    module->cursors[KIND_TYPE] = kept;
}

void readSynonymTypeTNode(AsnType *type, bool followFirst) {
    readRec(type->baseModule, REC_TNODE, type->baseRecord);
    if (tNode.compStatus == TCS_PARAM_HEAD) {
        /* The head has no name of its own: the instantiation lends it one. */
        readRec(type->posModule, REC_TNODE, type->posRecord);
        if (followFirst)
            followTypeReference();
        ChainGuard guard(REC_TNODE);
        while (!isTopLevelInstantiatedTNode() && followTypeReference())
            guard.step(type->posModule);
        if (tNode.compStatus != TCS_HEADER)
            fatalError(FATAL_INTERNAL, "Unable to handle parameterized synonym type.");
    }
    if (tNode.compStatus != TCS_HEADER)
        fatalError(FATAL_INTERNAL, "Unable to find synonym type.");
}

void forSynonymType(AsnType *type, BaseTypeCall func) {
    requireCall(func);
    if (!isSynonymType(type))
        return;
    readSynonymTypeTNode(type, true);
    callForCurrentTNode(type->walkModule, type->ownerModule, func);
}

void forSynonymAndBaseType(AsnType *type, TypePairCall func) {
    requireCall(func);
    forSynonymType(type, [&](AsnType *baseType) { func(type, baseType); });
}

void forDefinedBaseType(AsnType *type, BaseTypeCall func) {
    requireCall(func);
    if (!refersToDefinition(type))
        return;
    readSynonymTypeTNode(type, true);
    callForCurrentTNode(type->walkModule, type->ownerModule, func);
}

void forDefBaseType(AsnType *type, TypePairCall func) {
    requireCall(func);
    forDefinedBaseType(type, [&](AsnType *baseType) { func(type, baseType); });
}
