#include "cbet/engine.h"

#include "base/files.h"
#include "cbet/checks.h"
#include "cbet/compinit.h"
#include "cbet/comppath.h"
#include "cbet/comptests.h"
#include "cbet/control.h"
#include "cbet/entryfuncs.h"
#include "cbet/extensions.h"
#include "cbet/homes.h"
#include "cbet/listloops.h"
#include "cbet/listsizes.h"
#include "cbet/predicates.h"
#include "cbet/reports.h"
#include "cbet/skipped.h"
#include "cbet/vars.h"
#include "model/constraints.h"
#include "model/iterators.h"
#include "model/typeextension.h"
#include "model/typepath.h"
#include "model/typequeries.h"
#include "store/records.h"

/* The body of a structure or list, and of each component in it: what the engine writes around the
   steps of the generator. */

namespace {

bool isDecoding() {
    return glbInfo->funcKind == decodingKind;
}

bool isOptional(AsnType *comp) {
    return getTypeCompStatus(comp) == TCS_OPTIONAL;
}

bool hasSeveralComps(AsnType *type) {
    return nrOfWalkedComps(type) >= 2;
}

/* --- around a structure or list --- */

void traverseStructPref(AsnType *type) {
    callTypeFunc(glbInfo->struPrefixFunc, type);
    if (getTypeMainType(type) != TYP_CHOICE || !cIsControlMember(type))
        return;
    Text text;
    wToF(glbInfo->outFile, cHomeRef(text, "switch (", false, type, ".", "choice)"));
    cOpenBrace(glbInfo->outFile);
}

/* The list's block with the variable that counts or holds its elements. */
void openListBlock(AsnType *type, bool vars) {
    int file = glbInfo->outFile;
    cOpenBrace(file);
    if (!vars)
        return;
    if (getVF(type) == VF_LIST) {
        cIncAsnHomeVarCount();
        cAsnHomeVarDef(file);
        return;
    }
    cIncNVarCount();
    cNVarDef(file);
    if (cIsIgnoringSizeLimit(type) && extraElemsVarUsed())
        printfToF(file, "BOOLE extraElems%d = FALSE;\n", cVarCount(VAR_N));
}

void closeListBlock(AsnType *type, bool vars) {
    if (vars) {
        if (getVF(type) == VF_LIST)
            cDecAsnHomeVarCount();
        else
            cDecNVarCount();
    }
    cCloseBrace(glbInfo->outFile);
}

void openDummyCompmask(AsnType *type) {
    int file = glbInfo->outFile;
    Text text;
    cOpenBrace(file);
    wToF(file, getControlMemberDef(text, type));
    wToF(file, getControlMemberIni(text, nullptr, type));
}

void constructStructPref(AsnType *type, bool vars) {
    initComponents(type);
    if (isTypeExtensionmarkerComp(type) && !cHasCompHomes(type))
        cInitExtensionmarker(glbInfo->outFile, type, glbInfo->gIndex, true);
    if (isListType(type))
        openListBlock(type, vars);
    if (generateDummyCompmask(type))
        openDummyCompmask(type);
    callTypeFunc(glbInfo->struPrefixFunc, type);
}

void structPost(AsnType *type, bool vars) {
    int file = glbInfo->outFile;
    if (!isConstructingKind()) {
        if (getTypeMainType(type) == TYP_CHOICE && cIsControlMember(type))
            cCloseBrace(file);
        return;
    }
    if (isDecoding()) {
        cCheckConstraints(file, type);
        if (generateDummyCompmask(type))
            cCloseBrace(file);
    }
    if (isListType(type))
        closeListBlock(type, vars);
}

/* --- around a component: traversing kinds --- */

bool printsMarker(AsnType *father) {
    return glbInfo->funcKind == printingKind && testTypeOption(father, OPT_SAVE_EXTENSIONS);
}

bool isTheFirstChoiceComp(AsnType *father, AsnType *comp) {
    if (!glbInfo->reverseComps)
        return getTypeCompNbr(comp) == 0 || (isFirstActualTypeComp(comp) && !printsMarker(father));
    int last = nrOfWalkedComps(father) - 1;
    if (isTypeExtensionmarkerComp(father) && getTypeExtensionmarkerCompNbr(father) == last)
        --last;
    return getTypeCompNbr(comp) == last;
}

/* "case 1:", or without a control member "else if (hometab [1])". */
void beginAlternative(AsnType *father, AsnType *comp) {
    int file = glbInfo->outFile;
    if (cIsControlMember(father)) {
        printfToF(file, "case %d:\n", getTypeCompNbr(comp));
        ++fArr[file].indent;
    } else {
        if (!isTheFirstChoiceComp(father, comp))
            wToF(file, "else ");
        Text text;
        if (cIsHometab(father))
            printfToF(file, "if (hometab [%d])", getTypeCompNbr(comp));
        else
            wToF(file, cHomeRef(text, "if (", false, comp, nullptr, ")"));
    }
    cOpenBrace(file);
}

void endAlternative(AsnType *father) {
    int file = glbInfo->outFile;
    cCloseBrace(file);
    if (!cIsControlMember(father))
        return;
    wToF(file, "break;\n");
    --fArr[file].indent;
}

void traverseCompPrefix(AsnType *father, AsnType *comp) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
    case TYP_SET:
        if (isOptional(comp))
            cBeginTestOptionalComp(glbInfo->outFile, father, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        cBeginForLoop(glbInfo->outFile, father, comp, glbInfo->reverseComps);
        break;
    case TYP_CHOICE:
        beginAlternative(father, comp);
        break;
    default:
        break;
    }
}

void traverseCompPostfix(AsnType *father, AsnType *comp) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
    case TYP_SET:
        if (isOptional(comp))
            cEndTestOptionalComp(glbInfo->outFile, father, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        cEndForLoop(glbInfo->outFile, father);
        break;
    case TYP_CHOICE:
        endAlternative(father);
        break;
    default:
        break;
    }
}

/* --- around a component: constructing kinds --- */

void constructBeforeIsComp(AsnType *father, AsnType *comp) {
    if (!isListType(father))
        return;
    if (glbInfo->listLoopFunc != nullptr)
        glbInfo->listLoopFunc(glbInfo->outFile, comp);
    else
        wToF(glbInfo->outFile, "while (TRUE)");
    cOpenBrace(glbInfo->outFile);
}

/* {
   if (home->compmask & BIT(0)){
   reportError (ASNG_F(asncodg) DM_FAIL);
   } */
void beginDecodedSetComp(AsnType *comp) {
    int file = glbInfo->outFile;
    cOpenBrace(file);
    cBeginTestDuplicateSetComp(file, comp);
    cReportError(file, glbInfo->duplicateError != nullptr ? glbInfo->duplicateError : "DM_FAIL");
    cEndTestDuplicateSetComp(file);
}

void constructCompPrefix(AsnType *father, AsnType *comp) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
        if (isOptional(comp))
            cOpenBrace(glbInfo->outFile);
        break;
    case TYP_CHOICE:
        if (hasSeveralComps(father))
            cOpenBrace(glbInfo->outFile);
        break;
    case TYP_SET:
        if (isDecoding() && hasSeveralComps(father))
            beginDecodedSetComp(comp);
        else if (isOptional(comp))
            cOpenBrace(glbInfo->outFile);
        break;
    default:
        break;
    }
}

/* The element is counted, the loop ends, and what is beyond a limit is read over. */
void constructListElemPostfix(AsnType *father, AsnType *comp) {
    int file = glbInfo->outFile;
    cIncListSize(file, father, comp);
    if (getVF(father) != VF_LIST && getVFSize(father) != VF_NONE) {
        Text text;
        wToF(file, cNVarRef(text, nullptr, "++;\n"));
    }
    cCloseBrace(file);
    ignoreTrailingListElems(father, comp);
}

void constructCompPostfix(AsnType *father, AsnType *comp) {
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
        if (isOptional(comp))
            cCloseBrace(glbInfo->outFile);
        break;
    case TYP_SET:
        if (isOptional(comp) || (isDecoding() && hasSeveralComps(father)))
            cCloseBrace(glbInfo->outFile);
        break;
    case TYP_CHOICE:
        if (hasSeveralComps(father))
            cCloseBrace(glbInfo->outFile);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        constructListElemPostfix(father, comp);
        break;
    default:
        break;
    }
}

/* --- around a component: both groups of kinds --- */

void compPrefFunc(AsnType *father, AsnType *comp) {
    if (isConstructingKind()) {
        constructBeforeIsComp(father, comp);
        callTypeFunc(glbInfo->isCompFunc, comp);
        constructCompPrefix(father, comp);
    } else {
        traverseCompPrefix(father, comp);
    }
}

/* A structure or list is checked where its body is; what was written at this use of a definition
   is checked here. */
bool isCheckedAtComp(AsnType *comp) {
    if (!isStructuredType(comp) && !isListType(comp))
        return true;
    return cIsDefinedBaseType(comp) && isLocalTypeConstraints(comp);
}

void compPostFunc(AsnType *father, AsnType *comp) {
    if (!isConstructingKind()) {
        traverseCompPostfix(father, comp);
        return;
    }
    if (isDecoding() && isCheckedAtComp(comp))
        cCheckConstraints(glbInfo->outFile, comp);
    constructCompPostfix(father, comp);
}

/* --- extension markers --- */

void extensionmarkerPrefFunc(AsnType *father, AsnType *marker) {
    if (!printsMarker(father))
        return;
    if (getTypeMainType(father) == TYP_CHOICE && !cIsControlMember(father) &&
        getTypeCompNbr(marker) > 0)
        wToF(glbInfo->outFile, "else ");
    cBeginTestExtensionmarker(glbInfo->outFile, father);
}

void extensionmarkerPostFunc(AsnType *father) {
    if (printsMarker(father))
        cEndTestExtensionmarker(glbInfo->outFile, father);
}

void funcForExtensionmarkerComponent(AsnType *father, AsnType *comp) {
    if (isConstructingKind() ? glbInfo->markerInConstruct : glbInfo->markerInTraverse)
        callTypeFunc(glbInfo->leafFunc, comp);
    if (!glbInfo->markerInConstruct && printsMarker(father))
        callTypeFunc(glbInfo->leafFunc, comp);
}

/* --- the content of a component --- */

void pushCompPath(AsnType *father, AsnType *comp) {
    if (!glbInfo->trackPath)
        return;
    if (isListType(father)) {
        if (glbInfo->pushElemFunc != nullptr)
            callTypeFunc(glbInfo->pushElemFunc, father);
        else
            cPushElem(glbInfo->outFile, father);
    } else if (glbInfo->pushCompFunc != nullptr) {
        callTypeFunc(glbInfo->pushCompFunc, comp);
    } else {
        cPushPath(glbInfo->outFile, comp);
    }
}

void popCompPath(AsnType *comp) {
    if (!glbInfo->trackPath)
        return;
    if (glbInfo->popCompFunc != nullptr)
        callTypeFunc(glbInfo->popCompFunc, comp);
    else
        cPopPath(glbInfo->outFile, comp);
}

void inlineStructure(AsnType *comp) {
    callTypeFunc(glbInfo->beforeBuiltinFunc, comp);
    funcForStructuredTypeAndCompsOrElems(comp);
    callTypeFunc(glbInfo->afterBuiltinFunc, comp);
}

/* A structure in line. One that doesn't lie in its father's structure gets a block with a pointer
   to it, from which its path begins anew. */
void funcForBuiltinComponent(AsnType *father, AsnType *comp) {
    if (!isAsnHomeComp(father, comp)) {
        inlineStructure(comp);
        return;
    }
    cBeginBlock(glbInfo->outFile, comp);
    const char *savedPath = comp->path;
    int savedLength = comp->pathLength;
    pushPath();
    comp->path = getPath();
    comp->pathLength = 0;
    inlineStructure(comp);
    cEndBlock(glbInfo->outFile);
    popPath();
    comp->path = savedPath;
    comp->pathLength = savedLength;
}

void compContent(AsnType *father, AsnType *comp) {
    if (testTypeOption(comp, OPT_SKIPPED))
        skipType(comp);
    else if (cIsFrameType(comp))
        callTypeFunc(glbInfo->frameFunc, comp);
    else if (isLeafType(comp))
        callTypeFunc(glbInfo->leafFunc, comp);
    else if (!cIsDefinedBaseType(comp))
        funcForBuiltinComponent(father, comp);
    else
        callTypeFunc(glbInfo->definedFunc, comp);
}

void funcForNormalComponentOrElement(AsnType *father, AsnType *comp) {
    if (isConstructingKind())
        initializeComp(father, comp);
    pushCompPath(father, comp);
    checkListUpperBound(father, comp);
    compContent(father, comp);
    releaseComp(father, comp);
    popCompPath(comp);
}

void funcForComponentOrElement(AsnType *father, AsnType *comp, int) {
    bool marker = isTypeExtensionmarker(comp);
    bool pathFirst = cIsHomeComponent(father); /* its presence test is on the component itself */
    if (pathFirst)
        addCompNameToPath(comp);
    if (marker) {
        extensionmarkerPrefFunc(father, comp);
    } else {
        compPrefFunc(father, comp);
        callTypeFunc(glbInfo->compPrefixFunc, comp);
    }
    printCompTEDs(comp, glbInfo->tedBefore);
    if (!pathFirst)
        addCompNameToPath(comp);
    if (marker)
        funcForExtensionmarkerComponent(father, comp);
    else
        funcForNormalComponentOrElement(father, comp);
    printCompTEDs(comp, glbInfo->tedAfter);
    if (marker) {
        extensionmarkerPostFunc(father);
    } else {
        callTypeFunc(glbInfo->compPostfixFunc, comp);
        compPostFunc(father, comp);
    }
    removeCompNameFromPath(comp);
}

} // namespace

void funcForStructuredTypeAndCompsOrElems(AsnType *type) {
    static int depth = 0;
    NestingGuard guard(&depth, type->posModule);
    bool vars = glbInfo->compsWantedFunc == nullptr || glbInfo->compsWantedFunc(type, glbInfo);
    if (isConstructingKind())
        constructStructPref(type, vars);
    else
        traverseStructPref(type);
    if (vars) {
        if (glbInfo->reverseComps && isStructuredType(type))
            forEachTypeCompRevOrd(type, funcForComponentOrElement);
        else
            forEachTypeCompOrElem(type, funcForComponentOrElement);
    }
    callTypeFunc(glbInfo->struPostfixFunc, type);
    structPost(type, vars);
}
