#pragma once

#include <string_view>

#include "base/text.h"

struct AsnModule;
struct AsnObjClassField;
struct AsnType;
struct AsnValue;

/* C names of types, components and named numbers. */

/* The generation prefix as the beginning of an identifier; names of files keep its own spelling. */
Text cModulePrefix(AsnModule *module);

/* The type's own identifier, which is also the tag of its structure: "Msg", and for an unnamed
   structure the way out of its component to the definition around it: "b_a_Msg". */
Text cTypeId(AsnType *type);
/* The tag of the structure that is declared for the identifier: "struct t_b_a_Msg". */
Text cStructTag(std::string_view id);
/* The name under which a value of the type is declared: "uint8", "Msg", "struct t_b_a_Msg",
 * "SKIPPED". */
Text cBaseTypeId(AsnType *type);
/* The same for a component inside a type's definition, where a recursive type goes by its tag. */
Text cTypeIdForTypeCompDef(AsnType *type);

/* getDefTypeId, getDefBaseTypeId and getTypeCompId where the name stands alone, as that of a C type
   or of a member of a structure. */
Text cDefTypeName(AsnType *type);
Text cDefBaseTypeName(AsnType *type);
Text cMemberName(AsnType *comp);

/* The C type of a value form, bent by "C-GENERATION="; null if the form has none. */
const char *getPredefinedType(AsnType *type);
/* The member of the ASNHOME union; fatal error 13 for a value form out of range. */
const char *getAsnhomeMember(AsnType *type);

/* Names of C types that belong to no value form; null for another number. */
enum SpecialType : int {
    SPECIAL_SKIPPED = 0,
    SPECIAL_FRAME_PTR,
    SPECIAL_NOBODY_USES,
    SPECIAL_EXTENSION_MARKER,
    SPECIAL_COUNT,
};
const char *cSpecialType(int number);

/* What "NAMELEN=" leaves of a name. */
Text cCutName(const Text &name, AsnType *type);
/* The ASN.1 name with a small first letter, cut so. */
Text cASN1VariableName(AsnType *type);

/* A type that is written in a field of a class goes by the names of both: those become the name of
   its component and of its base. */
void cUpdateBuiltinTypeFieldType(AsnType *type, AsnObjClassField *field);

/* Names of defines. Fatal error 13 for a value or component that can't have one. */
Text cNamedNumberMnemonic(AsnType *type, AsnValue *value);  /* "red_Color" */
Text cDefineForNamedNumber(AsnType *type, AsnValue *value); /* "#define red_Color 1\n" */
Text cComponentIndexMnemonic(AsnType *comp);                /* "a_Msg" */
/* The same where components of several nested structures would share a name: "a_inner_Msg". */
Text cComponentPathMnemonic(AsnType *comp);
/* "#define a_Msg 0\n"; with the path for `withPath`. */
Text cDefineForComponentIndex(AsnType *comp, bool withPath = false);
/* The nearest ancestor whose C type has a name, in which the mnemonic of a component ends; null if
   there is none. */
AsnType *cDefinedAncestor(AsnType *comp);

/* Words that mean something in C, and so can't be the name of anything there. Names that are put
   together of several parts never meet one; a name that stands alone gets "_" behind it
   (reserved.cpp). */

/* What names need of the tool; it sets them before the first file is written. */
struct NameHooks {
    /* True if the words of C++ count for the module as well; null for never. */
    bool (*avoidsCPlusPlusWords)(AsnModule *module) = nullptr;
};
extern NameHooks nameHooks;

/* True for a keyword of C99, and of C++ up to C++20 if `cPlusPlus`. */
bool cIsReservedWord(std::string_view word, bool cPlusPlus);

/* The words of C++ count for the module as well. */
bool cAvoidsCPlusPlusWords(AsnModule *module);

/* The name of a member, a type, a class or a define that stands alone in the C of `module`. */
Text cLoneName(std::string_view name, AsnModule *module);
