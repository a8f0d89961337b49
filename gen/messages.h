#pragma once

struct AsnModule;
struct AsnType;

/* What the generators say to the user. None of it stops the run. */

/* The tool's name and `text` on the standard output, if the module's verbosity is not quiet and at
   least `level`. */
void verboseMsg(AsnModule *module, int level, const char *text);

/* Warnings, on the standard error. */

/* "WARNING: " and the text. */
void warning(const char *text);
/* A warning that says where the type stands, and a second one with the text. */
void typeWarning(AsnType *type, const char *text);
/* The same, for what generated code can't express yet. */
void notYetSupported(AsnType *type, const char *text);
/* A fault of the tool's own, with its name in front. */
void bugInTool(const char *text);
