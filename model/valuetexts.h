#pragma once

#include <vector>

#include "base/call.h"
#include "base/text.h"

/* String, object identifier and time values: from their stored forms to text and numbers. A text
   that a call-back gets is valid during the call. */

struct AsnValue;

/* The stored digits of a bit or octet string, whose form is the value's main type; a list of named
   bits becomes binary digits. `length` is the stored number of digits. Fatal error 13 if a named
   bit is no number or its number is out of bounds. */
Text getSafeString(AsnValue *value, std::int32_t *length);
/* Binary digits and their number; false for a value that is no bit or octet string. */
bool makeBitString(AsnValue *value, Text *text, std::int32_t *length);
/* Hexadecimal digits, always an even number of them. `length` is the number of digits without the
   one added if the value was written in hexadecimal, else the number of octets. */
bool makeOctetString(AsnValue *value, Text *text, std::int32_t *length);

void forBitStringValueB(AsnValue *value,
                        Call<void(AsnValue *value, std::int32_t length, const char *text)> func);
void forBitStringValueX(AsnValue *value,
                        Call<void(AsnValue *value, std::int32_t length, const char *text)> func);
void forOctetStringValue(AsnValue *value,
                         Call<void(AsnValue *value, std::int32_t length, const char *text)> func);
/* 8-bit character strings and times; `length` in characters. */
void forCharacterStringValue(
    AsnValue *value, Call<void(AsnValue *value, std::int32_t length, const char *text)> func);

/* The arcs of an object identifier. */
struct ObjIdComps {
    std::vector<std::uint32_t> numbers;
    std::vector<const char *> names; /* beside each number its name or null; not owned */
    int count() const { return static_cast<int>(numbers.size()); }
};
/* False if the value is no object identifier or cannot be resolved. Fatal error 13 if an arc
   doesn't fit 32 bits. */
bool makeObjIdComps(AsnValue *value, ObjIdComps *comps);
int getNrOfObjectIdentifierComps(AsnValue *value);
/* The arcs with `separator` (a blank for null) between them, each with its name between
   `namePrefix` and `nameSuffix` if both are given. Nothing at all if the value cannot be resolved.
 */
Text objectIdentifierValueStri(AsnValue *value, const char *separator, const char *namePrefix,
                               const char *nameSuffix);
