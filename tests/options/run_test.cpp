#include <algorithm>
#include <initializer_list>

#include <gtest/gtest.h>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* What options do to a run of the tool, as its user sees it. */

namespace {

using List = std::vector<std::string>;

std::size_t count(const std::string &text, const std::string &part) {
    std::size_t n = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++n;
    return n;
}

class OptionRun : public ::testing::Test {
protected:
    /* Module "x" with an entry type and these general options, in "stx/x.stx". */
    void makeTree(const List &options, const List &toolOptions = {}) {
        TreeWriter w("Mod_X", "x");
        w.define("My_Msg", w.sequence({w.comp("the_Num", w.integer(0, 9)), w.comp("r", w.real())}))
            .entry();
        for (const std::string &option : options)
            w.option("-" + option);
        for (const std::string &option : toolOptions)
            w.backendOption("-" + option);
        dir_.makeDir("stx");
        ASSERT_TRUE(w.save(dir_.path("stx/x.stx")));
    }

    /* Runs the tool on module "x"; it has to end well. */
    ProgramRun run(List arguments) {
        arguments.insert(arguments.begin(), {"-S=stx"});
        arguments.push_back("x");
        ProgramRun result = runVelmo(dir_, arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return result;
    }

    WorkDir dir_;
};

TEST_F(OptionRun, CommandLineWinsOverTheTreeAndTheTreeOverDefaults) {
    makeTree({}, {"VERBOSE=QUIET"});
    EXPECT_EQ(run({}).out, "");
    const ProgramRun verbose = run({"-verbose=quiet", "-BEO=VELMO=VERBOSE=verbose"});
    EXPECT_NE(verbose.out.find("VELMO>>> generating Mod_X\n"), std::string::npos);
    makeTree({});
    EXPECT_EQ(run({}).out.find("generating"), std::string::npos);
}

TEST_F(OptionRun, OptionsThatAreIgnoredAreReportedForEachModule) {
    makeTree({});
    TreeWriter y("Mod_Y", "y");
    y.import("Mod_X", "x");
    ASSERT_TRUE(y.save(dir_.path("stx/y.stx")));
    dir_.write("o", "-END-SCOPE\n-nameLen=9\n-PREFIX=Any:thing\n");
    const ProgramRun result = runVelmo(dir_, {"-S=stx", "+o", "y"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(count(result.err, "\nWARNING : Unexpected -END-SCOPE: option file o\n"), 2u);
    EXPECT_EQ(count(result.err, "\nWARNING : Option ignored: -END-SCOPE\n"), 2u);
    EXPECT_EQ(count(result.err, "\nWARNING : Option ignored: -NAMELEN=9\n"), 2u);
    EXPECT_EQ(count(result.err, "WARNING"), 6u);
}

TEST_F(OptionRun, PrefixOfAnImportIsKnownBeforeTheImportIsRead) {
    makeTree({});
    TreeWriter y("Mod_Y", "y");
    y.import("Mod_X", "x");
    y.option("-PREFIX=Mod-X:longer-than-five:x");
    y.option("-PREFIX=Unknown:u");
    ASSERT_TRUE(y.save(dir_.path("stx/y.stx")));
    const ProgramRun result = runVelmo(dir_, {"-S=stx", "y"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err,
              "\nWARNING : A file prefix 'longer-than-five:x' is longer than 5 characters.\n"
              "          Truncating it to 5 characters.\n"
              "          Check value of the PREFIXLEN option.\n");
    EXPECT_NE(dir_.read("y.typ").find("#include \"x.typ\""), std::string::npos);
}

TEST_F(OptionRun, DirectoriesAndTheLogFile) {
    makeTree({"C=src", "H=inc/", "INFO=about it"}, {"LOGFILE=tree.log"});
    dir_.makeDir("src");
    dir_.makeDir("inc");
    run({"-logfile=cmd.log"});
    EXPECT_EQ(dir_.files(), (List{"cmd.log", "inc/x.def", "inc/x.typ", "inc/xcod.ext", "src/xdec.c",
                                  "src/xenc.c", "stx/x.stx"}));
    EXPECT_NE(dir_.read("src/xenc.c").find("INFO = about it"), std::string::npos);
    EXPECT_EQ(dir_.read("cmd.log").rfind("x.stx: inc/x.typ inc/x.def", 0), 0u);
}

TEST_F(OptionRun, NamesAndFormsOfTypes) {
    makeTree({"TPREF=t_", "TCONV=My-Msg:HU", "CNAME=the-Num:number", "C-GENERATION=REAL"});
    run({});
    const std::string types = dir_.read("x.typ");
    EXPECT_NE(types.find("T_MY_MSG"), std::string::npos);
    EXPECT_NE(types.find(" number;"), std::string::npos);
    EXPECT_NE(types.find("REAL r;"), std::string::npos);
    EXPECT_EQ(types.find("My_Msg"), std::string::npos);
}

} // namespace
