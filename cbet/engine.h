#pragma once

#include "cbet/typefuncinfo.h"

struct AsnModule;
struct AsnType;

/* The engine that turns the types of a module into C functions. A generator has a TypeFuncInfo and
   calls cGenerateTypeFunctions; the engine decides which types get a function, in which order, what
   is written in line and what is a call, and calls the generator back at fixed points.

   A normal function carries the body of one structured type; an entry function is what an
   application calls (entryfuncs.h). */

/* Writes all functions of `run` for the types of `module`, with stamps of its own. */
void cGenerateTypeFunctions(AsnModule *module, TypeFuncRun run);

/* The functions of one entry or visible type, by "GENERATE=". */
void genFunc(AsnType *type, TypeFuncRun &run);
/* The normal function of a type after those of the types that it refers to. Without `generateBody`
   only the latter. */
void genNormalFunc(AsnType *type, bool generateBody, TypeFuncRun &run);
/* The body of a structure or list with all its components, in the current function. */
void funcForStructuredTypeAndCompsOrElems(AsnType *type, TypeFuncRun &run);

/* True if the type has components to walk, or an extension marker, and isn't skipped. */
bool typeHasBody(AsnType *type);
/* True if the functions of the type are written in the module that is being generated. */
bool isFuncGeneratedInThisModuleFile(AsnType *type);
/* True for the kinds that fill a value: decoding and asking. */
bool isConstructingKind(const TypeFuncRun &run);
/* Embedded text of a component, and of a function body, at `place`: what is written on a definition
   stands in its own function, and not at each use. */
void printCompTEDs(AsnType *type, TedPlace place, TypeFuncRun &run);
void printLocalTEDs(AsnType *type, TedPlace place, TypeFuncRun &run);
/* Calls `func` unless it is null. */
void callTypeFunc(TypeFunc func, AsnType *type, TypeFuncRun &run);
