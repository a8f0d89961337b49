#pragma once

#include "cbet/typefuncinfo.h"

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
