#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "tests/support/gencase.h"
#include "tests/support/golden.h"
#include "tests/support/paths.h"

/* Classes, objects and sets: the structures, the defines and the tables of small modules, which
   both compilers take. */

namespace {

struct ObjectCase {
    const char *name;
    std::function<void(TreeWriter &)> build;
    std::vector<const char *> options = {};
    std::vector<const char *> toolOptions = {};
    std::vector<std::string> suffixes = {".typ", ".tab", ".def"};
    const char *flag = "-DASN_TABN=1"; /* for the compilers; null: it is not for them */
};

/* A node as an element of a set, or a set written in a field. */
TypeNode setOf(TreeWriter &w, TypeNode governor, RecNr elements) {
    governor.constrained(elements)->nodeFlags |= NODE_SET;
    (void)w;
    return governor;
}

RecNr objectRef(TreeWriter &w, const char *name) {
    return w.single(w.valueRef(name));
}

void define(TreeWriter &w, const char *name, const char *objClass,
            std::initializer_list<ValueNode> parts) {
    const ValueNode object = w.listValue(TYP_CLASS, std::vector<ValueNode>(parts));
    w.defineValue(name, w.ref(objClass), object);
}

ValueNode nameless(TreeWriter &w, const char *objClass, std::initializer_list<ValueNode> parts) {
    const ValueNode object = w.listValue(TYP_CLASS, std::vector<ValueNode>(parts));
    object.governedBy(w.findType(objClass))->compStatus = 0;
    return object;
}

/* Each kind of field, set, left out and by default; two classes with their objects in between; sets
   that contain sets, inline objects in fields and in sets. */
void kinds(TreeWriter &w) {
    const TypeNode id = w.valueField("id", w.integer(0, 255));
    const TypeNode arg = w.typeField("Arg").optional();
    const TypeNode next = w.valueField("next", w.ref("OP")).optional();
    const TypeNode codes = w.setField("Codes", w.ref("Code")).optional();
    const TypeNode errors = w.setField("Errors", w.ref("ERROR")).optional();
    const TypeNode urgent = w.valueField("urgent", w.boolean());
    urgent.defaultTo(w.boolValue(true));
    w.define("OP", w.objectClass({id, arg, next, codes, errors, urgent}));
    const TypeNode number = w.valueField("number", w.ref("Code"));
    w.define("ERROR", w.objectClass({number}));
    w.define("Code", w.integer(0, 99));
    w.define("Msg", w.sequence({w.comp("x", w.boolean())})).entry();

    const auto set = [&](RecNr elements) { return setOf(w, w.ref("ERROR"), elements); };
    define(w, "op1", "OP", {w.fieldValue(id, w.intValue(5)), w.fieldType(arg, w.ref("Msg"))});
    define(w, "bad", "ERROR", {w.fieldValue(number, w.intValue(1))});
    const RecNr list = w.sub(SUB_UNION, {w.single(w.intValue(7)), w.range(1, 3)});
    define(w, "op2", "OP",
           {w.fieldValue(id, w.intValue(6)), w.fieldValue(next, w.valueRef("op1")),
            w.fieldType(codes, setOf(w, w.ref("Code"), list)),
            w.fieldType(errors, set(objectRef(w, "worse"))),
            w.fieldValue(urgent, w.boolValue(false))});
    define(w, "worse", "ERROR", {w.fieldValue(number, w.intValue(2))});
    w.defineSet("Bad", w.ref("ERROR"), objectRef(w, "bad"));
    const RecNr bad = w.includes(w.findType("Bad"));
    const ValueNode inlineError = nameless(w, "ERROR", {w.fieldValue(number, w.intValue(3))});
    const RecNr all = w.sub(SUB_UNION, {bad, w.single(inlineError), w.sub(SUB_EXTENDED_VALUE_SET)});
    w.defineSet("Errors", w.ref("ERROR"), all);
    const ValueNode inner = nameless(w, "OP", {w.fieldValue(id, w.intValue(8))});
    define(w, "op3", "OP",
           {w.fieldValue(id, w.intValue(7)), w.fieldValue(next, inner),
            w.fieldType(codes, setOf(w, w.ref("Code"), w.single(w.intValue(9)))),
            w.fieldType(errors, set(bad))});
}

/* Every form that a value can have in a row. */
void makeValues(TreeWriter &w, bool withKept) {
    w.define("Colour", w.enumerated({{"red", 0}, NamedNumber::extension(), {"blue", 5}}));
    const TypeNode a = w.comp("a", w.integer(0, 9));
    const TypeNode c = w.comp("c", w.ref("Colour")).optional();
    w.define("Pair", w.sequence({a, w.comp("b", w.boolean()).optional(), c}));
    const TypeNode t = w.comp("t", w.string(TYP_IA5STR, 1, 8));
    w.define("Pick", w.choice({w.comp("n", w.integer(0, 9)), t}));
    const TypeNode p = w.comp("p", w.ref("Pick"));
    w.define("Kept", w.sequence({p}));
    std::vector<TypeNode> f;
    const auto field = [&](const char *name, TypeNode type) {
        f.push_back(w.valueField(name, type).optional());
    };
    field("colour", w.ref("Colour"));
    field("pair", w.ref("Pair"));
    field("pick", w.ref("Pick"));
    field("word", w.string(TYP_PRISTR, 1, 8));
    field("bytes", w.string(TYP_OCTSTR, 0, 8));
    field("bits", w.string(TYP_BITSTR, 0, 12));
    field("id", w.type(TYP_OBJID));
    field("real", w.real());
    field("nothing", w.null());
    if (withKept)
        field("kept", w.ref("Kept"));
    w.define("BOX", w.structure(TYP_CLASS, f));

    const ValueNode red = w.fieldValue(a, w.intValue(4)).named("a");
    const ValueNode blue = w.fieldValue(c, w.itemOf("Colour", "blue")).named("c");
    const ValueNode pair = w.listValue(TYP_SEQ, {red, blue});
    const auto chosen = [&] {
        return w.listValue(TYP_CHOICE, {w.fieldValue(t, w.textValue(TYP_IA5STR, "hi")).named("t")});
    };
    const ValueNode choice = chosen();
    const ValueNode kept = w.listValue(TYP_SEQ, {w.fieldValue(p, chosen()).named("p")});
    const ValueNode id =
        w.objectIdentifier({w.intValue(1).named("iso"), w.intValue(3), w.intValue(6)});
    std::vector<ValueNode> parts = {w.fieldValue(f[0], w.itemOf("Colour", "blue")),
                                    w.fieldValue(f[1], pair),
                                    w.fieldValue(f[2], choice),
                                    w.fieldValue(f[3], w.textValue(TYP_PRISTR, "w\\or\"d")),
                                    w.fieldValue(f[4], w.hexValue("0AFF0")),
                                    w.fieldValue(f[5], w.bitsValue("101000001")),
                                    w.fieldValue(f[6], id),
                                    w.fieldValue(f[7], w.realValue(15, 10, -1)),
                                    w.fieldValue(f[8], w.nullValue())};
    if (withKept)
        parts.push_back(w.fieldValue(f[9], kept));
    w.defineValue("full", w.ref("BOX"), w.listValue(TYP_CLASS, parts));
}

void values(TreeWriter &w) {
    makeValues(w, false);
}

/* A structure that no constant can hold, and fields that are left out: a 0 stands for what C holds
   in a structure, so compilers would count the members wrongly. */
void missingValues(TreeWriter &w) {
    makeValues(w, true);
    define(w, "bare", "BOX", {});
}

/* Fields that a row has no value for, each for another reason; a skipped class has neither
   structure nor table, and a class whose one object stands in a skipped field has no table. */
void skipped(TreeWriter &w) {
    const TypeNode gone = w.valueField("gone", w.integer(0, 9)).skipped();
    const TypeNode kind = w.typeField("Kind");
    TypeNode varies = w.valueField("varies", w.classField(w.ref("HALF"), {kind}));
    varies->nodeFlags |= NODE_VARIABLE_TYPE_FIELD;
    const TypeNode governed = w.valueField("governed", w.ref("Away"));
    const TypeNode other = w.valueField("other", w.ref("NONE"));
    const TypeNode id = w.valueField("id", w.integer(0, 9));
    const TypeNode alone = w.valueField("alone", w.ref("ROWLESS")).skipped();
    w.define("HALF", w.objectClass({gone, kind, varies, governed, other, id, alone}));
    w.define("ROWLESS", w.objectClass({w.valueField("n", w.integer(0, 9))}));
    w.define("NONE", w.objectClass({w.valueField("n", w.integer(0, 9))})).skipped();
    w.define("Away", w.sequence({w.comp("x", w.null())}).skipped());
    w.define("Msg", w.sequence({w.comp("x", w.null())})).entry();
    define(w, "half", "HALF",
           {w.fieldType(kind, w.ref("Msg")), w.fieldValue(id, w.intValue(1)),
            w.fieldValue(alone, nameless(w, "ROWLESS", {}))});
    define(w, "none", "NONE", {});
    w.defineSet("Nones", w.ref("NONE"), objectRef(w, "none"));
}

/* Masks of two words: no term, terms in one word, in the other, and in both. */
void masks(TreeWriter &w) {
    std::vector<TypeNode> f;
    for (int i = 0; i < 40; ++i) {
        f.push_back(w.valueField("f" + std::to_string(i), w.boolean()));
        if (i == 3 || i == 35 || i == 36)
            f.back().optional();
    }
    w.define("WIDE", w.structure(TYP_CLASS, f));
    const auto object = [&](const char *name, std::initializer_list<int> set) {
        std::vector<ValueNode> parts;
        for (const int nr : set)
            parts.push_back(w.fieldValue(f[static_cast<std::size_t>(nr)], w.boolValue(true)));
        w.defineValue(name, w.ref("WIDE"), w.listValue(TYP_CLASS, parts));
    };
    object("none", {});
    object("low", {3});
    object("high", {35});
    object("all", {3, 35, 36});
}

/* Types that are written in a field go by the names of field and class. */
void nested(TreeWriter &w) {
    const auto number = [&] { return w.numbered(w.integer(0, 9), {{"few", 1}, {"many", 5}}); };
    const TypeNode inner = w.comp("inner", w.sequence({w.comp("x", w.boolean()).optional()}));
    const TypeNode seq = w.valueField("seq", w.sequence({inner, w.comp("n", number())}));
    const TypeNode values =
        w.setField("Values", w.sequence({w.comp("v", w.integer(0, 9))})).optional();
    const TypeNode count = w.valueField("count", number());
    const TypeNode self = w.setField("Self", w.ref("NEST")).optional();
    w.define("NEST", w.objectClass({seq, values, count, self}));
    w.define("ALIAS", w.ref("NEST"));
}

/* Sets of values that have structures in C, of types with a name and of types written in the field;
   one field of each is left out. */
void valueSets(TreeWriter &w) {
    const TypeNode a = w.comp("a", w.integer(0, 9));
    w.define("Pair", w.sequence({a, w.comp("b", w.boolean()).optional()}));
    w.define("Colour", w.enumerated({{"red", 0}, NamedNumber::extension(), {"blue", 5}}));
    const TypeNode v = w.comp("v", w.integer(0, 9));
    const TypeNode colours = w.setField("Colours", w.ref("Colour"));
    const TypeNode pairs = w.setField("Pairs", w.ref("Pair")).optional();
    const TypeNode words = w.setField("Words", w.string(TYP_IA5STR, 1, 8)).optional();
    const TypeNode own = w.setField("Own", w.sequence({v})).optional();
    w.define("SETS", w.objectClass({colours, pairs, words, own}));

    const auto elements = [&](TypeNode governor, ValueNode one, ValueNode other) {
        return setOf(w, governor, w.sub(SUB_UNION, {w.single(one), w.single(other)}));
    };
    const auto written = [&](TypeNode field) { return w.refTo(1, field.nr); };
    const auto structure = [&](TypeNode comp, const char *name, int number) {
        const ValueNode value = w.fieldValue(comp, w.intValue(number)).named(name);
        return w.listValue(TYP_SEQ, {value});
    };
    const auto colour = [&](const char *name) { return w.itemOf("Colour", name); };
    const auto word = [&](const char *text) { return w.textValue(TYP_IA5STR, text); };
    define(w, "full", "SETS",
           {w.fieldType(colours, elements(w.ref("Colour"), colour("red"), colour("blue"))),
            w.fieldType(pairs, elements(w.ref("Pair"), structure(a, "a", 1), structure(a, "a", 2))),
            w.fieldType(words, elements(written(words), word("one"), word("two"))),
            w.fieldType(own, elements(written(own), structure(v, "v", 3), structure(v, "v", 4)))});
    define(w, "bare", "SETS",
           {w.fieldType(colours, setOf(w, w.ref("Colour"), w.single(colour("blue"))))});
}

/* Objects that name their class in two ways stand in one table, which is named as the first of them
   does. */
void alias(TreeWriter &w) {
    const TypeNode next = w.valueField("next", w.ref("OP")).optional();
    w.define("OP", w.objectClass({next}));
    w.define("ALIAS", w.ref("OP"));
    define(w, "plain", "OP", {w.fieldValue(next, w.valueRef("other"))});
    define(w, "other", "ALIAS", {w.fieldValue(next, w.valueRef("plain"))});
}

const ObjectCase cases[] = {
    {"kinds", kinds, {"-TDEFS=yes"}},
    {"kinds_separate",
     kinds,
     {"-TDEFS=yes", "-TABO=yes", "-TABF=yes"},
     {"-TAB-VALUE-SET-N=yes"},
     {".typ", "tab.c", "tab.ext"}},
    {"kinds_morla",
     kinds,
     {"-MORLA=2", "-TABO=yes"},
     {"-ACCESS-ROUTINES=NONE"},
     {".tab", "tab.ext"},
     "-DASN_TABPARAM=3"},
    {"values", values, {}, {}, {".typ", ".tab"}},
    {"missing_values", missingValues, {}, {}, {".tab"}, nullptr},
    {"skipped", skipped, {"-TDEFS=yes"}, {}, {".typ", ".tab"}},
    {"omitted", skipped, {"-OMIT-SKIPPED-FIELDS=yes"}, {}, {".typ", ".tab"}},
    {"masks", masks, {"-TDEFS=no"}, {}, {".tab"}},
    {"nested", nested, {}, {}, {".typ", ".def"}},
    {"value_sets", valueSets, {}, {"-TAB-VALUE-SET-N=yes"}, {".typ", ".tab"}},
    {"value_sets_separate", valueSets, {"-TABO=yes"}, {}, {".tab"}},
    {"alias", alias, {"-TDEFS=yes"}, {}, {".tab", ".def"}},
};

[[maybe_unused]] void PrintTo(const ObjectCase &value, std::ostream *out) {
    *out << value.name;
}

class ObjectTables : public testing::TestWithParam<ObjectCase> {};

TEST_P(ObjectTables, AreWrittenAsExpectedAndCompile) {
    WorkDir dir;
    TreeWriter w("Object_Module", "m");
    w.option("-TAB=yes");
    w.option("-COD=0");
    addOptions(w, GetParam().options, GetParam().toolOptions);
    GetParam().build(w);
    const std::string files = generatedFiles(dir, {&w}, GetParam().suffixes);
    EXPECT_EQ(compareGolden(std::string("objecttables/") + GetParam().name + ".txt", files), "");
    if (GetParam().flag == nullptr)
        return;
    std::string table = dir.has("mtab.c") ? "mtab.c" : "m.tab";
    if (!dir.has(table))
        table = "m.typ";
    dir.write("user.c", "enum { asn_x };\n#include \"" + table + "\"\n#include \"m.def\"\n");
    EXPECT_EQ(compilerMessages(dir, {"user.c"}, {"-Wno-unused-variable", GetParam().flag}), "");
}

INSTANTIATE_TEST_SUITE_P(Gen, ObjectTables, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

ProgramRun runTables(const WorkDir &dir, TreeWriter &w) {
    w.option("-TAB=yes");
    EXPECT_TRUE(w.save(dir.path("m.stx")));
    return runVelmo(dir, {"-VERBOSE=quiet", "m"});
}

TEST(ObjectTablesDirect, ReportWhatCannotStandInARow) {
    WorkDir dir;
    TreeWriter w("Object_Module", "m");
    w.define("Code", w.integer(0, 99));
    const TypeNode kind = w.typeField("Kind"), codes = w.setField("Codes", w.ref("Code"));
    w.define("OP", w.objectClass({kind, codes}));
    w.define("Plain", w.sequence({w.comp("x", w.null())}));
    const TypeNode numbers = setOf(w, w.ref("Code"), w.range(1, 17));
    define(w, "op", "OP", {w.fieldType(kind, w.ref("Plain")), w.fieldType(codes, numbers)});
    const ProgramRun run = runTables(dir, w);
    EXPECT_EQ(run.status, 0);
    const std::string table = dir.read("m.tab"),
                      text = "NULL /* ONLY ENTRY TYPES ARE SUPPORTED HERE */";
    ASSERT_NE(table.find(text), std::string::npos);
    const auto line =
        std::count(table.begin(), table.begin() + static_cast<long>(table.find(text)), '\n') + 1;
    const auto warning = [](long at, const char *what) {
        return "WARNING: m.tab:" + std::to_string(at) + ": " + what + "\n";
    };
    EXPECT_EQ(run.out, warning(line, "Non-entry type as a type field value.") +
                           warning(line + 1, "A set of 17 elements in a row: MAX_ASN_SET_ELEMS has "
                                             "to be as great."));
}

/* A field with the name of its own class, which C++ doesn't take, and an object of a class that
   nothing gives a name; both classes are predefined. */
TEST(ObjectTablesDirect, FieldsDontHideTheirTypesWhereWordsOfCPlusPlusCount) {
    WorkDir dir;
    TreeWriter w("Object_Module", "m");
    w.backendOption("-CPLUSPLUS=YES");
    w.define("MY_ID", w.type(TYP_TYPE_ID));
    const TypeNode syntaxes = w.setField("Syntaxes", w.type(TYP_ABSTR_STX));
    const TypeNode own = w.valueField("MY_ID", w.ref("MY_ID"));
    w.define("USER", w.objectClass({syntaxes, own}));
    ASSERT_TRUE(runTables(dir, w).status == 0);
    const ProgramRun built =
        runProgram(dir, "g++", {"-x", "c++", "-std=c++17", "-Wall", "-Wextra", "-pedantic", "-Werror",
                                "-I" + sourceDir + "/rts", "-fsyntax-only", "m.typ"});
    EXPECT_EQ(built.status, 0) << built.err;
}

/* A class, types and objects of another module: the class and the types are written there alone,
   even in a run that comes to them from here first, and a reference names the row of the other
   module's table. */
TEST(ObjectTablesDirect, OtherModules) {
    WorkDir dir;
    TreeWriter base("Base_Module", "base"), w("Object_Module", "m");
    for (TreeWriter *tree : {&base, &w})
        for (const char *option : {"-TAB=yes", "-TABF=yes", "-COD=0"})
            tree->option(option);
    const TypeNode id = base.valueField("id", base.integer(0, 9));
    base.define("OP", base.objectClass({id}));
    base.define("Code", base.enumerated({{"low", 0}, {"high", 9}}));
    base.define("Pick", base.choice({base.comp("code", base.ref("Code"))}));
    define(base, "first", "OP", {base.fieldValue(id, base.intValue(1))});
    define(base, "second", "OP", {base.fieldValue(id, base.intValue(2))});
    base.defineSet("Set", base.ref("OP"), base.single(nameless(base, "OP", {})));
    const std::int32_t import = w.import(base);
    const TypeNode op = w.valueField("op", w.ref(base, "OP"));
    const TypeNode code = w.valueField("code", w.ref(base, "Code")).optional();
    const TypeNode codes = w.setField("Codes", w.ref(base, "Code")).optional();
    const TypeNode pick = w.valueField("pick", w.ref(base, "Pick")).optional();
    w.define("USER", w.objectClass({op, code, codes, pick}));
    w.define("LOCAL", w.ref(base, "OP"));
    define(w, "user", "USER",
           {w.fieldValue(op, w.valueRefTo(import, base.findValue("second").nr)),
            w.fieldValue(code, w.intValue(9))});
    define(w, "local", "LOCAL", {});
    w.defineSet("Locals", w.ref("LOCAL"), w.single(w.valueRef("local")));
    const ValueNode set = w.value(TYP_NONE);
    set->refModule = import;
    set->refRecord = base.findType("Set").nr;
    const RecNr contained = w.sub(SUB_INCLUDES);
    w.subRecs[static_cast<std::size_t>(contained) - 1].first = set;
    w.defineSet("Near", w.ref(base, "OP"), contained);
    EXPECT_EQ(compareGolden("objecttables/other_modules.txt",
                            generatedFiles(dir, {&w, &base}, {".typ", "tab.c", "tab.ext"})),
              "");
    EXPECT_EQ(runVelmo(dir, {"-VERBOSE=quiet", "m", "base"}).status, 0);
    EXPECT_NE(dir.read("base.typ").find(" Code;\n"), std::string::npos);
    EXPECT_EQ(compilerMessages(dir, {"mtab.c", "basetab.c"}), "");
}

/* Static tables stand in one source with those that they name. An inline object in a skipped field
   takes no row from another one; the default of a class that has no object of its own has none.
   Members that no constant holds take no place from those behind them. */
TEST(ObjectTablesDirect, RowsNameTheObjectsThatAreMeant) {
    WorkDir dir;
    TreeWriter base("Base_Module", "base"), w("Object_Module", "m");
    const TypeNode id = base.valueField("id", base.integer(0, 9));
    base.define("OP", base.objectClass({id}));
    const auto op = [&](int number) {
        return nameless(base, "OP", {base.fieldValue(id, base.intValue(number))});
    };
    const ValueNode lost = op(8);
    const TypeNode kept = base.valueField("op", base.ref("OP")).defaultTo(lost);
    lost.governedBy(base.findType("OP"));
    base.define("LOST", base.objectClass({kept}));
    define(base, "first", "OP", {base.fieldValue(id, base.intValue(1))});
    define(base, "second", "OP", {base.fieldValue(id, base.intValue(2))});
    const std::int32_t import = w.import(base);
    const TypeNode own = w.valueField("n", w.integer(0, 9));
    w.define("OWN", w.objectClass({own}));
    const auto inner = [&](int number) {
        return nameless(w, "OWN", {w.fieldValue(own, w.intValue(number))});
    };
    const TypeNode number = w.comp("b", w.integer(0, 9));
    w.define("Pick", w.choice({w.comp("a", w.sequence({w.comp("x", w.boolean())})), number}));
    const TypeNode skipped = w.valueField("skipped", w.ref("OWN")).skipped();
    const TypeNode far = w.valueField("far", w.ref(base, "OP"));
    const TypeNode time = w.valueField("time", w.type(TYP_UTCTIME)).optional();
    const TypeNode one = w.valueField("one", w.ref("Pick")).optional();
    const TypeNode other = w.valueField("other", w.ref("Pick")).optional();
    const TypeNode octets = w.valueField("octets", w.string(TYP_OCTSTR));
    const TypeNode picks = w.setField("Picks", w.ref("Pick"));
    const TypeNode near_ = w.valueField("own", w.ref("OWN"));
    w.define("ROW", w.objectClass({skipped, far, time, one, other, octets, picks, near_}));
    ValueNode pick = w.listValue(TYP_CHOICE, {w.fieldValue(number, w.intValue(5)).named("b")});
    define(w, "row", "ROW",
           {w.fieldValue(skipped, inner(1)),
            w.fieldValue(far, w.valueRefTo(import, base.findValue("second").nr)),
            w.fieldValue(octets, w.hexValue("0AFF")),
            w.fieldType(picks, setOf(w, w.ref("Pick"), w.single(pick))),
            w.fieldValue(near_, inner(2))});
    w.defineValue("lost", w.ref(base, "LOST"), w.object(w.ref(base, "LOST"), {}));
    for (TreeWriter *tree : {&base, &w})
        for (const char *option : {"-TAB=yes", "-COD=0"})
            tree->option(option);
    ASSERT_TRUE(base.save(dir.path("base.stx")) && w.save(dir.path("m.stx")));
    const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", "m", "base"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(run.out.ends_with(": Object without a row.\n")) << run.out;
    dir.write("main.c", "#include \"m.tab\"\n"
                        "int main (void) {\n"
                        "  return mROW[0].far->id != 2 || mROW[0].own->n != 2 ||\n"
                        "         mROW[0].octets.n != 2 || mROW[0].octets.st[1] != 255 ||\n"
                        "         mROW[0].Picks[0].choice != 1 || mROW[0].Picks[0].i1.b != 5 ||\n"
                        "         mLOST[0].op != NULL;\n}\n");
    EXPECT_EQ(compilerMessages(dir, {"main.c"}), "");
    EXPECT_EQ(runProgram(dir, "sh", {"-c", "gcc -I" + sourceDir + "/rts main.c && ./a.out"}).status,
              0);
}

/* The program beside the example finds what the tables say, and handles octets by the functions
   that a row names. */
TEST(ObjectTablesDirect, LookupProgramUsesTheTables) {
    WorkDir dir;
    ASSERT_EQ(runVelmo(dir, {"-S=" + exampleTrees, "-VERBOSE=quiet", "desk"}).status, 0);
    const std::string rts = sourceDir + "/rts";
    const std::string command =
        "gcc -std=c99 -Wall -Wextra -pedantic -Werror -I. -I" + rts + " -o lookup " + sourceDir +
        "/examples/lookup.c desktab.c deskenc.c deskdec.c " + rts + "/*.c -lm";
    const ProgramRun built = runProgram(dir, "sh", {"-c", command});
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_EQ(runProgram(dir, "./lookup", {"11"}).out,
              "operation 11: Loan -> Days\n"
              "  error 1, BookNumber: no such book\n"
              "  error 3, Days: lent out (try again)\n"
              "  error 2, ReaderNumber: no such reader\n"
              "  error 4, nothing: too many loans\n"
              "  error 5, nothing: desk is shut (try again)\n"
              "  served at 9 10 11 12 15 17\n"
              "  undone by operation 12\n");
    EXPECT_EQ(runProgram(dir, "./lookup", {"14"}).out, "operation 14: Loan -> Days\n"
                                                       "  error 2, ReaderNumber: no such reader\n"
                                                       "  error 4, nothing: too many loans\n"
                                                       "  error 6, nothing: too many readers wait\n"
                                                       "  undone by operation 15\n");
    /* Lengths of the answer are indefinite unless an option asks for others. */
    EXPECT_EQ(runProgram(dir, "./lookup", {"11", "300b 80021267 8102008c 82011c"}).out,
              "Loan of 16 octets: 30 80 80 02 12 67 81 02 00 8C 82 01 1C 00 00\n");
    EXPECT_EQ(runProgram(dir, "./lookup", {"11", "300b 80021267 8102008c 82017c"}).out,
              "no Loan: CONSTRAINT_FAIL\n");
    EXPECT_EQ(runProgram(dir, "./lookup", {"9"}).err, "no operation 9\n");
}

} // namespace
