#include "gen/fileset.h"

#include <sstream>

#include <gtest/gtest.h>

#include "base/files.h"
#include "driver/driver.h"
#include "model/modules.h"
#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

namespace {

using Names = std::vector<std::string>;

/* The files that a text includes, in order. */
Names includes(const std::string &text) {
    const std::string word = "#include ";
    std::istringstream in(text);
    Names names;
    for (std::string line; std::getline(in, line);)
        if (line.starts_with(word))
            names.push_back(line.substr(word.size() + 1, line.size() - word.size() - 2));
    return names;
}

class FileSet : public ::testing::Test {
protected:
    /* A module with one entry type and the given general options, which imports others. */
    void write(const std::string &prefix, const Names &options, const Names &imports = {},
               bool withFunctions = true) {
        TreeWriter tree("M_" + prefix, prefix);
        if (!withFunctions)
            tree.exportsMarked();
        TypeNode type = tree.define("Weight", tree.integer(0, 255));
        if (withFunctions)
            type.entry();
        else
            type.exported(false);
        for (const std::string &import : imports)
            tree.import("M_" + import, import);
        for (const std::string &option : options)
            tree.option(option);
        ASSERT_TRUE(tree.save(dir_.path(prefix + ".stx")));
    }

    /* Runs the tool and returns the names of the generated files. */
    Names run(Names arguments) {
        arguments.insert(arguments.begin(), "-VERBOSE=QUIET");
        ProgramRun result = runVelmo(dir_, arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        err_ = result.err;
        out_ = result.out;
        Names names;
        for (const std::string &name : dir_.files())
            if (!name.ends_with(".stx"))
                names.push_back(name);
        return names;
    }

    WorkDir dir_;
    std::string out_, err_;
};

TEST_F(FileSet, OptionsChooseTheFiles) {
    const struct {
        Names options;
        Names files;
    } rows[] = {
        {{}, {"x.def", "x.typ", "xcod.ext", "xdec.c", "xenc.c"}},
        {{"-COD=1:1"}, {"x.def", "x.typ", "xcod.c", "xcod.ext"}},
        {{"-COD=2:2"}, {"x.def", "x.typ", "xdec.c", "xdec.ext", "xenc.c", "xenc.ext"}},
        {{"-COD=0:0", "-TST=1:1"}, {"x.def", "x.typ", "xtst.c", "xtst.ext"}},
        {{"-COD=0:0", "-TST=2:2", "-TYP=0"}, {"x.def", "xask.c", "xask.ext", "xpri.c", "xpri.ext"}},
        {{"-COD=0:0", "-DEF=NO", "-TAB=YES"}, {"x.tab", "x.typ"}},
        {{"-COD=0:0", "-TAB=1", "-TABF=1"}, {"x.def", "x.typ", "xtab.c", "xtab.ext"}},
        {{"-DEFINITION-CATEGORY=MORLA-SERVICE"}, {"x.def", "x.tab", "x.typ"}},
        {{"-COD=0:0", "-TST=1"}, {"x.def", "x.typ", "xtst.c"}},
        {{"-COD=0:0", "-TST=2:1:2"}, {"x.def", "x.typ", "xask.c", "xpri.c", "xtst.ext"}},
        {{"-COD=0:0", "-TST=1:3"}, {"x.def", "x.typ"}},
        {{"-COD=0:0", "-TST=:1"}, {"x.def", "x.typ"}},
        {{"-COD=0:0", "-TST=1:1:1:1"}, {"x.def", "x.typ"}},
    };
    for (const auto &row : rows) {
        write("x", row.options);
        EXPECT_EQ(run({"x"}), row.files) << ::testing::PrintToString(row.options);
        EXPECT_EQ(err_, "");
        for (const std::string &name : row.files)
            std::remove(dir_.path(name).c_str());
    }
}

TEST_F(FileSet, ModuleWithoutFunctionsOrTables) {
    write("x", {"-COD=2:2", "-TST=2:2", "-TAB=1"}, {}, false);
    EXPECT_EQ(run({"x"}), (Names{"x.def", "x.typ"}));
}

TEST_F(FileSet, HeadOfAHeaderFile) {
    write("my-x", {"-H=inc", "-C=src/", "-INFO=what it is for"});
    dir_.makeDir("inc");
    dir_.makeDir("src");
    EXPECT_EQ(run({"my-x"}), (Names{"inc/my-x.def", "inc/my-x.typ", "inc/my-xcod.ext",
                                    "src/my-xdec.c", "src/my-xenc.c"}));
    const std::string head = "/****************************************************************\n"
                             " * Processed by VELMO 1.07 TIME\n"
                             " * Syntax file processed by KETRA 2.13 TIME\n"
                             " * ASN.1 module = M_my-x\n"
                             " * FILE = my-xcod.ext\n"
                             " * INFO = what it is for\n"
                             " ****************************************************************/\n"
                             "\n#ifndef MY_XCOD_EXT\n#define MY_XCOD_EXT\n"
                             "\n#ifndef ASNTYP_TYP\n#include \"asntyp.typ\"\n#endif\n";
    EXPECT_EQ(maskTimes(dir_.read("inc/my-xcod.ext")).substr(0, head.size()), head);
}

TEST_F(FileSet, EveryHeaderHasItsGuard) {
    write("x", {"-COD=2:2", "-TST=1:1", "-TAB=1", "-TABF=1"});
    for (const std::string &name : run({"x"})) {
        std::string guard = name;
        for (char &c : guard)
            c = c == '.' ? '_' : static_cast<char>(std::toupper(c));
        std::string text = dir_.read(name);
        bool isSource = name.ends_with(".c");
        EXPECT_EQ(text.find("#ifndef " + guard + "\n#define " + guard + "\n") == std::string::npos,
                  isSource)
            << name;
        EXPECT_EQ(text.ends_with("\n\n#endif /*" + guard + "*/\n"), !isSource) << name;
    }
}

/* x imports a and b, a imports c, c imports x and a; b has no functions and imports d. */
TEST_F(FileSet, IncludesFollowTheImports) {
    write("x", {"-COD=2:1", "-TST=2:2"}, {"a", "b"});
    write("a", {"-COD=2:2"}, {"c"});
    write("b", {}, {"d"}, false);
    write("c", {"-TYP=0"}, {"x", "a"});
    write("d", {});
    run({"x"});
    EXPECT_EQ(includes(dir_.read("x.typ")), (Names{"asntyp.typ", "a.typ", "d.typ", "b.typ"}));
    EXPECT_EQ(includes(dir_.read("x.def")), Names{});
    EXPECT_EQ(includes(dir_.read("xcod.ext")),
              (Names{"asntyp.typ", "asncodec.ext", "ccod.ext", "a.typ", "aenc.ext", "x.typ"}));
    EXPECT_EQ(includes(dir_.read("xask.ext")),
              (Names{"asntyp.typ", "asntst.ext", "a.typ", "x.typ"}));
    EXPECT_EQ(includes(dir_.read("xenc.c")), (Names{"xcod.ext"}));
    EXPECT_EQ(includes(dir_.read("xdec.c")), (Names{"xcod.ext"}));
    EXPECT_EQ(includes(dir_.read("xpri.c")), (Names{"xpri.ext"}));
    EXPECT_EQ(err_, "./x.asn:1: warning: Circular ASN.1 module imports detected.\n"
                    "    VELMO can not generate proper type definitions because generated\n"
                    "    types are used before they are defined. Split ASN.1 modules such\n"
                    "    that there are no circular references between modules.\n");
    EXPECT_FALSE(dir_.has("a.typ")) << "modules that are only imported get no files";
}

/* Function files and tables include the prototypes that the settings give. */
TEST_F(FileSet, IncludesOfPrototypes) {
    const struct {
        const char *option;
        const char *file;
        Names included;
    } rows[] = {
        {"-COD=1:2", "xcod.c", {"xenc.ext", "xdec.ext"}},
        {"-COD=1:0", "xcod.c", {}},
        {"-COD=2:2", "xdec.c", {"xdec.ext"}},
        {"-TST=2:2", "xask.c", {"xask.ext"}},
        {"-TST=2:1", "xpri.c", {"xtst.ext"}},
        {"-TST=1:2", "xtst.c", {"xask.ext", "xpri.ext"}},
        {"-TST=1:2", "x.tab", {"x.typ", "xcod.ext", "xask.ext", "xpri.ext"}},
        {"-TST=2:1", "x.tab", {"x.typ", "xcod.ext", "xtst.ext"}},
        {"-COD=0:0", "x.tab", {"x.typ"}},
    };
    for (const auto &row : rows) {
        write("x", {"-TAB=1", row.option});
        run({"x"});
        EXPECT_EQ(includes(dir_.read(row.file)), row.included) << row.option << ' ' << row.file;
    }
}

TEST_F(FileSet, IncludesOfTables) {
    write("x", {"-TAB=1", "-TABF=1", "-COD=2:1", "-TST=2:2"}, {"a", "b", "c"});
    write("a", {"-TAB=1", "-TABF=1"}, {"d"});
    write("b", {"-TAB=1"});
    write("c", {"-TAB=1", "-TABF=1"}, {}, false);
    write("d", {"-TAB=1", "-TABF=1"});
    run({"x"});
    EXPECT_EQ(includes(dir_.read("xtab.ext")), (Names{"atab.ext", "x.typ"}));
    EXPECT_EQ(includes(dir_.read("xtab.c")),
              (Names{"x.typ", "xtab.ext", "xcod.ext", "xask.ext", "xpri.ext"}));
}

TEST_F(FileSet, IncludesThatOptionsAskFor) {
    write("x", {"-TAB=1", "-TABF=1", "-COD=2:1", "-TST=2:2"});
    run({"-TAB-CODFUNC=e:d:mine.h", "-TAB-TSTFUNC=e:d:other.h",
         "-BRUN-GENERATION=include-brunhook:mid", "x"});
    std::string text = dir_.read("xtab.c");
    EXPECT_EQ(includes(text),
              (Names{"brunhook.h", "x.typ", "xtab.ext", "xmine.h", "xask.ext", "xpri.ext"}));
    EXPECT_NE(text.find("****/\n\n#include <brunhook.h>\n\n#ifndef X_TYP\n"), std::string::npos);
    EXPECT_NE(text.find("#include \"xpri.ext\"\n#endif\n\nMID(%MID%);\n"), std::string::npos);
    text = dir_.read("xenc.c");
    EXPECT_NE(text.find("#include \"xcod.ext\"\n#endif\n\nMID(%MID%);\n"), std::string::npos);
    EXPECT_EQ(includes(text), (Names{"brunhook.h", "xcod.ext"}));
    text = dir_.read("xcod.ext");
    EXPECT_EQ(text.find("brunhook"), std::string::npos);
    EXPECT_EQ(text.find("MID"), std::string::npos);
}

TEST_F(FileSet, LogHasALineForEachModule) {
    write("x", {"-H=inc/"}, {"y"});
    write("y", {"-COD=1:1"});
    write("z", {"-COD=0"}, {}, false);
    dir_.makeDir("inc");
    dir_.write("log", "of an earlier run\n");
    run({"-LOGFILE=log", "z", "x", "y"});
    EXPECT_EQ(dir_.read("log"), "z.stx: z.typ z.def\n"
                                "x.stx: inc/x.typ inc/x.def xenc.c inc/xcod.ext xdec.c\n"
                                "y.stx: y.typ y.def ycod.c ycod.ext\n");
    run({"-LOGFILE=no/log", "z", "y"});
    EXPECT_EQ(out_, "*** Warning: could not open log file no/log ***\n"
                    "*** Warning: could not open log file no/log ***\n");
}

/* The graph of imports may be a chain as long as one likes. */
TEST_F(FileSet, LongChainOfImports) {
    constexpr int LENGTH = 1100;
    for (int i = 0; i < LENGTH; ++i) {
        Names imports;
        if (i + 1 < LENGTH)
            imports.push_back("m" + std::to_string(i + 1));
        write("m" + std::to_string(i), {}, imports);
    }
    run({"m0"});
    Names names = includes(dir_.read("m0.typ"));
    ASSERT_EQ(names.size(), static_cast<std::size_t>(LENGTH));
    EXPECT_EQ(names[1], "m1099.typ");
    EXPECT_EQ(names.back(), "m1.typ");
    EXPECT_EQ(includes(dir_.read("m0cod.ext")).size(), 2 * static_cast<std::size_t>(LENGTH) + 1);
}

TEST_F(FileSet, FilePrefixAndGenerationPrefixDiffer) {
    write("x", {});
    std::string directory = "-S=" + dir_.path(), log = "-LOGFILE=" + dir_.path("log");
    std::string program = "velmo", file = "x";
    char *argv[] = {program.data(), directory.data(), log.data(), file.data(), nullptr};
    installHooks();
    initBackend(4, argv, "VELMO", 107, 0, nullptr);
    ModRec *module = modRecList.records.front().get();
    module->filePrefix = "file";
    module->genPrefix = "gen-a";
    module->options->headerDirectory = dir_.path("");
    module->options->codeDirectory = dir_.path("");
    forFirstModule([](AsnModule *handle) {
        openModuleFiles(handle);
        generateLogFile(handle);
        closeModuleFiles(handle);
    });
    std::string text = dir_.read("filecod.ext");
    EXPECT_NE(text.find(" * FILE = filecod.ext\n"), std::string::npos);
    EXPECT_NE(text.find("#ifndef FILECOD_EXT\n#define FILECOD_EXT\n"), std::string::npos);
    EXPECT_NE(text.find("#ifndef GEN_A_TYP\n#include \"gen-a.typ\"\n#endif\n"), std::string::npos);
    EXPECT_TRUE(dir_.read("log").starts_with("gen-a.stx: " + dir_.path("") + "file.typ "));
}

} // namespace
