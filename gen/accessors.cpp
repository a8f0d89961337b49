#include "gen/defines.h"

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/typeshape.h"
#include "model/iterators.h"
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
    Text id;
    putF(fiDef, "\n/* accessors for ", cTypeId(id, nullptr, type, nullptr), " */\n\n");
}

/* #define is_b_Msg(home) \ */
void genCompMacroPrefix(AsnType *father, AsnType *comp, const char *word) {
    Text id;
    cTypeId(id, nullptr, father, nullptr);
    putF(fiDef, "#define ", word, "_", getMetaCompId(comp), "_", id, "(home) \\\n");
    taviAddItem(ITEM_MACRO, fiDef, {word, "_", getMetaCompId(comp), "_", id});
    ++fArr[fiDef].indent;
}

void genMacroPostfix() {
    --fArr[fiDef].indent;
    putF(fiDef, "\n");
}

void genMacro(AsnType *father, AsnType *comp, const char *word, const Text &body) {
    genCompMacroPrefix(father, comp, word);
    putF(fiDef, body);
    genMacroPostfix();
}

bool compsAreHeldAsPointers(AsnType *father) {
    return testTypeOption(father, OPT_COMPS_AS_POINTERS);
}

/* ((home)->compmask & BIT(1)) or ((home)->b != NULL) */
void genIsMacro(AsnType *father, AsnType *comp, int compNbr) {
    Text body;
    if (compsAreHeldAsPointers(father))
        body = formatText("((home)->%s != NULL)", getMetaMemberName(comp).c_str());
    else
        getControlMemberTst(body, nullptr, HOME, father, comp, compNbr, nullptr);
    genMacro(father, comp, "is", body);
}

/* ((home)->compmask |= BIT(1)); without a control member there is nothing to set */
void genSetMacro(AsnType *father, AsnType *comp, int compNbr) {
    Text body = "(0)";
    if (!compsAreHeldAsPointers(father))
        getControlMemberRawSet(body, "(", HOME, father, comp, compNbr, ")");
    genMacro(father, comp, "set", body);
}

/* ((home)->compmask &= ~BIT(1)) */
void genRemMacro(AsnType *father, AsnType *comp, int compNbr) {
    Text body = "(0)";
    if (!compsAreHeldAsPointers(father))
        getControlMemberRawClr(body, "(", HOME, father, comp, compNbr, ")");
    genMacro(father, comp, "rem", body);
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
    Text id;
    cTypeId(id, nullptr, father, nullptr);
    putF(fiDef, "#define item_", id, "(elem) \\\n");
    taviAddItem(ITEM_DEFINE, fiDef, {"item_", id});
    ++fArr[fiDef].indent;
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
    genMacroPostfix();
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
