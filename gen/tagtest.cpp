#include "gen/tagtest.h"

#include "base/files.h"
#include "cbet/builtin.h"
#include "model/compwalk.h"
#include "model/tags.h"
#include "model/typequeries.h"
#include "store/records.h"

namespace {

constexpr const char *CURRENT_TAG = "d_CurrTag ()";

/* The condition of one "if". */
struct TagCondition {
    int file;
    bool isEqual;
    int count = 0; /* alternatives written or in `line` */
    Text line{};
    int nesting = 0;
    ChainGuard alternatives{REC_TNODE};
};

/* A type without a tag: whatever comes, as long as something does. */
void compareWithEnd(TagCondition *condition) {
    appendParts(condition->line, {CURRENT_TAG, condition->isEqual ? " != EOC_TAG" : " == EOC_TAG"});
}

void compareWithOutermostTag(TagCondition *condition, AsnType *type) {
    if (getNrOfTags(type) > 0)
        appendParts(condition->line, {CURRENT_TAG, condition->isEqual ? " == " : " != ",
                                      cOutermostTag32Stri(type, false)});
}

/* An alternative of an untagged CHOICE: on a line of its own, behind the operator. Alternatives
   that are untagged CHOICEs themselves are flattened; more alternatives than records means a CHOICE
   that contains itself. */
void compareWithAlternative(TagCondition *condition, AsnType *comp) {
    const int mainType = getTypeMainType(comp);
    if (mainType == TYP_EXTENSION_MARKER)
        return;
    condition->alternatives.step(comp->posModule);
    if (getNrOfTags(comp) == 0 && mainType == TYP_CHOICE) {
        const NestingGuard guard(&condition->nesting, comp->posModule);
        forEachTypeComp(comp, [&](AsnType *, AsnType *inner, int) {
            compareWithAlternative(condition, inner);
        });
        return;
    }
    if (condition->count > 0) {
        putF(condition->file, condition->line.append(condition->isEqual ? " ||\n" : " &&\n"));
        condition->line = " ";
    }
    ++condition->count;
    if (getNrOfTags(comp) == 0)
        compareWithEnd(condition);
    else
        compareWithOutermostTag(condition, comp);
}

} // namespace

void genTagTest(int file, AsnType *type, TagTest test) {
    TagCondition condition{file, test.isEqual};
    condition.line = test.isElse ? "else if (" : "if (";
    const int mainType = getTypeMainType(type);
    if (getNrOfTags(type) == 0 && mainType == TYP_CHOICE)
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
            compareWithAlternative(&condition, comp);
        });
    else if (getNrOfTags(type) == 0 &&
             (mainType == TYP_ANY || mainType == TYP_OPEN || mainType == TYP_FIELDLIST))
        compareWithEnd(&condition);
    else
        compareWithOutermostTag(&condition, type);
    putF(file, condition.line.append(")"));
}
