#include "model/valuewalk.h"

#include <cstring>

#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/position.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/valuequeries.h"
#include "store/values.h"

namespace {

/* Makes the governor current, which is a type or a set of values; false if it is neither. */
bool takeGovernor(const NodePlace &place) {
    return takeTNode(place.module, KIND_TYPE, place.nr) ||
           takeTNode(place.module, KIND_VALUE_SET, place.nr);
}

/* The length depends on the type that governs the base, as it finally is. */
std::int32_t baseStringLength(const AsnValue &value) {
    readRec(value.baseModule, REC_VNODE, value.baseRecord);
    readRec(getModPtr(value.baseModule, vNode.governorModule), REC_TNODE, vNode.governorRec);
    skipTypes(true);
    return getAnyStringLength();
}

/* Component values and the components of a type are paired by their ASN.1 names. */
bool isSameName(const AsnValue &value, const AsnType &comp) {
    return std::strcmp(orEmpty(value.compId.id), orEmpty(comp.compId.id)) == 0;
}

ValueListWalk walkComps(AsnValue *value) {
    return {value->ownerModule, {value->baseModule, value->base.refRecord}, value, KIND_VALUE_PART};
}

int valueDepth = 0;

void fillDefinition(AsnValue *value) {
    getValuePath(nullptr, value, KIND_VALUE);
}

} // namespace

/* A value says only what is written; what it means follows from its governor, which is looked up
   when it is asked for. Lengths of strings are worked out at once, since they move the current
   records. */

void getValuePath(AsnValue *father, AsnValue *value, int kind) {
    value->governorPlace = {getModPtr(currModule(REC_VNODE), vNode.governorModule),
                            vNode.governorRec};
    takeValue(value, father, kind);
    if (!takeGovernor(value->governorPlace))
        fatalError(FATAL_INTERNAL, nullptr);
    skipTypes(true);
    if (isStringKind(tNode.mainType))
        value->stringLength = baseStringLength(*value);
}

AsnType *getTypeOfValue(AsnValue *value) {
    if (value->governor == nullptr && takeGovernor(value->governorPlace)) {
        AsnModule *module = getAsnModule(value->governorPlace.module);
        value->governor = std::make_unique<AsnType>(module, module);
        value->governor->partial = true;
        getTypePath(nullptr, value->governor.get());
    }
    return value->governor.get();
}

std::unique_ptr<AsnValue> newValueByNumber(ModRec *modRec, RecNr nr) {
    if (!takeVNode(modRec, KIND_VALUE, nr))
        return nullptr;
    AsnModule *module = getAsnModule(modRec);
    auto value = std::make_unique<AsnValue>(module, module);
    getValuePath(nullptr, value.get(), KIND_VALUE);
    return value;
}

ValueListWalk::ValueListWalk(AsnModule *ownerModule, const NodePlace &first, AsnValue *father,
                             int kind)
    : walkModule_(getAsnModule(first.module)),
      ownerModule_(ownerModule == nullptr ? walkModule_ : ownerModule), father_(father),
      kind_(kind), walk_(first.module, kind, first.nr) {}

AsnValue *ValueListWalk::next() {
    value_.reset();
    if (!walk_.next())
        return nullptr;
    value_.emplace(walkModule_, ownerModule_);
    getValuePath(father_, &*value_, kind_ == KIND_NAMED_NUMBER ? KIND_NAMED_NUMBER : KIND_VALUE);
    return &*value_;
}

/* Definitions of a module. A number leads to a record that a walk would pass over too. */

void forEachValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func) {
    forEachDefinition<AsnValue>(module, KIND_VALUE, fillDefinition, func);
}

void forEachVisValue(AsnModule *module, Call<void(AsnValue *value, int nbr)> func) {
    forEachDefinition<AsnValue>(module, KIND_VALUE, fillDefinition, func, isVisibleValue);
}

void forValueByRecNr(AsnModule *module, Call<void(AsnValue *value, int nbr)> func, RecNr nr,
                     int kind) {
    requireCall(func);
    if (!takeVNode(module->modRec, KIND_VALUE, nr) || vNode.skipInWalk != 0)
        return;
    AsnValue value(module, module);
    getValuePath(nullptr, &value, kind == KIND_NAMED_NUMBER ? KIND_NAMED_NUMBER : KIND_VALUE);
    func(&value, 0);
}

/* Parts of structured values nest as deep as the tree likes, whatever their types say; so each
   level is counted. */

void forEachValueComp(AsnValue *value, Call<void(AsnValue *value, AsnValue *comp, int nbr)> func) {
    requireCall(func);
    const NestingGuard level(&valueDepth, value->posModule, MAX_NESTING);
    ValueListWalk comps = walkComps(value);
    for (int nbr = 0; AsnValue *comp = comps.next(); ++nbr)
        func(value, comp, nbr);
}

void forEachPresentOrAbsentValueComp(
    AsnValue *value,
    Call<void(AsnValue *value, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr)>
        func) {
    requireCall(func);
    AsnType *governor = getTypeOfValue(value);
    if (governor == nullptr)
        return;
    const NestingGuard level(&valueDepth, value->posModule, MAX_NESTING);
    ValueListWalk comps = walkComps(value);
    AsnValue *next = comps.next();
    int presentNbr = 0;
    auto visit = [&](AsnType *, AsnType *comp, int compNbr) {
        if (next == nullptr || !isSameName(*next, *comp)) {
            func(value, comp, compNbr, nullptr, -1);
            return;
        }
        func(value, comp, compNbr, next, presentNbr++);
        next = comps.next();
    };
    if (isBaseTypeInCurrentModule(governor))
        forEachTypeComp(governor, visit);
    else
        forDefBaseTypeDefinedInAnotherModule(
            governor, [&](AsnType *, AsnType *defined) { forEachTypeComp(defined, visit); });
}
