#pragma once

#include "base/text.h"

struct AsnModule;
struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct TypesRun;

/* Information object classes in the ".typ" file: for each class a structure whose constants are its
   objects, and a type for pointers that walk over them. */

/* All classes of the module, each behind what its fields need. A class that stands for one of
   another module is left to that module. */
void genClasses(AsnModule *module, TypesRun &run);

/* The form of the mask in a class's structure that tells which optional fields an object has:
   VF_I8, VF_I16 or VF_I32, in words of 32 bits if there are more fields. */
int getClassCompmaskSize(AsnObjClass *objClass);
/* 1 unless the class has more than 32 fields. */
int getClassCompmaskWords(AsnObjClass *objClass);
/* Which macro makes a bit of the mask: "BIT", or "BITL" for a word of 32 bits. */
const char *getClassCompmaskBit(AsnObjClass *objClass);
/* The member itself: "sint8 compmask", "sint32 compmask [2]". */
Text getClassCompmaskField(AsnObjClass *objClass);

/* What the ".def" file says of classes and objects, so that a program can name fields and rows and
   walk over tables. Nothing is written while the file isn't open
   (classdefines.cpp). */

/* Each field's index and the test for its presence in an object. */
void genClassDefines(AsnObjClass *objClass);
/* The row of an object that has a name, and a pointer to the row ("TDEFS="). */
void genObjectDefines(AsnObject *object, int row);
/* A walk over the `count` objects of a class, unless "ACCESS-ROUTINES=NONE". */
void genObjectTableDefines(AsnModule *module, AsnObjClass *objClass, int count);
/* A walk over a named object set, which ends at the null at its end. */
void genObjectSetTableDefines(AsnObjectSet *objectSet);
