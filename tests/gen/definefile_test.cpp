#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* What stands in ".def" files: names for numbers, accessor macros, values. */

namespace {

/* Numbers come with the type that they stand on, of a component with its path; an extension marker
   among items has no number; a synonym has no defines of its own. */
void namedNumbers(TreeWriter &w) {
    w.define(
        "Grade",
        w.numbered(w.integer(-6, 6),
                   {{"worst", -6}, {"best_of_all", 6}, {"least", MIN_VALUE}, {"most", MAX_VALUE}}));
    w.define("Rights",
             w.numbered(w.string(TYP_BITSTR, 0, 400), {{"read", 0}, {"write", 1}, {"far", 300}}));
    w.define("Signal",
             w.enumerated({{"stop", 0}, {"go", 1}, NamedNumber::extension(), {"wait", 300}}));
    w.define("Same", w.ref("Grade"));
    w.define("Plain", w.integer(0, 9));
    w.define("Unused", w.enumerated({{"no", 0}}).skipped());
    w.define("Msg",
             w.sequence({w.comp("grade", w.ref("Grade")),
                         w.comp("inner", w.set({w.comp("colour", w.enumerated({{"red", 7}}))})),
                         w.comp("all", w.listOf(TYP_SEQOF, w.enumerated({{"one", 1}})).asList())}));
}

/* "CDEFS=": every component, the marker and those of COMPONENTS OF too, with the number that its
   control member knows it by. All components below a definition end in its name. */
void componentIndices(TreeWriter &w) {
    const auto byte = [&] { return w.integer(0, 255); };
    w.define("Plain", w.sequence({w.comp("a", byte()), w.comp("b_c", byte()).optional()}));
    w.define("Pick", w.choice({w.comp("x", w.null()), w.marker(), w.comp("y", byte())}));
    w.define("Spliced", w.set({w.comp("first", byte()), w.componentsOf(w.ref("Plain")),
                               w.comp("last", byte()), w.marker()}));
    w.define("Empty", w.sequence({}));
    w.define("Gone", w.sequence({w.comp("z", byte())}).skipped());
    w.define("Same", w.ref("Plain"));
    w.define("List", w.listOf(TYP_SEQOF, w.sequence({w.comp("e", byte()), w.marker()})));
    w.define("Deep",
             w.sequence({w.comp("up", w.sequence({w.comp("down", w.ref("Plain")), w.marker()})),
                         w.comp("side", w.choice({w.comp("n", w.null())}))}));
    const auto nested = [&](std::initializer_list<const char *> names) {
        std::vector<TypeNode> comps;
        for (const char *name : names)
            comps.push_back(w.comp(name, byte()));
        return w.structure(TYP_SEQ, comps);
    };
    /* k and i stand for several numbers each, j for one. */
    w.define("Nest", w.sequence({w.comp("a", nested({"k", "j", "i"})),
                                 w.comp("b", nested({"i", "j"})), w.comp("k", byte()),
                                 w.comp("c", w.listOf(TYP_SEQOF, nested({"k"})).asList())}));
    w.define("FIELDS", w.objectClass({w.valueField("f", nested({"v", "x"})),
                                      w.valueField("g", nested({"x", "v"}))}));
}

/* --- accessor macros --- */

/* Only optional components and markers of a SEQUENCE or SET have macros; those of a nested
   structure end in its whole path. */
void accessors(TreeWriter &w) {
    const auto flag = [&] { return w.boolean(); };
    w.define("Plain", w.sequence({w.comp("a", flag()), w.comp("b", flag())}));
    w.define("Optional", w.sequence({w.comp("a", flag()), w.comp("b", flag()).optional(),
                                     w.comp("c", w.ref("Plain")).optional()}));
    w.define("Bag", w.set({w.comp("m", flag()),
                           w.comp("d", w.integer(0, 9)).defaultTo(w.intValue(1)), w.marker()}));
    w.define("Kept", w.sequence({w.comp("x", flag()), w.marker()}).option(OPT_SAVE_EXTENSIONS));
    w.define("Msg",
             w.sequence(
                 {w.comp("a", w.sequence(
                                  {w.comp("b", w.set({w.comp("c", flag()).optional()})).optional(),
                                   w.marker()})),
                  w.comp("b", w.set({w.comp("c", flag()).optional()}))}));
}

/* With more than 32 components the mask is an array of words with sign. */
void manyComponents(TreeWriter &w) {
    std::vector<TypeNode> comps;
    for (int i = 0; i < 33; ++i) {
        const TypeNode comp = w.comp("c" + std::to_string(i), w.boolean());
        comps.push_back(i % 31 == 0 ? comp.optional() : comp);
    }
    w.define("Small", w.structure(TYP_SET, {comps.begin(), comps.begin() + 1}));
    comps.erase(comps.begin());
    comps.push_back(w.comp("c33", w.boolean()).optional());
    comps.push_back(w.marker());
    w.define("Many", w.structure(TYP_SEQ, comps));
    w.define("Words", w.sequence({w.comp("o", w.boolean()).optional()}).form(VF_STRU, VF_I32));
}

void choiceAccessors(TreeWriter &w) {
    const auto alternatives = [&] {
        return std::vector{w.comp("x", w.boolean()), w.comp("y", w.ref("Inner")), w.marker()};
    };
    w.define("Pick", w.structure(TYP_CHOICE, alternatives()));
    w.define("Inner", w.choice({w.comp("deep", w.choice({w.comp("n", w.null())}))}));
}

/* Components in homes or behind pointers of their own: whether one is there tells its pointer. */
void pointerAccessors(TreeWriter &w) {
    w.define("Record", w.sequence({w.comp("a", w.ref("Unit")),
                                   w.comp("b", w.ref("Unit")).optional(), w.marker()})
                           .option(OPT_COMPS_AS_POINTERS)
                           .option(OPT_COMPS_POINTER));
    w.define("Side", w.choice({w.comp("x", w.ref("Unit")), w.comp("y", w.ref("Unit"))})
                         .option(OPT_COMPS_AS_POINTERS)
                         .option(OPT_COMPS_POINTER));
    w.define("Unit", w.sequence({w.comp("u", w.boolean())}));
}

/* An element is reached through the home that it lies in; a cast stands on a line of its own where
   the line would become too long. Arrays need no macros. */
void listAccessors(TreeWriter &w) {
    const auto list = [&](TypeNode element) { return w.listOf(TYP_SEQOF, element).asList(); };
    w.define("Bytes", list(w.integer(0, 255)));
    w.define("Names", list(w.string(TYP_IA5STR, 1, 8)));
    w.define("Texts", list(w.string(TYP_OCTSTR)));
    w.define("Ids", list(w.type(TYP_OBJID)));
    w.define("Units", w.listOf(TYP_SETOF, w.ref("Unit")).asList());
    w.define("Plain", list(w.sequence({w.comp("o", w.boolean()).optional()})));
    w.define("Rows", list(list(w.real())));
    w.define("Signals", list(w.enumerated({{"go", 0}, NamedNumber::extension()})));
    for (int length = 49; length < 53; ++length) {
        const std::string name = "L" + std::string(static_cast<std::size_t>(length) - 1, 'x');
        w.define(name, w.type(TYP_UTCTIME)).entry();
        w.define("Of_" + std::to_string(length), list(w.ref(name)));
    }
    w.define("Long", list(w.ref("A_unit_whose_name_takes_nearly_a_whole_line_of_text_x")));
    w.define("Nested", w.sequence({w.comp("inner", list(w.ref("Unit"))).optional()}));
    w.define("Array", w.listOf(TYP_SEQOF, w.ref("Unit"), 1, 3).asArray());
    w.define("Unit", w.sequence({w.comp("u", w.boolean())}));
    w.define("A_unit_whose_name_takes_nearly_a_whole_line_of_text_x",
             w.sequence({w.comp("u", w.boolean())}));
}

/* --- values --- */

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
    w.defineValue("quoted", w.string(TYP_VISSTR), w.textValue(TYP_VISSTR, "\"a\\b\"?\?/\n\tz"));
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
    std::vector<ValueNode> arcs;
    for (int i = 0; i < 30; ++i)
        arcs.push_back(w.intValue(4000 + i));
    w.defineValue("long_one", identifier(), w.listValue(TYP_OBJID, arcs));
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

struct DefineCase {
    const char *name; /* of the golden file, in a folder; accessors of others are left out */
    void (*build)(TreeWriter &);
    std::vector<const char *> options = {};
};

const DefineCase cases[] = {
    {"defines/numbers", namedNumbers},
    {"defines/components", componentIndices, {"-CDEFS=yes"}},
    {"accessors/structures", accessors},
    {"accessors/structures_named", accessors, {"-TPREF=My", "-CSUFF=_m"}},
    {"accessors/many_components", manyComponents},
    {"accessors/choices", choiceAccessors},
    {"accessors/pointers", pointerAccessors},
    {"accessors/lists", listAccessors, {"-NAMELEN=64"}},
    {"values/integers", integers},
    {"values/reals", reals},
    {"values/reals_of_5", reals, {"-DECIMALS=5"}},
    {"values/bits_and_octets", bitsAndOctets},
    {"values/texts", texts},
    {"values/object_identifiers", objectIdentifiers},
    {"values/without_line", withoutLine},
    {"values/named", objectIdentifiers, {"-VPREF=my_", "-VNAME=leaf:blade"}},
};

void PrintTo(const DefineCase &value, std::ostream *out) {
    *out << value.name;
}

class Defines : public testing::TestWithParam<DefineCase> {};

TEST_P(Defines, AreWrittenAsExpectedAndCompile) {
    const std::string name = GetParam().name;
    WorkDir dir;
    TreeWriter w("Define_Module", "t");
    if (!name.starts_with("accessors/"))
        w.backendOption("-ACCESS-ROUTINES=NONE");
    for (const char *option : GetParam().options)
        w.option(option);
    GetParam().build(w);
    EXPECT_EQ(compareGolden(name + ".def", generatedFiles(dir, {&w}, {".def"})), "");
    dir.write("uses.c", "#include <float.h>\n#include <limits.h>\n" + usesOfDefines(dir, "t"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
}

INSTANTIATE_TEST_SUITE_P(Gen, Defines, testing::ValuesIn(cases), [](const auto &suite) {
    std::string name = suite.param.name;
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
});

TEST(DefinesDirect, NothingToNameNothingWritten) {
    TreeWriter w("Quiet_Module", "t");
    w.define("Number", w.integer(0, 9));
    w.define("Text", w.string(TYP_IA5STR, 1, 4)).entry();
    w.define("Record", w.sequence({w.comp("n", w.ref("Number"))}));
    EXPECT_EQ(generatedFiles(WorkDir(), {&w}, {".def"}), "== t.def\n");
}

/* The option may stand on a type; what lies within it has the module's setting. */
TEST(DefinesDirect, AccessorsAreChosenByModuleAndType) {
    TreeWriter w("Chosen_Module", "t");
    const auto inner = [&](const char *name) {
        return w.sequence(
            {w.comp(name, w.sequence({w.comp("i", w.boolean()).optional()})).optional()});
    };
    w.define("Quiet", inner("q")).backendOption("-ACCESS-ROUTINES=NONE");
    w.define("Loud", inner("l")).backendOption("-ACCESS-ROUTINES=FUNCTIONS");
    const std::string text = generatedFiles(WorkDir(), {&w}, {".def"});
    for (const char *heading :
         {"/* accessors for q_Quiet */", "/* accessors for Loud */", "/* accessors for l_Loud */"})
        EXPECT_NE(text.find(heading), std::string::npos) << heading;
    EXPECT_EQ(text.find("/* accessors for Quiet */"), std::string::npos);
}

/* A value of another module, by way of a synonym of its type. */
TEST(DefinesDirect, ValuesOfOtherModules) {
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
