/* Asking for strings, in all the forms that C has for them. */

#include "asntest.h"

/* --- elements of a word --- */

static BOOLE readHex (const char **p, int digits, uint32 *unit)
{
  uint32 number = 0;
  for (; digits > 0; digits--, ++*p) {
    char c = **p;
    if (c >= '0' && c <= '9')
      number = number << 4 | (uint32)(c - '0');
    else if ((c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f'))
      number = number << 4 | (uint32)((c & 0x1F) + 9);
    else
      return FALSE;
  }
  *unit = number;
  return TRUE;
}

/* The next element of a string, with its escape resolved; false if that is none. */
static BOOLE nextUnit (const char **p, uint32 *unit)
{
  char c = *(*p)++;
  *unit = (BYTE_TYPE)c;
  if (c != '\\')
    return TRUE;
  c = *(*p)++;
  switch (c) {
  case '"':
  case '\\':
    *unit = (BYTE_TYPE)c;
    return TRUE;
  case 'n':
    *unit = '\n';
    return TRUE;
  case 'r':
    *unit = '\r';
    return TRUE;
  case 't':
    *unit = '\t';
    return TRUE;
  case 'x':
    return readHex (p, 2, unit);
  case 'u':
    return readHex (p, 4, unit);
  case 'U':
    return readHex (p, 8, unit);
  default:
    return FALSE;
  }
}

void asnOctetsFromDigits (const ASNTSTG *g, BYTE_TYPE *octets)
{
  const char *p = g->text;
  for (size_t i = 0; i < g->length / 2; i++) {
    uint32 octet = 0;
    (void)readHex (&p, 2, &octet);
    octets[i] = (BYTE_TYPE)octet;
  }
}

/* The bits of hexadecimal or binary digits. */
static void storeBits (const ASNTSTG *g, BYTE_TYPE *to)
{
  size_t n = g->length, perDigit = g->word == ASN_HEX_DIGITS_ ? 4 : 1;
  const char *p = g->text;
  memset (to, 0, (n * perDigit + 7) / 8);
  for (size_t i = 0; i < n; i++) {
    uint32 digit = 0;
    size_t bit = i * perDigit;
    (void)readHex (&p, 1, &digit);
    to[bit / 8] |= (BYTE_TYPE)(digit << (8 - perDigit - bit % 8));
  }
}

static void storeCharacters (const ASNTSTG *g, uint32 width, BYTE_TYPE *to)
{
  const char *p = g->text;
  while (*p) {
    uint32 unit;
    (void)nextUnit (&p, &unit);
    if (width == 1) {
      *to = (BYTE_TYPE)unit;
    } else if (width == 2) {
      uint16 character = (uint16)unit;
      memcpy (to, &character, sizeof character);
    } else {
      memcpy (to, &unit, sizeof unit);
    }
    to += width;
  }
}

/* Puts the elements of the word in hand to their place. */
static void store (const ASNTSTG *g, uint32 kindNr, BYTE_TYPE *to)
{
  if (kindNr == ASN_BIT_)
    storeBits (g, to);
  else if (kindNr == ASN_OCTET_)
    asnOctetsFromDigits (g, to);
  else
    storeCharacters (g, asnStringKinds[kindNr].width, to);
}

/* --- the word of a string --- */

/* The number of characters, or -1 if one is wrong. */
static sint64 countCharacters (const ASNTSTG *g, const ASN_STRING_KIND *kind)
{
  const char *p = g->text;
  sint64 count = 0;
  for (; *p; count++) {
    uint32 unit;
    BYTE_TYPE octet;
    if (!nextUnit (&p, &unit) || (kind->width < 4 && unit >> (8 * kind->width) > 0))
      return -1;
    octet = (BYTE_TYPE)unit;
    if (kind->width == 1 && !asnCharactersAllowed (kind, &octet, 1))
      return -1;
  }
  return count;
}

/* How many elements the word in hand has, or -1 if it is no such string. */
static sint64 countWord (const ASNTSTG *g, uint32 kindNr)
{
  if (kindNr == ASN_BIT_)
    return g->word == ASN_BIT_DIGITS_   ? (sint64)g->length
           : g->word == ASN_HEX_DIGITS_ ? (sint64)g->length * 4
                                        : -1;
  if (kindNr == ASN_OCTET_)
    return g->word == ASN_HEX_DIGITS_ && g->length % 2 == 0 ? (sint64)g->length / 2 : -1;
  return g->word == ASN_STRING_ ? countCharacters (g, &asnStringKinds[kindNr]) : -1;
}

/* { read own }: becomes binary digits, up to the last bit that is named but at least `low`. */
static BOOLE readNamedBits (ASNTSTG *g, sint64 low, sint64 high)
{
  sint64 n = low > 0 ? low : 0;
  asnTakeWord (g);
  while (asnPeekWord (g) == ASN_WORD_) {
    ASN_NAMED_NUMBER *bit = asnNumberOfName (g, g->text);
    if (!bit || bit->value < 0)
      return FALSE;
    if (bit->value >= n)
      n = bit->value + 1;
    bit->chosen = TRUE;
    asnTakeWord (g);
  }
  if (g->word != ASN_CLOSE_ || n > high || n > INT32_MAX || !asnRoomForText (g, (size_t)n))
    return FALSE;
  memset (g->text, '0', (size_t)n);
  g->text[n] = 0;
  g->length = (size_t)n;
  for (uint32 i = 0; i < g->nrOfNamed; i++)
    if (g->named[i].chosen)
      g->text[g->named[i].value] = '1';
  g->word = ASN_BIT_DIGITS_;
  return TRUE;
}

static void forgetBits (ASNTSTG *g)
{
  for (uint32 i = 0; i < g->nrOfNamed; i++)
    g->named[i].chosen = FALSE;
}

/* The elements of a string whose size is right; its word stays in hand. False after an error. */
static BOOLE askWord (ASNTSTG *g, uint32 kindNr, sint64 low, sint64 high, uint32 *n)
{
  int error;
  do {
    sint64 count = -1;
    int word = asnPeekWord (g);
    error = INPUT_FAIL;
    if (word == ASN_OPEN_ && kindNr == ASN_BIT_ && g->nrOfNamed > 0) {
      forgetBits (g);
      if (!readNamedBits (g, low, high))
        continue;
    }
    count = countWord (g, kindNr);
    if (count < 0)
      continue;
    error = count < low ? CONSTRAINT_FAIL : AM_FAIL;
    if (low <= count && count <= high && count <= INT32_MAX) {
      *n = (uint32)count;
      g->nrOfNamed = 0;
      return TRUE;
    }
  } while (asnRefuseWord (g, error));
  return FALSE;
}

/* --- forms --- */

static sint64 lower (sint64 a, sint64 b)
{
  return a < b ? a : b;
}

/* What a length member can count. */
static sint64 mostOfLength (uint32 how)
{
  uint32 size = ASN_LENGTH_SIZE (how);
  return size == 1 ? UINT8_MAX : size == 2 ? UINT16_MAX : INT32_MAX;
}

void asnAskString (ASNTSTG *g, uint32 how, void *n, void *st, size_t size, sint64 low, sint64 high)
{
  uint32 kindNr = ASN_KIND_OF (how), count;
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  BYTE_TYPE *to = asnElements (how, st);
  sint64 most = kindNr == ASN_BIT_ ? (sint64)(size < INT32_MAX ? size : INT32_MAX) * 8
                                   : (sint64)(size / kind->width) - (kind->text ? 1 : 0);
  if (!askWord (g, kindNr, low, lower (high, lower (most, mostOfLength (how))), &count))
    return;
  store (g, kindNr, to);
  if (kind->text)
    memset (to + (size_t)count * kind->width, 0, kind->width);
  else if (kindNr == ASN_BIT_)
    asnClearBits (to, size, count, high);
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
  asnTakeWord (g);
}

/* Memory for a string of `n`, which is never nothing. */
static BYTE_TYPE *newAskedString (ASNTSTG *g, uint32 kindNr, uint32 n)
{
  size_t octets = kindNr == ASN_BIT_ ? n / 8 : n;
  return (BYTE_TYPE *)asnTake (&g->util, (octets + 1) * asnStringKinds[kindNr].width);
}

void asnAskDynString (ASNTSTG *g, uint32 how, void *n, void *st, sint64 low, sint64 high)
{
  uint32 kindNr = ASN_KIND_OF (how), count;
  BYTE_TYPE *to;
  if (!askWord (g, kindNr, low, lower (high, mostOfLength (how)), &count))
    return;
  to = newAskedString (g, kindNr, count);
  store (g, kindNr, to);
  memcpy (st, &to, sizeof to);
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
  asnTakeWord (g);
}

/* Segments of wide characters are kept as they are encoded. */
static void swapOctets (BYTE_TYPE *p, uint32 n, uint32 width)
{
  for (; n > 0; n--, p += width) {
    uint32 character = 0;
    uint16 half;
    if (width == 2) {
      memcpy (&half, p, sizeof half);
      character = half;
    } else {
      memcpy (&character, p, sizeof character);
    }
    for (uint32 i = width; i-- > 0; character >>= 8)
      p[i] = (BYTE_TYPE)character;
  }
}

static void askSegment (ASNTSTG *g, uint32 kindNr, LIST *list, uint32 *total)
{
  uint32 count;
  ASNHOME *item;
  BYTE_TYPE *to;
  if (!askWord (g, kindNr, 0, INT32_MAX - *total, &count))
    return;
  asnAppendItem (&g->util, NULL, list, &item, VF_DYNS, 0);
  to = newAskedString (g, kindNr, count);
  store (g, kindNr, to);
  if (asnStringKinds[kindNr].width > 1)
    swapOctets (to, count, asnStringKinds[kindNr].width);
  item->val.dyns.st = to;
  item->val.dyns.n = count;
  list->n++;
  *total += count;
  asnTakeWord (g);
}

/* { "one" "two" }, or one string alone. All segments of bits but the last are whole octets. */
void asnAskSegments (ASNTSTG *g, uint32 kindNr, LIST *list, sint64 low, sint64 high)
{
  uint32 total = 0;
  g->nrOfNamed = 0;
  listInit (list);
  if (asnPeekWord (g) != ASN_OPEN_) {
    askSegment (g, kindNr, list, &total);
  } else {
    asnTakeWord (g);
    while (!asnTestFailed (g) && asnPeekWord (g) != ASN_CLOSE_) {
      if (kindNr == ASN_BIT_ && total % 8 != 0)
        asnRaise (&g->util, VALUE_FAIL);
      else
        askSegment (g, kindNr, list, &total);
    }
    if (!asnTestFailed (g))
      asnTakeWord (g);
  }
  if (!asnTestFailed (g) && (total < low || total > high))
    asnRaise (&g->util, total < low ? CONSTRAINT_FAIL : AM_FAIL);
}
