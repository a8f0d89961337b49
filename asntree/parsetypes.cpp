#include <algorithm>
#include <array>

#include "asntree/parsing.h"

namespace asntree {

namespace {

/* Types of one word. */
struct WordType {
    Word word;
    TypeKind kind;
};
constexpr WordType wordTypes[] = {
    {Word::BMPString, TypeKind::BmpString},
    {Word::BOOLEAN, TypeKind::Boolean},
    {Word::DATE, TypeKind::Date},
    {Word::DATE_TIME, TypeKind::DateTime},
    {Word::DURATION, TypeKind::Duration},
    {Word::EXTERNAL, TypeKind::External},
    {Word::GeneralString, TypeKind::GeneralString},
    {Word::GeneralizedTime, TypeKind::GeneralizedTime},
    {Word::GraphicString, TypeKind::GraphicString},
    {Word::IA5String, TypeKind::Ia5String},
    {Word::ISO646String, TypeKind::VisibleString},
    {Word::VisibleString, TypeKind::VisibleString},
    {Word::NULL_, TypeKind::Null},
    {Word::NumericString, TypeKind::NumericString},
    {Word::OID_IRI, TypeKind::OidIri},
    {Word::ObjectDescriptor, TypeKind::ObjectDescriptor},
    {Word::PrintableString, TypeKind::PrintableString},
    {Word::REAL, TypeKind::Real},
    {Word::RELATIVE_OID, TypeKind::RelativeOid},
    {Word::RELATIVE_OID_IRI, TypeKind::RelativeOidIri},
    {Word::T61String, TypeKind::TeletexString},
    {Word::TeletexString, TypeKind::TeletexString},
    {Word::TIME, TypeKind::Time},
    {Word::TIME_OF_DAY, TypeKind::TimeOfDay},
    {Word::UTCTime, TypeKind::UtcTime},
    {Word::UTF8String, TypeKind::Utf8String},
    {Word::UniversalString, TypeKind::UniversalString},
    {Word::VideotexString, TypeKind::VideotexString},
};

constexpr std::size_t WORDS = static_cast<std::size_t>(Word::WITH) + 1;

constexpr std::array<TypeKind, WORDS> kindsByWord() {
    std::array<TypeKind, WORDS> kinds{};
    kinds.fill(TypeKind::Bad);
    for (const WordType &entry : wordTypes)
        kinds[static_cast<std::size_t>(entry.word)] = entry.kind;
    return kinds;
}

TypeKind kindOfWord(Word word) {
    static constexpr std::array<TypeKind, WORDS> kinds = kindsByWord();
    return kinds[static_cast<std::size_t>(word)];
}

/* Types that begin with a word and have more behind it. */
bool beginsLongType(Word word) {
    switch (word) {
    case Word::ABSTRACT_SYNTAX:
    case Word::ANY:
    case Word::BIT:
    case Word::CHARACTER:
    case Word::CHOICE:
    case Word::EMBEDDED:
    case Word::ENUMERATED:
    case Word::INSTANCE:
    case Word::INTEGER:
    case Word::OBJECT:
    case Word::OCTET:
    case Word::SEQUENCE:
    case Word::SET:
    case Word::TYPE_IDENTIFIER:
        return true;
    default:
        return false;
    }
}

/* A name with a small letter that begins a type: `a < Type`, object.&Type. */
bool beginsLowerType(const Parser &p) {
    const TokenKind second = peek(p, 1).kind;
    if (second == TokenKind::Less)
        return !nextIs(p, TokenKind::Range, 2);
    return second == TokenKind::Dot &&
           (nextIs(p, TokenKind::AmpUpper, 2) || nextIs(p, TokenKind::AmpLower, 2));
}

/* "(n)" behind an item; `negative`: may be less than 0. */
void parseItemNumber(Parser &p, NamedItem &item, bool negative) {
    advance(p);
    const Token &token = peek(p);
    if (token.kind == TokenKind::Minus && !negative)
        fail(p, here(p), "the number of a bit is not negative");
    else if (token.kind == TokenKind::Number || token.kind == TokenKind::Lower ||
             token.kind == TokenKind::Upper ||
             (token.kind == TokenKind::Minus && nextIs(p, TokenKind::Number)))
        item.number = parseValue(p);
    else
        failExpected(p, "a number or the name of one");
    expect(p, TokenKind::CloseParen);
}

void parseItem(Parser &p, Type &type) {
    NamedItem item;
    item.name.place = here(p);
    const bool enumerated = type.kind == TypeKind::Enumerated;
    if (enumerated && at(p, TokenKind::Ellipsis)) {
        item.marker = true;
        const auto isMarker = [](const NamedItem &other) { return other.marker; };
        if (type.items.empty())
            complain(p, here(p), "an item is needed in front of \"...\"");
        else if (std::any_of(type.items.begin(), type.items.end(), isMarker))
            fail(p, here(p), "an ENUMERATED has one \"...\" only");
        advance(p);
        if (at(p, TokenKind::Exclamation))
            parseException(p, nullptr);
    } else if (at(p, TokenKind::Lower) || at(p, TokenKind::Upper)) {
        if (at(p, TokenKind::Upper))
            complain(p, here(p), "the name of an item begins with a small letter");
        item.name = takeName(p);
        if (at(p, TokenKind::OpenParen))
            parseItemNumber(p, item, type.kind != TypeKind::BitString);
        else if (!enumerated)
            failExpected(p, "\"(\" and a number");
    } else {
        failExpected(p, "an identifier");
    }
    type.items.push_back(item);
}

/* Items of ENUMERATED, named numbers, named bits. */
void parseItems(Parser &p, Type &type) {
    if (!expect(p, TokenKind::OpenBrace))
        return;
    type.hasItems = true;
    do {
        parseItem(p, type);
        if (take(p, TokenKind::Comma)) {
            if (isCommaTooMany(p, TokenKind::CloseBrace))
                break;
        } else if (at(p, TokenKind::Lower)) {
            complain(p, behind(p), "\",\" is missing between two items");
        } else if (!at(p, TokenKind::CloseBrace)) {
            failExpected(p, "\",\" or \"}\"");
        }
    } while (!p.failed && !at(p, TokenKind::CloseBrace));
    expect(p, TokenKind::CloseBrace);
}

void parseElement(Parser &p, Type &type) {
    type.kind = type.kind == TypeKind::Set ? TypeKind::SetOf : TypeKind::SequenceOf;
    std::vector<std::uint32_t> directives;
    claimDirectives(p, directives);
    if (at(p, TokenKind::Lower) && !beginsLowerType(p))
        type.identifier = takeName(p);
    type.element = parseType(p);
    type.element->directives = std::move(directives);
}

/* SEQUENCE alone, which meant SEQUENCE OF ANY in 1988. */
bool isBareList(const Parser &p) {
    const Token &token = peek(p);
    return token.kind == TokenKind::Comma || token.kind == TokenKind::CloseBrace ||
           token.kind == TokenKind::Assign || token.word == Word::OPTIONAL ||
           token.word == Word::END || beginsNextAssignment(p);
}

void parseSequence(Parser &p, Type &type) {
    const Word word = peek(p).word;
    type.kind = word == Word::SET ? TypeKind::Set : TypeKind::Sequence;
    advance(p);
    if (take(p, TokenKind::OpenBrace)) {
        parseComponents(p, type);
    } else if (takeWord(p, Word::OF)) {
        parseElement(p, type);
    } else if (at(p, TokenKind::OpenParen) || atWord(p, Word::SIZE)) {
        const Place place = here(p);
        const bool bare = takeWord(p, Word::SIZE);
        ConstraintSpec *spec = parseConstraint(p);
        if (bare) {
            Constraint *size = newConstraint(p.context.arena, ConstraintKind::Size, place);
            size->inner = spec;
            spec = newConstraintSpec(p.context.arena, place);
            spec->root = size;
        }
        type.constraints.push_back(spec);
        if (expectWord(p, Word::OF))
            parseElement(p, type);
    } else if (isBareList(p)) {
        slip(p.context.diagnostics, type.place,
             std::string(wordText(word)) + " without \"OF\" or components is a list of ANY");
        type.kind = word == Word::SET ? TypeKind::SetOf : TypeKind::SequenceOf;
        type.element = newType(p.context.arena, TypeKind::Any, type.place);
    } else {
        failExpected(p, "\"{\" or \"OF\"");
    }
}

/* A word of two, and what may follow it. */
void parseTwoWords(Parser &p, Type &type, TypeKind kind, Word second) {
    advance(p);
    type.kind = kind;
    expectWord(p, second);
}

void parseAny(Parser &p, Type &type) {
    advance(p);
    type.kind = TypeKind::Any;
    if (!takeWord(p, Word::DEFINED))
        return;
    expectWord(p, Word::BY);
    if (at(p, TokenKind::Lower))
        type.identifier = takeName(p);
    else
        failExpected(p, "the name of a component");
}

/* Modules that use macros of network management name a type that none of them defines: BITS, with
   names of bits behind it where its values are given. It is held in octets. */
bool isBitsOfManagement(const Parser &p) {
    return at(p, TokenKind::Upper) && nameHere(p).text == "BITS" && p.words != nullptr &&
           std::binary_search(p.words->macros.begin(), p.words->macros.end(), "OBJECT-TYPE");
}

void parseBitsOfManagement(Parser &p, Type &type) {
    advance(p);
    type.kind = TypeKind::OctetString;
    if (at(p, TokenKind::OpenBrace)) {
        Type bits;
        parseItems(p, bits);
    }
}

void parseReferenceType(Parser &p, Type &type) {
    const bool lower = at(p, TokenKind::Lower);
    parseReference(p, type.ref, type.fields, type.fieldIsUpper);
    if (!type.fields.empty()) {
        type.kind = TypeKind::Field;
        return;
    }
    const std::string_view name = type.ref.name.text;
    if (lower || (!name.empty() && name[0] >= 'a' && name[0] <= 'z')) {
        fail(p, type.ref.name.place,
             "a type expected, found " + quoted(name) + ": a type begins with a capital letter");
        return;
    }
    type.kind = TypeKind::Reference;
    checkForMacro(p, type);
}

void parseInstanceOf(Parser &p, Type &type) {
    advance(p);
    expectWord(p, Word::OF);
    if (!at(p, TokenKind::Upper) && !atWord(p, Word::TYPE_IDENTIFIER) &&
        !atWord(p, Word::ABSTRACT_SYNTAX))
        failExpected(p, "a class");
    else
        parseReference(p, type.ref, type.fields, type.fieldIsUpper);
    type.kind = TypeKind::InstanceOf;
}

void parseWordType(Parser &p, Type &type) {
    const Word word = peek(p).word;
    type.kind = kindOfWord(word);
    if (type.kind != TypeKind::Bad) {
        advance(p);
        return;
    }
    switch (word) {
    case Word::ANY:
        return parseAny(p, type);
    case Word::BIT:
        parseTwoWords(p, type, TypeKind::BitString, Word::STRING);
        if (at(p, TokenKind::OpenBrace))
            parseItems(p, type);
        return;
    case Word::CHARACTER:
        return parseTwoWords(p, type, TypeKind::CharacterString, Word::STRING);
    case Word::CHOICE:
        type.kind = TypeKind::Choice;
        advance(p);
        if (expect(p, TokenKind::OpenBrace))
            parseComponents(p, type);
        return;
    case Word::EMBEDDED:
        return parseTwoWords(p, type, TypeKind::EmbeddedPdv, Word::PDV);
    case Word::ENUMERATED:
        type.kind = TypeKind::Enumerated;
        advance(p);
        return parseItems(p, type);
    case Word::INSTANCE:
        return parseInstanceOf(p, type);
    case Word::INTEGER:
        type.kind = TypeKind::Integer;
        advance(p);
        if (at(p, TokenKind::OpenBrace))
            parseItems(p, type);
        return;
    case Word::OBJECT:
        return parseTwoWords(p, type, TypeKind::ObjectIdentifier, Word::IDENTIFIER);
    case Word::OCTET:
        return parseTwoWords(p, type, TypeKind::OctetString, Word::STRING);
    case Word::SEQUENCE:
    case Word::SET:
        return parseSequence(p, type);
    default:
        failExpected(p, "a type");
    }
}

/* OBJECT is a macro of 1988 too. */
bool isObjectMacro(const Parser &p) {
    const Token &second = peek(p, 1);
    return p.typePlace == TypePlace::Governor && atWord(p, Word::OBJECT) &&
           second.word != Word::IDENTIFIER && second.kind == TokenKind::Upper;
}

void parseUntagged(Parser &p, Type &type) {
    const Token &token = peek(p);
    if (p.typePlace == TypePlace::Assignment && beginsNextAssignment(p))
        return failExpected(p, "a type");
    const bool className =
        token.word == Word::TYPE_IDENTIFIER || token.word == Word::ABSTRACT_SYNTAX;
    if (isBitsOfManagement(p)) {
        parseBitsOfManagement(p, type);
    } else if (isUpperName(p, token) || className || isObjectMacro(p)) {
        parseReferenceType(p, type);
    } else if (token.kind == TokenKind::Lower && nextIs(p, TokenKind::Less)) {
        type.kind = TypeKind::Selection;
        type.identifier = takeName(p);
        advance(p);
        type.element = parseType(p);
    } else if (token.kind == TokenKind::Lower) {
        parseReferenceType(p, type);
    } else if (token.kind == TokenKind::Word) {
        parseWordType(p, type);
    } else {
        failExpected(p, "a type");
    }
}

TagClassWord takeTagClass(Parser &p) {
    if (takeWord(p, Word::UNIVERSAL))
        return TagClassWord::Universal;
    if (takeWord(p, Word::APPLICATION))
        return TagClassWord::Application;
    if (takeWord(p, Word::PRIVATE))
        return TagClassWord::Private;
    return TagClassWord::Context;
}

/* An encoding instruction in brackets says nothing that a tree could hold. */
void skipInstruction(Parser &p) {
    warning(p.context.diagnostics, here(p), "an encoding instruction is read over");
    int depth = 0;
    do {
        const TokenKind kind = peek(p).kind;
        if (kind == TokenKind::OpenBracket)
            ++depth;
        else if (kind == TokenKind::CloseBracket)
            --depth;
        else if (kind == TokenKind::End || kind == TokenKind::Assign)
            failExpected(p, "\"]\"");
        advance(p);
    } while (!p.failed && depth > 0);
}

bool isInstruction(const Parser &p) {
    const Token &first = peek(p, 1);
    if (first.kind != TokenKind::Upper)
        return p.words != nullptr && p.words->otherInstructions;
    if (nextIs(p, TokenKind::Colon, 2))
        return textOf(p.file, first) != "TAG";
    return !nextIs(p, TokenKind::Dot, 2) && p.words != nullptr && p.words->otherInstructions;
}

void parseTag(Parser &p, Type &type) {
    TagSpec tag;
    tag.place = here(p);
    advance(p);
    if (at(p, TokenKind::Upper) && nextIs(p, TokenKind::Colon)) {
        advance(p);
        advance(p);
    }
    tag.tagClass = takeTagClass(p);
    if (at(p, TokenKind::Number) || at(p, TokenKind::Lower) ||
        (at(p, TokenKind::Upper) && nextIs(p, TokenKind::Dot)))
        tag.number = parseValue(p);
    else
        failExpected(p, "the number of a tag");
    expect(p, TokenKind::CloseBracket);
    if (takeWord(p, Word::IMPLICIT))
        tag.mode = TagModeWord::Implicit;
    else if (takeWord(p, Word::EXPLICIT))
        tag.mode = TagModeWord::Explicit;
    type.tags.push_back(tag);
}

} // namespace

bool beginsType(const Parser &p, const Token &token) {
    switch (token.kind) {
    case TokenKind::Upper:
    case TokenKind::OpenBracket:
        return true;
    case TokenKind::Word:
        return kindOfWord(token.word) != TypeKind::Bad || beginsLongType(token.word) ||
               isRedefined(p, token.word);
    default:
        return false;
    }
}

Type *parseType(Parser &p) {
    Type *type = newType(p.context.arena, TypeKind::Bad, here(p));
    const Nesting nesting(p);
    while (at(p, TokenKind::OpenBracket)) {
        if (isInstruction(p))
            skipInstruction(p);
        else
            parseTag(p, *type);
    }
    parseUntagged(p, *type);
    while (at(p, TokenKind::OpenParen))
        type->constraints.push_back(parseConstraint(p));
    if (p.failed)
        type->kind = TypeKind::Bad;
    type->end = behind(p);
    return type;
}

} // namespace asntree
