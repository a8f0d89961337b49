/* Contents of values without parts, from JSON. */

#include "asntoolbuild.h"

/* The text of a string without its escapes is the builder's. */
static BOOLE takeText (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  asnEmpty (&b->text);
  if (node->kind != JSON_STRING)
    return FALSE;
  asnAdd (&b->text, "", 0); /* so that there is a text */
  return asnUnescape (&b->text, node) && !b->text.failed;
}

BOOLE asnTakeHexNode (ASN_GROWING *to, const ASN_JSON_NODE *node)
{
  return node->kind == JSON_STRING && asnAddFromHex (to, node->text, node->length);
}

static BOOLE isNamed (const ASN_JSON_NODE *node, const char *name)
{
  return node->nameLength == strlen (name) && memcmp (node->name, name, node->nameLength) == 0;
}

/* --- numbers --- */

static BOOLE numberOfName (const ASNTOOLTYPE *type, const ASN_GROWING *name, sint64 *number)
{
  for (uint32 i = 0; i < type->nrOfNames; i++)
    if (strcmp (type->names[i].name, name->text) == 0) {
      *number = type->names[i].number;
      return TRUE;
    }
  return FALSE;
}

/* { "octets": "FF" } stands for contents that have no other form. */
static BOOLE buildOctets (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  const ASN_JSON_NODE *member = &b->doc->nodes[node->first];
  return node->first && node->first == node->last && isNamed (member, "octets") && asnTakeHexNode (&b->octets, member);
}

/* Digits, or a name that the type gives a number. */
static BOOLE buildInteger (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node)
{
  sint64 number;
  if (node->kind == JSON_NUMBER)
    return asnAddInteger (&b->octets, node->text, node->length);
  if (node->kind == JSON_OBJECT)
    return buildOctets (b, node);
  if (!takeText (b, node))
    return FALSE;
  if (numberOfName (type, &b->text, &number)) {
    asnEmpty (&b->text);
    asnAddNumber (&b->text, number);
  }
  return !b->text.failed && asnAddInteger (&b->octets, b->text.text, b->text.length);
}

/* The digits are the contents of a decimal encoding, which is read as any other. */
static BOOLE buildReal (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  static const struct {
    const char *text;
    BYTE_TYPE octet;
  } words[] = { { "PLUS-INFINITY", 0x40 }, { "MINUS-INFINITY", 0x41 }, { "NOT-A-NUMBER", 0x42 } };
  REAL64 value;
  uint32 used, length;
  if (node->kind != JSON_NUMBER) {
    for (size_t i = 0; takeText (b, node) && i < sizeof words / sizeof *words; i++)
      if (strcmp (b->text.text, words[i].text) == 0) {
        asnAdd (&b->octets, &words[i].octet, 1);
        return TRUE;
      }
    return FALSE;
  }
  asnEmpty (&b->text);
  asnAddText (&b->text, "\x03");
  asnAdd (&b->text, node->text, node->length);
  if (b->text.failed ||
      asnRealFromContents ((const BYTE_TYPE *)b->text.text, (uint32)b->text.length, &value) != ASN_OK)
    return FALSE;
  used = asnUsed (&b->g);
  asnPutReal (&b->g, (REAL128)value, BIN_ENC, 0);
  length = asnUsed (&b->g) - used;
  if (length > 0) { /* zero has no contents, and there may be no buffer yet */
    asnAdd (&b->octets, b->g.front, length);
    b->g.front += length;
  }
  return TRUE;
}

/* --- bits --- */

/* { "value": "F8", "length": 5 } */
static BOOLE buildCountedBits (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  const ASN_JSON_NODE *first = &b->doc->nodes[node->first], *second = &b->doc->nodes[node->last];
  const ASN_JSON_NODE *value = isNamed (first, "value") ? first : second;
  const ASN_JSON_NODE *count = value == first ? second : first;
  ASN_GROWING octets = { NULL, 0, 0, FALSE };
  uint32 bits = 0;
  BOOLE good = node->first && node->first != node->last && first->next == node->last && isNamed (value, "value") &&
               isNamed (count, "length") && count->kind == JSON_NUMBER && count->length < 10 &&
               asnTakeHexNode (&octets, value);
  for (uint32 i = 0; good && i < count->length; i++) {
    good = count->text[i] >= '0' && count->text[i] <= '9';
    bits = 10 * bits + (uint32)(count->text[i] - '0');
  }
  good = good && (bits + 7) / 8 == octets.length;
  if (good) {
    const BYTE_TYPE unused = (BYTE_TYPE)(8 * octets.length - bits);
    if (unused)
      octets.text[octets.length - 1] = (char)(octets.text[octets.length - 1] & ~((1 << unused) - 1));
    asnAdd (&b->octets, &unused, 1);
    asnAdd (&b->octets, octets.text, octets.length);
  }
  asnDrop (&octets);
  return good;
}

static BOOLE bitOfNode (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node, sint64 *bit)
{
  enum { LAST_BIT = 1000000 };
  if (node->kind == JSON_STRING)
    return takeText (b, node) && numberOfName (type, &b->text, bit) && *bit >= 0 && *bit <= LAST_BIT;
  *bit = 0;
  for (uint32 i = 0; i < node->length; i++) {
    if (node->text[i] < '0' || node->text[i] > '9' || *bit > LAST_BIT)
      return FALSE;
    *bit = 10 * *bit + (node->text[i] - '0');
  }
  return node->kind == JSON_NUMBER && *bit <= LAST_BIT;
}

/* [ "read", "own", 7 ] */
static BOOLE buildNamedBits (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node)
{
  static const char zero = 0;
  sint64 bit, last = -1;
  asnAdd (&b->octets, &zero, 1);
  for (uint32 i = node->first; i; i = b->doc->nodes[i].next) {
    if (!bitOfNode (b, type, &b->doc->nodes[i], &bit))
      return FALSE;
    while ((sint64)b->octets.length - 1 <= bit / 8 && !b->octets.failed)
      asnAdd (&b->octets, &zero, 1);
    if (b->octets.failed)
      return FALSE;
    b->octets.text[1 + bit / 8] = (char)(b->octets.text[1 + bit / 8] | 0x80 >> bit % 8);
    last = bit > last ? bit : last;
  }
  if (!b->octets.failed)
    b->octets.text[0] = (char)(7 - (last + 8) % 8);
  return !b->octets.failed;
}

static BOOLE buildBits (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node)
{
  if (node->kind == JSON_LIST)
    return buildNamedBits (b, type, node);
  if (node->kind == JSON_OBJECT)
    return buildCountedBits (b, node);
  asnAdd (&b->octets, "", 1);
  return asnTakeHexNode (&b->octets, node);
}

/* --- identifiers --- */

/* octets += more, from the last one on; a carry out of the first one is lost. */
static void addTo (BYTE_TYPE *octets, size_t length, uint32 more)
{
  while (length-- > 0) {
    more += octets[length];
    octets[length] = (BYTE_TYPE)more;
    more >>= 8;
  }
}

static BOOLE addArc (ASN_GROWING *to, const char *digits, size_t length, uint32 more)
{
  enum { MOST_DIGITS = 60 };
  ASN_GROWING octets = { NULL, 0, 0, FALSE };
  const BYTE_TYPE *p;
  size_t groups;
  asnAdd (&octets, "", 1); /* for the carry */
  if (length == 0 || length > MOST_DIGITS || *digits == '-' || !asnAddInteger (&octets, digits, length) ||
      octets.failed) {
    asnDrop (&octets);
    return FALSE;
  }
  p = (const BYTE_TYPE *)octets.text;
  addTo ((BYTE_TYPE *)octets.text, octets.length, more);
  groups = (8 * octets.length + 6) / 7;
  for (BOOLE begun = FALSE; groups-- > 0;) {
    const size_t bit = 7 * groups, octet = octets.length - 1 - bit / 8;
    uint32 seven = (uint32)p[octet] >> bit % 8;
    if (octet > 0)
      seven |= (uint32)p[octet - 1] << (8 - bit % 8);
    seven &= 0x7F;
    begun = begun || seven != 0 || groups == 0;
    if (begun)
      asnAddChar (to, (char)(seven | (groups > 0 ? 0x80 : 0)));
  }
  asnDrop (&octets);
  return TRUE;
}

static BOOLE buildIdentifier (ASN_BUILDER *b, const ASN_JSON_NODE *node, BOOLE isRelative)
{
  const char *p;
  uint32 root = 0;
  if (!takeText (b, node) || b->text.length == 0)
    return FALSE;
  p = b->text.text;
  if (!isRelative) {
    if (*p < '0' || *p > '2' || p[1] != '.')
      return FALSE;
    root = (uint32)(*p - '0');
    p += 2;
    if (root < 2 && strcspn (p, ".") > (*p < '4' ? 2u : 1u))
      return FALSE;
  }
  for (BOOLE first = TRUE;; first = FALSE) {
    const size_t length = strcspn (p, ".");
    if (!addArc (&b->octets, p, length, first ? 40 * root : 0))
      return FALSE;
    if (!p[length])
      return TRUE;
    p += length + 1;
  }
}

/* --- strings --- */

/* Characters of so many octets each. */
static BOOLE buildWide (ASN_BUILDER *b, const ASN_JSON_NODE *node, uint32 width)
{
  const uint32 most = width == 1 ? 0xFF : 0x10FFFF;
  const BYTE_TYPE *p, *end;
  if (!takeText (b, node))
    return FALSE;
  p = (const BYTE_TYPE *)b->text.text;
  for (end = p + b->text.length; p < end;) {
    uint32 character;
    (void)asnTakeCharacter (&p, end, &character);
    if (character > most)
      return FALSE;
    if (width == 2 && character >= 0x10000) {
      const uint32 high = 0xD800 + ((character - 0x10000) >> 10);
      asnAddChar (&b->octets, (char)(high >> 8));
      asnAddChar (&b->octets, (char)high);
      character = 0xDC00 + ((character - 0x10000) & 0x3FF);
    }
    for (uint32 i = width; i-- > 0;)
      asnAddChar (&b->octets, (char)(character >> 8 * i));
  }
  return TRUE;
}

static BOOLE buildUtf8 (ASN_BUILDER *b, const ASN_JSON_NODE *node)
{
  if (node->kind == JSON_OBJECT)
    return buildOctets (b, node);
  return node->kind == JSON_STRING && asnUnescape (&b->octets, node);
}

/* --- any kind --- */

BOOLE asnBuildLeaf (ASN_BUILDER *b, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node)
{
  asnEmpty (&b->octets);
  switch (type->kind) {
  case TYP_BOOLEAN:
    asnAdd (&b->octets, node->kind == JSON_TRUE ? "\xFF" : "", 1);
    return node->kind == JSON_TRUE || node->kind == JSON_FALSE;
  case TYP_NULL:
    return node->kind == JSON_NULL;
  case TYP_INTEGER:
  case TYP_ENUM:
    return buildInteger (b, type, node);
  case TYP_REAL:
    return buildReal (b, node);
  case TYP_BITSTR:
    return buildBits (b, type, node);
  case TYP_OCTSTR:
    return asnTakeHexNode (&b->octets, node);
  case TYP_OBJID:
  case ASNTOOL_RELATIVE_OID:
    return buildIdentifier (b, node, type->kind == ASNTOOL_RELATIVE_OID);
  case ASNTOOL_UTF8:
    return buildUtf8 (b, node);
  case TYP_BMPSTR:
    return buildWide (b, node, 2);
  case TYP_UNISTR:
    return buildWide (b, node, 4);
  default:
    return buildWide (b, node, 1);
  }
}
