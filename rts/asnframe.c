/* Frames: values that are kept as they are encoded, and what extension markers stand for. */

#include "asnapi.h"
#include "asnint.h"

/* The octets follow the frame. */
#define FRAME_SIZE(length) (sizeof (ASN_FRAME) + (length))

static FRAME_PTR fillFrame (FRAME_PTR frame, const BYTE_TYPE *octets, uint32 length)
{
  frame->next = NULL;
  frame->length = length;
  frame->octets = (BYTE_TYPE *)(frame + 1);
  if (length > 0)
    memcpy (frame->octets, octets, length);
  return frame;
}

FRAME_PTR asnNewFrame (ASNMEM *memory, const void *octets, size_t length)
{
  FRAME_PTR frame =
    length > INT32_MAX ? NULL : (FRAME_PTR)asnNew (memory, FRAME_SIZE (length));
  return frame ? fillFrame (frame, (const BYTE_TYPE *)octets, (uint32)length) : NULL;
}

/* --- encoding --- */

/* What a frame holds goes into a message as it is, so it must be one encoding. */
static BOOLE isFrameWhole (ASNCODG *g, const ASN_FRAME *frame)
{
  if (frame && frame->octets && asnIsOneEncoding (frame->octets, frame->length))
    return TRUE;
  asnRaise (&g->util, VALUE_FAIL);
  return FALSE;
}

void asnEncFrame0 (ASNCODG *g, const FRAME_PTR *frame)
{
  if (isFrameWhole (g, *frame))
    asnPutOctets (g, (*frame)->octets, (*frame)->length);
}

/* The frame with its own tag replaced. */
static void putWithTag (ASNCODG *g, uint32 tag, const ASN_FRAME *frame)
{
  const BYTE_TYPE *end = frame->octets + frame->length, *length = frame->octets + 1;
  if ((frame->octets[0] & 0x1F) == ASN_LONG_NUMBER)
    while (*length++ & 0x80) { /* octets of the old tag's number */
    }
  asnPutOctets (g, length, (size_t)(end - length));
  asnPutTagAlone (g, tag | (frame->octets[0] & ASN_FORM_OCTET ? ASN_FORM_BIT : 0));
}

void asnEncFrame (ASNCODG *g, uint32 tag, const FRAME_PTR *frame)
{
  uint32 used = asnUsed (g);
  if (!isFrameWhole (g, *frame))
    return;
  if (tag & ASN_FORM_BIT) {
    asnPutOctets (g, (*frame)->octets, (*frame)->length);
    asnPutHeader (g, tag, used);
  } else {
    putWithTag (g, tag, *frame);
  }
}

/* The frames stand in their order, so the room for all is taken at once. It is asked for only where
   something is there: a CHOICE would hold nothing without it. */
void asnEncExtensionmarker (ASNCODG *g, const EXTENSIONMARKER *value)
{
  size_t length = 0;
  BYTE_TYPE *p;
  for (const ASN_FRAME *frame = value->first; frame; frame = frame->next) {
    if (!isFrameWhole (g, frame))
      return;
    length += frame->length;
  }
  if (length == 0)
    asnRaise (&g->util, VALUE_FAIL);
  if (length == 0 || !asnRoomFor (g, length))
    return;
  g->front -= length;
  p = g->front;
  for (const ASN_FRAME *frame = value->first; frame; frame = frame->next) {
    memcpy (p, frame->octets, frame->length);
    p += frame->length;
  }
}

/* --- decoding --- */

static FRAME_PTR frameInHand (ASNCODG *g)
{
  const BYTE_TYPE *octets = g->element;
  FRAME_PTR frame;
  uint32 length;
  if (g->state == ASN_PRIMITIVE_) {
    g->place += g->len;
    g->state = ASN_BETWEEN_;
  } else {
    asnPassElement (g);
    if (asnFailed (g))
      return NULL;
  }
  length = (uint32)(g->place - octets);
  frame = (FRAME_PTR)asnTake (&g->util, FRAME_SIZE (length));
  return fillFrame (frame, octets, length);
}

/* Behind the end of what was open nothing is in hand: what comes next belongs to others. */
void asnDecFrameInHand (ASNCODG *g, FRAME_PTR *frame)
{
  if (g->state != ASN_BETWEEN_)
    *frame = frameInHand (g);
  else
    asnRaise (&g->util, TAG_FAIL);
}

void asnDecNextFrame (ASNCODG *g, FRAME_PTR *frame)
{
  (void)asnLookTagLen (g);
  asnDecFrameInHand (g, frame);
}

void asnDecExtensionmarker (ASNCODG *g, EXTENSIONMARKER *value)
{
  FRAME_PTR frame;
  if (asnFailed (g))
    return;
  if (g->state == ASN_BETWEEN_) { /* only what is in hand can be an unknown component */
    asnRaise (&g->util, TAG_FAIL);
    return;
  }
  frame = frameInHand (g);
  if (!frame)
    return;
  if (value->last)
    value->last->next = frame;
  else
    value->first = frame;
  value->last = frame;
  value->n++;
}
