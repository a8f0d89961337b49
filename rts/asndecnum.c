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

/* Two's complement of up to eight octets. */
static sint64 numberOf (const BYTE_TYPE *p, uint32 len)
{
  const BYTE_TYPE *end = p + len;
  uint64 value = (uint64)(sint64)(sint8)*p++;
  while (p < end)
    value = value << 8 | *p++;
  return (sint64)value;
}

/* The contents of a number, none of whose octets is idle. */
static inline BOOLE takeNumber (ASNCODG *g, const BYTE_TYPE **p, uint32 *len)
{
  if (!asnTakeContents (g, p, len))
    return FALSE;
  /* The first nine bits are not all alike. */
  if (*len == 0 || (*len > 1 && (BYTE_TYPE)((*p)[0] + ((*p)[1] >> 7)) == 0)) {
    asnRaise (&g->util, VALUE_FAIL);
    return FALSE;
  }
  return TRUE;
}

/* A number within its bounds. */
static BOOLE readInRange (ASNCODG *g, sint64 low, sint64 high, sint64 *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (!takeNumber (g, &p, &len))
    return FALSE;
  if (len <= 8) {
    *value = numberOf (p, len);
    if (low <= *value && *value <= high)
      return TRUE;
  }
  asnRaise (&g->util, CONSTRAINT_FAIL);
  return FALSE;
}

#define DECODE(form, type, least, most) \
  void asnDec##form (ASNCODG *g, type *value, sint64 low, sint64 high) \
  { \
    sint64 number; \
    if (readInRange (g, asnHigher (low, least), asnLower (high, most), &number)) \
      *value = (type)number; \
  }
ASN_INTEGER_FORMS (DECODE)

/* Numbers above what sint64 holds have a ninth octet for the sign; an upper bound of MAXLONG is none. */
void asnDecUint64 (ASNCODG *g, uint64 *value, sint64 low, sint64 high)
{
  const BYTE_TYPE *p;
  uint32 len;
  if (g->state == ASN_PRIMITIVE_ && g->len == 9 && high == MAXLONG) {
    if (!takeNumber (g, &p, &len))
      return;
    if (p[0] == 0)
      *value = (uint64)numberOf (p + 1, 8);
    else
      asnRaise (&g->util, CONSTRAINT_FAIL);
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
