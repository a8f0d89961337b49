#pragma once

struct AsnType;

/* Checks of constraints that the run-time functions can't make by themselves. */

/* Writes the check of all constraints that count at this place: those of the type, or for a type
   with a body only those written at this use. What can't be put into code leaves a comment in the
   file and a warning on the standard error stream. Writes nothing if nothing remains to be checked.
 */
void cCheckConstraints(int file, AsnType *type);
