#include <gtest/gtest.h>

#include <cstring>

#include "tests/rts/codingcontext.h"

namespace {

const uint32 SEQUENCE_TAG = TAG(TAG_UNI, TAG_PRI, 16);
const uint32 INTEGER_TAG = TAG(TAG_UNI, TAG_PRI, 2);

/* SEQUENCE OF INTEGER with so many elements of one octet. */
std::vector<BYTE_TYPE> list(unsigned n) {
    std::vector<BYTE_TYPE> octets = {0x30, 0x80};
    for (unsigned i = 0; i < n; ++i)
        octets.insert(octets.end(), {2, 1, static_cast<BYTE_TYPE>(i % 100)});
    octets.insert(octets.end(), {0, 0});
    return octets;
}

struct Dynamic {
    uint16 n;
    uint8 *elem;
};

TEST(RuntimeLists, DynamicArraysGrow) {
    for (unsigned n : {0u, 4u, 5u, 1000u})
        EXPECT_EQ("ASN_OK", decoded(list(n), [n](ASNCODG *asncodg) {
                      Dynamic array;
                      uint32 n1 = 0;
                      d_TagLen(SEQUENCE_TAG);
                      dynArrInit(&array);
                      d_UpperBound((AsnAllocType **)&array.elem, MAXLONG, sizeof(uint8));
                      while (d_LookTagLen() != EOC_TAG) {
                          d_uint8(&array.elem[n1], 0, 255);
                          incDynArrLen(&array);
                          n1++;
                      }
                      ASSERT_EQ(dynArrLen(&array), n);
                      for (unsigned i = 0; i < n; ++i)
                          EXPECT_EQ(array.elem[i], i % 100);
                  }));
    struct {
        uint8 n;
        uint8 *elem;
    } narrow;
    EXPECT_EQ("AM_FAIL", decoded(list(300),
                                 [&](ASNCODG *asncodg) {
                                     uint32 n1 = 0;
                                     d_TagLen(SEQUENCE_TAG);
                                     dynArrInit(&narrow);
                                     d_UpperBound((AsnAllocType **)&narrow.elem, MAXLONG,
                                                  sizeof(uint8));
                                     while (d_LookTagLen() != EOC_TAG) {
                                         d_uint8(&narrow.elem[n1], 0, 255);
                                         incDynArrLen(&narrow);
                                         n1++;
                                     }
                                 })
                             .substr(0, 7))
        << "a length member that is too narrow must not wrap around";
}

TEST(RuntimeLists, ArraysOfFixedSizeHaveRoomAtOnce) {
    struct {
        void *elem; // C++ does not convert to the element's pointer as C does
    } array;
    EXPECT_EQ("ASN_OK", decoded(list(100), [&](ASNCODG *asncodg) {
                  d_TagLen(SEQUENCE_TAG);
                  dynArr0Init(&array);
                  d_UpperBound((AsnAllocType **)&array.elem, 100, sizeof(uint32));
                  for (int i = 0; i < 100; ++i) {
                      d_TagLen(INTEGER_TAG);
                      d_uint32(static_cast<uint32 *>(array.elem) + i, 0, 255);
                  }
                  d_EOC();
                  EXPECT_EQ(static_cast<uint32 *>(array.elem)[99], 99u);
              }));
}

struct Static {
    uint8 n;
    uint8 elem[5];
};

/* As generated code reads a static array, with the test of its bound or, where the type has a limit
   but no constraint, without. */
std::string readStatic(unsigned n, bool tested, bool ignoresMore, Static &array) {
    return decoded(list(n), [&](ASNCODG *asncodg) {
        uint32 n1 = 0;
        bool extra = false;
        d_TagLen(SEQUENCE_TAG);
        staArrInit(&array);
        while (d_LookTagLen() != EOC_TAG) {
            if (tested && staArrLen(&array) >= 5) {
                if (!ignoresMore)
                    reportError(ASNG_F(asncodg) AM_FAIL);
                extra = true;
                break;
            }
            if (n1 >= 5) {
                ADD_FAILURE() << "an element behind the array";
                break;
            }
            d_uint8(&array.elem[n1], 0, 255);
            incStaArrLen(&array);
            n1++;
        }
        while (extra) {
            d_Skip();
            extra = d_LookTagLen() != EOC_TAG;
        }
    });
}

TEST(RuntimeLists, StaticArraysKeepTheirBound) {
    Static array;
    for (bool tested : {false, true})
        for (bool ignoresMore : {false, true}) {
            EXPECT_EQ("ASN_OK", readStatic(5, tested, ignoresMore, array));
            EXPECT_EQ(tested && ignoresMore ? "ASN_OK" : "AM_FAIL 17",
                      readStatic(6, tested, ignoresMore, array));
        }
}

/* What a program makes itself comes out as what was decoded does. */
TEST(RuntimeLists, ItemsAndHomesOfPrograms) {
    Kept kept;
    LIST made;
    listInit(&made);
    for (int octet : {1, 2, 3})
        asnNewItem(&kept.memory, &made, VF_UI8, 0)->val.ui8 = static_cast<uint8>(octet);
    auto *large =
        static_cast<BYTE_TYPE *>(asnNewItem(&kept.memory, &made, VF_STRU, 3000000)->val.stru);
    large[2999999] = 4; /* a chunk of its own: what is small goes on behind the others */
    asnNewItem(&kept.memory, &made, VF_UI8, 0)->val.ui8 = 5;
    EXPECT_EQ(5U, made.n);
    std::string octets;
    for (const ASNHOME *item = made.first; item; item = item->next)
        octets += std::to_string(item->format == VF_STRU ? large[2999999] : item->val.ui8);
    EXPECT_EQ("12345", octets);
    ASNHOME *home = asnNewHome(&kept.memory, VF_STRU, 8);
    std::memset(home->val.stru, 0, 8);
    EXPECT_EQ(VF_STRU, home->format);
    asnFreeHome(&home);
    EXPECT_EQ(nullptr, asnNewHome(&kept.memory, VF_STRU, SIZE_MAX / 2));
    EXPECT_EQ(nullptr, asnNew(&kept.memory, SIZE_MAX / 2));
}

TEST(RuntimeHomes, FreeWhatIsWithinThem) {
    ASNMEM memory = {};
    auto context = std::make_unique<ASNCODG>();
    ASNCODG *asncodg = context.get();
    asnOpenDecoder(asncodg, "", 0, &memory);
    ASNHOME *outer = nullptr, *inner = nullptr, *other = nullptr;
    createHome(getHomeG(asncodg_asnuti), &outer, VF_STRU, 100);
    pushHomeG(asncodg_asnuti, outer);
    createHome(getHomeG(asncodg_asnuti), &inner, VF_STRU, 100);
    pushHomeG(asncodg_asnuti, inner);
    for (int i = 0; i < 100; ++i)
        std::memset(allocAsn(getHomeG(asncodg_asnuti), MB_STG, 100), 1, 100);
    popHomeG(asncodg_asnuti);
    popHomeG(asncodg_asnuti);
    createHome(getHomeG(asncodg_asnuti), &other, VF_UI8, 0);
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(static_cast<BYTE_TYPE *>(inner->val.stru)[i], 0);
    EXPECT_GT(memory.inUse, 10000u);
    freeAsn(&outer, FREE_STG);
    EXPECT_EQ(outer, nullptr);
    EXPECT_LT(memory.inUse, 1000u);
    freeAsn(&outer, FREE_STG);
    freeAsn(&other, FREE_STG);
    EXPECT_EQ(memory.inUse, 0u);
    createHome(getHomeG(asncodg_asnuti), &other, VF_UI8, 0);
    asnFreeMemory(&memory); // frees the rest; the address sanitizer counts
}

/* An encoding that asks for more memory than the caller gives ends with an error. */
TEST(RuntimeMemory, HasALimit) {
    struct Element {
        BYTE_TYPE octets[10000];
    };
    std::vector<BYTE_TYPE> octets = list(1000);
    auto read = [](ASNCODG *asncodg, void *value) {
        LIST *home = static_cast<LIST *>(value);
        ASNHOME *a1 = nullptr;
        listInit(home);
        d_TagLen(SEQUENCE_TAG);
        while (d_LookTagLen() != EOC_TAG) {
            appendList(NULL, home, &a1, VF_STRU, sizeof(Element));
            d_uint8(static_cast<uint8 *>(a1->val.stru), 0, 255);
            incListLen(home);
        }
    };
    void (*function)(ASNCODG *, void *) = read;
    LIST value;
    ASNERROR error;
    ASNMEM memory = {};
    EXPECT_TRUE(asnDecode(function, octets.data(), octets.size(), &value, sizeof value, &memory,
                          nullptr, &error));
    EXPECT_EQ(listLen(&value), 1000u);
    asnFreeMemory(&memory);
    memory.limit = 100000;
    EXPECT_FALSE(asnDecode(function, octets.data(), octets.size(), &value, sizeof value, &memory,
                           nullptr, &error));
    EXPECT_STREQ(asnErrorName(error.code), "LACK_OF_MEMORY");
    EXPECT_LE(memory.inUse, memory.limit);
    asnFreeMemory(&memory);
    EXPECT_FALSE(asnDecode(function, octets.data(), octets.size(), &value, sizeof value, nullptr,
                           nullptr, &error))
        << "a value that owns memory needs a handle";
}

void readPair(ASNCODG *asncodg, void *) {
    uint8 number = 0;
    pushPath(ASNG_F(asncodg) "Pairs");
    d_TagLen(SEQUENCE_TAG);
    for (uint32 n1 = 0; n1 < 2; n1++) {
        pushElem(ASNG_F(asncodg) n1);
        d_TagLen(SEQUENCE_TAG);
        pushPath(ASNG_F(asncodg) "key");
        d_TagLen(INTEGER_TAG);
        d_uint8(&number, 0, 9);
        popPath(ASNG_F(asncodg) 4);
        d_EOC();
        popPath(ASNG_F(asncodg) 0);
    }
    d_EOC();
    popPath(ASNG_F(asncodg) 6);
}

TEST(RuntimeErrors, TellNamePathAndPlace) {
    uint8 nothing = 0;
    size_t used = 99;
    auto read = [&](const char *hex, size_t *length) {
        std::vector<BYTE_TYPE> octets = octetsOf(hex);
        ASNERROR error;
        bool done = asnDecode(readPair, octets.data(), octets.size(), &nothing, sizeof nothing,
                              nullptr, length, &error);
        EXPECT_EQ(done, error.code == ASN_OK);
        return std::string(asnErrorName(error.code)) + " " + error.path + " " +
               std::to_string(error.offset);
    };
    EXPECT_EQ("ASN_OK  0", read("300a 3003020105 3003020106", nullptr));
    EXPECT_EQ("CONSTRAINT_FAIL Pairs[1].key 9", read("300a 3003020105 300302010a", nullptr));
    EXPECT_EQ("TAG_FAIL Pairs[0] 2", read("300a 3103020105 3003020106", nullptr));
    EXPECT_EQ("EOC_FAIL Pairs[1] 12", read("300c 3003020105 3005020106 0500", nullptr));
    EXPECT_EQ("REST_FAIL  12", read("300a 3003020105 3003020106 00", nullptr));
    EXPECT_EQ("ASN_OK  0", read("300a 3003020105 3003020106 00", &used));
    EXPECT_EQ(used, 12u);
    for (size_t length = 0; length < 12; ++length) {
        std::string hex = "300a30030201053003020106";
        EXPECT_EQ("LEN_FAIL", read(hex.substr(0, 2 * length).c_str(), nullptr).substr(0, 8));
    }
}

void writeList(ASNCODG *asncodg, void *n) {
    e_StoreEOC();
    for (int i = *static_cast<int *>(n); i-- > 0;)
        e_uint16_8(2, i);
    e_Tag8Len(TAG8(TAG_UNI8, TAG_STR8, 16));
}

TEST(RuntimeMemory, EncodingGrowsOrStaysWithinItsBuffer) {
    int n = 10000;
    size_t length;
    ASNERROR error;
    BYTE_TYPE *octets = asnEncodeNew(writeList, &n, &length, &error);
    ASSERT_NE(octets, nullptr);
    EXPECT_EQ(length, 39876u);
    for (size_t room : {size_t{0}, size_t{1}, length / 2, length - 1, length, length + 100}) {
        std::vector<BYTE_TYPE> buffer(room);
        size_t again;
        const BYTE_TYPE *p = asnEncode(writeList, &n, buffer.data(), room, &again, &error);
        EXPECT_EQ(p != nullptr, room >= length);
        if (p)
            EXPECT_EQ(hexOf(p, again), hexOf(octets, length));
        else
            EXPECT_STREQ(asnErrorName(error.code), "ROOM_FAIL");
    }
    std::free(octets);
}

} // namespace
