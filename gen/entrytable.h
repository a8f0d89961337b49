#pragma once

#include "base/text.h"

struct AsnModule;
struct AsnType;
struct BrowserNode;

/* The entry table of a module (generateTables writes it), and what other tables take from it. */

/* The name of the table of entry types: "mEntryDescr". */
Text entryTableName(AsnModule *module);
/* The function that gives a row of a table by its index, and its declaration, where the module has
   such functions ("TABF="). `elementType` is the C type of a row, `table` the name of the
   table, `count` its number of rows. It shows below `browserParent` in the
   browser tree. */
void genTableAccessFunction(AsnModule *module, const Text &elementType, const Text &table,
                            int count, BrowserNode *browserParent);

/* The components of an entry type as variables of a MORLA application, which its row names. */

/* Their number, 1 for a type that has none. */
int nrOfEntryParams(AsnType *type);
/* Their names, with ",\n" between them. */
void genETabElemCompsContents(AsnType *type);
/* The name of the list to which the entry's row refers: mEntryParam0. */
Text entryParamName(AsnType *type, int index);
/* The list of them as a table of its own, unless an entry in front of this one has the same. */
void genETabSeparateAsnParams(AsnType *type, int index);
