#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/rts/codingcontext.h"

namespace {

const uint32 INTEGER_TAG = TAG(TAG_UNI, TAG_PRI, 2);
const uint32 REAL_TAG = TAG(TAG_UNI, TAG_PRI, 9);

TEST(RuntimeNumbers, FewestOctetsBothWays) {
    const std::pair<sint64, const char *> cases[] = {
        {0, "020100"},           {127, "02017f"},          {128, "02020080"},
        {-1, "0201ff"},          {-128, "020180"},         {-129, "0202ff7f"},
        {255, "020200ff"},       {32767, "02027fff"},      {32768, "0203008000"},
        {-32768, "02028000"},    {INT32_MAX, "02047fffffff"}, {INT32_MIN, "020480000000"},
        {UINT32_MAX, "020500ffffffff"},
        {INT64_MAX, "02087fffffffffffffff"}, {INT64_MIN, "02088000000000000000"}};
    for (auto [number, hex] : cases) {
        const sint64 value = number;
        EXPECT_EQ(hex, encoded([&](ASNCODG *asncodg) { e_sint64_8(2, &value); }));
        sint64 read = 1;
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(INTEGER_TAG);
            d_sint64(&read, i64min(), i64max());
        }));
        EXPECT_EQ(read, value);
    }
    EXPECT_EQ("9f6402ff7f", encoded([](ASNCODG *asncodg) { e_sint16(TAG(TAG_CTX, TAG_PRI, 100), -129); }));
    const uint64 most = UINT64_MAX;
    EXPECT_EQ("020900ffffffffffffffff", encoded([&](ASNCODG *asncodg) { e_uint64_8(2, most); }));
    uint64 read = 0;
    EXPECT_EQ("ASN_OK", decoded("020900ffffffffffffffff", [&](ASNCODG *asncodg) {
        d_TagLen(INTEGER_TAG);
        d_uint64(&read, i64ltosint64(0L), MAXLONG);
    }));
    EXPECT_EQ(read, most);
}

TEST(RuntimeNumbers, WhatIsNoNumberOrOutOfRange) {
    auto asUint8 = [](ASNCODG *asncodg) {
        uint8 value = 0;
        d_TagLen(INTEGER_TAG);
        d_uint8(&value, 10, 200);
    };
    const std::pair<const char *, const char *> cases[] = {
        {"0200", "VALUE_FAIL 0"},     {"02020010", "VALUE_FAIL 0"}, {"0202ff80", "VALUE_FAIL 0"},
        {"020109", "CONSTRAINT_FAIL 0"}, {"02010a", "ASN_OK"},      {"020200c8", "ASN_OK"},
        {"020200c9", "CONSTRAINT_FAIL 0"}, {"0201ff", "CONSTRAINT_FAIL 0"},
        {"0209010000000000000000", "CONSTRAINT_FAIL 0"}, {"2203020110", "FORM_FAIL 0"}};
    for (auto [hex, result] : cases)
        EXPECT_EQ(result, decoded(hex, asUint8)) << hex;
    /* The form of the variable is a bound as well. */
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
    for (auto [hex, result] : {std::pair{"0500", "ASN_OK"}, {"0501 00", "VALUE_FAIL 0"}})
        EXPECT_EQ(result, decoded(hex, [](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 5));
            d_NullType();
        }));
    for (auto [hex, result] : {std::pair{"010105", "ASN_OK"}, {"0100", "VALUE_FAIL 0"},
                               {"01020000", "VALUE_FAIL 0"}}) {
        BOOLE value = FALSE;
        EXPECT_EQ(result, decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
            d_Boolean(&value);
        }));
        EXPECT_EQ(value, std::string(result) == "ASN_OK" ? TRUE : FALSE);
    }
}

TEST(RuntimeNumbers, ItemsOfANewerVersion) {
    EXTENSIBLE_ENUMERATED item = {};
    auto read = [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 10));
        d_XEnum(&item, 0, 3);
    };
    EXPECT_EQ("ASN_OK", decoded("0a0103", read));
    EXPECT_FALSE(item.extended);
    EXPECT_EQ("ASN_OK", decoded("0a020100", read));
    EXPECT_TRUE(item.extended);
    EXPECT_EQ(item.value, 256);
    EXPECT_EQ("0a020100", encoded([&](ASNCODG *asncodg) { e_XEnum_8(10, &item); }));
}

/* Reads any real number. */
std::string readReal(const std::string &hex, REAL64 &value) {
    return decoded(hex, [&](ASNCODG *asncodg) {
        d_TagLen(REAL_TAG);
        d_Real64(&value, CLOS_CLOS, REAL_MINUS_INF, 0.0, REAL_PLUS_INF, 0.0);
    });
}

TEST(RuntimeReals, BinaryNumbersComeBackExactly) {
    const REAL64 numbers[] = {0.0, 1.0, -1.0, 0.1, -1e-300, 5e-324, 1.7976931348623157e308, 3e5,
                              1.0 / 3, 4503599627370497.0, HUGE_VAL, -HUGE_VAL, 0.15625};
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
        if (std::isfinite(number) && std::fabs(number) > static_cast<REAL64>(FLT_MAX))
            EXPECT_EQ(result, "VALUE_FAIL 0");
        else
            EXPECT_EQ(narrow, static_cast<REAL32>(number));
    }
    REAL128 wide = 1.0L / 3, again = 0;
    EXPECT_EQ("ASN_OK", decoded(encoded([&](ASNCODG *asncodg) {
        e_Real128_8(9, wide, BIN_ENC, 0);
    }), [&](ASNCODG *asncodg) {
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

TEST(RuntimeReals, EncodingsOfOthers) {
    const std::pair<const char *, REAL64> cases[] = {
        {"0903 80fb05", 0.15625},       // base 2
        {"0903 90fe0a", 0.15625},       // base 8
        {"0903 acfe05", 0.15625},       // base 16, scale 3
        {"0904 81ffff 05", 2.5},        // two octets of exponent
        {"0905 8302fffb 05", 0.15625},  // the exponent tells its size
        {"0905 c0000000 05", -5},       // idle octets of the mantissa
        {"090e 80000102030405060708090a0b0c", 0x102030405060708090a0b0cp0},
        {"0905 0133303030", 3000},      // NR1
        {"0908 02202d332c313430", -3.14}, // NR2 with a comma
        {"0907 03312e354532 35", 1.5e25}, // NR3
        {"0900", 0}};
    for (auto [hex, number] : cases) {
        REAL64 read = 77;
        EXPECT_EQ("ASN_OK", readReal(hex, read)) << hex;
        EXPECT_DOUBLE_EQ(read, number) << hex;
    }
    for (const char *hex : {"090180", "09028000", "0903b00001", "090144", "09024000", "090104",
                            "0903 01312e", "0902 0345", "0905 0331453020", "0903830000",
                            "0907 8304 7fffffff01", "0907 0331453939 3939"}) {
        REAL64 read = 77;
        EXPECT_EQ("VALUE_FAIL 0", readReal(hex, read)) << hex;
        EXPECT_EQ(read, 77);
    }
}

TEST(RuntimeReals, DecimalDigitsAndRanges) {
    EXPECT_EQ("0907022d312e353030", encoded([](ASNCODG *asncodg) {
        e_Real64_8(9, -1.5, NR2_ENC, 3) ;
    }));
    EXPECT_EQ("090302372e", encoded([](ASNCODG *asncodg) { e_Real32_8(9, 7.0F, NR2_ENC, 0) ; }));
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
    REAL value = {};
    EXPECT_EQ("ASN_OK", decoded("090141", [&](ASNCODG *asncodg) {
        d_TagLen(REAL_TAG);
        d_Real(&value, CLOS_CLOS, MINREAL, 5.0);
    }));
    EXPECT_EQ(value.kind, REAL_MINUS_INF);
    EXPECT_EQ("090141", encoded([&](ASNCODG *asncodg) { e_Real_8(9, value, BIN_ENC, 0); }));
}

TEST(RuntimeNumbers, ObjectIdentifiers) {
    const std::pair<OBJECTIDENTIFIER, const char *> cases[] = {
        {{2, {0, 39}}, "060127"},
        {{3, {1, 2, 840}}, "06032a8648"},
        {{2, {2, 999}}, "06028837"},
        {{3, {2, UINT32_MAX, UINT32_MAX}}, "060a908080804f8fffffff7f"}};
    for (const auto &[id, hex] : cases) {
        const OBJECTIDENTIFIER &value = id;
        EXPECT_EQ(hex, encoded([&](ASNCODG *asncodg) { e_ObjectIdentifier_8(6, &value); }));
        OBJECTIDENTIFIER read = {};
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 6));
            d_ObjectIdentifier(&read);
        }));
        ASSERT_EQ(read.n, value.n);
        for (int i = 0; i < read.n; ++i)
            EXPECT_EQ(read.arc[i], value.arc[i]);
    }
    for (const char *hex : {"0600", "06012a 06", "060188", "06022a80", "06032a8001",
                            "06062a9fffffff7f", "0606ffffffffff7f"}) {
        OBJECTIDENTIFIER read;
        EXPECT_NE("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 6));
            d_ObjectIdentifier(&read);
        })) << hex;
    }
    std::string full = "062a";
    for (int i = 0; i < 42; ++i)
        full += "01";
    OBJECTIDENTIFIER read;
    EXPECT_EQ("AM_FAIL 0", decoded(full, [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 6));
        d_ObjectIdentifier(&read);
    }));
    for (OBJECTIDENTIFIER bad : {OBJECTIDENTIFIER{1, {1}}, {2, {1, 40}}, {2, {3, 1}}, {33, {1, 1}}})
        EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_ObjectIdentifier_8(6, &bad); }));
}

} // namespace
