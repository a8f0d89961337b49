#pragma once

#include "asntree/parsing.h"

namespace asntree {

/* The header of a module, EXPORTS and IMPORTS. `Parser::failed` stays set only if the header itself
   doesn't parse. Words and macros that are imported are noted in `words`. */
void parseModuleStart(Parser &p, Module &module, ModuleWords &words);

/* One assignment; a name stands there. It is added to the module even if it doesn't parse, so that
   references to it are not undefined as well. */
void parseAssignment(Parser &p, Module &module);

} // namespace asntree
