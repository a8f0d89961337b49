#include "asntree/parsing.h"

/* Text that was kept until its governor was known. */

namespace asntree {

namespace {

/* Calls item() for each piece of a list with commas; the whole range is used up. */
template <typename Item> bool readList(Parser &p, Item item) {
    if (p.pos == p.end)
        return true;
    while (!p.failed) {
        item();
        if (p.failed || p.pos == p.end)
            break;
        if (!take(p, TokenKind::Comma))
            failExpected(p, "\",\" or \"}\"");
        else if (isCommaTooMany(p, TokenKind::End))
            break;
    }
    return !p.failed;
}

void parseArcNumber(Parser &p, Arc &arc) {
    if (at(p, TokenKind::Number) || at(p, TokenKind::Lower) || at(p, TokenKind::Upper))
        arc.number = parseValue(p);
    else
        failExpected(p, "a number");
}

/* A value that is referred to: `ref`, or `number` if it is a path of fields. */
void parseArcReference(Parser &p, Arc &arc) {
    std::vector<Name> fields;
    std::vector<bool> fieldIsUpper;
    parseReference(p, arc.ref, fields, fieldIsUpper);
    arc.name = arc.ref.name;
    if (fields.empty())
        return;
    arc.name = {};
    arc.number = newValue(p.context.arena, ValueKind::Field, arc.place);
    arc.number->ref = arc.ref;
    arc.number->fields = std::move(fields);
    arc.number->fieldIsUpper = std::move(fieldIsUpper);
    arc.number->end = behind(p);
}

Arc parseArc(Parser &p) {
    Arc arc;
    arc.place = here(p);
    if (at(p, TokenKind::Number)) {
        arc.number = parseValue(p);
    } else if (at(p, TokenKind::Lower) && nextIs(p, TokenKind::OpenParen)) {
        arc.name = takeName(p);
        arc.ref.name = arc.name;
        advance(p);
        parseArcNumber(p, arc);
        expect(p, TokenKind::CloseParen);
    } else if (at(p, TokenKind::Lower) || (at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot))) {
        parseArcReference(p, arc);
    } else {
        failExpected(p, "an arc of an object identifier");
    }
    return arc;
}

/* Whether a component's name stands there, and not a value that begins with a name. */
bool isNamed(const Parser &p) {
    if (!at(p, TokenKind::Lower) || p.pos + 1 >= p.end)
        return false;
    const Token &second = peek(p, 1);
    return beginsValue(second) || beginsType(p, second);
}

NamedValue parseNamedValue(Parser &p) {
    NamedValue named;
    named.place = here(p);
    if (isNamed(p))
        named.name = takeName(p);
    named.value = parseValue(p);
    return named;
}

} // namespace

Type *readType(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    Type *type = parseType(p);
    return finished(p) ? type : nullptr;
}

Value *readValue(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    p.pairs = true;
    Value *value = parseValue(p);
    return finished(p) ? value : nullptr;
}

std::vector<Value *> readValueList(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    p.pairs = true;
    std::vector<Value *> values;
    if (!readList(p, [&] { values.push_back(parseValue(p)); }))
        values.clear();
    return values;
}

std::vector<NamedValue> readNamedValues(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    p.pairs = true;
    std::vector<NamedValue> values;
    if (!readList(p, [&] { values.push_back(parseNamedValue(p)); }))
        values.clear();
    return values;
}

bool readPair(ParseContext &context, TokenRange range, NamedValue &pair) {
    Parser p = parserOf(context, range);
    if (!isNamed(p) || p.pos + 2 > p.end)
        return false;
    for (std::uint32_t i = range.begin, depth = 0; i < range.end; ++i) {
        const TokenKind kind = p.file.tokens[i].kind;
        if (kind == TokenKind::OpenBrace)
            ++depth;
        else if (kind == TokenKind::CloseBrace)
            --depth;
        else if (kind == TokenKind::Comma && depth == 0)
            return false;
    }
    p.pairs = true;
    pair = parseNamedValue(p);
    return finished(p);
}

std::vector<Arc> readArcs(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    std::vector<Arc> arcs;
    while (!p.failed && p.pos < p.end)
        arcs.push_back(parseArc(p));
    if (p.failed)
        arcs.clear();
    return arcs;
}

std::vector<Name> readIdentifiers(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    std::vector<Name> names;
    const auto parseIdentifier = [&] {
        if (at(p, TokenKind::Lower))
            names.push_back(takeName(p));
        else
            failExpected(p, "an identifier");
    };
    if (!readList(p, parseIdentifier))
        names.clear();
    return names;
}

ConstraintSpec *readSet(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    p.inSet = true;
    ConstraintSpec *spec = newConstraintSpec(context.arena, here(p));
    parseElementSets(p, *spec);
    return finished(p) ? spec : nullptr;
}

ConstraintSpec *readBracedSet(ParseContext &context, TokenRange range) {
    const std::vector<Token> &tokens = parserOf(context, range).file.tokens;
    int depth = 0;
    std::uint32_t end = range.begin;
    do {
        const TokenKind kind = tokens[end].kind;
        depth += kind == TokenKind::OpenBrace ? 1 : kind == TokenKind::CloseBrace ? -1 : 0;
        ++end;
    } while (depth > 0 && end < range.end);
    const bool isBraced = end == range.end && end > range.begin + 1 &&
                          tokens[range.begin].kind == TokenKind::OpenBrace;
    return readSet(context, isBraced ? TokenRange{range.file, range.begin + 1, end - 1} : range);
}

} // namespace asntree
