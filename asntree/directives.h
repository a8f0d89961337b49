#pragma once

#include <unordered_map>

#include "asntree/options.h"
#include "asntree/plan.h"
#include "asntree/words.h"

/* What is said for single places, and which places these are. */

namespace asntree {

struct Directives {
    /* By Assignment, Component, ClassField, or the Type of the element of a list. */
    std::unordered_map<const void *, Words> words;
};

/* Reads all directives of the run's files and option files. Reports paths that name nothing, words
   that don't fit what they are said of, and comments that stand behind nothing. Imports have to be
   linked and all modules free of errors. */
void takeDirectives(Compilation &c, const Settings &settings, Directives &directives);

/* Null if nothing is said of the item. */
const Words *wordsFor(const Directives &directives, const void *item);

/* What the plan has to know of them. */
DefinitionWords definitionWords(Compilation &c, const Directives &directives);

} // namespace asntree
