#pragma once

#include "model/valuewalk.h"

/* The endpoints of a type as values. */

/* Least and greatest value or size of a type that has such; other types make no call. An end
   without a bound is an infinity value, which has no governor. Fatal error 13 if there is no
   endpoint. */
void forTypeEndpoints(
    AsnType *type,
    Call<void(AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed)> func);
