#pragma once

#include "model/backend.h"

/* The parts of getTypePathN that follow the synonym chain and gather what stands along it: names,
   tags, embedded text, constraints, endpoints and options. They work on the current TNode. */

/* What was met along the chain. */
struct ChainOptions {
    std::uint32_t bits = 0; /* option bits of all records but the base, or-ed together */
    bool written = false;   /* one of the records, or the base, may have options for the generator */
};

/* Fills the position of `son` and follows the chain; afterwards the base record is current, and all
   records but that one have given their tags and constraints. `*tagState` tells whether the next
   inner tag counts (TAG_MODE_EXPLICIT). */
ChainOptions initSon(AsnType *son, AsnType *father, int *tagState);
/* What the current record adds to `son`. */
void getTagsAndEmbeddingOpts(AsnType *son, int *tagState);
void addConstraint(AsnType *son);
/* Closes the chain of tags with the universal or the automatic tag. */
void initSonTags(AsnType *father, AsnType *son, int tagState, int compNr);
/* Was the tag written on the position itself? Universal tags never are. */
bool isLocalTag(const AsnType *type, const DynaNode &entry);
/* Applies the options of each record from `position` to the base, which is current afterwards. */
void applyChainOptions(AsnType *son, const NodePlace &position);
