#pragma once

#include "objects/objects.h"

/* The objects that the constraint of an object set names. */

/* Follows references from the current TNode to the first record that is a definition or has a
   constraint; the place of its constraint, none if it has none. */
NodePlace findSetConstraint();

/* Each object of the constraint at `place`, those of contained sets where these stand; nothing for
   no place. `index` counts the calls from 0. An extension marker is passed over if `withMarker` is
   set. Fatal error 13 for any other constraint that is no list of objects. */
void forObjectsOfConstraint(const NodePlace &place, bool withMarker,
                            Call<void(AsnObject *object, int index)> func);
