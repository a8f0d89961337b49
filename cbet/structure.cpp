#include "cbet/engineparts.h"

#include "base/files.h"
#include "cbet/checks.h"
#include "cbet/comptests.h"
#include "cbet/control.h"
#include "cbet/extensions.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/lists.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/compwalk.h"
#include "model/constraints.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "store/records.h"

/* The body of a structure or list, and of each component in it: what the engine writes around the
   steps of the generator. */

namespace {

bool isDecoding(const TypeFuncRun &run) {
    return run.info.funcKind == decodingKind;
}

bool isOptional(AsnType *comp) {
    return getTypeCompStatus(comp) == TCS_OPTIONAL;
}

bool hasSeveralComps(AsnType *type) {
    return nrOfWalkedComps(type) >= 2;
}

/* --- around a structure or list --- */

/* switch (home->choice){ */
void traverseStructPref(AsnType *type, TypeFuncRun &run) {
    callTypeFunc(run.info.struPrefixFunc, type, run);
    if (getTypeMainType(type) != TYP_CHOICE || !cIsControlMember(type))
        return;
    putF(run.outFile, "switch (", cHomeRef(type, HOME_MEMBER), "choice)");
    cOpenBrace(run.outFile);
}

/* The list's block with the variable that counts or holds its elements. */
void openListBlock(AsnType *type, TypeFuncRun &run) {
    int file = run.outFile;
    cOpenBrace(file);
    if (getVF(type) == VF_LIST) {
        cIncAsnHomeVarCount();
        cAsnHomeVarDef(file);
        return;
    }
    cIncNVarCount();
    cNVarDef(file);
    if (cIsIgnoringSizeLimit(type))
        putF(file, "BOOLE ", cExtraElemsVarRef(), " = FALSE;\n");
}

void closeListBlock(AsnType *type, TypeFuncRun &run) {
    if (getVF(type) == VF_LIST)
        cDecAsnHomeVarCount();
    else
        cDecNVarCount();
    cCloseBrace(run.outFile);
}

/* {
   uint8 compmask;
   compmask = 0; */
void openDummyCompmask(AsnType *type, TypeFuncRun &run) {
    int file = run.outFile;
    cOpenBrace(file);
    putF(file, getControlMemberDef(type));
    putF(file, getControlMemberIni("", type));
}

/* First values come before anything is read, then the variables of the walk. */
void constructStructPref(AsnType *type, TypeFuncRun &run) {
    initComponents(type, run);
    if (isTypeExtensionmarkerComp(type) && !cHasCompHomes(type))
        cInitExtensionmarker(run.outFile, type, run.info.gIndex, true);
    if (isListType(type))
        openListBlock(type, run);
    if (generateDummyCompmask(type, run))
        openDummyCompmask(type, run);
    callTypeFunc(run.info.struPrefixFunc, type, run);
}

/* Constraints of the whole are checked when all its components are there. */
void structPost(AsnType *type, TypeFuncRun &run) {
    int file = run.outFile;
    if (!isConstructingKind(run)) {
        if (getTypeMainType(type) == TYP_CHOICE && cIsControlMember(type))
            cCloseBrace(file);
        return;
    }
    if (isDecoding(run)) {
        cCheckConstraints(file, type);
        if (generateDummyCompmask(type, run))
            cCloseBrace(file);
    }
    if (isListType(type))
        closeListBlock(type, run);
}

/* --- around a component: traversing kinds --- */

/* Of the traversing kinds only printing shows a marker in its place; encoding writes it first. */
bool printsMarker(AsnType *father, const TypeFuncRun &run) {
    return run.info.funcKind == printingKind && testTypeOption(father, OPT_SAVE_EXTENSIONS);
}

/* The one that stands without "else". */
bool isTheFirstChoiceComp(AsnType *father, AsnType *comp, const TypeFuncRun &run) {
    if (!run.info.reverseComps)
        return getTypeCompNbr(comp) == 0 ||
               (isFirstActualTypeComp(comp) && !printsMarker(father, run));
    int last = nrOfWalkedComps(father) - 1;
    if (isTypeExtensionmarkerComp(father) && getTypeExtensionmarkerCompNbr(father) == last)
        --last;
    return getTypeCompNbr(comp) == last;
}

/* "case 1:", or without a control member "else if (hometab [1])". */
void beginAlternative(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    int file = run.outFile;
    if (cIsControlMember(father)) {
        putF(file, "case ", getTypeCompNbr(comp), ":\n");
        ++fArr[file].indent;
    } else {
        if (!isTheFirstChoiceComp(father, comp, run))
            putF(file, "else ");
        if (cIsHometab(father))
            putF(file, "if (hometab [", getTypeCompNbr(comp), "])");
        else
            putF(file, "if (", cHomeRef(comp, HOME_VALUE), ")");
    }
    cOpenBrace(file);
}

/* }
   break; */
void endAlternative(AsnType *father, TypeFuncRun &run) {
    int file = run.outFile;
    cCloseBrace(file);
    if (!cIsControlMember(father))
        return;
    putF(file, "break;\n");
    --fArr[file].indent;
}

void traverseCompPrefix(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
    case TYP_SET:
        if (isOptional(comp))
            cBeginTestOptionalComp(run.outFile, father, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        cBeginForLoop(run.outFile, father, run.info.reverseComps);
        break;
    case TYP_CHOICE:
        beginAlternative(father, comp, run);
        break;
    default:
        break;
    }
}

void traverseCompPostfix(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
    case TYP_SET:
        if (isOptional(comp))
            cEndTestOptionalComp(run.outFile, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        cEndForLoop(run.outFile, father);
        break;
    case TYP_CHOICE:
        endAlternative(father, run);
        break;
    default:
        break;
    }
}

/* --- around a component: constructing kinds --- */

/* while (TRUE){ */
void constructBeforeIsComp(AsnType *father, TypeFuncRun &run) {
    if (!isListType(father))
        return;
    putF(run.outFile, "while (TRUE)");
    cOpenBrace(run.outFile);
}

/* {
   if (home->compmask & BIT(0)){
   reportError (ASNG_F(asncodg) DM_FAIL);
   } */
void beginDecodedSetComp(AsnType *comp, TypeFuncRun &run) {
    int file = run.outFile;
    cOpenBrace(file);
    cBeginTestDuplicateSetComp(file, comp);
    cReportError(file, "DM_FAIL");
    cEndTestDuplicateSetComp(file);
}

/* The brace behind the generator's "if", if it wrote one. */
void constructCompPrefix(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
        if (isOptional(comp))
            cOpenBrace(run.outFile);
        break;
    case TYP_CHOICE:
        if (hasSeveralComps(father))
            cOpenBrace(run.outFile);
        break;
    case TYP_SET:
        if (isDecoding(run) && hasSeveralComps(father))
            beginDecodedSetComp(comp, run);
        else if (isOptional(comp))
            cOpenBrace(run.outFile);
        break;
    default:
        break;
    }
}

/* The element is counted, the loop ends, and what is beyond a limit is read over. */
void constructListElemPostfix(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    int file = run.outFile;
    cIncListSize(file, father);
    if (getVF(father) != VF_LIST && getVFSize(father) != VF_NONE) {
        putF(file, cNVarRef(), "++;\n");
    }
    cCloseBrace(file);
    ignoreTrailingListElems(father, comp, run);
}

void constructCompPostfix(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
        if (isOptional(comp))
            cCloseBrace(run.outFile);
        break;
    case TYP_SET:
        if (isOptional(comp) || (isDecoding(run) && hasSeveralComps(father)))
            cCloseBrace(run.outFile);
        break;
    case TYP_CHOICE:
        if (hasSeveralComps(father))
            cCloseBrace(run.outFile);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        constructListElemPostfix(father, comp, run);
        break;
    default:
        break;
    }
}

/* --- around a component: both groups of kinds --- */

void compPrefFunc(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (isConstructingKind(run)) {
        constructBeforeIsComp(father, run);
        callTypeFunc(run.info.isCompFunc, comp, run);
        constructCompPrefix(father, comp, run);
    } else {
        traverseCompPrefix(father, comp, run);
    }
}

/* A structure or list is checked where its body is; what was written at this use of a definition
   is checked here. */
bool isCheckedAtComp(AsnType *comp) {
    if (!isStructuredType(comp) && !isListType(comp))
        return true;
    return cIsDefinedBaseType(comp) && isLocalTypeConstraints(comp);
}

void compPostFunc(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (!isConstructingKind(run)) {
        traverseCompPostfix(father, comp, run);
        return;
    }
    if (isDecoding(run) && isCheckedAtComp(comp))
        cCheckConstraints(run.outFile, comp);
    constructCompPostfix(father, comp, run);
}

/* --- extension markers --- */

/* if (home->compmask & BIT(2)){ around what prints the marker's content */
void extensionmarkerPrefFunc(AsnType *father, AsnType *marker, TypeFuncRun &run) {
    if (!printsMarker(father, run))
        return;
    if (getTypeMainType(father) == TYP_CHOICE && !cIsControlMember(father) &&
        getTypeCompNbr(marker) > 0)
        putF(run.outFile, "else ");
    cBeginTestExtensionmarker(run.outFile, father);
}

void extensionmarkerPostFunc(AsnType *father, TypeFuncRun &run) {
    if (printsMarker(father, run))
        cEndTestExtensionmarker(run.outFile, father);
}

void funcForExtensionmarkerComponent(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (printsMarker(father, run))
        callTypeFunc(run.info.leafFunc, comp, run);
}

/* --- the content of a component --- */

/* pushPath (ASNG_F(asncodg) "a"); so that an error report says where it was */
void pushCompPath(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (!run.info.trackPath)
        return;
    if (isListType(father))
        cPushElem(run.outFile, father);
    else
        cPushPath(run.outFile, comp);
}

void popCompPath(AsnType *comp, TypeFuncRun &run) {
    if (run.info.trackPath)
        cPopPath(run.outFile, comp);
}

/* A structure in line. One that doesn't lie in its father's structure gets a block with a pointer
   to it, from which its path begins anew. */
void funcForBuiltinComponent(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (!cIsAsnHomeComp(father, comp)) {
        funcForStructuredTypeAndCompsOrElems(comp, run);
        return;
    }
    cBeginBlock(run.outFile, comp);
    const char *savedPath = comp->path;
    int savedLength = comp->pathLength;
    pushPath();
    comp->path = getPath();
    comp->pathLength = 0;
    funcForStructuredTypeAndCompsOrElems(comp, run);
    cEndBlock(run.outFile);
    popPath();
    comp->path = savedPath;
    comp->pathLength = savedLength;
}

/* A call for what has a function of its own, else the text in line. */
void compContent(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (testTypeOption(comp, OPT_SKIPPED))
        skipType(comp, run);
    else if (cIsFrameType(comp))
        callTypeFunc(run.info.frameFunc, comp, run);
    else if (isLeafType(comp))
        callTypeFunc(run.info.leafFunc, comp, run);
    else if (!cIsDefinedBaseType(comp))
        funcForBuiltinComponent(father, comp, run);
    else
        cCallNormalFunc(comp, run);
}

/* Memory and marks first, then the value, then the home is given back. */
void funcForNormalComponentOrElement(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    if (isConstructingKind(run))
        initializeComp(father, comp, run);
    pushCompPath(father, comp, run);
    checkListUpperBound(father, comp, run);
    compContent(father, comp, run);
    releaseComp(father, comp, run);
    popCompPath(comp, run);
}

void funcForComponentOrElement(AsnType *father, AsnType *comp, TypeFuncRun &run) {
    bool marker = isTypeExtensionmarker(comp);
    bool pathFirst = cIsHomeComponent(father); /* its presence test is on the component itself */
    if (pathFirst)
        addCompNameToPath(comp);
    if (marker) {
        extensionmarkerPrefFunc(father, comp, run);
    } else {
        compPrefFunc(father, comp, run);
        callTypeFunc(run.info.compPrefixFunc, comp, run);
    }
    printCompTEDs(comp, run.info.tedBefore, run);
    if (!pathFirst)
        addCompNameToPath(comp);
    if (marker)
        funcForExtensionmarkerComponent(father, comp, run);
    else
        funcForNormalComponentOrElement(father, comp, run);
    printCompTEDs(comp, run.info.tedAfter, run);
    if (marker) {
        extensionmarkerPostFunc(father, run);
    } else {
        callTypeFunc(run.info.compPostfixFunc, comp, run);
        compPostFunc(father, comp, run);
    }
    removeCompNameFromPath(comp);
}

} // namespace

/* --- the whole --- */

void funcForStructuredTypeAndCompsOrElems(AsnType *type, TypeFuncRun &run) {
    NestingGuard guard(&run.depth, type->posModule);
    if (isConstructingKind(run))
        constructStructPref(type, run);
    else
        traverseStructPref(type, run);
    auto each = [&run](AsnType *father, AsnType *comp, int) {
        funcForComponentOrElement(father, comp, run);
    };
    if (run.info.reverseComps && isStructuredType(type))
        forEachTypeCompRevOrd(type, each);
    else
        forEachTypeCompOrElem(type, each);
    callTypeFunc(run.info.struPostfixFunc, type, run);
    structPost(type, run);
}
