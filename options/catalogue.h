#pragma once

#include "store/ketradef.h"

/* The general options, and the passes that apply the options of a tree or of the command line to a
   module. */

/* All options of a module whose header has just been read and is the current MNode: defaults, the
   header's counts, then the options stored in the tree. */
void settleStoredOptions(ModRec *module);

/* Applies the general options among the records of a range: prefixes first, then all others in
   their order. An option that is wrong is dropped without a word. */
void checkGlobalOptions(ModRec *module, const TedRange &range);
/* Applies the tool's own options among the records of a range. A wrong one is reported on the
   standard error and its record removed. */
void checkGlobalBEOptions(ModRec *module, const TedRange &range);
/* Which of the modules that "COMBINE=" names are known here. */
void checkCombinedModules(ModRec *module);

/* One option; `text` is the stored text behind its first character. False if it is wrong. */
bool pass2GlobalOptionOK(ModRec *module, RecNr recNr, int tedKind, const char *text);
bool pass3GlobalOptionOK(ModRec *module, RecNr recNr, int tedKind, const char *text);

/* What a stored text says to the tool of this name ("VELMO=", of `length` characters): the text
   behind "BEO=" and the name, or behind a leading "-". Null if it is meant for another tool. */
const char *parseBEOption(const char *text, const char *name, std::size_t length);
/* The comment in a stored text that begins "BEO=//" or "//" behind its first character, or null. */
const char *parseBECommentOption(const char *text);
