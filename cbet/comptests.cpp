#include "cbet/comptests.h"

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/vars.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

/* --- optional and duplicate components --- */

/* if (home->compmask & BIT(1)){ or if (hometab [1]){ or if (home->b){ */
void cBeginTestOptionalComp(int file, AsnType *father, AsnType *comp) {
    if (getTypeCompStatus(comp) != TCS_OPTIONAL)
        return;
    const int number = getTypeCompNbr(comp);
    if (cIsHometab(father))
        putF(file, "if (hometab [", number, "])");
    else if (testTypeOption(father, OPT_COMPS_AS_POINTERS))
        putF(file, "if (", cHomeRef(comp, HOME_VALUE), ")");
    else
        putF(file, "if (",
             getControlMemberTst(cStructHome(father, HOME_MEMBER), father, comp, number), ")");
    cOpenBrace(file);
}

void cEndTestOptionalComp(int file, AsnType *comp) {
    if (getTypeCompStatus(comp) == TCS_OPTIONAL)
        cCloseBrace(file);
}

void cBeginTestDuplicateSetComp(int file, AsnType *comp) {
    cTestControlMember(file, comp);
    cOpenBrace(file);
}

void cEndTestDuplicateSetComp(int file) {
    cCloseBrace(file);
}

/* --- missing components --- */

namespace {

constexpr int WORD_BITS = CONTROL_WORD_BITS;

/* The complement of the mask: a bit is set in it for each component that wasn't seen. */
Text unseenMask(AsnType *set) {
    if (!cIsControlMember(set))
        return "~compmask";
    return "~" + cHomeRef(set, HOME_MEMBER) + "compmask";
}

/* if ((~home->compmask & (BIT(0)|BIT(2)))) */
void testMandatoryBits(int file, AsnType *set, const Text &mask) {
    const char *bit = cBitMacro(set);
    bool words = nrOfWalkedComps(set) > WORD_BITS;
    int wordInHand = -1;
    putF(file, "if ((");
    auto checkIfMandatoryCompIsAbsent = [&](AsnType *, AsnType *comp, int nbr) {
        if (isTypeExtensionmarker(comp) || getTypeCompStatus(comp) != TCS_MANDATORY)
            return;
        int word = nbr / WORD_BITS;
        if (word == wordInHand) {
            putF(file, "|");
        } else {
            if (wordInHand >= 0)
                putF(file, ")) || (");
            putF(file, mask);
            if (words)
                putF(file, "[", word, "]");
            putF(file, " & (");
            wordInHand = word;
        }
        putF(file, bit, "(", nbr % WORD_BITS, ")");
    };
    forEachTypeComp(set, checkIfMandatoryCompIsAbsent);
    putF(file, ")))");
}

/* Bits of the mask's C type. */
int maskWidth(AsnType *set) {
    switch (getVFSize(set)) {
    case VF_UI8:
    case VF_I8:
        return 8;
    case VF_UI16:
    case VF_I16:
        return 16;
    default:
        return WORD_BITS;
    }
}

/* if ((sint8)((~compmask) << 3)): unused bits at the upper end are pushed out. */
void testWholeMask(int file, AsnType *set, const Text &mask) {
    int width = maskWidth(set);
    int shift = width - nrOfWalkedComps(set);
    if (shift == 0)
        putF(file, "if (", mask, ")");
    else if (width == 8)
        putF(file, "if ((sint8)((", mask, ") << ", shift, "))");
    else if (width == 16)
        putF(file, "if ((sint16)((", mask, ") << ", shift, "))");
    else
        putF(file, "if ((", mask, ") << ", shift, ")");
}

/* if (~compmask [0] || ((~compmask [1]) << 24)) */
void testMaskWords(int file, AsnType *set, const Text &mask) {
    int count = nrOfWalkedComps(set);
    int last = (count + WORD_BITS - 1) / WORD_BITS - 1;
    const char *m = mask.c_str();
    putF(file, "if (", m, " [0]");
    for (int word = 1; word < last; ++word)
        putF(file, " || ", m, " [", word, "]");
    if (count % WORD_BITS != 0)
        putF(file, " || ((", m, " [", last, "]) << ", WORD_BITS - count % WORD_BITS, "))");
    else
        putF(file, " || ", m, " [", last, "])");
}

} // namespace

/* Bits of optional components are left out of the test; without any the whole mask is tested. */
void cBeginTestMissingSetMandatoryComps(int file, AsnType *set) {
    if (!isMandatoryTypeComps(set))
        return;
    Text mask = unseenMask(set);
    if (isOptionalTypeComps(set))
        testMandatoryBits(file, set, mask);
    else if (nrOfWalkedComps(set) <= WORD_BITS)
        testWholeMask(file, set, mask);
    else
        testMaskWords(file, set, mask);
    cOpenBrace(file);
}

void cEndTestMissingSetMandatoryComps(int file, AsnType *set) {
    if (isMandatoryTypeComps(set))
        cCloseBrace(file);
}

/* --- holes in integer sets --- */

/* if ((1 < home->x && home->x < 3) || (3 < home->x && home->x < 5)) */
bool cCheckIntegerValueSet(int file, AsnType *type) {
    if (isSimpleIntegerValueSet(type))
        return false;
    bool extensible = isExtensibleEnumeratedList(type);
    const Text value = extensible ? cHome(type, HOME_MEMBER) + "value" : cHome(type, HOME_VALUE);
    const char *v = value.c_str();
    bool wrote = false;
    forInt64ValueSet(type, [&](AsnType *, const Int64Range *range, int nbr) {
        Text lower = i64tostr(range->lower), upper = i64tostr(range->upper);
        if (nbr == 0) {
            putF(file, "if (");
            wrote = true;
            putF(file, "(", upper, " < ", v);
            return;
        }
        putF(file, " && ");
        if (isLastInt64ValueSetSeg(type, range))
            putF(file, v, " < ", lower, ")");
        else
            putF(file, v, " < ", lower, ") || (", upper, " < ", v);
    });
    if (wrote)
        putF(file, ")");
    return wrote;
}

/* --- control members --- */

namespace {

/* What stands in front of the mask: the father's home, or nothing for the function's own mask. */
Text maskHome(AsnType *father) {
    return cIsControlMember(father) ? cStructHome(father, HOME_MEMBER) : "";
}

} // namespace

void cSetControlMember(int file, AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    putF(file, getControlMemberSet(maskHome(father), father, comp, getTypeCompNbr(comp)));
}

void cTestControlMember(int file, AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    const Text test = getControlMemberTst(maskHome(father), father, comp, getTypeCompNbr(comp));
    if (!test.empty())
        putF(file, "if ", test);
}

