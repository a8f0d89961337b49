#include "asntree/parsemodule.h"

namespace asntree {

namespace {

/* --- formal parameters --- */

bool isParameterName(const Parser &p) {
    const Token &token = peek(p);
    return token.kind == TokenKind::Lower || isUpperName(p, token);
}

void parseFormalParameter(Parser &p, Assignment &assignment) {
    FormalParameter parameter;
    const TokenKind second = peek(p, 1).kind;
    const bool bare =
        isParameterName(p) && (second == TokenKind::Comma || second == TokenKind::CloseBrace);
    if (!bare) {
        parameter.governor = parseType(p);
        expect(p, TokenKind::Colon);
    }
    if (isParameterName(p)) {
        if (bare && at(p, TokenKind::Lower))
            complain(p, here(p), "a parameter that is a value needs a governor (\"Type:name\")");
        parameter.name = takeName(p);
    } else {
        failExpected(p, "the name of a parameter");
    }
    assignment.parameters.push_back(parameter);
}

void parseFormalParameters(Parser &p, Assignment &assignment) {
    assignment.parameterized = true;
    const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Elsewhere);
    advance(p);
    do
        parseFormalParameter(p, assignment);
    while (take(p, TokenKind::Comma));
    if (!p.failed && !take(p, TokenKind::CloseBrace))
        failExpected(p, "\",\" or \"}\"");
}

/* --- the kinds of assignments --- */

bool takeAssign(Parser &p) {
    if (!expect(p, TokenKind::Assign))
        return false;
    p.lastAssign = p.pos;
    return true;
}

/* What follows "NAME MACRO" is read over, with the BEGIN and END in it. */
void parseMacro(Parser &p, Assignment &assignment) {
    assignment.kind = AssignmentKind::Macro;
    const Place place = here(p);
    advance(p);
    takeAssign(p);
    if (!atWord(p, Word::BEGIN)) { /* another macro by its name */
        if (at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot)) {
            advance(p);
            advance(p);
        }
        if (!take(p, TokenKind::Upper) && !takeWord(p, Word::OBJECT))
            failExpected(p, "\"BEGIN\"");
        return;
    }
    int depth = 0;
    for (; !p.failed && p.pos < p.end; ++p.pos) {
        depth += atWord(p, Word::BEGIN) ? 1 : atWord(p, Word::END) ? -1 : 0;
        if (depth == 0)
            break;
    }
    if (!take(p, TokenKind::Word))
        fail(p, place, "the macro has no END");
}

void parseTypeAssignment(Parser &p, Assignment &assignment) {
    const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Assignment);
    if (atWord(p, Word::CLASS) && !isRedefined(p, Word::CLASS)) {
        if (!isAllCapitals(assignment.name.text))
            complain(p, assignment.name.place, "the name of a class is written in capitals");
        assignment.kind = AssignmentKind::Class;
        auto created = std::make_unique<ObjectClass>();
        assignment.objectClass = created.get();
        p.context.arena.classes.push_back(std::move(created));
        parseObjectClass(p, *assignment.objectClass);
    } else {
        assignment.type = parseType(p);
    }
}

/* By the name of a set or in braces, which are kept for the governor. */
void parseSetAssignment(Parser &p, Assignment &assignment) {
    assignment.kind = AssignmentKind::Set;
    const std::uint32_t begin = p.pos;
    if (at(p, TokenKind::OpenBrace)) {
        assignment.tokens = skipBraces(p);
    } else if (beginsType(p, peek(p)) && !beginsNextAssignment(p)) {
        parseType(p);
        assignment.tokens = rangeFrom(p, begin);
    } else if (beginsValue(peek(p))) {
        fail(p, assignment.name.place, "the name of a value begins with a small letter");
    } else {
        failExpected(p, "\"{\"");
    }
}

/* XML values are not carried into trees; the name is kept, so that nothing else is wrong. */
void parseXmlValue(Parser &p, Assignment &assignment) {
    assignment.kind = AssignmentKind::Value;
    assignment.value = newValue(p.context.arena, ValueKind::Bad, here(p));
    if (assignment.type == nullptr)
        assignment.type = newType(p.context.arena, TypeKind::Bad, here(p));
    warning(p.context.diagnostics, here(p), "a value in XML notation is read over");
    p.lastAssign = p.pos + 1;
    advance(p);
}

void parseValueAssignment(Parser &p, Assignment &assignment) {
    assignment.kind = AssignmentKind::Value;
    const std::string_view governor = assignment.type->ref.name.text;
    const bool macro = assignment.type->kind == TypeKind::Macro ||
                       (assignment.type->kind == TypeKind::Reference && isMacroName(p, governor));
    const Scoped<bool> pairs(p.pairs, true);
    const Scoped<bool> quiet(p.quietPairs, macro);
    if (beginsNextAssignment(p))
        failExpected(p, "a value");
    assignment.value = parseValue(p);
}

bool atXml(const Parser &p) {
    return at(p, TokenKind::XmlValue) ||
           (at(p, TokenKind::Assign) && nextIs(p, TokenKind::XmlValue));
}

/* What stands between the name and "::=", and what stands behind. */
void parseRest(Parser &p, Assignment &assignment, bool lower) {
    if (at(p, TokenKind::OpenBrace))
        parseFormalParameters(p, assignment);
    if (atWord(p, Word::MACRO))
        return parseMacro(p, assignment);
    const bool governed = !at(p, TokenKind::Assign) && !at(p, TokenKind::XmlValue);
    if (governed) {
        const Scoped<TypePlace> scoped(p.typePlace, TypePlace::Governor);
        assignment.type = parseType(p);
    }
    if (atXml(p)) {
        take(p, TokenKind::Assign);
        return parseXmlValue(p, assignment);
    }
    if (lower && !governed)
        fail(p, assignment.name.place, "the name of a type begins with a capital letter");
    if (!takeAssign(p))
        return;
    if (lower)
        parseValueAssignment(p, assignment);
    else if (governed)
        parseSetAssignment(p, assignment);
    else
        parseTypeAssignment(p, assignment);
}

/* What was half parsed would only lead to more mistakes. */
void spoil(Parser &p, Assignment &assignment, bool lower) {
    assignment.type = newType(p.context.arena, TypeKind::Bad, assignment.name.place);
    assignment.value = newValue(p.context.arena, ValueKind::Bad, assignment.name.place);
    assignment.objectClass = nullptr;
    assignment.tokens = {};
    assignment.parameters.clear();
    assignment.parameterized = false;
    assignment.kind = lower ? AssignmentKind::Value : AssignmentKind::Type;
}

} // namespace

void parseAssignment(Parser &p, Module &module) {
    auto created = std::make_unique<Assignment>();
    Assignment &assignment = *created;
    const bool lower = at(p, TokenKind::Lower);
    assignment.module = &module;
    assignment.name = takeName(p);
    assignment.index = static_cast<std::uint32_t>(module.assignments.size());
    parseRest(p, assignment, lower);
    if (p.failed)
        spoil(p, assignment, lower);
    claimDirectives(p, assignment.directives);
    module.assignments.push_back(&assignment);
    p.context.arena.assignments.push_back(std::move(created));
}

} // namespace asntree
