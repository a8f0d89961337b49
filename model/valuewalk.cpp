#include "model/valuewalk.h"

#include <cstring>

#include "model/beoptions.h"
#include "model/hooks.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/valuechain.h"
#include "model/valuequeries.h"
#include "store/classify.h"
#include "store/ketramac.h"
#include "store/strings.h"
#include "store/values.h"

namespace {

void deleteGovernor(AsnType *governor) {
    if (governor == nullptr)
        return;
    AsnModule *module = governor->walkModule;
    delAsnType(governor);
    delAsnModule(module);
}

/* Hands the options of the current VNode to the generator; a comment counts only on the position.
 */
void getValueSpecificBEOpts(AsnValue *value, bool first) {
    auto apply = [&](const char *text, const char *comment) {
        if (comment != nullptr)
            value->hasCommentOption = value->hasCommentOption || first;
        else if (modelHooks.valueBEOptionOK != nullptr)
            modelHooks.valueBEOptionOK(value, value->metaRec, text);
    };
    forEachBEOption(currModule(REC_VNODE), vNode.tedFirst, vNode.tedLast, apply);
}

/* The length depends on the type that governs the base, as it finally is. */
std::int32_t baseStringLength(const AsnValue &value) {
    readRec(value.baseModule, REC_VNODE, value.baseRecord);
    readRec(getModPtr(value.baseModule, vNode.governorModule), REC_TNODE, vNode.governorRec);
    skipTypes(true);
    return getAnyStringLength();
}

bool isNamedNumberStatus() {
    return vNode.compStatus == 0 || vNode.compStatus == 1;
}

/* Is the current VNode of the sort that a walk of this kind shows? */
bool isOfSort(int kind) {
    switch (kind) {
    case KIND_FIELD:
        return true;
    case KIND_OBJECT:
        return isObjVNode();
    default:
        return !isObjVNode();
    }
}

/* The step of all walks. What stands in a list that was reached by its number is taken whatever its
   status is (`anyStatus`). */
bool stepVNode(AsnModule *module, int kind, bool withSkipped, bool anyStatus) {
    if (kind != KIND_VALUE && kind != KIND_OBJECT && kind != KIND_FIELD &&
        kind != KIND_NAMED_NUMBER)
        fatalError(FATAL_INTERNAL, nullptr);
    RecNr &cursor = module->cursors[static_cast<std::size_t>(kind)];
    ChainGuard guard(REC_VNODE);
    while (cursor != 0) {
        const RecNr nr = cursor;
        guard.step(module->modRec);
        readRec(module->modRec, REC_VNODE, nr);
        cursor = vNode.next;
        if ((withSkipped || vNode.skipInWalk == 0) &&
            (anyStatus || isNamedNumberStatus() == (kind == KIND_NAMED_NUMBER)) && isOfSort(kind)) {
            readRec(module->modRec, REC_VNODE, nr);
            return true;
        }
    }
    return false;
}

/* Refills the handle with the record that a step found, or deletes it after a step that found none.
 */
AsnValue *refillOrDelete(AsnValue *value, bool found, int kind) {
    if (!found) {
        delAsnValue(value);
        return nullptr;
    }
    clearAsnValue(value);
    getValuePath(value->father, value, kind);
    return value;
}

/* Component values and the components of a type are paired by their ASN.1 names. */
bool isSameName(const AsnValue &value, const AsnType &comp) {
    return std::strcmp(orEmpty(value.valueId.id), orEmpty(comp.compId.id)) == 0;
}

RecNr &valueCursor(AsnModule *module) {
    return module->cursors[KIND_VALUE];
}

/* Component values visited inside one another. */
WalkBound valueBound(100'000, 100);

} // namespace

AsnValue *newAsnValue(AsnModule *walkModule, AsnModule *ownerModule) {
    auto *value = new AsnValue;
    value->walkModule = walkModule;
    value->ownerModule = ownerModule;
    return value;
}

void clearAsnValue(AsnValue *value) {
    if (value->metaRec != nullptr && modelHooks.deleteBEValMetaRec != nullptr)
        modelHooks.deleteBEValMetaRec(value->metaRec);
    deleteGovernor(value->governor);
    AsnValue fresh;
    fresh.walkModule = value->walkModule;
    fresh.ownerModule = value->ownerModule;
    fresh.ownModule = value->ownModule;
    fresh.father = value->father;
    fresh.guard = value->guard;
    fresh.compCounter = value->compCounter;
    *value = fresh;
}

void delAsnValue(AsnValue *value) {
    if (value == nullptr)
        return;
    clearAsnValue(value);
    delAsnModule(value->ownModule);
    delete value;
}

void getValuePath(AsnValue *father, AsnValue *value, int kind) {
    const NodePlace position = saveNodeContext(REC_VNODE);
    const RecNr governorRec = vNode.governorRec;
    const std::int32_t governorModule = vNode.governorModule;
    value->father = father;
    value->nesting = father == nullptr ? 0 : father->nesting + 1;
    if (value->nesting > MAX_NESTING)
        treeInconsistent(position.module);
    value->posModule = position.module;
    value->posRecord = position.nr;
    value->compStatus = vNode.compStatus;
    getFixRec(&value->valueId, kind);

    std::uint8_t flags = 0;
    goThroughValueChain([&](bool) {
        if (vNode.valueKind == TYP_SYNONYM)
            flags = static_cast<std::uint8_t>(flags | vNode.valueFlags);
    });
    const NodePlace base = saveNodeContext(REC_VNODE);
    value->baseModule = base.module;
    value->baseRecord = base.nr;
    value->base = vNode;
    value->base.valueFlags =
        static_cast<std::uint8_t>(vNode.valueFlags | (flags & VALUE_INHERITED));
    if (base == position)
        value->baseId = value->valueId;
    else
        getFixRec(&value->baseId, kind);

    value->governor = governorForAsnValue(position.module, governorModule, governorRec);
    if (value->governor == nullptr)
        fatalError(FATAL_INTERNAL, nullptr);
    value->metaRec = modelHooks.newBEValMetaRec == nullptr ? nullptr : modelHooks.newBEValMetaRec();

    /* Options come when the meta record is there. A value that was reached through a reference
       shows no comments. */
    readRec(position.module, REC_VNODE, position.nr);
    goThroughValueChain([&](bool) {
        if (vNode.valueKind == TYP_SYNONYM)
            getValueSpecificBEOpts(value, false);
    });
    getValueSpecificBEOpts(value, base == position);

    if (isStringKind(value->governor->base.mainType))
        value->stringLength = baseStringLength(*value);
}

bool nextVNode(AsnModule *module, int kind, bool withSkipped) {
    return stepVNode(module, kind, withSkipped, kind == KIND_FIELD);
}

bool vNodeByNumber(AsnModule *module, int kind, RecNr nr, bool withSkipped) {
    module->cursors[static_cast<std::size_t>(kind)] = nr;
    return stepVNode(module, kind, withSkipped, true) &&
           saveNodeContext(REC_VNODE) == NodePlace{module->modRec, nr};
}

AsnValue *newValueByNumber(ModRec *modRec, RecNr nr) {
    AsnModule *module = newAsnModule(modRec);
    if (!vNodeByNumber(module, KIND_VALUE, nr, true)) {
        delAsnModule(module);
        return nullptr;
    }
    AsnValue *value = newAsnValue(module, module);
    value->ownModule = module;
    getValuePath(nullptr, value, KIND_VALUE);
    return value;
}

AsnValue *firstValue(AsnModule *module) {
    valueCursor(module) = module->modRec->firstValue;
    if (!nextVNode(module, KIND_VALUE, false))
        return nullptr;
    AsnValue *value = newAsnValue(module, module);
    value->guard.emplace(REC_VNODE);
    getValuePath(nullptr, value, KIND_VALUE);
    return value;
}

AsnValue *nextValue(AsnValue *value) {
    value->guard->step(value->walkModule->modRec);
    return refillOrDelete(value, nextVNode(value->walkModule, KIND_VALUE, false), KIND_VALUE);
}

AsnValue *firstListed(AsnModule *walkModule, AsnModule *ownerModule, const NodePlace &first,
                      AsnValue *father, int kind) {
    if (first.nr == 0)
        return nullptr;
    AsnModule *ownModule = nullptr;
    if (walkModule->modRec != first.module)
        walkModule = ownModule = newAsnModule(first.module);
    walkModule->cursors[static_cast<std::size_t>(kind)] = first.nr;
    if (!stepVNode(walkModule, kind, true, kind == KIND_VALUE)) {
        delAsnModule(ownModule);
        return nullptr;
    }
    AsnValue *value = newAsnValue(walkModule, ownerModule == nullptr ? walkModule : ownerModule);
    value->ownModule = ownModule;
    value->guard.emplace(REC_VNODE);
    getValuePath(father, value, kind);
    return value;
}

AsnValue *nextListed(AsnValue *value, int kind) {
    value->guard->step(value->walkModule->modRec);
    return refillOrDelete(value, stepVNode(value->walkModule, kind, true, kind == KIND_VALUE),
                          kind);
}

AsnValue *firstValueComp(AsnValue *value) {
    return firstListed(value->walkModule, value->ownerModule,
                       {value->baseModule, value->base.refRecord}, value, KIND_VALUE);
}

AsnValue *nextValueComp(AsnValue *comp) {
    return nextListed(comp, KIND_VALUE);
}

void forEachValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func) {
    requireCall(func);
    int nbr = 0;
    for (AsnValue *value = firstValue(module); value != nullptr; value = nextValue(value)) {
        const RecNr cursor = valueCursor(module);
        func(value, nbr++);
        valueCursor(module) = cursor;
    }
}

void forEachVisValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func) {
    requireCall(func);
    int nbr = 0;
    forEachValue(module, [&](AsnValue *value, int) {
        if (isVisibleValue(value))
            func(value, nbr++);
    });
}

void forValueByRecNr(AsnModule *module, Call<void(AsnValue *value, int nbr)> func, RecNr nr,
                     int kind) {
    requireCall(func);
    const int walk = kind == KIND_NAMED_NUMBER ? KIND_NAMED_NUMBER : KIND_VALUE;
    if (vNodeByNumber(module, walk, nr, false)) {
        AsnValue *value = newAsnValue(module, module);
        getValuePath(nullptr, value, walk);
        func(value, 0);
        delAsnValue(value);
    }
    module->cursors[static_cast<std::size_t>(walk)] = nr;
}

void forEachValueComp(AsnValue *value, Call<void(AsnValue *value, AsnValue *comp, int nbr)> func) {
    requireCall(func);
    const WalkLevel level(&valueBound, value->posModule);
    for (AsnValue *comp = firstValueComp(value); comp != nullptr; comp = nextValueComp(comp)) {
        valueBound.step(comp->posModule);
        const RecNr cursor = valueCursor(comp->walkModule);
        func(value, comp, comp->compCounter++);
        valueCursor(comp->walkModule) = cursor;
    }
}

void forEachValueElem(AsnValue *value, Call<void(AsnValue *value, AsnValue *elem, int nbr)> func) {
    forEachValueComp(value, func);
}

void forEachPresentOrAbsentValueComp(
    AsnValue *value,
    Call<void(AsnValue *value, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr)>
        func) {
    requireCall(func);
    if (value->governor == nullptr)
        return;
    const WalkLevel level(&valueBound, value->posModule);
    const RecNr kept = valueCursor(value->walkModule);
    AsnValue *next = firstValueComp(value);
    int presentNbr = 0;
    auto visit = [&](AsnType *, AsnType *comp, int compNbr) {
        valueBound.step(value->posModule);
        if (next == nullptr || !isSameName(*next, *comp)) {
            func(value, comp, compNbr, nullptr, -1);
            return;
        }
        const RecNr cursor = valueCursor(next->walkModule);
        func(value, comp, compNbr, next, presentNbr++);
        valueCursor(next->walkModule) = cursor;
        next = nextValueComp(next);
    };
    if (isBaseTypeInCurrentModule(value->governor))
        forEachTypeComp(value->governor, visit);
    else
        forDefBaseTypeDefinedInAnotherModule(
            value->governor, [&](AsnType *, AsnType *defined) { forEachTypeComp(defined, visit); });
    delAsnValue(next);
    valueCursor(value->walkModule) = kept;
}

void forEachValueCommentOption(AsnValue *value,
                               Call<void(AsnValue *value, const char *option, int nbr)> func) {
    requireCall(func);
    if (!value->hasCommentOption)
        return;
    readRec(value->posModule, REC_VNODE, value->posRecord);
    forEachBEComment(value->posModule, vNode.tedFirst, vNode.tedLast,
                     [&](const char *comment, int nbr) { func(value, comment, nbr); });
}
