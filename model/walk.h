#pragma once

#include "base/call.h"
#include "model/backend.h"
#include "store/records.h"

/* Walks along the lists of records that a tree is made of: the definitions of a module, the
   components of a type, the parts of a value, named numbers. The current records move. */

/* A kind of list beside those of WalkKind: what a value consists of, whatever its status. */
inline constexpr int KIND_VALUE_PART = KIND_COUNT;

/* One walk along a list of `module` that begins at record `first`, or of its definitions. Definitions
   that walks leave out are passed over, parts of something never. */
class ListWalk {
public:
    ListWalk(ModRec *module, int kind, RecNr first);
    ListWalk(ModRec *module, int kind);
    /* Makes the next record of the kind current, a TNode or a VNode; false at the end. Fatal error 15
       for a list without end. */
    bool next();

private:
    ModRec *module_;
    int kind_;
    RecNr next_;
    ChainGuard guard_;
};

/* Makes the TNode or VNode `rec` current if it is of a kind, also if walks leave it out; false if it is
   none or 0. */
bool takeTNode(ModRec *module, int kind, RecNr rec);
bool takeVNode(ModRec *module, int kind, RecNr rec);

/* Shows the definitions of a kind that `isWanted` accepts (null: all); `nbr` counts the calls from 0.
   `fill` fills a handle from the current record. */
template <typename Handle>
void forEachDefinition(AsnModule *module, int kind, void (*fill)(Handle *handle),
                       Call<void(Handle *handle, int nbr)> func,
                       bool (*isWanted)(Handle *handle) = nullptr) {
    requireCall(func);
    int nbr = 0;
    ListWalk walk(module->modRec, kind);
    while (walk.next()) {
        Handle handle(module, module);
        fill(&handle);
        if (isWanted == nullptr || isWanted(&handle))
            func(&handle, nbr++);
    }
}
