#pragma once

#include "base/call.h"

/* From the current VNode along all references to the one that it finally means, which is current
   afterwards. `leave` sees each record passed, the position as the `first` one. A chain without end
   is fatal error 15. */
void goThroughValueChain(Call<void(bool first)> leave);
