#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "tests/support/codingcase.h"
#include "tests/support/gencase.h"

/* Every file that is written for whole sets of modules, as C compilers take it. */

namespace {

using Names = std::vector<std::string>;

struct ModuleSet {
    const char *name;
    Names modules;
    Names options = {};
    std::vector<const char *> flags = {}; /* for the compilers */
};

void PrintTo(const ModuleSet &set, std::ostream *out) {
    *out << set.name;
}

/* Two modules of a published set have types of the names that the third has, which imports them. */
const std::pair<std::string, const char *> namingOptions[] = {{"h235", "-TPREF=H235"},
                                                              {"h245", "-TPREF=H245"}};

/* Compiles the examples with options. */
void compileExamples(const WorkDir &dir, const Names &options) {
    Names arguments = {"-A=" + sourceDir + "/examples", "+" + sourceDir + "/examples/examples.opt"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProgramRun run = runProgram(dir, asntreeProgram, arguments);
    ASSERT_EQ(run.status, 0) << run.err;
}

/* Copies a tree, to which options are added. */
void copyTree(const std::string &trees, const WorkDir &dir, const std::string &module,
              const Names &options) {
    std::ifstream in(trees + module + ".stx", std::ios::binary);
    std::string file{std::istreambuf_iterator<char>(in), {}};
    for (const std::string &option : options)
        ASSERT_TRUE(addModuleOption(file, option));
    for (const auto &[name, option] : namingOptions)
        if (module == name) {
            ASSERT_TRUE(addModuleOption(file, option));
        }
    dir.write(module + ".stx", file);
}

/* A source that includes the module's table and reads it. */
std::string tableUser(const std::string &module) {
    return "#include \"" + module + ".tab\"\nconst ENTRYDESCR *row(int n);\n" +
           "const ENTRYDESCR *row(int n) { return " + module + "EntryDescr + n; }\n";
}

/* Types compile alone, functions, macros and tables of the examples with what they include. */
void expectToCompile(const std::string &trees, const ModuleSet &set) {
    const bool withTables = trees.empty();
    WorkDir dir;
    Names options = set.options;
    options.insert(options.end(), {"-TST=separate:1", "-TAB=yes", "-CDEFS=yes", "-TDEFS=yes"});
    if (trees.empty())
        compileExamples(dir, options);
    else
        for (const std::string &module : set.modules)
            copyTree(trees, dir, module, options);
    Names arguments = {"-VERBOSE=quiet"};
    arguments.insert(arguments.end(), set.modules.begin(), set.modules.end());
    const ProgramRun run = runVelmo(dir, arguments);
    ASSERT_EQ(run.status, 0) << run.err;
    ASSERT_TRUE(dir.has(set.modules.back() + "pri.c"));
    EXPECT_EQ(compileFunctions(dir, set.flags), "");
    Names files;
    for (const std::string &module : set.modules) {
        files.push_back(module + ".typ");
        if (!withTables)
            continue;
        files.push_back(module + "uses.c");
        dir.write(files.back(), usesOfDefines(dir, module));
        if (!dir.has(module + ".tab"))
            continue;
        files.push_back(module + "row.c");
        dir.write(files.back(), tableUser(module));
    }
    EXPECT_EQ(compilerMessages(dir, files), "");
}

class ModuleSets : public testing::TestWithParam<ModuleSet> {};

/* Sets of published standards lie beside some checkouts only. Of them only types and functions are
   compiled. */
TEST_P(ModuleSets, Compile) {
    std::string trees;
    if (!std::string_view(GetParam().name).starts_with("examples"))
        trees = sourceDir + "/../shared/trees/" + GetParam().name + "/stx/";
    if (!trees.empty() && !std::filesystem::exists(trees))
        GTEST_SKIP() << "no trees of " << GetParam().name;
    expectToCompile(trees, GetParam());
}

const Names examples = {"basic", "stock", "shop", "forms", "value"};

const ModuleSet sets[] = {
    {"examples", examples},
    {"examples_reentrant", examples, {}, {"-DASN_REENTRANT=1"}},
    {"examples_traditional",
     examples,
     {"-ANSI-C=no", "-C-GENERATION=REAL:COMMONTIME:EXTERNAL", "-TABF=yes"}},
    {"examples_exported", examples, {"-TAB=yes", "-TABF=yes"}},
    {"ldap", {"ldap"}, {"-TABF=yes"}},
    {"snmp", {"smi", "snmp"}, {"-TABF=yes"}},
    /* Names of two sets differ in their 33rd character. */
    {"rua", {"ruac2", "ruac3", "ruaco", "ruaie", "ruap2", "ruapd"}, {"-TABF=yes", "-NAMELEN=64"}},
    {"h225", {"h235", "h245", "h225"}, {"-TABF=yes"}},
};

/* Modules that refer to one another in every way that lends a name: by components, synonyms and
   elements, COMPONENTS OF, selections, and fields of classes. */
void makeRelatedModules(const WorkDir &dir) {
    TreeWriter base("Base", "base"), far("Far", "far"), last("Last", "last");
    const auto leaf = [](TreeWriter &w) { return w.comp("leaf", w.integer(0, 255)).optional(); };
    const auto inner = [&](TreeWriter &w) {
        return w.choice({w.comp("y", w.sequence({leaf(w)})), w.comp("z", w.boolean())});
    };
    const auto rows = [&](TreeWriter &w) {
        return w.listOf(TYP_SEQOF, w.listOf(TYP_SEQOF, w.sequence({leaf(w)})).asList()).asList();
    };
    base.define("Point", base.sequence({leaf(base)}));
    const TypeNode shape = base.define(
        "Shape",
        base.choice({base.comp("poly", base.listOf(TYP_SEQOF, base.ref("Point")).asList()).implicit(0),
                     base.comp("in", base.sequence({base.comp("ch", inner(base))})).implicit(1),
                     base.comp("rows", rows(base)).implicit(2)}));
    base.define("Rows", rows(base));
    base.define("Parts", base.sequence({base.comp("shape", base.ref("Shape")).optional(),
                                        base.comp("part", base.sequence({leaf(base)})),
                                        base.comp("rows", rows(base)).implicit(3)}));
    far.import(base);
    last.import(base);
    last.import(far);
    for (TreeWriter *w : {&far, &last}) {
        const std::string name = w == &far ? "Far" : "Last";
        const auto of = [&](const char *word) { return name + word; };
        w->define(of("Poly"), w->selection("poly", shape));
        w->define(of("In"), w->selection("in", shape));
        w->define(of("Alias"), w->ref(base, "Shape"));
        w->define(of("User"), w->sequence({w->comp("b", w->ref(base, "Shape")).optional(),
                                           w->comp("alias", w->ref(of("Alias"))).implicit(4),
                                           w->comp("l", w->listOf(TYP_SETOF, w->ref(base, "Rows"))),
                                           w->comp("s", w->selection("rows", shape)).implicit(5),
                                           w->componentsOf(w->ref(base, "Parts"))}));
        w->define(of("CLASS"), w->objectClass({w->valueField("code", w->ref(base, "Shape")),
                                               w->setField("codes", w->ref(base, "Rows"))}));
        w->findType(of("User")).entry();
        w->defineValue(of("object"), w->ref(of("CLASS")), w->object(w->ref(of("CLASS")), {}));
    }
    const TypeNode other = last.valueField("other", last.ref(far, "FarCLASS"));
    const TypeNode holder = last.define("HOLDER", last.objectClass({other}));
    last.defineValue(
        "holder", holder,
        last.object(holder,
                    {last.fieldValue(other, last.valueRefTo(3, far.findValue("Farobject").nr))}));
    last.define("Member", last.sequence({last.comp("in", last.ref(far, "FarIn")),
                                         last.comp("user", last.ref(far, "FarUser")),
                                         last.componentsOf(last.ref(far, "FarUser"))}));
    for (TreeWriter *w : {&base, &far, &last}) {
        addOptions(*w, {"-COD=1:1", "-TST=1:1", "-CDEFS=yes", "-TAB=yes"}, {});
        ASSERT_TRUE(w->save(dir.path(std::string(w == &base  ? "base"
                                                 : w == &far ? "far"
                                                             : "last") + ".stx")));
    }
}

/* The files of a module don't depend on who stands on the command line beside it. */
TEST(ModuleOrder, FilesOfAModuleAreItsOwn) {
    WorkDir dir;
    makeRelatedModules(dir);
    const Names order[] = {{"base"},        {"far"},         {"last"},        {"base", "far"},
                           {"far", "base"}, {"base", "last"}, {"last", "base"}, {"far", "last"},
                           {"last", "far"}, {"base", "far", "last"}, {"last", "far", "base"}};
    std::map<std::string, std::string> first;
    for (Names arguments : order) {
        const std::string said = testing::PrintToString(arguments);
        for (const std::string &file : dir.files())
            if (!file.ends_with(".stx"))
                std::filesystem::remove(dir.path(file));
        arguments.insert(arguments.begin(), "-VERBOSE=quiet");
        const ProgramRun run = runVelmo(dir, arguments);
        ASSERT_EQ(run.status, 0) << run.err;
        for (const std::string &file : dir.files())
            if (!file.ends_with(".stx")) {
                const std::string text = maskTimes(dir.read(file));
                EXPECT_EQ(differenceOf(first.try_emplace(file, text).first->second, text), "")
                    << file << " of " << said;
            }
    }
    EXPECT_EQ(compileFunctions(dir, {}), "");
}

INSTANTIATE_TEST_SUITE_P(Sets, ModuleSets, testing::ValuesIn(sets),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
