#pragma once

#include "cbet/typefuncinfo.h"

/* The calls that the four kinds of function make alike. `prefix` is that of the kind's run-time
   functions: "e_", "d_", "a_", "p_". */

/* A value of any type whose encoding isn't looked into: ANY or an open type. */
bool isAnyOrOpen(AsnType *type);
/* For a leaf that needs no call. */
void genNoText(AsnType *type, TypeFuncRun &run);

/* The application's function for an ANY or open type that is no frame, named by the prefix
   ("anyEnc") and the type: its prototype and its call. */
void genAnyFunction(AsnType *type, TypeFuncRun &run, const char *prefix);
/* A frame that holds a value of any type; `call` is the function's name with " (". */
void genOpenFrame(int file, const char *call, AsnType *type);

/* Decoding and asking: the call for a frame that holds a value of the type, and the start of a call
   that fills the value: "d_uint8 (&home->id" and `postfix`. */
void genTypedFrame(int file, const char *call, AsnType *type);
void genFillCall(int file, const char *prefix, AsnType *type, const char *postfix);
/* d_NullType (); */
void genNullCall(int file, const char *prefix, AsnType *type);
/* The call for a string with its bounds: "d_IA5String8 (&home->name, 1, 8);\n". The upper one is
   that of the allocation; `unbounded` writes MAXLONG in its place. */
void genFillString(int file, const char *prefix, AsnType *type, bool unbounded);
/* What takes the place of the call where the run-time library has none. */
void genNoFillCall(AsnType *type, TypeFuncRun &run);

/* Encoding and printing: the size argument of a string that has no length of its own, " 16,". */
void genFixedSize(int file, AsnType *type);
/* The warning that takes the place of the call where the run-time library has none. */
void warnOfNoCall(AsnType *type, TypeFuncRun &run);

/* Which call a value without components gets. All kinds of function tell the same sorts of value
   apart; each has a table of what it writes for them. */

struct LeafCalls {
    TypeFunc boolean;
    TypeFunc integer;
    TypeFunc enumerated;
    TypeFunc real;
    TypeFunc string; /* bit, octet and character strings, but for the next sort */
    TypeFunc null;
    TypeFunc emptyStructure;
    const char *anyPrefix; /* of the application's function for an ANY or open type */
    TypeFunc simple;       /* OBJECT IDENTIFIER and times */
    TypeFunc external;
    TypeFunc other; /* what the run-time library has no function for */
};

void genLeaf(AsnType *type, TypeFuncRun &run, const LeafCalls &calls);
