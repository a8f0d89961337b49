#pragma once

#include "base/text.h"

struct AsnFieldValue;
struct AsnModule;
struct AsnObjectSet;

/* Sets of values and of objects in the table file: named object sets, and the sets that fields of
   objects hold, which stand in the row itself or, with "TABO=", in tables of their own. */

/* The numbers that the tables of fields get. The pass that writes these tables and the pass that
   writes the rows meet the same sets in the same order, and each counts for itself. */
struct SetTableNumbers {
    int valueSets = 0;
    int objectSets = 0;
};

/* The separate tables of value sets; of object sets, and behind them those with a name. */
void genFixedTypeValueSetTables(AsnModule *module);
void genObjectSetTables(AsnModule *module);
/* The table of one named set, with its macros; `index` counts the sets of the module. */
void genObjectSetTable(AsnObjectSet *objectSet, int index);
/* The name of the table: "mErrors". */
Text objectSetTableName(AsnObjectSet *objectSet);

/* A field of a row: the set itself, or the name of its table. */
void genObjectFixedTypeValueSetField(AsnFieldValue *value, SetTableNumbers *numbers);
void genObjectObjectSetField(AsnFieldValue *value, SetTableNumbers *numbers);
