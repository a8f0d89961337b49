#include "cbet/extensions.h"

#include "base/fatal.h"
#include "base/files.h"
#include "cbet/comppath.h"
#include "cbet/comptests.h"
#include "cbet/control.h"
#include "cbet/homes.h"
#include "cbet/listsizes.h"
#include "cbet/memory.h"
#include "cbet/names.h"
#include "cbet/forms.h"
#include "cbet/vars.h"
#include "model/iterators.h"
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

/* A structure whose components have homes: "home->extensionmarker". */
Text markerPathByComp(AsnType *type, bool addressOf, bool full) {
    Text text;
    forMarker(type, [&](AsnType *father, AsnType *marker, int) {
        if (!cIsHomeComponent(father))
            fatalError(FATAL_INTERNAL, nullptr);
        cAddNameToPath(marker, "extensionmarker");
        Text home;
        cHomeRef(home, nullptr, false, marker, nullptr, nullptr);
        if (full)
            text = (addressOf ? "" : "*") + home + CONTENT_IN_HOME;
        else
            text = (addressOf ? "&" : "") + home;
        removeElemFromPath();
    });
    return text;
}

/* Where the marker is kept; `full` asks for the content and not for the place of its home. */
Text &extensionmarkerPath(Text &dst, const char *prefix, AsnType *type, bool addressOf, bool full,
                          const char *postfix) {
    if (cIsHometab(type)) {
        const char *before = full ? (addressOf ? "" : "*") : (addressOf ? "&" : "");
        dst = formatText("%s%shometab [%d]%s%s", orEmpty(prefix), before,
                         getTypeExtensionmarkerCompNbr(type), full ? CONTENT_IN_HOME : "",
                         orEmpty(postfix));
        return dst;
    }
    if (cIsHomeComponent(type)) {
        dst = orEmpty(prefix) + markerPathByComp(type, addressOf, full) + orEmpty(postfix);
        return dst;
    }
    Text member = isChoice(type) ? "i1.extensionmarker" : "extensionmarker";
    member += orEmpty(postfix);
    if (testTypeOption(type, OPT_HOME))
        return cStructHomeMemberRef(dst, prefix, addressOf, type, member.c_str());
    return cHomeRef(dst, prefix, addressOf, type, ".", member.c_str());
}

/* --- tests --- */

/* "compmask & BIT(3))", or for a mask of words "compmask [1] & BITL(3))". */
Text maskTest(AsnType *type) {
    const int number = getTypeExtensionmarkerCompNbr(type);
    return cMaskWord(type, number) + " & " + cMaskBit(type, number) + ")";
}

void testExtensionmarker(int file, AsnType *type, bool present) {
    if (!isTypeExtensionmarkerComp(type))
        return;
    Text text;
    if (cHasCompHomes(type)) {
        wToF(file, extensionmarkerPath(text, present ? "if (" : "if (!", type, false, false, ")"));
    } else if (isChoice(type)) {
        printfToF(file, "case %d:\n", getTypeExtensionmarkerCompNbr(type));
        ++fArr[file].indent;
    } else {
        Text test = maskTest(type) + (present ? "" : ")");
        wToF(file,
             cStructHomeMemberRef(text, present ? "if (" : "if (!(", false, type, test.c_str()));
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
        wToF(file, "break;\n");
        --fArr[file].indent;
    }
}

Text &cRefExtensionmarker(Text &dst, const char *prefix, AsnType *type, const char *postfix) {
    dst.clear();
    if (!isTypeExtensionmarkerComp(type))
        return dst;
    return extensionmarkerPath(dst, prefix, type, true, true, postfix);
}

/* --- first values and release --- */

namespace {

/* createHome (NULL, &hometab [2], VF_STRU, sizeof (EXTENSIONMARKER)); */
void createHomeForExtensionmarker(int file, AsnType *type, GIndex gIndex) {
    Text text;
    wToF(file, "createHome (");
    wToF(file, cGetHome(text, nullptr, type, gIndex, ","));
    wToF(file, extensionmarkerPath(text, " ", type, true, false, ","));
    if (testTypeOption(type, OPT_SAVE_EXTENSIONS)) {
        wToF(file, " VF_STRU,");
        printfToF(file, " sizeof (%s));\n", cSpecialType(SPECIAL_EXTENSION_MARKER));
    } else {
        wToF(file, " VF_NULL,");
        wToF(file, " 0);\n");
    }
}

void initContent(int file, AsnType *type) {
    Text text;
    wToF(file, "initExtensionmarker (");
    wToF(file, extensionmarkerPath(text, "", type, true, true, ");\n"));
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

void cFreeAsnExtensionmarker(int file, AsnType *type) {
    if (!isTypeExtensionmarkerComp(type) || !cHasCompHomes(type))
        return;
    wToF(file, "freeAsn (");
    Text home;
    if (cIsHometab(type))
        printfToF(file, "&hometab [%d],", getTypeExtensionmarkerCompNbr(type));
    else if (cHomeRef(home, "", true, type, nullptr, "").starts_with('&'))
        wToF(file, home + ".extensionmarker,");
    else
        wToF(file, "&" + home + "->extensionmarker,");
    wToF(file, " FREE_STG);\n");
}

/* --- the control member --- */

/* home->compmask |= BIT(3); */
void cSetExtensionmarkerControlMember(int file, AsnType *type) {
    if (!isTypeExtensionmarkerComp(type) || cIsHomeComponent(type))
        return;
    forMarker(type, [&](AsnType *father, AsnType *marker, int nbr) {
        Text home, text;
        cStructHomeMemberRef(home, "", false, father, "");
        wToF(file, getControlMemberSet(text, home.c_str(), father, marker, nbr));
    });
}
