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
  REAL128 fraction = ldexpl (frexpl (value < 0 ? -value : value, &exponent), 64);
  uint64 high = (uint64)fraction, low = (uint64)ldexpl (fraction - (REAL128)high, 64);
  sint32 rest;
  uint32 octets = 1;
  exponent -= 128;
  if (high == 0 && low == 0) { /* an emulator that has less room for exponents */
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  if (low == 0) {
    low = high;
    high = 0;
    exponent += 64;
  }
  for (; !(low & 1); exponent++) {
    low = low >> 1 | high << 63;
    high >>= 1;
  }
  for (; low > 0; high >>= 8) {
    putOctet (g, (uint32)(low & 0xFF));
    low = low >> 8 | high << 56;
  }
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

void asnPutReal (ASNCODG *g, REAL128 value, int form, int digits)
{
  if (isnan (value))
    putOctet (g, NOT_A_NUMBER);
  else if (isinf (value))
    putOctet (g, value > 0 ? PLUS_INFINITY : MINUS_INFINITY);
  else if (value == 0 && signbit (value))
    putOctet (g, MINUS_ZERO);
  else if (value != 0 && form == NR2_ENC)
    putDecimal (g, value, digits);
  else if (value != 0)
    putBinary (g, value); /* zero has no contents */
}

void asnEncReal (ASNCODG *g, uint32 tag, REAL128 value, int form, int digits)
{
  uint32 used = asnUsed (g);
  asnPutReal (g, value, form, digits);
  asnPutHeader (g, tag, used);
}

/* --- decoding --- */

static sint64 signedNumber (const BYTE_TYPE *p, uint32 len)
{
  uint64 value = *p & 0x80 ? UINT64_MAX : 0;
  for (; len > 0; len--)
    value = value << 8 | *p++;
  return (sint64)value;
}

/* At least 121 bits of a mantissa from its first one on; *exponent counts those that are left out. One
   of them that is set still decides how the number is rounded. */
typedef struct {
  uint64 high, low;
} MANTISSA;

static MANTISSA mantissaOf (const BYTE_TYPE *p, const BYTE_TYPE *end, sint64 *exponent)
{
  MANTISSA m = { 0, 0 };
  for (; p < end && m.high >> 56 == 0; p++) {
    m.high = m.high << 8 | m.low >> 56;
    m.low = m.low << 8 | *p;
  }
  for (; p < end; p++) {
    m.low |= *p != 0;
    *exponent += 8;
  }
  return m;
}

/* Rounds once: here for the widest form; for others the first 64 bits say all, with a last one that stands
   for those behind it. */
static REAL128 roundedOnce (MANTISSA m, BOOLE isWidest, sint64 *exponent)
{
  if (m.high == 0)
    return (REAL128)m.low;
  if (isWidest && LDBL_MANT_DIG >= 64)
    return ldexpl ((REAL128)m.high, 64) + (REAL128)m.low;
  for (*exponent += 64; m.high >> 63 == 0; --*exponent) {
    m.high = m.high << 1 | m.low >> 63;
    m.low <<= 1;
  }
  return (REAL128)(m.high | (m.low != 0));
}

static BOOLE readBinary (const BYTE_TYPE *p, const BYTE_TYPE *end, BOOLE isWidest, REAL128 *value)
{
  static const int bitsOfBase[] = { 1, 3, 4, 0 };
  enum { FURTHEST = 1000000 };
  uint32 first = *p++, octets = (first & 3) + 1;
  int perExponent = bitsOfBase[(first >> 4) & 3];
  sint64 exponent;
  MANTISSA mantissa;
  if (octets == 4 && p < end)
    octets = *p++;
  /* Four octets of exponent are more than any number needs. */
  if (perExponent == 0 || octets == 0 || octets > 4 || (size_t)(end - p) <= octets)
    return FALSE;
  exponent = signedNumber (p, octets) * perExponent + (first >> 2 & 3);
  mantissa = mantissaOf (p + octets, end, &exponent);
  *value = roundedOnce (mantissa, isWidest, &exponent);
  if (exponent > FURTHEST || exponent < -FURTHEST)
    exponent = exponent < 0 ? -FURTHEST : FURTHEST;
  *value = ldexpl (*value, (int)exponent);
  if (first & NEGATIVE)
    *value = -*value;
  return *value != 0 || (mantissa.high | mantissa.low) == 0;
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

BOOLE asnIsZero (const char *text)
{
  for (; *text && *text != 'e' && *text != 'E'; text++)
    if (*text >= '1' && *text <= '9')
      return FALSE;
  return TRUE;
}

REAL128 asnRealOfText (const char *text, char **end, size_t size)
{
  const REAL128 widest = strtold (text, end);
  const REAL128 held = size == sizeof (REAL32)   ? (REAL128)strtof (text, NULL)
                       : size == sizeof (REAL64) ? (REAL128)strtod (text, NULL)
                                                 : widest;
  return isinf (held) || held == 0 ? widest : held;
}

/* "  -12.5E-3", of which the form says what may be there. */
static BOOLE readDecimal (int form, const BYTE_TYPE *p, const BYTE_TYPE *end, size_t size, REAL128 *value)
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
  *value = asnRealOfText (text, NULL, size);
  return *value != 0 || asnIsZero (text);
}

/* Infinity and 0 only where they are meant: a number that is too large or too small is wrong. */
static BOOLE readReal (const BYTE_TYPE *p, uint32 len, size_t size, REAL128 *value)
{
  *value = 0;
  if (len == 0)
    return TRUE;
  if (*p & BINARY)
    return readBinary (p, p + len, size == sizeof (REAL128), value) && !isinf (*value);
  if (!(*p & SPECIAL))
    return *p >= NR1 && *p <= NR3 && readDecimal (*p, p + 1, p + len, size, value) && !isinf (*value);
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

int asnRealFromContents (const BYTE_TYPE *p, uint32 len, REAL64 *value)
{
  REAL128 number;
  if (!readReal (p, len, sizeof *value, &number) || !asnRealFits (number, sizeof *value))
    return VALUE_FAIL;
  *value = (REAL64)number;
  return ASN_OK;
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

BOOLE asnRealFits (REAL128 value, size_t size)
{
  REAL128 held = size == sizeof (REAL32)   ? (REAL128)(REAL32)value
                 : size == sizeof (REAL64) ? (REAL128)(REAL64)value
                                           : value;
  return (!isinf (held) || isinf (value)) && (held != 0 || value == 0);
}

/* A number that a form of `size` octets holds. */
static BOOLE takeReal (ASNCODG *g, const ASN_REAL_RANGE *range, size_t size, REAL128 *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  int error = ASN_OK;
  if (!asnTakeContents (g, &p, &len))
    return FALSE;
  if (!readReal (p, len, size, value) || !asnRealFits (*value, size))
    error = VALUE_FAIL;
  else if (!asnIsInRange (*value, range))
    error = CONSTRAINT_FAIL;
  if (error)
    asnRaise (&g->util, error);
  return !error;
}

#define DECODE_REAL(size) \
  void asnDecReal##size (ASNCODG *g, REAL##size *value, int closure, int lowKind, REAL64 low, \
                         int highKind, REAL64 high) \
  { \
    const ASN_REAL_RANGE range = { closure, lowKind, low, highKind, high }; \
    REAL128 number; \
    if (takeReal (g, &range, sizeof *value, &number)) \
      *value = (REAL##size)number; \
  }
DECODE_REAL (32)
DECODE_REAL (64)
DECODE_REAL (128)
