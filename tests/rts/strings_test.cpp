#include <gtest/gtest.h>

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
struct Key {
    OCTET st[4];
};
struct Rights {
    uint8 n;
    BITSTRING st[3];
};
struct Title {
    uint8 n;
    ASN_BMPCHAR st[4 + 1];
};

std::string readName(const std::string &hex, Name &name) {
    return decoded(hex, [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_CTX, TAG_PRI, 0));
        d_IA5String8(&name, 1, 8);
    });
}

TEST(RuntimeStrings, PrimitiveAndSegmentedFormsAreTheSame) {
    for (const char *hex : {"8004 61626364", "a008 0402 6162 0402 6364",
                            "a080 0402 6162 0402 6364 0000", "a008 1602 6162 0402 6364",
                            "a080 2480 0401 61 0000 1603 626364 0000",
                            "a00c 0400 0400 0404 61626364 0400"}) {
        Name name = {};
        EXPECT_EQ("ASN_OK", readName(hex, name)) << hex;
        EXPECT_STREQ(name.st, "abcd");
        EXPECT_EQ(name.n, 4);
    }
    const std::pair<const char *, const char *> wrong[] = {
        {"8000", "CONSTRAINT_FAIL 0"},
        {"8009 616263646566676869", "AM_FAIL 0"},
        {"a00d 0405 6162636465 0404 66676869", "AM_FAIL 0"},
        {"8001 80", "VALUE_FAIL 0"},
        {"a003 020161", "TAG_FAIL 2"},
        {"a003 040261", "LEN_FAIL 2"},
        {"a080 0401 61", "LEN_FAIL 5"}};
    for (auto [hex, result] : wrong) {
        Name name = {};
        EXPECT_EQ(result, readName(hex, name)) << hex;
        EXPECT_EQ(name.n, 0) << hex;
    }
}

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
    EXPECT_EQ("AM_FAIL 0", decoded(hex, [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 22));
        d_IA5String8(&capped, 0, 4);
    })) << "more than the counter holds is more than the type allows";
}

TEST(RuntimeStrings, Bits) {
    Rights rights = {};
    auto read = [&](ASNCODG *asncodg) {
        d_TagLen(BITS_TAG);
        d_BitString8(&rights, 0, 20);
    };
    EXPECT_EQ("ASN_OK", decoded("0303 04 abcf", read));
    EXPECT_EQ(rights.n, 12);
    EXPECT_EQ(hexOf(rights.st, 2), "abc0") << "unused bits are cleared";
    EXPECT_EQ("030304abc0", encoded([&](ASNCODG *asncodg) { e_BitString_8(3, &rights); }));
    EXPECT_EQ("ASN_OK", decoded("2308 0302 00ab 0302 04c0", read));
    EXPECT_EQ(rights.n, 12);
    EXPECT_EQ("ASN_OK", decoded("0301 00", read));
    EXPECT_EQ(rights.n, 0);
    EXPECT_EQ("030100", encoded([&](ASNCODG *asncodg) { e_BitString_8(3, &rights); }));
    for (const char *hex : {"0300", "0301 01", "0302 08ab", "2308 0302 04a0 0302 00ab"})
        EXPECT_EQ("VALUE_FAIL", decoded(hex, read).substr(0, 10)) << hex;
    EXPECT_EQ("AM_FAIL 0", decoded("0304 03 abcdef", read));
    rights.n = 25;
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_BitString_8(3, &rights); }))
        << "a length beyond the array is not read";
}

TEST(RuntimeStrings, FixedAndWideForms) {
    Key key = {};
    EXPECT_EQ("ASN_OK", decoded("0404 01020304", [&](ASNCODG *asncodg) {
        d_TagLen(OCTETS_TAG);
        d_OctetString0(&key, 4, 4);
    }));
    EXPECT_EQ("040401020304", encoded([&](ASNCODG *asncodg) { e_OctetString0_8(4, 4, &key); }));
    EXPECT_EQ("CONSTRAINT_FAIL 0", decoded("0403 010203", [&](ASNCODG *asncodg) {
        d_TagLen(OCTETS_TAG);
        d_OctetString0(&key, 4, 4);
    }));
    Title title = {};
    auto readTitle = [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 30));
        d_BMPString8(&title, 1, 4);
    };
    EXPECT_EQ("ASN_OK", decoded("1e04 0041 20ac", readTitle));
    EXPECT_EQ(title.n, 2);
    EXPECT_EQ(title.st[1], 0x20AC);
    EXPECT_EQ(title.st[2], 0);
    EXPECT_EQ("1e04004120ac", encoded([&](ASNCODG *asncodg) { e_BMPString_8(30, &title); }));
    EXPECT_EQ("ASN_OK", decoded("3e08 0401 00 0403 4120ac", readTitle)) << "cut within a character";
    EXPECT_EQ("VALUE_FAIL 0", decoded("1e03 004120", readTitle));
    EXPECT_EQ("AM_FAIL 0", decoded("1e0a 00410041004100410041", readTitle));
}

TEST(RuntimeStrings, DynamicForms) {
    Kept kept;
    DYNSTR8 narrow = {};
    DYNSTR0 bare = {};
    ASN_BMPString wide = {};
    std::string hex = "0482012c";
    for (int i = 0; i < 300; ++i)
        hex += "61";
    EXPECT_EQ("AM_FAIL 0", decoded(hex, [&](ASNCODG *asncodg) {
        d_TagLen(OCTETS_TAG);
        d_DynOctetString8(&narrow, 0, MAXLONG);
    })) << "the length member bounds the string";
    EXPECT_EQ("ASN_OK", decoded("1603 616263", [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 22));
        d_DynIA5String0(&bare, 3, 3);
    }, kept));
    EXPECT_STREQ(reinterpret_cast<char *>(bare.st), "abc");
    EXPECT_EQ("1603616263", encoded([&](ASNCODG *asncodg) { e_IA5String0_8(22, 3, &bare); }));
    EXPECT_EQ("ASN_OK", decoded("1e02 20ac", [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 30));
        d_DynBMPString(&wide, 0, MAXLONG);
    }, kept));
    EXPECT_EQ(wide.n, 1u);
    EXPECT_EQ(wide.st[0], 0x20AC);
    EXPECT_EQ("ASN_OK", decoded("2400", [&](ASNCODG *asncodg) {
        d_TagLen(OCTETS_TAG);
        d_DynOctetString8(&narrow, 0, 5);
    }, kept));
    EXPECT_EQ(narrow.n, 0);
    EXPECT_NE(narrow.st, nullptr);
}

TEST(RuntimeStrings, Segments) {
    Kept kept;
    LIST list;
    auto readOctets = [&](ASNCODG *asncodg) {
        d_TagLen(OCTETS_TAG);
        d_SegOctetString(&list, 0, 10);
    };
    auto readBits = [&](ASNCODG *asncodg) {
        d_TagLen(BITS_TAG);
        d_SegBitString(&list, 0, 12);
    };
    for (auto [hex, count, again] : {std::tuple{"2480 0402 6162 0401 63 0000", 2u, "0403616263"},
                                     {"0403 616263", 1u, "0403616263"},
                                     {"2400", 0u, "0400"}}) {
        EXPECT_EQ("ASN_OK", decoded(hex, readOctets, kept));
        EXPECT_EQ(listLen(&list), count);
        EXPECT_EQ(again, encoded([&](ASNCODG *asncodg) { e_SegOctetString_8(4, &list); }));
    }
    EXPECT_EQ("ASN_OK", decoded("2308 0302 00ab 0302 04cf", readBits, kept));
    EXPECT_EQ("030304abc0", encoded([&](ASNCODG *asncodg) { e_SegBitString_8(3, &list); }));
    EXPECT_EQ("AM_FAIL 0", decoded("2308 0302 00ab 0302 03cf", readBits, kept));
}

TEST(RuntimeStrings, CharactersOfEachKind) {
    const char *all = "az09 '?@*_";
    auto accepted = [&](auto read, uint32 tag) {
        std::string result;
        for (const char *p = all; *p; ++p) {
            std::vector<BYTE_TYPE> octets = {static_cast<BYTE_TYPE>(tag), 1,
                                             static_cast<BYTE_TYPE>(*p)};
            if (decoded(octets, read) == "ASN_OK")
                result += *p;
        }
        return result;
    };
    Name name;
    EXPECT_EQ("09 ", accepted([&](ASNCODG *asncodg) {
        d_TagLen(18);
        d_NumericString8(&name, 0, 8);
    }, 18));
    EXPECT_EQ("az09 '?", accepted([&](ASNCODG *asncodg) {
        d_TagLen(19);
        d_PrintableString8(&name, 0, 8);
    }, 19));
    EXPECT_EQ(all, accepted([&](ASNCODG *asncodg) {
        d_TagLen(26);
        d_VisibleString8(&name, 0, 8);
    }, 26));
    EXPECT_EQ("VALUE_FAIL 0", decoded("1a01 0a", [&](ASNCODG *asncodg) {
        d_TagLen(26);
        d_VisibleString8(&name, 0, 8);
    }));
    EXPECT_EQ("ASN_OK", decoded("1401 ff", [&](ASNCODG *asncodg) {
        d_TagLen(20);
        d_T61String8(&name, 0, 8);
    }));
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
    EXPECT_EQ("ASN_OK", decoded("3008 1e02 20ac 1602 6162", [&](ASNCODG *asncodg) {
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
    }, kept));
    EXPECT_EQ(static_cast<Title *>(firstListItem(&list)->val.stru)->st[0], 0x20AC);
    EXPECT_STREQ(static_cast<Name *>(lastListItem(&list)->val.stru)->st, "ab");
    EXPECT_EQ("1e0220ac16026162", encoded([&](ASNCODG *asncodg) {
        e_IA5String_8(22, lastListItem(&list)->val.stas8);
        e_BMPString_8(30, firstListItem(&list)->val.stas8);
    }));
}

} // namespace
