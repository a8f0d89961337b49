#pragma once

#include "model/backend.h"

/* Building a handle on a type: from the record at which it is met, along its synonym chain. The
   current records move in all of these. */

/* An empty handle; getTypePathN fills it. */
AsnType *newAsnType(AsnModule *walkModule, AsnModule *ownerModule);
/* Gives back all that the handle owns and empties it, modules and father included, for a refill. */
void clearAsnType(AsnType *type);
/* Null, or a handle already given back, is left alone. */
void delAsnType(AsnType *type);

/* Fills `son`, whose modules are set, from the current TNode; afterwards the record at the end of
   the chain is current. `father` is null at the top level. A selection stands for its alternative:
   a reference to what that refers to, or a type of its own with the content that is written there.
   `compNr` is the number of an automatic tag. Fatal error 13 inside newBETypMetaRec, 15 for a chain
   without end. */
void getTypePathN(AsnType *father, AsnType *son, int compNr);
inline void getTypePath(AsnType *father, AsnType *son) {
    getTypePathN(father, son, 0);
}

/* Makes the next record of the walk current and moves the cursor behind it; false, and cursor 0, at
   the end. Kinds without types give false. `withSkipped` includes records that walks leave out. */
bool nextTNode(AsnModule *module, int kind, bool withSkipped);
/* The same for the record `rec` alone: does a walk of `kind` take it? Its cursor is then behind it.
 */
bool takeTNode(AsnModule *module, int kind, RecNr rec, bool withSkipped);

/* The type at `typeRec` of module number `moduleNr`, as seen from `valueModule`: a partial handle
   on a module of its own, both to be deleted by the caller; null if it is no type or value set. */
AsnType *governorForAsnValue(ModRec *valueModule, std::int32_t moduleNr, RecNr typeRec);

/* Whether handles get meta records; returns the old setting. */
bool setCreateBETypMetaFlag(bool flag);
