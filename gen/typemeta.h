#pragma once

#include "base/text.h"

/* What this generator keeps for each handle of a type: the names that it has in C. */

struct AsnType;

enum AccessRoutines : int { ACCESS_NONE = 0, ACCESS_MACROS = 1, ACCESS_FUNCTIONS = 2 };

/* Names of a type, kept with the record of the module that it stands in. */
struct BETypeInfo {
    const char *typeId = nullptr;
    const char *baseTypeId = nullptr;
    const char *homeTypeId = nullptr; /* null: none */
    bool isGiven = false;             /* by a class field, not by the place of the type */
};

struct BETypMetaRec {
    BETypeInfo names;
    int accessRoutines = ACCESS_MACROS;
};

/* Null for a partial handle, else owned by the handle. */
BETypMetaRec *newBETypMetaRec(AsnType *type);
void deleteBETypMetaRec(BETypMetaRec *meta);

/* The run-time library's word for the elements of a string type, such as "OCTET"; null for none. */
const char *homeTypeId(AsnType *type);
/* The names of the record at which the type was met; worked out at first use. */
const BETypeInfo *getBETypeInfoCache(AsnType *type);

/* Works the names out anew, for the record and for this handle on it, which was renamed. */
void renewBETypeInfo(AsnType *type);
/* Gives the record, and this handle on it, the name of a structure; values are declared by the tag
   made of it. */
void setBETypeInfoNames(AsnType *type, const char *name);

/* Empty for a type without a meta record. */
const char *getMetaTypeId(AsnType *type);
const char *getMetaBaseTypeId(AsnType *type);
/* Null for a type that has none. */
Text getMetaCompId(AsnType *type);
/* The same where the name stands alone, as that of a member; empty for a type that has none. */
Text getMetaMemberName(AsnType *type);
/* A type's getMetaTypeId where it stands alone. */
Text getMetaTypeName(AsnType *type);
const char *getMetaHomeTypeId(AsnType *type);
int getMetaTypeAccessRoutines(AsnType *type);
