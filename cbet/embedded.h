#pragma once

#include "store/ketradef.h"

struct AsnObjClass;
struct AsnType;

/* The user's own lines, written on types and classes, at fixed places of the generated files. */

/* The places around an item: in front of it, and behind it. */
enum TedPlace : int {
    TED_TYP_BEFORE = 0,
    TED_ENC_BEFORE,
    TED_DEC_BEFORE,
    TED_ASK_BEFORE,
    TED_PRI_BEFORE,
    TED_TYP_BEHIND,
    TED_ENC_BEHIND,
    TED_DEC_BEHIND,
    TED_ASK_BEHIND,
    TED_PRI_BEHIND,
    TED_PLACES,
};

/* Copies the lines of the records `first` to `last` that belong to the place. A line that begins
   with
   "#" starts at column 0. Moves the current TedRec. */
void printTEDs(int slot, ModRec *module, RecNr first, RecNr last, int place);

/* Those of a class with its whole chain of references. */
void printObjClassEmbeddingOptions(int slot, AsnObjClass *objClass, int place);
/* Those of a type with its whole chain of references, as a member of a structure needs them. */
void printTypeEmbeddingOptions(int slot, AsnType *type, int place);
/* Those written on the type itself, as a definition needs them. */
void printLocalTypeEmbeddingOptions(int slot, AsnType *type, int place);
/* Those written on the type at the end of its chain. */
void printBaseTypeEmbeddingOptions(int slot, AsnType *type, int place);
