#include "cbet/comptests.h"

#include "base/files.h"
#include "cbet/control.h"
#include "cbet/homes.h"
#include "cbet/listsizes.h"
#include "cbet/forms.h"
#include "cbet/vars.h"
#include "model/iterators.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

/* --- optional and duplicate components --- */

void cBeginTestOptionalComp(int file, AsnType *father, AsnType *comp) {
    if (getTypeCompStatus(comp) != TCS_OPTIONAL)
        return;
    Text text, home;
    if (cIsHometab(father)) {
        printfToF(file, "if (hometab [%d])", getTypeCompNbr(comp));
    } else if (testTypeOption(father, OPT_COMPS_AS_POINTERS)) {
        wToF(file, cHomeRef(text, "if (", false, comp, nullptr, ")"));
    } else {
        cStructHomeMemberRef(home, "", false, father, "");
        wToF(file, getControlMemberTst(text, "if (", home.c_str(), father, comp,
                                       getTypeCompNbr(comp), ")"));
    }
    cOpenBrace(file);
}

void cEndTestOptionalComp(int file, AsnType *, AsnType *comp) {
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
    Text text;
    if (!cIsControlMember(set))
        return "~compmask";
    return cHomeRef(text, "~", false, set, ".", "compmask");
}

/* if ((~home->compmask & (BIT(0)|BIT(2)))) */
void testMandatoryBits(int file, AsnType *set, const Text &mask) {
    const char *bit = cBitMacro(set);
    bool words = nrOfWalkedComps(set) > WORD_BITS;
    int wordInHand = -1;
    wToF(file, "if ((");
    auto checkIfMandatoryCompIsAbsent = [&](AsnType *, AsnType *comp, int nbr) {
        if (isTypeExtensionmarker(comp) || getTypeCompStatus(comp) != TCS_MANDATORY)
            return;
        int word = nbr / WORD_BITS;
        if (word == wordInHand) {
            wToF(file, "|");
        } else {
            if (wordInHand >= 0)
                wToF(file, ")) || (");
            wToF(file, mask);
            if (words)
                printfToF(file, "[%d]", word);
            wToF(file, " & (");
            wordInHand = word;
        }
        printfToF(file, "%s(%d)", bit, nbr % WORD_BITS);
    };
    forEachTypeComp(set, checkIfMandatoryCompIsAbsent);
    wToF(file, ")))");
}

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
        printfToF(file, "if (%s)", mask.c_str());
    else if (width == 8)
        printfToF(file, "if ((sint8)((%s) << %d))", mask.c_str(), shift);
    else if (width == 16)
        printfToF(file, "if ((sint16)((%s) << %d))", mask.c_str(), shift);
    else
        printfToF(file, "if ((%s) << %d)", mask.c_str(), shift);
}

/* if (~compmask [0] || ((~compmask [1]) << 24)) */
void testMaskWords(int file, AsnType *set, const Text &mask) {
    int count = nrOfWalkedComps(set);
    int last = (count + WORD_BITS - 1) / WORD_BITS - 1;
    const char *m = mask.c_str();
    printfToF(file, "if (%s [0]", m);
    for (int word = 1; word < last; ++word)
        printfToF(file, " || %s [%d]", m, word);
    if (count % WORD_BITS != 0)
        printfToF(file, " || ((%s [%d]) << %d))", m, last, WORD_BITS - count % WORD_BITS);
    else
        printfToF(file, " || %s [%d])", m, last);
}

} // namespace

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
    Text value;
    bool extensible = isExtensibleEnumeratedList(type);
    cHome(value, "", false, type, extensible ? "." : nullptr, extensible ? "value" : "");
    const char *v = value.c_str();
    bool wrote = false;
    forInt64ValueSet(type, [&](AsnType *, const Int64Range *range, int nbr) {
        Text lower = i64tostr(range->lower), upper = i64tostr(range->upper);
        if (nbr == 0) {
            wToF(file, "if (");
            wrote = true;
            printfToF(file, "(%s < %s", upper.c_str(), v);
            return;
        }
        wToF(file, " && ");
        if (isLastInt64ValueSetSeg(type, range))
            printfToF(file, "%s < %s)", v, lower.c_str());
        else
            printfToF(file, "%s < %s) || (%s < %s", v, lower.c_str(), upper.c_str(), v);
    });
    if (wrote)
        wToF(file, ")");
    return wrote;
}

/* --- control members --- */

namespace {

/* What stands in front of the mask: the father's home, or nothing for the function's own mask. */
Text maskHome(AsnType *father) {
    Text home;
    if (cIsControlMember(father))
        cStructHomeMemberRef(home, "", false, father, "");
    return home;
}

void testControlMember(int file, const char *before, AsnType *comp, const char *behind) {
    AsnType *father = getFatherOfTypeComp(comp);
    Text home = maskHome(father), text;
    wToF(file, getControlMemberTst(text, before, home.c_str(), father, comp, getTypeCompNbr(comp),
                                   behind));
}

} // namespace

void cSetControlMember(int file, AsnType *comp) {
    AsnType *father = getFatherOfTypeComp(comp);
    Text home = maskHome(father), text;
    wToF(file, getControlMemberSet(text, home.c_str(), father, comp, getTypeCompNbr(comp)));
}

void cTestControlMember(int file, AsnType *comp) {
    testControlMember(file, "if ", comp, "");
}

