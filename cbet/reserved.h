#pragma once

/* True for a keyword of C (C99, and what C11 adds in small letters): no identifier may be so named. */
bool cIsReservedWord(const char *name);
