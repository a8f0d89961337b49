#include <algorithm>

#include "asntree/parsing.h"

/* Macros of 1988. Their instances have a syntax of their own, so they are only told from types, and
   read over; what the instances of the well-known ones name is read from the kept tokens. */

namespace asntree {

namespace {

/* Sorted. */
constexpr std::string_view wellKnownMacros[] = {
    "ABSTRACT-BIND",
    "ABSTRACT-ERROR",
    "ABSTRACT-OPERATION",
    "ABSTRACT-UNBIND",
    "AGENT-CAPABILITIES",
    "ALGORITHM",
    "APPLICATION-CONTEXT",
    "APPLICATION-SERVICE-ELEMENT",
    "ATTRIBUTE",
    "ATTRIBUTE-SYNTAX",
    "BIND",
    "ENCRYPTED",
    "ERROR",
    "EXTENSION",
    "EXTENSION-ATTRIBUTE",
    "HASHED",
    "MODULE-COMPLIANCE",
    "MODULE-IDENTITY",
    "NOTIFICATION-GROUP",
    "NOTIFICATION-TYPE",
    "OBJECT",
    "OBJECT-CLASS",
    "OBJECT-GROUP",
    "OBJECT-IDENTITY",
    "OBJECT-TYPE",
    "OPERATION",
    "PORT",
    "PROTECTED",
    "REFINE",
    "SECURITY-CATEGORY",
    "SIGNATURE",
    "SIGNED",
    "TEXTUAL-CONVENTION",
    "TOKEN",
    "TOKEN-DATA",
    "TRAP-TYPE",
    "UNBIND",
};

enum class ClauseKind : std::uint8_t { None, Type, Values, Value, Other };

struct ClauseWord {
    std::string_view word;
    ClauseKind kind;
};

/* Words of the instances, with what follows them. */
constexpr ClauseWord clauseWords[] = {
    {"ARGUMENT", ClauseKind::Type},        {"RESULT", ClauseKind::Type},
    {"ERRORS", ClauseKind::Values},        {"LINKED", ClauseKind::Values},
    {"PARAMETER", ClauseKind::Type},       {"SYNTAX", ClauseKind::Type},
    {"WRITE-SYNTAX", ClauseKind::Type},    {"ATTRIBUTE-SYNTAX", ClauseKind::Type},
    {"BIND-ERROR", ClauseKind::Type},      {"UNBIND-ERROR", ClauseKind::Type},
    {"VARIABLES", ClauseKind::Values},     {"OBJECTS", ClauseKind::Values},
    {"NOTIFICATIONS", ClauseKind::Values}, {"ENTERPRISE", ClauseKind::Value},
    {"ACCESS", ClauseKind::Other},         {"MAX-ACCESS", ClauseKind::Other},
    {"MIN-ACCESS", ClauseKind::Other},     {"STATUS", ClauseKind::Other},
    {"DESCRIPTION", ClauseKind::Other},    {"REFERENCE", ClauseKind::Other},
    {"INDEX", ClauseKind::Other},          {"AUGMENTS", ClauseKind::Other},
    {"DEFVAL", ClauseKind::Other},         {"UNITS", ClauseKind::Other},
    {"DISPLAY-HINT", ClauseKind::Other},
};

ClauseKind clauseKind(std::string_view word) {
    for (const ClauseWord &entry : clauseWords)
        if (entry.word == word)
            return entry.kind;
    return ClauseKind::None;
}

ClauseKind clauseHere(const Parser &p) {
    const Token &token = peek(p);
    const bool word = token.kind == TokenKind::Upper || token.kind == TokenKind::Word;
    return word ? clauseKind(textOf(p.file, token)) : ClauseKind::None;
}

bool isBracket(TokenKind kind, bool open) {
    return open ? kind == TokenKind::OpenBrace || kind == TokenKind::OpenParen ||
                      kind == TokenKind::OpenBracket
                : kind == TokenKind::CloseBrace || kind == TokenKind::CloseParen ||
                      kind == TokenKind::CloseBracket;
}

/* Up to what ends a component, a parameter or an operand. */
void skipInstance(Parser &p) {
    int depth = 0;
    for (; p.pos < p.end; ++p.pos) {
        const Token &token = peek(p);
        if (isBracket(token.kind, true))
            ++depth;
        else if (isBracket(token.kind, false) && --depth < 0)
            return;
        const bool stops = token.kind == TokenKind::Comma ||
                           token.kind == TokenKind::CloseVersion || token.word == Word::OPTIONAL ||
                           token.word == Word::DEFAULT;
        if ((stops && depth == 0) || token.kind == TokenKind::Assign)
            return;
    }
}

/* Up to "::="; false if there is none before the module ends. */
bool findAssign(const Parser &p, std::uint32_t &place) {
    for (place = p.pos; place < p.end; ++place) {
        const Token &token = p.file.tokens[place];
        if (token.kind == TokenKind::Assign)
            return true;
        if (token.word == Word::END || token.word == Word::DEFINITIONS)
            return false;
    }
    return false;
}

void makeMacro(Parser &p, Type &type, std::uint32_t begin) {
    type.kind = TypeKind::Macro;
    type.tokens = rangeFrom(p, begin);
}

/* {a, b}, a list of values or, for errors, of types. */
void parseClauseValues(Parser &p, MacroClause &clause) {
    if (!take(p, TokenKind::OpenBrace))
        return;
    while (!p.failed && !take(p, TokenKind::CloseBrace)) {
        if (at(p, TokenKind::Upper)) {
            Value *value = newValue(p.context.arena, ValueKind::Reference, here(p));
            parseReference(p, value->ref, value->fields, value->fieldIsUpper);
            clause.values.push_back(value);
        } else {
            clause.values.push_back(parseValue(p));
        }
        if (!at(p, TokenKind::CloseBrace))
            expect(p, TokenKind::Comma);
    }
}

void parseClause(Parser &p, ClauseKind kind, std::vector<MacroClause> &clauses) {
    MacroClause clause;
    clause.word = takeName(p);
    if (kind == ClauseKind::Values) {
        parseClauseValues(p, clause);
    } else if (kind == ClauseKind::Value) {
        if (beginsValue(peek(p)))
            clause.values.push_back(parseValue(p));
    } else {
        if (at(p, TokenKind::Lower) && beginsType(p, peek(p, 1)))
            advance(p); /* the name of a NamedType */
        if (clauseHere(p) == ClauseKind::None && beginsType(p, peek(p)))
            clause.type = parseType(p);
    }
    if (!p.failed)
        clauses.push_back(std::move(clause));
}

} // namespace

bool isAllCapitals(std::string_view name) {
    return std::none_of(name.begin(), name.end(),
                        [](char letter) { return letter >= 'a' && letter <= 'z'; });
}

bool isMacroClause(std::string_view word) {
    return clauseKind(word) != ClauseKind::None;
}

bool isWellKnownMacro(std::string_view name) {
    return std::binary_search(std::begin(wellKnownMacros), std::end(wellKnownMacros), name);
}

bool isMacroName(const Parser &p, std::string_view name) {
    if (!isAllCapitals(name))
        return false;
    if (isWellKnownMacro(name))
        return true;
    return p.words != nullptr &&
           std::binary_search(p.words->macros.begin(), p.words->macros.end(), name);
}

namespace {

/* A TEXTUAL-CONVENTION is the type of its SYNTAX, with all that restricts it. */
void takeSyntax(Parser &p, Type &type) {
    if (type.ref.name.text != "TEXTUAL-CONVENTION")
        return;
    for (const MacroClause &clause : readMacroClauses(p.context, type.tokens))
        if (clause.word.text == "SYNTAX" && clause.type != nullptr) {
            type = *clause.type;
            return;
        }
}

} // namespace

void checkForMacro(Parser &p, Type &type) {
    if (p.failed || type.ref.hasParameters || type.ref.module.given() || p.pos >= p.end)
        return;
    const TokenKind kind = peek(p).kind;
    const std::uint32_t begin = p.pos;
    if (kind == TokenKind::Comma || kind == TokenKind::CloseBrace || kind == TokenKind::Assign ||
        kind == TokenKind::OpenParen || !isMacroName(p, type.ref.name.text))
        return;
    std::uint32_t assign = 0;
    switch (p.typePlace) {
    case TypePlace::Governor:
        if (findAssign(p, assign)) {
            p.pos = assign;
            makeMacro(p, type, begin);
        }
        break;
    case TypePlace::Assignment:
        p.pos = nextAssignment(p, begin, begin);
        if (p.pos != begin) {
            makeMacro(p, type, begin);
            takeSyntax(p, type);
        }
        break;
    case TypePlace::Component:
    case TypePlace::Elsewhere:
        if (beginsType(p, peek(p))) {
            skipInstance(p);
            makeMacro(p, type, begin);
        }
        break;
    case TypePlace::Setting:
        break;
    }
}

std::vector<MacroClause> readMacroClauses(ParseContext &context, TokenRange range) {
    Parser p = parserOf(context, range);
    p.typePlace = TypePlace::Setting;
    std::vector<MacroClause> clauses;
    while (!p.failed && p.pos < p.end) {
        const ClauseKind kind = clauseHere(p);
        if (at(p, TokenKind::OpenBrace))
            skipBraces(p);
        else if (kind == ClauseKind::None || kind == ClauseKind::Other)
            advance(p);
        else
            parseClause(p, kind, clauses);
    }
    return clauses;
}

} // namespace asntree
