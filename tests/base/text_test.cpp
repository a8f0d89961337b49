#include "base/files.h"
#include "base/text.h"

#include <gtest/gtest.h>

#include "tests/support/runtool.h"

namespace {

TEST(Text, ComparesWithoutRegardToCase) {
    EXPECT_EQ(strCaseComp("Sdu", "sDU"), 0);
    EXPECT_EQ(strCaseComp("a", "B"), 'A' - 'B');
    EXPECT_EQ(strnCaseComp("sdu:x", "SDU", 3), 0);
    EXPECT_NE(strnCaseComp("sdu:x", "SDU", 4), 0);
    EXPECT_EQ(strnCaseComp("ab", "AB", 9), 0);
    /* Letters beyond ASCII have no case and count as large. */
    EXPECT_GT(strCaseComp("\xE4", "Z"), 0);
    EXPECT_NE(strCaseComp("\xE4", "\xC4"), 0);
}

TEST(Text, SmallHelpers) {
    EXPECT_EQ(remSpaces(" \t-N= 3\r\n"), "-N= 3");
    EXPECT_EQ(remSpaces(" \n "), "");
    EXPECT_EQ(convertHyphens("a-b-C_d"), "a_b_C_d");
    EXPECT_EQ(convertUnderscores("a_b-C_d"), "a-b-C-d");
    EXPECT_EQ(strUpper("a-B1"), "A-B1");
}

TEST(Services, FilesThatCannotBeOpenedEndTheRun) {
    const WorkDir dir;
    dir.write("there", "x");
    std::FILE *file = fopenTextFile((dir.path() + "/").c_str(), "there", "r");
    EXPECT_EQ(std::fgetc(file), 'x');
    std::fclose(file);
    const auto exitsWith2 = testing::ExitedWithCode(2);
    EXPECT_EXIT(fopenTextFile("/nowhere/", "x.opt", "r"), exitsWith2,
                "^\nFATAL ERROR : Can not open file for reading\n +/nowhere/x.opt\n\n$");
    EXPECT_EXIT(fopenTextFile(nullptr, dir.path().c_str(), "w"), exitsWith2,
                "for writing\n +/[^\n]+\n\n$");
    EXPECT_EXIT(fopenTextFile(Text(512, 'd').c_str(), "n", "w"), exitsWith2,
                "^\nFATAL ERROR : Can not open file for writing\n\n$");
}

} // namespace
