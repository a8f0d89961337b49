#pragma once

#include "base/text.h"

struct AsnType;

/* Control members: the member of a generated C structure that says what is present. It is
   "compmask" in a SEQUENCE or SET, "choice" in a CHOICE, and "n" in lists and strings. From 33
   components on "compmask" is an array of 32-bit words. All of these texts come from here, so that
   whoever declares, sets, tests or clears a member writes the same name.

   `home` is the access text in front of the member, such as "home->"; null counts as empty. The
   type must be the one that has the member, `comp` the component that the operation is about. */

inline constexpr int CONTROL_WORD_BITS = 32;

/* "compmask" or "compmask [1]", and "BIT(3)" or "BITL(3)": word and bit of a component in the mask. */
Text cMaskWord(AsnType *type, int compNbr);
Text cMaskBit(AsnType *type, int compNbr);

/* ORDER CONTROL */
enum ControlOper : int {
    CONTROL_SET = 0,
    CONTROL_TEST,
    CONTROL_CLEAR,
};

/* Suffixes of getControlMemberOper, one for each shape of the member; null counts as empty. */
struct ControlSuffixes {
    const char *stru = nullptr;   /* mask of up to 32 components */
    const char *array = nullptr;  /* mask of more */
    const char *choice = nullptr; /* selector */
    const char *list = nullptr;   /* element counter */
    const char *string = nullptr; /* length */
};

/* `prefix`, `home`, the member and its suffix. The text is empty for types without a control
   member, and for a SEQUENCE unless `needed` is set. `compNbr` chooses the word of a mask of
   several words. */
Text &getControlMemberOper(Text &dst, const char *prefix, const char *home, AsnType *type,
                           bool needed, int compNbr, const ControlSuffixes &suffixes);

/* The declaration, such as "uint8 compmask;\n"; empty if the type has no C type for the member. */
Text &getControlMemberDef(Text &dst, AsnType *type);
/* The statement that gives the member its first value, such as "home->choice = -1;\n". */
Text &getControlMemberIni(Text &dst, const char *home, AsnType *type);

/* One operation for one component, such as "home->compmask |= BIT(3)", with `suffix` behind it. */
Text &getControlMemberRaw(Text &dst, const char *prefix, const char *home, ControlOper oper, AsnType *type,
                          AsnType *comp, int compNbr, const char *suffix);
Text &getControlMemberRawSet(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix);
Text &getControlMemberRawTst(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix);
Text &getControlMemberRawClr(Text &dst, const char *prefix, const char *home, AsnType *type,
                             AsnType *comp, int compNbr, const char *suffix);

/* The whole statement, ending in ";\n". */
Text &getControlMemberSet(Text &dst, const char *home, AsnType *type, AsnType *comp, int compNbr);
/* The test in parentheses: `prefix`, "(home->compmask & BIT(3))", `suffix`. */
Text &getControlMemberTst(Text &dst, const char *prefix, const char *home, AsnType *type,
                          AsnType *comp, int compNbr, const char *suffix);
