#include "tool/describe.h"

#include <sstream>

#include "model/constraints.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"
#include "model/valuetexts.h"
#include "model/valuewalk.h"
#include "store/ketramac.h"
#include "store/records.h"

namespace tool {

namespace {

/* What a report has room for. */
constexpr std::size_t MOST_CHARACTERS = 120;

/* Constraints as ASN.1 writes them. A text without meaning marks what has no place in a report. */
struct Rules {
    std::string text;
    int depth = 0;
    bool known = true;
};

std::string stringText(AsnValue *value) {
    std::string text = "\"";
    forCharacterStringValue(value, [&](AsnValue *, std::int32_t length, const char *characters) {
        for (const char c : std::string(characters, static_cast<std::size_t>(length)))
            text += c == '"' ? "\"\"" : std::string(1, c);
    });
    return text + "\"";
}

void addValue(Rules &rules, AsnValue *value) {
    const int kind = getValueMainType(value);
    if (isMinusInfinity(value))
        rules.text += "MIN";
    else if (isPlusInfinity(value))
        rules.text += "MAX";
    else if (kind == TYP_INTEGER)
        rules.text += integerValueStri(value);
    else if (kind == TYP_BOOLEAN)
        rules.text += booleanValue(value) ? "TRUE" : "FALSE";
    else if (kind == TYP_REAL)
        rules.text += (std::ostringstream() << doubleRealValue(value)).str();
    else if (isText8Kind(kind) && kind != TYP_OBJDESCR)
        rules.text += stringText(value);
    else
        rules.known = false;
}

void addRule(Rules &rules, AsnType *type, AsnConstraint *constraint);

void addRange(Rules &rules, AsnType *type, AsnConstraint *constraint) {
    forValueRangeConstraint(
        type, constraint,
        [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
            addValue(rules, low);
            rules.text += lowClosed ? ".." : "<..";
            rules.text += highClosed ? "" : "<";
            addValue(rules, high);
        });
}

/* Elements of a set within another one stand in parentheses. */
void addSet(Rules &rules, AsnType *type, AsnConstraint *constraint, const char *between) {
    const auto add = [&](AsnType *t, AsnConstraint *element, int number) {
        rules.text += number > 0 ? between : "";
        const bool isSet = getConstraintKind(element) < SUB_RANGE;
        rules.text += isSet ? "(" : "";
        addRule(rules, t, element);
        rules.text += isSet ? ")" : "";
    };
    forUnionConstraint(type, constraint, add);
    forIntersectionConstraint(type, constraint, add);
}

void addWithin(Rules &rules, const char *word, AsnType *type, AsnConstraint *constraint) {
    rules.text += std::string(word) + " (";
    addRule(rules, type, constraint);
    rules.text += ")";
}

void addRule(Rules &rules, AsnType *type, AsnConstraint *constraint) {
    NestingGuard guard(&rules.depth, type->posModule);
    if (rules.text.size() > 2 * MOST_CHARACTERS)
        return;
    switch (getConstraintKind(constraint)) {
    case SUB_UNION:
        return addSet(rules, type, constraint, " | ");
    case SUB_INTERSECTION:
        return addSet(rules, type, constraint, " ^ ");
    case SUB_RANGE:
        return addRange(rules, type, constraint);
    case SUB_SINGLE_VALUE:
        return forSingleValueConstraint(
            type, constraint, [&](AsnType *, AsnValue *value) { addValue(rules, value); });
    case SUB_SIZE:
        return forSizeConstraint(type, constraint, [&](AsnType *t, AsnConstraint *size) {
            addWithin(rules, "SIZE", t, size);
        });
    case SUB_ALPHABET:
        return forPermittedAlphabetConstraint(
            type, constraint,
            [&](AsnType *t, AsnConstraint *alphabet) { addWithin(rules, "FROM", t, alphabet); });
    default:
        rules.known = false;
    }
}

/* Least and greatest value or size say all of it. */
bool isRange(AsnType *type, AsnConstraint *constraint) {
    bool isPlain = getTypeMainType(type) == TYP_INTEGER && isLeafConstraint(constraint);
    forSizeConstraint(type, constraint, [&](AsnType *, AsnConstraint *size) {
        isPlain = isLeafConstraint(size);
    });
    return isPlain;
}

/* Parts of an intersection or a catenation are rules of their own. */
void addParts(std::string &text, AsnType *type, AsnConstraint *constraint) {
    const auto add = [&](AsnType *t, AsnConstraint *part) {
        if (isRange(t, part))
            return;
        Rules rules;
        addRule(rules, t, part);
        if (rules.known && !rules.text.empty())
            text += " (" + rules.text + ")";
    };
    switch (getConstraintKind(constraint)) {
    case SUB_INTERSECTION:
        forIntersectionConstraint(type, constraint,
                                  [&](AsnType *t, AsnConstraint *part, int) { add(t, part); });
        break;
    case SUB_CATENATION:
        forEachCatenatedConstraint(type, constraint, add);
        break;
    default:
        add(type, constraint);
    }
}

} // namespace

std::string rulesOf(AsnType *type) {
    std::string text;
    forEachTypeConstraint(type, [&](AsnType *t, AsnConstraint *constraint) {
        if (text.size() <= MOST_CHARACTERS)
            addParts(text, t, constraint);
    });
    if (text.size() > MOST_CHARACTERS)
        text = text.substr(0, MOST_CHARACTERS) + " ...";
    return text;
}

} // namespace tool
