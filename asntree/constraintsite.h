#pragma once

#include <string>
#include <string_view>

#include "asntree/extents.h"

/* What the checks of constraints share: the place that a constraint stands at, and the checks of
   single values and ranges. */

namespace asntree {

/* What a constraint is checked against. */
struct Site {
    Compilation &c;
    const Scope *scope;
    TypeUse governor;
    TypeUse base;
    TypeUse parent;             /* the type that is restricted, if it has a definition */
    NumberSet extents[ASPECTS]; /* of the parent: values, sizes, characters */
    bool alphabet = false;      /* within FROM */
    bool size = false;          /* within SIZE */

    const NumberSet &extent(Aspect aspect) const {
        return extents[static_cast<std::size_t>(aspect)];
    }
    TypeKind kind() const { return base.type->kind; }
};

/* The parent's extent of what the constraint speaks of: values, sizes or characters. */
Aspect aspectOf(const Site &site);
/* What is asked of an expression there: the root alone counts. */
ExtentQuestion questionOf(const Site &site, Aspect aspect);

/* Strings of characters that FROM may restrict. */
bool hasAlphabet(TypeKind kind);

/* Reports an error; of a constraint on a type of the wrong kind: "SIZE restricts strings and lists,
   not INTEGER". */
void refuse(const Site &site, Place place, std::string text);
void refuseKind(const Site &site, const Constraint &constraint, std::string_view what);

/* Report a value or a range that is not one of the type's, or reaches outside the parent. */
void checkSingle(Site &site, const Value *value);
void checkRange(Site &site, const Constraint &range);

} // namespace asntree
