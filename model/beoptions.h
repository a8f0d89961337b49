#pragma once

#include "base/call.h"
#include "store/ketravar.h"

/* Back-end options as they stand in the TedRecs of a module, a type or a value. */

/* Each back-end option among the records `first` (0: there are none) to `last`: its text, and the
   comment in it, which is null if it is an option of another sort. Fatal error 9 for records that
   don't exist. */
void forEachBEOption(ModRec *module, RecNr first, RecNr last,
                     Call<void(const char *text, const char *comment)> func);
/* The comments alone, `nbr` counts them from 0. */
void forEachBEComment(ModRec *module, RecNr first, RecNr last,
                      Call<void(const char *comment, int nbr)> func);
