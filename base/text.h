#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

/* Every text that grows. A text function has the form
       Text &f(Text &dst, const char *prefix, thing, const char *suffix)
   It sets `dst`, takes a null prefix or suffix as empty and returns `dst`. The form that ends in
   ToF writes the same text to a file number. */
using Text = std::string;

/* `text`, or the empty text for null. */
inline const char *orEmpty(const char *text) {
    return text == nullptr ? "" : text;
}

/* Character classes of the C locale, whatever the sign of char. */
bool isAsciiUpper(char c);
bool isAsciiLower(char c);
bool isAsciiDigit(char c);
bool isAsciiAlpha(char c);
bool isAsciiAlnum(char c);
/* Letters, digits, "-" and "_": what names, prefixes and symbols are made of. */
bool isSymbolChar(char c);

/* "-" becomes "_" (or the other way round), in place; returns `text`. */
Text &convertHyphens(Text &text);
Text &convertUnderscores(Text &text);
/* ASCII upper case, in place; returns `text`. */
Text &strUpper(Text &text);

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

/* The text that printf would write. */
Text formatText(const char *format, ...) PRINTF_LIKE(1, 2);
/* Appends it to `text`, which is returned. Almost all formats have texts and plain numbers only;
   these are put together here, a multiple faster than by vsnprintf, which gets what begins with
   another conversion. */
Text &appendFormatV(Text &text, const char *format, std::va_list arguments) PRINTF_LIKE(2, 0);
