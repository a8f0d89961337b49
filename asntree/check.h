#pragma once

#include "asntree/objects.h"
#include "asntree/values.h"

namespace asntree {

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
