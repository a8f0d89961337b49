#pragma once

#include <charconv>
#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/* Every text that grows. A text function returns it: `Text f(thing)`. */
using Text = std::string;

/* `text`, or the empty text for null. */
inline const char *orEmpty(const char *text) {
    return text == nullptr ? "" : text;
}

/* One part of a text: characters, null standing for none, or a number in decimal digits. It borrows
   and is made for the arguments of one call. */
class Part {
public:
    Part(const char *text) : view_(orEmpty(text)) {}
    Part(std::string_view text) : view_(text) {}
    Part(const Text &text) : view_(text) {}
    template <std::integral Number>
        requires(sizeof(Number) > 1)
    Part(Number number)
        : view_(digits_, std::to_chars(digits_, digits_ + sizeof digits_, number).ptr) {}
    Part(const Part &) = delete;
    Part &operator=(const Part &) = delete;

    std::string_view view() const { return view_; }

private:
    char digits_[20]; /* enough for 64 bits with a sign */
    std::string_view view_;
};

/* Appends the parts to `text`, which is returned. */
Text &appendParts(Text &text, std::initializer_list<Part> parts);
/* The parts as one text: concat("_", name, "_Table"). */
template <typename... Parts> Text concat(const Parts &...parts) {
    Text text;
    return std::move(appendParts(text, {Part(parts)...}));
}

/* Character classes of the C locale, whatever the sign of char. */
bool isAsciiUpper(char c);
bool isAsciiLower(char c);
bool isAsciiDigit(char c);
bool isAsciiAlpha(char c);
bool isAsciiAlnum(char c);
/* Letters, digits, "-" and "_": what names, prefixes and symbols are made of. */
bool isSymbolChar(char c);

/* The text with "_" for "-", or the other way round. */
Text convertHyphens(Text text);
Text convertUnderscores(Text text);
/* The text in ASCII upper case. */
Text strUpper(Text text);

/* Comparison without regard to case: the difference of the upper case forms of the first unequal
   pair, 0 if the texts (or their first `n` characters) are equal. */
int strCaseComp(const char *a, const char *b);
int strnCaseComp(const char *a, const char *b, std::size_t n);

/* `text` without white space at both ends. */
std::string_view remSpaces(std::string_view text);

/* The place behind `prefix` if `text` begins with it, else null. */
const char *isOptionStri(const char *text, const char *prefix);

#if defined(__GNUC__)
#define PRINTF_LIKE(text, first) __attribute__((format(printf, text, first)))
#else
#define PRINTF_LIKE(text, first)
#endif

/* The text that printf would write: for forms such as "%02d" that parts don't have. */
Text formatText(const char *format, ...) PRINTF_LIKE(1, 2);
