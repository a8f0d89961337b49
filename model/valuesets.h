#pragma once

#include "base/call.h"
#include "model/setarithmetic.h"

/* What a type allows, flattened to ranges of 64-bit numbers: the values of an INTEGER or
   ENUMERATED, the sizes of a string or list. A type's set is built at the first question and kept
   with it. */

struct AsnConstraint;
struct AsnModule;
struct AsnType;

/* Sets of a type: made if the type has none yet. */
void initValueSet(AsnType *type);
void initSizeValueSet(AsnType *type);
/* Adds what the constraint says to `set`, which unions widen and ranges replace. */
void makeValueSet(IntegerValueSet *set, AsnType *type, AsnConstraint *constraint);

/* Questions; false for a type that has no such set. */
bool isSimpleIntegerValueSet(AsnType *type);        /* exactly one range */
bool isSimpleSizeConstraintValueSet(AsnType *type); /* exactly one range */
bool isSizeConstraintValueSet(AsnType *type);       /* at least one range */
bool isExtensibleIntegerValueSet(AsnType *type);
bool isExtensibleSizeConstraintValueSet(AsnType *type);
/* Does the range begin where the last range of the type's set begins? */
bool isLastInt64ValueSetSeg(AsnType *type, const Int64Range *range);

/* Walks; the result is the number of calls, `nbr` counts them from 0. The last one
   walks what one size constraint allows. */
int forInt64ValueSet(AsnType *type,
                     Call<void(AsnType *type, const Int64Range *range, int nbr)> func);
int forInt64SizeConstraintValueSet(
    AsnType *type, AsnConstraint *constraint,
    Call<void(AsnType *type, const Int64Range *range, int nbr)> func);

/* Least and greatest size, and the size to make room for: the greatest, or the type's limit if that
   is lower. */
void getInt64SizeConstraintEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc);

/* Bounds of sizes and enumerations as numbers of 32 bits. */

/* Infinities become 0x7FFFFFFF and -0x80000000. Any other number that does not fit becomes
   0x7FFFFFFF, and unless `module` is null a warning names its source file, the line and the
   message. */
std::int32_t int64ToInt32(sint64 value, AsnModule *module, std::int32_t line, const char *message);
/* `message` may be null. */
void int64Warning(AsnModule *module, std::int32_t line, const char *message);

/* The greatest size to make room for: the limit if there is one, else the upper end. */
void getInt64SizeEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc);
