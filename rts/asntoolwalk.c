/* Going through an encoding by the description of its type. */

#include "asntoolint.h"

#include <stdlib.h>

static const BYTE_TYPE *walkPlace (ASN_WALK *w, const ASNTOOLPLACE *place, const uint32 *tags,
                                   const BYTE_TYPE *p, const BYTE_TYPE *limit);

/* --- errors --- */

static void notePath (ASN_WALK *w)
{
  ASN_PATH path = asnStartPath (w->error.path, sizeof w->error.path);
  uint32 i = w->nrOfSteps < ASN_MAX_PATH ? w->nrOfSteps : ASN_MAX_PATH;
  while (i-- > 0 && asnPutStep (&path, w->steps[i].name, w->steps[i].element, i == 0)) {
  }
  asnEndPath (&path);
}

/* Whether `p` lies behind the goal, of which all is told. */
static BOOLE isBehindGoal (const ASN_WALK *w, const BYTE_TYPE *p)
{
  return w->goal && w->expected.length > 0 && p != w->goal;
}

static const BYTE_TYPE *fail (ASN_WALK *w, const BYTE_TYPE *p, int code)
{
  if (w->error.code == ASN_OK) {
    w->error.code = code;
    w->error.offset = (uint32)(p - w->start);
    w->last = p;
    if (!isBehindGoal (w, p))
      notePath (w);
  }
  return NULL;
}

int asnReadCutHeader (const BYTE_TYPE *p, const BYTE_TYPE *limit, ASN_HEADER *header, uint32 *missing)
{
  int error;
  *missing = 0;
  header->contents = NULL;
  error = asnReadHeader (p, limit, header);
  if (error != LEN_FAIL || !header->contents)
    return error;
  *missing = header->len - (uint32)(limit - header->contents);
  header->len -= *missing;
  return ASN_OK;
}

static BOOLE readHeader (ASN_WALK *w, const BYTE_TYPE *p, const BYTE_TYPE *limit, ASN_HEADER *header)
{
  const int error = w->visitor->takesCut ? asnReadCutHeader (p, limit, header, &w->missing)
                                         : asnReadHeader (p, limit, header);
  if (error)
    (void)fail (w, p, error);
  return !error;
}

/* Whether to tell what may stand at `p`: what was told of the goal stays, unless there is more to say of it. */
static BOOLE startTelling (ASN_WALK *w, const BYTE_TYPE *p)
{
  if (isBehindGoal (w, p))
    return FALSE;
  if (p == w->goal)
    notePath (w);
  asnEmpty (&w->expected);
  return TRUE;
}

static void expectPlace (ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p)
{
  if (startTelling (w, p))
    asnAddPlace (&w->expected, place);
}

static void expectMatch (ASN_WALK *w, const ASN_MATCH *match, const BYTE_TYPE *p, BOOLE mayEnd)
{
  if (startTelling (w, p))
    asnAddMatch (&w->expected, match, mayEnd);
}

/* --- contents of constructed encodings --- */

/* Behind the contents, which must end here. */
static const BYTE_TYPE *endContents (ASN_WALK *w, const ASN_CONTENTS *contents)
{
  if (!asnAtEnd (contents)) {
    if (startTelling (w, contents->p))
      asnAddText (&w->expected, "the end of the element around it");
    return fail (w, contents->p, contents->p == contents->limit ? LEN_FAIL : EOC_FAIL);
  }
  if (w->visitor->end)
    w->visitor->end (w);
  return contents->p + (contents->indefinite ? 2 : 0);
}

/* --- steps of a path --- */

static void pushStep (ASN_WALK *w, const ASNTOOLPLACE *place, uint32 element)
{
  if (w->nrOfSteps < ASN_MAX_PATH) {
    w->steps[w->nrOfSteps].name = place->name;
    w->steps[w->nrOfSteps].element = element;
  }
  w->nrOfSteps++;
}

/* The goal is behind what begins at `p`: the size of a list is checked there. */
static void noteEnd (ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p)
{
  notePath (w);
  if (strcmp (w->error.path, w->goalPath) == 0) {
    w->goal = p;
    expectPlace (w, place, p);
  }
  w->error.path[0] = 0;
}

/* A component, alternative or element with its name. */
static const BYTE_TYPE *walkNamed (ASN_WALK *w, const ASNTOOLPLACE *place, uint32 element,
                                   const BYTE_TYPE *p, const BYTE_TYPE *limit)
{
  const BYTE_TYPE *end;
  pushStep (w, place, element);
  if (p == w->goal)
    expectPlace (w, place, p);
  if (w->visitor->name)
    w->visitor->name (w, place, element);
  end = walkPlace (w, place, place->tags, p, limit);
  if (end && w->goalPath && w->expected.length == 0 && (end == w->goal || end == w->goal + 2))
    noteEnd (w, place, p);
  w->nrOfSteps--;
  return end;
}

static const BYTE_TYPE *walkWhole (ASN_WALK *w, const BYTE_TYPE *p, const BYTE_TYPE *limit, BOOLE isKnown)
{
  const BYTE_TYPE *end;
  const int error = asnFindEnd (p, limit, &end);
  if (error)
    return fail (w, p, error);
  if (w->visitor->whole)
    w->visitor->whole (w, p, (size_t)(end - p), isKnown);
  return end;
}

/* --- structures --- */

static const BYTE_TYPE *failMatch (ASN_WALK *w, const ASN_MATCH *match, const BYTE_TYPE *p, int code)
{
  expectMatch (w, match, p, match->type->kind != TYP_CHOICE);
  return fail (w, p, code);
}

/* The components of a SEQUENCE, or of a SET in the order of the encoding. Of a SET `places` gets where
   each component stands; those that come twice are left to decoders. */
static const BYTE_TYPE *walkInOrder (ASN_WALK *w, const ASNTOOLTYPE *type, ASN_CONTENTS *contents,
                                     const BYTE_TYPE **places)
{
  ASN_MATCH match = asnStartMatch (type);
  while (!asnAtEnd (contents)) {
    ASN_HEADER header;
    sint64 component;
    if (!readHeader (w, contents->p, contents->limit, &header))
      return NULL;
    component = asnMatchTag (&match, header.tag);
    if (component == ASN_NOTHING)
      return failMatch (w, &match, contents->p, TAG_FAIL);
    if (component == ASN_FOREIGN && contents->p == w->goal)
      expectMatch (w, &match, contents->p, TRUE);
    if (component >= 0 && places) {
      if (places[component])
        return fail (w, contents->p, DM_FAIL);
      places[component] = contents->p;
    }
    contents->p = component < 0 ? walkWhole (w, contents->p, contents->limit, FALSE)
                                : walkNamed (w, &type->places[component], 0, contents->p, contents->limit);
    if (!contents->p)
      return NULL;
  }
  if (asnLacksMandatory (&match, places))
    return failMatch (w, &match, contents->p, places ? MM_FAIL : TAG_FAIL);
  return contents->p;
}

/* The components of a SET in the order of the type, then those that it doesn't know. */
static const BYTE_TYPE *walkByType (ASN_WALK *w, const ASNTOOLTYPE *type, ASN_CONTENTS *contents,
                                    const BYTE_TYPE **places)
{
  static const ASN_VISITOR silent = { FALSE, FALSE, NULL, NULL, NULL, NULL, NULL, NULL, NULL };
  const ASN_VISITOR *visitor = w->visitor;
  const ASN_CONTENTS before = *contents;
  ASN_MATCH match = asnStartMatch (type);
  const BYTE_TYPE *end, *p;
  w->visitor = &silent;
  end = walkInOrder (w, type, contents, places);
  w->visitor = visitor;
  for (uint32 i = 0; end && i < type->nrOfPlaces; i++)
    if (places[i] && !walkNamed (w, &type->places[i], 0, places[i], before.limit))
      return NULL;
  for (p = before.p; end && match.isOpen && p < end;) {
    ASN_HEADER header;
    if (!readHeader (w, p, before.limit, &header))
      return NULL;
    if (asnMatchTag (&match, header.tag) == ASN_FOREIGN)
      p = walkWhole (w, p, before.limit, FALSE);
    else if (asnFindEnd (p, before.limit, &p) != ASN_OK)
      return NULL;
    if (!p)
      return NULL;
  }
  return end;
}

static const BYTE_TYPE *walkSet (ASN_WALK *w, const ASNTOOLTYPE *type, ASN_CONTENTS *contents)
{
  const BYTE_TYPE **places = (const BYTE_TYPE **)calloc (type->nrOfPlaces + 1u, sizeof *places);
  const BYTE_TYPE *end;
  if (!places)
    return fail (w, contents->p, LACK_OF_MEMORY);
  end = w->visitor->byType ? walkByType (w, type, contents, places)
                           : walkInOrder (w, type, contents, places);
  free (places);
  return end;
}

static const BYTE_TYPE *walkList (ASN_WALK *w, const ASNTOOLTYPE *type, ASN_CONTENTS *contents)
{
  for (uint32 element = 0; !asnAtEnd (contents); element++) {
    if (contents->p >= contents->limit)
      return fail (w, contents->p, LEN_FAIL);
    contents->p = walkNamed (w, type->places, element, contents->p, contents->limit);
    if (!contents->p)
      return NULL;
  }
  return contents->p;
}

static const BYTE_TYPE *walkStructure (ASN_WALK *w, const ASNTOOLTYPE *type, const ASN_HEADER *header,
                                       const BYTE_TYPE *limit)
{
  const ASNTOOLTYPE *parts = asnComponents (type);
  ASN_CONTENTS contents = asnContentsOf (header, limit);
  const BYTE_TYPE *end;
  if (w->visitor->open)
    w->visitor->open (w, type);
  if (type->kind == TYP_SEQOF || type->kind == TYP_SETOF)
    end = walkList (w, type, &contents);
  else
    end = type->kind == TYP_SET ? walkSet (w, parts, &contents) : walkInOrder (w, parts, &contents, NULL);
  if (!end)
    return NULL;
  if (w->visitor->close)
    w->visitor->close (w, type);
  return endContents (w, &contents);
}

static const BYTE_TYPE *walkChoice (ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *p,
                                    const BYTE_TYPE *limit)
{
  ASN_MATCH match = asnStartMatch (type);
  ASN_HEADER header;
  sint64 alternative;
  if (p == w->goal)
    expectMatch (w, &match, p, FALSE);
  if (!readHeader (w, p, limit, &header))
    return NULL;
  alternative = header.tag == EOC_TAG ? (sint64)ASN_NOTHING : asnMatchTag (&match, header.tag);
  if (alternative == ASN_NOTHING)
    return failMatch (w, &match, p, TAG_FAIL);
  if (w->visitor->open)
    w->visitor->open (w, type);
  p = alternative < 0 ? walkWhole (w, p, limit, FALSE)
                      : walkNamed (w, &type->places[alternative], 0, p, limit);
  if (p && w->visitor->close)
    w->visitor->close (w, type);
  return p;
}

/* --- types without parts --- */

static BOOLE mayHaveSegments (int kind)
{
  return kind == TYP_BITSTR || kind == TYP_OCTSTR || kind == TYP_OBJDESCR || kind == ASNTOOL_UTF8 ||
         (kind >= TYP_NUMSTR && kind <= TYP_UTCTIME && kind != TYP_CHASTR);
}

/* In front of bits an octet says how many of the last octet are none. */
static BOOLE areWholeBits (const ASN_HEADER *header)
{
  return header->len > 0 && *header->contents <= 7 && (*header->contents == 0 || header->len > 1);
}

/* Adds the octets of all segments; of bits each has an octet in front. */
static const BYTE_TYPE *joinSegments (ASN_WALK *w, const ASN_HEADER *header, const BYTE_TYPE *limit,
                                      BOOLE areBits, uint32 *unused, uint32 depth)
{
  ASN_CONTENTS contents = asnContentsOf (header, limit);
  if (depth > ASN_MOST_LEVELS)
    return fail (w, contents.p, DEPTH_FAIL);
  while (!asnAtEnd (&contents)) {
    ASN_HEADER segment;
    if (!readHeader (w, contents.p, contents.limit, &segment))
      return NULL;
    if (segment.constructed) {
      contents.p = joinSegments (w, &segment, contents.limit, areBits, unused, depth + 1);
      if (!contents.p)
        return NULL;
      continue;
    }
    if (areBits && (*unused != 0 || !areWholeBits (&segment)))
      return fail (w, contents.p, VALUE_FAIL);
    if (areBits)
      *unused = *segment.contents;
    asnAdd (&w->segments, segment.contents + areBits, segment.len - areBits);
    contents.p = segment.contents + segment.len;
  }
  return contents.p + (contents.indefinite ? 2 : 0);
}

static const BYTE_TYPE *tellLeaf (ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *start,
                                  const BYTE_TYPE *p, uint32 length, uint32 unused)
{
  const int error = w->visitor->leaf ? w->visitor->leaf (w, type, p, length, unused) : ASN_OK;
  return error ? fail (w, start, error) : start;
}

static const BYTE_TYPE *walkLeaf (ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *start,
                                  const ASN_HEADER *header, const BYTE_TYPE *limit)
{
  const BOOLE areBits = type->kind == TYP_BITSTR;
  const BYTE_TYPE *end = header->contents + header->len;
  uint32 unused = 0;
  if (start == w->goal && type->kind == TYP_INTEGER && header->len > sizeof (sint64))
    asnAddText (&w->expected, " of at most 64 bits");
  if (!header->constructed) {
    if (areBits && !areWholeBits (header))
      return fail (w, start, VALUE_FAIL);
    if (areBits)
      unused = *header->contents;
    return tellLeaf (w, type, start, header->contents + areBits, header->len - areBits, unused) ? end : NULL;
  }
  if (!mayHaveSegments (type->kind))
    return fail (w, start, FORM_FAIL);
  asnEmpty (&w->segments);
  asnAddText (&w->segments, ""); /* so that there is a text */
  end = joinSegments (w, header, limit, areBits, &unused, 0);
  if (w->segments.failed)
    return fail (w, start, LACK_OF_MEMORY);
  if (!end || !tellLeaf (w, type, start, (const BYTE_TYPE *)w->segments.text, (uint32)w->segments.length, unused))
    return NULL;
  if (w->visitor->end)
    w->visitor->end (w);
  return end;
}

/* --- any place --- */

/* What stands behind the tags that are left. */
static const BYTE_TYPE *walkTagged (ASN_WALK *w, const ASNTOOLPLACE *place, const uint32 *tags,
                                    const BYTE_TYPE *p, const BYTE_TYPE *limit)
{
  const ASNTOOLTYPE *type = place->type;
  ASN_HEADER header;
  if (!readHeader (w, p, limit, &header))
    return NULL;
  if (header.tag != *tags) {
    expectPlace (w, place, p);
    return fail (w, p, TAG_FAIL);
  }
  if (w->visitor->header)
    w->visitor->header (w, p, &header);
  if (tags[1] || asnIsUntagged (type->kind)) {
    ASN_CONTENTS contents = asnContentsOf (&header, limit);
    if (!header.constructed)
      return fail (w, p, FORM_FAIL);
    contents.p = walkPlace (w, place, tags + 1, contents.p, contents.limit);
    return contents.p ? endContents (w, &contents) : NULL;
  }
  if (!asnIsStructure (type->kind))
    return walkLeaf (w, type, p, &header, limit);
  return header.constructed ? walkStructure (w, type, &header, limit) : fail (w, p, FORM_FAIL);
}

static const BYTE_TYPE *walkPlace (ASN_WALK *w, const ASNTOOLPLACE *place, const uint32 *tags,
                                   const BYTE_TYPE *p, const BYTE_TYPE *limit)
{
  if (w->depth >= ASN_MOST_LEVELS)
    return fail (w, p, DEPTH_FAIL);
  w->depth++;
  if (*tags)
    p = walkTagged (w, place, tags, p, limit);
  else if (place->type->kind == TYP_CHOICE)
    p = walkChoice (w, place->type, p, limit);
  else
    p = walkWhole (w, p, limit, TRUE);
  w->depth--;
  return p;
}

BOOLE asnWalk (ASN_WALK *w, const ASN_VISITOR *visitor, void *own, const ASNTOOLPLACE *place,
               const BYTE_TYPE *p, size_t length)
{
  const BYTE_TYPE *end;
  w->visitor = visitor;
  w->own = own;
  w->start = p;
  w->depth = w->nrOfSteps = 0;
  w->error.code = ASN_OK;
  w->error.path[0] = 0;
  asnEmpty (&w->expected);
  end = walkNamed (w, place, 0, p, p + length);
  if (end && end != p + length) {
    if (startTelling (w, end))
      asnAddText (&w->expected, "the end of the message");
    (void)fail (w, end, REST_FAIL);
  }
  return w->error.code == ASN_OK;
}

void asnEndWalk (ASN_WALK *w)
{
  asnDrop (&w->expected);
  asnDrop (&w->segments);
}
