#include <gtest/gtest.h>

#include "cbet/control.h"
#include "model/compwalk.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "tests/support/inprocess.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

TypeNode flags(TreeWriter &w, MainType kind, int count, bool optional) {
    std::vector<TypeNode> comps;
    for (int i = 0; i < count; ++i) {
        const TypeNode comp = w.comp("f" + std::to_string(i), w.boolean());
        comps.push_back(optional ? comp.optional() : comp);
    }
    return w.structure(kind, comps);
}

/* Declaration and first value of the control member of a whole type. */
TEST(Control, DeclaresAndInitialises) {
    WorkDir dir;
    TreeWriter w("Control_Module", "c");
    w.define("Few", w.sequence({w.comp("a", w.boolean()).optional()}));
    w.define("Mandatory", w.sequence({w.comp("a", w.boolean())}));
    w.define("MandatorySet", w.set({w.comp("a", w.boolean())}));
    w.define("ThirtyTwo", flags(w, TYP_SET, 32, true));
    w.define("SixtyFive", flags(w, TYP_SEQ, 65, true));
    w.define("Pick", w.choice({w.comp("a", w.boolean())}));
    w.define("List", w.listOf(TYP_SEQOF, w.boolean(), 0, 300).asArray());
    w.define("Name", w.string(TYP_IA5STR, 1, 8));
    w.define("Fixed", w.string(TYP_IA5STR, 8, 8));
    w.define("Number", w.integer(0, 9));
    startTool(dir, w);

    struct Row {
        const char *type, *definition, *first;
    };
    const Row rows[] = {
        {"Few", "uint8 compmask;\n", "home->compmask = 0;\n"},
        {"Mandatory", "uint8 compmask;\n", ""},
        {"MandatorySet", "uint8 compmask;\n", "home->compmask = 0;\n"},
        {"ThirtyTwo", "sint32 compmask;\n", "home->compmask = 0;\n"},
        {"SixtyFive", "sint32 compmask [3];\n",
         "home->compmask [0] = home->compmask [1] = home->compmask [2] = 0;\n"},
        {"Pick", "sint8 choice;\n", "home->choice = -1;\n"},
        {"List", "uint16 n;\n", "home->n = 0;\n"},
        {"Name", "uint8 n;\n", "home->n = 0;\n"},
        {"Fixed", "", "home->n = 0;\n"},
        {"Number", "", ""},
    };
    for (const Row &row : rows)
        withType(row.type, [&](AsnType *type) {
            EXPECT_EQ(getControlMemberDef(type), row.definition) << row.type;
            EXPECT_EQ(getControlMemberIni("home->", type), row.first) << row.type;
        });
}

/* The operations on one component's bit, in a mask of 8 and 32 bits, of two words, and in a CHOICE.
 */
TEST(Control, OperatesOnComponents) {
    WorkDir dir;
    TreeWriter w("Control_Module", "c");
    w.define("Ten",
             w.sequence({w.comp("a", w.boolean()), w.comp("b", w.null()).optional(), w.marker()}));
    w.define("Wide", flags(w, TYP_SET, 32, false));
    w.define("Array", flags(w, TYP_SEQ, 34, true));
    w.define("Pick", w.choice({w.comp("a", w.boolean()), w.comp("b", w.null())}));
    startTool(dir, w);

    const char *const rows[][4] = {
        {"Ten.b", "h->compmask |= BIT(1);\n", "h->compmask &= ~BIT(1);\n",
         "(h->compmask & BIT(1))"},
        {"Ten.a", "", "", ""},
        {"Wide.f31", "h->compmask |= BITL(31);\n", "h->compmask &= ~BITL(31);\n",
         "(h->compmask & BITL(31))"},
        {"Array.f33", "h->compmask [1] |= BITL(1);\n", "h->compmask [1] &= ~BITL(1);\n",
         "(h->compmask [1] & BITL(1))"},
        {"Pick.b", "h->choice = 1;\n", "h->choice = -1;\n", "(h->choice == 1)"},
    };
    for (const auto &[name, set, clear, test] : rows)
        withType(name, [&, s = set, c = clear, t = test](AsnType *comp) {
            AsnType *type = getFatherOfTypeComp(comp);
            const int nbr = getTypeCompNbr(comp);
            const Text clearing = getControlMemberRaw("h->", CONTROL_CLEAR, type, comp, nbr);
            EXPECT_EQ(getControlMemberSet("h->", type, comp, nbr), s);
            EXPECT_EQ(clearing.empty() ? clearing : clearing + ";\n", c);
            EXPECT_EQ(getControlMemberTst("h->", type, comp, nbr), t);
        });
    withType("Pick.a", [](AsnType *comp) {
        EXPECT_EQ(getControlMemberTst("", getFatherOfTypeComp(comp), comp, 0), "(choice == 0)");
    });
}

/* What COMPONENTS OF brings in has bits too, whatever the record's own count says; and counting
   them leaves a walk that is going on undisturbed. */
TEST(Control, CountsSplicedComponents) {
    WorkDir dir;
    TreeWriter w("Control_Module", "c");
    w.define("Part", flags(w, TYP_SEQ, 20, true));
    const TypeNode whole = w.define(
        "Whole", w.sequence({w.componentsOf(w.ref("Part")), w.comp("x", w.boolean()).optional(),
                             w.componentsOf(w.ref("Rest"))}));
    w.define("Rest", w.sequence({w.comp("y", w.boolean()).optional(), w.comp("z", w.null())}));
    for (int i = 0; i < 13; ++i)
        w.define("Filler" + std::to_string(i), w.boolean());
    w.finish();
    whole->nrOfComps = 3;
    startTool(dir, w);
    withType("Whole", [](AsnType *type) {
        EXPECT_EQ(getControlMemberDef(type), "sint32 compmask;\n");
        std::vector<int> numbers;
        forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int nbr) {
            EXPECT_EQ(getControlMemberSet("", father, comp, nbr),
                      nbr == 22 ? "" : "compmask |= BITL(" + std::to_string(nbr) + ");\n");
            numbers.push_back(nbr);
        });
        EXPECT_EQ(numbers.size(), 23u);
        EXPECT_EQ(numbers.back(), 22);
    });
}

TEST(TypePath, StacksPathsAndEndsTheRunOnMisuse) {
    EXPECT_FALSE(typePathInUse());
    EXPECT_EXIT(getPath(), exitsWith2, "Empty type name path stack");
    EXPECT_EXIT(popPath(), exitsWith2, "Empty type name path stack");
    pushPath();
    EXPECT_EXIT(removeElemFromPath(), exitsWith2, "Corrupted type name element stack");
    addElemToPath("Msg");
    addElemToPath(".a");
    const char *outer = getPath();
    pushPath();
    addElemToPath(std::string(MAX_TYPE_PATH, 'x').c_str());
    EXPECT_EXIT(addElemToPath("y"), exitsWith2, "Type name path buffer overflow");
    EXPECT_STREQ(outer, "Msg.a"); /* what is added above doesn't touch it */
    popPath();
    removeElemFromPath();
    EXPECT_STREQ(outer, "Msg"); /* the place follows its path */
    resetPath();
    EXPECT_FALSE(typePathInUse());
}

} // namespace
