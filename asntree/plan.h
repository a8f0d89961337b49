#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "asntree/compilation.h"

/* What is settled for a run between the check of its modules and the writing of trees: which module
   goes into which tree, under which prefix, which definitions are entries, and what they are called
   where two would clash in C. */

namespace asntree {

/* One tree: a module, or several that import one another in a circle. */
struct TreePlan {
    std::string filePrefix;
    std::string genPrefix;
    std::vector<ModuleInfo *> modules;           /* the first one gives the tree its name */
    std::vector<std::size_t> includes;           /* trees that it imports from, ascending */
    std::vector<const Assignment *> definitions; /* in the order of the tree's lists */
    std::vector<std::string> notes;              /* merged modules, renamed definitions */
};

struct EntryChoice {
    std::uint8_t flags = 0;      /* TNode.entryFlags */
    std::uint8_t categories = 0; /* TNode.entryCategories */
};

/* The prefixes of a module: that of its tree, or those that it would have outside of a merged one.
 */
struct ModulePrefixes {
    std::string file;
    std::string gen;
};

struct Plan {
    std::vector<TreePlan> trees; /* each behind those that it imports from */
    std::unordered_map<const ModuleInfo *, std::size_t> treeOfModule; /* index in `trees` */
    std::unordered_map<const ModuleInfo *, ModulePrefixes> prefixes;
    std::unordered_map<const Assignment *, EntryChoice> entries;
    /* Naming overrides of definitions, as they stand in the tree: "-TPREF=h225", "-VNAME=..." with
       the letters of the definition's kind (naming.h): what words say, and behind it what keeps
       names apart. */
    std::unordered_map<const Assignment *, std::vector<std::string>> overrides;
};

/* An `entry` word that a directive gives a definition. */
struct EntryWord {
    const Assignment *definition = nullptr;
    std::uint8_t categories = 0; /* 0: none given */
};

/* What directives say of definitions that the plan has to know. */
struct DefinitionWords {
    std::vector<EntryWord> entries;
    /* Naming words as the overrides that they become in the tree: "-TNAME=X". */
    std::unordered_map<const Assignment *, std::vector<std::string>> naming;
};

/* The names of the modules that stand in a tree beside the first one. */
std::vector<std::string_view> furtherModules(const TreePlan &tree);

/* Makes the plan from modules without errors. Reports what can't be planned: a MERGE= that names an
   unknown module, prefixes that two modules want, entries that aren't there. */
Plan makePlan(Compilation &c, const Settings &settings, const DefinitionWords &words = {});

} // namespace asntree
