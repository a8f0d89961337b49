#pragma once

#include "asntree/objects.h"
#include "asntree/values.h"

namespace asntree {

/* False, after a message, if a definition leads to another one over more references than are gone
   along. To be called before anything else is asked of definitions. */
bool checkChains(Compilation &c);

/* Checks all definitions of the run, instances of parameterized ones among them, once each. */
void checkModules(Compilation &c);

/* Parts of that, each for one piece of syntax and what stands inside it; what it refers to is
   checked at its own definition. */
void checkType(Compilation &c, TypeUse use);
void checkValue(Compilation &c, ValueUse use, TypeUse governor);
void checkClass(Compilation &c, ClassUse use);
void checkObject(Compilation &c, const ObjectUse &use);
void checkSetElements(Compilation &c, SetUse use, TypeUse governor);
void checkObjectSet(Compilation &c, SetUse use, ClassUse objectClass);
/* A table constraint with its paths; `outer` are the structures around the type, innermost last. */
void checkTable(Compilation &c, const Constraint &table, TypeUse type,
                const std::vector<TypeUse> &outer);

/* Types that hold themselves, and so have no value of finite size. */
void checkFiniteSizes(Compilation &c);

} // namespace asntree
