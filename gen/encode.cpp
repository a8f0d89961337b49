#include "gen/generators.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/engine.h"
#include "cbet/extensions.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/homes.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "gen/fileset.h"
#include "gen/leafcalls.h"
#include "gen/messages.h"
#include "gen/meta.h"
#include "model/compwalk.h"
#include "model/modules.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/valuesets.h"
#include "options/ketracnf.h"
#include "store/records.h"

namespace {

/* Tags beyond this number don't fit the narrow form. */
constexpr int LAST_NARROW_TAG = 30;

/* What extends a constraint needs an encoding that isn't written yet; the code says so too. */
void warningForExtendedConstraints(int file, AsnType *type, const char *what) {
    notYetSupported(type, concat("Encoding of extended ", what, " constraint").c_str());
    putF(file, " /*?!?: Invalid encoding follows - extended ", what, " constraint. */\n");
}

/* Tags around a value. What closes a tag stands before the value, the tag itself behind it. */

bool encodeUsingDefiniteLength(AsnType *type) {
    return cIsSimpleType(type) || isDefiniteLengthEncoding(type);
}

/* e_StoreEOC (); in front of a definite length, e_EOC (); of an indefinite one */
void encEOC(int file, AsnType *type) {
    putF(file, encodeUsingDefiniteLength(type) ? "e_StoreEOC ();\n" : "e_EOC ();\n");
}

/* e_Tag8Len (TAG8(TAG_CTX8, TAG_STR8, 0)); */
void encTagLen(int file, AsnType *type, const AsnTag *tag) {
    putF(file, "e_Tag", getTagNumber(tag) <= LAST_NARROW_TAG ? "8" : "",
         encodeUsingDefiniteLength(type) ? "" : "Indef", "Len (");
    putF(file, cTagStri(tag, true), ");\n");
}

/* --- all tags, the innermost, or all but that --- */

void encOuterEOCs(int file, AsnType *type) {
    forOutermostTags(type, [file](AsnType *tagged, const AsnTag *, int) { encEOC(file, tagged); });
}

void encInnerEOC(int file, AsnType *type) {
    forInnermostTag(type, [file](AsnType *tagged, const AsnTag *, int) { encEOC(file, tagged); });
}

void encInnerTagLen(int file, AsnType *type) {
    forInnermostTag(
        type, [file](AsnType *tagged, const AsnTag *tag, int) { encTagLen(file, tagged, tag); });
}

void encOuterTagLens(int file, AsnType *type) {
    forOutermostTagsRevOrd(
        type, [file](AsnType *tagged, const AsnTag *tag, int) { encTagLen(file, tagged, tag); });
}

/* The run-time functions of builtin types and of frames write the innermost tag themselves. */
bool theInnermostTagIsNotGivenAsArgument(AsnType *type) {
    const bool skipped = testTypeOption(type, OPT_SKIPPED);
    if (cIsFrameType(type))
        return false;
    if (isListType(type))
        return !skipped;
    const int form = getVF(type);
    if (form == VF_ANY || form == VF_OPEN)
        return !skipped;
    if (cIsPredefinedType(type) || cIsStaticString(type))
        return false;
    return !skipped;
}

/* --- around a component or an entry --- */

void encTagsPrefix(AsnType *type, TypeFuncRun &run) {
    encOuterEOCs(run.outFile, type);
    if (theInnermostTagIsNotGivenAsArgument(type))
        encInnerEOC(run.outFile, type);
}

void encTagsPostfix(AsnType *type, TypeFuncRun &run) {
    if (theInnermostTagIsNotGivenAsArgument(type))
        encInnerTagLen(run.outFile, type);
    encOuterTagLens(run.outFile, type);
}

/* The content of an extension marker comes first, because it is the last thing in the encoding. */
void encKeptExtensions(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    const bool isChoice = getTypeMainType(type) == TYP_CHOICE;
    const bool hasSwitch = isChoice && cIsControlMember(type);
    if (hasSwitch) {
        putF(file, "switch (", cHomeRef(type, HOME_MEMBER), "choice)");
        cOpenBrace(file);
    }
    cBeginTestExtensionmarker(file, type);
    putF(file, "e_Extensionmarker (", cRefExtensionmarker(type), ");\n");
    if (cHasCompHomes(type))
        cFreeAsnExtensionmarker(file, type);
    cEndTestExtensionmarker(file, type);
    if (hasSwitch)
        cCloseBrace(file);
    else if (isChoice)
        putF(file, "else ");
}

/* --- around a structure or list --- */

void encStruPrefix(AsnType *type, TypeFuncRun &run) {
    if (isTypeExtensionmarkerComp(type) && testTypeOption(type, OPT_SAVE_EXTENSIONS))
        encKeptExtensions(type, run);
    if (isListType(type) && isExtensibleSizeConstraintValueSet(type))
        warningForExtendedConstraints(run.outFile, type, "SET-OF/SEQ-OF");
}

/* A decoder that skips alternatives that it doesn't know leaves a CHOICE that holds none. Written
   on, it would be missing from the message. */
void encStruPostfix(AsnType *type, TypeFuncRun &run) {
    if (getTypeMainType(type) != TYP_CHOICE || !cIsControlMember(type) ||
        !isTypeExtensionmarkerComp(type) || testTypeOption(type, OPT_SAVE_EXTENSIONS))
        return;
    putF(run.outFile, "default:\n");
    const Indent indent(run.outFile);
    {
        const Block block(run.outFile);
        cReportError(run.outFile, "VALUE_FAIL");
    }
    putF(run.outFile, "break;\n");
}

/* Leaves. */

/* e_uint8_8 (TAG8(TAG_UNI8, TAG_PRI8, 2), */
void encName(int file, AsnType *type, bool constructed, const char *behindTag) {
    putF(file, "e_", cBuiltinCodCFunc(type), " (");
    cInnermostTagToF(file, type, constructed, behindTag);
}

/* " home->id);" */
void encRef(int file, AsnType *type, bool addressOf, const char *postfix) {
    putF(file, " ", cHome(type, addressOf ? HOME_ADDRESS : HOME_VALUE), postfix);
}

/* e_uint8_8 (TAG8(TAG_UNI8, TAG_PRI8, 2), home->id); */
void encScalar(int file, AsnType *type, bool addressOf) {
    encName(file, type, false, ",");
    encRef(file, type, addressOf, ");\n");
}

void encBoolean(AsnType *type, TypeFuncRun &run) {
    encScalar(run.outFile, type, false);
}

void encEnum(AsnType *type, TypeFuncRun &run) {
    encScalar(run.outFile, type, cIsNumberByAddress(type));
}

void encInteger(AsnType *type, TypeFuncRun &run) {
    if (isExtensibleIntegerValueSet(type))
        warningForExtendedConstraints(run.outFile, type, "INTEGER");
    encScalar(run.outFile, type, cIsNumberByAddress(type));
}

/* e_Real64_8 (TAG8(TAG_UNI8, TAG_PRI8, 9), home->x, BIN_ENC, 0); */
void encReal(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    const int decimals = getGlobalOptions(getModuleOfType(type))->decimals;
    encName(file, type, false, ",");
    encRef(file, type, false, ",");
    if (decimals == DECIMALS_BINARY)
        putF(file, " BIN_ENC, 0);\n");
    else
        putF(file, " NR2_ENC, ", decimals, ") ;\n");
}

/* e_IA5String_8 (TAG8(TAG_CTX8, TAG_PRI8, 0), &home->name); */
void encString(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isExtensibleSizeConstraintValueSet(type)) {
        warningForExtendedConstraints(file, type, "string");
        return;
    }
    putF(file, "e_", cBuiltinStringCodCFunc(type), " (");
    cInnermostTagToF(file, type, false, ",");
    genFixedSize(file, type);
    encRef(file, type, true, ");\n");
}

void encNull(AsnType *type, TypeFuncRun &run) {
    encName(run.outFile, type, false, ");\n");
}

void encSimple(AsnType *type, TypeFuncRun &run) {
    encScalar(run.outFile, type, true);
}

void encExternal(AsnType *type, TypeFuncRun &run) {
    encName(run.outFile, type, true, ",");
    encRef(run.outFile, type, true, ");\n");
}

constexpr LeafCalls leafCalls = {
    .boolean = encBoolean,
    .integer = encInteger,
    .enumerated = encEnum,
    .real = encReal,
    .string = encString,
    .null = encNull,
    .emptyStructure = genNoText,
    .anyPrefix = "anyEnc",
    .simple = encSimple,
    .external = encExternal,
    .other = warnOfNoCall,
};

void encLeaf(AsnType *type, TypeFuncRun &run) {
    genLeaf(type, run, leafCalls);
}

/* A frame holds a ready encoding. A constructed tag goes around it, where the type has none of its
   own; a primitive one takes the place of the tag with which the frame begins. */
void encFrame(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isAnyOrOpen(type) && getNrOfTags(type) == 0) {
        genOpenFrame(file, "e_Frame_0 (", type);
        return;
    }
    const bool goesAround = isAnyOrOpen(type) || getTypeMainType(type) == TYP_CHOICE;
    putF(file, "e_Frame", cTagFuncSuff(type), " (");
    cInnermostTagToF(file, type, goesAround, ",");
    encRef(file, type, true, ");\n");
}

/* The tag under which a skipped type leaves a null value: its outermost one, or that of its first
   alternative; false if there is none. */
bool selectTagForSkipped(AsnType *type, AsnTag *found, int *depth) {
    const NestingGuard guard(depth, type->posModule);
    bool hasTag = false;
    if (getNrOfTags(type) > 0) {
        forOutermostTag(type, [found, &hasTag](AsnType *, const AsnTag *tag, int) {
            *found = *tag;
            hasTag = true;
        });
    } else if (getTypeMainType(type) == TYP_CHOICE) {
        /* The alternatives may stand in another module. */
        forEachTypeCompQuietly(type, [&](AsnType *, AsnType *alternative, int) {
            if (isFirstActualTypeComp(alternative))
                hasTag = selectTagForSkipped(alternative, found, depth);
        });
    }
    return hasTag;
}

/* e_NullType_8 (TAG8(TAG_CTX8, TAG_PRI8, 3)); */
void encSkip(AsnType *type, TypeFuncRun &run) {
    AsnTag tag;
    Text tagText = "TAG8(UNI8, PRI8, 5)";
    bool narrow = true;
    int depth = 0;
    if (selectTagForSkipped(type, &tag, &depth)) {
        tagText = cTagStri(&tag, false);
        narrow = getTagNumber(&tag) <= LAST_NARROW_TAG;
    }
    putF(run.outFile, narrow ? "e_NullType_8" : "e_NullType", " (", tagText, ");\n");
}

/* What stands where in an encoding function, in the order of its text. */
constexpr TypeFuncInfo encoding = {
    .funcKind = encodingKind,
    .entryBit = ENTRY_ENCODING,
    .tedBefore = TED_ENC_BEFORE,
    .tedAfter = TED_ENC_BEHIND,
    .gIndex = GIDX_CODING,
    .reverseComps = true, /* an encoding is written from its end */
    .entryPrefixFunc = encTagsPrefix,
    .struPrefixFunc = encStruPrefix,
    .compPrefixFunc = encTagsPrefix,
    .skipFunc = encSkip,
    .ignoreFunc = encSkip,
    .frameFunc = encFrame,
    .leafFunc = encLeaf,
    .compPostfixFunc = encTagsPostfix,
    .struPostfixFunc = encStruPostfix,
    .entryPostfixFunc = encTagsPostfix,
};

} // namespace

void generateEncodingFunctions(AsnModule *module) {
    const Text prefix = getMetaCodFuncPref(module);
    cGenerateTypeFunctions(module, {encoding, fiEnc, fiEncE, prefix + "e", prefix + "enc"});
}
