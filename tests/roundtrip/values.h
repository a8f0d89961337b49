/* Values of rows of entry tables, and what the generated functions do with them. */

#ifndef VALUES_H
#define VALUES_H

#define ASN_TABN 1
#define ASNCODEC_MODULE 1
#define ASNTST_MODULE 1

#include "asnapi.h"

/* The modules of a program, in a file with their tables. */
typedef struct {
  const char *name;
  const ENTRYDESCR *rows;
  int nrOfRows;
} MODULE;
extern const MODULE modules[];
extern const int nrOfModules;

/* Rows are counted through all modules; `number` may be any. */
int numberOf (const ENTRYDESCR *row);
const ENTRYDESCR *rowNumbered (int number);

/* One value, with all that it owns. */
typedef struct {
  const ENTRYDESCR *row;
  void *value;
  size_t size;
  ASNMEM memory;
} VALUE;

typedef struct {
  BYTE_TYPE *octets;
  size_t length;
} ENCODING;

/* Faults found so far, and where the script stands that finds them. */
extern int failures;
extern const char *script;
extern int scriptLine;
void fail (const VALUE *v, const char *what, const char *detail);

void openValue (VALUE *v, const ENTRYDESCR *row);
void closeValue (VALUE *v);
/* A script; `ask` counts a fault of it as one of the program. */
BOOLE askFor (VALUE *v, char *text, ASNERROR *error);
BOOLE ask (VALUE *v, char *text);
/* Printing doesn't change a value. The caller frees the text. */
char *print (const VALUE *v);
/* Uses up a value that stands in homes. The caller frees the octets. */
ENCODING encode (const VALUE *v);
/* The decoder gets octets that end where their memory ends. */
BOOLE decode (VALUE *v, const BYTE_TYPE *octets, size_t length, ASNERROR *error);

/* Whatever a decoder takes for a value has to be one, and so has a text that is accepted. */
void checkEncoding (const ENTRYDESCR *row, const BYTE_TYPE *octets, size_t length);
void checkText (const ENTRYDESCR *row, char *text);

/* Decodes changed forms of an encoding. */
void mutate (const ENTRYDESCR *row, const ENCODING *e, int times);
/* Asks for changed texts. */
void mutateText (const ENTRYDESCR *row, const char *text, int times);

/* Lets each allocation fail once while an encoding is decoded, its value encoded, and a text asked for; and
   each write while it is printed. */
void starve (const ENTRYDESCR *row, const ENCODING *e, const char *text);

#endif /*VALUES_H*/
