#pragma once

#include <cstdint>

#include "base/text.h"
#include "options/ketracnf.h"
#include "store/ketradef.h"

struct AsnModule;

/* Which files a module gets, what they are called, and how each begins and ends. The files of one
   module are open at a time. */

/* What sort of C text a file holds; decides its suffix, and its directory. */
enum FileKind : int { FILE_TYP = 0, FILE_DEF, FILE_C, FILE_EXT, FILE_TAB, FILE_NONE };

/* The file that each generator writes to, 0 for none. Where both of a pair share a file, both hold
   its number. */
extern int fiTyp, fiDef, fiTab, fiTabE;
extern int fiEnc, fiEncE, fiDec, fiDecE;
extern int fiAsk, fiAskE, fiPri, fiPriE;

/* Opens all files of the module, each with its header comment, guard and includes. Fatal error 2.
 */
void openModuleFiles(AsnModule *module);
/* Ends each file with its guard and closes it. Fatal errors 7 and 8. */
void closeModuleFiles(AsnModule *module);
/* The module's line in the log file, if there is one: its tree and the files that are open. */
void generateLogFile(AsnModule *module);

/* The name under which a generated file is included: generation prefix, category word and suffix.
   Empty if the module doesn't generate the category. */
Text constructFileName(AsnModule *module, int category, int kind);
/* Writes an include, tested against the guard of the included file; nothing for an empty name. */
void includeRtsFile(int file, const char *name);
/* The same for a generated file of a module, if there is one, and for a file that is named by the
   generation prefix and `name`. */
void includeGeneratedFile(int file, AsnModule *module, int category, int kind);
void includeExternalGeneratedFile(int file, AsnModule *module, const char *name);

/* Whether the module has table files; `first` and `second` become the kinds of the table file and
   of the file with its declarations, FILE_NONE for none. */
bool getTableFileKind(AsnModule *module, const std::uint8_t *genArr, int *first, int *second);

/* Opens a file set by initF under the file prefix of the module. Null opens nothing. */
void openF(int slot, AsnModule *module);

/* Writes the comment that a generated file begins with: which tool and which tree it comes from,
   its module and its name. `start` and `end` are the lines around it, each line stands between
   `linePrefix` and `lineSuffix`; null or empty texts are left out. */
void printFileHeader(int slot, const char *start, const char *end, const char *linePrefix,
                     const char *lineSuffix, AsnModule *module);

/* "on 22.11.2026 at 9:05.00" */
Text printTimeStamp(const TimeStamp &stamp);
