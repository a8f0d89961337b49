#pragma once

#include <unordered_set>

#include "base/text.h"

struct AsnObjClass;
struct AsnObjClassField;
struct AsnType;

/* The C shape of one type: what stands between "typedef" and the identifier, nested structures
   included. */

/* While a type is written that stands in a field of a class, the class and the field; else null.
   Its structures are then tagged with the names of both. */
extern AsnObjClass *glbGovernorClass;
extern AsnObjClassField *glbClassField;
/* Names of such structures in the class so far. */
extern std::unordered_set<Text> glbFieldStructs;

/* Writes the shape. Nesting without end is fatal error 15. */
void genTypedefContents(AsnType *type);
/* A structure's head, "struct t_Msg {\n", and its control members; the caller writes the members
   and closes the brace. */
void genStructPrefix(AsnType *type);
void genControlMember(AsnType *type);
/* One member of `father`, or the element of a list. */
void genNonLeafContents(AsnType *father, AsnType *son);

/* Questions about the shape of a type. */
bool isList(AsnType *type); /* held as a linked list */
bool isOpenType(AsnType *type);
bool isBitStringType(AsnType *type);
/* Its structure has a control member, wherever the structure lies. */
bool needsControlMember(AsnType *type);
/* The member is a pointer. */
bool needsPointer(AsnType *type);
/* The structure of `son` stands free in front of its father's definition. */
bool needsOwnType(AsnType *father, AsnType *son);
/* The type has an entry category of `set`, in which bit n stands for category n. */
bool isInCategorySet(AsnType *type, unsigned set);
