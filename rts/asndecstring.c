/* Decoding of strings, in primitive form or in segments, into all the forms that C has for them. */

#include "asnint.h"

#define NO_COUNT UINT32_MAX

/* What a string in hand holds. */
typedef struct {
  uint32 octets; /* of contents; of bits without the octets that count the unused ones */
  uint32 n;      /* bits, octets or characters; NO_COUNT if the string is wrong */
} SIZES;

/* The octets of a segment of bits, and how many bits they hold. */
static BOOLE bitsOfSegment (ASNCODG *g, const BYTE_TYPE **p, uint32 *len, uint32 *bits)
{
  uint32 unused;
  if (*len == 0 || (*p)[0] > 7 || (*len == 1 && (*p)[0] != 0) || *len > UINT32_MAX / 8) {
    asnRaise (&g->util, VALUE_FAIL);
    return FALSE;
  }
  unused = *(*p)++;
  --*len;
  *bits = *len * 8 - unused;
  return TRUE;
}

/* Looks the string through and stands in front of it again. */
static SIZES measure (ASNCODG *g, uint32 kindNr)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  ASN_BOOKMARK mark = asnMark (g);
  ASN_SEGMENTS segments;
  SIZES sizes = { 0, 0 };
  BOOLE isLast = FALSE;
  const BYTE_TYPE *p;
  uint32 len;
  asnStartSegments (g, &segments, kind->tag);
  while (asnNextSegment (g, &segments, &p, &len)) {
    uint32 bits = 0;
    if (isLast) { /* only the last segment may have unused bits */
      asnRaise (&g->util, VALUE_FAIL);
    } else if (kindNr == ASN_BIT_) {
      if (bitsOfSegment (g, &p, &len, &bits))
        isLast = bits % 8 != 0;
      if (bits > INT32_MAX - sizes.n)
        asnRaise (&g->util, AM_FAIL);
      else
        sizes.n += bits;
    } else if (!asnCharactersAllowed (kind, p, len)) {
      asnRaise (&g->util, VALUE_FAIL);
    }
    sizes.octets += len;
  }
  if (kindNr != ASN_BIT_) {
    sizes.n = sizes.octets / kind->width;
    if (sizes.octets % kind->width != 0)
      asnRaise (&g->util, VALUE_FAIL);
  }
  asnGoBack (g, &mark);
  if (asnFailed (g))
    sizes.n = NO_COUNT;
  return sizes;
}

/* Characters of more than an octet become numbers. */
static void widen (uint32 width, BYTE_TYPE *st, uint32 n)
{
  for (uint32 i = 0; i < n; i++, st += width) {
    if (width == 2) {
      uint16 character = (uint16)(st[0] << 8 | st[1]);
      memcpy (st, &character, sizeof character);
    } else {
      uint32 character = (uint32)st[0] << 24 | (uint32)st[1] << 16 | (uint32)st[2] << 8 | st[3];
      memcpy (st, &character, sizeof character);
    }
  }
}

/* Copies up to `n` bits, octets or characters of the string in hand and passes it. */
static void copy (ASNCODG *g, uint32 kindNr, BYTE_TYPE *st, uint32 n)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  size_t room = kindNr == ASN_BIT_ ? n / 8 + (n % 8 > 0) : (size_t)n * kind->width;
  BYTE_TYPE *to = st;
  ASN_SEGMENTS segments;
  const BYTE_TYPE *p;
  uint32 len;
  asnStartSegments (g, &segments, kind->tag);
  while (asnNextSegment (g, &segments, &p, &len)) {
    uint32 bits;
    if (kindNr == ASN_BIT_ && !bitsOfSegment (g, &p, &len, &bits))
      return;
    if (len > room)
      len = (uint32)room;
    if (len > 0)
      memcpy (to, p, len);
    to += len;
    room -= len;
  }
  if (kindNr == ASN_BIT_ && n % 8 > 0)
    to[-1] &= (BYTE_TYPE)(0xFF << (8 - n % 8));
  if (kind->width > 1)
    widen (kind->width, st, n);
}

/* Whether the string's size is in its range; `most` is how many its form can hold. */
static BOOLE isSizeRight (ASNCODG *g, uint32 n, sint64 low, sint64 high, uint64 most)
{
  if (n == NO_COUNT)
    return FALSE;
  if (n < low)
    asnRaise (&g->util, CONSTRAINT_FAIL);
  else if (n > high || n > most)
    asnRaise (&g->util, AM_FAIL);
  else
    return TRUE;
  return FALSE;
}

/* The common case: few octets in primitive form, which are looked through once. */
static BOOLE copyPlain (ASNCODG *g, uint32 how, void *n, BYTE_TYPE *st, size_t size, sint64 low,
                        sint64 high)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[ASN_KIND_OF (how)];
  uint32 len = g->len;
  if (g->state != ASN_PRIMITIVE_ || ASN_KIND_OF (how) == ASN_BIT_ || kind->width > 1 ||
      len + (size_t)kind->text > size || len < low || len > high ||
      !asnCharactersAllowed (kind, g->place, len))
    return FALSE;
  memcpy (st, g->place, len);
  if (kind->text)
    st[len] = 0;
  asnStoreCount (n, ASN_LENGTH_SIZE (how), len);
  g->place += len;
  g->state = ASN_BETWEEN_;
  return TRUE;
}

/* What stands between the length and the elements, where that is more than nothing, is the number of
   elements that were dropped for lack of room: octets are never moved for alignment. */
static uint32 sizeOfIgnored (uint32 how, const void *n, const BYTE_TYPE *st)
{
  size_t gap;
  if (!n || ASN_CHAR_SIZE (how) != 1)
    return 0;
  gap = (size_t)(st - (const BYTE_TYPE *)n) - ASN_LENGTH_SIZE (how);
  return gap == 0 ? 0 : gap == 1 ? 1 : gap < 4 ? 2 : 4;
}

void asnDecString (ASNCODG *g, uint32 how, void *n, void *st, size_t size, sint64 low, sint64 high)
{
  uint32 kindNr = ASN_KIND_OF (how), ignored = sizeOfIgnored (how, n, (BYTE_TYPE *)st);
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  BYTE_TYPE *to = asnElements (how, st);
  uint64 most = kindNr == ASN_BIT_ ? (uint64)size * 8 : size / kind->width - (kind->text ? 1 : 0);
  uint32 count;
  if (ignored == 0 && copyPlain (g, how, n, to, size, low, high))
    return;
  count = measure (g, kindNr).n;
  if (ignored > 0 && count != NO_COUNT) {
    uint32 kept = high < count ? (uint32)high : count;
    if (kept > most)
      kept = (uint32)most;
    if ((uint64)(count - kept) >> (8 * ignored) > 0) /* more than the type allows by far */
      asnRaise (&g->util, AM_FAIL);
    else
      asnStoreCount ((BYTE_TYPE *)st - ignored, ignored, count - kept);
    count = asnFailed (g) ? NO_COUNT : kept;
  }
  if (!isSizeRight (g, count, low, high, most))
    return;
  copy (g, kindNr, to, count);
  if (kind->text)
    memset (to + (size_t)count * kind->width, 0, kind->width);
  else if (kindNr == ASN_BIT_)
    asnClearBits (to, size, count, high);
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
}

/* Memory for a string of `n`, which is never nothing. */
static BYTE_TYPE *newString (ASNCODG *g, uint32 kindNr, uint32 n)
{
  size_t width = asnStringKinds[kindNr].width, octets = (kindNr == ASN_BIT_ ? n / 8 : n) * width;
  BYTE_TYPE *st = (BYTE_TYPE *)asnTake (&g->util, octets + width);
  memset (st + octets, 0, width);
  return st;
}

void asnDecDynString (ASNCODG *g, uint32 how, void *n, void *st, sint64 low, sint64 high)
{
  uint32 kindNr = ASN_KIND_OF (how), lengthSize = ASN_LENGTH_SIZE (how);
  uint32 count = measure (g, kindNr).n;
  size_t most = lengthSize == 1 ? UINT8_MAX : lengthSize == 2 ? UINT16_MAX : INT32_MAX;
  BYTE_TYPE *to;
  if (!isSizeRight (g, count, low, high, most))
    return;
  to = newString (g, kindNr, count);
  copy (g, kindNr, to, count);
  memcpy (st, &to, sizeof to);
  asnStoreCount (n, lengthSize, count);
}

/* Adds a segment to a list; of the octets `count` bits, octets or characters are meant. */
static void appendSegment (ASNCODG *g, uint32 kindNr, LIST *list, const BYTE_TYPE *p, uint32 len,
                           uint32 count)
{
  ASNHOME *item;
  asnAppendItem (&g->util, NULL, list, &item, VF_DYNS, 0);
  item->val.dyns.st = newString (g, kindNr, count);
  item->val.dyns.n = count;
  memcpy (item->val.dyns.st, p, len);
  list->n++;
}

/* Segments of wide characters are kept as they are encoded. */
void asnDecSegments (ASNCODG *g, uint32 kindNr, LIST *list, sint64 low, sint64 high)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  ASN_SEGMENTS segments;
  const BYTE_TYPE *p;
  uint32 len;
  if (!isSizeRight (g, measure (g, kindNr).n, low, high, INT32_MAX))
    return;
  listInit (list);
  asnStartSegments (g, &segments, kind->tag);
  while (asnNextSegment (g, &segments, &p, &len)) {
    uint32 count = len / kind->width;
    if (kindNr == ASN_BIT_ && !bitsOfSegment (g, &p, &len, &count))
      return;
    if (len % kind->width != 0) {
      asnRaise (&g->util, VALUE_FAIL);
      return;
    }
    appendSegment (g, kindNr, list, p, len, count);
  }
}
