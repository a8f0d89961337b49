#pragma once

struct AsnType;
struct CFuncArgs;
struct TypeFuncInfo;

/* The purposes for which the engine makes functions. Encoding and printing traverse a value that
   exists; decoding and asking construct one. */
enum FuncKind : int {
    decodingKind = 0,
    printingKind = 1,
    encodingKind = 2,
    askingKind = 3,
};

/* A step of a generator: what it writes for `type`. */
using TypeFunc = void (*)(AsnType *type, const TypeFuncInfo *info);
/* A question about `type` that the engine asks the generator. */
using TypeTest = bool (*)(AsnType *type, const TypeFuncInfo *info);
/* Writes the head of a loop over the elements of a list to `file`. */
using LoopFunc = void (*)(int file, AsnType *elem);

/* What a generator hands to the engine: its files, its names, and what it writes at each point of
   the walk, in the order of the walk. A null call-back leaves the step out, unless a line says
   otherwise. The table and its texts belong to the generator and live for the call of
   cGenerateTypeFunctions. */
struct TypeFuncInfo {
    int outFile = 0;   /* function bodies */
    int extFile = 0;   /* prototypes */
    int entryBit = 0;  /* bit of the entry mask that asks for an entry function */
    int tedBefore = 0; /* places of embedded text before and after a body */
    int tedAfter = 0;
    FuncKind funcKind = decodingKind;

    TypeFunc noBodyFunc = nullptr;     /* a type that gets no normal function */
    TypeFunc beforeBodyFunc = nullptr; /* before the head of a normal function */
    TypeFunc struPrefixFunc = nullptr; /* start of a structure or list */
    TypeFunc isCompFunc = nullptr;     /* presence test of a component; constructing kinds only */
    TypeFunc compPrefixFunc = nullptr; /* before a component or element */

    /* Passing over values (skipped.h). */
    TypeFunc skipFunc = nullptr;      /* a skipped type whose skipKind is 1 */
    int ignoreMode = 0;               /* 0: one call per value; 1: the value's inside is walked */
    TypeFunc ignoreFunc = nullptr;    /* mode 0: passes over one value */
    TypeTest ignoreWanted = nullptr;  /* mode 1: false leaves a traversal function empty */
    LoopFunc extraLoopFunc = nullptr; /* mode 0: head of the ignoring loop, for "while (TRUE)"; the
                                         test for too many elements is then left out */
    TypeTest extraLoopWanted = nullptr; /* mode 1: asked of a component's father */
    TypeFunc extraMoreFunc = nullptr;   /* mode 0: the test that ends the ignoring loop;
                                           mode 1: before a traversal function's content */
    TypeFunc extraTestFunc = nullptr; /* mode 0: head of the ignoring block; there is no extraElems
                                         variable then; mode 1: before a structure's components */
    LoopFunc travLoopFunc = nullptr;  /* mode 1: what extraLoopFunc is in mode 0 */
    TypeFunc travCompFunc = nullptr;  /* mode 1: before a component; ends the ignoring loop too */
    TypeFunc travCompFunc2 = nullptr; /* mode 1: behind travCompFunc */
    TypeFunc travLeafFunc = nullptr;
    TypeFunc travDefinedFunc = nullptr;  /* mode 1: a component of a defined base type */
    TypeFunc travCompPostFunc = nullptr; /* mode 1: after a component */
    TypeFunc travTestFunc = nullptr;     /* mode 1: what extraTestFunc is in mode 0 */
    TypeFunc travStruPostFunc = nullptr; /* mode 1: after a structure's components */
    TypeFunc travFuncPostFunc = nullptr; /* mode 1: after a traversal function's content */
    TypeFunc travMarkerFunc = nullptr; /* mode 1: an extension marker, by its father; null lets all
                                          components through unasked */

    TypeFunc frameFunc = nullptr;
    TypeFunc leafFunc = nullptr;
    TypeFunc definedFunc = nullptr;       /* a component of a defined base type: the call */
    TypeFunc beforeBuiltinFunc = nullptr; /* around a structured component written in line */
    TypeFunc afterBuiltinFunc = nullptr;
    TypeFunc compPostfixFunc = nullptr; /* after a component or element */
    TypeFunc struPostfixFunc = nullptr; /* end of a structure or list */
    TypeFunc afterBodyFunc = nullptr;   /* after a normal function */
    TypeFunc beforeEntryFunc = nullptr; /* before the head of an entry function */
    TypeFunc entryPrefixFunc = nullptr; /* first and last thing in an entry function */
    TypeFunc entryPostfixFunc = nullptr;
    TypeFunc afterEntryFunc = nullptr; /* after an entry function */

    const char *funcPrefix = "";              /* of the names of normal functions */
    const char *entryFuncPrefix = "";         /* of the names of entry functions */
    const CFuncArgs *funcArgs = nullptr;      /* more parameters of normal functions, or null */
    const CFuncArgs *entryFuncArgs = nullptr; /* of entry functions */
    LoopFunc listLoopFunc =
        nullptr;               /* head of a constructing kind's list loop, for "while (TRUE)" */
    int gIndex = 0;            /* the context that functions carry (functions.h) */
    bool reverseComps = false; /* walk components from the last to the first */
    bool trackPath = false;    /* write the run-time path calls */
    TypeFunc pushCompFunc = nullptr; /* each takes the place of the engine's own path call */
    TypeFunc pushElemFunc = nullptr;
    TypeFunc popCompFunc = nullptr;
    TypeFunc pushEntryFunc = nullptr;
    TypeFunc popEntryFunc = nullptr;
    bool markerInTraverse = false;  /* leafFunc runs on extension markers too: traversing kinds */
    bool markerInConstruct = false; /* and constructing kinds */
    bool setChoiceControl = true; /* the control member of a CHOICE is written while constructing */
    TypeTest compsWantedFunc = nullptr; /* false: no list variable and no walk of the components */
    const char *duplicateError = nullptr; /* error name; null means "DM_FAIL" */
    const char *tooManyError = nullptr;   /* error name; null means "AM_FAIL" */
};

/* Puts every field back to what it has above. */
void cInitTypeFuncInfo(TypeFuncInfo *info);
