/* Real numbers: binary and decimal encodings. */

#include "asnint.h"

#include <locale.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

/* First octets of encodings that are not binary numbers. */
enum { PLUS_INFINITY = 0x40, MINUS_INFINITY = 0x41, NOT_A_NUMBER = 0x42, MINUS_ZERO = 0x43 };
enum { BINARY = 0x80, NEGATIVE = 0x40, SPECIAL = 0x40 };
enum { NR1 = 1, NR2 = 2, NR3 = 3 };

/* Characters of a decimal number: the largest long double and 255 digits behind its point. */
#define DECIMAL_TEXT 5300

/* --- encoding --- */

static void putOctet (ASNCODG *g, uint32 octet)
{
  BYTE_TYPE one = (BYTE_TYPE)octet;
  asnPutOctets (g, &one, 1);
}

/* As mantissa * 2 ** exponent with an odd mantissa, both in the fewest octets. */
static void putBinary (ASNCODG *g, REAL128 value)
{
  int exponent;
  REAL128 fraction = frexpl (value < 0 ? -value : value, &exponent);
  uint64 mantissa = (uint64)ldexpl (fraction, 64);
  sint32 rest;
  uint32 octets = 1;
  exponent -= 64;
  for (; !(mantissa & 1); mantissa >>= 1)
    exponent++;
  for (; mantissa > 0; mantissa >>= 8)
    putOctet (g, (uint32)(mantissa & 0xFF));
  rest = exponent;
  putOctet (g, (uint32)rest & 0xFF);
  for (; rest < -128 || rest > 127; octets++) {
    rest = (rest - (rest & 0xFF)) / 256;
    putOctet (g, (uint32)rest & 0xFF);
  }
  putOctet (g, BINARY | (value < 0 ? NEGATIVE : 0) | (octets - 1));
}

/* The decimal point of the program's language becomes that of the encoding. */
static void putDecimal (ASNCODG *g, REAL128 value, int digits)
{
  char text[DECIMAL_TEXT];
  const char *point = localeconv ()->decimal_point;
  int length = snprintf (text, sizeof text, "%#.*Lf", digits, value);
  char *found;
  if (length < 0 || (size_t)length >= sizeof text) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  found = strstr (text, point);
  if (found) {
    *found = '.';
    memmove (found + 1, found + strlen (point), strlen (found + strlen (point)) + 1);
  }
  asnPutOctets (g, text, strlen (text));
  putOctet (g, NR2);
}

void asnEncReal (ASNCODG *g, uint32 tag, REAL128 value, int form, int digits)
{
  uint32 used = asnUsed (g);
  if (isnan (value))
    putOctet (g, NOT_A_NUMBER);
  else if (isinf (value))
    putOctet (g, value > 0 ? PLUS_INFINITY : MINUS_INFINITY);
  else if (value == 0 && signbit (value))
    putOctet (g, MINUS_ZERO);
  else if (value != 0 && form == NR2_ENC)
    putDecimal (g, value, digits);
  else if (value != 0)
    putBinary (g, value);
  asnPutHeader (g, tag, used); /* zero has no contents */
}

/* --- decoding --- */

static sint64 signedNumber (const BYTE_TYPE *p, uint32 len)
{
  uint64 value = *p & 0x80 ? UINT64_MAX : 0;
  for (; len > 0; len--)
    value = value << 8 | *p++;
  return (sint64)value;
}

/* 64 bits of a mantissa from its first one on; *exponent counts those that are left out. A bit that is
   left out still decides how the number is rounded. */
static uint64 mantissaOf (const BYTE_TYPE *p, const BYTE_TYPE *end, sint64 *exponent)
{
  uint64 mantissa = 0;
  int bits = 0;
  for (; p < end && *p == 0; p++) {
  }
  for (; p < end && bits < 64; p++) {
    for (int bit = 7; bit >= 0; bit--) {
      BOOLE isSet = (*p >> bit & 1) != 0;
      if (mantissa == 0 && !isSet)
        continue;
      if (bits < 64) {
        mantissa = mantissa << 1 | isSet;
        bits++;
      } else {
        mantissa |= isSet;
        ++*exponent;
      }
    }
  }
  for (; p < end; p++) {
    mantissa |= *p != 0;
    *exponent += 8;
  }
  return mantissa;
}

static BOOLE readBinary (const BYTE_TYPE *p, const BYTE_TYPE *end, REAL128 *value)
{
  static const int bitsOfBase[] = { 1, 3, 4, 0 };
  enum { FURTHEST = 1000000 };
  uint32 first = *p++, octets = (first & 3) + 1;
  int perExponent = bitsOfBase[(first >> 4) & 3];
  sint64 exponent;
  uint64 mantissa;
  if (octets == 4 && p < end)
    octets = *p++;
  /* Four octets of exponent are more than any number needs. */
  if (perExponent == 0 || octets == 0 || octets > 4 || (size_t)(end - p) <= octets)
    return FALSE;
  exponent = signedNumber (p, octets) * perExponent + (first >> 2 & 3);
  mantissa = mantissaOf (p + octets, end, &exponent);
  if (exponent > FURTHEST || exponent < -FURTHEST)
    exponent = exponent < 0 ? -FURTHEST : FURTHEST;
  *value = ldexpl ((REAL128)mantissa, (int)exponent);
  if (first & NEGATIVE)
    *value = -*value;
  return TRUE;
}

/* Copies digits and counts them. */
static const BYTE_TYPE *copyDigits (const BYTE_TYPE *p, const BYTE_TYPE *end, char **to, int *count)
{
  for (; p < end && *p >= '0' && *p <= '9'; p++, ++*count)
    *(*to)++ = (char)*p;
  return p;
}

static const BYTE_TYPE *copySign (const BYTE_TYPE *p, const BYTE_TYPE *end, char **to)
{
  if (p < end && (*p == '+' || *p == '-'))
    *(*to)++ = (char)*p++;
  return p;
}

/* "  -12.5E-3", of which the form says what may be there. */
static BOOLE readDecimal (int form, const BYTE_TYPE *p, const BYTE_TYPE *end, REAL128 *value)
{
  char text[DECIMAL_TEXT], *to = text;
  const char *point = localeconv ()->decimal_point;
  int digits = 0, exponentDigits = 0;
  if ((size_t)(end - p) + strlen (point) >= sizeof text)
    return FALSE;
  while (p < end && *p == ' ')
    p++;
  p = copySign (p, end, &to);
  p = copyDigits (p, end, &to, &digits);
  if (form != NR1 && p < end && (*p == '.' || *p == ',')) {
    memcpy (to, point, strlen (point));
    to += strlen (point);
    p = copyDigits (p + 1, end, &to, &digits);
  }
  if (form == NR3 && digits > 0 && p < end && (*p == 'E' || *p == 'e')) {
    *to++ = 'e';
    p = copySign (p + 1, end, &to);
    p = copyDigits (p, end, &to, &exponentDigits);
    if (exponentDigits == 0)
      return FALSE;
  }
  if (digits == 0 || p != end)
    return FALSE;
  *to = 0;
  *value = strtold (text, NULL);
  return TRUE;
}

/* Infinity only where it is meant: a number that is too large is wrong. */
static BOOLE readReal (const BYTE_TYPE *p, uint32 len, REAL128 *value)
{
  *value = 0;
  if (len == 0)
    return TRUE;
  if (*p & BINARY)
    return readBinary (p, p + len, value) && !isinf (*value);
  if (!(*p & SPECIAL))
    return *p >= NR1 && *p <= NR3 && readDecimal (*p, p + 1, p + len, value) && !isinf (*value);
  if (len > 1)
    return FALSE;
  switch (*p) {
  case PLUS_INFINITY:
    *value = (REAL128)HUGE_VAL;
    return TRUE;
  case MINUS_INFINITY:
    *value = -(REAL128)HUGE_VAL;
    return TRUE;
  case NOT_A_NUMBER:
    *value = (REAL128)nan ("");
    return TRUE;
  case MINUS_ZERO:
    *value = -0.0L;
    return TRUE;
  default:
    return FALSE;
  }
}

BOOLE asnIsInRange (REAL128 value, const ASN_REAL_RANGE *range)
{
  const BOOLE lowOpen = range->closure == OPEN_CLOS || range->closure == OPEN_OPEN;
  const BOOLE highOpen = range->closure == CLOS_OPEN || range->closure == OPEN_OPEN;
  const REAL128 low = (REAL128)range->low, high = (REAL128)range->high;
  if (range->lowKind == REAL_NORMAL && !(lowOpen ? value > low : value >= low))
    return FALSE;
  return range->highKind != REAL_NORMAL || (highOpen ? value < high : value <= high);
}

/* A number of at most `most`, unless it is infinite. */
static BOOLE takeReal (ASNCODG *g, const ASN_REAL_RANGE *range, REAL128 most, REAL128 *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  int error = ASN_OK;
  if (!asnTakeContents (g, &p, &len))
    return FALSE;
  if (!readReal (p, len, value) || (!isinf (*value) && (*value > most || *value < -most)))
    error = VALUE_FAIL;
  else if (!asnIsInRange (*value, range))
    error = CONSTRAINT_FAIL;
  if (error)
    asnRaise (&g->util, error);
  return !error;
}

#define DECODE_REAL(size, most) \
  void asnDecReal##size (ASNCODG *g, REAL##size *value, int closure, int lowKind, REAL64 low, \
                         int highKind, REAL64 high) \
  { \
    const ASN_REAL_RANGE range = { closure, lowKind, low, highKind, high }; \
    REAL128 number; \
    if (takeReal (g, &range, most, &number)) \
      *value = (REAL##size)number; \
  }
DECODE_REAL (32, FLT_MAX)
DECODE_REAL (64, DBL_MAX)
DECODE_REAL (128, LDBL_MAX)
