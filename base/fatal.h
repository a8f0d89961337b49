#pragma once

#include "base/ketraerr.h"

/* Ends the run: writes "FATAL ERROR" with the text of `code` and, unless it is null, `detail` to
   the standard error, tells the project summary if one is active, and exits with the status of the
   code. Generated files stay as far as they were written. An unknown code counts as FATAL_OTHER. */
[[noreturn]] void fatalError(int code, const char *detail);

/* Told of each fatal error before the process ends, with the text of the code and the detail (or
   null). Null, the default, tells nobody. A fatal error inside the listener ends the process at
   once. */
void setFatalErrorListener(void (*listener)(const char *text, const char *detail));

/* From now on an allocation that fails is fatal error 5. */
void installMemoryHandler();

/* The exit status that a run ends with unless a fatal error comes first. Starts at 0; a generator
   that met an error and went on sets it to 1. */
extern int glbExitCode;

/* The usage text of the tool, line by line, ended by a null entry; null counts as empty. */
extern const char *const *backendUsage;
/* Writes it to the standard error and exits with status 1. */
[[noreturn]] void usage();
