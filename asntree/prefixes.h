#pragma once

#include "asntree/options.h"
#include "asntree/plan.h"

namespace asntree {

/* Gives each module of the run a prefix of its own (Plan::prefixes), and each tree that of its
   first module that has one by option, else of its first module, or what MERGE= says. No two
   prefixes differ in the case of letters alone. */
void choosePrefixes(Compilation &c, const Settings &settings, Plan &plan);

/* A prefix made of a module's name in at most `length` characters: its words are shortened evenly
   where they don't fit. */
std::string prefixOfName(std::string_view moduleName, std::size_t length);

} // namespace asntree
