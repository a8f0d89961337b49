#pragma once

#include <unordered_set>

#include "base/call.h"

/* What a module's files name of other modules: tables in its rows and sets, and types. */

struct AsnModule;
struct ModRec;

/* The modules that define types which types of this one refer to. */
std::unordered_set<const ModRec *> modulesOfReferredTypes(AsnModule *module);

/* Calls `func` for each module of which a row is named, in the order of first mention; `entries`
   and `objects` say of which tables. Modules without table files are left out: nothing of them is
   named.
 */
void forEachForeignTable(AsnModule *module,
                         Call<void(AsnModule *other, bool entries, bool objects)> func);
