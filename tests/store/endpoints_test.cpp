#include "store/endpoints.h"

#include <gtest/gtest.h>

#include "store/records.h"
#include "store/tree.h"
#include "store/values.h"
#include "tests/support/loadtree.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

/* One end as text: the number and "]" for a closed end, ")" for an open one. */
std::string endOf(ModRec *module, RecNr type, bool plus) {
    readRec(module, REC_TNODE, type);
    VNode end;
    std::uint8_t flag = 0;
    const bool known = getEndpoint(&end, &flag, plus);
    EXPECT_EQ(recJustRead[REC_TNODE], (NodePlace{module, type}));
    if (!known)
        return isInvalidEndpoint(end) ? "none" : "?";
    if (isInvalidEndpoint(end))
        return "invalid";
    std::string text;
    const bool infinite = testInfinity(end, plus, end.valueKind);
    if (infinite)
        text = plus ? "MAX" : "MIN";
    else if (testInfinity(end, !plus, end.valueKind))
        text = "other";
    else if (end.valueKind == TYP_REAL)
        text = formatText("%g", retRealVal(valueReal(end)));
    else
        text = i64tostr(valueInt(end));
    const bool finite = !infinite && text != "other";
    EXPECT_TRUE(!finite || vNode.value == end.value);
    return text + (flag == (plus ? SUB_UPPER_CLOSED : SUB_LOWER_CLOSED) ? "]"
                   : flag == 0                                          ? ")"
                                                                        : "?");
}

struct Case {
    TypeNode type;
    const char *lower, *upper;
};

/* Defines the types of the cases in a module of their own and checks their ends. */
void check(TreeWriter *w, const std::vector<Case> &cases) {
    const WorkDir dir;
    int nr = 0;
    for (const Case &c : cases)
        if (c.type->nameIdx == 0)
            w->define("Case" + std::to_string(nr++), c.type);
    ModRec *module = loadTree(dir, *w);
    for (const Case &c : cases) {
        const std::size_t row = static_cast<std::size_t>(&c - cases.data());
        EXPECT_EQ(endOf(module, c.type.nr, false), c.lower) << "row " << row;
        EXPECT_EQ(endOf(module, c.type.nr, true), c.upper) << "row " << row;
    }
}

TEST(Endpoints, OfIntegers) {
    TreeWriter w("Ends", "ends");
    const auto of = [&](RecNr sub) { return w.integer().constrained(sub); };
    const auto one = [&](std::int64_t n) { return w.single(w.intValue(n)); };
    const TypeNode small = w.define("Small", of(w.range(2, 6)));
    check(&w,
          {
              {w.integer(), "MIN]", "MAX]"},
              {of(w.sub(SUB_TABLE)), "MIN]", "MAX]"},
              {of(w.range(-5, 5)), "-5]", "5]"},
              {of(w.rangeOf(w.intValue(1), w.intValue(9), SUB_LOWER_CLOSED)), "1]", "9)"},
              {of(w.sub(SUB_UNION, {w.range(1, 5), w.range(7, 9)})), "1]", "9]"},
              {of(w.sub(SUB_UNION, {w.range(MIN_VALUE, 5), w.range(7, 9)})), "MIN)", "9]"},
              {of(w.sub(SUB_UNION, {one(5), one(-1), one(3)})), "-1)", "5)"},
              {of(w.sub(SUB_UNION, {w.sub(SUB_TABLE)})), "MIN)", "MAX)"},
              {of(w.sub(SUB_INTERSECTION, {w.range(1, 5), w.range(3, 9)})), "3]", "5]"},
              {of(w.sub(SUB_CATENATION, {w.range(0, 100), w.range(10, MAX_VALUE)})), "10]", "100]"},
              {of(w.sub(SUB_INTERSECTION, {w.includes(small), w.range(0, 4)})), "2]", "4]"},
              {of(w.sub(SUB_UNION, {w.includes(small), one(9)})), "2]", "9)"},
              {of(w.single(w.realValue(1, 10, 0))), "MIN]", "MAX]"},
              {of(w.rangeOf(w.realValue(1, 10, 0), 0, 0)), "invalid", "MAX)"},
          });
}

TEST(Endpoints, OfDerivedTypes) {
    TreeWriter w("Derived", "der");
    const TypeNode base = w.define("Base", w.integer(0, 10));
    w.define("Plain", w.integer());
    w.define("Odd", w.integer().constrained(
                        w.sub(SUB_UNION, {w.single(w.intValue(1)), w.single(w.intValue(3))})));
    w.define("Alias", w.ref("Base"));
    w.define("Twice",
             w.integer().constrained(w.sub(SUB_CATENATION, {w.range(0, 50), w.range(0, 50)})));
    const auto from = [&](const char *parent, RecNr sub) { return w.ref(parent).constrained(sub); };
    const auto open = [&](std::int64_t low, std::int64_t high) {
        return w.rangeOf(w.intValue(low), w.intValue(high), 0);
    };
    check(&w, {
                  {base, "0]", "10]"},
                  {from("Base", w.range(5, MAX_VALUE)), "5]", "10]"},
                  {from("Alias", w.range(MIN_VALUE, 7)), "0]", "7]"},
                  {from("Base", w.range(0, 10)), "0]", "10]"},
                  {from("Base", open(1, 9)), "1)", "9)"},
                  {from("Base", open(0, 10)), "invalid", "invalid"},
                  {from("Base", w.range(-1, 11)), "invalid", "invalid"},
                  {from("Plain", w.range(MIN_VALUE, 7)), "MIN)", "7]"},
                  {from("Odd", w.range(MIN_VALUE, 2)), "1)", "2]"},
                  {from("Odd", w.range(1, 4)), "1]", "invalid"},
                  {from("Twice", w.range(5, MAX_VALUE)), "5]", "50]"},
              });
}

TEST(Endpoints, OfRealsEnumerationsAndOthers) {
    TreeWriter w("Others", "oth");
    const TypeNode items = w.define(
        "Items", w.enumerated({{"three", 3}, {"one", 1}, NamedNumber::extension(), {"seven", 7}}));
    const ValueNode low = w.realValue(-15, 10, -1);
    const TypeNode half = w.define(
        "Half", w.real().constrained(w.rangeOf(low, w.realValue(1, 2, 40), SUB_UPPER_CLOSED)));
    const TypeNode upwards =
        w.define("Upwards", w.real().constrained(w.rangeOf(low, 0, SUB_LOWER_CLOSED)));
    check(&w, {
                  {items, "1)", "7)"},
                  {half, "-1.5)", "1.09951e+12]"},
                  {upwards, "-1.5]", "MAX)"},
                  {w.real(), "MIN]", "MAX]"},
                  {w.boolean(), "none", "none"},
                  {w.sequence({w.comp("a", w.null())}), "none", "none"},
              });
    /* An item that is no number leaves the enumeration without ends; items of another type follow.
     */
    ModRec *module = modRecList.records[0].get();
    readRec(module, REC_TNODE, items.nr);
    const RecNr first = tNode.namedNumbersRec;
    storedVNode(module, first).governorRec = 0;
    EXPECT_EQ(endOf(module, items.nr, true), "other)");
    storedVNode(module, first).governorRec = items.nr;
    storedVNode(module, first).valueKind = TYP_BOOLEAN;
    recJustRead[REC_VNODE] = {};
    EXPECT_EQ(endOf(module, items.nr, true), "none");
}

TEST(Endpoints, OfSizes) {
    TreeWriter w("Sizes", "siz");
    const auto of = [&](RecNr sub) { return w.string(TYP_OCTSTR).constrained(sub); };
    const auto one = [&](std::int64_t n) { return w.single(w.intValue(n)); };
    const auto sizes = [&](std::int64_t a, std::int64_t b) { return w.size(w.range(a, b)); };
    check(&w, {
                  {of(w.size(one(5))), "5]", "5]"},
                  {of(w.size(w.sub(SUB_UNION, {w.range(1, 4), one(8)}))), "1]", "8]"},
                  {of(w.sub(SUB_UNION, {sizes(3, 4), sizes(1, 2)})), "1]", "4]"},
                  {of(w.sub(SUB_INTERSECTION, {sizes(1, 8), sizes(4, 9)})), "4]", "8]"},
                  {of(w.sub(SUB_INTERSECTION, {w.size(one(5)), sizes(1, 9)})), "5]", "5]"},
                  {of(w.sub(SUB_CATENATION, {w.alphabet(one(1)), sizes(2, 3)})), "2]", "3]"},
                  {of(sizes(3, MAX_VALUE)), "3]", "MAX)"},
                  {of(w.alphabet(one(1))), "MIN)", "MAX)"},
                  {w.string(TYP_BMPSTR), "MIN)", "MAX)"},
                  {w.listOf(TYP_SETOF, w.null()).constrained(sizes(2, 7)), "2]", "7]"},
                  {w.string(TYP_GENTIME), "none", "none"},
              });
}

TEST(Endpoints, ConstraintsWithoutEndStopTheRun) {
    ModRec *module = appendModRec(true);
    module->filePrefix = "loop";
    TNode type;
    type.mainType = TYP_INTEGER;
    type.constraintRec = 1;
    module->tNodes.push_back(type);
    const auto constrain = [&](std::vector<SubRec> subs) {
        module->subRecs = std::move(subs);
        recJustRead[REC_SUB] = {};
    };
    const auto sub = [](SubKind kind, RecNr first, RecNr next) {
        SubRec rec;
        rec.subKind = static_cast<std::uint8_t>(kind);
        rec.first = first;
        rec.next = next;
        return rec;
    };
    const auto expectFault = [&](const char *message) {
        EXPECT_EXIT(endOf(module, 1, true), exitsWith2, message);
    };
    constrain({sub(SUB_UNION, 1, 0)});
    expectFault("Syntax tree inconsistent\n +loop\n");
    constrain({sub(SUB_UNION, 2, 0), sub(SUB_TABLE, 0, 2)});
    expectFault("Syntax tree inconsistent\n +loop\n");
    constrain({sub(SUB_UNION, 7, 0)});
    expectFault("Can not read record");
    constrain({sub(SUB_SINGLE_VALUE, 7, 0)});
    expectFault("Can not read record");
    /* Each union has the one behind it twice. */
    std::vector<SubRec> doubling;
    for (RecNr nr = 1; nr < 200; nr += 2) {
        doubling.push_back(sub(SUB_UNION, nr + 2, nr + 1));
        doubling.push_back(sub(SUB_UNION, nr + 2, 0));
    }
    doubling.resize(202);
    constrain(doubling);
    expectFault("Syntax tree inconsistent\n +loop\n");
    /* A type that is derived from itself. */
    module->tNodes[0].mainType = TYP_SYNONYM;
    module->tNodes[0].refModule = module->tNodes[0].refRecord = 1;
    constrain({sub(SUB_RANGE, 0, 0)});
    expectFault("Syntax tree inconsistent\n +loop\n");
    module->tNodes[0].mainType = TYP_OCTSTR;
    constrain({sub(SUB_SIZE, 1, 0)});
    expectFault("Syntax tree inconsistent\n +loop\n");
}

} // namespace
