#pragma once

#include <cstdint>

#include "base/text.h"

/* Checkers of option values. Each stores in `dst` and returns true, or returns false and leaves
   `dst` alone. A null `dst` only checks. */

/* A word that stands for a number, without regard to case. */
struct OptionWord {
    std::uint8_t value;
    const char *word; /* null ends a table */
};

/* "1", "YES", "TRUE", "0", "NO", "FALSE". */
bool booleOptionOK(std::uint8_t *dst, const char *text);
/* A number of at most 3 digits from `min` to `max`, or a word of `words` (may be null), to which
   the limits don't apply. */
bool byteOptionOK(std::uint8_t *dst, const char *text, int min, int max, const OptionWord *words);
bool int32OptionOK(std::int32_t *dst, const char *text, std::int32_t min, std::int32_t max);
/* Bits of an integer as a ValueForm: "0", "OPTIMIZE", "8" to "64", with "U" in front if allowed. */
bool intSizeOptionOK(std::uint8_t *dst, const char *text, bool unsignedAllowed);
/* Bits of a real number as a ValueForm. */
bool realSizeOptionOK(std::uint8_t *dst, const char *text);
/* Digits 0 to 7, each of which sets its bit. */
bool bitVector8OptionOK(std::uint8_t *dst, const char *text);
/* A printable text, which gets a "/" at its end. */
bool directoryOptionOK(Text *dst, const char *text);
/* "{mantissa,10,exponent}". */
bool realLimOptionOK(const char *text);

/* Letters, digits and the characters of `specials`. */
bool alnumSpecialStriOptionOK(Text *dst, const char *text, const char *specials, std::size_t min,
                              std::size_t max);
