#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

TEST(RuntimeTags, LengthsTakeAsManyOctetsAsTheyNeed) {
    const std::pair<uint32, const char *> cases[] = {
        {0, "0400"},         {127, "047f"},           {128, "048180"},
        {255, "0481ff"},     {256, "04820100"},       {65535, "0482ffff"},
        {65536, "0483010000"}};
    for (auto [n, header] : cases) {
        std::vector<BYTE_TYPE> octets(n, 0xAB);
        DYNSTR value = {n, octets.data()}, read = {};
        std::string hex = encoded([&](ASNCODG *asncodg) {
            e_OctetString_8(TAG8(TAG_UNI8, TAG_PRI8, 4), &value);
        });
        EXPECT_EQ(hex.substr(0, std::string(header).size()), header);
        EXPECT_EQ(hex.size(), std::string(header).size() + 2 * n);
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 4));
            d_DynOctetString(&read, 0, MAXLONG);
            EXPECT_EQ(hexOf(read.st, read.n), hexOf(octets.data(), n));
        }));
    }
}

TEST(RuntimeTags, NumbersTakeAsManyOctetsAsTheyNeed) {
    const std::pair<uint32, const char *> cases[] = {
        {TAG(TAG_CTX, TAG_PRI, 30), "9e"},           {TAG(TAG_CTX, TAG_PRI, 31), "9f1f"},
        {TAG(TAG_APP, TAG_PRI, 127), "5f7f"},        {TAG(TAG_PRV, TAG_PRI, 128), "df8100"},
        {TAG(TAG_CTX, TAG_PRI, 16383), "9fff7f"},    {TAG(TAG_CTX, TAG_PRI, 16384), "9f818000"},
        {TAG(TAG_UNI, TAG_PRI, 0x1FFFFFFF), "1f81ffffff7f"}};
    for (auto [number, octets] : cases) {
        const uint32 tag = number;
        std::string hex = encoded([&](ASNCODG *asncodg) { e_Boolean(tag, TRUE); });
        EXPECT_EQ(hex, std::string(octets) + "01ff");
        BOOLE value = FALSE;
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) {
            d_TagLen(tag);
            d_Boolean(&value);
        }));
        EXPECT_EQ(value, TRUE);
    }
}

TEST(RuntimeTags, HeadersThatAreNone) {
    const std::pair<const char *, const char *> cases[] = {
        {"", "LEN_FAIL 0"},
        {"01", "LEN_FAIL 0"},
        {"9f", "TAG_FAIL 0"},
        {"9f80", "TAG_FAIL 0"},           // a tag's number with an idle octet
        {"9f1e 00", "TAG_FAIL 0"},        // a number that has its own short form
        {"9f84 ffffff7f 00", "TAG_FAIL 0"}, // a number beyond 29 bits
        {"01ff ff", "LEN_FAIL 0"},        // the reserved length
        {"0180 ff 0000", "LEN_FAIL 0"},   // nothing primitive is of indefinite length
        {"0102 ff", "LEN_FAIL 0"},
        {"0185 0100000001 ff", "LEN_FAIL 0"},
        {"0184 ffffffff ff", "LEN_FAIL 0"},
        {"0000", "TAG_FAIL 0"},
        {"0101 ff 00", "REST_FAIL 3"}};
    for (auto [hex, result] : cases)
        EXPECT_EQ(result, decoded(hex, [](ASNCODG *asncodg) {
            BOOLE value = 0;
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
            d_Boolean(&value);
        })) << hex;
    EXPECT_EQ("ASN_OK", decoded("0186 000000000001 ff", [](ASNCODG *asncodg) {
        BOOLE value = 0;
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
        d_Boolean(&value);
    })) << "a length may have idle octets";
}

/* A SEQUENCE of a BOOLEAN under an explicit tag. */
void readWrapped(ASNCODG *asncodg) {
    BOOLE value = 0;
    d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
    d_TagLen(TAG(TAG_CTX, TAG_PRI, 0));
    d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
    d_Boolean(&value);
    d_EOC();
    d_EOC();
}

TEST(RuntimeTags, DefiniteAndIndefiniteFormsMix) {
    for (const char *hex : {"3005 a003 0101ff", "3080 a003 0101ff 0000", "3007 a080 0101ff 0000",
                            "3080 a080 0101ff 0000 0000"})
        EXPECT_EQ("ASN_OK", decoded(hex, readWrapped)) << hex;
    const std::pair<const char *, const char *> wrong[] = {
        {"3080 a080 0101ff 0000", "LEN_FAIL 9"},
        {"3080 a080 0101ff 0000 0001", "EOC_FAIL 9"},
        {"3006 a003 0101ff 00", "EOC_FAIL 7"},
        {"3004 a003 0101ff", "LEN_FAIL 2"},  // the inner one is longer than the outer one
        {"3005 8003 0101ff", "FORM_FAIL 2"}, // explicit but primitive
        {"1005 a003 0101ff", "FORM_FAIL 0"},
        {"3005 a003 2101ff", "FORM_FAIL 4"}, // a constructed BOOLEAN
        {"3005 a003 2101", "LEN_FAIL 0"}};
    for (auto [hex, result] : wrong)
        EXPECT_EQ(result, decoded(hex, readWrapped)) << hex;
}

TEST(RuntimeTags, EncoderWritesBothForms) {
    auto write = [](BOOLE definite) {
        return encoded([definite](ASNCODG *asncodg) {
            if (definite)
                e_StoreEOC();
            else
                e_EOC();
            if (definite)
                e_StoreEOC();
            else
                e_EOC();
            e_Boolean_8(TAG8(TAG_UNI8, TAG_PRI8, 1), 5);
            if (definite)
                e_TagLen(TAG(TAG_CTX, TAG_STR, 40));
            else
                e_TagIndefLen(TAG(TAG_CTX, TAG_STR, 40));
            if (definite)
                e_Tag8Len(TAG8(TAG_UNI8, TAG_STR8, 16));
            else
                e_Tag8IndefLen(TAG8(TAG_UNI8, TAG_STR8, 16));
        });
    };
    EXPECT_EQ(write(TRUE), "3006bf28030101ff");
    EXPECT_EQ(write(FALSE), "3080bf28800101ff00000000");
    EXPECT_EQ(encoded([](ASNCODG *asncodg) { e_NullType(TAG(TAG_CTX, TAG_PRI, 99)); }, 3), "9f6300");
    EXPECT_EQ(encoded([](ASNCODG *asncodg) { e_uint8_8(2, 200); }, 3), "ROOM_FAIL");
}

/* As a recursive type of generated code reads itself. */
void readNested(ASNCODG *asncodg) {
    if (d_LookTagLen() == TAG(TAG_UNI, TAG_PRI, 16))
        readNested(asncodg);
    if (d_CurrTag() != EOC_TAG)
        d_EOC();
}

TEST(RuntimeTags, NestingHasALimit) {
    auto nested = [](int depth) {
        std::string hex;
        for (int i = 0; i < depth; ++i)
            hex += "3080";
        for (int i = 0; i < depth; ++i)
            hex += "0000";
        return hex;
    };
    auto skip = [](ASNCODG *asncodg) { d_Skip(); };
    EXPECT_EQ("DEPTH_FAIL 512", decoded(nested(ASN_MAX_NESTING + 1), readNested));
    EXPECT_EQ("DEPTH_FAIL 512", decoded(nested(100000), readNested));
    EXPECT_EQ("ASN_OK", decoded(nested(100000), skip)) << "passing over needs no stack";
    EXPECT_EQ("DEPTH_FAIL", encoded([](ASNCODG *asncodg) {
        for (int i = 0; i <= ASN_MAX_NESTING; ++i)
            e_StoreEOC();
    }));
}

TEST(RuntimeTags, PeekingTakesNothing) {
    EXPECT_EQ("ASN_OK", decoded("3080 0101ff 0000", [](ASNCODG *asncodg) {
        BOOLE value = 0;
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
        peekT(*asncodg_frame, &asncodg_tag);
        EXPECT_EQ(asncodg_tag, TAG(TAG_UNI, TAG_PRI, 1));
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
        d_Boolean(&value);
        peekT(*asncodg_frame, &asncodg_tag);
        EXPECT_EQ(asncodg_tag, static_cast<uint32>(EOC_TAG));
        EXPECT_EQ(d_LookTagLen(), static_cast<uint32>(EOC_TAG));
    }));
}

/* After the first error nothing is read or written, loops end, and the error stays the first. */
TEST(RuntimeTags, CallsAfterAnErrorAreHarmless) {
    EXPECT_EQ("VALUE_FAIL 2", decoded("3006 0100 0101ff 00", [](ASNCODG *asncodg) {
        BOOLE value = 77;
        uint8 number = 77;
        DYNSTR string = {77, nullptr};
        FRAME_PTR frame = nullptr;
        OBJECTIDENTIFIER id = {};
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
        d_Boolean(&value);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(d_LookTagLen(), static_cast<uint32>(EOC_TAG));
            d_TagLen(TAG(TAG_UNI, TAG_PRI, 1));
            d_Boolean(&value);
            d_uint8(&number, 0, 255);
            d_DynOctetString(&string, 0, MAXLONG);
            d_ObjectIdentifier(&id);
            d_Frame_0(&frame);
            d_Frame_1(&frame);
            d_Skip();
            d_EOC();
            reportError(ASNG_F(asncodg) MM_FAIL);
            peekT(*asncodg_frame, &asncodg_tag);
            EXPECT_EQ(asncodg_tag, static_cast<uint32>(EOC_TAG));
        }
        EXPECT_EQ(value, 77);
        EXPECT_EQ(number, 77);
        EXPECT_EQ(string.n, 77u);
        EXPECT_EQ(id.n, 0);
        EXPECT_EQ(frame, nullptr);
    }));
}

} // namespace
