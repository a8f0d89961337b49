#include "asntree/parsing.h"

namespace asntree {

namespace {

/* --- CLASS { ... } --- */

/* &Type.&x.&y, the field that tells the type of another. */
void parseFieldPath(Parser &p, ClassField &field) {
    do {
        if (!at(p, TokenKind::AmpUpper) && !at(p, TokenKind::AmpLower)) {
            failExpected(p, "a field (\"&name\")");
            return;
        }
        field.pathIsUpper.push_back(at(p, TokenKind::AmpUpper));
        field.path.push_back(takeName(p));
    } while (take(p, TokenKind::Dot));
}

/* All up to the comma or brace behind a field. */
TokenRange takeDefault(Parser &p) {
    const std::uint32_t begin = p.pos;
    int depth = 0;
    for (; !p.failed && p.pos < p.end; ++p.pos) {
        const TokenKind kind = peek(p).kind;
        if (depth == 0 && (kind == TokenKind::Comma || kind == TokenKind::CloseBrace))
            break;
        if (kind == TokenKind::OpenBrace || kind == TokenKind::OpenParen)
            ++depth;
        else if (kind == TokenKind::CloseBrace || kind == TokenKind::CloseParen)
            --depth;
        if (kind == TokenKind::Assign || depth + p.depth > MAX_NESTING)
            fail(p, here(p), "the default setting of the field doesn't end");
    }
    if (p.pos == begin)
        failExpected(p, "a default setting");
    return rangeFrom(p, begin);
}

void parseFieldEnd(Parser &p, ClassField &field) {
    if (atWord(p, Word::UNIQUE)) {
        if (field.upper || field.governor == nullptr)
            complain(p, here(p), "only a value of a fixed type can be UNIQUE");
        advance(p);
        field.unique = true;
    }
    if (takeWord(p, Word::OPTIONAL)) {
        field.optional = true;
        if (atWord(p, Word::UNIQUE)) {
            slip(p.context.diagnostics, here(p), "UNIQUE stands in front of OPTIONAL");
            advance(p);
            field.unique = true;
        }
    } else if (atWord(p, Word::DEFAULT)) {
        if (field.unique)
            complain(p, here(p), "a UNIQUE field has no default setting");
        advance(p);
        field.defaultSetting = takeDefault(p);
    }
}

ClassField parseField(Parser &p) {
    ClassField field;
    field.place = here(p);
    field.upper = at(p, TokenKind::AmpUpper);
    if (!field.upper && !at(p, TokenKind::AmpLower)) {
        failExpected(p, "a field (\"&name\")");
        return field;
    }
    field.name = takeName(p);
    if (at(p, TokenKind::AmpUpper) || at(p, TokenKind::AmpLower))
        parseFieldPath(p, field);
    else if (beginsType(p, peek(p)) || at(p, TokenKind::Lower))
        field.governor = parseType(p);
    else if (!field.upper)
        failExpected(p, "the type or class of the field");
    parseFieldEnd(p, field);
    return field;
}

void parseFields(Parser &p, ObjectClass &objectClass) {
    if (!expect(p, TokenKind::OpenBrace))
        return;
    while (!p.failed) {
        objectClass.fields.push_back(parseField(p));
        ClassField &field = objectClass.fields.back();
        claimDirectives(p, field.directives);
        if (take(p, TokenKind::CloseBrace))
            return;
        if (take(p, TokenKind::Comma)) {
            claimDirectives(p, field.directives);
            if (isCommaTooMany(p, TokenKind::CloseBrace)) {
                advance(p);
                return;
            }
        } else if (at(p, TokenKind::AmpUpper) || at(p, TokenKind::AmpLower)) {
            complain(p, behind(p), "\",\" is missing between two fields");
        } else {
            failExpected(p, "\",\" or \"}\"");
        }
    }
}

/* --- WITH SYNTAX { ... } --- */

/* Brackets, of which two may have become one token: `half` says that its first was taken. */
struct Brackets {
    Parser &p;
    bool half = false;

    bool take(TokenKind one, TokenKind two) {
        if (asntree::take(p, one))
            return true;
        if (!at(p, two))
            return false;
        if (half)
            advance(p);
        half = !half;
        return true;
    }
    bool open() { return take(TokenKind::OpenBracket, TokenKind::OpenVersion); }
    bool close() { return take(TokenKind::CloseBracket, TokenKind::CloseVersion); }
};

/* Words that begin a setting, and so can't be words of a syntax. Those of the times of 2008 were
   free before. */
bool isWordOfTime(Word word) {
    return word == Word::DATE || word == Word::DATE_TIME || word == Word::DURATION ||
           word == Word::TIME || word == Word::TIME_OF_DAY;
}

bool beginsSetting(Word word) {
    switch (word) {
    case Word::BIT:
    case Word::BOOLEAN:
    case Word::CHARACTER:
    case Word::CHOICE:
    case Word::EMBEDDED:
    case Word::END:
    case Word::ENUMERATED:
    case Word::EXTERNAL:
    case Word::FALSE:
    case Word::INSTANCE:
    case Word::INTEGER:
    case Word::INTERSECTION:
    case Word::MINUS_INFINITY:
    case Word::NULL_:
    case Word::OBJECT:
    case Word::OCTET:
    case Word::PLUS_INFINITY:
    case Word::REAL:
    case Word::RELATIVE_OID:
    case Word::SEQUENCE:
    case Word::SET:
    case Word::TRUE:
    case Word::UNION:
        return true;
    default:
        return false;
    }
}

bool isLiteral(const Parser &p, const Token &token) {
    if (token.kind == TokenKind::Comma)
        return true;
    return (token.kind == TokenKind::Upper || token.kind == TokenKind::Word) &&
           isAllCapitals(textOf(p.file, token));
}

void parseSyntaxItems(Parser &p, Brackets &brackets, std::vector<SyntaxItem> &items);

SyntaxItem parseSyntaxItem(Parser &p, Brackets &brackets) {
    SyntaxItem item;
    item.text.place = here(p);
    if (brackets.open()) {
        const Nesting nesting(p);
        item.kind = SyntaxItem::Group;
        parseSyntaxItems(p, brackets, item.group);
        if (!brackets.close())
            failExpected(p, "a word in capitals, a field or \"]\"");
        else if (item.group.empty())
            fail(p, item.text.place, "an optional group is not empty");
        return item;
    }
    item.kind = isLiteral(p, peek(p)) ? SyntaxItem::Literal : SyntaxItem::Field;
    const std::string refused = quoted(nameHere(p).text) + " can't be a word of WITH SYNTAX";
    if (beginsSetting(peek(p).word))
        complain(p, here(p), refused);
    else if (isWordOfTime(peek(p).word))
        slip(p.context.diagnostics, here(p), refused);
    item.upper = at(p, TokenKind::AmpUpper);
    item.text = takeName(p);
    return item;
}

void parseSyntaxItems(Parser &p, Brackets &brackets, std::vector<SyntaxItem> &items) {
    while (!p.failed) {
        const Token &token = peek(p);
        const bool opens =
            token.kind == TokenKind::OpenBracket || token.kind == TokenKind::OpenVersion;
        if (!opens && !isLiteral(p, token) && token.kind != TokenKind::AmpUpper &&
            token.kind != TokenKind::AmpLower)
            return;
        SyntaxItem item = parseSyntaxItem(p, brackets);
        if (!p.failed)
            items.push_back(std::move(item)); /* a group is never empty */
    }
}

void parseSyntax(Parser &p, ObjectClass &objectClass) {
    expectWord(p, Word::SYNTAX);
    expect(p, TokenKind::OpenBrace);
    Brackets brackets{p};
    objectClass.hasSyntax = true;
    parseSyntaxItems(p, brackets, objectClass.syntax);
    if (p.failed)
        return;
    if (objectClass.syntax.empty())
        failExpected(p, "a word in capitals or a field");
    else if (!take(p, TokenKind::CloseBrace))
        failExpected(p, "a word in capitals, a field or \"}\"");
}

} // namespace

void parseObjectClass(Parser &p, ObjectClass &objectClass) {
    const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Setting);
    objectClass.place = here(p);
    expectWord(p, Word::CLASS);
    parseFields(p, objectClass);
    if (takeWord(p, Word::WITH))
        parseSyntax(p, objectClass);
}

} // namespace asntree
