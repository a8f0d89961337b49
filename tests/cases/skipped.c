/* What was skipped is lost; what stands behind it is not. */
#include "Trapcod.ext"
#include "asnapi.h"
#include <stdio.h>

static void show (ENTRYFUNC decode, ENTRYFUNC encode, const BYTE_TYPE *octets, size_t length)
{
  union { First first; Middle middle; } value;
  ASNMEM memory = { 0 };
  ASNERROR error;
  BYTE_TYPE buffer[100], *start = NULL;
  if (!asnDecode (decode, octets, length, &value, sizeof value, &memory, NULL, &error) ||
      !(start = asnEncode (encode, &value, buffer, sizeof buffer, &length, &error)))
    printf ("%s at %s\n", asnErrorName (error.code), error.path);
  for (size_t i = 0; start && i < length; i++)
    printf ("%02X", start[i]);
  putchar ('\n');
  asnFreeMemory (&memory);
}

#define SHOW(type, octets) \
  show ((ENTRYFUNC)dec##type, (ENTRYFUNC)enc##type, (const BYTE_TYPE *)octets, sizeof octets - 1)

int main (void)
{
  SHOW (First, "\x30\x09\x40\x04\x7F\x00\x00\x01\x02\x01\x05");
  SHOW (First, "\x30\x06\x45\x01x\x02\x01\x06");
  SHOW (First, "\x30\x03\x02\x01\x07");
  SHOW (Middle, "\x30\x06\x02\x01\x08\x45\x01x");
  SHOW (Middle, "\x30\x08\x02\x01\x09\xA7\x03\x01\x01\xFF");
  SHOW (Middle, "\x30\x03\x02\x01\x0A");
  return 0;
}
