#pragma once

#include "base/text.h"

struct AsnType;

/* Homes: the place of a value in the running program. A generated function reaches a value from its
   parameter "home" (or from a block's own "h1") along the type's path, in an ASNHOME, or through
   the array "hometab".

   The last operator of a member's reference is "." or "->", whichever is right there. */
enum HomeForm : int {
    HOME_VALUE = 0,      /* "home->a.b" */
    HOME_ADDRESS,        /* "&home->a.b" */
    HOME_MEMBER,         /* "home->a.b.": the name of a member follows */
    HOME_MEMBER_ADDRESS, /* "&home->a.b." */
};

/* A value in a C structure. */
Text cHomeRef(AsnType *type, HomeForm form);
/* A value in an ASNHOME: "(Elem *)a1->val.stru". */
Text cAsnHomeCompRef(AsnType *type, HomeForm form);
/* Whichever of the two holds the value here. */
Text cHome(AsnType *type, HomeForm form);
/* A whole structure or list: where the home of the block is the structure itself, that one, else
   its place in the structure around it. */
Text cStructHome(AsnType *type, HomeForm form);

/* The address of the component that tells the type of an ANY. */
Text cAnyDefinedByClassifierTypeHome(AsnType *classifier);

/* The type name path while the components of a type are walked: each component stands on the path
   for the time of its own text (comppath.cpp). */

/* Appends the component's name; nothing for an extension marker, or for an element that is reached
   through its list item. Fatal error 13 for a type that can't stand in a path. */
void addCompNameToPath(AsnType *comp);
void removeCompNameFromPath(AsnType *comp);

/* Appends a name with its separator as one element; the component's own stretch of the path ends
   behind it. The caller takes it off with removeElemFromPath. */
void cAddNameToPath(AsnType *comp, const char *name);
/* "->" in a father that is a pointer, else "."; empty without a father. */
const char *cGetSeparatorInTypePath(AsnType *comp);
