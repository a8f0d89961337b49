#include <gtest/gtest.h>

#include "asntree/numberset.h"

using namespace asntree;

namespace {

/* "MIN..5 7" as a set, ranges in any order. */
NumberSet parse(const std::string &text) {
    std::vector<NumberRange> ranges;
    const auto number = [](std::string_view word) {
        if (word == "MIN" || word == "MAX")
            return word == "MIN" ? Number::least() : Number::greatest();
        return Number::ofDigits(word.substr(word[0] == '-' ? 1 : 0), word[0] == '-');
    };
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, end - at);
        const std::size_t dots = word.find("..");
        const std::string upper = dots == std::string::npos ? word : word.substr(dots + 2);
        ranges.push_back({number(word.substr(0, dots)), number(upper)});
        at = end + 1;
    }
    return NumberSet::ofRanges(std::move(ranges));
}

struct Row {
    const char *a;
    const char *b;
    const char *united;
    const char *intersected;
    const char *without;
};

TEST(NumberSet, CombinesSetsOfAnySize) {
    const Row rows[] = {
        {"1..5", "6..9", "1..9", "", "1..5"},
        {"9 1..3 3..7", "5..20 -4", "-4 | 1..20", "5..7 | 9", "1..4"},
        {"MIN..MAX", "0 2", "MIN..MAX", "0 | 2", "MIN..-1 | 1 | 3..MAX"},
        {"MIN..-1", "MIN..MAX", "MIN..MAX", "MIN..-1", ""},
        {"0..255", "", "0..255", "", "0..255"},
        {"0..115792089237316195423570985008687907853269984665640564039457584007913129639935",
         "9..99",
         "0..115792089237316195423570985008687907853269984665640564039457584007913129639935",
         "9..99",
         "0..8 | "
         "100..115792089237316195423570985008687907853269984665640564039457584007913129639935"},
    };
    for (const Row &row : rows) {
        const NumberSet a = parse(row.a);
        const NumberSet b = parse(row.b);
        const NumberSet united = parse(std::string(row.a) + " " + row.b);
        EXPECT_EQ(textOf(united), row.united);
        EXPECT_EQ(textOf(intersected(a, b)), row.intersected);
        EXPECT_EQ(textOf(without(a, b)), row.without);
        EXPECT_TRUE(isWithin(intersected(a, b), a));
        EXPECT_TRUE(isWithin(a, united));
        EXPECT_EQ(isWithin(a, b), without(a, b).empty());
    }
}

TEST(NumberSet, ReachesTheEndsOfMachineNumbers) {
    EXPECT_EQ(asInt64(Number::ofDigits("9223372036854775808", true)), INT64_MIN);
    EXPECT_FALSE(asInt64(Number::ofDigits("9223372036854775808")));
    EXPECT_EQ(asUint64(Number::ofDigits("18446744073709551615")), UINT64_MAX);
    EXPECT_FALSE(asUint64(Number::ofDigits("18446744073709551616")));
    EXPECT_EQ(textOf(next(Number::of(-1))), "0");
    EXPECT_EQ(textOf(previous(Number::of(0))), "-1");
    EXPECT_EQ(textOf(previous(Number::ofDigits("1000"))), "999");
    EXPECT_EQ(textOf(next(Number::ofDigits("000999"))), "1000");
}

} // namespace
