/* EXTERNAL, whose encoding is that of 1990 in both forms. */

#include "asnint.h"

/* How the data value is held; the numbers are those of the context tags. */
enum { SINGLE_TYPE, OCTET_ALIGNED, ARBITRARY };
/* The ways of naming syntaxes that an EXTERNAL can have. */
enum { BY_SYNTAX = 1, BY_CONTEXT = 2, BY_NEGOTIATION = 3 };

#define CONTEXT(number) (TAG_CTX | (number))

static void encodeString (ASNCODG *g, uint32 tag, uint32 kind, const DYNSTR *string)
{
  asnEncString (g, tag, ASN_HOW_ (kind, sizeof string->n, string), string->n, string->st, NULL, 0);
}

static void encodeDataValue (ASNCODG *g, const EXTERNAL_1990 *value)
{
  uint32 used = asnUsed (g);
  switch (value->choice) {
  case SINGLE_TYPE:
    asnEncFrame0 (g, &value->i1.singleAsn1Type);
    asnPutHeader (g, CONTEXT (SINGLE_TYPE) | ASN_FORM_BIT, used);
    break;
  case OCTET_ALIGNED:
    encodeString (g, CONTEXT (OCTET_ALIGNED), ASN_OCTET_, &value->i1.octetAligned);
    break;
  case ARBITRARY:
    encodeString (g, CONTEXT (ARBITRARY), ASN_BIT_, &value->i1.arbitrary);
    break;
  default:
    asnRaise (&g->util, VALUE_FAIL);
    break;
  }
}

void asnEncExternal1990 (ASNCODG *g, uint32 tag, const EXTERNAL_1990 *value)
{
  uint32 used = asnUsed (g);
  encodeDataValue (g, value);
  if (value->compmask & ASN_HAS_DESCRIPTOR)
    encodeString (g, ASN_TAG_OBJECT_DESCRIPTOR, ASN_GRAPHIC_, &value->dataValueDescriptor);
  if (value->compmask & ASN_HAS_INDIRECT)
    asnEncInteger (g, ASN_TAG_INTEGER, value->indirectReference);
  if (value->compmask & ASN_HAS_DIRECT)
    asnEncObjectIdentifier (g, ASN_TAG_OBJECT_IDENTIFIER, &value->directReference);
  asnPutHeader (g, tag | ASN_FORM_BIT, used);
}

void asnEncExternal1994 (ASNCODG *g, uint32 tag, const EXTERNAL_1994 *value)
{
  EXTERNAL_1990 old;
  ASN_FRAME frame = { NULL, 0, NULL };
  memset (&old, 0, sizeof old);
  switch (value->identification.choice) {
  case BY_SYNTAX:
    old.compmask = ASN_HAS_DIRECT;
    old.directReference = value->identification.abstractSyntax;
    break;
  case BY_CONTEXT:
    old.compmask = ASN_HAS_INDIRECT;
    break;
  case BY_NEGOTIATION:
    old.compmask = ASN_HAS_DIRECT | ASN_HAS_INDIRECT;
    old.directReference = value->identification.transferSyntax;
    break;
  default:
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  old.indirectReference = value->identification.presentationContextId;
  if (value->compmask & ASN_HAS_DESCRIPTOR_1994) {
    old.compmask |= ASN_HAS_DESCRIPTOR;
    old.dataValueDescriptor = value->dataValueDescriptor;
  }
  old.choice = value->encoding;
  if (old.choice == SINGLE_TYPE) {
    frame.length = value->dataValue.n;
    frame.octets = value->dataValue.st;
    old.i1.singleAsn1Type = &frame;
  } else {
    old.i1.octetAligned = value->dataValue;
  }
  asnEncExternal1990 (g, tag, &old);
}

/* --- decoding --- */

static void decodeString (ASNCODG *g, uint32 kind, DYNSTR *string)
{
  asnDecDynString (g, ASN_HOW_ (kind, sizeof string->n, string), &string->n, &string->st, 0,
                   MAXLONG);
}

/* The optional components; returns the tag of the data value. */
static uint32 decodeReferences (ASNCODG *g, EXTERNAL_1990 *value)
{
  uint32 tag = asnLookTagLen (g);
  if (tag == ASN_TAG_OBJECT_IDENTIFIER) {
    asnDecObjectIdentifier (g, &value->directReference);
    value->compmask |= ASN_HAS_DIRECT;
    tag = asnLookTagLen (g);
  }
  if (tag == ASN_TAG_INTEGER) {
    asnDecSint32 (g, &value->indirectReference, MINLONG, MAXLONG);
    value->compmask |= ASN_HAS_INDIRECT;
    tag = asnLookTagLen (g);
  }
  if (tag == ASN_TAG_OBJECT_DESCRIPTOR) {
    decodeString (g, ASN_GRAPHIC_, &value->dataValueDescriptor);
    value->compmask |= ASN_HAS_DESCRIPTOR;
    tag = asnLookTagLen (g);
  }
  return tag;
}

void asnDecExternal1990 (ASNCODG *g, EXTERNAL_1990 *value)
{
  EXTERNAL_1990 read;
  uint32 tag;
  memset (&read, 0, sizeof read);
  if (g->state != ASN_CONSTRUCTED_) {
    asnRaise (&g->util, FORM_FAIL);
    return;
  }
  tag = decodeReferences (g, &read);
  if (tag == CONTEXT (SINGLE_TYPE)) {
    asnDecNextFrame (g, &read.i1.singleAsn1Type);
    asnDecEOC (g);
  } else if (tag == CONTEXT (OCTET_ALIGNED)) {
    decodeString (g, ASN_OCTET_, &read.i1.octetAligned);
  } else if (tag == CONTEXT (ARBITRARY)) {
    decodeString (g, ASN_BIT_, &read.i1.arbitrary);
  } else {
    asnRaise (&g->util, TAG_FAIL);
  }
  asnDecEOC (g);
  if (asnFailed (g))
    return;
  read.choice = (sint8)(tag & ASN_NUMBER_BITS);
  *value = read;
}

void asnDecExternal1994 (ASNCODG *g, EXTERNAL_1994 *value)
{
  EXTERNAL_1990 old;
  EXTERNAL_1994 read;
  asnDecExternal1990 (g, &old);
  if (asnFailed (g))
    return;
  memset (&read, 0, sizeof read);
  switch (old.compmask & (ASN_HAS_DIRECT | ASN_HAS_INDIRECT)) {
  case ASN_HAS_DIRECT:
    read.identification.choice = BY_SYNTAX;
    read.identification.abstractSyntax = old.directReference;
    break;
  case ASN_HAS_INDIRECT:
    read.identification.choice = BY_CONTEXT;
    break;
  case ASN_HAS_DIRECT | ASN_HAS_INDIRECT:
    read.identification.choice = BY_NEGOTIATION;
    read.identification.transferSyntax = old.directReference;
    break;
  default:
    asnRaise (&g->util, VALUE_FAIL);
    return;
  }
  read.identification.presentationContextId = old.indirectReference;
  if (old.compmask & ASN_HAS_DESCRIPTOR) {
    read.compmask = ASN_HAS_DESCRIPTOR_1994;
    read.dataValueDescriptor = old.dataValueDescriptor;
  }
  read.encoding = old.choice;
  if (old.choice == SINGLE_TYPE) {
    read.dataValue.n = old.i1.singleAsn1Type->length;
    read.dataValue.st = old.i1.singleAsn1Type->octets;
  } else {
    read.dataValue = old.i1.octetAligned;
  }
  *value = read;
}
