#include "model/valuesets.h"

#include <cstdio>

#include "model/constraints.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "store/ketramac.h"

namespace {

/* A part of a constraint, by itself. */
IntegerValueSet setOf(AsnType *type, AsnConstraint *constraint) {
    IntegerValueSet set;
    makeValueSet(&set, type, constraint);
    return set;
}

void addElement(IntegerValueSet *set, AsnType *type, AsnConstraint *element) {
    IntegerValueSet part = setOf(type, element);
    mergeValueSets(set, &part);
}

void setToWholeIfEmpty(IntegerValueSet *set) {
    if (set->segs.empty())
        setToRange(set, i64min(), i64max());
}

/* The kinds that makeValueSet knows. */

void addUnion(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forUnionConstraint(type, constraint, [&](AsnType *, AsnConstraint *element, int) {
        addElement(set, type, element);
    });
}

void addCatenation(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forEachCatenatedConstraint(type, constraint, [&](AsnType *, AsnConstraint *element) {
        addElement(set, type, element);
    });
}

void addIntersection(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forIntersectionConstraint(type, constraint, [&](AsnType *, AsnConstraint *element, int nbr) {
        IntegerValueSet part = setOf(type, element);
        if (nbr == 0)
            moveValueSet(set, &part);
        else
            intersectValueSets(set, &part);
    });
}

void addExcept(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forExceptConstraint(type, constraint,
                        [&](AsnType *, AsnConstraint *included, AsnConstraint *excluded) {
                            IntegerValueSet in = setOf(type, included);
                            IntegerValueSet out = setOf(type, excluded);
                            excludeValueSets(&in, &out);
                            moveValueSet(set, &in);
                        });
}

void addAllExcept(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forAllExceptConstraint(type, constraint, [&](AsnType *, AsnConstraint *excluded) {
        IntegerValueSet out = setOf(type, excluded);
        setToWholeIfEmpty(set);
        excludeValueSets(set, &out);
    });
}

/* An open end lies one further inward. */
void addRange(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    const std::uint8_t closed = constraint->sub.subFlags;
    setToRange(set,
               i64addl(getRangeEnd(type, constraint, false), (closed & SUB_LOWER_CLOSED) ? 0 : 1),
               i64subl(getRangeEnd(type, constraint, true), (closed & SUB_UPPER_CLOSED) ? 0 : 1));
}

void addSingleValue(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forSingleValueConstraint(type, constraint, [&](AsnType *, AsnValue *value) {
        setToRange(set, int64Value(value), int64Value(value));
    });
}

void addSize(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forSizeConstraint(type, constraint,
                      [&](AsnType *, AsnConstraint *size) { makeValueSet(set, type, size); });
}

void addContainedSubtype(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    forContainedSubtypeConstraint(
        type, constraint, [&](AsnType *, AsnConstraint *inner) { makeValueSet(set, type, inner); });
}

void addTable(IntegerValueSet *set, AsnType *, AsnConstraint *) {
    setToWholeIfEmpty(set);
}

struct KindRow {
    int kind;
    void (*add)(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint);
};
constexpr KindRow kindRows[] = {
    {SUB_UNION, addUnion},
    {SUB_INTERSECTION, addIntersection},
    {SUB_CATENATION, addCatenation},
    {SUB_EXCEPT, addExcept},
    {SUB_ALL_EXCEPT, addAllExcept},
    {SUB_RANGE, addRange},
    {SUB_SIZE, addSize},
    {SUB_SINGLE_VALUE, addSingleValue},
    {SUB_INCLUDES, addContainedSubtype},
    {SUB_TABLE, addTable},
};

/* The flat set of a type, from its constraints. */
void makeIntegerValueSet(AsnType *type, IntegerValueSet *set) {
    freeIntegerValueSet(set);
    if (isConstraints(type))
        forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
            makeValueSet(set, type, constraint);
        });
    setToWholeIfEmpty(set);
}

/* The items, less those that the constraints leave out. */
void makeEnumeratedValueSet(AsnType *type, IntegerValueSet *set) {
    freeIntegerValueSet(set);
    if (getTypeMainType(type) != TYP_ENUM)
        return;
    forEachNamedNumber(type, [&](AsnType *, AsnValue *value, int) {
        IntegerValueSet item;
        setToRange(&item, int64Value(value), int64Value(value));
        mergeValueSets(set, &item);
    });
    if (!isConstraints(type))
        return;
    IntegerValueSet allowed;
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        makeValueSet(&allowed, type, constraint);
    });
    if (!allowed.segs.empty())
        intersectValueSets(set, &allowed);
}

/* What size constraints say, other constraints left out. */
void addSizeConstraint(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    if (getConstraintKind(constraint) == SUB_SIZE)
        makeValueSet(set, type, constraint);
    forEachCatenatedConstraint(type, constraint, [&](AsnType *, AsnConstraint *element) {
        addSizeConstraint(set, type, element);
    });
}

bool hasValueSet(AsnType *type) {
    return getTypeMainType(type) == TYP_INTEGER || getTypeMainType(type) == TYP_ENUM;
}

bool hasSizeSet(AsnType *type) {
    return hasSizeKind(getTypeMainType(type));
}

/* The set of a type that has one, built if this is the first question; null for other types. */
const IntegerValueSet *valueSetOf(AsnType *type) {
    if (!hasValueSet(type))
        return nullptr;
    if (type->valueSet == nullptr)
        initValueSet(type);
    return type->valueSet.get();
}

const IntegerValueSet *sizeSetOf(AsnType *type) {
    if (!hasSizeSet(type))
        return nullptr;
    if (type->valueSet == nullptr)
        initSizeValueSet(type);
    return type->valueSet.get();
}

/* Either, if it isn't empty. */
const IntegerValueSet *filledSetOf(AsnType *type) {
    const IntegerValueSet *set = hasValueSet(type) ? valueSetOf(type) : sizeSetOf(type);
    return set == nullptr || set->segs.empty() ? nullptr : set;
}

int walk64(AsnType *type, const IntegerValueSet &set,
           Call<void(AsnType *type, const Int64Range *range, int nbr)> func) {
    int nbr = 0;
    for (const Int64Range &seg : set.segs) {
        const Int64Range range = seg;
        func(type, &range, nbr++);
    }
    return nbr;
}

/* The set of one size constraint; empty for another constraint or type. */
IntegerValueSet sizeConstraintSet(AsnType *type, AsnConstraint *constraint) {
    IntegerValueSet set;
    if (hasSizeSet(type) && getConstraintKind(constraint) == SUB_SIZE)
        makeValueSet(&set, type, constraint);
    return set;
}

} // namespace

/* Sets of a type, made at the first question and kept with the handle. */

void initValueSet(AsnType *type) {
    type->valueSet = std::make_unique<IntegerValueSet>();
    if (getTypeMainType(type) == TYP_INTEGER)
        makeIntegerValueSet(type, type->valueSet.get());
    else
        makeEnumeratedValueSet(type, type->valueSet.get());
}

void initSizeValueSet(AsnType *type) {
    type->valueSet = std::make_unique<IntegerValueSet>();
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        addSizeConstraint(type->valueSet.get(), type, constraint);
    });
}

void makeValueSet(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint) {
    for (const KindRow &row : kindRows) {
        if (row.kind == getConstraintKind(constraint))
            row.add(set, type, constraint);
    }
}

/* Whether a check of the set is a comparison, several, or none. */

bool isSimpleIntegerValueSet(AsnType *type) {
    const IntegerValueSet *set = valueSetOf(type);
    return set != nullptr && set->segs.size() == 1;
}

bool isSimpleSizeConstraintValueSet(AsnType *type) {
    const IntegerValueSet *set = sizeSetOf(type);
    return set != nullptr && set->segs.size() == 1;
}

bool isSizeConstraintValueSet(AsnType *type) {
    const IntegerValueSet *set = sizeSetOf(type);
    return set != nullptr && !set->segs.empty();
}

bool isExtensibleIntegerValueSet(AsnType *type) {
    return (type->base.typeFlags & TYPE_EXTENSIBLE) != 0 && getTypeMainType(type) == TYP_INTEGER;
}

bool isExtensibleSizeConstraintValueSet(AsnType *type) {
    const int mainType = getTypeMainType(type);
    return (type->base.typeFlags & TYPE_EXTENSIBLE) != 0 &&
           ((hasSizeKind(mainType) && mainType != TYP_OBJDESCR) || mainType == TYP_CHASTR);
}

bool isLastInt64ValueSetSeg(AsnType *type, const Int64Range *range) {
    const IntegerValueSet *set = filledSetOf(type);
    return set != nullptr && set->segs.back().lower == range->lower;
}

/* The ranges one by one, and the outer ends alone for what can't have gaps. */

int forInt64ValueSet(AsnType *type,
                     Call<void(AsnType *type, const Int64Range *range, int nbr)> func) {
    requireCall(func);
    const IntegerValueSet *set = valueSetOf(type);
    return set == nullptr ? 0 : walk64(type, *set, func);
}

int forInt64SizeConstraintValueSet(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, const Int64Range *range, int nbr)> func) {
    requireCall(func);
    return walk64(type, sizeConstraintSet(type, constraint), func);
}

void getInt64SizeConstraintEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc) {
    *low = i64ltosint64(0);
    *high = i64max();
    const IntegerValueSet *set = sizeSetOf(type);
    if (set != nullptr && !set->segs.empty()) {
        *low = set->segs.front().lower;
        *high = set->segs.back().upper;
    }
    const sint64 limit = i64ultosint64(type->base.typeOptions.sizeLimit);
    *alloc = !i64iszero(limit) && i64cmp(limit, *high) < 0 ? limit : *high;
}

/* --- bounds as numbers of 32 bits --- */

namespace {

constexpr std::int32_t MAX_INT32 = 0x7FFFFFFF;
constexpr std::int32_t MIN_INT32 = -MAX_INT32 - 1;

} // namespace

std::int32_t int64ToInt32(sint64 value, AsnModule *module, std::int32_t line, const char *message) {
    if (i64ismax(value))
        return MAX_INT32;
    if (i64ismin(value))
        return MIN_INT32;
    std::int32_t number = 0;
    if (!i64tol(value, &number) && module != nullptr)
        int64Warning(module, line, message);
    return number;
}

void int64Warning(AsnModule *module, std::int32_t line, const char *message) {
    const Text path = getModuleFilePath(module);
    std::fprintf(stderr, "%s:%d:BET Warning\n", path.c_str(), line);
    std::fputs("** Type constraint information does not fit in 32 bits\n", stderr);
    if (message != nullptr)
        std::fprintf(stderr, "** %s\n", message);
}

void getInt64SizeEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc) {
    *low = type->lowerEndpoint;
    *high = type->upperEndpoint;
    const std::uint32_t limit = type->base.typeOptions.sizeLimit;
    *alloc = limit != 0 ? i64ultosint64(limit) : *high;
}
