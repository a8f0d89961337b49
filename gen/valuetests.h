#pragma once

#include "base/i64.h"

struct AsnType;

/* What the functions that fill a value, decoding and asking, write alike: the bounds that they give
   to run-time functions, and the tests behind the call. */

/* Behind the address of an INTEGER or ENUMERATED: " 0, 255);\n". */
void genIntegerBounds(int file, AsnType *type);
/* The least value that an INTEGER or ENUMERATED may have. */
sint64 leastValue(AsnType *type);
/* Behind the address of a REAL: " CLOS_OPEN, REAL_NORMAL, 0.0, REAL_PLUS_INF, 0.0);\n". */
void genRealBounds(int file, AsnType *type);
/* Marks the value of an extensible ENUMERATED as one that it doesn't know: "x.extended = TRUE;\n".
 */
void genExtendedMark(int file, AsnType *type);
/* "if (x) { x = 0xFF; }" for a BOOLEAN whose true values are made one. */
void genNormalisedTrue(int file, AsnType *type);
/* Makes room for the elements of a dynamic array; `call` is the function's name with " (". */
void genUpperBound(int file, const char *call, AsnType *list, AsnType *elem);
