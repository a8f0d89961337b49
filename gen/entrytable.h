#pragma once

struct AsnModule;
struct BrowserNode;

/* The tables of a module: the entry table, through which a program reaches an entry type by number,
   and those of values, objects and sets. They come after the coding functions, because a row names
   those that exist. */
void generateTables(AsnModule *module);

/* The function that gives a row of a table by its index, and its declaration, where the module has
   such functions ("TABF="). `elementType` is the C type of a row, `tableName` the table's name
   behind the generation prefix, `count` its number of rows. It shows below `browserParent` in the
   browser tree. */
void genTableAccessFunction(AsnModule *module, const char *elementType, const char *tableName,
                            int count, BrowserNode *browserParent);
