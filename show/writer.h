#pragma once

#include "base/text.h"

/* The lines of the display, on the standard output. */

/* One line, indented by `level` steps; a long one goes on below, where a comma or a bar allows it.
   A tree may hold any bytes: what is no printable character comes out as "?". */
void showLine(int level, const Text &text);
/* The same as a comment of ASN.1. */
void showFact(int level, const Text &text);
/* Between what is shown; nothing in front of the first line. */
void showEmptyLine();

/* Joins what isn't empty with ", ". */
void addPart(Text &list, const Text &part);

/* A text that is put together of a tree's parts goes on with "..." from here on: parts may be
   shared over and over. */
inline constexpr std::size_t MAX_SHOWN = 100'000;
