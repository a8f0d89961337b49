#include "model/setarithmetic.h"

#include <cstdio>
#include <iterator>

#include "base/fatal.h"

namespace {

using Segs = std::list<Int64Range>;
using Seg = Segs::iterator;

/* Up to this many ranges the place of a new one is searched for one by one. */
constexpr std::size_t UNINDEXED_SEGS = 32;

bool less(sint64 a, sint64 b) {
    return i64cmp(a, b) < 0;
}
sint64 next(sint64 a) {
    return i64addl(a, 1);
}
sint64 previous(sint64 a) {
    return i64subl(a, 1);
}

void dropIndex(IntegerValueSet *set) {
    set->byUpper.clear();
    set->indexed = false;
}

/* Makes the index, if the upper ends rise. They do unless ranges were empty or came from an
   intersection of sets with overlaps. */
void makeIndex(IntegerValueSet *set) {
    for (Seg seg = set->segs.begin(); seg != set->segs.end(); ++seg) {
        if (seg != set->segs.begin() && !less(std::prev(seg)->upper, seg->upper)) {
            dropIndex(set);
            return;
        }
        set->byUpper.emplace_hint(set->byUpper.end(), seg->upper, seg);
    }
    set->indexed = true;
}

/* The first range whose upper end is at least `number`; the last one if there is none. */
Seg findSeg(IntegerValueSet *set, sint64 number) {
    const Seg last = std::prev(set->segs.end());
    if (less(last->upper, number))
        return last;
    if (!set->indexed && set->segs.size() > UNINDEXED_SEGS)
        makeIndex(set);
    if (set->indexed)
        return set->byUpper.lower_bound(number)->second;
    Seg seg = set->segs.begin();
    while (less(seg->upper, number))
        ++seg;
    return seg;
}

Seg insertSeg(IntegerValueSet *set, Seg position, const Int64Range &range) {
    const Seg seg = set->segs.insert(position, range);
    if (set->indexed)
        set->byUpper.emplace(range.upper, seg);
    return seg;
}

Seg removeSeg(IntegerValueSet *set, Seg seg) {
    if (set->indexed)
        set->byUpper.erase(seg->upper);
    return set->segs.erase(seg);
}

/* A range that grows swallows those behind it that end within it. One that it only reaches into
   stays, and the two overlap. */
void growSeg(IntegerValueSet *set, Seg seg, sint64 upper) {
    if (set->indexed)
        set->byUpper.erase(seg->upper);
    seg->upper = upper;
    for (Seg behind = std::next(seg); behind != set->segs.end() && !less(upper, behind->upper);)
        behind = removeSeg(set, behind);
    if (set->indexed)
        set->byUpper.emplace(upper, seg);
}

void mergeSeg(IntegerValueSet *set, const Int64Range &range) {
    const sint64 end = set->segs.back().upper;
    if (!i64ismax(end) && less(next(end), range.lower)) {
        insertSeg(set, set->segs.end(), range);
        return;
    }
    const Seg seg = findSeg(set, range.lower);
    if (!i64ismax(seg->upper) && range.lower == next(seg->upper)) {
        growSeg(set, seg, range.upper);
    } else if (!less(range.lower, seg->lower)) {
        if (less(seg->upper, range.lower))
            fatalError(FATAL_INTERNAL, "Unable to construct a flat integer value set");
        if (less(seg->upper, range.upper))
            growSeg(set, seg, range.upper);
    } else if (!less(range.upper, seg->lower)) {
        seg->lower = range.lower;
        if (less(seg->upper, range.upper))
            growSeg(set, seg, range.upper);
    } else {
        insertSeg(set, seg, range);
    }
}

/* Can the sets have a number in common? If not, both become empty. */
bool checkForNonEmptyIntersectValueSet(IntegerValueSet *a, IntegerValueSet *b) {
    if (!a->segs.empty() && !b->segs.empty() &&
        !less(b->segs.back().upper, a->segs.front().lower) &&
        !less(a->segs.back().upper, b->segs.front().lower))
        return true;
    std::fputs("** BET Warning: An empty flat integer value set.\n", stderr);
    freeIntegerValueSet(a);
    freeIntegerValueSet(b);
    return false;
}

/* Ranges of one set that lie wholly below, or above, the other. */
void removeHead(IntegerValueSet *a, IntegerValueSet *b) {
    IntegerValueSet *low = less(a->segs.front().lower, b->segs.front().lower) ? a : b;
    const sint64 begin = (low == a ? b : a)->segs.front().lower;
    while (!low->segs.empty() && less(low->segs.front().upper, begin))
        low->segs.pop_front();
}

void removeTail(IntegerValueSet *a, IntegerValueSet *b) {
    if (a->segs.empty() || b->segs.empty())
        return;
    IntegerValueSet *high = less(b->segs.back().upper, a->segs.back().upper) ? a : b;
    const sint64 end = (high == a ? b : a)->segs.back().upper;
    while (!high->segs.empty() && less(end, high->segs.back().lower))
        high->segs.pop_back();
}

/* One step of an intersection: what `x` and the first range of `b` have in common is settled. The
   result is the range of `a` to go on with. */
Seg intersectStep(Segs &a, Seg x, Segs &b) {
    const Seg y = b.begin();
    if (less(x->upper, y->lower))
        return a.erase(x);
    if (less(y->upper, x->lower)) {
        b.pop_front();
        return x;
    }
    const sint64 lower = less(x->lower, y->lower) ? y->lower : x->lower;
    const int cmp = i64cmp(y->upper, x->upper);
    if (cmp < 0) {
        a.insert(x, {lower, y->upper});
        x->lower = next(y->upper);
        b.pop_front();
        return x;
    }
    x->lower = lower;
    if (cmp == 0)
        b.pop_front();
    else
        y->lower = next(x->upper);
    return std::next(x);
}

/* One step of a difference: `x` loses what the first range of `b` has of it. The result is the
   range of `a` to go on with. */
Seg excludeStep(Segs &a, Seg x, Segs &b) {
    const Seg y = b.begin();
    if (less(x->upper, y->lower))
        return std::next(x);
    if (less(y->upper, x->lower)) {
        b.pop_front();
        return x;
    }
    if (less(x->lower, y->lower)) {
        if (!less(y->upper, x->upper)) {
            x->upper = previous(y->lower);
            return x;
        }
        a.insert(x, {x->lower, previous(y->lower)});
        x->lower = next(y->upper);
        b.pop_front();
        return x;
    }
    const int cmp = i64cmp(y->upper, x->upper);
    if (cmp < 0)
        x->lower = next(y->upper);
    if (cmp <= 0)
        b.pop_front();
    return cmp < 0 ? x : a.erase(x);
}

} // namespace

/* Sets are lists of ranges in rising order. The second operand is used up: its ranges move into
   the first, or are lost. */

void freeIntegerValueSet(IntegerValueSet *set) {
    if (set == nullptr)
        return;
    set->segs.clear();
    dropIndex(set);
}

void moveValueSet(IntegerValueSet *set, IntegerValueSet *from) {
    freeIntegerValueSet(set);
    set->segs.splice(set->segs.begin(), from->segs);
    dropIndex(from);
}

void setToRange(IntegerValueSet *set, sint64 lower, sint64 upper) {
    freeIntegerValueSet(set);
    set->segs.push_back({lower, upper});
}

void mergeValueSets(IntegerValueSet *a, IntegerValueSet *b) {
    if (a->segs.empty()) {
        moveValueSet(a, b);
        return;
    }
    for (const Int64Range &range : b->segs) {
        mergeSeg(a, range);
        if (less(range.upper, range.lower))
            dropIndex(a); /* an empty range needn't stand in order */
    }
    freeIntegerValueSet(b);
}

void intersectValueSets(IntegerValueSet *a, IntegerValueSet *b) {
    dropIndex(a);
    dropIndex(b);
    if (!checkForNonEmptyIntersectValueSet(a, b))
        return;
    removeHead(a, b);
    removeTail(a, b);
    if (!checkForNonEmptyIntersectValueSet(a, b))
        return;
    Seg x = a->segs.begin();
    while (x != a->segs.end() && !b->segs.empty())
        x = intersectStep(a->segs, x, b->segs);
    a->segs.erase(x, a->segs.end());
    freeIntegerValueSet(b);
}

void excludeValueSets(IntegerValueSet *a, IntegerValueSet *b) {
    dropIndex(a);
    dropIndex(b);
    Seg x = a->segs.begin();
    while (x != a->segs.end() && !b->segs.empty())
        x = excludeStep(a->segs, x, b->segs);
    freeIntegerValueSet(b);
}
