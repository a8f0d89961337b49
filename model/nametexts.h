#pragma once

#include "base/text.h"
#include "options/naming.h"

/* Small helpers that the handles of all sorts share. */

inline bool testOptionBit(std::uint32_t bits, int bit) {
    return ((bits >> (static_cast<unsigned>(bit) % 32u)) & 1u) != 0;
}
