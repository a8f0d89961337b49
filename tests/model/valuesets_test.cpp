#include "model/valuesets.h"

#include <random>
#include <set>

#include "model/constraints.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

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

TEST(SetArithmetic, IntersectsAndExcludes) {
    struct Row {
        Ranges a, b;
        const char *common, *difference;
    };
    const Row rows[] = {
        {{{1, 5}}, {{3, 12}}, "3..5", "1..2"},
        {{{1, 5}}, {{7, 9}}, "", "1..5"},
        {{{1, 5}}, {{5, 5}}, "5..5", "1..4"},
        {{{1, 5}}, {{1, 1}}, "1..1", "2..5"},
        {{{1, 10}}, {{3, 3}, {7, 7}}, "3..3 7..7", "1..2 4..6 8..10"},
        {{{1, 3}, {5, 7}, {9, 11}}, {{2, 10}}, "2..3 5..7 9..10", "1..1 11..11"},
        {{{1, 3}, {9, 11}}, {{4, 8}}, "", "1..3 9..11"},
        {{{1, 3}, {9, 11}}, {{1, 3}, {9, 11}}, "1..3 9..11", ""},
        {{{MIN_VALUE, MAX_VALUE}}, {{3, 3}}, "3..3", "MIN..2 4..MAX"},
        {{{MIN_VALUE, MAX_VALUE}}, {{MIN_VALUE, 0}, {5, MAX_VALUE}}, "MIN..0 5..MAX", "1..4"},
        {{{0, 255}}, {{MIN_VALUE, MAX_VALUE}}, "0..255", ""},
        {{}, {{1, 1}}, "", ""},
        {{{1, 1}}, {}, "", "1..1"},
    };
    for (const Row &row : rows) {
        IntegerValueSet a = setOf(row.a), b = setOf(row.b);
        intersectValueSets(&a, &b);
        EXPECT_EQ(shown(a), row.common);
        a = setOf(row.a);
        b = setOf(row.b);
        excludeValueSets(&a, &b);
        EXPECT_EQ(shown(a), row.difference);
    }
}

TEST(SetArithmetic, OnlySetsThatCannotMeetWarn) {
    const char *warning = "** BET Warning: An empty flat integer value set.\n";
    testing::internal::CaptureStderr();
    IntegerValueSet a = setOf({{1, 5}}), b = setOf({{7, 9}});
    intersectValueSets(&a, &b);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), warning);
    EXPECT_TRUE(b.segs.empty());
    testing::internal::CaptureStderr();
    a = setOf({{1, 3}, {9, 11}});
    b = setOf({{4, 4}, {6, 8}, {12, 13}});
    intersectValueSets(&a, &b);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), warning);
    testing::internal::CaptureStderr();
    a = setOf({{1, 1}, {4, 4}, {9, 9}});
    b = setOf({{0, 0}, {3, 3}, {5, 5}, {10, 10}});
    intersectValueSets(&a, &b);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(shown(a), "");
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
        IntegerValueSet a = merged(parts[0]), b = merged(parts[1]);
        std::set<int> expected;
        std::set_difference(numbers[0].begin(), numbers[0].end(), numbers[1].begin(),
                            numbers[1].end(), std::inserter(expected, expected.end()));
        excludeValueSets(&a, &b);
        EXPECT_EQ(members(a), expected);

        a = merged(parts[0]);
        b = merged(parts[1]);
        expected.clear();
        std::set_intersection(numbers[0].begin(), numbers[0].end(), numbers[1].begin(),
                              numbers[1].end(), std::inserter(expected, expected.end()));
        intersectValueSets(&a, &b);
        EXPECT_EQ(members(a), expected);

        a = merged(parts[0]);
        b = merged(parts[1]);
        expected = numbers[0];
        expected.insert(numbers[1].begin(), numbers[1].end());
        mergeValueSets(&a, &b);
        EXPECT_EQ(members(a), expected);
        EXPECT_TRUE(std::is_sorted(
            a.segs.begin(), a.segs.end(),
            [](const Int64Range &x, const Int64Range &y) { return i64cmp(x.lower, y.lower) < 0; }));
    }
}

/* --- sets of types --- */

std::string valueSetShown(AsnType *type) {
    std::string text;
    const int calls = forInt64ValueSet(type, [&](AsnType *, const Int64Range *range, int nbr) {
        text += (nbr == 0 ? "" : " ") + shown(range->lower) + ".." + shown(range->upper);
    });
    EXPECT_EQ(isSimpleIntegerValueSet(type), calls == 1);
    return text;
}

RecNr one(TreeWriter &w, std::int64_t number) {
    return w.single(w.intValue(number));
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

RecNr openRange(TreeWriter &w, std::int64_t low, std::int64_t high) {
    const RecNr lower = w.intValue(low).nr;
    return w.rangeOf(lower, w.intValue(high).nr, 0);
}

TEST(ValueSets, FollowEachKindOfConstraint) {
    struct Row {
        RecNr (*make)(TreeWriter &w);
        const char *expected;
    };
    const Row rows[] = {
        {[](TreeWriter &w) { return w.range(0, 255); }, "0..255"},
        {[](TreeWriter &w) { return w.range(MIN_VALUE, 5); }, "MIN..5"},
        {[](TreeWriter &w) { return w.range(5, MAX_VALUE); }, "5..MAX"},
        {[](TreeWriter &w) { return w.range(MIN_VALUE, MAX_VALUE); }, "MIN..MAX"},
        {[](TreeWriter &w) { return openRange(w, 1, 5); }, "2..4"},
        {[](TreeWriter &w) { return one(w, 7); }, "7..7"},
        {[](TreeWriter &w) {
             return oneOf(w, SUB_UNION, {1, 3, 2});
         },
         "1..1 2..2 3..3"},
        {[](TreeWriter &w) {
             return oneOf(w, SUB_UNION, {1, 2, 3});
         },
         "1..3"},
        {[](TreeWriter &w) {
             return oneOf(w, SUB_CATENATION, {9, 1});
         },
         "1..1 9..9"},
        {[](TreeWriter &w) {
             return w.sub(SUB_INTERSECTION, {w.range(1, 5), w.range(3, 12)});
         },
         "3..5"},
        {[](TreeWriter &w) {
             return w.sub(SUB_INTERSECTION, {w.range(1, 5), w.range(3, 12), one(w, 4)});
         },
         "4..4"},
        {[](TreeWriter &w) {
             return w.sub(SUB_EXCEPT, {w.range(1, 10), oneOf(w, SUB_UNION, {3, 7})});
         },
         "1..2 4..6 8..10"},
        {[](TreeWriter &w) { return w.sub(SUB_ALL_EXCEPT, {one(w, 3)}); }, "MIN..2 4..MAX"},
        {[](TreeWriter &w) { return w.sub(SUB_TABLE); }, "MIN..MAX"},
        {[](TreeWriter &w) { return w.sub(SUB_USER_DEFINED); }, "MIN..MAX"},
        {[](TreeWriter &w) {
             const RecNr holes = oneOf(w, SUB_UNION, {1, 5});
             const RecNr contained = w.includes(w.findType("Contained"));
             return w.sub(SUB_UNION, {holes, contained, w.range(30, MAX_VALUE)});
         },
         "1..1 5..5 20..22 30..MAX"},
    };
    ModelSetup m;
    TreeWriter w("Sets", "sets");
    w.define("Contained", w.integer(20, 22));
    for (std::size_t i = 0; i < std::size(rows); ++i)
        w.define("T" + std::to_string(i), w.integer().constrained(rows[i].make(w)));
    w.define("Free", w.integer());
    w.define("NotANumber", w.boolean());
    m.load(w);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        m.withType("T" + std::to_string(i),
                   [&](AsnType *type) { EXPECT_EQ(valueSetShown(type), rows[i].expected) << i; });
    m.withType("Free", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "MIN..MAX"); });
    m.withType("NotANumber", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), ""); });
}

TEST(ValueSets, EmptyIntersectionsWarnAndAllowAll) {
    ModelSetup m;
    TreeWriter w("Sets", "sets");
    w.define("None",
             w.integer().constrained(w.sub(SUB_INTERSECTION, {w.range(1, 5), w.range(7, 9)})));
    m.load(w);
    m.withType("None", [](AsnType *type) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(valueSetShown(type), "MIN..MAX");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "** BET Warning: An empty flat integer value set.\n");
    });
}

TEST(ValueSets, OfConstraintsDownAChainTheLastRangeCounts) {
    ModelSetup m;
    TreeWriter w("Sets", "sets");
    w.define("S", w.integer(1, 10));
    w.define("T", w.ref("S").constrained(w.range(1, 3)));
    w.define("U", w.ref("S").constrained(oneOf(w, SUB_UNION, {20, 22})));
    w.define("V", w.ref("S").constrained(w.sub(SUB_ALL_EXCEPT, {one(w, 5)})));
    m.load(w);
    m.withType("T", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "1..3"); });
    m.withType("U", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "1..10 20..20 22..22"); });
    m.withType("V", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "1..4 6..10"); });
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
    w.define("Synonym", w.ref(other, "Far"));
    w.define("Holder", w.sequence({w.comp("far", w.ref(other, "Far"))}));
    w.define("Empty", w.enumerated({}));
    m.load(w);
    m.withType("E", [](AsnType *type) {
        EXPECT_EQ(valueSetShown(type), "1..1 3..3 5..5");
        const Int32Range first = {1, 1}, last = {5, 9};
        EXPECT_TRUE(isFirstIntegerValueSetSeg(type, &first));
        EXPECT_FALSE(isLastIntegerValueSetSeg(type, &first));
        EXPECT_TRUE(isLastIntegerValueSetSeg(type, &last));
    });
    m.withType("Sub", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "3..3"); });
    m.withType("Synonym", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), "4..4 6..6"); });
    m.withComp("Holder", "far", [](AsnType *comp) { EXPECT_EQ(valueSetShown(comp), "4..4 6..6"); });
    m.withType("Empty", [](AsnType *type) { EXPECT_EQ(valueSetShown(type), ""); });
}

std::string sizesShown(AsnType *type) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    std::int32_t low32, high32, alloc32;
    getSizeConstraintEndpoints(type, &low32, &high32, &alloc32);
    std::string text = shown(low) + " " + shown(high) + " " + shown(alloc) + " / " +
                       std::to_string(high32) + " " + std::to_string(alloc32);
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        forSizeConstraintValueSet(type, constraint, [&](AsnType *, const Int32Range *range, int) {
            text += " [" + std::to_string(range->lower) + " " + std::to_string(range->upper) + "]";
        });
    });
    return text;
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
    const char *const rows[][2] = {
        {"Holes", "2 6 6 / 2 2 [2 2] [4 6]"},
        {"Free", "0 MAX MAX / 2147483647 2147483647"},
        {"Limited", "1 1000 100 / 1000 100 [1 1000]"},
        {"AtMost", "0 8 8 / 8 8 [0 8]"},
        {"NoSize", "0 MAX MAX / 2147483647 2147483647"},
    };
    for (const auto &row : rows)
        m.withType(row[0], [&](AsnType *type) {
            EXPECT_EQ(sizesShown(type), row[1]);
            EXPECT_EQ(isSizeConstraintValueSet(type), std::string(row[1]).back() == ']');
        });
    m.withType("Holes", [](AsnType *type) { EXPECT_FALSE(isSimpleSizeConstraintValueSet(type)); });
    m.withType("Both", [](AsnType *type) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(sizesShown(type), "3 4000000000 4000000000 / 2147483647 2147483647");
        EXPECT_NE(testing::internal::GetCapturedStderr().find(
                      "** Size constraint upper bound too large\n"),
                  std::string::npos);
        EXPECT_TRUE(isSimpleSizeConstraintValueSet(type));
    });
}

/* --- broken trees --- */

/* Asks for the set of "T" after `spoil` changed the finished tree. */
void askForSet(void (*spoil)(TreeWriter &w, TypeNode type)) {
    ModelSetup m;
    TreeWriter w("Broken", "broken");
    TypeNode type =
        w.define("T", w.integer().constrained(w.sub(SUB_UNION, {w.range(1, 2), w.range(5, 9)})));
    w.finish();
    spoil(w, type);
    m.load(w);
    m.withType("T", [](AsnType *t) { valueSetShown(t); });
    exit(0);
}

TEST(ValueSetsDeathTest, BrokenTreesEndTheRun) {
    struct Row {
        void (*spoil)(TreeWriter &w, TypeNode type);
        const char *message;
    };
    const Row rows[] = {
        {[](TreeWriter &, TypeNode t) { t->constraintRec = 99; }, "Can not read record"},
        {[](TreeWriter &w, TypeNode) { w.subRecs[2].first = 77; }, "Can not read record"},
        {[](TreeWriter &w, TypeNode) { w.subRecs[0].first = 66; }, "Can not read record"},
        {[](TreeWriter &w, TypeNode) {
             w.subRecs[2].subKind = SUB_EXCEPT;
             w.subRecs[0].next = 0;
         },
         "Can not read record"},
        /* A list that comes back to itself. */
        {[](TreeWriter &w, TypeNode) { w.subRecs[1].next = 1; }, "broken"},
        /* A constraint that contains itself, directly and by way of the type. */
        {[](TreeWriter &w, TypeNode) { w.subRecs[2].first = 3; }, "broken"},
        {[](TreeWriter &w, TypeNode t) {
             const RecNr includes = w.includes(t);
             w.subRecs[2].first = includes;
         },
         "broken"},
    };
    for (const Row &row : rows)
        EXPECT_EXIT(askForSet(row.spoil), exitsWith2, row.message);
}

/* Each level names the next one twice, so that a path is short and the paths are many. */
TEST(ValueSetsDeathTest, ManyPathsThroughFewRecordsEndTheRun) {
    EXPECT_EXIT(askForSet([](TreeWriter &w, TypeNode type) {
                    RecNr inner = 1;
                    for (int level = 0; level < 60; ++level) {
                        SubRec node;
                        node.subKind = SUB_UNION;
                        node.first = inner;
                        const RecNr second = w.addSub(node);
                        node.next = second;
                        inner = w.addSub(node);
                    }
                    type->constraintRec = inner;
                }),
                exitsWith2, "broken");
}

} // namespace
