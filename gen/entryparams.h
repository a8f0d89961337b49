#pragma once

#include "base/text.h"

struct AsnType;

/* The components of an entry type as variables of a MORLA application, which its row names. */

/* Their number, 1 for a type that has none. */
int nrOfEntryParams(AsnType *type);
/* Their names, with ",\n" between them. */
void genETabElemCompsContents(AsnType *type);
/* The name of the list to which the entry's row refers: mEntryParam0. */
Text entryParamName(AsnType *type, int index);
/* The list of them as a table of its own, unless an entry in front of this one has the same. */
void genETabSeparateAsnParams(AsnType *type, int index);
