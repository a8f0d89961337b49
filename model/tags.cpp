#include "model/tags.h"

#include "store/records.h"

namespace {

constexpr const char *TAG_CLASS_WORDS[] = {"TAG_UNI", "TAG_APP", "TAG_CTX", "TAG_PRV"};

const char *tagClassWord(int tagClass) {
    return tagClass >= TAG_UNI && tagClass <= TAG_PRV ? TAG_CLASS_WORDS[tagClass] : "";
}

const DynaNode &tagEntry(const AsnType *type, int nbr) {
    const DynaNode *entry = type->tagEntries.begin();
    while (entry->tag.tagClass == TAG_CLASS_NONE || nbr-- > 0)
        ++entry;
    return *entry;
}

bool isSelectedTag(const AsnType *type, int nbr, int mask) {
    const bool outermost = nbr == 0;
    const bool innermost = nbr == type->nrOfTags - 1;
    return (outermost && (mask & TAGS_OUTERMOST) != 0) ||
           (innermost && (mask & TAGS_INNERMOST) != 0) ||
           (!outermost && !innermost && (mask & TAGS_BETWEEN) != 0);
}

/* Calls for the tags that `wanted` accepts; the call sees a copy. */
template <typename Wanted>
void callForTags(AsnType *type, const TagCall &func, bool reverse, Wanted wanted) {
    const int count = type->nrOfTags;
    for (int i = 0; i < count; ++i) {
        const int nbr = reverse ? count - 1 - i : i;
        if (!wanted(nbr))
            continue;
        const AsnTag tag = tagEntry(type, nbr).tag;
        func(type, &tag, nbr);
    }
}

/* Was the tag written on the position itself? Universal tags never are. */
bool isLocalTag(const AsnType *type, const DynaNode &entry) {
    return entry.module == type->posModule && entry.record == type->posRecord &&
           entry.tag.tagClass != TAG_UNI;
}

constexpr int ALL_TAGS = TAGS_OUTERMOST | TAGS_BETWEEN | TAGS_INNERMOST;
constexpr int ALL_BUT_INNERMOST = TAGS_OUTERMOST | TAGS_BETWEEN;
constexpr int ALL_BUT_OUTERMOST = TAGS_BETWEEN | TAGS_INNERMOST;

} // namespace

/* Tags were gathered when the handle was filled; a walk selects from them by their place, so
   that the callers say which end of the list they write. */

void forTags(AsnType *type, TagCall func, int mask, bool reverse) {
    if (type->nrOfTags == 1 && mask == ALL_BUT_INNERMOST)
        return;
    requireCall(func);
    callForTags(type, func, reverse, [&](int nbr) { return isSelectedTag(type, nbr, mask); });
}

void forEachTag(AsnType *type, TagCall func) {
    forTags(type, func, ALL_TAGS, false);
}

void forOutermostTag(AsnType *type, TagCall func) {
    forTags(type, func, TAGS_OUTERMOST, false);
}

void forOutermostTags(AsnType *type, TagCall func) {
    forTags(type, func, ALL_BUT_INNERMOST, false);
}

void forOutermostTagsRevOrd(AsnType *type, TagCall func) {
    forTags(type, func, ALL_BUT_INNERMOST, true);
}

void forInnermostTag(AsnType *type, TagCall func) {
    forTags(type, func, TAGS_INNERMOST, false);
}

void forInnermostTags(AsnType *type, TagCall func) {
    forTags(type, func, ALL_BUT_OUTERMOST, false);
}

void forEachLocalTag(AsnType *type, TagCall func) {
    requireCall(func);
    callForTags(type, func, false, [&](int nbr) { return isLocalTag(type, tagEntry(type, nbr)); });
}

/* Questions about single tags. */

int universalTagOfBase(AsnType *type) {
    const NodeContext keep(REC_TAG);
    ChainGuard guard(REC_TAG);
    int number = -1;
    for (RecNr nr = type->base.firstTagRec; nr != 0; nr = tagRec.next) {
        guard.step(type->contentModule);
        readRec(type->contentModule, REC_TAG, nr);
        number = tagRec.tagClass == TAG_UNI ? tagRec.tagNumber : -1;
    }
    return number;
}

int getNrOfTags(AsnType *type) {
    return type->nrOfTags;
}

int getTagClass(const AsnTag *tag) {
    return tag->tagClass;
}

int getTagNumber(const AsnTag *tag) {
    return tag->tagNumber;
}

Text getTagClassStri(const AsnTag *tag) {
    return tagClassWord(tag->tagClass);
}
