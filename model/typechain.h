#pragma once

#include "base/call.h"
#include "model/backend.h"

/* The part of getTypePathN that follows the synonym chain up to where it ends, and gathers what stands
   along it: names, tags, embedded text, constraints, endpoints and options. All of it works on the
   current TNode. */

/* What was met along the chain. */
struct ChainOptions {
    std::uint32_t bits = 0; /* option bits of all records but the base, or-ed together */
    bool written = false;   /* one of the records, or the base, may have options for the generator */
    int tagState = TAG_MODE_EXPLICIT; /* of the innermost tag: TAG_MODE_EXPLICIT if another counts */
};

/* Fills position and base of `son`, but for the copy of the base record, which is current afterwards. */
ChainOptions initSon(AsnType *son, AsnType *father);
/* Applies the options of each record from `position` to the base, which is current afterwards. */
void applyChainOptions(AsnType *son, const NodePlace &position);

/* The innermost entry if it holds no tag yet, else a new one of the current record. */
DynaNode &entryForTag(AsnType *son);

/* Each back-end option among the TedRecs `first` (0: there are none) to `last` of a module, as stored;
   comments aren't options. Fatal error 9 for records that don't exist. */
void forEachBEOption(ModRec *module, RecNr first, RecNr last, Call<void(const char *text)> func);
