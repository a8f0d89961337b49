#pragma once

struct AsnType;

/* Warnings of the generators, on the standard error. None of them stops the run. */

/* "WARNING: " and the text. */
void warning(const char *text);
/* A warning that says where the type stands, and a second one with the text. */
void typeWarning(AsnType *type, const char *text);
/* The same, for what generated code can't express yet. */
void notYetSupported(AsnType *type, const char *text);
/* A fault of the tool's own, with its name in front. */
void bugInTool(const char *text);
