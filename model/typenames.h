#pragma once

#include "model/backend.h"

/* Names of types. "?!?" stands for a name that a type does not have. */

/* The plain ASN.1 name; only prefix and suffix for a nameless type. */
Text &getTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix);
/* The ASN.1 name of a leaf's kind, or the plain name of the base. */
Text &getBaseTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix);
/* Names by the naming options: of the definition, of the base's definition, of a component. */
Text &getDefTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix);
Text &getDefBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix);
Text &getTypeCompId(Text &dst, const char *prefix, AsnType *type, const char *suffix);
/* The plain name of a component. */
Text &getTypeCompRef(Text &dst, const char *prefix, AsnType *type, const char *suffix);
/* The C type of a value. */
Text &getBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix);
/* The plain name under the naming rules of a kind of the module, or under those given. */
Text &getTypeIdConvKindRaw(Text &dst, const char *prefix, AsnType *type, const char *suffix,
                           int kind);
Text &getTypeIdConvFix(Text &dst, const char *prefix, AsnType *type, const char *suffix,
                       const FixRec *fixRec);
/* TCS_..., TYP_..., and the ASN.1 name of the base's main type. A main type outside the table, or
   one that is no built-in type for its name, empties `dst`. */
Text &getTypeCompStatusStri(Text &dst, const char *prefix, AsnType *type, const char *suffix);
Text &getTypeMainTypeStri(Text &dst, const char *prefix, AsnType *type, const char *suffix);
Text &getTypeMainTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix);
