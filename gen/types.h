#pragma once

#include "store/text.h"

struct AsnModule;
struct AsnType;

/* C types: one definition in the ".typ" file for each type of a module that is to be generated. A
   definition stands behind those of all types that it needs. Each type's defines go to the ".def"
   file on the same walk. */
void generateTypes(AsnModule *module);

/* Writes the C shape of a type without its name: what stands between "typedef" and the identifier.
 */
void genTypedefContents(AsnType *type);

/* Questions of other generators about the shape of a type. */
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
