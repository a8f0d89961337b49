#include "gen/generators.h"

#include "base/files.h"
#include "cbet/comptests.h"
#include "cbet/engine.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/lists.h"
#include "cbet/vars.h"
#include "gen/fileset.h"
#include "gen/fillvalues.h"
#include "gen/leafcalls.h"
#include "gen/nameddefs.h"
#include "model/compwalk.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

namespace {

bool isSkipped(AsnType *type) {
    return testTypeOption(type, OPT_SKIPPED);
}

/* A value whose question is ended apart from its own. */
bool isOpenOrChoice(AsnType *type) {
    return getTypeMainType(type) == TYP_CHOICE || isAnyOrOpen(type);
}

/* ask_BegComp ("id", TCS_MANDATORY, TYP_INTEGER) */
void askBegComp(int file, AsnType *type, const char *postfix) {
    putF(file, "ask_BegComp (");
    putF(file, tstCompId(type));
    putF(file, ", ");
    putF(file, getTypeCompStatusStri(type));
    putF(file, ", ");
    if (isSkipped(type))
        putF(file, "TYP_NULL");
    else
        putF(file, getTypeMainTypeStri(type));
    putF(file, ")");
    putF(file, postfix);
}

/* ask_EndComp (); */
void askEndComp(int file, AsnType *type) {
    if (!isSkipped(type))
        putF(file, "ask_EndComp ();\n");
}

/* ask_EndAnyChoiceComp (); */
void askEndAnyChoiceComp(int file, AsnType *type) {
    if (isOpenOrChoice(type) && !isSkipped(type))
        putF(file, "ask_EndAnyChoiceComp ();\n");
}

bool isOnlyAlternative(AsnType *father) {
    return nrOfWalkedComps(father) == 1;
}

/* Presence tests. Each component is a block that the user may enter or leave out; the engine opens
   those that may be absent, and the alternatives of a CHOICE that has several. */

/* if (ask_BegComp ("id", TCS_MANDATORY, TYP_INTEGER)){ */
void askIsSeqComp(int file, AsnType *comp) {
    putF(file, "if (");
    askBegComp(file, comp, ")");
    if (!isOptionalTypeComp(comp))
        cOpenBrace(file);
}

/* else if (ask_BegComp ("id", TCS_CHOICE, TYP_INTEGER)){ */
void askIsChoiceComp(int file, AsnType *comp) {
    putF(file, isFirstActualTypeComp(comp) ? "" : "else ", "if (");
    askBegComp(file, comp, ")");
    if (isOnlyAlternative(getFatherOfTypeComp(comp)))
        cOpenBrace(file);
}

/* if (!ask_BegComp (NULL, TCS_MULTIPLE, TYP_INTEGER)){
     break;
   } */
void askIsSeqOfComp(int file, AsnType *elem) {
    cCheckListUpperBoundWithBreak(file, elem);
    putF(file, "if (!");
    askBegComp(file, elem, ")");
    const Block block(file);
    putF(file, "break;\n");
}

void askIsComp(AsnType *comp, TypeFuncRun &run) {
    switch (getTypeMainType(getFatherOfTypeComp(comp))) {
    case TYP_SEQ:
    case TYP_SET:
        askIsSeqComp(run.outFile, comp);
        break;
    case TYP_CHOICE:
        askIsChoiceComp(run.outFile, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        askIsSeqOfComp(run.outFile, comp);
        break;
    default:
        break;
    }
}

/* Closes what the presence test opened, where the engine doesn't. */
void askCompPostfix(AsnType *comp, TypeFuncRun &run) {
    const int file = run.outFile;
    AsnType *father = getFatherOfTypeComp(comp);
    const int mainType = getTypeMainType(father);
    askEndAnyChoiceComp(file, comp);
    if ((mainType == TYP_SEQ || mainType == TYP_SET) && !isOptionalTypeComp(comp))
        cCloseBrace(file);
    else if (mainType == TYP_CHOICE && isOnlyAlternative(father))
        cCloseBrace(file);
}

/* Around a structure or list, and around an entry function's body. */
void askStruPrefix(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isListType(type) && cIsDynamicArray(type))
        forTypeElem(type, [file](AsnType *list, AsnType *elem) {
            genUpperBound(file, "a_UpperBound (", list, elem);
        });
}

void askStruPostfix(AsnType *type, TypeFuncRun &run) {
    if (getTypeMainType(type) != TYP_CHOICE)
        askEndComp(run.outFile, type);
}

void askEntryPrefix(AsnType *type, TypeFuncRun &run) {
    askBegComp(run.outFile, type, ";\n");
}

void askEntryPostfix(AsnType *type, TypeFuncRun &run) {
    askEndAnyChoiceComp(run.outFile, type);
}

/* Leaves. */

/* a_Boolean (&home->ok); */
void askCall(int file, AsnType *type, const char *postfix) {
    genFillCall(file, "a_", type, postfix);
}

void askBoolean(AsnType *type, TypeFuncRun &run) {
    askCall(run.outFile, type, ");\n");
    genNormalisedTrue(run.outFile, type);
}

void askInteger(AsnType *type, TypeFuncRun &run) {
    askCall(run.outFile, type, ",");
    genIntegerBounds(run.outFile, type);
}

/* A value in a hole is set back to the least one, unless the enumeration can be extended. */
void askEnum(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    askInteger(type, run);
    if (isSimpleIntegerValueSet(type) || !cCheckIntegerValueSet(file, type))
        return;
    const Block block(file);
    if (isExtensibleEnumeratedList(type)) {
        genExtendedMark(file, type);
    } else {
        putF(file, cHome(type, HOME_VALUE), " = ");
        printIntEndpoint(file, nullptr, getVF(type), leastValue(type), ";\n");
    }
}

void askReal(AsnType *type, TypeFuncRun &run) {
    askCall(run.outFile, type, ",");
    genRealBounds(run.outFile, type);
}

/* a_IA5String8 (&home->name, 1, 8); */
void askString(AsnType *type, TypeFuncRun &run) {
    sint64 low, high, alloc;
    getInt64SizeConstraintEndpoints(type, &low, &high, &alloc);
    genFillString(run.outFile, "a_", type, i64ismax(alloc));
}

void askNull(AsnType *type, TypeFuncRun &run) {
    genNullCall(run.outFile, "a_", type);
}

void askSimple(AsnType *type, TypeFuncRun &run) {
    askCall(run.outFile, type, ");\n");
}

constexpr LeafCalls leafCalls = {
    .boolean = askBoolean,
    .integer = askInteger,
    .enumerated = askEnum,
    .real = askReal,
    .string = askString,
    .null = askNull,
    .emptyStructure = askStruPostfix,
    .anyPrefix = "anyAsk",
    .simple = askSimple,
    .external = askSimple,
    .other = genNoFillCall,
};

/* --- the other values --- */

void askLeaf(AsnType *type, TypeFuncRun &run) {
    genNamedDefCalls(type, run);
    genLeaf(type, run, leafCalls);
}

void askFrame(AsnType *type, TypeFuncRun &run) {
    if (isAnyOrOpen(type))
        genOpenFrame(run.outFile, "a_Frame_0 (", type);
    else
        genTypedFrame(run.outFile, "a_Frame (", type);
}

void askSkip(AsnType *, TypeFuncRun &run) {
    putF(run.outFile, "a_NullType ();\n");
}

/* What stands where in an asking function, in the order of its text. */
constexpr TypeFuncInfo asking = {
    .funcKind = askingKind,
    .entryBit = ENTRY_ASKING,
    .tedBefore = TED_ASK_BEFORE,
    .tedAfter = TED_ASK_BEHIND,
    .gIndex = GIDX_TESTING,
    .noBodyFunc = genNamedDefFunc,
    .entryPrefixFunc = askEntryPrefix,
    .struPrefixFunc = askStruPrefix,
    .isCompFunc = askIsComp,
    .skipFunc = askSkip,
    .ignoreFunc = askSkip,
    .frameFunc = askFrame,
    .leafFunc = askLeaf,
    .compPostfixFunc = askCompPostfix,
    .struPostfixFunc = askStruPostfix,
    .entryPostfixFunc = askEntryPostfix,
};

} // namespace

void generateAskingFunctions(AsnModule *module) {
    cGenerateTypeFunctions(module, {asking, fiAsk, fiAskE, "a", "ask"});
}
