#include <gtest/gtest.h>

#include "examples/modules.h"
#include "tests/support/codingcase.h"

/* Asking and printing functions of small modules, one construct each, as a user sees them and as C
   compilers take them. */

namespace {

/* --- leaves --- */

void numbers(TreeWriter &w) {
    constexpr std::int64_t big = std::int64_t{1} << 53;
    const auto integer = [&](const char *name, std::int64_t low, std::int64_t high) {
        return w.comp(name, w.integer(low, high));
    };
    TypeNode holes = w.integer();
    RecNr one = w.single(w.intValue(1)), rest = w.range(5, 9);
    holes.constrained(w.sub(SUB_UNION, {one, rest}));
    TypeNode bounded = w.real();
    RecNr low = w.realValue(-15, 10, -1), high = w.realValue(2, 10, 3);
    bounded.constrained(w.rangeOf(low, high, SUB_LOWER_CLOSED));
    w.define("T", w.sequence({
                      w.comp("flag", w.boolean()),
                      w.comp("clean_flag", w.boolean().option(OPT_NORMALISE_TRUE)),
                      integer("a", 0, 255),
                      integer("b", 0, 65535),
                      integer("c", 0, 4294967295),
                      w.comp("d", w.integer(0, big).form(VF_UI64)),
                      integer("e", -100, 100),
                      integer("f", -1000, 1000),
                      integer("g", MIN_VALUE, MAX_VALUE),
                      w.comp("h", w.integer(-big, big).form(VF_I64)),
                      w.comp("with_holes", holes),
                      w.comp("growing", w.integer(0, 10).extensible()),
                      w.comp("half", w.real().form(VF_REAL32)),
                      w.comp("whole", w.real()),
                      w.comp("bounded", bounded),
                      w.comp("nothing", w.null()),
                  }));
}

void enumerations(TreeWriter &w) {
    w.define(
        "T",
        w.sequence({
            w.comp("dense", w.enumerated({{"a", 0}, {"b", 1}})),
            w.comp("with_holes", w.enumerated({{"a", 1}, {"b", 3}, {"c", 5}})),
            w.comp("growing",
                   w.enumerated({{"a", 0}, {"b", 1}, NamedNumber::extension(), {"c", 2}})),
            w.comp("both", w.enumerated(
                               {{"a", 0}, {"b", 2}, {"c", 7}, NamedNumber::extension(), {"d", 9}})),
        }));
}

void strings(TreeWriter &w) {
    const auto string = [&](const char *name, MainType kind, std::int64_t low, std::int64_t high) {
        return w.comp(name, w.string(kind, low, high));
    };
    w.define("T", w.sequence({
                      string("bits", TYP_BITSTR, 12, 12),
                      string("octets", TYP_OCTSTR, 16, 16),
                      string("some", TYP_OCTSTR, 0, 200),
                      w.comp("any_number", w.string(TYP_OCTSTR)),
                      w.comp("segments", w.string(TYP_OCTSTR).form(VF_LIST)),
                      w.comp("dynamic", w.string(TYP_OCTSTR, 32, 32).form(VF_DYNS0)),
                      w.comp("dynamic8", w.string(TYP_IA5STR, 0, 100).form(VF_DYNS8, VF_UI8)),
                      string("numeric", TYP_NUMSTR, 1, 15),
                      string("printable", TYP_PRISTR, 2, 2),
                      string("telex", TYP_TELSTR, 0, 80),
                      string("videotex", TYP_VIDSTR, 0, 80),
                      string("visible", TYP_VISSTR, 0, 80),
                      string("ia5", TYP_IA5STR, 0, 400),
                      string("graphic", TYP_GRASTR, 0, 80),
                      string("general", TYP_GENSTR, 0, 80),
                      w.comp("description", w.string(TYP_OBJDESCR)),
                      string("bmp", TYP_BMPSTR, 1, 64),
                      w.comp("capped", w.string(TYP_IA5STR, 0, 200).sizeLimit(20, true)),
                      w.comp("growing", w.string(TYP_IA5STR, 1, 8).extensible()),
                  }));
}

void otherLeaves(TreeWriter &w) {
    w.define("T", w.sequence({
                      w.comp("id", w.type(TYP_OBJID)),
                      w.comp("moment", w.type(TYP_GENTIME)),
                      w.comp("short_moment", w.type(TYP_UTCTIME)),
                      w.comp("outside", w.type(TYP_EXTERNAL_1990)),
                      w.comp("new_outside", w.type(TYP_EXTERNAL_1994)),
                      w.comp("empty", w.sequence({})),
                      w.comp("empty_set", w.set({})),
                  }));
}

/* What the run-time library has no functions for: a warning and no call, or a text that doesn't
   compile. */
void unsupported(TreeWriter &w) {
    w.define("T", w.sequence({
                      w.comp("presented", w.type(TYP_EMB_PDV)),
                      w.comp("instance", w.type(TYP_INSTANCE_OF)),
                      w.comp("any_text", w.string(TYP_UNISTR)),
                      w.comp("text", w.type(TYP_CHASTR)),
                  }));
}

/* An entry function of a leaf is the call alone: no bracket, and the name is the type's. */
void leafEntries(TreeWriter &w) {
    w.define("Byte", w.integer(0, 255)).entry();
    w.define("Clean", w.boolean().option(OPT_NORMALISE_TRUE)).entry();
    w.define("Colour", w.enumerated({{"red", 0}, {"blue", 4}})).entry();
    w.define("Shade", w.ref("Colour")).entry();
    w.define("Nothing", w.null()).entry();
    w.define("Empty", w.sequence({})).entry();
    w.define("Anything", w.any()).entry();
    w.define("Framed", w.sequence({w.comp("a", w.boolean())})).option(OPT_FRAME).entry();
    w.define("Gone", w.sequence({w.comp("a", w.boolean())})).skipped().entry();
    w.define("Refused", w.choice({w.comp("a", w.boolean())})).skipped(1).entry();
}

/* --- structures --- */

/* A SET is asked as a SEQUENCE is, in the order of its text. */
void sets(TreeWriter &w) {
    const auto comps = [&](bool lastIsOptional) {
        TypeNode last = w.comp("c", w.integer(0, 9)).implicit(2);
        return std::vector{w.comp("a", w.boolean()).implicit(0), w.comp("b", w.null()).implicit(1),
                           lastIsOptional ? last.optional() : last};
    };
    w.define("Some", w.structure(TYP_SET, comps(true))).entry();
    w.define("All", w.structure(TYP_SET, comps(false))).entry();
    w.define("One", w.set({w.comp("a", w.boolean()).optional()}));
    w.define("Defaults", w.sequence({w.comp("a", w.integer(0, 9)).defaultTo(w.intValue(5)),
                                     w.comp("b", w.boolean()).optional()}));
}

void choices(TreeWriter &w) {
    w.define("Single", w.choice({w.comp("only", w.boolean())})).entry();
    w.define("Inner",
             w.choice({w.comp("x", w.boolean()).implicit(0), w.comp("y", w.null()).implicit(1)}));
    w.define("Outer", w.choice({
                          w.comp("inner", w.ref("Inner")),
                          w.comp("tagged", w.ref("Inner")).explicitly(5),
                          w.comp("within", w.choice({w.comp("p", w.boolean()).implicit(6),
                                                     w.comp("q", w.real()).implicit(7)})),
                          w.comp("last", w.ref("Single")).explicitly(8),
                      }))
        .entry();
    w.define("Holder",
             w.sequence({w.comp("c", w.ref("Inner")), w.comp("d", w.ref("Inner")).optional()}));
}

void nesting(TreeWriter &w) {
    TypeNode deepest = w.set({w.comp("x", w.boolean()), w.comp("y", w.null()).optional()});
    TypeNode middle = w.sequence({w.comp("deepest", deepest), w.comp("z", w.integer(0, 9))});
    w.define("T", w.sequence({
                      w.comp("middle", middle).optional(),
                      w.comp("u", w.ref("U")),
                      w.comp("more", w.ref("U")).optional(),
                  }));
    w.define("U", w.sequence({w.comp("back", w.ref("T").option(OPT_POINTER)).optional(),
                              w.comp("self", w.ref("U")).optional()}));
}

/* --- lists --- */

void lists(TreeWriter &w) {
    w.define("U", w.sequence({w.comp("x", w.boolean())}));
    w.define("Static", w.listOf(TYP_SEQOF, w.integer(0, 9), 0, 5).asArray()).entry();
    w.define("Fixed", w.listOf(TYP_SETOF, w.ref("U"), 3, 3).form(VF_STRU, VF_NONE));
    w.define("Dynamic", w.listOf(TYP_SEQOF, w.ref("U")).asDynamicArray());
    w.define("DynamicBounded", w.listOf(TYP_SEQOF, w.integer(0, 9), 0, 300).asDynamicArray());
    w.define("Linked", w.listOf(TYP_SEQOF, w.integer(0, 9)).asList());
    w.define("LinkedNamed", w.listOf(TYP_SETOF, w.ref("U"), 0, 20).asList());
    w.define("LinkedPlain", w.listOf(TYP_SEQOF, w.sequence({w.comp("y", w.boolean())})).asList());
    w.define("Choices",
             w.listOf(TYP_SEQOF, w.choice({w.comp("x", w.boolean()), w.comp("y", w.null())}), 0, 2)
                 .asArray());
    TypeNode row = w.listOf(TYP_SEQOF, w.integer(0, 9), 1, 2).asArray();
    w.define("Matrix", w.listOf(TYP_SEQOF, row, 1, 3).asArray());
    w.define("Holder", w.sequence({w.comp("table", w.ref("Matrix")).optional(),
                                   w.comp("row", w.listOf(TYP_SEQOF, w.boolean()).asList())}));
    w.define("Growing", w.listOf(TYP_SEQOF, w.integer(0, 9), 0, 5).asArray().extensible());
}

/* What is asked beyond a limit is counted, up to the bound of the constraint. */
void sizeLimits(TreeWriter &w) {
    const auto array = [&](const char *name) {
        return w.define(name, w.listOf(TYP_SEQOF, w.integer(0, 9), 0, 200).asArray());
    };
    array("Ignoring").sizeLimit(10, false);
    array("Strict").sizeLimit(10, true);
    array("Exact").sizeLimit(200, false);
}

/* --- extension markers --- */

void markers(TreeWriter &w) {
    const auto sequence = [&] {
        return w.sequence({w.comp("old", w.integer(0, 9)), w.marker(),
                           w.comp("new", w.boolean()).implicit(0).optional()});
    };
    const auto alternatives = [&] {
        return w.choice({w.comp("x", w.boolean()), w.comp("y", w.null()), w.marker()});
    };
    w.define("Passing", sequence());
    w.define("Keeping", sequence().option(OPT_SAVE_EXTENSIONS)).entry();
    w.define("KeepingSet",
             w.set({w.comp("old", w.boolean()), w.marker()}).option(OPT_SAVE_EXTENSIONS));
    w.define("PassingChoice", alternatives());
    w.define("KeepingChoice", alternatives().option(OPT_SAVE_EXTENSIONS));
    w.define("OnlyMarker", w.sequence({w.marker()}));
    w.define("OnlyOne", w.choice({w.comp("x", w.boolean()), w.marker()}));
}

/* --- what is passed over, and what is carried as it is --- */

void skippedAndFrames(TreeWriter &w) {
    const auto inner = [&] { return w.sequence({w.comp("x", w.boolean())}); };
    w.define("Inner", inner());
    w.define("Framed", inner()).option(OPT_FRAME);
    w.define("T", w.sequence({
                      w.comp("ignored", w.ref("Inner")).implicit(0).skipped(),
                      w.comp("refused", w.ref("Inner")).implicit(1).skipped(1).optional(),
                      w.comp("framed", w.ref("Framed")).implicit(2),
                      w.comp("framed_leaf", w.integer(0, 9)).implicit(3).option(OPT_FRAME),
                      w.comp("anything", w.any()).optional(),
                      w.comp("open", w.openType()).explicitly(4),
                      w.comp("behind", w.ref("Inner")).implicit(5).option(OPT_POINTER).optional(),
                      w.comp("housed", w.ref("Inner")).implicit(6).option(OPT_HOME).optional(),
                      w.comp("byte", w.integer(0, 9)).implicit(7).option(OPT_HOME),
                  }))
        .entry();
    w.define("Any_List", w.listOf(TYP_SEQOF, w.any(), 0, 3).asArray());
    w.define("Pick", w.choice({w.comp("gone", w.null()).implicit(0).skipped(),
                               w.comp("rest", w.any()).explicitly(1)}));
    w.define("All_Housed", w.sequence({w.comp("a", w.integer(0, 9)).implicit(0),
                                       w.comp("b", w.ref("Inner")).implicit(1).optional()}))
        .option(OPT_COMPS_AS_POINTERS);
    w.define("All_Housed_Choice", w.choice({w.comp("a", w.integer(0, 9)).implicit(0),
                                            w.comp("b", w.ref("Inner")).implicit(1)}))
        .option(OPT_COMPS_AS_POINTERS);
}

void anyFunctions(TreeWriter &w) {
    TypeNode kind = w.comp("kind", w.type(TYP_OBJID));
    TypeNode value = w.comp("value", w.anyDefinedBy(kind));
    w.define("Class_Of", w.sequence({kind, value})).entry();
    w.define("Holder", w.sequence({w.comp("open", w.openType()),
                                   w.comp("rest", w.any()).explicitly(0).optional()}));
    w.define("Anything", w.any()).entry();
}

/* --- names --- */

/* Definitions make their names known by functions of their own, inline types where they stand. */
void namedNumbers(TreeWriter &w) {
    const auto colour = [&] { return w.enumerated({{"red", 0}, {"light_green", 1}}); };
    const auto grade = [&] { return w.numbered(w.integer(1, 6), {{"worst", 1}, {"best", -6}}); };
    const auto rights = [&] {
        return w.numbered(w.string(TYP_BITSTR, 0, 8), {{"read", 0}, {"write", 1}});
    };
    w.define("Colour", colour()).entry();
    w.define("Grade", grade());
    w.define("Rights", rights());
    w.define("Shade", w.ref("Colour")).entry();
    w.define("T",
             w.sequence({
                 w.comp("colour", w.ref("Colour")),
                 w.comp("grade", w.ref("Grade")).optional(),
                 w.comp("rights", w.ref("Rights")),
                 w.comp("own_colour", colour()),
                 w.comp("own_grade", grade()),
                 w.comp("own_rights", rights()),
                 w.comp("gone", w.ref("Colour")).implicit(0).skipped(),
                 w.comp("framed", colour().option(OPT_FRAME)).implicit(1),
                 w.comp("growing", w.enumerated({{"a", 0}, NamedNumber::extension(), {"b", 1}})),
             }));
    w.define("Colours", w.listOf(TYP_SEQOF, w.ref("Colour"), 0, 3).asArray());
}

/* Names are ASN.1's, with hyphens, and no longer than asked for. */
void longNames(TreeWriter &w) {
    w.define("Long_Name_Of_A_Type",
             w.sequence({
                 w.comp("long_component", w.sequence({w.comp("a", w.boolean())})),
                 w.comp("long_leaf", w.enumerated({{"long_item", 0}})),
             }))
        .entry();
}

/* --- MORLA applications --- */

void morla(TreeWriter &w) {
    const int morlaEntry = ENTRY_ALL_FUNCTIONS | 1 << 6;
    w.define("U", w.sequence({w.comp("x", w.boolean())}));
    w.define("Ping", w.sequence({
                         w.comp("id", w.integer(0, 255)),
                         w.comp("u", w.ref("U")).implicit(0).optional(),
                         w.comp("own", w.set({w.comp("y", w.boolean())})).optional(),
                     }))
        .entry(morlaEntry);
    w.define("Pong", w.choice({w.comp("a", w.boolean()), w.comp("b", w.ref("U"))}))
        .entry(morlaEntry);
    w.define("Byte", w.integer(0, 255)).entry(morlaEntry);
    w.define("Bytes", w.listOf(TYP_SEQOF, w.integer(0, 255), 0, 9).asArray()).entry(morlaEntry);
    w.define("Again", w.ref("Ping")).entry(morlaEntry);
    w.define("Anything", w.any()).entry(morlaEntry);
}

/* Lines of a user for each place, on definitions, components and uses of definitions. */
void embeddedText(TreeWriter &w) {
    const auto lines = [](TypeNode type, const std::string &name) {
        return type.text("A1", "/* before asking " + name + " */")
            .text("A2", "/* after asking " + name + " */")
            .text("P1", "/* before printing " + name + " */")
            .text("P2", "/* after printing " + name + " */");
    };
    lines(w.define("T", w.sequence({lines(w.comp("may", w.boolean()).optional(), "may"),
                                    lines(w.comp("part", w.ref("Part")), "part"),
                                    lines(w.comp("leaf", w.ref("Leaf")), "leaf")})),
          "T")
        .entry();
    lines(w.define("Part", w.sequence({w.comp("x", w.boolean())})), "Part");
    lines(w.define("Leaf", w.integer(0, 9)), "Leaf").entry();
}

const std::vector<const char *> unusedHome = {"-Wno-unused-parameter"};

const CodingCase cases[] = {
    {"basic", makeBasic},
    {"numbers", numbers},
    {"numbers_real", numbers, {"-C-GENERATION=REAL"}},
    {"enumerations", enumerations},
    {"strings", strings},
    {"other_leaves", otherLeaves},
    {"other_leaves_common", otherLeaves, {"-C-GENERATION=COMMONTIME:EXTERNAL"}},
    {"unsupported", unsupported, {}, {""}},
    {"leaf_entries", leafEntries, {}, unusedHome},
    {"sets", sets},
    {"traditional", sets, {"-ANSI-C=no"}},
    {"choices", choices},
    {"nesting", nesting},
    {"lists", lists},
    {"size_limits", sizeLimits, {}, {"-Wno-unused-but-set-variable"}},
    {"markers", markers, {}, unusedHome},
    {"skipped_and_frames", skippedAndFrames},
    {"any_functions", anyFunctions, {"-C-GENERATION=ANY-FUNCTIONS"}},
    {"named_numbers_and_bits", namedNumbers, {}, unusedHome},
    {"named_numbers", namedNumbers, {"-SETN=named-numbers"}, unusedHome},
    {"named_numbers_none", namedNumbers, {"-SETN=none"}},
    {"long_names", longNames, {"-NAMELEN=8"}},
    {"morla", morla, {"-DEFINITION-CATEGORY=MORLA-PROTOCOL"}},
    {"embedded_text", embeddedText},
};

class Testing : public testing::TestWithParam<CodingCase> {};

TEST_P(Testing, FunctionsAreWrittenAsExpectedAndCompile) {
    EXPECT_EQ(testingFaultsOf(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, Testing, testing::ValuesIn(cases),
                         [](const auto &testCase) { return std::string(testCase.param.name); });

/* Functions of an imported module are called by name, with those for its named numbers; those of
   instances are written where they are used. */
TEST(TestingOfImports, CallTheOtherModule) {
    WorkDir dir;
    TreeWriter base("Base_Module", "b"), user("User_Module", "u");
    for (TreeWriter *tree : {&base, &user})
        for (const char *option : {"-COD=0:0", "-TST=1:1", "-VERBOSE=QUIET"})
            tree->option(option);
    base.define("Colour", base.enumerated({{"red", 0}, {"blue", 1}}));
    base.define("Size", base.sequence({base.comp("width", base.integer(0, 9))}));
    base.define("Full", base.sequence({
                            base.comp("kind", base.enumerated({{"odd", 1}, {"even", 6}})),
                            base.comp("colour", base.ref("Colour")),
                        }));
    user.define("Wide", user.sequence({user.comp("a", user.boolean()),
                                       user.componentsOf(user.ref(base, "Full"))}));
    user.define("Shade", user.ref(base, "Colour")).entry();
    user.define("Own_Size", user.ref(base, "Size")).entry();
    user.define("Couple", user.type(TYP_NONE)).hidden();
    user.define(
            "Colours",
            user.instance(user.parameterisedHead(
                "Couple", user.sequence({user.comp("first", user.ref(base, "Colour")),
                                         user.comp("size", user.ref(base, "Size")).optional()}))))
        .entry();
    user.define("Box", user.sequence({user.comp("colour", user.ref(base, "Colour")),
                                      user.comp("size", user.ref("Own_Size")),
                                      user.comp("shade", user.ref("Shade"))}));
    ASSERT_TRUE(base.save(dir.path("b.stx")));
    EXPECT_EQ(compareGolden("testing/imports.txt", generatedFunctions(dir, user, {"b"})), "");
    EXPECT_EQ(compileFunctions(dir, unusedHome), "");
}

} // namespace
