/* Decoding: tags, lengths and what is open. */

#include "asnapi.h"
#include "asnint.h"

void asnOpenDecoder (ASNCODG *g, const void *buffer, size_t length, ASNMEM *memory)
{
  static const BYTE_TYPE nothing = 0;
  asnInitUtil (&g->util, ASN_CODING_, memory);
  g->start = buffer ? (const BYTE_TYPE *)buffer : &nothing;
  g->place = g->element = g->start;
  g->limit = g->start + (buffer ? length : 0);
  g->mode = 0;
  g->elementsLeft = 0;
  g->state = ASN_BETWEEN_;
  g->tag = EOC_TAG;
  g->len = 0;
  g->peeked = EOC_TAG;
  g->depth = 0;
  g->nrOfNames = 0;
  g->popped = NULL;
  g->room = g->front = g->end = NULL;
  g->growing = FALSE;
  g->nrOfEnds = 0;
  if (length > INT32_MAX) {
    g->limit = g->start;
    asnRaise (&g->util, LEN_FAIL);
  }
}

/* --- headers --- */

/* The rest of a tag whose number is above 30; null if it is none or too large for a tag in hand. */
static const BYTE_TYPE *readLongTag (const BYTE_TYPE *p, const BYTE_TYPE *limit, uint32 *number)
{
  uint32 value = 0;
  if (p < limit && *p == 0x80) /* a leading zero */
    return NULL;
  for (;; p++) {
    if (p >= limit || value > ASN_NUMBER_BITS >> 7)
      return NULL;
    value = value << 7 | (*p & 0x7Fu);
    if (!(*p & 0x80))
      break;
  }
  *number = value;
  return value < ASN_LONG_NUMBER ? NULL : p + 1;
}

/* A length of more than one octet, of which `octets` follow. */
static const BYTE_TYPE *readLongLength (const BYTE_TYPE *p, const BYTE_TYPE *limit, uint32 octets,
                                        uint32 *length)
{
  uint32 value = 0;
  if (octets == 0x7F || (size_t)(limit - p) < octets)
    return NULL;
  for (; octets > 0; octets--, p++) {
    if (value > UINT32_MAX >> 8)
      return NULL;
    value = value << 8 | *p;
  }
  *length = value;
  return p;
}

int asnReadHeader (const BYTE_TYPE *p, const BYTE_TYPE *limit, ASN_HEADER *header)
{
  const BYTE_TYPE *start = p;
  uint32 first, number;
  if (p >= limit)
    return LEN_FAIL;
  first = *p++;
  number = first & 0x1F;
  if (number == ASN_LONG_NUMBER) {
    p = readLongTag (p, limit, &number);
    if (!p)
      return TAG_FAIL;
  }
  header->tag = (first & 0xC0) << 24 | number;
  header->constructed = (first & ASN_FORM_OCTET) != 0;
  header->indefinite = FALSE;
  if (p >= limit)
    return LEN_FAIL;
  header->len = *p++;
  if (header->len == 0x80) {
    if (!header->constructed)
      return LEN_FAIL;
    header->indefinite = TRUE;
    header->len = 0;
  } else if (header->len > 0x80) {
    p = readLongLength (p, limit, header->len & 0x7F, &header->len);
    if (!p)
      return LEN_FAIL;
  }
  header->contents = p;
  if (header->len > (size_t)(limit - p))
    return LEN_FAIL;
  if (first == 0 && (header->len != 0 || p - start > 2))
    return TAG_FAIL;
  return ASN_OK;
}

/* Behind the end-of-contents of what begins here without a length. Only what is itself of indefinite
   length is looked into, and no stack is needed for that. */
static int findEnd (const BYTE_TYPE *p, const BYTE_TYPE *limit, const BYTE_TYPE **end)
{
  size_t open = 1;
  while (open > 0) {
    ASN_HEADER header;
    int error = asnReadHeader (p, limit, &header);
    if (error)
      return error;
    p = header.contents + header.len;
    if (header.indefinite)
      open++;
    else if (header.tag == EOC_TAG && !header.constructed)
      open--;
    else if (header.tag == EOC_TAG)
      return TAG_FAIL;
  }
  *end = p;
  return ASN_OK;
}

int asnFindEnd (const BYTE_TYPE *p, const BYTE_TYPE *limit, const BYTE_TYPE **end)
{
  ASN_HEADER header;
  const int error = asnReadHeader (p, limit, &header);
  if (error)
    return error;
  if (header.tag == EOC_TAG)
    return TAG_FAIL;
  *end = header.contents + header.len;
  return header.indefinite ? findEnd (header.contents, limit, end) : ASN_OK;
}

BOOLE asnIsOneEncoding (const BYTE_TYPE *octets, size_t length)
{
  const BYTE_TYPE *end = octets + length, *behind;
  /* A tag, but no end-of-contents in either form, and a length of one octet each. */
  if (length >= 2 && (octets[0] & 0xDF) != 0 && (octets[0] & 0x1F) != ASN_LONG_NUMBER && octets[1] < 0x80)
    return octets[1] == length - 2;
  return length <= INT32_MAX && asnFindEnd (octets, end, &behind) == ASN_OK && behind == end;
}

/* --- levels --- */

static BOOLE pushLevel (ASNCODG *g, const BYTE_TYPE *limit, uint32 mode)
{
  if (g->depth >= ASN_MAX_NESTING) {
    asnRaise (&g->util, DEPTH_FAIL);
    return FALSE;
  }
  g->levels[g->depth].limit = g->limit;
  g->levels[g->depth].mode = g->mode;
  g->levels[g->depth].elementsLeft = g->elementsLeft;
  g->depth++;
  g->limit = limit;
  g->mode = mode;
  return TRUE;
}

static void popLevel (ASNCODG *g)
{
  g->depth--;
  g->limit = g->levels[g->depth].limit;
  g->mode = g->levels[g->depth].mode;
  if (g->mode & ASN_COUNTED_)
    g->elementsLeft = g->levels[g->depth].elementsLeft;
}

/* Whether what is open ends here; an end-of-contents is then read and the level closed. */
static BOOLE closeAtEnd (ASNCODG *g)
{
  if (g->depth == 0)
    return FALSE;
  if (!(g->mode & ASN_INDEFINITE_)) {
    if (g->place != g->limit)
      return FALSE;
  } else {
    if (g->limit - g->place < 2 || g->place[0] != 0 || g->place[1] != 0)
      return FALSE;
    g->place += 2;
  }
  popLevel (g);
  g->state = ASN_BETWEEN_;
  g->tag = EOC_TAG;
  return TRUE;
}

static uint32 fail (ASNCODG *g, int error)
{
  asnRaise (&g->util, error);
  return EOC_TAG;
}

/* Opens what the header begins. */
static uint32 enter (ASNCODG *g, const ASN_HEADER *header)
{
  g->place = header->contents;
  if (header->constructed) {
    if (!pushLevel (g, header->indefinite ? g->limit : header->contents + header->len,
                    header->indefinite ? ASN_INDEFINITE_ : 0))
      return EOC_TAG;
    g->state = ASN_CONSTRUCTED_;
  } else {
    g->state = ASN_PRIMITIVE_;
  }
  g->tag = header->tag;
  g->len = header->len;
  return header->tag;
}

/* All cases. */
ASN_RARE static uint32 look (ASNCODG *g)
{
  ASN_HEADER header;
  int error;
  if (asnFailed (g))
    return EOC_TAG;
  if (g->state == ASN_PRIMITIVE_) /* what was read last should have had components */
    return fail (g, FORM_FAIL);
  g->element = g->place;
  g->util.allocated = FALSE;
  if (closeAtEnd (g))
    return EOC_TAG;
  error = asnReadHeader (g->place, g->limit, &header);
  if (error)
    return fail (g, error);
  if (header.tag == EOC_TAG)
    return fail (g, TAG_FAIL);
  if ((g->mode & ASN_FULL_) || (g->mode & ASN_COUNTED_ && g->elementsLeft-- == 0))
    return fail (g, AM_FAIL);
  return enter (g, &header);
}

/* The tag that an octet is, with its form; 0 if it is only the beginning of one, or no tag. */
#define T1(o) \
  (((o)&0x1Fu) == ASN_LONG_NUMBER || ((o)&0xDFu) == 0 ? 0 : ((o)&0xE0u) << 24 | ((o)&0x1Fu))
#define T4(o) T1 (o), T1 ((o) + 1u), T1 ((o) + 2u), T1 ((o) + 3u)
#define T16(o) T4 (o), T4 ((o) + 4u), T4 ((o) + 8u), T4 ((o) + 12u)
#define T64(o) T16 (o), T16 ((o) + 16u), T16 ((o) + 32u), T16 ((o) + 48u)
static const uint32 shortTags[] = { T64 (0u), T64 (64u), T64 (128u), T64 (192u) };

static inline uint32 noteHeader (ASNCODG *g, uint32 tag, const BYTE_TYPE *contents, uint32 len, uint32 state)
{
  g->tag = tag;
  g->element = g->place;
  g->place = contents;
  g->len = len;
  g->util.allocated = FALSE;
  g->state = state;
  return tag;
}

/* What `first` begins, with contents of a length that is known and within the limit. */
static inline uint32 takeHeader (ASNCODG *g, BYTE_TYPE first, const BYTE_TYPE *contents, uint32 len)
{
  const uint32 tag = shortTags[first];
  if (!(tag & ASN_FORM_BIT)) {
    if (tag != 0)
      return noteHeader (g, tag, contents, len, ASN_PRIMITIVE_);
  } else if (g->depth < ASN_MAX_NESTING) {
    ASN_LEVEL *level = &g->levels[g->depth++];
    level->limit = g->limit;
    level->mode = g->mode;
    g->limit = contents + len;
    g->mode = 0;
    return noteHeader (g, tag & ~ASN_FORM_BIT, contents, len, ASN_CONSTRUCTED_);
  }
  return look (g);
}

/* A length of two or three octets. */
ASN_APART static uint32 lookAtLonger (ASNCODG *g, const BYTE_TYPE *p, size_t left)
{
  const uint32 octets = p[1] & 0x7Fu;
  if ((octets == 1 || octets == 2) && left >= 2 + octets) {
    const uint32 len = octets == 1 ? p[2] : (uint32)p[2] << 8 | p[3];
    if (len <= left - 2 - octets)
      return takeHeader (g, p[0], p + 2 + octets, len);
  }
  return look (g);
}

/* The common cases go without a call: a tag and a length of one octet each, and the end of what has a
   length. */
static inline uint32 lookTagLen (ASNCODG *g)
{
  const BYTE_TYPE *p = g->place;
  const size_t left = (size_t)(g->limit - p);
  if (g->state == ASN_PRIMITIVE_)
    return look (g);
  if (left >= 2 && !(g->mode & (ASN_FULL_ | ASN_COUNTED_))) {
    const uint32 len = p[1];
    if (len >= 0x80)
      return lookAtLonger (g, p, left);
    if (len <= left - 2)
      return takeHeader (g, p[0], p + 2, len);
  } else if (left == 0 && g->depth > 0 && !(g->mode & ASN_INDEFINITE_)) {
    popLevel (g);
    g->util.allocated = FALSE;
    g->element = p;
    g->state = ASN_BETWEEN_;
    return g->tag = EOC_TAG;
  }
  return look (g);
}

uint32 asnLookTagLen (ASNCODG *g)
{
  return lookTagLen (g);
}

void asnDecTagLen (ASNCODG *g, uint32 tag)
{
  if (lookTagLen (g) != tag)
    asnRaise (&g->util, TAG_FAIL);
}

uint32 asnPeekTag (const ASNCODG *g, uint32 *tag)
{
  ASN_HEADER header;
  *tag = EOC_TAG;
  if (asnFailed (g) || (!(g->mode & ASN_INDEFINITE_) && g->place == g->limit))
    return EOC_TAG;
  /* An error is found again, and reported, by what reads the tag. */
  if (asnReadHeader (g->place, g->limit, &header) != ASN_OK)
    header.tag = ASN_NUMBER_BITS;
  return *tag = header.tag;
}

void asnDecEOC (ASNCODG *g)
{
  if (g->state != ASN_PRIMITIVE_ && g->depth > 0 && g->place == g->limit &&
      !(g->mode & ASN_INDEFINITE_)) {
    popLevel (g);
    g->state = ASN_BETWEEN_;
    return;
  }
  if (asnFailed (g))
    return;
  if (g->state == ASN_PRIMITIVE_) {
    asnRaise (&g->util, FORM_FAIL);
    return;
  }
  g->element = g->place;
  if (!closeAtEnd (g))
    asnRaise (&g->util, g->place == g->limit ? LEN_FAIL : EOC_FAIL);
}

void asnCloseLevels (ASNCODG *g)
{
  while (!asnFailed (g) && g->depth > 0) {
    g->element = g->place;
    if (!closeAtEnd (g))
      asnRaise (&g->util, g->place == g->limit ? LEN_FAIL : REST_FAIL);
  }
}

/* --- what is passed over --- */

void asnPassElement (ASNCODG *g)
{
  if (g->state == ASN_PRIMITIVE_) {
    g->place += g->len;
  } else if (g->mode & ASN_INDEFINITE_) {
    int error = findEnd (g->place, g->limit, &g->place);
    if (error) {
      asnRaise (&g->util, error);
      return;
    }
    popLevel (g);
  } else {
    g->place = g->limit;
    popLevel (g);
  }
  g->state = ASN_BETWEEN_;
}

void asnDecSkip (ASNCODG *g)
{
  if (g->state == ASN_BETWEEN_) {
    /* A value without a tag of its own; a full array takes no part in it. */
    g->mode &= ~(uint32)ASN_FULL_;
    if (asnLookTagLen (g) == EOC_TAG) {
      asnRaise (&g->util, TAG_FAIL);
      return;
    }
  }
  if (!asnFailed (g))
    asnPassElement (g);
}

/* --- bookmarks --- */

ASN_BOOKMARK asnMark (const ASNCODG *g)
{
  ASN_BOOKMARK mark;
  mark.place = g->place;
  mark.limit = g->limit;
  mark.element = g->element;
  mark.mode = g->mode;
  mark.state = g->state;
  mark.tag = g->tag;
  mark.len = g->len;
  mark.depth = g->depth;
  return mark;
}

void asnGoBack (ASNCODG *g, const ASN_BOOKMARK *mark)
{
  if (asnFailed (g))
    return;
  g->place = mark->place;
  g->limit = mark->limit;
  g->element = mark->element;
  g->mode = mark->mode;
  g->state = mark->state;
  g->tag = mark->tag;
  g->len = mark->len;
  g->depth = mark->depth;
}

/* --- segments of strings --- */

void asnStartSegments (ASNCODG *g, ASN_SEGMENTS *segments, uint32 tag)
{
  segments->tag = tag;
  segments->primitive = g->state == ASN_PRIMITIVE_;
  segments->begun = FALSE;
  segments->depth = g->depth - 1;
  if (g->state == ASN_BETWEEN_)
    asnRaise (&g->util, FORM_FAIL);
}

BOOLE asnNextSegment (ASNCODG *g, ASN_SEGMENTS *segments, const BYTE_TYPE **p, uint32 *len)
{
  if (asnFailed (g))
    return FALSE;
  if (segments->primitive) {
    if (segments->begun)
      return FALSE;
    segments->begun = TRUE;
    return asnTakeContents (g, p, len);
  }
  for (;;) {
    uint32 tag = asnLookTagLen (g);
    if (asnFailed (g))
      return FALSE;
    if (tag == EOC_TAG) {
      if (g->depth == segments->depth)
        return FALSE;
    } else if (segments->tag != 0 && tag != segments->tag &&
               (tag != ASN_TAG_OCTET_STRING || segments->tag == ASN_TAG_BIT_STRING)) {
      asnRaise (&g->util, TAG_FAIL);
      return FALSE;
    } else if (g->state == ASN_PRIMITIVE_) {
      return asnTakeContents (g, p, len);
    }
  }
}

const ASN_VALUE_INFO *asnInfoOfValue (ASNCODG *g)
{
  g->info.len = g->len;
  if (g->state == ASN_CONSTRUCTED_) {
    ASN_BOOKMARK mark = asnMark (g);
    ASN_SEGMENTS segments;
    const BYTE_TYPE *p;
    uint32 len;
    g->info.len = 0;
    asnStartSegments (g, &segments, 0);
    while (asnNextSegment (g, &segments, &p, &len))
      g->info.len += len;
    asnGoBack (g, &mark);
  }
  return &g->info;
}
