/* Encoding and decoding for programs. */

#include "asnapi.h"
#include "asnint.h"

#include <stdlib.h>

ASNCODG asncodgGlobal;

static void tell (const ASNCODG *g, ASNERROR *error)
{
  if (error)
    *error = g->util.error;
}

/* --- encoding --- */

BYTE_TYPE *asnEncoded (ASNCODG *g, size_t *length, ASNERROR *error)
{
  if (!asnFailed (g) && asnUsed (g) == 0) /* a choice of nothing */
    asnRaise (&g->util, VALUE_FAIL);
  tell (g, error);
  if (length)
    *length = asnFailed (g) ? 0 : asnUsed (g);
  return asnFailed (g) ? NULL : g->front;
}

/* Values are only read: the functions of homes, which free them, get an array that can change. */
static void *changeable (const void *value)
{
  return (void *)(size_t)value;
}

BYTE_TYPE *asnEncodeWith (int reentrant, ENTRYFUNC encode, const void *value, void *buffer,
                          size_t size, size_t *length, ASNERROR *error)
{
  ASNCODG own, *g = reentrant ? &own : &asncodgGlobal;
  asnOpenEncoder (g, buffer, size);
  asnRun (&g->util, reentrant, encode, changeable (value));
  return asnEncoded (g, length, error);
}

BYTE_TYPE *asnEncodeNewWith (int reentrant, ENTRYFUNC encode, const void *value, size_t *length,
                             ASNERROR *error)
{
  ASNCODG own, *g = reentrant ? &own : &asncodgGlobal;
  BYTE_TYPE *front;
  size_t used;
  asnOpenEncoder (g, NULL, 0);
  g->growing = TRUE;
  asnRun (&g->util, reentrant, encode, changeable (value));
  front = asnEncoded (g, &used, error);
  if (!front) {
    free (g->room);
    return NULL;
  }
  if (length)
    *length = used;
  front = g->room;
  if (used > 0)
    memmove (front, g->front, used);
  return front;
}

/* --- decoding --- */

BOOLE asnDecoded (ASNCODG *g, size_t *used, ASNERROR *error)
{
  size_t length;
  asnCloseLevels (g);
  length = (size_t)(g->place - g->start);
  if (!asnFailed (g) && !used && g->place != g->limit) {
    g->element = g->place;
    asnRaise (&g->util, REST_FAIL);
  }
  if (used)
    *used = asnFailed (g) ? 0 : length;
  tell (g, error);
  return !asnFailed (g);
}

BOOLE asnDecodeWith (int reentrant, ENTRYFUNC decode, const void *buffer, size_t length, void *value,
                     size_t size, ASNMEM *memory, size_t *used, ASNERROR *error)
{
  ASNCODG own, *g = reentrant ? &own : &asncodgGlobal;
  memset (value, 0, size);
  asnOpenDecoder (g, buffer, length, memory);
  if (!asnFailed (g))
    asnRun (&g->util, reentrant, decode, value);
  return asnDecoded (g, used, error);
}
