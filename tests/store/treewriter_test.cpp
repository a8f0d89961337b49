#include <gtest/gtest.h>

#include <cstring>

#include "tests/support/treedump.h"
#include "tests/support/treewriter.h"

/* What the tree writer works out by itself, seen as the listing of whole trees, so that a tree that
   other tests build is known to be the tree that they mean. */

namespace {

/* The listing without the lines of strings. */
std::string recordsOf(TreeWriter &w) {
    std::string text = dumpTree(w.bytes()), kept;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find('\n', start) + 1;
        if (text[start] != 'a')
            kept += text.substr(start, end - start);
        start = end;
    }
    return kept;
}

} // namespace

TEST(TreeWriter, WorksOutStructuresFormsAndBounds) {
    TreeWriter w("Post_Office", "post");
    w.define("Parcel", w.sequence({
                           w.comp("weight", w.integer(0, 255)),
                           w.comp("label", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional(),
                           w.marker(),
                       }))
        .entry();
    w.define("Short", w.ref("Weight").constrained(w.range(MIN_VALUE, 10)));
    w.define("Weight", w.integer(-5, 300)).exported(false);
    EXPECT_EQ(
        recordsOf(w),
        "M1 \"Post_Office\" prefix \"post\" version 213/213 date 20240229 time 120000 types 4 "
        "entry 1 "
        "visible 2\n"
        "T1 \"weight\" INTEGER status 0 form ui8/none next 2 parent 4 constraint 1 bounds 0..255\n"
        "T2 \"label\" IA5STR status 1 form stas8/ui8 next 3 parent 4 constraint 3 tags 1 bounds "
        "1..8\n"
        "T3 - MARKER status 0 parent 4\n"
        "T4 \"Parcel\" SEQ status 5 ref 0:1 comps 3 form stru/ui8 next 5 node 0x2 flags 0xC1 entry "
        "0x7C categories 0x1\n"
        "T5 \"Short\" SYNONYM status 5 ref 1:6 next 6 constraint 4 node 0x2 bounds -5..10\n"
        "T6 \"Weight\" INTEGER status 5 form i16/none constraint 5 bounds -5..300\n"
        "T7 - INTEGER status 5 form ui32/none parent 1 hidden 1\n"
        "V1 - INTEGER status 2 governor 1:1\n"
        "V2 - INTEGER status 2 governor 1:1 bytes 00000000000000FF00000000\n"
        "V3 - INTEGER status 2 governor 1:7 bytes 000000000000000100000000\n"
        "V4 - INTEGER status 2 governor 1:7 bytes 000000000000000800000000\n"
        "V5 - INTEGER status 2 governor 1:5 bytes 000000000000000A00000000\n"
        "V6 - INTEGER status 2 governor 1:6 bytes FFFFFFFFFFFFFFFB00000000\n"
        "V7 - INTEGER status 2 governor 1:6 bytes 000000000000012C00000000\n"
        "G1 [2 0] mode 0\n"
        "C1 kind 10 flags 0x60 first 1 second 2\n"
        "C2 kind 10 flags 0x60 component 1:7 first 3 second 4\n"
        "C3 kind 12 first 2\n"
        "C4 kind 10 flags 0x60 second 5\n"
        "C5 kind 10 flags 0x60 first 6 second 7\n");
}

TEST(TreeWriter, MakesPointersOfCirclesAndListsOfElementsThatCloseOne) {
    TreeWriter w("Loops", "loops");
    w.define("Node", w.sequence({w.comp("next", w.ref("Node")).optional()}));
    w.define("A", w.choice({w.comp("b", w.ref("B")), w.comp("end", w.null())}));
    w.define("B", w.sequence({w.comp("inner", w.sequence({w.comp("a", w.ref("A"))}))}));
    w.define("Tree", w.sequence({w.comp("sons", w.listOf(TYP_SETOF, w.ref("Tree"), 1, 4)),
                                 w.comp("nodes", w.listOf(TYP_SETOF, w.ref("Node"), 1, 4))}));
    w.finish();
    auto flagsOf = [&](std::string_view name) { return w.findType(name)->typeFlags; };
    EXPECT_EQ(flagsOf("Node") & TYPE_RECURSIVE, TYPE_RECURSIVE);
    EXPECT_EQ(flagsOf("A") & TYPE_RECURSIVE, TYPE_RECURSIVE);
    EXPECT_EQ(flagsOf("B") & TYPE_RECURSIVE, TYPE_RECURSIVE);
    EXPECT_EQ(flagsOf("Tree") & TYPE_RECURSIVE, TYPE_RECURSIVE);
    const TNode &sons = w.tNodes[static_cast<std::size_t>(w.findType("Tree")->refRecord - 1)];
    EXPECT_EQ(sons.valueFieldCode, VF_LIST);
    EXPECT_EQ(w.tNodes[static_cast<std::size_t>(sons.next - 1)].valueFieldCode, VF_STRU);
    int pointers = 0;
    for (const TNode &node : w.tNodes)
        pointers += (node.optionBits & optionMask(OPT_POINTER)) != 0 ? 1 : 0;
    EXPECT_EQ(pointers, 3); /* Node.next, A.b, B.inner.a */
}

TEST(TreeWriter, FollowsReferencesIntoOtherTrees) {
    TreeWriter base("Base", "base"), user("User", "user");
    base.define("Pair", base.sequence({base.comp("a", base.boolean()),
                                       base.comp("b", base.null()).optional(), base.marker()}));
    base.define("Any", base.choice({base.comp("x", base.null()), base.comp("y", base.boolean())}));
    user.define("Triple", user.sequence({user.componentsOf(user.ref(base, "Pair")),
                                         user.comp("c", user.ref(base, "Any"))}));
    TypeNode triple = user.findType("Triple");
    user.finish();
    EXPECT_EQ(triple->nrOfComps, 3); /* those of Pair in front of its marker, and one more */
    EXPECT_EQ(triple->typeFlags, TYPE_HAS_OPTIONAL | TYPE_HAS_UNTAGGED | TYPE_HAS_MANDATORY);
    const TNode &list = user.tNodes[static_cast<std::size_t>(triple->refRecord - 1)];
    EXPECT_EQ(list.refModule, 2);
    EXPECT_EQ(list.refRecord, base.findType("Pair").nr);
    ASSERT_EQ(user.mNodes.size(), 2u);
}
