#pragma once

struct AsnModule;
struct AsnType;

/* Names for numbers in the ".def" file: named numbers and bits, component indices, rows of the
   entry table; and accessor macros. The generators of types and tables call these as they go, so the file follows their
   order. Nothing is written while the file isn't open. */

/* Where the structure of a CHOICE has its alternatives: in the union i1, or side by side, as that of
   a value field of a class. */
enum class Alternatives { IN_UNION, SIDE_BY_SIDE };

/* Of a type or nested structure that has just been defined: its named numbers, the indices of its
   components ("CDEFS="), and its accessor macros. A synonym or skipped type has none. */
void genDefines(AsnType *type, Alternatives alternatives = Alternatives::IN_UNION);
/* The macros alone (accessors.cpp): they test, set and clear a component, and reach an alternative or
   an element, without naming control members. A type has them if its access routines are macros,
   which "ACCESS-ROUTINES=" decides for the module or the type. */
void genCompAccessRoutines(AsnType *type, Alternatives alternatives);

/* Around and behind the rows of the entry table ("TDEFS="). */
void genEntryTablePrefixDefine(AsnModule *module);
void genEntryTableElementDefine(AsnType *type, int index);
void genEntryTablePostfixDefine(AsnModule *module);
