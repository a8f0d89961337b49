#include "asntree/extents.h"

#include "asntree/objects.h"

namespace asntree {

std::optional<Number> sizeOf(const Datum &datum) {
    std::size_t size = 0;
    switch (datum.kind) {
    case DatumKind::Bits:
        size = datum.text.size();
        break;
    case DatumKind::Octets:
        size = datum.fromBits ? (datum.text.size() + 7) / 8 : (datum.text.size() + 1) / 2;
        break;
    case DatumKind::Text:
        size = datum.characters.size();
        break;
    case DatumKind::List:
        size = datum.members.size();
        break;
    default:
        return std::nullopt;
    }
    return Number::of(static_cast<std::int64_t>(size));
}

NumberSet charactersIn(const Datum &datum) {
    std::vector<NumberRange> ranges;
    for (const char32_t character : datum.characters) {
        const Number number = Number::of(static_cast<std::int64_t>(character));
        ranges.push_back({number, number});
    }
    return NumberSet::ofRanges(std::move(ranges));
}

std::optional<Number> endpointOf(const ExtentQuestion &q, const Value *value) {
    const Datum *datum = readDatum(q.c, {value, q.scope}, q.governor);
    if (datum->kind == DatumKind::Integer || datum->kind == DatumKind::Item)
        return datum->number;
    if (q.alphabet && datum->kind == DatumKind::Text && datum->characters.size() == 1)
        return Number::of(static_cast<std::int64_t>(datum->characters[0]));
    return std::nullopt;
}

bool isInlineTable(Compilation &c, const Value *value, TypeUse governor) {
    if (value == nullptr || value->kind != ValueKind::Braced)
        return false;
    for (int steps = 0; governor && steps < 1000; ++steps) {
        if (governor.type->kind == TypeKind::Field || governor.type->kind == TypeKind::InstanceOf)
            return true;
        governor = governor.type->kind == TypeKind::Reference ? follow(c, governor) : TypeUse{};
    }
    return false;
}

namespace {

Extent unknown(const NumberSet &parent) {
    return {parent, false};
}

Extent evaluateUnion(const ExtentQuestion &q, const Constraint &constraint,
                     const NumberSet &parent) {
    std::vector<NumberRange> ranges;
    bool exact = true;
    for (const Constraint *operand : constraint.operands) {
        Extent part = evaluate(q, *operand, parent);
        exact = exact && part.exact;
        ranges.insert(ranges.end(), part.set.ranges.begin(), part.set.ranges.end());
    }
    return {NumberSet::ofRanges(std::move(ranges)), exact};
}

Extent evaluateIntersection(const ExtentQuestion &q, const Constraint &constraint,
                            const NumberSet &parent) {
    Extent result{parent, true};
    for (const Constraint *operand : constraint.operands) {
        const Extent part = evaluate(q, *operand, parent);
        result.exact = result.exact && part.exact;
        result.set = intersected(result.set, part.set);
    }
    return result;
}

/* What is excluded in part, or for reasons that can't be worked out, stays. */
Extent evaluateExcept(const ExtentQuestion &q, const Constraint &constraint,
                      const NumberSet &parent) {
    const bool all = constraint.kind == ConstraintKind::AllExcept;
    Extent result = all ? Extent{parent, true} : evaluate(q, *constraint.operands.front(), parent);
    const Extent excluded = evaluate(q, *constraint.operands.back(), parent);
    if (excluded.exact)
        result.set = without(result.set, excluded.set);
    result.exact = result.exact && excluded.exact;
    return result;
}

Extent evaluateDatum(const ExtentQuestion &q, const Datum &datum, const NumberSet &parent) {
    switch (q.aspect) {
    case Aspect::Values:
        if (datum.kind != DatumKind::Integer && datum.kind != DatumKind::Item)
            return unknown(parent);
        return {intersected(NumberSet::of(datum.number, datum.number), parent), true};
    case Aspect::Sizes: {
        const auto size = sizeOf(datum);
        if (!size || (datum.kind == DatumKind::Bits && !q.governor.type->items.empty()))
            return unknown(parent);
        return {intersected(NumberSet::of(*size, *size), parent), false};
    }
    case Aspect::Characters:
        if (datum.kind != DatumKind::Text)
            return unknown(parent);
        return {intersected(charactersIn(datum), parent), q.alphabet};
    }
    return unknown(parent);
}

Extent evaluateRange(const ExtentQuestion &q, const Constraint &constraint,
                     const NumberSet &parent) {
    if (q.aspect != Aspect::Values && !q.alphabet)
        return unknown(parent);
    if (parent.empty())
        return {{}, true};
    std::optional<Number> lower = parent.lower();
    std::optional<Number> upper = parent.upper();
    if (constraint.lower->kind != ValueKind::Min)
        lower = endpointOf(q, constraint.lower);
    if (constraint.upper->kind != ValueKind::Max)
        upper = endpointOf(q, constraint.upper);
    if (!lower || !upper)
        return unknown(parent);
    if (constraint.lowerOpen)
        lower = next(*lower);
    if (constraint.upperOpen)
        upper = previous(*upper);
    return {intersected(NumberSet::of(*lower, *upper), parent), true};
}

Extent evaluateSingle(const ExtentQuestion &q, const Value *value, const NumberSet &parent) {
    if (isInlineTable(q.c, value, q.governor))
        return unknown(parent);
    if (value->kind == ValueKind::Min || value->kind == ValueKind::Max) {
        if (parent.empty() || q.aspect != Aspect::Values)
            return unknown(parent);
        const Number end = value->kind == ValueKind::Min ? parent.lower() : parent.upper();
        return end.finite() ? Extent{NumberSet::of(end, end), true} : unknown(parent);
    }
    return evaluateDatum(q, *readDatum(q.c, {value, q.scope}, q.governor), parent);
}

/* A field path in the place of an element: values, or sets of them, of one or many objects. */
Extent evaluateGroup(const ExtentQuestion &q, const Constraint &constraint,
                     const NumberSet &parent) {
    const Value &value = *constraint.value;
    if (value.kind != ValueKind::Field)
        return evaluateSingle(q, &value, parent);
    std::vector<NumberRange> ranges;
    for (const Setting &setting :
         settingsOf(q.c, value.ref, value.fields, value.fieldIsUpper, q.scope)) {
        Extent part = unknown(parent);
        if (setting.value)
            part = evaluateDatum(q, *readDatum(q.c, setting.value, setting.governor), parent);
        else if (setting.set)
            part = evaluate({q.c, setting.set.scope, setting.governor, q.aspect, q.view},
                            *setting.set.set, parent);
        if (!part.exact)
            return part;
        ranges.insert(ranges.end(), part.set.ranges.begin(), part.set.ranges.end());
    }
    if (ranges.empty())
        return unknown(parent);
    return {NumberSet::ofRanges(std::move(ranges)), true};
}

Extent evaluateContained(const ExtentQuestion &q, const Constraint &constraint,
                         const NumberSet &parent) {
    if (constraint.type == nullptr)
        return unknown(parent);
    const TypeUse type{constraint.type, q.scope};
    const TypeUse base = baseOf(q.c, type);
    if (!base || isOpen(base.type->kind))
        return unknown(parent);
    const bool exact = q.aspect == Aspect::Values || q.alphabet;
    return {intersected(extentOf(q.c, type, q.aspect, q.view), parent), exact};
}

/* SIZE and FROM: what stands in them is a constraint of numbers, or of characters. */
Extent evaluateInner(const ExtentQuestion &q, const Constraint &constraint,
                     const NumberSet &parent) {
    const bool size = constraint.kind == ConstraintKind::Size;
    if (constraint.inner == nullptr || q.alphabet ||
        q.aspect != (size ? Aspect::Sizes : Aspect::Characters))
        return unknown(parent);
    ExtentQuestion inner = q;
    if (size) {
        inner.aspect = Aspect::Values;
        inner.governor = builtinType(q.c, TypeKind::Integer);
    } else {
        const TypeUse base = baseOf(q.c, q.governor);
        if (!base || !isCharacterString(base.type->kind))
            return unknown(parent);
        inner.alphabet = true;
    }
    return evaluate(inner, *constraint.inner, parent);
}

} // namespace

Extent evaluate(const ExtentQuestion &q, const Constraint &constraint, const NumberSet &parent) {
    switch (constraint.kind) {
    case ConstraintKind::Union:
        return evaluateUnion(q, constraint, parent);
    case ConstraintKind::Intersection:
        return evaluateIntersection(q, constraint, parent);
    case ConstraintKind::Except:
    case ConstraintKind::AllExcept:
        return evaluateExcept(q, constraint, parent);
    case ConstraintKind::SingleValue:
        return evaluateSingle(q, constraint.value, parent);
    case ConstraintKind::Range:
        return evaluateRange(q, constraint, parent);
    case ConstraintKind::Contained:
        return evaluateContained(q, constraint, parent);
    case ConstraintKind::Size:
    case ConstraintKind::Alphabet:
        return evaluateInner(q, constraint, parent);
    case ConstraintKind::Group:
        return evaluateGroup(q, constraint, parent);
    default:
        return unknown(parent);
    }
}

Extent evaluate(const ExtentQuestion &q, const ConstraintSpec &spec, const NumberSet &parent) {
    if (spec.root == nullptr)
        return unknown(parent);
    if (spec.extensible && q.view == ExtensionView::Open)
        return {parent, true};
    return evaluate(q, *spec.root, parent);
}

} // namespace asntree
