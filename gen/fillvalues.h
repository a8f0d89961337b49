#pragma once

#include "base/i64.h"

struct AsnType;
struct TypeFuncRun;

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

/* The run-time call that decodes a value without components, with its bounds and the tests that the
   call can't make itself. */
void decLeaf(AsnType *type, TypeFuncRun &run);

/* A warning and a comment in the generated code: the constraint can be extended, and what lies
   outside of its root isn't decoded rightly. */
void decWarnOfExtendedConstraint(int file, AsnType *type, const char *what);
