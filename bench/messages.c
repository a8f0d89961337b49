/* Encodes and decodes the messages of messages.asn through the codec that it is linked with, and
   prints for each and both directions its octets, nanoseconds and allocations. "messages TYPE encode"
   or "... decode" does that once within the function `measured`, for a program that counts
   instructions. Decoding includes the checks of constraints and freeing the value. */

#include "messages.h"

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

/* --- allocations; the linker puts these functions in front of the library's --- */

static unsigned long allocations;

void *__real_malloc (size_t size);
void *__real_calloc (size_t n, size_t size);
void *__real_realloc (void *old, size_t size);
void *__wrap_malloc (size_t size);
void *__wrap_calloc (size_t n, size_t size);
void *__wrap_realloc (void *old, size_t size);

void *__wrap_malloc (size_t size)
{
  allocations++;
  return __real_malloc (size);
}

void *__wrap_calloc (size_t n, size_t size)
{
  allocations++;
  return __real_calloc (n, size);
}

void *__wrap_realloc (void *old, size_t size)
{
  allocations++;
  return __real_realloc (old, size);
}

/* --- the messages as octets --- */

#define ROOM 8000

typedef struct {
  unsigned char octets[ROOM];
  size_t length;
} MESSAGE;

/* Puts a tag and length in front of the octets from `start` on. */
static void putHeader (MESSAGE *m, size_t start, unsigned char tag)
{
  const size_t length = m->length - start, size = length < 0x80 ? 2 : length < 0x100 ? 3 : 4;
  unsigned char *header = m->octets + start;
  memmove (header + size, header, length);
  header[0] = tag;
  header[1] = (unsigned char)(0x80 + size - 2);
  if (size == 4)
    header[2] = (unsigned char)(length >> 8);
  header[size - 1] = (unsigned char)length;
  m->length += size;
}

/* Appends what a text says up to its end or a closing bracket: octets in hexadecimal digits, 'text', and
   a tag with its contents in brackets. */
static const char *put (MESSAGE *m, const char *text)
{
  while (*text && *text != ')') {
    if (*text == '\'') {
      for (text++; *text != '\''; text++)
        m->octets[m->length++] = (unsigned char)*text;
      text++;
    } else if (*text == ' ') {
      text++;
    } else {
      const char digits[3] = { text[0], text[1], 0 };
      const unsigned char octet = (unsigned char)strtoul (digits, NULL, 16);
      text += 2;
      if (*text == '(') {
        const size_t start = m->length;
        text = put (m, text + 1) + 1;
        putHeader (m, start, octet);
      } else {
        m->octets[m->length++] = octet;
      }
    }
  }
  return text;
}

static void putNumbers (MESSAGE *m)
{
  for (int i = 0; i < 1000; i++) {
    const int number = 39 * i - 60;
    const int digits = number >= -128 && number < 128 ? 2 : number < 32768 ? 4 : 6;
    char text[20];
    snprintf (text, sizeof text, "02(%0*X)", digits, (unsigned)number & ((1u << 4 * digits) - 1));
    put (m, text);
  }
  putHeader (m, 0, 0x30);
}

static void putLevels (MESSAGE *m, int depth)
{
  put (m, "02(05)");
  while (depth-- > 0)
    putHeader (m, 0, 0xA0);
}

static const char search[] =
  "30(02(2A) 63(04('dc=example,dc=org') 0A(02) 02(01F4)"
  "  A0(A3(04('objectClass') 04('person')) A4(04('cn') 30(80('Jo') 81('h') 82('son'))) 87('mail'))"
  "  30(80('Dr') 81('Ann') 82('Johnson') 83('North End 4') 84('Bath') 85('Somerset') 86('England')"
  "     87('+44 1225 000') 88('ann@example.org') 89('Example Works') 8A('Accounts') 8B('214'))))";

static void makeMessage (MESSAGE *m, int message)
{
  m->length = 0;
  switch (message) {
  case MESSAGE_Small:
    put (m, "30(02(05) 80('message') 01(FF))");
    break;
  case MESSAGE_Numbers:
  case MESSAGE_Chain:
    putNumbers (m);
    break;
  case MESSAGE_Search:
    put (m, search);
    break;
  default:
    putLevels (m, message == MESSAGE_Level6 ? 6 : message == MESSAGE_Level12 ? 12 : 24);
  }
}

/* --- measuring --- */

static MESSAGE octets;
static unsigned char buffer[ROOM];
static const unsigned char *encoding;
static size_t encodingLength;

static void decode (int message)
{
  if (!decodeMessage (message, octets.octets, octets.length)) {
    fputs ("a message cannot be decoded\n", stderr);
    exit (1);
  }
}

static void encode (int message)
{
  encoding = encodeMessage (message, buffer, sizeof buffer, &encodingLength);
}

static void decodeAndFree (int message)
{
  decode (message);
  freeMessage (message);
}

/* A function of its own, by whose name instructions are counted; the first call, which looks up symbols
   and fills caches, isn't made through it. */
__attribute__ ((noinline)) void measured (void (*action) (int), int message);
void measured (void (*action) (int), int message)
{
  action (message);
}

static double nanoseconds (void (*action) (int), int message)
{
  const clock_t enough = CLOCKS_PER_SEC / 5, begin = clock ();
  clock_t spent = 0;
  unsigned long times = 0;
  for (unsigned long batch = 1; spent < enough; batch *= 2) {
    for (unsigned long i = 0; i < batch; i++)
      action (message);
    times += batch;
    spent = clock () - begin;
  }
  return (double)spent * (1e9 / CLOCKS_PER_SEC) / (double)times;
}

static void report (const char *name, const char *direction, void (*action) (int), int message)
{
  unsigned long before;
  action (message);
  before = allocations;
  action (message);
  before = allocations - before;
  printf ("%-8s %s %5lu %9.0f %6lu\n", name, direction, (unsigned long)octets.length,
          nanoseconds (action, message), before);
}

static const char *const names[] = {
#define NAME(type) #type,
  MESSAGES (NAME)
};

int main (int argc, char **argv)
{
  for (int i = 0; i < NR_OF_MESSAGES; i++) {
    if (argc == 3 && strcmp (argv[1], names[i]) != 0)
      continue;
    makeMessage (&octets, i);
    decodeAndFree (i);
    if (argc == 3 && strcmp (argv[2], "decode") == 0) {
      measured (decodeAndFree, i);
      continue;
    }
    decode (i);
    encode (i);
    if (encodingLength != octets.length || memcmp (encoding, octets.octets, octets.length) != 0) {
      fprintf (stderr, "%s is encoded in another way\n", names[i]);
      return 1;
    }
    if (argc == 3)
      measured (encode, i);
    else
      report (names[i], "encode", encode, i);
    freeMessage (i);
    if (argc != 3)
      report (names[i], "decode", decodeAndFree, i);
  }
  return 0;
}
