#pragma once

#include "base/text.h"
#include "options/naming.h"

/* Small helpers that the handles of all sorts share. */

inline Text &joinTexts(Text &dst, const char *prefix, const char *text, const char *suffix) {
    return dst.assign(orEmpty(prefix)).append(orEmpty(text)).append(orEmpty(suffix));
}

/* The C name of a definition; only prefix and suffix if it has no name. */
inline Text &joinFixRec(Text &dst, const char *prefix, const FixRec &fix, const char *suffix) {
    if (fix.id == nullptr)
        return joinTexts(dst, prefix, nullptr, suffix);
    return printFixRec(dst, prefix, &fix, suffix);
}

inline bool testOptionBit(std::uint32_t bits, int bit) {
    return ((bits >> (static_cast<unsigned>(bit) % 32u)) & 1u) != 0;
}
