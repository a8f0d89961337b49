/* Messages by code that esnacc generates. */

#include "messages.h"

#include "coded.h"
#include "sbuf.h"

#define VALUE(type) static type value##type;
MESSAGES (VALUE)

typedef AsnLen ENCODE (GenBuf *, void *);
typedef void DECODE (GenBuf *, void *, AsnLen *, jmp_buf);
typedef void FREE (void *);
static const struct {
  ENCODE *encode;
  DECODE *decode;
  FREE *free;
  void *value;
  size_t size;
} rows[] = {
#define ROW(type) \
  { (ENCODE *)BEnc##type, (DECODE *)BDec##type, (FREE *)Free##type, &value##type, \
    sizeof value##type },
  MESSAGES (ROW)
};

static SBuf buf;
static GenBuf genBuf;

int decodeMessage (int message, const unsigned char *octets, size_t length)
{
  jmp_buf leave;
  AsnLen used = 0;
  memset (rows[message].value, 0, rows[message].size);
  SBufInstallData (&buf, (char *)octets, (long)length);
  PutSBufInGenBuf (&buf, &genBuf);
  if (setjmp (leave) == 0)
    rows[message].decode (&genBuf, rows[message].value, &used, leave);
  return used == length;
}

const unsigned char *encodeMessage (int message, unsigned char *buffer, size_t size, size_t *length)
{
  SBufInit (&buf, (char *)buffer, (long)size);
  SBufResetInWriteRvsMode (&buf);
  PutSBufInGenBuf (&buf, &genBuf);
  *length = rows[message].encode (&genBuf, rows[message].value);
  return (unsigned char *)SBufDataPtr (&buf);
}

void freeMessage (int message)
{
  rows[message].free (rows[message].value);
}
