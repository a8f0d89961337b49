/* Messages by code that velmo generates. */

#include "messages.h"

#include "asnapi.h"
#include "benchcod.ext"

#define VALUE(type) static type value##type;
MESSAGES (VALUE)

static const struct {
  ENTRYFUNC encode, decode;
  void *value;
  size_t size;
} rows[] = {
#define ROW(type) { (ENTRYFUNC)enc##type, (ENTRYFUNC)dec##type, &value##type, sizeof value##type },
  MESSAGES (ROW)
};
static ASNMEM memory;

int decodeMessage (int message, const unsigned char *octets, size_t length)
{
  return asnDecode (rows[message].decode, octets, length, rows[message].value, rows[message].size,
                    &memory, NULL, NULL);
}

const unsigned char *encodeMessage (int message, unsigned char *buffer, size_t size, size_t *length)
{
  return asnEncode (rows[message].encode, rows[message].value, buffer, size, length, NULL);
}

void freeMessage (int message)
{
  (void)message;
  asnFreeMemory (&memory);
}
