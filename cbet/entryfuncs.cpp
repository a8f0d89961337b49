#include "cbet/entryfuncs.h"

#include <utility>

#include "base/files.h"
#include "cbet/checks.h"
#include "cbet/engine.h"
#include "cbet/foreignfuncs.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/memory.h"
#include "cbet/names.h"
#include "cbet/predicates.h"
#include "cbet/reports.h"
#include "cbet/skipped.h"
#include "cbet/vars.h"
#include "model/constraints.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

bool isSeparateNormalFunction(AsnType *type) {
    return !isMorlaApplication(getModuleOfType(type)) || isMorlaLeafType(type) ||
           testTypeOption(type, OPT_COMPS_AS_POINTERS);
}

/* --- entry information --- */

namespace {

AsnType *glbEntryType = nullptr;

/* Entry mask and category of a handle, and the same two of its base record. */
struct EntryInformation {
    std::uint8_t entryFlags = 0;
    std::uint8_t entryCategories = 0;
    std::uint8_t baseEntryFlags = 0;
    std::uint8_t baseEntryCategories = 0;
};

/* What a synonym hands to its base, while the body of the base is written as that of the synonym's
   entry function; then what the base had before. */
EntryInformation glbEntryInformation;
int glbNrEntries = 0;
bool glbEntryInformationSaved = false;

EntryInformation exchangeEntryInformation(AsnType *type, const EntryInformation &with) {
    EntryInformation old;
    old.entryFlags = std::exchange(type->entryFlags, with.entryFlags);
    old.entryCategories = std::exchange(type->entryCategories, with.entryCategories);
    old.baseEntryFlags = std::exchange(type->base.entryFlags, with.baseEntryFlags);
    old.baseEntryCategories = std::exchange(type->base.entryCategories, with.baseEntryCategories);
    return old;
}

void saveEntryInformation(AsnType *type) {
    glbEntryInformation = {type->entryFlags, type->entryCategories, type->base.entryFlags,
                           type->base.entryCategories};
    glbEntryInformationSaved = true;
}

/* The base may lie in a module without entries; it counts one for that time. */
void switchEntryInformation(AsnType *base) {
    glbEntryInformation = exchangeEntryInformation(base, glbEntryInformation);
    GlobalOptions *options = getGlobalOptions(getModuleOfType(base));
    glbNrEntries = options->nrOfEntryTypes;
    if (glbNrEntries == 0)
        options->nrOfEntryTypes = 1;
}

void restoreEntryInformation(AsnType *base) {
    exchangeEntryInformation(base, glbEntryInformation);
    getGlobalOptions(getModuleOfType(base))->nrOfEntryTypes = glbNrEntries;
    glbEntryInformationSaved = false;
}

} // namespace

bool cIsGeneratingEntryFuncForThisType(AsnType *type) {
    return glbGeneratingEntryFunction && glbEntryType == type;
}

/* --- parts of an entry function --- */

void genStructEntryFunc(AsnType *type) {
    bool exchanged = glbEntryInformationSaved;
    if (exchanged)
        switchEntryInformation(type);
    funcForStructuredTypeAndCompsOrElems(type);
    if (exchanged)
        restoreEntryInformation(type);
}

namespace {

/* The last argument of the call, the value itself: "home);\n". */
void homeArgument(int file, AsnType *type, const char *end) {
    Text text;
    if (testTypeOption(type, OPT_HOME)) {
        cAsnHomeCompRefToF(file, nullptr, true, type, nullptr, end);
    } else if (isMorlaApplication(getModuleOfType(type))) {
        wToF(file, "(");
        wToF(file, cDefBaseTypeName(text, nullptr, type, " *)hometab"));
        if (end != nullptr)
            wToF(file, end);
    } else {
        wToF(file, cHomeRef(text, nullptr, true, type, nullptr, end));
    }
}

} // namespace

/* dMsg (ASNG_F(asncodg) home); */
void cCallSeprNormFuncFromEntryFunc(AsnType *type) {
    static const CFuncArgs noArgs;
    int file = glbInfo->outFile;
    cDeclareForeignFunction(type);
    const CFuncArgs &args = glbInfo->funcArgs != nullptr ? *glbInfo->funcArgs : noArgs;
    const char *end = args.callPostFunc != nullptr ? nullptr : ");\n";
    Text text;
    wToF(file, getDefBaseTypeId(text, glbInfo->funcPrefix, type, " ("));
    if (args.callHomeFunc == nullptr && glbInfo->gIndex != GIDX_NONE)
        printfToF(file, "ASNG_F(%s) ", cGetGName(glbInfo->gIndex));
    if (args.callPreFunc != nullptr)
        args.callPreFunc(file, type);
    if (args.callHomeFunc != nullptr) {
        args.callHomeFunc(file, type);
        if (end != nullptr)
            wToF(file, end);
    } else {
        homeArgument(file, type, end);
    }
    if (end == nullptr) {
        args.callPostFunc(file, type);
        wToF(file, ");\n");
    }
}

bool mustCheckConstraintsInEntryFunction(AsnType *type) {
    if (!isConstraints(type) || testTypeOption(type, OPT_SKIPPED) || cIsFrameType(type))
        return false;
    if (isMorlaApplication(getModuleOfType(type)) && !isSeparateNormalFunction(type))
        return true;
    int format = getVF(type);
    if ((format >= VF_BOOL && format <= VF_REAL128) || format == VF_OBJI || format == VF_COMT)
        return true;
    if (cIsStaticString(type) || cIsDynamicString(type))
        return true;
    return isSynonymType(type) && isLocalTypeConstraints(type);
}

/* --- entry functions --- */

namespace {

/* The body of what the synonym stands for, in the synonym's name. */
void genBodyBehindSynonym(AsnType *type) {
    saveEntryInformation(type);
    if (isBaseTypeInCurrentModule(type))
        forSynonymType(type, genStructEntryFunc);
    else
        forTypeDefinedInAnotherModule(type, genStructEntryFunc);
}

/* The variables of an application hold the components of a structure, and none holds it whole. */
void genFrameContent(AsnType *type) {
    if (isMorlaApplication(getModuleOfType(type)) && !testTypeOption(type, OPT_HOME))
        cRefuseType(type, "An entry of an application with variables can't be a frame.");
    else
        callTypeFunc(glbInfo->frameFunc, type);
}

void genEntryContent(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED))
        skipType(type);
    else if (cIsFrameType(type))
        genFrameContent(type);
    else if (isLeafType(type))
        callTypeFunc(glbInfo->leafFunc, type);
    else if (isSeparateNormalFunction(type))
        cCallSeprNormFuncFromEntryFunc(type);
    else if (isSynonymType(type))
        genBodyBehindSynonym(type);
    else
        genStructEntryFunc(type);
}

/* The value of a MORLA leaf lives in a home: that of hometab [0]. */
void beginLeafHome(AsnType *type) {
    type->base.optionBits |= optionMask(OPT_HOME);
    if (!isConstructingKind())
        return;
    cCreateHome(glbInfo->outFile, type, glbInfo->gIndex);
    cPushHome(glbInfo->outFile, type, glbInfo->gIndex);
}

void endLeafHome(AsnType *type) {
    if (glbInfo->funcKind == encodingKind)
        cFreeAsn(glbInfo->outFile, type);
    else if (isConstructingKind())
        cPopHome(glbInfo->outFile, type, glbInfo->gIndex);
}

void pushEntryPath(AsnType *type) {
    if (!glbInfo->trackPath)
        return;
    if (glbInfo->pushEntryFunc != nullptr)
        glbInfo->pushEntryFunc(type, glbInfo);
    else
        cPushEntryPath(glbInfo->outFile, type);
}

void popEntryPath(AsnType *type) {
    if (!glbInfo->trackPath)
        return;
    if (glbInfo->popEntryFunc != nullptr)
        glbInfo->popEntryFunc(type, glbInfo);
    else
        cPopEntryPath(glbInfo->outFile, type);
}

void writeEntryHead(AsnType *type) {
    int file = glbInfo->outFile;
    endlToF(glbInfo->extFile);
    endlToF(file);
    cEntryFunctionProto(glbInfo->extFile, glbInfo->entryFuncPrefix, glbInfo->gIndex,
                        glbInfo->entryFuncArgs, type);
    cEntryFunctionDef(file, glbInfo->entryFuncPrefix, glbInfo->gIndex, glbInfo->entryFuncArgs,
                      type);
    cOpenBrace(file);
}

void writeEntryBody(AsnType *type) {
    bool leafHome = isMorlaApplication(getModuleOfType(type)) && isMorlaLeafType(type);
    bool teds = !isSeparateNormalFunction(type) || cIsPredefinedType(type) || cIsStaticString(type);
    if (leafHome)
        beginLeafHome(type);
    if (teds)
        printLocalTEDs(type, glbInfo->tedBefore);
    genEntryContent(type);
    if (leafHome)
        endLeafHome(type);
    if (teds)
        printLocalTEDs(type, glbInfo->tedAfter);
}

} // namespace

void genEntryFunc(AsnType *type) {
    taviUseTypeNode(type);
    callTypeFunc(glbInfo->beforeEntryFunc, type);
    glbGeneratingEntryFunction = true;
    glbEntryType = type;
    writeEntryHead(type);
    pushEntryPath(type);
    callTypeFunc(glbInfo->entryPrefixFunc, type);
    writeEntryBody(type);
    callTypeFunc(glbInfo->entryPostfixFunc, type);
    if (glbInfo->funcKind == decodingKind && mustCheckConstraintsInEntryFunction(type))
        cCheckConstraints(glbInfo->outFile, type);
    popEntryPath(type);
    cCloseBrace(glbInfo->outFile);
    glbGeneratingEntryFunction = false;
    glbEntryType = nullptr;
    callTypeFunc(glbInfo->afterEntryFunc, type);
}
