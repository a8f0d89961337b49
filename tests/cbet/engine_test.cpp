#include <gtest/gtest.h>

#include "base/files.h"
#include "cbet/embedding.h"
#include "cbet/engine.h"
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

/* The generator's steps and the embedded text around them, in the order of a decoder's run. */
void step(const char *word, AsnType *type, const TypeFuncInfo *info) {
    Text name;
    getTypeRef(name, nullptr, type, nullptr);
    printfToF(info->outFile, "%s %s;\n", word, name.c_str());
}

TEST(Engine, StepsComeInTheirOrder) {
    TreeWriter w("Mod", "mod");
    w.define("Outer", w.sequence({w.comp("in", w.sequence({w.comp("x", w.null())})),
                                  w.comp("leaf", w.ref("Leaf"))}))
        .entry();
    w.define("Leaf", w.boolean()).entry();
    CbetRun run(w);
    TypeFuncInfo info = CbetRun::notingInfo(decodingKind);
    using T = AsnType;
    using I = const TypeFuncInfo;
    info.tedBefore = 2;
    info.tedAfter = 7;
    info.noBodyFunc = [](T *t, I *i) { step("noBody", t, i); };
    info.beforeBodyFunc = [](T *t, I *i) { step("beforeBody", t, i); };
    info.struPrefixFunc = [](T *t, I *i) { step("struPrefix", t, i); };
    info.isCompFunc = [](T *t, I *i) { step("isComp", t, i); };
    info.compPrefixFunc = [](T *t, I *i) { step("compPrefix", t, i); };
    info.beforeBuiltinFunc = [](T *t, I *i) { step("beforeBuiltin", t, i); };
    info.afterBuiltinFunc = [](T *t, I *i) { step("afterBuiltin", t, i); };
    info.pushCompFunc = [](T *t, I *i) { step("push", t, i); };
    info.popCompFunc = [](T *t, I *i) { step("pop", t, i); };
    info.compPostfixFunc = [](T *t, I *i) { step("compPostfix", t, i); };
    info.struPostfixFunc = [](T *t, I *i) { step("struPostfix", t, i); };
    info.afterBodyFunc = [](T *t, I *i) { step("afterBody", t, i); };
    info.beforeEntryFunc = [](T *t, I *i) { step("beforeEntry", t, i); };
    info.entryPrefixFunc = [](T *t, I *i) { step("entryPrefix", t, i); };
    info.entryPostfixFunc = [](T *t, I *i) { step("entryPostfix", t, i); };
    info.pushEntryFunc = [](T *t, I *i) { step("pushEntry", t, i); };
    info.popEntryFunc = [](T *t, I *i) { step("popEntry", t, i); };
    info.afterEntryFunc = [](T *t, I *i) { step("afterEntry", t, i); };
    embeddingHooks.printTypeEmbeddingOptions = [](int file, T *, int place) {
        printfToF(file, "text %d;\n", place);
    };
    embeddingHooks.printLocalTypeEmbeddingOptions = [](int file, T *, int place) {
        printfToF(file, "own text %d;\n", place);
    };
    run.generate(info);
    EXPECT_EQ(run.body(), R"(noBody Leaf;
beforeBody Outer;

void dOuter (ASNG_F(ASNCODG *asncodg) Outer *home)
{
own text 2;
struPrefix Outer;
isComp in;
compPrefix in;
text 2;
push in;
beforeBuiltin in;
struPrefix in;
isComp x;
compPrefix x;
text 2;
push x;
leaf home->in.x;
pop x;
text 7;
compPostfix x;
struPostfix in;
afterBuiltin in;
pop in;
text 7;
compPostfix in;
isComp leaf;
compPrefix leaf;
text 2;
push leaf;
leaf home->leaf;
pop leaf;
text 7;
compPostfix leaf;
struPostfix Outer;
own text 7;
}
afterBody Outer;
beforeEntry Outer;

void decOuter (ASNG_F(ASNCODG *asncodg) Outer *home)
{
pushEntry Outer;
entryPrefix Outer;
dOuter (ASNG_F(asncodg) home);
entryPostfix Outer;
popEntry Outer;
}
afterEntry Outer;
beforeEntry Leaf;

void decLeaf (ASNG_F(ASNCODG *asncodg) Leaf *home)
{
pushEntry Leaf;
entryPrefix Leaf;
own text 2;
leaf *home;
own text 7;
entryPostfix Leaf;
popEntry Leaf;
}
afterEntry Leaf;
)");
    EXPECT_EQ(fArr[BODY_FILE].indent, 0);
}

/* A skipped type that is ignorable gets a traversal of its inside, once. */
TEST(Engine, IgnoringByTraversal) {
    TreeWriter w("Mod", "mod");
    w.define("Skipped", w.sequence({w.comp("a", w.null()), w.comp("b", w.ref("Other"))}))
        .skipped()
        .flag(TYPE_IGNORABLE);
    w.define("Other", w.sequence({w.comp("c", w.boolean())})).flag(TYPE_IGNORABLE);
    w.define("User", w.sequence({w.comp("s", w.ref("Skipped")), w.comp("t", w.null()).skipped()}));
    CbetRun run(w);
    TypeFuncInfo info = CbetRun::notingInfo(printingKind);
    using T = AsnType;
    using I = const TypeFuncInfo;
    info.ignoreMode = 1;
    info.extraMoreFunc = [](T *t, I *i) { step("begin", t, i); };
    info.extraTestFunc = [](T *t, I *i) { step("struct", t, i); };
    info.travCompFunc = [](T *t, I *i) { step("comp", t, i); };
    info.travLeafFunc = [](T *t, I *i) { step("leaf", t, i); };
    info.travDefinedFunc = [](T *t, I *i) { step("call", t, i); };
    info.travFuncPostFunc = [](T *t, I *i) { step("end", t, i); };
    run.generate(info);
    EXPECT_EQ(run.body(), R"(begin Other;
struct Other;
comp c;
leaf c;
end Other;
begin Skipped;
struct Skipped;
comp a;
leaf a;
comp b;
call b;
end Skipped;

void pOther (ASNG_F(ASNTSTG *asntstg) Other *home)
{
leaf home->c;
}

void pUser (ASNG_F(ASNTSTG *asntstg) User *home)
{
call s;
leaf t;
}
)");
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
