#pragma once

#include "base/call.h"
#include "model/backend.h"

/* From a type to the definition behind it, with a handle on the module in which that stands. Each
   does nothing for a type that is no reference, and ends with fatal error 13 if the definition is
   not among the types of its module. */

/* The module and record at the end of the chain of references; the module is a new handle. */
AsnModule *findTheAnotherModuleOfType(AsnType *type, RecNr *recOut);
/* The same up to the first record of another module or, with `nextDefined`, the first definition.
 */
AsnModule *findTheAnotherModuleOfSynType(AsnType *type, RecNr *recOut, bool nextDefined);

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func);
/* Acts also for what COMPONENTS OF brought in. */
void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func);
void forSynonymTypeInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func);
void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func);
void forNextDefinedTypeAndBaseType(AsnType *type, Call<void(AsnType *type, AsnType *defined)> func);
