#pragma once

#include "base/text.h"

struct AsnType;

/* Heads, prototypes and calls of generated functions, in ANSI C and without it as the module's
   "ANSI-C=" says. A function's name is a prefix and the name of its type. */

/* The context that a generated function takes as its first parameter. */
enum GIndex : int {
    GIDX_CODING = 0, /* ASNCODG *asncodg */
    GIDX_TESTING,    /* ASNTSTG *asntstg */
};
const char *cGetGType(GIndex gIndex);
const char *cGetGName(GIndex gIndex);

/* The name under which the function of the definition behind `type` is called: "eMsg". */
Text cFunctionName(std::string_view prefix, AsnType *type);
/* "extern void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home);\n" */
void cFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type);
/* The same for the definition behind `type`, as cFunctionRef names it. */
void cBaseFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type);
/* "void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home)\n"; the variables of vars.h begin anew. */
void cFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type);
/* "eFoo (ASNG_F(asncodg) &home->x);\n" */
void cFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type);

/* The same for entry functions, which take "ASNHOME **hometab" in a MORLA application. */
void cEntryFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type);
void cEntryFunctionDef(int file, const char *prefix, GIndex gIndex, AsnType *type);

/* Functions that the application supplies for an ANY: their prototype, and a call with the home of
   the classifier, or NULL without one. */
void cAnyFunctionProto(int file, const char *prefix, GIndex gIndex, AsnType *type);
void cAnyFunctionRef(int file, const char *prefix, GIndex gIndex, AsnType *type, AsnType *classifier);
