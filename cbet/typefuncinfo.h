#pragma once

#include <unordered_set>

#include "base/text.h"
#include "cbet/embedded.h"
#include "cbet/functions.h"
#include "store/ketravar.h"

struct AsnType;
struct TypeFuncRun;

/* The purposes for which the engine makes functions. Encoding and printing traverse a value that
   exists; decoding and asking construct one. */
enum FuncKind : int {
    decodingKind = 0,
    printingKind = 1,
    encodingKind = 2,
    askingKind = 3,
};

/* Bits of TNode.entryFlags: the functions that an entry type gets. */
enum EntryBit : int {
    ENTRY_ENCODING = 2,
    ENTRY_DECODING = 3,
    ENTRY_ASKING = 4,
    ENTRY_PRINTING = 5,
};

/* A step of a generator: what it writes for `type`. */
using TypeFunc = void (*)(AsnType *type, TypeFuncRun &run);

/* What a kind of function is made of: what its generator writes at each point of the engine's walk,
   in the order of the walk. A null call-back leaves the step out. */
struct TypeFuncInfo {
    FuncKind funcKind;
    EntryBit entryBit;  /* asks for an entry function */
    TedPlace tedBefore; /* places of embedded text before and after a body */
    TedPlace tedAfter;
    GIndex gIndex;             /* the context that functions carry */
    bool reverseComps = false; /* walk components from the last to the first */
    bool trackPath = false;    /* write the run-time path calls */

    TypeFunc noBodyFunc = nullptr;      /* a type that gets no normal function */
    TypeFunc entryPrefixFunc = nullptr; /* first thing in an entry function */
    TypeFunc struPrefixFunc = nullptr;  /* start of a structure or list */
    TypeFunc isCompFunc = nullptr;      /* presence test of a component; constructing kinds only */
    TypeFunc compPrefixFunc = nullptr;  /* before a component or element */
    TypeFunc skipFunc = nullptr;        /* a skipped type with skipKind 1 */
    TypeFunc ignoreFunc = nullptr;      /* passes over one value */
    TypeFunc extraMoreFunc = nullptr;   /* the test that ends the loop over ignored elements */
    TypeFunc frameFunc = nullptr;
    TypeFunc leafFunc = nullptr;
    TypeFunc compPostfixFunc = nullptr;  /* after a component or element */
    TypeFunc struPostfixFunc = nullptr;  /* end of a structure or list */
    TypeFunc entryPostfixFunc = nullptr; /* last thing in an entry function */
};

/* One run of the engine: the functions of one kind for the types of one module. */
struct TypeFuncRun {
    const TypeFuncInfo &info;
    int outFile;          /* function bodies */
    int extFile;          /* prototypes */
    Text funcPrefix;      /* of the names of normal functions */
    Text entryFuncPrefix; /* of the names of entry functions */

    int depth = 0; /* of types within one another */
    /* Functions of other modules that have a prototype among these. */
    std::unordered_set<NodePlace, PlaceHash> declared = {};
};
