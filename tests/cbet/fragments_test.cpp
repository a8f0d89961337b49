#include <algorithm>

#include <gtest/gtest.h>

#include "cbet/extensions.h"
#include "cbet/fragments.h"
#include "cbet/functions.h"
#include "driver/files.h"
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
            cNegTestControlMember(BODY_FILE, comp);
        });
    EXPECT_EQ(run.body(), "compmask |= BIT(1);\nif (compmask & BIT(1))if (!(compmask & BIT(1)))"
                          "home->choice = 1;\nif (home->choice == 1)if (!(home->choice == 1))\n");
}

TEST(Fragments, HolesInIntegerSets) {
    TreeWriter w("Mod", "mod");
    const auto single = [&](int n) { return w.single(w.intValue(n)); };
    w.define("T", w.sequence({
                      w.comp("odd", w.integer().constrained(
                                        w.sub(SUB_UNION, {single(1), single(3), single(5)}))),
                      w.comp("two", w.integer().constrained(
                                        w.sub(SUB_UNION, {w.range(-9, 0), w.range(7, 9)}))),
                      w.comp("range", w.integer(1, 5)),
                      w.comp("free", w.integer()),
                      w.comp("list", w.enumerated({{"x", 1}, {"y", 3}})),
                      w.comp("open", w.enumerated({{"x", 1}, {"y", 3}, NamedNumber::extension()})),
                  }));
    CbetRun run(w);
    const auto holes = [&](const char *name) {
        run.forComp("T", name, [&](AsnType *comp) {
            if (cCheckIntegerValueSet(BODY_FILE, comp))
                endlToF(BODY_FILE);
        });
        return run.body();
    };
    EXPECT_EQ(holes("odd"),
              "if ((1 < home->odd && home->odd < 3) || (3 < home->odd && home->odd < 5))\n");
    EXPECT_EQ(holes("two"), "if ((0 < home->two && home->two < 7))\n");
    EXPECT_EQ(holes("range") + holes("free"), "");
    EXPECT_EQ(holes("list"), "if ((1 < home->list && home->list < 3))\n");
    EXPECT_EQ(holes("open"), "if ((1 < home->open.value && home->open.value < 3))\n");
}

TEST(Fragments, SizesByForm) {
    TreeWriter w("Mod", "mod");
    const auto bits = [&](ValueForm form, ValueForm size) {
        return w.string(TYP_BITSTR, 2, 6).form(form, size);
    };
    w.define("T",
             w.sequence({w.comp("a", bits(VF_STAS0, VF_NONE)), w.comp("b", bits(VF_STAS8, VF_UI8)),
                         w.comp("c", bits(VF_DYNS, VF_UI32)), w.comp("d", bits(VF_LIST, VF_NONE)),
                         w.comp("e", w.null())}));
    w.define("Huge", w.string(TYP_OCTSTR, 5000000000, 5000000000).form(VF_DYNS0));
    CbetRun run(w);
    struct Row {
        const char *name, *text;
    };
    for (const Row &row :
         {Row{"a", "<6>"}, Row{"b", "<staStrLen (&home->b)>"}, Row{"c", "<dynStrLen (&home->c)>"},
          Row{"d", "<listLen (&home->d)>"}, Row{"e", ""}})
        run.forComp("T", row.name, [&](AsnType *comp) {
            Text text;
            EXPECT_EQ(cGetSize(text, "<", comp, true, ">"), row.text);
            cSizeToF(BODY_FILE, "<", comp, true, ">\n");
            EXPECT_EQ(run.body(), (*row.text != '\0' ? row.text : Text("<>")) + "\n");
        });
    testing::internal::CaptureStderr();
    run.forType("Huge", [&](AsnType *type) {
        Text text;
        EXPECT_EQ(cGetSize(text, "", type, true, ""), "5000000000");
        EXPECT_EQ(cGetSize(text, "", type, false, ""), "n0");
    });
    EXPECT_NE(
        testing::internal::GetCapturedStderr().find("** Size constraint upper bound > MAXINT32\n"),
        std::string::npos);
}

/* --- extension markers --- */

std::string markerTexts(CbetRun &run, const char *name) {
    run.forType(name, [](AsnType *type) {
        Text text;
        for (bool prefix : {true, false})
            cInitExtensionmarker(BODY_FILE, type, GIDX_CODING, prefix);
        cSetExtensionmarkerControlMember(BODY_FILE, type);
        cClearExtensionmarkerControlMember(BODY_FILE, type);
        cBeginTestExtensionmarker(BODY_FILE, type);
        wToF(BODY_FILE, cRefExtensionmarker(text, "use (", type, ");\n"));
        cEndTestExtensionmarker(BODY_FILE, type);
        cBeginTestNonexistentExtensionmarker(BODY_FILE, type);
        cEndTestExtensionmarker(BODY_FILE, type);
        cFreeAsnExtensionmarker(BODY_FILE, type);
    });
    return run.body();
}

TEST(Fragments, ExtensionMarkersInEveryPlace) {
    TreeWriter w("Mod", "mod");
    const auto marked = [&](MainType kind, int count) {
        std::vector<TypeNode> all = comps(w, count);
        all.push_back(w.marker());
        return w.structure(kind, all);
    };
    w.define("Seq", marked(TYP_SEQ, 2).option(OPT_SAVE_EXTENSIONS).form(VF_STRU, VF_I32));
    w.define("Words", marked(TYP_SEQ, 35));
    w.define("Pick", marked(TYP_CHOICE, 2).option(OPT_SAVE_EXTENSIONS));
    w.define("Homes", marked(TYP_SEQ, 1).option(OPT_COMPS_AS_POINTERS).option(OPT_SAVE_EXTENSIONS));
    w.define("Noted", marked(TYP_SET, 1).option(OPT_COMPS_AS_POINTERS));
    w.define("Closed", w.sequence({w.comp("a", w.null())}));
    CbetRun run(w);
    EXPECT_EQ(markerTexts(run, "Seq"), R"(initExtensionmarker (&home->extensionmarker);
home->compmask |= BITL(2);
home->compmask &= ~BITL(2);
if (home->compmask & BITL(2)){
use (&home->extensionmarker);
}
if (!(home->compmask & BITL(2))){
}
)");
    EXPECT_EQ(markerTexts(run, "Words"), R"(home->compmask [1] |= BITL(3);
home->compmask [1] &= ~BITL(3);
if (home->compmask [1] & BITL(3)){
use (&home->extensionmarker);
}
if (!(home->compmask [1] & BITL(3))){
}
)");
    EXPECT_EQ(markerTexts(run, "Pick"), R"(initExtensionmarker (&home->i1.extensionmarker);
home->choice = 2;
home->choice = -1;
case 2:
{
use (&home->i1.extensionmarker);
}
break;
case 2:
{
}
break;
)");
    EXPECT_EQ(markerTexts(run, "Homes"),
              R"(createHome (NULL, &home->extensionmarker, VF_STRU, sizeof (EXTENSIONMARKER));
initExtensionmarker (home->extensionmarker->val.extensionmarker);
if (home->extensionmarker){
use (home->extensionmarker->val.extensionmarker);
}
if (!home->extensionmarker){
}
freeAsn (&home->extensionmarker, FREE_STG);
)");
    EXPECT_TRUE(markerTexts(run, "Noted")
                    .starts_with("createHome (NULL, &home->extensionmarker, VF_NULL, 0);\nif "
                                 "(home->extensionmarker){\n"));
    EXPECT_EQ(markerTexts(run, "Closed"), "");
}

TEST(Fragments, ErrorFormatCanBeReplaced) {
    TreeWriter w("Mod", "mod");
    CbetRun run(w);
    cSetErrorReportingFunctionFormat("fail (%s, __LINE__);\n");
    cReportError(BODY_FILE, "TAG_FAIL");
    EXPECT_STREQ(cSetErrorReportingFunctionFormat(nullptr), defaultErrorReportingFunctionFormat);
    cReportError(BODY_FILE, "TAG_FAIL");
    EXPECT_EQ(run.body(), "fail (TAG_FAIL, __LINE__);\nreportError (ASNG_F(asncodg) TAG_FAIL);\n");
}

} // namespace
