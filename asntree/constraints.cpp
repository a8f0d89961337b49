#include "asntree/constraints.h"

#include <algorithm>

#include "asntree/extents.h"
#include "asntree/objects.h"

namespace asntree {

namespace {

/* Adds the constraints that stand on one type, and goes to the type that it refers to. A value set
   is a type too: its governor, constrained by the set. */
TypeUse takeStep(Compilation &c, TypeUse use, std::vector<ConstraintUse> &out) {
    for (const ConstraintSpec *spec : use.type->constraints)
        out.push_back({spec, scopeOf(*spec, use.scope), use});
    if (use.type->kind != TypeKind::Reference)
        return follow(c, use);
    const Target target = tryResolve(c, use.type->ref, use.scope);
    if (target.argument != nullptr && target.argument->kind == ArgumentKind::ValueSet) {
        const Argument &argument = *target.argument;
        if (argument.set != nullptr)
            out.push_back({argument.set, argument.scope, argument.governor});
        return argument.governor;
    }
    if (target.assignment != nullptr && target.assignment->kind == AssignmentKind::Set) {
        const TypeUse governor{target.assignment->type, target.scope};
        if (const SetUse set = setOfDefinition(c, target.assignment, target.scope))
            out.push_back({set.set, set.scope, governor});
        return governor;
    }
    return follow(c, use);
}

} // namespace

namespace {

/* Long chains of references without constraints are gone through once. */
void keepJumps(std::unordered_map<UseKey, TypeUse, UseHash> &jumps,
               const std::vector<TypeUse> &plain, TypeUse end) {
    constexpr std::size_t SHORT = 16;
    if (plain.size() > SHORT)
        for (const TypeUse &use : plain)
            jumps[{use.type, use.scope}] = end;
}

} // namespace

ConstraintChain constraintsOf(Compilation &c, TypeUse type) {
    ConstraintChain chain;
    if (!type)
        return chain;
    chain.own = type.type->constraints.size();
    const TypeUse base = baseOf(c, type);
    if (!base)
        type = {};
    auto &jumps = memosOf(c).jumps;
    std::vector<TypeUse> plain; /* without constraints, one behind the other up to `type` */
    while (type) {
        if (const auto jump = jumps.find({type.type, type.scope}); jump != jumps.end())
            type = jump->second;
        const bool atBase = type == base;
        const std::size_t before = chain.all.size();
        const TypeUse next = takeStep(c, type, chain.all);
        if (chain.all.size() == before && !atBase) {
            plain.push_back(type);
        } else {
            keepJumps(jumps, plain, type);
            plain.clear();
        }
        type = atBase ? TypeUse{} : next;
    }
    return chain;
}

NumberSet wholeExtent(Compilation &c, TypeUse type, Aspect aspect) {
    const TypeUse base = baseOf(c, type);
    if (aspect == Aspect::Sizes)
        return NumberSet::of({}, Number::greatest());
    if (!base)
        return NumberSet::all();
    if (aspect == Aspect::Characters)
        return alphabetOf(base.type->kind);
    if (base.type->kind != TypeKind::Enumerated)
        return NumberSet::all();
    std::vector<NumberRange> ranges;
    for (const SettledItem &item : itemsOf(c, base))
        ranges.push_back({item.number, item.number});
    return NumberSet::ofRanges(std::move(ranges));
}

namespace {

struct Level {
    TypeUse type;
    std::vector<ConstraintUse> constraints;
};

NumberSet restricted(Compilation &c, const Level &level, NumberSet set, Aspect aspect,
                     ExtensionView view) {
    for (const ConstraintUse &use : level.constraints)
        set = evaluate({c, use.scope, use.type, aspect, view}, *use.spec, set).set;
    return set;
}

} // namespace

const NumberSet &extentOf(Compilation &c, TypeUse type, Aspect aspect, ExtensionView view) {
    auto &known =
        memosOf(c).extents[static_cast<std::size_t>(aspect)][static_cast<std::size_t>(view)];
    const auto [entry, isNew] = known.try_emplace({type.type, type.scope});
    ValueMemos::KnownExtent &result = entry->second;
    if (!isNew) {
        if (!result.done && type)
            error(c.diagnostics, type.type->place,
                  "a constraint of " + describeType(type) + " refers to itself, in a circle");
        return result.set;
    }
    result.set = wholeExtent(c, type, aspect);
    const DepthGuard guard(c);
    const TypeUse base = baseOf(c, type);
    if (!base || !guard.ok) {
        result.done = true;
        return result.set;
    }
    /* From the type down to one that is known, or the base, and up again. */
    std::vector<Level> levels;
    NumberSet set = result.set;
    for (TypeUse at = type; at;) {
        const auto found = known.find({at.type, at.scope});
        if (found != known.end() && found->second.done) {
            set = found->second.set;
            break;
        }
        Level level{at, {}};
        const TypeUse next = takeStep(c, at, level.constraints);
        levels.push_back(std::move(level));
        at = at == base ? TypeUse{} : next;
    }
    while (!levels.empty()) {
        const Level &level = levels.back();
        set = restricted(c, level, std::move(set), aspect, view);
        known[{level.type.type, level.type.scope}] = {set, true};
        levels.pop_back();
    }
    return known.at({type.type, type.scope}).set;
}

const NumberSet &valuesOf(Compilation &c, TypeUse type, ExtensionView view) {
    return extentOf(c, type, Aspect::Values, view);
}

const NumberSet &sizesOf(Compilation &c, TypeUse type, ExtensionView view) {
    return extentOf(c, type, Aspect::Sizes, view);
}

namespace {

bool isExtensible(const Constraint &constraint) {
    if ((constraint.kind == ConstraintKind::Size || constraint.kind == ConstraintKind::Alphabet) &&
        constraint.inner != nullptr)
        return asntree::isExtensible(*constraint.inner);
    return std::any_of(constraint.operands.begin(), constraint.operands.end(),
                       [](const Constraint *operand) { return isExtensible(*operand); });
}

} // namespace

bool isExtensible(const ConstraintSpec &spec) {
    return spec.extensible || (spec.root != nullptr && isExtensible(*spec.root));
}

} // namespace asntree
