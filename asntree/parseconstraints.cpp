#include <algorithm>

#include "asntree/parsing.h"

namespace asntree {

namespace {

Constraint *parseUnion(Parser &p);

Constraint *make(Parser &p, ConstraintKind kind) {
    return newConstraint(p.context.arena, kind, here(p));
}

bool atRange(const Parser &p) {
    return at(p, TokenKind::Range) || (at(p, TokenKind::Less) && nextIs(p, TokenKind::Range));
}

/* What follows the first value of an element: nothing, or the rest of a range. */
Constraint *finishValue(Parser &p, Value *value, ConstraintKind alone) {
    Constraint *result = newConstraint(p.context.arena, alone, value->place);
    if (!atRange(p)) {
        result->value = value;
        return result;
    }
    result->kind = ConstraintKind::Range;
    result->lower = value;
    result->lowerOpen = take(p, TokenKind::Less);
    advance(p);
    result->upperOpen = take(p, TokenKind::Less);
    result->upper = parseValue(p);
    if (!p.failed && result->upper->kind == ValueKind::Min)
        fail(p, result->upper->place, "a range doesn't end with MIN");
    if (!p.failed && value->kind == ValueKind::Max)
        fail(p, value->place, "a range doesn't begin with MAX");
    return result;
}

/* What a path of fields is, value or set, the governor and the objects tell. */
Constraint *finishField(Parser &p, Value *value) {
    return finishValue(p, value, ConstraintKind::Group);
}

Constraint *parseContained(Parser &p) {
    Constraint *result = make(p, ConstraintKind::Contained);
    result->includes = takeWord(p, Word::INCLUDES);
    result->type = parseType(p);
    if (p.failed || result->includes)
        return result;
    if (at(p, TokenKind::Colon)) {
        Value *value = newValue(p.context.arena, ValueKind::Typed, result->place);
        advance(p);
        value->type = result->type;
        value->inner = parseValue(p);
        value->end = behind(p);
        return finishValue(p, value, ConstraintKind::SingleValue);
    }
    if (result->type->kind != TypeKind::Field || !result->type->constraints.empty())
        return result;
    Value *value = newValue(p.context.arena, ValueKind::Field, result->place);
    value->end = result->type->end;
    value->ref = result->type->ref;
    value->fields = result->type->fields;
    value->fieldIsUpper = result->type->fieldIsUpper;
    return finishField(p, value);
}

Constraint *parseValueElement(Parser &p) {
    Value *value = parseValue(p);
    if (p.failed)
        return make(p, ConstraintKind::Bad);
    if (value->kind == ValueKind::Field)
        return finishField(p, value);
    return finishValue(p, value, ConstraintKind::SingleValue);
}

/* "@a.b", "@.a", "@..a"; dots may be lexed together. */
AtPath parseAtPath(Parser &p) {
    AtPath path;
    expect(p, TokenKind::At);
    for (;; advance(p)) {
        if (at(p, TokenKind::Dot))
            path.level += 1;
        else if (at(p, TokenKind::Range))
            path.level += 2;
        else if (at(p, TokenKind::Ellipsis))
            path.level += 3;
        else
            break;
    }
    do {
        if (at(p, TokenKind::Lower))
            path.steps.push_back(takeName(p));
        else
            failExpected(p, "the name of a component");
    } while (take(p, TokenKind::Dot));
    return path;
}

/* {Set} that is one reference. */
bool isOneSet(Parser &p, TokenRange range, Reference &ref) {
    Parser inside = parserOf(p.context, range);
    inside.words = p.words;
    if (range.empty() || !isUpperName(p, peek(inside)))
        return false;
    std::vector<Name> fields;
    std::vector<bool> fieldIsUpper;
    if (nextIs(inside, TokenKind::Dot) && !nextIs(inside, TokenKind::Upper, 2))
        return false;
    parseReference(inside, ref, fields, fieldIsUpper);
    return !inside.failed && inside.pos == inside.end && fields.empty();
}

/* Braces in a constraint: a table, with a relation or without, or a value. */
Constraint *parseBraces(Parser &p) {
    if (p.inSet)
        return parseValueElement(p);
    Value *value = parseValue(p);
    if (p.failed)
        return make(p, ConstraintKind::Bad);
    Reference ref;
    const bool relation = at(p, TokenKind::OpenBrace) && nextIs(p, TokenKind::At);
    const bool oneSet = isOneSet(p, value->tokens, ref);
    if (!relation && !oneSet)
        return finishValue(p, value, ConstraintKind::Group);
    Constraint *result = newConstraint(p.context.arena, ConstraintKind::Table, value->place);
    result->tokens = value->tokens;
    if (oneSet)
        result->ref = std::move(ref);
    if (!relation)
        return result;
    advance(p);
    do
        result->relation.push_back(parseAtPath(p));
    while (take(p, TokenKind::Comma));
    expect(p, TokenKind::CloseBrace);
    return result;
}

ComponentConstraint parsePart(Parser &p) {
    ComponentConstraint part;
    if (!at(p, TokenKind::Lower)) {
        failExpected(p, "the name of a component");
        return part;
    }
    part.name = takeName(p);
    if (at(p, TokenKind::OpenParen))
        part.inner = parseConstraint(p);
    if (takeWord(p, Word::PRESENT))
        part.presence = PresenceWord::Present;
    else if (takeWord(p, Word::ABSENT))
        part.presence = PresenceWord::Absent;
    else if (takeWord(p, Word::OPTIONAL))
        part.presence = PresenceWord::Optional;
    return part;
}

/* { ..., a (1..5), b ABSENT } */
void parseParts(Parser &p, Constraint &result) {
    if (!expect(p, TokenKind::OpenBrace))
        return;
    if (take(p, TokenKind::Ellipsis)) {
        result.partial = true;
        if (at(p, TokenKind::CloseBrace)) {
            slip(p.context.diagnostics, here(p), "WITH COMPONENTS names no component");
            advance(p);
            return;
        }
        expect(p, TokenKind::Comma);
    }
    while (!p.failed) {
        result.parts.push_back(parsePart(p));
        if (!take(p, TokenKind::Comma)) {
            if (!take(p, TokenKind::CloseBrace))
                failExpected(p, "\",\" or \"}\"");
            return;
        }
        if (isCommaTooMany(p, TokenKind::CloseBrace)) {
            advance(p);
            return;
        }
    }
}

Constraint *parseInner(Parser &p) {
    Constraint *result = make(p, ConstraintKind::WithComponent);
    advance(p);
    const Scoped<bool> scoped(p.inSet, false);
    if (takeWord(p, Word::COMPONENT)) {
        result->inner = parseConstraint(p);
    } else if (takeWord(p, Word::COMPONENTS)) {
        result->kind = ConstraintKind::WithComponents;
        parseParts(p, *result);
    } else {
        failExpected(p, "COMPONENT or COMPONENTS");
    }
    return result;
}

/* SIZE (...) and FROM (...) */
Constraint *parseNested(Parser &p, ConstraintKind kind) {
    Constraint *result = make(p, kind);
    advance(p);
    const Scoped<bool> scoped(p.inSet, false);
    result->inner = parseConstraint(p);
    return result;
}

Constraint *parseContents(Parser &p) {
    Constraint *result = make(p, ConstraintKind::Contents);
    if (takeWord(p, Word::CONTAINING))
        result->type = parseType(p);
    if (takeWord(p, Word::ENCODED)) {
        expectWord(p, Word::BY);
        result->value = parseValue(p);
    }
    return result;
}

Constraint *parseText(Parser &p, ConstraintKind kind) {
    Constraint *result = make(p, kind);
    advance(p);
    if (kind == ConstraintKind::Settings && !at(p, TokenKind::CString))
        failExpected(p, "a character string");
    result->value = parseValue(p);
    return result;
}

/* An element that begins with a reserved word. */
Constraint *parseWordElement(Parser &p) {
    switch (peek(p).word) {
    case Word::INCLUDES:
        return parseContained(p);
    case Word::SIZE:
        return parseNested(p, ConstraintKind::Size);
    case Word::FROM:
        return parseNested(p, ConstraintKind::Alphabet);
    case Word::WITH:
        return parseInner(p);
    case Word::PATTERN:
        return parseText(p, ConstraintKind::Pattern);
    case Word::SETTINGS:
        return parseText(p, ConstraintKind::Settings);
    case Word::CONTAINING:
    case Word::ENCODED:
        return parseContents(p);
    case Word::CONSTRAINED: {
        Constraint *result = make(p, ConstraintKind::UserDefined);
        advance(p);
        expectWord(p, Word::BY);
        result->tokens = skipBraces(p);
        return result;
    }
    default:
        break;
    }
    if (beginsValue(peek(p)) && !nextIs(p, TokenKind::Colon))
        return parseValueElement(p);
    if (beginsType(p, peek(p)))
        return parseContained(p);
    failExpected(p, "a constraint");
    return make(p, ConstraintKind::Bad);
}

bool isUpperValue(const Parser &p) {
    return at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot) && nextIs(p, TokenKind::Lower, 2);
}

/* `a < Type`, as against `a <.. b`. */
bool isSelection(const Parser &p) {
    return nextIs(p, TokenKind::Less) && !nextIs(p, TokenKind::Range, 2);
}

Constraint *parseElement(Parser &p) {
    const Nesting nesting(p);
    const Token &token = peek(p);
    if (take(p, TokenKind::OpenParen)) {
        Constraint *result = parseUnion(p);
        expect(p, TokenKind::CloseParen);
        return result;
    }
    if (token.kind == TokenKind::OpenBrace)
        return parseBraces(p);
    if (isUpperName(p, token) ? !isUpperValue(p) : token.kind == TokenKind::OpenBracket)
        return parseContained(p);
    if (token.kind == TokenKind::Word)
        return parseWordElement(p);
    if (token.kind == TokenKind::Lower && isSelection(p))
        return parseContained(p);
    if (beginsValue(token) || token.kind == TokenKind::Upper)
        return parseValueElement(p);
    failExpected(p, p.inSet ? "an element of the set" : "a constraint");
    return make(p, ConstraintKind::Bad);
}

Constraint *parseExcept(Parser &p) {
    Constraint *included = parseElement(p);
    if (!atWord(p, Word::EXCEPT))
        return included;
    Constraint *result = newConstraint(p.context.arena, ConstraintKind::Except, included->place);
    advance(p);
    result->operands = {included, parseElement(p)};
    return result;
}

bool takeIntersection(Parser &p) {
    return take(p, TokenKind::Caret) || takeWord(p, Word::INTERSECTION);
}

bool takeUnion(Parser &p) {
    return take(p, TokenKind::Bar) || takeWord(p, Word::UNION);
}

Constraint *parseIntersection(Parser &p) {
    Constraint *first = parseExcept(p);
    if (!takeIntersection(p))
        return first;
    Constraint *result = newConstraint(p.context.arena, ConstraintKind::Intersection, first->place);
    result->operands.push_back(first);
    do
        result->operands.push_back(parseExcept(p));
    while (takeIntersection(p));
    return result;
}

Constraint *parseUnion(Parser &p) {
    if (atWord(p, Word::ALL) && peek(p, 1).word == Word::EXCEPT) {
        Constraint *result = make(p, ConstraintKind::AllExcept);
        advance(p);
        advance(p);
        result->operands.push_back(parseElement(p));
        return result;
    }
    Constraint *first = parseIntersection(p);
    if (!takeUnion(p))
        return first;
    Constraint *result = newConstraint(p.context.arena, ConstraintKind::Union, first->place);
    result->operands.push_back(first);
    do
        result->operands.push_back(parseIntersection(p));
    while (takeUnion(p));
    return result;
}

} // namespace

void parseElementSets(Parser &p, ConstraintSpec &spec) {
    const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Elsewhere);
    const Scoped<bool> pairs(p.pairs, false);
    if (p.inSet && (p.failed || p.pos == p.end)) {
        slip(p.context.diagnostics, here(p), "an empty set is written \"{...}\"");
        return;
    }
    if (p.inSet && take(p, TokenKind::Ellipsis)) {
        spec.extensible = true;
    } else {
        spec.root = parseUnion(p);
        if (!take(p, TokenKind::Comma))
            return;
        spec.extensible = expect(p, TokenKind::Ellipsis);
    }
    if (take(p, TokenKind::Comma))
        spec.additions = parseUnion(p);
}

Value *parseException(Parser &p, ConstraintSpec *spec) {
    advance(p);
    if (!at(p, TokenKind::Number) && !at(p, TokenKind::Minus) && !at(p, TokenKind::Lower) &&
        !beginsType(p, peek(p))) {
        failExpected(p, "the value of an exception");
        return nullptr;
    }
    Value *value = parseValue(p);
    if (spec == nullptr)
        return value;
    spec->hasException = true;
    spec->exceptionType = value->kind == ValueKind::Typed ? value->type : nullptr;
    spec->exception = value->kind == ValueKind::Typed ? value->inner : value;
    return value;
}

ConstraintSpec *parseConstraint(Parser &p) {
    ConstraintSpec *spec = newConstraintSpec(p.context.arena, here(p));
    const Nesting nesting(p);
    const Scoped<bool> scoped(p.inSet, false);
    if (!expect(p, TokenKind::OpenParen))
        return spec;
    parseElementSets(p, *spec);
    if (at(p, TokenKind::Exclamation))
        parseException(p, spec);
    if (!p.failed && !take(p, TokenKind::CloseParen))
        failExpected(p, "\")\"");
    return spec;
}

} // namespace asntree
