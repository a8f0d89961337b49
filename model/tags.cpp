#include "model/tags.h"

#include "base/files.h"
#include "model/compwalk.h"
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

/* One "if" that compares the current tag. */
struct TagTest {
    int file;
    const char *tagRef;
    bool equal;
    int count = 0; /* alternatives written or in `line` */
    Text line;
    int nesting = 0;
    ChainGuard alternatives{REC_TNODE};
};

void compareWithEnd(TagTest *test) {
    test->line.append(test->tagRef).append(test->equal ? " != EOC_TAG" : " == EOC_TAG");
}

void ifTagEqual(TagTest *test, const AsnTag *tag) {
    appendParts(test->line, {test->tagRef, test->equal ? " == " : " != ", getTagStri(tag, false)});
}

void compareWithOutermostTag(TagTest *test, AsnType *type) {
    forOutermostTag(type, [&](AsnType *, const AsnTag *tag, int) { ifTagEqual(test, tag); });
}

/* An alternative of an untagged CHOICE: on a line of its own, behind the operator. Alternatives
   that are untagged CHOICEs themselves are flattened; more alternatives than records means a CHOICE
   that contains itself. */
void ifChoiceTag(TagTest *test, AsnType *comp) {
    if (comp->base.mainType == TYP_EXTENSION_MARKER)
        return;
    test->alternatives.step(comp->posModule);
    if (comp->nrOfTags == 0 && comp->base.mainType == TYP_CHOICE) {
        const NestingGuard guard(&test->nesting, comp->posModule);
        forEachTypeComp(comp, [&](AsnType *, AsnType *inner, int) { ifChoiceTag(test, inner); });
        return;
    }
    if (test->count > 0) {
        putF(test->file, test->line.append(test->equal ? " ||\n" : " &&\n"));
        test->line = " ";
    }
    ++test->count;
    if (comp->nrOfTags == 0)
        compareWithEnd(test);
    else
        compareWithOutermostTag(test, comp);
}

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

/* Tags in C: the macros of the run-time library, and a comparison with them. */

Text getTagClassStri(const AsnTag *tag) {
    return tagClassWord(tag->tagClass);
}

Text getTagStri(const AsnTag *tag, bool constructed) {
    return getTagStriClassNumber(tag->tagClass, constructed, tag->tagNumber);
}

Text getTagStriClassNumber(int tagClass, bool constructed, std::int32_t number) {
    return concat("TAG(", tagClassWord(tagClass), constructed ? ", TAG_STR, " : ", TAG_PRI, ",
                  number, ")");
}

void printIfTagForBER(int file, AsnType *type, const char *tagRef, bool isElse, bool equal) {
    TagTest test{file, tagRef == nullptr ? "tag" : tagRef, equal, 0, {}, 0, ChainGuard(REC_TNODE)};
    test.line = isElse ? "else if (" : "if (";
    const int mainType = type->base.mainType;
    if (type->nrOfTags == 0 && mainType == TYP_CHOICE)
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) { ifChoiceTag(&test, comp); });
    else if (type->nrOfTags == 0 &&
             (mainType == TYP_ANY || mainType == TYP_OPEN || mainType == TYP_FIELDLIST))
        compareWithEnd(&test);
    else
        compareWithOutermostTag(&test, type);
    putF(file, test.line.append(")"));
}
