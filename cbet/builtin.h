#pragma once

#include "base/text.h"
#include "cbet/functions.h"

struct AsnTag;
struct AsnType;

/* Names of the run-time library's functions for builtin types, and tags as C text.

   A function name is a prefix that tells the purpose ("e_", "d_", "a_", "p_") and what these
   functions give: the builtin name of the type, and maybe suffixes. Tags come in two widths:
   TAG8(...) for numbers below 31 where narrow ones are taken, TAG(...) else. */

/* With the tag suffix behind the builtin name: a function that takes a tag. */
Text cBuiltinCodCFunc(AsnType *type);

/* The string types. The form of the string goes into the name: "Seg" for a list of segments, "Dyn"
   for a dynamic string that is filled, "0", "8" or "16" for the width of its length. */
Text cBuiltinStringCFunc(AsnType *type);
Text cBuiltinStringCodCFunc(AsnType *type);
Text cBuiltinStringTstCFunc(AsnType *type);

/* "_8" if the innermost tag's number is below 31, else the empty text. */
const char *cTagFuncSuff(AsnType *type);

/* A tag: narrow where its number allows it, or always wide. `constructed` gives TAG_STR, else
   TAG_PRI. */
Text cTagStri(const AsnTag *tag, bool constructed);
Text cTag32Stri(const AsnTag *tag, bool constructed);

/* The innermost tag of a type and what stands behind it; a type without tags writes nothing at all.
 */
void cInnermostTagToF(int file, AsnType *type, bool constructed, const char *behind);
/* The outermost tag, no text for a type without tags. */
Text cOutermostTag32Stri(AsnType *type, bool constructed);

/* The pointer to the utility context that belongs to a G index, "NULL" where there is none:
   "asncodg_asnuti". */
Text cRawAsnutigPtr(GIndex gIndex);
