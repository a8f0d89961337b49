#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

TEST(RuntimeTags, LengthsTakeAsManyOctetsAsTheyNeed) {
    const std::pair<uint32, const char *> cases[] = {
        {0, "0400"},       {127, "047f"},       {128, "048180"},      {255, "0481ff"},
        {256, "04820100"}, {65535, "0482ffff"}, {65536, "0483010000"}};
    for (auto [n, header] : cases) {
        std::vector<BYTE_TYPE> octets(n, 0xAB);
        DYNSTR value = {n, octets.data()}, read = {};
        std::string hex = encoded(
            [&](ASNCODG *asncodg) { e_OctetString_8(TAG8(TAG_UNI8, TAG_PRI8, 4), &value); });
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
        {TAG(TAG_CTX, TAG_PRI, 30), "9e"},
        {TAG(TAG_CTX, TAG_PRI, 31), "9f1f"},
        {TAG(TAG_APP, TAG_PRI, 127), "5f7f"},
        {TAG(TAG_PRV, TAG_PRI, 128), "df8100"},
        {TAG(TAG_CTX, TAG_PRI, 16383), "9fff7f"},
        {TAG(TAG_CTX, TAG_PRI, 16384), "9f818000"},
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
    EXPECT_EQ("bf2803bf2900bf28800000", encoded([](ASNCODG *asncodg) {
                  e_EOC();
                  e_TagIndefLen(TAG(TAG_CTX, TAG_STR, 40));
                  e_StoreEOC();
                  e_StoreEOC();
                  e_TagLen(TAG(TAG_CTX, TAG_STR, 41));
                  e_TagLen(TAG(TAG_CTX, TAG_STR, 40));
              }));
}

/* As a recursive type of generated code reads itself. */
void readNested(ASNCODG *asncodg) {
    if (d_LookTagLen() == TAG(TAG_UNI, TAG_PRI, 16))
        readNested(asncodg);
    if (d_CurrTag() != EOC_TAG)
        d_EOC();
}

TEST(RuntimeTags, AnEndOfContentsIsTwoZeros) {
    const auto skipped = [](const std::string &hex) {
        return decoded(hex, [](ASNCODG *asncodg) { d_Skip(); });
    };
    EXPECT_EQ(skipped("3080 0500 0000"), "ASN_OK");
    EXPECT_EQ(skipped("3080 0500 008100"), "TAG_FAIL 0");
    EXPECT_EQ(skipped("3080 0500 008200000000"), "TAG_FAIL 0");
    EXPECT_EQ("TAG_FAIL 2", decoded("3002 2000", [](ASNCODG *asncodg) {
                  d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
                  EXPECT_EQ(d_LookTagLen(), EOC_TAG) << "behind the error";
              }));
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
