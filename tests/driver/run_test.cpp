#include <filesystem>
#include <new>

#include <gtest/gtest.h>

#include "base/fatal.h"
#include "base/toolinfo.h"
#include "driver/driver.h"
#include "tests/support/paths.h"
#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

namespace {

/* A directory with the tree "post", a module of one type. */
class Run : public ::testing::Test {
protected:
    void SetUp() override { writeTree("Post_Office", "post", {}); }

    void writeTree(const char *name, const char *prefix,
                   const std::vector<std::string> &backendOptions,
                   const std::vector<std::string> &options = {}) {
        TreeWriter tree(name, prefix);
        tree.define("Weight", tree.integer(0, 255)).entry();
        for (const std::string &option : backendOptions)
            tree.backendOption(option);
        for (const std::string &option : options)
            tree.option(option);
        ASSERT_TRUE(tree.save(dir_.path(std::string(prefix) + ".stx")));
    }

    ProgramRun run(const std::vector<std::string> &arguments) { return runVelmo(dir_, arguments); }

    WorkDir dir_;
};

std::string usageText() {
    std::string text;
    for (const char *const *line = velmoUsage; *line != nullptr; ++line)
        text += std::string(*line) + "\n";
    return text;
}

TEST_F(Run, WithoutAFileTheUsageTextAndStatus1) {
    for (const auto &arguments :
         std::vector<std::vector<std::string>>{{}, {"-VERBOSE=QUIET"}, {"-S="}, {"a/b"}}) {
        ProgramRun result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        ASSERT_GE(result.err.size(), usageText().size());
        EXPECT_EQ(result.err.substr(result.err.size() - usageText().size()), usageText());
    }
    EXPECT_TRUE(usageText().starts_with("Usage:\n\n  velmo [options] [option-files] "));
}

TEST_F(Run, BannerAndDone) {
    ProgramRun result = run({"post"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(run({"-VERBOSE=QUIET", "post"}).out, "");
    std::string head = "\nVELMO Version 1.07 for KETRA Version 2.13\nCopyright (c) ";
    EXPECT_EQ(result.out.substr(0, head.size()), head);
    std::string tail = ".\n\n\nVELMO>>> done\n";
    ASSERT_GE(result.out.size(), tail.size());
    EXPECT_EQ(result.out.substr(result.out.size() - tail.size()), tail);
}

TEST_F(Run, FirstModuleGovernsTheBannerAndEachModuleItsOwnLines) {
    writeTree("Quiet", "quiet", {"-VERBOSE=QUIET"});
    writeTree("Loud", "loud", {"-VERBOSE=VERBOSE"});
    EXPECT_EQ(run({"quiet", "loud"}).out, "VELMO>>> initializing Loud\nVELMO>>> generating Loud\n");
    std::string out = run({"loud", "quiet", "loud"}).out;
    EXPECT_NE(out.find("\nVELMO Version"), std::string::npos);
    EXPECT_NE(out.find("\nVELMO>>> initializing Loud\nVELMO>>> initializing Loud\n"
                       "VELMO>>> generating Loud\nVELMO>>> generating Loud\nVELMO>>> done\n"),
              std::string::npos)
        << out;
}

TEST_F(Run, VersionBlockNeedsNoModule) {
    for (const char *option : {"-VERSION", "-version=x"}) {
        ProgramRun result = run({option});
        EXPECT_EQ(result.status, 0);
        std::string head = "\nVELMO version 1.07 for KETRA version 2.13\nCopyright (c) ";
        EXPECT_EQ(result.out.substr(0, head.size()), head) << result.out;
        EXPECT_EQ(result.err, "");
    }
}

/* Names in a tree lead to no other directory. */
TEST_F(Run, ImportsThatLeadElsewhere) {
    dir_.makeDir("in");
    for (const char *prefix : {"../post", "/etc/x", "a\"b", "a\\b"}) {
        TreeWriter tree("Outer", "outer");
        tree.import("Post_Office", prefix);
        ASSERT_TRUE(tree.save(dir_.path("in/outer.stx")));
        ProgramRun result = run({"-S=in", "outer"});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "\nFATAL ERROR : Not a valid syntax tree\n"
                              "              outer: not a file prefix: " +
                                  std::string(prefix) + "\n\n");
    }
    writeTree("Post_Office", "p.o+1", {});
    TreeWriter tree("Outer", "outer");
    tree.import("Post_Office", "p.o+1");
    ASSERT_TRUE(tree.save(dir_.path("outer.stx")));
    EXPECT_EQ(run({"outer"}).status, 0);
    EXPECT_NE(dir_.read("outer.typ").find("#ifndef P_O_1_TYP\n#include \"p.o+1.typ\"\n"),
              std::string::npos);
}

/* Each holds the next one, so that the functions of all wait for those of the last. */
TEST_F(Run, TenThousandTypesThatHoldOneAnother) {
    constexpr int COUNT = 10'000;
    TreeWriter chain("Chain", "chain");
    const auto name = [](int nr) { return "T" + std::to_string(nr); };
    for (int nr = 0; nr < COUNT; ++nr)
        chain.define(name(nr),
                     chain.sequence({chain.comp("a", chain.ref(name(nr + 1))).optional()}));
    chain.define(name(COUNT), chain.boolean());
    chain.option("-TST=2:2");
    ASSERT_TRUE(chain.save(dir_.path("chain.stx")));
    EXPECT_EQ(run({"chain"}).status, 0);
    for (const char *file : {"chainenc.c", "chaindec.c", "chainask.c", "chainpri.c"}) {
        const std::string text = dir_.read(file);
        EXPECT_LT(text.find("T9999"), text.find("T0 ")) << file;
    }
}

TEST_F(Run, DirectoryThatDoesNotExist) {
    writeTree("Away", "away", {}, {"-H=no/such"});
    ProgramRun result = run({"away"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err,
              "\nFATAL ERROR : Can not open file for writing\n              no/such/away.typ\n\n");
}

TEST_F(Run, FullDiskEndsTheRun) {
    for (const char *file : {"post.typ", "post.def", "postcod.ext", "log"}) {
        std::filesystem::remove(dir_.path(file));
        std::filesystem::create_symlink("/dev/full", dir_.path(file));
        ProgramRun result = run({"-LOGFILE=log", "post"});
        EXPECT_EQ(result.status, 2) << file;
        EXPECT_EQ(result.err, "\nFATAL ERROR : Can not write into file\n              " +
                                  std::string(file) + "\n\n");
        std::filesystem::remove(dir_.path(file));
    }
    for (const char *arguments : {" post >/dev/full", " -VERSION >/dev/full"}) {
        ProgramRun result = runProgram(dir_, "sh", {"-c", velmoProgram + arguments});
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_NE(result.err.find("Can not write into file"), std::string::npos);
    }
}

TEST(FatalErrorDeathTest, AnyCodeAndDetail) {
    EXPECT_EXIT(fatalError(FATAL_NO_CALLBACK, nullptr), testing::ExitedWithCode(2),
                "^\nFATAL ERROR : Call-back function not defined.\n\n$");
    EXPECT_EXIT(fatalError(4711, "detail"), testing::ExitedWithCode(2),
                "^\nFATAL ERROR : Unexpected error code\n              detail\n\n$");
    installMemoryHandler();
    EXPECT_EXIT(std::get_new_handler()(), testing::ExitedWithCode(2),
                "Can not allocate space\n\n$");
    setFatalErrorListener([](const char *text, const char *) { fatalError(FATAL_WRITE, text); });
    EXPECT_EXIT(
        fatalError(FATAL_READ, "a"), testing::ExitedWithCode(2),
        "Can not read from file\n.*a\n\n\nFATAL ERROR : Can not write into file\n.*Can not read");
}

TEST(ToolInfo, CopyrightNoticeHasALineForEachSentence) {
    copyrightNotice = "Copyright \xA9 A.  Terms: none... End";
    EXPECT_EQ(formatToolCopyright(), "Copyright (c) A.\nTerms: none.\n.\n.\nEnd");
    copyrightNotice = "Another.";
    EXPECT_EQ(formatToolCopyright(), "Copyright (c) A.\nTerms: none.\n.\n.\nEnd") << "formed once";
}

} // namespace
