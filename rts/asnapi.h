/* How a program encodes, decodes, prints and asks for values of generated types.

     Msg msg = {0};
     BYTE_TYPE buffer[100];
     size_t length;
     ASNERROR error;
     ASNMEM memory = {0};
     BYTE_TYPE *start = asnEncode (encMsg, &msg, buffer, sizeof buffer, &length, &error);
     if (!asnDecode (decMsg, start, length, &msg, sizeof msg, &memory, NULL, &error))
       puts (asnErrorName (error.code));
     asnFreeMemory (&memory);

   `encode`, `decode`, `ask` and `print` are entry functions of generated code, or the members of a
   row of an entry table. Of a module whose values stand in homes, `value` is the array of pointers to
   them, and encoding frees them. Where `error` is null nobody is told; else it is set in any case. */

#ifndef ASNAPI_H
#define ASNAPI_H

#ifndef ASNCODEC_EXT
#include "asncodec.ext"
#endif

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

#define asnEncodeWith ASN_AGREED_ (asnEncodeWith)
#define asnEncodeNewWith ASN_AGREED_ (asnEncodeNewWith)
#define asnDecodeWith ASN_AGREED_ (asnDecodeWith)
#define asnPrintWith ASN_AGREED_ (asnPrintWith)
#define asnAskWith ASN_AGREED_ (asnAskWith)
#define asnOpenEncoder ASN_AGREED_ (asnOpenEncoder)
#define asnOpenDecoder ASN_AGREED_ (asnOpenDecoder)
#define asnOpenTester ASN_AGREED_ (asnOpenTester)

/* Encodes into the end of `buffer`; returns the first octet of the encoding, or null. */
BYTE_TYPE *asnEncodeWith (int reentrant, ENTRYFUNC encode, const void *value, void *buffer,
                          size_t size, size_t *length, ASNERROR *error);
#define asnEncode(encode, value, buffer, size, length, error) \
  asnEncodeWith (ASN_REENTRANT, (ENTRYFUNC)(encode), value, buffer, size, length, error)

/* Encodes into memory as it is needed, which the caller frees with free; null after an error. */
BYTE_TYPE *asnEncodeNewWith (int reentrant, ENTRYFUNC encode, const void *value, size_t *length,
                             ASNERROR *error);
#define asnEncodeNew(encode, value, length, error) \
  asnEncodeNewWith (ASN_REENTRANT, (ENTRYFUNC)(encode), value, length, error)

/* Decodes into *value, which is zeroed first. What the value owns besides goes to `memory` and lives
   until asnFreeMemory; null forbids it. `used` gets the octets that the value took; where it is null
   the value must take all. After an error the value must not be used. */
BOOLE asnDecodeWith (int reentrant, ENTRYFUNC decode, const void *buffer, size_t length, void *value,
                     size_t size, ASNMEM *memory, size_t *used, ASNERROR *error);
#define asnDecode(decode, buffer, length, value, size, memory, used, error) \
  asnDecodeWith (ASN_REENTRANT, (ENTRYFUNC)(decode), buffer, length, value, size, memory, used, \
                 error)

/* Frees all that values own in this memory; they must not be used any more. */
void asnFreeMemory (ASNMEM *memory);

/* Prints a value as a text that asking for it accepts again; docs/runtime.md describes it. False, with
   ROOM_FAIL, if it cannot be written. A value that is none of its type, a choice of nothing say, is
   printed as "?" and reported as VALUE_FAIL when all is printed. */
BOOLE asnPrintWith (int reentrant, ENTRYFUNC print, const void *value, FILE *out, ASNERROR *error);
#define asnPrint(print, value, out, error) \
  asnPrintWith (ASN_REENTRANT, (ENTRYFUNC)(print), value, out, error)

/* Reads a value from `in` into *value, which is zeroed first; `memory` as in asnDecode. Where `out` is
   null `in` is a script and its first fault an error, whose `offset` is the number of a line, and whose
   path leads to the component that was asked for. Else `out` gets a question for each line, and who
   answers wrongly is asked again; only the end of `in`, or an answer that leaves no question open, is an
   error. What follows the value in `in` stays there. */
BOOLE asnAskWith (int reentrant, ENTRYFUNC ask, void *value, size_t size, ASNMEM *memory, FILE *in,
                  FILE *out, ASNERROR *error);
#define asnAsk(ask, value, size, memory, in, out, error) \
  asnAskWith (ASN_REENTRANT, (ENTRYFUNC)(ask), value, size, memory, in, out, error)

/* --- making values --- */

/* Zeroed memory that goes with `memory`, or null. */
void *asnNew (ASNMEM *memory, size_t size);
/* An item of a list, counted; `size` is that of a value behind a pointer (val.stru), else 0. Null if
   there is no memory. */
ASNHOME *asnNewItem (ASNMEM *memory, LIST *list, int format, size_t size);
/* A home that stands alone, as the values of an array of homes do. */
ASNHOME *asnNewHome (ASNMEM *memory, int format, size_t size);
/* A copy of one value's encoding. */
FRAME_PTR asnNewFrame (ASNMEM *memory, const void *octets, size_t length);

/* --- calling entry functions oneself --- */

/* A context for one encoding into `buffer` or decoding from it. Without asnEncode and asnDecode
   there is no way out of generated functions: they go on after an error, and lack of memory ends the
   program. asnEncoded and asnDecoded tell how it went. */
void asnOpenEncoder (ASNCODG *asncodg, void *buffer, size_t size);
void asnOpenDecoder (ASNCODG *asncodg, const void *buffer, size_t length, ASNMEM *memory);
BYTE_TYPE *asnEncoded (ASNCODG *asncodg, size_t *length, ASNERROR *error);
BOOLE asnDecoded (ASNCODG *asncodg, size_t *used, ASNERROR *error);

/* The same for printing, with null for `in` and `memory`, and for asking. What is opened must be closed:
   the context holds memory in between. */
struct ASNTSTG;
void asnOpenTester (struct ASNTSTG *asntstg, FILE *in, FILE *out, ASNMEM *memory);
BOOLE asnCloseTester (struct ASNTSTG *asntstg, ASNERROR *error);

#ifdef __cplusplus
}
#endif

#endif /*ASNAPI_H*/
