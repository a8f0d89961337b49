#pragma once

#include "base/call.h"
#include "model/backend.h"

/* Walks over the types of a module, and from a type to what it is defined by. `nbr` counts calls
   from 0. A missing call-back is fatal error 18; a list without end is fatal error 15. */

using TypeCall = Call<void(AsnType *type, int nbr)>;
using BaseTypeCall = Call<void(AsnType *baseType)>;

/* The types of a module. */
void forEachType(AsnModule *module, TypeCall func);
/* These count only what they call for. */
void forEachEntryType(AsnModule *module, TypeCall func);
void forEachEntryVisType(AsnModule *module, TypeCall func);
/* The record `rec`, if a walk of `kind` (KIND_TYPE, KIND_VALUE_SET, KIND_OBJECT_SET) takes it;
   number 0. */
void forTypeByRecNr(AsnModule *module, TypeCall func, int kind, RecNr rec);
/* The entry type at `rec`, numbered as forEachEntryType does. */
void forEntryTypeByRecNr(AsnModule *module, TypeCall func, RecNr rec);

/* A synonym definition and what it stands for. */
void forSynonymType(AsnType *type, BaseTypeCall func);
/* Any reference to a definition; the handle is on the modules of `type`, wherever the base lies. */
void forDefinedBaseType(AsnType *type, BaseTypeCall func);
/* Makes the record current that these build from. Fatal error 13 if it is no definition. */
void readSynonymTypeTNode(AsnType *type, bool followFirst);

/* From a type to the definition behind it, with the handle on the module in which that stands. Each
   does nothing for a type that is no reference, and ends with fatal error 13 if the definition is
   not among the types of its module. */

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func);
/* Acts also for what COMPONENTS OF brought in. */
void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func);
void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func);
