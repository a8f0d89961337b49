#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "examples/modules.h"
#include "tests/support/golden.h"

/* Every type file that the tool writes for the examples and for real modules is a C header that
   compiles by itself without a warning. */

namespace {

/* Runs the tool on trees in a directory and compiles the types that it writes. Remarks of the tool
   on other files don't matter here. */
void expectToCompile(const WorkDir &dir, const std::string &trees,
                     const std::vector<std::string> &modules) {
    std::vector<std::string> arguments = {"-S=" + trees};
    arguments.insert(arguments.end(), modules.begin(), modules.end());
    ProgramRun run = runVelmo(dir, arguments);
    ASSERT_EQ(run.status, 0) << run.err;
    for (const std::string &module : modules) {
        const std::string file = module + ".typ";
        ASSERT_TRUE(dir.has(file)) << file;
        for (const char *compiler : {"gcc", "clang"})
            EXPECT_EQ(compileC(dir, compiler, file,
                               {"-std=c99", "-Wall", "-Wextra", "-pedantic",
                                "-I" + sourceDir + "/rts", "-I."}),
                      "")
                << dir.read(file);
    }
}

} // namespace

TEST(TypeFiles, ExamplesCompileAlone) {
    WorkDir dir;
    expectToCompile(dir, sourceDir + "/examples/stx/",
                    {"basic", "stock", "shop", "forms", "value"});
}

/* The other words for the same formats. */
TEST(TypeFiles, ExamplesCompileWithOtherTypesOfTheRunTimeLayer) {
    WorkDir dir;
    TreeWriter stock("Stock_Keeping", "stock"), forms("All_Forms", "forms");
    for (TreeWriter *tree : {&stock, &forms})
        tree->option("-C-GENERATION=REAL:COMMONTIME:EXTERNAL:ANY-FUNCTIONS");
    makeStock(stock);
    makeForms(forms, stock);
    ASSERT_TRUE(stock.save(dir.path("stock.stx")) && forms.save(dir.path("forms.stx")));
    expectToCompile(dir, "./", {"stock", "forms"});
    EXPECT_NE(dir.read("forms.typ").find("typedef COMMONTIME Moment;"), std::string::npos);
}

namespace {

/* Trees of published modules, where they stand beside the checkout. */
struct ModuleSet {
    const char *name;
    std::vector<std::string> modules;
};

void PrintTo(const ModuleSet &set, std::ostream *out) {
    *out << set.name;
}

class RealTypeFiles : public testing::TestWithParam<ModuleSet> {};

/* Two of the modules of h225 have types of the same names as the third, which imports them. */
const std::pair<const char *, const char *> namingOptions[] = {
    {"h235", "-TPREF=H235"},
    {"h245", "-TPREF=H245"},
};

/* Copies the trees of a set with the options that they need. */
void copyTrees(const ModuleSet &set, const std::string &from, const WorkDir &dir) {
    for (const std::string &module : set.modules) {
        std::ifstream in(from + module + ".stx", std::ios::binary);
        std::string file{std::istreambuf_iterator<char>(in), {}};
        for (auto [name, option] : namingOptions)
            if (module == name) {
                ASSERT_TRUE(addModuleOption(file, option));
            }
        dir.write(module + ".stx", file);
    }
}

} // namespace

TEST_P(RealTypeFiles, CompileAlone) {
    const std::string trees = sourceDir + "/../shared/trees/" + GetParam().name + "/stx/";
    if (!std::filesystem::exists(trees))
        GTEST_SKIP() << "no trees of " << GetParam().name;
    WorkDir dir;
    copyTrees(GetParam(), trees, dir);
    expectToCompile(dir, "./", GetParam().modules);
}

INSTANTIATE_TEST_SUITE_P(
    Modules, RealTypeFiles,
    testing::Values(ModuleSet{"ldap", {"ldap"}}, ModuleSet{"snmp", {"smi", "snmp"}},
                    ModuleSet{"rua", {"ruac2", "ruac3", "ruaco", "ruaie", "ruap2", "ruapd"}},
                    ModuleSet{"h225", {"h235", "h245", "h225"}}),
    [](const auto &test) { return std::string(test.param.name); });
