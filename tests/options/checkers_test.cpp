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
template <typename Check> void checkRows(std::initializer_list<Row> rows, Check check) {
    constexpr std::uint8_t BEFORE = 99;
    for (const Row &row : rows) {
        std::uint8_t dst = BEFORE;
        EXPECT_EQ(check(&dst, row.text), row.value != REFUSED) << row.text;
        EXPECT_EQ(dst, row.value == REFUSED ? BEFORE : row.value) << row.text;
        EXPECT_EQ(check(nullptr, row.text), row.value != REFUSED) << row.text;
    }
}

TEST(Checkers, NumbersWordsAndSizes) {
    checkRows({{"1", 1}, {"True", 1}, {"NO", 0}, {"", REFUSED}, {"2", REFUSED}, {"YE", REFUSED}},
              booleOptionOK);
    constexpr OptionWord words[] = {{200, "FAR"}, {3, "near-by"}, {0, nullptr}};
    checkRows({{"2", 2},
               {"120", 120},
               {"FAR", 200}, /* the limits are those of numbers */
               {"Near-By", 3},
               {"1", REFUSED},
               {"121", REFUSED},
               {"012", REFUSED},
               {"0003", REFUSED},
               {"2x", REFUSED},
               {"near", REFUSED},
               {"99999999999", REFUSED},
               {"-2", REFUSED}},
              [&](std::uint8_t *dst, const char *text) {
                  return byteOptionOK(dst, text, 2, 120, words);
              });
    EXPECT_FALSE(byteOptionOK(nullptr, "FAR", 2, 120, nullptr));
    checkRows(
        {{"0", VF_NONE}, {"Optimize", VF_NONE}, {"64", VF_I64}, {"U8", REFUSED}, {"", REFUSED}},
        [](std::uint8_t *dst, const char *text) { return intSizeOptionOK(dst, text, false); });
    checkRows({{"U8", VF_UI8}, {"u64", VF_UI64}, {"32", VF_I32}, {"U", REFUSED}, {"U0", REFUSED}},
              [](std::uint8_t *dst, const char *text) { return intSizeOptionOK(dst, text, true); });
    checkRows({{"0", VF_NONE}, {"128", VF_REAL128}, {"16", REFUSED}}, realSizeOptionOK);
    checkRows({{"", 0}, {"07", 0x81}, {"76543210", 255}, {"8", REFUSED}, {"1,", REFUSED}},
              bitVector8OptionOK);

    std::int32_t number = 5;
    EXPECT_TRUE(int32OptionOK(&number, "2147483647", 0, 2147483647));
    EXPECT_EQ(number, 2147483647);
    for (const char *text : {"2147483648", "99999999999999999999", "07", "-1", "+1", "", "1x"})
        EXPECT_FALSE(int32OptionOK(&number, text, 0, 2147483647)) << text;
    EXPECT_FALSE(int32OptionOK(&number, "11", 0, 10));
}

TEST(Checkers, Texts) {
    Text dst = "before";
    for (const char *text : {"", "a\tb", "a\x80", "\x1b[0m"})
        EXPECT_FALSE(directoryOptionOK(&dst, text)) << text;
    EXPECT_EQ(dst, "before");
    EXPECT_TRUE(directoryOptionOK(&dst, "my trees"));
    EXPECT_EQ(dst, "my trees/");
    EXPECT_TRUE(directoryOptionOK(&dst, "/"));
    EXPECT_EQ(dst, "/");
    for (const char *text : {"{5,10,3}", "{2147483647,10,32767}"})
        EXPECT_TRUE(realLimOptionOK(text)) << text;
    for (const char *text : {"{5,2,3}", "{5,10,3", "{5,10,3}x", "{,10,3}", "{2147483648,10,3}",
                             "{5,10,32768}", "{-5,10,3}", "{99999999999999999999999,10,3}"})
        EXPECT_FALSE(realLimOptionOK(text)) << text;

    EXPECT_TRUE(alnumSpecialStriOptionOK(&dst, "a_b.c", "_.", 1, 5));
    EXPECT_FALSE(alnumSpecialStriOptionOK(&dst, "a-b", "_.", 1, 5));
    for (const char *text : {"", "abcdef"})
        EXPECT_FALSE(alnumSpecialStriOptionOK(&dst, text, "_.", 1, 5)) << text;
    EXPECT_EQ(dst, "a_b.c");
}

} // namespace
