#include <functional>

#include <gtest/gtest.h>

#include "asntree/listing.h"

/* Listings of trees whose records lead nowhere, in circles, or have forms that other compilers
   write. */

namespace {

using namespace asntree;

/* A module with the type T and the value v, each record 1 of its kind. */
Tree smallTree() {
    Tree tree;
    tree.addM({});
    tree.header().moduleName = tree.str("M");
    tree.header().stamp.treeVersion = TREE_VERSION;
    TNode type;
    type.nameIdx = tree.str("T");
    type.mainType = TYP_INTEGER;
    type.lineNr = 1;
    tree.header().firstTNode = tree.addT(type);
    VNode value;
    value.nameIdx = tree.str("v");
    value.valueKind = TYP_NULL;
    value.lineNr = 2;
    tree.header().firstVNode = tree.addV(value);
    return tree;
}

RecNr addSubOf(Tree &tree, SubKind kind, RecNr first, RecNr next) {
    SubRec sub;
    sub.subKind = static_cast<std::uint8_t>(kind);
    sub.first = first;
    sub.next = next;
    return tree.addSub(sub);
}

const struct {
    std::function<void(Tree &)> change;
    const char *listed;
} rows[] = {
    {[](Tree &tree) {
         tree.t(1).mainType = TYP_SELECTION;
         tree.t(1).refRecord = 1;
         tree.t(1).auxRecord = tree.addS({1, -1, tree.addS({1, 1, 0})});
     },
     "\nT ::= v.T < T"},
    {[](Tree &tree) {
         tree.t(1).mainType = TYP_SYNONYM;
         tree.t(1).refModule = 99;
         tree.t(1).refRecord = 7;
     },
     "\nT ::= #7"},
    {[](Tree &tree) {
         tree.t(1).mainType = TYP_ENUM;
         tree.t(1).namedNumbersRec = tree.v(1).next = 1;
     },
     "\nT ::= ENUMERATED"},
    {[](Tree &tree) {
         tree.t(1).mainType = TYP_SEQ;
         tree.t(1).refRecord = tree.addT(tree.t(1));
         tree.t(2).mainType = TYP_NULL;
         tree.t(2).next = 2;
     },
     "\nT ::= SEQUENCE  {indefinite}\n    T NULL  {indefinite}\n    T NULL  "},
    {[](Tree &tree) { tree.v(1).valueKind = TYP_BMPSTR; }, " ::= \"\"\n"},
    {[](Tree &tree) { tree.v(1).valueKind = TYP_EXTENSION_MARKER; }, " ::= ...\n"},
    {[](Tree &tree) {
         tree.v(1).valueKind = TYP_FIELDLIST;
         tree.v(1).auxRecord = tree.addS({1, 1, 0});
     },
     " ::= T\n"},
    {[](Tree &tree) {
         tree.v(1).valueKind = TYP_SEQOF;
         tree.v(1).refRecord = 1;
     },
     " ::= {v {v {v "},
    {[](Tree &tree) {
         tree.v(1).valueKind = TYP_SEQOF;
         tree.v(1).refRecord = tree.addV(tree.v(1));
         tree.v(2).valueKind = TYP_NULL;
         tree.v(2).next = 2;
     },
     " ::= {v NULL, v NULL, v NULL, "},
    {[](Tree &tree) { tree.t(1).constraintRec = 5; }, "\nT ::= INTEGER (?)"},
    {[](Tree &tree) { tree.t(1).constraintRec = addSubOf(tree, SUB_UNION, 1, 0); },
     "\nT ::= INTEGER ("},
    {[](Tree &tree) {
         tree.t(1).constraintRec = addSubOf(tree, SUB_UNION, 2, 0);
         addSubOf(tree, SUB_TABLE, 0, 2);
     },
     "\nT ::= INTEGER (table | table | "},
    {[](Tree &tree) {
         tree.t(1).firstTagRec = tree.addTag({TAG_CTX, 1, 5, 1});
     },
     "\nT ::= [5] EXPLICIT [5] EXPLICIT "},
    {[](Tree &tree) {
         tree.header().tedFirst = tree.addTed({TED_OPTION, tree.str("-X")});
         tree.header().tedLast = 9;
     },
     "    option -X\n\nT ::= INTEGER"},
};

TEST(AsntreeListing, BrokenTrees) {
    for (const auto &row : rows) {
        Tree tree = smallTree();
        row.change(tree);
        const std::string listing = listTree(tree, {}, {});
        EXPECT_NE(listing.find(row.listed), std::string::npos) << row.listed << "\n"
                                                               << listing.substr(0, 1000);
        EXPECT_LT(listing.size(), 100'000'000u);
        Tree again;
        std::string why;
        ASSERT_TRUE(readTree(storedBytes(tree), again, why)) << why;
        EXPECT_EQ(listTree(again, {}, {}), listing);
    }
}

TEST(AsntreeListing, BrokenFiles) {
    Tree tree = smallTree();
    const std::string good = storedBytes(tree);
    Tree other, again;
    std::string why;
    tree.header().stamp.treeVersion = TREE_VERSION + 1;
    EXPECT_FALSE(readTree(storedBytes(tree), again, why));
    EXPECT_EQ(why, "it is no syntax tree of version 2.13");
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(readTree(good.substr(0, size), other, why)) << size;
    tree = smallTree();
    storedBytes(tree);
    tree.keepCounts = true;
    for (const std::int32_t count : {-1, 1'000'000}) {
        tree.header().counts[REC_TNODE] = count;
        EXPECT_FALSE(readTree(storedBytes(tree), other, why)) << count;
        EXPECT_EQ(why, "the syntax tree is cut off or broken");
    }
}

} // namespace
