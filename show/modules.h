#pragma once

#include "model/backend.h"

/* Modules: their heads, and the walk over their definitions. */

/* Everything. */
void showModule(AsnModule *module);
/* The definitions of this name, or the part of a type that "Type.component" leads to; false if
   there is none. */
bool showDefinition(AsnModule *module, const Text &path);
