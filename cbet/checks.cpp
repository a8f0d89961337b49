#include "cbet/checks.h"

#include <cstdio>
#include <vector>

#include "base/files.h"
#include "cbet/builtintypes.h"
#include "cbet/comptests.h"
#include "cbet/constants.h"
#include "cbet/engineparts.h"
#include "cbet/forms.h"
#include "cbet/homes.h"
#include "cbet/lists.h"
#include "cbet/reports.h"
#include "cbet/vars.h"
#include "model/constraints.h"
#include "model/iterators.h"
#include "model/typequeries.h"
#include "model/valuequeries.h"
#include "model/valuesets.h"
#include "model/valuetexts.h"
#include "store/ketramac.h"
#include "store/records.h"
#include "store/values.h"

namespace {

/* One check: the constraints of a type, collected in one variable. */
struct Check {
    int file = 0;
    bool okDefined = false;  /* the block with the variable is open */
    bool sorry = false;      /* the constraint in hand can't be put into code */
    Text characters;         /* of the alphabet in hand */
    bool allAreKnown = true; /* and it has no others */
    int depth = 0;           /* of constraints within one another */
};

/* {
   BOOLE ok1;
   ok1 =          or later: ok1 = ok1 && */
void assignOk(Check &check) {
    if (check.okDefined) {
        putF(check.file, cOkVarRef(), " =");
        putF(check.file, " ", cOkVarRef(), " && ");
        return;
    }
    cOpenBrace(check.file);
    cIncOkVarCount();
    cOkVarDef(check.file);
    putF(check.file, cOkVarRef(), " = ");
    check.okDefined = true;
}

void report(int file) {
    const Block block(file);
    cReportError(file, "CONSTRAINT_FAIL");
}

/* if (!ok1){
   reportError (ASNG_F(asncodg) CONSTRAINT_FAIL);
   }
   } */
void checkOk(Check &check) {
    if (!check.okDefined)
        return;
    putF(check.file, "if (!", cOkVarRef(), ")");
    report(check.file);
    cCloseBrace(check.file);
    cDecOkVarCount();
}

/* --- ranges --- */

void printNumber(int file, const char *prefix, AsnValue *value, const char *suffix) {
    if (getValueMainType(value) == TYP_REAL)
        putF(file, prefix, doubleRealValueStri(value), suffix);
    else
        putF(file, prefix, integerValueStri(value), suffix);
}

void simpleValueRangeConstr(Check &check, AsnType *type, AsnValue *low, bool lowClosed,
                            AsnValue *high, bool highClosed) {
    const Text value = cHome(type, HOME_VALUE);
    bool hasLow = !isMinusInfinity(low);
    if (hasLow) {
        printNumber(check.file, "", low, lowClosed ? " <= " : " < ");
        putF(check.file, value);
    }
    if (isPlusInfinity(high))
        return;
    if (hasLow)
        putF(check.file, " && ");
    putF(check.file, value);
    putF(check.file, highClosed ? " <=" : " <");
    printNumber(check.file, " ", high, "");
}

/* ok1 = (0.0 <= home->x && home->x < 1.0) ; */
void valueRangeConstr(Check &check, AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high,
                      bool highClosed) {
    int kind = getTypeMainType(type);
    if (kind != TYP_INTEGER && kind != TYP_REAL) {
        check.sorry = true;
        return;
    }
    if (isMinusInfinity(low) && isPlusInfinity(high))
        return; /* nothing to compare */
    assignOk(check);
    putF(check.file, "(");
    simpleValueRangeConstr(check, type, low, lowClosed, high, highClosed);
    putF(check.file, ") ;\n");
}

/* --- sizes --- */

/* ok1 = (staArrLen (home) >= 1); The upper bound is checked by the list's loop. False, and nothing
   written, where nothing remains to be checked. */
bool simpleSizeConstr(Check &check, AsnType *type, const Int64Range *range) {
    if (!isListType(type) || i64iszero(range->lower))
        return false;
    assignOk(check);
    putF(check.file, "(", cGetSize(type, false), range->lower == range->upper ? " ==" : " >=");
    putF(check.file, " ", i64tostr(range->lower));
    return true;
}

/* One alternative of "ok1 = ((2 <= n1 && n1 <= 4) || (n1 == 7));". */
void sizeConstr(Check &check, AsnType *type, const Int64Range *range, int nbr) {
    Text size, lower = i64tostr(range->lower), upper = i64tostr(range->upper);
    size = cGetSize(type, false);
    const char *s = size.c_str();
    if (nbr == 0) {
        assignOk(check);
        putF(check.file, "(");
    } else {
        putF(check.file, " || ");
    }
    if (range->lower == range->upper)
        putF(check.file, "(", s, " == ", lower, ")");
    else if (i64ismax(range->upper))
        putF(check.file, "(", lower, " <= ", s, ")");
    else
        putF(check.file, "(", lower, " <= ", s, " && ", s, " <= ", upper, ")");
}

/* The loop that reads a list of a definition of its own knows the bound of that definition only. */
bool isUpperSizeChecked(AsnType *type, sint64 upper) {
    const bool isReference = getFatherOfTypeComp(type) != nullptr || isSynonymType(type);
    bool isChecked = true;
    if (isReference && isListType(type) && cIsDefinedBaseType(type))
        forDefinedBaseType(type, [&](AsnType *definition) {
            isChecked = i64cmp(definition->upperEndpoint, upper) <= 0;
        });
    return isChecked;
}

void checkSize(Check &check, AsnType *type, AsnConstraint *constraint) {
    std::vector<Int64Range> ranges;
    forInt64SizeConstraintValueSet(
        type, constraint,
        [&](AsnType *, const Int64Range *range, int) { ranges.push_back(*range); });
    if (ranges.empty()) { /* no size is right */
        assignOk(check);
        putF(check.file, "(FALSE);\n");
        return;
    }
    const Int64Range &first = ranges.front();
    if (isSimpleSizeConstraintValueSet(type) && ranges.size() == 1 &&
        (first.lower == first.upper || isUpperSizeChecked(type, first.upper))) {
        if (!simpleSizeConstr(check, type, &first))
            return;
    } else {
        for (std::size_t nbr = 0; nbr < ranges.size(); ++nbr)
            sizeConstr(check, type, &ranges[nbr], static_cast<int>(nbr));
    }
    putF(check.file, ");\n");
}

/* --- permitted alphabets --- */

/* More characters than a range of two-byte ones has are no text that a compiler would take. */
constexpr std::uint32_t MAX_ALPHABET_RANGE = 0x10000;

bool singleCharacter(AsnValue *value, std::uint32_t *character) {
    RestrCharStri text = makeRestrCharStri(value->baseModule, value->base);
    if (text.length() != 1)
        return false;
    if (text.kind == TYP_BMPSTR)
        *character = text.text16[0];
    else if (text.kind == TYP_UNISTR)
        *character = text.text32[0];
    else
        *character = static_cast<unsigned char>(text.text8[0]);
    return true;
}

/* The check compares with a text of C, which a zero ends and which has no characters beyond 255. */
void allowCharacter(Check &check, std::uint64_t character) {
    constexpr std::uint64_t LAST = 0xFF;
    if (character == 0 || character > LAST)
        check.allAreKnown = false;
    else
        check.characters += static_cast<char>(character);
}

void constructRangeCharacters(Check &check, AsnValue *low, bool lowClosed, AsnValue *high,
                              bool highClosed) {
    int kind = getValueMainType(low);
    std::uint32_t first = 0, last = 0;
    if (!lowClosed || !highClosed || kind != getValueMainType(high) || !cBuiltinType(kind).hasRanges ||
        !singleCharacter(low, &first) || !singleCharacter(high, &last) ||
        (last >= first && last - first >= MAX_ALPHABET_RANGE)) {
        check.allAreKnown = false;
        return;
    }
    for (std::uint64_t c = first; c <= last; ++c) /* `last` may be the greatest of its width */
        allowCharacter(check, c);
}

void constructSingleCharacters(Check &check, AsnValue *value) {
    const RestrCharStri text = makeRestrCharStri(value->baseModule, value->base);
    if (!isText8Kind(text.kind) && text.kind != TYP_BMPSTR && text.kind != TYP_UNISTR)
        check.allAreKnown = false;
    for (const char c : text.text8)
        allowCharacter(check, static_cast<unsigned char>(c));
    for (const char16_t c : text.text16)
        allowCharacter(check, c);
    for (const char32_t c : text.text32)
        allowCharacter(check, c);
}

void constructAllowedCharacters(Check &check, AsnType *type, AsnConstraint *constraint) {
    NestingGuard guard(&check.depth, type->posModule, MAX_NESTING);
    auto inner = [&](AsnType *t, AsnConstraint *c) { constructAllowedCharacters(check, t, c); };
    switch (getConstraintKind(constraint)) {
    case SUB_UNION:
        forUnionConstraint(type, constraint,
                           [&](AsnType *t, AsnConstraint *c, int) { inner(t, c); });
        break;
    case SUB_RANGE:
        forValueRangeConstraint(
            type, constraint,
            [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
                constructRangeCharacters(check, low, lowClosed, high, highClosed);
            });
        break;
    case SUB_ALPHABET:
        forPermittedAlphabetConstraint(type, constraint, inner);
        break;
    case SUB_SINGLE_VALUE:
        forSingleValueConstraint(type, constraint, [&](AsnType *, AsnValue *value) {
            constructSingleCharacters(check, value);
        });
        break;
    case SUB_INCLUDES:
        forContainedSubtypeConstraint(type, constraint, inner);
        break;
    default:
        check.allAreKnown = false;
        break;
    }
}

/* Dynamic strings hold octets, whatever is in them; only static ones have elements of four. */
bool hasElementsOfItsCharacters(AsnType *type) {
    return cIsStaticString(type) || (cIsDynamicString(type) && getTypeMainType(type) != TYP_UNISTR);
}

/* ok1 = (staChrStrStrspn (&home->x, "abc") == staStrLen (&home->x)); */
void alphabetConstr(Check &check, AsnType *type, AsnConstraint *constraint) {
    check.characters.clear();
    check.allAreKnown = true;
    if (hasElementsOfItsCharacters(type))
        constructAllowedCharacters(check, type, constraint);
    if (!hasElementsOfItsCharacters(type) || !check.allAreKnown) {
        check.sorry = true;
        return;
    }
    assignOk(check);
    putF(check.file, "(", cIsStaticString(type) ? "sta" : "dyn", "ChrStrStrspn",
         getVFSize(type) == VF_NONE ? "0" : "", " (");
    putF(check.file, cHome(type, HOME_ADDRESS), ",");
    putF(check.file, " \"");
    putUnbroken(check.file, cStringText(check.characters));
    putUnbroken(check.file, "\") =="); /* a line may not end within the literal */
    putF(check.file, " ", cGetSize(type, true), ");\n");
}

/* --- single values --- */

void singleValueConstr(Check &check, AsnType *type, AsnValue *value) {
    int kind = getTypeMainType(type);
    bool inForm = getVF(type) != VF_LIST;
    if (inForm && kind == TYP_BOOLEAN) {
        assignOk(check);
        putF(check.file, "(", cHome(type, HOME_VALUE), " ==");
        putF(check.file, " ", booleanValueStri(value), ");\n");
    } else if (inForm && isText8Kind(kind)) {
        assignOk(check);
        const char *call = cIsDynamicString(type) ? "(strcmp ((char *)" : "(strcmp (";
        putF(check.file, call, cHome(type, HOME_MEMBER), "st,");
        forCharacterStringValue(value, [&](AsnValue *, std::int32_t, const char *expected) {
            putF(check.file, " \"", cStringText(expected), "\") == 0);\n");
        });
    } else {
        check.sorry = true;
    }
}

/* --- one constraint --- */

void checkConstraint(Check &check, AsnType *type, AsnConstraint *constraint);

void checkByKind(Check &check, AsnType *type, AsnConstraint *constraint) {
    switch (getConstraintKind(constraint)) {
    case SUB_CATENATION:
        forEachCatenatedConstraint(
            type, constraint, [&](AsnType *t, AsnConstraint *c) { checkConstraint(check, t, c); });
        break;
    case SUB_RANGE:
        forValueRangeConstraint(
            type, constraint,
            [&](AsnType *t, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
                valueRangeConstr(check, t, low, lowClosed, high, highClosed);
            });
        break;
    case SUB_ALPHABET:
        forPermittedAlphabetConstraint(
            type, constraint, [&](AsnType *t, AsnConstraint *c) { alphabetConstr(check, t, c); });
        break;
    case SUB_SIZE:
        checkSize(check, type, constraint);
        break;
    case SUB_SINGLE_VALUE:
        forSingleValueConstraint(type, constraint, [&](AsnType *t, AsnValue *value) {
            singleValueConstr(check, t, value);
        });
        break;
    case SUB_TABLE:
    case SUB_PASSED_OVER:
        break;
    default:
        check.sorry = true;
        break;
    }
}

void warnOfUnimplemented(int file, AsnType *type) {
    if (file == 0)
        return cSayAtType(type, "warning: Unimplemented type constraint.");
    putF(file, "/* WARNING: Unimplemented type constraint. */\n");
    const Text name = nameOfF(file);
    std::fprintf(stderr, "%s:%u: warning: Unimplemented type constraint.\n", name.c_str(),
                 static_cast<unsigned>(linesInF(file)));
}

void checkConstraint(Check &check, AsnType *type, AsnConstraint *constraint) {
    NestingGuard guard(&check.depth, type->posModule, MAX_NESTING);
    check.sorry = false;
    checkByKind(check, type, constraint);
    if (!check.sorry)
        return;
    warnOfUnimplemented(check.file, type);
    check.sorry = false; /* a catenation around this one doesn't say it again */
}

/* --- the constraints of a type --- */

/* The run-time function has the one range of sizes as its arguments. */
bool isOnlyOneSimpleSizeConstraint(AsnType *type) {
    if (!isSimpleSizeConstraintValueSet(type) || getNrOfTypeConstraints(type) != 1)
        return false;
    bool size = false;
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        size = getConstraintKind(constraint) == SUB_SIZE;
    });
    return size;
}

void checkLeaf(Check &check, AsnType *type) {
    auto each = [&](AsnType *t, AsnConstraint *constraint) {
        checkConstraint(check, t, constraint);
    };
    int kind = getTypeMainType(type);
    if (kind == TYP_INTEGER || kind == TYP_ENUM) {
        if (cCheckIntegerValueSet(check.file, type))
            report(check.file);
    } else if (isStringKind(kind)) {
        if (!isOnlyOneSimpleSizeConstraint(type))
            forEachTypeConstraint(type, each);
    } else {
        forEachTypeConstraint(type, each);
    }
}

} // namespace

void cCheckConstraints(int file, AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED) || testTypeOption(type, OPT_FRAME))
        return;
    Check check;
    check.file = file;
    if (typeHasBody(type)) {
        if (isLocalTypeConstraints(type))
            forEachLocalTypeConstraint(type, [&](AsnType *t, AsnConstraint *constraint) {
                checkConstraint(check, t, constraint);
            });
    } else if (isConstraints(type)) {
        checkLeaf(check, type);
    }
    checkOk(check);
}
