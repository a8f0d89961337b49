#pragma once

#include <array>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "asntree/diagnostics.h"
#include "asntree/source.h"

/* What the files of the lexer share. */

namespace asntree {

/* Classes of octets. */
enum : std::uint8_t {
    CHAR_SPACE = 1, /* white space, line ends too */
    CHAR_END = 2,   /* of a line, and so of a comment */
    CHAR_UPPER = 4,
    CHAR_LOWER = 8,
    CHAR_DIGIT = 16,
    CHAR_HEX = 32, /* letters of hexadecimal digits, of either case */
    CHAR_UNDERLINE = 64,
    CHAR_LETTER = CHAR_UPPER | CHAR_LOWER,
    CHAR_NAME = CHAR_LETTER | CHAR_DIGIT | CHAR_UNDERLINE, /* all of a name but the hyphen */
};

constexpr std::array<std::uint8_t, 256> makeCharClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const char c : {' ', '\t'})
        classes[static_cast<unsigned char>(c)] = CHAR_SPACE;
    for (const char c : {'\n', '\r', '\v', '\f'})
        classes[static_cast<unsigned char>(c)] = CHAR_SPACE | CHAR_END;
    for (unsigned c = 'A'; c <= 'Z'; ++c)
        classes[c] = CHAR_UPPER | (c <= 'F' ? CHAR_HEX : 0);
    for (unsigned c = 'a'; c <= 'z'; ++c)
        classes[c] = CHAR_LOWER | (c <= 'f' ? CHAR_HEX : 0);
    for (unsigned c = '0'; c <= '9'; ++c)
        classes[c] = CHAR_DIGIT;
    classes['_'] = CHAR_UNDERLINE;
    return classes;
}
inline constexpr std::array<std::uint8_t, 256> charClasses = makeCharClasses();

inline bool isOf(char c, unsigned classes) {
    return (charClasses[static_cast<unsigned char>(c)] & classes) != 0;
}

/* A lexer at work. The text ends with a NUL, so that one octet behind any other may be looked at.
 */
struct LexState {
    SourceFile &file;
    Diagnostics &diagnostics;
    const char *text;
    std::size_t size; /* of the text without what an editor left at its end */
    std::size_t at = 0;
    /* Slips are reported once a file, or once a name. */
    std::unordered_set<std::string_view> underlined;
    bool smallHexReported = false;
    bool strayHyphenReported = false;
    bool xmlFailed = false; /* an XML value had no end: no other one is looked for */

    LexState(SourceFile &source, Diagnostics &messages);

    char peek(std::size_t ahead = 0) const { return at + ahead < size ? text[at + ahead] : '\0'; }
    bool begins(std::string_view what) const {
        return std::string_view(text + at, size - at).starts_with(what);
    }
    Place place(std::size_t offset) const {
        return {file.number, static_cast<std::uint32_t>(offset)};
    }
};

/* Each lexes what begins at `at`, with a token for it, and moves `at` behind it. */

void lexQuoted(LexState &state);  /* '01'B, '0F'H */
void lexCString(LexState &state); /* "text" */
void lexXmlValue(LexState &state);
/* Octets of which no token is made: control characters, characters beyond ASCII. */
void lexStrange(LexState &state);

void addToken(LexState &state, TokenKind kind, std::size_t begin, Word word = Word::None);
std::size_t endOfLine(const LexState &state, std::size_t at);

} // namespace asntree
