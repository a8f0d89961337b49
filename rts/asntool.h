/* The main part of a program that prints, checks, converts and encodes messages of given types.

   velmo-tool writes the tables that it needs. A program of one's own may call it with its entry tables
   alone; what needs names and tags of components, JSON and listings of tags, is then left out. */

#ifndef ASNTOOL_H
#define ASNTOOL_H

#ifndef ASNTYP_TYP
#include "asntyp.typ"
#endif
#ifndef ASNUTI_EXT
#include "asnuti.ext"
#endif

#if !ASN_TABN || !ASN_TABTAG || !ASNCODEC_MODULE || !ASNTST_MODULE || ASN_ALT_TAB || ASN_TABPARAM || ASN_TABREF
#error "entry tables for asnToolMain have the columns that they have by default"
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Kinds of types beside the TYP_ names. */
enum {
  ASNTOOL_UTF8 = 64,   /* UTF8String and the times and identifiers that are characters */
  ASNTOOL_RELATIVE_OID
};

struct ASNTOOLTYPE;

/* A named number or bit, or an item of an enumeration. */
typedef struct {
  sint64 number;
  const char *name;
} ASNTOOLNAME;

/* A type where it is used: a component, an alternative, an element or an entry. */
typedef struct {
  const char *name;               /* null for an element and for an extension marker */
  const struct ASNTOOLTYPE *type; /* null for an extension marker */
  const uint32 *tags;             /* TAG words, the outermost first and 0 behind the last; those of CHOICE, ANY
                                     and open types stand around it */
  sint64 low, high;               /* what a number, a size or a count may be; MINLONG, MAXLONG: anything */
  const char *rules;              /* constraints besides, each in parentheses behind a blank, or null */
  uint8 status;                   /* TCS_ name */
  uint8 listed;                   /* of an entry: "list" shows it */
} ASNTOOLPLACE;

/* What a type is, whatever its tags. */
typedef struct ASNTOOLTYPE {
  const char *name; /* of its definition, or null */
  uint8 kind;       /* TYP_ name, or one of the kinds above */
  const ASNTOOLPLACE *places; /* components, extension marker among them, alternatives, or one element */
  uint32 nrOfPlaces;
  const ASNTOOLNAME *names;
  uint32 nrOfNames;
} ASNTOOLTYPE;

/* The entry types of a module. */
typedef struct {
  const char *name; /* null behind the last module */
  const ENTRYDESCR *entries;
  const ASNTOOLPLACE *places; /* one for each entry, or null if they are not known */
  uint32 nrOfEntries;
} ASNTOOLMODULE;

#define asnToolMainWith ASN_AGREED_ (asnToolMainWith)

/* Does what the command line says; --help tells what that may be. Returns the status for the end of the
   program: 0 if all was good, 1 if something was not, 2 for a wrong command line. */
int asnToolMainWith (int reentrant, int argc, char **argv, const ASNTOOLMODULE *modules);
#define asnToolMain(argc, argv, modules) asnToolMainWith (ASN_REENTRANT, argc, argv, modules)

#ifdef __cplusplus
}
#endif

#endif /*ASNTOOL_H*/
