/* What the sources of the run-time layer share. */

#ifndef ASNINT_H
#define ASNINT_H

#include "asncodec.ext"

#ifdef __cplusplus
extern "C" {
#endif

/* What is done less often, or hardly ever, stays out of functions that are called often. */
#ifdef __GNUC__
#define ASN_APART __attribute__ ((noinline))
#define ASN_RARE __attribute__ ((noinline, cold))
#else
#define ASN_APART
#define ASN_RARE
#endif

/* --- tags --- */

#define ASN_CLASS_BITS 0xC0000000u
#define ASN_FORM_BIT 0x20000000u
#define ASN_FORM_OCTET 0x20u
#define ASN_NUMBER_BITS 0x1FFFFFFFu
#define ASN_LONG_NUMBER 31u /* numbers from here on take octets of their own */

#define ASN_TAG_BOOLEAN 1u
#define ASN_TAG_INTEGER 2u
#define ASN_TAG_BIT_STRING 3u
#define ASN_TAG_OCTET_STRING 4u
#define ASN_TAG_OBJECT_IDENTIFIER 6u
#define ASN_TAG_OBJECT_DESCRIPTOR 7u

static inline BOOLE asnFailed (const ASNCODG *g)
{
  return g->util.error.code != ASN_OK;
}

/* --- contexts --- */

void asnInitUtil (ASNUTIG *util, int kind, ASNMEM *memory);
/* Runs generated code with the context that begins with `util`; an error in it ends here. */
void asnRun (ASNUTIG *util, int reentrant, ENTRYFUNC function, void *value);

/* A path is written from its last step to its first, and loses its beginning if there is no room. */
typedef struct {
  char *text;
  size_t room;
  size_t used; /* the first character in use */
} ASN_PATH;

ASN_PATH asnStartPath (char *text, size_t room);
/* Puts a name, or for null the number of an element, in front; false if there is no room. */
BOOLE asnPutStep (ASN_PATH *path, const char *name, uint32 element, BOOLE isFirst);
void asnEndPath (const ASN_PATH *path);

/* --- memory --- */

/* Memory in hand that is not zeroed; lack of it is a fatal error. */
void *asnTake (ASNUTIG *util, size_t size);
/* The same for octets that may stand anywhere. */
void *asnTakeOctets (ASNUTIG *util, size_t size);

/* --- encoding --- */

static inline uint32 asnUsed (const ASNCODG *g)
{
  return (uint32)(g->end - g->front);
}

/* Makes room for `size` more octets; false after an error. */
BOOLE asnMakeRoom (ASNCODG *g, size_t size);

/* Whether there is room without more memory. */
static inline BOOLE asnHasRoom (const ASNCODG *g, size_t size)
{
  return (size_t)(g->front - g->room) >= size;
}

static inline BOOLE asnRoomFor (ASNCODG *g, size_t size)
{
  return asnHasRoom (g, size) || asnMakeRoom (g, size);
}

/* Most octets that a tag and a length take. */
#define ASN_MAX_HEADER 12u

/* Write in front of `p`, which has room, and return the new front. */
BYTE_TYPE *asnPutLongLength (BYTE_TYPE *p, uint32 length);
BYTE_TYPE *asnPutLongTag (BYTE_TYPE *p, uint32 tag);
static inline BYTE_TYPE *asnPutLength (BYTE_TYPE *p, uint32 length)
{
  if (length >= 0x80)
    return asnPutLongLength (p, length);
  *--p = (BYTE_TYPE)length;
  return p;
}
static inline BYTE_TYPE *asnPutTag (BYTE_TYPE *p, uint32 tag)
{
  const uint32 number = tag & ASN_NUMBER_BITS;
  if (number >= ASN_LONG_NUMBER)
    return asnPutLongTag (p, tag);
  *--p = (BYTE_TYPE)((tag >> 24 & 0xE0) | number);
  return p;
}

/* Writes octets; then a tag and the length of what was written since `used`. */
void asnPutOctets (ASNCODG *g, const void *octets, size_t length);
void asnPutHeader (ASNCODG *g, uint32 tag, uint32 used);
void asnPutTagAlone (ASNCODG *g, uint32 tag);

/* --- decoding --- */

/* A tag in primitive form and a length. */
typedef struct {
  uint32 tag;
  uint32 len; /* 0 if it is indefinite */
  BOOLE constructed;
  BOOLE indefinite;
  const BYTE_TYPE *contents;
} ASN_HEADER;

/* Reads no octet from `limit` on; ASN_OK or the error. Contents of definite length end before `limit`.
   An end-of-contents is a tag 0 with length 0 in one octet. */
int asnReadHeader (const BYTE_TYPE *p, const BYTE_TYPE *limit, ASN_HEADER *header);

/* Behind the encoding that begins at `p`, as far as tags and lengths say; ASN_OK or the error. */
int asnFindEnd (const BYTE_TYPE *p, const BYTE_TYPE *limit, const BYTE_TYPE **end);

/* Whether octets are one whole encoding, as far as tags and lengths say. */
BOOLE asnIsOneEncoding (const BYTE_TYPE *octets, size_t length);

/* Reads the ends of what is open still: the entry function of a CHOICE leaves that of its tag unread. */
void asnCloseLevels (ASNCODG *g);

/* Passes over what is in hand, so that the decoder stands behind it. */
void asnPassElement (ASNCODG *g);

/* The contents of a primitive value, which count as read; false after an error. */
static inline BOOLE asnTakeContents (ASNCODG *g, const BYTE_TYPE **contents, uint32 *len)
{
  if (g->state != ASN_PRIMITIVE_) {
    asnRaise (&g->util, FORM_FAIL);
    return FALSE;
  }
  *contents = g->place;
  *len = g->len;
  g->place += g->len;
  g->state = ASN_BETWEEN_;
  return TRUE;
}

/* The segments of a string in hand, whatever its form. */
typedef struct {
  uint32 tag;       /* universal tag of the type; segments of strings of characters may have that of
                       OCTET STRING as well; 0: any tag */
  uint32 depth;     /* where the constructed form ends */
  BOOLE primitive;
  BOOLE begun;
} ASN_SEGMENTS;

void asnStartSegments (ASNCODG *g, ASN_SEGMENTS *segments, uint32 tag);
/* False behind the last one or after an error. */
BOOLE asnNextSegment (ASNCODG *g, ASN_SEGMENTS *segments, const BYTE_TYPE **p, uint32 *len);

/* A place to come back to, as long as what stands open further out stays open. */
typedef struct {
  const BYTE_TYPE *place, *limit, *element;
  uint32 mode, state, tag, len, depth;
} ASN_BOOKMARK;

ASN_BOOKMARK asnMark (const ASNCODG *g);
void asnGoBack (ASNCODG *g, const ASN_BOOKMARK *mark);

/* --- numbers --- */

static inline sint64 asnHigher (sint64 a, sint64 b)
{
  return a > b ? a : b;
}

static inline sint64 asnLower (sint64 a, sint64 b)
{
  return a < b ? a : b;
}

/* Each form of a whole number but uint64: the end of its functions' names, its type, what it holds. */
#define ASN_INTEGER_FORMS(FORM) \
  FORM (Uint8, uint8, 0, UINT8_MAX) \
  FORM (Uint16, uint16, 0, UINT16_MAX) \
  FORM (Uint32, uint32, 0, UINT32_MAX) \
  FORM (Sint8, sint8, INT8_MIN, INT8_MAX) \
  FORM (Sint16, sint16, INT16_MIN, INT16_MAX) \
  FORM (Sint32, sint32, INT32_MIN, INT32_MAX) \
  FORM (Sint64, sint64, INT64_MIN, INT64_MAX)

typedef struct {
  int closure; /* CLOS_CLOS ... */
  int lowKind; /* REAL_NORMAL ... */
  REAL64 low;
  int highKind;
  REAL64 high;
} ASN_REAL_RANGE;

BOOLE asnIsInRange (REAL128 value, const ASN_REAL_RANGE *range);
/* Whether a form of `size` octets can hold a number: what rounds to infinity or to 0 there is too large
   or too small. */
BOOLE asnRealFits (REAL128 value, size_t size);
/* Writes the contents of a number, as BIN_ENC or NR2_ENC with so many digits. */
void asnPutReal (ASNCODG *g, REAL128 value, int form, int digits);
/* The number that an encoding's contents stand for; ASN_OK or VALUE_FAIL. */
int asnRealFromContents (const BYTE_TYPE *p, uint32 len, REAL64 *value);
/* The number of a text as a form of `size` octets holds it, rounded once; what that has no room for as the
   widest form has it. `end` as of strtold. */
REAL128 asnRealOfText (const char *text, char **end, size_t size);
/* Whether all digits of a decimal number are 0, whatever its exponent. */
BOOLE asnIsZero (const char *text);

/* --- strings --- */

#define ASN_KIND_OF(how) ((how) & 0xFFu)
#define ASN_LENGTH_SIZE(how) (((how) >> 8) & 0xFu)
#define ASN_CHAR_SIZE(how) (((how) >> 12) & 0xFu)

typedef struct {
  uint32 tag;     /* universal */
  uint32 width;   /* octets of a character in an encoding */
  BOOLE text;     /* a zero follows the last character */
  uint32 allowed; /* the bit of an octet that may stand in it; 0: any octet */
} ASN_STRING_KIND;

extern const ASN_STRING_KIND asnStringKinds[];

/* Whether all octets of a string may stand in one of its kind. */
BOOLE asnOnlyAllowed (uint32 allowed, const BYTE_TYPE *p, uint32 len);
static inline BOOLE asnCharactersAllowed (const ASN_STRING_KIND *kind, const BYTE_TYPE *p, uint32 len)
{
  return kind->allowed == 0 || asnOnlyAllowed (kind->allowed, p, len);
}
/* The first element of a static string, which its shape in a home may show misplaced. */
BYTE_TYPE *asnElements (uint32 how, const void *st);
/* The first element of a string, which is static if `st` is `array`. */
static inline const BYTE_TYPE *asnElementsOf (uint32 how, const void *st, const void *array)
{
  return st == array ? asnElements (how, st) : (const BYTE_TYPE *)st;
}
static inline void asnStoreCount (void *n, uint32 size, uint32 count)
{
  if (size == 4)
    *(uint32 *)n = count;
  else if (size == 2)
    *(uint16 *)n = (uint16)count;
  else if (size == 1)
    *(uint8 *)n = (uint8)count;
}
/* Clears an array behind the `n` bits that it holds, up to the bits that the type allows: in a home more
   of the array seems to be there. */
void asnClearBits (BYTE_TYPE *st, size_t size, uint32 n, sint64 high);
/* Whether a string of `n` lies within its array, if it is held in one. */
BOOLE asnIsWithinArray (uint32 how, uint32 n, const void *st, const void *array, size_t arraySize);

/* --- EXTERNAL --- */

/* Bits of the masks of both forms. */
enum {
  ASN_HAS_DIRECT = 1,
  ASN_HAS_INDIRECT = 2,
  ASN_HAS_DESCRIPTOR = 4,
  ASN_HAS_DESCRIPTOR_1994 = 1
};

/* --- times --- */

/* A moment and the characters of its encoding; false if they are not right. */
BOOLE asnTimeFromText (const char *text, size_t length, int isUtc, DATETIMEZ *value);
/* The number of characters, without the zero at their end; 0 if the moment has no encoding. */
#define ASN_TIME_TEXT 40
size_t asnTextFromTime (const DATETIMEZ *value, int isUtc, char *text);

#ifdef __cplusplus
}
#endif

#endif /*ASNINT_H*/
