/* Printing of strings, in all the forms that C has for them. */

#include "asntest.h"

/* --- digits --- */

#define OCTETS_OF_LINE 32u
#define BITS_OF_LINE 64u

/* Between two digits: many of them take several lines. */
static void breakLine (ASNTSTG *g, uint32 i, uint32 ofLine)
{
  if (i > 0 && i % ofLine == 0)
    asnPriLine (g);
}

void asnPriDigits (ASNTSTG *g, const BYTE_TYPE *octets, uint32 length)
{
  fputc ('\'', g->out);
  for (uint32 i = 0; i < length; i++) {
    breakLine (g, i, OCTETS_OF_LINE);
    fprintf (g->out, "%02X", octets[i]);
  }
  fputs ("'H", g->out);
}

static BOOLE bitAt (const BYTE_TYPE *st, uint32 i)
{
  return st[i / 8] >> (7 - i % 8) & 1;
}

static void printBinary (ASNTSTG *g, uint32 n, const BYTE_TYPE *st)
{
  fputc ('\'', g->out);
  for (uint32 i = 0; i < n; i++) {
    breakLine (g, i, BITS_OF_LINE);
    fputc ('0' + bitAt (st, i), g->out);
  }
  fputs ("'B", g->out);
}

/* Whether names say all of a string: each one that is set has a name, and behind the last one stands
   nothing, or only what the size of the type demands. */
static BOOLE areBitsNamed (const ASNTSTG *g, uint32 n, const BYTE_TYPE *st, BOOLE isSizeFixed)
{
  uint32 set = 0;
  if (g->nrOfNamed == 0)
    return FALSE;
  for (uint32 i = 0; i < n; i++)
    if (bitAt (st, i)) {
      if (!asnNameOfNumber (g, i))
        return FALSE;
      set = i + 1;
    }
  return set == n || isSizeFixed;
}

static void printBits (ASNTSTG *g, uint32 n, const BYTE_TYPE *st, BOOLE isSizeFixed)
{
  if (!areBitsNamed (g, n, st, isSizeFixed)) {
    if (n > BITS_OF_LINE && n % 8 == 0)
      asnPriDigits (g, st, n / 8);
    else
      printBinary (g, n, st);
    return;
  }
  fputs ("{ ", g->out);
  for (uint32 i = 0; i < n; i++)
    if (bitAt (st, i))
      fprintf (g->out, "%s ", asnNameOfNumber (g, i));
  fputc ('}', g->out);
}

/* --- characters --- */

static void printCharacter (ASNTSTG *g, uint32 character, uint32 width)
{
  if (character == '"' || character == '\\')
    fprintf (g->out, "\\%c", (int)character);
  else if (character >= ' ' && character < 0x7F)
    fputc ((int)character, g->out);
  else if (width == 1)
    fprintf (g->out, "\\x%02X", (unsigned)character);
  else if (width == 2)
    fprintf (g->out, "\\u%04X", (unsigned)character);
  else
    fprintf (g->out, "\\U%08lX", (unsigned long)character);
}

static uint32 characterAt (const BYTE_TYPE *st, uint32 width, uint32 i)
{
  uint16 half;
  uint32 character;
  if (width == 1)
    return st[i];
  if (width == 2) {
    memcpy (&half, st + 2 * (size_t)i, sizeof half);
    return half;
  }
  memcpy (&character, st + 4 * (size_t)i, sizeof character);
  return character;
}

/* A character of a segment is kept as it is encoded. */
static uint32 encodedAt (const BYTE_TYPE *st, uint32 width, uint32 i)
{
  uint32 character = 0;
  st += (size_t)i * width;
  for (uint32 octet = 0; octet < width; octet++)
    character = character << 8 | st[octet];
  return character;
}

static void printCharacters (ASNTSTG *g, uint32 width, uint32 n, const BYTE_TYPE *st,
                             uint32 (*at) (const BYTE_TYPE *, uint32, uint32))
{
  fputc ('"', g->out);
  for (uint32 i = 0; i < n; i++)
    printCharacter (g, at (st, width, i), width);
  fputc ('"', g->out);
}

/* --- forms --- */

void asnPriString (ASNTSTG *g, const char *name, uint32 how, uint32 n, const void *st,
                   const void *array, size_t arraySize)
{
  uint32 kindNr = ASN_KIND_OF (how);
  if (!asnPriBegin (g, name))
    return;
  if (!asnIsWithinArray (how, n, st, array, arraySize))
    asnPriNothing (g);
  else if (kindNr == ASN_BIT_)
    printBits (g, n, (const BYTE_TYPE *)st, ASN_LENGTH_SIZE (how) == 0);
  else if (kindNr == ASN_OCTET_)
    asnPriDigits (g, (const BYTE_TYPE *)st, n);
  else
    printCharacters (g, asnStringKinds[kindNr].width, n, asnElementsOf (how, st, array),
                     characterAt);
  asnPriEnd (g);
}

static void printSegment (ASNTSTG *g, uint32 kindNr, const DYNSTR *segment)
{
  if (!segment->st && segment->n > 0)
    asnPriNothing (g);
  else if (kindNr == ASN_BIT_)
    printBinary (g, segment->n, segment->st);
  else if (kindNr == ASN_OCTET_)
    asnPriDigits (g, segment->st, segment->n);
  else
    printCharacters (g, asnStringKinds[kindNr].width, segment->n, segment->st, encodedAt);
}

/* { "one" "two" } */
void asnPriSegments (ASNTSTG *g, const char *name, uint32 kindNr, const LIST *list)
{
  if (!asnPriBegin (g, name))
    return;
  fputs ("{ ", g->out);
  for (const ASNHOME *item = list->first; item; item = item->next) {
    printSegment (g, kindNr, &item->val.dyns);
    fputc (' ', g->out);
  }
  fputc ('}', g->out);
  asnPriEnd (g);
}
