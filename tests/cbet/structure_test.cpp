#include <algorithm>

#include <gtest/gtest.h>

#include "gen/decode.h"
#include "gen/fileset.h"
#include "model/modules.h"
#include "tests/support/cbetrun.h"

/* What stands around the components of structures, in all four kinds. */

namespace {

std::string pass(CbetRun &run, FuncKind kind) {
    run.generate(kind);
    return run.body();
}

TEST(Structure, SequenceWithNestedOneAndRecursion) {
    TreeWriter w("Mod", "mod");
    w.option("-PUSHPATH=yes");
    w.define("Msg", w.sequence({w.comp("id", w.integer(0, 255)),
                                w.comp("sub", w.sequence({w.comp("b", w.boolean()).optional()})),
                                w.comp("next", w.ref("Msg")).optional()}));
    CbetRun run(w);
    EXPECT_EQ(functionText(pass(run, encodingKind), "eMsg"), R"(if ((home->compmask & BIT(2))){
eMsg (ASNG_F(asncodg) home->next);
}
if ((home->sub.compmask & BIT(0))){
leaf home->sub.b;
}
leaf home->id;
)");
    EXPECT_EQ(functionText(pass(run, decodingKind), "dMsg"), R"(home->compmask = 0;
pushPath (ASNG_F(asncodg) "id");
leaf home->id;
popPath (ASNG_F(asncodg) 3);
pushPath (ASNG_F(asncodg) "sub");
home->sub.compmask = 0;
if (is b){
home->sub.compmask |= BIT(0);
pushPath (ASNG_F(asncodg) "b");
leaf home->sub.b;
popPath (ASNG_F(asncodg) 2);
}
popPath (ASNG_F(asncodg) 4);
if (is next){
if (!(home->next = (Msg *)allocAsn (NULL, MB_STG, sizeof (Msg)))){
reportFatalError (LACK_OF_MEMORY);
}
home->compmask |= BIT(2);
pushPath (ASNG_F(asncodg) "next");
dMsg (ASNG_F(asncodg) home->next);
popPath (ASNG_F(asncodg) 5);
}
)");
    run.options().zeroHome = 1;
    run.options().pushPath = 0;
    EXPECT_EQ(functionText(pass(run, decodingKind), "dMsg").find("compmask = 0"),
              std::string::npos);
    EXPECT_EQ(functionText(pass(run, printingKind), "pMsg"), R"(leaf home->id;
if ((home->sub.compmask & BIT(0))){
leaf home->sub.b;
}
if ((home->compmask & BIT(2))){
pMsg (ASNG_F(asntstg) home->next);
}
)");
}

TEST(Structure, SetsMarkAllWhileDecoding) {
    TreeWriter w("Mod", "mod");
    w.define("One", w.set({w.comp("a", w.boolean())}));
    w.define("Two", w.set({w.comp("a", w.boolean()), w.comp("b", w.null())}));
    w.define("Opt", w.set({w.comp("a", w.boolean()), w.comp("b", w.null()).optional()}));
    CbetRun run(w);
    const std::string decoders = pass(run, decodingKind);
    EXPECT_EQ(functionText(decoders, "dOne"), "leaf home->a;\n");
    EXPECT_EQ(functionText(decoders, "dTwo"), R"({
uint8 compmask;
compmask = 0;
if (is a){
if (compmask & BIT(0)){
reportError (ASNG_F(asncodg) DM_FAIL);
}
compmask |= BIT(0);
leaf home->a;
}
if (is b){
if (compmask & BIT(1)){
reportError (ASNG_F(asncodg) DM_FAIL);
}
compmask |= BIT(1);
leaf home->b;
}
}
)");
    EXPECT_EQ(functionText(decoders, "dOpt"), R"(home->compmask = 0;
if (is a){
if (home->compmask & BIT(0)){
reportError (ASNG_F(asncodg) DM_FAIL);
}
home->compmask |= BIT(0);
leaf home->a;
}
if (is b){
if (home->compmask & BIT(1)){
reportError (ASNG_F(asncodg) DM_FAIL);
}
home->compmask |= BIT(1);
leaf home->b;
}
)");
    EXPECT_EQ(functionText(pass(run, askingKind), "aOpt"), R"(home->compmask = 0;
leaf home->a;
if (is b){
home->compmask |= BIT(1);
leaf home->b;
}
)");
    TypeFuncInfo info = CbetRun::notingInfo(decodingKind);
    info.duplicateError = "TWICE";
    run.generate(info);
    EXPECT_NE(run.body().find("reportError (ASNG_F(asncodg) TWICE);\n"), std::string::npos);
}

TEST(Structure, ChoicesSwitchOrTestTheirHomes) {
    TreeWriter w("Mod", "mod");
    const auto alternatives = [&] {
        return w.choice({w.comp("a", w.integer(0, 255)), w.comp("b", w.boolean()), w.marker()})
            .option(OPT_SAVE_EXTENSIONS);
    };
    w.define("Pick", alternatives());
    w.define("Homes", alternatives().option(OPT_COMPS_AS_POINTERS));
    w.define("Sole", w.choice({w.comp("a", w.boolean())}));
    CbetRun run(w);
    run.options().memory = 1;
    const std::string encoders = pass(run, encodingKind);
    EXPECT_EQ(functionText(encoders, "ePick"), R"(switch (home->choice){
case 1:
{
leaf home->i1.b;
}
break;
case 0:
{
leaf home->i1.a;
}
break;
}
)");
    EXPECT_EQ(functionText(encoders, "eHomes"), R"(if (home->b){
leaf home->b->val.bool;
freeAsn (&home->b, FREE_STG);
}
else if (home->a){
leaf home->a->val.ui8;
freeAsn (&home->a, FREE_STG);
}
)");
    const std::string decoders = pass(run, decodingKind);
    EXPECT_EQ(functionText(decoders, "dPick"), R"(home->choice = -1;
if (is a){
home->choice = 0;
leaf home->i1.a;
}
if (is b){
home->choice = 1;
leaf home->i1.b;
}
)");
    EXPECT_EQ(functionText(decoders, "dHomes"), R"(memset (home, 0, sizeof (Homes));
if (is a){
createHome (getHomeG (asncodg_asnuti), &home->a, VF_UI8, 0);
leaf home->a->val.ui8;
}
if (is b){
createHome (getHomeG (asncodg_asnuti), &home->b, VF_BOOL, 0);
leaf home->b->val.bool;
}
)");
    EXPECT_EQ(functionText(decoders, "dSole"), "home->choice = -1;\nhome->choice = 0;\n"
                                               "leaf home->i1.a;\n");
    /* Printing shows what was kept behind the marker. */
    const std::string printers = pass(run, printingKind);
    EXPECT_TRUE(functionText(printers, "pPick").ends_with("case 2:\n{\nleaf ...;\n}\nbreak;\n}\n"));
    EXPECT_TRUE(functionText(printers, "pHomes")
                    .ends_with("else if (home->extensionmarker){\nleaf ...;\n}\n"));
}

TEST(Structure, ValuesInHomesGetBlocksOfTheirOwn) {
    TreeWriter w("Mod", "mod");
    const auto inner = [&] { return w.sequence({w.comp("q", w.boolean()).optional()}); };
    w.define("Home", w.sequence({w.comp("s", inner()).option(OPT_HOME),
                                 w.comp("n", w.ref("Home")).option(OPT_HOME).optional(),
                                 w.comp("text", w.string(TYP_IA5STR)).option(OPT_HOME)}));
    CbetRun run(w);
    const std::string block = R"({
struct t_s_Home *h1 = (struct t_s_Home *)home->s->val.stru;
)";
    EXPECT_EQ(functionText(pass(run, encodingKind), "eHome"), R"(leaf home->text->val.dyns;
if ((home->compmask & BIT(1))){
eHome (ASNG_F(asncodg) (Home *)home->n->val.stru);
}
)" + block + R"(if ((h1->compmask & BIT(0))){
leaf h1->q;
}
}
)");
    run.options().memory = 1;
    EXPECT_EQ(functionText(pass(run, decodingKind), "dHome"), R"(home->compmask = 0;
createHome (getHomeG (asncodg_asnuti), &home->s, VF_STRU,
sizeof (struct t_s_Home));
pushHomeG (asncodg_asnuti, home->s);
)" + block + R"(h1->compmask = 0;
if (is q){
h1->compmask |= BIT(0);
leaf h1->q;
}
}
popHomeG (asncodg_asnuti);
if (is n){
createHome (getHomeG (asncodg_asnuti), &home->n, VF_STRU, sizeof (Home));
pushHomeG (asncodg_asnuti, home->n);
home->compmask |= BIT(1);
dHome (ASNG_F(asncodg) (Home *)home->n->val.stru);
popHomeG (asncodg_asnuti);
}
createHome (getHomeG (asncodg_asnuti), &home->text, VF_DYNS, 0);
pushHomeG (asncodg_asnuti, home->text);
leaf home->text->val.dyns;
popHomeG (asncodg_asnuti);
)");
    EXPECT_TRUE(functionText(pass(run, encodingKind), "eHome")
                    .starts_with("leaf home->text->val.dyns;\n"
                                 "freeAsn (&home->text, FREE_STG);\n"));
}

TEST(Structure, SkippedAndFrames) {
    TreeWriter w("Mod", "mod");
    w.define("T",
             w.sequence({w.comp("ignored", w.boolean()).skipped(0),
                         w.comp("refused", w.sequence({w.comp("x", w.null())})).skipped(1),
                         w.comp("any", w.any()), w.comp("frame", w.boolean()).option(OPT_FRAME)}));
    CbetRun run(w);
    EXPECT_EQ(functionText(pass(run, decodingKind), "dT"),
              "ignore;\nskip home->refused;\nframe home->any;\nframe home->frame;\n");
}

TEST(Structure, UnknownSkipKindIsAFault) {
    TreeWriter w("Mod", "mod");
    w.define("T", w.sequence({w.comp("b", w.boolean()).skipped(2)}));
    CbetRun run(w);
    EXPECT_EXIT(run.generate(decodingKind), testing::ExitedWithCode(2),
                "Unknown SKIP option value.");
}

/* A SET counts as its components do in a walk, whatever its record says. */
TEST(Structure, ComponentsOfCountOneByOne) {
    TreeWriter w("Mod", "mod");
    w.define("Part", w.set({w.comp("a", w.boolean()), w.comp("b", w.null())}));
    TypeNode whole = w.set({w.componentsOf(w.ref("Part"))});
    w.define("Whole", whole);
    w.finish();
    whole->nrOfComps = 1;
    CbetRun run(w);
    fiDec = BODY_FILE;
    fiDecE = PROTO_FILE;
    forEachModule([](AsnModule *module) { generateDecodingFunctions(module); });
    const std::string decoder = functionText(run.body(), "dWhole");
    EXPECT_NE(decoder.find("else if (d_CurrTag () == TAG(TAG_UNI, TAG_PRI, 5)){\n"
                           "if (compmask & BIT(1)){\n"),
              std::string::npos)
        << decoder;
    EXPECT_EQ(std::count(decoder.begin(), decoder.end(), '{'),
              std::count(decoder.begin(), decoder.end(), '}'));
}

} // namespace
