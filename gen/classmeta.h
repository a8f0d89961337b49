#pragma once

#include <cstdint>

#include "base/text.h"
#include "gen/meta.h"

/* What this generator keeps for each handle of a class, an object or an object set. */

struct AsnObjClass;
struct AsnObject;

BEClassMetaRec *newBEClassMetaRec(AsnObjClass *objClass);
void deleteBEClassMetaRec(BEClassMetaRec *meta);

/* C names of a class where it was met and in the end; empty for a nameless class. */
Text getMetaClassId(AsnObjClass *objClass);
Text getMetaBaseClassId(AsnObjClass *objClass);
/* getMetaClassId where it stands alone, as the name of the C type. */
Text getMetaClassName(AsnObjClass *objClass);
int getMetaClassAccessRoutines(AsnObjClass *objClass);
/* C name of an object, empty if it has none. */
Text getMetaObjectId(AsnObject *object);

/* The class has a structure in the files of the module: it, or what it stands for, is defined there.
 */
bool hasOwnStructure(AsnObjClass *objClass);
/* Name of the type of a table of objects of this class, which is also the table's name behind the
   prefix: that of the class where it was met, but of its base if the module has no structure for
   it. The text stays valid. */
const char *tableClassId(AsnObjClass *objClass);
/* The name of the table: "mOPERATION". */
Text objectTableName(AsnModule *module, const char *classId);
/* The same of the table that has the object's row, which is named by the class of its first row: an
   object may speak of its class by another name. */
const char *getMetaObjectTableId(AsnObject *object);

/* Row of an object in the table of its class and of its own module. Objects of a module that no
   pass has numbered yet are numbered at the first question; an object that has no row gives -1. */
void setMetaObjectNr(AsnObject *object, int nr);
int getMetaObjectNr(AsnObject *object);
/* Some class has a table in the module's files. */
bool hasObjectRows(AsnModule *module);
/* Numbers the objects of a module. Every module that is generated calls it before the first file is
   written. */
void initializeObjects(AsnModule *module);
