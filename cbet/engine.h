#pragma once

#include "cbet/typefuncinfo.h"

struct AsnModule;
struct AsnType;

/* The engine that turns the types of a module into C functions. A generator has a TypeFuncInfo and
   calls cGenerateTypeFunctions; the engine decides which types get a function, in which order, what
   is written in line and what is a call, and calls the generator back at fixed points.

   A normal function carries the body of one structured type; an entry function is what an
   application calls. */

/* Writes all functions of `run` for the types of `module`, with stamps of its own. */
void cGenerateTypeFunctions(AsnModule *module, TypeFuncRun run);

/* Functions that are called across modules, where "GENERATE=" leaves out those of types that no entry
   reaches: their own module doesn't declare them, and whoever calls one finds it elsewhere. */

/* Declares the normal function of the type behind `type` among the prototypes in hand, if another
   module doesn't; once for each. */
void cDeclareForeignFunction(AsnType *type, TypeFuncRun &run);
