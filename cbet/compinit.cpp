#include "cbet/engineparts.h"

#include "base/files.h"
#include "cbet/comptests.h"
#include "cbet/control.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/lists.h"
#include "cbet/memory.h"
#include "cbet/names.h"
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

/* --- first values of a structure --- */

namespace {

/* "ZEROHOME=" says that the caller clears values, so that only a CHOICE, whose first number isn't 0,
   is set here. */
bool needsFirstValue(AsnType *type) {
    bool zeroHome = optionsOf(type)->zeroHome != 0;
    switch (getTypeMainType(type)) {
    case TYP_SEQ:
    case TYP_SET:
        return !zeroHome &&
               (cIsHomeComponent(type) || (isOptionalTypeComps(type) && !cIsHometab(type)));
    case TYP_CHOICE:
        if (cIsControlMember(type))
            return true;
        return !cIsHometab(type) && !(zeroHome && cIsHomeComponent(type));
    default:
        return false;
    }
}

/* memset (home, 0, sizeof (Msg)); */
void clearStructure(AsnType *type, TypeFuncRun &run) {
    int file = run.outFile;
    putF(file, "memset (");
    putF(file, cHomeRef(type, HOME_ADDRESS), ",");
    putF(file, " 0,");
    putF(file, " sizeof (", cBaseTypeId(type), "));\n");
}

/* home->compmask = 0; */
void initControlMember(AsnType *type, TypeFuncRun &run) {
    putF(run.outFile, getControlMemberIni(cStructHome(type, HOME_MEMBER), type));
}

} // namespace

/* home->compmask = 0; or memset (home, 0, sizeof (Msg)); or listInit (home); */
void initComponents(AsnType *type, TypeFuncRun &run) {
    if (isListType(type)) {
        cInitList(run.outFile, type);
    } else if (needsFirstValue(type)) {
        if (cIsHomeComponent(type))
            clearStructure(type, run);
        else
            initControlMember(type, run);
    }
}

/* uint8 compmask; in a block of its own: decoding marks each component that came */
bool generateDummyCompmask(AsnType *type, const TypeFuncRun &run) {
    return run.info.funcKind == decodingKind && getTypeMainType(type) == TYP_SET &&
           nrOfWalkedComps(type) >= 2 && (!isOptionalTypeComps(type) || cHasCompHomes(type));
}

/* --- one component --- */

namespace {

/* appendList (...), createHome (...) or allocAsn (...), whichever holds the component */
void allocateComp(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    const int file = run.outFile;
    const GIndex gIndex = run.info.gIndex;
    if (getVF(father) == VF_LIST) {
        cAppendList(file, father, comp, gIndex);
    } else if (cIsAsnHomeComp(father, comp)) {
        if (isTypeExtensionmarker(comp))
            return;
        cCreateHome(file, comp, gIndex);
        if (optionsOf(comp)->memory != 0)
            cPushHome(file, comp, gIndex);
    } else if ((testTypeOption(comp, OPT_POINTER) ||
                (isRecursiveType(comp) && cIsDefinedBaseType(comp))) &&
               !testTypeOption(comp, OPT_SKIPPED)) {
        cAllocComp(file, comp, gIndex);
    }
}

/* Every component of a SET is marked while decoding, which finds those that come twice. */
bool isMarkedAlways(AsnType *set, const TypeFuncRun &run) {
    return run.info.funcKind != askingKind && nrOfWalkedComps(set) > 1;
}

/* What may be missing is marked where it comes, a CHOICE with the alternative that came. */
bool needsControlMember(AsnType *father, AsnType *comp, const TypeFuncRun &run) {
    int kind = getTypeMainType(father);
    if (cHasCompHomes(father))
        return kind == TYP_SET && isMarkedAlways(father, run);
    if (kind == TYP_CHOICE || getTypeCompStatus(comp) == TCS_OPTIONAL)
        return true;
    return kind == TYP_SET && isMarkedAlways(father, run);
}

} // namespace

void initializeComp(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    allocateComp(father, comp, run);
    if (needsControlMember(father, comp, run))
        cSetControlMember(run.outFile, comp);
}

/* Encoding frees what it has written; decoding and asking step back from the home. */
void releaseComp(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (run.info.funcKind == printingKind || getVF(father) == VF_LIST ||
        !cIsAsnHomeComp(father, comp) || isTypeExtensionmarker(comp) || optionsOf(comp)->memory == 0)
        return;
    if (run.info.funcKind == encodingKind)
        cFreeAsn(run.outFile, comp);
    else
        cPopHome(run.outFile, comp, run.info.gIndex);
}

/* if (staArrLen (home) >= 9) with a report, or with the mark that elements follow to be passed over */
void checkListUpperBound(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (!isConstructingKind(run) || !isListType(father))
        return;
    if (cIsIgnoringSizeLimit(father)) {
        Text action = cExtraElemsVarRef() + " = TRUE;\n";
        cCheckListUpperBoundWithActionAndBreak(run.outFile, comp, action.c_str());
    } else if (run.info.funcKind == decodingKind) {
        cCheckListUpperBound(run.outFile, comp);
    }
}
