#pragma once

#include "base/call.h"
#include "model/backend.h"

struct AsnValue;

/* ANY DEFINED BY: the component that decides, and the table of values and types. */

/* The rows of the table. The result is the number of calls. */
int forAnyType(AsnType *anyType,
               Call<void(AsnType *anyType, AsnValue *value, AsnType *type, int nbr)> func);
/* The deciding component, if there is one; fatal error 13 if it is no component of `father`. */
void forAnyDefinedByClassifierType(
    AsnType *father, AsnType *anyType,
    Call<void(AsnType *father, AsnType *classifier, AsnType *anyType)> func);
