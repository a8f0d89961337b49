#include <gtest/gtest.h>

#include <cstring>

#include "tests/rts/codingcontext.h"

namespace {

const uint32 OCTETS_TAG = TAG(TAG_UNI, TAG_PRI, 4);
const uint32 BITS_TAG = TAG(TAG_UNI, TAG_PRI, 3);

struct Name {
    uint8 n;
    IA5CHAR st[8 + 1];
};
struct Capped {
    uint8 n;
    uint8 nIgnored;
    IA5CHAR st[4 + 1];
};
struct WideCapped {
    uint8 n;
    uint16 nIgnored;
    IA5CHAR st[4 + 1];
};
struct Rights {
    uint8 n;
    BITSTRING st[3];
};
struct Title {
    uint8 n;
    ASN_BMPCHAR st[4 + 1];
};

TEST(RuntimeStrings, LengthOfAValueCountsNoDividers) {
    for (const char *hex : {"8004 61626364", "a080 2480 0401 61 0000 1603 626364 0000"})
        EXPECT_EQ("ASN_OK", decoded(hex, [](ASNCODG *asncodg) {
                      Name name;
                      d_TagLen(TAG(TAG_CTX, TAG_PRI, 0));
                      EXPECT_EQ(asncodg_info->len, 4u);
                      d_IA5String8(&name, 1, 8);
                  }));
}

TEST(RuntimeStrings, WhatHasNoRoomIsCounted) {
    Capped capped = {};
    EXPECT_EQ("ASN_OK", decoded("1606 616263646566", [&](ASNCODG *asncodg) {
                  d_TagLen(TAG(TAG_UNI, TAG_PRI, 22));
                  d_IA5String8(&capped, 0, 4);
              }));
    EXPECT_STREQ(capped.st, "abcd");
    EXPECT_EQ(capped.n, 4);
    EXPECT_EQ(capped.nIgnored, 2);
    WideCapped wide = {};
    EXPECT_EQ("ASN_OK", decoded("3608 0403 616263 0401 64", [&](ASNCODG *asncodg) {
                  d_TagLen(TAG(TAG_UNI, TAG_PRI, 22));
                  d_IA5String8(&wide, 0, 4);
              }));
    EXPECT_STREQ(wide.st, "abcd");
    EXPECT_EQ(wide.nIgnored, 0);
    std::string hex = "1682012c";
    for (int i = 0; i < 300; ++i)
        hex += "61";
    EXPECT_EQ("AM_FAIL 0", decoded(hex,
                                   [&](ASNCODG *asncodg) {
                                       d_TagLen(TAG(TAG_UNI, TAG_PRI, 22));
                                       d_IA5String8(&capped, 0, 4);
                                   }))
        << "more than the counter holds is more than the type allows";
}

TEST(RuntimeStrings, LengthsHaveLimits) {
    Kept kept;
    DYNSTR8 narrow = {};
    std::string hex = "0482012c";
    for (int i = 0; i < 300; ++i)
        hex += "61";
    EXPECT_EQ("AM_FAIL 0", decoded(hex,
                                   [&](ASNCODG *asncodg) {
                                       d_TagLen(OCTETS_TAG);
                                       d_DynOctetString8(&narrow, 0, MAXLONG);
                                   }))
        << "the length member bounds the string";
    LIST list;
    EXPECT_EQ("ASN_OK", decoded(
                            "2308 0302 00ab 0302 04cf",
                            [&](ASNCODG *asncodg) {
                                d_TagLen(BITS_TAG);
                                d_SegBitString(&list, 0, 12);
                            },
                            kept));
    EXPECT_EQ("030304abc0", encoded([&](ASNCODG *asncodg) { e_SegBitString_8(3, &list); }));
    Rights rights = {25, {0, 0, 0}};
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_BitString_8(3, &rights); }))
        << "a length beyond the array is not read";
}

/* Bits that did not come are 0 as far as the type goes, and no octet behind them is touched: in a
   home the array has no end. */
TEST(RuntimeStrings, BitsThatDidNotCome) {
    struct {
        Rights rights;
        BYTE_TYPE behind[4];
    } value;
    for (const char *hex : {"0302 0780", "2304 0302 0780", "0301 00"}) {
        std::memset(&value, 0xAA, sizeof value);
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
                      d_TagLen(BITS_TAG);
                      d_BitString8(reinterpret_cast<ASN_STASTR8 *>(&value.rights), 0, 20);
                  }));
        EXPECT_EQ(hexOf(value.rights.st, 3), value.rights.n == 1 ? "800000" : "000000") << hex;
        EXPECT_EQ(hexOf(value.behind, 4), "aaaaaaaa");
    }
}

/* Bits come in segments of bits; of all but the last one each has whole octets. */
TEST(RuntimeStrings, SegmentsOfBits) {
    const auto status = [](const char *hex) {
        return decoded(hex, [](ASNCODG *asncodg) {
            Rights rights;
            d_TagLen(BITS_TAG);
            d_BitString8(reinterpret_cast<ASN_STASTR8 *>(&rights), 0, 24);
        });
    };
    EXPECT_EQ("ASN_OK", status("2308 0302 0081 0302 0480"));
    EXPECT_NE("ASN_OK", status("2308 0402 0081 0402 0480"));
    EXPECT_NE("ASN_OK", status("2308 0302 0480 0302 0081"));
}

TEST(RuntimeStrings, SpansInConstraintChecks) {
    Name name = {3, "abx"};
    EXPECT_EQ(staChrStrStrspn(&name, "abc"), 2);
    EXPECT_EQ(staChrStrStrspn(&name, "abcx"), staStrLen(&name));
    EXPECT_EQ(staChrStrStrspn0(&name, "abcx"), 3);
    ASN_BMPCHAR text[] = {'a', 0x161, 0};
    ASN_BMPString wide = {2, text};
    EXPECT_EQ(dynChrStrStrspn(&wide, "aa"), 1u) << "0x161 is not the octet 0x61";
}

/* In a list only the shape of a static string is known; its elements must still be found. */
TEST(RuntimeStrings, StaticStringsInItems) {
    Kept kept;
    LIST list;
    ASNHOME *a1 = nullptr;
    listInit(&list);
    EXPECT_EQ("ASN_OK", decoded(
                            "3008 1e02 20ac 1602 6162",
                            [&](ASNCODG *asncodg) {
                                d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
                                d_LookTagLen();
                                appendList(NULL, &list, &a1, VF_STAS8, sizeof(Title));
                                d_BMPString8(a1->val.stas8, 1, 4);
                                incListLen(&list);
                                d_LookTagLen();
                                appendList(NULL, &list, &a1, VF_STAS8, sizeof(Name));
                                d_IA5String8(a1->val.stas8, 1, 8);
                                incListLen(&list);
                                d_EOC();
                            },
                            kept));
    EXPECT_EQ(static_cast<Title *>(firstListItem(&list)->val.stru)->st[0], 0x20AC);
    EXPECT_STREQ(static_cast<Name *>(lastListItem(&list)->val.stru)->st, "ab");
    EXPECT_EQ("1e0220ac16026162", encoded([&](ASNCODG *asncodg) {
                  e_IA5String_8(22, lastListItem(&list)->val.stas8);
                  e_BMPString_8(30, firstListItem(&list)->val.stas8);
              }));
}

} // namespace
