/* What the sources of the main part for message programs share. */

#ifndef ASNTOOLINT_H
#define ASNTOOLINT_H

#include "asntool.h"

#include "asnapi.h"
#include "asnint.h"

#ifdef __cplusplus
extern "C" {
#endif

/* --- texts and octets that grow --- */

/* Zero at first. Where memory ends it fails, and takes no more. */
typedef struct {
  char *text; /* with a zero behind it once anything was added */
  size_t length;
  size_t room;
  BOOLE failed;
} ASN_GROWING;

void asnAdd (ASN_GROWING *to, const void *octets, size_t length);
void asnAddText (ASN_GROWING *to, const char *text);
void asnAddChar (ASN_GROWING *to, char c);
void asnAddNumber (ASN_GROWING *to, sint64 number);
void asnAddHex (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length);
void asnAddBase64 (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length);
/* The digits of a number in two's complement or without a sign. The work grows with the square of their
   number, so that no more than ASN_MOST_DECIMAL octets stand in decimal digits. */
#define ASN_MOST_DECIMAL 8192u
void asnAddDigits (ASN_GROWING *to, const BYTE_TYPE *octets, size_t length, BOOLE isSigned);
/* The other way: the digits, with a sign in front, in the fewest octets of two's complement, which are
   added. False if they are no number. */
BOOLE asnAddInteger (ASN_GROWING *to, const char *digits, size_t length);
/* As UTF-8; surrogates and numbers beyond Unicode in the manner of it. */
void asnAddCharacter (ASN_GROWING *to, uint32 character);
/* The character at *p, which moves behind it; false where there is no UTF-8. */
BOOLE asnTakeCharacter (const BYTE_TYPE **p, const BYTE_TYPE *end, uint32 *character);
void asnEmpty (ASN_GROWING *growing); /* keeps the memory */
void asnDrop (ASN_GROWING *growing);

/* -1 for no digit. */
int asnHexDigit (int c);
/* The octets of hexadecimal digits; false, with nothing kept, if there is anything else. */
BOOLE asnAddFromHex (ASN_GROWING *to, const char *digits, size_t length);

/* --- names --- */

/* The name of a kind: "OCTET STRING". */
const char *asnKindName (int kind);
/* "[APPLICATION 3]", "[0]", "SEQUENCE". */
void asnAddTag (ASN_GROWING *to, uint32 tag);
/* "[0] name: IA5String (SIZE (1..8))" */
void asnAddPlace (ASN_GROWING *to, const ASNTOOLPLACE *place);
static inline BOOLE asnIsMarker (const ASNTOOLPLACE *place)
{
  return !place->type;
}
/* Types without a tag of their own. */
static inline BOOLE asnIsUntagged (int kind)
{
  return kind == TYP_CHOICE || kind == TYP_ANY || kind == TYP_OPEN;
}
static inline BOOLE asnIsStructure (int kind)
{
  return (kind >= TYP_SEQ && kind <= TYP_SETOF) || kind == TYP_EXTERNAL || kind == TYP_EXTERNAL_1994;
}
/* The components of a structure, of which EXTERNAL has some, too. */
const ASNTOOLTYPE *asnComponents (const ASNTOOLTYPE *type);
/* Null if the type has none for the number. */
const char *asnNameFor (const ASNTOOLTYPE *type, sint64 number);

/* --- contents of constructed encodings --- */

typedef struct {
  const BYTE_TYPE *p;
  const BYTE_TYPE *limit;
  BOOLE indefinite;
} ASN_CONTENTS;

static inline ASN_CONTENTS asnContentsOf (const ASN_HEADER *header, const BYTE_TYPE *limit)
{
  ASN_CONTENTS contents = { header->contents, limit, header->indefinite };
  if (!header->indefinite)
    contents.limit = header->contents + header->len;
  return contents;
}

/* Whether the contents end here; where they have no length that is at two octets 0. */
static inline BOOLE asnAtEnd (const ASN_CONTENTS *contents)
{
  if (!contents->indefinite)
    return contents->p == contents->limit;
  return contents->limit - contents->p >= 2 && contents->p[0] == 0 && contents->p[1] == 0;
}

/* --- what fits where --- */

/* Encodings, and choices without tags, within one another. */
#define ASN_MOST_LEVELS (2u * ASN_MAX_NESTING)

/* Where a structure or choice stands. */
typedef struct {
  const ASNTOOLTYPE *type;
  uint32 next;  /* of a SEQUENCE: the first component that may come */
  BOOLE isOpen; /* unknown components may come */
  BOOLE ordered;
} ASN_MATCH;

enum { ASN_FOREIGN = -1, ASN_NOTHING = -2 };

ASN_MATCH asnStartMatch (const ASNTOOLTYPE *type);
/* The number of the component with this tag, or what stands for none. */
sint64 asnMatchTag (ASN_MATCH *match, uint32 tag);
/* Whether one that must be there is neither in front of the next one nor, of a SET, among the places. */
BOOLE asnLacksMandatory (const ASN_MATCH *match, const BYTE_TYPE *const *places);
/* The components that may come, and the end of the structure. */
void asnAddMatch (ASN_GROWING *to, const ASN_MATCH *match, BOOLE mayEnd);

/* --- walking over an encoding --- */

struct ASN_WALK;

/* What is done at each part of an encoding, in its order; null does nothing. */
typedef struct {
  BOOLE byType;   /* components of a SET in the order of the type */
  BOOLE takesCut; /* contents that the octets end in the midst of */
  /* The name of what comes next, or the number of an element. */
  void (*name) (struct ASN_WALK *w, const ASNTOOLPLACE *place, uint32 element);
  /* A tag and length at `p`; where it is constructed, `end` follows behind its contents. */
  void (*header) (struct ASN_WALK *w, const BYTE_TYPE *p, const ASN_HEADER *header);
  void (*end) (struct ASN_WALK *w);
  /* Around the components, elements or the alternative of a type. */
  void (*open) (struct ASN_WALK *w, const ASNTOOLTYPE *type);
  void (*close) (struct ASN_WALK *w, const ASNTOOLTYPE *type);
  /* The contents of a type without parts; of bits without their first octet, and how many the last one
     has too many. An error of the type VALUE_FAIL if they are none of its values. */
  int (*leaf) (struct ASN_WALK *w, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length,
               uint32 unused);
  /* A whole encoding: of an open type, or one that the type doesn't know. */
  void (*whole) (struct ASN_WALK *w, const BYTE_TYPE *p, size_t length, BOOLE isKnown);
} ASN_VISITOR;

typedef struct {
  const char *name;
  uint32 element;
} ASN_STEP;

typedef struct ASN_WALK {
  const ASN_VISITOR *visitor;
  void *own; /* the visitor's */
  const BYTE_TYPE *start;
  const BYTE_TYPE *goal; /* an element of which `expected` tells what may stand there, and the path in `error`
                            where that is; or null */
  const char *goalPath;  /* where the goal is no element: that of one which ends there, which becomes the goal; or null */
  ASN_GROWING expected;  /* that, and what may stand where the walk ended */
  ASN_GROWING segments;
  ASNERROR error;
  const BYTE_TYPE *last; /* where the walk ended with an error */
  uint32 missing;        /* octets of the contents that were begun last */
  uint32 depth;
  uint32 nrOfSteps;
  ASN_STEP steps[ASN_MAX_PATH];
} ASN_WALK;

/* Like asnReadHeader, but of contents that go beyond the limit those up to there count: `missing` gets how
   many are not there. */
int asnReadCutHeader (const BYTE_TYPE *p, const BYTE_TYPE *limit, ASN_HEADER *header, uint32 *missing);

/* Goes through one value, which begins at `p`; false after an error. `expected` and `segments` must be
   zero at first and are dropped by asnEndWalk. */
BOOLE asnWalk (ASN_WALK *w, const ASN_VISITOR *visitor, void *own, const ASNTOOLPLACE *place,
               const BYTE_TYPE *p, size_t length);
void asnEndWalk (ASN_WALK *w);

/* --- JSON --- */

/* A string with its quotes and escapes, from UTF-8. */
void asnAddJsonString (ASN_GROWING *to, const char *text, size_t length);
/* The value of a type without parts; ASN_OK or VALUE_FAIL. */
int asnAddJsonLeaf (ASN_GROWING *to, const ASNTOOLTYPE *type, const BYTE_TYPE *p, uint32 length, uint32 unused);

/* A JSON text that is being written, by asnJsonVisitor with this as its own. */
typedef struct {
  ASN_GROWING text;
  BOOLE oneLine;
  BOOLE hasName;    /* the name of what comes is written */
  BOOLE inForeign;  /* within the list of unknown components */
  ASN_GROWING open; /* an octet for each open object or list: its closing character, marked if it has members */
} ASN_JSON_WRITER;
extern const ASN_VISITOR asnJsonVisitor;

/* Adds one value as JSON to writer->text; false, with the error in `w`, if it can't be read. */
BOOLE asnWriteJson (ASN_JSON_WRITER *writer, ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p,
                    size_t length);

/* --- listings of tags --- */

/* Adds a line for each tag, with offsets from `first` on. Behind an error the rest is listed without
   names. False, with the error in `w`, if the value can't be read. `place` may be null. */
BOOLE asnListTags (ASN_GROWING *to, ASN_WALK *w, const ASNTOOLPLACE *place, const BYTE_TYPE *p, size_t length,
                   size_t first);

#ifdef __cplusplus
}
#endif

#endif /*ASNTOOLINT_H*/
