/* Names of tags and types, for people. */

#include "asntoolint.h"

static const char *const kindNames[] = {
  "BOOLEAN", "INTEGER", "ENUMERATED", "REAL", "BIT STRING", "OCTET STRING", "NULL", "SEQUENCE",
  "SEQUENCE OF", "SET", "SET OF", "CHOICE", "ANY", "EMBEDDED PDV", "OBJECT IDENTIFIER",
  "NumericString", "PrintableString", "TeletexString", "VideotexString", "VisibleString",
  "IA5String", "GraphicString", "GeneralString", "BMPString", "UniversalString", "CHARACTER STRING",
  "GeneralizedTime", "UTCTime", "EXTERNAL", "EXTERNAL", "ObjectDescriptor", "INSTANCE OF",
};

const char *asnKindName (int kind)
{
  if (kind >= 0 && kind < (int)(sizeof kindNames / sizeof *kindNames))
    return kindNames[kind];
  return kind == ASNTOOL_UTF8 ? "UTF8String" : kind == ASNTOOL_RELATIVE_OID ? "RELATIVE-OID" : "open type";
}

static const char *const universalNames[] = {
  "end-of-contents", "BOOLEAN", "INTEGER", "BIT STRING", "OCTET STRING", "NULL", "OBJECT IDENTIFIER",
  "ObjectDescriptor", "EXTERNAL", "REAL", "ENUMERATED", "EMBEDDED PDV", "UTF8String", "RELATIVE-OID",
  "TIME", "[UNIVERSAL 15]", "SEQUENCE", "SET", "NumericString", "PrintableString", "TeletexString",
  "VideotexString", "IA5String", "UTCTime", "GeneralizedTime", "GraphicString", "VisibleString",
  "GeneralString", "UniversalString", "CHARACTER STRING", "BMPString", "DATE", "TIME-OF-DAY",
  "DATE-TIME", "DURATION", "OID-IRI", "RELATIVE-OID-IRI",
};

void asnAddTag (ASN_GROWING *to, uint32 tag)
{
  static const char *const classes[] = { "UNIVERSAL ", "APPLICATION ", "", "PRIVATE " };
  const uint32 number = tag & ASN_NUMBER_BITS;
  if (tag >> 30 == 0 && number < sizeof universalNames / sizeof *universalNames) {
    asnAddText (to, universalNames[number]);
    return;
  }
  asnAddChar (to, '[');
  asnAddText (to, classes[tag >> 30]);
  asnAddNumber (to, number);
  asnAddChar (to, ']');
}

static void addBound (ASN_GROWING *to, sint64 bound, sint64 none, const char *word)
{
  if (bound == none)
    asnAddText (to, word);
  else
    asnAddNumber (to, bound);
}

static void addRange (ASN_GROWING *to, const ASNTOOLPLACE *place)
{
  const BOOLE isNumber = place->type->kind == TYP_INTEGER;
  const sint64 low = !isNumber && place->low < 0 ? 0 : place->low;
  if (place->low > place->high || (low <= (isNumber ? MINLONG : 0) && place->high == MAXLONG))
    return;
  asnAddText (to, isNumber ? " (" : " (SIZE (");
  addBound (to, low, MINLONG, "MIN");
  if (low != place->high) {
    asnAddText (to, "..");
    addBound (to, place->high, MAXLONG, "MAX");
  }
  asnAddText (to, isNumber ? ")" : "))");
}

/* " { red, green }" */
static void addItems (ASN_GROWING *to, const ASNTOOLTYPE *type)
{
  enum { MOST = 12 };
  for (uint32 i = 0; i < type->nrOfNames && i <= MOST; i++) {
    asnAddText (to, i == 0 ? " { " : ", ");
    asnAddText (to, i < MOST ? type->names[i].name : "...");
  }
  asnAddText (to, type->nrOfNames > 0 ? " }" : "");
}

static BOOLE hasComponents (int kind)
{
  return kind == TYP_SEQ || kind == TYP_SET || kind == TYP_CHOICE;
}

void asnAddPlace (ASN_GROWING *to, const ASNTOOLPLACE *place)
{
  const ASNTOOLTYPE *type = place->type;
  const uint32 tag = *place->tags;
  if (tag >> 30 != 0 || (tag && place->status == TCS_HEADER)) {
    asnAddTag (to, tag);
    asnAddChar (to, ' ');
  }
  asnAddText (to, place->name ? place->name : "");
  if (place->status != TCS_HEADER) {
    asnAddText (to, place->name ? ": " : "");
    asnAddText (to, type->name && hasComponents (type->kind) ? type->name : asnKindName (type->kind));
  }
  addRange (to, place);
  asnAddText (to, place->rules ? place->rules : "");
  if (type->kind == TYP_ENUM)
    addItems (to, type);
}

const char *asnNameFor (const ASNTOOLTYPE *type, sint64 number)
{
  for (uint32 i = 0; i < type->nrOfNames; i++)
    if (type->names[i].number == number)
      return type->names[i].name;
  return NULL;
}

/* --- EXTERNAL --- */

const ASNTOOLTYPE *asnComponents (const ASNTOOLTYPE *type)
{
  static const uint32 none[] = { 0 }, identifier[] = { 6, 0 }, integer[] = { 2, 0 }, descriptor[] = { 7, 0 },
                      zero[] = { TAG_CTX, 0 }, one[] = { TAG_CTX | 1, 0 }, two[] = { TAG_CTX | 2, 0 };
  static const ASNTOOLTYPE identifiers = { NULL, TYP_OBJID, NULL, 0, NULL, 0 },
                           integers = { NULL, TYP_INTEGER, NULL, 0, NULL, 0 },
                           descriptors = { NULL, TYP_OBJDESCR, NULL, 0, NULL, 0 },
                           anything = { NULL, TYP_ANY, NULL, 0, NULL, 0 },
                           octets = { NULL, TYP_OCTSTR, NULL, 0, NULL, 0 },
                           bits = { NULL, TYP_BITSTR, NULL, 0, NULL, 0 };
  static const ASNTOOLPLACE alternatives[] = {
    { "single-ASN1-type", &anything, zero, MINLONG, MAXLONG, NULL, TCS_CHOICE, 0 },
    { "octet-aligned", &octets, one, MINLONG, MAXLONG, NULL, TCS_CHOICE, 0 },
    { "arbitrary", &bits, two, MINLONG, MAXLONG, NULL, TCS_CHOICE, 0 },
  };
  static const ASNTOOLTYPE encodings = { NULL, TYP_CHOICE, alternatives, 3, NULL, 0 };
  static const ASNTOOLPLACE components[] = {
    { "direct-reference", &identifiers, identifier, MINLONG, MAXLONG, NULL, TCS_OPTIONAL, 0 },
    { "indirect-reference", &integers, integer, MINLONG, MAXLONG, NULL, TCS_OPTIONAL, 0 },
    { "data-value-descriptor", &descriptors, descriptor, MINLONG, MAXLONG, NULL, TCS_OPTIONAL, 0 },
    { "encoding", &encodings, none, MINLONG, MAXLONG, NULL, TCS_MANDATORY, 0 },
  };
  static const ASNTOOLTYPE external = { "EXTERNAL", TYP_EXTERNAL, components, 4, NULL, 0 };
  return type->kind == TYP_EXTERNAL || type->kind == TYP_EXTERNAL_1994 ? &external : type;
}
