#pragma once

#include "cbet/typefuncinfo.h"

/* What the sources of the engine ask of one another. Generators need engine.h alone. */

/* --- engine.cpp, structure.cpp: order and bodies --- */

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

/* --- entryfuncs.cpp --- */

/* Entry functions: what an application or an entry table calls. They hold what stands outside the
   body of a type, and call its normal function or have the body in line. */

/* The entry function of `type`, with its prototype. */
void genEntryFunc(AsnType *type, TypeFuncRun &run);
/* False for the structures of a MORLA application whose body is written inside the entry function.
 */
bool isSeparateNormalFunction(AsnType *type);

/* --- compinit.cpp --- */

/* First values, memory and control members of components. What initialises is for the kinds that
   construct a value. */

/* First values of a structure or list. */
void initComponents(AsnType *type, TypeFuncRun &run);
/* A decoded SET that has no mask in its value works on a local one. */
bool generateDummyCompmask(AsnType *type, const TypeFuncRun &run);

/* Memory for a component or element, then the mark that it is present. */
void initializeComp(AsnType *father, AsnType *comp, TypeFuncRun &run);
/* Gives back the home of a component, if it has one; nothing while printing. */
void releaseComp(AsnType *father, AsnType *comp, TypeFuncRun &run);
/* The test that the list has room for one element more. */
void checkListUpperBound(AsnType *father, AsnType *comp, TypeFuncRun &run);

/* --- skipped.cpp --- */

/* Passing over data: skipped types, and the elements of a list beyond its size limit. */

/* What stands where the content of a skipped type would come. An unknown skipKind is fatal
 * error 13. */
void skipType(AsnType *type, TypeFuncRun &run);
/* Behind the main loop of a list: reads on past its size limit and counts what is thrown away.
   Writes nothing unless the list ignores elements beyond a limit below its constraint's bound. */
void ignoreTrailingListElems(AsnType *father, AsnType *elem, TypeFuncRun &run);

/* True if the type has a size limit and elements beyond it are ignored (not an error); generated
   code then marks that there are some in a variable extraElems. */
bool cIsIgnoringSizeLimit(AsnType *type);

/* --- foreignfuncs.cpp --- */

/* The call of a type's normal function, which may be one of another module and is then declared:
   "eFoo (ASNG_F(asncodg) &home->x);\n". */
void cCallNormalFunc(AsnType *type, TypeFuncRun &run);
