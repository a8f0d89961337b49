#pragma once

#include "asntree/numberset.h"
#include "asntree/values.h"

/* What constraints leave of a type. */

namespace asntree {

/* A constraint with the scope that its names are looked up in and the type that it restricts. */
struct ConstraintUse {
    const ConstraintSpec *spec = nullptr;
    const Scope *scope = nullptr;
    TypeUse type; /* that the constraint is written on */
};

/* The constraints of a type from the outermost reference to the base, each record's in the order of
   the text; `own` counts those that stand on the type itself, which come first. */
struct ConstraintChain {
    std::vector<ConstraintUse> all;
    std::size_t own = 0;
};
ConstraintChain constraintsOf(Compilation &c, TypeUse type);

/* How extensible constraints count: with what the first version knew (`Root`), or not at all, as
   the parent stands (`Open`), since a later version may send more. */
enum class ExtensionView : std::uint8_t { Root, Open };

/* The numbers that an INTEGER may be, sizes that a string or list may have, characters that a
   string may be made of. A part that can't be worked out (a pattern, a user's constraint) restricts
   nothing. All numbers (sizes: 0 to MAX; characters: those of the type) without a constraint. What
   is returned lives as long as the compilation. */
const NumberSet &valuesOf(Compilation &c, TypeUse type, ExtensionView view);
const NumberSet &sizesOf(Compilation &c, TypeUse type, ExtensionView view);

/* True if some constraint of the chain, or an expression, is extensible. */
bool isExtensible(const ConstraintSpec &spec);

/* Reports what WITH COMPONENTS says of the presence of components that can't be so. */
void checkPresence(Compilation &c, TypeUse structure, const Constraint &constraint);
/* Does a value fit its type's constraints; reports once what doesn't. */
bool checkDatum(Compilation &c, const Datum &datum, TypeUse type);

/* Reports what doesn't fit: a constraint that doesn't go with its type, values of another type,
   ranges that are reversed, empty, or reach outside the parent. Tables and their paths are left to
   others. */
void checkConstraints(Compilation &c, TypeUse type); /* those that stand on this one type node */
/* The same for one constraint, or a value set, on `parent` with all constraints of that. */
void checkConstraint(Compilation &c, const ConstraintUse &use, TypeUse parent);

} // namespace asntree
