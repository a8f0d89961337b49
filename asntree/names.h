#pragma once

#include "asntree/compilation.h"

/* Names and what they lead to: modules, imports, definitions, dummy references. */

namespace asntree {

/* Enters a parsed module; its definitions get their names. Definitions given twice are reported. */
ModuleInfo *addModule(Compilation &c, Module *module);
/* The modules that imports of `module` name and that none of the run is, in the order of imports.
   To be called until the search has found or given up all of them. */
std::vector<const ImportFrom *> missingModules(Compilation &c, const ModuleInfo &module);
/* Connects all imports of the run, and reports missing modules and names that aren't exported. */
void linkImports(Compilation &c);

/* What a reference leads to: a definition with the scope that its syntax is to be read in, or the
   argument that stands for a dummy reference. */
struct Target {
    const Assignment *assignment = nullptr;
    const Scope *scope = nullptr;       /* of the definition: that of its module, or an instance */
    const Argument *argument = nullptr; /* then `assignment` is null */
    explicit operator bool() const { return assignment != nullptr || argument != nullptr; }
};

/* Resolves a reference and instantiates a parameterized definition by its arguments. Reports what
   is undefined (with the nearest name), ambiguous or has the wrong parameters, once for each place;
   an empty target then. A builtin class gives the assignment in the predefined module. */
Target resolve(Compilation &c, const Reference &reference, const Scope *scope);
/* The same without messages; an empty target if the name isn't known. */
Target tryResolve(Compilation &c, const Reference &reference, const Scope *scope);

/* One step from a type that is a reference, a selection or a field to the type that it stands for,
   with the scope of that; an empty use for any other kind, for classes, and for open types (fields
   of variable type). An open type that an object settles (object.&Type) is followed. */
TypeUse follow(Compilation &c, TypeUse use);
/* All steps. The result is no Reference or Selection, and if it is a Field, an open type. A circle
   of references was reported and gives an empty use, as any other mistake on the way. */
TypeUse baseOf(Compilation &c, TypeUse use);

/* The class that a type in the position of a governor names; empty without a message if it names a
   type. */
ClassUse classOf(Compilation &c, TypeUse use);

/* The definition that a use is a plain reference to (its Assignment), null for all others. */
const Assignment *definitionOf(Compilation &c, TypeUse use);

/* True for the name of a builtin type that one word gives, such as UTF8String. */
bool isBuiltinName(std::string_view name);

/* "Module.Name" or "Name" for messages. */
std::string textOf(const Reference &reference);

} // namespace asntree
