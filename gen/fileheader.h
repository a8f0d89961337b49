#pragma once

#include "store/ketradef.h"

struct AsnModule;

/* Opens a file set by initF under the file prefix of the module. Null opens nothing. */
void openF(int slot, AsnModule *module);

/* Writes the comment that a generated file begins with: which tool and which tree it comes from,
   its module and its name. `start` and `end` are the lines around it, each line stands between
   `linePrefix` and `lineSuffix`; null or empty texts are left out. */
void printFileHeader(int slot, const char *start, const char *end, const char *linePrefix,
                     const char *lineSuffix, AsnModule *module);

/* "on 22.11.2026 at 9:05.00" */
Text printTimeStamp(const TimeStamp &stamp);
