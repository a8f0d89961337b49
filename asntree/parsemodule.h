#pragma once

#include "asntree/parsing.h"

namespace asntree {

/* The header of a module, EXPORTS and IMPORTS. `Parser::failed` stays set only if the header itself
   doesn't parse. Words and macros that are imported are noted in `words`. */
void parseModuleStart(Parser &p, Module &module, ModuleWords &words);

/* The module has a definition, or an import, whose name is this word; nothing is done for the words
   that were reserved from the beginning. */
void redefine(ModuleWords &words, Word word);

/* One assignment; a name stands there. It is added to the module even if it doesn't parse, so that
   references to it are not undefined as well. */
void parseAssignment(Parser &p, Module &module);

} // namespace asntree
