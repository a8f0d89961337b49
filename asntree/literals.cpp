#include <algorithm>

#include "asntree/lexer.h"
#include "asntree/lexstate.h"
#include "base/text.h"

/* Literals, and what stands in a text although ASN.1 has no use for it. */

namespace asntree {

Decoded decodeUtf8(std::string_view text) {
    const auto octet = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned first = octet(0);
    if (first < 0x80)
        return {first, 1};
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length)
        return {};
    std::uint32_t character = first & (0x7Fu >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((octet(at) & 0xC0) != 0x80)
            return {};
        character = character << 6 | (octet(at) & 0x3Fu);
    }
    constexpr std::uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < least[length] || character > 0x10FFFF || (character & ~0x7FFu) == 0xD800)
        return {};
    return {character, length};
}

namespace {

constexpr char NO_BREAK_SPACE[] = "\xC2\xA0";

/* Octets of the white space at `at`, 0 if there is none. */
std::size_t spaceAt(std::string_view text, std::size_t at) {
    if (isOf(text[at], CHAR_SPACE))
        return 1;
    return text.substr(at, 2) == NO_BREAK_SPACE ? 2 : 0;
}

/* The place of the quote that ends the literal, or of what can't stand in it. A literal may go on
   over lines, a quotation of words may not. */
std::size_t endOfQuoted(const LexState &state) {
    std::size_t end = state.at + 1;
    while (end < state.size) {
        const std::size_t space = spaceAt({state.text, state.size}, end);
        if (space == 0 && !isOf(state.text[end], CHAR_NAME))
            break;
        end += std::max<std::size_t>(space, 1);
    }
    return end;
}

void checkQuoted(LexState &state, std::size_t begin, std::size_t end, bool binary) {
    bool small = isOf(state.text[end + 1], CHAR_LOWER);
    for (std::size_t at = begin + 1; at < end; ++at) {
        const char c = state.text[at];
        if (const std::size_t space = spaceAt({state.text, state.size}, at)) {
            at += space - 1;
        } else if (binary ? c != '0' && c != '1' : !isOf(c, CHAR_DIGIT | CHAR_HEX)) {
            error(state.diagnostics, state.place(at),
                  formatText("\"%c\" is no %s digit", c, binary ? "binary" : "hexadecimal"));
            return;
        }
        small = small || isOf(c, CHAR_LOWER);
    }
    if (small && !state.smallHexReported) {
        slip(state.diagnostics, state.place(begin),
             "the letters of binary and hexadecimal strings are capital letters");
        state.smallHexReported = true;
    }
}

enum class Strange : std::uint8_t { Dash, Quote, Space, Other };

struct StrangeRange {
    std::uint32_t from;
    std::uint32_t to;
    Strange what;
};
constexpr StrangeRange strangeRanges[] = {
    {0x00AB, 0x00AB, Strange::Quote}, {0x00AD, 0x00AD, Strange::Dash},
    {0x00B4, 0x00B4, Strange::Quote}, {0x00BB, 0x00BB, Strange::Quote},
    {0x1680, 0x1680, Strange::Space}, {0x2000, 0x200F, Strange::Space},
    {0x2010, 0x2015, Strange::Dash},  {0x2018, 0x201F, Strange::Quote},
    {0x2028, 0x202F, Strange::Space}, {0x2032, 0x2037, Strange::Quote},
    {0x2039, 0x203A, Strange::Quote}, {0x205F, 0x2060, Strange::Space},
    {0x2212, 0x2212, Strange::Dash},  {0x3000, 0x3000, Strange::Space},
    {0xFE58, 0xFE58, Strange::Dash},  {0xFE63, 0xFE63, Strange::Dash},
    {0xFEFF, 0xFEFF, Strange::Space}, {0xFF02, 0xFF02, Strange::Quote},
    {0xFF07, 0xFF07, Strange::Quote}, {0xFF0D, 0xFF0D, Strange::Dash},
};

Strange classify(std::uint32_t character) {
    for (const StrangeRange &range : strangeRanges)
        if (character >= range.from && character <= range.to)
            return range.what;
    return Strange::Other;
}

std::string describe(std::string_view text, const Decoded &decoded, Strange what) {
    const std::string character(text.substr(0, decoded.length));
    if (decoded.length == 0)
        return formatText("the octet %02X is not UTF-8",
                          static_cast<unsigned>(static_cast<unsigned char>(text[0])));
    if (decoded.character < 0x20 || (decoded.character >= 0x7F && decoded.character < 0xA0))
        return formatText("a control character (U+%04X)", decoded.character);
    if (decoded.character < 0x80)
        return "\"" + character + "\" is no character of ASN.1 outside of comments and strings";
    switch (what) {
    case Strange::Dash:
        return formatText("a typographic dash (U+%04X) where a hyphen \"-\" belongs",
                          decoded.character);
    case Strange::Quote:
        return formatText("a typographic quotation mark (U+%04X) where \" or ' belongs",
                          decoded.character);
    case Strange::Space:
        return formatText("a space that ASN.1 doesn't have (U+%04X)", decoded.character);
    case Strange::Other:
        break;
    }
    return "\"" + character + "\"" +
           formatText(" (U+%04X) may stand in comments and strings alone", decoded.character);
}

/* True for octets with which no token and no white space begins. */
bool isStrange(char c) {
    constexpr std::string_view signs = "{}()[]<>,.:;=|^@!*-/&\"'";
    return !isOf(c, CHAR_SPACE | CHAR_NAME) && (c == '\0' || signs.find(c) == signs.npos);
}

} // namespace

void lexQuoted(LexState &state) {
    const std::size_t begin = state.at;
    const std::size_t end = endOfQuoted(state);
    const bool closed = end < state.size && state.text[end] == '\'';
    const char base = closed && end + 1 < state.size ? state.text[end + 1] : '\0';
    const bool binary = base == 'B' || base == 'b';
    if (binary || base == 'H' || base == 'h') {
        checkQuoted(state, begin, end, binary);
        state.at = end + 2;
        addToken(state, binary ? TokenKind::BString : TokenKind::HString, begin);
        return;
    }
    const std::size_t lineEnd = endOfLine(state, begin);
    const bool oneLine = closed && end < lineEnd;
    error(state.diagnostics, state.place(oneLine ? end : begin),
          oneLine ? "B or H must follow the quote that ends a binary or hexadecimal string"
                  : "this quote begins no binary or hexadecimal string: 'B or 'H is missing");
    state.at = oneLine ? end + 1 : lineEnd;
    addToken(state, TokenKind::Bad, begin);
}

void lexCString(LexState &state) {
    const std::size_t begin = state.at;
    std::size_t end = begin + 1;
    const std::string_view text(state.text, state.size);
    for (;;) {
        end = text.find('"', end);
        if (end == text.npos)
            break;
        if (end + 1 >= text.size() || text[end + 1] != '"') {
            state.at = end + 1;
            addToken(state, TokenKind::CString, begin);
            return;
        }
        end += 2;
    }
    error(state.diagnostics, state.place(begin), "this string has no end: '\"' is missing");
    state.at = endOfLine(state, begin);
    addToken(state, TokenKind::Bad, begin);
}

void lexXmlValue(LexState &state) {
    const std::size_t begin = state.at;
    const std::string_view text(state.text, state.size);
    std::size_t end = begin + 1;
    while (end < text.size() && (isOf(text[end], CHAR_NAME) || text[end] == '-'))
        ++end;
    const std::string name(text.substr(begin, end - begin)); /* with its "<" */
    const std::string endTag = "</" + name.substr(1);
    const auto namedAt = [&](const std::string &tag, std::size_t at) {
        const char behind = at + tag.size() < text.size() ? text[at + tag.size()] : '\0';
        return text.substr(at, tag.size()) == tag && !isOf(behind, CHAR_NAME) && behind != '-';
    };
    std::size_t depth = 0;
    for (std::size_t at = begin; !state.xmlFailed && at < text.size();
         at = text.find('<', at + 1)) {
        const bool closes = namedAt(endTag, at);
        if (!closes && !namedAt(name, at))
            continue;
        end = text.find('>', at);
        if (end == text.npos)
            break;
        if (closes)
            --depth;
        else if (text[end - 1] != '/')
            ++depth;
        if (depth == 0) {
            state.at = end + 1;
            addToken(state, TokenKind::XmlValue, begin);
            return;
        }
    }
    if (!state.xmlFailed)
        error(state.diagnostics, state.place(begin),
              "this XML value has no end: " + endTag + "> is missing");
    state.xmlFailed = true;
    state.at = endOfLine(state, begin);
    addToken(state, TokenKind::Bad, begin);
}

void lexStrange(LexState &state) {
    const std::size_t begin = state.at;
    const std::string_view text(state.text + begin, state.size - begin);
    const Decoded decoded = decodeUtf8(text);
    const Strange what = decoded.length > 1 ? classify(decoded.character) : Strange::Other;
    error(state.diagnostics, state.place(begin), describe(text, decoded, what));
    if (what == Strange::Space) {
        state.at += decoded.length;
        return;
    }
    while (state.at < state.size && isStrange(state.text[state.at]))
        ++state.at;
    addToken(state, TokenKind::Bad, begin);
}

namespace {

std::string charactersOf(std::string_view quoted) {
    std::string content;
    for (std::size_t at = 0; at < quoted.size(); ++at) {
        if (!isOf(quoted[at], CHAR_END)) {
            content += quoted[at];
            at += quoted[at] == '"' ? 1 : 0;
            continue;
        }
        while (content.ends_with(' ') || content.ends_with('\t') ||
               content.ends_with(NO_BREAK_SPACE)) {
            if (content.back() == NO_BREAK_SPACE[1])
                content.pop_back();
            content.pop_back();
        }
        while (at + 1 < quoted.size() && spaceAt(quoted, at + 1) != 0)
            at += spaceAt(quoted, at + 1);
    }
    return content;
}

} // namespace

std::string stringContent(const SourceFile &file, const Token &token) {
    std::string_view text = textOf(file, token);
    if (text.size() < 2)
        return {};
    if (token.kind == TokenKind::CString)
        return charactersOf(text.substr(1, text.size() - 2));
    std::string digits;
    for (const char c : text.substr(1, text.rfind('\'') - 1))
        if (isOf(c, CHAR_NAME))
            digits += c;
    return strUpper(digits);
}

} // namespace asntree
