/* Changed encodings, from a fixed seed. */

#include "values.h"

#include <stdlib.h>

/* Octets that mean something as tag or length. */
static const BYTE_TYPE telling[] = { 0x00, 0x01, 0x7F, 0x80, 0x81, 0x82, 0x84, 0x88, 0xFF,
                                     0x1F, 0x3F, 0x9F, 0xBF, 0x24, 0x30, 0x31, 0xA0, 0xA1 };
#define MOST_OCTETS 3000

static uint32 chance (uint32 below)
{
  static uint32 state = 20021231;
  state ^= state << 13;
  state ^= state >> 17;
  state ^= state << 5;
  return state % below;
}

typedef struct {
  BYTE_TYPE octets[2 * MOST_OCTETS];
  size_t length;
} BUFFER;

/* Puts `size` octets in the place of `gone` octets. */
static void splice (BUFFER *b, size_t place, size_t gone, const BYTE_TYPE *octets, size_t size)
{
  BYTE_TYPE copy[MOST_OCTETS];
  if (b->length - gone + size > MOST_OCTETS)
    return;
  memcpy (copy, octets, size);
  memmove (b->octets + place + size, b->octets + place + gone, b->length - place - gone);
  memcpy (b->octets + place, copy, size);
  b->length += size - gone;
}

/* `earlier` is an encoding of another value. */
static void change (BUFFER *b, const BUFFER *earlier)
{
  const size_t place = chance ((uint32)b->length), rest = b->length - place;
  const size_t size = 1 + chance ((uint32)(rest < 20 ? rest : 20));
  BYTE_TYPE octet = telling[chance (sizeof telling)];
  switch (chance (7)) {
  case 0:
    b->octets[place] ^= (BYTE_TYPE)(1u << chance (8));
    break;
  case 1:
    b->octets[place] = octet;
    break;
  case 2:
    b->octets[place] = (BYTE_TYPE)(b->octets[place] + (chance (2) ? 1 : -1));
    break;
  case 3:
    if (b->length > size)
      splice (b, place, size, &octet, 0);
    break;
  case 4:
    splice (b, place, 0, &octet, 1);
    break;
  case 5:
    splice (b, place, 0, b->octets + place, size);
    break;
  default:
    if (earlier->length > 0)
      splice (b, place, 0, earlier->octets, earlier->length < 60 ? earlier->length : 60);
  }
}

/* What is decoded can be printed and encoded, and its encoding decoded. Only where the unknown alternative
   of an extensible choice was passed over there is nothing to encode, and printing says so. */
void checkEncoding (const ENTRYDESCR *row, const BYTE_TYPE *octets, size_t length)
{
  VALUE v;
  ASNERROR error;
  openValue (&v, row);
  if (decode (&v, octets, length, &error)) {
    VALUE again;
    ENCODING own;
    FILE *nowhere = fopen ("/dev/null", "w");
    BOOLE whole = asnPrint (row->print, v.value, nowhere, &error);
    if (!whole && error.code != VALUE_FAIL)
      fail (&v, asnErrorName (error.code), "while a decoded value is printed");
    fclose (nowhere);
    own.octets = asnEncodeNew (row->encode, v.value, &own.length, &error);
    if (!own.octets && error.code != VALUE_FAIL)
      fail (&v, asnErrorName (error.code), "while a decoded value is encoded");
    openValue (&again, row);
    if (own.octets && whole && !decode (&again, own.octets, own.length, &error))
      fail (&v, asnErrorName (error.code), "for the encoding of a decoded value");
    closeValue (&again);
    free (own.octets);
  }
  closeValue (&v);
}

void mutate (const ENTRYDESCR *row, const ENCODING *e, int times)
{
  static BUFFER earlier;
  if (e->length > MOST_OCTETS / 2)
    return;
  while (times-- > 0) {
    BUFFER b;
    uint32 changes = 1 + chance (4);
    memcpy (b.octets, e->octets, e->length);
    b.length = e->length;
    while (changes-- > 0)
      change (&b, &earlier);
    checkEncoding (row, b.octets, b.length);
  }
  memcpy (earlier.octets, e->octets, e->length);
  earlier.length = e->length;
}

/* --- texts --- */

static const char *const pieces[] = { "{",   "}",     "'",    "\"",   ":",     "-", "--", "\n", "\\",
                                      "...:", "0",    "9999", "'B",   "'H",    ",", " ",  "\x80", "-1",
                                      "1e99", "TRUE", "NULL", "{ }", "''H" };

static void changeText (char *text)
{
  const char *piece = pieces[chance (sizeof pieces / sizeof pieces[0])];
  const size_t length = strlen (text), size = strlen (piece);
  const size_t place = chance ((uint32)length + 1), rest = length - place;
  size_t gone = chance (2) ? 0 : chance (6);
  if (gone > rest)
    gone = rest;
  memmove (text + place + size, text + place + gone, rest - gone + 1);
  memcpy (text + place, piece, size);
}

void checkText (const ENTRYDESCR *row, char *text)
{
  VALUE v, again;
  ASNERROR error;
  openValue (&v, row);
  if (*text && askFor (&v, text, &error)) {
    char *printed = print (&v);
    openValue (&again, row);
    if (ask (&again, printed)) {
      char *same = print (&again);
      if (strcmp (printed, same) != 0)
        fail (&v, "is printed in two ways:", printed);
      free (same);
    }
    closeValue (&again);
    free (printed);
  }
  closeValue (&v);
}

void mutateText (const ENTRYDESCR *row, const char *text, int times)
{
  enum { MOST_CHANGES = 4, LONGEST_PIECE = 8 };
  if (strlen (text) > MOST_OCTETS)
    return;
  while (times-- > 0) {
    char changed[MOST_OCTETS + MOST_CHANGES * LONGEST_PIECE + 1];
    strcpy (changed, text);
    for (uint32 changes = 1 + chance (MOST_CHANGES); changes > 0; changes--)
      changeText (changed);
    checkText (row, changed);
  }
}
