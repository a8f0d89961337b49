/* Object identifiers. */

#include "asnint.h"

#define FIRST_ARCS 40u /* second arcs under the first arcs 0 and 1 */

/* Holds the first two arcs, which are encoded as one. */
#if ASN_ARC_BITS == 128
typedef ASN_ARC WIDE_ARC;
#else
typedef uint64 WIDE_ARC;
#endif
#define MAX_WIDE_ARC ((WIDE_ARC)0 - 1)
#define MAX_ARC ((ASN_ARC)0 - 1)

#define MOST_OCTETS ((8 * sizeof (WIDE_ARC) + 6) / 7)

/* Seven bits an octet, all but the last marked, in front of `p`. */
static inline BYTE_TYPE *putArc (BYTE_TYPE *p, WIDE_ARC arc)
{
  *--p = (BYTE_TYPE)(arc & 0x7F);
  while ((arc >>= 7) > 0)
    *--p = (BYTE_TYPE)(0x80 | (BYTE_TYPE)(arc & 0x7F));
  return p;
}

static inline BYTE_TYPE *putArcs (BYTE_TYPE *p, const OBJECTIDENTIFIER *value, WIDE_ARC first)
{
  for (uint32 i = value->n; i-- > 2;)
    p = putArc (p, value->arc[i]);
  return putArc (p, first);
}

void asnEncObjectIdentifier (ASNCODG *g, uint32 tag, const OBJECTIDENTIFIER *value)
{
  const uint32 used = asnUsed (g);
  const WIDE_ARC first = (WIDE_ARC)value->arc[0] * FIRST_ARCS + value->arc[1];
  if (value->n < 2 || value->n > MAX_ASN_OBJID_ARCS || value->arc[0] > 2 ||
      (value->arc[0] < 2 && value->arc[1] >= FIRST_ARCS) || first < value->arc[1]) {
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  if (asnHasRoom (g, value->n * MOST_OCTETS)) {
    g->front = putArcs (g->front, value, first);
  } else {
    BYTE_TYPE aside[MAX_ASN_OBJID_ARCS * MOST_OCTETS], *end = aside + sizeof aside;
    BYTE_TYPE *p = putArcs (end, value, first);
    asnPutOctets (g, p, (size_t)(end - p));
  }
  asnPutHeader (g, tag, used);
}

/* The rest of an arc that takes several octets, of which the first is *arc. Null if it has idle octets, no
   end or more bits than fit. */
static const BYTE_TYPE *readLongArc (const BYTE_TYPE *p, const BYTE_TYPE *end, WIDE_ARC *arc)
{
  WIDE_ARC value = *arc & 0x7F;
  BYTE_TYPE octet;
  if (value == 0)
    return NULL;
  do {
    if (p == end || value > MAX_WIDE_ARC >> 7)
      return NULL;
    octet = *p++;
    value = value << 7 | (octet & 0x7F);
  } while (octet & 0x80);
  *arc = value;
  return p;
}

/* The first two arcs, which are one in an encoding; false if the second one is too large. */
static inline BOOLE splitArc (WIDE_ARC arc, ASN_ARC *arcs)
{
  arcs[0] = arc < FIRST_ARCS ? 0 : arc < 2 * FIRST_ARCS ? 1 : 2;
  arc -= (WIDE_ARC)arcs[0] * FIRST_ARCS;
  arcs[1] = (ASN_ARC)arc;
  return arc <= MAX_ARC;
}

static int readIdentifier (const BYTE_TYPE *p, uint32 len, OBJECTIDENTIFIER *value)
{
  const BYTE_TYPE *end = p + len;
  ASN_ARC *to = value->arc + 2, *last = value->arc + MAX_ASN_OBJID_ARCS;
  WIDE_ARC arc;
  if (len == 0)
    return VALUE_FAIL;
  arc = *p++;
  if ((arc & 0x80 && !(p = readLongArc (p, end, &arc))) || !splitArc (arc, value->arc))
    return VALUE_FAIL;
  while (p != end) {
    arc = *p++;
    if (arc & 0x80 && (!(p = readLongArc (p, end, &arc)) || arc > MAX_ARC))
      return VALUE_FAIL;
    if (to == last)
      return AM_FAIL;
    *to++ = (ASN_ARC)arc;
  }
  value->n = (uint16)(to - value->arc);
  return ASN_OK;
}

void asnDecObjectIdentifier (ASNCODG *g, OBJECTIDENTIFIER *value)
{
  const BYTE_TYPE *p;
  uint32 len;
  int error;
  if (!asnTakeContents (g, &p, &len))
    return;
  error = readIdentifier (p, len, value);
  if (error)
    asnRaise (&g->util, error);
}
