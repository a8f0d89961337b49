#include "cbet/control.h"

#include "cbet/forms.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "store/ketramac.h"

namespace {

/* --- the mask of a SEQUENCE or SET --- */

bool isMaskType(AsnType *type) {
    return isSequenceOrSetKind(getTypeMainType(type));
}

bool isMaskArray(AsnType *type) {
    return cNrOfMaskWords(type) > 1;
}

/* The C operator of an operation, with a blank behind it. */
const char *controlOper(AsnType *type, ControlOper oper) {
    static constexpr const char *maskOpers[] = {"|= ", "& ", "&= ~"}; /* ORDER CONTROL */
    if (isMaskType(type))
        return maskOpers[oper];
    return oper == CONTROL_TEST ? "== " : "= ";
}

/* The name of the member, empty for types without one. */
Text controlMember(AsnType *type, int compNbr) {
    if (isMaskType(type))
        return cMaskWord(type, compNbr);
    if (getTypeMainType(type) == TYP_CHOICE)
        return "choice";
    return isListType(type) || isStringKind(getTypeMainType(type)) ? "n" : "";
}

/* `before`, the text and `behind`, or nothing for an empty text. */
Text unlessEmpty(const char *before, const Text &text, const char *behind) {
    return text.empty() ? text : concat(before, text, behind);
}

} // namespace

Text cMaskWord(AsnType *type, int compNbr) {
    return isMaskArray(type) ? concat("compmask [", compNbr / CONTROL_WORD_BITS, "]") : "compmask";
}

Text cMaskBit(AsnType *type, int compNbr) {
    return concat(cBitMacro(type), "(", compNbr % CONTROL_WORD_BITS, ")");
}

/* uint8 compmask; sint8 choice; uint16 n; */
Text getControlMemberDef(AsnType *type) {
    const bool array = isMaskArray(type);
    const int form = array ? static_cast<int>(VF_I32) : getVFSize(type);
    if (form == VF_NONE)
        return "";
    /* As the number of a component behind the last one, this makes the index the number of words.
     */
    const int size = array ? cNrOfMaskWords(type) * CONTROL_WORD_BITS : 0;
    return unlessEmpty(concat(targetLangType(form), " ").c_str(), controlMember(type, size), ";\n");
}

/* home->choice = -1; */
Text getControlMemberIni(std::string_view home, AsnType *type) {
    if (isMaskArray(type)) {
        /* home->compmask [0] = home->compmask [1] = 0; */
        Text text;
        for (int word = 0; word < cNrOfMaskWords(type); ++word)
            text += concat(home, cMaskWord(type, word * CONTROL_WORD_BITS), " = ");
        return text + "0;\n";
    }
    const Text member = controlMember(type, 0);
    if (member.empty() || (getTypeMainType(type) == TYP_SEQ && !isOptionalTypeComps(type)))
        return "";
    return concat(home, member, getTypeMainType(type) == TYP_CHOICE ? " = -1;\n" : " = 0;\n");
}

Text getControlMemberRaw(std::string_view home, ControlOper oper, AsnType *type, AsnType *comp,
                         int compNbr) {
    const char *op = controlOper(type, oper);
    if (getTypeMainType(type) == TYP_CHOICE)
        return concat(home, "choice ", op, oper == CONTROL_CLEAR ? -1 : compNbr);
    const bool needed = isOptionalTypeComp(comp) || isTypeExtensionmarker(comp);
    if (!isMaskType(type) || (getTypeMainType(type) == TYP_SEQ && !needed))
        return "";
    return concat(home, cMaskWord(type, compNbr), " ", op, cMaskBit(type, compNbr));
}

/* home->compmask |= BIT(3); */
Text getControlMemberSet(std::string_view home, AsnType *type, AsnType *comp, int compNbr) {
    return unlessEmpty("", getControlMemberRaw(home, CONTROL_SET, type, comp, compNbr), ";\n");
}

/* (home->compmask & BIT(3)) */
Text getControlMemberTst(std::string_view home, AsnType *type, AsnType *comp, int compNbr) {
    return unlessEmpty("(", getControlMemberRaw(home, CONTROL_TEST, type, comp, compNbr), ")");
}
