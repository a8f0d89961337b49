#pragma once

#include "base/call.h"
#include "store/ketravar.h"

/* Each back-end option among the TedRecs `first` (0: there are none) to `last` of a module, as stored;
   comments aren't options. Fatal error 9 for records that don't exist. */
void forEachBEOption(ModRec *module, RecNr first, RecNr last, Call<void(const char *text)> func);
