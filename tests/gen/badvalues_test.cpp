#include <gtest/gtest.h>

#include <functional>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Trees whose values and constraints don't hold together: the run ends with a message, or goes on
   where nothing is lost. */

namespace {

struct BadCase {
    const char *name;
    std::function<void(TreeWriter &)> build; /* may change records of the finished tree */
    int status;
    const char *message; /* the whole standard error of the run */
};

[[maybe_unused]] void PrintTo(const BadCase &value, std::ostream *out) {
    *out << value.name;
}

constexpr std::int64_t BIG = std::int64_t{1} << 40;
constexpr RecNr NOWHERE = 9999;

SubRec &sub(TreeWriter &w, RecNr nr) {
    return w.subRecs[static_cast<std::size_t>(nr - 1)];
}

/* A component that is checked against the constraint when it is asked for. */
void checked(TreeWriter &w, RecNr constraint) {
    w.define("T", w.sequence({w.comp("n", w.integer().constrained(constraint))})).entry();
}

/* The same in a finished tree, whose record `changed` may be changed. */
SubRec &finished(TreeWriter &w, RecNr constraint, RecNr changed) {
    checked(w, constraint);
    w.finish();
    return sub(w, changed);
}

ValueNode finishedValue(TreeWriter &w, TypeNode type, ValueNode value) {
    ValueNode defined = w.defineValue("v", type, value);
    w.finish();
    return defined;
}

void namedBit(TreeWriter &w, std::int64_t bit) {
    w.define("Rights", w.numbered(w.string(TYP_BITSTR), {{"far", bit}}));
    w.defineValue("v", w.ref("Rights"), w.listValue(TYP_BITSTR, {w.itemOf("Rights", "far")}));
}

/* An object identifier of two arcs. */
void arcs(TreeWriter &w, ValueNode last) {
    w.defineValue("v", w.type(TYP_OBJID), w.listValue(TYP_OBJID, {w.intValue(1), last}));
}

void defaultNowhere(TreeWriter &w) {
    TypeNode comp = w.comp("n", w.integer()).defaultTo(w.intValue(1));
    w.define("T", w.sequence({comp})).entry();
    w.finish();
    comp->defaultValue = NOWHERE;
}

void arcsOfThemselves(TreeWriter &w) {
    ValueNode value =
        finishedValue(w, w.type(TYP_OBJID), w.objectIdentifier({w.intValue(1), w.intValue(2)}));
    VNode &first = w.vNodes[static_cast<std::size_t>(value->refRecord - 1)];
    first.valueKind = TYP_SYNONYM;
    first.refModule = 1;
    first.refRecord = value.nr;
}

void valueOfItself(TreeWriter &w) {
    ValueNode value = w.defineValue("v", w.integer(), w.valueRef("w"));
    w.defineValue("w", w.integer(), w.valueRef("v"));
    value.exported();
}

/* Few records tell of a text of almost five million characters. */
void textOfReferences(TreeWriter &w) {
    w.defineValue("part", w.string(TYP_IA5STR), w.textValue(TYP_IA5STR, std::string(1000, 'x')));
    std::vector<ValueNode> parts;
    for (int i = 0; i < 5000; ++i)
        parts.push_back(w.valueRef("part"));
    w.defineValue("whole", w.string(TYP_IA5STR), w.listValue(TYP_IA5STR, parts));
}

void unionWith(TreeWriter &w, RecNr behindSecond) {
    const RecNr first = w.range(1, 2), second = w.range(4, 5);
    finished(w, w.sub(SUB_UNION, {first, second}), second).next =
        behindSecond == 0 ? first : behindSecond;
}

void unionWithinItself(TreeWriter &w) {
    const RecNr member = w.sub(SUB_UNION, {w.range(1, 2)});
    const RecNr whole = w.sub(SUB_UNION, {member});
    finished(w, whole, member).first = whole;
}

void sizeMissing(TreeWriter &w) {
    const RecNr size = w.size(1, 5);
    w.define("T", w.sequence({w.comp("s", w.string(TYP_OCTSTR).constrained(size))})).entry();
    w.finish();
    sub(w, size).first = 0;
}

void containedInItself(TreeWriter &w) {
    const RecNr nr = w.includes(w.define("U", w.integer(1, 2)));
    TypeNode type = w.define("T", w.integer().constrained(nr)).entry();
    w.finish();
    w.vNodes[static_cast<std::size_t>(sub(w, nr).first - 1)].refRecord = type.nr;
}

void enumerationWithoutItems(TreeWriter &w) {
    w.define("None", w.enumerated({})).entry();
    w.define("Marker", w.enumerated({NamedNumber::extension()})).entry();
    w.define("T", w.sequence({w.comp("e", w.ref("None")), w.comp("m", w.ref("Marker"))})).entry();
}

void singleValue(TreeWriter &w, RecNr value) {
    const RecNr nr = w.single(w.intValue(1));
    finished(w, nr, nr).first = value;
}

#define INTERNAL_FAULT(detail) "\nFATAL ERROR : Internal error\n" detail "\n"
constexpr const char *UNREADABLE = "\nFATAL ERROR : Can not read record from syntax tree\n\n";
constexpr const char *INCONSISTENT =
    "\nFATAL ERROR : Syntax tree inconsistent\n              t\n\n";
constexpr const char *BIT_FAULT = INTERNAL_FAULT("              Too long named bit value\n");
constexpr const char *ARC_FAULT =
    INTERNAL_FAULT("              Too large object identifier element value\n");
using W = TreeWriter;

const BadCase cases[] = {
    {"governor_missing",
     [](W &w) { finishedValue(w, w.integer(), w.intValue(1))->governorRec = 0; }, 2,
     INTERNAL_FAULT("")},
    {"governor_nowhere",
     [](W &w) { finishedValue(w, w.integer(), w.intValue(1))->governorRec = NOWHERE; }, 2,
     UNREADABLE},
    {"named_bit_too_large", [](W &w) { namedBit(w, BIG); }, 2, BIT_FAULT},
    {"named_bit_far_out", [](W &w) { namedBit(w, 2147483647); }, 2, BIT_FAULT},
    {"named_bit_negative", [](W &w) { namedBit(w, -5); }, 2, BIT_FAULT},
    {"named_bit_is_text",
     [](W &w) {
         w.defineValue("v", w.string(TYP_BITSTR),
                       w.listValue(TYP_BITSTR, {w.textValue(TYP_IA5STR, "far")}));
     },
     2, INTERNAL_FAULT("")},
    {"default_nowhere", defaultNowhere, 0, ""},
    {"arc_too_large", [](W &w) { arcs(w, w.intValue(BIG)); }, 2, ARC_FAULT},
    {"arc_negative", [](W &w) { arcs(w, w.intValue(-1)); }, 2, ARC_FAULT},
    {"arc_is_text", [](W &w) { arcs(w, w.textValue(TYP_IA5STR, "x")); }, 0,
     "Warning VELMO: No define for v: its object identifier is not resolved.\n"},
    {"arcs_of_themselves", arcsOfThemselves, 2, INCONSISTENT},
    {"text_of_references", textOfReferences, 2, INCONSISTENT},
    {"value_of_itself", valueOfItself, 2, INCONSISTENT},
    {"single_value_missing", [](W &w) { singleValue(w, NOWHERE); }, 2, UNREADABLE},
    {"single_value_none", [](W &w) { singleValue(w, 0); }, 2,
     INTERNAL_FAULT("              Unable to construct a value for a constraint.\n")},
    {"union_member_missing", [](W &w) { unionWith(w, NOWHERE); }, 2, UNREADABLE},
    {"union_in_circle", [](W &w) { unionWith(w, 0); }, 2, INCONSISTENT},
    {"union_within_itself", unionWithinItself, 2, INCONSISTENT},
    {"size_missing", sizeMissing, 2, UNREADABLE},
    {"contained_in_itself", containedInItself, 2, INCONSISTENT},
    {"except_with_one_part", [](W &w) { checked(w, w.sub(SUB_EXCEPT, {w.range(1, 9)})); }, 2,
     UNREADABLE},
    {"enumeration_without_items", enumerationWithoutItems, 0, ""},
};

class BadValues : public testing::TestWithParam<BadCase> {};

TEST_P(BadValues, EndWithAMessage) {
    WorkDir dir;
    TreeWriter w("Bad_Module", "t");
    w.source("asn/", "t.asn");
    w.option("-TST=1:1");
    w.option("-TAB=yes");
    GetParam().build(w);
    ASSERT_TRUE(w.save(dir.path("t.stx")));
    const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", "t"});
    EXPECT_EQ(run.status, GetParam().status);
    EXPECT_EQ(run.err, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(Gen, BadValues, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

} // namespace
