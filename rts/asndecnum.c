/* Decoding of truth, nothing and whole numbers. */

#include "asnint.h"

void asnDecBoolean (ASNCODG *g, BOOLE *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (!asnTakeContents (g, &p, &len))
    return;
  if (len == 1)
    *value = *p ? TRUE : FALSE;
  else
    asnRaise (&g->util, VALUE_FAIL);
}

void asnDecNull (ASNCODG *g)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (asnTakeContents (g, &p, &len) && len != 0)
    asnRaise (&g->util, VALUE_FAIL);
}

/* --- whole numbers --- */

#define MOST_OF_NUMBER 8u /* that sint64 holds */

/* Whether the first nine bits are all alike, so that an octet less would do. */
static inline BOOLE isIdle (sint64 firstTwo)
{
  return (uint64)firstTwo + 128 < 256;
}

/* Two's complement of one to eight octets, none of which is idle; false for others. */
static inline BOOLE numberOf (const BYTE_TYPE *p, uint32 len, sint64 *number)
{
  const BYTE_TYPE *end = p + len;
  uint64 value;
  if (len == 1) {
    *number = (sint8)p[0];
    return TRUE;
  }
  if (len - 2 > MOST_OF_NUMBER - 2)
    return FALSE;
  value = (uint64)(sint64)(sint8)p[0] << 8 | p[1];
  if (isIdle ((sint64)value))
    return FALSE;
  for (p += 2; p != end; p++)
    value = value << 8 | *p;
  *number = (sint64)value;
  return TRUE;
}

/* The number that was read last, which numberOf didn't take or which is outside its bounds. */
ASN_RARE static void refuse (ASNCODG *g)
{
  const uint32 len = g->len;
  const BYTE_TYPE *p = g->place - len;
  const BOOLE isWrong = len == 0 || (len > 1 && isIdle ((sint8)p[0] * 256 + p[1]));
  asnRaise (&g->util, isWrong ? VALUE_FAIL : CONSTRAINT_FAIL);
}

/* A number within its bounds. */
static inline BOOLE readInRange (ASNCODG *g, sint64 low, sint64 high, sint64 *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (!asnTakeContents (g, &p, &len))
    return FALSE;
  if (numberOf (p, len, value) && low <= *value && *value <= high)
    return TRUE;
  refuse (g);
  return FALSE;
}

#define DECODE(form, type, least, most) \
  void asnDec##form (ASNCODG *g, type *value, sint64 low, sint64 high) \
  { \
    sint64 number; \
    if (!readInRange (g, low, high, &number)) \
      return; \
    *value = (type)number; \
    if (*value != number) \
      asnRaise (&g->util, CONSTRAINT_FAIL); \
  }
ASN_INTEGER_FORMS (DECODE)

/* Numbers above what sint64 holds have a ninth octet for the sign; an upper bound of MAXLONG is none. */
void asnDecUint64 (ASNCODG *g, uint64 *value, sint64 low, sint64 high)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (g->state == ASN_PRIMITIVE_ && g->len == MOST_OF_NUMBER + 1 && high == MAXLONG) {
    if (!asnTakeContents (g, &p, &len))
      return;
    if (p[0] != 0 || isIdle (p[1])) {
      refuse (g);
      return;
    }
    *value = 0;
    for (uint32 i = 1; i < len; i++)
      *value = *value << 8 | p[i];
  } else {
    sint64 number;
    if (readInRange (g, asnHigher (low, 0), high, &number))
      *value = (uint64)number;
  }
}

/* What lies outside the known items is one that a newer version of the type has. */
void asnDecXEnum (ASNCODG *g, EXTENSIBLE_ENUMERATED *value, sint64 low, sint64 high)
{
  sint64 number;
  if (readInRange (g, INT32_MIN, INT32_MAX, &number)) {
    value->extended = number < low || number > high;
    value->value = (sint32)number;
  }
}
