#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "tests/rts/testingcontext.h"

namespace {

/* A value prints as the text, and asking for it makes one that prints the same. */
template <class T>
T again(const T &value, const std::string &text, void (*print)(ASNTSTG *, const T &),
        void (*ask)(ASNTSTG *, T *), Owned &owned) {
    EXPECT_EQ(text + "\n", printed([&](ASNTSTG *g) { print(g, value); }));
    T back = {};
    EXPECT_EQ("ASN_OK", asked(
                            text, [&](ASNTSTG *g) { ask(g, &back); }, owned))
        << text;
    EXPECT_EQ(text + "\n", printed([&](ASNTSTG *g) { print(g, back); }));
    return back;
}

template <class T>
T again(const T &value, const std::string &text, void (*print)(ASNTSTG *, const T &),
        void (*ask)(ASNTSTG *, T *)) {
    Owned owned;
    return again(value, text, print, ask, owned);
}

TEST(PrintAsk, WholeNumbersOfAllWidths) {
#define EDGES(type, low, high)                                                                     \
    for (type value : {std::numeric_limits<type>::min(), std::numeric_limits<type>::max()})        \
    EXPECT_EQ(value, again<type>(                                                                  \
                         value, std::to_string(value),                                             \
                         [](ASNTSTG *asntstg, const type &v) { p_##type(nullptr, v); },            \
                         [](ASNTSTG *asntstg, type *v) { a_##type(v, low, high); }))
    EDGES(uint8, 0, 255);
    EDGES(uint16, 0, 65535);
    EDGES(uint32, 0, 4294967295UL);
    EDGES(uint64, i64ltosint64(0L), i64max());
    EDGES(sint8, -128, 127);
    EDGES(sint16, MINLONG, MAXLONG);
    EDGES(sint32, MINLONG, MAXLONG);
#undef EDGES
    for (sint64 value : {INT64_MIN, sint64{0}, INT64_MAX})
        EXPECT_EQ(value, again<sint64>(
                             value, std::to_string(value),
                             [](ASNTSTG *asntstg, const sint64 &v) { p_sint64(nullptr, &v); },
                             [](ASNTSTG *asntstg, sint64 *v) { a_sint64(v, i64min(), i64max()); }));
}

void nameColours(ASNTSTG *asntstg) {
    setNamedDef(ASNG_F(asntstg) NULL, 3L);
    setNamedDef(ASNG_F(asntstg) "red", 0L);
    setNamedDef(ASNG_F(asntstg) "dark-blue", 1L);
    setNamedDef(ASNG_F(asntstg) "last", 20L);
}

TEST(PrintAsk, NumbersHaveTheNamesOfTheirTypeOnly) {
    auto print = [](ASNTSTG *asntstg, const uint8 &v) {
        nameColours(asntstg);
        p_uint8("colour", v);
    };
    auto ask = [](ASNTSTG *asntstg, uint8 *v) {
        if (ask_BegComp("colour", TCS_HEADER, TYP_ENUM)) {
            nameColours(asntstg);
            a_uint8(v, 0, 20);
        }
    };
    EXPECT_EQ(1, again<uint8>(1, "colour: dark-blue", print, ask));
    EXPECT_EQ(2, again<uint8>(2, "colour: 2", print, ask));
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

TEST(PrintAsk, NewerItemOfAnEnumeration) {
    auto print = [](ASNTSTG *asntstg, const EXTENSIBLE_ENUMERATED &v) {
        nameColours(asntstg);
        p_XEnum(nullptr, &v);
    };
    auto ask = [](ASNTSTG *asntstg, EXTENSIBLE_ENUMERATED *v) {
        nameColours(asntstg);
        a_XEnum(v, 0, 1);
    };
    EXPECT_FALSE(again<EXTENSIBLE_ENUMERATED>({FALSE, 1}, "dark-blue", print, ask).extended);
    EXPECT_TRUE(again<EXTENSIBLE_ENUMERATED>({TRUE, 20}, "last", print, ask).extended);
    EXPECT_TRUE(again<EXTENSIBLE_ENUMERATED>({TRUE, -7}, "-7", print, ask).extended);
}

template <class T> void expectReal(T value, const std::string &text) {
    auto print = [](ASNTSTG *asntstg, const T &v) {
        if (sizeof(T) == sizeof(REAL32))
            p_Real32(nullptr, v);
        else if (sizeof(T) == sizeof(REAL64))
            p_Real64(nullptr, v);
        else
            p_Real128(nullptr, v);
    };
    auto ask = [](ASNTSTG *asntstg, T *v) {
        if constexpr (sizeof(T) == sizeof(REAL32))
            a_Real32(v, CLOS_CLOS, REAL_MINUS_INF, 0, REAL_PLUS_INF, 0);
        else if constexpr (sizeof(T) == sizeof(REAL64))
            a_Real64(v, CLOS_CLOS, REAL_MINUS_INF, 0, REAL_PLUS_INF, 0);
        else
            a_Real128(v, CLOS_CLOS, REAL_MINUS_INF, 0, REAL_PLUS_INF, 0);
    };
    std::string shown = text;
    if (shown.empty()) { /* any text that gives the same number */
        shown = printed([&](ASNTSTG *g) { print(g, value); });
        shown.pop_back();
    }
    const T back = again<T>(value, shown, print, ask);
    EXPECT_EQ(std::signbit(value), std::signbit(back)) << shown;
    EXPECT_TRUE(back == value || (std::isnan(back) && std::isnan(value))) << shown;
}

TEST(PrintAsk, RealNumbersExactly) {
    expectReal<REAL32>(0.1F, "0.1");
    expectReal<REAL64>(0.1, "0.1");
    expectReal<REAL64>(-0.0, "-0");
    expectReal<REAL64>(1e300, "1e+300");
    expectReal<REAL64>(HUGE_VAL, "PLUS-INFINITY");
    expectReal<REAL128>(-HUGE_VALL, "MINUS-INFINITY");
    expectReal<REAL64>(std::nan(""), "NOT-A-NUMBER");
    unsigned long long seed = 1;
    for (int i = 0; i < 300; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        REAL32 narrow;
        REAL64 wide;
        const uint32 half = static_cast<uint32>(seed >> 32);
        std::memcpy(&narrow, &half, sizeof narrow);
        std::memcpy(&wide, &seed, sizeof wide);
        if (std::isfinite(narrow))
            expectReal<REAL32>(narrow, "");
        if (std::isfinite(wide)) {
            expectReal<REAL64>(wide, "");
            expectReal<REAL128>(static_cast<REAL128>(wide) / 3, "");
        }
    }
    for (REAL value : {REAL{REAL_NORMAL, 2.5}, REAL{REAL_MINUS_INF, 0}})
        EXPECT_EQ(value.kind,
                  again<REAL>(
                      value, value.kind == REAL_NORMAL ? "2.5" : "MINUS-INFINITY",
                      [](ASNTSTG *asntstg, const REAL &v) { p_Real(nullptr, v); },
                      [](ASNTSTG *asntstg, REAL *v) { a_Real(v, CLOS_CLOS, MINREAL, MAXREAL); })
                      .kind);
}

TEST(PrintAsk, RealNumbersOutOfRange) {
    auto ask = [](const char *script) {
        return asked(script, [](ASNTSTG *asntstg) {
            REAL32 value;
            a_Real32(&value, CLOS_OPEN, REAL_NORMAL, 0.5, REAL_NORMAL, 2.0);
        });
    };
    EXPECT_EQ("ASN_OK", ask("0.5"));
    for (const char *wrong : {"2", "0.4999", "PLUS-INFINITY", "NOT-A-NUMBER", "-1e30"})
        EXPECT_EQ("CONSTRAINT_FAIL 1 ", ask(wrong)) << wrong;
    for (const char *wrong : {"1e99999", "0x1p0", "1e", ".", "1.2.3", "nan", "\"1\"", "{"})
        EXPECT_EQ("INPUT_FAIL 1 ", ask(wrong)) << wrong;
}

/* --- strings --- */

struct Bits {
    uint8 n;
    BITSTRING st[3];
};

void nameBits(ASNTSTG *asntstg) {
    setNamedDef(ASNG_F(asntstg) NULL, 2L);
    setNamedDef(ASNG_F(asntstg) "read", 0L);
    setNamedDef(ASNG_F(asntstg) "own", 9L);
}

TEST(PrintAsk, BitsByNameOrNumber) {
    auto print = [](ASNTSTG *asntstg, const Bits &v) {
        nameBits(asntstg);
        p_BitString(nullptr, &v);
    };
    auto ask = [](ASNTSTG *asntstg, Bits *v) {
        nameBits(asntstg);
        a_BitString8(v, 0, 20);
    };
    EXPECT_EQ(10, again<Bits>({10, {0x80, 0x40, 0}}, "{ read own }", print, ask).n);
    EXPECT_EQ(12, again<Bits>({12, {0x80, 0x40, 0}}, "'100000000100'B", print, ask).n);
    EXPECT_EQ(3, again<Bits>({3, {0xA0, 0, 0}}, "'101'B", print, ask).n);
    EXPECT_EQ(0, again<Bits>({0, {0, 0, 0}}, "{ }", print, ask).n);
    EXPECT_EQ("?\nVALUE_FAIL", printed([](ASNTSTG *asntstg) {
                  Bits v = {25, {0, 0, 0}};
                  p_BitString(nullptr, &v);
              }));

    struct Mask {
        BITSTRING st[2];
    };
    Mask mask = {{0xFF, 0xFF}};
    EXPECT_EQ("ASN_OK", asked("{ own }", [&](ASNTSTG *asntstg) {
                  nameBits(asntstg);
                  a_BitString0(&mask, 12, 12);
              }));
    EXPECT_EQ(0x00, mask.st[0]);
    EXPECT_EQ(0x40, mask.st[1]);
}

TEST(PrintAsk, ManyOctetsTakeLines) {
    DYNSTR value = {70, nullptr};
    std::vector<BYTE_TYPE> octets(70);
    for (std::size_t i = 0; i < octets.size(); ++i)
        octets[i] = static_cast<BYTE_TYPE>(i * 5);
    value.st = octets.data();
    const std::string text = printed([&](ASNTSTG *asntstg) { p_OctetString("data", &value); });
    EXPECT_EQ(3, std::count(text.begin(), text.end(), '\n'));
    Owned owned;
    DYNSTR back = {};
    EXPECT_EQ("ASN_OK", asked(
                            text,
                            [&](ASNTSTG *asntstg) {
                                ask_BegComp("data", TCS_HEADER, TYP_OCTSTR);
                                a_DynOctetString(&back, 0, MAXLONG);
                            },
                            owned));
    ASSERT_EQ(70U, back.n);
    EXPECT_EQ(0, std::memcmp(octets.data(), back.st, 70));
}

struct Text {
    uint16 n;
    GENERALCHAR st[40 + 1];
};

TEST(PrintAsk, CharactersOfOneOctet) {
    Text value = {9, "a\"\\\n\0\xFF~ z"};
    const Text back = again<Text>(
        value, "\"a\\\"\\\\\\x0A\\x00\\xFF~ z\"",
        [](ASNTSTG *asntstg, const Text &v) { p_GeneralString(nullptr, &v); },
        [](ASNTSTG *asntstg, Text *v) { a_GeneralString16(v, 0, 40); });
    EXPECT_EQ(0, std::memcmp(value.st, back.st, 10));
}

TEST(PrintAsk, WideCharacters) {
    struct Title {
        uint8 n;
        ASN_BMPCHAR st[4 + 1];
    };
    Title back = again<Title>(
        {3, {'x', 0x20AC, '"', 0, 0}}, "\"x\\u20AC\\\"\"",
        [](ASNTSTG *asntstg, const Title &v) { p_BMPString(nullptr, &v); },
        [](ASNTSTG *asntstg, Title *v) { a_BMPString8(v, 0, 4); });
    EXPECT_EQ(0x20AC, back.st[1]);

    /* In a home only octets are seen; the characters stand behind the gap all the same. */
    ASN_STASTR8 *home = reinterpret_cast<ASN_STASTR8 *>(&back);
    EXPECT_EQ("\"x\\u20AC\\\"\"\n", printed([&](ASNTSTG *asntstg) {
                  asnPriString(asntstg, nullptr, ASN_HOW_(ASN_BMP_, sizeof home->n, home), home->n,
                               home->st, home->st, sizeof home->st);
              }));

    Owned owned;
    ASN_BMPString0 dynamic = {};
    EXPECT_EQ("ASN_OK", asked(
                            "\"\\u0041\\xFF\"",
                            [&](ASNTSTG *asntstg) { a_DynBMPString0(&dynamic, 2, 2); }, owned));
    EXPECT_EQ('A', dynamic.st[0]);
    EXPECT_EQ(0xFF, dynamic.st[1]);

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
    auto print = [](ASNTSTG *asntstg, const LIST &v) { p_SegOctetString(nullptr, &v); };
    auto ask = [](ASNTSTG *asntstg, LIST *v) { a_SegOctetString(v, 0, 5); };
    LIST list = {};
    for (const char *octets : {"ab", "", "cde"}) {
        ASNHOME *item = asnNewItem(&owned.memory, &list, VF_DYNS, 0);
        item->val.dyns.n = static_cast<uint32>(std::strlen(octets));
        item->val.dyns.st = reinterpret_cast<BYTE_TYPE *>(const_cast<char *>(octets));
    }
    const LIST back = again<LIST>(list, "{ '6162'H ''H '636465'H }", print, ask, owned);
    EXPECT_EQ(3U, back.n);
    LIST other = {};
    EXPECT_EQ("AM_FAIL 1 ",
              asked(
                  "{ '010203'H '040506'H }", [&](ASNTSTG *g) { ask(g, &other); }, owned));
    EXPECT_EQ("VALUE_FAIL 1 ",
              asked(
                  "{ '101'B '1'B }", [&](ASNTSTG *asntstg) { a_SegBitString(&other, 0, MAXLONG); },
                  owned));
    EXPECT_EQ("ASN_OK", asked(
                            "{ \"a\\u1234\" }",
                            [&](ASNTSTG *asntstg) { a_SegBMPString(&other, 0, 9); }, owned));
    EXPECT_EQ(0x12, other.first->val.dyns.st[2]) << "as it is encoded";
    EXPECT_EQ("{ \"a\\u1234\" }\n",
              printed([&](ASNTSTG *asntstg) { p_SegBMPString(nullptr, &other); }));
}

/* --- values of their own kind --- */

TEST(PrintAsk, IdentifiersAndTimes) {
    again<OBJECTIDENTIFIER>(
        {4, {2, 999, 0, 4294967295U}}, "{ 2 999 0 4294967295 }",
        [](ASNTSTG *asntstg, const OBJECTIDENTIFIER &v) { p_ObjectIdentifier(nullptr, &v); },
        [](ASNTSTG *asntstg, OBJECTIDENTIFIER *v) { a_ObjectIdentifier(v); });
    again<DATETIMEZ>(
        {2024, 2, 29, 23, 59, -1, 25, 2, 2, -90}, "\"202402292359.25-0130\"",
        [](ASNTSTG *asntstg, const DATETIMEZ &v) { p_GeneralizedTimeDT(nullptr, &v); },
        [](ASNTSTG *asntstg, DATETIMEZ *v) { a_GeneralizedTimeDT(v); });
    again<DATETIMEZ>(
        {1999, 12, 31, 1, 2, 3, 0, 0, 1, 0}, "\"991231010203Z\"",
        [](ASNTSTG *asntstg, const DATETIMEZ &v) { p_UTCTimeDT(nullptr, &v); },
        [](ASNTSTG *asntstg, DATETIMEZ *v) { a_UTCTimeDT(v); });
    again<COMMONTIME>(
        {11, "9912310102Z"}, "\"9912310102Z\"",
        [](ASNTSTG *asntstg, const COMMONTIME &v) { p_UTCTimeCT(nullptr, &v); },
        [](ASNTSTG *asntstg, COMMONTIME *v) { a_UTCTimeCT(v); });
    EXPECT_EQ("when: ?\nVALUE_FAIL", printed([](ASNTSTG *asntstg) {
                  DATETIMEZ nothing = {};
                  p_GeneralizedTimeDT("when", &nothing);
              }));
    OBJECTIDENTIFIER id;
    for (const char *wrong : {"{ 1 }", "{ 3 1 }", "{ 1 40 }", "{ 1 2 -3 }", "{ 1 2 4294967296 }",
                              "1", "{ 1 2 3", "{ 1 2 { 3 } }"})
        EXPECT_NE("ASN_OK", asked(wrong, [&](ASNTSTG *asntstg) { a_ObjectIdentifier(&id); }))
            << wrong;
    std::string many = "{ 1 2";
    for (int i = 2; i < MAX_ASN_OBJID_ARCS; ++i)
        many += " 3";
    EXPECT_EQ("ASN_OK", asked(many + "}", [&](ASNTSTG *asntstg) { a_ObjectIdentifier(&id); }));
    EXPECT_EQ("AM_FAIL 1 ",
              asked(many + " 3}", [&](ASNTSTG *asntstg) { a_ObjectIdentifier(&id); }));
}

TEST(PrintAsk, ExternalOfBothYears) {
    Owned owned;
    BYTE_TYPE octets[] = {0x04, 0x01, 0xF0};
    EXTERNAL_1990 old = {};
    old.compmask = 7;
    old.directReference = {2, {1, 2}};
    old.indirectReference = -3;
    old.dataValueDescriptor = {1, octets + 1};
    old.choice = 2;
    old.i1.arbitrary = {20, octets};
    const std::string text = "e: {\n  direct-reference: { 1 2 }\n  indirect-reference: -3\n"
                             "  data-value-descriptor: \"\\x01\"\n"
                             "  encoding: arbitrary: '00000100000000011111'B\n}";
    auto print = [](ASNTSTG *asntstg, const EXTERNAL_1990 &v) { p_External1990("e", &v); };
    auto ask = [](ASNTSTG *asntstg, EXTERNAL_1990 *v) {
        ask_BegComp("e", TCS_HEADER, TYP_EXTERNAL);
        a_External1990(v);
    };
    EXPECT_EQ(7, again<EXTERNAL_1990>(old, text, print, ask, owned).compmask);
    old.compmask = 0;
    old.choice = 0;
    old.i1.singleAsn1Type = asnNewFrame(&owned.memory, octets, 3, FALSE);
    again<EXTERNAL_1990>(old, "e: {\n  encoding: single-ASN1-type: '0401F0'H\n}", print, ask,
                         owned);

    for (const sint8 way : std::initializer_list<sint8>{1, 2, 3})
        for (const sint8 encoding : std::initializer_list<sint8>{0, 1, 2}) {
            EXTERNAL_1994 value = {};
            value.identification.choice = way;
            value.identification.abstractSyntax = {2, {1, 3}};
            value.identification.transferSyntax = {2, {0, 4}};
            value.identification.presentationContextId = 77;
            value.encoding = encoding;
            value.dataValue = {encoding == 2 ? 24U : 3U, octets};
            std::string shown = printed([&](ASNTSTG *asntstg) { p_External1994(nullptr, &value); });
            shown.pop_back();
            const EXTERNAL_1994 back = again<EXTERNAL_1994>(
                value, shown,
                [](ASNTSTG *asntstg, const EXTERNAL_1994 &v) { p_External1994(nullptr, &v); },
                [](ASNTSTG *asntstg, EXTERNAL_1994 *v) { a_External1994(v); }, owned);
            EXPECT_EQ(value.identification.choice, back.identification.choice) << shown;
            EXPECT_EQ(value.encoding, back.encoding) << shown;
            EXPECT_EQ(value.dataValue.n, back.dataValue.n) << shown;
        }
}

} // namespace
