#pragma once

#include "objects/objects.h"

/* Object sets that a module defines, the objects in them, and the list of classes without a row.
   The current records move in all of these. */

struct BEObjSetMetaRec; /* the generator's record of an object set */

/* An object set as it was met (its position) and as it is in the end (its base). */
struct AsnObjectSet {
    AsnModule *walkModule = nullptr;  /* its cursor walks this handle; borrowed */
    AsnModule *ownerModule = nullptr; /* getModuleOfObjectSet; borrowed */
    AsnObjectSet *father = nullptr;
    AsnObjClass *governor =
        nullptr; /* on a module of its own, both owned; never null once filled */

    ModRec *posModule = nullptr; /* the record at which the set was met */
    RecNr posRecord = 0;
    FixRec compId;               /* name of the position; its id is null if it has none */
    std::int32_t compStatus = 0; /* CompStatus of the position */
    RecNr defaultValue = 0;
    int stamp = 0;
    int firstMainType = 0;
    RecNr auxRecord = 0;
    std::uint16_t firstTypeFlags = 0;
    TypeOptions typeOptions;

    ModRec *baseModule = nullptr; /* the record at which the synonym chain ends: a class */
    RecNr baseRecord = 0;
    FixRec baseId;
    int defLevel = 0;
    TNode base;

    std::vector<DynaNode> embeddingEntries;
    int chainDepth = 0;
    bool hasCommentOption = false;
    BEObjSetMetaRec *metaRec = nullptr; /* owned */
    RecNr walkSteps = 0;
    bool live = false;
};

/* An empty handle; getObjectSetPath fills it. Null may be deleted. */
AsnObjectSet *newAsnObjectSet(AsnModule *walkModule, AsnModule *ownerModule);
void delAsnObjectSet(AsnObjectSet *objectSet);
/* The same for a handle whose memory stays. */
void constructAsnObjectSet(AsnObjectSet *objectSet, AsnModule *walkModule, AsnModule *ownerModule);
void destructAsnObjectSet(AsnObjectSet *objectSet);

/* Fills the handle, whose modules are set, from the current TNode. Fatal error 13 if the set has no
   class, or inside newBEObjSetMetaRec. */
void getObjectSetPath(AsnObjectSet *father, AsnObjectSet *objectSet);

/* The object sets of a module. nextObjectSet refills the handle; at the end it deletes it and gives
   null. `nbr` counts the calls from 0. */
AsnObjectSet *firstObjectSet(AsnModule *module);
AsnObjectSet *nextObjectSet(AsnObjectSet *objectSet);
void forEachObjectSet(AsnModule *module, Call<void(AsnObjectSet *objectSet, int nbr)> func);

/* The objects of the set, those of contained sets in place; `father` is always null, `index` counts
   from 0. Fatal error 13 for a set that is no list of objects. */
void forObjectSet(AsnObjectSet *objectSet,
                  Call<void(AsnObjectSet *father, AsnObject *object, int index)> func);

AsnObjClass *getObjClassOfObjectSet(AsnObjectSet *objectSet);
AsnModule *getModuleOfObjectSet(AsnObjectSet *objectSet);
BEObjSetMetaRec *getBEObjSetMetaRec(AsnObjectSet *objectSet);
bool isObjectSetCommentOption(AsnObjectSet *objectSet);
/* Where the set itself stands. */
std::int32_t getObjectSetDefinitionLine(AsnObjectSet *objectSet);

/* The ASN.1 name here; only prefix and suffix without one. */
Text getObjectSetRef(AsnObjectSet *objectSet);
/* The C name here, or of the base; "?!?" if neither is a definition. */
Text getDefObjectSetId(AsnObjectSet *objectSet);
Text getDefBaseObjectSetId(AsnObjectSet *objectSet);
/* The ASN.1 name of the base, or that of a predefined class. */
Text getBaseObjectSetRef(AsnObjectSet *objectSet);

/* Classes without a row in the tables of the module under work. */
void addToNoObjectInstanceList(AsnObjClass *objClass);
bool isInNoObjectInstanceList(AsnObjClass *objClass);
void resetNoObjectInstanceList();
