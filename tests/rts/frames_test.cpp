#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

const uint32 SEQUENCE_TAG = TAG(TAG_UNI, TAG_PRI, 16);

TEST(RuntimeFrames, KeepWhatTheyAreAsItIs) {
    for (const char *hex : {"0101ff", "3003020105", "3080 3080 0000 0101ff 0000", "9f8100 01 77"}) {
        Kept kept;
        FRAME_PTR read = nullptr;
        EXPECT_EQ("ASN_OK", decoded(hex, [&](ASNCODG *asncodg) { d_Frame_0(&read); }, kept));
        EXPECT_EQ(hexOf(read->octets, read->length), plain(hex));
        EXPECT_EQ(plain(hex), encoded([&](ASNCODG *asncodg) { e_Frame_0(&read); }));
    }
    FRAME_PTR frame = nullptr;
    auto read = [&](ASNCODG *asncodg) { d_Frame_0(&frame); };
    EXPECT_EQ("LEN_FAIL 0", decoded("3004020105", read));
    EXPECT_EQ("TAG_FAIL 0", decoded("0000", read));
    EXPECT_EQ("LEN_FAIL 0", decoded("3080 3080 0000 0101ff", read));
    EXPECT_EQ(frame, nullptr);
    EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) { e_Frame_0(&frame); }));
}

/* An ANY under a tag: the tag is read before the frame and goes around it when it is written. */
TEST(RuntimeFrames, TaggedAny) {
    Kept kept;
    FRAME_PTR frame = nullptr;
    EXPECT_EQ("ASN_OK", decoded("a003 0101ff", [&](ASNCODG *asncodg) {
        d_TagLen(TAG(TAG_CTX, TAG_PRI, 0));
        d_Frame_0(&frame);
        d_EOC();
    }, kept));
    EXPECT_EQ("a0030101ff", encoded([&](ASNCODG *asncodg) {
        e_Frame_8(TAG8(TAG_CTX8, TAG_STR8, 0), &frame);
    }));
}

/* A value of a known type as a frame: its tag is its own. A component's tag may be written once more
   around it, in both forms of length, and must not come twice. */
TEST(RuntimeFrames, FramesOfKnownTypes) {
    Kept kept;
    FRAME_PTR frame = nullptr;
    EXPECT_EQ("ASN_OK", decoded("a603 0101ff", [&](ASNCODG *asncodg) {
        d_LookTagLen();
        d_Frame(&frame, TYP_SEQ);
    }, kept));
    EXPECT_EQ(hexOf(frame->octets, frame->length), "a6030101ff");
    EXPECT_EQ("b0030101ff", encoded([&](ASNCODG *asncodg) {
        e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 16), &frame);
    })) << "the tag of another place";
    EXPECT_EQ("bf51030101ff", encoded([&](ASNCODG *asncodg) {
        e_Frame(TAG(TAG_CTX, TAG_PRI, 81), &frame);
    }));
    EXPECT_EQ("a6030101ff", encoded([&](ASNCODG *asncodg) {
        e_StoreEOC();
        e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 6), &frame);
        e_Tag8Len(TAG8(TAG_CTX8, TAG_STR8, 6));
    }));
    EXPECT_EQ("a6030101ff0500", encoded([&](ASNCODG *asncodg) {
        e_NullType_8(TAG8(UNI8, PRI8, 5));
        e_EOC();
        e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 6), &frame);
        e_Tag8IndefLen(TAG8(TAG_CTX8, TAG_STR8, 6));
    }));
    EXPECT_EQ("a505a6030101ff", encoded([&](ASNCODG *asncodg) {
        e_StoreEOC();
        e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 6), &frame);
        e_Tag8Len(TAG8(TAG_CTX8, TAG_STR8, 5));
    })) << "another tag stays";
    EXPECT_EQ("a6030101ff", encoded([&](ASNCODG *asncodg) {
        e_Frame ( &frame);
    })) << "an untagged type leaves the tag out";
}

TEST(RuntimeFrames, UnknownComponents) {
    Kept kept;
    EXTENSIONMARKER marker;
    EXPECT_EQ("ASN_OK", decoded("3080 020105 8001aa a180 0101ff 0000 0000", [&](ASNCODG *asncodg) {
        uint8 number = 0;
        initExtensionmarker(&marker);
        d_TagLen(SEQUENCE_TAG);
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 2));
        d_uint8(&number, 0, 255);
        d_LookTagLen();
        while (d_CurrTag()) {
            d_Extensionmarker(&marker);
            d_LookTagLen();
        }
    }, kept));
    EXPECT_EQ(marker.n, 2u);
    EXPECT_EQ("8001aaa1800101ff0000", encoded([&](ASNCODG *asncodg) {
        e_Extensionmarker(&marker);
    }));
    EXPECT_EQ("ASN_OK", decoded("3080 020105 8001aa a180 0101ff 0000 0000", [](ASNCODG *asncodg) {
        int passed = 0;
        d_TagLen(SEQUENCE_TAG);
        for (d_LookTagLen(); d_CurrTag(); d_LookTagLen(), ++passed)
            d_Skip();
        EXPECT_EQ(passed, 3);
    }));
    EXPECT_EQ("ASN_OK", decoded("3005 020105 0500", [](ASNCODG *asncodg) {
        d_TagLen(SEQUENCE_TAG);
        d_TagLen(TAG(TAG_UNI, TAG_PRI, 2));
        d_Skip();
        d_Skip(); // a component that is skipped and has no tag of its own
        d_EOC();
    }));
}

} // namespace
