#include "gen/defines.h"

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "project/ketratavi.h"

namespace {

/* All access goes through this argument of the macro. */
constexpr const char *HOME = "(home)->";
/* From this column on a cast stands on a line of its own. */
constexpr int LAST_CAST_COLUMN = 58;
/* What goes beyond this one would be broken off without a backslash. */
constexpr int LAST_COLUMN = 78;

void genIntro(AsnType *type) {
    putF(fiDef, "\n/* accessors for ", cTypeId(type), " */\n\n");
}

/* #define is_b_Msg(home) \
     ((home)->compmask & BIT(1)) */
void genMacro(AsnType *father, AsnType *comp, const char *word, const Text &body) {
    const Text name = concat(word, "_", getMetaCompId(comp), "_", cTypeId(father));
    putF(fiDef, "#define ", name, "(home) \\\n");
    taviAddItem(ITEM_MACRO, fiDef, {name});
    const Indent indent(fiDef);
    putF(fiDef, body);
    putF(fiDef, "\n");
}

bool compsAreHeldAsPointers(AsnType *father) {
    return testTypeOption(father, OPT_COMPS_AS_POINTERS);
}

/* ((home)->compmask & BIT(1)) or ((home)->b != NULL) */
void genIsMacro(AsnType *father, AsnType *comp, int compNbr) {
    Text body;
    if (compsAreHeldAsPointers(father))
        body = "((home)->" + getMetaMemberName(comp) + " != NULL)";
    else
        body = getControlMemberTst(HOME, father, comp, compNbr);
    genMacro(father, comp, "is", body);
}

/* Without a control member there is nothing to do. */
Text controlOperation(ControlOper oper, AsnType *father, AsnType *comp, int compNbr) {
    if (compsAreHeldAsPointers(father))
        return "(0)";
    const Text operation = getControlMemberRaw(HOME, oper, father, comp, compNbr);
    return operation.empty() ? operation : "(" + operation + ")";
}

/* ((home)->compmask |= BIT(1)) */
void genSetMacro(AsnType *father, AsnType *comp, int compNbr) {
    genMacro(father, comp, "set", controlOperation(CONTROL_SET, father, comp, compNbr));
}

/* ((home)->compmask &= ~BIT(1)) */
void genRemMacro(AsnType *father, AsnType *comp, int compNbr) {
    genMacro(father, comp, "rem", controlOperation(CONTROL_CLEAR, father, comp, compNbr));
}

/* (&((home)->i1.a)) */
void genAltMacro(AsnType *father, AsnType *comp, Alternatives alternatives) {
    const Text member = getMetaMemberName(comp);
    if (compsAreHeldAsPointers(father))
        genMacro(father, comp, "alt", "((home)->" + member + ")");
    else if (alternatives == Alternatives::SIDE_BY_SIDE)
        genMacro(father, comp, "alt", "(&((home)->" + member + "))");
    else
        genMacro(father, comp, "alt", "(&((home)->i1." + member + "))");
}

/* Macro groups of one type are set apart by an empty line. */
void genGroupSeparator(bool *first) {
    if (!*first)
        putF(fiDef, "\n");
    *first = false;
}

void genSeqSetAccessRoutines(AsnType *type) {
    if (!isOptionalTypeComps(type) && !isTypeExtensionmarkerComp(type))
        return;
    genIntro(type);
    bool first = true;
    auto genComp = [&first](AsnType *father, AsnType *comp, int compNbr) {
        if (!isOptionalTypeComp(comp) && !isTypeExtensionmarker(comp))
            return;
        genGroupSeparator(&first);
        genIsMacro(father, comp, compNbr);
        genSetMacro(father, comp, compNbr);
        genRemMacro(father, comp, compNbr);
    };
    forEachTypeComp(type, genComp);
}

void genChoiceAccessRoutines(AsnType *type, Alternatives alternatives) {
    genIntro(type);
    bool first = true;
    auto genAlternative = [&first, alternatives](AsnType *father, AsnType *comp, int compNbr) {
        genGroupSeparator(&first);
        genIsMacro(father, comp, compNbr);
        genSetMacro(father, comp, compNbr);
        genAltMacro(father, comp, alternatives);
    };
    forEachTypeComp(type, genAlternative);
}

/* A program in C++ can't write "val.bool". */
Text homeMember(AsnType *elem) {
    const bool isWord = getVF(elem) == VF_BOOL && avoidsCPlusPlusWords(getModuleOfType(elem));
    return isWord ? "boolean" : getAsnhomeMember(elem);
}

/* #define item_List(elem) \
     ((Elem *)((elem)->val.stru)) */
void genElemMacro(AsnType *father, AsnType *elem) {
    const Text id = cTypeId(father);
    putF(fiDef, "#define item_", id, "(elem) \\\n");
    taviAddItem(ITEM_DEFINE, fiDef, {"item_", id});
    const Indent indent(fiDef);
    const bool isPointer = cIsPtrAsnHomeMember(elem);
    const Text member = "((elem)->val." + homeMember(elem) + ")";
    if (isPointer) {
        putF(fiDef, "((", getMetaBaseTypeId(elem), " *)");
        const int end = columnsInF(fiDef) + static_cast<int>(member.size());
        if (columnsInF(fiDef) > LAST_CAST_COLUMN || end > LAST_COLUMN)
            putF(fiDef, " \\\n");
    }
    putF(fiDef, member);
    if (isPointer)
        putF(fiDef, ")");
    putF(fiDef, "\n");
}

void genListAccessRoutines(AsnType *type) {
    if (!cIsLinkedList(type))
        return;
    genIntro(type);
    forTypeElem(type, genElemMacro);
}

} // namespace

void genCompAccessRoutines(AsnType *type, Alternatives alternatives) {
    if (getMetaTypeAccessRoutines(type) != ACCESS_MACROS)
        return;
    switch (getTypeMainType(type)) {
    case TYP_SEQ:
    case TYP_SET:
        genSeqSetAccessRoutines(type);
        break;
    case TYP_CHOICE:
        genChoiceAccessRoutines(type, alternatives);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        genListAccessRoutines(type);
        break;
    default:
        break;
    }
}
