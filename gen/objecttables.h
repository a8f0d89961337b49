#pragma once

struct AsnModule;
struct AsnObject;
struct AsnObjClassField;

/* Tables of information objects: one array for each class with objects in the module, one row for
   each object. A row initialises the structure that gen/classes.h describes, member by member. */

/* Announces the arrays, since rows name rows of other tables. */
void declareObjectInstanceArrays(AsnModule *module);
void genObjectTables(AsnModule *module);

/* The address of an object's row: "&mOPERATION [3] / * login * /". */
void genObjObjectElement(AsnObject *object);
/* The rows have no value for the field; `note` becomes the reason, with a blank in front. */
bool isSkippedField(AsnObjClassField *field, const char **note);
