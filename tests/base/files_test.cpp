#include "base/files.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

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

TEST_F(Files, LinesAreIndentedAndBrokenBeforeAPieceThatPassesTheLastColumn) {
    const struct {
        int indent;
        std::vector<std::string> pieces;
        std::string text;
        unsigned lines;
        int columns;
    } rows[] = {
        {0, {xs(20), "  " + xs(60)}, xs(20) + "\n  " + xs(60), 1, 62},
        /* Column 78 may be filled; two characters never go alone. */
        {0, {xs(20), xs(58), ");", "abc"}, xs(78) + ");\n  abc", 1, 5},
        /* Nothing is broken up to where a continuation line begins. */
        {1, {"ab", xs(90), "c"}, "  ab" + xs(90) + "c", 0, 95},
        {2, {"a\n\nb\n"}, "    a\n    \n    b\n", 3, 0},
        /* Only the first line of a text can be broken off. */
        {2,
         {xs(40), "   " + xs(40) + "\n" + xs(80) + "\n"},
         "    " + xs(40) + "\n      " + xs(40) + "\n    " + xs(80) + "\n",
         3,
         0},
        {-2, {"a"}, "a", 0, 1},
    };
    for (const auto &row : rows) {
        openFWithPrefix(SLOT, "my-mod");
        fArr[SLOT].indent = row.indent;
        for (const std::string &piece : row.pieces)
            putF(SLOT, piece);
        EXPECT_EQ(linesInF(SLOT), row.lines) << row.text;
        EXPECT_EQ(columnsInF(SLOT), row.columns) << row.text;
        EXPECT_EQ(readBack(), row.text);
    }
}

TEST_F(Files, DirectivesKeepTheIndentAndOtherPiecesTheLine) {
    fArr[SLOT].indent = 3;
    putDirective(SLOT, "#define X\n");
    EXPECT_EQ(fArr[SLOT].indent, 3);
    putF(SLOT, "\n");
    resetIndentLevel(SLOT);
    putF(SLOT, xs(15), xs(5));
    putUnbroken(SLOT, xs(30), xs(30));
    putF(SLOT, xs(1), ";\n");
    putF(SLOT, xs(40));
    putF(SLOT, " ", xs(20), xs(20));
    EXPECT_EQ(readBack(), "#define X\n      \n" + xs(81) + ";\n" + xs(40) + "\n  " + xs(40));
}

TEST_F(Files, SlotZeroAndNullTextWriteNothingAndNoTextIsCut) {
    putF(0, "lost");
    putF(0, 1);
    putF(SLOT, static_cast<const char *>(nullptr));
    EXPECT_EQ(linesInF(0), 0u);
    EXPECT_EQ(columnsInF(0), 0);
    putF(SLOT);
    putF(SLOT, xs(5000), static_cast<const char *>(nullptr), "!", INT32_MIN, " ", UINT64_MAX);
    EXPECT_EQ(readBack(), xs(5000) + "!-2147483648 18446744073709551615");
}

TEST_F(Files, NamesAndGuards) {
    EXPECT_EQ(nameOfF(SLOT), dir_ + "my-modenc.c");
    EXPECT_EQ(nameOfFnoDir(SLOT), "my-modenc.c");
    EXPECT_EQ(dirOfF(SLOT), dir_);
    EXPECT_EQ(defineGuardOfF(SLOT), "MY_MODENC_C");
    EXPECT_EQ(defineGuardForFile("a-b.tab.ext"), "A_B_TAB_EXT");
    EXPECT_EQ(defineGuardForFile("3g.typ"), "_3G_TYP");
}

TEST_F(Files, UnfinishedSlotsHaveNoNameAndDoNotOpen) {
    initF(4, dir_.c_str(), nullptr);
    openFWithPrefix(4, "p");
    EXPECT_EQ(fArr[4].stream, nullptr);
    EXPECT_EQ(nameOfF(4), "");
    EXPECT_EQ(defineGuardOfF(4), "");
    EXPECT_EQ(nameOfF(0), "");
    initF(4, nullptr, ".typ");
    EXPECT_EQ(nameOfF(4), "") << "it has no prefix before it is opened";
}

TEST_F(Files, OpenFileStaysAndAClosedOneIsWrittenAnew) {
    putF(SLOT, "one\ntwo");
    openFWithPrefix(SLOT, "other");
    EXPECT_EQ(columnsInF(SLOT), 3);
    EXPECT_EQ(readBack(), "one\ntwo");
    closeF(SLOT);
    EXPECT_EQ(linesInF(SLOT), 0u);
    openFWithPrefix(SLOT, "my-mod");
    putF(SLOT, "three");
    initF(5, dir_.c_str(), "free name");
    openFWithPrefix(5, "");
    std::vector<int> open;
    forEachOpenFile([&](int slot) { open.push_back(slot); });
    EXPECT_EQ(open, (std::vector<int>{SLOT, 5}));
    EXPECT_EQ(readBack(), "three");
    EXPECT_EQ(defineGuardOfF(5), "FREE_NAME");
    closeF(5);
}

using FilesDeathTest = Files;

TEST_F(FilesDeathTest, FullDiskIsNoticedBeforeTheFileIsClosed) {
    initF(4, "/dev/", "full");
    openFWithPrefix(4, "");
    EXPECT_EXIT(putF(4, xs(1000000)), testing::ExitedWithCode(2),
                "Can not write into file\n              /dev/full\n");
}

TEST_F(FilesDeathTest, FilesLieInNoOtherDirectory) {
    initF(4, dir_.c_str(), ".typ");
    EXPECT_EXIT(openFWithPrefix(4, "../escape"), testing::ExitedWithCode(2),
                "Not a valid file prefix: ../escape");
    EXPECT_FALSE(std::filesystem::exists(dir_ + "../escape.typ"));
}

} // namespace
