#include <algorithm>

#include "asntree/extents.h"

/* Does a value fit the constraints of its type. */

namespace asntree {

namespace {

/* `at`: where to report; a value behind a reference is reported where the reference stands. */
struct Fit {
    Compilation &c;
    const Datum &datum;
    TypeUse type;
    Place at;
    bool isReferred = false; /* part of a value that a reference led to */
};

bool isChainExtensible(Compilation &c, TypeUse type) {
    const ConstraintChain chain = constraintsOf(c, type);
    return std::any_of(chain.all.begin(), chain.all.end(),
                       [](const ConstraintUse &use) { return isExtensible(*use.spec); });
}

bool holds(const Constraint &constraint, ConstraintKind kind) {
    return constraint.kind == kind ||
           std::any_of(constraint.operands.begin(), constraint.operands.end(),
                       [kind](const Constraint *operand) { return holds(*operand, kind); });
}

/* Whether SIZE or FROM is written; else what sets of sizes and characters tell isn't the reason. */
bool isWritten(const Fit &fit, ConstraintKind kind) {
    const ConstraintChain chain = constraintsOf(fit.c, fit.type);
    return std::any_of(chain.all.begin(), chain.all.end(), [kind](const ConstraintUse &use) {
        return use.spec->root != nullptr && holds(*use.spec->root, kind);
    });
}

bool refuse(const Fit &fit, std::string text) {
    error(fit.c.diagnostics, fit.at, std::move(text));
    return false;
}

std::string unitOf(const Datum &datum, bool many) {
    const std::string unit = datum.kind == DatumKind::Bits     ? "bit"
                             : datum.kind == DatumKind::Octets ? "octet"
                             : datum.kind == DatumKind::List   ? "element"
                                                               : "character";
    return many ? unit + "s" : unit;
}

bool checkNumber(const Fit &fit) {
    const NumberSet &root = extentOf(fit.c, fit.type, Aspect::Values, ExtensionView::Root);
    if (contains(root, fit.datum.number) || isChainExtensible(fit.c, fit.type))
        return true;
    if (root.empty())
        return true; /* the type itself was refused */
    if (fit.datum.kind == DatumKind::Item)
        return refuse(fit, "the item " + quote(fit.datum.item) + " is none of those that " +
                               describeType(fit.type) + " allows");
    return refuse(fit, "the value " + textOf(fit.datum.number) + " doesn't fit " +
                           describeType(fit.type) + ", which allows " + textOf(root));
}

bool checkSize(const Fit &fit) {
    const auto size = sizeOf(fit.datum);
    if (!size)
        return true;
    if (fit.datum.kind == DatumKind::Bits && !baseOf(fit.c, fit.type).type->items.empty())
        return true; /* zeros at its end may be added or dropped */
    const NumberSet &sizes = extentOf(fit.c, fit.type, Aspect::Sizes, ExtensionView::Root);
    if (sizes.empty() || contains(sizes, *size) || !isWritten(fit, ConstraintKind::Size) ||
        isChainExtensible(fit.c, fit.type))
        return true;
    return refuse(fit, "the value has " + textOf(*size) + " " +
                           unitOf(fit.datum, !(*size == Number::of(1))) + ", but the size of " +
                           describeType(fit.type) + " is " + textOf(sizes));
}

bool checkCharacters(const Fit &fit) {
    if (fit.datum.kind != DatumKind::Text)
        return true;
    const NumberSet &set = extentOf(fit.c, fit.type, Aspect::Characters, ExtensionView::Root);
    const auto strange = std::find_if(
        fit.datum.characters.begin(), fit.datum.characters.end(), [&](char32_t character) {
            return !contains(set, Number::of(static_cast<std::int64_t>(character)));
        });
    if (set.empty() || strange == fit.datum.characters.end() || isChainExtensible(fit.c, fit.type))
        return true;
    if (!isWritten(fit, ConstraintKind::Alphabet) &&
        contains(wholeExtent(fit.c, fit.type, Aspect::Characters),
                 Number::of(static_cast<std::int64_t>(*strange))))
        return true;
    return refuse(fit, "the character " + textOfCharacter(*strange) + " is none of those that " +
                           describeType(fit.type) + " allows");
}

/* All that the sets of numbers don't tell. */
bool checkOthers(const Fit &fit) {
    for (const ConstraintUse &use : constraintsOf(fit.c, fit.type).all) {
        if (satisfies(fit.c, use, fit.datum) != Verdict::No)
            continue;
        error(fit.c.diagnostics, fit.at,
              "the value doesn't fit the constraint of " + describeType(fit.type),
              {{use.spec->place, "the constraint"}});
        return false;
    }
    return true;
}

bool checkWhole(const Fit &fit);

TypeUse governorOf(const Target &reference) {
    if (reference.argument != nullptr)
        return reference.argument->governor;
    return {reference.assignment->type, reference.scope};
}

/* What governs a member here. It was read by another type if a reference led to it. */
TypeUse typeOfMember(const Fit &fit, TypeUse base, const DatumMember &member) {
    if (member.name.empty() && base.type->element != nullptr)
        return {base.type->element, base.scope};
    const SettledComponent *component = findComponent(fit.c, base, member.name);
    return component != nullptr ? component->type : member.type;
}

/* Members of what a reference leads to were checked by their types where it is defined. */
bool checkMembers(const Fit &fit) {
    const Target &reference = fit.datum.reference;
    if (reference && baseOf(fit.c, governorOf(reference)) == baseOf(fit.c, fit.type))
        return true;
    const TypeUse base = baseOf(fit.c, fit.type);
    const bool isForeign = reference || fit.isReferred;
    bool sound = true;
    for (const DatumMember &member : fit.datum.members) {
        if (!sound && isForeign)
            break; /* one place gives one message */
        const Place at = isForeign ? fit.at : member.value->place;
        const TypeUse type = isForeign ? typeOfMember(fit, base, member) : member.type;
        sound = checkWhole({fit.c, *member.value, type, at, isForeign}) && sound;
    }
    return sound;
}

/* A reference to a value of the same builtin type says nothing new where no constraint stands. */
bool isCheckedAlready(const Fit &fit, TypeUse base) {
    if (!fit.datum.reference || fit.datum.kind != DatumKind::Text)
        return false;
    const TypeUse other = baseOf(fit.c, governorOf(fit.datum.reference));
    return other && other.type->kind == base.type->kind &&
           constraintsOf(fit.c, fit.type).all.empty();
}

bool checkWhole(const Fit &fit) {
    const DepthGuard guard(fit.c);
    if (fit.datum.kind == DatumKind::Bad || !guard.ok)
        return true;
    const TypeUse base = baseOf(fit.c, fit.type);
    if (!base)
        return true;
    if (isCheckedAlready(fit, base))
        return true;
    bool sound = true;
    if (fit.datum.kind == DatumKind::Integer || fit.datum.kind == DatumKind::Item)
        sound = base.type->kind == TypeKind::Macro || checkNumber(fit);
    else
        sound = checkSize(fit) && checkCharacters(fit) && checkOthers(fit);
    return sound && checkMembers(fit);
}

} // namespace

bool checkDatum(Compilation &c, const Datum &datum, TypeUse type) {
    return checkWhole({c, datum, type, datum.place, false});
}

} // namespace asntree
