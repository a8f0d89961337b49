/* What the parts of one run of a message program share. */

#ifndef ASNTOOLRUN_H
#define ASNTOOLRUN_H

#include "asntoolint.h"

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* How values stand in a file. */
enum {
  FORMAT_UNKNOWN, FORMAT_BINARY, FORMAT_HEX, FORMAT_BASE64, FORMAT_PEM, FORMAT_TEXT, FORMAT_JSON, FORMAT_TAGS
};
enum { COMMAND_LIST, COMMAND_DECODE, COMMAND_ENCODE, COMMAND_CONVERT, COMMAND_CHECK };
enum { STATUS_GOOD = 0, STATUS_BAD = 1, STATUS_USAGE = 2 };

/* An entry type; `module` is null for none. */
typedef struct {
  const ASNTOOLMODULE *module;
  uint32 number;
} ASN_ENTRY;

typedef struct {
  const char *program;
  const ASNTOOLMODULE *modules;
  int reentrant;
  /* The command line. */
  int command;
  const char *typeName; /* null: chosen by each message */
  int in, out;          /* FORMAT_ names */
  BOOLE der;
  BOOLE all;
  BOOLE quiet;
  int nrOfFiles;
  char **files;
  /* The run. */
  ASN_ENTRY entry;      /* of typeName, or the one chosen last */
  const char *file;     /* in hand; "-" is the standard input */
  size_t offset;        /* of the message in hand in its file's octets */
  unsigned long number; /* of the message in its file, from 1 */
  unsigned long line;   /* of a text the one where the value begins, else 0 */
  unsigned long nrOfMessages, nrOfBad;
  unsigned long nrOfBadFiles;
  BOOLE hasWrongUsage;
  ASN_GROWING raw, octets, text, other;
  ASNMEM memory;
  void *value;
  size_t valueSize;
  size_t bytesBefore, bytesOfFile, bytesOfAll; /* for the progress bar */
  unsigned long startTime, lastTime;
  int barLength; /* 0 if it is not shown */
} ASN_TOOL;

/* --- entries --- */

static inline const ENTRYDESCR *asnRow (ASN_ENTRY entry)
{
  return &entry.module->entries[entry.number];
}
/* Null if names and tags of components are not known. */
static inline const ASNTOOLPLACE *asnEntryPlace (ASN_ENTRY entry)
{
  return entry.module->places ? &entry.module->places[entry.number] : NULL;
}
static inline BOOLE asnIsListed (ASN_ENTRY entry)
{
  return !entry.module->places || entry.module->places[entry.number].listed;
}
/* The first entry behind `entry`, or of all if that has no module; false behind the last one. */
BOOLE asnNextEntry (const ASNTOOLMODULE *modules, ASN_ENTRY *entry);
/* "Type" or "Module.Type". */
BOOLE asnHasName (ASN_ENTRY entry, const char *name);
/* False, with a message, if it is none or not one alone. */
BOOLE asnFindEntry (ASN_TOOL *tool, const char *name);
/* Makes the entry that "list" shows that of the tool, if it is the only one. */
BOOLE asnOnlyEntry (ASN_TOOL *tool);
/* The entry type whose value begins at `p`, becomes that of the tool; false, with a message, if none or
   several fit. */
BOOLE asnChooseEntry (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
void asnListEntries (ASN_TOOL *tool);

/* --- files --- */

/* Whether there is a file of the name, without opening it where that has consequences. */
BOOLE asnIsFile (const char *name);
/* 0 if that isn't known before the file is read. */
size_t asnSizeOfFile (const char *name);
/* Reads a whole file to tool->raw; false, with a message, if that can't be done. */
BOOLE asnReadFile (ASN_TOOL *tool, const char *name);
/* What the file in hand is, by its contents and what the command may be given. */
int asnDetectFormat (const ASN_TOOL *tool);
/* The octets of tool->raw to tool->octets; false, with a message, if it is not of this format. */
BOOLE asnReadOctets (ASN_TOOL *tool, int format);

/* --- messages --- */

/* Makes tool->value so large; false if there is no memory. */
BOOLE asnMakeRoomForValue (ASN_TOOL *tool, size_t size);
/* Decodes the message at `p` to tool->value without a word. */
BOOLE asnTakeTrial (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
/* Decodes the message at `p` to tool->value; what is wrong is reported. */
BOOLE asnTakeMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
/* Writes it in the form that is asked for; false if that was reported to fail. */
BOOLE asnWriteMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
/* Whether the value is the same when it is encoded again; what differs is reported. */
BOOLE asnCheckMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
/* Does with one message what the command asks for, and counts it. */
void asnRunMessage (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length);
/* Goes through all messages of a file. */
void asnRunFile (ASN_TOOL *tool, const char *name);
/* The value of tool->typeName, or of the type that the text names, from text or JSON. */
void asnRunValues (ASN_TOOL *tool, int format);

/* The same value in definite lengths and with sorted SETs, in memory that the caller frees; null if that was
   reported to fail. */
BYTE_TYPE *asnMakeDer (ASN_TOOL *tool, const BYTE_TYPE *p, size_t length, size_t *derLength);

/* --- reports --- */

/* The beginning of a report of the message in hand; reports of "check" are the output. */
FILE *asnStartReport (ASN_TOOL *tool);
/* What is wrong with the message in hand, and what was expected. Its text may be empty or null. */
void asnReport (ASN_TOOL *tool, const ASNERROR *error, const char *expected, const char *found);
/* The same with the expectation of the type's description. */
void asnReportDecoding (ASN_TOOL *tool, const ASNERROR *error, const BYTE_TYPE *p, size_t length);
/* Notes when a run begins, and what it has to go through. */
void asnStartProgress (ASN_TOOL *tool);
void asnShowProgress (ASN_TOOL *tool, size_t bytesDone);
void asnHideProgress (ASN_TOOL *tool);
void asnReportRun (ASN_TOOL *tool);

#ifdef __cplusplus
}
#endif

#endif /*ASNTOOLRUN_H*/
