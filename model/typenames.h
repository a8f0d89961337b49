#pragma once

#include "model/backend.h"

/* Names of types. "?!?" stands for a name that a type does not have. */

/* The plain ASN.1 name; no text for a nameless type. */
Text getTypeRef(AsnType *type);
/* The ASN.1 name of a leaf's kind, or the plain name of the base. */
Text getBaseTypeRef(AsnType *type);
/* Names by the naming options: of the definition, of the base's definition, of a component. */
Text getDefTypeId(AsnType *type);
Text getDefBaseTypeId(AsnType *type);
Text getTypeCompId(AsnType *type);
/* The plain name of a component. */
Text getTypeCompRef(AsnType *type);
/* The C type of a value. */
Text getBaseTypeId(AsnType *type);
/* TCS_..., TYP_..., and the ASN.1 name of the base's main type. A main type outside the table, or
   one that is no built-in type for its name, gives no text. */
Text getTypeCompStatusStri(AsnType *type);
Text getTypeMainTypeStri(AsnType *type);
Text getTypeMainTypeRef(AsnType *type);
