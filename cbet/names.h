#pragma once

#include "base/text.h"

struct AsnModule;
struct AsnObjClassField;
struct AsnType;
struct AsnValue;

/* C names of types, components and named numbers. All functions are text functions: they set `dst`
   to `prefix`, the name and `postfix`. */

/* The generation prefix as the beginning of an identifier; names of files keep its own spelling. */
Text &cModulePrefix(Text &dst, const char *prefix, AsnModule *module, const char *postfix);

/* The type's own identifier, which is also the tag of its structure: "Msg", and for an unnamed
   structure the way out of its component to the definition around it: "b_a_Msg". */
Text &cTypeId(Text &dst, const char *prefix, AsnType *type, const char *postfix);
/* The name under which a value of the type is declared: "uint8", "Msg", "struct t_b_a_Msg",
 * "SKIPPED". */
Text &cBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *postfix);
/* The same for a component inside a type's definition, where a recursive type goes by its tag. */
Text &cTypeIdForTypeCompDef(Text &dst, const char *prefix, AsnType *type, const char *postfix);

/* getDefTypeId, getDefBaseTypeId and getTypeCompId where the name stands alone, as that of a C type
   or of a member of a structure. */
Text &cDefTypeName(Text &dst, const char *prefix, AsnType *type, const char *postfix);
Text &cDefBaseTypeName(Text &dst, const char *prefix, AsnType *type, const char *postfix);
Text &cMemberName(Text &dst, const char *prefix, AsnType *comp, const char *postfix);

/* The C type of a value form, bent by "C-GENERATION="; null if the form has none. */
const char *getPredefinedType(AsnType *type);
/* The member of the ASNHOME union; fatal error 13 for a value form out of range. */
const char *getAsnhomeMember(AsnType *type);
Text &cAsnHomeMember(Text &dst, const char *prefix, AsnType *type, const char *postfix);

/* Names of C types that belong to no value form; null for another number. */
enum SpecialType : int {
    SPECIAL_SKIPPED = 0,
    SPECIAL_FRAME_PTR,
    SPECIAL_NOBODY_USES,
    SPECIAL_EXTENSION_MARKER,
    SPECIAL_COUNT,
};
const char *cSpecialType(int number);

/* The ASN.1 name with a small first letter, cut to "NAMELEN=" characters. */
Text &cASN1VariableName(Text &dst, const char *prefix, AsnType *type, const char *postfix);

/* A type that is written in a field of a class goes by the names of both: those become the name of
   its component and of its base. */
void cUpdateBuiltinTypeFieldType(AsnType *type, AsnObjClassField *field);

/* Names of defines. Fatal error 13 for a value or component that can't have one. */
Text &cNamedNumberMnemonic(Text &dst, const char *prefix, AsnType *type, AsnValue *value,
                           const char *postfix); /* "red_Color" */
Text &cDefineForNamedNumber(Text &dst, AsnType *type,
                            AsnValue *value); /* "#define red_Color 1\n" */
Text &cComponentIndexMnemonic(Text &dst, const char *prefix, AsnType *comp,
                              const char *postfix);       /* "a_Msg" */
/* The same where components of several nested structures would share a name: "a_inner_Msg". */
Text &cComponentPathMnemonic(Text &dst, const char *prefix, AsnType *comp, const char *postfix);
/* "#define a_Msg 0\n"; with the path for `withPath`. */
Text &cDefineForComponentIndex(Text &dst, AsnType *comp, bool withPath = false);
/* The nearest ancestor whose C type has a name, in which the mnemonic of a component ends; null if
   there is none. */
AsnType *cDefinedAncestor(AsnType *comp);
