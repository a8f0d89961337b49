/* Printing: components with their braces, numbers, and what is given by name. */

#include "asntest.h"

#include <locale.h>
#include <math.h>
#include <stdlib.h>

#define INDENT 2

/* --- places --- */

void asnPriLine (ASNTSTG *g)
{
  fprintf (g->out, "\n%*s", (int)(INDENT * g->braces), "");
}

/* The brace of a level is printed when it is known that the level is no frame. */
static void openBrace (ASNTSTG *g, ASN_TEST_LEVEL *level)
{
  if (level->opened || level->form > ASN_LIST_)
    return;
  level->opened = TRUE;
  fputc ('{', g->out);
  g->braces++;
}

BOOLE asnPriBegin (ASNTSTG *g, const char *name)
{
  ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (asnTestFailed (g) || !g->out)
    return FALSE;
  g->name = name;
  g->element = level ? level->begun++ : 0;
  g->hasName = TRUE;
  if (level) {
    openBrace (g, level);
    if (level->opened)
      asnPriLine (g);
  }
  if (name)
    fprintf (g->out, "%s: ", name);
  return TRUE;
}

void asnPriEnd (ASNTSTG *g)
{
  g->nrOfNamed = 0;
  if (g->depth == 0)
    fputc ('\n', g->out);
}

void asnPriNothing (ASNTSTG *g)
{
  fputc ('?', g->out);
  if (g->refused == ASN_OK)
    g->refused = VALUE_FAIL;
}

void asnPriBegComp (ASNTSTG *g, const char *name, int status, int mainType)
{
  (void)status;
  if (asnPriBegin (g, name))
    (void)asnPushLevel (g, mainType);
}

void asnPriEndComp (ASNTSTG *g)
{
  const ASN_TEST_LEVEL *level = asnTopLevel (g);
  if (asnTestFailed (g) || !g->out || !level)
    return;
  if (level->opened) {
    g->braces--;
    asnPriLine (g);
    fputc ('}', g->out);
  } else if (level->form <= ASN_LIST_) {
    fputs ("{ }", g->out);
  } else if (level->form == ASN_CHOICE_ && level->begun == 0) {
    asnPriNothing (g); /* no alternative is chosen */
  }
  asnPopLevel (g);
  asnPriEnd (g);
}

/* --- names and whole numbers --- */

static void printWord (ASNTSTG *g, const char *name, const char *word)
{
  if (!asnPriBegin (g, name))
    return;
  fputs (word, g->out);
  asnPriEnd (g);
}

void asnPriBoolean (ASNTSTG *g, const char *name, BOOLE value)
{
  printWord (g, name, value ? "TRUE" : "FALSE");
}

void asnPriNull (ASNTSTG *g, const char *name)
{
  printWord (g, name, "NULL");
}

void asnPriInteger (ASNTSTG *g, const char *name, sint64 value)
{
  const char *word = asnNameOfNumber (g, value);
  char digits[32];
  if (!word)
    (void)snprintf (digits, sizeof digits, "%lld", (long long)value);
  printWord (g, name, word ? word : digits);
}

void asnPriUnsigned (ASNTSTG *g, const char *name, uint64 value)
{
  char digits[32];
  if (value <= (uint64)INT64_MAX) {
    asnPriInteger (g, name, (sint64)value);
    return;
  }
  (void)snprintf (digits, sizeof digits, "%llu", (unsigned long long)value);
  printWord (g, name, digits);
}

void asnPriXEnum (ASNTSTG *g, const char *name, const EXTENSIBLE_ENUMERATED *value)
{
  asnPriInteger (g, name, value->value);
}

/* --- real numbers --- */

/* What becomes of a number when the form that holds it reads the text. */
static REAL128 readBack (const char *text, int digits)
{
  return asnRealOfText (text, NULL, digits <= FLT_DIG + 3   ? sizeof (REAL32)
                                    : digits <= DBL_DIG + 2 ? sizeof (REAL64)
                                                            : sizeof (REAL128));
}

/* The decimal point of the program's language becomes a point. */
static void usePoint (char *text)
{
  const char *point = localeconv ()->decimal_point;
  char *found = strstr (text, point);
  if (!found)
    return;
  *found = '.';
  memmove (found + 1, found + strlen (point), strlen (found + strlen (point)) + 1);
}

/* A few digits less tell most numbers as well. */
static void printNumber (ASNTSTG *g, const char *name, REAL128 value, int digits)
{
  char text[80];
  int fewer = digits - 3;
  do
    (void)snprintf (text, sizeof text, "%.*Lg", fewer, value);
  while (fewer++ < digits && readBack (text, digits) != value);
  usePoint (text);
  printWord (g, name, text);
}

void asnPriReal (ASNTSTG *g, const char *name, REAL128 value, int digits)
{
  if (isnan (value))
    printWord (g, name, "NOT-A-NUMBER");
  else if (isinf (value))
    printWord (g, name, value > 0 ? "PLUS-INFINITY" : "MINUS-INFINITY");
  else
    printNumber (g, name, value, digits);
}
