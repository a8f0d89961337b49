#pragma once

struct AsnModule;
struct AsnType;

/* C types: one definition in the ".typ" file for each type of a module that is to be generated,
   then one for each class. A definition stands behind those of all that it needs. Fatal error 15
   for definitions that nest without end. */
void generateTypes(AsnModule *module);

/* One such pass. */
struct TypesRun {
    int depth = 0; /* of definitions that need one another */
};
/* One definition with all that it needs, unless this pass has begun it already. */
void genType(AsnType *type, TypesRun &run);
/* All definitions that a type needs, and the structures that stand free in front of it. */
void genReferredTypes(AsnType *type, TypesRun &run);
