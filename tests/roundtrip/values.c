#define _POSIX_C_SOURCE 200809L

#include "values.h"

#include <stdlib.h>

int failures;
const char *script;
int scriptLine;

void fail (const VALUE *v, const char *what, const char *detail)
{
  fprintf (stderr, "%s:%d: %s: %s %s\n", script, scriptLine, v->row->name, what, detail);
  failures++;
}

int numberOf (const ENTRYDESCR *row)
{
  int number = 0;
  for (int i = 0; i < nrOfModules; i++) {
    if (row >= modules[i].rows && row < modules[i].rows + modules[i].nrOfRows)
      return number + (int)(row - modules[i].rows);
    number += modules[i].nrOfRows;
  }
  return number;
}

const ENTRYDESCR *rowNumbered (int number)
{
  int rows = 0, i = 0;
  for (int j = 0; j < nrOfModules; j++)
    rows += modules[j].nrOfRows;
  for (number %= rows; number >= modules[i].nrOfRows; i++)
    number -= modules[i].nrOfRows;
  return &modules[i].rows[number];
}

void openValue (VALUE *v, const ENTRYDESCR *row)
{
  v->row = row;
#if ASN_TABPARAM /* an application that keeps components in homes has a table of pointers */
  v->size = row->components * sizeof (ASNHOME *);
#else
  v->size = row->size;
#endif
  v->value = calloc (1, v->size);
  memset (&v->memory, 0, sizeof v->memory);
}

void closeValue (VALUE *v)
{
  asnFreeMemory (&v->memory);
  free (v->value);
}

BOOLE askFor (VALUE *v, char *text, ASNERROR *error)
{
  FILE *in = fmemopen (text, strlen (text), "r");
  BOOLE done = asnAsk (v->row->ask, v->value, v->size, &v->memory, in, NULL, error);
  fclose (in);
  return done;
}

BOOLE ask (VALUE *v, char *text)
{
  ASNERROR error;
  BOOLE done = askFor (v, text, &error);
  if (!done) {
    fail (v, asnErrorName (error.code), "while it is asked for");
    fprintf (stderr, "in line %lu, %s, of\n%s", (unsigned long)error.offset, error.path, text);
  }
  return done;
}

char *print (const VALUE *v)
{
  ASNERROR error;
  char *text = NULL;
  size_t length;
  FILE *out = open_memstream (&text, &length);
  if (!asnPrint (v->row->print, v->value, out, &error))
    fail (v, asnErrorName (error.code), "while it is printed");
  fclose (out);
  return text;
}

ENCODING encode (const VALUE *v)
{
  ASNERROR error;
  ENCODING e;
  e.octets = asnEncodeNew (v->row->encode, v->value, &e.length, &error);
  if (!e.octets) {
    fail (v, asnErrorName (error.code), error.path);
    e.length = 0;
  }
  return e;
}

BOOLE decode (VALUE *v, const BYTE_TYPE *octets, size_t length, ASNERROR *error)
{
  BYTE_TYPE *exact = malloc (length ? length : 1);
  BOOLE done;
  memcpy (exact, octets, length);
  done = asnDecode (v->row->decode, exact, length, v->value, v->size, &v->memory, NULL, error);
  free (exact);
  return done;
}
