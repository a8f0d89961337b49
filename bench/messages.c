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
  "30(02(2A) 6D(04('dc=example,dc=org') 0A(02) 02(01F4)"
  "  A0(A3(04('objectClass') 04('person')) A4(04('cn') 30(80('Jo') 81('h') 82('son'))) 87('mail'))"
  "  30(80('Dr') 81('Ann') 82('Johnson') 83('North End 4') 84('Bath') 85('Somerset') 86('England')"
  "     87('+44 1225 000') 88('ann@example.org') 89('Example Works') 8A('Accounts') 8B('214'))))";

/* A person of a directory, as the usual schemas have them. */
static const char found[] =
  "30(02(07) 64(04('uid=ajohnson,ou=People,dc=example,dc=org') 30("
  "  30(04('objectClass') 31(04('top') 04('person') 04('inetOrgPerson') 04('organizationalPerson')))"
  "  30(04('uid') 31(04('ajohnson'))) 30(04('cn') 31(04('Ann Johnson') 04('Ann B. Johnson')))"
  "  30(04('sn') 31(04('Johnson'))) 30(04('givenName') 31(04('Ann')))"
  "  30(04('initials') 31(04('ABJ'))) 30(04('displayName') 31(04('Johnson, Ann (Accounts)')))"
  "  30(04('title') 31(04('Head of Accounts'))) 30(04('employeeNumber') 31(04('10214')))"
  "  30(04('employeeType') 31(04('permanent'))) 30(04('departmentNumber') 31(04('4000')))"
  "  30(04('mail') 31(04('accounts@example.org') 04('ann.johnson@example.org')))"
  "  30(04('telephoneNumber') 31(04('+44 1225 000 200') 04('+44 1225 000 214')))"
  "  30(04('mobile') 31(04('+44 7700 900 214'))) 30(04('l') 31(04('Bath')))"
  "  30(04('facsimileTelephoneNumber') 31(04('+44 1225 000 299')))"
  "  30(04('street') 31(04('4 North End'))) 30(04('postalCode') 31(04('BA1 0AA')))"
  "  30(04('st') 31(04('Somerset'))) 30(04('o') 31(04('Example Works')))"
  "  30(04('ou') 31(04('People') 04('Accounts'))) 30(04('roomNumber') 31(04('214')))"
  "  30(04('manager') 31(04('uid=bsmith,ou=People,dc=example,dc=org')))"
  "  30(04('preferredLanguage') 31(04('en-GB, de;q=0.8')))"
  "  30(04('description') 31(04('Keeps the books of all works in the south-west')))"
  "  30(04('memberOf') 31(04('cn=all,ou=Groups,dc=example,dc=org')"
  "     04('cn=accounts,ou=Groups,dc=example,dc=org') 04('cn=managers,ou=Groups,dc=example,dc=org')))"
  "  30(04('createTimestamp') 31(04('20190304091500Z')))"
  "  30(04('modifyTimestamp') 31(04('20240611143027Z'))))))";

static const char asked[] =
  "30(02(06) 63(04('ou=People,dc=example,dc=org') 0A(02) 0A(00) 02(03E8) 02(1E) 01(00)"
  "  A0(87('telephoneNumber')"
  "     A1(A3(04('uid') 04('ajohnson')) A3(04('mail') 04('ann.johnson@example.org'))"
  "        A4(04('cn') 30(80('Ann') 81('B') 82('Johnson'))))"
  "     A2(A3(04('employeeType') 04('former')))"
  "     A3(04('objectClass') 04('inetOrgPerson')))"
  "  30(04('cn') 04('sn') 04('givenName') 04('mail') 04('telephoneNumber') 04('memberOf')))"
  " A0(30(04('1.2.840.113556.1.4.319') 01(FF) 04(3005 020164 0400))))";

#ifndef WITHOUT_CERTIFICATE
/* A name of six attributes. */
#define PARTY(common) \
  "30(31(30(06(550406) 13('GB'))) 31(30(06(550408) 0C('Somerset'))) 31(30(06(550407) 0C('Bath')))" \
  "   31(30(06(55040A) 0C('Example Works'))) 31(30(06(55040B) 0C('Network Services')))" \
  "   31(30(06(550403) 0C('" common "'))))"
#define SHA256_WITH_RSA "30(06(2A864886F70D01010B) 05())"
/* 32 octets of what stands for keys and signatures. */
#define CHANCE "9F3A61C7048BD25EE1167D90B35C28F40D6AA9571B83EC46702FD8149BCE35A2"
#define CHANCE_256 CHANCE CHANCE CHANCE CHANCE CHANCE CHANCE CHANCE CHANCE

static const char certificate[] =
  "30(30(A0(02(02)) 02(10325476 98BADCFE 0F1E2D3C 4B5A6978)" SHA256_WITH_RSA PARTY ("Works CA 2")
  "  30(17('240101000000Z') 17('261231235959Z'))" PARTY ("www.example.org")
  "  30(30(06(2A864886F70D010101) 05()) 03(00 30(02(00" CHANCE_256 ") 02(010001))))"
  "  A3(30(30(06(551D23) 04(30(80(0102030405060708090A0B0C0D0E0F1011121314))))"
  "    30(06(551D0E) 04(04(1112131415161718191A1B1C1D1E1F2021222324)))"
  "    30(06(551D0F) 01(FF) 04(03(05A0))) 30(06(551D13) 01(FF) 04(30()))"
  "    30(06(551D25) 04(30(06(2B06010505070301) 06(2B06010505070302))))"
  "    30(06(551D11) 04(30(82('www.example.org') 82('example.org'))))"
  "    30(06(551D1F) 04(30(30(A0(A0(86('http://crl.example.org/works2.crl')))))))"
  "    30(06(2B06010505070101) 04(30(30(06(2B06010505073001) 86('http://ocsp.example.org'))))))))"
  SHA256_WITH_RSA "03(00" CHANCE_256 "))";
#endif

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
  case MESSAGE_Found:
    put (m, found);
    break;
  case MESSAGE_Asked:
    put (m, asked);
    break;
#ifndef WITHOUT_CERTIFICATE
  case MESSAGE_Certificate:
    put (m, certificate);
    break;
#endif
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
  printf ("%-11s %s %5lu %9.0f %6lu\n", name, direction, (unsigned long)octets.length,
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
