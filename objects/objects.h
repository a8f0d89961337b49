#pragma once

#include "base/call.h"
#include "model/backend.h"
#include "objects/classes.h"

/* Information objects: handles, walks over those that a module defines, and questions. What their
   fields hold stands in fieldvalues.h, the walk class by class in objectorder.h. The current
   records move in all of these. */

struct BEObjMetaRec; /* the generator's record of an object */

/* An object as it was met (its position) and as it is in the end (its base). */
struct AsnObject {
    AsnModule *walkModule = nullptr;  /* its object cursor walks this handle; borrowed */
    AsnModule *ownerModule = nullptr; /* getModuleOfObject; borrowed */
    AsnObject *father = nullptr;
    AsnObjClass *governor =
        nullptr; /* on a module of its own, both owned; never null once filled */

    ModRec *posModule = nullptr; /* the record at which the object was met */
    RecNr posRecord = 0;
    std::int32_t compStatus = 0; /* of the position: VCS_DEFINITION marks a definition */
    FixRec compId;               /* name of the position; its id is null if it has none */

    ModRec *baseModule = nullptr; /* the record at which the references end */
    RecNr baseRecord = 0;
    FixRec baseId;
    VNode base; /* the base record with inherited flags */

    bool hasCommentOption = false;   /* the position holds a comment option */
    BEObjMetaRec *metaRec = nullptr; /* owned */
    RecNr walkSteps = 0;             /* objects that the handle's walk has visited */
    bool live = false;               /* false while it holds nothing */
};

/* An empty handle; getObjectPath fills it. Null may be deleted. */
AsnObject *newAsnObject(AsnModule *walkModule, AsnModule *ownerModule);
void delAsnObject(AsnObject *object);
/* The same for a handle whose memory stays. */
void constructAsnObject(AsnObject *object, AsnModule *walkModule, AsnModule *ownerModule);
void destructAsnObject(AsnObject *object);

/* Fills the handle, whose modules are set, from the current VNode. `kind` is KIND_OBJECT, `father`
   may be null. Fatal error 13 for an object without a class, 15 for references without end. */
void getObjectPath(AsnObject *father, AsnObject *object, int kind);

/* The objects that a module defines. nextObject refills the handle; at the end it deletes it and
   gives null. `nbr` counts the calls from 0. */
AsnObject *firstObject(AsnModule *module);
AsnObject *nextObject(AsnObject *object);
void forEachObject(AsnModule *module, Call<void(AsnObject *object, int nbr)> func);
/* The object at record `recNr`, with number 0, whatever its status; nothing if it is none. */
void forObjectByRecNr(AsnModule *module, Call<void(AsnObject *object, int nbr)> func, RecNr recNr);

AsnObjClass *getObjClassOfObject(AsnObject *object);
AsnModule *getModuleOfObject(AsnObject *object);
BEObjMetaRec *getBEObjMetaRec(AsnObject *object);
std::int32_t getObjectCompStatus(AsnObject *object);
std::int32_t getBaseObjectCompStatus(AsnObject *object);
bool isDefinedObject(AsnObject *object);
bool isDefinedBaseObject(AsnObject *object);
bool isObjectCommentOption(AsnObject *object);
/* Record numbers from 0. */
RecNr getUniqueObjectNr(AsnObject *object);
RecNr getUniqueBaseObjectNr(AsnObject *object);
/* Where the object itself stands, whatever it refers to. */
std::int32_t getObjectDefinitionLine(AsnObject *object);

/* "Ref" gives the ASN.1 name, "Id" the C name; nothing but prefix and suffix for an object without
   a name. */
Text getObjectRef(AsnObject *object);
Text getBaseObjectRef(AsnObject *object);
Text getObjectId(AsnObject *object);
Text getBaseObjectId(AsnObject *object);
