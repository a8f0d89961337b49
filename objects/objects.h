#pragma once

#include "base/call.h"
#include "model/backend.h"
#include "objects/classes.h"

/* Information objects: handles, walks over those that a module defines, and questions. What their
   fields hold stands in fieldvalues.h, the walk class by class in objectorder.h. The current
   records move in all of these. */

/* An object as it was met (its position) and as it is in the end (its base). */
struct AsnObject : Position<AsnObject, VNode> {
    using Position::Position;

    AsnObjClass *governor = nullptr; /* kept for the run; never null once filled */
};

/* Fills the handle from the current VNode. Fatal error 13 for an object without a class, 15 for
   references without end. */
void getObjectPath(AsnObject *object);

/* The objects that a module defines. `nbr` counts the calls from 0. */
void forEachObject(AsnModule *module, Call<void(AsnObject *object, int nbr)> func);
/* The object at record `recNr`, with number 0, whatever its status; nothing if it is none. */
void forObjectByRecNr(AsnModule *module, Call<void(AsnObject *object, int nbr)> func, RecNr recNr);

AsnObjClass *getObjClassOfObject(AsnObject *object);
bool isDefinedBaseObject(AsnObject *object);
/* Where the object itself stands, whatever it refers to. */
std::int32_t getObjectDefinitionLine(AsnObject *object);
