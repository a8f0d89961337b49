#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "asntree/emit.h"

/* Listings: what stands in a tree, in the order of the source, so that a person can read it and
   compare it with another one. */

namespace asntree {

/* What the compiler says of a definition, or of the whole tree if it has no record. */
struct ListingNote {
    bool ofValue = false;
    RecNr record = 0; /* TNode or VNode */
    std::string text;
};

/* Trees by generation prefix, for the names of what lies in other modules; without its tree a
   record there is told by its number. */
using KnownTrees = std::unordered_map<std::string, const Tree *>;

std::string listTree(const Tree &tree, const KnownTrees &known,
                     const std::vector<ListingNote> &notes);

/* The notes for the listing of one tree: those of the emitter, and those of all parts before it
   that speak of its modules. */
std::vector<ListingNote> listingNotes(const Compilation &c, const TreePlan &plan,
                                      const EmittedTree &emitted);

/* Reads the bytes of a tree, as any compiler wrote it; false, with the reason, if they are none.
   The numbers in its records may lead anywhere; a listing takes them as they are. */
bool readTree(const std::string &bytes, Tree &tree, std::string &why);
/* The listing of a tree in a file, with the names that the trees beside it give its imports. False,
   with the reason, if the file can't be read or is no tree. */
bool listFile(const std::string &path, std::string &listing, std::string &why);

} // namespace asntree
