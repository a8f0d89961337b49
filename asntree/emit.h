#pragma once

#include <string>
#include <vector>

#include "asntree/options.h"
#include "asntree/plan.h"
#include "asntree/records.h"

/* From checked modules to the records of their trees. */

namespace asntree {

struct Directives;

/* What the compiler says of a definition in the listing alone: a choice of its own, or something
   that the tree doesn't say. */
struct EmitNote {
    const Assignment *definition = nullptr; /* null: of the whole module */
    std::string text;
};

struct EmittedTree {
    Tree tree;
    std::vector<EmitNote> notes;
    std::vector<const Assignment *> leftOut; /* with --skip-unsupported, and macros */
    /* Where the definitions stand; filled if there are to be listings. */
    std::unordered_map<const Assignment *, RecNr> types;
    std::unordered_map<const Assignment *, RecNr> values;
};

/* Makes all trees of a plan, parallel to its list; the modules have to be free of errors. A
   definition that a tree can't hold is an error, or is left out with a warning, together with what
   refers to it, if the settings say so. False if there were errors. `directives` may be null. */
bool emitTrees(Compilation &c, const Plan &plan, const Settings &settings,
               const Directives *directives, std::vector<EmittedTree> &trees);

} // namespace asntree
