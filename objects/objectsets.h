#pragma once

#include "objects/objects.h"

/* Object sets that a module defines, the objects in them, and the list of classes without a row.
   The current records move in all of these. */

/* An object set as it was met (its position) and as it is in the end (its base, which is a class). */
struct AsnObjectSet : TypePosition<AsnObjectSet> {
    using TypePosition::TypePosition;

    AsnObjClass *governor = nullptr; /* kept for the run; never null once filled */
};

/* Fills the handle from the current TNode. Fatal error 13 if the set has no class. */
void getObjectSetPath(AsnObjectSet *objectSet);

/* The object sets of a module. `nbr` counts the calls from 0. */
void forEachObjectSet(AsnModule *module, Call<void(AsnObjectSet *objectSet, int nbr)> func);

/* The objects of the set, those of contained sets in place; `father` is always null, `index` counts
   from 0. Fatal error 13 for a set that is no list of objects. */
void forObjectSet(AsnObjectSet *objectSet,
                  Call<void(AsnObjectSet *father, AsnObject *object, int index)> func);

/* Follows references from the current TNode to the first record that is a definition or has a
   constraint; the place of its constraint, none if it has none. */
NodePlace findSetConstraint();
/* Each object of the constraint at `place`, those of contained sets where these stand; nothing for no
   place. `index` counts the calls from 0. An extension marker is passed over if `withMarker` is set.
   Fatal error 13 for any other constraint that is no list of objects. */
void forObjectsOfConstraint(const NodePlace &place, bool withMarker,
                            Call<void(AsnObject *object, int index)> func);

AsnObjClass *getObjClassOfObjectSet(AsnObjectSet *objectSet);
/* Where the set itself stands. */
std::int32_t getObjectSetDefinitionLine(AsnObjectSet *objectSet);

/* The C name here, or of the base; "?!?" if neither is a definition. */
Text getDefObjectSetId(AsnObjectSet *objectSet);
