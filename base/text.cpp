#include "base/text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

/* Names and options are ASCII; the locale has no say. */
unsigned char upper(char c) {
    return static_cast<unsigned char>(isAsciiLower(c) ? c - 'a' + 'A' : c);
}

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

} // namespace

Text &appendParts(Text &text, std::initializer_list<Part> parts) {
    std::size_t length = text.size();
    for (const Part &part : parts)
        length += part.view().size();
    text.reserve(length);
    for (const Part &part : parts)
        text += part.view();
    return text;
}

bool isAsciiUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool isAsciiLower(char c) {
    return c >= 'a' && c <= 'z';
}
bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isAsciiAlpha(char c) {
    return isAsciiUpper(c) || isAsciiLower(c);
}
bool isAsciiAlnum(char c) {
    return isAsciiAlpha(c) || isAsciiDigit(c);
}
bool isSymbolChar(char c) {
    return isAsciiAlnum(c) || c == '-' || c == '_';
}

Text convertHyphens(Text text) {
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

Text convertUnderscores(Text text) {
    std::replace(text.begin(), text.end(), '_', '-');
    return text;
}

Text strUpper(Text text) {
    for (char &c : text)
        c = static_cast<char>(upper(c));
    return text;
}

int strCaseComp(const char *a, const char *b) {
    while (*a != '\0' && upper(*a) == upper(*b)) {
        ++a;
        ++b;
    }
    return upper(*a) - upper(*b);
}

int strnCaseComp(const char *a, const char *b, std::size_t n) {
    for (; n > 0; --n, ++a, ++b) {
        if (*a == '\0' || upper(*a) != upper(*b))
            return upper(*a) - upper(*b);
    }
    return 0;
}

std::string_view remSpaces(std::string_view text) {
    const std::size_t first = text.find_first_not_of(WHITE_SPACE);
    if (first == std::string_view::npos)
        return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(WHITE_SPACE) - first + 1);
}

const char *isOptionStri(const char *text, const char *prefix) {
    const std::size_t length = std::strlen(prefix);
    return std::strncmp(text, prefix, length) == 0 ? text + length : nullptr;
}

Text formatText(const char *format, ...) {
    std::va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    Text text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return text;
}
