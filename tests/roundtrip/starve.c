#define _GNU_SOURCE

/* Allocations and output that fail: the linker leads the calls of the layer and of generated code here. */

#include "values.h"

#include <errno.h>
#include <stdlib.h>

extern void *__real_malloc (size_t size);
extern void *__real_calloc (size_t count, size_t size);
extern void *__real_realloc (void *memory, size_t size);
void *__wrap_malloc (size_t size);
void *__wrap_calloc (size_t count, size_t size);
void *__wrap_realloc (void *memory, size_t size);

static int calls, failing; /* the number of the call that fails; 0: none */

static BOOLE fails (void)
{
  return failing != 0 && ++calls == failing;
}

void *__wrap_malloc (size_t size)
{
  return fails () ? NULL : __real_malloc (size);
}

void *__wrap_calloc (size_t count, size_t size)
{
  return fails () ? NULL : __real_calloc (count, size);
}

void *__wrap_realloc (void *memory, size_t size)
{
  return fails () ? NULL : __real_realloc (memory, size);
}

static void arm (int number)
{
  calls = 0;
  failing = number;
}

/* True if the call that was to fail came; what was done must have failed then, and for that reason. */
static BOOLE disarm (const VALUE *v, BOOLE done, const ASNERROR *error, BOOLE writes, const char *what)
{
  BOOLE came = calls >= failing;
  failing = 0;
  if (came && (done || (error->code != LACK_OF_MEMORY && !(writes && error->code == ROOM_FAIL))))
    fail (v, done ? "doesn't notice a failure:" : asnErrorName (error->code), what);
  if (!came && !done)
    fail (v, asnErrorName (error->code), what);
  return came;
}

static BOOLE starveDecoder (VALUE *v, const ENCODING *e, int number)
{
  ASNERROR error;
  BOOLE done;
  arm (number);
  done = asnDecode (v->row->decode, e->octets, e->length, v->value, v->size, &v->memory, NULL, &error);
  return disarm (v, done, &error, FALSE, "decoding without memory");
}

static BOOLE starveEncoder (VALUE *v, const ENCODING *e, int number)
{
  ASNERROR error;
  BYTE_TYPE *octets;
  size_t length;
  BOOLE came;
  if (!decode (v, e->octets, e->length, &error))
    return FALSE;
  arm (number);
  octets = asnEncodeNew (v->row->encode, v->value, &length, &error);
  came = disarm (v, octets != NULL, &error, FALSE, "encoding without memory");
  free (octets);
  return came;
}

static BOOLE starveAsking (VALUE *v, const char *text, int number)
{
  ASNERROR error;
  BOOLE done;
  FILE *in = fmemopen ((char *)text, strlen (text), "r");
  (void)getc (in); /* the stream has its buffer now */
  rewind (in);
  arm (number);
  done = asnAsk (v->row->ask, v->value, v->size, &v->memory, in, NULL, &error);
  done = disarm (v, done, &error, FALSE, "asking without memory");
  fclose (in);
  return done;
}

static ssize_t writeNothing (void *cookie, const char *octets, size_t size)
{
  (void)cookie;
  (void)octets;
  if (!fails ())
    return (ssize_t)size;
  errno = ENOSPC;
  return 0;
}

static BOOLE failPrinting (VALUE *v, const ENCODING *e, int number)
{
  static const cookie_io_functions_t functions = { .write = writeNothing };
  static char buffer[16];
  ASNERROR error;
  BOOLE done;
  FILE *out;
  if (!decode (v, e->octets, e->length, &error))
    return FALSE;
  out = fopencookie (NULL, "w", functions);
  setvbuf (out, buffer, _IOFBF, sizeof buffer);
  arm (number);
  done = asnPrint (v->row->print, v->value, out, &error);
  done = disarm (v, done, &error, TRUE, "printing to a full disk");
  fclose (out);
  return done;
}

void starve (const ENTRYDESCR *row, const ENCODING *e, const char *text)
{
  for (int kind = 0; kind < 4; kind++) {
    BOOLE came = TRUE;
    for (int number = 1; came && failures < 20; number++) {
      VALUE v;
      openValue (&v, row);
      switch (kind) {
        case 0: came = starveDecoder (&v, e, number); break;
        case 1: came = starveEncoder (&v, e, number); break;
        case 2: came = starveAsking (&v, text, number); break;
        default: came = failPrinting (&v, e, number);
      }
      closeValue (&v);
    }
  }
}
