/* Asking for truth, nothing and numbers. */

#include "asntest.h"

#include <locale.h>
#include <math.h>
#include <stdlib.h>

static BOOLE isWord (ASNTSTG *g, const char *word)
{
  return asnPeekWord (g) == ASN_WORD_ && strcmp (g->text, word) == 0;
}

void asnAskBoolean (ASNTSTG *g, BOOLE *value)
{
  do {
    if (isWord (g, "TRUE") || isWord (g, "FALSE")) {
      *value = g->text[0] == 'T';
      asnTakeWord (g);
      return;
    }
  } while (asnRefuseWord (g, INPUT_FAIL));
}

void asnAskNull (ASNTSTG *g)
{
  do {
    if (isWord (g, "NULL")) {
      asnTakeWord (g);
      return;
    }
  } while (asnRefuseWord (g, INPUT_FAIL));
}

/* --- whole numbers --- */

/* Decimal digits of a number that 64 bits hold. */
static BOOLE readMagnitude (const char *p, uint64 *magnitude)
{
  uint64 number = 0;
  if (!*p)
    return FALSE;
  for (; *p; p++) {
    uint32 digit = (uint32)(*p - '0');
    if (*p < '0' || *p > '9' || number > (UINT64_MAX - digit) / 10)
      return FALSE;
    number = number * 10 + digit;
  }
  *magnitude = number;
  return TRUE;
}

static BOOLE readNumber (const char *p, sint64 *number)
{
  BOOLE isNegative = *p == '-';
  uint64 magnitude;
  if (!readMagnitude (p + isNegative, &magnitude) ||
      magnitude > (uint64)INT64_MAX + (isNegative ? 1 : 0))
    return FALSE;
  *number = isNegative ? (sint64)(0 - magnitude) : (sint64)magnitude;
  return TRUE;
}

/* A number, or the name that the type gives it. */
static BOOLE askNumber (ASNTSTG *g, sint64 low, sint64 high, sint64 *number)
{
  int error;
  do {
    const ASN_NAMED_NUMBER *named;
    error = INPUT_FAIL;
    if (asnPeekWord (g) != ASN_WORD_)
      continue;
    named = asnNumberOfName (g, g->text);
    if (named)
      *number = named->value;
    if (!named && !readNumber (g->text, number))
      continue;
    error = CONSTRAINT_FAIL;
    if (low <= *number && *number <= high) {
      asnTakeWord (g);
      g->nrOfNamed = 0;
      return TRUE;
    }
  } while (asnRefuseWord (g, error));
  return FALSE;
}

static sint64 higher (sint64 a, sint64 b)
{
  return a > b ? a : b;
}

static sint64 lower (sint64 a, sint64 b)
{
  return a < b ? a : b;
}

void asnAskUint8 (ASNTSTG *g, uint8 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, 0), lower (high, UINT8_MAX), &number))
    *value = (uint8)number;
}

void asnAskUint16 (ASNTSTG *g, uint16 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, 0), lower (high, UINT16_MAX), &number))
    *value = (uint16)number;
}

void asnAskUint32 (ASNTSTG *g, uint32 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, 0), lower (high, UINT32_MAX), &number))
    *value = (uint32)number;
}

/* An upper bound of MAXLONG is none. */
void asnAskUint64 (ASNTSTG *g, uint64 *value, sint64 low, sint64 high)
{
  sint64 number;
  uint64 magnitude;
  if (high == MAXLONG && asnPeekWord (g) == ASN_WORD_ && readMagnitude (g->text, &magnitude) &&
      magnitude > (uint64)INT64_MAX) {
    asnTakeWord (g);
    *value = magnitude;
  } else if (askNumber (g, higher (low, 0), high, &number)) {
    *value = (uint64)number;
  }
}

void asnAskSint8 (ASNTSTG *g, sint8 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, INT8_MIN), lower (high, INT8_MAX), &number))
    *value = (sint8)number;
}

void asnAskSint16 (ASNTSTG *g, sint16 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, INT16_MIN), lower (high, INT16_MAX), &number))
    *value = (sint16)number;
}

void asnAskSint32 (ASNTSTG *g, sint32 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, higher (low, INT32_MIN), lower (high, INT32_MAX), &number))
    *value = (sint32)number;
}

void asnAskSint64 (ASNTSTG *g, sint64 *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, low, high, &number))
    *value = number;
}

/* As in a decoding, what lies outside the known items is newer. */
void asnAskXEnum (ASNTSTG *g, EXTENSIBLE_ENUMERATED *value, sint64 low, sint64 high)
{
  sint64 number;
  if (askNumber (g, INT32_MIN, INT32_MAX, &number)) {
    value->extended = number < low || number > high;
    value->value = (sint32)number;
  }
}

/* --- real numbers --- */

/* Longer ones say no more: the largest number has 4933 digits. */
#define MOST_DIGITS 5000

typedef struct {
  int closure;
  int lowKind;
  REAL64 low;
  int highKind;
  REAL64 high;
  REAL128 least; /* what the form that holds the value rounds to infinity, from here on */
} RANGE;

/* The largest number of a form and half of its last digit, which is what few decimal digits of that number
   can stand for. */
#define BEYOND(most, exponent, digits) \
  ((REAL128)(most) + (REAL128)ldexp (1.0, (exponent) - (digits) - 1))
#define BEYOND_REAL32 BEYOND (FLT_MAX, FLT_MAX_EXP, FLT_MANT_DIG)
#define BEYOND_REAL64 BEYOND (DBL_MAX, DBL_MAX_EXP, DBL_MANT_DIG)

/* "-12.5e-3", with the point that the C library takes in the program's language. */
static BOOLE readDecimal (const char *word, REAL128 *value)
{
  char text[MOST_DIGITS + 16], *to = text, *end;
  const char *point = localeconv ()->decimal_point;
  BOOLE hasPoint = FALSE;
  if (strlen (word) > MOST_DIGITS || strlen (point) > 8)
    return FALSE;
  for (; *word; word++) {
    if (*word == '.' && !hasPoint) {
      memcpy (to, point, strlen (point));
      to += strlen (point);
      hasPoint = TRUE;
    } else if ((*word >= '0' && *word <= '9') || strchr ("+-eE", *word)) {
      *to++ = *word;
    } else {
      return FALSE;
    }
  }
  *to = 0;
  *value = strtold (text, &end);
  return end != text && !*end && !isinf (*value);
}

static BOOLE readReal (const char *word, REAL128 *value)
{
  if (strcmp (word, "PLUS-INFINITY") == 0)
    *value = (REAL128)HUGE_VAL;
  else if (strcmp (word, "MINUS-INFINITY") == 0)
    *value = -(REAL128)HUGE_VAL;
  else if (strcmp (word, "NOT-A-NUMBER") == 0)
    *value = (REAL128)nan ("");
  else
    return readDecimal (word, value);
  return TRUE;
}

static BOOLE isInRange (REAL128 value, const RANGE *range)
{
  BOOLE lowOpen = range->closure == OPEN_CLOS || range->closure == OPEN_OPEN;
  BOOLE highOpen = range->closure == CLOS_OPEN || range->closure == OPEN_OPEN;
  REAL128 low = (REAL128)range->low, high = (REAL128)range->high;
  if (!isinf (value) && (value >= range->least || value <= -range->least))
    return FALSE;
  if (range->lowKind == REAL_NORMAL && !(lowOpen ? value > low : value >= low))
    return FALSE;
  return range->highKind != REAL_NORMAL || (highOpen ? value < high : value <= high);
}

static BOOLE askReal (ASNTSTG *g, const RANGE *range, REAL128 *value)
{
  int error;
  do {
    error = INPUT_FAIL;
    if (asnPeekWord (g) != ASN_WORD_ || !readReal (g->text, value))
      continue;
    error = CONSTRAINT_FAIL;
    if (isInRange (*value, range)) {
      asnTakeWord (g);
      return TRUE;
    }
  } while (asnRefuseWord (g, error));
  return FALSE;
}

static RANGE rangeOf (int closure, int lowKind, REAL64 low, int highKind, REAL64 high, REAL128 least)
{
  RANGE range;
  range.closure = closure;
  range.lowKind = lowKind;
  range.low = low;
  range.highKind = highKind;
  range.high = high;
  range.least = least;
  return range;
}

void asnAskReal32 (ASNTSTG *g, REAL32 *value, int closure, int lowKind, REAL64 low, int highKind,
                   REAL64 high)
{
  RANGE range = rangeOf (closure, lowKind, low, highKind, high, BEYOND_REAL32);
  REAL128 number;
  if (askReal (g, &range, &number))
    *value = (REAL32)number;
}

void asnAskReal64 (ASNTSTG *g, REAL64 *value, int closure, int lowKind, REAL64 low, int highKind,
                   REAL64 high)
{
  RANGE range = rangeOf (closure, lowKind, low, highKind, high, BEYOND_REAL64);
  REAL128 number;
  if (askReal (g, &range, &number))
    *value = (REAL64)number;
}

void asnAskReal128 (ASNTSTG *g, REAL128 *value, int closure, int lowKind, REAL64 low, int highKind,
                    REAL64 high)
{
  RANGE range = rangeOf (closure, lowKind, low, highKind, high, (REAL128)HUGE_VAL);
  REAL128 number;
  if (askReal (g, &range, &number))
    *value = number;
}

/* Bounds at the ends of what a double holds let infinity in. */
void asnAskReal (ASNTSTG *g, REAL *value, int closure, REAL64 low, REAL64 high)
{
  RANGE range = rangeOf (closure, low <= MINREAL ? REAL_MINUS_INF : REAL_NORMAL, low,
                         high >= MAXREAL ? REAL_PLUS_INF : REAL_NORMAL, high, BEYOND_REAL64);
  REAL128 number;
  if (!askReal (g, &range, &number))
    return;
  value->kind = !isinf (number) ? REAL_NORMAL : number > 0 ? REAL_PLUS_INF : REAL_MINUS_INF;
  value->value = isinf (number) ? 0 : (REAL64)number;
}
