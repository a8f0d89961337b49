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

#define ASK(form, type, least, most) \
  void asnAsk##form (ASNTSTG *g, type *value, sint64 low, sint64 high) \
  { \
    sint64 number; \
    if (askNumber (g, asnHigher (low, least), asnLower (high, most), &number)) \
      *value = (type)number; \
  }
ASN_INTEGER_FORMS (ASK)

/* An upper bound of MAXLONG is none. */
void asnAskUint64 (ASNTSTG *g, uint64 *value, sint64 low, sint64 high)
{
  sint64 number;
  uint64 magnitude;
  if (high == MAXLONG && asnPeekWord (g) == ASN_WORD_ && readMagnitude (g->text, &magnitude) &&
      magnitude > (uint64)INT64_MAX) {
    asnTakeWord (g);
    *value = magnitude;
  } else if (askNumber (g, asnHigher (low, 0), high, &number)) {
    *value = (uint64)number;
  }
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

/* "-12.5e-3", with the point that the C library takes in the program's language. */
static BOOLE readDecimalWord (const char *word, size_t size, REAL128 *value)
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
  *value = asnRealOfText (text, &end, size);
  return end != text && !*end && !isinf (*value) && (*value != 0 || asnIsZero (text));
}

static BOOLE readRealWord (const char *word, size_t size, REAL128 *value)
{
  if (strcmp (word, "PLUS-INFINITY") == 0)
    *value = (REAL128)HUGE_VAL;
  else if (strcmp (word, "MINUS-INFINITY") == 0)
    *value = -(REAL128)HUGE_VAL;
  else if (strcmp (word, "NOT-A-NUMBER") == 0)
    *value = (REAL128)nan ("");
  else
    return readDecimalWord (word, size, value);
  return TRUE;
}

static BOOLE askReal (ASNTSTG *g, const ASN_REAL_RANGE *range, size_t size, REAL128 *value)
{
  int error;
  do {
    error = INPUT_FAIL;
    if (asnPeekWord (g) != ASN_WORD_ || !readRealWord (g->text, size, value))
      continue;
    error = CONSTRAINT_FAIL;
    if (asnRealFits (*value, size) && asnIsInRange (*value, range)) {
      asnTakeWord (g);
      return TRUE;
    }
  } while (asnRefuseWord (g, error));
  return FALSE;
}

#define ASK_REAL(size) \
  void asnAskReal##size (ASNTSTG *g, REAL##size *value, int closure, int lowKind, REAL64 low, \
                         int highKind, REAL64 high) \
  { \
    const ASN_REAL_RANGE range = { closure, lowKind, low, highKind, high }; \
    REAL128 number; \
    if (askReal (g, &range, sizeof *value, &number)) \
      *value = (REAL##size)number; \
  }
ASK_REAL (32)
ASK_REAL (64)
ASK_REAL (128)
