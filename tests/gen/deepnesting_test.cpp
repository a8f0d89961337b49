#include <gtest/gtest.h>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Types that hold one another deeper than ASN.1 text can be nested. */

namespace {

/* Structures in one another, each a definition of its own that the one before it needs, or all of
   them inside one definition. */
ProgramRun generateNested(const WorkDir &dir, int levels, bool defined) {
    TreeWriter w("Deep_Module", "deep");
    w.option("-GENERATE=none");
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
    return runVelmo(dir, {"-S=.", "-VERBOSE=quiet", "deep"});
}

/* Definitions that hold one another may go deep; lines and names of types that are written in one
   another grow with each level. */
TEST(DeepNesting, EndsTheRunAndNothingElse) {
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

} // namespace
