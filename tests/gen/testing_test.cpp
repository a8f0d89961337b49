#include <gtest/gtest.h>

#include "tests/support/codingcase.h"

/* What asking and printing functions have beside the coding functions: names of numbers and of
   components, and brackets. */

namespace {

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

const CodingCase cases[] = {
    {"leaf_entries", leafEntries, {}, {}, TESTING},
    {"named_numbers_and_bits", namedNumbers, {}, {}, TESTING},
    {"named_numbers", namedNumbers, {"-SETN=named-numbers"}, {}, TESTING},
    {"named_numbers_none", namedNumbers, {"-SETN=none"}, {}, TESTING},
    {"long_names", longNames, {"-NAMELEN=8"}, {}, TESTING},
};

class Testing : public testing::TestWithParam<CodingCase> {};

TEST_P(Testing, FunctionsAreWrittenAsExpectedAndCompile) {
    EXPECT_EQ(faultsOf(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Cases, Testing, testing::ValuesIn(cases),
                         [](const auto &testCase) { return std::string(testCase.param.name); });

/* Functions of an imported module are called by name, with those for its named numbers; those of
   instances are written where they are used. */
TEST(FunctionsOfImports, CallTheOtherModule) {
    WorkDir dir;
    TreeWriter base("Base_Module", "b"), user("User_Module", "u");
    for (TreeWriter *tree : {&base, &user})
        for (const char *option : {"-COD=1:1", "-TST=1:1", "-VERBOSE=QUIET"})
            tree->option(option);
    base.define("Colour", base.enumerated({{"red", 0}, {"blue", 1}}));
    base.define("Size", base.sequence({base.comp("width", base.integer(0, 9))}));
    base.define("Near", base.ref("Size"));
    base.define("Full", base.sequence({
                            base.comp("kind", base.enumerated({{"odd", 1}, {"even", 6}})),
                            base.comp("colour", base.ref("Colour")),
                        }));
    user.define("Wide", user.sequence({user.comp("a", user.boolean()),
                                       user.componentsOf(user.ref(base, "Full"))}));
    user.define("Shade", user.ref(base, "Colour")).entry();
    user.define("Tagged", user.ref(base, "Near").implicit(3)).entry();
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
                                      user.comp("close", user.ref(base, "Near")).implicit(0),
                                      user.comp("shade", user.ref("Shade"))}));
    ASSERT_TRUE(base.save(dir.path("b.stx")));
    EXPECT_EQ(compareGolden("coding/imports.txt", generatedFunctions(dir, user, {"b"})), "");
    EXPECT_EQ(compileFunctions(dir), "");
}

/* A module that has nothing but classes leads to the functions of the types in their fields. */
TEST(FunctionsOfImports, AreDeclaredThroughClasses) {
    WorkDir dir;
    TreeWriter base("Base_Module", "b"), classes("Class_Module", "c"), user("User_Module", "u");
    for (TreeWriter *tree : {&base, &classes, &user})
        for (const char *option : {"-COD=1:1", "-TST=1:1", "-VERBOSE=QUIET"})
            tree->option(option);
    base.define("Size", base.sequence({base.comp("width", base.integer(0, 9))}));
    classes.import(base);
    const TypeNode size = classes.valueField("size", classes.ref(base, "Size"));
    const TypeNode objClass = classes.define("CLASS", classes.objectClass({size}));
    const std::int32_t import = user.import(classes);
    const TypeNode field = user.classField(objClass, {size});
    field->refModule = user.sNodes.back().refModule = import;
    user.define("Box", user.sequence({user.comp("size", field)})).entry();
    ASSERT_TRUE(base.save(dir.path("b.stx")) && classes.save(dir.path("c.stx")));
    const std::string functions = generatedFunctions(dir, user, {"b", "c"});
    EXPECT_NE(functions.find("eSize (ASNG_F(asncodg) &home->size);"), std::string::npos)
        << functions;
    EXPECT_EQ(compileFunctions(dir), "");
}

} // namespace
