#include "store/values.h"

#include <gtest/gtest.h>

#include <limits>

#include "store/records.h"
#include "store/tree.h"
#include "tests/support/loadtree.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);
constexpr double GREATEST = std::numeric_limits<double>::max();

realVal real(std::int32_t mantissa, int base, int exponent) {
    return {i64ltosint64(mantissa), static_cast<std::int16_t>(base),
            static_cast<std::int16_t>(exponent)};
}

/* Says of a string value how long its text is. */
void setLength(VNode *node, int length) {
    node->value[0] = static_cast<std::uint8_t>(length >> 8);
    node->value[1] = static_cast<std::uint8_t>(length);
}

TEST(Values, RealsAreWorkedOutStepByStep) {
    EXPECT_EQ(retRealVal(real(15, 10, -1)), 1.5);
    EXPECT_EQ(retRealVal(real(-1, 2, 0)), -1.0);
    EXPECT_EQ(retRealVal(realVal{i64make(1, 1), 2, -1}), 2147483648.5);
    /* Each division rounds, so this isn't the double nearest to the number. */
    double stepwise = 7;
    for (int i = 0; i < 30; ++i)
        stepwise /= 10;
    EXPECT_EQ(retRealVal(real(7, 10, -30)), stepwise);
    EXPECT_EQ(retRealVal(makeSpecialRealVal(REAL_PLUS_INFINITY)), GREATEST);
    EXPECT_EQ(retRealVal(makeSpecialRealVal(REAL_MINUS_INFINITY)), -GREATEST);
    EXPECT_EQ(retRealVal(makeSpecialRealVal(REAL_ZERO)), 0.0);
    EXPECT_EQ(retRealVal(realVal{i64make(1, 0xFFFFFFFE), -1, 0}), 0.0);
    EXPECT_EQ(getSpecialRealVal(realVal{i64make(1, 0), -1, 0}), 0x7FFFFFFF);
    EXPECT_EQ(compareReal(real(1, 10, 1), real(10, 2, 0)), 0);
    EXPECT_EQ(compareReal(real(-1, 10, 1), real(1, 2, 0)), -1);
    EXPECT_EQ(compareReal(makeSpecialRealVal(REAL_ZERO), real(0, 10, 5)), 0);
    EXPECT_EQ(compareReal(makeSpecialRealVal(REAL_PLUS_INFINITY), real(1, 10, 400)), -1);
    EXPECT_EQ(compareReal(makeSpecialRealVal(REAL_PLUS_INFINITY), real(1, 10, 300)), 1);
}

TEST(Values, StandBigEndianInTheirTwelveBytes) {
    VNode node;
    setValueInt(&node, i64make(-2, 3));
    EXPECT_EQ(node.value, (std::array<std::uint8_t, 12>{0xFF, 0xFF, 0xFF, 0xFE, 0, 0, 0, 3}));
    EXPECT_EQ(valueInt(node), i64make(-2, 3));
    setValueReal(&node, real(-1, 10, -300));
    EXPECT_EQ(valueReal(node).base, 10);
    EXPECT_EQ(valueReal(node).exponent, -300);
    for (const int kind : {TYP_REAL, TYP_INTEGER}) {
        for (const bool plus : {false, true}) {
            setInfinity(&node, plus, kind);
            EXPECT_TRUE(testInfinity(node, plus, kind));
            EXPECT_FALSE(testInfinity(node, !plus, kind));
        }
    }
    EXPECT_EQ(valueReal(node).mantissa.hi, 0x7FFFFFFF);
}

/* The length of a value as one of a type, both being definitions of a module. */
std::int32_t lengthOf(ModRec *module, TypeNode type, ValueNode value) {
    readRec(module, REC_TNODE, type.nr);
    readRec(module, REC_VNODE, value.nr);
    const std::int32_t length = getAnyStringLength();
    EXPECT_EQ(recJustRead[REC_VNODE], (NodePlace{module, value.nr}));
    return length;
}

TEST(Values, LengthOfStrings) {
    const WorkDir dir;
    TreeWriter w("Lengths", "len");
    const TypeNode plain = w.define("Plain", w.string(TYP_BITSTR));
    const TypeNode upTo1 =
        w.define("UpTo1", w.numbered(w.string(TYP_BITSTR), {{"zero", 0}, {"one", 1}}));
    const TypeNode upTo0 = w.define("UpTo0", w.numbered(w.string(TYP_BITSTR), {{"zero", 0}}));
    const TypeNode octets = w.define("Octets", w.string(TYP_OCTSTR));
    const TypeNode text = w.define("Text", w.string(TYP_IA5STR));
    struct Row {
        TypeNode type;
        ValueNode value;
        std::int32_t length;
    };
    const auto named = [&](std::int64_t bit) { return w.intValue(bit); };
    const Row rows[] = {
        {plain, w.bitsValue("1000"), 4},
        {plain, w.hexValue("A10"), 12},
        {plain, w.bitsValue(""), 0},
        {upTo1, w.bitsValue("1000"), 2},
        {upTo1, w.bitsValue("1010"), 3},
        {upTo1, w.bitsValue("1"), 1},
        {upTo1, w.hexValue("C0"), 2},
        {upTo0, w.hexValue("A1"), 8},
        {upTo0, w.hexValue("A2"), 7},
        {plain, w.listValue(TYP_BITSTR, {named(4), named(2)}), 5},
        {plain, w.listValue(TYP_BITSTR, {named(0x7FFFFFFF)}), 0x7FFFFFFF},
        {plain, w.listValue(TYP_BITSTR, {named(0x80000000)}), 0x7FFFFFFF},
        {octets, w.bitsValue("101010101"), 2},
        {octets, w.hexValue("A1B"), 2},
        {octets, w.hexValue(""), 0},
        {text, w.textValue(TYP_IA5STR, "abc"), 3},
    };
    int nr = 0;
    for (const Row &row : rows)
        w.defineValue("v" + std::to_string(nr++), row.type, row.value);
    ModRec *module = loadTree(dir, w);
    for (const Row &row : rows)
        EXPECT_EQ(lengthOf(module, row.type, row.value), row.length) << row.value.nr;
    /* A length that the digits don't bear out: what is missing counts as zeros. */
    setLength(&storedVNode(module, rows[3].value.nr), 60000);
    EXPECT_EQ(lengthOf(module, upTo1, rows[3].value), 2);
}

TEST(Values, SegmentsAreJoinedAcrossModules) {
    const WorkDir dir;
    TreeWriter other("Other", "other");
    const ValueNode tail =
        other.defineValue("tail", other.string(TYP_IA5STR), other.textValue(TYP_IA5STR, "post"));
    ASSERT_TRUE(other.save(dir.path("other.stx")));
    TreeWriter w("Joined", "join");
    const std::int32_t nr = w.import(other);
    const ValueNode joined = w.defineValue(
        "joined", w.string(TYP_IA5STR),
        w.listValue(TYP_IA5STR, {w.textValue(TYP_IA5STR, "air "), w.valueRefTo(nr, tail.nr),
                                 w.textValue(TYP_IA5STR, "!")}));
    const ValueNode wide = w.defineValue(
        "wide", w.string(TYP_BMPSTR),
        w.listValue(TYP_BMPSTR, {w.text16Value(u"\u00E4"), w.text16Value(u"\u00DF")}));
    ModRec *module = loadTree(dir, w);
    const RestrCharStri text = makeRestrCharStri(module, storedVNode(module, joined.nr));
    EXPECT_EQ(text.text8, "air post!");
    EXPECT_EQ(text.length(), 9);
    EXPECT_EQ(makeRestrCharStri(module, storedVNode(module, wide.nr)).text16, u"\u00E4\u00DF");

    /* Of a text that is longer than said, the beginning counts; a length beyond the text is kept,
       filled with zeros. */
    VNode shorter =
        module->vNodes[static_cast<std::size_t>(storedVNode(module, joined.nr).refRecord - 1)];
    setLength(&shorter, 2);
    EXPECT_EQ(makeRestrCharStri(module, shorter).text8, "ai");
    VNode longer =
        module->vNodes[static_cast<std::size_t>(storedVNode(module, wide.nr).refRecord - 1)];
    longer.refRecord = 0;
    setLength(&longer, 60000);
    EXPECT_EQ(makeRestrCharStri(module, longer).text16, u"\u00E4" + std::u16string(59999, 0));
}

TEST(Values, SegmentsWithoutEndAreFound) {
    ModRec *module = appendModRec(true);
    module->filePrefix = "seg";
    /* Each value is twice the one behind it: 2 to the power of 60 segments. */
    for (RecNr nr = 1; nr <= 120; nr += 2) {
        VNode node;
        node.valueKind = TYP_IA5STR;
        node.refRecord = nr + 2 > 120 ? 0 : nr + 2;
        node.next = nr + 1;
        module->vNodes.push_back(node);
        node.next = 0;
        module->vNodes.push_back(node);
    }
    const VNode whole = module->vNodes[0];
    EXPECT_EXIT(makeRestrCharStri(module, whole), exitsWith2, "Syntax tree inconsistent\n +seg\n");
    module->vNodes[1].next = 1;
    EXPECT_EXIT(lenFromNamedBits(module, 1), exitsWith2, "Syntax tree inconsistent\n +seg\n");
    module->vNodes[0].refRecord = 1;
    EXPECT_EXIT(makeRestrCharStri(module, module->vNodes[0]), exitsWith2, "inconsistent");
}

} // namespace
