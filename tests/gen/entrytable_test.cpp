#include <gtest/gtest.h>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"

/* Entry tables with their defines and access functions, column by column. */

namespace {

struct TableCase {
    const char *name;
    void (*build)(TreeWriter &);
    std::vector<const char *> options = {}; /* general ones */
    std::vector<const char *> toolOptions = {};
    std::vector<std::string> suffixes = {".tab", ".def"};
    std::vector<std::string> flags = {}; /* for the compilers */
    const char *header = "";             /* what the application declares */
};

/* A row for each kind of type and tag; which functions it names depends on the entry. */
void rows(TreeWriter &w) {
    w.define("Msg", w.sequence({w.comp("a", w.integer(0, 9)), w.comp("b", w.null()).optional()}))
        .entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("Not_An_Entry", w.integer(0, 5));
    w.define("Asked_only", w.integer(0, 255)).application(5).entry(ENTRY_ASK);
    w.define("Printed", w.string(TYP_IA5STR, 1, 4)).explicitly(1000).entry(ENTRY_PRINT);
    w.define("Nobody", w.enumerated({{"x", 0}})).entry(0);
    w.define("Untagged", w.choice({w.comp("x", w.boolean()), w.comp("y", w.null())})).entry();
    w.define("Tagged", w.choice({w.comp("x", w.boolean())})).explicitly(2).entry();
    w.define("Anything", w.any()).entry();
    w.define("List", w.listOf(TYP_SETOF, w.ref("Msg")).asList()).entry();
    w.define("Same", w.ref("Msg")).entry();
    w.define("A_name_of_more_than_thirty_two_characters", w.boolean()).entry();
    w.define("Gone", w.sequence({w.comp("g", w.boolean())}).skipped()).entry();
}

void twoRows(TreeWriter &w) {
    w.define("First", w.sequence({w.comp("a", w.boolean())})).entry(ENTRY_ALL_FUNCTIONS, 0x01);
    w.define("Second", w.integer(0, 9)).entry(ENTRY_ALL_FUNCTIONS, 0x06);
}

/* In an application of its own kind a row counts components, and names the variables that hold
   them. */
void components(TreeWriter &w) {
    w.define("Msg", w.sequence({w.comp("first", w.integer(0, 9)),
                                w.comp("Second_one", w.null()).optional(), w.marker()}))
        .entry();
    w.define("Same", w.ref("Msg")).entry();
    w.define("Empty", w.sequence({})).entry();
    w.define("Number", w.integer(0, 9)).entry();
    w.define("Numbers", w.listOf(TYP_SEQOF, w.ref("Number")).asList()).entry();
    w.define("Alias", w.ref("Number")).entry();
    w.define("Pick", w.choice({w.comp("x", w.null()), w.comp("y", w.ref("Number"))})).entry();
    w.define("Other", w.sequence({w.comp("first", w.boolean())})).entry();
    const TypeNode head =
        w.parameterisedHead("Param", w.sequence({w.comp("x", w.null()), w.comp("y", w.null())}));
    w.define("Instance", w.instance(head)).entry();
    w.define("Of_Instance", w.ref("Instance")).entry();
    w.define("Of_That", w.ref("Of_Instance")).entry();
}

/* The number of components is that of their walk, whatever the tree says. */
void miscounted(TreeWriter &w) {
    w.define("Msg", w.sequence({w.comp("first", w.integer(0, 9)),
                                w.comp("Second_one", w.null()).optional(), w.marker()}))
        .entry();
    w.finish();
    w.findType("Msg")->nrOfComps = 2;
}

constexpr const char *VARIABLES =
    "enum { asn_first, asn_Second_one, asn_extensionmarker, asn_empty, asn_number, asn_numbers,\n"
    "       asn_alias, asn_iNTEGER, asn_x, asn_y };\n";

const TableCase cases[] = {
    {"rows", rows, {"-TAB=yes", "-TDEFS=yes", "-TST=1:1"}},
    {"rows_short", rows, {"-TAB=yes", "-NAMELEN=8", "-COD=0"}, {"-ENTRYTAG=WARN"}, {".tab"}},
    {"no_functions", twoRows, {"-TAB=yes", "-GENERATE=visibles"}, {}, {".tab"}},
    {"all_columns",
     twoRows,
     {"-TAB=yes", "-ALTTAB=yes", "-ALTMAX=3", "-ALTENCF=0:1", "-ALTENCF=2:012", "-ALTDECF=1:2",
      "-TABREF=ref", "-TST=1:1"},
     {"-TAB-CODFUNC=put:get:own.h", "-TAB-TSTFUNC=:show:own.h"},
     {".tab", ".def"},
     {"-DASN_ALT_TAB=1", "-DASN_ALT_MAX=3", "-DASN_TABREF=1"},
     "void putFirst(void), getFirst(void), putSecond(void), getSecond(void), askFirst(void);\n"
     "void showFirst(void), askSecond(void), showSecond(void), altEnc2First(void);\n"
     "void altEnc0Second(void), altEnc2Second(void), altDec1Second(void);\n"
     "extern int refTabFirst[], refTabSecond[];\n"},
    {"no_alternatives",
     twoRows,
     {"-TAB=yes", "-ALTTAB=yes"},
     {"-TAB-CODFUNC=put::"},
     {".tab", ".def"},
     {},
     "void putFirst(void), putSecond(void);\n"},
    {"exported",
     twoRows,
     {"-TAB=yes", "-TABF=yes", "-TDEFS=yes"},
     {"-TAB-CODFUNC=::own.h"},
     {"tab.c", "tab.ext", ".def"},
     {},
     "void encFirst(void), decFirst(void), encSecond(void), decSecond(void);\n"},
    {"exported_old",
     twoRows,
     {"-TAB=yes", "-TABF=yes", "-ANSI-C=no", "-C-GENERATION=OLD"},
     {},
     {"tab.c", "tab.ext"}},
    {"counted", components, {"-MORLA=2"}, {"-TAB-MORLA-PARAM=no"}, {".tab"}, {"-DASN_TABPARAM=1"}},
    {"listed", components, {"-MORLA=2"}, {}, {".tab"}, {"-DASN_TABPARAM=2"}, VARIABLES},
    {"miscounted", miscounted, {"-MORLA=2"}, {}, {".tab"}, {"-DASN_TABPARAM=2"}, VARIABLES},
    {"listed_referenced",
     components,
     {"-MORLA=2", "-OPTVARS=yes"},
     {},
     {".tab"},
     {"-DASN_TABPARAM=2"},
     VARIABLES},
    {"shared",
     components,
     {"-MORLA=2", "-TABO=yes", "-TABF=yes"},
     {},
     {".tab", "tab.ext"},
     {"-DASN_TABPARAM=3"},
     VARIABLES},
};

[[maybe_unused]] void PrintTo(const TableCase &value, std::ostream *out) {
    *out << value.name;
}

class EntryTable : public testing::TestWithParam<TableCase> {};

/* A source that includes the table and reads it; one that is exported stands alone. */
std::string tableUser(const TableCase &table) {
    std::string source = std::string("#include \"town.h\"\n");
    if (std::string(table.suffixes.front()) == "tab.c")
        return source + "#include \"ttab.c\"\n";
    return source + "#include \"t.tab\"\n"
                    "const ENTRYDESCR *row(int n);\n"
                    "const ENTRYDESCR *row(int n) { return tEntryDescr + n; }\n";
}

TEST_P(EntryTable, IsWrittenAsExpectedAndCompiles) {
    WorkDir dir;
    TreeWriter w("Table_Module", "t");
    w.backendOption("-ACCESS-ROUTINES=NONE");
    addOptions(w, GetParam().options, GetParam().toolOptions);
    GetParam().build(w);
    const std::string files = generatedFiles(dir, {&w}, GetParam().suffixes);
    EXPECT_EQ(compareGolden(std::string("entrytable/") + GetParam().name + ".txt", files), "");
    dir.write("town.h",
              std::string("#ifndef TOWN_H\n#define TOWN_H\n") + GetParam().header + "#endif\n");
    dir.write("user.c", tableUser(GetParam()));
    EXPECT_EQ(compilerMessages(dir, {"user.c"}, GetParam().flags), "");
}

INSTANTIATE_TEST_SUITE_P(Gen, EntryTable, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

/* The index of an access function has as many bits as the rows need. */
TEST(EntryTableDirect, IndexGrowsWithTheTable) {
    for (const int count : {256, 257}) {
        WorkDir dir;
        TreeWriter w("Long_Module", "t");
        w.option("-TAB=yes");
        w.option("-TABF=yes");
        w.option("-TDEFS=yes");
        w.option("-COD=0");
        for (int i = 0; i < count; ++i)
            w.define("T" + std::to_string(i), w.boolean()).entry();
        const std::string text = generatedFiles(dir, {&w}, {"tab.c", ".def"});
        const std::string index = count == 256 ? "uint8" : "uint16";
        EXPECT_NE(text.find("\nENTRYDESCR* asntEntryDescr (" + index +
                            " index)\n{\nreturn (index < " + std::to_string(count) +
                            " ? tEntryDescr + index : NULL);\n}\n"),
                  std::string::npos);
        EXPECT_NE(text.find("#define tT255 255\n"), std::string::npos);
        EXPECT_NE(text.find("#define tEntryDescr_cnt " + std::to_string(count) + "\n"),
                  std::string::npos);
    }
}

/* A synonym of another module's type shares its list with what stands for the same type. */
TEST(EntryTableDirect, ListsAreSharedAcrossModules) {
    WorkDir dir;
    TreeWriter base("Base_Module", "base");
    base.define("Msg",
                base.sequence({base.comp("a", base.boolean()), base.comp("b", base.null())}));
    TreeWriter w("User_Module", "t");
    w.option("-MORLA=2");
    w.option("-TABO=yes");
    w.import(base);
    w.define("Once", w.ref(base, "Msg")).entry();
    w.define("Between", w.sequence({w.comp("c", w.boolean())})).entry();
    w.define("Twice", w.ref("Once")).entry();
    EXPECT_EQ(
        compareGolden("entrytable/shared_across.txt", generatedFiles(dir, {&w, &base}, {".tab"})),
        "");
}

} // namespace
