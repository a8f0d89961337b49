#pragma once

#include <list>
#include <map>

#include "base/i64.h"

/* Sets of 64-bit numbers as sorted ranges: union, intersection, difference. */

/* Both ends belong to the range. The least and the greatest number stand for infinity. */
struct Int64Range {
    sint64 lower;
    sint64 upper;
};
struct Int64Less {
    bool operator()(sint64 a, sint64 b) const { return i64cmp(a, b) < 0; }
};

/* Ranges by rising `lower`. Neighbours may touch, and after a merge they may overlap: the order in
   which ranges were added decides which are joined. */
struct IntegerValueSet {
    IntegerValueSet() = default;
    IntegerValueSet(IntegerValueSet &&) = default;
    IntegerValueSet &operator=(IntegerValueSet &&) = default;

    std::list<Int64Range> segs;
    /* Ranges by `upper`, for merging into a large set; valid while `indexed`. */
    std::map<sint64, std::list<Int64Range>::iterator, Int64Less> byUpper;
    bool indexed = false;
};

/* Empties a set; null is left alone. */
void freeIntegerValueSet(IntegerValueSet *set);

/* The ranges of `from`, which becomes empty, take the place of those of `set`. */
void moveValueSet(IntegerValueSet *set, IntegerValueSet *from);
/* One range takes the place of all. */
void setToRange(IntegerValueSet *set, sint64 lower, sint64 upper);

/* Set arithmetic on `a`; `b` is used up. An intersection of sets that cannot meet is empty, with a
   warning on the standard error. Fatal error 13 if a merge finds the ranges out of order. */
void mergeValueSets(IntegerValueSet *a, IntegerValueSet *b);
void intersectValueSets(IntegerValueSet *a, IntegerValueSet *b);
void excludeValueSets(IntegerValueSet *a, IntegerValueSet *b);
