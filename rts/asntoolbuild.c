/* Encodings from JSON, by the description of their types. */

#include "asntoolbuild.h"

#include <stdlib.h>

static BOOLE buildPlace (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node, uint32 element);

/* --- errors --- */

static BOOLE refuse (ASN_BUILDER *b, const ASN_JSON_NODE *node, int code)
{
  ASN_PATH path = asnStartPath (b->error.path, sizeof b->error.path);
  uint32 i = b->nrOfSteps < ASN_MAX_PATH ? b->nrOfSteps : ASN_MAX_PATH;
  b->error.code = code;
  b->line = node->line;
  while (i-- > 0 && asnPutStep (&path, b->steps[i].name, b->steps[i].element, i == 0)) {
  }
  asnEndPath (&path);
  return FALSE;
}

/* Of a value that is none of the type. */
static BOOLE refuseValue (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node)
{
  asnAddPlace (&b->expected, place);
  return refuse (b, node, VALUE_FAIL);
}

/* A name that the type doesn't have, or has no more. */
static BOOLE refuseMember (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node)
{
  enum { MOST = 12 };
  uint32 told = 0;
  for (uint32 i = 0; i < type->nrOfPlaces && told <= MOST; i++) {
    if (asnIsMarker (&type->places[i]))
      continue;
    asnAddText (&b->expected, told == 0 ? "one of " : ", ");
    asnAddText (&b->expected, told++ < MOST ? type->places[i].name : "...");
  }
  asnAddText (&b->expected, told == 0 ? "no component" : "");
  asnAddText (&b->expected, ", each once, not \"");
  asnAdd (&b->expected, node->name ? node->name : "", node->nameLength);
  asnAddText (&b->expected, "\"");
  return refuse (b, node, VALUE_FAIL);
}

/* --- whole encodings --- */

static BOOLE isForeign (const ASN_JSON_NODE *node)
{
  return node->nameLength == 3 && memcmp (node->name, "...", 3) == 0;
}

static BOOLE putWhole (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  asnEmpty (&b->octets);
  if (!asnTakeHexNode (&b->octets, node) || b->octets.length == 0 ||
      !asnIsOneEncoding ((const BYTE_TYPE *)b->octets.text, b->octets.length)) {
    asnAddText (&b->expected, "an encoding in hexadecimal digits");
    return refuse (b, node, VALUE_FAIL);
  }
  asnPutOctets (&b->g, b->octets.text, b->octets.length);
  return TRUE;
}

/* What the type doesn't know: a list of encodings. */
static BOOLE putForeign (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  if (node->kind != JSON_LIST)
    return putWhole (b, node);
  for (uint32 i = node->last; i; i = b->doc->nodes[i].previous)
    if (!putWhole (b, &b->doc->nodes[i]))
      return FALSE;
  return TRUE;
}

/* --- order of encodings --- */

typedef struct {
  const BYTE_TYPE *p;
  size_t length;
} PART;

static int compareParts (const void *a, const void *b)
{
  const PART *one = (const PART *)a, *other = (const PART *)b;
  const size_t shorter = one->length < other->length ? one->length : other->length;
  const int order = memcmp (one->p, other->p, shorter);
  return order ? order : (one->length > other->length) - (one->length < other->length);
}

static int compareTags (const void *a, const void *b)
{
  ASN_HEADER one, other;
  (void)asnReadHeader (((const PART *)a)->p, ((const PART *)a)->p + ((const PART *)a)->length, &one);
  (void)asnReadHeader (((const PART *)b)->p, ((const PART *)b)->p + ((const PART *)b)->length, &other);
  return (one.tag > other.tag) - (one.tag < other.tag);
}

/* Sorts the encodings that were written since `used`. */
static void sortParts (ASN_BUILDER *b, uint32 used, uint32 nrOfParts, BOOLE byTag)
{
  const size_t length = asnUsed (&b->g) - used;
  PART *parts;
  BYTE_TYPE *copy;
  uint32 n = 0;
  if (nrOfParts < 2)
    return;
  parts = (PART *)calloc (nrOfParts + 1u, sizeof *parts);
  copy = (BYTE_TYPE *)malloc (length + 1);
  if (parts && copy && !asnFailed (&b->g)) {
    const BYTE_TYPE *p = copy, *end = copy + length;
    BYTE_TYPE *to = b->g.front;
    memcpy (copy, b->g.front, length);
    for (; n < nrOfParts && asnFindEnd (p, end, &parts[n].p) == ASN_OK; n++) {
      const BYTE_TYPE *behind = parts[n].p;
      parts[n].length = (size_t)(behind - p);
      parts[n].p = p;
      p = behind;
    }
    if (p == end) {
      qsort (parts, n, sizeof *parts, byTag ? compareTags : compareParts);
      for (uint32 i = 0; i < n; to += parts[i++].length)
        memcpy (to, parts[i].p, parts[i].length);
    }
  } else {
    asnRaise (&b->g.util, LACK_OF_MEMORY);
  }
  free (parts);
  free (copy);
}

/* --- structures --- */

static sint64 findMember (const ASNTOOLTYPE *type, const ASN_JSON_NODE *node, uint32 start)
{
  for (uint32 i = 0; i < type->nrOfPlaces; i++) {
    const uint32 n = (start + i) % type->nrOfPlaces;
    const char *name = type->places[n].name;
    if (name && strlen (name) == node->nameLength && memcmp (name, node->name, node->nameLength) == 0)
      return n;
  }
  return -1;
}

/* The members' nodes by the components of the type; 0 for none. Of an unknown component the place is that of
   the next known one, and it is left out here. */
static BOOLE sortMembers (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node, uint32 *nodes)
{
  uint32 start = 0;
  for (uint32 i = node->first; i; i = b->doc->nodes[i].next) {
    const ASN_JSON_NODE *member = &b->doc->nodes[i];
    sint64 n;
    if (isForeign (member))
      continue;
    n = findMember (type, member, start);
    if (n < 0)
      return refuseMember (b, type, member);
    if (nodes[n])
      return refuseMember (b, type, member);
    nodes[n] = i;
    start = (uint32)n + 1;
  }
  return TRUE;
}

/* Unknown components that stand in front of a member, which the node `before` is, or at the end. */
static BOOLE putForeignBefore (ASN_BUILDER *b, const ASN_JSON_NODE *node, uint32 before, uint32 *nrOfParts)
{
  uint32 i = before ? b->doc->nodes[before].previous : node->last;
  for (; i && isForeign (&b->doc->nodes[i]); i = b->doc->nodes[i].previous) {
    const ASN_JSON_NODE *foreign = &b->doc->nodes[i];
    if (!putForeign (b, foreign))
      return FALSE;
    for (uint32 k = foreign->first; k; k = b->doc->nodes[k].next)
      ++*nrOfParts;
    *nrOfParts += foreign->kind != JSON_LIST;
  }
  return TRUE;
}

static BOOLE putMembers (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node, const uint32 *nodes)
{
  const uint32 used = asnUsed (&b->g);
  uint32 nrOfParts = 0;
  if (!putForeignBefore (b, node, 0, &nrOfParts))
    return FALSE;
  for (uint32 i = type->nrOfPlaces; i-- > 0;) {
    const ASNTOOLPLACE *place = &type->places[i];
    if (nodes[i]) {
      if (!buildPlace (b, place, &b->doc->nodes[nodes[i]], 0) ||
          !putForeignBefore (b, node, nodes[i], &nrOfParts))
        return FALSE;
      nrOfParts++;
    } else if (!asnIsMarker (place) && place->status == TCS_MANDATORY) {
      asnAddPlace (&b->expected, place);
      return refuse (b, node, MM_FAIL);
    }
  }
  if (b->der && type->kind == TYP_SET)
    sortParts (b, used, nrOfParts, TRUE);
  return TRUE;
}

static BOOLE buildMembers (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node)
{
  const ASNTOOLTYPE *type = asnComponents (place->type);
  uint32 *nodes;
  BOOLE done;
  if (node->kind != JSON_OBJECT)
    return refuseValue (b, place, node);
  nodes = (uint32 *)calloc (type->nrOfPlaces + 1u, sizeof *nodes);
  if (!nodes)
    return refuse (b, node, LACK_OF_MEMORY);
  done = sortMembers (b, type, node, nodes) && putMembers (b, type, node, nodes);
  free (nodes);
  return done;
}

static BOOLE buildList (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node)
{
  const uint32 used = asnUsed (&b->g);
  uint32 count = 0, element;
  if (node->kind != JSON_LIST)
    return refuseValue (b, place, node);
  for (uint32 i = node->first; i; i = b->doc->nodes[i].next)
    count++;
  element = count;
  for (uint32 i = node->last; i; i = b->doc->nodes[i].previous)
    if (!buildPlace (b, place->type->places, &b->doc->nodes[i], --element))
      return FALSE;
  if (b->der && place->type->kind == TYP_SETOF)
    sortParts (b, used, count, FALSE);
  return TRUE;
}

static BOOLE buildChoice (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node)
{
  const ASNTOOLTYPE *type = place->type;
  const ASN_JSON_NODE *member = &b->doc->nodes[node->first];
  sint64 n;
  if (node->kind != JSON_OBJECT || !node->first || node->first != node->last)
    return refuseValue (b, place, node);
  if (isForeign (member))
    return putForeign (b, member);
  n = findMember (type, member, 0);
  if (n < 0)
    return refuseMember (b, type, member);
  return buildPlace (b, &type->places[n], member, 0);
}

/* --- any place --- */

static BOOLE buildContents (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node)
{
  switch (place->type->kind) {
  case TYP_SEQ:
  case TYP_SET:
  case TYP_EXTERNAL:
  case TYP_EXTERNAL_1994:
    return buildMembers (b, place, node);
  case TYP_SEQOF:
  case TYP_SETOF:
    return buildList (b, place, node);
  case TYP_CHOICE:
    return buildChoice (b, place, node);
  case TYP_ANY:
  case TYP_OPEN:
    return putWhole (b, node);
  default:
    if (!asnBuildLeaf (b, place->type, node))
      return refuseValue (b, place, node);
    if (b->octets.failed)
      return refuse (b, node, LACK_OF_MEMORY);
    asnPutOctets (&b->g, b->octets.text, b->octets.length);
    return TRUE;
  }
}

static void putTags (ASN_BUILDER *b, const ASNTOOLPLACE *place, uint32 used)
{
  uint32 n = 0;
  BOOLE constructed = asnIsStructure (place->type->kind) || asnIsUntagged (place->type->kind);
  while (place->tags[n])
    n++;
  for (; n > 0; constructed = TRUE)
    asnPutHeader (&b->g, place->tags[--n] | (constructed ? ASN_FORM_BIT : 0), used);
}

static BOOLE buildPlace (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON_NODE *node, uint32 element)
{
  const uint32 used = asnUsed (&b->g);
  BOOLE done;
  if (b->nrOfSteps < ASN_MAX_PATH) {
    b->steps[b->nrOfSteps].name = place->name;
    b->steps[b->nrOfSteps].element = element;
  }
  b->nrOfSteps++;
  done = b->nrOfSteps < 4 * ASN_MAX_NESTING ? buildContents (b, place, node) : refuse (b, node, DEPTH_FAIL);
  b->nrOfSteps--;
  if (done)
    putTags (b, place, used);
  if (done && asnFailed (&b->g))
    return refuse (b, node, b->g.util.error.code);
  return done;
}

BYTE_TYPE *asnBuild (ASN_BUILDER *b, const ASNTOOLPLACE *place, const ASN_JSON *doc, BOOLE der, size_t *length)
{
  BYTE_TYPE *octets;
  memset (b, 0, sizeof *b);
  asnOpenEncoder (&b->g, NULL, 0);
  b->g.growing = TRUE;
  b->doc = doc;
  b->der = der;
  if (!buildPlace (b, place, &doc->nodes[1], 0)) {
    free (b->g.room);
    return NULL;
  }
  *length = asnUsed (&b->g);
  octets = b->g.room;
  memmove (octets, b->g.front, *length);
  return octets;
}

void asnEndBuild (ASN_BUILDER *b)
{
  asnDrop (&b->octets);
  asnDrop (&b->text);
  asnDrop (&b->expected);
}
