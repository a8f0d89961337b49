#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Whatever stands in a tree, an option file or the arguments, a run ends with status 0, 1 or 2 and
   says why. Each case runs the tool on a tree that is sound but for one thing. */

namespace {

/* Text of a fatal error on the standard error stream. */
std::string fatal(const std::string &text, const std::string &detail = "") {
    std::string message = "\nFATAL ERROR : " + text + "\n";
    if (!detail.empty())
        message += "              " + detail + "\n";
    return message + "\n";
}

constexpr const char *INVALID = "Not a valid syntax tree";
constexpr const char *NO_RECORD = "Can not read record from syntax tree";
constexpr const char *INCONSISTENT = "Syntax tree inconsistent";

/* A sanitizer ends a process with status 1 as well, so its words are looked for. */
bool isClean(const ProgramRun &run) {
    return run.status >= 0 && run.status <= 2 && run.err.find("Sanitizer") == std::string::npos &&
           run.err.find("runtime error:") == std::string::npos;
}

/* Runs the tool on `file` as the tree "small". */
ProgramRun runOn(const std::string &file) {
    WorkDir dir;
    dir.write("small.stx", file);
    return runVelmo(dir, {"small"});
}

void expectFatal(const std::string &file, const std::string &message) {
    ProgramRun run = runOn(file);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, message);
}

/* Every kind of record once or twice; small, since some cases run it hundreds of times. */
void fill(TreeWriter &w) {
    w.option("-PREFIX=small");
    w.define("Size", w.numbered(w.integer(0, 9), {{"none", 0}}));
    w.define("Pair", w.sequence({
                         w.comp("a", w.ref("Size")).implicit(0).optional(),
                         w.comp("b", w.listOf(TYP_SEQOF, w.ref("Pick"))),
                     }))
        .entry()
        .text("T1", "/* a pair */");
    w.define("Pick", w.choice({w.comp("one", w.null()), w.comp("two", w.boolean())}));
    TypeNode pick = w.findType("Pick");
    w.define("Chosen", w.selection("two", pick));
    w.defineValue("wide", w.type(TYP_BMPSTR), w.text16Value(u"ab"));
    w.defineValue("wider", w.type(TYP_UNISTR), w.text32Value(U"ab"));
}

std::string smallTree() {
    TreeWriter w("Small", "small");
    fill(w);
    return w.bytes();
}

/* The tree with one type record changed. */
template <typename Change> std::string withType(const char *name, Change change) {
    TreeWriter w("Small", "small");
    fill(w);
    w.finish();
    change(w, w.findType(name));
    return w.bytes();
}

TNode &component(TreeWriter &w, TypeNode father) {
    return w.tNodes[static_cast<std::size_t>(father->refRecord - 1)];
}

constexpr RecNr NOWHERE = 9999;

} // namespace

TEST(BadInput, TruncationAnywhere) {
    std::string file = smallTree();
    std::vector<std::size_t> places = recordBoundaries(file);
    ASSERT_EQ(places.back(), file.size());
    for (std::size_t i = 0; i + 1 < places.size(); ++i)
        for (std::size_t length : {places[i], (places[i] + places[i + 1]) / 2}) {
            SCOPED_TRACE(length);
            expectFatal(file.substr(0, length), fatal(INVALID, "small"));
        }
}

TEST(BadInput, CountsThatDoNotFit) {
    const std::string sound = smallTree();
    for (int kind = REC_MNODE; kind < REC_KINDS; ++kind) {
        for (std::int32_t count : {-1, 0x7FFFFFFF, 1000}) {
            SCOPED_TRACE(testing::Message() << kind << " " << count);
            std::string file = sound;
            pokeCount(file, static_cast<RecKind>(kind), count);
            ProgramRun run = runOn(file);
            EXPECT_TRUE(isClean(run)) << run.err;
            EXPECT_EQ(run.status, 2);
            if (kind == REC_STRI32 || count < 0) {
                EXPECT_EQ(run.err, fatal(INVALID, "small"));
            }
        }
    }
}

TEST(BadInput, CountsOfStrings) {
    const std::string sound = smallTree();
    for (int kind = REC_STRI8; kind <= REC_STRI32; ++kind) {
        std::size_t place = recordOffset(sound, static_cast<RecKind>(kind), 1);
        for (unsigned count : {0u, 32002u, 65535u}) {
            SCOPED_TRACE(testing::Message() << kind << " " << count);
            std::string file = sound;
            pokeTree(file, place, 2, count);
            /* Enough behind it that the count is wrong, and not the length of the file. */
            expectFatal(file + std::string(300000, '\0'), fatal(INVALID, "small"));
        }
    }
    TreeWriter w("Small", "small");
    fill(w);
    w.str(std::string(MAX_STRI_LENGTH - 1, 'x'));
    EXPECT_EQ(runOn(w.bytes()).status, 0);
    w.strings8.back() += 'x';
    expectFatal(w.bytes(), fatal(INVALID, "small"));
}

/* What is done to the record of a type. */
struct Change {
    const char *what;
    const char *type;
    void (*change)(TreeWriter &, TypeNode);
};

TEST(BadInput, ReferencesToRecordsThatDoNotExist) {
    const Change rows[] = {
        {"next definition", "Pair", [](TreeWriter &, TypeNode t) { t->next = NOWHERE; }},
        {"negative next", "Pair", [](TreeWriter &, TypeNode t) { t->next = -1; }},
        {"name", "Pair", [](TreeWriter &, TypeNode t) { t->nameIdx = NOWHERE; }},
        {"components", "Pair", [](TreeWriter &, TypeNode t) { t->refRecord = NOWHERE; }},
        {"next component", "Pair",
         [](TreeWriter &w, TypeNode t) { component(w, t).next = NOWHERE; }},
        {"tag", "Pair", [](TreeWriter &w, TypeNode t) { component(w, t).firstTagRec = NOWHERE; }},
        {"next tag", "Pair", [](TreeWriter &w, TypeNode) { w.tagRecs.front().next = NOWHERE; }},
        {"synonym", "Pair", [](TreeWriter &w, TypeNode t) { component(w, t).refRecord = NOWHERE; }},
        {"module of a synonym", "Pair",
         [](TreeWriter &w, TypeNode t) { component(w, t).refModule = 7; }},
        {"constraint", "Size", [](TreeWriter &, TypeNode t) { t->constraintRec = NOWHERE; }},
        {"path", "Chosen", [](TreeWriter &, TypeNode t) { t->auxRecord = NOWHERE; }},
        {"target of a path", "Chosen",
         [](TreeWriter &w, TypeNode) { w.sNodes.front().refRecord = NOWHERE; }},
        {"element", "Pick",
         [](TreeWriter &w, TypeNode t) {
             t->mainType = TYP_SEQOF;
             t->refRecord = NOWHERE;
             (void)w;
         }},
    };
    for (const Change &row : rows) {
        SCOPED_TRACE(row.what);
        expectFatal(withType(row.type, row.change), fatal(NO_RECORD));
    }
}

TEST(BadInput, ListsAndChainsThatComeBack) {
    const Change rows[] = {
        {"definitions", "Pair", [](TreeWriter &, TypeNode t) { t->next = t.nr; }},
        {"longer circle of definitions", "Chosen",
         [](TreeWriter &w, TypeNode t) { t->next = w.header().firstTNode; }},
        {"components", "Pair",
         [](TreeWriter &w, TypeNode t) { component(w, t).next = t->refRecord; }},
        {"tags", "Pair", [](TreeWriter &w, TypeNode) { w.tagRecs.front().next = 1; }},
        {"synonym of itself", "Size",
         [](TreeWriter &, TypeNode t) {
             t->mainType = TYP_SYNONYM;
             t->refModule = 1;
             t->refRecord = t.nr;
         }},
        {"structure in itself", "Pair",
         [](TreeWriter &w, TypeNode t) {
             TNode &inner = component(w, t);
             inner.mainType = TYP_SEQ;
             inner.refRecord = t->refRecord;
             inner.refModule = 0;
             inner.nrOfComps = 1;
             inner.next = 0;
         }},
        {"selection of itself", "Chosen",
         [](TreeWriter &w, TypeNode t) { w.sNodes.front().refRecord = t.nr; }},
    };
    for (const Change &row : rows) {
        SCOPED_TRACE(row.what);
        expectFatal(withType(row.type, row.change), fatal(INCONSISTENT, "small"));
    }
}

TEST(BadInput, ModulesThatImportOneAnotherAreReported) {
    WorkDir dir;
    TreeWriter a("Mod_A", "moda"), b("Mod_B", "modb");
    a.define("A", a.sequence({a.comp("flag", a.boolean())})).entry();
    b.define("B", b.sequence({b.comp("a", b.ref(a, "A"))})).entry();
    a.import(b);
    ASSERT_TRUE(a.save(dir.path("moda.stx")) && b.save(dir.path("modb.stx")));
    const std::string warning = "warning: Circular ASN.1 module imports detected.\n";
    ProgramRun run = runVelmo(dir, {"moda", "modb"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.err.find(warning), std::string::npos);
    /* A file that takes the number of a closed stream must not take its messages too. */
    EXPECT_EQ(runProgram(dir, "sh", {"-c", std::string(velmoProgram) + " moda modb 2>&-"}).status,
              0);
    EXPECT_EQ(dir.read("moda.typ").find(warning), std::string::npos);
}

TEST(BadInput, AnyWordOfATreeMayBeWrong) {
    const std::string sound = smallTree();
    const std::uint64_t numbers[] = {0xFFFFFFFF, 0x7FFFFFFF, 1, 0x12345678, 0, 12};
    std::size_t end = recordOffset(sound, REC_STRI8, 1), turn = 0;
    for (std::size_t place = 0; place + 4 <= end; place += 8) {
        SCOPED_TRACE(place);
        std::string file = sound;
        pokeTree(file, place, 4, numbers[turn++ % std::size(numbers)]);
        ProgramRun run = runOn(file);
        ASSERT_TRUE(isClean(run)) << run.status << run.err;
    }
}

TEST(BadInput, OptionFiles) {
    WorkDir dir;
    dir.write("small.stx", smallTree());
    EXPECT_EQ(runVelmo(dir, {"small"}).err, "") << "the tree itself is sound";
    std::string bytes;
    for (int i = 0; i < 4096; ++i)
        bytes.push_back(static_cast<char>(i % 256));
    const std::string files[] = {"",
                                 "\n\n\n",
                                 std::string(100000, '-'),
                                 "-" + std::string(600, 'x'),
                                 std::string(1000, ' ') + "-DEF=no",
                                 "-\n--\n-=\n-BEO=\n-BEO=VELMO=",
                                 "-" + bytes,
                                 "-TYP=\0no\n"};
    for (const std::string &file : files) {
        dir.write("odd.opt", file);
        ProgramRun run = runVelmo(dir, {"+odd.opt", "small"});
        EXPECT_TRUE(isClean(run)) << run.status << run.err;
    }
    ProgramRun run = runVelmo(dir, {"+/dev/zero", "small"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.err, fatal("Can not read from file", "/dev/zero"));
}
