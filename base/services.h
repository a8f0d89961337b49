#pragma once

#include <cstdio>

#include "base/text.h"

/* Longest path of a file. */
inline constexpr std::size_t MAX_PATH_LENGTH = 512;

/* Opens `directory` and `name` joined. A path of over 512 characters (reported without a name) or a
   failure to open is fatal error 1 if `mode` begins with "r", otherwise 2. */
std::FILE *fopenTextFile(const char *directory, const char *name, const char *mode);
