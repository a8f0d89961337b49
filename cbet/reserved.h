#pragma once

/* True for a keyword of C (C99, and what C11 adds in small letters), which can't be a name. */
bool cIsReservedWord(const char *name);
