#pragma once

#include <string_view>

#include "base/i64.h"
#include "base/text.h"

struct AsnValue;

/* One octet within a string literal: "\\012". */
Text cOctalEscape(unsigned octet);
/* What stands between the quotes of a string literal: quotes, backslashes, control characters and
   what would become a trigraph are escaped. */
Text cStringText(std::string_view text);

/* Integers as C writes them. `format` is the value form of the C type that takes the number: 64-bit
   forms are built by calls of the run-time library. Infinity in a form that has no name for it is
   fatal error 13. */
Text cInt64(sint64 value, int format);
/* A number as a call of the run-time library: "i64ltosint64 (5L)". */
Text cSint64(sint64 value);
/* The same for a value, in the form of its type. */
Text cIntegerValue(AsnValue *value);
