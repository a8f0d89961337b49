#pragma once

#include "base/text.h"
#include "cbet/functions.h"

struct AsnTag;
struct AsnType;

/* Names of the run-time library's functions for builtin types, and tags as C text.

   A function name is a prefix that tells the purpose ("e_", "d_", "a_", "p_"), the builtin name of
   the type, and maybe suffixes: "d_uint8 (" with the postfix " (". Tags come in two widths:
   TAG8(...) for numbers below 31 where narrow ones are taken, TAG(...) else. */

/* Prefix, builtin name, postfix. A type that has no builtin name gives prefix and postfix alone; an
   INTEGER or ENUMERATED in a format that isn't an integer's is fatal error 13. */
Text &cBuiltinCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix);
/* With the tag suffix before the postfix: the name of a function that takes a tag. */
Text &cBuiltinCodCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix);

/* The string types. The form of the string goes into the name: "Seg" for a list of segments, "Dyn"
   for a dynamic string that is filled, "0", "8" or "16" for the width of its length. */
Text &cBuiltinStringCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix);
Text &cBuiltinStringCodCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix);
Text &cBuiltinStringTstCFunc(Text &dst, const char *prefix, AsnType *type, const char *postfix);

/* "_8" if the innermost tag's number is below 31, else the empty text. */
const char *cTagFuncSuff(AsnType *type);

/* A tag: narrow where its number allows it, or always wide. `constructed` gives TAG_STR, else
 * TAG_PRI. */
Text &cTagStri(Text &dst, const char *prefix, const AsnTag *tag, bool constructed,
               const char *postfix);
Text &cTag32Stri(Text &dst, const char *prefix, const AsnTag *tag, bool constructed,
                 const char *postfix);
void cTagToF(int file, const char *prefix, const AsnTag *tag, bool constructed,
             const char *postfix);
void cTag32ToF(int file, const char *prefix, const AsnTag *tag, bool constructed,
               const char *postfix);

/* The innermost or the outermost tag of a type; a type without tags writes nothing at all, and
   leaves an empty `dst`. */
void cInnermostTagToF(int file, const char *prefix, AsnType *type, bool constructed,
                      const char *postfix);
void cOutermostTag32ToF(int file, const char *prefix, AsnType *type, bool constructed,
                        const char *postfix);
Text &cOutermostTag32Stri(Text &dst, const char *prefix, AsnType *type, bool constructed,
                          const char *postfix);

/* The pointer to the utility context that belongs to a G index: "asncodg_asnuti". */
Text &cRawAsnutigPtr(Text &dst, const char *prefix, GIndex gIndex, const char *postfix);
