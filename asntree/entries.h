#pragma once

#include "asntree/plan.h"
#include "asntree/planoptions.h"

namespace asntree {

/* An `entry` word that a directive gives a definition. */
struct EntryWord {
    const Assignment *definition = nullptr;
    std::uint8_t categories = 0; /* 0: none given */
};

/* Chooses the entry types of a run. With -ENTRY= options those that they name; in a module with
   words `entry` those that have the word; else all types that no other type names, apart from
   those that it forms a circle of references with. Names in CONTAINING, objects, sets and classes
   don't count: what travels inside another encoding has to be coded by itself. */
void chooseEntries(Compilation &c, const PlanOptions &options, const std::vector<EntryWord> &words,
                   Plan &plan);

} // namespace asntree
