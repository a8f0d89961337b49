#pragma once

#include "store/ketravar.h"

/* What the 12 bytes of a VNode's value hold, by its kind: numbers, real values and strings. */

/* BOOLEAN. */
inline bool valueBool(const VNode &node) {
    return node.value[0] != 0;
}
/* INTEGER, ENUMERATED, a named bit's number. */
sint64 valueInt(const VNode &node);
void setValueInt(VNode *node, sint64 number);
/* Strings: length in digits or characters, and string number. */
std::uint16_t valueLength(const VNode &node);
RecNr valueStri(const VNode &node);

/* `mantissa` times `base` to the power `exponent`; base -1 marks a special value. */
struct realVal {
    sint64 mantissa;
    std::int16_t base = 0;
    std::int16_t exponent = 0;
};
enum : int { REAL_PLUS_INFINITY = -2, REAL_MINUS_INFINITY = -1, REAL_ZERO = 0 };

realVal valueReal(const VNode &node);
void setValueReal(VNode *node, const realVal &value);

realVal makeSpecialRealVal(std::int32_t code);
bool isSpecialRealVal(const realVal &value);
/* The code; 0x7FFFFFFF if the mantissa holds none. */
std::int32_t getSpecialRealVal(const realVal &value);
/* The value as a double; infinities are the greatest and the least finite one. */
double retRealVal(const realVal &value);
/* -1, 0 or 1, by the doubles. */
int compareReal(const realVal &a, const realVal &b);

/* Infinity of a value of `kind` (TYP_REAL, or a kind held as a 64-bit number). */
void setInfinity(VNode *node, bool plus, int kind);
bool testInfinity(const VNode &node, bool plus, int kind);

/* A character string value put together from its segments. Only the text of its kind's width is
   set: TYP_BMPSTR 16 bits, TYP_UNISTR 32 bits, any other 8. */
struct RestrCharStri {
    int kind = 0;
    std::string text8;
    std::u16string text16;
    std::u32string text32;
    std::int32_t length() const;
};
RestrCharStri makeRestrCharStri(ModRec *module, const VNode &node);
/* The length of a value that may be a list of segments; appends its text to `dst` unless that is
 * null. */
std::int32_t makeRestrCharStriSeg(ModRec *module, const VNode &node, RestrCharStri *dst);

/* The length that a list of named bits asks for: its greatest bit number plus 1, 0 for an empty
   list, 0x7FFFFFFF if a number doesn't fit. Moves the current VNode. */
std::int32_t lenFromNamedBits(ModRec *module, RecNr first);
/* The length of the current VNode as a value of the current TNode, in bits, octets or characters.
 */
std::int32_t getAnyStringLength();
