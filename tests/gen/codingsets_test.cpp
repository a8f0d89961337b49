#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/codingcase.h"

/* Encoding and decoding functions of whole sets of modules, as C compilers take them. */

namespace {

namespace fs = std::filesystem;

struct CodingSet {
    const char *name;
    std::vector<std::string> modules;
};

void PrintTo(const CodingSet &set, std::ostream *out) {
    *out << set.name;
}

/* What compilers say of the functions of all modules of a set. */
std::string faultsOfFunctions(const std::string &trees, const CodingSet &set,
                              const std::vector<const char *> &quiet = {}) {
    WorkDir dir;
    std::vector<std::string> arguments = {"-S=" + trees + "/", "-VERBOSE=quiet"};
    arguments.insert(arguments.end(), set.modules.begin(), set.modules.end());
    const ProgramRun run = runVelmo(dir, arguments);
    if (run.status != 0)
        return "status " + std::to_string(run.status) + "\n" + run.err;
    for (const char *word : {"enc.c", "dec.c"}) /* modules of values alone have none */
        if (!dir.has(set.modules.back() + word))
            return "no " + set.modules.back() + word;
    return compileFunctions(dir, quiet);
}

/* Values of a NULL or a skipped type have no use for their place. */
TEST(CodingSets, ExamplesCompile) {
    const CodingSet examples = {"examples", {"basic", "forms", "shop", "stock"}};
    const std::string trees = sourceDir + "/examples/stx";
    EXPECT_EQ(faultsOfFunctions(trees, examples, {"-Wno-unused-parameter"}), "");
    EXPECT_EQ(faultsOfFunctions(trees, examples, {"-Wno-unused-parameter", "-DASN_REENTRANT=1"}),
              "");
}

/* Modules of public standards, which lie beside some checkouts only. */
class RealCodingSets : public testing::TestWithParam<CodingSet> {};

TEST_P(RealCodingSets, Compile) {
    const std::string trees = sourceDir + "/../shared/trees/" + GetParam().name + "/stx";
    if (!fs::exists(trees))
        GTEST_SKIP() << "no " << trees;
    EXPECT_EQ(faultsOfFunctions(trees, GetParam()), "");
}

/* The module that uses h235 and h245 has types of the names that h245 uses, so it stays out. */
const CodingSet sets[] = {{"ldap", {"ldap"}},
                          {"snmp", {"smi", "snmp"}},
                          {"rua", {"ruac2", "ruac3", "ruaco", "ruaie", "ruap2", "ruapd"}},
                          {"h225", {"h235", "h245"}}};

INSTANTIATE_TEST_SUITE_P(Sets, RealCodingSets, testing::ValuesIn(sets),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
