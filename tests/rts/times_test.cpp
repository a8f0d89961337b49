#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

std::string withHeader(int tag, const std::string &text) {
    std::string octets = {static_cast<char>(tag), static_cast<char>(text.size())};
    octets += text;
    return hexOf(reinterpret_cast<const BYTE_TYPE *>(octets.data()), octets.size());
}

TEST(RuntimeTimes, TextComesBackAsItWas) {
    for (const char *text : {"1985110621", "19851106210627", "198511062106", "19851106210627.3",
                             "1985110621.123456789Z", "20240229000000Z", "19851106210660-0500",
                             "99991231235959+1530", "000001010000"}) {
        DATETIMEZ time = {};
        std::string hex = withHeader(24, text);
        ASSERT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(24);
            d_GeneralizedTimeDT(&time);
        })) << text;
        EXPECT_EQ(hex, encoded([&](ASNCODG *asncodg) { e_GeneralizedTimeDT_8(24, &time); }));
        COMMONTIME same = {};
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(24);
            d_GeneralizedTimeCT(&same);
        }));
        EXPECT_STREQ(same.st, text);
        EXPECT_EQ(hex, encoded([&](ASNCODG *asncodg) { e_GeneralizedTimeCT_8(24, &same); }));
    }
    for (const char *text : {"8201021200Z", "820102120000Z", "491231235959+0100"}) {
        DATETIMEZ time = {};
        std::string hex = withHeader(23, text);
        ASSERT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(23);
            d_UTCTimeDT(&time);
        })) << text;
        EXPECT_EQ(time.year, text[0] == '8' ? 1982 : 2049);
        EXPECT_EQ(hex, encoded([&](ASNCODG *asncodg) { e_UTCTimeDT_8(23, &time); }));
    }
}

TEST(RuntimeTimes, WhatIsNoTime) {
    for (const char *text : {"", "198511062", "19851306210627", "19850229000000", "19851106240000",
                             "19851106216000", "19851106210661", "19851106210627.", "1985110621Zx",
                             "19851106210627.1234567890", "1985110621+", "1985110621+05 0",
                             "1985110 21"}) {
        DATETIMEZ time = {};
        EXPECT_EQ("VALUE_FAIL 0", decoded(withHeader(24, text), [&](ASNCODG *asncodg) {
            d_TagLen(24);
            d_GeneralizedTimeDT(&time);
        }).substr(0, 12)) << text;
        EXPECT_EQ(time.year, 0);
    }
    DATETIMEZ never = {2024, 2, 30, 0, 0, 0, 0, 0, 1, 0};
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_GeneralizedTimeDT_8(24, &never); }));
    never.day = 29;
    never.year = 2051;
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_UTCTimeDT_8(23, &never); }));
}

/* The data value in each of its three forms, and what names the syntaxes. */
TEST(RuntimeExternals, BothFormsComeBackAsTheyWere) {
    for (const char *hex : {"280f 06032a0304 020105 0701 64 a002 0500", "2808 06032a0304 8101 aa",
                            "2806 020105 8101 aa", "2808 020105 8203 04abc0"}) {
        Kept kept;
        EXTERNAL_1990 old = {};
        EXTERNAL_1994 newer = {};
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 8));
            d_External1990(&old);
        }, kept)) << hex;
        EXPECT_EQ(plain(hex), encoded([&](ASNCODG *asncodg) {
            e_External1990_8(TAG8(TAG_UNI8, TAG_STR8, 8), &old);
        }));
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 8));
            d_External1994(&newer);
        }, kept)) << hex;
        EXPECT_EQ(plain(hex), encoded([&](ASNCODG *asncodg) {
            e_External1994_8(TAG8(TAG_UNI8, TAG_STR8, 8), &newer);
        }));
    }
    for (const char *hex : {"2800", "2803 8101 aa", "2803 020105", "0803 8101 aa", "2804 0201 05 05"}) {
        EXTERNAL_1994 value = {};
        EXPECT_NE("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 8));
            d_External1994(&value);
        })) << hex;
        EXPECT_EQ(value.identification.choice, 0);
    }
}

} // namespace
