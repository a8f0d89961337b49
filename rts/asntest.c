/* Contexts of asking and printing: how they begin and end, and where they stand. */

#include "asntest.h"

#include "asnapi.h"

#include <stdlib.h>

ASNTSTG asntstgGlobal;

/* --- paths --- */

void asnTestPath (const ASNTSTG *g, char *text, size_t room)
{
  ASN_PATH path = asnStartPath (text, room);
  uint32 depth = g->depth;
  BOOLE fits = TRUE;
  if (g->hasName)
    fits = asnPutStep (&path, g->name, g->element, depth == 0);
  while (fits && depth-- > 0)
    fits = asnPutStep (&path, g->levels[depth].name, g->levels[depth].element, depth == 0);
  asnEndPath (&path);
}

/* --- names of numbers --- */

void asnSetNamedDef (ASNTSTG *g, const char *name, sint64 value)
{
  if (!name) {
    g->nrOfNamed = 0;
    return;
  }
  if (g->nrOfNamed == g->maxNamed) {
    uint32 more = g->maxNamed ? 2 * g->maxNamed : 16;
    ASN_NAMED_NUMBER *named = (ASN_NAMED_NUMBER *)realloc (g->named, more * sizeof *named);
    if (!named) {
      asnRaiseFatal (&g->util, LACK_OF_MEMORY);
      return;
    }
    g->named = named;
    g->maxNamed = more;
  }
  g->named[g->nrOfNamed].name = name;
  g->named[g->nrOfNamed].value = value;
  g->named[g->nrOfNamed].chosen = FALSE;
  g->nrOfNamed++;
}

const char *asnNameOfNumber (const ASNTSTG *g, sint64 value)
{
  for (uint32 i = 0; i < g->nrOfNamed; i++)
    if (g->named[i].value == value)
      return g->named[i].name;
  return NULL;
}

ASN_NAMED_NUMBER *asnNumberOfName (ASNTSTG *g, const char *name)
{
  for (uint32 i = 0; i < g->nrOfNamed; i++)
    if (strcmp (g->named[i].name, name) == 0)
      return &g->named[i];
  return NULL;
}

/* --- beginning and end --- */

void asnOpenTester (ASNTSTG *g, FILE *in, FILE *out, ASNMEM *memory)
{
  asnInitUtil (&g->util, ASN_TESTING_, memory);
  g->in = in;
  g->out = out;
  g->refused = ASN_OK;
  g->line = g->lastLine = 1;
  g->ahead = ASN_NO_CHAR_;
  g->lineBegins = TRUE;
  g->word = ASN_NO_WORD_;
  g->taken = 0;
  g->text = NULL;
  g->length = g->room = 0;
  g->name = NULL;
  g->hasName = FALSE;
  g->nrOfNamed = g->maxNamed = 0;
  g->named = NULL;
  g->braces = 0;
  g->depth = 0;
}

BOOLE asnCloseTester (ASNTSTG *g, ASNERROR *error)
{
  ASNERROR *own = &g->util.error;
  if (own->code == ASN_OK && g->refused != ASN_OK)
    own->code = g->refused;
  if (own->code != ASN_OK) {
    own->offset = g->in ? g->line : 0;
    asnTestPath (g, own->path, sizeof own->path);
  }
  if (g->out && (fflush (g->out) != 0 || ferror (g->out)) && own->code == ASN_OK)
    own->code = ROOM_FAIL;
  if (g->in && g->ahead >= 0) /* it belongs to what comes next */
    (void)ungetc (g->ahead, g->in);
  g->ahead = ASN_NO_CHAR_;
  free (g->text);
  free (g->named);
  g->text = NULL;
  g->named = NULL;
  g->room = 0;
  g->nrOfNamed = g->maxNamed = 0;
  if (error)
    *error = *own;
  return own->code == ASN_OK;
}

/* --- the interface for programs --- */

BOOLE asnPrintWith (int reentrant, ENTRYFUNC print, const void *value, FILE *out, ASNERROR *error)
{
  ASNTSTG own, *g = reentrant ? &own : &asntstgGlobal;
  asnOpenTester (g, NULL, out, NULL);
  asnRun (&g->util, reentrant, print, (void *)(size_t)value);
  if (!asnTestFailed (g) && ferror (out))
    g->refused = ROOM_FAIL;
  return asnCloseTester (g, error);
}

BOOLE asnAskWith (int reentrant, ENTRYFUNC ask, void *value, size_t size, ASNMEM *memory, FILE *in,
                  FILE *out, ASNERROR *error)
{
  ASNTSTG own, *g = reentrant ? &own : &asntstgGlobal;
  memset (value, 0, size);
  asnOpenTester (g, in, out, memory);
  asnRun (&g->util, reentrant, ask, value);
  return asnCloseTester (g, error);
}
