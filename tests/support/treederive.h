#pragma once

#include "tests/support/treewriter.h"

/* The steps of TreeWriter::finish, in this order. */

void resolveReferences(TreeWriter &tree);
/* Governors of the values in constraints, and the type whose size a range means. */
void governConstraints(TreeWriter &tree);
/* Numbers of components and flags of structures, endpoints, value forms and control members. */
void deriveTypes(TreeWriter &tree);
/* Marks the types of a circle and makes a pointer of each component that closes one. A list of such
   elements has no fixed array, since its elements lie outside the structure. */
void markRecursion(TreeWriter &tree);
/* Counts of the header, and the ranges of options and embedded text. */
void layOutHeader(TreeWriter &tree);

/* The end of a chain of references from `nr`: its tree and number. A chain that leads to a tree
   that is not known, or back to itself, ends where it stands. */
struct TreePlace {
    const TreeWriter *tree = nullptr;
    RecNr nr = 0;
    const TNode &rec() const { return tree->tNodes[static_cast<std::size_t>(nr - 1)]; }
};
/* One step of a reference; tree null if it leads nowhere. */
TreePlace referredType(TreePlace place);
TreePlace baseType(TreePlace place);

/* Smallest and largest value or size. */
struct Bounds {
    std::int64_t low = MIN_VALUE;
    std::int64_t high = MAX_VALUE;
};
Bounds boundsOf(TreePlace place);
