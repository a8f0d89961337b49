#pragma once

#include "base/text.h"

struct AsnType;

/* Homes: the place of a value in the running program. A generated function reaches a value from its
   parameter "home" (or from a block's own "h1") along the type's path, in an ASNHOME, or through
   the array "hometab".

   With `addressOf` the text is the value's address, without it the value. A `separator` that isn't
   null says that a member follows: the text then ends in "." or "->", whichever is right there. */

/* A value in a C structure: "home->a.b", "&home->a.b", "home->a.b->". */
Text &cHomeRef(Text &dst, const char *prefix, bool addressOf, AsnType *type, const char *separator,
               const char *postfix);
/* A value in an ASNHOME: "(Elem *)a1->val.stru". */
Text &cAsnHomeCompRef(Text &dst, const char *prefix, bool addressOf, AsnType *type,
                      const char *separator, const char *postfix);
void cAsnHomeCompRefToF(int file, const char *prefix, bool addressOf, AsnType *type,
                        const char *separator, const char *postfix);
/* Whichever of the two holds the value here. */
Text &cHome(Text &dst, const char *prefix, bool addressOf, AsnType *type, const char *separator,
            const char *postfix);

/* The home of the component that tells the type of an ANY. */
Text &cAnyDefinedByClassifierTypeHome(Text &dst, const char *prefix, bool addressOf,
                                      AsnType *classifier, const char *postfix);
