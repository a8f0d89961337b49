/* The messages of a file: decoding, and writing them in another form. */

#include "asntoolrun.h"

#include <stdlib.h>

/* --- decoding --- */

BOOLE asnMakeRoomForValue (ASN_TOOL *tool, size_t size)
{
  void *wider;
  if (size <= tool->valueSize)
    return TRUE;
  wider = realloc (tool->value, size);
  if (!wider)
    return FALSE;
  tool->value = wider;
  tool->valueSize = size;
  return TRUE;
}

static BOOLE decodeMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length, ASNERROR *error)
{
  const ENTRYDESCR *row = asnRow (tool->entry);
  asnFreeMemory (&tool->memory);
  error->code = row->decode ? LACK_OF_MEMORY : VALUE_FAIL;
  error->offset = 0;
  error->path[0] = 0;
  return row->decode && asnMakeRoomForValue (tool, row->size) &&
         asnDecodeWith (tool->reentrant, row->decode, p, length, tool->value, row->size, &tool->memory, NULL, error);
}

BOOLE asnTakeTrial (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  ASNERROR error;
  return decodeMessage (tool, p, length, &error);
}

BOOLE asnTakeMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  ASNERROR error;
  if (decodeMessage (tool, p, length, &error))
    return TRUE;
  asnReportDecoding (tool, &error, p, length);
  return FALSE;
}

/* --- writing --- */

static BOOLE writeText (ASN_TOOL *tool)
{
  const ENTRYDESCR *row = asnRow (tool->entry);
  ASNERROR error = { VALUE_FAIL, 0, "" };
  if (row->print && asnPrintWith (tool->reentrant, row->print, tool->value, stdout, &error))
    return TRUE;
  asnReport (tool, &error, row->print ? NULL : "a table with printing functions", NULL);
  return FALSE;
}

static BOOLE writeJson (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  ASN_JSON_WRITER writer;
  ASN_WALK walk;
  BOOLE done;
  memset (&writer, 0, sizeof writer);
  memset (&walk, 0, sizeof walk);
  done = asnWriteJson (&writer, &walk, asnEntryPlace (tool->entry), p, length);
  if (done)
    (void)printf ("%s\n", writer.text.text);
  else
    asnReport (tool, &walk.error, walk.expected.text, NULL);
  asnEndWalk (&walk);
  asnDrop (&writer.text);
  asnDrop (&writer.open);
  return done;
}

/* Also for a message that can't be decoded. */
static BOOLE writeTags (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  ASN_WALK walk;
  BOOLE done;
  memset (&walk, 0, sizeof walk);
  asnEmpty (&tool->text);
  done = asnListTags (&tool->text, &walk, tool->entry.module ? asnEntryPlace (tool->entry) : NULL, p, length,
                      tool->offset);
  if (walk.error.code == LACK_OF_MEMORY)
    asnReport (tool, &walk.error, NULL, NULL);
  asnEndWalk (&walk);
  (void)printf ("%s%s", tool->number > 1 ? "\n" : "", tool->text.text ? tool->text.text : "");
  return done;
}

static BOOLE writeOctets (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  const char *name = asnRow (tool->entry)->name;
  asnEmpty (&tool->text);
  switch (tool->out) {
  case FORMAT_HEX:
    asnAddHex (&tool->text, p, length);
    asnAddChar (&tool->text, '\n');
    break;
  case FORMAT_BASE64:
  case FORMAT_PEM:
    asnAddBase64 (&tool->text, p, length);
    break;
  default:
    (void)fwrite (p, 1, length, stdout);
    return TRUE;
  }
  if (tool->text.failed) {
    ASNERROR error = { LACK_OF_MEMORY, 0, "" };
    asnReport (tool, &error, NULL, NULL);
    return FALSE;
  }
  if (tool->out == FORMAT_PEM)
    (void)printf ("-----BEGIN %s-----\n", name);
  (void)fwrite (tool->text.text, 1, tool->text.length, stdout);
  if (tool->out == FORMAT_PEM)
    (void)printf ("-----END %s-----\n", name);
  return TRUE;
}

static BOOLE writeDer (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  size_t derLength;
  BYTE_TYPE *octets = asnMakeDer (tool, p, length, &derLength);
  const BOOLE done = octets && writeOctets (tool, octets, derLength);
  free (octets);
  return done;
}

BOOLE asnWriteMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  switch (tool->out) {
  case FORMAT_TEXT:
    return writeText (tool);
  case FORMAT_JSON:
    return writeJson (tool, p, length);
  case FORMAT_TAGS:
    return writeTags (tool, p, length);
  default:
    if (tool->der)
      return writeDer (tool, p, length);
    return writeOctets (tool, p, length);
  }
}

/* --- all messages of a file --- */

/* Does what the command asks for; whether the message is good. */
static BOOLE handleMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  if (!tool->typeName && !asnChooseEntry (tool, p, length)) {
    if (tool->out == FORMAT_TAGS && tool->command != COMMAND_CHECK)
      (void)writeTags (tool, p, length);
    return FALSE;
  }
  if (!asnTakeMessage (tool, p, length)) {
    if (tool->out == FORMAT_TAGS && tool->command != COMMAND_CHECK)
      (void)writeTags (tool, p, length);
    return FALSE;
  }
  return tool->command == COMMAND_CHECK ? asnCheckMessage (tool, p, length) : asnWriteMessage (tool, p, length);
}

void asnRunMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length)
{
  tool->nrOfMessages++;
  if (!handleMessage (tool, p, length))
    tool->nrOfBad++;
}

/* Octets 0 between messages fill something up: they begin none. */
static void runOctets (ASN_TOOL *tool)
{
  const BYTE_TYPE *start = (const BYTE_TYPE *)tool->octets.text, *end = start + tool->octets.length, *p = start;
  const BYTE_TYPE *behind = start;
  for (; behind; p = behind) {
    while (p < end && *p == 0)
      p++;
    if (p == end)
      break;
    tool->number++;
    tool->offset = (size_t)(p - start);
    if (asnFindEnd (p, end, &behind) != ASN_OK)
      behind = NULL; /* nobody knows where the next message begins */
    asnRunMessage (tool, p, (size_t)((behind ? behind : end) - p));
    asnShowProgress (tool, (size_t)((behind ? behind : end) - start));
  }
}

void asnRunFile (ASN_TOOL *tool, const char *name)
{
  const unsigned long badBefore = tool->nrOfBad;
  int format;
  tool->file = name;
  tool->number = tool->line = 0;
  tool->offset = 0;
  if (!asnReadFile (tool, name)) {
    tool->nrOfBadFiles++;
    return;
  }
  format = asnDetectFormat (tool);
  if (format == FORMAT_TEXT || format == FORMAT_JSON)
    asnRunValues (tool, format);
  else if (asnReadOctets (tool, format))
    runOctets (tool);
  else
    tool->nrOfBad++;
  if (tool->number == 0 && tool->nrOfBad == badBefore) {
    (void)fprintf (stderr, "%s: %s: there is no message in it\n", tool->program, name);
    tool->nrOfBad++;
  }
  tool->nrOfBadFiles += tool->nrOfBad > badBefore;
}
