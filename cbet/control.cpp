#include "cbet/control.h"

#include "cbet/forms.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "store/ketramac.h"

namespace {

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

} // namespace

Text cMaskWord(AsnType *type, int compNbr) {
    return isMaskArray(type) ? formatText("compmask [%d]", compNbr / CONTROL_WORD_BITS) : "compmask";
}

Text cMaskBit(AsnType *type, int compNbr) {
    return formatText("%s(%d)", cBitMacro(type), compNbr % CONTROL_WORD_BITS);
}

Text &getControlMemberOper(Text &dst, const char *prefix, const char *home, AsnType *type,
                           bool needed, int compNbr, const ControlSuffixes &suffixes) {
    dst.clear();
    const auto member = [&](const char *name, const char *suffix) -> Text & {
        dst.append(orEmpty(prefix)).append(orEmpty(home)).append(name).append(orEmpty(suffix));
        return dst;
    };
    if (isMaskType(type)) {
        if (!needed && getTypeMainType(type) == TYP_SEQ)
            return dst;
        return member(cMaskWord(type, compNbr).c_str(),
                      isMaskArray(type) ? suffixes.array : suffixes.stru);
    }
    if (isListType(type))
        return member("n", suffixes.list);
    if (getTypeMainType(type) == TYP_CHOICE)
        return member("choice", suffixes.choice);
    if (isStringKind(getTypeMainType(type)))
        return member("n", suffixes.string);
    return dst;
}

Text &getControlMemberDef(Text &dst, AsnType *type) {
    dst.clear();
    const bool array = isMaskArray(type);
    const int form = array ? static_cast<int>(VF_I32) : getVFSize(type);
    if (form == VF_NONE)
        return dst;
    const Text cType = Text(targetLangType(form)) + " ";
    /* As the number of a component behind the last one, this makes the index the number of words.
     */
    const int size =
        isMaskType(type) ? nrOfWalkedComps(type) + (array ? CONTROL_WORD_BITS - 1 : 0) : 0;
    return getControlMemberOper(dst, cType.c_str(), nullptr, type, true, size,
                                {";\n", ";\n", ";\n", ";\n", ";\n"});
}

Text &getControlMemberIni(Text &dst, const char *home, AsnType *type) {
    if (!isMaskArray(type))
        return getControlMemberOper(dst, nullptr, home, type, isOptionalTypeComps(type), 0,
                                    {" = 0;\n", nullptr, " = -1;\n", " = 0;\n", " = 0;\n"});
    /* home->compmask [0] = home->compmask [1] = 0; */
    dst.clear();
    for (int word = 0; word < cNrOfMaskWords(type); ++word)
        dst += orEmpty(home) + formatText("compmask [%d] = ", word);
    return dst += "0;\n";
}

Text &getControlMemberRaw(Text &dst, const char *prefix, const char *home, ControlOper oper, AsnType *type,
                          AsnType *comp, int compNbr, const char *suffix) {
    const char *op = controlOper(type, oper);
    Text right;
    if (getTypeMainType(type) == TYP_CHOICE) {
        right = formatText(" %s%d", op, oper == CONTROL_CLEAR ? -1 : compNbr);
    } else if (isMaskType(type)) {
        right = formatText(" %s%s", op, cMaskBit(type, compNbr).c_str());
    } else {
        dst.clear();
        return dst;
    }
    right += orEmpty(suffix);
    const bool needed = isOptionalTypeComp(comp) || isTypeExtensionmarker(comp);
    return getControlMemberOper(dst, prefix, home, type, needed, compNbr,
                                {right.c_str(), right.c_str(), right.c_str(), nullptr, nullptr});
}

Text &getControlMemberRawSet(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix) {
    return getControlMemberRaw(dst, prefix, home, CONTROL_SET, type, comp, compNbr, suffix);
}

Text &getControlMemberRawTst(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix) {
    return getControlMemberRaw(dst, prefix, home, CONTROL_TEST, type, comp, compNbr, suffix);
}

Text &getControlMemberRawClr(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix) {
    return getControlMemberRaw(dst, prefix, home, CONTROL_CLEAR, type, comp, compNbr, suffix);
}

Text &getControlMemberSet(Text &dst, const char *home, AsnType *type, AsnType *comp, int compNbr) {
    return getControlMemberRawSet(dst, nullptr, home, type, comp, compNbr, ";\n");
}

Text &getControlMemberTst(Text &dst, const char *prefix, const char *home, AsnType *type,
                          AsnType *comp, int compNbr, const char *suffix) {
    const Text before = Text(orEmpty(prefix)) + "(";
    const Text after = Text(")") + orEmpty(suffix);
    return getControlMemberRawTst(dst, before.c_str(), home, type, comp, compNbr, after.c_str());
}
