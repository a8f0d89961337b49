#include <gtest/gtest.h>

#include "tests/support/cbetrun.h"

/* Entry functions of MORLA applications, whose values come in hometab. */

namespace {

TEST(Morla, ComponentsLieInHometab) {
    TreeWriter w("Mod", "mod");
    w.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    w.define("Ping",
             w.sequence(
                 {w.comp("id", w.integer(0, 255)), w.comp("text", w.string(TYP_IA5STR)).optional(),
                  w.comp("in", w.sequence({w.comp("z", w.null())})), w.comp("msg", w.ref("Msg"))}))
        .entry()
        .exported(false);
    w.define("Msg", w.sequence({w.comp("b", w.boolean())}));
    w.exportsMarked();
    CbetRun run(w);
    run.generate(decodingKind);
    EXPECT_EQ(functionNames(run.protos()), (std::vector<std::string>{"dMsg", "decPing"}));
    const std::string decoders = run.body();
    EXPECT_NE(decoders.find("void decPing (ASNG_F(ASNCODG *asncodg) ASNHOME **hometab)\n"),
              std::string::npos);
    EXPECT_EQ(functionText(decoders, "decPing"),
              R"(createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_UI8, 0);
leaf hometab [0]->val.ui8;
if (is text){
createHome (getHomeG (asncodg_asnuti), &hometab [1], VF_DYNS, 0);
pushHomeG (asncodg_asnuti, hometab [1]);
leaf hometab [1]->val.dyns;
popHomeG (asncodg_asnuti);
}
createHome (getHomeG (asncodg_asnuti), &hometab [2], VF_STRU,
sizeof (struct t_in_Ping));
pushHomeG (asncodg_asnuti, hometab [2]);
{
struct t_in_Ping *h1 = (struct t_in_Ping *)hometab [2]->val.stru;
leaf h1->z;
}
popHomeG (asncodg_asnuti);
createHome (getHomeG (asncodg_asnuti), &hometab [3], VF_STRU, sizeof (Msg));
pushHomeG (asncodg_asnuti, hometab [3]);
dMsg (ASNG_F(asncodg) (Msg *)hometab [3]->val.stru);
popHomeG (asncodg_asnuti);
)");
    run.generate(encodingKind);
    EXPECT_EQ(functionText(run.body(), "encPing"),
              R"(eMsg (ASNG_F(asncodg) (Msg *)hometab [3]->val.stru);
freeAsn (&hometab [3], FREE_STG);
{
struct t_in_Ping *h1 = (struct t_in_Ping *)hometab [2]->val.stru;
leaf h1->z;
}
freeAsn (&hometab [2], FREE_STG);
if (hometab [1]){
leaf hometab [1]->val.dyns;
freeAsn (&hometab [1], FREE_STG);
}
leaf hometab [0]->val.ui8;
freeAsn (&hometab [0], FREE_STG);
)");
}

TEST(Morla, LeavesListsAndSynonyms) {
    TreeWriter base("Base", "base"); /* without entries of its own */
    base.define("Far", base.choice({base.comp("a", base.boolean()), base.comp("b", base.null()),
                                    base.marker()}));
    base.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    TreeWriter w("Mod", "mod");
    w.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    w.option("-GENERATE=entries");
    w.exportsMarked();
    w.define("Leaf", w.integer(0, 9)).entry();
    w.define("List", w.listOf(TYP_SEQOF, w.boolean()).asList()).entry();
    w.define("Syn", w.ref("Body")).entry().exported(false);
    w.define("Body", w.sequence({w.comp("id", w.integer(0, 255))})).exported(false);
    w.define("FarSyn", w.ref(base, "Far")).entry().exported(false);
    w.define("Set", w.set({w.comp("a", w.null()), w.comp("b", w.null()).optional()})).entry();
    CbetRun run(w, {&base});
    run.generate(decodingKind);
    EXPECT_EQ(
        functionNames(run.protos()),
        (std::vector<std::string>{"decLeaf", "dList", "decList", "decSyn", "decFarSyn", "decSet"}));
    const std::string decoders = run.body();
    EXPECT_EQ(functionText(decoders, "decLeaf"),
              "createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_UI8, 0);\n"
              "leaf hometab [0]->val.ui8;\n");
    EXPECT_EQ(functionText(decoders, "decList"),
              "createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_LIST, 0);\n"
              "pushHomeG (asncodg_asnuti, hometab [0]);\n"
              "dList (ASNG_F(asncodg) &hometab [0]->val.list);\n"
              "popHomeG (asncodg_asnuti);\n");
    EXPECT_EQ(functionText(decoders, "decSyn"),
              "createHome (getHomeG (asncodg_asnuti), &hometab [0], VF_UI8, 0);\n"
              "leaf hometab [0]->val.ui8;\n");
    /* The mask for duplicates is the function's own. */
    EXPECT_EQ(functionText(decoders, "decSet").find("{\nuint8 compmask;\ncompmask = 0;\n"), 0U);
    run.generate(encodingKind);
    const std::string encoders = run.body();
    EXPECT_EQ(functionText(encoders, "encLeaf"),
              "leaf hometab [0]->val.ui8;\nfreeAsn (&hometab [0], FREE_STG);\n");
    EXPECT_EQ(functionText(encoders, "encFarSyn"), R"(if (hometab [1]){
leaf hometab [1]->val.null;
freeAsn (&hometab [1], FREE_STG);
}
else if (hometab [0]){
leaf hometab [0]->val.bool;
freeAsn (&hometab [0], FREE_STG);
}
)");
    run.generate(printingKind);
    EXPECT_EQ(functionText(run.body(), "priLeaf"), "leaf hometab [0]->val.ui8;\n");
}

TEST(Morla, HomeComponentTypesKeepANormalFunction) {
    TreeWriter w("Mod", "mod");
    w.option("-DEFINITION-CATEGORY=MORLA-SERVICE");
    w.define("T", w.sequence({w.comp("a", w.null())}).option(OPT_COMPS_AS_POINTERS)).entry();
    CbetRun run(w);
    run.generate(encodingKind);
    EXPECT_EQ(functionNames(run.protos()), (std::vector<std::string>{"eT", "encT"}));
    EXPECT_EQ(functionText(run.body(), "encT"), "eT (ASNG_F(asncodg) (T *)hometab);\n");
}

} // namespace
