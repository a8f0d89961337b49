#pragma once

struct AsnType;

/* Definitions of C types with all that they need (generateTypes writes those of a module). */

/* One pass over the types of a module. */
struct TypesRun {
    int depth = 0; /* of definitions that need one another */
};
/* One definition with all that it needs, unless this pass has begun it already. */
void genType(AsnType *type, TypesRun &run);
/* All definitions that a type needs, and the structures that stand free in front of it. */
void genReferredTypes(AsnType *type, TypesRun &run);
