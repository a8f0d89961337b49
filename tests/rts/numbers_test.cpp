#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/rts/codingcontext.h"

namespace {

const uint32 INTEGER_TAG = TAG(TAG_UNI, TAG_PRI, 2);
const uint32 REAL_TAG = TAG(TAG_UNI, TAG_PRI, 9);

TEST(RuntimeNumbers, TheFormOfTheVariableIsABound) {
    const uint64 most = UINT64_MAX;
    uint64 read = 0;
    EXPECT_EQ("020900ffffffffffffffff", encoded([&](ASNCODG *asncodg) { e_uint64_8(2, most); }));
    EXPECT_EQ("ASN_OK", decoded("020900ffffffffffffffff", [&](ASNCODG *asncodg) {
                  d_TagLen(INTEGER_TAG);
                  d_uint64(&read, i64ltosint64(0L), MAXLONG);
              }));
    EXPECT_EQ(read, most);
    EXPECT_EQ("CONSTRAINT_FAIL 0", decoded("02020080", [](ASNCODG *asncodg) {
                  sint8 value = 0;
                  d_TagLen(INTEGER_TAG);
                  d_sint8(&value, MINLONG, MAXLONG);
              }));
    EXPECT_EQ("CONSTRAINT_FAIL 0", decoded("02050100000000", [](ASNCODG *asncodg) {
                  uint32 value = 0;
                  d_TagLen(INTEGER_TAG);
                  d_uint32(&value, 0, MAXLONG);
              }));
}

TEST(RuntimeNumbers, WhatHasNoEncoding) {
    for (OBJECTIDENTIFIER bad : {OBJECTIDENTIFIER{1, {1}}, {2, {1, 40}}, {2, {3, 1}}, {33, {1, 1}}})
        EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_ObjectIdentifier_8(6, &bad); }));
    DATETIMEZ never = {2024, 2, 30, 0, 0, 0, 0, 0, 1, 0};
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_GeneralizedTimeDT_8(24, &never); }));
    never.day = 129;
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_GeneralizedTimeDT_8(24, &never); }));
    never.day = 29;
    never.year = 2051;
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_UTCTimeDT_8(23, &never); }));
}

/* Reads any real number. */
std::string readReal(const std::string &hex, REAL64 &value) {
    return decoded(hex, [&](ASNCODG *asncodg) {
        d_TagLen(REAL_TAG);
        d_Real64(&value, CLOS_CLOS, REAL_MINUS_INF, 0.0, REAL_PLUS_INF, 0.0);
    });
}

TEST(RuntimeReals, BinaryNumbersComeBackExactly) {
    const REAL64 numbers[] = {0.0,
                              1.0,
                              -1.0,
                              0.1,
                              -1e-300,
                              5e-324,
                              1.7976931348623157e308,
                              3e5,
                              1.0 / 3,
                              4503599627370497.0,
                              HUGE_VAL,
                              -HUGE_VAL,
                              0.15625};
    for (REAL64 number : numbers) {
        REAL64 read = 77;
        std::string hex = encoded([&](ASNCODG *asncodg) { e_Real64_8(9, number, BIN_ENC, 0); });
        EXPECT_EQ("ASN_OK", readReal(hex, read)) << hex;
        EXPECT_EQ(read, number) << hex;
        REAL32 narrow = 0;
        std::string result = decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(REAL_TAG);
            d_Real32(&narrow, CLOS_CLOS, REAL_MINUS_INF, 0.0, REAL_PLUS_INF, 0.0);
        });
        const REAL64 held = static_cast<REAL64>(static_cast<REAL32>(number));
        if (std::isfinite(number) && (std::isinf(held) || (held == 0 && number != 0)))
            EXPECT_EQ(result, "VALUE_FAIL 0") << "too large or too small";
        else
            EXPECT_EQ(narrow, static_cast<REAL32>(number));
    }
    REAL128 wide = 1.0L / 3, again = 0;
    EXPECT_EQ("ASN_OK",
              decoded(encoded([&](ASNCODG *asncodg) { e_Real128_8(9, wide, BIN_ENC, 0); }),
                      [&](ASNCODG *asncodg) {
                          d_TagLen(REAL_TAG);
                          d_Real128(&again, CLOS_CLOS, REAL_MINUS_INF, 0.0, REAL_PLUS_INF, 0.0);
                      }));
    EXPECT_EQ(again, wide);
    REAL64 zero = 1;
    EXPECT_EQ("ASN_OK", readReal("090143", zero));
    EXPECT_TRUE(zero == 0 && std::signbit(zero));
    EXPECT_EQ("ASN_OK", readReal("090142", zero));
    EXPECT_TRUE(std::isnan(zero));
}

/* Each form rounds a long mantissa once; neither infinity nor 0 comes of a number that is none. */
TEST(RuntimeReals, RoundingAndLimits) {
    const auto readWide = [](const std::string &hex, REAL128 &value) {
        return decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(REAL_TAG);
            d_Real128(&value, CLOS_CLOS, REAL_MINUS_INF, 0.0, REAL_PLUS_INF, 0.0);
        });
    };
    REAL128 wide = 0;
    EXPECT_EQ("ASN_OK", readWide("090b 8000 018000000000000001", wide));
    EXPECT_EQ(wide, std::ldexp(3.0L, 63) + 1.0L) << "a tie goes to the even one, where it is one";
    EXPECT_EQ("ASN_OK", readWide("090d 8000 8000000000000001 800001", wide));
    EXPECT_EQ(wide, std::ldexp(1.0L, 87) + std::ldexp(2.0L, 24));
    REAL64 value = 0;
    EXPECT_EQ("ASN_OK", readReal("090d 8000 8000000000000400 000001", value));
    EXPECT_EQ(value, std::ldexp(1.0, 87) + std::ldexp(1.0, 35));
    EXPECT_EQ("VALUE_FAIL 0", readWide("0906 8280000001 01", wide));
    EXPECT_EQ("VALUE_FAIL 0", readReal("0904 81f80001", value));
    EXPECT_EQ("VALUE_FAIL 0", readReal("0907 03 31652d393939", value)) << "1e-999";
    EXPECT_EQ("ASN_OK", readReal("0907 03 30652d393939", value)) << "0e-999";
    EXPECT_EQ(value, 0);
    EXPECT_EQ("ASN_OK", readReal("0904 81f80000", value));
    const std::string digits = "362e38313134313631353235393832343934653834"; /* 6.8114161525982494e84 */
    EXPECT_EQ("ASN_OK", readReal("0916 03" + digits, value));
    EXPECT_EQ(value, 0x1.c0cbacff11d27p+281) << "64 bits on the way would be rounded twice";
}

TEST(RuntimeReals, DecimalDigitsAndRanges) {
    EXPECT_EQ("0907022d312e353030",
              encoded([](ASNCODG *asncodg) { e_Real64_8(9, -1.5, NR2_ENC, 3); }));
    EXPECT_EQ("090302372e", encoded([](ASNCODG *asncodg) { e_Real32_8(9, 7.0F, NR2_ENC, 0); }));
    auto within = [](int closure) {
        return decoded("0903 800001", [closure](ASNCODG *asncodg) {
            REAL64 value;
            d_TagLen(REAL_TAG);
            d_Real64(&value, closure, REAL_NORMAL, 1.0, REAL_NORMAL, 1.0);
        });
    };
    EXPECT_EQ("ASN_OK", within(CLOS_CLOS));
    for (int closure : {CLOS_OPEN, OPEN_CLOS, OPEN_OPEN})
        EXPECT_EQ("CONSTRAINT_FAIL 0", within(closure));
    REAL value = 0;
    EXPECT_EQ("ASN_OK", decoded("090141", [&](ASNCODG *asncodg) {
                  d_TagLen(REAL_TAG);
                  d_Real(&value, CLOS_CLOS, MINREAL, 5.0);
              }));
    EXPECT_EQ(value, -HUGE_VAL);
    EXPECT_EQ("090141", encoded([&](ASNCODG *asncodg) { e_Real_8(9, value, BIN_ENC, 0); }));
}

} // namespace
