#include "store/records.h"

#include <gtest/gtest.h>

#include <random>

#include "store/layout.h"
#include "store/strings.h"
#include "store/tree.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

TEST(Layout, EveryKindComesBackFromItsBytes) {
    std::mt19937 random(1);
    MNode m;
    TNode t;
    VNode v;
    TagRec tag;
    SubRec sub;
    TedRec ted;
    SNode s;
    void *const records[] = {&m, &t, &v, &tag, &sub, &ted, &s};
    for (int kind = REC_MNODE; kind <= REC_SNODE; ++kind) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(recSize[kind]));
        for (std::uint8_t &byte : bytes)
            byte = static_cast<std::uint8_t>(random());
        decodeRec(RecKind(kind), bytes.data(), records[kind]);
        /* Reserved bytes are left alone, so that what is written over the same bytes is the same.
         */
        std::vector<std::uint8_t> again = bytes;
        for (const RecField &row : recLayout(RecKind(kind)))
            std::fill_n(again.begin() + row.offset, row.width * row.count, std::uint8_t{0});
        EXPECT_NE(again, bytes);
        encodeRec(RecKind(kind), records[kind], again.data());
        EXPECT_EQ(again, bytes) << "kind " << kind;
    }
}

TEST(Layout, FieldsStandWhereFilesHaveThem) {
    std::uint8_t bytes[116] = {};
    bytes[3] = 7;     /* nameIdx */
    bytes[12] = 0xFF; /* compStatus */
    bytes[13] = bytes[14] = 0xFF;
    bytes[15] = 0xFB;
    bytes[34] = 0x40; /* optionBits */
    bytes[50] = TYP_CHOICE;
    bytes[55] = TYPE_RECURSIVE;
    bytes[60] = LENGTH_FORM_NOT_SET;
    bytes[67] = 9;  /* size limit */
    bytes[103] = 1; /* lower endpoint, high word */
    bytes[115] = 5; /* upper endpoint, low word */
    TNode node;
    decodeRec(REC_TNODE, bytes, &node);
    EXPECT_EQ(node.nameIdx, 7);
    EXPECT_EQ(node.compStatus, TCS_PARAM_HEAD);
    EXPECT_EQ(node.optionBits, 0x4000u);
    EXPECT_EQ(node.mainType, TYP_CHOICE);
    EXPECT_EQ(node.typeFlags, TYPE_RECURSIVE);
    EXPECT_EQ(node.typeOptions.definiteLength, LENGTH_FORM_NOT_SET);
    EXPECT_EQ(node.typeOptions.sizeLimit, 9u);
    EXPECT_EQ(node.lowerEndpoint, i64make(1, 0));
    EXPECT_EQ(node.upperEndpoint, i64make(0, 5));
}

TEST(Strings, EqualTextsAreOneForAllModules) {
    ModRec *a = appendModRec(false);
    ModRec *b = appendModRec(false);
    EXPECT_EQ(putStri(a, "abc"), 1);
    EXPECT_EQ(putStri(a, "def"), 2);
    EXPECT_EQ(putStri(a, "abc"), 1);
    putStri(b, "def");
    EXPECT_EQ(getStri(a, 2), getStri(b, 1));
    EXPECT_EQ(getStri(a, -1), getStri(a, 1));
    appendStri32(b, U"\U0001F600");
    EXPECT_EQ(std::u32string(getStri32(b, 1)), U"\U0001F600");
    /* Of equal records the last is the one that is found again, and a text ends at its zero. */
    appendStri(b, "def");
    EXPECT_EQ(putStri(b, "def"), 2);
    appendStri(b, std::string_view("x\0y", 3));
    EXPECT_STREQ(getStri(b, 3), "x");
    /* So many that the place of each is found more than once, and one longer than a block. */
    std::vector<const char *> kept;
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 5000; ++i) {
            const char *text = allocateUniqStri(std::to_string(i) + std::string(i == 99 ? 40000 : 0, 'x'));
            if (round == 0)
                kept.push_back(text);
            else
                ASSERT_EQ(text, kept[static_cast<std::size_t>(i)]);
        }
    EXPECT_EQ(std::string(kept[4321]), "4321");
    EXPECT_EQ(std::string(kept[99]).size(), 40002u);
}

TEST(Strings, NumbersWithoutRecord) {
    ModRec *a = appendModRec(false);
    EXPECT_STREQ(getStri(a, EMPTY_STRI), "");
    EXPECT_EQ(*getStri16(a, EMPTY_STRI), 0);
    EXPECT_EQ(*getStri32(a, EMPTY_STRI), 0u);
    for (const RecNr nr : {0, 1, -1, 0x7FFFFFFF, std::numeric_limits<RecNr>::min()})
        EXPECT_EXIT(getStri(a, nr), exitsWith2,
                    "^\nFATAL ERROR : Can not read record from syntax tree\n\n$");
    EXPECT_EXIT(putStri(nullptr, "x"), exitsWith2, "Can not write record into syntax tree");
    EXPECT_EXIT(putStri(a, nullptr), exitsWith2, "Can not write record into syntax tree");
}

TEST(Records, CurrentRecordStaysAsItsReaderLeftIt) {
    ModRec *module = appendModRec(false);
    module->tNodes.resize(2);
    module->tNodes[1].lineNr = 20;
    readRec(module, REC_TNODE, 1);
    tNode.lineNr = 11;
    readRec(module, REC_TNODE, 1);
    EXPECT_EQ(tNode.lineNr, 11);
    {
        const NodeContext keep(REC_TNODE);
        readRec(module, REC_TNODE, 2);
        EXPECT_EQ(tNode.lineNr, 20);
    }
    EXPECT_EQ(tNode.lineNr, 0);
    tNode.lineNr = 12;
    writeRec(module, REC_TNODE, 3);
    EXPECT_EQ(module->tNodes.at(2).lineNr, 12);
    EXPECT_EQ(recJustRead[REC_TNODE], (NodePlace{module, 3}));
    EXPECT_EXIT(readRec(module, REC_TNODE, 4), exitsWith2, "Can not read record");
    EXPECT_EXIT(readRec(nullptr, REC_VNODE, 0), exitsWith2, "Can not read record");
    EXPECT_EXIT(readRec(module, REC_STRI8, 1), exitsWith2, "Can not read record");
    EXPECT_EXIT(writeRec(module, REC_TNODE, 0), exitsWith2, "Can not write record");
    EXPECT_EXIT(writeRec(module, REC_TNODE, 5), exitsWith2, "Can not write record");
    EXPECT_EXIT(writeRec(module, REC_STRI8, 1), exitsWith2, "Can not write record");
}

TEST(Records, GuardsAllowWhatAFiniteTreeCanHave) {
    ModRec *module = appendModRec(false);
    module->filePrefix = "loopy";
    module->tNodes.resize(3000);
    const auto steps = [module](int count) {
        ChainGuard guard(REC_TNODE);
        for (int i = 0; i < count; ++i)
            guard.step(module);
    };
    steps(3000);
    EXPECT_EXIT(steps(3001), exitsWith2, "^\nFATAL ERROR : Syntax tree inconsistent\n +loopy\n\n$");
    module->tNodes.resize(2);
    const auto read = [module](int count) {
        workLeft = 0;
        for (int i = 0; i < count; ++i)
            readRec(module, REC_TNODE, 1 + i % 2);
    };
    EXPECT_EXIT(read(20001), exitsWith2, "^\nFATAL ERROR : Syntax tree inconsistent\n +loopy\n\n$");
    read(20000);
    workLeft = 1000;
    int depth = 0;
    const auto nest = [&](auto &&self, int levels) -> void {
        const NestingGuard guard(&depth, module);
        if (levels > 1)
            self(self, levels - 1);
    };
    nest(nest, MAX_NESTING);
    EXPECT_EQ(depth, 0);
    EXPECT_EXIT(nest(nest, MAX_NESTING + 1), exitsWith2, "Syntax tree inconsistent");
}

} // namespace
