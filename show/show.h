#pragma once

#include "store/ketravar.h"

struct AsnModule;
struct AsnObjClass;
struct AsnObject;
struct AsnObjectSet;
struct AsnType;
struct AsnValue;

/* The whole program: shows what the command line names. The result is the exit status. */
int velmo_show(int argc, char **argv);

/* Modules: their heads, and the walk over their definitions. */

/* Everything. */
void showModule(AsnModule *module);
/* The definitions of this name, or the part of a type that "Type.component" leads to; false if
   there is none. */
bool showDefinition(AsnModule *module, const Text &path);

/* The options of a module, what became of each, and those in force. */

/* From here on it is noted what becomes of options. Called once, when the other hooks are set and
   before the command line is read. */
void noteOptions();
/* The options that the tree and the command line gave, in their order, then each general option as
   it is in force. */
void showOptions(ModRec *module);

/* A type with its parts, each with its facts. `before` stands in front of it ("Name ::= "),
   `behind` at the end of its last line. */
void showType(int level, AsnType *type, const Text &before, const Text &behind);
/* The part of a type that a path like "comp.inner" leads to, "*" being the element of a list; false
   if there is no such part, and nothing is shown. */
bool showTypePart(AsnType *type, const Text &before, std::string_view path);
/* What is known of a type beside its notation, as comments below it: where it stands, how it is
   held in C, its tags as they are encoded, the constraints, values and sizes that apply in the end,
   and the option bits. */
void showTypeFacts(int level, AsnType *type);

/* Definitions that aren't types, each in ASN.1 notation with its facts below. */

void showValueSet(AsnType *set);
void showValue(AsnValue *value);
void showClass(AsnObjClass *objClass);
void showObject(AsnObject *object);
void showObjectSet(AsnObjectSet *set);

/* What the facts of all definitions have in common. */

/* "record 12, line 8" */
Text recordText(const ModRec *module, RecNr nr, std::int32_t line);
/* Options, comments and lines of the user's own that are written on a definition, each as a fact.
 */
void showWrittenOptions(int level, ModRec *module, const TedRange &range);
