#pragma once

#include "asntree/compilation.h"

namespace asntree {

/* Lexes and parses a file and enters its modules. */
void addFile(Compilation &c, SourceFile &file);

/* Connects the imports of all modules and checks all definitions; true if there were no errors, in
   what was parsed neither. Called once, when all files are there. */
bool checkAll(Compilation &c);

} // namespace asntree
