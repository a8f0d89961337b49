#include <gtest/gtest.h>

#include "tests/support/codingcase.h"

/* How options shape functions: which types get them, what stands in them. */

namespace {

TypeNode byte(TreeWriter &w) {
    return w.integer(0, 255);
}

/* Each kind of structure. */
void basic(TreeWriter &w) {
    TypeNode name = w.comp("name", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional();
    w.define("Msg", w.sequence({w.comp("id", byte(w)), name, w.comp("ok", w.boolean())})).entry();
    w.define("Pick",
             w.choice({w.comp("a", byte(w)).implicit(0), w.comp("b", w.boolean()).implicit(1)}))
        .entry();
    w.define("Vals", w.listOf(TYP_SEQOF, byte(w), 1, 9)).entry();
    TypeNode next = w.comp("next", w.ref("Node")).optional();
    w.define("Node", w.sequence({w.comp("value", byte(w)), next})).entry();
}

/* A type for each answer to "which functions": visible or not, entry or not, referred to or not. */
void selection(TreeWriter &w) {
    w.exportsMarked();
    const auto part = [&](const char *name) {
        return w.define(name, w.sequence({w.comp("x", byte(w))})).exported(false);
    };
    part("Hidden");
    part("Referred");
    part("Entry").entry();
    part("Visible").exported();
    w.define("Both", w.sequence({w.comp("part", w.ref("Referred"))})).entry().exported();
    w.define("Synonym", w.ref("Both")).entry();
    part("OnlyEncoded").entry(ENTRY_ENCODE);
}

/* A structure with what options change: times, reals, externals, ANY, counters, tags. */
void mixture(TreeWriter &w) {
    w.define(
         "Mixed",
         w.sequence({w.comp("number", byte(w)), w.comp("real", w.real()).optional(),
                     w.comp("moment", w.type(TYP_GENTIME)), w.comp("utc", w.type(TYP_UTCTIME)),
                     w.comp("outside", w.type(TYP_EXTERNAL_1990)),
                     w.comp("newOutside", w.type(TYP_EXTERNAL_1994)),
                     w.comp("any", w.any()).explicitly(0),
                     w.comp("list", w.listOf(TYP_SEQOF, byte(w), 0, 9)),
                     w.comp("pick", w.choice({w.comp("a", w.null()), w.comp("b", w.boolean())}))}))
        .entry();
}

/* Structures within one another, with a length form of their own. */
void lengths(TreeWriter &w) {
    const auto inner = [&](std::uint8_t form) {
        return w.sequence({w.comp("x", w.boolean())}).lengthForm(form);
    };
    w.define("Outer", w.sequence({w.comp("unset", inner(255)), w.comp("definite", inner(1)),
                                  w.comp("indefinite", inner(0)), w.comp("part", w.ref("Part"))})
                          .lengthForm(255))
        .entry();
    w.define("Part", inner(255));
    w.define("Definite", inner(1)).entry();
}

/* Every kind of value that a run-time path leads through. */
void paths(TreeWriter &w) {
    w.define(
         "Msg",
         w.sequence(
             {w.comp("id", byte(w)),
              w.comp("pick", w.choice({w.comp("a", w.null()), w.comp("b", w.ref("Part"))})),
              w.comp("linked", w.listOf(TYP_SEQOF, byte(w)).asList()),
              w.comp("fixed", w.listOf(TYP_SEQOF, w.ref("Part"), 2, 2).form(VF_STRU, VF_NONE))}))
        .entry();
    w.define("Part", w.set({w.comp("x", byte(w)), w.comp("y", w.boolean()).optional()}));
    w.define("Leaf", byte(w)).entry();
}

/* Lines of a user for each place, on definitions, components and uses of definitions. */
void embedded(TreeWriter &w) {
    const auto lines = [](TypeNode type, const std::string &name) {
        for (const char letter : {'E', 'D', 'A', 'P'}) {
            const std::string place(1, letter);
            type.text(place + "1", "/* " + place + " before " + name + " */");
            type.text(place + "2", "/* " + place + " behind " + name + " */");
        }
        return type;
    };
    lines(w.define("Msg", w.sequence({lines(w.comp("id", byte(w)), "id"),
                                      lines(w.comp("may", w.boolean()).optional(), "may"),
                                      lines(w.comp("part", w.ref("Part")), "part"),
                                      lines(w.comp("leaf", w.ref("Leaf")), "leaf")})),
          "Msg")
        .entry();
    lines(w.define("Part", w.sequence({w.comp("x", byte(w))})), "Part").entry();
    lines(w.define("Leaf", byte(w)), "Leaf").entry();
}

/* An entry of a service: its components lie in homes that come in a table. */
void ping(TreeWriter &w) {
    w.exportsMarked();
    w.define("Ping", w.sequence({w.comp("id", byte(w)), w.comp("ok", w.boolean()).optional()}))
        .entry();
}

void morla(TreeWriter &w) {
    ping(w);
    const auto entry = [&](const char *name, TypeNode type) {
        return w.define(name, type).entry().exported(false);
    };
    const auto members = [&](TypeNode last) {
        return std::vector{w.comp("text", w.string(TYP_IA5STR)).optional(),
                           w.comp("in", w.sequence({w.comp("z", byte(w)).optional()})).implicit(0),
                           w.comp("part", w.ref("Part")),
                           w.comp("list", w.listOf(TYP_SEQOF, byte(w), 0, 9)).implicit(1), last};
    };
    w.define("Part", w.sequence({w.comp("x", byte(w))}));
    entry("Service", w.structure(TYP_SEQ, members(w.comp("any", w.any()).optional())));
    entry("Kept", w.structure(TYP_SEQ, members(w.marker())).option(OPT_SAVE_EXTENSIONS));
    entry("Dropped", w.structure(TYP_SET, members(w.marker())));
    entry("KeptSet", w.set({w.comp("a", byte(w)), w.marker()}).option(OPT_SAVE_EXTENSIONS));
    entry("Set", w.set({w.comp("a", byte(w)), w.comp("b", w.boolean())}));
    entry("Choice", w.structure(TYP_CHOICE, members(w.comp("last", w.null()))));
    entry("KeptChoice", w.choice({w.comp("a", byte(w)), w.marker()}).option(OPT_SAVE_EXTENSIONS));
    entry("Leaf", byte(w));
    entry("Text", w.string(TYP_OCTSTR, 1, 8));
    entry("List", w.listOf(TYP_SEQOF, w.ref("Part")).asList());
    entry("Synonym", w.ref("Behind"));
    w.define("Behind", w.sequence({w.comp("x", byte(w))})).exported(false);
    entry("HomeComps", w.sequence({w.comp("a", byte(w))}).option(OPT_COMPS_AS_POINTERS));
}

#define MORLA "-DEFINITION-CATEGORY=MORLA-SERVICE"

const CodingCase cases[] = {
    {"basic", basic, {"-DEFINITELEN=definite"}, {}, ALL},
    {"basic_pushpath", basic, {"-DEFINITELEN=definite", "-PUSHPATH=yes"}},
    {"basic_traditional", basic, {"-ANSI-C=no"}, {}, ALL},
    {"generate_none", selection, {"-GENERATE=none"}},
    {"generate_entries", selection, {"-GENERATE=entries"}},
    {"generate_visibles", selection, {"-GENERATE=visibles"}},
    {"generate_both", selection, {"-GENERATE=entries-and-visibles"}},
    {"cgen_none", mixture},
    {"cgen_real", mixture, {"-C-GENERATION=REAL"}},
    {"cgen_commontime", mixture, {"-C-GENERATION=COMMONTIME"}},
    {"cgen_external", mixture, {"-C-GENERATION=EXTERNAL"}},
    {"cgen_signed", mixture, {"-C-GENERATION=SIGNED-CONTROL-MEMBER"}},
    {"cgen_anyfunctions", mixture, {"-C-GENERATION=ANY-FUNCTIONS"}},
    {"cgen_old", mixture, {"-C-GENERATION=OLD"}, {}, ALL_AND_TYPES},
    {"definitelen_indefinite", lengths, {"-DEFINITELEN=indefinite"}},
    {"definitelen_definite", lengths, {"-DEFINITELEN=definite"}},
    {"definitelen_indefinitecomps", lengths, {"-DEFINITELEN=definite-indefinitecomps"}},
    {"definitelen_definitecomps", lengths, {"-DEFINITELEN=definite-definitecomps"}},
    {"pushpath", paths, {"-PUSHPATH=yes"}},
    {"zerohome", paths, {"-ZEROHOME=yes"}},
    {"codfuncpref", paths, {"-COD-FUNC-PREF=ber_"}},
    {"embedded", embedded, {}, {}, ALL},
    {"morla", morla, {MORLA}, {}, ALL},
    {"morla_definite", ping, {MORLA, "-DEFINITELEN=definite"}},
    {"morla_pushpath", morla, {MORLA, "-PUSHPATH=yes"}},
};

class CodingOptions : public testing::TestWithParam<CodingCase> {};

TEST_P(CodingOptions, AreWrittenAsExpectedAndCompile) {
    EXPECT_EQ(faultsOf(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Options, CodingOptions, testing::ValuesIn(cases),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
