/* A value as a list of its tags, with the offset, the length and the name of each. */

#include "asntoolint.h"

#include <stdio.h>

typedef struct {
  ASN_GROWING *to;
  size_t first;      /* offset of the value */
  uint32 depth;
  ASN_GROWING names; /* of what comes, with dots between them */
  BOOLE lineIsOpen;  /* contents may follow on it */
  const BYTE_TYPE *stuck;
} LISTING;

static void endLine (LISTING *listing)
{
  if (listing->lineIsOpen)
    asnAddChar (listing->to, '\n');
  listing->lineIsOpen = FALSE;
}

static void startLine (LISTING *listing, size_t offset, const ASN_HEADER *header, uint32 missing)
{
  char text[48];
  endLine (listing);
  (void)snprintf (text, sizeof text, "%8lu ", (unsigned long)(listing->first + offset));
  asnAddText (listing->to, text);
  if (header->indefinite)
    (void)snprintf (text, sizeof text, "%8s  ", "...");
  else
    (void)snprintf (text, sizeof text, "%8lu  ", (unsigned long)header->len + missing);
  asnAddText (listing->to, text);
  for (uint32 i = 0; i < listing->depth; i++)
    asnAddText (listing->to, "  ");
  asnAddTag (listing->to, header->tag);
  listing->to->failed |= listing->names.failed;
  if (listing->names.length > 0) {
    asnAddChar (listing->to, ' ');
    asnAdd (listing->to, listing->names.text, listing->names.length);
    asnEmpty (&listing->names);
  }
  if (missing > 0) {
    asnAddText (listing->to, " (");
    asnAddNumber (listing->to, missing);
    asnAddText (listing->to, missing == 1 ? " octet missing)" : " octets missing)");
  }
  listing->lineIsOpen = TRUE;
}

/* --- contents --- */

#define MOST_OCTETS 32u
#define MOST_CHARACTERS 200u

/* Shortens what a line has got since `before`. */
static void cutLine (ASN_GROWING *to, size_t before)
{
  if (to->failed || to->length - before <= MOST_CHARACTERS)
    return;
  to->length = before + MOST_CHARACTERS;
  while (((BYTE_TYPE)to->text[to->length] & 0xC0) == 0x80)
    to->length--;
  asnAddText (to, "...");
}

static BOOLE isPrintable (const BYTE_TYPE *p, size_t length)
{
  const BYTE_TYPE *end = p + length;
  while (p < end) {
    uint32 character;
    if (!asnTakeCharacter (&p, end, &character) || character < ' ' || (character >= 0x7F && character < 0xA0))
      return FALSE;
  }
  return length > 0;
}

/* '6E7574'H "nut" */
static void addPreview (ASN_GROWING *to, const BYTE_TYPE *p, size_t length)
{
  const size_t before = to->length;
  asnAddChar (to, '\'');
  asnAddHex (to, p, length < MOST_OCTETS ? length : MOST_OCTETS);
  asnAddText (to, length > MOST_OCTETS ? "...'H" : "'H");
  if (isPrintable (p, length)) {
    asnAddChar (to, ' ');
    asnAddJsonString (to, (const char *)p, length);
    cutLine (to, before);
  }
}

static void addContents (LISTING *listing, const BYTE_TYPE *p, size_t length)
{
  asnAddText (listing->to, length > 0 ? ": " : "");
  if (length > 0)
    addPreview (listing->to, p, length);
}

/* --- what has no description --- */

/* Lists what begins at `p` and all behind it; false, with listing->stuck, where there are no more tags. */
static BOOLE listRaw (LISTING *listing, const BYTE_TYPE *start, const BYTE_TYPE *p, const BYTE_TYPE *limit,
                      BOOLE endsItself, const BYTE_TYPE **end)
{
  while (p < limit) {
    ASN_HEADER header;
    uint32 missing;
    listing->stuck = p;
    if (asnReadCutHeader (p, limit, &header, &missing) != ASN_OK || listing->depth > 4 * ASN_MAX_NESTING)
      return FALSE;
    if (endsItself && header.tag == EOC_TAG) {
      *end = header.contents;
      return TRUE;
    }
    startLine (listing, (size_t)(p - start), &header, missing);
    p = header.contents + header.len;
    if (header.constructed) {
      const BYTE_TYPE *behind = p;
      listing->depth++;
      if (!listRaw (listing, start, header.contents, header.indefinite ? limit : p, header.indefinite, &behind))
        return FALSE;
      listing->depth--;
      p = behind;
    } else {
      addContents (listing, header.contents, header.len);
    }
  }
  listing->stuck = p;
  if (!endsItself)
    *end = p;
  return !endsItself;
}

/* Where the tags end, octets. */
static void listRest (LISTING *listing, const BYTE_TYPE *start, const BYTE_TYPE *p, const BYTE_TYPE *limit)
{
  const BYTE_TYPE *end;
  if (!listRaw (listing, start, p, limit, FALSE, &end) && listing->stuck < limit) {
    endLine (listing);
    asnAddText (listing->to, "         the octets behind this are no encodings: ");
    addPreview (listing->to, listing->stuck, (size_t)(limit - listing->stuck));
    listing->lineIsOpen = TRUE;
  }
  endLine (listing);
}

/* --- the visitor --- */

static void tellName (ASN_WALK *w, const ASNTOOLPLACE *place, uint32 element)
{
  LISTING *listing = (LISTING *)w->own;
  if (listing->names.length > 0)
    asnAddChar (&listing->names, '.');
  if (place->name) {
    asnAddText (&listing->names, place->name);
  } else {
    asnAddChar (&listing->names, '[');
    asnAddNumber (&listing->names, element);
    asnAddChar (&listing->names, ']');
  }
}

static void tellHeader (ASN_WALK *w, const BYTE_TYPE *p, const ASN_HEADER *header)
{
  LISTING *listing = (LISTING *)w->own;
  startLine (listing, (size_t)(p - w->start), header, w->missing);
  listing->depth += header->constructed;
}

static void tellEnd (ASN_WALK *w)
{
  ((LISTING *)w->own)->depth--;
}

static int tellLeaf (ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length, uint32 unused)
{
  LISTING *listing = (LISTING *)w->own;
  const size_t before = listing->to->length;
  int error;
  asnAddText (listing->to, ": ");
  if (type->kind == TYP_OCTSTR) {
    addPreview (listing->to, p, length);
    return ASN_OK;
  }
  error = asnAddJsonLeaf (listing->to, type, p, length, unused);
  if (error == LACK_OF_MEMORY)
    return error;
  if (error != ASN_OK) {
    listing->to->length = before;
    addContents (listing, p, length);
  } else {
    cutLine (listing->to, before);
  }
  return ASN_OK; /* what follows has names even so */
}

static void tellWhole (ASN_WALK *w, const BYTE_TYPE *p, size_t length, BOOLE isKnown)
{
  LISTING *listing = (LISTING *)w->own;
  const BYTE_TYPE *end;
  const uint32 depth = listing->depth;
  if (!isKnown)
    asnAddText (&listing->names, "...");
  (void)listRaw (listing, w->start, p, p + length, FALSE, &end);
  listing->depth = depth;
}

static const ASN_VISITOR listingVisitor = { FALSE, TRUE, tellName, tellHeader, tellEnd, NULL, NULL, tellLeaf, tellWhole };

BOOLE asnListTags (ASN_GROWING *to, ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p, size_t length,
                   size_t first)
{
  LISTING listing = { to, first, 0, { NULL, 0, 0, FALSE }, FALSE, NULL };
  BOOLE done = FALSE;
  if (place)
    done = asnWalk (w, &listingVisitor, &listing, place, p, length);
  endLine (&listing);
  asnEmpty (&listing.names);
  if (!done) {
    listing.depth = listing.depth > 0 ? listing.depth : 0;
    listRest (&listing, p, place ? w->last : p, p + length);
  }
  asnDrop (&listing.names);
  if (to->failed) {
    w->error.code = LACK_OF_MEMORY;
    return FALSE;
  }
  return done;
}
