#include "cbet/extensions.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/control.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/memory.h"
#include "cbet/names.h"
#include "cbet/vars.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"

namespace {

constexpr const char *CONTENT_IN_HOME = "->val.extensionmarker";

bool isChoice(AsnType *type) {
    return getTypeMainType(type) == TYP_CHOICE;
}

/* Calls func for the marker among the components. */
void forMarker(AsnType *type, Call<void(AsnType *father, AsnType *marker, int nbr)> func) {
    forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int nbr) {
        if (isTypeExtensionmarker(comp))
            func(father, comp, nbr);
    });
}

/* --- the place of the member --- */

/* What is asked for of the marker: its member, the place of that, or its content, which lies behind a
   home where it has one. */
enum class Marker { Member, Address, Content };

/* A structure whose components have homes: "home->extensionmarker". */
Text markerPathByComp(AsnType *type, Marker wanted) {
    Text text;
    forMarker(type, [&](AsnType *father, AsnType *marker, int) {
        if (!cIsHomeComponent(father))
            fatalError(FATAL_INTERNAL, nullptr);
        cAddNameToPath(marker, "extensionmarker");
        const Text home = cHomeRef(marker, HOME_VALUE);
        if (wanted == Marker::Content)
            text = home + CONTENT_IN_HOME;
        else
            text = (wanted == Marker::Address ? "&" : "") + home;
        removeElemFromPath();
    });
    return text;
}

Text extensionmarkerPath(AsnType *type, Marker wanted) {
    if (cIsHometab(type))
        return concat(wanted == Marker::Address ? "&" : "", "hometab [",
                      getTypeExtensionmarkerCompNbr(type), "]",
                      wanted == Marker::Content ? CONTENT_IN_HOME : "");
    if (cIsHomeComponent(type))
        return markerPathByComp(type, wanted);
    const HomeForm form = wanted == Marker::Member ? HOME_MEMBER : HOME_MEMBER_ADDRESS;
    const char *member = isChoice(type) ? "i1.extensionmarker" : "extensionmarker";
    return (testTypeOption(type, OPT_HOME) ? cStructHome(type, form) : cHomeRef(type, form)) +
           member;
}

/* --- tests --- */

/* "compmask & BIT(3))", or for a mask of words "compmask [1] & BITL(3))". */
Text maskTest(AsnType *type) {
    const int number = getTypeExtensionmarkerCompNbr(type);
    return cMaskWord(type, number) + " & " + cMaskBit(type, number) + ")";
}

/* if (home->extensionmarker){ or if (home->compmask & BIT(2)){ or case 2: */
void testExtensionmarker(int file, AsnType *type, bool present) {
    if (!isTypeExtensionmarkerComp(type))
        return;
    if (cHasCompHomes(type)) {
        putF(file, present ? "if (" : "if (!", extensionmarkerPath(type, Marker::Member), ")");
    } else if (isChoice(type)) {
        putF(file, "case ", getTypeExtensionmarkerCompNbr(type), ":\n");
        ++fArr[file].indent;
    } else {
        Text test = maskTest(type) + (present ? "" : ")");
        putF(file, present ? "if (" : "if (!(", cStructHome(type, HOME_MEMBER), test);
    }
    cOpenBrace(file);
}

} // namespace

void cBeginTestExtensionmarker(int file, AsnType *type) {
    testExtensionmarker(file, type, true);
}

void cBeginTestNonexistentExtensionmarker(int file, AsnType *type) {
    testExtensionmarker(file, type, false);
}

void cEndTestExtensionmarker(int file, AsnType *type) {
    if (!isTypeExtensionmarkerComp(type))
        return;
    cCloseBrace(file);
    if (isChoice(type) && !cHasCompHomes(type)) {
        putF(file, "break;\n");
        --fArr[file].indent;
    }
}

/* &home->extensionmarker */
Text cRefExtensionmarker(AsnType *type) {
    return isTypeExtensionmarkerComp(type) ? extensionmarkerPath(type, Marker::Content) : "";
}

/* --- first values and release --- */

namespace {

/* createHome (NULL, &hometab [2], VF_STRU, sizeof (EXTENSIONMARKER)); */
void createHomeForExtensionmarker(int file, AsnType *type, GIndex gIndex) {
    putF(file, "createHome (");
    putF(file, cGetHome(type, gIndex), ",");
    putF(file, " ", extensionmarkerPath(type, Marker::Address), ",");
    if (testTypeOption(type, OPT_SAVE_EXTENSIONS)) {
        putF(file, " VF_STRU,");
        putF(file, " sizeof (", cSpecialType(SPECIAL_EXTENSION_MARKER), "));\n");
    } else {
        putF(file, " VF_NULL,");
        putF(file, " 0);\n");
    }
}

/* initExtensionmarker (&home->extensionmarker); */
void initContent(int file, AsnType *type) {
    putF(file, "initExtensionmarker (");
    putF(file, extensionmarkerPath(type, Marker::Content), ");\n");
}

} // namespace

void cInitExtensionmarker(int file, AsnType *type, GIndex gIndex, bool structPrefix) {
    if (!isTypeExtensionmarkerComp(type))
        return;
    bool kept = testTypeOption(type, OPT_SAVE_EXTENSIONS);
    if (structPrefix) {
        /* A CHOICE begins its member when the marker is chosen, a home when something came. */
        if (kept && !cHasCompHomes(type) && !isChoice(type))
            initContent(file, type);
        return;
    }
    if (cHasCompHomes(type))
        createHomeForExtensionmarker(file, type, gIndex);
    if (kept && (cHasCompHomes(type) || isChoice(type)))
        initContent(file, type);
}

/* freeAsn (&hometab [2], FREE_STG); */
void cFreeAsnExtensionmarker(int file, AsnType *type) {
    if (!isTypeExtensionmarkerComp(type) || !cHasCompHomes(type))
        return;
    putF(file, "freeAsn (");
    const Text home = cHomeRef(type, HOME_ADDRESS);
    if (cIsHometab(type))
        putF(file, "&hometab [", getTypeExtensionmarkerCompNbr(type), "],");
    else if (home.starts_with('&'))
        putF(file, home, ".extensionmarker,");
    else
        putF(file, "&", home, "->extensionmarker,");
    putF(file, " FREE_STG);\n");
}

/* --- the control member --- */

/* home->compmask |= BIT(3); */
void cSetExtensionmarkerControlMember(int file, AsnType *type) {
    if (!isTypeExtensionmarkerComp(type) || cIsHomeComponent(type))
        return;
    forMarker(type, [&](AsnType *father, AsnType *marker, int nbr) {
        putF(file, getControlMemberSet(cStructHome(father, HOME_MEMBER), father, marker, nbr));
    });
}
