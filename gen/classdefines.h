#pragma once

struct AsnModule;
struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;

/* What the ".def" file says of classes and objects, so that a program can name fields and rows and
   walk over tables. Nothing is written while the file isn't open. */

/* Each field's index and the test for its presence in an object. */
void genClassDefines(AsnObjClass *objClass);
/* The row of an object that has a name, and a pointer to the row ("TDEFS="). */
void genObjectDefines(AsnObject *object, int row);
/* A walk over the `count` objects of a class, unless "ACCESS-ROUTINES=NONE". */
void genObjectTableDefines(AsnModule *module, AsnObjClass *objClass, int count);
/* A walk over a named object set, which ends at the null at its end. */
void genObjectSetTableDefines(AsnObjectSet *objectSet);
