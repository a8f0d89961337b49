#include "model/iterators.h"

#include <unordered_map>

#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/walk.h"
#include "store/classify.h"

namespace {

/* A handle on the current TNode for the time of a call. */
void callForCurrentTNode(AsnModule *walkModule, AsnModule *ownerModule, BaseTypeCall func) {
    AsnType type(walkModule, ownerModule);
    getTypePath(nullptr, &type);
    func(&type);
}

void fillDefinition(AsnType *type) {
    getTypePath(nullptr, type);
}

using EntryNumbers = std::unordered_map<RecNr, int>;

/* The numbers of a module's entry types by record; made at the first question. */
const EntryNumbers &entryNumbers(AsnModule *module) {
    static std::unordered_map<const ModRec *, EntryNumbers> byModule;
    const auto [place, isNew] = byModule.try_emplace(module->modRec);
    EntryNumbers &numbers = place->second;
    if (!isNew || getNrOfEntryTypes(module) <= 0)
        return numbers;
    ListWalk walk(module->modRec, KIND_TYPE);
    while (walk.next())
        if ((tNode.entryFlags & ENTRY_TYPE_FLAG) != 0)
            numbers.emplace(recJustRead[REC_TNODE].nr, static_cast<int>(numbers.size()));
    return numbers;
}

bool refersToDefinition(const AsnType *type) {
    return type->firstMainType == TYP_SYNONYM || type->firstMainType == TYP_FIELDLIST;
}

} // namespace

/* Walks over definitions. One that calls for entry types alone numbers those, since tables have
   a row for each. */

void forEachType(AsnModule *module, TypeCall func) {
    forEachDefinition<AsnType>(module, KIND_TYPE, fillDefinition, func);
}

void forEachEntryType(AsnModule *module, TypeCall func) {
    forEachDefinition<AsnType>(module, KIND_TYPE, fillDefinition, func, isEntryType);
}

void forEachEntryVisType(AsnModule *module, TypeCall func) {
    forEachDefinition<AsnType>(module, KIND_TYPE, fillDefinition, func, [](AsnType *type) {
        return isEntryType(type) || isVisibleType(type);
    });
}

void forTypeByRecNr(AsnModule *module, TypeCall func, int kind, RecNr rec) {
    requireCall(func);
    if (kind != KIND_TYPE && kind != KIND_VALUE_SET && kind != KIND_OBJECT_SET)
        return;
    if (takeTNode(module->modRec, kind, rec))
        callForCurrentTNode(module, module, [&](AsnType *type) { func(type, 0); });
}

void forEntryTypeByRecNr(AsnModule *module, TypeCall func, RecNr rec) {
    requireCall(func);
    const EntryNumbers &numbers = entryNumbers(module);
    const auto entry = numbers.find(rec);
    if (entry != numbers.end() && takeTNode(module->modRec, KIND_TYPE, rec))
        callForCurrentTNode(module, module, [&](AsnType *type) { func(type, entry->second); });
}

/* A name for a definition, and the definition: a generator writes the one in terms of the other. */

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

void forDefinedBaseType(AsnType *type, BaseTypeCall func) {
    requireCall(func);
    if (!refersToDefinition(type))
        return;
    readSynonymTypeTNode(type, true);
    callForCurrentTNode(type->walkModule, type->ownerModule, func);
}

/* --- to the definition behind a reference --- */

namespace {

/* Where a walk along references ends before the chain does. */
enum class StopAt {
    ChainEnd,
    Definition, /* at the first definition, or at a record of another module */
};

/* One step from the current TNode; false if it is the last one. */
bool followReference(StopAt stopAt) {
    ModRec *module = currModule(REC_TNODE);
    if (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        followSynonymType();
        if (stopAt == StopAt::Definition && tNode.compStatus == TCS_HEADER)
            return false;
        return stopAt == StopAt::ChainEnd || currModule(REC_TNODE) == module;
    }
    if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0)
        return selectsDefinition() && followTypeReference();
    if (tNode.mainType == TYP_FIELDLIST && tNode.auxRecord != 0) {
        skipFieldList();
        return true;
    }
    return false;
}

NodePlace findEnd(AsnType *type, StopAt stopAt) {
    readRec(type->posModule, REC_TNODE, type->posRecord);
    ChainGuard guard(REC_TNODE);
    do
        guard.step(currModule(REC_TNODE));
    while (followReference(stopAt));
    return saveNodeContext(REC_TNODE);
}

bool isReference(const AsnType *type) {
    return type->firstMainType == TYP_SYNONYM || type->firstMainType == TYP_FIELDLIST;
}

/* Calls with a handle on the record where the walk along the references ends, with the handle on its
   module. It was asked for by its number, so it may be one that walks leave out. */
void callForEnd(AsnType *type, StopAt stopAt, Call<void(AsnType *defined)> func) {
    const NodePlace end = findEnd(type, stopAt);
    if (!takeTNode(end.module, KIND_TYPE, end.nr))
        fatalError(FATAL_INTERNAL, stopAt == StopAt::Definition
                                       ? "Unable to construct AsnType for a type."
                                       : "Unable to construct AsnType for a type defined in "
                                         "another module.");
    AsnModule *module = getAsnModule(end.module);
    AsnType defined(module, module);
    getTypePath(nullptr, &defined);
    func(&defined);
}

} // namespace

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func) {
    requireCall(func);
    if (isReference(type))
        callForEnd(type, StopAt::ChainEnd, func);
}

void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func) {
    requireCall(func);
    if (isReference(type) || type->inCompOf)
        callForEnd(type, StopAt::ChainEnd, [&](AsnType *defined) { func(type, defined); });
}

void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func) {
    if (isReference(type))
        callForEnd(type, StopAt::Definition, func);
}
