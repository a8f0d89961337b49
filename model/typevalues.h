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

/* The items of an ENUMERATED in rising order; other types make no call. An array is continued if
   each item is one above the one before it, which an empty one isn't. Without a marker `addCount`
   is -1 and `addArray` null, else that stands behind the roots. Items that don't fit 32 bits give a
   warning and 0x7FFFFFFF. */
void forSortedEnumeratedValueArray(
    AsnType *type,
    Call<void(AsnType *type, int rootCount, const std::int32_t *rootArray, bool rootContinued,
              int addCount, const std::int32_t *addArray, bool addContinued)>
        func);

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
