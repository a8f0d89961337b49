#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

/* A primitive tag takes the place of the frame's own, a constructed one goes around it, and other
   tags are no concern of a frame, be they the same. */
TEST(RuntimeFrames, Tags) {
    Kept kept;
    FRAME_PTR frame = nullptr;
    EXPECT_EQ("ASN_OK", decoded(
                            "a603 0101ff",
                            [&](ASNCODG *asncodg) {
                                d_LookTagLen();
                                d_Frame(&frame, TYP_SEQ);
                            },
                            kept));
    EXPECT_EQ(hexOf(frame->octets, frame->length), "a6030101ff");
    EXPECT_EQ("b0030101ff",
              encoded([&](ASNCODG *asncodg) { e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 16), &frame); }));
    EXPECT_EQ("bf51030101ff",
              encoded([&](ASNCODG *asncodg) { e_Frame(TAG(TAG_CTX, TAG_PRI, 81), &frame); }));
    EXPECT_EQ("a605a6030101ff",
              encoded([&](ASNCODG *asncodg) { e_Frame_8(TAG8(TAG_CTX8, TAG_STR8, 6), &frame); }));
    EXPECT_EQ("a605a6030101ffa680a6030101ff00000500", encoded([&](ASNCODG *asncodg) {
                  e_NullType_8(TAG8(UNI8, PRI8, 5));
                  e_EOC();
                  e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 6), &frame);
                  e_Tag8IndefLen(TAG8(TAG_CTX8, TAG_STR8, 6));
                  e_StoreEOC();
                  e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 6), &frame);
                  e_Tag8Len(TAG8(TAG_CTX8, TAG_STR8, 6));
              }));
    EXPECT_EQ("a6030101ff", encoded([&](ASNCODG *asncodg) { e_Frame(&frame); }))
        << "an untagged type leaves the tag out";
}

/* A program's frame goes into messages as it is, so it has to be one encoding. */
TEST(RuntimeFrames, AreOneEncoding) {
    const auto written = [](const std::string &hex) {
        Kept kept;
        const std::vector<BYTE_TYPE> octets = octetsOf(hex);
        FRAME_PTR frame = asnNewFrame(&kept.memory, octets.data(), octets.size());
        return encoded([&](ASNCODG *asncodg) { e_Frame_0(&frame); });
    };
    for (const char *hex : {"020105", "30800500 0000", "3080 3080 0000 3000 0000"})
        EXPECT_EQ(written(hex), plain(hex));
    for (const char *hex : {"", "02", "0202 05", "020105 00", "0000", "2000", "3080 0500", "3080 0000 00"})
        EXPECT_EQ(written(hex), "VALUE_FAIL") << hex;
    EXTENSIONMARKER none = {};
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_Extensionmarker(&none); }))
        << "a choice of it would hold nothing";
}

/* An element that is there and one that is not: what follows is no part of it. */
TEST(RuntimeFrames, AreNotTakenFromBehindAnEnd) {
    Kept kept;
    FRAME_PTR frame = nullptr;
    const auto inHand = [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
        d_LookTagLen();
        d_Frame(&frame, TYP_CHOICE);
        d_EOC();
    };
    EXPECT_EQ("ASN_OK", decoded("3004 3002 0500", inHand, kept));
    EXPECT_EQ("TAG_FAIL 4", decoded("3005 3000 020105", inHand, kept));
}

TEST(RuntimeFrames, ASkippedValueMayHaveNoTagOfItsOwn) {
    EXPECT_EQ("ASN_OK", decoded("3005 020105 0500", [](ASNCODG *asncodg) {
                  d_TagLen(TAG(TAG_UNI, TAG_PRI, 16));
                  d_TagLen(TAG(TAG_UNI, TAG_PRI, 2));
                  d_Skip();
                  d_Skip();
                  d_EOC();
              }));
}

} // namespace
