#pragma once

#include "asntree/options.h"
#include "asntree/plan.h"

namespace asntree {

/* Chooses the entry types of a run. With -ENTRY= options those that they name; in a module with
   words `entry` those that have the word; else all types that no other type names, and all of a
   circle of types that none outside of it names. Names in CONTAINING, in constraints of open types,
   objects, sets and classes don't count: what travels inside another encoding has to be coded by
   itself. */
void chooseEntries(Compilation &c, const Settings &settings, const std::vector<EntryWord> &words,
                   Plan &plan);

} // namespace asntree
