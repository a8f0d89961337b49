#include "gen/generators.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/builtintypes.h"
#include "cbet/engine.h"
#include "cbet/extensions.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "gen/fileset.h"
#include "gen/leafcalls.h"
#include "gen/nameddefs.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"

namespace {

/* A value that is shown in brackets; a leaf's own call shows its name, that of a frame doesn't. */
bool hasBracket(AsnType *type) {
    const int mainType = getTypeMainType(type);
    if (testTypeOption(type, OPT_SKIPPED))
        return false;
    return (mainType >= TYP_SEQ && mainType <= TYP_ANY) || mainType == TYP_OPEN ||
           cIsFrameType(type);
}

/* pri_BegComp ("Msg", TCS_HEADER, TYP_SEQ); */
void priBegComp(AsnType *type, TypeFuncRun &run) {
    if (!hasBracket(type))
        return;
    const int file = run.outFile;
    putF(file, "pri_BegComp (");
    putF(file, tstCompId(type));
    putF(file, ", ");
    putF(file, getTypeCompStatusStri(type));
    putF(file, ", ", getTypeMainTypeStri(type), ");\n");
}

/* pri_EndComp (); */
void priEndComp(AsnType *type, TypeFuncRun &run) {
    if (hasBracket(type))
        putF(run.outFile, "pri_EndComp ();\n");
}

/* p_uint8 ("id" */
void priName(int file, AsnType *type) {
    putF(file, "p_", cBuiltinName(type), " (", tstCompId(type));
}

/* p_uint8 ("id", home->id); */
void priScalar(int file, AsnType *type, bool addressOf) {
    priName(file, type);
    putF(file, ",");
    putF(file, " ", cHome(type, addressOf ? HOME_ADDRESS : HOME_VALUE), ");\n");
}

/* --- leaves --- */

void priByValue(AsnType *type, TypeFuncRun &run) {
    priScalar(run.outFile, type, false);
}

void priByAddress(AsnType *type, TypeFuncRun &run) {
    priScalar(run.outFile, type, true);
}

void priNumber(AsnType *type, TypeFuncRun &run) {
    priScalar(run.outFile, type, cIsNumberByAddress(type));
}

/* p_IA5String ("name", &home->name); */
void priString(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    putF(file, "p_", cBuiltinStringTstCFunc(type), " (", tstCompId(type));
    putF(file, ",");
    genFixedSize(file, type);
    putF(file, " ", cHome(type, HOME_ADDRESS), ");\n");
}

/* p_NullType ("nothing"); */
void priNull(AsnType *type, TypeFuncRun &run) {
    priName(run.outFile, type);
    putF(run.outFile, ");\n");
}

constexpr LeafCalls leafCalls = {
    .boolean = priByValue,
    .integer = priNumber,
    .enumerated = priNumber,
    .real = priByValue,
    .string = priString,
    .null = priNull,
    .emptyStructure = genNoText,
    .anyPrefix = "anyPri",
    .simple = priByAddress,
    .external = priByAddress,
    .other = warnOfNoCall,
};

/* --- one value of any sort --- */

void priLeaf(AsnType *type, TypeFuncRun &run) {
    if (isTypeExtensionmarker(type)) {
        putF(run.outFile, "p_Extensionmarker (", cRefExtensionmarker(getFatherOfTypeComp(type)),
             ");\n");
        return;
    }
    genNamedDefCalls(type, run);
    genLeaf(type, run, leafCalls);
}

/* p_Frame (&home->x, TYP_INTEGER); */
void priFrame(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isAnyOrOpen(type)) {
        genOpenFrame(file, "p_Frame_0 (", type);
        return;
    }
    putF(file, "p_Frame (");
    putF(file, cHome(type, HOME_ADDRESS));
    putF(file, ", ");
    putF(file, getTypeMainTypeStri(type), ");\n");
}

/* p_NullType ("left"); for what C doesn't hold */
void priSkip(AsnType *type, TypeFuncRun &run) {
    putF(run.outFile, "p_NullType (", tstCompId(type), ");\n");
}

/* What stands where in a printing function, in the order of its text. */
constexpr TypeFuncInfo printing = {
    .funcKind = printingKind,
    .entryBit = ENTRY_PRINTING,
    .tedBefore = TED_PRI_BEFORE,
    .tedAfter = TED_PRI_BEHIND,
    .gIndex = GIDX_TESTING,
    .noBodyFunc = genNamedDefFunc,
    .entryPrefixFunc = priBegComp,
    .compPrefixFunc = priBegComp,
    .skipFunc = priSkip,
    .ignoreFunc = priSkip,
    .frameFunc = priFrame,
    .leafFunc = priLeaf,
    .compPostfixFunc = priEndComp,
    .entryPostfixFunc = priEndComp,
};

} // namespace

void generatePrintingFunctions(AsnModule *module) {
    cGenerateTypeFunctions(module, {printing, fiPri, fiPriE, "p", "pri"});
}
