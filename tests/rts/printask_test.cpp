#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "tests/rts/testingcontext.h"

#include "rts/asntest.h"
#include "rts/asntoolbuild.h"
#include "rts/asntoolrun.h"

namespace {

/* Also what sources of the layer share: another name would not be found. */
TEST(RuntimeHeaders, DeclareFunctionsOfC) {
    EXPECT_EQ(11, asnHexDigit('b'));
    const void *const functions[] = {reinterpret_cast<const void *>(&asnTextFromTime),
                                     reinterpret_cast<const void *>(&asnTestPath),
                                     reinterpret_cast<const void *>(&asnDropJson),
                                     reinterpret_cast<const void *>(&asnIsFile)};
    for (const void *function : functions)
        EXPECT_NE(function, nullptr);
}

void nameColours(ASNTSTG *asntstg) {
    setNamedDef(ASNG_F(asntstg) NULL, 3L);
    setNamedDef(ASNG_F(asntstg) "red", 0L);
    setNamedDef(ASNG_F(asntstg) "dark-blue", 1L);
    setNamedDef(ASNG_F(asntstg) "last", 20L);
}

TEST(PrintAsk, NumbersHaveTheNamesOfTheirTypeOnly) {
    EXPECT_EQ("a: red\nb: 0\n", printed([](ASNTSTG *asntstg) {
                  nameColours(asntstg);
                  p_uint8("a", 0);
                  p_uint8("b", 0);
              }));
    uint8 one = 9, two = 9;
    EXPECT_EQ("INPUT_FAIL 1 ", asked("red red", [&](ASNTSTG *asntstg) {
                  nameColours(asntstg);
                  a_uint8(&one, 0, 20);
                  a_uint8(&two, 0, 20);
              }));
    EXPECT_EQ(0, one);
    EXPECT_EQ(9, two);
}

/* Printed and asked for again, a number is the same. */
template <class T> void expectReal(T value) {
    T back = 77;
    const std::string text = printed([&](ASNTSTG *asntstg) {
        if (sizeof(T) == sizeof(REAL32))
            p_Real32(nullptr, value);
        else if (sizeof(T) == sizeof(REAL64))
            p_Real(nullptr, value);
        else
            p_Real128(nullptr, value);
    });
    EXPECT_EQ("ASN_OK", asked(text, [&](ASNTSTG *asntstg) {
                  if constexpr (sizeof(T) == sizeof(REAL32))
                      a_Real32(&back, CLOS_CLOS, REAL_MINUS_INF, 0, REAL_PLUS_INF, 0);
                  else if constexpr (sizeof(T) == sizeof(REAL64))
                      a_Real(&back, CLOS_CLOS, MINREAL, MAXREAL);
                  else
                      a_Real128(&back, CLOS_CLOS, REAL_MINUS_INF, 0, REAL_PLUS_INF, 0);
              }));
    EXPECT_EQ(std::signbit(value), std::signbit(back)) << text;
    EXPECT_TRUE(back == value || (std::isnan(back) && std::isnan(value))) << text;
}

TEST(PrintAsk, RealNumbersExactly) {
    expectReal<REAL64>(-0.0);
    expectReal<REAL64>(HUGE_VAL);
    expectReal<REAL128>(-HUGE_VALL);
    expectReal<REAL64>(std::nan(""));
    expectReal<REAL64>(0x1.c0cbacff11d27p+281); /* in a wider form on the way it is rounded twice */
    unsigned long long seed = 1;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        REAL32 narrow;
        REAL64 wide;
        const uint32 half = static_cast<uint32>(seed >> 32);
        std::memcpy(&narrow, &half, sizeof narrow);
        std::memcpy(&wide, &seed, sizeof wide);
        if (std::isfinite(narrow))
            expectReal<REAL32>(narrow);
        if (std::isfinite(wide)) {
            expectReal<REAL64>(wide);
            expectReal<REAL128>(static_cast<REAL128>(wide) / 3);
        }
    }
}

TEST(PrintAsk, RangesOfRealNumbers) {
    for (const char *wrong : {"2", "0.4999", "PLUS-INFINITY", "NOT-A-NUMBER", "-1e30"})
        EXPECT_EQ("CONSTRAINT_FAIL 1 ", asked(wrong,
                                              [](ASNTSTG *asntstg) {
                                                  REAL32 value;
                                                  a_Real32(&value, CLOS_OPEN, REAL_NORMAL, 0.5,
                                                           REAL_NORMAL, 2.0);
                                              }))
            << wrong;
}

TEST(PrintAsk, WhatIsNoValueOfItsTypeIsShown) {
    struct {
        uint8 n;
        BITSTRING st[3];
    } bits = {25, {0, 0, 0}};
    DATETIMEZ nothing = {};
    EXPECT_EQ("bits: ?\nwhen: ?\nVALUE_FAIL", printed([&](ASNTSTG *asntstg) {
                  p_BitString("bits", &bits);
                  p_GeneralizedTimeDT("when", &nothing);
              }));
}

TEST(PrintAsk, NamedBitsOfAFixedString) {
    struct {
        BITSTRING st[2];
    } mask = {{0xFF, 0xFF}};
    EXPECT_EQ("ASN_OK", asked("{ own }", [&](ASNTSTG *asntstg) {
                  setNamedDef(ASNG_F(asntstg) NULL, 2L);
                  setNamedDef(ASNG_F(asntstg) "read", 0L);
                  setNamedDef(ASNG_F(asntstg) "own", 9L);
                  a_BitString0(&mask, 12, 12);
              }));
    EXPECT_EQ(0x00, mask.st[0]);
    EXPECT_EQ(0x40, mask.st[1]);
}

/* In a home only octets are seen; the characters stand behind the gap all the same. */
TEST(PrintAsk, WideCharacters) {
    struct {
        uint8 n;
        ASN_BMPCHAR st[4 + 1];
    } title = {3, {'x', 0x20AC, '"', 0, 0}};
    const auto *home = reinterpret_cast<const ASN_STASTR8 *>(&title);
    EXPECT_EQ("\"x\\u20AC\\\"\"\n", printed([&](ASNTSTG *asntstg) {
                  asnPriString(asntstg, nullptr, ASN_HOW_(ASN_BMP_, sizeof home->n, home), home->n,
                               home->st, home->st, sizeof home->st);
              }));
    Owned owned;
    DYNSTR universal = {};
    EXPECT_EQ("ASN_OK", asked(
                            "\"a\\U0001F600\"",
                            [&](ASNTSTG *asntstg) { a_Dyn(&universal, 0, MAXLONG); }, owned));
    ASSERT_EQ(2U, universal.n);
    uint32 characters[2];
    std::memcpy(characters, universal.st, sizeof characters);
    EXPECT_EQ(0x1F600U, characters[1]);
}

TEST(PrintAsk, SegmentsStayApart) {
    Owned owned;
    LIST list = {};
    const std::string text = "{ '6162'H ''H '636465'H }";
    auto ask = [&](const std::string &script) {
        return asked(
            script, [&](ASNTSTG *asntstg) { a_SegOctetString(&list, 0, 5); }, owned);
    };
    EXPECT_EQ("ASN_OK", ask(text));
    EXPECT_EQ(3U, list.n);
    EXPECT_EQ(text + "\n", printed([&](ASNTSTG *asntstg) { p_SegOctetString(nullptr, &list); }));
    EXPECT_EQ("AM_FAIL 1 ", ask("{ '010203'H '040506'H }"));
    EXPECT_EQ("VALUE_FAIL 1 ",
              asked(
                  "{ '101'B '1'B }", [&](ASNTSTG *asntstg) { a_SegBitString(&list, 0, MAXLONG); },
                  owned));
    EXPECT_EQ("ASN_OK", asked(
                            "{ \"a\\u1234\" }",
                            [&](ASNTSTG *asntstg) { a_SegBMPString(&list, 0, 9); }, owned));
    EXPECT_EQ(0x12, list.first->val.dyns.st[2]) << "as it is encoded";
    EXPECT_EQ("{ \"a\\u1234\" }\n",
              printed([&](ASNTSTG *asntstg) { p_SegBMPString(nullptr, &list); }));
}

/* Years of two digits belong to 1950 to 2049. */
TEST(PrintAsk, YearsOfUTCTime) {
    for (auto [text, year] : {std::pair{"\"500101000000Z\"", 1950}, {"\"491231235959Z\"", 2049}}) {
        DATETIMEZ time = {};
        EXPECT_EQ("ASN_OK", asked(text, [&](ASNTSTG *asntstg) { a_UTCTimeDT(&time); }));
        EXPECT_EQ(year, time.year);
        EXPECT_EQ(std::string(text) + "\n",
                  printed([&](ASNTSTG *asntstg) { p_UTCTimeDT(nullptr, &time); }));
    }
}

} // namespace
