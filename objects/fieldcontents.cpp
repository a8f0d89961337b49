#include "objects/fieldvalues.h"

#include <algorithm>

#include "base/fatal.h"
#include "model/constraints.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/valuequeries.h"
#include "objects/objectsets.h"
#include "store/classify.h"
#include "store/records.h"

namespace {

/* Numbers that a range in a set may have; more would be a table that no program wants. */
constexpr int MAX_SET_VALUES = 65'536;

/* Makes the TNode current that the setting names; false if it names none. */
bool readNamedType(const AsnFieldValue *value) {
    if (value->valueRecord == 0)
        return false;
    readRec(value->valueModule, REC_VNODE, value->valueRecord);
    if (vNode.refRecord == 0)
        return false;
    ModRec *module =
        vNode.refModule == 0 ? value->valueModule : getModPtr(value->valueModule, vNode.refModule);
    readRec(module, REC_TNODE, vNode.refRecord);
    return true;
}

/* Follows synonyms from the current TNode until `isWanted` holds or they end. */
template <typename Wanted> void followTypesUntil(Wanted isWanted) {
    ChainGuard guard(REC_TNODE);
    while (!isWanted() && tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
}

/* Makes the value current that the setting means: a definition, or what is written in place; false
   for an absent field. */
bool readMeantValue(const AsnFieldValue *value) {
    if (value->valueRecord == 0)
        return false;
    readRec(value->valueModule, REC_VNODE, value->valueRecord);
    ChainGuard guard(REC_VNODE);
    while (vNode.compStatus != VCS_DEFINITION && vNode.valueKind == TYP_SYNONYM &&
           vNode.refRecord != 0) {
        guard.step(currModule(REC_VNODE));
        followSynonymValue();
    }
    return true;
}

/* From the type that a type field names to the definition that could be an entry type. */
bool readEntryType(const AsnFieldValue *value) {
    if (value->field->fieldKind != FIELD_TYPE || !readNamedType(value))
        return false;
    followTypesUntil([] {
        return tNode.compStatus == TCS_HEADER &&
               (tNode.entryFlags != 0 || tNode.constraintRec != 0);
    });
    return tNode.compStatus == TCS_HEADER && tNode.entryFlags != 0;
}

/* Takes from the handle the constraints that restrict types of which the set has values: only those
   of set records list the values. */
void removeRealConstraints(AsnType *type) {
    std::vector<NodePlace> &places = type->constraintList.places;
    readRec(type->posModule, REC_TNODE, type->posRecord);
    bool isLocal = true;
    followTypesUntil([&] {
        if (!isSetTNode() && tNode.constraintRec != 0) {
            const NodePlace place{currModule(REC_TNODE), tNode.constraintRec};
            const auto found = std::find(places.begin(), places.end(), place);
            if (found != places.end()) {
                places.erase(found);
                --type->nrOfConstraints;
                type->nrOfLocalConstraints -= isLocal;
            }
        }
        isLocal = false;
        return false;
    });
}

/* One walk over the values of a set. */
struct ValueSetWalk {
    AsnFieldValue *value = nullptr;
    FieldValueSetCall func;
    int index = 0;
};

void showValue(ValueSetWalk *walk, AsnValue *asnValue) {
    walk->func(walk->value, asnValue, walk->index++);
}

/* The handle of the lower end shows each number in turn. */
void showRange(ValueSetWalk *walk, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
    const sint64 first = i64addl(int64Value(low), lowClosed ? 0 : 1);
    const sint64 last = i64subl(int64Value(high), highClosed ? 0 : 1);
    if (i64cmp(first, last) > 0)
        return;
    std::int32_t steps = 0;
    if (!i64tol(i64sub(last, first), &steps) || steps < 0 || steps >= MAX_SET_VALUES)
        fatalError(FATAL_INTERNAL, "Too complex value set");
    for (std::int32_t step = 0; step <= steps; ++step) {
        setValueInt(&low->base, i64addl(first, step));
        showValue(walk, low);
    }
}

void constructValueSet(ValueSetWalk *walk, AsnType *type, AsnConstraint *constraint) {
    switch (getConstraintKind(constraint)) {
    case SUB_UNION:
        return forUnionConstraint(type, constraint,
                                  [&](AsnType *owner, AsnConstraint *element, int) {
                                      constructValueSet(walk, owner, element);
                                  });
    case SUB_SINGLE_VALUE:
        return forSingleValueConstraint(
            type, constraint, [&](AsnType *, AsnValue *asnValue) { showValue(walk, asnValue); });
    case SUB_RANGE:
        if (getTypeMainType(type) == TYP_INTEGER)
            forValueRangeConstraint(
                type, constraint,
                [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
                    showRange(walk, low, lowClosed, high, highClosed);
                });
        return;
    default:
        return;
    }
}

} // namespace

/* What a setting means, one function for each kind of field: the definition that it names, or
   what is written in place. Nothing is called for an absent field, or one of another kind. */

void forTypeFieldValue(AsnFieldValue *value, FieldTypeCall func) {
    requireCall(func);
    if (value->field->fieldKind != FIELD_TYPE || !readNamedType(value))
        return;
    AsnModule *owner =
        value->isDefault ? value->field->fieldClass->ownerModule : value->fieldObject->ownerModule;
    AsnType type(getAsnModule(currModule(REC_TNODE)), owner);
    type.partial = true;
    getTypePath(nullptr, &type);
    func(value, &type);
}

void forEntryTypeFieldValue(AsnFieldValue *value, FieldEntryTypeCall func) {
    requireCall(func);
    if (!readEntryType(value))
        return;
    const RecNr nr = saveNodeContext(REC_TNODE).nr;
    AsnModule *module = getAsnModule(currModule(REC_TNODE));
    forEntryTypeByRecNr(
        module, [&](AsnType *type, int entryIndex) { func(value, type, entryIndex); }, nr);
}

void forFixedTypeValueFieldValue(AsnFieldValue *value, FieldAsnValueCall func) {
    requireCall(func);
    if (value->field->fieldKind != FIELD_FIXED_VALUE || !readMeantValue(value))
        return;
    const RecNr nr = saveNodeContext(REC_VNODE).nr;
    const int kind = vNode.compStatus > 1 ? KIND_VALUE : KIND_NAMED_NUMBER;
    AsnModule *module = getAsnModule(currModule(REC_VNODE));
    forValueByRecNr(
        module, [&](AsnValue *asnValue, int) { func(value, asnValue); }, nr, kind);
}

void forFixedTypeValueSetFieldValue(AsnFieldValue *value, FieldValueSetCall func) {
    requireCall(func);
    if (value->field->fieldKind != FIELD_FIXED_VALUE_SET || !readNamedType(value))
        return;
    followTypesUntil(
        [] { return tNode.compStatus == TCS_HEADER || tNode.constraintRec != 0 || isSetTNode(); });
    if (tNode.constraintRec == 0)
        return;
    const RecNr nr = saveNodeContext(REC_TNODE).nr;
    AsnModule *module = getAsnModule(currModule(REC_TNODE));
    ValueSetWalk walk{value, func};
    forTypeByRecNr(
        module,
        [&](AsnType *type, int) {
            removeRealConstraints(type);
            forEachTypeConstraint(type, [&](AsnType *owner, AsnConstraint *constraint) {
                constructValueSet(&walk, owner, constraint);
            });
        },
        KIND_VALUE_SET, nr);
}

int getFixedTypeValueSetFieldSize(AsnFieldValue *value) {
    int size = 0;
    forFixedTypeValueSetFieldValue(value, [&](AsnFieldValue *, AsnValue *, int) { ++size; });
    return size;
}

void forObjectFieldValue(AsnFieldValue *value, FieldObjectCall func) {
    requireCall(func);
    if (value->field->fieldKind != FIELD_OBJECT || !readMeantValue(value))
        return;
    const RecNr nr = saveNodeContext(REC_VNODE).nr;
    AsnModule *module = getAsnModule(currModule(REC_VNODE));
    forObjectByRecNr(
        module, [&](AsnObject *object, int) { func(value, object); }, nr);
}

NodePlace findFieldSetConstraint(const AsnFieldValue *value) {
    if (value->field->fieldKind != FIELD_OBJECT_SET || !readNamedType(value))
        return {};
    return findSetConstraint();
}

void forObjectSetFieldValue(AsnFieldValue *value, FieldObjectSetCall func) {
    requireCall(func);
    forObjectsOfConstraint(findFieldSetConstraint(value), false,
                           [&](AsnObject *object, int index) { func(value, object, index); });
}
