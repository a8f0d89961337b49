/* What is reported of messages, and how far a run is. */

#if !defined _POSIX_C_SOURCE && (defined __unix__ || defined __APPLE__)
#define _POSIX_C_SOURCE 200809L
#endif

#include "asntoolrun.h"

#include <time.h>
#if defined __unix__ || defined __APPLE__
#include <unistd.h>
#endif

/* --- reports --- */

static BOOLE isTerminal (void)
{
#if defined __unix__ || defined __APPLE__
  return isatty (STDERR_FILENO) != 0;
#else
  return FALSE;
#endif
}

FILE *asnStartReport (ASN_TOOL *tool)
{
  FILE *to = tool->command == COMMAND_CHECK ? stdout : stderr;
  asnHideProgress (tool);
  (void)fflush (stdout);
  (void)fprintf (to, "%s: message %lu ", tool->file, tool->number);
  if (tool->line > 0)
    (void)fprintf (to, "in line %lu: ", tool->line);
  else
    (void)fprintf (to, "at octet %lu: ", (unsigned long)tool->offset);
  return to;
}

void asnReport (ASN_TOOL *tool, const ASNERROR *error, const char *expected, const char *found)
{
  FILE *to = asnStartReport (tool);
  (void)fprintf (to, "%s", asnErrorName (error->code));
  if (error->path[0])
    (void)fprintf (to, " at %s", error->path);
  if (tool->line == 0)
    (void)fprintf (to, ", octet %lu", (unsigned long)(tool->offset + error->offset));
  if (expected && *expected)
    (void)fprintf (to, ": expected %s", expected);
  if (found && *found)
    (void)fprintf (to, "%s found %s", expected && *expected ? ", but" : ":", found);
  (void)fprintf (to, "\n");
}

/* The tag at `p`, and what stands behind it if that is little. */
static void addFound (ASN_GROWING *to, const BYTE_TYPE *p, const BYTE_TYPE *end)
{
  enum { FEW = 16 };
  ASN_HEADER header;
  if (p >= end) {
    asnAddText (to, "the end of the octets");
    return;
  }
  if (asnReadHeader (p, end, &header) != ASN_OK) {
    asnAddChar (to, '\'');
    asnAddHex (to, p, end - p > FEW ? FEW : (size_t)(end - p));
    asnAddText (to, end - p > FEW ? "...'H" : "'H");
    return;
  }
  asnAddTag (to, header.tag);
  if (!header.constructed && header.len > 0 && header.tag != EOC_TAG) {
    asnAddText (to, " '");
    asnAddHex (to, header.contents, header.len > FEW ? FEW : header.len);
    asnAddText (to, header.len > FEW ? "...'H" : "'H");
  }
}

/* The walk over the description stops where decoding did, or sees what it expects there. */
void asnReportDecoding (ASN_TOOL *tool, const ASNERROR *error, const BYTE_TYPE *p, size_t length)
{
  const ASNTOOLPLACE *place = asnEntryPlace (tool->entry);
  const size_t offset = error->offset < length ? error->offset : length;
  static const ASN_VISITOR silent = { FALSE, NULL, NULL, NULL, NULL, NULL, NULL, NULL };
  ASNERROR told = *error;
  ASN_WALK walk;
  memset (&walk, 0, sizeof walk);
  asnEmpty (&tool->text);
  addFound (&tool->text, p + offset, p + length);
  if (place) {
    walk.goal = p + offset;
    (void)asnWalk (&walk, &silent, NULL, place, p, length);
    if (walk.error.path[0] && (walk.expected.length > 0 || walk.error.offset == offset))
      memcpy (told.path, walk.error.path, sizeof told.path);
  }
  if (walk.expected.length == 0 && error->code == LEN_FAIL)
    asnAddText (&walk.expected, "an element that ends in time");
  asnReport (tool, &told, walk.expected.text, tool->text.text);
  asnEndWalk (&walk);
}

/* --- progress --- */

/* Hundredths of a second of work. */
static unsigned long now (void)
{
  return (unsigned long)(clock () / (CLOCKS_PER_SEC / 100));
}

enum { FEW_FILES = 10, FEW_OCTETS = 1000000, STEP = 10, WIDTH = 40 };

void asnShowProgress (ASN_TOOL *tool, size_t bytesDone)
{
  const unsigned long time = now ();
  size_t done, all;
  if (tool->command != COMMAND_CHECK || time < tool->lastTime + STEP || !isTerminal () ||
      (tool->nrOfFiles < FEW_FILES && tool->bytesOfAll < FEW_OCTETS))
    return;
  tool->lastTime = time;
  done = tool->bytesBefore;
  all = tool->bytesOfAll;
  if (tool->octets.length > 0)
    done += (size_t)((double)tool->bytesOfFile * (double)bytesDone / (double)tool->octets.length);
  (void)fprintf (stderr, "\r[");
  for (size_t i = 0; i < WIDTH; i++)
    (void)fputc (all > 0 && (double)i * (double)all < (double)done * WIDTH ? '#' : ' ', stderr);
  (void)fprintf (stderr, "] %lu messages, %lu bad ", tool->nrOfMessages, tool->nrOfBad);
  (void)fflush (stderr);
  tool->barIsShown = TRUE;
}

void asnHideProgress (ASN_TOOL *tool)
{
  if (tool->barIsShown)
    (void)fprintf (stderr, "\r%*s\r", WIDTH + 60, "");
  tool->barIsShown = FALSE;
}

void asnReportRun (ASN_TOOL *tool)
{
  const unsigned long time = now ();
  asnHideProgress (tool);
  (void)printf ("%lu message%s in %d file%s, %lu bad", tool->nrOfMessages, tool->nrOfMessages == 1 ? "" : "s",
                tool->nrOfFiles, tool->nrOfFiles == 1 ? "" : "s", tool->nrOfBad);
  if (time >= 10)
    (void)printf ("; %.0f messages a second", (double)tool->nrOfMessages * 100.0 / (double)time);
  (void)printf ("\n");
}
