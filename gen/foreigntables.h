#pragma once

#include "store/call.h"

/* Tables of other modules that the rows and sets of a module name. */

struct AsnModule;

/* Calls `func` for each module of which a row is named, in the order of first mention; `entries`
   and `objects` say of which tables. Modules without table files are left out: nothing of them is
   named.
 */
void forEachForeignTable(AsnModule *module,
                         Call<void(AsnModule *other, bool entries, bool objects)> func);
