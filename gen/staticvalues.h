#pragma once

struct AsnType;
struct AsnValue;

/* Values of ASN.1 as initialisers of C constants, written to the table file. */

/* A value whose C type has no such initialiser becomes a 0 with a comment. Fatal error 13 for a
   string whose digits are none, 15 for values that nest without end. */
void genFixedTypeValueFieldValue(AsnValue *value);
/* What stands where there is no value. `type` may be null: then only the main type counts. */
void genEmptyFieldValue(int mainType, AsnType *type);
