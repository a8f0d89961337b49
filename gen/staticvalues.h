#pragma once

struct AsnFieldValue;
struct AsnType;
struct AsnValue;

/* Values of ASN.1 as initialisers of C constants, written to the table file. */

/* A value whose C type has no such initialiser becomes a 0 with a comment, in braces if a structure
   holds it. Fatal error 13 for a string whose digits are none, 15 for values that nest without end.
 */
void genFixedTypeValueFieldValue(AsnValue *value);
/* The same for an element of a set: a CHOICE has its union there, which a field hasn't. */
void genSetElementValue(AsnValue *value);
/* What stands where a component, or a field of a class, has no value. */
void genEmptyFieldValue(AsnType *type);
void genEmptyClassField(AsnFieldValue *value);
