#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/support/runtool.h"
#include "tests/support/treedump.h"

/* The trees that stand beside the example modules. */

namespace {

std::string committed(const std::string &name) {
    std::ifstream in(sourceDir + "/examples/stx/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

TEST(ExampleTrees, AreWhatTheProgramBesideThemMakes) {
    WorkDir dir;
    ProgramRun run = runProgram(dir, maketreesProgram, {sourceDir + "/examples", "."});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> names = {"basic.stx", "desk.stx",  "forms.stx",
                                      "shop.stx",  "stock.stx", "value.stx"};
    EXPECT_EQ(dir.files(), names);
    for (const std::string &name : names) {
        SCOPED_TRACE(name);
        EXPECT_EQ(dumpTree(committed(name)), dumpTree(dir.read(name)));
        EXPECT_TRUE(committed(name) == dir.read(name));
    }
}

TEST(ExampleTrees, ProgramReportsWhatItCannotReadOrWrite) {
    WorkDir dir;
    EXPECT_EQ(runProgram(dir, maketreesProgram, {sourceDir + "/examples"}).status, 1);
    EXPECT_EQ(runProgram(dir, maketreesProgram, {sourceDir + "/examples", "nowhere"}).status, 1);
    EXPECT_EQ(runProgram(dir, maketreesProgram, {".", "."}).status, 1);
}
