#include <gtest/gtest.h>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* Accessor macros in the ".def" file. */

namespace {

/* Only optional components and markers of a SEQUENCE or SET have macros; those of a nested
   structure end in its whole path. */
void structures(TreeWriter &w) {
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

void choices(TreeWriter &w) {
    const auto alternatives = [&] {
        return std::vector{w.comp("x", w.boolean()), w.comp("y", w.ref("Inner")), w.marker()};
    };
    w.define("Pick", w.structure(TYP_CHOICE, alternatives()));
    w.define("Inner", w.choice({w.comp("deep", w.choice({w.comp("n", w.null())}))}));
}

/* Components in homes or behind pointers of their own: whether one is there tells its pointer. */
void pointers(TreeWriter &w) {
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
void lists(TreeWriter &w) {
    const auto list = [&](TypeNode element) { return w.listOf(TYP_SEQOF, element).asList(); };
    w.define("Bytes", list(w.integer(0, 255)));
    w.define("Names", list(w.string(TYP_IA5STR, 1, 8)));
    w.define("Texts", list(w.string(TYP_OCTSTR)));
    w.define("Ids", list(w.type(TYP_OBJID)));
    w.define("Units", w.listOf(TYP_SETOF, w.ref("Unit")).asList());
    w.define("Plain", list(w.sequence({w.comp("o", w.boolean()).optional()})));
    w.define("Rows", list(list(w.real())));
    w.define("Signals", list(w.enumerated({{"go", 0}, NamedNumber::extension()})));
    w.define("Long", list(w.ref("A_unit_whose_name_takes_nearly_a_whole_line_of_text_x")));
    w.define("Nested", w.sequence({w.comp("inner", list(w.ref("Unit"))).optional()}));
    w.define("Array", w.listOf(TYP_SEQOF, w.ref("Unit"), 1, 3).asArray());
    w.define("Unit", w.sequence({w.comp("u", w.boolean())}));
    w.define("A_unit_whose_name_takes_nearly_a_whole_line_of_text_x",
             w.sequence({w.comp("u", w.boolean())}));
}

struct AccessorCase {
    const char *name;
    void (*build)(TreeWriter &);
    std::vector<const char *> options = {};
};

const AccessorCase cases[] = {
    {"structures", structures},
    {"structures_named", structures, {"-TPREF=My", "-CSUFF=_m"}},
    {"many_components", manyComponents},
    {"choices", choices},
    {"pointers", pointers},
    {"lists", lists, {"-NAMELEN=64"}},
};

[[maybe_unused]] void PrintTo(const AccessorCase &value, std::ostream *out) {
    *out << value.name;
}

class Accessors : public testing::TestWithParam<AccessorCase> {};

TEST_P(Accessors, AreWrittenAsExpectedAndCompile) {
    WorkDir dir;
    TreeWriter w("Access_Module", "t");
    for (const char *option : GetParam().options)
        w.option(option);
    GetParam().build(w);
    EXPECT_EQ(compareGolden(std::string("accessors/") + GetParam().name + ".def",
                            generatedFiles(dir, {&w}, {".def"})),
              "");
    dir.write("uses.c", usesOfDefines(dir, "t"));
    EXPECT_EQ(compilerMessages(dir, {"uses.c"}), "");
}

INSTANTIATE_TEST_SUITE_P(Gen, Accessors, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

} // namespace
