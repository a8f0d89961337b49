/* Messages from text and from JSON. */

#include "asntoolbuild.h"
#include "asntoolrun.h"

#include <stdlib.h>

static unsigned long linesIn (const char *p, const char *end)
{
  unsigned long lines = 0;
  for (; p < end; p++)
    lines += *p == '\n';
  return lines;
}

/* Takes one value of many that is wrong, and ends the file: nobody knows where the next one begins. */
static void noteBad (ASN_TOOL *tool)
{
  tool->nrOfMessages++;
  tool->nrOfBad++;
}

/* --- the type --- */

/* The name with which the text of a value begins. */
static BOOLE namedEntry (ASN_TOOL *tool, const char *p, const char *end)
{
  enum { LONGEST = 200 };
  char name[LONGEST + 1];
  size_t length = 0;
  ASN_ENTRY entry = { NULL, 0 };
  while (p + length < end && length < LONGEST && (strchr ("-_.", p[length]) ? p[length] != 0
                                                  : (p[length] >= '0' && p[length] <= '9') ||
                                                      ((p[length] | 0x20) >= 'a' && (p[length] | 0x20) <= 'z')))
    length++;
  memcpy (name, p, length);
  name[length] = 0;
  if (p + length == end || p[length] != ':')
    return FALSE;
  while (asnNextEntry (tool->modules, &entry))
    if (asnHasName (entry, name))
      return asnFindEntry (tool, name);
  return FALSE;
}

static BOOLE findType (ASN_TOOL *tool, const char *p, const char *end)
{
  if (tool->typeName || (p && namedEntry (tool, p, end)) || asnOnlyEntry (tool))
    return TRUE;
  (void)fprintf (stderr, "%s: %s: the type must be named\n", tool->program, tool->file);
  tool->hasWrongUsage = TRUE;
  return FALSE;
}

/* --- encoding --- */

/* The value in hand is written as its functions encode it. */
static void runValue (ASN_TOOL *tool)
{
  const ENTRYDESCR *row = asnRow (tool->entry);
  const char *const typeName = tool->typeName;
  ASNERROR error = { VALUE_FAIL, 0, "" };
  size_t length;
  BYTE_TYPE *octets =
    row->encode ? asnEncodeNewWith (tool->reentrant, row->encode, tool->value, &length, &error) : NULL;
  if (!octets) {
    noteBad (tool);
    asnReport (tool, &error, NULL, NULL);
    return;
  }
  tool->typeName = row->name; /* what was encoded is of this type */
  asnRunMessage (tool, octets, length);
  tool->typeName = typeName;
  free (octets);
}

/* --- text --- */

/* Behind blanks and comments. */
static const char *passBlanks (const char *p, const char *end)
{
  while (p < end) {
    if (*p == ' ' || *p == '\t' || *p == '\r' || *p == '\n' || *p == ',') {
      p++;
    } else if (end - p >= 2 && p[0] == '-' && p[1] == '-') {
      while (p < end && *p != '\n')
        p++;
    } else {
      break;
    }
  }
  return p;
}

static BOOLE askValue (ASN_TOOL *tool, FILE *in)
{
  const ENTRYDESCR *row = asnRow (tool->entry);
  ASNERROR error = { LACK_OF_MEMORY, 0, "" };
  asnFreeMemory (&tool->memory);
  if (row->ask && asnMakeRoomForValue (tool, row->size) &&
      asnAskWith (tool->reentrant, row->ask, tool->value, row->size, &tool->memory, in, NULL, &error))
    return TRUE;
  noteBad (tool);
  if (error.offset > 0)
    tool->line += error.offset - 1;
  asnReport (tool, &error, row->ask ? NULL : "a table with asking functions", NULL);
  return FALSE;
}

static void runText (ASN_TOOL *tool, FILE *in)
{
  const char *start = tool->raw.text, *end = start + tool->raw.length, *p = passBlanks (start, end);
  const char *counted = start;
  unsigned long line = 1;
  while (p < end && !tool->hasWrongUsage) {
    long place;
    tool->number++;
    line += linesIn (counted, p);
    counted = p;
    tool->line = line;
    if (!findType (tool, p, end) || fseek (in, (long)(p - start), SEEK_SET) != 0 || !askValue (tool, in))
      break;
    place = ftell (in);
    if (place < 0 || start + place <= p)
      break;
    runValue (tool);
    p = passBlanks (start + place, end);
  }
}

/* --- JSON --- */

static void reportBuild (ASN_TOOL *tool, const ASN_BUILDER *builder)
{
  noteBad (tool);
  tool->line = builder->line;
  asnReport (tool, &builder->error, builder->expected.text, NULL);
}

/* Decoding what the description makes of a value shows whether it is right. */
static void runJsonValue (ASN_TOOL *tool, const ASN_JSON *doc)
{
  ASN_BUILDER builder;
  size_t length = 0;
  BYTE_TYPE *octets = asnBuild (&builder, asnEntryPlace (tool->entry), doc, FALSE, &length);
  if (!octets)
    reportBuild (tool, &builder);
  else if (asnTakeMessage (tool, octets, length))
    runValue (tool);
  else
    noteBad (tool);
  asnEndBuild (&builder);
  free (octets);
}

static void runJson (ASN_TOOL *tool)
{
  const char *p = tool->raw.text, *end = p + tool->raw.length;
  ASN_JSON doc;
  memset (&doc, 0, sizeof doc);
  doc.line = 1;
  if (!findType (tool, NULL, NULL))
    return;
  if (!asnEntryPlace (tool->entry)) {
    (void)fprintf (stderr, "%s: %s: without the tables of velmo-tool no JSON is read\n", tool->program, tool->file);
    tool->nrOfBad++;
    return;
  }
  for (;;) {
    while (p < end && (*p == ' ' || *p == '\t' || *p == '\r' || *p == '\n'))
      doc.line += *p++ == '\n';
    if (p == end)
      break;
    tool->number++;
    tool->line = doc.line;
    if (!asnParseJson (&doc, &p, end)) {
      noteBad (tool);
      tool->line = doc.line;
      (void)fprintf (asnStartReport (tool), "no JSON: %s\n", doc.wrong);
      break;
    }
    runJsonValue (tool, &doc);
  }
  asnDropJson (&doc);
}

void asnRunValues (ASN_TOOL *tool, int format)
{
  FILE *in;
  if (tool->raw.length == 0)
    return;
  if (format == FORMAT_JSON) {
    runJson (tool);
    return;
  }
  in = tmpfile ();
  if (in && fwrite (tool->raw.text, 1, tool->raw.length, in) == tool->raw.length) {
    runText (tool, in);
  } else {
    (void)fprintf (stderr, "%s: a temporary file can't be written\n", tool->program);
    tool->nrOfBad++;
  }
  if (in)
    (void)fclose (in);
}

/* --- definite lengths --- */

BYTE_TYPE *asnMakeDer (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length, size_t *derLength)
{
  const ASNTOOLPLACE *place = asnEntryPlace (tool->entry);
  ASN_JSON_WRITER writer;
  ASN_WALK walk;
  ASN_JSON doc;
  ASN_BUILDER builder;
  BYTE_TYPE *octets = NULL;
  memset (&writer, 0, sizeof writer);
  memset (&walk, 0, sizeof walk);
  memset (&doc, 0, sizeof doc);
  memset (&builder, 0, sizeof builder);
  writer.oneLine = TRUE;
  if (!asnWriteJson (&writer, &walk, place, p, length)) {
    asnReport (tool, &walk.error, walk.expected.text, NULL);
  } else {
    const char *text = writer.text.text;
    if (asnParseJson (&doc, &text, text + writer.text.length))
      octets = asnBuild (&builder, place, &doc, TRUE, derLength);
    if (!octets)
      asnReport (tool, &builder.error, builder.expected.text, NULL);
  }
  asnEndBuild (&builder);
  asnDropJson (&doc);
  asnEndWalk (&walk);
  asnDrop (&writer.text);
  asnDrop (&writer.open);
  return octets;
}
