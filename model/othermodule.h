#pragma once

#include "base/call.h"
#include "model/backend.h"

/* From a type to the definition behind it, with the handle on the module in which that stands. Each
   does nothing for a type that is no reference, and ends with fatal error 13 if the definition is
   not among the types of its module. */

void forTypeDefinedInAnotherModule(AsnType *type, Call<void(AsnType *defined)> func);
/* Acts also for what COMPONENTS OF brought in. */
void forDefBaseTypeDefinedInAnotherModule(AsnType *type,
                                          Call<void(AsnType *type, AsnType *defined)> func);
void forNextDefinedType(AsnType *type, Call<void(AsnType *defined)> func);
