#include <algorithm>

#include <gtest/gtest.h>

#include "cbet/comptests.h"
#include "cbet/extensions.h"
#include "cbet/functions.h"
#include "cbet/lists.h"
#include "cbet/memory.h"
#include "tests/support/cbetrun.h"

/* Tests of SET masks and integer sets, sizes, extension markers. */

namespace {

/* The names c0, c1 ... of so many components. */
std::vector<TypeNode> comps(TreeWriter &w, int count, std::vector<int> optional = {}) {
    std::vector<TypeNode> all;
    for (int i = 0; i < count; ++i) {
        TypeNode comp = w.comp("c" + std::to_string(i), w.null().implicit(i));
        if (std::find(optional.begin(), optional.end(), i) != optional.end())
            comp.optional();
        all.push_back(comp);
    }
    return all;
}

TEST(Fragments, MissingComponentsOfSets) {
    struct Row {
        const char *name;
        int count;
        ValueForm mask;
        std::vector<int> optional;
        const char *text;
    };
    const Row rows[] = {
        {"All8", 8, VF_UI8, {}, "if (~compmask){\n}\n"},
        {"All5", 5, VF_I8, {}, "if ((sint8)((~compmask) << 3)){\n}\n"},
        {"All12", 12, VF_UI16, {}, "if ((sint16)((~compmask) << 4)){\n}\n"},
        {"All20", 20, VF_I32, {}, "if ((~compmask) << 12){\n}\n"},
        {"All32", 32, VF_UI32, {}, "if (~compmask){\n}\n"},
        {"All40", 40, VF_I32, {}, "if (~compmask [0] || ((~compmask [1]) << 24)){\n}\n"},
        {"All96", 96, VF_I32, {}, "if (~compmask [0] || ~compmask [1] || ~compmask [2]){\n}\n"},
        {"Some3", 3, VF_UI8, {1}, "if ((~home->compmask & (BIT(0)|BIT(2)))){\n}\n"},
        {"Some3L", 3, VF_I32, {0}, "if ((~home->compmask & (BITL(1)|BITL(2)))){\n}\n"},
        {"Only", 3, VF_UI8, {0, 1, 2}, ""},
    };
    TreeWriter w("Mod", "mod");
    for (const Row &row : rows)
        w.define(row.name,
                 w.structure(TYP_SET, comps(w, row.count, row.optional)).form(VF_STRU, row.mask));
    std::vector<int> middle;
    for (int i = 1; i < 33; ++i)
        middle.push_back(i);
    w.define("Words", w.structure(TYP_SET, comps(w, 35, middle)).form(VF_STRU, VF_I32));
    CbetRun run(w);
    const auto test = [&](AsnType *set) {
        cBeginTestMissingSetMandatoryComps(BODY_FILE, set);
        cEndTestMissingSetMandatoryComps(BODY_FILE, set);
        return run.body();
    };
    for (const Row &row : rows)
        run.forType(row.name, [&](AsnType *set) { EXPECT_EQ(test(set), row.text) << row.name; });
    run.forType("Words", [&](AsnType *set) {
        EXPECT_EQ(test(set), "if ((~home->compmask[0] & (BITL(0))) || "
                             "(~home->compmask[1] & (BITL(1)|BITL(2)\n))){\n}\n");
    });
}

TEST(Fragments, ControlMembersOfComponents) {
    TreeWriter w("Mod", "mod");
    w.define("Set", w.set({w.comp("a", w.null()), w.comp("b", w.boolean())}));
    w.define("Pick", w.choice({w.comp("a", w.null()), w.comp("b", w.boolean())}));
    CbetRun run(w);
    for (const char *name : {"Set", "Pick"})
        run.forComp(name, "b", [](AsnType *comp) {
            cSetControlMember(BODY_FILE, comp);
            cTestControlMember(BODY_FILE, comp);
        });
    EXPECT_EQ(run.body(), "compmask |= BIT(1);\nif (compmask & BIT(1))"
                          "home->choice = 1;\nif (home->choice == 1)\n");
}

/* A form without a length has its limit or a counter for it; other forms than lists and strings
   have no size. */
TEST(Fragments, SizesWithoutLength) {
    TreeWriter w("Mod", "mod");
    w.define("None", w.null());
    w.define("Huge", w.string(TYP_OCTSTR, 5000000000, 5000000000).form(VF_DYNS0));
    CbetRun run(w);
    run.forType("None", [&](AsnType *type) { EXPECT_EQ(cGetSize(type, true), ""); });
    testing::internal::CaptureStderr();
    run.forType("Huge", [&](AsnType *type) {
        EXPECT_EQ(cGetSize(type, true), "5000000000");
        EXPECT_EQ(cGetSize(type, false), "n0");
    });
    EXPECT_NE(
        testing::internal::GetCapturedStderr().find("** Size constraint upper bound > MAXINT32\n"),
        std::string::npos);
}

/* What the tool's own functions do with markers stands in expected files; here the operations that
   they leave out, and a place so far inside that its line is broken. */
TEST(Fragments, ExtensionMarkers) {
    TreeWriter w("Mod", "mod");
    const auto marked = [&](MainType kind, int count) {
        std::vector<TypeNode> all = comps(w, count);
        all.push_back(w.marker());
        return w.structure(kind, all);
    };
    struct Row {
        const char *name, *text;
    };
    const Row rows[] = {
        {"Long", R"(home->compmask |= BITL(2);
if (!(home->compmask & BITL(2))){
}
)"},
        {"Words", R"(home->compmask [1] |= BITL(3);
if (!(home->compmask [1] & BITL(3))){
}
)"},
        {"Pick", "home->choice = 2;\ncase 2:\n{\n}\nbreak;\n"},
        {"Homes", R"(if (!home->extensionmarker){
}
freeAsn (&home->extensionmarker, FREE_STG);
)"},
        {"Closed", ""},
    };
    w.define("Long", marked(TYP_SEQ, 2).form(VF_STRU, VF_I32));
    w.define("Words", marked(TYP_SEQ, 35));
    w.define("Pick", marked(TYP_CHOICE, 2));
    w.define("Homes", marked(TYP_SEQ, 1).option(OPT_COMPS_AS_POINTERS));
    w.define("Closed", w.sequence({w.comp("a", w.null())}));
    TypeNode within = marked(TYP_SEQ, 1).option(OPT_SAVE_EXTENSIONS);
    for (const char *name : {"anInnerNameOfThirtyCharacters", "anOuterNameOfThirtyCharacters"})
        within = w.sequence({w.comp(name, within)});
    w.define("Far", within);
    CbetRun run(w);
    for (const Row &row : rows)
        run.forType(row.name, [&](AsnType *type) {
            cSetExtensionmarkerControlMember(BODY_FILE, type);
            cBeginTestNonexistentExtensionmarker(BODY_FILE, type);
            cEndTestExtensionmarker(BODY_FILE, type);
            cFreeAsnExtensionmarker(BODY_FILE, type);
            EXPECT_EQ(run.body(), row.text);
        });
    run.generate(decodingKind);
    EXPECT_NE(functionText(run.body(), "dFar")
                  .find("initExtensionmarker (\n&home->anOuterNameOfThirtyCharacters."
                        "anInnerNameOfThirtyCharacters.extensionmarker);\n"),
              std::string::npos);
}

/* A home goes on the stack if its value may hold memory that isn't freed with it. */
TEST(Fragments, FormsWithHomeStack) {
    TreeWriter w("Mod", "mod");
    w.define("T", w.sequence({w.comp("flag", w.boolean()), w.comp("nothing", w.null()),
                              w.comp("fixed", w.string(TYP_IA5STR, 1, 8)),
                              w.comp("oid", w.type(TYP_OBJID)), w.comp("time", w.type(TYP_UTCTIME)),
                              w.comp("text", w.string(TYP_IA5STR)), w.comp("any", w.any()),
                              w.comp("outside", w.type(TYP_EXTERNAL_1990))}));
    CbetRun run(w);
    for (const char *name : {"flag", "nothing", "fixed", "oid", "time", "text", "any", "outside"})
        run.forComp("T", name, [](AsnType *comp) { cPushHome(BODY_FILE, comp, GIDX_CODING); });
    EXPECT_EQ(run.body(), "pushHomeG (asncodg_asnuti, home->text);\n"
                          "pushHomeG (asncodg_asnuti, home->any);\n"
                          "pushHomeG (asncodg_asnuti, home->outside);\n");
}

} // namespace
