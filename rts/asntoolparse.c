/* Reading JSON. */

#include "asntoolbuild.h"

#include <stdlib.h>

enum { MOST_LEVELS = 1000 };

typedef struct {
  ASN_JSON *doc;
  const char *p;
  const char *end;
} READER;

static uint32 parseValue (READER *reader, uint32 depth);

static uint32 refuse (READER *reader, const char *wrong)
{
  if (!reader->doc->wrong)
    reader->doc->wrong = wrong;
  return 0;
}

static void passBlanks (READER *reader)
{
  for (; reader->p < reader->end; reader->p++) {
    if (*reader->p == '\n')
      reader->doc->line++;
    else if (*reader->p != ' ' && *reader->p != '\t' && *reader->p != '\r')
      break;
  }
}

static BOOLE passChar (READER *reader, char c)
{
  passBlanks (reader);
  if (reader->p == reader->end || *reader->p != c)
    return FALSE;
  reader->p++;
  return TRUE;
}

/* A new node; nodes may move. */
static uint32 newNode (READER *reader, int kind)
{
  static const ASN_JSON_NODE none = { NULL, NULL, 0, 0, 0, 0, 0, 0, 0, 0 };
  ASN_JSON *doc = reader->doc;
  if (doc->nrOfNodes + 1 >= doc->room) {
    const uint32 room = doc->room ? 2 * doc->room : 64;
    ASN_JSON_NODE *nodes =
      room > UINT32_MAX / 2 / sizeof *nodes ? NULL : (ASN_JSON_NODE *)realloc (doc->nodes, room * sizeof *nodes);
    if (!nodes)
      return refuse (reader, "there is no memory");
    doc->nodes = nodes;
    doc->room = room;
  }
  doc->nodes[++doc->nrOfNodes] = none;
  doc->nodes[doc->nrOfNodes].kind = (uint8)kind;
  doc->nodes[doc->nrOfNodes].line = doc->line;
  return doc->nrOfNodes;
}

static void append (ASN_JSON *doc, uint32 around, uint32 node)
{
  ASN_JSON_NODE *outer = &doc->nodes[around];
  doc->nodes[node].previous = outer->last;
  if (outer->last)
    doc->nodes[outer->last].next = node;
  else
    outer->first = node;
  outer->last = node;
}

/* The text between two quotes. */
static BOOLE passString (READER *reader, const char **text, uint32 *length)
{
  const char *p;
  if (!passChar (reader, '"'))
    return FALSE;
  for (p = reader->p; p < reader->end && *p != '"'; p++) {
    if ((BYTE_TYPE)*p < ' ')
      return refuse (reader, "a string has no end on its line") != 0;
    p += *p == '\\';
  }
  if (p >= reader->end)
    return refuse (reader, "a string has no end") != 0;
  *text = reader->p;
  *length = (uint32)(p - reader->p);
  reader->p = p + 1;
  return TRUE;
}

static uint32 parseString (READER *reader)
{
  const char *text;
  uint32 length, node;
  if (!passString (reader, &text, &length))
    return refuse (reader, "a string is wrong");
  node = newNode (reader, JSON_STRING);
  if (node) {
    reader->doc->nodes[node].text = text;
    reader->doc->nodes[node].length = length;
  }
  return node;
}

/* A number, or a word. */
static uint32 parseWord (READER *reader)
{
  static const char *const words[] = { "null", "false", "true" };
  const char *start = reader->p;
  uint32 node;
  size_t length;
  int kind = JSON_NUMBER;
  while (reader->p < reader->end && (strchr ("+-.", *reader->p) ? *reader->p != 0
                                     : (*reader->p >= '0' && *reader->p <= '9') ||
                                         ((*reader->p | 0x20) >= 'a' && (*reader->p | 0x20) <= 'z')))
    reader->p++;
  length = (size_t)(reader->p - start);
  for (int i = JSON_NULL; i <= JSON_TRUE; i++)
    if (length == strlen (words[i]) && memcmp (start, words[i], length) == 0)
      kind = i;
  if (length == 0 || (kind == JSON_NUMBER && (*start < '0' || *start > '9') && *start != '-'))
    return refuse (reader, "there is no value where one should be");
  node = newNode (reader, kind);
  if (node) {
    reader->doc->nodes[node].text = start;
    reader->doc->nodes[node].length = (uint32)length;
  }
  return node;
}

static uint32 parseList (READER *reader, uint32 depth)
{
  const uint32 list = newNode (reader, JSON_LIST);
  reader->p++;
  if (!list || passChar (reader, ']'))
    return list;
  do {
    const uint32 node = parseValue (reader, depth + 1);
    if (!node)
      return 0;
    append (reader->doc, list, node);
  } while (passChar (reader, ','));
  return passChar (reader, ']') ? list : refuse (reader, "a list goes on without \",\" and without \"]\"");
}

static uint32 parseObject (READER *reader, uint32 depth)
{
  const uint32 object = newNode (reader, JSON_OBJECT);
  reader->p++;
  if (!object || passChar (reader, '}'))
    return object;
  do {
    const char *name;
    uint32 length, node;
    if (!passString (reader, &name, &length) || !passChar (reader, ':'))
      return refuse (reader, "a member begins with its name and a colon");
    node = parseValue (reader, depth + 1);
    if (!node)
      return 0;
    reader->doc->nodes[node].name = name;
    reader->doc->nodes[node].nameLength = length;
    append (reader->doc, object, node);
  } while (passChar (reader, ','));
  return passChar (reader, '}') ? object : refuse (reader, "an object goes on without \",\" and without \"}\"");
}

static uint32 parseValue (READER *reader, uint32 depth)
{
  passBlanks (reader);
  if (reader->p == reader->end)
    return refuse (reader, "the text ends where a value should be");
  if (depth > MOST_LEVELS)
    return refuse (reader, "values stand too deep within one another");
  switch (*reader->p) {
  case '{':
    return parseObject (reader, depth);
  case '[':
    return parseList (reader, depth);
  case '"':
    return parseString (reader);
  default:
    return parseWord (reader);
  }
}

BOOLE asnParseJson (ASN_JSON *doc, const char **p, const char *end)
{
  READER reader = { doc, *p, end };
  uint32 node;
  doc->nrOfNodes = 0;
  doc->wrong = NULL;
  node = parseValue (&reader, 0);
  *p = reader.p;
  return node != 0;
}

void asnDropJson (ASN_JSON *doc)
{
  free (doc->nodes);
  doc->nodes = NULL;
  doc->room = doc->nrOfNodes = 0;
}

/* --- strings --- */

static BOOLE takeUnit (const char **p, const char *end, uint32 *unit)
{
  *unit = 0;
  if (end - *p < 4)
    return FALSE;
  for (int i = 0; i < 4; i++) {
    const int digit = asnHexDigit (*(*p)++);
    if (digit < 0)
      return FALSE;
    *unit = *unit << 4 | (uint32)digit;
  }
  return TRUE;
}

/* Two units that make one character belong together. */
static BOOLE addUnits (ASN_GROWING *to, const char **p, const char *end)
{
  uint32 unit, low;
  const char *behind;
  if (!takeUnit (p, end, &unit))
    return FALSE;
  behind = *p + 2;
  if (unit >= 0xD800 && unit <= 0xDBFF && end - *p >= 6 && (*p)[0] == '\\' && (*p)[1] == 'u' &&
      takeUnit (&behind, end, &low) && low >= 0xDC00 && low <= 0xDFFF) {
    unit = 0x10000 + ((unit - 0xD800) << 10 | (low - 0xDC00));
    *p = behind;
  }
  asnAddCharacter (to, unit);
  return TRUE;
}

BOOLE asnUnescape (ASN_GROWING *to, const ASN_JSON_NODE *node)
{
  static const char from[] = "\"\\/bfnrt", into[] = "\"\\/\b\f\n\r\t";
  const char *p = node->text, *end = p + node->length;
  while (p < end) {
    const char *known;
    if (*p != '\\') {
      const char *next = (const char *)memchr (p, '\\', (size_t)(end - p));
      asnAdd (to, p, (size_t)((next ? next : end) - p));
      p = next ? next : end;
      continue;
    }
    p++;
    known = p < end && *p ? strchr (from, *p) : NULL;
    if (known)
      asnAddChar (to, into[known - from]);
    else if (p >= end || *p != 'u')
      return FALSE;
    p++;
    if (!known && !addUnits (to, &p, end))
      return FALSE;
  }
  return TRUE;
}
