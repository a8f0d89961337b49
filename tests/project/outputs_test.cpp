#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* The browser tree and the summary as a user gets them. */

namespace {

using Arguments = std::vector<std::string>;

Arguments linesOf(const std::string &text) {
    std::istringstream in(text);
    Arguments lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

struct Line {
    int level = 0;
    std::string name, path, kind;
    std::size_t line = 0;
};

std::vector<Line> parse(const std::string &tree) {
    std::vector<Line> lines;
    for (const std::string &text : linesOf(tree)) {
        Line line;
        const std::size_t name = text.find(':') + 1, quote = text.find(":'", name);
        const std::size_t end = text.find("':", quote), kind = text.find(':', end + 2) + 1;
        line.level = std::stoi(text);
        line.name = text.substr(name, quote - name);
        line.path = text.substr(quote + 2, end - quote - 2);
        line.line = std::stoul(text.substr(end + 2));
        line.kind = text.substr(kind, text.find(':', kind) - kind);
        EXPECT_TRUE(text.ends_with(":" + line.kind + "::")) << text;
        lines.push_back(line);
    }
    return lines;
}

/* A generated item: its name behind "#define", in front of "(", "[]" or ";", or in a comment. */
std::string itemOf(std::string text) {
    text.erase(0, text.find_first_not_of(' '));
    static const std::string define = "#define ", comment = "/* ";
    if (text.starts_with(define))
        return text.substr(define.size(), text.find_first_of(" (", define.size()) - define.size());
    std::size_t end = text.find_first_of("[;(");
    std::size_t begin = 0;
    if (text.starts_with(comment)) {
        begin = comment.size();
        end = text.rfind(' ', text.size() - comment.size() - 1);
    } else if (end != std::string::npos) {
        end = text.find_last_not_of(' ', end - 1) + 1;
        begin = text.find_last_of(" *", end - 1) + 1;
    }
    return end == std::string::npos ? "" : text.substr(begin, end - begin);
}

/* Does the line begin an item, as generated files are laid out? */
bool beginsItem(const std::string &file, const std::string &text) {
    const bool typeFile = file.ends_with(".typ");
    if (text.starts_with("#define "))
        return text.find(' ', 8) != std::string::npos; /* an include guard has nothing behind it */
    if (typeFile)
        return (text.starts_with("typedef ") && text.ends_with(";")) ||
               (text.starts_with("} ") && text.ends_with(";"));
    if (file.ends_with(".def"))
        return false;
    return (text.starts_with("extern ") && !text.starts_with("extern \"C\"")) || text.starts_with("void ") ||
           (text.starts_with("static ") && text.find(" [] = {") != std::string::npos);
}

/* Everything that the tree names stands where it says, and everything that was generated is named
   there. */
void expectTreeMatchesFiles(const WorkDir &dir, const std::string &tree) {
    std::map<std::string, std::set<std::size_t>> named;
    std::map<std::string, Arguments> files;
    for (const Line &node : parse(dir.read(tree))) {
        if (node.level < 2 || node.kind.starts_with("ASN.1 "))
            continue;
        if (files.count(node.path) == 0)
            files[node.path] = linesOf(dir.read(node.path));
        const Arguments &text = files[node.path];
        ASSERT_TRUE(node.line > 0 && node.line <= text.size()) << node.name;
        const std::string bare = node.name.substr(0, node.name.find_first_of("(["));
        EXPECT_EQ(itemOf(text[node.line - 1]), bare) << node.path << ":" << node.line;
        named[node.path].insert(node.line);
    }
    for (const std::string &file : dir.files()) {
        std::size_t number = 0;
        if (file.ends_with(".stx") || file == tree || file.ends_with(".acs"))
            continue;
        for (const std::string &text : linesOf(dir.read(file))) {
            ++number;
            const bool isNamed = named[file].count(number) > 0;
            EXPECT_TRUE(isNamed || !beginsItem(file, text))
                << file << ":" << number << ": " << text;
        }
    }
}

/* The definition that an item stands below; empty if there is no such item. */
std::string ownerOf(const std::string &tree, const std::string &item) {
    std::string owner;
    for (const Line &node : parse(tree)) {
        if (node.level == 2)
            owner = node.name;
        if (node.name == item)
            return owner;
    }
    return "";
}

/* A module with an item of every kind, written with the given options of the tree. */
void everyKind(TreeWriter &w, const Arguments &options) {
    for (const std::string &option : options)
        w.option(option);
    w.source("asn/", "post.asn");
    const TypeNode word = w.comp("word", w.string(TYP_IA5STR, 1, 8)).optional();
    w.define("Big_Parcel", w.sequence({w.comp("colour", w.ref("Colour")), word, w.marker()}))
        .entry()
        .line(3);
    w.define("Colour", w.enumerated({{"red", 0}, {"dark_blue", 5}})).line(4);
    w.define("Any_One", w.choice({w.comp("a", w.null()), w.comp("b", w.ref("Parcels"))}))
        .entry()
        .line(5);
    w.define("Parcels", w.listOf(TYP_SEQOF, w.ref("Big_Parcel"))).line(6);
    w.define("Alias", w.ref("Colour")).entry().line(7);
    w.defineValue("most", w.anonymous(w.integer(0, 9)), w.intValue(9));
    w.defineValue("first_colour", w.ref("Alias"), w.itemOf("Colour", "red"));
    const TypeNode id = w.valueField("id", w.integer(0, 9));
    const TypeNode arg = w.typeField("Arg").optional();
    const TypeNode codes = w.setField("Codes", w.ref("Colour")).optional();
    const TypeNode next = w.setField("Next", w.ref("OP")).optional();
    w.define("OP", w.objectClass({id, arg, codes, next})).line(8);
    const auto set = [&](TypeNode governor, RecNr elements) {
        governor.constrained(elements)->nodeFlags |= NODE_SET;
        return governor;
    };
    const ValueNode one = w.listValue(
        TYP_CLASS, {w.fieldValue(id, w.intValue(1)), w.fieldType(arg, w.ref("Any_One"))});
    w.defineValue("first_op", w.ref("OP"), one).line(9);
    const RecNr colours = w.single(w.itemOf("Colour", "dark_blue"));
    const RecNr ops = w.single(w.valueRef("first_op"));
    const ValueNode two = w.listValue(TYP_CLASS, {w.fieldValue(id, w.intValue(2)),
                                                  w.fieldType(codes, set(w.ref("Colour"), colours)),
                                                  w.fieldType(next, set(w.ref("OP"), ops))});
    w.define("OP_2", w.ref("OP")).line(12);
    w.defineValue("op2", w.ref("OP_2"), two).line(10);
    w.defineSet("Ops", w.ref("OP"), ops).line(11);
}

ProgramRun runQuietly(const WorkDir &dir, Arguments arguments) {
    arguments.insert(arguments.begin(), "-VERBOSE=quiet");
    return runVelmo(dir, arguments);
}

const Arguments allFiles = {"-COD=1:1", "-TST=2:2", "-TAB=1", "-TDEFS=1",
                            "-CDEFS=1", "-H=inc/",  "-SETN=2"};

/* Other layouts of the same items: tables of their own file with access functions, lists of
   parameters and of sets (which belong to the class of the table, whatever name of it an object
   was defined by), heads without ANSI C. */
TEST(ProjectOutputs, ItemsStandWhereTheTreeSays) {
    for (const Arguments &more : std::initializer_list<Arguments>{
             {"-TABF=1", "-ANSI-C=no"},
             {"-TABO=1", "-TABF=1"},
             {"-DEFINITION-CATEGORY=MORLA-SERVICE", "-TABO=1", "-COD=1:1"},
             {"-TYP=0", "-COD=0", "-TST=1"}}) {
        SCOPED_TRACE(::testing::PrintToString(more));
        const WorkDir dir;
        dir.makeDir("inc");
        TreeWriter w("Post_Office", "post");
        Arguments options = allFiles;
        options.insert(options.end(), more.begin(), more.end());
        everyKind(w, options);
        ASSERT_TRUE(w.save(dir.path("post.stx")));
        EXPECT_EQ(runQuietly(dir, {"-TAVI-PREFIX=p", "post"}).status, 0);
        expectTreeMatchesFiles(dir, "p.acd");
        const bool separate = std::count(more.begin(), more.end(), "-TABO=1") > 0;
        for (const char *table : {"postValueSet0[]", "postObjectSet0[]"})
            EXPECT_EQ(ownerOf(dir.read("p.acd"), table), separate ? "OP" : "") << table;
    }
}

/* Modules come in the order of their names, and the outputs change nothing in generated files. */
TEST(ProjectOutputs, OfTheExamples) {
    const WorkDir with, without;
    Arguments arguments = {"-S=" + exampleTrees};
    Arguments modules;
    for (const auto &entry : std::filesystem::directory_iterator(exampleTrees))
        arguments.push_back(entry.path().stem().string());
    EXPECT_EQ(runQuietly(without, arguments).status, 0);
    arguments.push_back("-TAVI-PREFIX=p");
    EXPECT_EQ(runQuietly(with, arguments).status, 0);
    expectTreeMatchesFiles(with, "p.acd");
    for (const Line &node : parse(with.read("p.acd")))
        if (node.level == 1)
            modules.push_back(node.name);
    EXPECT_EQ(modules.size() + 1, arguments.size() - 1);
    EXPECT_TRUE(std::is_sorted(modules.begin(), modules.end()));
    for (const std::string &file : without.files())
        EXPECT_EQ(maskTimes(with.read(file)), maskTimes(without.read(file))) << file;
    EXPECT_EQ(with.files().size(), without.files().size() + 2);
}

/* A module of one type, with options of the compiler and of the tool. */
void saveSmall(const WorkDir &dir, const Arguments &options, const Arguments &toolOptions = {}) {
    TreeWriter w("Small", "small");
    w.source("asn/", "small.asn");
    w.define("Weight", w.integer(0, 255)).line(7).backendOption("-ACCESS-ROUTINES=9");
    for (const std::string &option : options)
        w.option(option);
    for (const std::string &option : toolOptions)
        w.backendOption(option);
    ASSERT_TRUE(w.save(dir.path("small.stx")));
}

TEST(ProjectOutputs, OptionsThatAskForThem) {
    const std::string long32(32, 'x');
    const auto ignored = [](const std::string &option) {
        return "\nWARNING : Option ignored: " + option + "\n";
    };
    const struct {
        Arguments options, toolOptions, arguments, files;
        std::string err;
    } rows[] = {
        {{}, {}, {}, {}, ""},
        {{}, {}, {"-TAVI-DIRECTORY=out"}, {}, ""},
        {{}, {}, {"-TAVI-PREFIX="}, {}, ignored("-TAVI-PREFIX=")},
        {{}, {}, {"-TAVI-PREFIX=" + long32 + "x"}, {}, ignored("-TAVI-PREFIX=" + long32 + "x")},
        {{}, {}, {"-TAVI-PREFIX=" + long32}, {long32 + ".acd", long32 + ".acs"}, ""},
        {{}, {}, {"-TAVI-OTHER=x"}, {}, ignored("-TAVI-OTHER=x")},
        {{}, {}, {"-tavi-prefix=p", "-tavi-directory=out"}, {"out/p.acd", "out/p.acs"}, ""},
        {{"-TAVI-PREFIX=p"}, {}, {}, {"p.acd", "p.acs"}, ""},
        {{"-tavi-prefix=p"}, {}, {}, {}, ""},
        {{}, {"-tavi-prefix=p"}, {"-tree-file-suffix=a.b"}, {"p.acs", "pa.b"}, ""},
        {{}, {"-TAVI-PREFIX=p"}, {"-TAVI-PREFIX=q"}, {"q.acd", "q.acs"}, ""},
    };
    for (const auto &row : rows) {
        const WorkDir dir;
        dir.makeDir("out");
        saveSmall(dir, row.options, row.toolOptions);
        Arguments arguments = row.arguments, files;
        arguments.push_back("small");
        SCOPED_TRACE(::testing::PrintToString(row.options) + ::testing::PrintToString(arguments));
        const ProgramRun run = runQuietly(dir, arguments);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, row.err);
        for (const std::string &file : dir.files())
            if (!file.starts_with("small"))
                files.push_back(file);
        EXPECT_EQ(files, row.files);
    }
}

/* A type is looked at more than once, so that its warning comes more than once. */
std::string withoutRepetition(const std::string &text) {
    Arguments lines = linesOf(text);
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    std::string all;
    for (const std::string &line : lines)
        all += line + "\n";
    return all;
}

TEST(ProjectOutputs, SummaryGrowsFromRunToRun) {
    const WorkDir dir;
    saveSmall(dir, {}, {"-ACCESS-ROUTINES=functions"});
    const std::string wrong = "-WRONG=" + std::string(60, 'x');
    const std::string ofType = "asn/small.asn:7: (W) Option ignored : -ACCESS-ROUTINES=9\n";
    EXPECT_EQ(runQuietly(dir, {"-TAVI-PREFIX=p", wrong, "small"}).status, 0);
    std::string expected = "(W) Global option ignored: " + wrong.substr(0, 50) + "\n" + ofType;
    EXPECT_EQ(withoutRepetition(dir.read("p.acs")), expected);

    saveSmall(dir, {"-TAVI-PREFIX=p"}, {"-ACCESS-ROUTINES=functions", "-ACCESS-ROUTINES=2"});
    EXPECT_EQ(runQuietly(dir, {"small"}).status, 0);
    expected += "*** Warning: VELMO option ACCESS-ROUTINES=FUNCTIONS not yet implemented\n"
                "(W) Global option ignored: -ACCESS-ROUTINES=functions\n"
                "(W) Global option ignored: -ACCESS-ROUTINES=2\n" +
                ofType;
    EXPECT_EQ(withoutRepetition(dir.read("p.acs")), expected);
}

TEST(ProjectOutputs, WarningsOfGeneratorsAndFatalErrors) {
    const WorkDir dir;
    TreeWriter a("A_Module", "a"), b("B_Module", "b");
    a.source("asn/", "a.asn");
    a.import(b);
    b.import(a);
    a.define("Odd", a.type(TYP_CHASTR)).line(4);
    ASSERT_TRUE(a.save(dir.path("a.stx")) && b.save(dir.path("b.stx")));
    EXPECT_EQ(runQuietly(dir, {"-TAVI-PREFIX=p", "a"}).status, 0);
    std::string expected = "asn/a.asn:1: (W) Circular ASN.1 module imports. : A_Module\n"
                           "asn/a.asn:4: (W) Internal error : Unknown leaf type\n";
    EXPECT_EQ(dir.read("p.acs"), expected);
    const std::string tree = dir.read("p.acd");

    const ProgramRun run = runQuietly(dir, {"-TAVI-PREFIX=p", "-LOGFILE=/dev/full", "a"});
    EXPECT_EQ(run.status, 2);
    expected += linesOf(expected)[0] + "\n" + linesOf(expected)[1] + "\n" +
                "\nFATAL ERROR : Can not write into file\n              /dev/full\n\n";
    EXPECT_EQ(dir.read("p.acs"), expected);
    EXPECT_EQ(dir.read("p.acd"), tree) << "only a run that ends normally writes a tree";
}

/* The error of the summary's file is told, and nothing loops. */
TEST(ProjectOutputs, FilesThatCannotBeOpened) {
    const WorkDir dir;
    saveSmall(dir, {});
    const auto fatal = [](const std::string &file) {
        return "\nFATAL ERROR : Can not open file for writing\n              " + file + "\n\n";
    };
    ProgramRun run = runQuietly(dir, {"-TAVI-PREFIX=p", "-TAVI-DIRECTORY=no", "small"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, fatal("no/p.acs") + fatal("no/p.acs"));
    dir.makeDir("p.acd");
    run = runQuietly(dir, {"-TAVI-PREFIX=p", "small"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, fatal("p.acd"));
    EXPECT_TRUE(dir.read("p.acs").ends_with(fatal("p.acd")));
}

} // namespace
