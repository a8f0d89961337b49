/* Texts that grow, and what stands in them: digits, characters, names of tags and types. */

#include "asntoolint.h"

#include <stdio.h>
#include <stdlib.h>

/* --- memory --- */

static BOOLE makeRoom (ASN_GROWING *to, size_t more)
{
  size_t room = to->room ? to->room : 128;
  char *wider;
  if (to->failed || more > SIZE_MAX / 4 - to->length)
    to->failed = TRUE;
  if (to->failed)
    return FALSE;
  if (to->length + more < to->room)
    return TRUE;
  while (room <= to->length + more)
    room *= 2;
  wider = (char *)realloc (to->text, room);
  if (!wider) {
    to->failed = TRUE;
    return FALSE;
  }
  to->text = wider;
  to->room = room;
  return TRUE;
}

void asnAdd (ASN_GROWING *to, const void *octets, size_t length)
{
  if (!makeRoom (to, length))
    return;
  if (length > 0)
    memcpy (to->text + to->length, octets, length);
  to->length += length;
  to->text[to->length] = 0;
}

void asnEmpty (ASN_GROWING *growing)
{
  growing->length = 0;
  growing->failed = FALSE;
  if (growing->text)
    growing->text[0] = 0;
}

void asnDrop (ASN_GROWING *growing)
{
  static const ASN_GROWING none = { NULL, 0, 0, FALSE };
  free (growing->text);
  *growing = none;
}

void asnAddText (ASN_GROWING *to, const char *text)
{
  asnAdd (to, text, strlen (text));
}

void asnAddChar (ASN_GROWING *to, char c)
{
  asnAdd (to, &c, 1);
}

void asnAddNumber (ASN_GROWING *to, sint64 number)
{
  char text[24];
  (void)snprintf (text, sizeof text, "%lld", (long long)number);
  asnAddText (to, text);
}

/* --- digits --- */

void asnAddHex (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length)
{
  static const char digits[] = "0123456789ABCDEF";
  if (!makeRoom (to, 2 * length))
    return;
  for (; length > 0; length--, octets++) {
    to->text[to->length++] = digits[*octets >> 4];
    to->text[to->length++] = digits[*octets & 15];
  }
  to->text[to->length] = 0;
}

int asnHexDigit (int c)
{
  if (c >= '0' && c <= '9')
    return c - '0';
  if (c >= 'A' && c <= 'F')
    return c - 'A' + 10;
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

BOOLE asnAddFromHex (ASN_GROWING *to, const char *digits, size_t length)
{
  const size_t before = to->length;
  if (length % 2 != 0)
    return FALSE;
  for (; length > 0; length -= 2, digits += 2) {
    const int high = asnHexDigit (digits[0]), low = asnHexDigit (digits[1]);
    if (high < 0 || low < 0) {
      to->length = before;
      return FALSE;
    }
    asnAddChar (to, (char)(high << 4 | low));
  }
  return TRUE;
}

void asnAddBase64 (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length)
{
  static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (size_t i = 0; i < length; i += 3) {
    const size_t left = length - i;
    const uint32 word = (uint32)octets[i] << 16 | (left > 1 ? (uint32)octets[i + 1] << 8 : 0) |
                        (left > 2 ? octets[i + 2] : 0u);
    char four[4];
    for (int n = 0; n < 4; n++)
      four[n] = digits[word >> (18 - 6 * n) & 63];
    if (left < 3)
      four[3] = '=';
    if (left < 2)
      four[2] = '=';
    asnAdd (to, four, 4);
    if (i % 48 == 45 || left <= 3)
      asnAddChar (to, '\n');
  }
}

/* Numbers of any length are words of some base, the lowest first: nine decimal digits or 32 bits. */
#define NINE_DIGITS 1000000000u
#define BITS_32 ((uint64)1 << 32)

/* words = words * factor + more, of which factor is at most 2^32; how many there are then. */
static size_t multiplyAndAdd (uint32 *words, size_t n, uint64 base, uint64 factor, uint32 more)
{
  uint64 carry = more;
  for (size_t i = 0; i < n; i++) {
    carry += words[i] * factor;
    words[i] = (uint32)(carry % base);
    carry /= base;
  }
  for (; carry > 0; carry /= base)
    words[n++] = (uint32)(carry % base);
  return n;
}

static void addLongDigits (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length, BOOLE isNegative)
{
  uint32 *words = (uint32 *)calloc (length / 3 + 2, sizeof *words), four = 0;
  size_t n = 0;
  char text[12];
  if (!words) {
    to->failed = TRUE;
    return;
  }
  while (length > 0) {
    four = four << 8 | (isNegative ? (BYTE_TYPE)~*octets : *octets);
    octets++;
    if (--length % 4 == 0) {
      n = multiplyAndAdd (words, n, NINE_DIGITS, BITS_32, four);
      four = 0;
    }
  }
  if (isNegative)
    n = multiplyAndAdd (words, n, NINE_DIGITS, 1, 1);
  asnAddText (to, isNegative ? "-" : "");
  (void)snprintf (text, sizeof text, "%lu", n > 0 ? (unsigned long)words[n - 1] : 0);
  asnAddText (to, text);
  while (n-- > 1) {
    (void)snprintf (text, sizeof text, "%09lu", (unsigned long)words[n - 1]);
    asnAddText (to, text);
  }
  free (words);
}

void asnAddDigits (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length, BOOLE isSigned)
{
  uint64 number = isSigned && length > 0 && *octets & 0x80 ? UINT64_MAX : 0;
  if (length > 8 || (length == 8 && !isSigned)) {
    addLongDigits (to, octets, length, isSigned && *octets & 0x80);
    return;
  }
  for (; length > 0; length--)
    number = number << 8 | *octets++;
  asnAddNumber (to, (sint64)number);
}

static BOOLE areDigits (const char *text, size_t length)
{
  for (; length > 0; length--, text++)
    if (*text < '0' || *text > '9')
      return FALSE;
  return TRUE;
}

/* Two's complement, the lowest octet first. */
static void negate (BYTE_TYPE *octets, size_t n)
{
  uint32 carry = 1;
  for (size_t i = 0; i < n; i++) {
    carry += (BYTE_TYPE)~octets[i];
    octets[i] = (BYTE_TYPE)carry;
    carry >>= 8;
  }
}

static void addWords (ASN_GROWING *to, const uint32 *words, size_t nrOfWords, BOOLE isNegative)
{
  size_t n = 4 * nrOfWords + 1; /* one for the sign */
  BYTE_TYPE *octets = (BYTE_TYPE *)calloc (n, 1);
  if (!octets) {
    to->failed = TRUE;
    return;
  }
  for (size_t i = 0; i + 1 < n; i++)
    octets[i] = (BYTE_TYPE)(words[i / 4] >> 8 * (i % 4));
  if (isNegative)
    negate (octets, n);
  while (n > 1 && ((octets[n - 1] == 0 && octets[n - 2] < 0x80) ||
                   (octets[n - 1] == 0xFF && octets[n - 2] >= 0x80)))
    n--;
  while (n-- > 0)
    asnAdd (to, octets + n, 1);
  free (octets);
}

BOOLE asnAddInteger (ASN_GROWING *to, const char *digits, size_t length)
{
  enum { MOST_DIGITS = 20000 }; /* ASN_MOST_DECIMAL octets have less */
  const BOOLE isNegative = length > 0 && *digits == '-';
  size_t n = 0;
  uint32 *words;
  digits += isNegative;
  length -= isNegative;
  if (length == 0 || length > MOST_DIGITS || !areDigits (digits, length))
    return FALSE;
  words = (uint32 *)calloc (length / 9 + 2, sizeof *words);
  if (!words)
    return FALSE;
  while (length > 0) {
    uint32 nine = 0, factor = 1;
    do {
      nine = 10 * nine + (uint32)(*digits++ - '0');
      factor *= 10;
    } while (--length % 9 != 0);
    n = multiplyAndAdd (words, n, BITS_32, factor, nine);
  }
  addWords (to, words, n, isNegative);
  free (words);
  return TRUE;
}

/* --- characters --- */

void asnAddCharacter (ASN_GROWING *to, uint32 character)
{
  static const BYTE_TYPE marks[] = { 0, 0, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC };
  int octets = character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : character < 0x200000 ? 4
               : character < 0x4000000 ? 5 : 6;
  asnAddChar (to, (char)(octets == 1 ? character : marks[octets] | character >> 6 * (octets - 1)));
  while (--octets > 0)
    asnAddChar (to, (char)(0x80 | (character >> 6 * (octets - 1) & 0x3F)));
}

BOOLE asnTakeCharacter (const BYTE_TYPE **p, const BYTE_TYPE *end, uint32 *character)
{
  const BYTE_TYPE first = *(*p)++;
  static const uint32 least[] = { 0, 0x80, 0x800, 0x10000 };
  uint32 value, more = first < 0x80 ? 0 : first < 0xC0 ? 4 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : first < 0xF5 ? 3 : 4;
  *character = first;
  if (more == 0)
    return TRUE;
  if (more == 4 || (size_t)(end - *p) < more)
    return FALSE;
  value = first & (0x3Fu >> more);
  for (uint32 i = 0; i < more; i++) {
    const BYTE_TYPE next = (*p)[i];
    if ((next & 0xC0) != 0x80)
      return FALSE;
    value = value << 6 | (next & 0x3F);
  }
  *p += more;
  *character = value;
  return value >= least[more] && value < 0x110000 && (value < 0xD800 || value > 0xDFFF);
}
