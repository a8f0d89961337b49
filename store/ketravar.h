#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "store/ketradef.h"

/* The current records, one of each kind, and the list of modules.

   readRec makes a record current by copying it here; it stays as its reader left it, changes
   included, until another record of its kind is read. Any walk may read records, so code that needs
   one across a call keeps a copy or uses saveNodeContext. */

extern MNode mNode;
extern TNode tNode;
extern VNode vNode;
extern TagRec tagRec;
extern SubRec subRec;
extern TedRec tedRec;
extern SNode sNode;

/* Where a record stands. */
struct NodePlace {
    ModRec *module = nullptr;
    RecNr nr = 0;
    bool operator==(const NodePlace &) const = default;
};

struct PlaceHash {
    std::size_t operator()(const NodePlace &place) const {
        constexpr std::size_t SPREAD = 1'000'003;
        return std::hash<const ModRec *>()(place.module) * SPREAD +
               static_cast<std::size_t>(place.nr);
    }
};

/* The place last read or written, for each kind that has a current record. */
extern NodePlace recJustRead[REC_STRI8];

/* References to records of one kind, the most recent one in front. */
struct NodeList {
    RecKind kind = REC_TNODE;
    std::vector<NodePlace> places; /* oldest first: read from the back */
    /* Adds the current record of the list's kind in front. */
    void addFstNode() { places.push_back(recJustRead[kind]); }
};

/* So much work may still be done, and then as much more as the trees account for (spendWork). */
extern std::int64_t workLeft;

/* Module of the current record of a kind, null before the first. */
inline ModRec *currModule(RecKind kind) {
    return recJustRead[kind].module;
}

/* All module records, in the order in which they were made: those named on the command line first,
   then those that options or imports brought. */
struct ModRecList {
    std::vector<std::unique_ptr<ModRec>> records;
    std::size_t namedCount = 0; /* the first so many were named on the command line */
    std::unordered_map<Text, ModRec *> byGenPrefix; /* the first record of each generation prefix */
    std::size_t indexed = 0;                        /* so many records are in it */
};
/* Lives to the end of the process: what modules own is never given back at exit. */
extern ModRecList &modRecList;

/* The module under work; much code that has no module argument reads it. */
extern ModRec *cMP;

/* Directory of syntax tree files, ending in "/", or empty for the current directory. */
extern Text stxDir;

/* The moment at which the tool started. */
extern TimeStamp timeStamp;
