#pragma once

#include "asntree/compilation.h"

namespace asntree {

/* The scope in which the body of a parameterized definition means what it does with the actual
   parameters of a reference. Equal parameters give the same scope. Null, after a message unless
   `quiet`, if the number of parameters is wrong or instances lie too deep in one another. */
const Scope *instantiate(Compilation &c, const Assignment *definition, const Reference &reference,
                         const Scope *caller, bool quiet);

} // namespace asntree
