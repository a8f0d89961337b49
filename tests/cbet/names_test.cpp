#include <gtest/gtest.h>

#include "cbet/forms.h"
#include "cbet/names.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "options/ketracnf.h"
#include "tests/support/inprocess.h"

namespace {

void defineTypes(TreeWriter &w) {
    const auto inner = [&] { return w.sequence({w.comp("x", w.boolean())}); };
    w.define("U", inner());
    w.define("Small", w.integer(0, 255));
    w.define("Alias", w.ref("U"));
    w.define("Entry", w.ref("U")).entry();
    w.define(
        "Msg",
        w.sequence({w.comp("a", w.sequence({w.comp("b", inner()), w.comp("u", w.ref("Alias"))})),
                    w.comp("list", w.listOf(TYP_SEQOF, inner()).asList()),
                    w.comp("small", w.ref("Small")).optional(),
                    w.comp("next", w.ref("Msg")).optional(),
                    w.comp("text", w.string(TYP_IA5STR, 1, 8)), w.comp("any", w.any()),
                    w.comp("skipped", inner().skipped()), w.marker()}));
    w.define("Rows", w.listOf(TYP_SEQOF, w.listOf(TYP_SETOF, inner()).asList()).asList());
    w.define("Loop", w.sequence({w.comp("sons", w.listOf(TYP_SEQOF, w.ref("Loop")).asList())}));
}

TEST(Names, TypesAndComponents) {
    WorkDir dir;
    TreeWriter w("Names_Module", "n");
    defineTypes(w);
    startTool(dir, w);
    struct Row {
        const char *place, *typeId, *baseTypeId, *compDef;
    };
    const Row rows[] = {
        {"U", "U", "U", "U"},
        {"Small", "Small", "uint8", "Small"},
        {"Alias", "Alias", "U", "U"},
        {"Entry", "Entry", "U", "U"},
        {"Msg.a", "a_Msg", "struct t_a_Msg", "struct t_a_Msg"},
        {"Msg.a.b", "b_a_Msg", "struct t_b_a_Msg", "struct t_b_a_Msg"},
        {"Msg.a.b.x", "x_b_a_Msg", "BOOLE", "BOOLE"},
        {"Msg.a.u", "U", "U", "U"},
        {"Msg.a.u.x", "x_U", "BOOLE", "BOOLE"},
        {"Msg.list", "list_Msg", "LIST", "LIST"},
        {"Msg.list.*", "1_list_list_Msg", "struct t_1_list_list_Msg", "struct t_1_list_list_Msg"},
        {"Msg.small", "Small", "Small", "Small"},
        {"Msg.next", "Msg", "Msg", "struct t_Msg"},
        {"Msg.text", "text_Msg", "struct t_text_Msg", "struct t_text_Msg"},
        {"Msg.any", "any_Msg", "FRAME_PTR", "FRAME_PTR"},
        {"Msg.skipped", "skipped_Msg", "SKIPPED", "SKIPPED"},
        {"Rows.*", "1_Rows", "LIST", "LIST"},
        {"Rows.*.*", "2_Rows", "struct t_2_Rows", "struct t_2_Rows"},
        {"Loop.sons.*", "Loop", "Loop", "Loop"},
    };
    for (const Row &row : rows)
        withType(row.place, [&](AsnType *type) {
            EXPECT_EQ(cTypeId(type), row.typeId) << row.place;
            EXPECT_EQ(cBaseTypeId(type), row.baseTypeId) << row.place;
            EXPECT_EQ(cTypeIdForTypeCompDef(type), row.compDef) << row.place;
        });
}

TEST(Names, Mnemonics) {
    WorkDir dir;
    TreeWriter w("Names_Module", "n");
    defineTypes(w);
    w.define("Colour", w.enumerated({{"red", 1}, NamedNumber::extension(), {"blue", -7}}));
    startTool(dir, w);
    const std::pair<const char *, const char *> rows[] = {
        {"Msg.a", "#define a_Msg 0\n"},
        {"Msg.text", "#define text_Msg 4\n"},
        {"Msg.a.b", "#define b_Msg 0\n"},
        {"Msg.a.u.x", "#define x_U 0\n"},
    };
    for (const auto &[place, line] : rows)
        withType(place, [&](AsnType *comp) { EXPECT_EQ(cDefineForComponentIndex(comp), line); });
    withType("Msg", [&](AsnType *type) {
        Text text;
        forEachTypeComp(
            type, [&](AsnType *, AsnType *comp, int) { text = cDefineForComponentIndex(comp); });
        EXPECT_EQ(text, "#define extensionmarker_Msg 7\n");
    });
    withType("Colour", [&](AsnType *type) {
        Text all;
        forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int) {
            all += cDefineForNamedNumber(type, value);
        });
        EXPECT_EQ(all, "#define red_Colour 1\n#define blue_Colour -7\n");
    });
}

TEST(Names, Variables) {
    WorkDir dir;
    TreeWriter w("Names_Module", "n");
    w.define("Long_Name", w.string(TYP_OCTSTR));
    w.define("Other", w.ref("Long_Name"));
    w.option("-NAMELEN=8");
    w.option("-OPTVARS=yes");
    startTool(dir, w);
    withType("Long_Name", [&](AsnType *type) { EXPECT_EQ(cASN1VariableName(type), "long_Nam"); });
    /* With the option a synonym goes by what it stands for. */
    withType("Other", [&](AsnType *type) { EXPECT_EQ(cASN1VariableName(type), "oCTET_ST"); });
}

/* "C-GENERATION=" replaces rows of the table of value forms. */
TEST(Names, ValueForms) {
    WorkDir dir;
    TreeWriter w("Forms_Module", "f");
    w.define("All", w.sequence({w.comp("real", w.real()), w.comp("time", w.type(TYP_UTCTIME)),
                                w.comp("ext", w.type(TYP_EXTERNAL_1990)), w.comp("any", w.any()),
                                w.comp("open", w.openType()),
                                w.comp("item", w.enumerated({{"a", 0}, NamedNumber::extension()})),
                                w.comp("big", w.integer().form(VF_UI64)), w.marker()})
                        .option(OPT_SAVE_EXTENSIONS));
    startTool(dir, w);
    struct Row {
        const char *place, *cType, *member, *form;
    };
    const auto expectForms = [](const std::vector<Row> &rows) {
        for (const Row &row : rows)
            withType(row.place, [&](AsnType *type) {
                EXPECT_STREQ(getPredefinedType(type), row.cType);
                EXPECT_STREQ(getAsnhomeMember(type), row.member);
                EXPECT_STREQ(cGetVFStri(type), row.form);
            });
    };
    expectForms({{"All.real", "REAL64", "real64", "VF_REAL64"},
                 {"All.time", "DATETIMEZ", "datetime", "VF_COMT"},
                 {"All.ext", "EXTERNAL_1990", "ext1990", "VF_EXTERNAL_1990"},
                 {"All.any", "FRAME_PTR", "frm", "VF_FRM"},
                 {"All.open", "FRAME_PTR", "frm", "VF_FRM"},
                 {"All.item", "EXTENSIBLE_ENUMERATED", "xenum", "VF_UI8"},
                 {"All.big", "uint64", "ui64", "VF_UI64"}});
    withType("All", [](AsnType *type) {
        getGlobalOptions(getModuleOfType(type))->cGeneration =
            1u << CGEN_REAL | 1u << CGEN_COMMONTIME | 1u << CGEN_EXTERNAL |
            1u << CGEN_ANY_FUNCTIONS;
    });
    expectForms({{"All.real", "REAL", "real", "VF_REAL"},
                 {"All.time", "COMMONTIME", "comt", "VF_COMT"},
                 {"All.ext", "EXTERNAL", "ext", "VF_EXTERNAL_1990"},
                 {"All.any", "ANY", "any", "VF_ANY"},
                 {"All.open", "OPENTYPE", "openType", "VF_OPEN"}});
}

/* A reference into another module has the name that stands there; only what is written here counts
   as generated here, what COMPONENTS OF brings in included. */
TEST(Names, AcrossModules) {
    WorkDir dir;
    TreeWriter base("Base_Module", "base");
    base.define("Box", base.sequence({base.comp("x", base.boolean())}));
    base.define("Crate", base.ref("Box"));
    TreeWriter user("User_Module", "user");
    user.import(base);
    user.define("Here", user.null());
    user.define("Msg", user.sequence({user.comp("crate", user.ref(base, "Crate")),
                                      user.comp("here", user.ref("Here")),
                                      user.comp("plain", user.sequence({})),
                                      user.componentsOf(user.ref(base, "Box"))}));
    ASSERT_TRUE(base.save(dir.path("base.stx")));
    startTool(dir, user);
    struct Row {
        const char *place;
        bool defined, generated;
    };
    for (const Row &row :
         {Row{"Msg", true, true}, Row{"Msg.crate", true, false}, Row{"Msg.here", true, true},
          Row{"Msg.plain", false, true}, Row{"Msg.x", false, true}})
        withType(row.place, [&](AsnType *type) {
            EXPECT_EQ(cIsDefinedBaseType(type), row.defined) << row.place;
            EXPECT_EQ(cIsBaseTypeGeneratedInCurrentModule(type), row.generated) << row.place;
        });
    withType("Msg.crate", [&](AsnType *type) { EXPECT_EQ(cTypeId(type), "Box"); });
}

TEST(NamesDeathTest, FormsOutOfRange) {
    WorkDir dir;
    TreeWriter w("Odd_Module", "o");
    w.define("None", w.integer().form(VF_NONE));
    w.define("Wild", w.integer().form(static_cast<ValueForm>(200)));
    startTool(dir, w);
    for (const char *name : {"None", "Wild"})
        withType(name, [&](AsnType *type) {
            EXPECT_EXIT(getAsnhomeMember(type), testing::ExitedWithCode(2),
                        "CBET: Unrecognized ASNHOME member indicator");
        });
    withType("Wild", [&](AsnType *type) {
        EXPECT_EQ(getPredefinedType(type), nullptr);
        EXPECT_STREQ(cGetVFStri(type), "?!?");
        EXPECT_EXIT(cComponentIndexMnemonic(type), testing::ExitedWithCode(2),
                    "CBET: Invalid type for a component index.");
    });
}

} // namespace
