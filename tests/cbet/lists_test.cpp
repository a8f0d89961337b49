#include <gtest/gtest.h>

#include "cbet/fragments.h"
#include "cbet/vars.h"
#include "driver/files.h"
#include "tests/support/cbetrun.h"

/* Loops, counters, bounds and tails of lists. */

namespace {

std::string pass(CbetRun &run, FuncKind kind) {
    run.generate(kind);
    return run.body();
}

TEST(Lists, ArraysCountInEveryForm) {
    TreeWriter w("Mod", "mod");
    w.define("Vals", w.listOf(TYP_SEQOF, w.integer(0, 255), 1, 9).asArray());
    w.define("Fixed", w.listOf(TYP_SETOF, w.boolean(), 3, 3).form(VF_STRU));
    w.define("Dyn", w.listOf(TYP_SEQOF, w.null()).asDynamicArray());
    w.define("Grid",
             w.listOf(TYP_SEQOF, w.listOf(TYP_SEQOF, w.boolean(), 0, 4).asArray(), 0, 5).asArray());
    CbetRun run(w);
    const std::string encoders = pass(run, encodingKind);
    EXPECT_EQ(functionText(encoders, "eVals"), R"({
uint32 n1 = 0;
for (n1 = staArrLen (home); n1 > 0;){
n1--;
leaf home->elem [n1];
}
}
)");
    EXPECT_NE(functionText(encoders, "eFixed").find("for (n1 = 3; n1 > 0;){\n"), std::string::npos);
    EXPECT_NE(functionText(encoders, "eDyn").find("for (n1 = dynArrLen (home);"),
              std::string::npos);
    EXPECT_EQ(functionText(pass(run, printingKind), "pGrid"), R"({
uint32 n1 = 0;
for (n1 = 0; n1 < staArrLen (home); n1++){
{
uint32 n2 = 0;
for (n2 = 0; n2 < staArrLen (&home->elem [n1]); n2++){
leaf home->elem [n1].elem [n2];
}
}
}
}
)");
    const std::string decoders = pass(run, decodingKind);
    EXPECT_EQ(functionText(decoders, "dVals"), R"(staArrInit (home);
{
uint32 n1 = 0;
while (TRUE){
if (end) break;
if (staArrLen (home) >= 9){
reportError (ASNG_F(asncodg) AM_FAIL);
}
leaf home->elem [n1];
incStaArrLen (home);
n1++;
}
{
BOOLE ok1;
ok1 = (staArrLen (home) >= 1);
if (!ok1){
reportError (ASNG_F(asncodg) CONSTRAINT_FAIL);
}
}
}
)");
    EXPECT_EQ(functionText(decoders, "dFixed"), R"(staArr0Init (home);
{
uint32 n1 = 0;
while (TRUE){
if (end) break;
if (n1 >= 3){
reportError (ASNG_F(asncodg) AM_FAIL);
}
leaf home->elem [n1];
n1++;
}
{
BOOLE ok1;
ok1 = (n1 == 3);
if (!ok1){
reportError (ASNG_F(asncodg) CONSTRAINT_FAIL);
}
}
}
)");
    EXPECT_EQ(functionText(decoders, "dDyn"), R"(dynArrInit (home);
{
uint32 n1 = 0;
while (TRUE){
if (end) break;
leaf home->elem [n1];
incDynArrLen (home);
n1++;
}
}
)");
}

TEST(Lists, LinkedListsInOneAnother) {
    TreeWriter w("Mod", "mod");
    w.define("LL", w.listOf(TYP_SEQOF, w.listOf(TYP_SEQOF, w.boolean()).asList()).asList());
    w.define("Holder", w.sequence({w.comp("x", w.listOf(TYP_SEQOF, w.ref("Holder")).asList())}));
    CbetRun run(w);
    EXPECT_EQ(functionText(pass(run, encodingKind), "eLL"), R"({
ASNHOME *a1 = NULL;
for (a1 = lastListItem (home); a1; a1 = prevListItem (a1)){
{
LIST *h1 = &a1->val.list;
{
ASNHOME *a2 = NULL;
for (a2 = lastListItem (h1); a2; a2 = prevListItem (a2)){
leaf a2->val.bool;
}
}
}
}
}
)");
    run.options().pushPath = 1;
    const std::string decoders = pass(run, decodingKind);
    EXPECT_EQ(functionText(decoders, "dLL"), R"(listInit (home);
{
ASNHOME *a1 = NULL;
while (TRUE){
if (end) break;
appendList (NULL, home, &a1, VF_LIST, 0);
pushElem (ASNG_F(asncodg) listLen (home));
{
LIST *h1 = &a1->val.list;
listInit (h1);
{
ASNHOME *a2 = NULL;
while (TRUE){
if (end) break;
appendList (NULL, h1, &a2, VF_BOOL, 0);
pushElem (ASNG_F(asncodg) listLen (h1));
leaf a2->val.bool;
popPath (ASNG_F(asncodg) 0);
incListLen (h1);
}
}
}
popPath (ASNG_F(asncodg) 0);
incListLen (home);
}
}
)");
    EXPECT_NE(functionText(decoders, "dHolder")
                  .find("appendList (NULL, &home->x, &a1, VF_STRU, sizeof (Holder));\n"),
              std::string::npos);
    EXPECT_NE(functionText(pass(run, printingKind), "pHolder")
                  .find("for (a1 = firstListItem (&home->x); a1; a1 = nextListItem (a1)){\n"
                        "pHolder (ASNG_F(asntstg) (Holder *)a1->val.stru);\n"),
              std::string::npos);
}

TEST(Lists, LimitsIgnoreOrRefuseSurplusElements) {
    TreeWriter w("Mod", "mod");
    const auto list = [&] { return w.listOf(TYP_SEQOF, w.integer(0, 255), 0, 100).asArray(); };
    w.define("Ignoring", list().sizeLimit(10, false));
    w.define("Refusing", list().sizeLimit(10, true));
    w.define("Equal", list().sizeLimit(100, false));
    CbetRun run(w);
    const std::string loop = R"(staArrInit (home);
{
uint32 n1 = 0;
BOOLE extraElems1 = FALSE;
while (TRUE){
if (end) break;
if (staArrLen (home) >= 10){
extraElems1 = TRUE;
break;
}
leaf home->elem [n1];
incStaArrLen (home);
n1++;
}
home->nIgnored = 0;
if (extraElems1){
while (TRUE){
if (n1 >= 100){
)";
    const std::string tail = "}\nignore;\nhome->nIgnored++;\nn1++;\n}\n}\n}\n";
    const std::string decoders = pass(run, decodingKind);
    EXPECT_EQ(functionText(decoders, "dIgnoring"),
              loop + "reportError (ASNG_F(asncodg) AM_FAIL);\n" + tail);
    EXPECT_EQ(functionText(decoders, "dRefusing"), R"(staArrInit (home);
{
uint32 n1 = 0;
while (TRUE){
if (end) break;
if (staArrLen (home) >= 10){
reportError (ASNG_F(asncodg) AM_FAIL);
}
leaf home->elem [n1];
incStaArrLen (home);
n1++;
}
}
)");
    EXPECT_EQ(functionText(decoders, "dEqual").find("nIgnored"), std::string::npos);
    EXPECT_EQ(functionText(pass(run, askingKind), "aIgnoring"), loop + "break;\n" + tail);

    /* A generator may bring heads and tests of its own. */
    TypeFuncInfo info = CbetRun::notingInfo(decodingKind);
    info.listLoopFunc = [](int file, AsnType *) { wToF(file, "for (;;)"); };
    info.extraTestFunc = [](AsnType *, const TypeFuncInfo *i) { wToF(i->outFile, "if (more)"); };
    info.extraLoopFunc = [](int file, AsnType *) { wToF(file, "do"); };
    info.extraMoreFunc = [](AsnType *, const TypeFuncInfo *i) { wToF(i->outFile, "next;\n"); };
    run.generate(info);
    const std::string own = functionText(run.body(), "dIgnoring");
    EXPECT_TRUE(own.starts_with("staArrInit (home);\n{\nuint32 n1 = 0;\nfor (;;){\n")) << own;
    EXPECT_TRUE(own.ends_with("home->nIgnored = 0;\nif (more){\ndo{\nignore;\nhome->nIgnored++;\n"
                              "n1++;\nnext;\n}\n}\n}\n"))
        << own;
    info.compsWantedFunc = [](AsnType *, const TypeFuncInfo *) { return false; };
    run.generate(info);
    EXPECT_EQ(functionText(run.body(), "dIgnoring"), "staArrInit (home);\n{\n}\n");
}

TEST(Lists, WhileLoops) {
    TreeWriter w("Mod", "mod");
    w.define("A", w.listOf(TYP_SEQOF, w.null(), 0, 9).asArray());
    w.define("L", w.listOf(TYP_SEQOF, w.null()).asList());
    CbetRun run(w);
    for (const char *name : {"A", "L"})
        run.forType(name, [&](AsnType *list) {
            run.forComp(name, "", [&](AsnType *elem) {
                cBeginWhileLoop(BODY_FILE, list, elem, "more ()");
                cEndWhileLoop(BODY_FILE, list, elem);
            });
        });
    EXPECT_EQ(run.body(), "{\nuint32 n1 = 0;\nwhile (more ()){\nincStaArrLen (home);\nn1++;\n}\n}\n"
                          "{\nASNHOME *a1 = NULL;\nwhile (more ()){\nincListLen (home);\n}\n}\n");
    EXPECT_EQ(cVarCount(VAR_N) + cVarCount(VAR_ASN_HOME), 0);
}

} // namespace
