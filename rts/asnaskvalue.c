/* Asking for object identifiers, times, frames and EXTERNAL. */

#include "asntest.h"

/* --- object identifiers --- */

static BOOLE readDecimalArc (const char *p, ASN_ARC *arc)
{
  const ASN_ARC most = (ASN_ARC)0 - 1;
  ASN_ARC number = 0;
  for (; *p; p++) {
    const ASN_ARC digit = (ASN_ARC)(*p - '0');
    if (*p < '0' || *p > '9' || number > (most - digit) / 10)
      return FALSE;
    number = number * 10 + digit;
  }
  *arc = number;
  return TRUE;
}

/* { 1 2 840 } */
static int readArcs (ASNTSTG *g, OBJECTIDENTIFIER *value)
{
  value->n = 0;
  if (asnPeekWord (g) != ASN_OPEN_)
    return INPUT_FAIL;
  asnTakeWord (g);
  while (asnPeekWord (g) == ASN_WORD_) {
    if (value->n == MAX_ASN_OBJID_ARCS)
      return AM_FAIL;
    if (!readDecimalArc (g->text, &value->arc[value->n]))
      return INPUT_FAIL;
    value->n++;
    asnTakeWord (g);
  }
  if (g->word != ASN_CLOSE_)
    return INPUT_FAIL;
  return value->n < 2 || value->arc[0] > 2 || (value->arc[0] < 2 && value->arc[1] >= 40)
           ? VALUE_FAIL
           : ASN_OK;
}

void asnAskObjectIdentifier (ASNTSTG *g, OBJECTIDENTIFIER *value)
{
  int error;
  do {
    error = readArcs (g, value);
    if (error == ASN_OK) {
      asnTakeWord (g);
      return;
    }
    value->n = 0;
  } while (asnRefuseWord (g, error));
}

/* --- times --- */

/* A moment in the characters of its encoding, whose word stays in hand. */
static BOOLE askTime (ASNTSTG *g, int isUtc, size_t most, DATETIMEZ *moment)
{
  int error;
  do {
    error = INPUT_FAIL;
    if (asnPeekWord (g) != ASN_STRING_)
      continue;
    if (g->length <= most && asnTimeFromText (g->text, g->length, isUtc, moment))
      return TRUE;
    error = VALUE_FAIL;
  } while (asnRefuseWord (g, error));
  return FALSE;
}

void asnAskDateTime (ASNTSTG *g, DATETIMEZ *value, int isUtc)
{
  DATETIMEZ moment;
  memset (&moment, 0, sizeof moment);
  if (askTime (g, isUtc, ASN_TIME_TEXT, &moment)) {
    *value = moment;
    asnTakeWord (g);
  }
}

void asnAskCommonTime (ASNTSTG *g, COMMONTIME *value, int isUtc)
{
  DATETIMEZ moment;
  if (!askTime (g, isUtc, sizeof value->st - 1, &moment))
    return;
  memcpy (value->st, g->text, g->length + 1);
  value->n = (uint8)g->length;
  asnTakeWord (g);
}

/* --- frames --- */

FRAME_PTR asnFrameFromDigits (ASNTSTG *g)
{
  size_t length = g->length / 2;
  FRAME_PTR frame;
  if (g->length % 2 != 0)
    return NULL;
  frame = (FRAME_PTR)asnTake (&g->util, sizeof *frame + length);
  frame->next = NULL;
  frame->length = (uint32)length;
  frame->octets = (BYTE_TYPE *)(frame + 1);
  asnOctetsFromDigits (g, frame->octets);
  if (!asnIsOneEncoding (frame->octets, length))
    return NULL;
  asnTakeWord (g);
  return frame;
}

/* A frame has no components, whatever level its type has opened. */
static void closeLevel (ASNTSTG *g)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (!level || g->hasName)
    return;
  if (level->opened)
    asnRaise (&g->util, INPUT_FAIL);
  else if (level->form <= ASN_LIST_)
    asnPopLevel (g);
  else
    level->begun++;
}

void asnAskFrame (ASNTSTG *g, FRAME_PTR *frame)
{
  int error;
  *frame = NULL;
  if (asnTestFailed (g))
    return;
  do {
    error = INPUT_FAIL;
    if (asnPeekWord (g) != ASN_HEX_DIGITS_)
      continue;
    error = VALUE_FAIL;
    *frame = asnFrameFromDigits (g);
  } while (!*frame && asnRefuseWord (g, error));
  if (*frame)
    closeLevel (g);
}

/* --- EXTERNAL --- */

static void askOctets (ASNTSTG *g, uint32 kind, DYNSTR *string)
{
  asnAskDynString (g, ASN_HOW_ (kind, sizeof string->n, string), &string->n, &string->st, 0,
                   MAXLONG);
}

static BOOLE isNext (ASNTSTG *g, const char *name, int status, int mainType)
{
  return asnAskBegComp (g, name, status, mainType) != 0;
}

void asnAskExternal1990 (ASNTSTG *g, EXTERNAL_1990 *value)
{
  memset (value, 0, sizeof *value);
  asnAskLevel (g);
  if (isNext (g, "direct-reference", TCS_OPTIONAL, TYP_OBJID)) {
    value->compmask |= ASN_HAS_DIRECT;
    asnAskObjectIdentifier (g, &value->directReference);
  }
  if (isNext (g, "indirect-reference", TCS_OPTIONAL, TYP_INTEGER)) {
    value->compmask |= ASN_HAS_INDIRECT;
    asnAskSint32 (g, &value->indirectReference, INT32_MIN, INT32_MAX);
  }
  if (isNext (g, "data-value-descriptor", TCS_OPTIONAL, TYP_OBJDESCR)) {
    value->compmask |= ASN_HAS_DESCRIPTOR;
    askOctets (g, ASN_GRAPHIC_, &value->dataValueDescriptor);
  }
  if (isNext (g, "encoding", TCS_MANDATORY, TYP_CHOICE)) {
    if (isNext (g, "single-ASN1-type", TCS_CHOICE, TYP_OCTSTR)) {
      asnAskFrame (g, &value->i1.singleAsn1Type);
    } else if (isNext (g, "octet-aligned", TCS_CHOICE, TYP_OCTSTR)) {
      value->choice = 1;
      askOctets (g, ASN_OCTET_, &value->i1.octetAligned);
    } else if (isNext (g, "arbitrary", TCS_CHOICE, TYP_BITSTR)) {
      value->choice = 2;
      askOctets (g, ASN_BIT_, &value->i1.arbitrary);
    }
    asnAskEndAnyChoiceComp (g);
  }
  asnAskEndComp (g);
}

static void askIdentification (ASNTSTG *g, EXTERNAL_IDENTIFICATION *value)
{
  if (isNext (g, "syntax", TCS_CHOICE, TYP_OBJID)) {
    value->choice = 1;
    asnAskObjectIdentifier (g, &value->abstractSyntax);
  } else if (isNext (g, "presentation-context-id", TCS_CHOICE, TYP_INTEGER)) {
    value->choice = 2;
    asnAskSint32 (g, &value->presentationContextId, INT32_MIN, INT32_MAX);
  } else if (isNext (g, "context-negotiation", TCS_CHOICE, TYP_SEQ)) {
    value->choice = 3;
    if (isNext (g, "presentation-context-id", TCS_MANDATORY, TYP_INTEGER))
      asnAskSint32 (g, &value->presentationContextId, INT32_MIN, INT32_MAX);
    if (isNext (g, "transfer-syntax", TCS_MANDATORY, TYP_OBJID))
      asnAskObjectIdentifier (g, &value->transferSyntax);
    asnAskEndComp (g);
  }
  asnAskEndAnyChoiceComp (g);
}

/* The data value as the encoding of one type, as octets or as bits. */
static void askDataValue (ASNTSTG *g, EXTERNAL_1994 *value)
{
  if (isNext (g, "single-ASN1-type", TCS_CHOICE, TYP_OCTSTR)) {
    FRAME_PTR frame;
    asnAskFrame (g, &frame);
    if (frame) {
      value->dataValue.n = frame->length;
      value->dataValue.st = frame->octets;
    }
  } else if (isNext (g, "octet-aligned", TCS_CHOICE, TYP_OCTSTR)) {
    value->encoding = 1;
    askOctets (g, ASN_OCTET_, &value->dataValue);
  } else if (isNext (g, "arbitrary", TCS_CHOICE, TYP_BITSTR)) {
    value->encoding = 2;
    askOctets (g, ASN_BIT_, &value->dataValue);
  }
  asnAskEndAnyChoiceComp (g);
}

void asnAskExternal1994 (ASNTSTG *g, EXTERNAL_1994 *value)
{
  memset (value, 0, sizeof *value);
  asnAskLevel (g);
  if (isNext (g, "identification", TCS_MANDATORY, TYP_CHOICE))
    askIdentification (g, &value->identification);
  if (isNext (g, "data-value-descriptor", TCS_OPTIONAL, TYP_OBJDESCR)) {
    value->compmask |= ASN_HAS_DESCRIPTOR_1994;
    askOctets (g, ASN_GRAPHIC_, &value->dataValueDescriptor);
  }
  if (isNext (g, "data-value", TCS_MANDATORY, TYP_CHOICE))
    askDataValue (g, value);
  asnAskEndComp (g);
}
