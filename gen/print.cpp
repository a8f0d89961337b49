#include "gen/print.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/engine.h"
#include "cbet/extensions.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/forms.h"
#include "gen/fileset.h"
#include "gen/leaves.h"
#include "gen/nameddefs.h"
#include "gen/valuecalls.h"
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
    wToF(file, "pri_BegComp (");
    tstCompId(file, nullptr, type, nullptr);
    wToF(file, ", ");
    putF(file, getTypeCompStatusStri(type));
    putF(file, ", ", getTypeMainTypeStri(type), ");\n");
}

void priEndComp(AsnType *type, TypeFuncRun &run) {
    if (hasBracket(type))
        wToF(run.outFile, "pri_EndComp ();\n");
}

/* p_uint8 ("id" */
void priName(int file, AsnType *type) {
    Text text;
    tstCompId(file, cBuiltinCFunc(text, "p_", type, " (").c_str(), type, nullptr);
}

/* p_uint8 ("id", home->id); */
void priScalar(int file, AsnType *type, bool addressOf) {
    Text text;
    priName(file, type);
    wToF(file, ",");
    wToF(file, cHome(text, " ", addressOf, type, nullptr, ");\n"));
}

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
    Text text;
    tstCompId(file, cBuiltinStringTstCFunc(text, "p_", type, " (").c_str(), type, nullptr);
    wToF(file, ",");
    genFixedSize(file, type);
    wToF(file, cHome(text, " ", true, type, nullptr, ");\n"));
}

void priNull(AsnType *type, TypeFuncRun &run) {
    priName(run.outFile, type);
    wToF(run.outFile, ");\n");
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

void priLeaf(AsnType *type, TypeFuncRun &run) {
    if (isTypeExtensionmarker(type)) {
        Text text;
        wToF(run.outFile,
             cRefExtensionmarker(text, "p_Extensionmarker (", getFatherOfTypeComp(type), ");\n"));
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
    Text text;
    wToF(file, "p_Frame (");
    wToF(file, cHome(text, nullptr, true, type, nullptr, nullptr));
    wToF(file, ", ");
    putF(file, getTypeMainTypeStri(type), ");\n");
}

void priSkip(AsnType *type, TypeFuncRun &run) {
    tstCompId(run.outFile, "p_NullType (", type, ");\n");
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
