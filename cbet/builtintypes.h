#pragma once

#include "store/ketradef.h"

struct AsnType;

/* What C and the run-time library make of each builtin type. What is known of it apart from C
   stands in store/typetable.h. */

/* Sorts of values without components that generated functions tell apart (gen/leafcalls.h). */
enum class LeafSort : std::uint8_t {
    BOOLEAN,
    INTEGER,
    ENUMERATED,
    REAL,
    STRING, /* bit, octet and character strings */
    NULL_TYPE,
    EMPTY_STRUCTURE,
    ANY,    /* ANY and open types */
    SIMPLE, /* OBJECT IDENTIFIER and times */
    EXTERNAL,
    OTHER, /* what the run-time library has no function for */
};

struct BuiltinType {
    MainType mainType;
    LeafSort leaf = LeafSort::OTHER;
    const char *call = nullptr;                 /* in names of run-time functions; null for none */
    const char *character = nullptr;            /* C type of the elements of a static string */
    bool hasRanges = false;                     /* a constraint may give ranges of its characters */
    const char *(*callOf)(AsnType *) = nullptr; /* the call, where form or options decide it */
};

/* The row of a main type; that of TYP_NONE for a number that is none. */
const BuiltinType &cBuiltinType(int mainType);
/* The name of the type in names of run-time functions; empty if it has none, and for a
   UniversalString, which none of them fills. An INTEGER or ENUMERATED in a format that isn't an
   integer's is fatal error 13. */
const char *cBuiltinName(AsnType *type);
/* A string whose value C can hold as a text: one octet for each character. Those of an
   ObjectDescriptor, which few modules have, get no constants. */
bool cHasTextConstants(int mainType);
