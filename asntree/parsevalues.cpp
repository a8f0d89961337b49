#include "asntree/parsing.h"

namespace asntree {

namespace {

ValueKind kindOfWord(Word word) {
    switch (word) {
    case Word::TRUE:
        return ValueKind::True;
    case Word::FALSE:
        return ValueKind::False;
    case Word::NULL_:
        return ValueKind::Null;
    case Word::PLUS_INFINITY:
        return ValueKind::PlusInfinity;
    case Word::MINUS_INFINITY:
        return ValueKind::MinusInfinity;
    case Word::NOT_A_NUMBER:
        return ValueKind::NotANumber;
    case Word::MIN:
        return ValueKind::Min;
    case Word::MAX:
        return ValueKind::Max;
    default:
        return ValueKind::Bad;
    }
}

ValueKind kindOfLiteral(TokenKind kind) {
    switch (kind) {
    case TokenKind::Number:
        return ValueKind::Number;
    case TokenKind::Real:
        return ValueKind::Real;
    case TokenKind::BString:
        return ValueKind::BString;
    case TokenKind::HString:
        return ValueKind::HString;
    case TokenKind::CString:
        return ValueKind::CString;
    default:
        return ValueKind::Bad;
    }
}

void takeLiteral(Parser &p, Value &value) {
    value.kind = kindOfLiteral(peek(p).kind);
    value.token = p.pos;
    value.text = textOf(p.file, peek(p));
    advance(p);
}

void parseNegative(Parser &p, Value &value) {
    advance(p);
    if (atWord(p, Word::PLUS_INFINITY) || !(at(p, TokenKind::Number) || at(p, TokenKind::Real))) {
        failExpected(p, "a number behind \"-\"");
        return;
    }
    takeLiteral(p, value);
    value.negative = true;
}

/* The ":" of an open type's value stands there, or is left out as in a value of ANY of 1988. */
void parseTyped(Parser &p, Value &value, Type *type) {
    if (!take(p, TokenKind::Colon))
        slip(p.context.diagnostics, here(p), "\":\" is missing between a type and its value");
    value.kind = ValueKind::Typed;
    value.type = type;
    value.inner = parseValue(p);
}

/* `Type : value`, or Set.&field, which begins in the same way. */
void parseTypeFirst(Parser &p, Value &value) {
    const std::string text = quoted(nameHere(p).text);
    Scoped<TypePlace> setting(p.typePlace, TypePlace::Setting);
    Type *type = parseType(p);
    if (p.failed)
        return;
    const bool bare = type->kind != TypeKind::Field && !at(p, TokenKind::Lower);
    if (at(p, TokenKind::Colon) || (bare && beginsValue(peek(p)))) {
        parseTyped(p, value, type);
    } else if (type->kind == TypeKind::Field) {
        value.kind = ValueKind::Field;
        value.ref = type->ref;
        value.fields = type->fields;
        value.fieldIsUpper = type->fieldIsUpper;
    } else {
        fail(p, value.place, "a value expected, found " + text);
    }
}

/* Whether the current token can't follow the name that was read, but can be the value of a CHOICE
   whose alternative is this name. */
bool isPair(const Parser &p) {
    const Token &token = peek(p);
    return p.pairs && beginsValue(token) && token.kind != TokenKind::Lower &&
           token.word != Word::MIN && token.word != Word::MAX;
}

/* What begins with a name with a small letter, or with Module.name. */
void parseReferenceValue(Parser &p, Value &value) {
    const bool bare = !at(p, TokenKind::Upper);
    if (nextIs(p, TokenKind::OpenBrace) && nameHere(p).text == "globalValue") {
        value.kind = ValueKind::Choice;
        value.ref.name = takeName(p);
        value.inner = parseValue(p);
        return;
    }
    parseReference(p, value.ref, value.fields, value.fieldIsUpper);
    if (p.failed)
        return;
    value.kind = value.fields.empty() ? ValueKind::Reference : ValueKind::Field;
    if (!value.fields.empty() && value.fieldIsUpper.back() && at(p, TokenKind::Colon)) {
        Type *type = newType(p.context.arena, TypeKind::Field, value.place);
        type->ref = std::move(value.ref);
        type->fields = std::move(value.fields);
        type->fieldIsUpper = std::move(value.fieldIsUpper);
        type->end = behind(p);
        parseTyped(p, value, type);
    } else if (value.kind == ValueKind::Reference && bare && !value.ref.hasParameters) {
        if (take(p, TokenKind::Colon)) {
            value.kind = ValueKind::Choice;
        } else if (isPair(p)) {
            value.kind = ValueKind::Choice;
            if (!p.quietPairs)
                slip(p.context.diagnostics, here(p),
                     "\":\" is missing between an alternative and its value");
        }
        if (value.kind == ValueKind::Choice)
            value.inner = parseValue(p);
    } else if (value.ref.hasParameters && bare && value.fields.empty()) {
        value.tokens = value.ref.parameters.empty()
                           ? TokenRange{p.file.number, p.pos - 1, p.pos - 1}
                           : TokenRange{p.file.number, value.ref.parameters.front().begin,
                                        value.ref.parameters.back().end};
    }
}

void parseWordValue(Parser &p, Value &value) {
    const ValueKind kind = kindOfWord(peek(p).word);
    const bool typed = nextIs(p, TokenKind::Colon) ||
                       (kind == ValueKind::Null && peek(p, 1).word == Word::NULL_);
    if (kind != ValueKind::Bad && !typed) {
        value.kind = kind;
        advance(p);
    } else if (takeWord(p, Word::CONTAINING)) {
        value.kind = ValueKind::Containing;
        value.inner = parseValue(p);
    } else if (beginsType(p, peek(p))) {
        parseTypeFirst(p, value);
    } else {
        failExpected(p, "a value");
    }
}

void parseNameValue(Parser &p, Value &value) {
    const TokenKind second = peek(p, 1).kind;
    const TokenKind third = peek(p, 2).kind;
    const bool selection = second == TokenKind::Less &&
                           (third == TokenKind::Upper || third == TokenKind::Lower) &&
                           peek(p, 3).kind == TokenKind::Colon;
    if (at(p, TokenKind::Lower) ? selection : second != TokenKind::Dot || third != TokenKind::Lower)
        parseTypeFirst(p, value);
    else
        parseReferenceValue(p, value);
}

} // namespace

bool beginsValue(const Token &token) {
    switch (token.kind) {
    case TokenKind::Lower:
    case TokenKind::OpenBrace:
    case TokenKind::Minus:
        return true;
    case TokenKind::Word:
        return kindOfWord(token.word) != ValueKind::Bad || token.word == Word::CONTAINING;
    default:
        return kindOfLiteral(token.kind) != ValueKind::Bad;
    }
}

Value *parseValue(Parser &p) {
    Value *value = newValue(p.context.arena, ValueKind::Bad, here(p));
    const Nesting nesting(p);
    switch (peek(p).kind) {
    case TokenKind::Lower:
    case TokenKind::Upper:
        parseNameValue(p, *value);
        break;
    case TokenKind::Word:
        parseWordValue(p, *value);
        break;
    case TokenKind::Minus:
        parseNegative(p, *value);
        break;
    case TokenKind::OpenBrace:
        value->kind = ValueKind::Braced;
        value->tokens = skipBraces(p);
        break;
    case TokenKind::OpenBracket:
        parseTypeFirst(p, *value);
        break;
    default:
        if (kindOfLiteral(peek(p).kind) != ValueKind::Bad)
            takeLiteral(p, *value);
        else
            failExpected(p, "a value");
    }
    if (p.failed)
        value->kind = ValueKind::Bad;
    value->end = behind(p);
    return value;
}

} // namespace asntree
