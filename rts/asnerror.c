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
  util->memory = util->inHand = memory;
  util->homes = NULL;
  util->leave = NULL;
  util->allocated = FALSE;
  util->error.code = ASN_OK;
  util->error.offset = 0;
  util->error.path[0] = 0;
}

typedef void REENTRANT_FUNC (ASNUTIG *context, void *value);
typedef void PLAIN_FUNC (void *value);

void asnRun (ASNUTIG *util, int reentrant, ENTRYFUNC function, void *value)
{
  jmp_buf leave;
  util->leave = &leave;
  if (setjmp (leave) == 0) {
    if (reentrant)
      ((REENTRANT_FUNC *)function) (util, value);
    else
      ((PLAIN_FUNC *)function) (value);
  }
  util->leave = NULL;
}

/* --- the text of a path --- */

ASN_PATH asnStartPath (char *text, size_t room)
{
  ASN_PATH path = { text, room, room - 1 };
  return path;
}

static BOOLE putText (ASN_PATH *path, const char *text)
{
  const size_t length = strlen (text);
  if (length > path->used)
    return FALSE;
  path->used -= length;
  memcpy (path->text + path->used, text, length);
  return TRUE;
}

BOOLE asnPutStep (ASN_PATH *path, const char *name, uint32 element, BOOLE isFirst)
{
  char number[16];
  if (name)
    return putText (path, name) && (isFirst || putText (path, "."));
  (void)snprintf (number, sizeof number, "[%lu]", (unsigned long)element);
  return putText (path, number);
}

void asnEndPath (const ASN_PATH *path)
{
  const size_t length = path->room - 1 - path->used;
  memmove (path->text, path->text + path->used, length);
  path->text[length] = 0;
}

/* --- errors --- */

/* "Msg.lines[3].article" */
static void notePath (ASNCODG *g)
{
  ASN_PATH path = asnStartPath (g->util.error.path, ASN_PATH_TEXT);
  uint32 i = g->nrOfNames < ASN_MAX_PATH ? g->nrOfNames : ASN_MAX_PATH;
  while (i-- > 0 && asnPutStep (&path, g->names[i], g->elements[i], i == 0)) {
  }
  asnEndPath (&path);
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

/* Generated functions check constraints when the name of the component is off the path, and maybe the tag
   behind it read. The size of a list is checked behind its elements. */
static void returnToChecked (ASNCODG *g)
{
  const BOOLE isNamed = g->popped && g->nrOfNames < ASN_MAX_PATH && g->names[g->nrOfNames];
  if (!g->popped || (!isNamed && g->popped != g->element))
    return;
  g->element = g->popped;
  g->nrOfNames++;
}

void asnReportError (ASNCODG *g, int error)
{
  if (error == CONSTRAINT_FAIL && !asnFailed (g))
    returnToChecked (g);
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
  g->popped = NULL;
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
  g->popped = g->element;
}
