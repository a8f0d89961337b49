#include <gtest/gtest.h>

#include "tests/rts/codingcontext.h"

namespace {

/* A value of a known type as a frame: its tag is its own. A component's tag may be written once
   more around it, in both forms of length, and must not come twice. */
TEST(RuntimeFrames, FramesOfKnownTypes) {
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
              encoded([&](ASNCODG *asncodg) { e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 16), &frame); }))
        << "the tag of another place";
    EXPECT_EQ("bf51030101ff",
              encoded([&](ASNCODG *asncodg) { e_Frame(TAG(TAG_CTX, TAG_PRI, 81), &frame); }));
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
              }))
        << "another tag stays";
    EXPECT_EQ("a6030101ff", encoded([&](ASNCODG *asncodg) { e_Frame(&frame); }))
        << "an untagged type leaves the tag out";
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
