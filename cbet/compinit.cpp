#include "cbet/compinit.h"

#include "base/files.h"
#include "cbet/comptests.h"
#include "cbet/control.h"
#include "cbet/engine.h"
#include "cbet/entryfuncs.h"
#include "cbet/homes.h"
#include "cbet/listsizes.h"
#include "cbet/memory.h"
#include "cbet/names.h"
#include "cbet/predicates.h"
#include "cbet/skipped.h"
#include "cbet/vars.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"

namespace {

GlobalOptions *optionsOf(AsnType *type) {
    return getGlobalOptions(getModuleOfType(type));
}

} // namespace

bool isAsnHomeComp(AsnType *father, AsnType *comp) {
    if (father != nullptr && (getVF(father) == VF_LIST || cHasCompHomes(father)))
        return true;
    return testTypeOption(comp, OPT_HOME);
}

/* --- first values of a structure --- */

namespace {

bool needsFirstValue(AsnType *type) {
    bool zeroHome = optionsOf(type)->zeroHome != 0;
    switch (getTypeMainType(type)) {
    case TYP_SEQ:
    case TYP_SET:
        return !zeroHome &&
               (cIsHomeComponent(type) || (isOptionalTypeComps(type) && !cIsHometab(type)));
    case TYP_CHOICE:
        if (cIsControlMember(type))
            return glbInfo->setChoiceControl;
        return !cIsHometab(type) && !(zeroHome && cIsHomeComponent(type));
    default:
        return false;
    }
}

/* memset (home, 0, sizeof (Msg)); */
void clearStructure(AsnType *type) {
    int file = glbInfo->outFile;
    Text text;
    wToF(file, "memset (");
    wToF(file, cHomeRef(text, "", true, type, nullptr, ","));
    wToF(file, " 0,");
    wToF(file, cBaseTypeId(text, " sizeof (", type, "));\n"));
}

/* home->compmask = 0; */
void initControlMember(AsnType *type) {
    Text home, text;
    cStructHomeMemberRef(home, "", false, type, "");
    wToF(glbInfo->outFile, getControlMemberIni(text, home.c_str(), type));
}

} // namespace

void initComponents(AsnType *type) {
    if (isListType(type)) {
        cInitList(glbInfo->outFile, type);
    } else if (needsFirstValue(type)) {
        if (cIsHomeComponent(type))
            clearStructure(type);
        else
            initControlMember(type);
    }
}

bool generateDummyCompmask(AsnType *type) {
    return glbInfo->funcKind == decodingKind && getTypeMainType(type) == TYP_SET &&
           nrOfWalkedComps(type) >= 2 && (!isOptionalTypeComps(type) || cHasCompHomes(type));
}

/* --- one component --- */

namespace {

void allocateComp(AsnType *father, AsnType *comp) {
    int file = glbInfo->outFile, gIndex = glbInfo->gIndex;
    if (getVF(father) == VF_LIST) {
        cAppendList(file, father, comp, gIndex);
    } else if (isAsnHomeComp(father, comp)) {
        if (isTypeExtensionmarker(comp))
            return;
        cCreateHome(file, comp, gIndex);
        if (optionsOf(comp)->memory != 0)
            cPushHome(file, comp, gIndex);
    } else if ((testTypeOption(comp, OPT_POINTER) ||
                (isRecursiveType(comp) && cIsDefinedBaseType(comp))) &&
               !testTypeOption(comp, OPT_SKIPPED)) {
        cAllocComp(comp, glbInfo);
    }
}

/* Every component of a SET is marked while decoding, which finds those that come twice. */
bool isMarkedAlways(AsnType *set) {
    return glbInfo->funcKind != askingKind && nrOfWalkedComps(set) > 1;
}

bool needsControlMember(AsnType *father, AsnType *comp) {
    int kind = getTypeMainType(father);
    if (cHasCompHomes(father))
        return kind == TYP_SET && isMarkedAlways(father);
    bool optional = getTypeCompStatus(comp) == TCS_OPTIONAL;
    switch (kind) {
    case TYP_SET:
        return optional || isMarkedAlways(father);
    case TYP_SEQ:
        return optional;
    case TYP_CHOICE:
        return glbInfo->setChoiceControl;
    default:
        return false;
    }
}

} // namespace

void initializeComp(AsnType *father, AsnType *comp) {
    allocateComp(father, comp);
    if (needsControlMember(father, comp))
        cSetControlMember(glbInfo->outFile, comp);
}

void releaseComp(AsnType *father, AsnType *comp) {
    if (glbInfo->funcKind == printingKind || getVF(father) == VF_LIST ||
        !isAsnHomeComp(father, comp) || isTypeExtensionmarker(comp) || optionsOf(comp)->memory == 0)
        return;
    if (glbInfo->funcKind == encodingKind)
        cFreeAsn(glbInfo->outFile, comp);
    else
        cPopHome(glbInfo->outFile, comp, glbInfo->gIndex);
}

void checkListUpperBound(AsnType *father, AsnType *comp) {
    if (!isConstructingKind() || !isListType(father))
        return;
    if (cIsIgnoringSizeLimit(father) && extraElemsVarUsed()) {
        Text action = formatText("extraElems%d = TRUE;\n", cVarCount(VAR_N));
        cCheckListUpperBoundWithActionAndBreak(glbInfo->outFile, comp, action.c_str());
    } else if (glbInfo->funcKind == decodingKind) {
        cCheckListUpperBound(glbInfo->outFile, comp);
    }
}
