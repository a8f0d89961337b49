#pragma once

#include "store/ketravar.h"

/* What the facts of all definitions have in common. */

/* "record 12, line 8" */
Text recordText(const ModRec *module, RecNr nr, std::int32_t line);
/* Options, comments and lines of the user's own that are written on a definition, each as a fact.
 */
void showWrittenOptions(int level, ModRec *module, const TedRange &range);
