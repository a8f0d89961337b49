/* Decoding of strings, in primitive form or in segments, into all the forms that C has for them. */

#include "asnint.h"

#define NO_COUNT UINT32_MAX

/* What a string in hand holds. */
typedef struct {
  uint32 octets; /* of contents; of bits without the octets that count the unused ones */
  uint32 n;      /* bits, octets or characters; NO_COUNT if the string is wrong */
} SIZES;

/* Moves behind the octet that counts unused bits; false if it is wrong. */
static inline BOOLE countBits (const BYTE_TYPE **p, uint32 *len, uint32 *bits)
{
  uint32 unused;
  if (*len == 0 || (*p)[0] > 7 || (*len == 1 && (*p)[0] != 0) || *len > UINT32_MAX / 8)
    return FALSE;
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
      if (!countBits (&p, &len, &bits))
        asnRaise (&g->util, VALUE_FAIL);
      if (bits > INT32_MAX - sizes.n)
        asnRaise (&g->util, AM_FAIL);
      else
        sizes.n += bits;
      isLast = bits % 8 != 0;
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

/* Copies up to `n` bits, octets or characters of the string in hand, which was measured, and passes it. */
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
    if (kindNr == ASN_BIT_)
      (void)countBits (&p, &len, &bits);
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
static inline BOOLE isSizeRight (ASNCODG *g, uint32 n, sint64 low, sint64 high, uint64 most)
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

/* The common case is a string in one piece whose elements are octets or bits: it is looked through once.
   *n counts its elements; false after an error. */
static inline BOOLE isPlain (const ASNCODG *g, uint32 kindNr)
{
  return g->state == ASN_PRIMITIVE_ && kindNr < ASN_BMP_;
}

static inline BOOLE lookAtPlain (ASNCODG *g, uint32 kindNr, const BYTE_TYPE **p, uint32 *len, uint32 *n)
{
  *p = g->place;
  *len = *n = g->len;
  if (kindNr == ASN_BIT_ ? countBits (p, len, n)
                         : asnCharactersAllowed (&asnStringKinds[kindNr], *p, *len))
    return TRUE;
  asnRaise (&g->util, VALUE_FAIL);
  return FALSE;
}

/* Copies what was looked at and passes it. */
static inline void copyPlain (ASNCODG *g, uint32 kindNr, BYTE_TYPE *to, const BYTE_TYPE *p, uint32 len,
                              uint32 n)
{
  memcpy (to, p, len);
  if (kindNr == ASN_BIT_ && n % 8 > 0)
    to[len - 1] &= (BYTE_TYPE)(0xFF << (8 - n % 8));
  g->place = p + len;
  g->state = ASN_BETWEEN_;
}

/* What stands between the length and the elements, where that is more than nothing, is the number of
   elements that were dropped for lack of room: octets are never moved for alignment. */
static inline size_t gapBehind (uint32 how, const void *n, const BYTE_TYPE *st)
{
  return n && ASN_CHAR_SIZE (how) == 1 ? (size_t)(st - (const BYTE_TYPE *)n) - ASN_LENGTH_SIZE (how) : 0;
}

/* What the string keeps of `count`, with the number of what is dropped noted in front of it. */
static uint32 keepSome (ASNCODG *g, BYTE_TYPE *st, uint32 ignored, uint32 count, uint64 most)
{
  const uint32 kept = most < count ? (uint32)most : count;
  if ((uint64)(count - kept) >> (8 * ignored) > 0) /* more than the type allows by far */
    asnRaise (&g->util, AM_FAIL);
  else
    asnStoreCount (st - ignored, ignored, count - kept);
  return asnFailed (g) ? NO_COUNT : kept;
}

static inline uint64 mostOfArray (uint32 kindNr, size_t size)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  return kindNr == ASN_BIT_ ? (uint64)size * 8 : size / kind->width - (kind->text ? 1 : 0);
}

/* All cases. */
ASN_RARE static void decodeAnyString (ASNCODG *g, uint32 how, void *n, void *st, size_t size, sint64 low,
                                      sint64 high)
{
  const uint32 kindNr = ASN_KIND_OF (how);
  const size_t gap = gapBehind (how, n, (BYTE_TYPE *)st);
  const uint32 ignored = gap < 2 ? (uint32)gap : gap < 4 ? 2 : 4;
  const ASN_STRING_KIND *kind = &asnStringKinds[kindNr];
  const uint64 most = mostOfArray (kindNr, size);
  BYTE_TYPE *to = asnElements (how, st);
  uint32 count = measure (g, kindNr).n;
  if (ignored > 0 && count != NO_COUNT)
    count = keepSome (g, (BYTE_TYPE *)st, ignored, count,
                      high < 0 || (uint64)high > most ? most : (uint64)high);
  if (!isSizeRight (g, count, low, high, most))
    return;
  copy (g, kindNr, to, count);
  if (kind->text)
    memset (to + (size_t)count * kind->width, 0, kind->width);
  else if (kindNr == ASN_BIT_)
    asnClearBits (to, size, count, high);
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
}

void asnDecString (ASNCODG *g, uint32 how, void *n, void *st, size_t size, sint64 low, sint64 high)
{
  const uint32 kindNr = ASN_KIND_OF (how);
  BYTE_TYPE *to = (BYTE_TYPE *)st;
  const BYTE_TYPE *p;
  uint32 len, count;
  if (!isPlain (g, kindNr) || gapBehind (how, n, to) != 0) {
    decodeAnyString (g, how, n, st, size, low, high);
    return;
  }
  if (!lookAtPlain (g, kindNr, &p, &len, &count) ||
      !isSizeRight (g, count, low, high, kindNr == ASN_BIT_ ? (uint64)size * 8
                                                            : size - asnStringKinds[kindNr].text))
    return;
  copyPlain (g, kindNr, to, p, len, count);
  if (kindNr == ASN_BIT_)
    asnClearBits (to, size, count, high);
  else if (asnStringKinds[kindNr].text)
    to[count] = 0;
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
}

/* Memory for a string of `n`, which is never nothing. */
static BYTE_TYPE *newString (ASNCODG *g, uint32 kindNr, uint32 n)
{
  const size_t width = asnStringKinds[kindNr].width;
  const size_t octets = (kindNr == ASN_BIT_ ? n / 8 : n) * width;
  BYTE_TYPE *st = (BYTE_TYPE *)asnTake (&g->util, octets + width);
  memset (st + octets, 0, width);
  return st;
}

/* All cases. */
ASN_RARE static void decodeAnyDynString (ASNCODG *g, uint32 how, void *n, void *st, sint64 low, sint64 high,
                                         uint64 most)
{
  const uint32 kindNr = ASN_KIND_OF (how);
  const uint32 count = measure (g, kindNr).n;
  BYTE_TYPE *to;
  if (!isSizeRight (g, count, low, high, most))
    return;
  to = newString (g, kindNr, count);
  copy (g, kindNr, to, count);
  memcpy (st, &to, sizeof to);
  asnStoreCount (n, ASN_LENGTH_SIZE (how), count);
}

void asnDecDynString (ASNCODG *g, uint32 how, void *n, void *st, sint64 low, sint64 high)
{
  static const uint32 mostOf[] = { INT32_MAX, UINT8_MAX, UINT16_MAX, INT32_MAX, INT32_MAX };
  const uint32 kindNr = ASN_KIND_OF (how), lengthSize = ASN_LENGTH_SIZE (how);
  const BYTE_TYPE *p;
  BYTE_TYPE *to;
  uint32 len, count;
  if (!isPlain (g, kindNr)) {
    decodeAnyDynString (g, how, n, st, low, high, mostOf[lengthSize]);
    return;
  }
  if (!lookAtPlain (g, kindNr, &p, &len, &count) ||
      !isSizeRight (g, count, low, high, mostOf[lengthSize]))
    return;
  to = (BYTE_TYPE *)asnTakeOctets (&g->util, len + 1);
  to[len] = 0;
  copyPlain (g, kindNr, to, p, len, count);
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
    if (kindNr == ASN_BIT_)
      (void)countBits (&p, &len, &count);
    if (len % kind->width != 0) {
      asnRaise (&g->util, VALUE_FAIL);
      return;
    }
    appendSegment (g, kindNr, list, p, len, count);
  }
}
