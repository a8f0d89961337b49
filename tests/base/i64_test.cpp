#include "base/i64.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace {

constexpr std::int32_t MAX32 = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t MIN32 = std::numeric_limits<std::int32_t>::min();
constexpr std::uint32_t UMAX32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::int64_t MAX64 = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t MIN64 = std::numeric_limits<std::int64_t>::min();

sint64 of(std::int64_t n) {
    const auto bits = static_cast<std::uint64_t>(n);
    return i64make(static_cast<std::int32_t>(static_cast<std::uint32_t>(bits >> 32)),
                   static_cast<std::uint32_t>(bits));
}

std::int64_t native(sint64 a) {
    return static_cast<std::int64_t>(std::uint64_t{static_cast<std::uint32_t>(i64hi(a))} << 32 |
                                     i64lo(a));
}

constexpr std::int64_t BORDERS[] = {
    MIN64, MIN64 + 1, -4294967297, -4294967296, MIN32,      -65536,    -10,       -1,   0, 1, 10,
    65535, MAX32,     UMAX32,      4294967296,  4294967297, 1LL << 62, MAX64 - 1, MAX64};

TEST(I64, SumsAndDifferencesWrapAround) {
    for (const std::int64_t a : BORDERS) {
        for (const std::int64_t b : BORDERS) {
            const auto ua = static_cast<std::uint64_t>(a);
            const auto ub = static_cast<std::uint64_t>(b);
            EXPECT_EQ(static_cast<std::uint64_t>(native(i64add(of(a), of(b)))), ua + ub);
            EXPECT_EQ(static_cast<std::uint64_t>(native(i64sub(of(a), of(b)))), ua - ub);
            EXPECT_EQ(i64cmp(of(a), of(b)), a < b ? -1 : a > b ? 1 : 0);
        }
    }
    EXPECT_EQ(i64hi(i64ltosint64(-1)), -1);
    EXPECT_EQ(i64hi(i64ultosint64(UMAX32)), 0);
    EXPECT_EQ(native(i64subl(i64min(), 1)), MAX64);
    EXPECT_EQ(native(i64neg(i64min())), MIN64);
}

TEST(I64, DivisionTruncatesTowardZero) {
    for (const std::int64_t a : BORDERS) {
        for (const std::int32_t n : {1, 2, -2, 10, -10, MAX32, MIN32})
            EXPECT_EQ(native(i64divl(of(a), n)), a / n) << a << " / " << n;
        EXPECT_EQ(native(i64divl(of(a), 0)), MAX64);
    }
    EXPECT_EQ(native(i64divl(i64min(), -1)), MIN64);
    EXPECT_EQ(native(i64divul(of(-4294967295), UMAX32)), -1);
    EXPECT_EQ(native(i64divul(of(1), 0)), MAX64);
}

TEST(I64, NarrowsOnlyWhatFits) {
    for (const std::int64_t a : BORDERS) {
        std::int32_t l = 0;
        const bool fits = a >= MIN32 && a <= MAX32;
        EXPECT_EQ(i64tol(of(a), &l), fits) << a;
        EXPECT_EQ(l, fits ? static_cast<std::int32_t>(a) : MAX32) << a;
        std::uint32_t u = 0;
        const bool fitsUnsigned = a >= 0 && a <= UMAX32;
        EXPECT_EQ(i64toul(of(a), &u), fitsUnsigned) << a;
        EXPECT_EQ(u, fitsUnsigned ? static_cast<std::uint32_t>(a) : UMAX32) << a;
        EXPECT_EQ(i64isneg(of(a)), a < 0);
    }
    std::int32_t l = 0;
    EXPECT_FALSE(i64tol(of(2147483648), &l));
    EXPECT_FALSE(i64tol(of(-2147483649), &l));
    EXPECT_LT(i64cmpl(of(MIN64), -1), 0);
    EXPECT_GT(i64cmpul(of(4294967296), UMAX32), 0);
}

TEST(I64, TextOfANumber) {
    for (const std::int64_t a : BORDERS)
        EXPECT_EQ(i64tostr(of(a)), std::to_string(a));
}

} // namespace
