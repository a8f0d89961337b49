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

/* Seven bits an octet, all but the last marked. */
static void putArc (ASNCODG *g, WIDE_ARC arc)
{
  BYTE_TYPE aside[19], *end = aside + sizeof aside, *p = end;
  *--p = (BYTE_TYPE)(arc & 0x7F);
  while ((arc >>= 7) > 0)
    *--p = (BYTE_TYPE)(0x80 | (BYTE_TYPE)(arc & 0x7F));
  asnPutOctets (g, p, (size_t)(end - p));
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
  for (uint32 i = value->n; i-- > 2;)
    putArc (g, value->arc[i]);
  putArc (g, first);
  asnPutHeader (g, tag, used);
}

/* Moves *p behind an arc; false if it has idle octets, no end or more bits than fit. */
static BOOLE readArc (const BYTE_TYPE **p, const BYTE_TYPE *end, WIDE_ARC *arc)
{
  WIDE_ARC value = 0;
  if (**p == 0x80)
    return FALSE;
  for (;;) {
    BYTE_TYPE octet;
    if (*p == end || value > MAX_WIDE_ARC >> 7)
      return FALSE;
    octet = *(*p)++;
    value = value << 7 | (octet & 0x7F);
    if (!(octet & 0x80))
      break;
  }
  *arc = value;
  return TRUE;
}

static int readIdentifier (const BYTE_TYPE *p, uint32 len, OBJECTIDENTIFIER *value)
{
  const BYTE_TYPE *end = p + len;
  WIDE_ARC arc;
  if (len == 0 || !readArc (&p, end, &arc))
    return VALUE_FAIL;
  value->arc[0] = arc < FIRST_ARCS ? 0 : arc < 2 * FIRST_ARCS ? 1 : 2;
  arc -= (WIDE_ARC)value->arc[0] * FIRST_ARCS;
  for (value->n = 1;; value->n++) {
    if (arc > MAX_ARC)
      return VALUE_FAIL;
    value->arc[value->n] = (ASN_ARC)arc;
    if (p == end)
      break;
    if (value->n + 1 >= MAX_ASN_OBJID_ARCS)
      return AM_FAIL;
    if (!readArc (&p, end, &arc))
      return VALUE_FAIL;
  }
  value->n++;
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
