/* Strings: their kinds, their elements and their encoding. */

#include "asnint.h"

#define NUMERIC 1u
#define PRINTABLE 2u
#define VISIBLE 4u
#define IA5 8u

/* In the order of ASN_BIT_ ... */
const ASN_STRING_KIND asnStringKinds[] = {
  { 3, 1, FALSE, 0 },         /* bits: n counts them, not octets */
  { 4, 1, FALSE, 0 },         /* octets */
  { 18, 1, TRUE, NUMERIC },   /* NumericString */
  { 19, 1, TRUE, PRINTABLE }, /* PrintableString */
  { 20, 1, TRUE, 0 },         /* T61String */
  { 21, 1, TRUE, 0 },         /* VideotexString */
  { 26, 1, TRUE, VISIBLE },   /* VisibleString */
  { 22, 1, TRUE, IA5 },       /* IA5String */
  { 25, 1, TRUE, 0 },         /* GraphicString and ObjectDescriptor */
  { 27, 1, TRUE, 0 },         /* GeneralString */
  { 30, 2, TRUE, 0 },         /* BMPString */
  { 28, 4, TRUE, 0 },         /* UniversalString */
};

/* In which kinds of string the octets below 128 may stand; the others may in none. */
#define I IA5
#define V (IA5 | VISIBLE)
#define P (IA5 | VISIBLE | PRINTABLE)
#define N (IA5 | VISIBLE | PRINTABLE | NUMERIC)
static const BYTE_TYPE kindsOfOctet[256] = {
  I, I, I, I, I, I, I, I, I, I, I, I, I, I, I, I, /* controls */
  I, I, I, I, I, I, I, I, I, I, I, I, I, I, I, I,
  N, V, V, V, V, V, V, P, P, P, V, P, P, P, P, P, /* blank ! " # $ % & ' ( ) * + , - . / */
  N, N, N, N, N, N, N, N, N, N, P, V, V, P, V, P, /* 0-9 : ; < = > ? */
  V, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, /* @ A-O */
  P, P, P, P, P, P, P, P, P, P, P, V, V, V, V, V, /* P-Z [ \ ] ^ _ */
  V, P, P, P, P, P, P, P, P, P, P, P, P, P, P, P, /* ` a-o */
  P, P, P, P, P, P, P, P, P, P, P, V, V, V, V, I, /* p-z { | } ~ DEL */
};
#undef I
#undef V
#undef P
#undef N

BOOLE asnOnlyAllowed (uint32 allowed, const BYTE_TYPE *p, uint32 len)
{
  const BYTE_TYPE *end = p + len;
  uint32 all = allowed;
  while (p < end)
    all &= kindsOfOctet[*p++];
  return all != 0;
}

BYTE_TYPE *asnElements (uint32 how, const void *st)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[ASN_KIND_OF (how)];
  size_t gap = ASN_LENGTH_SIZE (how) % kind->width;
  BYTE_TYPE *p = (BYTE_TYPE *)(size_t)st;
  /* Wide elements stand at a multiple of their size; in a home they are shown as octets. */
  return ASN_CHAR_SIZE (how) < kind->width && gap > 0 ? p + (kind->width - gap) : p;
}

void asnClearBits (BYTE_TYPE *st, size_t size, uint32 n, sint64 high)
{
  const size_t used = n / 8 + (n % 8 > 0);
  const uint64 allowed = (uint64)high / 8 + (high % 8 > 0);
  if (high >= INT32_MAX)
    return;
  if (size > allowed)
    size = (size_t)allowed;
  if (size > used)
    memset (st + used, 0, size - used);
}

/* --- constraint checks --- */

static uint32 charAt (const void *st, size_t charSize, uint32 i)
{
  if (charSize == 1)
    return ((const BYTE_TYPE *)st)[i];
  if (charSize == 2)
    return ((const uint16 *)st)[i];
  return ((const uint32 *)st)[i];
}

static BOOLE isInSet (uint32 character, const char *set)
{
  for (; *set; set++)
    if ((BYTE_TYPE)*set == character)
      return TRUE;
  return FALSE;
}

int asnBeyondSpan (const void *st, size_t charSize, uint32 n, const char *set)
{
  uint32 i = 0;
  while (i < n && isInSet (charAt (st, charSize, i), set))
    i++;
  return (int)(n - i);
}

int asnSpan0 (const void *st, size_t charSize, const char *set)
{
  uint32 i = 0;
  while (isInSet (charAt (st, charSize, i), set)) /* the zero at the end is in no set */
    i++;
  return (int)i;
}

/* --- encoding --- */

static void putBits (ASNCODG *g, uint32 n, const BYTE_TYPE *p)
{
  uint32 octets = n / 8 + (n % 8 > 0), unused = octets * 8 - n;
  BYTE_TYPE *front;
  if (!asnRoomFor (g, (size_t)octets + 1))
    return;
  front = g->front - octets;
  if (octets > 0) {
    memcpy (front, p, octets);
    front[octets - 1] &= (BYTE_TYPE)(0xFF << unused);
  }
  *--front = (BYTE_TYPE)unused;
  g->front = front;
}

/* Characters of two octets, or of four. */
static void putWideCharacters (ASNCODG *g, uint32 width, uint32 n, const BYTE_TYPE *p)
{
  BYTE_TYPE *front;
  if (n > INT32_MAX / width) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  if (!asnRoomFor (g, (size_t)n * width))
    return;
  front = g->front;
  while (n-- > 0) {
    uint32 character;
    if (width == sizeof character) {
      memcpy (&character, p + (size_t)n * width, sizeof character);
    } else {
      uint16 narrow;
      memcpy (&narrow, p + (size_t)n * width, sizeof narrow);
      character = narrow;
    }
    for (uint32 octet = 0; octet < width; octet++, character >>= 8)
      *--front = (BYTE_TYPE)character;
  }
  g->front = front;
}

BOOLE asnIsWithinArray (uint32 how, uint32 n, const void *st, const void *array, size_t arraySize)
{
  const ASN_STRING_KIND *kind = &asnStringKinds[ASN_KIND_OF (how)];
  if (st != array)
    return st != NULL || n == 0;
  if (ASN_KIND_OF (how) == ASN_BIT_)
    return n / 8 + (n % 8 > 0) <= arraySize;
  return (uint64)n * kind->width <= arraySize;
}

/* Octets, with room for all that comes in front of them. */
static inline BOOLE goesInOneStep (const ASNCODG *g, uint32 kindNr, uint32 n)
{
  return kindNr != ASN_BIT_ && kindNr < ASN_BMP_ && asnHasRoom (g, (size_t)n + ASN_MAX_HEADER);
}

void asnEncString (ASNCODG *g, uint32 tag, uint32 how, uint32 n, const void *st,
                   const void *array, size_t arraySize)
{
  const uint32 used = asnUsed (g), kindNr = ASN_KIND_OF (how);
  if (!asnIsWithinArray (how, n, st, array, arraySize)) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  if (kindNr == ASN_BIT_)
    putBits (g, n, (const BYTE_TYPE *)st);
  else if (kindNr >= ASN_BMP_)
    putWideCharacters (g, asnStringKinds[kindNr].width, n, asnElementsOf (how, st, array));
  else
    asnPutOctets (g, st, n);
  if (!asnFailed (g))
    asnPutHeader (g, tag, used);
}

/* The common case goes in one step. */
void asnEncString8 (ASNCODG *g, uint8 tag, uint32 how, uint32 n, const void *st,
                    const void *array, size_t arraySize)
{
  BYTE_TYPE *p = g->front;
  if (n == 0 || !goesInOneStep (g, ASN_KIND_OF (how), n) ||
      !asnIsWithinArray (how, n, st, array, arraySize)) {
    asnEncString (g, ASN_WIDE_ (tag), how, n, st, array, arraySize);
    return;
  }
  p = asnPutLength ((BYTE_TYPE *)memcpy (p - n, st, n), n);
  *--p = tag;
  g->front = p;
}

/* --- lists of segments --- */

/* Bits of all segments but the last fill their octets, so one count of unused bits serves for all. */
static void putBitSegments (ASNCODG *g, const LIST *list)
{
  BYTE_TYPE unused = 0;
  for (const ASNHOME *item = list->last; item; item = item->prev) {
    uint32 n = item->val.dyns.n, last = n % 8;
    if (last > 0 && item != list->last) {
      asnRaise (&g->util, VALUE_FAIL);
      return;
    }
    asnPutOctets (g, item->val.dyns.st, n / 8 + (last > 0));
    if (last > 0 && !asnFailed (g)) {
      unused = (BYTE_TYPE)(8 - last);
      g->front[n / 8] &= (BYTE_TYPE)(0xFF << unused);
    }
  }
  asnPutOctets (g, &unused, 1);
}

void asnEncSegments (ASNCODG *g, uint32 tag, uint32 kind, const LIST *list)
{
  uint32 used = asnUsed (g);
  if (kind == ASN_BIT_) {
    putBitSegments (g, list);
  } else {
    uint32 width = asnStringKinds[kind].width;
    for (const ASNHOME *item = list->last; item; item = item->prev)
      asnPutOctets (g, item->val.dyns.st, (size_t)item->val.dyns.n * width);
  }
  asnPutHeader (g, tag, used);
}

void asnEncSegments8 (ASNCODG *g, uint8 tag, uint32 kind, const LIST *list)
{
  asnEncSegments (g, ASN_WIDE_ (tag), kind, list);
}
