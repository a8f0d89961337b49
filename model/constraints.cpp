#include "model/constraints.h"

#include <map>

#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/typewalk.h"
#include "store/classify.h"
#include "store/records.h"
#include "store/values.h"

namespace {

int constraintDepth = 0;

/* Fills a handle from a record, whose number may lead nowhere. */
void initAsnConstraint(AsnConstraint *handle, ModRec *module, RecNr nr) {
    readRec(module, REC_SUB, nr);
    handle->module = module;
    handle->sub = subRec;
}

/* Each kind of constraint shows what stands below it to a call, and does nothing for another
   kind: whoever asks needs no look at the record. */

/* A constraint with one child. */
void forConstraint(AsnType *type, const AsnConstraint *constraint, int kind,
                   Call<void(AsnType *type, AsnConstraint *child)> func) {
    requireCall(func);
    if (constraint->sub.subKind != kind)
        return;
    const NestingGuard level(&constraintDepth, constraint->module, MAX_NESTING);
    AsnConstraint child;
    initAsnConstraint(&child, constraint->module, constraint->sub.first);
    func(type, &child);
}

/* A constraint with a list of elements; one handle serves them all. */
void forSetConstraint(const AsnConstraint *constraint, int kind,
                      Call<void(AsnConstraint *element, int nbr)> func) {
    if (constraint->sub.subKind != kind)
        return;
    ModRec *module = constraint->module;
    const NestingGuard level(&constraintDepth, module, MAX_NESTING);
    ChainGuard guard(REC_SUB);
    AsnConstraint element;
    int nbr = 0;
    for (RecNr nr = constraint->sub.first; nr != 0;) {
        guard.step(module);
        initAsnConstraint(&element, module, nr);
        nr = element.sub.next;
        func(&element, nbr++);
    }
}

/* Reads the place of the list that the handle stands at; false behind the last. */
bool fillFromList(AsnConstraint *constraint, AsnType *type, int place) {
    const std::vector<NodePlace> &places = type->constraintList.places;
    if (place >= static_cast<int>(places.size()))
        return false;
    const NodePlace &node = places[places.size() - 1 - static_cast<std::size_t>(place)];
    readRec(node.module, REC_SUB, node.nr);
    constraint->module = node.module;
    constraint->sub = subRec;
    return true;
}

void forListFrom(AsnType *type, int place,
                 Call<void(AsnType *type, AsnConstraint *constraint)> func) {
    requireCall(func);
    AsnConstraint constraint;
    for (; fillFromList(&constraint, type, place); ++place) {
        if (constraint.sub.subKind != SUB_PASSED_OVER)
            func(type, &constraint);
    }
}

int firstLocalPlace(const AsnType *type) {
    return type->nrOfConstraints - type->nrOfLocalConstraints;
}

std::unique_ptr<AsnValue> asnValueFromConstraint(const AsnConstraint *constraint, RecNr record) {
    return record == 0 ? nullptr : newValueByNumber(constraint->module, record);
}

/* The end of a range that says MIN or MAX. The least size is 0. */
VNode minMaxEnd(AsnType *type, bool isUpper) {
    const int mainType = getTypeMainType(type);
    VNode node;
    node.valueKind = mainType == TYP_REAL ? TYP_REAL : TYP_INTEGER;
    if (isUpper || mainType == TYP_REAL || mainType == TYP_INTEGER)
        setInfinity(&node, isUpper, node.valueKind);
    else
        setValueInt(&node, i64ltosint64(0));
    return node;
}

std::unique_ptr<AsnValue> rangeEnd(AsnType *type, const AsnConstraint *constraint, bool isUpper) {
    auto value = asnValueFromConstraint(constraint, isUpper ? constraint->sub.second
                                                            : constraint->sub.first);
    if (value != nullptr)
        return value;
    AsnModule *module = getAsnModule(constraint->module);
    value = std::make_unique<AsnValue>(module, module);
    initInfinityValue(value.get(), minMaxEnd(type, isUpper));
    return value;
}

int synonymDepth = 0;

/* The element of a list type, also through synonyms. */
void constrainListType(AsnType *type, ElemCall func) {
    NestingGuard nesting(&synonymDepth, type->posModule);
    if (isSynonymType(type))
        forSynonymType(type, [&](AsnType *base) { constrainListType(base, func); });
    else
        forTypeElem(type, func);
}

/* The components of a structure, also through synonyms. */
void constrainStructuredType(AsnType *type, CompCall func) {
    NestingGuard nesting(&synonymDepth, type->posModule);
    auto goOn = [&](AsnType *base) { constrainStructuredType(base, func); };
    if (!isSynonymType(type))
        forEachTypeComp(type, func);
    else if (isBaseTypeInCurrentModule(type))
        forSynonymType(type, goOn);
    else
        forTypeDefinedInAnotherModule(type, goOn);
}

/* The elements of a WITH COMPONENTS list by the component that they speak of; the first one counts.
 */
using ComponentIndex = std::map<std::pair<ModRec *, RecNr>, RecNr>;

ComponentIndex indexComponents(const AsnConstraint *constraint) {
    ComponentIndex index;
    ChainGuard guard(REC_SUB);
    for (RecNr nr = constraint->sub.first; nr != 0; nr = subRec.next) {
        guard.step(constraint->module);
        readRec(constraint->module, REC_SUB, nr);
        index.emplace(std::pair(getModPtr(constraint->module, subRec.compModule), subRec.compTNode),
                      nr);
    }
    return index;
}

/* The constraint on one component; false if there is none. */
bool componentConstraint(AsnConstraint *dst, AsnType *type, const AsnConstraint *constraint,
                         const AsnType *comp, const ComponentIndex &index) {
    const bool full = (constraint->sub.subFlags & SUB_FULL_SPECIFICATION) != 0;
    const auto found = index.find({comp->posModule, comp->posRecord});
    if (found != index.end()) {
        initAsnConstraint(dst, constraint->module, found->second);
        /* An OPTIONAL component that a full specification names must be there. */
        if (full && comp->compStatus == TCS_OPTIONAL && !isPresenceConstraint(dst))
            dst->sub.subFlags |= SUB_PRESENT;
        return true;
    }
    if (!full && getTypeMainType(type) != TYP_CHOICE)
        return false;
    *dst = AsnConstraint{};
    dst->sub.subKind = SUB_EXCEPTION;
    dst->sub.subFlags = SUB_ABSENT;
    return true;
}

/* Words of the kinds; those from SUB_RANGE on follow those of the set operators. */
constexpr const char *subNameArr[] = {
    "union",
    "INTERSECTION",
    "catenated",
    "EXCEPT",
    "ALL EXPECT",
    "range",
    "permitted alphabet",
    "size",
    "single value",
    "INCLUDES",
    "WITH COMPONENT",
    "WITH COMPONENTS",
    "table",
    "user defined",
    "component relation",
    "exception specification",
    "TypeConstraint",
    "extended ValueSet",
};
static_assert(std::size(subNameArr) == SUB_ALL_EXCEPT + SUB_EXTENDED_VALUE_SET - SUB_RANGE + 1);

} // namespace

/* The constraints along the chain of references, the base's first. All of them apply; those of
   the position come last. */

void forEachTypeConstraint(AsnType *type,
                           Call<void(AsnType *type, AsnConstraint *constraint)> func) {
    forListFrom(type, 0, func);
}

void forEachLocalTypeConstraint(AsnType *type,
                                Call<void(AsnType *type, AsnConstraint *constraint)> func) {
    forListFrom(type, firstLocalPlace(type), func);
}

bool isLocalTypeConstraints(AsnType *type) {
    AsnConstraint constraint;
    if (type->nrOfLocalConstraints == 0 || !fillFromList(&constraint, type, firstLocalPlace(type)))
        return false;
    return type->nrOfLocalConstraints > 1 || constraint.sub.subKind != SUB_PASSED_OVER;
}

int getNrOfTypeConstraints(AsnType *type) {
    return type->nrOfConstraints;
}
int getNrOfLocalTypeConstraints(AsnType *type) {
    return type->nrOfLocalConstraints;
}

/* What a constraint is, without a look below it. */

int getConstraintKind(const AsnConstraint *constraint) {
    return constraint->sub.subKind;
}

bool isLeafConstraint(const AsnConstraint *constraint) {
    return constraint->sub.subKind == SUB_RANGE || constraint->sub.subKind == SUB_SINGLE_VALUE;
}

bool isPresenceConstraint(const AsnConstraint *constraint) {
    return getPresenceConstraintKind(constraint) != PRESENCE_NONE;
}

int getPresenceConstraintKind(const AsnConstraint *constraint) {
    const int flags = constraint->sub.subFlags;
    if ((flags & SUB_PRESENT) != 0)
        return PRESENCE_PRESENT;
    if ((flags & SUB_ABSENT) != 0)
        return PRESENCE_ABSENT;
    return (flags & SUB_OPTIONAL) != 0 ? PRESENCE_OPTIONAL : PRESENCE_NONE;
}

const char *subKindName(int kind) {
    if (kind >= SUB_UNION && kind <= SUB_ALL_EXCEPT)
        return subNameArr[kind - SUB_UNION];
    if (kind >= SUB_RANGE && kind <= SUB_EXTENDED_VALUE_SET)
        return subNameArr[kind - SUB_RANGE + SUB_ALL_EXCEPT];
    return nullptr;
}

/* Set operators. Their operands are constraints of the same type. */

void forUnionConstraint(AsnType *type, AsnConstraint *constraint,
                        Call<void(AsnType *type, AsnConstraint *element, int nbr)> func) {
    forSetConstraint(constraint, SUB_UNION,
                     [&](AsnConstraint *element, int nbr) { func(type, element, nbr); });
}

void forIntersectionConstraint(AsnType *type, AsnConstraint *constraint,
                               Call<void(AsnType *type, AsnConstraint *element, int nbr)> func) {
    forSetConstraint(constraint, SUB_INTERSECTION,
                     [&](AsnConstraint *element, int nbr) { func(type, element, nbr); });
}

void forEachCatenatedConstraint(AsnType *type, AsnConstraint *constraint,
                                Call<void(AsnType *type, AsnConstraint *element)> func) {
    forSetConstraint(constraint, SUB_CATENATION,
                     [&](AsnConstraint *element, int) { func(type, element); });
}

void forExceptConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnConstraint *included, AsnConstraint *excluded)> func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_EXCEPT)
        return;
    const NestingGuard level(&constraintDepth, constraint->module, MAX_NESTING);
    AsnConstraint included;
    AsnConstraint excluded;
    initAsnConstraint(&included, constraint->module, constraint->sub.first);
    initAsnConstraint(&excluded, constraint->module, included.sub.next);
    func(type, &included, &excluded);
}

void forAllExceptConstraint(AsnType *type, AsnConstraint *constraint,
                            Call<void(AsnType *type, AsnConstraint *excluded)> func) {
    forConstraint(type, constraint, SUB_ALL_EXCEPT, func);
}

/* Leaves, and constraints on what a type consists of. */

void forSizeConstraint(AsnType *type, AsnConstraint *constraint,
                       Call<void(AsnType *type, AsnConstraint *size)> func) {
    forConstraint(type, constraint, SUB_SIZE, func);
}

void forPermittedAlphabetConstraint(AsnType *type, AsnConstraint *constraint,
                                    Call<void(AsnType *type, AsnConstraint *alphabet)> func) {
    forConstraint(type, constraint, SUB_ALPHABET, func);
}

void forSingleValueConstraint(AsnType *type, AsnConstraint *constraint,
                              Call<void(AsnType *type, AsnValue *value)> func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_SINGLE_VALUE)
        return;
    const auto value = asnValueFromConstraint(constraint, constraint->sub.first);
    if (value == nullptr)
        fatalError(FATAL_INTERNAL, "Unable to construct a value for a constraint.");
    func(type, value.get());
}

void forValueRangeConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed)>
        func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_RANGE)
        return;
    const auto low = rangeEnd(type, constraint, false);
    const auto high = rangeEnd(type, constraint, true);
    func(type, low.get(), (constraint->sub.subFlags & SUB_LOWER_CLOSED) != 0, high.get(),
         (constraint->sub.subFlags & SUB_UPPER_CLOSED) != 0);
}

sint64 getRangeEnd(AsnType *type, const AsnConstraint *constraint, bool isUpper) {
    const RecNr record = isUpper ? constraint->sub.second : constraint->sub.first;
    if (record == 0)
        return valueInt(minMaxEnd(type, isUpper));
    readRec(constraint->module, REC_VNODE, record);
    skipValues(true);
    return valueInt(vNode);
}

/* Constraints by way of other types: contained subtypes, and components that have constraints of
   their own. */

void forContainedSubtypeConstraint(AsnType *type, AsnConstraint *constraint,
                                   Call<void(AsnType *type, AsnConstraint *inner)> func) {
    requireCall(func);
    forContSubtypeConstraint(
        type, constraint, [&](AsnType *, AsnType *, AsnConstraint *inner) { func(type, inner); });
}

void forContSubtypeConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *contained, AsnConstraint *inner)> func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_INCLUDES)
        return;
    const NestingGuard level(&constraintDepth, constraint->module, MAX_NESTING);
    readRec(constraint->module, REC_VNODE, constraint->sub.first);
    readRec(constraint->module, REC_TNODE, vNode.refRecord);
    AsnType contained(type->ownerModule, type->ownerModule);
    getTypePath(nullptr, &contained);
    AsnConstraint inner;
    for (int place = 0; fillFromList(&inner, &contained, place); ++place)
        func(type, &contained, &inner);
}

void forWithComponentConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *element, AsnConstraint *inner)> func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_WITH_COMPONENT)
        return;
    const NestingGuard level(&constraintDepth, constraint->module, MAX_NESTING);
    AsnConstraint inner;
    initAsnConstraint(&inner, constraint->module, constraint->sub.first);
    constrainListType(type, [&](AsnType *, AsnType *elem) { func(type, elem, &inner); });
}

void forWithComponentsConstraint(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, AsnType *comp, AsnConstraint *inner, int compNbr)> func) {
    requireCall(func);
    if (constraint->sub.subKind != SUB_WITH_COMPONENTS)
        return;
    const NestingGuard level(&constraintDepth, constraint->module, MAX_NESTING);
    const ComponentIndex index = indexComponents(constraint);
    constrainStructuredType(type, [&](AsnType *, AsnType *comp, int compNbr) {
        AsnConstraint inner;
        if (componentConstraint(&inner, type, constraint, comp, index))
            func(type, comp, &inner, compNbr);
    });
}
