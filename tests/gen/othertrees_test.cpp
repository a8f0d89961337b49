#include <gtest/gtest.h>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Trees as asntree does not write them, but other compilers do. */

namespace {

struct Made {
    int status;
    std::string said, coding, types;
};

Made generate(const WorkDir &dir, TreeWriter &tree) {
    for (const char *option : {"-COD=1:1", "-TST=1:1", "-VERBOSE=2"})
        tree.option(option);
    EXPECT_TRUE(tree.save(dir.path("x.stx")));
    const ProgramRun run = runVelmo(dir, {"x"});
    return {run.status, run.err + run.out, dir.read("xcod.c") + dir.read("xtst.c"),
            dir.read("x.typ")};
}

void expectParts(const std::string &text, std::initializer_list<const char *> parts) {
    for (const char *part : parts)
        EXPECT_NE(std::string::npos, text.find(part)) << part << "\n" << text;
}

/* Constraints that can be extended have no functions yet, which the run and the code say. */
TEST(OtherTrees, ExtendedConstraints) {
    WorkDir dir;
    TreeWriter w("Other", "x");
    w.define("Msg", w.sequence({w.comp("number", w.integer(0, 9).extensible()),
                                w.comp("text", w.string(TYP_IA5STR, 0, 9).extensible()),
                                w.comp("list", w.listOf(TYP_SEQOF, w.boolean()).extensible())}))
        .entry();
    const Made made = generate(dir, w);
    EXPECT_EQ(0, made.status);
    expectParts(made.coding,
                {"/*?!?: Invalid encoding follows - extended INTEGER constraint. */",
                 "/*?!?: Invalid encoding follows - extended string constraint. */",
                 "/*?!?: Invalid encoding follows - extended SET-OF/SEQ-OF constraint. */",
                 "/*?!?: Invalid decoding follows - extended INTEGER constraint.*/",
                 "/*?!?: Invalid decoding follows - extended string constraint.*/",
                 "/*?!?: Invalid decoding follows - extended SET-OF/SEQ-OF constraint.*/"});
    expectParts(made.said, {"Encoding of extended INTEGER constraint not yet supported, sorry.",
                            "Decoding of extended string constraint not yet supported, sorry."});
}

TEST(OtherTrees, InstanceOf) {
    WorkDir dir;
    TreeWriter w("Other", "x");
    w.define("Msg", w.sequence({w.comp("own", w.type(TYP_INSTANCE_OF))})).entry();
    const Made made = generate(dir, w);
    EXPECT_EQ(0, made.status);
    expectParts(made.said, {"element own", "Instance-of not yet supported, sorry."});
}

/* A string in segments needs a list, which no constant can be. */
TEST(OtherTrees, RowsWithStringsInSegments) {
    WorkDir dir;
    TreeWriter w("Other", "x");
    w.option("-TAB=yes");
    w.option("-TABO=yes");
    const TypeNode text = w.valueField("text", w.string(TYP_IA5STR).asList());
    const TypeNode bits = w.valueField("bits", w.string(TYP_BITSTR).asList());
    const TypeNode kind = w.define("KIND", w.objectClass({text, bits}));
    w.defineValue("one", kind,
                  w.object(kind, {w.fieldValue(text, w.textValue(TYP_IA5STR, "ab")),
                                  w.fieldValue(bits, w.bitsValue("1"))}));
    EXPECT_EQ(0, generate(dir, w).status);
    expectParts(dir.read("x.tab"), {"  {\n    { 0 } /* NOT YET IMPLEMENTED!! */,\n"
                                    "    { 0 } /* NOT YET IMPLEMENTED!! */\n  }\n"});
}

/* A selection of an alternative whose type is defined has that type under a name of its own. */
TEST(OtherTrees, SelectionsOfDefinedTypes) {
    WorkDir dir;
    TreeWriter w("Other", "x");
    w.define("Size", w.sequence({w.comp("width", w.integer(0, 9))}));
    const TypeNode choice = w.define("Pick", w.choice({w.comp("size", w.ref("Size")).implicit(0),
                                                       w.comp("flag", w.boolean()).implicit(1)}));
    w.define("Selected", w.selection("size", choice)).entry();
    w.define("Msg", w.sequence({w.comp("selected", w.ref("Selected"))})).entry();
    const Made made = generate(dir, w);
    EXPECT_EQ(0, made.status) << made.said;
    expectParts(made.types, {"typedef Size Selected;", "  Size selected;\n} Msg;"});
    expectParts(made.coding, {"void encSelected (ASNG_F(ASNCODG *asncodg) Selected *home)\n{\n"
                              "  e_EOC ();\n  eSize (ASNG_F(asncodg) home);\n"
                              "  e_Tag8IndefLen (TAG8(TAG_CTX8, TAG_STR8, 0));\n}"});
    const ProgramRun compiled =
        runProgram(dir, "gcc",
                   {"-std=c99", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-I.",
                    "-I" + sourceDir + "/rts", "xcod.c", "xtst.c"});
    EXPECT_EQ(0, compiled.status) << compiled.err;
}

} // namespace
