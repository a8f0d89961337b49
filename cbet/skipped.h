#pragma once

struct AsnType;

/* Passing over data: skipped types, and the elements of a list beyond its size limit. All of it
   works for the table in use (engine.h). */

/* What stands where the content of a skipped type would come. An unknown skipKind is fatal
 * error 13. */
void skipType(AsnType *type);
/* Passes over one value. */
void skipIgnore(AsnType *type);
/* True if generated code marks surplus elements in a variable extraElems. */
bool extraElemsVarUsed();
/* Behind the main loop of a list: reads on past its size limit and counts what is thrown away.
   Writes nothing unless the list ignores elements beyond a limit below its constraint's bound. */
void ignoreTrailingListElems(AsnType *father, AsnType *elem);

/* Traversal functions of ignorable types; nothing happens unless ignoreMode is 1. */
void genFuncForIgnorable(AsnType *type);
void handleReferredIgnorableType(AsnType *type);

/* The type's flag, and whether it has a size limit. */
bool cIsIgnorable(AsnType *type);
bool cIsSizeLimit(AsnType *type);
/* True if the type has a size limit and elements beyond it are ignored (not an error). */
bool cIsIgnoringSizeLimit(AsnType *type);
