#include "cbet/embedded.h"

#include <cstring>

#include "base/files.h"
#include "model/backend.h"
#include "objects/classes.h"
#include "store/ketramac.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* Letter of the functions and side of the item; by TedPlace. */
constexpr const char *tedArr[TED_PLACES] = {
    "T1", "E1", "D1", "A1", "P1", /* in front of it */
    "T2", "E2", "D2", "A2", "P2", /* behind it */
};
/* In a stored text a character without meaning, the place, another such character, then the line.
 */
constexpr std::size_t PLACE_COLUMN = 1;
constexpr std::size_t LINE_COLUMN = 4;

bool isBehind(int place) {
    return place >= TED_TYP_BEHIND;
}

void printLine(int slot, const char *line) {
    if (*line == '#')
        putDirective(slot, line);
    else
        putF(slot, line);
    putF(slot, "\n");
}

void printEntry(int slot, const DynaNode &entry, int place) {
    if ((entry.flags & DYNA_EMBEDDED_TEXT) != 0)
        printTEDs(slot, entry.module, entry.tedFirst, entry.tedLast, place);
}

/* The first `count` entries: outermost first in front of an item, outermost last behind it. */
void printEntries(int slot, const DynaNodes &entries, std::size_t count, int place) {
    if (!isBehind(place)) {
        for (std::size_t i = 0; i < count; ++i)
            printEntry(slot, entries[i], place);
    } else {
        for (std::size_t i = count; i > 0; --i)
            printEntry(slot, entries[i - 1], place);
    }
}

/* The handle's copy of the record no longer tells this. */
bool baseHasText(const AsnType *type) {
    return (storedTNode(type->contentModule, type->contentRecord).optionBits &
            optionMask(OPT_EMBEDDED_TEXT)) != 0;
}

/* The number of entries in front of the base's own; all if it has none. */
std::size_t entriesBeforeBase(const AsnType *type) {
    const auto &entries = type->tagEntries;
    if (baseHasText(type))
        for (std::size_t i = entries.size(); i > 0; --i)
            if (entries[i - 1].tedFirst == type->base.tedFirst)
                return i - 1;
    return entries.size();
}

/* The text of a definition that has components is written where they are. */
bool definitionShowsBaseText(const AsnType *type, int place) {
    const TNode &base = type->base;
    if (place == TED_TYP_BEFORE || place == TED_TYP_BEHIND)
        return false;
    if ((base.optionBits & optionMask(OPT_SKIPPED)) != 0)
        return true;
    bool isExtensibleStructure =
        (base.typeFlags & TYPE_EXTENSIBLE) != 0 && isStructureKind(base.mainType);
    return base.nrOfComps == 0 && !isExtensibleStructure;
}

} // namespace

void printTEDs(int slot, ModRec *module, RecNr first, RecNr last, int place) {
    if (slot == 0 || place < 0 || place >= TED_PLACES)
        return;
    for (RecNr nr = first; nr <= last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_TEXT || tedRec.tedText == 0)
            continue;
        const char *text = getStri(module, tedRec.tedText);
        std::size_t length = std::strlen(text);
        if (length >= PLACE_COLUMN + 2 && std::strncmp(text + PLACE_COLUMN, tedArr[place], 2) == 0)
            printLine(slot, length > LINE_COLUMN ? text + LINE_COLUMN : "");
    }
}

void printObjClassEmbeddingOptions(int slot, AsnObjClass *objClass, int place) {
    const DynaNodes &entries = objClass->embeddingEntries;
    printEntries(slot, entries, entries.size(), place);
}

void printTypeEmbeddingOptions(int slot, AsnType *type, int place) {
    std::size_t count = entriesBeforeBase(type);
    if (!isBehind(place))
        printEntries(slot, type->tagEntries, count, place);
    if (type->compStatus != TCS_HEADER || definitionShowsBaseText(type, place))
        printBaseTypeEmbeddingOptions(slot, type, place);
    if (isBehind(place))
        printEntries(slot, type->tagEntries, count, place);
}

void printLocalTypeEmbeddingOptions(int slot, AsnType *type, int place) {
    for (const DynaNode &entry : type->tagEntries) {
        if (entry.module != type->posModule || entry.record != type->posRecord)
            break;
        printEntry(slot, entry, place);
    }
}

void printBaseTypeEmbeddingOptions(int slot, AsnType *type, int place) {
    if (baseHasText(type))
        printTEDs(slot, type->contentModule, type->base.tedFirst, type->base.tedLast, place);
}
