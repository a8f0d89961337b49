#pragma once

#include "asntree/compilation.h"

/* What the names in a text lead to, found by the names alone: without messages and without making
   instances of parameterized definitions. For questions about a whole run that need no more than
   "who names whom". */

namespace asntree {

/* The module that `Module.name` in `module` means, as resolve() has it; null if there is none. */
const ModuleInfo *moduleNamed(const Compilation &c, const ModuleInfo &module,
                              std::string_view name);
/* The definition of a name, own or imported; null for builtin names and unknown ones. */
const Assignment *definitionNamed(const Compilation &c, const ModuleInfo &module,
                                  std::string_view name);
/* The same for a reference with or without a module in front. Dummy references aren't known. */
const Assignment *definitionNamed(const Compilation &c, const ModuleInfo &module,
                                  const Reference &reference);

/* What a definition is. `Parameterized` and macros are nothing that stands in C by itself. */
enum class DefinitionKind : std::uint8_t {
    Type,
    Class,
    Value,
    ValueSet,
    Object,
    ObjectSet,
    Parameterized,
    Macro,
};
DefinitionKind kindOfDefinition(const Compilation &c, const Assignment &assignment);
/* True for a class, or a type assignment that is another name of one. */
bool namesClass(const Compilation &c, const Assignment &assignment);

/* The tokens of a definition, from its name to the next one's. */
TokenRange tokensOf(const Compilation &c, const Assignment &assignment);

/* The definitions that are named by tokens of a range, in the order of the text, a definition as
   often as it is named. `lower`: values and objects too. Dummy references of `around` are none. */
std::vector<const Assignment *> definitionsNamedIn(const Compilation &c, const ModuleInfo &module,
                                                   const Assignment *around, TokenRange range,
                                                   bool lower);
/* The modules of `Module.name` in a module's definitions. */
std::vector<const ModuleInfo *> modulesNamedIn(const Compilation &c, const ModuleInfo &module);

/* An order of modules that no command line changes: by name, identifier, and path of the file. */
bool standsBefore(const Compilation &c, const ModuleInfo &a, const ModuleInfo &b);

} // namespace asntree
