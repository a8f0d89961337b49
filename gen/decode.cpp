#include "gen/generators.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "cbet/comptests.h"
#include "cbet/engine.h"
#include "cbet/extensions.h"
#include "cbet/forms.h"
#include "cbet/functions.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "gen/fileset.h"
#include "gen/fillvalues.h"
#include "gen/leafcalls.h"
#include "gen/meta.h"
#include "gen/tagtest.h"
#include "model/compwalk.h"
#include "model/tags.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/valuesets.h"

namespace {

/* A SET of fewer components, and a CHOICE of fewer alternatives, needs no test which one comes. */
constexpr int SEVERAL = 2;

constexpr const char *LOOK = "d_LookTagLen ();\n";
constexpr const char *EOC = "d_EOC ();\n";

bool hasSeveralComps(AsnType *type) {
    return nrOfWalkedComps(type) >= SEVERAL;
}

/* "{", the report, "}" behind an "if (...)". */
void decReport(int file, const char *error) {
    const Block block(file);
    cReportError(file, error);
}

/* Tags. After a component of a SEQUENCE the next tag is in hand if and only if the component was
   optional. */

/* d_TagLen (TAG(TAG_CTX, TAG_PRI, 3)); */
void decTagLen(int file, const AsnTag *tag) {
    putF(file, "d_TagLen (", cTag32Stri(tag, false), ");\n");
}

/* The alternative's tag decides, so it must be in hand. */
bool tagMustBeLooked(AsnType *type) {
    return getTypeMainType(type) == TYP_CHOICE && !testTypeOption(type, OPT_SKIPPED);
}

bool isSkippedWithoutTag(AsnType *type) {
    return testTypeOption(type, OPT_SKIPPED) && getNrOfTags(type) == 0;
}

/* The run-time function of a value reads the end-of-contents of the tag that it was called for. */
bool decodingFunctionConsumesEOC(AsnType *type) {
    return !isAnyOrOpen(type);
}

/* What stands between the outermost tag, which is done, and the value. `looked` says that the tag
   behind it would be in hand. */
void decInnermostCompTags(int file, AsnType *type, bool looked) {
    if (getNrOfTags(type) > 1)
        forInnermostTags(type, [file](AsnType *, const AsnTag *tag, int) { decTagLen(file, tag); });
    if (getNrOfTags(type) > 0)
        looked = false;
    if (tagMustBeLooked(type) && !looked)
        putF(file, LOOK);
}

void decInnermostCompEOCs(int file, AsnType *type) {
    if (getNrOfTags(type) > 1)
        forInnermostTags(type, [file](AsnType *, const AsnTag *, int) { putF(file, EOC); });
    if ((tagMustBeLooked(type) || !decodingFunctionConsumesEOC(type)) && getNrOfTags(type) > 0)
        putF(file, EOC);
}

/* Presence tests. */

/* A component of a SEQUENCE that is found by looking ahead, not read with its tag. */
bool seqCompIsTested(AsnType *comp) {
    return isOptionalTypeComp(comp) || (getNrOfTags(comp) == 0 && tagMustBeLooked(comp));
}

void decIsSeqComp(int file, AsnType *comp) {
    if (!seqCompIsTested(comp))
        return;
    if (!prevTypeCompIsOptional(comp))
        putF(file, LOOK);
    if (getNrOfTags(comp) > 0 || isOptionalTypeComp(comp))
        genTagTest(file, comp, {});
}

/* The end of a list's loop. An ANY without a tag of its own may begin with anything, so the tag is only
   peeked at. */
void decIsSeqOfComp(int file, AsnType *elem) {
    const bool peeks = isAnyOrOpen(elem) && getNrOfTags(elem) == 0 && !isSkippedWithoutTag(elem);
    if (peeks)
        putF(file, "peekT (*asncodg_frame, &asncodg_tag);\n");
    putF(file, peeks ? "if (asncodg_tag == EOC_TAG)" : "if (d_LookTagLen () == EOC_TAG)");
    {
        const Block block(file);
        putF(file, peeks ? LOOK : "");
        putF(file, "break;\n");
    }
    if (getNrOfTags(elem) == 0)
        return;
    putF(file, "if (d_CurrTag () != ", cOutermostTag32Stri(elem, false), ")");
    decReport(file, "TAG_FAIL");
}

void decIsComp(AsnType *comp, TypeFuncRun &run) {
    const int file = run.outFile;
    AsnType *father = getFatherOfTypeComp(comp);
    const bool isElse = !isFirstActualTypeComp(comp);
    switch (getTypeMainType(father)) {
    case TYP_SEQ:
        decIsSeqComp(file, comp);
        break;
    case TYP_SEQOF:
    case TYP_SETOF:
        decIsSeqOfComp(file, comp);
        break;
    case TYP_SET:
        if (hasSeveralComps(father))
            genTagTest(file, comp, {.isElse = isElse});
        else
            decIsSeqComp(file, comp);
        break;
    case TYP_CHOICE:
        genTagTest(file, comp, {.isElse = isElse, .isEqual = hasSeveralComps(father)});
        if (!hasSeveralComps(father))
            decReport(file, "TAG_FAIL");
        break;
    default:
        break;
    }
}

/* Around a component. */

/* Components stand in their order: in a SEQUENCE, and in a SET of one. */
bool compsAreInSequence(AsnType *father) {
    const int mainType = getTypeMainType(father);
    return mainType == TYP_SEQ || (mainType == TYP_SET && !hasSeveralComps(father));
}

void decSeqCompPrefix(int file, AsnType *comp) {
    if (seqCompIsTested(comp)) {
        decInnermostCompTags(file, comp, true);
    } else if (prevTypeCompIsOptional(comp)) {
        genTagTest(file, comp, {.isEqual = false});
        decReport(file, "TAG_FAIL");
        decInnermostCompTags(file, comp, true);
    } else {
        if (isSkippedWithoutTag(comp) && isFirstActualTypeComp(comp)) {
            /* The tag in hand is that of the structure, which is not to be passed over. */
            putF(file, "if (d_LookTagLen () == EOC_TAG)");
            decReport(file, "TAG_FAIL");
        }
        forOutermostTag(comp, [file](AsnType *, const AsnTag *tag, int) { decTagLen(file, tag); });
        decInnermostCompTags(file, comp, false);
    }
}

void decCompPrefix(AsnType *comp, TypeFuncRun &run) {
    if (compsAreInSequence(getFatherOfTypeComp(comp)))
        decSeqCompPrefix(run.outFile, comp);
    else
        decInnermostCompTags(run.outFile, comp, true);
}

void decCompPostfix(AsnType *comp, TypeFuncRun &run) {
    decInnermostCompEOCs(run.outFile, comp);
    if (compsAreInSequence(getFatherOfTypeComp(comp)) && isOptionalTypeComp(comp))
        putF(run.outFile, LOOK);
}

/* Around a structure or list. */

void decStruPrefix(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (getTypeMainType(type) == TYP_SET && hasSeveralComps(type)) {
        /* The look gives 0 at the end-of-contents. */
        putF(file, "while (d_LookTagLen ())");
        cOpenBrace(file);
    } else if (isListType(type)) {
        if (isExtensibleSizeConstraintValueSet(type))
            decWarnOfExtendedConstraint(file, type, "SET-OF/SEQ-OF");
        else if (cIsDynamicArray(type))
            forTypeElem(type, [file](AsnType *list, AsnType *elem) {
                genUpperBound(file, "d_UpperBound (", list, elem);
            });
    }
}

void decExtensionmarker(int file, AsnType *type) {
    if (testTypeOption(type, OPT_SAVE_EXTENSIONS))
        putF(file, "d_Extensionmarker (", cRefExtensionmarker(type), ");\n");
    else
        putF(file, "d_Skip ();\n");
}

void decPrepareExtensionmarker(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (!cHasCompHomes(type)) {
        cSetExtensionmarkerControlMember(file, type);
        /* Of the plain forms only a CHOICE sets its member up here: it shares the union. */
        if (getTypeMainType(type) == TYP_CHOICE)
            cInitExtensionmarker(file, type, run.info.gIndex, false);
    } else if (getTypeMainType(type) == TYP_SET) {
        cBeginTestNonexistentExtensionmarker(file, type);
        cInitExtensionmarker(file, type, run.info.gIndex, false);
        cEndTestExtensionmarker(file, type);
    } else {
        cInitExtensionmarker(file, type, run.info.gIndex, false);
    }
}

/* The last "else" of a chain: a tag that none of the known ones is. */
void decNoneAbove(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    const bool isOnlyMarker = isTypeExtensionmarkerComp(type) && nrOfWalkedComps(type) == 1;
    putF(file, isOnlyMarker ? "" : "else ");
    const Block block(file);
    if (isTypeExtensionmarkerComp(type)) {
        decPrepareExtensionmarker(type, run);
        decExtensionmarker(file, type);
    } else {
        cReportError(file, "TAG_FAIL");
    }
}

void decExpectEOC(int file, AsnType *type) {
    if (lastTypeCompIsOptional(type)) {
        putF(file, "if (d_CurrTag () != EOC_TAG)");
        decReport(file, "EOC_FAIL");
    } else {
        putF(file, EOC);
    }
}

/* Behind the last known component anything may come. */
void decSeqExtendedCompsUntilEOC(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (!lastTypeCompIsOptional(type))
        putF(file, LOOK);
    putF(file, "if (d_CurrTag ())");
    const Block block(file);
    if (cHasCompHomes(type))
        cInitExtensionmarker(file, type, run.info.gIndex, false);
    else
        cSetExtensionmarkerControlMember(file, type);
    putF(file, "while (d_CurrTag ())");
    const Block loop(file);
    decExtensionmarker(file, type);
    putF(file, LOOK);
}

void decSetPostfix(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    decNoneAbove(type, run);
    cCloseBrace(file);
    if (!isMandatoryTypeComps(type))
        return;
    cBeginTestMissingSetMandatoryComps(file, type);
    cReportError(file, "MM_FAIL");
    cEndTestMissingSetMandatoryComps(file, type);
}

void decStruPostfix(AsnType *type, TypeFuncRun &run) {
    const int mainType = getTypeMainType(type);
    if (compsAreInSequence(type)) {
        if (isTypeExtensionmarkerComp(type))
            decSeqExtendedCompsUntilEOC(type, run);
        else
            decExpectEOC(run.outFile, type);
    } else if (mainType == TYP_SET) {
        decSetPostfix(type, run);
    } else if (mainType == TYP_CHOICE &&
               (hasSeveralComps(type) || isTypeExtensionmarkerComp(type))) {
        decNoneAbove(type, run);
    }
}

/* Around an entry function's body. */

void decEntryPrefix(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    forEachTag(type, [file](AsnType *, const AsnTag *tag, int) { decTagLen(file, tag); });
    if (tagMustBeLooked(type))
        putF(file, LOOK);
}

void decEntryPostfix(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (getNrOfTags(type) == 0)
        return;
    if (!decodingFunctionConsumesEOC(type))
        putF(file, EOC);
    if (getNrOfTags(type) > 1)
        forOutermostTags(type, [file](AsnType *, const AsnTag *, int) { putF(file, EOC); });
}

/* Values. */

/* Whether a test has read the tag with which an untagged component begins. */
bool beginsInHand(AsnType *type) {
    AsnType *father = getFatherOfTypeComp(type);
    if (father == nullptr || isListType(father) || getNrOfTags(type) > 0)
        return false;
    return !compsAreInSequence(father) || isOptionalTypeComp(type) || prevTypeCompIsOptional(type);
}

void decFrame(AsnType *type, TypeFuncRun &run) {
    const int file = run.outFile;
    if (isAnyOrOpen(type)) {
        genOpenFrame(file, beginsInHand(type) ? "d_Frame_1 (" : "d_Frame_0 (", type);
    } else {
        genTypedFrame(file, "d_Frame (", type);
    }
}

void decSkipIgnore(AsnType *, TypeFuncRun &run) {
    putF(run.outFile, "d_Skip ();\n");
}

void decSkipError(AsnType *, TypeFuncRun &run) {
    cReportError(run.outFile, "SKIPPED_ENCOUNTERED");
}

/* What stands where in a decoding function, in the order of its text. */
constexpr TypeFuncInfo decoding = {
    .funcKind = decodingKind,
    .entryBit = ENTRY_DECODING,
    .tedBefore = TED_DEC_BEFORE,
    .tedAfter = TED_DEC_BEHIND,
    .gIndex = GIDX_CODING,
    .trackPath = true,
    .entryPrefixFunc = decEntryPrefix,
    .struPrefixFunc = decStruPrefix,
    .isCompFunc = decIsComp,
    .compPrefixFunc = decCompPrefix,
    .skipFunc = decSkipError,
    .ignoreFunc = decSkipIgnore,
    .extraMoreFunc = decIsComp,
    .frameFunc = decFrame,
    .leafFunc = decLeaf,
    .compPostfixFunc = decCompPostfix,
    .struPostfixFunc = decStruPostfix,
    .entryPostfixFunc = decEntryPostfix,
};

} // namespace

void generateDecodingFunctions(AsnModule *module) {
    const Text prefix = getMetaCodFuncPref(module);
    cGenerateTypeFunctions(module, {decoding, fiDec, fiDecE, prefix + "d", prefix + "dec"});
}
