#pragma once

#include <cstdio>

#include "base/text.h"

/* Whether there are project outputs, and where. */

struct TaviRec {
    Text prefix;    /* start of the file names; the outputs are made if it isn't empty */
    Text directory; /* of the files, with its separator; empty for the current one */
};
extern TaviRec taviRecord;

inline bool taviIsActive() {
    return !taviRecord.prefix.empty();
}

/* Does the text begin "TAVI-", in any case? */
bool taviIsTAVIOption(const char *text);
/* Stores "TAVI-PREFIX=" or "TAVI-DIRECTORY=", whose names must be in upper case; false for all else
   and for a value that is wrong. */
bool taviOptionOK(const char *text);

/* Opens the file of the outputs that ends in `suffix`. Fatal error 1 (`mode` begins with "r") or 2
   if that fails or there are no outputs. */
std::FILE *taviOpenTextFile(const char *suffix, const char *mode);
/* Closes it. Fatal error 7 if not all of it could be written. */
void taviCloseTextFile(std::FILE *file, const char *suffix);
