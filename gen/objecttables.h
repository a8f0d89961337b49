#pragma once

#include <unordered_set>

#include "base/text.h"
#include "store/ketravar.h"

struct AsnModule;
struct AsnObject;
struct AsnObjClassField;

/* Tables of information objects: one array for each class with objects in the module, one row for
   each object. A row initialises the structure that gen/classes.h describes, member by member. */

/* Classes, by the record at which each is defined. */
using ClassPlaces = std::unordered_set<NodePlace, PlaceHash>;
/* Announces the arrays, since rows name rows of other tables. The result are the classes without a
   row, which get none. */
ClassPlaces declareObjectInstanceArrays(AsnModule *module);
void genObjectTables(AsnModule *module, const ClassPlaces &rowless);

/* The C type of the objects that a field points to. */
Text governorName(AsnObjClassField *field);
/* The address of an object's row: "&mOPERATION [3] / * login * /", with a cast if its table is of
   the structure of another name of the class than `pointed`. */
void genObjObjectElement(AsnObject *object, const Text &pointed);
/* A warning at the line of the table file that comes next. */
void warnAtTableLine(const char *text);
/* The rows have no value for the field; `note` becomes the reason, with a blank in front. */
bool isSkippedField(AsnObjClassField *field, const char **note);
