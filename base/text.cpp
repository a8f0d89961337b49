#include "base/text.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdio>
#include <cstring>

namespace {

/* Names and options are ASCII; the locale has no say. */
unsigned char upper(char c) {
    return static_cast<unsigned char>(isAsciiLower(c) ? c - 'a' + 'A' : c);
}

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

void appendNumber(Text &text, std::integral auto number) {
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/* What vsnprintf makes of `format`. */
PRINTF_LIKE(2, 0) Text &appendPrinted(Text &text, const char *format, std::va_list arguments) {
    std::va_list again;
    va_copy(again, arguments);
    const int printed = std::vsnprintf(nullptr, 0, format, arguments);
    const std::size_t length = printed > 0 ? static_cast<std::size_t>(printed) : 0;
    const std::size_t before = text.size();
    text.resize(before + length);
    std::vsnprintf(text.data() + before, length + 1, format, again);
    va_end(again);
    return text;
}

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

Text &appendFormatV(Text &text, const char *format, std::va_list arguments) {
    while (const char *conversion = std::strchr(format, '%')) {
        text.append(format, conversion);
        format = conversion; /* compilers follow the argument itself to what prints by it */
        switch (format[1]) {
        case 's':
            text += va_arg(arguments, const char *);
            break;
        case 'd':
            appendNumber(text, va_arg(arguments, int));
            break;
        case 'l':
            if (format[2] == 'd')
                appendNumber(text, va_arg(arguments, long));
            else if (format[2] == 'u')
                appendNumber(text, va_arg(arguments, unsigned long));
            else
                return appendPrinted(text, format, arguments);
            ++format;
            break;
        default:
            return appendPrinted(text, format, arguments);
        }
        format += 2;
    }
    return text += format;
}

Text formatText(const char *format, ...) {
    static Text text; /* kept for its memory */
    text.clear();
    std::va_list arguments;
    va_start(arguments, format);
    appendFormatV(text, format, arguments);
    va_end(arguments);
    return text;
}
