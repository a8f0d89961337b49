#include "model/tags.h"

#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

int localTags(AsnType *type) {
    int count = 0;
    forEachLocalTag(type, [&](AsnType *, const AsnTag *, int) { ++count; });
    return count;
}

/* What each walk calls for: all, outermost, all but the innermost, innermost, all but the
   outermost; all but the innermost in reverse too; local ones. */
std::string walksText(AsnType *type) {
    std::string text;
    const auto note = [&](AsnType *, const AsnTag *tag, int nbr) {
        text += std::to_string(nbr) + ":" + std::to_string(getTagNumber(tag)) + " ";
    };
    using Walk = void (*)(AsnType *, TagCall);
    for (Walk walk : {forEachTag, forOutermostTag, forOutermostTags, forOutermostTagsRevOrd,
                      forInnermostTag, forInnermostTags, forEachLocalTag}) {
        walk(type, note);
        text += "|";
    }
    return text;
}

TEST(Tags, ImplicitTagsReplaceWhatStandsInside) {
    TreeWriter w("Modes", "modes");
    w.define("Plain", w.integer());
    w.define("Implicit", w.integer().implicit(1));
    w.define("Explicit", w.integer().explicitly(2).application(3));
    w.define("S", w.integer().explicitly(2));
    w.define("OverS", w.ref("S").implicit(1));
    w.define("Choice", w.choice({w.comp("a", w.integer())}));
    w.define("TaggedChoice", w.ref("Choice").explicitly(9));
    w.define("Any", w.any());
    w.define("Open", w.openType());
    ModelSetup setup;
    setup.load(w);
    std::string text;
    forEachType(setup.module, [&](AsnType *type, int) {
        text += nameOf(type) + " [" + tagsOf(type) + "] " + std::to_string(localTags(type)) +
                "\n";
    });
    EXPECT_EQ(text, "Plain [U2] 0\n"
                    "Implicit [C1] 1\n"
                    "Explicit [C2 A3] 2\n"
                    "S [C2 U2] 1\n"
                    "OverS [C1 U2] 1\n" /* C2 is dropped, but it is explicit, so U2 stays */
                    "Choice [] 0\n"
                    "TaggedChoice [C9] 1\n"
                    "Any [] 0\n"
                    "Open [] 0\n");
}

TEST(Tags, AutomaticTagsReplaceTheOutermost) {
    TreeWriter w("Auto", "auto");
    w.define("Choice", w.choice({w.comp("x", w.integer()).implicit(0)}));
    w.define("Deep", w.integer().explicitly(7));
    w.define("S", w.sequence({w.comp("a", w.integer()), w.comp("b", w.ref("Choice")), w.marker(),
                              w.comp("c", w.ref("Deep")), w.comp("d", w.any())})
                      .automaticTags());
    /* Types that the tree leaves without any tag. */
    w.define("Odd",
             w.sequence({w.comp("a", w.type(TYP_FIELDLIST)), w.comp("b", w.type(TYP_SYNONYM))})
                 .automaticTags());
    /* What COMPONENTS OF brings in takes the tagging of the structure. */
    w.define("In", w.sequence({w.comp("x", w.integer()), w.comp("y", w.null())}));
    w.define("InAuto", w.sequence({w.comp("p", w.integer())}).automaticTags());
    w.define("Taker", w.sequence({w.comp("a", w.integer()), w.componentsOf(w.ref("In")),
                                  w.comp("b", w.boolean())})
                          .automaticTags());
    w.define("Plain", w.sequence({w.componentsOf(w.ref("InAuto")), w.comp("b", w.boolean())}));
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(forwardText, {{"S", "a/0 C0, b/1 C1, .../2, c/3 C2 U2, d/4 C3"},
                                    {"Odd", "a/0 C0, b/1 C1"},
                                    {"Taker", "a/0 C0, x/1 C1, y/2 C2, b/3 C3"},
                                    {"Plain", "p/0 U2, b/1 U1"}});
}

TEST(Tags, WalksSelectByPlaceAndGiveIndexes) {
    TreeWriter w("Walks", "walks");
    w.define("One", w.integer());
    w.define("Two", w.integer().explicitly(5));
    w.define("Three", w.ref("Two").explicitly(6));
    w.define("None", w.any());
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(
        walksText,
        {{"None", "|||||||"},
         {"One", "0:2 |0:2 |||0:2 |0:2 ||"},
         {"Two", "0:5 1:2 |0:5 |0:5 |0:5 |1:2 |1:2 |0:5 |"},
         /* U2 and C5 were written elsewhere. */
         {"Three", "0:6 1:5 2:2 |0:6 |0:6 1:5 |1:5 0:6 |2:2 |1:5 2:2 |0:6 |"}});
    setup.withType("Two", [](AsnType *type) {
        EXPECT_EXIT(forEachTag(type, nullptr), exitsWith2, "Call-back function not defined");
    });
}

TEST(Tags, Texts) {
    const AsnTag tag{TAG_CTX, 3};
    EXPECT_EQ(getTagClassStri(&tag), "TAG_CTX");
    const AsnTag odd{7, 1};
    EXPECT_EQ(getTagClassStri(&odd), "");
}

} // namespace
