/* JSON that was read, and encodings made of it. */

#ifndef ASNTOOLBUILD_H
#define ASNTOOLBUILD_H

#include "asntoolint.h"

#ifdef __cplusplus
extern "C" {
#endif

enum { JSON_NULL, JSON_FALSE, JSON_TRUE, JSON_NUMBER, JSON_STRING, JSON_LIST, JSON_OBJECT };

/* A value. Other nodes are named by their numbers; 0 is none. */
typedef struct {
  const char *name; /* of a member, as it is written */
  const char *text; /* of a number or, between the quotes, of a string, as it is written */
  uint32 nameLength;
  uint32 length;
  uint32 first, last;    /* of the members or elements */
  uint32 next, previous; /* of the value around this one */
  uint32 line;
  uint8 kind;
} ASN_JSON_NODE;

/* Zero at first; texts point into what was read. */
typedef struct {
  ASN_JSON_NODE *nodes; /* number 1 is the value itself */
  uint32 nrOfNodes;
  uint32 room;
  uint32 line;
  const char *wrong; /* what is wrong, if something is */
} ASN_JSON;

/* Reads the value at *p, which moves behind it; false, with doc->wrong and the line, if there is none.
   Of an earlier value nothing is kept. */
BOOLE asnParseJson (ASN_JSON *doc, const char **p, const char *end);
void asnDropJson (ASN_JSON *doc);
/* The UTF-8 text of a string without its escapes is added. */
BOOLE asnUnescape (ASN_GROWING *to, const ASN_JSON_NODE *node);

/* The making of one encoding. */
typedef struct {
  ASNCODG g;
  const ASN_JSON *doc;
  BOOLE der;
  ASN_GROWING octets, text; /* of the value in hand */
  uint32 nrOfSteps;
  ASN_STEP steps[ASN_MAX_PATH];
  ASNERROR error;
  uint32 line;          /* of the error */
  ASN_GROWING expected; /* there */
} ASN_BUILDER;

/* The encoding of a value, in memory that the caller frees; null with builder->error. With `der` SETs are
   sorted. asnEndBuild drops what the builder has. */
BYTE_TYPE *asnBuild (ASN_BUILDER *builder, const ASNTOOLPLACE *place, const ASN_JSON *doc, BOOLE der, size_t *length);
void asnEndBuild (ASN_BUILDER *builder);

/* The contents of a type without parts to builder->octets; false if the node is none of its values. */
BOOLE asnBuildLeaf (ASN_BUILDER *builder, const ASNTOOLTYPE *type, const ASN_JSON_NODE *node);
/* Whether the node is a string of hexadecimal digits, whose octets are added. */
BOOLE asnTakeHexNode (ASN_GROWING *to, const ASN_JSON_NODE *node);

#ifdef __cplusplus
}
#endif

#endif /*ASNTOOLBUILD_H*/
