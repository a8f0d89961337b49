#pragma once

#include "base/i64.h"

struct AsnType;
struct TypeFuncRun;

/* Names that generated functions carry at run time: named numbers made known to the run-time
   library, and the names of components. */

/* The type's named numbers are made known at run time ("SETN="). */
bool needsSetNamedDefs(AsnType *type);
/* The step of the engine for a type that gets no function body: for a definition with named
   numbers, a function that makes them known. */
void genNamedDefFunc(AsnType *type, TypeFuncRun &run);
/* The calls themselves: the count, then each name with its number. */
void tstInitTypeWithNamedNumbers(AsnType *type, TypeFuncRun &run);
/* The call of the function that genNamedDefFunc made. */
void callSeprSetNamedDefFunc(AsnType *type, TypeFuncRun &run);
/* In front of a leaf: whichever of the two makes its names known, if it has any. */
void genNamedDefCalls(AsnType *type, TypeFuncRun &run);

/* The name under which a value is asked for or printed, as a C string: "\"name\"", or "NULL" for an
   element and for a type without a name. */
Text tstCompId(AsnType *type);

/* One bound of a range in a call: "255", "MAXLONG", "4294967295UL", "i64make (...)". `valueForm` is
   that of the C type that takes it. */
void printIntEndpoint(int file, const char *prefix, int valueForm, sint64 value,
                      const char *suffix);
