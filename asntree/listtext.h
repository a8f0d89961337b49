#pragma once

#include <unordered_set>

#include "asntree/listing.h"

/* What the files that make listings share. Trees from elsewhere may hold any numbers, so each
   access to a record is checked, and the whole listing bounded. */

namespace asntree {

struct Lister {
    const Tree &tree;
    const KnownTrees &known;
    std::string out;
    std::size_t budget;               /* records that may still be looked at */
    std::unordered_set<RecNr> bodies; /* of instances, listed already */

    Lister(const Tree &t, const KnownTrees &k)
        : tree(t), known(k), budget(4 * (t.tNodes.size() + t.vNodes.size() + t.subRecs.size() +
                                         t.tagRecs.size() + t.tedRecs.size() + t.sNodes.size()) +
                                    1000) {}
    bool spend() { return budget > 0 && budget-- > 0; }
};

constexpr int MAX_LISTED_DEPTH = 100;

template <typename Record> const Record *recordAt(const std::vector<Record> &records, RecNr nr) {
    return nr < 1 || static_cast<std::size_t>(nr) > records.size()
               ? nullptr
               : &records[static_cast<std::size_t>(nr) - 1];
}

/* A string of the tree; empty for none. The sign of a number doesn't count. */
std::string stringAt(const Tree &tree, RecNr nr);
/* "Name", "prefix.Name", or "prefix#12" where the name isn't known. */
std::string typeNameAt(const Lister &lister, std::int32_t module, RecNr nr);
std::string valueNameAt(const Lister &lister, std::int32_t module, RecNr nr);
std::string pathText(const Lister &lister, RecNr first);

std::string valueText(Lister &lister, const VNode &value, int depth);
std::string constraintText(Lister &lister, RecNr first, int depth);
/* "[APPLICATION 3] EXPLICIT " */
std::string tagsText(Lister &lister, RecNr first);

} // namespace asntree
