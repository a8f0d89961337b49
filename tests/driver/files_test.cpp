#include "driver/files.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "driver/fatal.h"

namespace {

/* Slot 3 writes to a file in a directory of the case's own. */
class Files : public ::testing::Test {
protected:
    static constexpr int SLOT = 3;

    void SetUp() override {
        std::string path = ::testing::TempDir() + "velmo_files_XXXXXX";
        ASSERT_NE(mkdtemp(path.data()), nullptr);
        dir_ = path + "/";
        initFiles();
        initF(SLOT, dir_.c_str(), "enc.c");
        openFWithPrefix(SLOT, "my-mod");
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::string readBack(const char *name = "my-modenc.c") {
        closeF(SLOT);
        std::ifstream in(dir_ + name, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    static std::string xs(std::size_t n) { return std::string(n, 'x'); }

    std::string dir_;
};

TEST_F(Files, LineIsBrokenBeforeThePieceThatPassesTheLastColumn) {
    wToF(SLOT, xs(20));
    wToF(SLOT, "  " + xs(60));
    EXPECT_EQ(linesInF(SLOT), 1u);
    EXPECT_EQ(columnsInF(SLOT), 62);
    wToF(SLOT, ");\n");
    EXPECT_EQ(readBack(), xs(20) + "\n  " + xs(60) + ");\n");
}

TEST_F(Files, PieceThatEndsAtTheLastColumnStays) {
    wToF(SLOT, xs(20));
    wToF(SLOT, xs(58));
    EXPECT_EQ(columnsInF(SLOT), 78);
    wToF(SLOT, ");"); /* two characters never go alone */
    wToF(SLOT, "abc");
    EXPECT_EQ(readBack(), xs(78) + ");\n  abc");
}

TEST_F(Files, NothingIsBrokenWithoutAskingOrAtTheStartOfALine) {
    wToF(SLOT, xs(20));
    putToF(SLOT, xs(60).c_str());
    endlToF(SLOT);
    fArr[SLOT].indent = 1;
    wToF(SLOT, "ab\n");
    wToF(SLOT, "ab"); /* column 4 isn't behind the place of a continuation line */
    wToF(SLOT, xs(90));
    wToF(SLOT, "c");
    EXPECT_EQ(readBack(), xs(80) + "\n  ab\n  ab" + xs(90) + "c");
}

TEST_F(Files, EachLineOfATextIsIndentedAndOnlyItsFirstCanBeBroken) {
    fArr[SLOT].indent = 2;
    wToF(SLOT, "a\n\nb\n");
    wToF(SLOT, xs(40));
    wToF(SLOT, "   " + xs(40) + "\n" + xs(80) + "\n");
    EXPECT_EQ(linesInF(SLOT), 6u);
    EXPECT_EQ(columnsInF(SLOT), 0);
    EXPECT_EQ(readBack(),
              "    a\n    \n    b\n    " + xs(40) + "\n      " + xs(40) + "\n    " + xs(80) + "\n");
}

TEST_F(Files, NegativeIndentCountsAsNoneAndDirectivesKeepIt) {
    fArr[SLOT].indent = -2;
    wToF(SLOT, "a\n");
    fArr[SLOT].indent = 3;
    wDirectiveToF(SLOT, "#define X\n");
    EXPECT_EQ(fArr[SLOT].indent, 3);
    endlToF(SLOT);
    resetIndentLevel(SLOT);
    wToF(SLOT, "b\n");
    EXPECT_EQ(readBack(), "a\n#define X\n      \nb\n");
}

TEST_F(Files, SlotZeroAndNullTextWriteNothing) {
    wToF(0, "lost");
    printfToF(0, "%d", 1);
    int64AsSint64ToF(0, "a", i64max(), "b");
    wToF(SLOT, static_cast<const char *>(nullptr));
    EXPECT_EQ(linesInF(0), 0u);
    EXPECT_EQ(columnsInF(0), 0);
    EXPECT_EQ(readBack(), "");
}

TEST_F(Files, FormattedTextIsNeverCut) {
    printfToF(SLOT, "%s!", xs(5000).c_str());
    EXPECT_EQ(readBack(), xs(5000) + "!");
}

TEST_F(Files, NumbersAsText) {
    int32ToF(SLOT, "(", -2147483647 - 1, nullptr);
    int32ToF(SLOT, nullptr, 5, ")\n");
    int64ToF(SLOT, nullptr, i64min(), " ");
    int64ToF(SLOT, "+", i64ltosint64(0), nullptr);
    EXPECT_EQ(readBack(), "(-21474836485)\n-9223372036854775808 +0");
}

TEST_F(Files, NumbersAsExpressionsOfTheRunTimeLibrary) {
    const struct {
        sint64 n;
        const char *text;
    } rows[] = {
        {i64max(), "i64max ()"},
        {i64min(), "i64min ()"},
        {i64ltosint64(0), "i64ltosint64 (0L)"},
        {i64ltosint64(2147483647), "i64ltosint64 (2147483647L)"},
        {i64ltosint64(-2147483647), "i64ltosint64 (-2147483647L)"},
        {i64ltosint64(-2147483647 - 1), "i64make (-1L, 2147483648UL)"},
        {i64ultosint64(2147483648u), "i64make (0L, 2147483648UL)"},
        {i64make(-2147483647 - 1, 1), "i64make (-2147483648L, 1UL)"},
        {i64make(2147483647, 0xFFFFFFFEu), "i64make (2147483647L, 4294967294UL)"},
    };
    std::string expected;
    for (const auto &row : rows) {
        int64AsSint64ToF(SLOT, nullptr, row.n, nullptr);
        endlToF(SLOT);
        expected += std::string(row.text) + "\n";
    }
    int64AsSint64ToF(SLOT, "x = ", i64ltosint64(1), ";");
    EXPECT_EQ(readBack(), expected + "x = i64ltosint64 (1L);");
}

TEST_F(Files, NamesAndGuards) {
    Text text;
    EXPECT_TRUE(nameOfF(text, "<", SLOT, ">"));
    EXPECT_EQ(text, "<" + dir_ + "my-modenc.c>");
    EXPECT_TRUE(nameOfFnoDir(text, nullptr, SLOT, nullptr));
    EXPECT_EQ(text, "my-modenc.c");
    EXPECT_TRUE(dirOfF(text, " ", SLOT, nullptr));
    EXPECT_EQ(text, " " + dir_);
    EXPECT_TRUE(defineGuardOfF(text, "#ifndef ", SLOT, "\n"));
    EXPECT_EQ(text, "#ifndef MY_MODENC_C\n");
    EXPECT_TRUE(defineGuardForFile(text, nullptr, "a-b.tab.ext", nullptr));
    EXPECT_EQ(text, "A_B_TAB_EXT");
}

TEST_F(Files, UnfinishedSlotsHaveNoNameAndDoNotOpen) {
    Text text = "old";
    initF(4, dir_.c_str(), nullptr);
    openFWithPrefix(4, "p");
    EXPECT_EQ(fArr[4].stream, nullptr);
    EXPECT_FALSE(nameOfF(text, "<", 4, ">"));
    EXPECT_EQ(text, "");
    EXPECT_FALSE(defineGuardOfF(text, "<", 4, ">"));
    EXPECT_FALSE(nameOfF(text, "<", 0, ">"));
    EXPECT_FALSE(defineGuardForFile(text, "<", nullptr, ">"));
    initF(4, nullptr, ".typ");
    EXPECT_TRUE(dirOfF(text, nullptr, 4, nullptr));
    EXPECT_FALSE(nameOfF(text, nullptr, 4, nullptr)) << "it has no prefix before it is opened";
}

TEST_F(Files, OpenFileStaysAndAClosedOneIsWrittenAnew) {
    wToF(SLOT, "one\ntwo");
    openFWithPrefix(SLOT, "other");
    EXPECT_EQ(columnsInF(SLOT), 3);
    EXPECT_EQ(readBack(), "one\ntwo");
    closeF(SLOT);
    EXPECT_EQ(linesInF(SLOT), 0u);
    openFWithPrefix(SLOT, "my-mod");
    wToF(SLOT, "three");
    openNamedF(5, dir_.c_str(), "free name");
    std::vector<int> open;
    forEachOpenFile([&](int slot) { open.push_back(slot); });
    EXPECT_EQ(open, (std::vector<int>{SLOT, 5}));
    EXPECT_EQ(readBack(), "three");
    Text text;
    EXPECT_TRUE(defineGuardOfF(text, nullptr, 5, nullptr));
    EXPECT_EQ(text, "FREE NAME");
    closeF(5);
}

using FilesDeathTest = Files;

TEST_F(FilesDeathTest, FullDiskIsNeverSilent) {
    ASSERT_TRUE(std::filesystem::exists("/dev/full"));
    auto writeToFullDisk = [](std::size_t bytes) {
        openNamedF(4, "/dev/", "full");
        wToF(4, xs(bytes));
        closeF(4);
    };
    EXPECT_EXIT(writeToFullDisk(1), testing::ExitedWithCode(2),
                "Can not write into file\n              /dev/full\n");
    EXPECT_EXIT(writeToFullDisk(1000000), testing::ExitedWithCode(2), "Can not write into file");
}

TEST_F(FilesDeathTest, FilesThatCanNotBeCreated) {
    EXPECT_EXIT(openNamedF(4, (dir_ + "missing/").c_str(), "x"), testing::ExitedWithCode(2),
                "Can not open file for writing\n              .*missing/x\n");
    EXPECT_EXIT(openNamedF(4, nullptr, xs(513).c_str()), testing::ExitedWithCode(2),
                "FATAL ERROR : Can not open file for writing\n\n");
    initF(4, dir_.c_str(), ".typ");
    EXPECT_EXIT(openFWithPrefix(4, "../escape"), testing::ExitedWithCode(2),
                "Not a valid file prefix: ../escape");
    EXPECT_FALSE(std::filesystem::exists(dir_ + "../escape.typ"));
}

} // namespace
