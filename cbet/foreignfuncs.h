#pragma once

struct AsnType;
struct TypeFuncRun;

/* Functions that are called across modules, where "GENERATE=" leaves out those of types that no entry
   reaches: their own module doesn't declare them, and whoever calls one finds it elsewhere. */

/* Declares the normal function of the type behind `type` among the prototypes in hand, if another
   module doesn't; once for each. */
void cDeclareForeignFunction(AsnType *type, TypeFuncRun &run);
/* The call of that function, declared as above: "eFoo (ASNG_F(asncodg) &home->x);\n". */
void cCallNormalFunc(AsnType *type, TypeFuncRun &run);
