#pragma once

#include "asntree/options.h"
#include "asntree/plan.h"

namespace asntree {

/* Chooses the entry types of a run. With -ENTRY= options those that they name; in a module with
   words `entry` those that have the word; else all types that no other type names, apart from
   those that it forms a circle of references with. Names in CONTAINING, objects, sets and classes
   don't count: what travels inside another encoding has to be coded by itself. */
void chooseEntries(Compilation &c, const Settings &settings, const std::vector<EntryWord> &words,
                   Plan &plan);

} // namespace asntree
