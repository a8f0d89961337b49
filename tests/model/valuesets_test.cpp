#include "model/valuesets.h"

#include <random>
#include <set>

#include "model/constraints.h"
#include "tests/model/modelsetup.h"

namespace {

sint64 of(std::int64_t n) {
    return i64make(static_cast<std::int32_t>(n >> 32), static_cast<std::uint32_t>(n));
}

std::string shown(const IntegerValueSet &set) {
    std::string text;
    for (const Int64Range &range : set.segs)
        text += (text.empty() ? "" : " ") + shown(range.lower) + ".." + shown(range.upper);
    return text;
}

using Ranges = std::vector<std::pair<std::int64_t, std::int64_t>>;

/* The ranges as they stand, in whatever order. */
IntegerValueSet setOf(const Ranges &ranges) {
    IntegerValueSet set;
    for (const auto &[lower, upper] : ranges)
        set.segs.push_back({of(lower), of(upper)});
    return set;
}

/* Ranges merged one by one. */
IntegerValueSet merged(const Ranges &ranges) {
    IntegerValueSet set;
    for (const auto &range : ranges) {
        IntegerValueSet one = setOf({range});
        mergeValueSets(&set, &one);
    }
    return set;
}

TEST(SetArithmetic, MergingDependsOnTheOrder) {
    struct Row {
        Ranges ranges;
        const char *expected;
    };
    const Row rows[] = {
        {{{1, 1}, {3, 3}, {2, 2}}, "1..1 2..2 3..3"},
        {{{1, 1}, {2, 2}, {3, 3}}, "1..3"},
        {{{3, 4}, {5, 6}}, "3..6"},
        {{{5, 6}, {3, 4}}, "3..4 5..6"},
        {{{5, 6}, {1, 2}}, "1..2 5..6"},
        {{{1, 3}, {5, 9}, {2, 6}}, "1..6 5..9"},
        {{{1, 3}, {5, 9}, {2, 9}}, "1..9"},
        {{{1, 3}, {5, 9}, {12, 14}, {4, 20}}, "1..3 4..20"},
        {{{1, 3}, {5, 9}, {2, 2}, {5, 9}}, "1..3 5..9"},
        {{{5, MAX_VALUE}, {MIN_VALUE, 3}, {0, MAX_VALUE}}, "MIN..MAX"},
        {{{MIN_VALUE, MAX_VALUE}, {7, 7}}, "MIN..MAX"},
        {{{MAX_VALUE, MAX_VALUE}, {MAX_VALUE, MAX_VALUE}}, "MAX..MAX"},
        {{{6, 5}}, "6..5"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(shown(merged(row.ranges)), row.expected);
}

/* Sets that cannot meet give a warning, others that have nothing in common give none. */
TEST(SetArithmetic, IntersectsAndExcludes) {
    struct Row {
        Ranges a, b;
        const char *common, *difference;
        bool warns = false;
    };
    const Row rows[] = {
        {{{1, 5}}, {{3, 12}}, "3..5", "1..2"},
        {{{1, 5}}, {{7, 9}}, "", "1..5", true},
        {{{1, 5}}, {{5, 5}}, "5..5", "1..4"},
        {{{1, 5}}, {{1, 1}}, "1..1", "2..5"},
        {{{1, 10}}, {{3, 3}, {7, 7}}, "3..3 7..7", "1..2 4..6 8..10"},
        {{{1, 3}, {5, 7}, {9, 11}}, {{2, 10}}, "2..3 5..7 9..10", "1..1 11..11"},
        {{{1, 3}, {9, 11}}, {{4, 8}}, "", "1..3 9..11", true},
        {{{1, 3}, {9, 11}}, {{4, 4}, {6, 8}, {12, 13}}, "", "1..3 9..11", true},
        {{{1, 1}, {4, 4}, {9, 9}}, {{0, 0}, {3, 3}, {5, 5}, {10, 10}}, "", "1..1 4..4 9..9"},
        {{{1, 3}, {9, 11}}, {{1, 3}, {9, 11}}, "1..3 9..11", ""},
        {{{MIN_VALUE, MAX_VALUE}}, {{3, 3}}, "3..3", "MIN..2 4..MAX"},
        {{{MIN_VALUE, MAX_VALUE}}, {{MIN_VALUE, 0}, {5, MAX_VALUE}}, "MIN..0 5..MAX", "1..4"},
        {{{0, 255}}, {{MIN_VALUE, MAX_VALUE}}, "0..255", ""},
        {{}, {{1, 1}}, "", "", true},
        {{{1, 1}}, {}, "", "1..1", true},
    };
    for (const Row &row : rows) {
        IntegerValueSet a = setOf(row.a), b = setOf(row.b);
        testing::internal::CaptureStderr();
        intersectValueSets(&a, &b);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  row.warns ? "** BET Warning: An empty flat integer value set.\n" : "");
        EXPECT_EQ(shown(a), row.common);
        EXPECT_TRUE(b.segs.empty());
        a = setOf(row.a);
        b = setOf(row.b);
        excludeValueSets(&a, &b);
        EXPECT_EQ(shown(a), row.difference);
    }
}

/* The numbers of a set within a small domain. */
std::set<int> members(const IntegerValueSet &set) {
    std::set<int> numbers;
    for (const Int64Range &range : set.segs) {
        std::int32_t lower = 0, upper = 0;
        EXPECT_TRUE(i64tol(range.lower, &lower) && i64tol(range.upper, &upper));
        for (int n = lower; n <= upper; ++n)
            numbers.insert(n);
    }
    return numbers;
}

TEST(SetArithmetic, AgreesWithSetsOfNumbers) {
    std::mt19937 random(4711);
    auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 300; ++round) {
        /* Disjoint ranges, of which there are so many in some rounds that merging uses an index. */
        Ranges parts[2];
        std::set<int> numbers[2];
        for (int side = 0; side < 2; ++side) {
            for (int n = below(9); n < 400 && below(60) != 0; n += 2 + below(round % 2 ? 3 : 40)) {
                const int length = below(4);
                parts[side].emplace_back(n, n + length);
                for (int i = 0; i <= length; ++i)
                    numbers[side].insert(n + i);
                n += length;
            }
            std::shuffle(parts[side].begin(), parts[side].end(), random);
        }
        auto check = [&](void (*operate)(IntegerValueSet *, IntegerValueSet *), auto expected) {
            IntegerValueSet a = merged(parts[0]), b = merged(parts[1]);
            operate(&a, &b);
            std::set<int> result;
            expected(numbers[0].begin(), numbers[0].end(), numbers[1].begin(), numbers[1].end(),
                     std::inserter(result, result.end()));
            EXPECT_EQ(members(a), result);
            for (auto seg = a.segs.begin(); seg != a.segs.end(); ++seg)
                EXPECT_TRUE(seg == a.segs.begin() || i64cmp(std::prev(seg)->lower, seg->lower) < 0);
        };
        check(excludeValueSets, [](auto... x) { std::set_difference(x...); });
        check(intersectValueSets, [](auto... x) { std::set_intersection(x...); });
        check(mergeValueSets, [](auto... x) { std::set_union(x...); });
    }
}

/* --- sets of types --- */

std::string setOfType(AsnType *type) {
    std::string text;
    const int calls = forInt64ValueSet(type, [&](AsnType *, const Int64Range *range, int nbr) {
        text += (nbr == 0 ? "" : " ") + shown(range->lower) + ".." + shown(range->upper);
    });
    EXPECT_EQ(isSimpleIntegerValueSet(type), calls == 1);
    return text;
}

RecNr oneOf(TreeWriter &w, SubKind kind, std::initializer_list<std::int64_t> numbers) {
    const RecNr set = w.sub(kind);
    RecNr last = 0;
    for (const std::int64_t number : numbers) {
        const RecNr element = one(w, number);
        RecNr &end = last == 0 ? w.subRecs[static_cast<std::size_t>(set - 1)].first
                               : w.subRecs[static_cast<std::size_t>(last - 1)].next;
        end = element;
        last = element;
    }
    return set;
}

TEST(ValueSets, FollowConstraintsOfEachKindAndDownAChain) {
    ModelSetup m;
    TreeWriter w("Sets", "sets");
    ModelSetup::Rows rows;
    const auto add = [&](const char *expected, TypeNode type) {
        rows.emplace_back("T" + std::to_string(rows.size()), expected);
        w.define(rows.back().first, type);
    };
    const auto addSub = [&](const char *expected, RecNr sub) {
        add(expected, w.integer().constrained(sub));
    };
    const auto addDown = [&](const char *expected, RecNr sub) {
        add(expected, w.ref("Ten").constrained(sub));
    };
    w.define("Ten", w.integer(1, 10));
    add("MIN..MAX", w.integer());
    add("", w.boolean());
    addSub("0..255", w.range(0, 255));
    addSub("MIN..5", w.range(MIN_VALUE, 5));
    addSub("5..MAX", w.range(5, MAX_VALUE));
    addSub("2..4", openRange(w, 1, 5));
    addSub("7..7", one(w, 7));
    addSub("1..1 2..2 3..3", oneOf(w, SUB_UNION, {1, 3, 2}));
    addSub("1..3", oneOf(w, SUB_UNION, {1, 2, 3}));
    addSub("1..1 9..9", oneOf(w, SUB_CATENATION, {9, 1}));
    const RecNr low = w.range(1, 5), middle = w.range(3, 12), ten = w.range(1, 10);
    addSub("4..4", w.sub(SUB_INTERSECTION, {low, middle, one(w, 4)}));
    addSub("1..2 4..6 8..10", w.sub(SUB_EXCEPT, {ten, oneOf(w, SUB_UNION, {3, 7})}));
    addSub("MIN..2 4..MAX", w.sub(SUB_ALL_EXCEPT, {one(w, 3)}));
    addSub("MIN..MAX", w.sub(SUB_TABLE));
    addSub("MIN..MAX", w.sub(SUB_USER_DEFINED));
    const RecNr holes = oneOf(w, SUB_UNION, {-5, -1}), contained = w.includes(w.findType("Ten"));
    addSub("-5..-5 -1..-1 1..10 30..MAX",
           w.sub(SUB_UNION, {holes, contained, w.range(30, MAX_VALUE)}));
    /* A range takes the place of what the base says, a union adds to it. */
    addDown("1..3", w.range(1, 3));
    addDown("1..10 20..20 22..22", oneOf(w, SUB_UNION, {20, 22}));
    addDown("1..4 6..10", w.sub(SUB_ALL_EXCEPT, {one(w, 5)}));
    w.define("None",
             w.integer().constrained(w.sub(SUB_INTERSECTION, {w.range(1, 5), w.range(7, 9)})));
    m.load(w);
    m.expectTypes(setOfType, rows);
    testing::internal::CaptureStderr();
    m.expectTypes(setOfType, {{"None", "MIN..MAX"}});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "** BET Warning: An empty flat integer value set.\n");
}

TEST(ValueSets, ItemsOfAnEnumerationAreItsValues) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    other.define("Far", other.enumerated({{"x", 4}, {"y", 6}}));
    m.import(other, "other");
    TreeWriter w("Sets", "sets");
    w.import(other);
    w.define("E", w.enumerated({{"c", 5}, {"a", 1}, NamedNumber::extension(), {"b", 3}}));
    w.define("Sub", w.ref("E").constrained(one(w, 3)));
    w.define("Holder", w.sequence({w.comp("far", w.ref(other, "Far"))}));
    w.define("Empty", w.enumerated({}));
    m.load(w);
    m.expectTypes(
        setOfType,
        {{"E", "1..1 3..3 5..5"}, {"Sub", "3..3"}, {"Holder.far", "4..4 6..6"}, {"Empty", ""}});
}

std::string sizesOfType(AsnType *type) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    std::string text = shown(low) + " " + shown(high) + " " + shown(alloc);
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        forInt64SizeConstraintValueSet(
            type, constraint, [&](AsnType *, const Int64Range *range, int) {
                text += " [" + shown(range->lower) + " " + shown(range->upper) + "]";
            });
    });
    return text + (isSimpleSizeConstraintValueSet(type) ? " simple"
                   : isSizeConstraintValueSet(type)     ? " some"
                                                        : "");
}

TEST(ValueSets, SizesOfStringsAndLists) {
    ModelSetup m;
    TreeWriter w("Sets", "sets");
    const RecNr two = one(w, 2);
    w.define("Holes",
             w.string(TYP_IA5STR).constrained(w.size(w.sub(SUB_UNION, {two, w.range(4, 6)}))));
    w.define("Free", w.string(TYP_OCTSTR));
    w.define("Limited", w.listOf(TYP_SEQOF, w.integer(), 1, 1000).sizeLimit(100, false));
    w.define("AtMost", w.string(TYP_BITSTR, MIN_VALUE, 8));
    const RecNr alphabet = w.alphabet(w.single(w.textValue(TYP_IA5STR, "abc")));
    w.define(
        "Both",
        w.string(TYP_IA5STR).constrained(w.sub(SUB_CATENATION, {alphabet, w.size(3, 4000000000)})));
    w.define("NoSize", w.integer(1, 2));
    m.load(w);
    m.expectTypes(sizesOfType, {{"Holes", "2 6 6 [2 2] [4 6] some"},
                                {"Free", "0 MAX MAX"},
                                {"Limited", "1 1000 100 [1 1000] simple"},
                                {"AtMost", "0 8 8 [0 8] simple"},
                                {"NoSize", "0 MAX MAX"}});
    m.expectTypes(sizesOfType, {{"Both", "3 4000000000 4000000000 simple"}});
}

/* --- broken trees --- */

/* Asks for the set of "T" after `spoil` changed the finished tree, in which union 3 has the ranges
   1 and 2. */
void askForSet(void (*spoil)(TreeWriter &w)) {
    ModelSetup m;
    TreeWriter w("Broken", "broken");
    w.define("T", w.integer().constrained(w.sub(SUB_UNION, {w.range(1, 2), w.range(5, 9)})));
    w.finish();
    spoil(w);
    m.load(w);
    m.withType("T", [](AsnType *t) { setOfType(t); });
    exit(0);
}

TEST(ValueSetsDeathTest, BrokenTreesEndTheRun) {
    const char *const unread = "Can not read record";
    expectFatal(
        askForSet,
        {{[](TreeWriter &w) { w.findType("T")->constraintRec = 99; }, unread},
         {[](TreeWriter &w) { w.subRecs[2].first = 77; }, unread},
         {[](TreeWriter &w) { w.subRecs[0].first = 66; }, unread},
         {[](TreeWriter &w) {
              w.subRecs[2].subKind = SUB_EXCEPT;
              w.subRecs[0].next = 0;
          },
          unread},
         {[](TreeWriter &w) { w.subRecs[1].next = 1; }, "broken"},
         /* A constraint that contains itself, directly and by way of the type. */
         {[](TreeWriter &w) { w.subRecs[2].first = 3; }, "broken"},
         {[](TreeWriter &w) { w.subRecs[2].first = w.includes(w.findType("T")); }, "broken"},
         /* Each level names the next one twice: a path is short, and the paths are many. */
         {[](TreeWriter &w) {
              RecNr inner = 1;
              for (int level = 0; level < 60; ++level) {
                  SubRec node;
                  node.subKind = SUB_UNION;
                  node.first = inner;
                  node.next = w.addSub(node);
                  inner = w.addSub(node);
              }
              w.findType("T")->constraintRec = inner;
          },
          "broken"}});
}

} // namespace
