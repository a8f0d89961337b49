#pragma once

#include "base/text.h"

/* Which tool this is. The back end takes it from the tool that is built on it, so nothing but
   velmo_main.cpp knows what it says. */
extern Text backendName;
extern int backendVersion; /* major * 100 + minor */
extern int backendPatchLevel;
extern const char *copyrightNotice; /* Latin-1; null counts as empty */

/* The version of all programs that are built together: major * 100 + minor. */
extern const int houseVersion;
/* "velmo 1.7": how the program of this name answers "--version". */
Text programVersion(const char *program);

/* "4.07", or "4.07.1" if `patchLevel` is at least 1. */
Text printVersionStri(int version, int patchLevel);

/* The copyright notice as it is printed: a line for each sentence, "(c)" for the sign. */
const Text &formatToolCopyright();
/* The block of text that the option "VERSION" asks for, on the standard output. Fatal
   error 7 if it did not arrive there. */
void printVersionInfo(int treeVersion);
/* What was written to the standard output has to arrive there: fatal error 7 if it did not. Called
   before each exit with status 0. */
void checkStandardOutput();
