#pragma once

#include "asntree/options.h"
#include "asntree/plan.h"

namespace asntree {

/* Distributes the modules of a run over trees: one each, but one for all modules of a circle of
   imports, and for those that an option merges (with what that makes a circle). The trees stand
   behind those that they import from; the modules of a tree in the order of `standsBefore`.
   Prefixes and definitions are left to be filled. */
void mergeModules(Compilation &c, const Settings &settings, Plan &plan);

/* Fills the definitions of a tree: those of a single module in the order of its text; of merged
   modules so that each stands behind what it names, groups that name one another together, and else
   module by module in the order of the text. */
void orderDefinitions(const Compilation &c, TreePlan &tree);

} // namespace asntree
