#pragma once

struct AsnType;

/* The type name path while the components of a type are walked: each component stands on the path
   for the time of its own text. */

/* Appends the component's name; nothing for an extension marker, or for an element that is reached
   through its list item. Fatal error 13 for a type that can't stand in a path. */
void addCompNameToPath(AsnType *comp);
void removeCompNameFromPath(AsnType *comp);

/* Appends a name with its separator as one element; the component's own stretch of the path ends
   behind it. The caller takes it off with removeElemFromPath. */
void cAddNameToPath(AsnType *comp, const char *name);
/* "->" in a father that is a pointer, else "."; empty without a father. */
const char *cGetSeparatorInTypePath(AsnType *comp);
