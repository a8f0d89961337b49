#include "options/checkers.h"

#include <gtest/gtest.h>

#include "store/ketradef.h"

namespace {

constexpr int REFUSED = -1;

struct Row {
    const char *text;
    int value; /* what is stored, or REFUSED */
};

/* Checks each row with `check(dst, text)`; a refused text must leave the place alone. */
template <std::size_t N, typename Check> void checkRows(const Row (&rows)[N], Check check) {
    constexpr std::uint8_t BEFORE = 99;
    for (const Row &row : rows) {
        std::uint8_t dst = BEFORE;
        EXPECT_EQ(check(&dst, row.text), row.value != REFUSED) << row.text;
        EXPECT_EQ(dst, row.value == REFUSED ? BEFORE : row.value) << row.text;
        EXPECT_EQ(check(nullptr, row.text), row.value != REFUSED) << row.text;
    }
}

TEST(Checkers, Booleans) {
    constexpr Row rows[] = {{"1", 1},        {"yes", 1},      {"True", 1},     {"0", 0},
                            {"NO", 0},       {"false", 0},    {"", REFUSED},   {"2", REFUSED},
                            {"00", REFUSED}, {"01", REFUSED}, {"YE", REFUSED}, {"YESS", REFUSED},
                            {"-1", REFUSED}, {"1 ", REFUSED}, {" 1", REFUSED}};
    checkRows(rows, booleOptionOK);
}

TEST(Checkers, BytesByNumberHaveLimitsAndByWordHaveNone) {
    constexpr OptionWord words[] = {{200, "FAR"}, {3, "near-by"}, {0, nullptr}};
    constexpr Row rows[] = {{"2", 2},         {"120", 120},      {"FAR", 200},
                            {"Near-By", 3},   {"1", REFUSED},    {"121", REFUSED},
                            {"012", REFUSED}, {"0012", REFUSED}, {"1000", REFUSED},
                            {"2x", REFUSED},  {"near", REFUSED}, {"99999999999", REFUSED},
                            {"-2", REFUSED},  {"", REFUSED}};
    checkRows(rows, [&](std::uint8_t *dst, const char *text) {
        return byteOptionOK(dst, text, 2, 120, words);
    });
    EXPECT_FALSE(byteOptionOK(nullptr, "FAR", 2, 120, nullptr));
}

TEST(Checkers, Numbers) {
    std::int32_t number = 5;
    EXPECT_TRUE(int32OptionOK(&number, "2147483647", 0, 2147483647));
    EXPECT_EQ(number, 2147483647);
    EXPECT_TRUE(int32OptionOK(&number, "0", 0, 10));
    EXPECT_EQ(number, 0);
    for (const char *text :
         {"2147483648", "4294967296", "99999999999999999999", "00", "07", "-1", "+1", "", "1x"})
        EXPECT_FALSE(int32OptionOK(&number, text, 0, 2147483647)) << text;
    EXPECT_FALSE(int32OptionOK(&number, "11", 0, 10));
    EXPECT_EQ(number, 0);
}

TEST(Checkers, Sizes) {
    constexpr Row signedRows[] = {{"0", VF_NONE},  {"Optimize", VF_NONE}, {"8", VF_I8},
                                  {"16", VF_I16},  {"32", VF_I32},        {"64", VF_I64},
                                  {"U8", REFUSED}, {"128", REFUSED},      {"", REFUSED}};
    checkRows(signedRows, [](std::uint8_t *dst, const char *text) {
        return intSizeOptionOK(dst, text, false);
    });
    constexpr Row rows[] = {{"U8", VF_UI8}, {"u64", VF_UI64}, {"32", VF_I32},
                            {"U", REFUSED}, {"U0", REFUSED},  {"UU8", REFUSED}};
    checkRows(rows,
              [](std::uint8_t *dst, const char *text) { return intSizeOptionOK(dst, text, true); });
    constexpr Row realRows[] = {{"0", VF_NONE},      {"32", VF_REAL32}, {"64", VF_REAL64},
                                {"128", VF_REAL128}, {"16", REFUSED},   {"", REFUSED}};
    checkRows(realRows, realSizeOptionOK);
}

TEST(Checkers, BitVectors) {
    constexpr Row rows[] = {{"", 0},    {"0", 1},       {"07", 0x81},    {"76543210", 255},
                            {"000", 1}, {"8", REFUSED}, {"1,", REFUSED}, {"-1", REFUSED}};
    checkRows(rows, bitVector8OptionOK);
}

TEST(Checkers, Directories) {
    Text dst = "before";
    for (const char *text : {"", "a\tb", "a\x80", "\x1b[0m"})
        EXPECT_FALSE(directoryOptionOK(&dst, text)) << text;
    EXPECT_EQ(dst, "before");
    EXPECT_TRUE(directoryOptionOK(&dst, "my trees"));
    EXPECT_EQ(dst, "my trees/");
    EXPECT_TRUE(directoryOptionOK(&dst, "/"));
    EXPECT_EQ(dst, "/");
}

TEST(Checkers, RealLimits) {
    for (const char *text : {"{5,10,3}", "{0,10,0}", "{2147483647,10,32767}", "{007,10,3}"})
        EXPECT_TRUE(realLimOptionOK(text)) << text;
    for (const char *text :
         {"{5,2,3}", "{5,10,3", "{5,10,3}x", "{,10,3}", "{5,10,}", "{2147483648,10,3}",
          "{5,10,32768}", "{-5,10,3}", "5,10,3", "", "{99999999999999999999999,10,3}"})
        EXPECT_FALSE(realLimOptionOK(text)) << text;
}

TEST(Checkers, TextsOfACharacterSet) {
    Text dst;
    EXPECT_TRUE(alphaStriOptionOK(&dst, "Ab", 1, 2));
    EXPECT_EQ(dst, "Ab");
    EXPECT_FALSE(alphaStriOptionOK(&dst, "A1", 1, 2));
    EXPECT_FALSE(alphaStriOptionOK(&dst, "Abc", 1, 2));
    EXPECT_FALSE(alphaStriOptionOK(&dst, "", 1, 2));
    EXPECT_TRUE(digitStriOptionOK(&dst, "09", 0, 2));
    EXPECT_FALSE(digitStriOptionOK(&dst, "0a", 0, 2));
    EXPECT_TRUE(xdigitStriOptionOK(&dst, "0aF", 0, 3));
    EXPECT_FALSE(xdigitStriOptionOK(&dst, "g", 0, 3));
    EXPECT_TRUE(bdigitStriOptionOK(&dst, "0110", 0, 4));
    EXPECT_FALSE(bdigitStriOptionOK(&dst, "2", 0, 4));
    EXPECT_TRUE(alnumStriOptionOK(&dst, "a0Z", 3, 3));
    EXPECT_FALSE(alnumStriOptionOK(&dst, "\xe4", 1, 3)) << "letters are those of ASCII";
    EXPECT_TRUE(alnumSpecialStriOptionOK(&dst, "a_b.c", "_.", 1, 5));
    EXPECT_FALSE(alnumSpecialStriOptionOK(&dst, "a-b", "_.", 1, 5));
    EXPECT_TRUE(specialStriOptionOK(&dst, "++-", "+-", 1, 3));
    EXPECT_FALSE(specialStriOptionOK(&dst, "+a", "+-", 1, 3));
}

} // namespace
