#include <optional>

#include <gtest/gtest.h>

#include "base/files.h"
#include "cbet/constants.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/vars.h"
#include "model/backend.h"
#include "tests/support/inprocess.h"

namespace {

/* The five forms of a reference: address, value, and member behind either. */
struct Forms {
    const char *address, *value, *member, *addressOfMember;
};

void expectHome(AsnType *type, const char *path, const Forms &forms) {
    type->path = path;
    EXPECT_EQ(cHome(type, HOME_ADDRESS), forms.address) << path;
    EXPECT_EQ(cHome(type, HOME_VALUE), forms.value) << path;
    EXPECT_EQ(cHome(type, HOME_MEMBER), forms.member) << path;
    EXPECT_EQ(cHome(type, HOME_MEMBER_ADDRESS), forms.addressOfMember) << path;
}

void defineTypes(TreeWriter &w) {
    w.define("U", w.sequence({w.comp("x", w.boolean())}));
    w.define("Msg",
             w.sequence({w.comp("a", w.ref("U")), w.comp("far", w.ref("U").option(OPT_POINTER)),
                         w.comp("home", w.ref("U").option(OPT_HOME)),
                         w.comp("num", w.integer(0, 9).option(OPT_HOME)),
                         w.comp("dyn", w.string(TYP_OCTSTR).option(OPT_HOME)),
                         w.comp("list", w.listOf(TYP_SEQOF, w.ref("U")).asList())}));
    w.define("Ping", w.sequence({w.comp("id", w.integer(0, 255)), w.comp("u", w.ref("U"))}))
        .entry();
}

TEST(Homes, InStructuresAndHomes) {
    WorkDir dir;
    TreeWriter w("Homes_Module", "h");
    defineTypes(w);
    startTool(dir, w);
    withType("Msg", [](AsnType *type) {
        expectHome(type, nullptr, {"home", "*home", "home->", "&home->"});
    });
    withType("Msg.a", [](AsnType *type) {
        expectHome(type, ".a", {"&home->a", "home->a", "home->a.", "&home->a."});
        expectHome(type, "->a.b", {"&home->a.b", "home->a.b", "home->a.b.", "&home->a.b."});
        type->pathLength = 3; /* what was added behind doesn't belong to the type */
        expectHome(type, "->a.b", {"&home->a", "home->a", "home->a.", "&home->a."});
        cIncHomeVarCount();
        expectHome(type, "->a.b", {"&h1->a", "h1->a", "h1->a.", "&h1->a."});
        type->pathLength = 0;
        expectHome(type, "->a.b", {"h1", "*h1", "h1->", "&h1->"});
        cDecHomeVarCount();
    });
    withType("Msg.far", [](AsnType *type) {
        expectHome(type, "far", {"home->far", "*home->far", "home->far->", "&home->far->"});
    });
    withType("Msg.home", [](AsnType *type) {
        expectHome(type, "home",
                   {"(U *)home->home->val.stru", "*(U *)home->home->val.stru",
                    "((U *)home->home->val.stru)->", "&((U *)home->home->val.stru)->"});
    });
    withType("Msg.num", [](AsnType *type) {
        expectHome(type, "num",
                   {"&home->num->val.ui8", "home->num->val.ui8", "home->num->val.ui8->",
                    "&home->num->val.ui8->"});
    });
    withType("Msg.dyn", [](AsnType *type) {
        expectHome(type, "dyn",
                   {"&home->dyn->val.dyns", "home->dyn->val.dyns", "home->dyn->val.dyns.",
                    "&home->dyn->val.dyns."});
    });
    withType("Msg.list.*", [](AsnType *type) {
        expectHome(type, "list", {"&home->list", "home->list", "home->list.", "&home->list."});
        cIncAsnHomeVarCount();
        expectHome(type, "list",
                   {"(U *)a1->val.stru", "*(U *)a1->val.stru", "((U *)a1->val.stru)->",
                    "&((U *)a1->val.stru)->"});
        cDecAsnHomeVarCount();
    });
}

TEST(Homes, InHometab) {
    WorkDir dir;
    TreeWriter w("Homes_Module", "h");
    defineTypes(w);
    w.option("-MORLA=2");
    startTool(dir, w);
    auto scope = std::make_optional<EntryFunctionScope>();
    withType("Ping.id", [](AsnType *type) {
        expectHome(type, "id",
                   {"&hometab [0]->val.ui8", "hometab [0]->val.ui8", "hometab [0]->val.ui8->",
                    "&hometab [0]->val.ui8->"});
    });
    withType("Ping.u", [](AsnType *type) {
        expectHome(type, "",
                   {"(U *)hometab [1]->val.stru", "*(U *)hometab [1]->val.stru",
                    "((U *)hometab [1]->val.stru)->", "&((U *)hometab [1]->val.stru)->"});
        cIncHomeVarCount(); /* inside its block the component has a home of its own */
        expectHome(type, "", {"h1", "*h1", "h1->", "&h1->"});
        cDecHomeVarCount();
    });
    withType("U", [](AsnType *type) { EXPECT_FALSE(cIsHometab(type)); });
    withType("Ping", [&scope](AsnType *type) {
        EXPECT_TRUE(cIsHometab(type));
        scope.reset();
        EXPECT_FALSE(cIsHometab(type));
    });
}

/* What `write` writes to a file. */
std::string written(const WorkDir &dir, Call<void(int file)> write) {
    initF(1, (dir.path() + "/").c_str(), "out.c");
    openFWithPrefix(1, "");
    write(1);
    closeF(1);
    return dir.read("out.c");
}

std::string allHeads(const WorkDir &dir, const char *typeName) {
    std::string text;
    withType(typeName, [&](AsnType *type) {
        text = written(dir, [&](int file) {
            cFunctionProto(file, "e", GIDX_CODING, type);
            cFunctionDef(file, "e", GIDX_CODING, type);
            cFunctionRef(file, "e", GIDX_CODING, type);
            cEntryFunctionProto(file, "enc", GIDX_CODING, type);
            cEntryFunctionDef(file, "enc", GIDX_CODING, type);
            cAnyFunctionProto(file, "anyEnc", GIDX_CODING, type);
            cAnyFunctionRef(file, "anyEnc", GIDX_CODING, type, nullptr);
        });
    });
    return text;
}

TEST(Functions, HeadsInOldCOfAMorlaApplication) {
    WorkDir dir;
    TreeWriter w("Homes_Module", "h");
    defineTypes(w);
    w.option("-MORLA=2");
    w.option("-ANSI-C=no");
    startTool(dir, w);
    EXPECT_EQ(allHeads(dir, "Ping"), "extern void ePing (/* Ping *home */);\n"
                                     "void ePing (ASNG_F(asncodg) home)\n"
                                     "ASNG_DEF(ASNCODG *asncodg)\n"
                                     "Ping *home;\n"
                                     "ePing (ASNG_F(asncodg) home);\n"
                                     "extern void encPing (/* ASNHOME **hometab */);\n"
                                     "void encPing (ASNG_F(asncodg) hometab)\n"
                                     "ASNG_DEF(ASNCODG *asncodg)\n"
                                     "ASNHOME **hometab;\n"
                                     "extern void anyEncPing (/* ANY *, BYTE_TYPE * */);\n"
                                     "anyEncPing (ASNG_F(asncodg) home, NULL);\n");
}

TEST(Vars, CountAlongTheNesting) {
    WorkDir dir;
    TreeWriter w("Homes_Module", "h");
    defineTypes(w);
    w.option("-C-GENERATION=SIGNED-CONTROL-MEMBER");
    startTool(dir, w);
    withType("Msg.home", [&](AsnType *type) {
        type->path = "home";
        EXPECT_EQ(written(dir,
                          [&](int file) {
                              cResetVars();
                              cBeginBlock(file, type);
                              cIncNVarCount();
                              cNVarDef(file);
                              cOpenBrace(file);
                              cIncNVarCount();
                              cNVarDef(file);
                              cDecNVarCount();
                              cCloseBrace(file);
                              cIncAsnHomeVarCount();
                              cAsnHomeVarDef(file);
                              cIncOkVarCount();
                              cOkVarDef(file);
                              cEndBlock(file);
                          }),
                  "{\n"
                  "  U *h1 = (U *)home->home->val.stru;\n"
                  "  sint32 n1 = 0;\n"
                  "  {\n"
                  "    sint32 n2 = 0;\n"
                  "  }\n"
                  "  ASNHOME *a1 = NULL;\n"
                  "  BOOLE ok1;\n"
                  "}\n");
        EXPECT_EQ(cVarCount(VAR_HOME), 0);
    });
    EXPECT_EXIT(cVarDef(0, VAR_KINDS, nullptr), testing::ExitedWithCode(2),
                "CBET variable index overflow.");
}

TEST(Constants, Integers) {
    struct Row {
        sint64 value;
        int format;
        const char *text;
    };
    const Row rows[] = {
        {i64ltosint64(2147483647), VF_UI32, "2147483647"},
        {i64ultosint64(2147483648u), VF_UI32, "2147483648UL"},
        {i64ultosint64(4294967295u), VF_UI32, "4294967295UL"},
        {i64ultosint64(4294967295u), VF_I32, "4294967295"},
        {i64ltosint64(-5), VF_I8, "-5"},
        {i64max(), VF_I32, "LONG_MAX"},
        {i64max(), VF_UI32, "ULONG_MAX"},
        {i64min(), VF_I32, "LONG_MIN"},
        {i64max(), VF_UI64, "i64max ()"},
        {i64min(), VF_I64, "i64min ()"},
        {i64ltosint64(INT32_MIN), VF_I64, "i64ltosint64 (-2147483648L)"},
        {i64ltosint64(INT32_MAX), VF_I64, "i64ltosint64 (2147483647L)"},
        {i64addl(i64ltosint64(INT32_MIN), -1), VF_I64, "i64make (-1L, 2147483647UL)"},
        {i64ultosint64(2147483648u), VF_I64, "i64make (0L, 2147483648UL)"},
        {i64make(INT32_MIN, 1), VF_I64, "i64make (-2147483648L, 1UL)"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(cInt64(row.value, row.format), row.text);
    EXPECT_EQ(cSint64(i64ltosint64(INT32_MIN)), "i64make (-1L, 2147483648UL)");
    EXPECT_EXIT(cInt64(i64max(), VF_UI8), testing::ExitedWithCode(2),
                "CBET: Plus-infinity found as a non-long C type");
    EXPECT_EXIT(cInt64(i64min(), VF_UI32), testing::ExitedWithCode(2),
                "CBET: Minus-infinity found as a non-long C type");
}

} // namespace
