#pragma once

struct AsnModule;
struct AsnType;

/* Names for numbers in the ".def" file: named numbers and bits, component indices, rows of the
   entry table. The generators of types and tables call these as they go, so the file follows their
   order. Nothing is written while the file isn't open. */

/* Of a type or nested structure that has just been defined: its named numbers, the indices of its
   components ("CDEFS="), and its accessor macros. A synonym or skipped type has none. */
void genDefines(AsnType *type);

/* Around and behind the rows of the entry table ("TDEFS="). */
void genEntryTablePrefixDefine(AsnModule *module);
void genEntryTableElementDefine(AsnType *type, int index);
void genEntryTablePostfixDefine(AsnModule *module);
