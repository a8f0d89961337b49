#include "cbet/engineparts.h"

#include "base/files.h"
#include "cbet/checks.h"
#include "cbet/engine.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/memory.h"
#include "cbet/names.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/constraints.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"

bool isSeparateNormalFunction(AsnType *type) {
    return !isMorlaApplication(getModuleOfType(type)) || isMorlaLeafType(type) ||
           testTypeOption(type, OPT_COMPS_AS_POINTERS);
}

/* --- the type behind a synonym --- */

namespace {

/* Entry mask and category of a handle, and the same two of its base record. */
struct EntryInformation {
    std::uint8_t entryFlags = 0;
    std::uint8_t entryCategories = 0;
    std::uint8_t baseEntryFlags = 0;
    std::uint8_t baseEntryCategories = 0;
};

EntryInformation entryInformation(const AsnType *type) {
    return {type->entryFlags, type->entryCategories, type->base.entryFlags,
            type->base.entryCategories};
}

/* The handle and its copy of the record both answer whether a type is an entry. */
void setEntryInformation(AsnType *type, const EntryInformation &with) {
    type->entryFlags = with.entryFlags;
    type->entryCategories = with.entryCategories;
    type->base.entryFlags = with.baseEntryFlags;
    type->base.entryCategories = with.baseEntryCategories;
}

/* While the body of `base` is written as that of its synonym's entry function, it is an entry as the
   synonym is. It may lie in a module without entries, which counts one for that time. */
void genBodyAsEntry(AsnType *base, const EntryInformation &synonym, TypeFuncRun &run) {
    const EntryInformation own = entryInformation(base);
    GlobalOptions *options = getGlobalOptions(getModuleOfType(base));
    const int entries = options->nrOfEntryTypes;
    setEntryInformation(base, synonym);
    if (entries == 0)
        options->nrOfEntryTypes = 1;
    funcForStructuredTypeAndCompsOrElems(base, run);
    setEntryInformation(base, own);
    options->nrOfEntryTypes = entries;
}

/* The body of what the synonym stands for, in the synonym's name. */
void genBodyBehindSynonym(AsnType *type, TypeFuncRun &run) {
    const EntryInformation synonym = entryInformation(type);
    auto genBody = [&](AsnType *base) { genBodyAsEntry(base, synonym, run); };
    if (isBaseTypeInCurrentModule(type))
        forSynonymType(type, genBody);
    else
        forTypeDefinedInAnotherModule(type, genBody);
}

/* --- parts of an entry function --- */

/* The last argument of the call, the value itself: "home);\n". */
void homeArgument(int file, AsnType *type) {
    const char *const end = ");\n";
    if (testTypeOption(type, OPT_HOME)) {
        putF(file, cAsnHomeCompRef(type, HOME_ADDRESS), end);
    } else if (isMorlaApplication(getModuleOfType(type))) {
        putF(file, "(");
        putF(file, cDefBaseTypeName(type), " *)hometab");
        putF(file, end);
    } else {
        putF(file, cHomeRef(type, HOME_ADDRESS), end);
    }
}

/* The call of the type's normal function from its entry function: dMsg (ASNG_F(asncodg) home); */
void cCallSeprNormFuncFromEntryFunc(AsnType *type, TypeFuncRun &run) {
    cDeclareForeignFunction(type, run);
    putF(run.outFile, cFunctionName(run.funcPrefix, type), " (");
    putF(run.outFile, "ASNG_F(", cGetGName(run.info.gIndex), ") ");
    homeArgument(run.outFile, type);
}

/* Nothing but the entry function can check the constraints of the type. */
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

/* The variables of an application hold the components of a structure, and none holds it whole. */
void genFrameContent(AsnType *type, TypeFuncRun &run) {
    if (isMorlaApplication(getModuleOfType(type)) && !testTypeOption(type, OPT_HOME))
        cRefuseType(type, "An entry of an application with variables can't be a frame.");
    else
        callTypeFunc(run.info.frameFunc, type, run);
}

/* What stands between the tags: a call where there is a function, else the text in line. */
void genEntryContent(AsnType *type, TypeFuncRun &run) {
    if (testTypeOption(type, OPT_SKIPPED))
        skipType(type, run);
    else if (cIsFrameType(type))
        genFrameContent(type, run);
    else if (isLeafType(type))
        callTypeFunc(run.info.leafFunc, type, run);
    else if (isSeparateNormalFunction(type))
        cCallSeprNormFuncFromEntryFunc(type, run);
    else if (isSynonymType(type))
        genBodyBehindSynonym(type, run);
    else
        funcForStructuredTypeAndCompsOrElems(type, run);
}

/* The value of a MORLA leaf lives in a home: that of hometab [0]. */
void beginLeafHome(AsnType *type, TypeFuncRun &run) {
    type->base.optionBits |= optionMask(OPT_HOME);
    if (!isConstructingKind(run))
        return;
    cCreateHome(run.outFile, type, run.info.gIndex);
    cPushHome(run.outFile, type, run.info.gIndex);
}

void endLeafHome(AsnType *type, TypeFuncRun &run) {
    if (run.info.funcKind == encodingKind)
        cFreeAsn(run.outFile, type);
    else if (isConstructingKind(run))
        cPopHome(run.outFile, type, run.info.gIndex);
}

/* pushPath (ASNG_F(asncodg) "Msg"); and popPath at the end */
void pushEntryPath(AsnType *type, TypeFuncRun &run) {
    if (run.info.trackPath)
        cPushEntryPath(run.outFile, type);
}

void popEntryPath(AsnType *type, TypeFuncRun &run) {
    if (run.info.trackPath)
        cPopEntryPath(run.outFile, type);
}

/* void encMsg (ASNG_F(ASNCODG *asncodg) Msg *home)
   { */
void writeEntryHead(AsnType *type, TypeFuncRun &run) {
    int file = run.outFile;
    putF(run.extFile, "\n");
    putF(file, "\n");
    cEntryFunctionProto(run.extFile, run.entryFuncPrefix.c_str(), run.info.gIndex, type);
    cEntryFunctionDef(file, run.entryFuncPrefix.c_str(), run.info.gIndex, type);
}

/* Embedded text stands here for bodies that no normal function has. */
void writeEntryBody(AsnType *type, TypeFuncRun &run) {
    bool leafHome = isMorlaApplication(getModuleOfType(type)) && isMorlaLeafType(type);
    bool teds = !isSeparateNormalFunction(type) || cIsPredefinedType(type) || cIsStaticString(type);
    if (leafHome)
        beginLeafHome(type, run);
    if (teds)
        printLocalTEDs(type, run.info.tedBefore, run);
    genEntryContent(type, run);
    if (leafHome)
        endLeafHome(type, run);
    if (teds)
        printLocalTEDs(type, run.info.tedAfter, run);
}

} // namespace

/* Head, path, the generator's own text around the body, and the checks that nothing inside makes. */
void genEntryFunc(AsnType *type, TypeFuncRun &run) {
    taviUseTypeNode(type);
    const EntryFunctionScope scope;
    writeEntryHead(type, run);
    const Block body(run.outFile);
    pushEntryPath(type, run);
    callTypeFunc(run.info.entryPrefixFunc, type, run);
    writeEntryBody(type, run);
    callTypeFunc(run.info.entryPostfixFunc, type, run);
    if (run.info.funcKind == decodingKind && mustCheckConstraintsInEntryFunction(type))
        cCheckConstraints(run.outFile, type);
    popEntryPath(type, run);
}
