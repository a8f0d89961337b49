/* Errors and paths. */

#include "asnint.h"

#include <stdio.h>
#include <stdlib.h>

static const char *const errorNames[] = {
  "ASN_OK",         "TAG_FAIL",  "EOC_FAIL",   "MM_FAIL",    "DM_FAIL",
  "AM_FAIL",        "ENUM_ERR",  "SKIPPED_ENCOUNTERED",      "CONSTRAINT_FAIL",
  "LACK_OF_MEMORY", "LEN_FAIL",  "FORM_FAIL",  "VALUE_FAIL", "DEPTH_FAIL",
  "ROOM_FAIL",      "REST_FAIL", "INPUT_FAIL",
};

const char *asnErrorName (int error)
{
  if (error < 0 || error >= ASN_NR_OF_ERRORS)
    return "unknown error";
  return errorNames[error];
}

void asnInitUtil (ASNUTIG *util, int kind, ASNMEM *memory)
{
  util->kind = kind;
  util->memory = memory;
  util->homes = NULL;
  util->leave = NULL;
  util->allocated = FALSE;
  util->error.code = ASN_OK;
  util->error.offset = 0;
  util->error.path[0] = 0;
}

/* "Msg.lines[3].article". A text that is too long loses its beginning. */
static void notePath (ASNCODG *g)
{
  uint32 nrOfNames = g->nrOfNames < ASN_MAX_PATH ? g->nrOfNames : ASN_MAX_PATH;
  char *text = g->util.error.path;
  size_t room = ASN_PATH_TEXT - 1, used = room;
  for (uint32 i = nrOfNames; i-- > 0;) {
    char number[16];
    const char *name = g->names[i];
    size_t length;
    if (!name) {
      (void)snprintf (number, sizeof number, "[%lu]", (unsigned long)g->elements[i]);
      name = number;
    }
    length = strlen (name);
    if (length + 1 > used)
      break;
    used -= length;
    memcpy (text + used, name, length);
    if (i > 0 && name[0] != '[')
      text[--used] = '.';
  }
  memmove (text, text + used, room - used);
  text[room - used] = 0;
}

/* Notes where a coding stands, and leaves it nothing to read and nowhere to write. */
static void stopCoding (ASNCODG *g)
{
  if (g->start) {
    const BYTE_TYPE *place = g->element > g->place ? g->place : g->element;
    g->util.error.offset = (uint32)(place - g->start);
    notePath (g);
  } else {
    g->util.error.offset = asnUsed (g);
  }
  g->place = g->limit;
  g->mode = 0;
  g->depth = 0;
  g->state = ASN_BETWEEN_;
  g->tag = EOC_TAG;
  g->front = g->room;
  g->growing = FALSE;
}

void asnRaise (ASNUTIG *util, int error)
{
  if (util->error.code == ASN_OK) {
    util->error.code = error;
    if (util->kind == ASN_CODING_)
      stopCoding ((ASNCODG *)util);
  }
  if (util->leave)
    longjmp (*util->leave, 1);
}

void asnRaiseFatal (ASNUTIG *util, int error)
{
  asnRaise (util, error);
  fprintf (stderr, "%s\n", asnErrorName (error));
  abort ();
}

void asnReportError (ASNCODG *g, int error)
{
  asnRaise (&g->util, error);
}

/* --- paths --- */

/* The text is made when an error needs it. Names live as long as the program. */
static void pushStep (ASNCODG *g, const char *name, uint32 element)
{
  if (g->nrOfNames < ASN_MAX_PATH) {
    g->names[g->nrOfNames] = name;
    g->elements[g->nrOfNames] = element;
  }
  g->nrOfNames++;
}

void asnPushPath (ASNCODG *g, const char *name)
{
  pushStep (g, name, 0);
}

void asnPushElem (ASNCODG *g, uint32 element)
{
  pushStep (g, NULL, element);
}

/* Each push has its pop, so the length of the text that it takes off is not needed. */
void asnPopPath (ASNCODG *g, uint32 length)
{
  (void)length;
  if (g->nrOfNames > 0)
    g->nrOfNames--;
}
