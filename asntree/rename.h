#pragma once

#include "asntree/naming.h"
#include "asntree/options.h"
#include "asntree/plan.h"

namespace asntree {

/* What the parts of the tree that are written for a definition say of its name already: options of
   its module (by tree), and words of directives as overrides ("-TNAME=X"). */
struct GivenNames {
    std::vector<NamingRules> rules;       /* parallel to Plan::trees */
    std::vector<std::size_t> nameLengths; /* the same: NAMELEN= */
    std::vector<bool> componentDefines;   /* the same: CDEFS= */
    std::unordered_map<const Assignment *, std::vector<std::string>> overrides;
};

/* Gives naming overrides to definitions that would clash in C: with one another, with what the
   generator derives from the names of others (functions, tags, tables, macros), with the run-time
   layer, and defines of values with members of structures. Each gets the prefix of its own module,
   and where that doesn't tell two apart, a number. A note for each. */
void renameClashes(Compilation &c, const Settings &settings, const GivenNames &given, Plan &plan);

} // namespace asntree
