#include "asntree/emitter.h"

#include "asntree/extents.h"
#include "asntree/objects.h"
#include "asntree/reading.h"
#include "asntree/references.h"
#include "asntree/tags.h"

/* Expressions of constraints, record by record. A result of 0 stands for an expression that the tree
   can't hold, and that therefore restricts nothing. */

namespace asntree {

namespace {

struct Expression {
    Emitter &e;
    TreeState &ts;
    const Constraint &constraint;
    const Scope *scope;
    const ExpressionContext &context;

    RecNr inner(const Constraint &other) const {
        return emitExpression(e, ts, other, scope, context);
    }
};

RecNr leaf(TreeState &ts, SubKind kind, RecNr first = 0) {
    SubRec node;
    node.subKind = static_cast<std::uint8_t>(kind);
    node.first = first;
    return ts.tree().addSub(node);
}

/* A union with a part that isn't there allows more than it says; the others less. */
RecNr emitOperator(const Expression &x) {
    std::vector<RecNr> parts;
    const bool isUnion = x.constraint.kind == ConstraintKind::Union;
    for (const Constraint *operand : x.constraint.operands) {
        const RecNr part = x.inner(*operand);
        if (part != 0)
            parts.push_back(part);
        else if (isUnion)
            return 0;
    }
    if (parts.empty())
        return 0;
    return parts.size() == 1 ? parts.front()
                             : operatorSub(x.ts, isUnion ? SUB_UNION : SUB_INTERSECTION, parts);
}

RecNr emitExcept(const Expression &x) {
    const RecNr included = x.inner(*x.constraint.operands[0]);
    const RecNr excluded = x.inner(*x.constraint.operands[1]);
    if (included == 0 || excluded == 0)
        return included;
    return operatorSub(x.ts, SUB_EXCEPT, {included, excluded});
}

RecNr emitAllExcept(const Expression &x) {
    const RecNr excluded = x.inner(*x.constraint.operands[0]);
    return excluded == 0 ? 0 : operatorSub(x.ts, SUB_ALL_EXCEPT, {excluded});
}

/* The type that governs values in an expression, and the place of its node. */
struct Governor {
    TypeUse type;
    PlaceNr place;
};

Governor governorOf(const Expression &x) {
    if (x.context.mode == ExpressionContext::Sizes)
        return {builtinType(x.e.c, TypeKind::Integer), placeOfNode(x.ts, plainInteger(x.ts))};
    return {x.context.type, x.context.place};
}

bool fits64Bits(const Datum &datum) {
    return datum.kind != DatumKind::Integer || asInt64(datum.number).has_value();
}

RecNr emitSingle(const Expression &x, ValueUse value) {
    const Governor governor = governorOf(x);
    const Datum *datum = readDatum(x.e.c, value, governor.type);
    if (datum->kind == DatumKind::Bad || !fits64Bits(*datum))
        return 0;
    const RecNr nr = emitDatum(x.e, x.ts, *datum, governor.place, VCS_DEFINITION);
    return leaf(x.ts, SUB_SINGLE_VALUE, nr);
}

/* One end of a range: 0 for MIN and MAX, and for an upper end that is out of reach. */
bool emitEnd(const Expression &x, const Value *value, bool isUpper, RecNr &nr) {
    nr = 0;
    if (value == nullptr || value->kind == ValueKind::Min || value->kind == ValueKind::Max)
        return true;
    const Governor governor = governorOf(x);
    const Datum *datum = readDatum(x.e.c, {value, x.scope}, governor.type);
    if (datum->kind == DatumKind::Bad)
        return false;
    if (!fits64Bits(*datum))
        return datum->number.negative != isUpper; /* all of the form's numbers lie within */
    nr = emitDatum(x.e, x.ts, *datum, governor.place, VCS_DEFINITION);
    return true;
}

RecNr emitRange(const Expression &x) {
    SubRec node;
    node.subKind = SUB_RANGE;
    node.subFlags = static_cast<std::uint8_t>((x.constraint.lowerOpen ? 0 : SUB_LOWER_CLOSED) |
                                              (x.constraint.upperOpen ? 0 : SUB_UPPER_CLOSED));
    if (!emitEnd(x, x.constraint.lower, false, node.first) ||
        !emitEnd(x, x.constraint.upper, true, node.second))
        return 0;
    if (x.context.mode == ExpressionContext::Sizes) {
        node.compModule = 1;
        node.compTNode = plainInteger(x.ts);
    }
    return x.ts.tree().addSub(node);
}

/* What the base of a contained type says by itself. */
void noteBounds(const Expression &x, RecNr sub, TypeUse type) {
    const TypeUse base = baseOf(x.e.c, type);
    if (!base || base.type->kind != TypeKind::Integer)
        return;
    const NumberSet numbers = valuesOf(x.e.c, base, viewOf(x.ts));
    if (numbers.empty())
        return;
    x.ts.includedBounds[sub] = {asInt64(numbers.lower()).value_or(INT64_MIN),
                                asInt64(numbers.upper()).value_or(INT64_MAX)};
}

/* The set that a type is by its definition. */
SetUse valueSetOf(Compilation &c, TypeUse type) {
    const Assignment *definition = definitionOf(c, type);
    if (definition == nullptr || kindOfDefinition(c, *definition) != DefinitionKind::ValueSet)
        return {};
    return setOfDefinition(c, definition, &moduleOf(c, definition)->root);
}

RecNr emitContained(const Expression &x) {
    const TypeUse type{x.constraint.type, x.scope};
    if (x.constraint.type == nullptr)
        return 0;
    if (const SetUse set = x.context.isListed ? valueSetOf(x.e.c, type) : SetUse{})
        return emitSpec(x.e, x.ts, *set.set, set.scope, x.context);
    const TypeUse base = baseOf(x.e.c, x.context.type);
    if (!base || base.type->kind == TypeKind::Field || base.type->kind == TypeKind::Any)
        return leaf(x.ts, SUB_TYPE_CONSTRAINT);
    const TypeUse inner = baseOf(x.e.c, type);
    if (!inner || replacedTag(x.e, inner) != 0)
        return 0;
    VNode node;
    node.valueKind = TYP_NONE;
    node.compStatus = VCS_DEFINITION;
    node.refModule = 1;
    const RecNr contained = hiddenType(x.e, x.ts, type, x.context.frame);
    node.refRecord = contained;
    node.governorModule = 1;
    node.governorRec = contained;
    const RecNr sub = leaf(x.ts, SUB_INCLUDES, x.ts.tree().addV(node));
    noteBounds(x, sub, type);
    return sub;
}

/* Says once for a module that generated code doesn't check constraints of a kind. */
void noteUnchecked(const Expression &x, const char *what) {
    if (x.ts.uncheckedNoted.insert(what).second)
        addNote(x.e, x.ts,
                std::string(what) + " can't be checked by generated code; this stands for all of them");
}

void noteSingle(const Expression &x) {
    const TypeUse base = baseOf(x.e.c, x.context.type);
    if (!base || x.context.mode != ExpressionContext::Values || x.context.isListed)
        return;
    const TypeKind kind = base.type->kind;
    if (kind != TypeKind::Boolean && kind != TypeKind::Integer && kind != TypeKind::Enumerated &&
        kind != TypeKind::Null)
        noteUnchecked(x, "single values of other types than BOOLEAN, INTEGER and ENUMERATED");
}

/* Settings of fields in the place of values. */
RecNr emitGroup(const Expression &x) {
    const Value &value = *x.constraint.value;
    if (value.kind != ValueKind::Field) {
        if (isInlineTable(x.e.c, &value, x.context.type))
            return leaf(x.ts, SUB_TABLE);
        noteSingle(x);
        return emitSingle(x, {&value, x.scope});
    }
    std::vector<RecNr> parts;
    for (const Setting &setting :
         settingsOf(x.e.c, value.ref, value.fields, value.fieldIsUpper, x.scope)) {
        RecNr part = 0;
        if (setting.value)
            part = emitSingle(x, setting.value);
        else if (setting.set)
            part = emitSpec(x.e, x.ts, *setting.set.set, setting.set.scope, x.context);
        if (part == 0)
            return 0;
        parts.push_back(part);
    }
    if (parts.empty())
        return 0;
    return parts.size() == 1 ? parts.front() : operatorSub(x.ts, SUB_UNION, parts);
}

RecNr emitWithComponent(const Expression &x) {
    const TypeUse base = baseOf(x.e.c, x.context.type);
    noteUnchecked(x, "values within WITH COMPONENT and WITH COMPONENTS");
    const ExpressionContext context{ExpressionContext::Values,
                                    elementPlace(x.ts, x.context.place),
                                    {base.type->element, base.scope}, x.context.frame};
    const RecNr inner = emitSpec(x.e, x.ts, *x.constraint.inner, x.scope, context);
    return inner == 0 ? 0 : leaf(x.ts, SUB_WITH_COMPONENT, inner);
}

/* What a component's part says beside its presence. */
RecNr emitPart(const Expression &x, const ComponentConstraint &part, PlaceNr place, TypeUse type) {
    RecNr nr = 0;
    if (part.inner != nullptr && part.inner->root != nullptr && !isDropped(x.ts, *part.inner)) {
        noteUnchecked(x, "values within WITH COMPONENT and WITH COMPONENTS");
        const ExpressionContext context{ExpressionContext::Values, place, type, x.context.frame};
        nr = emitSpec(x.e, x.ts, *part.inner, x.scope, context);
    }
    if (nr == 0)
        nr = leaf(x.ts, SUB_EXCEPTION);
    SubRec &node = x.ts.tree().sub(nr);
    node.subFlags = static_cast<std::uint8_t>(
        node.subFlags | (part.presence == PresenceWord::Present    ? SUB_PRESENT
                         : part.presence == PresenceWord::Absent   ? SUB_ABSENT
                         : part.presence == PresenceWord::Optional ? SUB_OPTIONAL
                                                                   : 0));
    x.ts.constraintFixups.push_back({nr, place});
    return nr;
}

RecNr emitWithComponents(const Expression &x) {
    noteUnchecked(x, "WITH COMPONENTS");
    const TypeUse base = baseOf(x.e.c, x.context.type);
    std::vector<RecNr> parts;
    for (const ComponentConstraint &part : x.constraint.parts) {
        const SettledComponent *component =
            base ? findComponent(x.e.c, base, part.name.text) : nullptr;
        if (component == nullptr)
            continue;
        const PlaceNr place = componentPlace(x.ts, x.context.place, component->name);
        parts.push_back(emitPart(x, part, place, component->type));
    }
    const RecNr nr = operatorSub(x.ts, SUB_WITH_COMPONENTS, parts);
    if (!x.constraint.partial)
        x.ts.tree().sub(nr).subFlags |= SUB_FULL_SPECIFICATION;
    return nr;
}

RecNr emitInner(const Expression &x, SubKind kind, ExpressionContext::Mode mode) {
    const TypeUse base = baseOf(x.e.c, x.context.type);
    if (kind == SUB_ALPHABET && base && isTime(base.type->kind))
        return 0; /* the letters of times say nothing */
    ExpressionContext context = x.context;
    context.mode = mode;
    const RecNr inner = emitSpec(x.e, x.ts, *x.constraint.inner, x.scope, context);
    return inner == 0 ? 0 : leaf(x.ts, kind, inner);
}

} // namespace

RecNr emitExpression(Emitter &e, TreeState &ts, const Constraint &constraint, const Scope *scope,
                     const ExpressionContext &context) {
    const Expression x{e, ts, constraint, scope, context};
    switch (constraint.kind) {
    case ConstraintKind::Union:
    case ConstraintKind::Intersection:
        return emitOperator(x);
    case ConstraintKind::Except:
        return emitExcept(x);
    case ConstraintKind::AllExcept:
        return emitAllExcept(x);
    case ConstraintKind::SingleValue:
    case ConstraintKind::Group:
        return constraint.value == nullptr ? 0 : emitGroup(x);
    case ConstraintKind::Range:
        return emitRange(x);
    case ConstraintKind::Contained:
        return emitContained(x);
    case ConstraintKind::Size:
        return emitInner(x, SUB_SIZE, ExpressionContext::Sizes);
    case ConstraintKind::Alphabet:
        return emitInner(x, SUB_ALPHABET, ExpressionContext::Characters);
    case ConstraintKind::WithComponent:
        return emitWithComponent(x);
    case ConstraintKind::WithComponents:
        return emitWithComponents(x);
    case ConstraintKind::Pattern:
    case ConstraintKind::Settings:
        noteUnchecked(x, "patterns and settings");
        return leaf(ts, SUB_PASSED_OVER);
    case ConstraintKind::UserDefined:
        return leaf(ts, SUB_USER_DEFINED);
    case ConstraintKind::Table:
        return leaf(ts, constraint.relation.empty() ? SUB_TABLE : SUB_COMPONENT_RELATION);
    case ConstraintKind::Contents:
    case ConstraintKind::Bad: /* no tree is made */
        break;
    }
    return leaf(ts, SUB_PASSED_OVER);
}

RecNr emitSpec(Emitter &e, TreeState &ts, const ConstraintSpec &spec, const Scope *scope,
               const ExpressionContext &context) {
    if (spec.root == nullptr)
        return 0;
    RecNr nr = emitExpression(e, ts, *spec.root, scope, context);
    if (ts.settings.extConstraints == ExtConstraints::Mark && spec.additions != nullptr && nr != 0)
        if (const RecNr more = emitExpression(e, ts, *spec.additions, scope, context); more != 0)
            nr = operatorSub(ts, SUB_UNION, {nr, more});
    if (nr != 0 && spec.hasException)
        ts.tree().sub(nr).subFlags |= SUB_EXCEPTION_FOLLOWS;
    return nr;
}

} // namespace asntree
