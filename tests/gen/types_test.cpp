#include <gtest/gtest.h>

#include <functional>

#include "tests/support/golden.h"
#include "tests/support/paths.h"
#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* The ".typ" file of small modules, one construct each, as a user sees it and as C compilers take
   it. Leaves, lists, choices and recursion
   stand beside their functions. */

namespace {

struct TypesCase {
    const char *name;
    std::function<void(TreeWriter &)> build;
    std::vector<const char *> options = {}; /* stored in the tree */
};

void expectCompiles(const WorkDir &dir, const std::string &file) {
    for (const char *compiler : {"gcc", "clang"})
        EXPECT_EQ(compileC(dir, compiler, file,
                           {"-std=c99", "-Wall", "-Wextra", "-pedantic", "-I.",
                            "-Dnear=", "-I" + sourceDir + "/rts"}),
                  "")
            << compiler;
}

ProgramRun generate(const WorkDir &dir, const std::vector<std::string> &modules) {
    std::vector<std::string> arguments = {"-S=.", "-VERBOSE=quiet"};
    arguments.insert(arguments.end(), modules.begin(), modules.end());
    return runVelmo(dir, arguments);
}

[[maybe_unused]] void PrintTo(const TypesCase &value, std::ostream *out) {
    *out << value.name;
}

/* A tree whose module gets no functions, so that the types are alone with what they report. */
struct TypesTree : TreeWriter {
    TypesTree(const char *module, const char *prefix) : TreeWriter(module, prefix) {
        option("-GENERATE=none");
    }
};

class Types : public testing::TestWithParam<TypesCase> {};

TEST_P(Types, AreWrittenAsExpectedAndCompile) {
    WorkDir dir;
    TypesTree tree("Case_Module", "t");
    for (const char *option : GetParam().options)
        tree.option(option);
    GetParam().build(tree);
    ASSERT_TRUE(tree.save(dir.path("t.stx")));
    const ProgramRun run = generate(dir, {"t"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(compareGolden(std::string("types/") + GetParam().name + ".typ", dir.read("t.typ")),
              "");
    expectCompiles(dir, "t.typ");
}

/* SEQUENCE with everything that a member can be without options; U comes first though it is defined
   last. The second keeps what stands behind its marker. */
void sequences(TreeWriter &w) {
    const auto name = [&] { return w.string(TYP_IA5STR, 1, 8); };
    w.define("T", w.sequence({w.comp("a", w.integer(0, 255)), w.comp("b", w.ref("U")).optional(),
                              w.comp("c", name()).optional(), w.marker()}));
    w.define("Kept", w.set({w.comp("flag", w.boolean()), w.marker()}).option(OPT_SAVE_EXTENSIONS));
    w.define("U", w.sequence({w.comp("x", w.boolean()), w.comp("none", w.null())}));
    w.define("Empty", w.sequence({}));
    w.define("OnlyMarker", w.sequence({w.marker()}));
}

/* Members that lie elsewhere, or that are carried as they are. */
void members(TreeWriter &w) {
    const auto inner = [&] { return w.sequence({w.comp("x", w.boolean())}); };
    const auto home = [&](const char *name, TypeNode type) {
        return w.comp(name, type.option(OPT_HOME));
    };
    w.define("U", inner());
    w.define("Pointers",
             w.sequence({w.comp("far", w.ref("U").option(OPT_POINTER)),
                         w.comp("here", w.ref("U").option(OPT_POINTER).option(OPT_NEAR)),
                         w.comp("within", inner().option(OPT_POINTER))}));
    w.define("Homes", w.sequence({home("number", w.integer(0, 9)), home("named", w.ref("U")),
                                  home("plain", inner()), home("text", w.string(TYP_IA5STR, 1, 8)),
                                  home("list", w.listOf(TYP_SEQOF, w.null()).asList())}));
    w.define("Others", w.sequence({w.comp("skipped", inner().skipped()),
                                   w.comp("frame", inner().option(OPT_FRAME)),
                                   w.comp("any", w.any()), w.comp("open", w.openType())}));
    w.define("HomeComps",
             w.sequence({w.comp("a", w.ref("U")), w.comp("b", w.boolean()).optional(), w.marker()})
                 .option(OPT_COMPS_AS_POINTERS));
}

/* Entry types have a C type of their own name, whatever they are. */
void entries(TreeWriter &w) {
    const auto inner = [&] { return w.sequence({w.comp("x", w.boolean())}); };
    w.define("B", inner());
    w.define("A", w.ref("B")).entry();
    w.define("NoEntry", w.ref("B"));
    w.define("Twice", w.ref("A")).entry();
    w.define("Number", w.ref("Small")).entry();
    w.define("Small", w.integer(0, 9));
    w.define("Skipped", inner().skipped()).entry();
    w.define("Frame", inner().option(OPT_FRAME)).entry();
    w.define("SkippedOnly", inner().skipped());
    w.define("User", w.sequence({w.comp("a", w.ref("A")), w.comp("f", w.ref("Frame"))}));
}

/* Depth first, in the order of components; Hidden is needed by nobody, Used by others only. */
void order(TreeWriter &w) {
    const auto of = [&](const char *a, const char *b) {
        return w.sequence({w.comp("p", w.ref(a)), w.comp("q", w.ref(b))});
    };
    const auto leaf = [&] { return w.sequence({w.comp("x", w.boolean())}); };
    w.exportsMarked();
    w.define("Top", of("Left", "Right")).exported();
    w.define("Hidden", of("Base", "Base"));
    w.define("Right", of("Base", "Used"));
    w.define("Base", leaf());
    w.define("Left", of("Used", "Base"));
    w.define("Used", leaf());
    w.define("Again", of("Top", "Base")).exported();
}

void masks(TreeWriter &w) {
    const auto flags = [&](int count) {
        std::vector<TypeNode> comps;
        for (int i = 0; i < count; ++i)
            comps.push_back(w.comp("f" + std::to_string(i), w.boolean()).optional());
        return comps;
    };
    w.define("One", w.structure(TYP_SET, flags(32)));
    w.define("Two", w.structure(TYP_SEQ, flags(33)));
    /* Thirty components and three that COMPONENTS OF brings in. */
    std::vector<TypeNode> comps = flags(30);
    comps.push_back(w.componentsOf(w.ref("Three")));
    w.define("Spliced", w.structure(TYP_SEQ, comps));
    w.define("Three", w.sequence({w.comp("x", w.boolean()), w.comp("y", w.boolean()),
                                  w.comp("z", w.boolean())}));
}

/* Room for fewer elements than the size allows: the rest is counted, unless it is an error. */
void ignored(TreeWriter &w) {
    const auto bytes = [&](std::int64_t high) {
        return w.listOf(TYP_SEQOF, w.integer(0, 255), 0, high).asArray();
    };
    w.define("Few", bytes(254).sizeLimit(10, false));
    w.define("More", bytes(255).sizeLimit(10, false));
    w.define("Many", bytes(65535).sizeLimit(10, false));
    w.define("Strict", bytes(254).sizeLimit(10, true));
    w.define("Text", w.string(TYP_PRISTR, 0, 100).sizeLimit(20, false));
    w.define("Bits", w.string(TYP_BITSTR, 0, 100).sizeLimit(20, false));
    w.define("Linked", w.listOf(TYP_SEQOF, w.boolean(), 0, 100).asList().sizeLimit(9, false));
}

/* User text goes around definitions and members, each line once; a preprocessor line starts at
   column 0. */
void embeddedText(TreeWriter &w) {
    w.define("U", w.sequence({w.comp("x", w.boolean()).text("T1", "/* before x */")})
                      .text("T1", "/* before U */")
                      .text("T1", "#define ABOVE_U 1")
                      .text("T2", "/* behind U */")
                      .text("E1", "/* in encoders only */"));
    w.define("V", w.sequence({w.comp("u", w.ref("U"))
                                  .text("T2", "/* behind u */")
                                  .text("T2", "#define BEHIND_U 1")}));
}

const TypesCase cases[] = {
    {"sequences", sequences},
    {"members", members},
    {"entries", entries},
    {"entries_morla", entries, {"-MORLA=2"}},
    {"order", order},
    {"masks", masks},
    {"ignored", ignored},
    {"embedded_text", embeddedText},
    {"naming", sequences, {"-TPREF=My", "-CSUFF=_m", "-TNAME=U:Unit"}},
};
INSTANTIATE_TEST_SUITE_P(Gen, Types, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

/* What C can't take is written all the same: a member without a value form, which is reported. */
TEST(TypesDirect, WritesWhatDoesNotCompile) {
    WorkDir dir;
    TypesTree w("Odd_Module", "t");
    w.source("asn/", "odd.asn");
    w.define("T", w.sequence({w.comp("n", w.integer().form(VF_NONE).line(7))}));
    ASSERT_TRUE(w.save(dir.path("t.stx")));
    const ProgramRun run = generate(dir, {"t"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "asn/odd.asn:7: warning: Unknown leaf type: TYP_INTEGER\n");
    EXPECT_EQ(compareGolden("types/odd.typ", dir.read("t.typ")), "");
}

/* Types of other modules are named, not defined; the importing file includes theirs. */
TEST(TypesDirect, CrossModuleBorders) {
    WorkDir dir;
    TypesTree base("Base_Module", "base");
    base.define("Colour", base.enumerated({{"red", 0}}));
    base.define("Size", base.integer(0, 99));
    base.define(
        "Box",
        base.sequence(
            {base.comp("size", base.ref("Size")),
             base.comp("tags", base.listOf(TYP_SEQOF, base.string(TYP_IA5STR, 1, 4)).asList())}));
    base.define("Lid", base.sequence({base.comp("wide", base.ref("Size")),
                                      base.comp("inner", base.sequence({})).optional()}));
    TypesTree user("User_Module", "user");
    user.import(base);
    user.define("MyBox", user.ref(base, "Box"));
    user.define("Entry", user.ref(base, "Box")).entry();
    user.define("Order", user.sequence({user.comp("box", user.ref(base, "Box")),
                                        user.comp("again", user.ref("MyBox")).optional(),
                                        user.comp("colour", user.ref(base, "Colour")),
                                        user.comp("size", user.ref(base, "Size")),
                                        user.componentsOf(user.ref(base, "Lid"))}));
    ASSERT_TRUE(base.save(dir.path("base.stx")) && user.save(dir.path("user.stx")));
    const ProgramRun run = generate(dir, {"user", "base"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(compareGolden("types/border_base.typ", dir.read("base.typ")), "");
    EXPECT_EQ(compareGolden("types/border_user.typ", dir.read("user.typ")), "");
    expectCompiles(dir, "user.typ");
}

/* Structures in one another, each a definition of its own that the one before it needs, or all of
   them inside one definition. */
ProgramRun generateNested(const WorkDir &dir, int levels, bool defined) {
    TypesTree w("Deep_Module", "deep");
    const auto name = [](int level) { return "T" + std::to_string(level); };
    if (defined) {
        for (int level = 0; level < levels; ++level)
            w.define(name(level), w.sequence({w.comp("x", w.ref(name(level + 1)))}));
        w.define(name(levels), w.sequence({}));
    } else {
        TypeNode inner = w.sequence({});
        for (int level = 0; level < levels; ++level)
            inner = w.sequence({w.comp("x", inner)});
        w.define(name(0), inner);
    }
    EXPECT_TRUE(w.save(dir.path("deep.stx")));
    return generate(dir, {"deep"});
}

/* Definitions that hold one another may go deep; lines and names of types that are written in one
   another grow with each level. */
TEST(TypesDirect, DeepNestingEndsTheRunAndNothingElse) {
    const std::string inconsistent = "\nFATAL ERROR : Syntax tree inconsistent\n"
                                     "              deep\n\n";
    for (const bool defined : {true, false}) {
        WorkDir dir;
        EXPECT_EQ(generateNested(dir, defined ? 10'000 : 900, defined).status, 0);
        EXPECT_NE(dir.read("deep.typ").find("} T0;"), std::string::npos);
        const ProgramRun run = generateNested(dir, defined ? 60'000 : 3000, defined);
        EXPECT_EQ(run.status, 2) << defined;
        EXPECT_TRUE(run.err.ends_with(inconsistent))
            << run.err; /* sanitizers remark on deep stacks */
    }
}

TEST(TypesDirect, WithoutATypeFileTheWalkStillRuns) {
    WorkDir dir;
    TypesTree w("Quiet_Module", "t");
    w.option("-TYP=no");
    sequences(w);
    ASSERT_TRUE(w.save(dir.path("t.stx")));
    EXPECT_EQ(generate(dir, {"t"}).status, 0);
    EXPECT_FALSE(dir.has("t.typ"));
    EXPECT_TRUE(dir.has("t.def"));
}

} // namespace
