#pragma once

#include <string_view>

#include "base/i64.h"
#include "base/text.h"

struct AsnValue;

/* What stands between the quotes of a string literal: quotes, backslashes, control characters and
   what would become a trigraph are escaped. */
Text cStringText(std::string_view text);

/* Integers as C writes them. `format` is the value form of the C type that takes the number: 64-bit
   forms are built by calls of the run-time library. Infinity in a form that has no name for it is
   fatal error 13. */
Text &cInt64(Text &dst, const char *prefix, sint64 value, int format, const char *postfix);
/* The same for a value, in the form of its type. */
Text &cIntegerValue(Text &dst, const char *prefix, AsnValue *value, const char *postfix);
