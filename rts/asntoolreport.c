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
static void addFound (ASN_GROWING *to, int error, const BYTE_TYPE *p, const BYTE_TYPE *end)
{
  const uint32 few = 16;
  uint32 missing;
  ASN_HEADER header;
  if (p >= end) {
    asnAddText (to, "the end of the octets");
    return;
  }
  if (asnReadCutHeader (p, end, &header, &missing) != ASN_OK) {
    asnAddChar (to, '\'');
    asnAddHex (to, p, end - p > few ? few : (size_t)(end - p));
    asnAddText (to, end - p > few ? "...'H" : "'H");
    return;
  }
  if (error == FORM_FAIL)
    asnAddText (to, header.constructed ? "constructed " : "primitive ");
  asnAddTag (to, header.tag);
  if (missing > 0) {
    asnAddText (to, " without the last ");
    asnAddNumber (to, missing);
    asnAddText (to, missing == 1 ? " octet" : " octets");
  } else if (!header.constructed && header.len > 0 && header.tag != EOC_TAG) {
    asnAddText (to, " '");
    asnAddHex (to, header.contents, header.len > few ? few : header.len);
    asnAddText (to, header.len > few ? "...'H" : "'H");
  }
}

/* The walk over the description stops where decoding did, or sees what it expects there. */
void asnReportDecoding (ASN_TOOL *tool, const ASNERROR *error, const BYTE_TYPE *p, size_t length)
{
  const ASNTOOLPLACE *place = asnEntryPlace (tool->entry);
  size_t offset = error->offset < length ? error->offset : length;
  static const ASN_VISITOR silent = { FALSE, FALSE, NULL, NULL, NULL, NULL, NULL, NULL, NULL };
  ASNERROR told = *error;
  ASN_WALK walk;
  memset (&walk, 0, sizeof walk);
  if (place) {
    walk.goal = p + offset;
    walk.goalPath = error->code == CONSTRAINT_FAIL ? error->path : NULL;
    (void)asnWalk (&walk, &silent, NULL, place, p, length);
    if (walk.error.path[0] && (walk.expected.length > 0 || walk.error.offset == offset))
      memcpy (told.path, walk.error.path, sizeof told.path);
    offset = (size_t)(walk.goal - p);
    told.offset = (uint32)offset;
  }
  asnEmpty (&tool->text);
  addFound (&tool->text, error->code, p + offset, p + length);
  if (walk.expected.length == 0 && error->code == LEN_FAIL)
    asnAddText (&walk.expected, "an element that ends in time");
  asnReport (tool, &told, walk.expected.text, tool->text.text);
  asnEndWalk (&walk);
}

/* --- progress --- */

/* Hundredths of a second; only differences count. */
static unsigned long now (void)
{
#if defined __unix__ || defined __APPLE__
  struct timespec time;
  if (clock_gettime (CLOCK_MONOTONIC, &time) == 0)
    return (unsigned long)time.tv_sec * 100 + (unsigned long)time.tv_nsec / 10000000;
#endif
  return (unsigned long)(clock () / (CLOCKS_PER_SEC / 100));
}

enum { FEW_FILES = 10, FEW_OCTETS = 1000000, STEP = 10, WIDTH = 30 };

void asnStartProgress (ASN_TOOL *tool)
{
  tool->startTime = tool->lastTime = now ();
  for (int i = 0; i < tool->nrOfFiles; i++)
    tool->bytesOfAll += asnSizeOfFile (tool->files[i]);
}

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
  for (int i = 0; i < WIDTH; i++)
    (void)fputc (all > 0 && (double)i * (double)all < (double)done * (double)WIDTH ? '#' : ' ', stderr);
  tool->barLength = WIDTH + 2 + fprintf (stderr, "] %lu messages, %lu bad ", tool->nrOfMessages, tool->nrOfBad);
  (void)fflush (stderr);
}

void asnHideProgress (ASN_TOOL *tool)
{
  if (tool->barLength > 0)
    (void)fprintf (stderr, "\r%*s\r", tool->barLength, "");
  tool->barLength = 0;
}

void asnReportRun (ASN_TOOL *tool)
{
  const unsigned long time = now () - tool->startTime;
  asnHideProgress (tool);
  (void)printf ("%lu message%s in %d file%s, %lu bad", tool->nrOfMessages, tool->nrOfMessages == 1 ? "" : "s",
                tool->nrOfFiles, tool->nrOfFiles == 1 ? "" : "s", tool->nrOfBad);
  if (time >= 10)
    (void)printf ("; %.0f messages a second", (double)tool->nrOfMessages * 100.0 / (double)time);
  (void)printf ("\n");
}
