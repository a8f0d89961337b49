/* Printing of object identifiers, times, frames, extension markers and EXTERNAL. */

#include "asntest.h"

static void printArc (ASNTSTG *g, ASN_ARC arc)
{
  char text[40], *p = text + sizeof text - 1;
  *p = 0;
  do
    *--p = (char)('0' + (int)(arc % 10));
  while ((arc /= 10) > 0);
  fputs (p, g->out);
}

/* { 1 2 840 } */
void asnPriObjectIdentifier (ASNTSTG *g, const char *name, const OBJECTIDENTIFIER *value)
{
  if (!asnPriBegin (g, name))
    return;
  if (value->n > MAX_ASN_OBJID_ARCS) {
    asnPriNothing (g);
  } else {
    fputs ("{ ", g->out);
    for (uint32 i = 0; i < value->n; i++) {
      printArc (g, value->arc[i]);
      fputc (' ', g->out);
    }
    fputc ('}', g->out);
  }
  asnPriEnd (g);
}

/* --- times --- */

void asnPriDateTime (ASNTSTG *g, const char *name, const DATETIMEZ *value, int isUtc)
{
  char text[ASN_TIME_TEXT];
  if (!asnPriBegin (g, name))
    return;
  if (asnTextFromTime (value, isUtc, text) > 0)
    fprintf (g->out, "\"%s\"", text);
  else
    asnPriNothing (g);
  asnPriEnd (g);
}

void asnPriCommonTime (ASNTSTG *g, const char *name, const COMMONTIME *value)
{
  asnPriString (g, name, ASN_HOW_ (ASN_VISIBLE_, sizeof value->n, value), value->n, value->st,
                &value->st, sizeof value->st);
}

/* --- frames --- */

static void printFrame (ASNTSTG *g, const ASN_FRAME *frame)
{
  if (!frame || (frame->length > 0 && !frame->octets))
    asnPriNothing (g);
  else
    asnPriDigits (g, frame->octets, frame->length);
}

/* A frame has no components, whatever level its type has opened. */
void asnPriFrame (ASNTSTG *g, const FRAME_PTR *frame)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (level && level->begun == 0)
    level->form = ASN_OTHER_;
  if (!asnPriBegin (g, NULL))
    return;
  printFrame (g, *frame);
  asnPriEnd (g);
}

/* ...: { '800105'H '8201FF'H } */
void asnPriExtensionmarker (ASNTSTG *g, const EXTENSIONMARKER *value)
{
  if (!asnPriBegin (g, "..."))
    return;
  fputs ("{ ", g->out);
  for (const ASN_FRAME *frame = value->first; frame; frame = frame->next) {
    printFrame (g, frame);
    fputc (' ', g->out);
  }
  fputc ('}', g->out);
  asnPriEnd (g);
}

/* --- EXTERNAL --- */

static void printOctets (ASNTSTG *g, const char *name, uint32 kind, const DYNSTR *string)
{
  asnPriString (g, name, ASN_HOW_ (kind, sizeof string->n, string), string->n, string->st, NULL, 0);
}


static void printSingleType (ASNTSTG *g, const ASN_FRAME *frame)
{
  if (!asnPriBegin (g, "single-ASN1-type"))
    return;
  printFrame (g, frame);
  asnPriEnd (g);
}

void asnPriExternal1990 (ASNTSTG *g, const char *name, const EXTERNAL_1990 *value)
{
  asnPriBegComp (g, name, TCS_MANDATORY, TYP_SEQ);
  if (value->compmask & ASN_HAS_DIRECT)
    asnPriObjectIdentifier (g, "direct-reference", &value->directReference);
  if (value->compmask & ASN_HAS_INDIRECT)
    asnPriInteger (g, "indirect-reference", value->indirectReference);
  if (value->compmask & ASN_HAS_DESCRIPTOR)
    printOctets (g, "data-value-descriptor", ASN_GRAPHIC_, &value->dataValueDescriptor);
  asnPriBegComp (g, "encoding", TCS_MANDATORY, TYP_CHOICE);
  if (value->choice == 0)
    printSingleType (g, value->i1.singleAsn1Type);
  else if (value->choice == 1)
    printOctets (g, "octet-aligned", ASN_OCTET_, &value->i1.octetAligned);
  else if (value->choice == 2)
    printOctets (g, "arbitrary", ASN_BIT_, &value->i1.arbitrary);
  asnPriEndComp (g);
  asnPriEndComp (g);
}

static void printIdentification (ASNTSTG *g, const EXTERNAL_IDENTIFICATION *value)
{
  switch (value->choice) {
  case 1:
    asnPriObjectIdentifier (g, "syntax", &value->abstractSyntax);
    break;
  case 2:
    asnPriInteger (g, "presentation-context-id", value->presentationContextId);
    break;
  case 3:
    asnPriBegComp (g, "context-negotiation", TCS_CHOICE, TYP_SEQ);
    asnPriInteger (g, "presentation-context-id", value->presentationContextId);
    asnPriObjectIdentifier (g, "transfer-syntax", &value->transferSyntax);
    asnPriEndComp (g);
    break;
  default:
    break; /* what an EXTERNAL cannot have */
  }
}

static void printDataValue (ASNTSTG *g, const EXTERNAL_1994 *value)
{
  if (value->encoding == 0) {
    ASN_FRAME frame = { NULL, 0, NULL };
    frame.length = value->dataValue.n;
    frame.octets = value->dataValue.st;
    printSingleType (g, &frame);
  } else if (value->encoding == 1) {
    printOctets (g, "octet-aligned", ASN_OCTET_, &value->dataValue);
  } else if (value->encoding == 2) {
    printOctets (g, "arbitrary", ASN_BIT_, &value->dataValue);
  }
}

void asnPriExternal1994 (ASNTSTG *g, const char *name, const EXTERNAL_1994 *value)
{
  asnPriBegComp (g, name, TCS_MANDATORY, TYP_SEQ);
  asnPriBegComp (g, "identification", TCS_MANDATORY, TYP_CHOICE);
  printIdentification (g, &value->identification);
  asnPriEndComp (g);
  if (value->compmask & ASN_HAS_DESCRIPTOR_1994)
    printOctets (g, "data-value-descriptor", ASN_GRAPHIC_, &value->dataValueDescriptor);
  asnPriBegComp (g, "data-value", TCS_MANDATORY, TYP_CHOICE);
  printDataValue (g, value);
  asnPriEndComp (g);
  asnPriEndComp (g);
}
