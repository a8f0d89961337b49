#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "asntree/extents.h"
#include "asntree/octets.h"

/* Whether a value fits a constraint. */

namespace asntree {

namespace {

std::optional<long double> floating(const RealNumber &real) {
    switch (real.special) {
    case RealNumber::PlusInfinity:
        return HUGE_VALL;
    case RealNumber::MinusInfinity:
        return -HUGE_VALL;
    case RealNumber::NotANumber:
        return std::nullopt;
    case RealNumber::None:
        break;
    }
    const std::string mantissa = textOf(real.mantissa);
    if (real.base == 10)
        return std::strtold((mantissa + "e" + std::to_string(real.exponent)).c_str(), nullptr);
    constexpr std::int64_t MOST = 100000;
    return std::ldexp(std::strtold(mantissa.c_str(), nullptr),
                      static_cast<int>(std::clamp(real.exponent, -MOST, MOST)));
}

/* The digits of an octet string as binary ones, the last octet filled up. */
std::string wholeOctets(const Datum &datum) {
    std::string bits = datum.fromBits ? std::string(datum.text) : binaryDigits(datum.text);
    bits.resize((bits.size() + 7) / 8 * 8, '0');
    return bits;
}

/* Unknown for values that may be the same in two notations. */
Verdict same(Compilation &c, const Datum &a, const Datum &b);

Verdict sameMembers(Compilation &c, const Datum &a, const Datum &b) {
    if (a.members.size() != b.members.size())
        return a.kind == DatumKind::List ? Verdict::No : Verdict::Unknown;
    Verdict result = Verdict::Yes;
    for (std::size_t i = 0; i < a.members.size(); ++i) {
        if (a.members[i].name != b.members[i].name)
            return a.kind == DatumKind::Choice ? Verdict::No : Verdict::Unknown;
        const Verdict part = same(c, *a.members[i].value, *b.members[i].value);
        if (part != Verdict::Yes)
            result = part;
        if (part == Verdict::No)
            break;
    }
    const TypeUse base = baseOf(c, a.type);
    const bool inAnyOrder = base && base.type->kind == TypeKind::SetOf;
    return result == Verdict::No && inAnyOrder ? Verdict::Unknown : result;
}

/* Zeros at the end of named bits mean nothing. */
Verdict sameBits(Compilation &c, const Datum &a, const Datum &b) {
    if (a.text == b.text)
        return Verdict::Yes;
    const TypeUse base = baseOf(c, a.type);
    return base && base.type->items.empty() ? Verdict::No : Verdict::Unknown;
}

Verdict same(Compilation &c, const Datum &a, const Datum &b) {
    const auto verdict = [](bool equal) { return equal ? Verdict::Yes : Verdict::No; };
    if (a.kind != b.kind)
        return Verdict::Unknown;
    switch (a.kind) {
    case DatumKind::Boolean:
        return verdict(a.isTrue == b.isTrue);
    case DatumKind::Integer:
    case DatumKind::Item:
        return verdict(a.number == b.number);
    case DatumKind::Real: {
        const auto order = compareReals(a.real, b.real);
        return verdict(order ? *order == 0 : a.real.special == b.real.special);
    }
    case DatumKind::Bits:
        return sameBits(c, a, b);
    case DatumKind::Octets:
        return verdict(wholeOctets(a) == wholeOctets(b));
    case DatumKind::Null:
        return Verdict::Yes;
    case DatumKind::Text:
        return verdict(a.characters == b.characters);
    case DatumKind::ObjectIdentifier:
    case DatumKind::RelativeOid:
        return verdict(std::equal(a.identifier.begin(), a.identifier.end(), b.identifier.begin(),
                                  b.identifier.end()));
    case DatumKind::Structure:
    case DatumKind::List:
    case DatumKind::Choice:
        return sameMembers(c, a, b);
    default:
        return Verdict::Unknown;
    }
}

struct Judging {
    Compilation &c;
    const Scope *scope;
    TypeUse governor;
};

Verdict judge(const Judging &j, const Constraint &constraint, const Datum &datum);

Verdict judge(const Judging &j, const ConstraintSpec &spec, const Datum &datum) {
    if (spec.root == nullptr || spec.extensible) /* a later version may allow any value */
        return Verdict::Unknown;
    return judge(j, *spec.root, datum);
}

Verdict judgeOperands(const Judging &j, const Constraint &constraint, const Datum &datum) {
    constexpr std::size_t MOST = 2000; /* long lists for many values would take too long */
    if (constraint.operands.size() > MOST)
        return Verdict::Unknown;
    const bool isUnion = constraint.kind == ConstraintKind::Union;
    const Verdict deciding = isUnion ? Verdict::Yes : Verdict::No;
    Verdict result = isUnion ? Verdict::No : Verdict::Yes;
    for (const Constraint *operand : constraint.operands) {
        const Verdict part = judge(j, *operand, datum);
        if (part == deciding)
            return part;
        if (part == Verdict::Unknown)
            result = part;
    }
    return result;
}

Verdict judgeExcept(const Judging &j, const Constraint &constraint, const Datum &datum) {
    const Verdict included = constraint.kind == ConstraintKind::AllExcept
                                 ? Verdict::Yes
                                 : judge(j, *constraint.operands.front(), datum);
    if (included == Verdict::No)
        return included;
    const Verdict excluded = judge(j, *constraint.operands.back(), datum);
    if (excluded == Verdict::Yes)
        return Verdict::No;
    return excluded == Verdict::No ? included : Verdict::Unknown;
}

Verdict judgeRange(const Judging &j, const Constraint &constraint, const Datum &datum) {
    if (datum.kind != DatumKind::Real)
        return Verdict::Unknown;
    if (datum.real.special == RealNumber::NotANumber) /* it has no place among the others */
        return constraint.lower->kind == ValueKind::Min && constraint.upper->kind == ValueKind::Max
                   ? Verdict::Unknown
                   : Verdict::No;
    const auto beyond = [&](const Value *value, ValueKind end, int sign, bool open) {
        if (value->kind == end)
            return false;
        const Datum *bound = readDatum(j.c, {value, j.scope}, j.governor);
        if (bound->kind != DatumKind::Real)
            return false;
        const auto order = compareReals(datum.real, bound->real);
        return order && (*order * sign < 0 || (open && *order == 0));
    };
    const bool outside = beyond(constraint.lower, ValueKind::Min, 1, constraint.lowerOpen) ||
                         beyond(constraint.upper, ValueKind::Max, -1, constraint.upperOpen);
    return outside ? Verdict::No : Verdict::Yes;
}

/* SIZE and FROM, and ranges of whole numbers: by their sets. */
Verdict judgeBySet(const Judging &j, const Constraint &constraint, const Datum &datum,
                   Aspect aspect) {
    const ExtentQuestion question{j.c, j.scope, j.governor, aspect, ExtensionView::Open};
    const Extent extent = evaluate(question, constraint, wholeExtent(j.c, j.governor, aspect));
    bool fits = true;
    if (aspect == Aspect::Characters) {
        fits = isWithin(charactersIn(datum), extent.set);
    } else {
        const auto number = aspect == Aspect::Sizes ? sizeOf(datum) : datum.number;
        if (!number)
            return Verdict::Unknown;
        fits = contains(extent.set, *number);
    }
    return !fits ? Verdict::No : extent.exact ? Verdict::Yes : Verdict::Unknown;
}

Verdict judgeContained(const Judging &j, const Constraint &constraint, const Datum &datum) {
    const TypeUse type{constraint.type, j.scope};
    const TypeUse base = baseOf(j.c, type);
    if (!base || isOpen(base.type->kind))
        return Verdict::Unknown;
    Verdict result = Verdict::Yes;
    for (const ConstraintUse &use : constraintsOf(j.c, type).all) {
        const Verdict part = satisfies(j.c, use, datum);
        if (part == Verdict::No)
            return part;
        if (part == Verdict::Unknown)
            result = part;
    }
    return result;
}

Verdict judgeElements(const Judging &j, const Constraint &constraint, const Datum &datum) {
    if (datum.kind != DatumKind::List)
        return Verdict::Unknown;
    Verdict result = Verdict::Yes;
    for (const DatumMember &member : datum.members) {
        const Verdict part = judge({j.c, j.scope, member.type}, *constraint.inner, *member.value);
        if (part == Verdict::No)
            return part;
        if (part == Verdict::Unknown)
            result = part;
    }
    return result;
}

Verdict judgePart(const Judging &j, const ComponentConstraint &part, const DatumMember *member) {
    if (member == nullptr)
        return part.presence == PresenceWord::Present ? Verdict::No : Verdict::Yes;
    if (part.presence == PresenceWord::Absent)
        return Verdict::No;
    if (part.inner == nullptr)
        return Verdict::Yes;
    return judge({j.c, j.scope, member->type}, *part.inner, *member->value);
}

/* A component with a default may be absent from the notation and present in the value, so nothing
   is said of those that a full specification doesn't name. */
Verdict judgeComponents(const Judging &j, const Constraint &constraint, const Datum &datum) {
    if (datum.kind != DatumKind::Structure && datum.kind != DatumKind::Choice)
        return Verdict::Unknown;
    std::unordered_map<std::string_view, const DatumMember *> members;
    for (const DatumMember &member : datum.members)
        members.emplace(member.name, &member);
    Verdict result = Verdict::Yes;
    for (const ComponentConstraint &part : constraint.parts) {
        const auto found = members.find(part.name.text);
        const Verdict verdict =
            judgePart(j, part, found == members.end() ? nullptr : found->second);
        if (verdict == Verdict::No)
            return verdict;
        if (verdict == Verdict::Unknown)
            result = verdict;
    }
    return result;
}

Verdict judgeSimple(const Judging &j, const Constraint &constraint, const Datum &datum) {
    switch (constraint.kind) {
    case ConstraintKind::SingleValue:
        if (isInlineTable(j.c, constraint.value, j.governor))
            return Verdict::Unknown;
        return same(j.c, datum, *readDatum(j.c, {constraint.value, j.scope}, j.governor));
    case ConstraintKind::Group:
        if (constraint.value->kind != ValueKind::Braced ||
            isInlineTable(j.c, constraint.value, j.governor))
            return Verdict::Unknown;
        return same(j.c, datum, *readDatum(j.c, {constraint.value, j.scope}, j.governor));
    case ConstraintKind::Range:
        if (datum.kind == DatumKind::Integer)
            return judgeBySet(j, constraint, datum, Aspect::Values);
        return judgeRange(j, constraint, datum);
    case ConstraintKind::Size:
        if (datum.kind == DatumKind::Bits && !baseOf(j.c, j.governor).type->items.empty())
            return Verdict::Unknown; /* zeros at its end may be dropped */
        return judgeBySet(j, constraint, datum, Aspect::Sizes);
    case ConstraintKind::Alphabet:
        return datum.kind == DatumKind::Text ? judgeBySet(j, constraint, datum, Aspect::Characters)
                                             : Verdict::Unknown;
    case ConstraintKind::Contained:
        return judgeContained(j, constraint, datum);
    case ConstraintKind::WithComponent:
        return judgeElements(j, constraint, datum);
    case ConstraintKind::WithComponents:
        return judgeComponents(j, constraint, datum);
    default:
        return Verdict::Unknown;
    }
}

Verdict judge(const Judging &j, const Constraint &constraint, const Datum &datum) {
    const DepthGuard guard(j.c);
    if (!guard.ok || datum.kind == DatumKind::Bad || !baseOf(j.c, j.governor))
        return Verdict::Unknown;
    switch (constraint.kind) {
    case ConstraintKind::Union:
    case ConstraintKind::Intersection:
        return judgeOperands(j, constraint, datum);
    case ConstraintKind::Except:
    case ConstraintKind::AllExcept:
        return judgeExcept(j, constraint, datum);
    default:
        return judgeSimple(j, constraint, datum);
    }
}

} // namespace

std::optional<int> compareReals(const RealNumber &a, const RealNumber &b) {
    const auto x = floating(a);
    const auto y = floating(b);
    if (!x || !y)
        return std::nullopt;
    return *x < *y ? -1 : *x > *y ? 1 : 0;
}

Verdict satisfies(Compilation &c, const ConstraintUse &use, const Datum &datum) {
    return judge({c, use.scope, use.type}, *use.spec, datum);
}

} // namespace asntree
