#include "asntree/constraintsite.h"

#include "asntree/check.h"
#include "asntree/objects.h"

/* Single values and ranges in a constraint: are they of the type, and within what the parent
   allows? */

namespace asntree {

void refuse(const Site &site, Place place, std::string text) {
    error(site.c.diagnostics, place, std::move(text));
}

void refuseKind(const Site &site, const Constraint &constraint, std::string_view what) {
    std::string type = describeType(site.governor);
    const std::string kind(kindText(site.kind()));
    if (type != kind)
        type += " (" + kind + ")";
    refuse(site, constraint.place, std::string(what) + ", not " + type);
}

/* The times of 1988 are strings of characters by their definition. */
bool hasAlphabet(TypeKind kind) {
    return (isCharacterString(kind) && kind != TypeKind::CharacterString) ||
           kind == TypeKind::GeneralizedTime || kind == TypeKind::UtcTime;
}

Aspect aspectOf(const Site &site) {
    return site.alphabet ? Aspect::Characters : site.size ? Aspect::Sizes : Aspect::Values;
}

namespace {

const NumberSet &parentOf(const Site &site) {
    return site.extent(aspectOf(site));
}

/* A size or character beyond the parent's is no mistake while others are left, for a string with it
   is still a string: the check for what is left tells of those where none is. False if what is
   restricted can't have it at all. */
bool reportOutside(const Site &site, Place place, const std::string &what, const NumberSet &part) {
    const NumberSet &parent = parentOf(site);
    if (parent.empty())
        return true; /* which was reported */
    const bool possible = (site.size || site.alphabet) &&
                          isWithin(part, wholeExtent(site.c, site.governor, aspectOf(site)));
    const auto report = possible ? warning : error;
    report(site.c.diagnostics, place,
           site.alphabet
               ? what + " reaches outside the parent: no such character is left there"
               : what + " " + textOf(part) + " reaches outside the parent, which allows " +
                     (site.size ? "sizes of " : "") + textOf(parent),
           {});
    return possible;
}

/* Of an extensible parent only the root is there to be restricted further. */
void checkInRoot(const Site &site, Place place, const Number &number) {
    if (!site.parent)
        return;
    const NumberSet &root = extentOf(site.c, site.parent, aspectOf(site), ExtensionView::Root);
    if (!site.alphabet && !contains(root, number))
        slip(site.c.diagnostics, place,
             textOf(number) + " lies outside the root of the parent, which is " + textOf(root));
}

/* A table whose objects stand in the constraint itself. */
void checkInlineTable(const Site &site, const Value &value) {
    TypeUse field = site.governor;
    while (field && field.type->kind == TypeKind::Reference)
        field = follow(site.c, field);
    ParseContext parsing = site.c.parsing();
    if (field.type->kind == TypeKind::Field)
        if (const FieldTarget target = fieldTarget(site.c, field))
            checkObjectSet(site.c, {readSet(parsing, value.tokens), site.scope},
                           target.objectClass);
}

} // namespace

ExtentQuestion questionOf(const Site &site, Aspect aspect) {
    return {site.c, site.scope, site.governor, aspect, ExtensionView::Root, site.alphabet};
}

void checkSingle(Site &site, const Value *value) {
    if (site.kind() == TypeKind::Integer && !site.size &&
        (value->kind == ValueKind::Min || value->kind == ValueKind::Max))
        return; /* an end of the parent */
    if (isInlineTable(site.c, value, site.governor))
        return checkInlineTable(site, *value);
    const Datum *datum = readDatum(site.c, {value, site.scope}, site.governor);
    if (site.alphabet) {
        if (datum->kind == DatumKind::Text && !isWithin(charactersIn(*datum), parentOf(site)))
            reportOutside(site, value->place, "the text", charactersIn(*datum));
        return;
    }
    if (datum->kind == DatumKind::Item) {
        if (!contains(parentOf(site), datum->number))
            refuse(site, value->place,
                   "the item " + quote(datum->item) +
                       " reaches outside the parent, which doesn't allow it");
        return;
    }
    if (datum->kind == DatumKind::Integer) {
        if (!contains(parentOf(site), datum->number))
            reportOutside(site, value->place, site.size ? "the size" : "the value",
                          NumberSet::of(datum->number, datum->number));
        else
            checkInRoot(site, value->place, datum->number);
        return;
    }
    const auto size = sizeOf(*datum);
    if (size && !contains(site.extent(Aspect::Sizes), *size))
        refuse(site, value->place,
               "the value reaches outside the parent, which allows sizes of " +
                   textOf(site.extent(Aspect::Sizes)));
}

namespace {

/* An endpoint that isn't MIN or MAX; `sound` becomes false if it can't be used. */
std::optional<Number> checkEnd(Site &site, const Value *value, bool &sound) {
    if (value->kind == ValueKind::Min || value->kind == ValueKind::Max)
        return std::nullopt;
    const auto number = endpointOf(questionOf(site, Aspect::Values), value);
    if (!number) {
        const Datum *datum = readDatum(site.c, {value, site.scope}, site.governor);
        if (datum->kind != DatumKind::Bad)
            refuse(site, value->place,
                   site.alphabet ? "an endpoint of a range of characters is one character"
                                 : "an endpoint of a range is a number");
        sound = false;
        return number;
    }
    if (contains(parentOf(site), *number))
        checkInRoot(site, value->place, *number);
    else if (!reportOutside(site, value->place, site.size ? "the size" : "the endpoint",
                            NumberSet::of(*number, *number)))
        sound = false;
    return number;
}

void checkNumberRange(Site &site, const Constraint &range) {
    bool sound = true;
    auto lower = checkEnd(site, range.lower, sound);
    auto upper = checkEnd(site, range.upper, sound);
    const NumberSet &parent = parentOf(site);
    if (!sound || parent.empty())
        return;
    if (!lower)
        lower = range.lower->kind == ValueKind::Min ? parent.lower() : parent.upper();
    if (!upper)
        upper = range.upper->kind == ValueKind::Max ? parent.upper() : parent.lower();
    if (*upper < *lower) {
        refuse(site, range.place,
               site.alphabet ? "the range is reversed: its first character comes behind its last"
                             : "the range is reversed: its lower end " + textOf(*lower) +
                                   " is greater than its upper end " + textOf(*upper));
        return;
    }
    if (range.lowerOpen)
        lower = next(*lower);
    if (range.upperOpen)
        upper = previous(*upper);
    if (*upper < *lower)
        refuse(site, range.place, "the range is empty: nothing lies between its ends");
}

void checkRealRange(Site &site, const Constraint &range) {
    const auto real = [&](const Value *value) -> const Datum * {
        if (value->kind == ValueKind::Min || value->kind == ValueKind::Max)
            return nullptr;
        const Datum *datum = readDatum(site.c, {value, site.scope}, site.governor);
        return datum->kind == DatumKind::Real ? datum : nullptr;
    };
    const Datum *lower = real(range.lower);
    const Datum *upper = real(range.upper);
    if (lower == nullptr || upper == nullptr)
        return;
    const auto order = compareReals(lower->real, upper->real);
    if (order && *order > 0)
        refuse(site, range.place,
               "the range is reversed: its lower end is greater than its upper end");
    else if (order && *order == 0 && (range.lowerOpen || range.upperOpen))
        refuse(site, range.place, "the range is empty: nothing lies between its ends");
}

} // namespace

void checkRange(Site &site, const Constraint &range) {
    if (site.alphabet || site.size || site.kind() == TypeKind::Integer)
        checkNumberRange(site, range);
    else if (site.kind() == TypeKind::Real)
        checkRealRange(site, range);
    else if (!isIsoTime(site.kind()))
        refuseKind(site, range,
                   hasAlphabet(site.kind())
                       ? "a range of characters stands within FROM; a range restricts numbers"
                       : "a range restricts INTEGER and REAL");
}

} // namespace asntree
