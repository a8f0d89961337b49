#pragma once

#include "store/ketravar.h"

/* The record store: current records by number, chains of records, module numbers. */

/* Makes record `nr` of `module` the current record of its kind (MNode to SNode); nothing happens if
   it is current already. Fatal error 9 if there is no such record or `module` is null, 15 with the
   file prefix of `module` once the run has read more than trees written by people need. */
void readRec(ModRec *module, RecKind kind, RecNr nr);

/* Copies the current record of `kind` to record `nr` of `module`, which may be one behind the last,
   and makes it current. Fatal error 10 for another number, a kind without a current record, or
   null. */
void writeRec(ModRec *module, RecKind kind, RecNr nr);

/* The stored record, not a copy; fatal error 9 if it does not exist. Valid until a record of its
   kind is added to the module. */
TNode &storedTNode(ModRec *module, RecNr nr);
VNode &storedVNode(ModRec *module, RecNr nr);
const MNode &storedMNode(ModRec *module, RecNr nr);
/* Brings the VNode `nr`, and those around it, where its parts are as a rule, near to the processor
   while it has other work. For walks that leap through a large tree; a number without a record does
   nothing. */
void prefetchVNodes(const ModRec *module, RecNr nr);

/* The place of the current record of `kind`. */
inline NodePlace saveNodeContext(RecKind kind) {
    return recJustRead[kind];
}
/* Reads the record at `place` again; nothing happens if it names none. */
inline void restoreNodeContext(RecKind kind, const NodePlace &place) {
    if (place.module != nullptr && place.nr != 0 && recJustRead[kind] != place)
        readRec(place.module, kind, place.nr);
}

/* Keeps the current record of a kind across a block, by its place. */
class NodeContext {
public:
    explicit NodeContext(RecKind kind) : kind_(kind), place_(saveNodeContext(kind)) {}
    ~NodeContext() { restoreNodeContext(kind_, place_); }
    NodeContext(const NodeContext &) = delete;
    NodeContext &operator=(const NodeContext &) = delete;

private:
    RecKind kind_;
    NodePlace place_;
};

/* The record of a module number: `module` for 1, that of the import with this number otherwise,
   null if there is none. */
ModRec *getModPtr(ModRec *module, std::int32_t moduleNr);

/* Number of records of a kind. */
RecNr recCount(const ModRec *module, RecKind kind);

/* Watches a walk along references or a list. A tree may hold a chain that comes back to itself, so
   each loop over records asks step() before each move: fatal error 15 with the module's file prefix
   once more moves were made than there are records. */
class ChainGuard {
public:
    /* The limit is the number of records of `kind` in all modules. */
    explicit ChainGuard(RecKind kind) : kind_(kind) {}
    /* `module` is the one to blame; null names none. */
    void step(const ModRec *module) {
        if (--left_ < 0)
            extend(module);
    }

private:
    /* So many steps need no look at the modules: almost every walk is shorter. */
    static constexpr std::int64_t FREE_STEPS = 256;
    void extend(const ModRec *module);
    RecKind kind_;
    bool extended_ = false;
    std::int64_t left_ = FREE_STEPS;
};

/* Levels of recursion along a tree that fit into the stack of any process. */
inline constexpr int MAX_NESTING = 1000;
extern int nestingLimit; /* the same, or what the stack of the run is large enough for */

/* Bounds recursion that follows a tree: fatal error 15 beyond so many levels. Definitions of types
   may hold one another as deep as the stack goes; nothing else that people write comes to
   MAX_NESTING. */
class NestingGuard {
public:
    NestingGuard(int *depth, const ModRec *module, int limit = nestingLimit);
    ~NestingGuard() { --*depth_; }
    NestingGuard(const NestingGuard &) = delete;
    NestingGuard &operator=(const NestingGuard &) = delete;

private:
    int *depth_;
};

/* Bounds all work of the run: a read is a piece of it. Parts of a tree may be shared, so that a few
   records can describe more paths than anyone could follow, each of them short. Fatal error 15 beyond
   what trees written by people need. */
void spendWork(const ModRec *module, std::int64_t pieces);

/* Fatal error 15 with the file prefix of `module` (or none for null). */
[[noreturn]] void treeInconsistent(const ModRec *module);
