#pragma once

struct AsnType;

/* Functions that are called across modules, where "GENERATE=" leaves out those of types that no entry
   reaches: their own module doesn't declare them, and whoever calls one finds it elsewhere. */

/* Starts the functions of a module: none of another module is declared yet. */
void cStartForeignFunctions();

/* Declares the normal function of the type behind `type` among the prototypes in hand, if another
   module doesn't; once for each. */
void cDeclareForeignFunction(AsnType *type);
