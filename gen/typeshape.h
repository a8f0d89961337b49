#pragma once

#include <unordered_set>

#include "base/text.h"

struct AsnObjClass;
struct AsnObjClassField;
struct AsnType;

/* The C shape of one type: what stands between "typedef" and the identifier, nested structures
   included. */

/* The place of the type whose shape is written: a definition, or a field of a class, whose name and
   that of the class are then the tags of all structures in it. */
struct ShapePlace {
    AsnObjClass *objClass = nullptr; /* null for a definition, as are the two below */
    AsnObjClassField *field = nullptr;
    std::unordered_set<Text> *fieldStructs = nullptr; /* tags of such structures in the class so far */
    int depth = 0;                                    /* of types within one another */
};

/* Writes the shape. Nesting without end is fatal error 15. */
void genTypedefContents(AsnType *type, ShapePlace place = {});
/* The control members of a structure. */
void genControlMember(AsnType *type);
/* One member of `father`, or the element of a list. */
void genNonLeafContents(AsnType *father, AsnType *son, ShapePlace &place);

/* Definitions of C types with all that they need (generateTypes writes those of a module). */

/* One pass over the types of a module. */
struct TypesRun {
    int depth = 0; /* of definitions that need one another */
};
/* One definition with all that it needs, unless this pass has begun it already. */
void genType(AsnType *type, TypesRun &run);
/* All definitions that a type needs, and the structures that stand free in front of it. */
void genReferredTypes(AsnType *type, TypesRun &run);

/* The type has an entry category of `set`, in which bit n stands for category n. */
bool isInCategorySet(AsnType *type, unsigned set);
