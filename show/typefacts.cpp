#include "show/show.h"

#include "model/any.h"
#include "model/constraints.h"
#include "model/setarithmetic.h"
#include "model/tags.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuesets.h"
#include "show/references.h"
#include "show/texts.h"
#include "show/writer.h"
#include "store/records.h"
#include "store/recordwords.h"

namespace {

/* "stru/ui8": the value, and the member that says what of it is there. */
Text formText(AsnType *type) {
    if (getVF(type) == VF_NONE && getVFSize(type) == VF_NONE)
        return {};
    Text text = Text("form ") + formWord(getVF(type));
    return getVFSize(type) == VF_NONE ? text : text + "/" + formWord(getVFSize(type));
}

/* What a reference finally comes to. */
Text baseText(AsnType *type) {
    if (!isReferenceNotation(type))
        return {};
    Text text = Text("is ") + typeWord(getTypeMainType(type));
    if (type->baseId.id != nullptr && isDefinedBaseType(type))
        text += " (" + typeRecordName(type->posModule, {type->baseModule, type->baseRecord}) + ")";
    return text;
}

/* Forms without a C type of their own have none here. */
Text cTypeText(AsnType *type) {
    const bool hasOwn =
        isStructuredType(type) || isListType(type) || getTypeMainType(type) == TYP_ENUM;
    if (hasOwn && !isDefinedBaseType(type))
        return {};
    const Text name = getBaseTypeId(type);
    return name.find("?!?") == name.npos && getVF(type) != VF_NONE ? "C type " + name : Text();
}

void showPlace(int level, AsnType *type) {
    const TNode &position = storedTNode(type->posModule, type->posRecord);
    Text text = recordText(type->posModule, type->posRecord, position.lineNr);
    addPart(text, type->inCompOf ? "by COMPONENTS OF" : "");
    if ((type->firstTypeFlags & TYPE_INSTANTIATED) != 0 && position.auxRecord != 0)
        addPart(text, "instance of " + pathEndName(type->posModule, position.auxRecord));
    addPart(text, baseText(type));
    addPart(text, formText(type));
    addPart(text, cTypeText(type));
    showFact(level, text);
}

void showTags(int level, AsnType *type) {
    Text tags;
    forEachTag(type, [&](AsnType *, const AsnTag *tag, int) { addPart(tags, tagText(tag)); });
    if (!tags.empty())
        showFact(level, "tags " + tags);
    else if (getTypeMainType(type) == TYP_CHOICE)
        showFact(level, "tags of its alternatives");
}

Text segmentsText(const IntegerValueSet &set) {
    Text text;
    for (const Int64Range &range : set.segs) {
        if (text.size() > MAX_SHOWN)
            return text + ", ...";
        const Text lower = numberText(range.lower);
        addPart(text, range.lower == range.upper ? lower : lower + ".." + numberText(range.upper));
    }
    return text;
}

bool isEverything(const IntegerValueSet &set) {
    return set.segs.empty() || (set.segs.size() == 1 && i64ismin(set.segs.front().lower) &&
                                i64ismax(set.segs.front().upper));
}

/* The set is made at the first question, and only for types that have one. */
void showValueSet(int level, AsnType *type) {
    isSimpleIntegerValueSet(type);
    const bool isSizes = isSizeConstraintValueSet(type);
    if (type->valueSet == nullptr || isEverything(*type->valueSet))
        return;
    const bool extensible =
        isExtensibleIntegerValueSet(type) || isExtensibleSizeConstraintValueSet(type);
    showFact(level, (isSizes ? "sizes " : "values ") + segmentsText(*type->valueSet) +
                        (extensible ? ", extensible" : ""));
}

/* Real numbers have ends and no set. */
void showRealEnds(int level, AsnType *type) {
    if (getTypeMainType(type) != TYP_REAL || !isConstraints(type))
        return;
    forTypeEndpoints(
        type, [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
            showFact(level, "values " + valueText(low) + (lowClosed ? "" : "<") + ".." +
                                (highClosed ? "" : "<") + valueText(high));
        });
}

void showConstraints(int level, AsnType *type) {
    if (getNrOfTypeConstraints(type) > getNrOfLocalTypeConstraints(type) && isConstraints(type))
        showFact(level, "constraints " + constraintsText(type, false));
    showValueSet(level, type);
    showRealEnds(level, type);
}

void addWords(Text &text, std::span<const BitWord> words, std::uint32_t bits) {
    for (const BitWord &row : words)
        if ((bits & row.bit) != 0)
            addPart(text, row.word);
}

void showBits(int level, AsnType *type) {
    Text text;
    addWords(text, typeOptionWords(), type->base.optionBits);
    addWords(text, typeFlagWords(), type->base.typeFlags);
    const TypeOptions &options = *getTypeOptions(type);
    if (isDefiniteLengthEncoding(type))
        addPart(text, "definite length");
    if (options.skipKind != 0)
        addPart(text, "skip call-back");
    if (options.sizeLimit != 0)
        addPart(text, "limit " + std::to_string(options.sizeLimit) +
                          (options.sizeLimitMode != 0 ? " else error" : " else ignored"));
    if (!text.empty())
        showFact(level, text);
}

void showEntry(int level, AsnType *type) {
    if (!isEntryType(type))
        return;
    Text categories, functions;
    for (int category = 0; category < 8; ++category)
        if (typeIsInEntryCategory(type, category))
            categories += " " + std::to_string(category);
    addWords(functions, entryFunctionWords(), type->entryFlags);
    Text text = "entry" + categories;
    addPart(text, functions);
    if (isEntrySymbol(type))
        addPart(text, "symbol " + getEntrySymbol(type));
    showFact(level, text);
}

/* The table of an ANY DEFINED BY. */
void showAnyRows(int level, AsnType *type) {
    if (getTypeMainType(type) != TYP_ANY)
        return;
    forAnyType(type, [&](AsnType *, AsnValue *value, AsnType *row, int) {
        showFact(level, valueText(value) + " is " + getTypeRef(row));
    });
}

} // namespace

void showTypeFacts(int level, AsnType *type) {
    showPlace(level, type);
    if (getTypeMainType(type) == TYP_EXTENSION_MARKER)
        return;
    showTags(level, type);
    showConstraints(level, type);
    showBits(level, type);
    showEntry(level, type);
    if (isDefinedType(type) && isVisibleType(type))
        showFact(level, "visible to other modules");
    showAnyRows(level, type);
    const TNode position = storedTNode(type->posModule, type->posRecord);
    showWrittenOptions(level, type->posModule, {position.tedFirst, position.tedLast});
}
