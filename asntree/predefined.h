#pragma once

#include "asntree/compilation.h"

namespace asntree {

/* Enters the module of what ASN.1 itself defines by ASN.1: the classes TYPE-IDENTIFIER and
   ABSTRACT-SYNTAX, and the types that are associated with EXTERNAL and its like for values and
   constraints. It is the first module of every compilation and in no tree. */
void addPredefinedModule(Compilation &c);

} // namespace asntree
