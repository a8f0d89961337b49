/* Encoding: tags, lengths, and the values that are a few octets. */

#include "asnapi.h"
#include "asnint.h"

#include <stdlib.h>

#define FIRST_BUFFER ((size_t)512)
#define LAST_BUFFER ((size_t)INT32_MAX)

void asnOpenEncoder (ASNCODG *g, void *buffer, size_t size)
{
  asnInitUtil (&g->util, ASN_CODING_, NULL);
  if (size > LAST_BUFFER) { /* lengths are counted in 32 bits; the last octets are enough */
    buffer = (BYTE_TYPE *)buffer + (size - LAST_BUFFER);
    size = LAST_BUFFER;
  }
  g->room = (BYTE_TYPE *)buffer;
  g->end = g->front = size > 0 ? g->room + size : g->room;
  g->growing = FALSE;
  g->nrOfEnds = 0;
  g->nrOfNames = 0;
  g->popped = NULL;
  g->start = g->place = g->limit = g->element = NULL;
  g->state = ASN_BETWEEN_;
  g->mode = 0;
  g->elementsLeft = 0;
  g->depth = 0;
}

BOOLE asnMakeRoom (ASNCODG *g, size_t size)
{
  size_t used = asnUsed (g), room = FIRST_BUFFER;
  BYTE_TYPE *wider;
  if (asnFailed (g))
    return FALSE;
  if (!g->growing) {
    asnRaise (&g->util, ROOM_FAIL);
    return FALSE;
  }
  if (size > LAST_BUFFER / 2 || used > LAST_BUFFER / 2 - size) {
    asnRaise (&g->util, LACK_OF_MEMORY);
    return FALSE;
  }
  while (room < used + size)
    room *= 2;
  wider = (BYTE_TYPE *)malloc (room);
  if (!wider) {
    asnRaise (&g->util, LACK_OF_MEMORY);
    return FALSE;
  }
  if (used > 0)
    memcpy (wider + room - used, g->front, used);
  free (g->room);
  g->room = wider;
  g->end = wider + room;
  g->front = g->end - used;
  return TRUE;
}

/* --- tags and lengths --- */

BYTE_TYPE *asnPutLongLength (BYTE_TYPE *p, uint32 length)
{
  uint32 octets = 0;
  for (; length > 0; length >>= 8, octets++)
    *--p = (BYTE_TYPE)length;
  *--p = (BYTE_TYPE)(0x80 | octets);
  return p;
}

BYTE_TYPE *asnPutLongTag (BYTE_TYPE *p, uint32 tag)
{
  uint32 first = (tag >> 24) & 0xE0, number = tag & ASN_NUMBER_BITS;
  *--p = (BYTE_TYPE)(number & 0x7F);
  while ((number >>= 7) > 0)
    *--p = (BYTE_TYPE)(0x80 | (number & 0x7F));
  *--p = (BYTE_TYPE)(first | ASN_LONG_NUMBER);
  return p;
}

void asnPutOctets (ASNCODG *g, const void *octets, size_t length)
{
  if (length == 0 || !asnRoomFor (g, length))
    return;
  g->front -= length;
  memcpy (g->front, octets, length);
}

/* Where there may be too little room for the longest header it is made aside, so that a buffer of just
   the right size is enough. */
void asnPutHeader (ASNCODG *g, uint32 tag, uint32 used)
{
  uint32 length = asnUsed (g) - used;
  if (asnHasRoom (g, ASN_MAX_HEADER)) {
    g->front = asnPutTag (asnPutLength (g->front, length), tag);
  } else {
    BYTE_TYPE aside[ASN_MAX_HEADER], *end = aside + sizeof aside;
    BYTE_TYPE *p = asnPutTag (asnPutLength (end, length), tag);
    asnPutOctets (g, p, (size_t)(end - p));
  }
}

void asnPutTagAlone (ASNCODG *g, uint32 tag)
{
  BYTE_TYPE aside[ASN_MAX_HEADER], *end = aside + sizeof aside;
  BYTE_TYPE *p = asnPutTag (end, tag);
  asnPutOctets (g, p, (size_t)(end - p));
}

void asnStoreEOC (ASNCODG *g)
{
  if (g->nrOfEnds >= ASN_MAX_NESTING) {
    asnRaise (&g->util, DEPTH_FAIL);
    return;
  }
  g->ends[g->nrOfEnds++] = asnUsed (g);
}

void asnEncEOC (ASNCODG *g)
{
  if (asnRoomFor (g, 2)) {
    g->front -= 2;
    g->front[0] = g->front[1] = 0;
  }
}

void asnEncTagLen (ASNCODG *g, uint32 tag)
{
  if (asnFailed (g) || g->nrOfEnds == 0)
    return;
  g->nrOfEnds--;
  asnPutHeader (g, tag, g->ends[g->nrOfEnds]);
}

void asnEncTagLen8 (ASNCODG *g, uint8 tag)
{
  BYTE_TYPE *p = g->front;
  if (g->nrOfEnds == 0 || !asnHasRoom (g, ASN_MAX_HEADER)) {
    asnEncTagLen (g, ASN_WIDE_ (tag));
    return;
  }
  p = asnPutLength (p, asnUsed (g) - g->ends[--g->nrOfEnds]);
  *--p = tag;
  g->front = p;
}

void asnEncTagIndefLen (ASNCODG *g, uint32 tag)
{
  if (!asnRoomFor (g, 1))
    return;
  *--g->front = 0x80;
  asnPutTagAlone (g, tag);
}

void asnEncTagIndefLen8 (ASNCODG *g, uint8 tag)
{
  asnEncTagIndefLen (g, ASN_WIDE_ (tag));
}

/* --- truth, nothing, numbers --- */

void asnEncBoolean8 (ASNCODG *g, uint8 tag, BOOLE value)
{
  if (!asnRoomFor (g, 3))
    return;
  g->front -= 3;
  g->front[0] = tag;
  g->front[1] = 1;
  g->front[2] = value ? 0xFF : 0;
}

void asnEncBoolean (ASNCODG *g, uint32 tag, BOOLE value)
{
  uint32 used = asnUsed (g);
  BYTE_TYPE octet = value ? 0xFF : 0;
  asnPutOctets (g, &octet, 1);
  asnPutHeader (g, tag, used);
}

void asnEncNull8 (ASNCODG *g, uint8 tag)
{
  if (!asnRoomFor (g, 2))
    return;
  g->front -= 2;
  g->front[0] = tag;
  g->front[1] = 0;
}

void asnEncNull (ASNCODG *g, uint32 tag)
{
  asnPutHeader (g, tag, asnUsed (g));
}

#define MAX_INTEGER 9u /* octets of contents */

/* Puts the fewest octets of two's complement in front of `p` and returns the new front. */
static inline BYTE_TYPE *putInteger (BYTE_TYPE *p, sint64 value)
{
  uint64 octets = (uint64)value, magnitude = value < 0 ? ~octets : octets;
  while (magnitude > 0x7F) {
    *--p = (BYTE_TYPE)octets;
    octets >>= 8;
    magnitude >>= 8;
  }
  *--p = (BYTE_TYPE)octets;
  return p;
}

/* Most numbers take one octet or two. */
void asnEncInteger8 (ASNCODG *g, uint8 tag, sint64 value)
{
  BYTE_TYPE *p = g->front, *end = p;
  if (!asnHasRoom (g, MAX_INTEGER + 2)) {
    asnEncInteger (g, ASN_WIDE_ (tag), value);
    return;
  }
  if (value == (sint8)value) {
    p[-1] = (BYTE_TYPE)value;
    p[-2] = 1;
    p[-3] = tag;
    g->front = p - 3;
  } else if (value == (sint16)value) {
    p[-1] = (BYTE_TYPE)value;
    p[-2] = (BYTE_TYPE)((uint64)value >> 8);
    p[-3] = 2;
    p[-4] = tag;
    g->front = p - 4;
  } else {
    p = putInteger (p, value);
    p[-1] = (BYTE_TYPE)(end - p);
    p[-2] = tag;
    g->front = p - 2;
  }
}

void asnEncInteger (ASNCODG *g, uint32 tag, sint64 value)
{
  const uint32 used = asnUsed (g);
  if (asnHasRoom (g, MAX_INTEGER + ASN_MAX_HEADER)) {
    BYTE_TYPE *end = g->front, *p = putInteger (end, value);
    g->front = asnPutTag (asnPutLength (p, (uint32)(end - p)), tag);
  } else {
    BYTE_TYPE aside[MAX_INTEGER], *end = aside + sizeof aside;
    BYTE_TYPE *p = putInteger (end, value);
    asnPutOctets (g, p, (size_t)(end - p));
    asnPutHeader (g, tag, used);
  }
}

void asnEncUnsigned (ASNCODG *g, uint32 tag, uint64 value)
{
  uint32 used = asnUsed (g);
  BYTE_TYPE *p;
  if (value <= INT64_MAX) {
    asnEncInteger (g, tag, (sint64)value);
    return;
  }
  if (!asnRoomFor (g, MAX_INTEGER))
    return;
  p = g->front;
  for (int i = 0; i < 8; i++, value >>= 8)
    *--p = (BYTE_TYPE)value;
  *--p = 0; /* the sign */
  g->front = p;
  asnPutHeader (g, tag, used);
}

void asnEncUnsigned8 (ASNCODG *g, uint8 tag, uint64 value)
{
  asnEncUnsigned (g, ASN_WIDE_ (tag), value);
}
