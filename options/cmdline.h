#pragma once

#include "store/ketradef.h"

/* The command line and the option files that it names. It is read twice: once before any tree, for
   the modules and where to find them, and once for each module, to store its options. */

/* First pass, with the first module's record in cMP: makes the records of the named modules, sets
   stxDir and the prefix length. A wrong argument, or none that names a module, ends the run with
   the usage text. Fatal error 1 for an option file that can't be opened, 6 for one of over a
   million lines. */
void parseCmdLineParams(int argc, char **argv);

/* Second pass for the module in cMP: stores each option as a TedRec. `range` gets their numbers,
   and each stored kind sets its bit (1 << TedKind) in `kinds`. Fatal errors 1 and 6 for option
   files. */
void parseCmdLineOptions(int argc, char **argv, unsigned *kinds, TedRange *range);

/* Stores one option record in cMP. */
void addTedRec(TedRange *range, int tedKind, const char *text);

/* Upper case for the letters of an option's name: from the second character to the first "=". */
Text &optionToUpper(Text &text);

/* True if a line of an option file, without white space in front, begins with a comment mark. */
bool isOptionComment(const Text &line);

/* The first character that can't be printed, or is a blank that isn't allowed; null if none. */
const char *findNonPrint(const char *text, bool blankAllowed);

/* Makes `name` a valid file prefix of at most `limit` characters: ".stx" at its end is dropped, the
   rest cut. False if a character is no letter, digit, "-" or "_". */
bool validFilePrefix(Text &name, int limit);
