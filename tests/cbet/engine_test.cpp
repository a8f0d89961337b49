#include <gtest/gtest.h>

#include "base/files.h"
#include "model/typenames.h"
#include "store/records.h"
#include "tests/support/cbetrun.h"

/* Which functions the engine writes, in which order, and what it puts around the steps of a
   generator. */

namespace {

using Names = std::vector<std::string>;

/* A refers to B and C, C back to A; D is a synonym of A, E a leaf, F hidden from others. */
void circle(TreeWriter &w) {
    w.exportsMarked();
    w.define("A", w.sequence({w.comp("b", w.ref("B")), w.comp("c", w.ref("C")).optional()}))
        .entry()
        .exported();
    w.define("B", w.sequence({w.comp("x", w.boolean())})).exported();
    w.define("C", w.sequence({w.comp("a", w.ref("A")).optional()})).exported();
    w.define("D", w.ref("A")).entry().exported();
    w.define("E", w.integer(0, 9)).entry().exported();
    w.define("F", w.sequence({w.comp("b", w.ref("B"))})).exported(false);
    w.define("G", w.sequence({w.comp("b", w.boolean())})).entry(ENTRY_DECODE).exported(false);
}

TEST(Engine, GenerateChoosesTheFunctions) {
    struct Row {
        GenerateFunctions generate;
        Names encoding, decoding;
    };
    const Row rows[] = {
        {GENERATE_NONE, {}, {}},
        {GENERATE_ENTRIES,
         {"eB", "eC", "eA", "encA", "encD", "encE"},
         {"dB", "dC", "dA", "decA", "decD", "decE", "dG", "decG"}},
        {GENERATE_VISIBLES, {"eB", "eC", "eA"}, {"dB", "dC", "dA"}},
        {GENERATE_BOTH,
         {"eB", "eC", "eA", "encA", "encD", "encE"},
         {"dB", "dC", "dA", "decA", "decD", "decE", "dG", "decG"}},
    };
    TreeWriter w("Circle", "circle");
    circle(w);
    CbetRun run(w);
    for (const Row &row : rows) {
        run.options().generate = row.generate;
        run.generate(encodingKind);
        EXPECT_EQ(functionNames(run.protos()), row.encoding) << row.generate;
        run.generate(decodingKind);
        EXPECT_EQ(functionNames(run.protos()), row.decoding) << row.generate;
    }
}

/* The generator's steps in the order of a decoder's run. */
void step(const char *word, AsnType *type, TypeFuncRun &run) {
    const Text name = getTypeRef(type);
    putF(run.outFile, word, " ", name, ";\n");
}

constexpr const char *STEPS = R"(noBody Leaf;

void dOuter (ASNG_F(ASNCODG *asncodg) Outer *home)
{
struPrefix Outer;
isComp in;
compPrefix in;
struPrefix in;
isComp x;
compPrefix x;
leaf home->in.x;
compPostfix x;
struPostfix in;
compPostfix in;
isComp leaf;
compPrefix leaf;
leaf home->leaf;
compPostfix leaf;
struPostfix Outer;
}

void decOuter (ASNG_F(ASNCODG *asncodg) Outer *home)
{
entryPrefix Outer;
dOuter (ASNG_F(asncodg) home);
entryPostfix Outer;
}

void decLeaf (ASNG_F(ASNCODG *asncodg) Leaf *home)
{
entryPrefix Leaf;
leaf *home;
entryPostfix Leaf;
}
)";

TEST(Engine, StepsComeInTheirOrder) {
    TreeWriter w("Mod", "mod");
    w.define("Outer", w.sequence({w.comp("in", w.sequence({w.comp("x", w.null())})),
                                  w.comp("leaf", w.ref("Leaf"))}))
        .entry();
    w.define("Leaf", w.boolean()).entry();
    CbetRun run(w);
    TypeFuncInfo info = CbetRun::notingInfo(decodingKind);
    using T = AsnType;
    using R = TypeFuncRun;
    info.noBodyFunc = [](T *t, R &r) { step("noBody", t, r); };
    info.struPrefixFunc = [](T *t, R &r) { step("struPrefix", t, r); };
    info.isCompFunc = [](T *t, R &r) { step("isComp", t, r); };
    info.compPrefixFunc = [](T *t, R &r) { step("compPrefix", t, r); };
    info.compPostfixFunc = [](T *t, R &r) { step("compPostfix", t, r); };
    info.struPostfixFunc = [](T *t, R &r) { step("struPostfix", t, r); };
    info.entryPrefixFunc = [](T *t, R &r) { step("entryPrefix", t, r); };
    info.entryPostfixFunc = [](T *t, R &r) { step("entryPostfix", t, r); };
    run.generate(info);
    EXPECT_EQ(run.body(), STEPS);
    EXPECT_EQ(fArr[BODY_FILE].indent, 0);
}

/* Lists in one another, each with a home and a path of its own. */
void defineNested(TreeWriter &w, int levels) {
    TypeNode type = w.boolean();
    for (int i = 0; i < levels; ++i)
        type = w.listOf(TYP_SEQOF, type).asList();
    w.define("Deep", type);
}

TEST(Engine, DeepNestingIsWritten) {
    TreeWriter w("Mod", "mod");
    defineNested(w, MAX_NESTING - 1);
    CbetRun run(w);
    run.generate(decodingKind);
    EXPECT_GT(linesInF(BODY_FILE), 9u * (MAX_NESTING - 1)); /* lines of one list */
    EXPECT_EQ(fArr[BODY_FILE].indent, 0);
}

TEST(Engine, DeeperNestingIsAFault) {
    TreeWriter w("Mod", "mod");
    defineNested(w, MAX_NESTING + 1);
    CbetRun run(w);
    EXPECT_EXIT(run.generate(decodingKind), testing::ExitedWithCode(2), "mod");
}

/* Each refers to the one behind it, so all functions but the last wait for others. */
TEST(Engine, LongChainsOfDefinitions) {
    TreeWriter w("Mod", "mod");
    for (int i = 0; i < MAX_NESTING; ++i)
        w.define("T" + std::to_string(i),
                 w.sequence({w.comp("a", i + 1 < MAX_NESTING ? w.ref("T" + std::to_string(i + 1))
                                                             : w.null())}));
    CbetRun run(w);
    run.generate(encodingKind);
    const Names names = functionNames(run.protos());
    ASSERT_EQ(names.size(), static_cast<std::size_t>(MAX_NESTING));
    EXPECT_EQ(names.front(), "eT" + std::to_string(MAX_NESTING - 1));
    EXPECT_EQ(names.back(), "eT0");
}

} // namespace
