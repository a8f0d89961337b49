#pragma once

#include "base/call.h"

/* The C back-end tools: the layer in which generators speak C. What it offers lies in headers by
   topic:

   vars.h        local variables of generated functions, braces, blocks
   functions.h   heads, prototypes and calls of generated functions
   forms.h       what a type is in C
   names.h       C names of types, components and named numbers
   homes.h       where a value lies in the running program
   constants.h   numbers as C writes them */

/* Brings up the whole tool set: `initBackend` loads the trees and settles the options, then the
   variables of this layer get their first values, some of which depend on the options of the first
   module. */
void cInitCBET(Call<void()> initBackend);
