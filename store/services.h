#pragma once

#include <cstdio>

#include "store/ketravar.h"

/* Files by name, and lists of nodes. */

/* `dst` becomes `name` and `suffix`. With `replace` an extension of the name (from the last "."
   behind the last "/") gives way to the suffix; without it a name that has an extension takes no
   suffix. */
Text &setFileName(Text &dst, const char *name, const char *suffix, bool replace);

/* Opens `directory` and `name` joined. A path of over 512 characters (reported without a name) or a
   failure to open is fatal error 1 if `mode` begins with "r", otherwise 2. */
std::FILE *fopenTextFile(const char *directory, const char *name, const char *mode);

/* References to records of one kind, the most recent one in front. */
struct NodeList {
    RecKind kind = REC_TNODE;
    std::vector<NodePlace> places; /* oldest first: read from the back */
    /* Adds the current record of the list's kind in front. */
    void addFstNode() { places.push_back(recJustRead[kind]); }
};
