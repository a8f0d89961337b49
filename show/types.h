#pragma once

#include "base/text.h"

struct AsnType;

/* A type with its parts, each with its facts. `before` stands in front of it ("Name ::= "),
   `behind` at the end of its last line. */
void showType(int level, AsnType *type, const Text &before, const Text &behind);
/* The part of a type that a path like "comp.inner" leads to, "*" being the element of a list; false
   if there is no such part, and nothing is shown. */
bool showTypePart(AsnType *type, const Text &before, std::string_view path);
