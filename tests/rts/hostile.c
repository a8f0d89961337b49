/* Throws made-up encodings at the generated decoders of a module: hostile NUMBER-OF-TRIES SEED.

   Inputs are changed at random. One that a decoder reads further than its parent joins the pool of
   its type, so that valid values come up by and by; from each of those a round trip follows: what
   was decoded must encode, and that must decode and encode to the same octets. The sanitizers with
   which this is built watch the rest. */

#define ASNTST_MODULE 0 /* rows without asking and printing functions */

#include <stdio.h>
#include <stdlib.h>

#include "asnapi.h"
#include "asntyp.typ"

#include HOSTILE_TABLE /* "forms.tab", whose rows are HOSTILE_ROWS */

#define MAX_INPUT 400
#define POOL 40

typedef struct {
  size_t length;
  uint32 reached; /* where decoding ended; one more than the length if it succeeded */
  BYTE_TYPE octets[MAX_INPUT];
} INPUT;

typedef struct {
  const ENTRYDESCR *entry;
  size_t valueSize;
  unsigned nrOfInputs;
  unsigned long valid;
  INPUT inputs[POOL];
} TYPE;

static TYPE *types;
static unsigned nrOfTypes;
static unsigned long state;

static unsigned long randomBelow (unsigned long limit)
{
  state = state * 6364136223846793005ul + 1442695040888963407ul;
  return (state >> 33) % limit;
}

static void fail (const TYPE *type, const char *what, const BYTE_TYPE *octets, size_t length)
{
  printf ("%s: %s:", type->entry->name, what);
  for (size_t i = 0; i < length; i++)
    printf (" %02x", octets[i]);
  puts ("");
  exit (1);
}

static size_t sizeOf (const ENTRYDESCR *entry)
{
#if ASN_TABPARAM == 0
  return entry->size;
#else
  return entry->components * sizeof (ASNHOME *);
#endif
}

static BOOLE decode (const TYPE *type, const BYTE_TYPE *octets, size_t length, void *value,
                     ASNMEM *memory, ASNERROR *error)
{
  BYTE_TYPE *exact = (BYTE_TYPE *)malloc (length ? length : 1);
  BOOLE done;
  memcpy (exact, octets, length);
  done = asnDecode (type->entry->decode, exact, length, value, type->valueSize, memory, NULL, error);
  free (exact);
  return done;
}

static void roundTrip (const TYPE *type, const BYTE_TYPE *octets, size_t length, const void *value)
{
  ASNMEM memory = { NULL, NULL, 0, 0 };
  ASNERROR error;
  size_t first, second;
  void *again = malloc (type->valueSize);
  BYTE_TYPE *a, *b;
  a = asnEncodeNew (type->entry->encode, value, &first, &error);
  if (!a && error.code == VALUE_FAIL) { /* a choice of something unknown, which is not kept */
    free (again);
    return;
  }
  if (!a) {
    printf ("%s: ", asnErrorName (error.code));
    fail (type, "decoded, but does not encode", octets, length);
  }
  if (!decode (type, a, first, again, &memory, &error)) {
    printf ("%s at %lu: ", asnErrorName (error.code), (unsigned long)error.offset);
    fail (type, "own encoding does not decode", a, first);
  }
  b = asnEncodeNew (type->entry->encode, again, &second, &error);
  if (!b || first != second || memcmp (a, b, first) != 0)
    fail (type, "encodes otherwise the second time", octets, length);
  free (a);
  free (b);
  free (again);
  asnFreeMemory (&memory);
}

/* Tells how far decoding comes. */
static uint32 try (TYPE *type, const INPUT *input)
{
  ASNMEM memory = { NULL, NULL, 0, 0x1000000 };
  ASNERROR error;
  void *value = malloc (type->valueSize);
  BOOLE done = decode (type, input->octets, input->length, value, &memory, &error);
  if (done) {
    type->valid++;
    roundTrip (type, input->octets, input->length, value);
  }
  asnFreeMemory (&memory);
  free (value);
  return done ? (uint32)input->length + 1 : error.offset;
}

/* --- changes --- */

static void insert (INPUT *input, size_t at, const BYTE_TYPE *octets, size_t n)
{
  if (input->length + n > MAX_INPUT)
    return;
  memmove (input->octets + at + n, input->octets + at, input->length - at);
  memmove (input->octets + at, octets, n);
  input->length += n;
}

static BYTE_TYPE interestingOctet (void)
{
  static const BYTE_TYPE octets[] = { 0, 0, 1, 2, 3, 4, 5, 6, 9, 10, 0x16, 0x7F, 0x80, 0x81, 0x82,
                                      0x84, 0x9F, 0xA0, 0xA1, 0xA2, 0xFF, 0x30, 0x31, 0x24, 0x1E };
  return randomBelow (3) ? octets[randomBelow (sizeof octets)] : (BYTE_TYPE)randomBelow (256);
}

/* A small element of some type, often one that is right where decoding stopped. */
static void insertElement (INPUT *input, size_t at)
{
  static const BYTE_TYPE elements[][9] = {
    { 3, 1, 1, 0xFF },          { 3, 2, 1, 5 },          { 3, 4, 1, 'a' }, { 3, 0x16, 1, 'a' },
    { 3, 10, 1, 1 },            { 2, 5, 0 },             { 3, 6, 1, 0x2A }, { 3, 0x80, 1, 'a' },
    { 3, 0x81, 1, 'a' },        { 3, 0x82, 1, 1 },       { 5, 0xA0, 3, 2, 1, 5 },
    { 5, 0x30, 3, 2, 1, 5 },    { 5, 0x31, 3, 2, 1, 5 }, { 2, 0x30, 0 },   { 2, 0xA1, 0 },
    { 8, 0x30, 6, 2, 1, 5, 2, 1, 6 }, { 8, 0xA1, 6, 2, 1, 5, 2, 1, 6 },
    { 8, 4, 6, '1', '2', '3', '4', '5', '6' }, { 4, 0x30, 0x80, 0, 0 },
  };
  const BYTE_TYPE *element = elements[randomBelow (sizeof elements / sizeof elements[0])];
  insert (input, at, element + 1, element[0]);
}

static void insertPiece (INPUT *input, size_t at, const INPUT *other)
{
  size_t from = randomBelow (other->length + 1);
  size_t n = randomBelow (other->length - from + 1);
  BYTE_TYPE piece[MAX_INPUT];
  memcpy (piece, other->octets + from, n);
  insert (input, at, piece, n);
}

static void change (INPUT *input, const TYPE *type)
{
  size_t at = randomBelow (input->length + 1), left, n;
  BYTE_TYPE octet = interestingOctet ();
  if (input->reached <= input->length && randomBelow (2))
    at = input->reached;
  left = input->length - at;
  switch (randomBelow (7)) {
  case 0:
    if (left > 0)
      input->octets[at] = octet;
    break;
  case 1:
    if (left > 0)
      input->octets[at] = (BYTE_TYPE)(input->octets[at] + randomBelow (7) - 3);
    break;
  case 2:
    insertElement (input, at);
    break;
  case 3:
    insert (input, at, &octet, 1);
    break;
  case 4:
    n = left ? 1 + randomBelow (left < 4 ? left : 4) : 0;
    memmove (input->octets + at, input->octets + at + n, left - n);
    input->length -= n;
    break;
  case 5:
    insertPiece (input, at, &type->inputs[randomBelow (type->nrOfInputs)]);
    break;
  default:
    break;
  }
}

/* Makes the length of what begins at `at` fit all that follows. */
static void mendLength (INPUT *input, size_t at)
{
  if (at + 2 <= input->length && input->length - at - 2 < 0x80 && (input->octets[at] & 0x20))
    input->octets[at + 1] = (BYTE_TYPE)(input->length - at - 2);
}

static void keep (TYPE *type, const INPUT *input)
{
  if (type->nrOfInputs < POOL)
    type->inputs[type->nrOfInputs++] = *input;
  else
    type->inputs[randomBelow (POOL)] = *input;
}

static void tryChanged (TYPE *type)
{
  INPUT input = type->inputs[randomBelow (type->nrOfInputs)];
  uint32 before = input.reached;
  for (unsigned long n = 1 + randomBelow (4); n > 0; n--)
    change (&input, type);
  if (randomBelow (4) == 0)
    mendLength (&input, 2);
  if (randomBelow (2))
    mendLength (&input, 0);
  input.reached = try (type, &input);
  if (input.reached > before || (input.reached > input.length && randomBelow (4) == 0))
    keep (type, &input);
}

/* --- types --- */

static void addTypes (const ENTRYDESCR *table, size_t n)
{
  types = (TYPE *)realloc (types, (nrOfTypes + n) * sizeof (TYPE));
  for (size_t i = 0; i < n; i++) {
    TYPE *type = &types[nrOfTypes];
    if (!table[i].encode || !table[i].decode)
      continue;
    memset (type, 0, sizeof *type);
    type->entry = &table[i];
    type->valueSize = sizeOf (&table[i]);
    type->inputs[0].octets[0] = 0x30;
    type->inputs[0].length = 2;
    type->nrOfInputs = 1;
    nrOfTypes++;
  }
}

int main (int argc, char **argv)
{
  unsigned long tries = argc > 1 ? strtoul (argv[1], NULL, 10) : 100000, valid = 0;
  state = argc > 2 ? strtoul (argv[2], NULL, 10) : 1;
  addTypes (HOSTILE_ROWS, sizeof HOSTILE_ROWS / sizeof HOSTILE_ROWS[0]);
  for (unsigned long i = 0; i < tries; i++)
    tryChanged (&types[i % nrOfTypes]);
  for (unsigned i = 0; i < nrOfTypes; i++) {
    valid += types[i].valid;
    if (types[i].valid == 0)
      printf ("%s: no valid value was found\n", types[i].entry->name);
  }
  printf ("%lu tries, %lu valid values\n", tries, valid);
  free (types);
  return 0;
}
