#pragma once

#include "base/text.h"

struct AsnType;

/* Control members: the member of a generated C structure that says what is present. It is
   "compmask" in a SEQUENCE or SET, "choice" in a CHOICE, and "n" in lists and strings. From 33
   components on "compmask" is an array of 32-bit words. All of these texts come from here, so that
   whoever declares, sets, tests or clears a member writes the same name.

   `home` is the access text in front of the member, such as "home->". The type must be the one that
   has the member, `comp` the component that the operation is about. */

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

/* The declaration, such as "uint8 compmask;\n"; empty if the type has no C type for the member. */
Text getControlMemberDef(AsnType *type);
/* The statement that gives the member its first value, such as "home->choice = -1;\n"; empty for
   types without a control member, and for a SEQUENCE without optional components. */
Text getControlMemberIni(std::string_view home, AsnType *type);
/* One operation for one component, such as "home->compmask |= BIT(3)"; empty where there is no
   member, and for a mandatory component of a SEQUENCE. */
Text getControlMemberRaw(std::string_view home, ControlOper oper, AsnType *type, AsnType *comp,
                         int compNbr);
/* The whole statement, ending in ";\n". */
Text getControlMemberSet(std::string_view home, AsnType *type, AsnType *comp, int compNbr);
/* The test in parentheses: "(home->compmask & BIT(3))". */
Text getControlMemberTst(std::string_view home, AsnType *type, AsnType *comp, int compNbr);
