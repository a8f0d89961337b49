/* Messages by code that asn1c generates. */

#include "messages.h"

#include "Asked.h"
#include "Chain.h"
#include "Found.h"
#include "Level12.h"
#include "Level24.h"
#include "Level6.h"
#include "Numbers.h"
#include "Search.h"
#include "Small.h"

static asn_TYPE_descriptor_t *const types[] = {
#define TYPE(type) &asn_DEF_##type,
  MESSAGES (TYPE)
};
static void *values[NR_OF_MESSAGES];

int decodeMessage (int message, const unsigned char *octets, size_t length)
{
  const asn_dec_rval_t result = ber_decode (NULL, types[message], &values[message], octets, length);
  return result.code == RC_OK && result.consumed == length &&
         asn_check_constraints (types[message], values[message], NULL, NULL) == 0;
}

const unsigned char *encodeMessage (int message, unsigned char *buffer, size_t size, size_t *length)
{
  const asn_enc_rval_t result =
    der_encode_to_buffer (types[message], values[message], buffer, size);
  *length = result.encoded > 0 ? (size_t)result.encoded : 0;
  return buffer;
}

void freeMessage (int message)
{
  ASN_STRUCT_FREE (*types[message], values[message]);
  values[message] = NULL;
}
