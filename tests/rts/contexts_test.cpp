#include <gtest/gtest.h>

#include <cstring>

#include <sys/mman.h>

#include "tests/rts/codingcontext.h"
#include "tests/rts/testingcontext.h"

/* Contexts that a program opens itself: after an error functions return to it. */

namespace {

constexpr uint32 universal(uint32 number) {
    return TAG(TAG_UNI, TAG_PRI, number);
}

/* Where any value has room. */
union Value {
    BYTE_TYPE octets[2000];
    uint64 number64;
    sint64 signed64;
    REAL64 real;
    DYNSTR string;
    DYNSTR8 short_;
    LIST list;
    DATETIMEZ time;
    COMMONTIME text;
    FRAME_PTR frame;
    EXTENSIONMARKER marker;
    OBJECTIDENTIFIER id;
    EXTERNAL_1990 old;
    EXTERNAL_1994 young;
    ANY any;
    struct {
        uint8 n;
        IA5CHAR st[8 + 1];
    } name;
};

using Reading = void (*)(ASNCODG *asncodg, Value *v);

const struct {
    const char *result, *hex;
    Reading read;
} wrongEncodings[] = {
    {"CONSTRAINT_FAIL 0", "020106",
     [](ASNCODG *asncodg, Value *v) { d_sint64(&v->signed64, 0, 5); }},
    {"VALUE_FAIL 0", "0200", [](ASNCODG *asncodg, Value *v) { d_sint64(&v->signed64, 0, 5); }},
    {"CONSTRAINT_FAIL 0", "0209010000000000000000",
     [](ASNCODG *asncodg, Value *v) { d_uint64(&v->number64, 0, MAXLONG); }},
    {"VALUE_FAIL 0", "0209007f00000000000000",
     [](ASNCODG *asncodg, Value *v) { d_uint64(&v->number64, 0, MAXLONG); }},
    {"FORM_FAIL 0", "2203020100", [](ASNCODG *asncodg, Value *v) { d_uint64(&v->number64, 0, 5); }},
    {"FORM_FAIL 0", "2900",
     [](ASNCODG *asncodg, Value *v) { d_Real(&v->real, CLOS_CLOS, MINREAL, MAXREAL); }},
    {"VALUE_FAIL 0", "090403312e45",
     [](ASNCODG *asncodg, Value *v) { d_Real(&v->real, CLOS_CLOS, MINREAL, MAXREAL); }},
    {"TAG_FAIL 2", "240305016104 00",
     [](ASNCODG *asncodg, Value *v) { d_DynOctetString(&v->string, 0, 9); }},
    {"VALUE_FAIL 0", "030108",
     [](ASNCODG *asncodg, Value *v) { d_DynBitString(&v->string, 0, 9); }},
    {"VALUE_FAIL 2", "23080301080302ff00",
     [](ASNCODG *asncodg, Value *v) { d_DynBitString(&v->string, 0, 90); }},
    {"VALUE_FAIL 0", "1601ff", [](ASNCODG *asncodg, Value *v) { d_IA5String8(&v->name, 0, 8); }},
    {"AM_FAIL 0", "1603616263", [](ASNCODG *asncodg, Value *v) { d_IA5String8(&v->name, 0, 2); }},
    {"VALUE_FAIL 2", "2303030108",
     [](ASNCODG *asncodg, Value *v) { d_SegBitString(&v->list, 0, 90); }},
    {"AM_FAIL 21",
     "382604113230323430313031303030303030303030041130303030303030303030303030303030305a",
     [](ASNCODG *asncodg, Value *v) { d_GeneralizedTimeCT(&v->text); }},
    {"VALUE_FAIL 0", "180161", [](ASNCODG *asncodg, Value *v) { d_GeneralizedTimeDT(&v->time); }},
    {"TAG_FAIL 2", "3803020100", [](ASNCODG *asncodg, Value *v) { d_UTCTimeCT(&v->text); }},
    {"FORM_FAIL 0", "0800", [](ASNCODG *asncodg, Value *v) { d_External1990(&v->old); }},
    {"TAG_FAIL 2", "2803830100", [](ASNCODG *asncodg, Value *v) { d_External1990(&v->old); }},
    {"TAG_FAIL 2", "2803830100", [](ASNCODG *asncodg, Value *v) { d_External1994(&v->young); }},
    {"VALUE_FAIL 2", "2803810161", [](ASNCODG *asncodg, Value *v) { d_External1994(&v->young); }},
    {"FORM_FAIL 0", "2600", [](ASNCODG *asncodg, Value *v) { d_ObjectIdentifier(&v->id); }},
};

/* The error is told, and neither this value nor a later one is touched. */
TEST(OpenContexts, AfterAnErrorNothingIsDecoded) {
    for (const auto &row : wrongEncodings) {
        Kept kept;
        Value value, before;
        std::memset(&value, 0x5A, sizeof value);
        before = value;
        const auto calls = [&](ASNCODG *asncodg) {
            d_LookTagLen();
            row.read(asncodg, &value);
            uint32 tag = 0;
            EXPECT_EQ(EOC_TAG, peekT(*asncodg, &tag));
            d_TagLen(universal(2));
            d_uint64(&value.number64, 0, MAXLONG);
            d_Frame(&value.frame, TYP_SEQ);
            d_Extensionmarker(&value.marker);
            d_EOC();
        };
        EXPECT_EQ(row.result, decoded(std::string(row.hex) + "020105", calls, kept)) << row.hex;
        EXPECT_EQ(0, std::memcmp(&before, &value, sizeof value)) << row.hex << " at " << row.result;
    }
}

TEST(OpenContexts, MoreOctetsThanLengthsCount) {
    const size_t size = static_cast<size_t>(INT32_MAX) + 4096;
    void *const room = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(MAP_FAILED, room);
    auto context = std::make_unique<ASNCODG>();
    ASNERROR error;
    asnOpenDecoder(context.get(), room, size, nullptr);
    EXPECT_FALSE(asnDecoded(context.get(), nullptr, &error));
    EXPECT_STREQ("LEN_FAIL", asnErrorName(error.code));
    asnOpenEncoder(context.get(), room, size);
    asnEncBoolean8(context.get(), 1, TRUE);
    size_t length = 0;
    const BYTE_TYPE *const octets = asnEncoded(context.get(), &length, nullptr);
    EXPECT_EQ(static_cast<BYTE_TYPE *>(room) + size - 3, octets) << "at the end of the buffer";
    EXPECT_EQ(3U, length);
    munmap(room, size);
    EXPECT_STREQ("unknown error", asnErrorName(-1));
    EXPECT_STREQ("unknown error", asnErrorName(ASN_NR_OF_ERRORS));
}

/* Calls that write an encoding write nothing outside a buffer that is too small for it. */
TEST(OpenContexts, WhereThereIsNoRoom) {
    static BYTE_TYPE octets[] = {'a', 'b', 'c'};
    static ASN_BMPCHAR characters[] = {'a', 0x20AC};
    using Writing = void (*)(ASNCODG * asncodg);
    const std::pair<const char *, Writing> rows[] = {
        {"0101ff", [](ASNCODG *asncodg) { e_Boolean_8(1, TRUE); }},
        {"0500", [](ASNCODG *asncodg) { e_NullType_8(5); }},
        {"9f2800", [](ASNCODG *asncodg) { e_NullType(TAG(TAG_CTX, TAG_PRI, 40)); }},
        {"020900ffffffffffffffff", [](ASNCODG *asncodg) { e_uint64_8(2, UINT64_MAX); }},
        {"a0800000",
         [](ASNCODG *asncodg) {
             e_EOC();
             e_Tag8IndefLen(TAG8(TAG_CTX8, TAG_STR8, 0));
         }},
        {"bf3f020500",
         [](ASNCODG *asncodg) {
             e_StoreEOC();
             e_NullType_8(5);
             e_TagLen(TAG(TAG_CTX, TAG_STR, 63));
         }},
        {"0303036160",
         [](ASNCODG *asncodg) {
             DYNSTR bits = {13, octets};
             e_BitString_8(3, &bits);
         }},
        {"1e04006120ac",
         [](ASNCODG *asncodg) {
             ASN_BMPString text = {2, characters};
             e_BMPString_8(30, &text);
         }},
    };
    for (const auto &[hex, write] : rows) {
        const std::string expected = hex;
        for (size_t room = 0; room < expected.size() / 2; ++room)
            EXPECT_EQ("ROOM_FAIL", encoded(write, room)) << hex << " in " << room;
        EXPECT_EQ(expected, encoded(write, expected.size() / 2));
    }
}

/* Nothing is written behind values that have no encoding. */
TEST(OpenContexts, WhatHasNoEncoding) {
    using Writing = void (*)(ASNCODG * asncodg);
    const Writing rows[] = {
        [](ASNCODG *asncodg) {
            COMMONTIME time = {40, "20240101"};
            e_GeneralizedTimeCT_8(24, &time);
        },
        [](ASNCODG *asncodg) {
            EXTERNAL_1990 value = {};
            value.choice = 3;
            e_External1990_8(8, &value);
        },
        [](ASNCODG *asncodg) {
            EXTERNAL_1994 value = {};
            e_External1994_8(8, &value);
        },
        [](ASNCODG *asncodg) {
            BYTE_TYPE cut[] = {2, 5, 1};
            ASN_FRAME frame = {nullptr, sizeof cut, cut};
            FRAME_PTR none = &frame;
            e_Frame_8(TAG8(TAG_CTX8, TAG_PRI8, 1), &none);
            EXTENSIONMARKER marker = {1, &frame, &frame};
            e_Extensionmarker(&marker);
        },
        [](ASNCODG *asncodg) {
            BYTE_TYPE bits = 0x80;
            ASNHOME last = {}, first = {};
            last.val.dyns = {8, &bits};
            first.val.dyns = {3, &bits};
            first.next = &last;
            last.prev = &first;
            LIST list = {};
            list.first = &first;
            list.last = &last;
            e_SegBitString_8(3, &list);
        },
    };
    for (Writing write : rows)
        EXPECT_EQ("VALUE_FAIL", encoded([&](ASNCODG *asncodg) {
                      write(asncodg);
                      e_NullType_8(5);
                      e_TagLen(TAG(TAG_CTX, TAG_STR, 1));
                  }));
}

/* --- printing and asking --- */

void printAll(ASNTSTG *asntstg) {
    Value v;
    std::memset(&v, 0, sizeof v);
    EXTERNAL_1994 young = {};
    young.encoding = 1;
    BYTE_TYPE bits = 0x80;
    ASNHOME none = {}, segment = {};
    none.val.dyns.n = 3;
    none.next = &segment;
    segment.val.dyns = {3, &bits};
    LIST list = {};
    list.first = &none;
    list.last = &segment;
    v.id.n = MAX_ASN_OBJID_ARCS + 1;
    pri_BegComp("All", TCS_HEADER, TYP_SEQ);
    p_Boolean("truth", TRUE);
    p_uint64("most", UINT64_MAX);
    p_sint8("least", -128);
    p_Real("real", 0.5);
    p_ObjectIdentifier("id", &v.id);
    p_UTCTimeDT("when", &v.time);
    p_SegBitString("bits", &list);
    p_External1994("outside", &young);
    pri_BegComp("frame", TCS_MANDATORY, TYP_OCTSTR);
    v.frame = nullptr;
    p_Frame(&v.frame, TYP_OCTSTR);
    pri_EndComp();
    pri_EndComp();
}

TEST(OpenContexts, ValuesThatHaveNoTextAreMarked) {
    EXPECT_EQ("All: {\n  truth: TRUE\n  most: 18446744073709551615\n  least: -128\n  real: 0.5\n"
              "  id: ?\n  when: ?\n  bits: { ? '100'B }\n"
              "  outside: {\n    identification: ?\n    data-value: octet-aligned: ''H\n  }\n"
              "  frame: ?\n}\nVALUE_FAIL",
              printed(printAll));
    auto context = std::make_unique<ASNTSTG>();
    asnOpenTester(context.get(), nullptr, nullptr, nullptr);
    printAll(context.get());
    EXPECT_TRUE(asnCloseTester(context.get(), nullptr)) << "nothing is printed to nowhere";
}

struct Answered {
    const char *result, *script;
    void (*ask)(ASNTSTG *asntstg, Value *v);
};
const Answered answers[] = {
    {"INPUT_FAIL 1 ", "-", [](ASNTSTG *asntstg, Value *v) { a_uint64(&v->number64, 0, MAXLONG); }},
    {"INPUT_FAIL 1 ", "99999999999999999999",
     [](ASNTSTG *asntstg, Value *v) { a_uint64(&v->number64, 0, MAXLONG); }},
    {"INPUT_FAIL 1 ", "x", [](ASNTSTG *asntstg, Value *v) { a_IA5String8(&v->name, 0, 8); }},
    {"INPUT_FAIL 1 ", "\"\\u00FF\"",
     [](ASNTSTG *asntstg, Value *v) { a_DynIA5String(&v->string, 0, 8); }},
    {"INPUT_FAIL 1 ", "{ 5 }",
     [](ASNTSTG *asntstg, Value *v) { a_SegOctetString(&v->list, 0, 8); }},
    {"VALUE_FAIL 1 ", "\"20240230\"", [](ASNTSTG *asntstg, Value *v) { a_UTCTimeCT(&v->text); }},
    {"INPUT_FAIL 1 ", "5", [](ASNTSTG *asntstg, Value *v) { a_GeneralizedTimeDT(&v->time); }},
    {"VALUE_FAIL 1 ", "'0'H", [](ASNTSTG *asntstg, Value *v) { a_Frame(&v->frame, TYP_ANY); }},
    {"VALUE_FAIL 1 ", "{ 3 }", [](ASNTSTG *asntstg, Value *v) { a_ObjectIdentifier(&v->id); }},
};

/* As with encodings: what was asked for keeps its value, and nothing is asked for any more. */
TEST(OpenContexts, AfterAWrongAnswerNothingIsAsked) {
    for (const Answered &row : answers) {
        Owned owned;
        Value value;
        uint8 later = 77;
        int begun = 0;
        std::memset(&value, 0, sizeof value);
        EXPECT_EQ(row.result, asked(
                                  std::string(row.script) + " 5",
                                  [&](ASNTSTG *asntstg) {
                                      row.ask(asntstg, &value);
                                      for (int type : {TYP_SEQ, TYP_SEQOF, TYP_CHOICE})
                                          begun |= ask_BegComp("later", TCS_MANDATORY, type);
                                      begun |= ask_BegComp(NULL, TCS_MULTIPLE, TYP_INTEGER);
                                      a_uint8(&later, 0, 255);
                                      a_Frame(&value.frame, TYP_ANY);
                                      ask_EndAnyChoiceComp();
                                      ask_EndComp();
                                  },
                                  owned))
            << row.script;
        EXPECT_EQ(nullptr, value.frame) << row.script;
        EXPECT_EQ(77, later) << row.script;
        EXPECT_EQ(0, begun) << row.script;
    }
    uint64 most = 0;
    EXPECT_EQ("ASN_OK", asked("18446744073709551615",
                              [&](ASNTSTG *asntstg) { a_uint64(&most, 0, MAXLONG); }));
    EXPECT_EQ(UINT64_MAX, most);
}

/* Unknown components stand behind three dots, in the structures that keep them. */
TEST(OpenContexts, UnknownComponents) {
    const auto ask = [](const char *script, bool keeps, EXTENSIONMARKER *marker, Owned &owned) {
        return asked(
            script,
            [&](ASNTSTG *asntstg) {
                uint8 number = 0;
                ask_BegComp("Open", TCS_HEADER, TYP_SEQ);
                if (keeps)
                    initExtensionmarker(marker);
                if (ask_BegComp("id", TCS_MANDATORY, TYP_INTEGER))
                    a_uint8(&number, 0, 255);
                ask_EndComp();
            },
            owned);
    };
    Owned owned;
    EXTENSIONMARKER marker = {};
    EXPECT_EQ("ASN_OK",
              ask("{ ...: { '0500'H '0101FF'H } id: 5 ...: { '8000'H } }", true, &marker, owned));
    ASSERT_EQ(3U, marker.n);
    EXPECT_EQ("0101ff", hexOf(marker.first->next->octets, marker.first->next->length));
    EXPECT_EQ("8000", hexOf(marker.last->octets, marker.last->length));
    EXPECT_EQ("INPUT_FAIL 1 Open....", ask("{ ...: { '0500'H } id: 5 }", false, &marker, owned));
    EXPECT_EQ("INPUT_FAIL 1 Open....", ask("{ ...: 5 }", true, &marker, owned));
    EXPECT_EQ("VALUE_FAIL 2 Open....", ask("{ ...: {\n'050'H } id: 5 }", true, &marker, owned));
    EXPECT_EQ("INPUT_FAIL 1 Open....", ask("{ ...: { '0500'H 5 } }", true, &marker, owned));
}

} // namespace
