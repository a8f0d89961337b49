#include "asntree/token.h"

#include <array>

namespace asntree {

namespace {

/* In the order of `Word`. */
constexpr std::string_view wordTexts[] = {
    "",
    "ABSENT",
    "ABSTRACT-SYNTAX",
    "ALL",
    "ANY",
    "APPLICATION",
    "AUTOMATIC",
    "BEGIN",
    "BIT",
    "BMPString",
    "BOOLEAN",
    "BY",
    "CHARACTER",
    "CHOICE",
    "CLASS",
    "COMPONENT",
    "COMPONENTS",
    "CONSTRAINED",
    "CONTAINING",
    "DATE",
    "DATE-TIME",
    "DEFAULT",
    "DEFINED",
    "DEFINITIONS",
    "DURATION",
    "EMBEDDED",
    "ENCODED",
    "ENCODING-CONTROL",
    "END",
    "ENUMERATED",
    "EXCEPT",
    "EXPLICIT",
    "EXPORTS",
    "EXTENSIBILITY",
    "EXTERNAL",
    "FALSE",
    "FROM",
    "GeneralString",
    "GeneralizedTime",
    "GraphicString",
    "IA5String",
    "IDENTIFIER",
    "IMPLICIT",
    "IMPLIED",
    "IMPORTS",
    "INCLUDES",
    "INSTANCE",
    "INSTRUCTIONS",
    "INTEGER",
    "INTERSECTION",
    "ISO646String",
    "MACRO",
    "MAX",
    "MIN",
    "MINUS-INFINITY",
    "NOT-A-NUMBER",
    "NULL",
    "NumericString",
    "OBJECT",
    "OCTET",
    "OF",
    "OID-IRI",
    "OPTIONAL",
    "ObjectDescriptor",
    "PATTERN",
    "PDV",
    "PLUS-INFINITY",
    "PRESENT",
    "PRIVATE",
    "PrintableString",
    "REAL",
    "RELATIVE-OID",
    "RELATIVE-OID-IRI",
    "SEQUENCE",
    "SET",
    "SETTINGS",
    "SIZE",
    "STRING",
    "SYNTAX",
    "T61String",
    "TAGS",
    "TIME",
    "TIME-OF-DAY",
    "TRUE",
    "TYPE-IDENTIFIER",
    "TeletexString",
    "UNION",
    "UNIQUE",
    "UNIVERSAL",
    "UTCTime",
    "UTF8String",
    "UniversalString",
    "VideotexString",
    "VisibleString",
    "WITH",
};
constexpr std::size_t WORDS = std::size(wordTexts);
static_assert(WORDS == static_cast<std::size_t>(Word::WITH) + 1);

/* A hash table with linear probing, made when the program is compiled; 0 is an empty slot. */
constexpr std::size_t SLOTS = 512;

constexpr std::size_t slotOf(std::string_view text) {
    const auto octet = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    return (text.size() * 67 + octet(0) * 5u + octet(text.size() / 2) * 37u +
            octet(text.size() - 1) * 131u) %
           SLOTS;
}

constexpr std::array<std::uint8_t, SLOTS> makeTable() {
    std::array<std::uint8_t, SLOTS> table{};
    for (std::size_t word = 1; word < WORDS; ++word) {
        std::size_t slot = slotOf(wordTexts[word]);
        while (table[slot] != 0)
            slot = (slot + 1) % SLOTS;
        table[slot] = static_cast<std::uint8_t>(word);
    }
    return table;
}
constexpr std::array<std::uint8_t, SLOTS> table = makeTable();

/* In the order of `TokenKind`. */
constexpr std::string_view kindTexts[] = {
    "the end of the file",
    "a name with a capital letter",
    "a name with a small letter",
    "a field with a capital letter",
    "a field with a small letter",
    "a reserved word",
    "a number",
    "a real number",
    "a binary string",
    "a hexadecimal string",
    "a character string",
    "\"::=\"",
    "\"..\"",
    "\"...\"",
    "\"[[\"",
    "\"]]\"",
    "\"{\"",
    "\"}\"",
    "\"(\"",
    "\")\"",
    "\"[\"",
    "\"]\"",
    "\"<\"",
    "\">\"",
    "\",\"",
    "\".\"",
    "\":\"",
    "\";\"",
    "\"=\"",
    "\"|\"",
    "\"^\"",
    "\"@\"",
    "\"!\"",
    "\"*\"",
    "\"-\"",
    "\"/\"",
    "an XML value",
    "a character that ASN.1 doesn't have",
};
static_assert(std::size(kindTexts) == static_cast<std::size_t>(TokenKind::Bad) + 1);

} // namespace

Word wordOf(std::string_view text) {
    if (text.empty())
        return Word::None;
    for (std::size_t slot = slotOf(text); table[slot] != 0; slot = (slot + 1) % SLOTS)
        if (wordTexts[table[slot]] == text)
            return static_cast<Word>(table[slot]);
    return Word::None;
}

std::string_view wordText(Word word) {
    return wordTexts[static_cast<std::size_t>(word)];
}

std::string_view kindText(TokenKind kind) {
    return kindTexts[static_cast<std::size_t>(kind)];
}

} // namespace asntree
