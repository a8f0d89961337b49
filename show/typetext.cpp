#include "show/texts.h"

#include "model/compwalk.h"
#include "model/tags.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"
#include "show/references.h"
#include "show/writer.h"
#include "store/records.h"
#include "store/recordwords.h"

namespace {

int depth = 0;

Text namedNumbersText(AsnType *type) {
    Text items;
    forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int nbr) {
        if (items.size() > MAX_SHOWN)
            return;
        Text item;
        if (nbr < 0)
            item = "...";
        else
            item = concat(getRefOf(value), ("(" + numberText(int64Value(value)) + ")"));
        addPart(items, item);
    });
    return " {" + items + "}";
}

/* "ANY DEFINED BY component" */
Text anyText(AsnType *type) {
    if (!isAnyDefinedByType(type))
        return "ANY";
    Text name = pathEndName(type->contentModule, type->base.auxRecord);
    return "ANY DEFINED BY " + name.erase(0, name.rfind('.') + 1);
}

/* Those of a list stand in front of its OF. */
Text constrainedText(AsnType *type) {
    constexpr std::string_view ofList = " OF";
    Text text = kindInShort(type);
    const Text constraints = constraintsText(type, true);
    const bool isList = text.ends_with(ofList) && hasPartsHere(type);
    if (!constraints.empty())
        text.insert(text.size() - (isList ? ofList.size() : 0), " " + constraints);
    return text;
}

} // namespace

Text kindInShort(AsnType *type) {
    if (standsForDefinition(type))
        return referenceText(type);
    const int mainType = getTypeMainType(type);
    if (mainType == TYP_ANY)
        return anyText(type);
    Text text = typeWord(mainType);
    if (isNamedNumbers(type))
        text += namedNumbersText(type);
    return text;
}

Text tagText(const AsnTag *tag) {
    constexpr const char *classes[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
    const int tagClass = getTagClass(tag);
    const bool isKnown = tagClass >= TAG_UNI && tagClass <= TAG_PRV;
    return "[" + Text(isKnown ? classes[tagClass] : "? ") + std::to_string(getTagNumber(tag)) + "]";
}

Text typeHead(AsnType *type) {
    Text text;
    forEachLocalTag(type, [&](AsnType *, const AsnTag *tag, int) { text += tagText(tag) + " "; });
    return text + constrainedText(type);
}

Text presenceText(AsnType *comp) {
    Text text;
    if (isDefaultValue(comp))
        forDefaultValue(comp,
                        [&](AsnType *, AsnValue *value) { text = " DEFAULT " + valueText(value); });
    else if (isOptionalTypeComp(comp))
        text = " OPTIONAL";
    return text;
}

Text typeInShort(AsnType *type) {
    const NestingGuard nesting(&depth, type->posModule);
    const TNode &position = storedTNode(type->posModule, type->posRecord);
    if (position.compStatus == TCS_HEADER && position.nameIdx != 0)
        return typeRecordName(cMP, {type->posModule, type->posRecord});
    Text text = constrainedText(type);
    if (!hasPartsHere(type))
        return text;
    if (!isListType(type))
        return text + " {...}";
    forEachTypeCompOrElem(type, [&](AsnType *, AsnType *element, int) {
        if (text.size() <= MAX_SHOWN)
            text += " " + typeInShort(element);
    });
    return text;
}

bool hasPartsHere(AsnType *type) {
    return !standsForDefinition(type) && (isStructuredType(type) || isListType(type));
}
