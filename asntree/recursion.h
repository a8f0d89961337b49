#pragma once

#include <vector>

#include "asntree/records.h"

namespace asntree {

/* A reference inside a definition of a tree that leads back to it, by itself or through other
   definitions. Those of different trees never do: modules that name one another in a circle stand in
   one tree. */
struct RecursiveReference {
    RecNr definition;
    RecNr reference;
    RecNr list; /* the list whose element it is, or 0 */
};

std::vector<RecursiveReference> recursiveReferences(const Tree &tree);

} // namespace asntree
