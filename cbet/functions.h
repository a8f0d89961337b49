#pragma once

struct AsnType;

/* Heads, prototypes and calls of generated functions, in ANSI C and without it as the module's
   "ANSI-C=" says. A function's name is a prefix and the name of its type. */

/* The context that a generated function takes as its first parameter. An index out of range counts
   as GIDX_NONE. */
enum GIndex : int {
    GIDX_NONE = 0,
    GIDX_CODING,  /* ASNCODG *asncodg */
    GIDX_TESTING, /* ASNTSTG *asntstg */
    GIDX_UTILITY, /* ASNUTIG *asnutig */
    GIDX_PER,     /* ASNPERG *asnperg */
    GIDX_NER,     /* ASNNERG *asnnerg */
    GIDX_COUNT,
};
const char *cGetGType(int gIndex);
const char *cGetGName(int gIndex);

/* "extern ", the linkage of prototypes. */
extern const char *const externPrefix;

using CFuncArgWriter = void (*)(int file, AsnType *type);

/* What a caller adds to the parameters of a generated function. Null leaves the usual text. */
struct CFuncArgs {
    const char *returnType = nullptr; /* null: "void" */
    /* prototypes */
    CFuncArgWriter protoPreFunc = nullptr;
    CFuncArgWriter protoArgFunc = nullptr;
    CFuncArgWriter protoPostFunc = nullptr;
    /* heads of definitions in ANSI C */
    CFuncArgWriter ansiPreFunc = nullptr;
    CFuncArgWriter ansiArgFunc = nullptr;
    CFuncArgWriter ansiPostFunc = nullptr;
    /* heads of definitions without it, and the lines that declare their parameters */
    CFuncArgWriter oldPreFunc = nullptr;
    CFuncArgWriter oldArgFunc = nullptr;
    CFuncArgWriter oldPostFunc = nullptr;
    CFuncArgWriter declPreFunc = nullptr;
    CFuncArgWriter declArgFunc = nullptr;
    CFuncArgWriter declPostFunc = nullptr;
    /* calls */
    CFuncArgWriter callPreFunc = nullptr;
    CFuncArgWriter callHomeFunc = nullptr;
    CFuncArgWriter callPostFunc = nullptr;
};

/* One head, from which all forms below are made. Texts may be null. */
struct CFuncHead {
    const char *linkage = nullptr;
    const CFuncArgs *args = nullptr;
    const char *returnType = nullptr; /* goes before that of `args`; "void" without both */
    const char *prefix = nullptr;
    const char *name = nullptr;
    const char *gType = nullptr; /* "ASNG_F(ASNCODG *asncodg)", or with `gName` alone */
    const char *gName = nullptr; /* "ASNG_F(asncodg)"; ASNG_L if no parameter follows */
    CFuncArgWriter preFunc = nullptr;
    const char *argText = nullptr; /* the other parameters, unless `argFunc` writes them */
    CFuncArgWriter argFunc = nullptr;
    CFuncArgWriter postFunc = nullptr;
    const char *post = nullptr; /* behind the ")" */
};
void cFunc(int file, AsnType *type, const CFuncHead &head);

/* "extern void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home);\n" */
void cFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type);
/* The same for the definition behind `type`, as cFunctionRef names it. */
void cBaseFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                        AsnType *type);
/* "void eMsg (ASNG_F(ASNCODG *asncodg) Msg *home)\n"; the variables of vars.h begin anew. */
void cFunctionDef(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type);
/* "eFoo (ASNG_F(asncodg) &home->x);\n" */
void cFunctionRef(int file, const char *prefix, int gIndex, const CFuncArgs *args, AsnType *type);
void cVoidFunctionProto(int file, const char *prefix, int gIndex, AsnType *type);
void cVoidFunctionDef(int file, const char *prefix, int gIndex, AsnType *type);
void cVoidFunctionRef(int file, const char *prefix, int gIndex, AsnType *type);

/* The same for entry functions, which take "ASNHOME **hometab" in a MORLA application. */
void cEntryFunctionProto(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                         AsnType *type);
void cEntryFunctionDef(int file, const char *prefix, int gIndex, const CFuncArgs *args,
                       AsnType *type);

/* Functions that the application supplies for an ANY: their prototype, and a call with the home of
   the classifier, or NULL without one. */
void cAnyFunctionProto(int file, const char *prefix, int gIndex, AsnType *type);
void cAnyFunctionRef(int file, const char *prefix, int gIndex, AsnType *type, AsnType *classifier);
