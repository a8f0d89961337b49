#pragma once

#include "store/text.h"

/* Which tool this is: its name, version and texts. The back end takes them from the tool that is
   built on it, so nothing but velmo_main.cpp knows what they say. */
struct ToolInfo {
    const char *name = "";
    int version = 0; /* major * 100 + minor */
    int patchLevel = 0;
    const char *const *usage = nullptr;    /* lines, up to a null entry */
    const char *copyrightNotice = nullptr; /* Latin-1 */
};
extern ToolInfo toolInfo;

/* Progress lines of the back end on the standard error; 0, the default, writes none. */
extern int backendVerbosity;
void setBackendVerbosity(int level);

/* Writes the usage text to the standard error and exits with status 1. */
[[noreturn]] void usage();

/* The copyright notice as it is printed: a line for each sentence, "(c)" for the sign. */
const Text &formatToolCopyright();
/* The block of text that the option "VERSION" asks for, on the standard output. Fatal
   error 7 if it did not arrive there. */
void printVersionInfo();
/* What was written to the standard output has to arrive there: fatal error 7 if it did not. Called
   before each exit with status 0. */
void checkStandardOutput();
