#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tests/support/codingcase.h"

/* Asking and printing functions of whole sets of modules, and their tables, as C compilers take
   them. */

namespace {

using Names = std::vector<std::string>;

struct ModuleSet {
    const char *name;
    Names modules;
    std::vector<const char *> options = {};
    /* Two modules of h225 have types of the names that the third has, which imports them. */
    std::vector<std::pair<const char *, const char *>> naming = {};
};

[[maybe_unused]] void PrintTo(const ModuleSet &set, std::ostream *out) {
    *out << set.name;
}

/* Copies a tree, to which options are added. */
void copyTree(const std::string &trees, const WorkDir &dir, const std::string &module,
              const std::vector<const char *> &options) {
    std::ifstream in(trees + module + ".stx", std::ios::binary);
    std::string file{std::istreambuf_iterator<char>(in), {}};
    for (const char *option : options)
        ASSERT_TRUE(addModuleOption(file, option));
    dir.write(module + ".stx", file);
}

/* Functions that have nothing to do with the value that they are given are part of every set. */
void expectToCompile(const std::string &trees, const ModuleSet &set) {
    WorkDir dir;
    for (const std::string &module : set.modules) {
        std::vector<const char *> options = set.options;
        options.insert(options.end(), {"-COD=0:0", "-TST=separate:1", "-VERBOSE=QUIET", "-TAB=yes",
                                       "-TABF=yes", "-TDEFS=yes"});
        for (auto [name, option] : set.naming)
            if (module == name)
                options.push_back(option);
        copyTree(trees, dir, module, options);
    }
    const ProgramRun run = runVelmo(dir, set.modules);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(compileFunctions(dir, {"-Wno-unused-parameter"}), "");
}

const Names examples = {"basic", "stock", "shop", "forms"};

TEST(TestingSets, ExamplesCompile) {
    expectToCompile(sourceDir + "/examples/stx/", {"examples", examples});
}

TEST(TestingSets, ExamplesCompileInTraditionalCWithOtherTypes) {
    expectToCompile(
        sourceDir + "/examples/stx/",
        {"examples", examples, {"-ANSI-C=no", "-C-GENERATION=REAL:COMMONTIME:EXTERNAL"}});
}

/* Modules of public standards, which lie beside some checkouts only. */
class RealTestingSets : public testing::TestWithParam<ModuleSet> {};

TEST_P(RealTestingSets, Compile) {
    const std::string trees = sourceDir + "/../shared/trees/" + GetParam().name + "/stx/";
    if (!std::filesystem::exists(trees))
        GTEST_SKIP() << "no trees of " << GetParam().name;
    expectToCompile(trees, GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Modules, RealTestingSets,
    testing::Values(
        ModuleSet{"ldap", {"ldap"}}, ModuleSet{"snmp", {"smi", "snmp"}},
        /* Names of two sets differ in their 33rd character. */
        ModuleSet{"rua", {"ruac2", "ruac3", "ruaco", "ruaie", "ruap2", "ruapd"}, {"-NAMELEN=64"}},
        ModuleSet{"h225",
                  {"h235", "h245", "h225"},
                  {},
                  {{"h235", "-TPREF=H235"}, {"h245", "-TPREF=H245"}}}),
    [](const auto &test) { return std::string(test.param.name); });

} // namespace
