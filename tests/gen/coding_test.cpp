#include <gtest/gtest.h>

#include "examples/modules.h"
#include "tests/support/codingcase.h"

namespace {

/* All four kinds of function for the example module that is worked through in the documents. */
std::string basicFunctions(const std::vector<std::string> &options) {
    TreeWriter tree("Basic", "basic");
    makeBasic(tree);
    for (const std::string &option : options)
        tree.option(option);
    WorkDir dir;
    return generatedFunctions(dir, tree);
}

TEST(Coding, WorkedExampleInAllKinds) {
    EXPECT_EQ("", compareGolden("coding/basic.txt",
                                basicFunctions({"-DEFINITELEN=definite", "-TST=separate:1"})));
}

TEST(Coding, WorkedExampleWithPaths) {
    EXPECT_EQ("", compareGolden("coding/basic_pushpath.txt",
                                basicFunctions({"-DEFINITELEN=definite", "-PUSHPATH=yes"})));
}

TEST(Coding, WorkedExampleInTraditionalC) {
    EXPECT_EQ("", compareGolden("coding/basic_traditional.txt",
                                basicFunctions({"-ANSI-C=no", "-COD=1:1", "-TST=1:1"})));
}

} // namespace
