#pragma once

#include "model/backend.h"

/* Bounds of sizes and enumerations as numbers of 32 bits. */

/* Infinities become 0x7FFFFFFF and -0x80000000. Any other number that does not fit becomes
   0x7FFFFFFF, and unless `module` is null a warning names its source file, the line and the
   message. */
std::int32_t int64ToInt32(sint64 value, AsnModule *module, std::int32_t line, const char *message);
/* `message` may be null. */
void int64Warning(AsnModule *module, std::int32_t line, const char *message);

/* The greatest size to make room for: the limit if there is one, else the upper end. */
void getInt64SizeEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc);
