#pragma once

#include "model/valuewalk.h"

/* The values that belong to a type: its named numbers and its DEFAULT. */

/* Named numbers, named bits or enumeration items, without and with the extension marker; the marker has
   `nbr` -1 and isn't counted. */
void forEachNamedNumber(AsnType *type, Call<void(AsnType *type, AsnValue *value, int nbr)> func);
void forEachNamedNumberExtMark(AsnType *type,
                               Call<void(AsnType *type, AsnValue *value, int nbr)> func);
/* Without the marker. */
int getNrOfNamedNumbers(AsnType *type);

/* The DEFAULT value of a component, if it has one. Fatal error 13 if the record is no value, 9 if
   there is none. */
void forDefaultValue(AsnType *comp, Call<void(AsnType *comp, AsnValue *value)> func);

/* Fills an empty handle with an infinity or another number that stands in no tree; only kind and
   value of `node` count. */
void initInfinityValue(AsnValue *value, const VNode &node);

/* Least and greatest value or size of a type that has such; other types make no call. An end
   without a bound is an infinity value, which has no governor. Fatal error 13 if there is no
   endpoint. */
void forTypeEndpoints(
    AsnType *type,
    Call<void(AsnType *type, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed)> func);
