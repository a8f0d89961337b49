#include <filesystem>

#include <gtest/gtest.h>

#include "tests/support/runtool.h"

/* What the compiler does with files that are missing, in the way, or named strangely. */

namespace {

namespace fs = std::filesystem;

struct Call {
    std::vector<std::string> arguments;
    int status;
    const char *said; /* a part of what is said on standard error, or else on standard output */
};

void expectRun(const WorkDir &dir, const Call &run) {
    std::string all;
    for (const std::string &argument : run.arguments)
        all += argument + " ";
    const ProgramRun done = runProgram(dir, asntreeProgram, run.arguments);
    EXPECT_EQ(done.status, run.status) << all << done.err;
    const std::string &said = run.status != 0 || done.out.empty() ? done.err : done.err + done.out;
    EXPECT_NE(said.find(run.said), said.npos) << all << done.err << done.out;
    for (const std::string &file : dir.files())
        EXPECT_EQ(file.find(".new"), file.npos) << all << file;
}

const char *const moduleText = "M DEFINITIONS ::= BEGIN T ::= NULL END\n";

TEST(AsntreeProgram, FindsItsFiles) {
    const WorkDir dir;
    dir.makeDir("a");
    dir.makeDir("b");
    dir.write("a/user.asn", "User DEFINITIONS ::= BEGIN IMPORTS T FROM M {1 2 3} V FROM Far;\n"
                            "U ::= SEQUENCE { t T, v V } END\n");
    dir.write("a/m1.asn", "M {1 2 4} DEFINITIONS ::= BEGIN T ::= REAL END\n");
    dir.write("b/m2.asn", "M {1 2 3} DEFINITIONS ::= BEGIN T ::= NULL END\n");
    dir.write("b/far.asn1", "Near DEFINITIONS ::= BEGIN END\n" + std::string(100'000, '\n') +
                                "Far DEFINITIONS ::= BEGIN V ::= BOOLEAN END\n");
    const Call runs[] = {
        {{"none"}, 2, "there is no file none (nor none.asn, none.asn1, none.ASN, none.ASN1)\n"},
        {{"-A=a", "-A=b", "none"},
         2,
         "there is no file none (nor a/none, a/none.asn, a/none.asn1, a/none.ASN, a/none.ASN1, "
         "b/none, "},
        {{"a"}, 2, "there is no file a "},
        {{"/proc/self/mem"}, 2, "can't read /proc/self/mem: "},
        {{"-A=a", "user"}, 2, "module `Far`"},
        {{"-A=a", "-A=c", "user"}, 2, "warning: can't read the directory c/: "},
        {{"-A=a", "-A=b", "-S=out", "user", "a/user.asn"}, 0, "3 trees written to out/"},
        {{"--list", "out/user.stx"}, 0, "    t m2.T\n    v Far.V\n"},
        {{"--list", "out/m2.stx"}, 0, "T ::= NULL "},
        {{"--list", "out/none.stx", "out/m2.stx"}, 2, "asntree: out/none.stx: "},
        {{"--list", "a/user.asn"}, 2, "asntree: a/user.asn: it is no syntax tree"},
        {{"--list", "short"}, 2, "asntree: short: it is no syntax tree\n"},
        {{"--list", "half"}, 2, "asntree: half: the syntax tree is cut off or broken\n"},
    };
    for (const Call &run : runs) {
        if (const std::string tree = dir.read("out/m2.stx"); !tree.empty()) {
            dir.write("short", tree.substr(0, 20));
            dir.write("half", tree.substr(0, tree.size() - 3));
        }
        expectRun(dir, run);
    }
}

TEST(AsntreeProgram, WritesBesideWhatIsInTheWay) {
    const WorkDir dir;
    dir.write("m.asn", moduleText);
    std::string large = "M DEFINITIONS ::= BEGIN\n";
    for (int i = 0; i < 300; ++i)
        large += "T" + std::to_string(i) + " ::= INTEGER\n";
    dir.write("large.asn", large + "END\n");
    dir.write("file", "");
    dir.makeDir("way/m.stx");
    dir.makeDir("links");
    fs::create_symlink("../other/real.stx", dir.path("links/m.stx"));
    dir.makeDir("other");
    fs::create_symlink("/dev/full", dir.path("links/large.stx"));
    expectRun(dir, {{"-S=file/x", "m"}, 2, "asntree: file/x: "});
    expectRun(dir, {{"-S=way", "m"}, 2, "asntree: way/m.stx: it is a directory\n"});
    expectRun(dir,
              {{"-S=links", "large"}, 2, "asntree: links/large.stx: No space left on device\n"});
    expectRun(dir, {{"-MD=/dev/full", "m"}, 2, "asntree: /dev/full: No space left on device\n"});
    expectRun(dir, {{"-S=links", "m"}, 0, "velmo -S=links/ m\n"});
    EXPECT_TRUE(fs::is_symlink(dir.path("links/m.stx")));
    EXPECT_EQ(dir.read("other/real.stx"), dir.read("links/m.stx"));
    EXPECT_FALSE(dir.read("other/real.stx").empty());
    expectRun(dir, {{"-MD=/dev/stdout", "-S=links", "m"}, 0, "links/m.stx: m.asn\n"});
    dir.write("it's $5#.asn", moduleText);
    expectRun(dir, {{"-MD=deps", "-S=o u", "it's $5#.asn"}, 0, "velmo '-S=o u/' "});
    EXPECT_NE(dir.read("deps").find("o\\ u/M.stx: it's\\ $$5\\#.asn\n"), std::string::npos)
        << dir.read("deps");
    expectRun(dir, {{"-S=it's", "m"}, 0, "velmo '-S=it'\\''s/' m\n"});
}

TEST(AsntreeProgram, Options) {
    const WorkDir dir;
    dir.write("m.asn", "M DEFINITIONS ::= BEGIN T ::= Nul END\n");
    dir.write("wrong.opt", "@M int=8\n");
    dir.write("odd.opt", "@M.T\n= what\n@None.T int=8\n-END-SCOPE\n");
    dir.write("odder.opt", "@M.None int=8\n");
    dir.write("good.asn", moduleText);
    const Call runs[] = {
        {{"--color=always", "m"}, 2, "\033[1m"},
        {{"--color=never", "m"}, 2, "m.asn:1:31: error: `Nul` is not defined\n"},
        {{"-version"}, 0, "asntree 1.7"},
        {{"--check", "good"}, 0, ""},
        {{"-L=m.asn", "good"}, 2, "asntree: m.asn: "},
        {{"+wrong.opt", "good"}, 1, "wrong.opt:1: error: \"@\" must be followed by a path"},
        {{"+odd.opt", "good"}, 2, "odd.opt:1: warning: no words follow the path @M.T\n"},
        {{"+odd.opt", "good"}, 2, "odd.opt:2: warning: neither an option, nor a file, nor a com"},
        {{"+odd.opt", "good"}, 2, "odd.opt:4: warning: -END-SCOPE without -BEGIN-SCOPE\n"},
        {{"+odd.opt", "good"}, 2, "odd.opt:3:2: error: the path names nothing: there is no module"},
        {{"+odder.opt", "good"}, 2, "names nothing: module `M` does not define `None`\n"},
        {{"-BEGIN-SCOPE=x", "-INT=8", "good"}, 0, "asntree: warning: -END-SCOPE is missing\n"},
        {{"-TPREF=" + std::string(600, 'x'), "good"}, 1, "an option of more than 512 characters"},
        {{"-TPREF=\x01", "good"}, 1, "an option with a character that can't be printed"},
        {{"-PREFIXLEN=3", "-PREFIX=*:abc", "good"}, 1, "-PREFIX=*:abc leaves no room in 3"},
        {{"-A=" + std::string(2, '\x01'), "good"}, 1, "error: "},
    };
    for (const Call &run : runs)
        expectRun(dir, run);
    const std::string commands = "for date in 8888888888888888 9999999999999999; do"
                                 " SOURCE_DATE_EPOCH=$date " +
                                 asntreeProgram +
                                 " -S=$date good; done; "
                                 "cmp */good.stx; " +
                                 asntreeProgram + " good >/dev/full";
    const ProgramRun shell = runProgram(dir, "sh", {"-c", commands});
    EXPECT_EQ(shell.status, 2) << shell.err;
    EXPECT_EQ(shell.err, "asntree: the standard output can't be written\n");
}

} // namespace
