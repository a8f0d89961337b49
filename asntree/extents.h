#pragma once

#include "asntree/constraints.h"
#include "asntree/reading.h"

/* How constraints are worked out to sets of numbers: values, sizes, or characters. */

namespace asntree {

/* What a constraint leaves. */
struct Extent {
    NumberSet set;
    bool exact = true; /* false: other things are asked for too, or they can't be worked out */
};

struct ExtentQuestion {
    Compilation &c;
    const Scope *scope;
    TypeUse governor; /* of single values and endpoints */
    Aspect aspect;
    ExtensionView view;
    bool alphabet = false; /* within FROM: a text stands for its characters */
};

/* Within `parent`, which MIN and MAX stand for the ends of. */
Extent evaluate(const ExtentQuestion &question, const ConstraintSpec &spec,
                const NumberSet &parent);
Extent evaluate(const ExtentQuestion &question, const Constraint &constraint,
                const NumberSet &parent);
/* What all constraints of a type leave; worked out once. */
const NumberSet &extentOf(Compilation &c, TypeUse type, Aspect aspect, ExtensionView view);
/* What a type has without any constraint. */
NumberSet wholeExtent(Compilation &c, TypeUse type, Aspect aspect);

/* The number that an endpoint gives: a whole number, or the character that a text has. Nothing for
   other values, and after a message. */
std::optional<Number> endpointOf(const ExtentQuestion &question, const Value *value);

/* Whether braces hold an object set in line, as a table for a field of a class, and no value. */
bool isInlineTable(Compilation &c, const Value *value, TypeUse governor);

/* Characters, bits, octets or elements of a value; nothing if it has no size, or one that trailing
   zeros may change. */
std::optional<Number> sizeOf(const Datum &datum);
NumberSet charactersIn(const Datum &datum);

/* Whether a value fits one constraint alone. */
enum class Verdict : std::uint8_t { No, Yes, Unknown };
Verdict satisfies(Compilation &c, const ConstraintUse &use, const Datum &datum);
/* Sign of a - b as far as floating point tells; nothing if one is no number. */
std::optional<int> compareReals(const RealNumber &a, const RealNumber &b);

} // namespace asntree
