#pragma once

#include "base/call.h"
#include "model/backend.h"

struct AsnValue;

/* ANY DEFINED BY: the component that decides, and the table of values and types. */

/* The rows of the table. Both give the number of calls; fatal error 13 if what decides is no component of
   `father`. */
int forAnyType(AsnType *anyType,
               Call<void(AsnType *anyType, AsnValue *value, AsnType *type, int nbr)> func);
int forAnyDefinedByType(AsnType *father, AsnType *anyType,
                        Call<void(AsnType *father, AsnType *classifier, AsnType *anyType,
                                  AsnValue *value, AsnType *type, int nbr)>
                            func);
/* The deciding component, if there is one. */
void forAnyDefinedByClassifierType(
    AsnType *father, AsnType *anyType,
    Call<void(AsnType *father, AsnType *classifier, AsnType *anyType)> func);
