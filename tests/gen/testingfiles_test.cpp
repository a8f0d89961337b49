#include <algorithm>
#include <array>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/golden.h"
#include "tests/support/treewriter.h"

/* "TST=": which files asking and printing functions and their prototypes go to, and who includes
   them. */

namespace {

using Names = std::vector<std::string>;

constexpr const char *SETTINGS[] = {"none", "combined", "separate"};

class TestingFiles : public ::testing::TestWithParam<std::tuple<int, int>> {
protected:
    int functions() const { return std::get<0>(GetParam()); }
    int prototypes() const { return std::get<1>(GetParam()); }

    /* x has an entry type and a table, and imports y, which has prototypes in one file. */
    void SetUp() override {
        TreeWriter base("Base", "y");
        base.define("Size", base.sequence({base.comp("a", base.boolean())}));
        base.option("-TST=1:1");
        ASSERT_TRUE(base.save(dir_.path("y.stx")));
        TreeWriter user("User", "x");
        user.define("Box", user.sequence({user.comp("size", user.ref(base, "Size"))})).entry();
        const std::string setting =
            std::string(SETTINGS[functions()]) + ':' + SETTINGS[prototypes()];
        for (const char *option : {"-COD=0:0", "-TAB=1", "-VERBOSE=QUIET"})
            user.option(option);
        user.option("-TST=" + setting);
        ASSERT_TRUE(user.save(dir_.path("x.stx")));
        const ProgramRun run = runVelmo(dir_, {"x", "y"});
        ASSERT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
    }

    /* What follows `word` on the lines that begin with it. */
    Names linesWith(const std::string &file, const std::string &word) const {
        std::istringstream in(dir_.read(file));
        Names lines;
        for (std::string line; std::getline(in, line);)
            if (line.starts_with(word))
                lines.push_back(line.substr(word.size()));
        return lines;
    }
    Names included(const std::string &file) const { return linesWith(file, "#include "); }

    WorkDir dir_;
};

/* Names of the files of a pair, by its setting. */
Names files(int setting, const std::string &suffix) {
    const Names byKind[] = {{}, {"xtst" + suffix}, {"xask" + suffix, "xpri" + suffix}};
    return byKind[setting];
}

Names quoted(const Names &names) {
    Names result;
    for (const std::string &name : names)
        result.push_back('"' + name + '"');
    return result;
}

TEST_P(TestingFiles, ExistAsTheOptionSays) {
    Names expected = files(functions(), ".c");
    for (const std::string &name : files(prototypes(), ".ext"))
        expected.push_back(name);
    std::sort(expected.begin(), expected.end());
    Names found;
    for (const std::string &name : dir_.files())
        if (name.starts_with("xtst") || name.starts_with("xask") || name.starts_with("xpri"))
            found.push_back(name);
    EXPECT_EQ(found, expected);
}

void expectCompiles(const WorkDir &dir, const std::string &file) {
    for (const char *compiler : {"gcc", "clang"})
        EXPECT_EQ(compileC(dir, compiler, file,
                           {"-std=c99", "-Wall", "-Wextra", "-I.", "-I" + sourceDir + "/rts"}),
                  "")
            << compiler << ' ' << file;
}

/* Prototypes are written whether or not the functions are; without them users declare what they
   need, and the files don't compile by themselves. */
TEST_P(TestingFiles, HoldTheirKindAndIncludeWhatItNeeds) {
    const std::string ask = "aBox askBox ", pri = "pBox priBox ";
    const auto named = [this](const std::string &file, const std::string &word) {
        std::string names;
        for (const std::string &line : linesWith(file, word))
            names += line.substr(0, line.find('('));
        return names;
    };
    const std::array<std::string, 3> byFile = {ask + pri, ask, pri};
    const auto contents = [&](const std::string &file) {
        return byFile[file.starts_with("xtst") ? 0 : file.starts_with("xask") ? 1 : 2];
    };
    for (const std::string &file : files(functions(), ".c")) {
        EXPECT_EQ(named(file, "void "), contents(file)) << file;
        Names needed = files(prototypes(), ".ext");
        if (functions() == 2 && prototypes() == 2)
            needed = {file.substr(0, 4) + ".ext"};
        EXPECT_EQ(included(file), quoted(needed)) << file;
        if (prototypes() != 0)
            expectCompiles(dir_, file);
    }
    for (const std::string &file : files(prototypes(), ".ext")) {
        EXPECT_EQ(named(file, "extern void "), contents(file)) << file;
        EXPECT_EQ(included(file),
                  quoted({"asntyp.typ", "asntst.ext", "y.typ", "ytst.ext", "x.typ"}))
            << file;
    }
}

/* The table names functions that are written, and includes the prototypes that there are. */
TEST_P(TestingFiles, AreNamedInTheEntryTable) {
    const std::string table = dir_.read("x.tab");
    std::string expected = "#if ASNTST_MODULE\n";
    expected += functions() == 0 ? "    NULL,\n    NULL,\n"
                                 : "    (ENTRYFUNC)askBox,\n    (ENTRYFUNC)priBox,\n";
    EXPECT_NE(table.find(expected + "#endif\n"), std::string::npos) << table;
    Names includes = {"x.typ"};
    for (const std::string &name : files(prototypes(), ".ext"))
        includes.push_back(name);
    EXPECT_EQ(included("x.tab"), quoted(includes));
}

INSTANTIATE_TEST_SUITE_P(, TestingFiles,
                         testing::Combine(testing::Range(0, 3), testing::Range(0, 3)),
                         [](const auto &testCase) {
                             return std::string(SETTINGS[std::get<0>(testCase.param)]) + '_' +
                                    SETTINGS[std::get<1>(testCase.param)];
                         });

/* Fields that are left out stay as they are, a third one changes no file, and a wrong one drops the
   whole option. */
TEST(TestingOption, FieldsThatChangeNothing) {
    const struct {
        const char *option;
        Names files;
    } rows[] = {
        {"-TST=1", {"xtst.c"}}, {"-TST=2:1:2", {"xask.c", "xpri.c", "xtst.ext"}},
        {"-TST=0:0:1", {}},     {"-TST=1:3", {}},
        {"-TST=:1", {}},        {"-TST=1:1:1:1", {}},
    };
    for (const auto &row : rows) {
        WorkDir dir;
        TreeWriter tree("User", "x");
        tree.define("Box", tree.boolean()).entry();
        for (const char *option : {"-COD=0:0", "-TYP=0", "-DEF=0", "-VERBOSE=QUIET", row.option})
            tree.option(option);
        ASSERT_TRUE(tree.save(dir.path("x.stx")));
        EXPECT_EQ(runVelmo(dir, {"x"}).status, 0) << row.option;
        Names found = dir.files();
        std::erase(found, "x.stx");
        EXPECT_EQ(found, row.files) << row.option;
    }
}

} // namespace
