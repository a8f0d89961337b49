/* Whether a message is the same when it is decoded and encoded again. */

#include "asntoolrun.h"

#include <stdlib.h>

/* The value without the choices that an encoding has: JSON on one line. */
static BOOLE canonical (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length, ASN_GROWING *text, ASN_WALK *walk)
{
  ASN_JSON_WRITER writer;
  BOOLE done;
  memset (&writer, 0, sizeof writer);
  writer.oneLine = TRUE;
  writer.text = *text;
  asnEmpty (&writer.text);
  done = asnWriteJson (&writer, walk, asnEntryPlace (tool->entry), p, length);
  *text = writer.text;
  asnDrop (&writer.open);
  return done;
}

/* --- where two texts differ --- */

/* Behind the string that begins at `p`. */
static const char *skipString (const char *p, const char *end)
{
  for (p++; p < end && *p != '"'; p++)
    p += *p == '\\';
  return p < end ? p + 1 : end;
}

/* The path to the place `at` of a JSON text: names, and numbers of elements. */
static void addPath (ASN_GROWING *path, const char *p, const char *at)
{
  typedef struct {
    const char *name;
    size_t length;
    unsigned long element;
    BOOLE isList;
  } LEVEL;
  LEVEL levels[ASN_MAX_PATH];
  size_t depth = 0;
  while (p < at) {
    LEVEL *top = &levels[depth <= ASN_MAX_PATH && depth > 0 ? depth - 1 : 0];
    if (*p == '{' || *p == '[') {
      if (depth++ < ASN_MAX_PATH) {
        const LEVEL level = { NULL, 0, 0, *p == '[' };
        levels[depth - 1] = level;
      }
    } else if (*p == '}' || *p == ']') {
      depth -= depth > 0;
    } else if (*p == ',' && depth > 0) {
      top->element++;
    } else if (*p == '"') {
      const char *behind = skipString (p, at);
      if (depth > 0 && !top->isList && behind < at && *behind == ':') {
        top->name = p + 1;
        top->length = (size_t)(behind - p) - 2;
      }
      p = behind;
      continue;
    }
    p++;
  }
  for (size_t i = 0; i < depth && i < ASN_MAX_PATH; i++) {
    asnAddChar (path, levels[i].isList ? '[' : '.');
    if (levels[i].isList)
      asnAddNumber (path, (sint64)levels[i].element);
    else if (levels[i].name)
      asnAdd (path, levels[i].name, levels[i].length);
    if (levels[i].isList)
      asnAddChar (path, ']');
  }
}

/* A difference in front of a member's name is that of the member. */
static const char *placeOfMember (const char *start, const char *end, const char *at)
{
  const char *p = at;
  while (p < end && (*p == ',' || *p == ' '))
    p++;
  if (p == at || p == end || *p != '"' || *start == '"')
    return at;
  p = skipString (p, end);
  return p < end && *p == ':' ? p + 1 : at;
}

static void reportDifference (ASN_TOOL *tool, const ASN_GROWING *before, const ASN_GROWING *after)
{
  enum { SHOWN = 40 };
  ASN_GROWING path = { NULL, 0, 0, FALSE };
  size_t at = 0, start;
  FILE *to;
  while (at < before->length && at < after->length && before->text[at] == after->text[at])
    at++;
  asnAddText (&path, asnRow (tool->entry)->name);
  addPath (&path, before->text, placeOfMember (before->text, before->text + before->length, before->text + at));
  start = at > SHOWN / 2 ? at - SHOWN / 2 : 0;
  to = asnStartReport (tool);
  (void)fprintf (to, "DIFFERENT at %s: %.*s was encoded again as %.*s\n", path.text ? path.text : "", SHOWN,
                 before->text + start, SHOWN, after->text + start);
  asnDrop (&path);
}

/* --- without a description --- */

/* Whether contents are the same, whatever the form of their lengths. Both move to their end. */
static BOOLE areSameContents (ASN_CONTENTS *a, ASN_CONTENTS *b, uint32 depth)
{
  while (!asnAtEnd (a) && !asnAtEnd (b)) {
    ASN_HEADER one, other;
    if (depth > 4 * ASN_MAX_NESTING || asnReadHeader (a->p, a->limit, &one) != ASN_OK ||
        asnReadHeader (b->p, b->limit, &other) != ASN_OK || one.tag != other.tag || one.constructed != other.constructed)
      return FALSE;
    if (one.constructed) {
      ASN_CONTENTS within = asnContentsOf (&one, a->limit), withinOther = asnContentsOf (&other, b->limit);
      if (!areSameContents (&within, &withinOther, depth + 1))
        return FALSE;
      a->p = within.p + (one.indefinite ? 2 : 0);
      b->p = withinOther.p + (other.indefinite ? 2 : 0);
    } else {
      if (one.len != other.len || memcmp (one.contents, other.contents, one.len) != 0)
        return FALSE;
      a->p = one.contents + one.len;
      b->p = other.contents + other.len;
    }
  }
  return asnAtEnd (a) && asnAtEnd (b);
}

/* --- checking --- */

static BOOLE isEqual (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length, const BYTE_TYPE *again, size_t lengthAgain)
{
  ASN_WALK walk;
  BOOLE done;
  if (length == lengthAgain && memcmp (p, again, length) == 0)
    return TRUE;
  if (!asnEntryPlace (tool->entry)) {
    ASN_CONTENTS before = { p, p + length, FALSE }, after = { again, again + lengthAgain, FALSE };
    if (areSameContents (&before, &after, 0))
      return TRUE;
    (void)fprintf (asnStartReport (tool), "DIFFERENT tags or contents when it was encoded again\n");
    return FALSE;
  }
  memset (&walk, 0, sizeof walk);
  done = canonical (tool, p, length, &tool->text, &walk) && canonical (tool, again, lengthAgain, &tool->other, &walk);
  if (!done)
    asnReport (tool, &walk.error, walk.expected.text, NULL);
  asnEndWalk (&walk);
  if (!done)
    return FALSE;
  if (tool->text.length == tool->other.length && memcmp (tool->text.text, tool->other.text, tool->text.length) == 0)
    return TRUE;
  reportDifference (tool, &tool->text, &tool->other);
  return FALSE;
}

BOOLE asnCheckMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  const ENTRYDESCR *row = asnRow (tool->entry);
  ASNERROR error = { VALUE_FAIL, 0, "" };
  size_t lengthAgain = 0;
  BYTE_TYPE *again = NULL;
  BOOLE good;
  if (row->encode)
    again = asnEncodeNewWith (tool->reentrant, row->encode, tool->value, &lengthAgain, &error);
  if (!again) {
    (void)fprintf (asnStartReport (tool), "%s when it was encoded again%s%s\n", asnErrorName (error.code),
                   error.path[0] ? " at " : "", error.path);
    return FALSE;
  }
  good = isEqual (tool, p, length, again, lengthAgain);
  free (again);
  return good;
}
