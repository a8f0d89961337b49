#pragma once

struct AsnType;

/* Accessor macros in the ".def" file: they test, set and clear a component, and reach an
   alternative or an element, without naming control members. A type has them if its access routines
   are macros, which "ACCESS-ROUTINES=" decides for the module or the type. */
void genCompAccessRoutines(AsnType *type);

/* The CHOICE written in a value field whose accessors are under work: its alternatives stand side
   by side in the class's structure. Null otherwise. */
extern const AsnType *glbUnionlessChoice;
