#include <gtest/gtest.h>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* Values of a module as "#define" lines at the end of the ".def" file. */

namespace {

constexpr std::int64_t WORD = std::int64_t{1} << 32;

/* A literal of the form that holds the type: of 64 bits by the functions of the run-time layer, the
   ends of the numbers by names. */
void integers(TreeWriter &w) {
    const auto number = [&](const char *name, TypeNode type, std::int64_t value) {
        w.defineValue(name, type, w.intValue(value));
    };
    number("small", w.ref("Byte"), 255);
    number("negative", w.integer(-1000, 1000), -1000);
    number("largest_signed", w.integer(0, 4294967295), 2147483647);
    number("unsigned_one", w.integer(0, 4294967295), 2147483648);
    number("longest", w.integer(), MAX_VALUE);
    number("shortest", w.integer(), MIN_VALUE);
    number("unlimited", w.integer(0, 4294967295), MAX_VALUE);
    number("big_in_word", w.ref("Big"), -2147483648);
    number("big_below_word", w.ref("Big"), -2147483649);
    number("big_above_word", w.ref("Big"), 5 * WORD + 4294967295);
    number("big_max", w.ref("Big"), MAX_VALUE);
    number("big_min", w.ref("Big"), MIN_VALUE);
    w.defineValue("item", w.ref("Colour"), w.itemOf("Colour", "green"));
    w.defineValue("item_by_number", w.ref("Colour"), w.itemOf("Grade", "best"));
    w.defineValue("same", w.ref("Byte"), w.valueRef("small"));
    w.defineValue("same_again", w.ref("Byte"), w.valueRef("same"));
    w.defineValue("yes", w.boolean(), w.boolValue(true));
    w.defineValue("no", w.ref("Flag"), w.boolValue(false));
    w.define("Byte", w.integer(0, 255));
    w.define("Flag", w.boolean());
    w.define("Big", w.integer().form(VF_I64));
    w.define("Grade", w.numbered(w.integer(0, 9), {{"best", 6}}));
    w.define("Colour", w.enumerated({{"red", 0}, {"green", 1}, {"blue", 6}}));
}

/* Digits of "DECIMALS=" behind the point, those of the mantissa counted; the exponent is decimal.
 */
void reals(TreeWriter &w) {
    const auto real = [&](const char *name, std::int64_t mantissa, int base, int exponent) {
        w.defineValue(name, w.real(), w.realValue(mantissa, base, exponent));
    };
    real("price", 123, 10, -2);
    real("debt", -15, 10, 3);
    real("long_one", 1234567890123, 10, 0);
    real("nothing", 0, -1, 0);
    real("endless", -2, -1, 0);
    real("endless_below", -1, -1, 0);
}

/* Each in the form that it was written in, named bits in binary. */
void bitsAndOctets(TreeWriter &w) {
    const auto bits = [&] { return w.string(TYP_BITSTR); };
    const auto octets = [&] { return w.string(TYP_OCTSTR); };
    w.defineValue("bits", bits(), w.bitsValue("0101"));
    w.defineValue("no_bits", bits(), w.bitsValue(""));
    w.defineValue("bits_in_hex", bits(), w.hexValue("ABC"));
    w.defineValue(
        "named", w.ref("Rights"),
        w.listValue(TYP_BITSTR, {w.itemOf("Rights", "own"), w.itemOf("Rights", "write")}));
    w.defineValue("octets", octets(), w.hexValue("0AFF"));
    w.defineValue("half_octet", octets(), w.hexValue("0AF"));
    w.defineValue("octets_in_binary", octets(), w.bitsValue("101010101"));
    /* Far behind the column where other lines break. */
    w.defineValue("long_value", octets(), w.hexValue(std::string(120, 'A')));
    w.define("Rights", w.numbered(bits(), {{"read", 0}, {"write", 1}, {"own", 4}}));
}

void texts(TreeWriter &w) {
    for (const MainType kind : {TYP_NUMSTR, TYP_PRISTR, TYP_TELSTR, TYP_VIDSTR, TYP_VISSTR,
                                TYP_IA5STR, TYP_GRASTR, TYP_GENSTR})
        w.defineValue("text_" + std::to_string(kind), w.string(kind),
                      w.textValue(kind, "1 2 " + std::to_string(kind)));
    w.defineValue("empty", w.string(TYP_IA5STR), w.textValue(TYP_IA5STR, ""));
    w.defineValue("parts", w.string(TYP_IA5STR),
                  w.listValue(TYP_IA5STR, {w.textValue(TYP_IA5STR, "one, "), w.valueRef("text_20"),
                                           w.textValue(TYP_IA5STR, ", three")}));
    w.defineValue("moment", w.type(TYP_GENTIME), w.timeValue(TYP_GENTIME, "20021231235959.5Z"));
    w.defineValue("short_moment", w.type(TYP_UTCTIME), w.timeValue(TYP_UTCTIME, "0207121230+0200"));
}

void objectIdentifiers(TreeWriter &w) {
    const auto identifier = [&] { return w.type(TYP_OBJID); };
    w.defineValue("root", identifier(),
                  w.objectIdentifier({w.intValue(1).named("iso"), w.intValue(2), w.intValue(3)}));
    w.defineValue(
        "leaf", identifier(),
        w.objectIdentifier({w.valueRef("root"), w.intValue(4294967295), w.valueRef("last_arc")}));
    w.defineValue("last_arc", w.integer(0, 9), w.intValue(7));
    w.defineValue("alias", identifier(), w.valueRef("leaf"));
}

/* Values of these kinds have no line, nor has what isn't exported; a module that has only such
   values has no heading. */
void withoutLine(TreeWriter &w) {
    w.defineValue("nothing", w.null(), w.nullValue());
    w.defineValue("record", w.ref("Record"), w.listValue(TYP_SEQ, {w.intValue(1).named("a")}));
    w.defineValue("list", w.listOf(TYP_SEQOF, w.integer()),
                  w.listValue(TYP_SEQOF, {w.intValue(1)}));
    w.defineValue("pick", w.choice({w.comp("a", w.integer())}),
                  w.listValue(TYP_CHOICE, {w.intValue(1).named("a")}));
    w.defineValue("wide", w.string(TYP_BMPSTR), w.text16Value(u"wide"));
    w.defineValue("universal", w.string(TYP_UNISTR), w.text32Value(U"universal"));
    w.defineValue("described", w.type(TYP_OBJDESCR), w.textValue(TYP_OBJDESCR, "text"));
    w.defineValue("hidden", w.integer(), w.intValue(5)).exported(false);
    w.define("Record", w.sequence({w.comp("a", w.integer())})).exported();
    w.exportsMarked();
}

struct ValuesCase {
    const char *name;
    void (*build)(TreeWriter &);
    std::vector<const char *> options = {};
};

const ValuesCase cases[] = {
    {"integers", integers},
    {"reals", reals},
    {"reals_of_5", reals, {"-DECIMALS=5"}},
    {"bits_and_octets", bitsAndOctets},
    {"texts", texts},
    {"object_identifiers", objectIdentifiers},
    {"without_line", withoutLine},
    {"named", objectIdentifiers, {"-VPREF=my_", "-VNAME=leaf:blade"}},
};

[[maybe_unused]] void PrintTo(const ValuesCase &value, std::ostream *out) {
    *out << value.name;
}

class ValueLines : public testing::TestWithParam<ValuesCase> {};

TEST_P(ValueLines, AreWrittenAsExpectedAndCompile) {
    WorkDir dir;
    TreeWriter w("Value_Module", "t");
    w.backendOption("-ACCESS-ROUTINES=NONE");
    for (const char *option : GetParam().options)
        w.option(option);
    GetParam().build(w);
    EXPECT_EQ(compareGolden(std::string("values/") + GetParam().name + ".def",
                            generatedFiles(dir, {&w}, {".def"})),
              "");
    dir.write("uses.c", "#include <float.h>\n#include <limits.h>\n" + usesOfDefines(dir, "t"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
}

INSTANTIATE_TEST_SUITE_P(Gen, ValueLines, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

/* A value of another module, by way of a synonym of its type. */
TEST(ValueLinesDirect, OfOtherModules) {
    WorkDir dir;
    TreeWriter base("Base_Module", "base");
    base.define("Size", base.integer(0, 4294967295));
    const ValueNode limit = base.defineValue("limit", base.ref("Size"), base.intValue(3000000000));
    const ValueNode root = base.defineValue(
        "root", base.type(TYP_OBJID), base.objectIdentifier({base.intValue(2), base.intValue(5)}));
    TreeWriter w("User_Module", "user");
    const std::int32_t module = w.import(base);
    w.defineValue("own_limit", w.ref(base, "Size"), w.valueRefTo(module, limit));
    w.defineValue("leaf", w.type(TYP_OBJID),
                  w.objectIdentifier({w.valueRefTo(module, root), w.intValue(1)}));
    EXPECT_EQ(generatedFiles(dir, {&w, &base}, {".def"}), "== user.def\n\n/* values */\n\n"
                                                          "#define own_limit 3000000000UL\n"
                                                          "#define leaf \\\n  \"{2 5 1}\"\n");
}

} // namespace
