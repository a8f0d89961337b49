#pragma once

#include "objects/objects.h"

/* The objects of a module, class by class. All passes that number, declare or write rows of tables
   go through this walk, so that they agree. */

/* `skipped`: the class, or the field that holds an inline object, is skipped. Such an object takes
   up no row: `tableIndex` is the row of the next one that isn't skipped. */
using ClassPrefixCall = Call<void(AsnObjClass *objClass, bool skipped)>;
using ClassObjectCall =
    Call<void(AsnObjClass *objClass, AsnObject *object, int tableIndex, bool skipped)>;
using ClassPostfixCall = Call<void(AsnObjClass *objClass, int tableCount, bool skipped)>;

/* Visits the classes in the order in which the module's objects first mention them, and the objects
   of each class in the order of their definition. `withBuiltins` adds the objects that are written
   inline in fields of objects and in object sets of this module; one that is met in several places
   is visited as often. Each call-back may be null, though not all three (fatal error 18). */
void forEachObjectInClassOrder(AsnModule *module, ClassPrefixCall prefixFunc,
                               ClassObjectCall objectFunc, ClassPostfixCall postfixFunc,
                               bool withBuiltins);
