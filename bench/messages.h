/* What messages.c measures: one of the sources ...codec.c behind these functions. */

#ifndef MESSAGES_H
#define MESSAGES_H

#include <stddef.h>

/* What not every tool can do. */
#ifdef WITHOUT_CERTIFICATE
#define CERTIFICATE(ROW)
#else
#define CERTIFICATE(ROW) ROW (Certificate)
#endif
/* Types of messages.asn; of each the codec holds one value. */
#define MESSAGES(ROW) \
  ROW (Small) ROW (Numbers) ROW (Chain) ROW (Search) ROW (Level6) ROW (Level12) ROW (Level24) \
  ROW (Found) ROW (Asked) CERTIFICATE (ROW)
#define MESSAGE_NAME(type) MESSAGE_##type,
enum { MESSAGES (MESSAGE_NAME) NR_OF_MESSAGES };

/* Makes the value from its encoding and checks it against its constraints; 0 if it fails. */
int decodeMessage (int message, const unsigned char *octets, size_t length);
/* Encodes the value, in definite form, somewhere in the buffer. */
const unsigned char *encodeMessage (int message, unsigned char *buffer, size_t size, size_t *length);
/* Frees what the value holds. */
void freeMessage (int message);

#endif /*MESSAGES_H*/
