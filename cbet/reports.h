#pragma once

struct AsnType;

/* Error reports and run-time paths. */

/* Says on the standard error, at the line of the type's definition, what all kinds of function find
   there; the same words only once. */
void cSayAtType(AsnType *type, const char *text);
/* Says so that generated code can't hold the type in this way; the run goes on and ends with
   status 1. */
void cRefuseType(AsnType *type, const char *text);

/* reportError (ASNG_F(asncodg) TAG_FAIL); */
void cReportError(int file, const char *name);
/* The report that doesn't return. */
void cReportFatalError(int file, const char *name);

/* Where a decoder stands, for its error reports. Nothing unless the option "PUSHPATH=" is on. A pop
   takes off as many characters as the push of the same thing put on. */
void cPushEntryPath(int file, AsnType *type);
void cPopEntryPath(int file, AsnType *type);
void cPushPath(int file, AsnType *comp);
void cPopPath(int file, AsnType *comp);
void cPushElem(int file, AsnType *list);
