#pragma once

#include "base/call.h"
#include "model/backend.h"

struct AsnValue;

/* ANY DEFINED BY: the component that decides, and the table of values and types. */

/* A handle on the deciding component of `father`, null without one; the caller deletes it. Fatal
   error 13 if it is no component of `father`. */
AsnType *getClassifier(AsnType *father, AsnType *anyType);
/* The row in the current TedRec: true, and handles that the caller deletes, if it is one. */
bool getDefValAndEntryType(AsnType *anyType, AsnValue **value, AsnType **type);

/* Both give the number of calls. */
int forAnyType(AsnType *anyType,
               Call<void(AsnType *anyType, AsnValue *value, AsnType *type, int nbr)> func);
int forAnyDefinedByType(AsnType *father, AsnType *anyType,
                        Call<void(AsnType *father, AsnType *classifier, AsnType *anyType,
                                  AsnValue *value, AsnType *type, int nbr)>
                            func);
void forAnyDefinedByClassifierType(
    AsnType *father, AsnType *anyType,
    Call<void(AsnType *father, AsnType *classifier, AsnType *anyType)> func);
