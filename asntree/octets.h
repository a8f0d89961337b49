#pragma once

#include <span>
#include <string>
#include <string_view>

#include "asntree/number.h"

/* Encodings that stand in trees where the format has no value of a kind. */

namespace asntree {

/* "0A1F" */
std::string hexDigits(std::string_view octets);
/* Four binary digits for each hexadecimal one. */
std::string binaryDigits(std::string_view hexadecimal);
/* The content octets of an INTEGER: two's complement, as few as it needs. */
std::string contentOfInteger(const Number &number);
/* The content octets of a RELATIVE-OID. */
std::string contentOfArcs(std::span<const Number> arcs);
std::string utf8Of(std::u32string_view characters);

} // namespace asntree
