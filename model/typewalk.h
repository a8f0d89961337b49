#pragma once

#include "model/backend.h"

/* Filling a handle on a type: from the record at which it is met, along its synonym chain. The current
   records move in all of these. */

/* Fills `son` from the current TNode; afterwards the record at the end of the chain is current.
   `father` is null at the top level. A selection stands for its alternative: a reference to what that
   refers to, or a type of its own with the content that is written there. `compNr` is the number of an
   automatic tag. Fatal error 13 inside newBETypMetaRec, 15 for a chain without end. */
void getTypePathN(AsnType *father, AsnType *son, int compNr);
inline void getTypePath(AsnType *father, AsnType *son) {
    getTypePathN(father, son, 0);
}

/* Whether handles get meta records; returns the old setting. */
bool setCreateBETypMetaFlag(bool flag);
