/* Values without parts as JSON. */

#include "asntoolint.h"

#include <locale.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

/* --- strings --- */

static void addEscaped (ASN_GROWING *to, uint32 character)
{
  static const char short_[] = "\"\"\\\\\bb\ff\nn\rr\tt";
  char text[16];
  for (const char *p = short_; *p; p += 2)
    if (character == (BYTE_TYPE)*p) {
      asnAddChar (to, '\\');
      asnAddChar (to, p[1]);
      return;
    }
  if (character >= ' ' && character != 0x7F && (character < 0xD800 || character > 0xDFFF)) {
    asnAddCharacter (to, character);
    return;
  }
  (void)snprintf (text, sizeof text, "\\u%04lX", (unsigned long)character);
  asnAddText (to, text);
}

void asnAddJsonString (ASN_GROWING *to, const char *text, size_t length)
{
  const BYTE_TYPE *p = (const BYTE_TYPE *)text, *end = p + length;
  asnAddChar (to, '"');
  while (p < end) {
    uint32 character;
    (void)asnTakeCharacter (&p, end, &character);
    addEscaped (to, character);
  }
  asnAddChar (to, '"');
}

static void addHexString (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length)
{
  asnAddChar (to, '"');
  asnAddHex (to, p, length);
  asnAddChar (to, '"');
}

/* Octets that are no characters of their type, or a number of too many digits: { "octets": "FF" }. */
static void addOctets (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length)
{
  asnAddText (to, "{ \"octets\": ");
  addHexString (to, p, length);
  asnAddText (to, " }");
}

static BOOLE isUtf8 (const BYTE_TYPE *p, uint32 length)
{
  const BYTE_TYPE *end = p + length;
  uint32 character;
  while (p < end)
    if (!asnTakeCharacter (&p, end, &character))
      return FALSE;
  return TRUE;
}

/* Characters of so many octets each; those of one octet are the first of Unicode. */
static int addWide (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length, uint32 width)
{
  uint32 character = 0, left = width, high = 0;
  if (length % width != 0)
    return VALUE_FAIL;
  asnAddChar (to, '"');
  for (; length > 0; length--) {
    character = character << 8 | *p++;
    if (--left > 0)
      continue;
    if (character > 0x10FFFF)
      return VALUE_FAIL;
    /* Two halves of a BMPString that belong together are one character. */
    if (high && character >= 0xDC00 && character <= 0xDFFF) {
      addEscaped (to, 0x10000 + ((high - 0xD800) << 10 | (character - 0xDC00)));
      high = 0;
    } else {
      if (high)
        addEscaped (to, high);
      high = width == 2 && character >= 0xD800 && character <= 0xDBFF ? character : 0;
      if (!high)
        addEscaped (to, character);
    }
    character = 0;
    left = width;
  }
  if (high)
    addEscaped (to, high);
  asnAddChar (to, '"');
  return ASN_OK;
}

/* --- bits --- */

static BOOLE isSet (const BYTE_TYPE *p, uint32 bit)
{
  return (p[bit / 8] >> (7 - bit % 8) & 1) != 0;
}

/* The names of the bits, where nothing else is needed to make the same bits again. */
static void addBitNames (ASN_GROWING *to, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 bits)
{
  BOOLE first = TRUE;
  asnAddChar (to, '[');
  for (uint32 bit = 0; bit < bits; bit++)
    if (isSet (p, bit)) {
      const char *name = asnNameFor (type, bit);
      asnAddText (to, first ? "" : ", ");
      if (name)
        asnAddJsonString (to, name, strlen (name));
      else
        asnAddNumber (to, bit);
      first = FALSE;
    }
  asnAddChar (to, ']');
}

static int addBits (ASN_GROWING *to, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length, uint32 unused)
{
  const uint32 bits = 8 * length - unused;
  BOOLE clean = bits == 8 * length || (p[length - 1] & ((1u << unused) - 1)) == 0;
  if (type->nrOfNames > 0 && clean && (bits == 0 || isSet (p, bits - 1))) {
    addBitNames (to, type, p, bits);
  } else if (unused == 0) {
    addHexString (to, p, length);
  } else {
    ASN_GROWING octets = { NULL, 0, 0, FALSE };
    asnAdd (&octets, p, length);
    if (octets.failed)
      return LACK_OF_MEMORY;
    octets.text[length - 1] = (char)(p[length - 1] & ~((1u << unused) - 1));
    asnAddText (to, "{ \"value\": ");
    addHexString (to, (const BYTE_TYPE *)octets.text, length);
    asnAddText (to, ", \"length\": ");
    asnAddNumber (to, bits);
    asnAddText (to, " }");
    asnDrop (&octets);
  }
  return ASN_OK;
}

/* --- numbers --- */

static sint64 smallNumber (const BYTE_TYPE *p, uint32 length)
{
  uint64 number = *p & 0x80 ? UINT64_MAX : 0;
  for (; length > 0; length--)
    number = number << 8 | *p++;
  return (sint64)number;
}

/* Numbers that a double can't hold are strings, since many programs read numbers as doubles. */
static int addInteger (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length)
{
  const sint64 limit = (sint64)1 << 53;
  const sint64 number = length > 0 && length <= 8 ? smallNumber (p, length) : MAXLONG;
  const BOOLE isLarge = number > limit || number < -limit;
  if (length == 0)
    return VALUE_FAIL;
  if (length > ASN_MOST_DECIMAL) {
    addOctets (to, p, length);
    return ASN_OK;
  }
  asnAddText (to, isLarge ? "\"" : "");
  asnAddDigits (to, p, length, TRUE);
  asnAddText (to, isLarge ? "\"" : "");
  return ASN_OK;
}

static int addItem (ASN_GROWING *to, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length)
{
  const char *name = length > 0 && length <= 8 ? asnNameFor (type, smallNumber (p, length)) : NULL;
  if (!name)
    return addInteger (to, p, length);
  asnAddJsonString (to, name, strlen (name));
  return ASN_OK;
}

static int addReal (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length)
{
  const char *point = localeconv ()->decimal_point;
  char text[40], *found;
  REAL64 value = 0;
  const int error = asnRealFromContents (p, length, &value);
  if (error)
    return error;
  if (isnan (value) || isinf (value)) {
    asnAddText (to, isnan (value) ? "\"NOT-A-NUMBER\"" : value > 0 ? "\"PLUS-INFINITY\"" : "\"MINUS-INFINITY\"");
    return ASN_OK;
  }
  for (int digits = 15; digits <= 17; digits++) {
    (void)snprintf (text, sizeof text, "%.*g", digits, value);
    if (strtod (text, NULL) == value)
      break;
  }
  found = strstr (text, point);
  if (found) {
    *found = '.';
    memmove (found + 1, found + strlen (point), strlen (found + strlen (point)) + 1);
  }
  asnAddText (to, text);
  return ASN_OK;
}

/* --- identifiers --- */

/* Takes the octets of one arc; 0 if they have no end. */
static uint32 arcLength (const BYTE_TYPE *p, uint32 length)
{
  for (uint32 n = 0; n < length; n++)
    if (!(p[n] & 0x80))
      return n + 1;
  return 0;
}

/* An arc of `n` octets, less what the first of two arcs in one has taken. */
static void addArc (ASN_GROWING *to, const BYTE_TYPE *p, uint32 n, uint32 less)
{
  BYTE_TYPE octets[40];
  uint32 bits = 0, word = 0, place = sizeof octets;
  if (n > 44) { /* no arc that anybody has given */
    asnAddChar (to, '?');
    return;
  }
  while (n-- > 0) {
    word |= (p[n] & 0x7Fu) << bits;
    for (bits += 7; bits >= 8; bits -= 8, word >>= 8)
      octets[--place] = (BYTE_TYPE)word;
  }
  octets[--place] = (BYTE_TYPE)word;
  for (uint32 i = sizeof octets; less > 0 && i-- > place;) {
    const uint32 borrow = octets[i] < less;
    octets[i] = (BYTE_TYPE)(octets[i] - less);
    less = borrow;
  }
  asnAddDigits (to, octets + place, sizeof octets - place, FALSE);
}

static int addIdentifier (ASN_GROWING *to, const BYTE_TYPE *p, uint32 length, BOOLE isRelative)
{
  BOOLE first = TRUE;
  if (length == 0)
    return VALUE_FAIL;
  asnAddChar (to, '"');
  while (length > 0) {
    const uint32 n = arcLength (p, length);
    const uint32 root = n > 1 || *p >= 80 ? 2 : *p / 40;
    if (n == 0)
      return VALUE_FAIL;
    if (first && !isRelative) {
      asnAddNumber (to, root);
      asnAddChar (to, '.');
    } else if (!first) {
      asnAddChar (to, '.');
    }
    addArc (to, p, n, first && !isRelative ? 40 * root : 0);
    first = FALSE;
    p += n;
    length -= n;
  }
  asnAddChar (to, '"');
  return ASN_OK;
}

/* --- any kind --- */

int asnAddJsonLeaf (ASN_GROWING *to, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length, uint32 unused)
{
  switch (type->kind) {
  case TYP_BOOLEAN:
    asnAddText (to, length == 1 && *p ? "true" : "false");
    return length == 1 ? ASN_OK : VALUE_FAIL;
  case TYP_NULL:
    asnAddText (to, "null");
    return length == 0 ? ASN_OK : VALUE_FAIL;
  case TYP_INTEGER:
    return addInteger (to, p, length);
  case TYP_ENUM:
    return addItem (to, type, p, length);
  case TYP_REAL:
    return addReal (to, p, length);
  case TYP_BITSTR:
    return addBits (to, type, p, length, unused);
  case TYP_OBJID:
  case ASNTOOL_RELATIVE_OID:
    return addIdentifier (to, p, length, type->kind == ASNTOOL_RELATIVE_OID);
  case TYP_BMPSTR:
    return addWide (to, p, length, 2);
  case TYP_UNISTR:
    return addWide (to, p, length, 4);
  case ASNTOOL_UTF8:
    if (isUtf8 (p, length))
      asnAddJsonString (to, (const char *)p, length);
    else
      addOctets (to, p, length);
    return ASN_OK;
  case TYP_OCTSTR:
    addHexString (to, p, length);
    return ASN_OK;
  default:
    return addWide (to, p, length, 1);
  }
}
