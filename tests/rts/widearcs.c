/* An object identifier that ends in a UUID goes through all functions of a layer with arcs of 128 bits,
   which is compiled with the program as one source. Without it, linked with a library of other arcs, the
   program must not come about. */

#define ASN_REENTRANT 1
#ifndef WITHOUT_LAYER
#include "whole/asnall.c"
#endif
#include "asnapi.h"
#include "asncodec.ext"
#include "asntst.ext"

#include <stdio.h>

#define ENCODING "\x06\x14\x69\x83\xf0\x9d\xa7\xeb\xcf\xde\xe0\xc7\xa1\xa7\xb2\xc0\x94\x8c\xc8\xf9\xd7\x76"
#define TEXT "{ 2 25 329800735698586629295641978511506172918 }"

static void encode (ASNCODG *asncodg, const OBJECTIDENTIFIER *value)
{
  e_ObjectIdentifier_8 (6, value);
}

static void decode (ASNCODG *asncodg, OBJECTIDENTIFIER *value)
{
  d_TagLen (6);
  d_ObjectIdentifier (value);
}

static void print (ASNTSTG *asntstg, const OBJECTIDENTIFIER *value)
{
  p_ObjectIdentifier ("id", value);
}

static void ask (ASNTSTG *asntstg, OBJECTIDENTIFIER *value)
{
  ask_BegComp ("id", TCS_HEADER, TYP_OBJID);
  a_ObjectIdentifier (value);
}

int main (void)
{
  OBJECTIDENTIFIER id;
  unsigned char buffer[40];
  const unsigned char tooLarge[] = { 6, 20, 0x69, 0x84, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
                                     0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0 };
  size_t length;
  char line[80] = "";
  FILE *file = tmpfile ();
  BYTE_TYPE *start;
  ASNERROR error;
  if (!file || !asnDecode (decode, ENCODING, sizeof ENCODING - 1, &id, sizeof id, NULL, NULL, NULL))
    return 1;
  if (!asnPrint (print, &id, file, NULL) || fseek (file, 0, SEEK_SET) != 0 ||
      !asnAsk (ask, &id, sizeof id, NULL, file, NULL, NULL))
    return 2;
  rewind (file);
  if (!fgets (line, sizeof line, file) || !strstr (line, TEXT) || fclose (file) != 0)
    return 3;
  start = asnEncode (encode, &id, buffer, sizeof buffer, &length, NULL);
  if (!start || length != sizeof ENCODING - 1 || memcmp (start, ENCODING, length) != 0)
    return 4;
  if (asnDecode (decode, tooLarge, sizeof tooLarge, &id, sizeof id, NULL, NULL, &error) ||
      error.code != VALUE_FAIL)
    return 5;
  return 0;
}
