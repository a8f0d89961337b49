#include <algorithm>

#include "asntree/classes.h"
#include "asntree/names.h"
#include "asntree/objects.h"
#include "asntree/reading.h"
#include "asntree/tags.h"

/* From a use of a type to what it stands for. */

namespace asntree {

namespace {

void reportNoType(Compilation &c, const Reference &reference, std::string_view what) {
    error(c.diagnostics, reference.name.place,
          "`" + std::string(reference.name.text) + "` is " + std::string(what) + ", not a type");
}

/* A value set as a type: its governor with the set as a constraint. Made once. */
TypeUse typeOfSet(Compilation &c, const void *key, TypeUse governor, SetUse set) {
    Type *&type = c.madeTypes[{key, set.scope}];
    if (type == nullptr) {
        type = newType(c.arena, governor.type->kind, governor.type->place);
        *type = *governor.type;
        type->baseScope = nullptr;
        ConstraintSpec *spec = newConstraintSpec(c.arena, set.set->place);
        *spec = *set.set;
        spec->scope = set.scope;
        type->constraints.push_back(spec);
    }
    return {type, governor.scope};
}

TypeUse followArgument(Compilation &c, const Reference &reference, const Argument &argument) {
    switch (argument.kind) {
    case ArgumentKind::Type:
        return {argument.type, argument.scope};
    case ArgumentKind::ValueSet:
        return typeOfSet(c, &argument, argument.governor, {argument.set, argument.scope});
    case ArgumentKind::Class:
        reportNoType(c, reference, "a class");
        return {};
    case ArgumentKind::ObjectSet:
        reportNoType(c, reference, "an object set");
        return {};
    case ArgumentKind::Value: /* these have small letters, which no type begins with */
    case ArgumentKind::Object:
    case ArgumentKind::Bad:
        break;
    }
    return {};
}

TypeUse followReference(Compilation &c, const Reference &reference, const Scope *scope) {
    const Target target = resolve(c, reference, scope);
    if (target.argument != nullptr)
        return followArgument(c, reference, *target.argument);
    if (target.assignment == nullptr)
        return {};
    const Assignment *assignment = target.assignment;
    const TypeUse type{assignment->type, target.scope};
    switch (assignment->kind) {
    case AssignmentKind::Type:
        if (classOf(c, type)) {
            reportNoType(c, reference, "a class");
            return {};
        }
        return type;
    case AssignmentKind::Set: {
        if (classOf(c, type)) {
            reportNoType(c, reference, "an object set");
            return {};
        }
        const SetUse set = setOfDefinition(c, assignment, target.scope);
        return set ? typeOfSet(c, assignment, type, set) : TypeUse{};
    }
    case AssignmentKind::Class:
        reportNoType(c, reference, "a class");
        return {};
    case AssignmentKind::Value: /* has a small letter, which no type begins with */
    case AssignmentKind::Macro:
        break; /* an instance that the parser took for a plain reference; the type is left open */
    }
    return {};
}

/* An alternative with the tag that automatic tagging gives it. Made once. */
TypeUse taggedAlternative(Compilation &c, TypeUse choice, const SettledComponent &alternative) {
    const auto index =
        static_cast<std::size_t>(&alternative - componentsOf(c, choice).data());
    Type *&type = c.madeTypes[{alternative.component, choice.scope}];
    if (type == nullptr) {
        TagSpec tag;
        tag.place = alternative.component->place;
        tag.number = newValue(c.arena, ValueKind::Number, tag.place);
        tag.number->text = memosOf(c).texts.emplace_back(
            std::to_string(automaticNumbers(c, choice)[index]));
        type = newType(c.arena, alternative.type.type->kind, tag.place);
        *type = *alternative.type.type;
        type->baseScope = nullptr;
        type->tags.insert(type->tags.begin(), tag);
    }
    return {type, choice.scope};
}

TypeUse followSelection(Compilation &c, TypeUse use) {
    const TypeUse choice = baseOf(c, {use.type->element, use.scope});
    if (!choice)
        return {};
    const std::string name(use.type->identifier.text);
    if (choice.type->kind != TypeKind::Choice) {
        error(c.diagnostics, use.type->identifier.place,
              "a selection type needs a CHOICE behind `<`");
        return {};
    }
    if (const SettledComponent *found = findComponent(c, choice, name))
        return hasAutomaticTags(c, choice) ? taggedAlternative(c, choice, *found) : found->type;
    error(c.diagnostics, use.type->identifier.place, "the CHOICE has no alternative `" + name + "`",
          {{choice.type->place, "the CHOICE"}});
    return {};
}

/* Values that fields of objects hold, as a type: their governor with the values as a constraint. */
TypeUse typeOfFields(Compilation &c, TypeUse use, TypeUse governor) {
    const Type &path = *use.type;
    Value *value = newValue(c.arena, ValueKind::Field, path.place);
    value->end = path.end;
    value->ref = path.ref;
    value->fields = path.fields;
    value->fieldIsUpper = path.fieldIsUpper;
    ConstraintSpec *spec = newConstraintSpec(c.arena, path.place);
    spec->root = newConstraint(c.arena, ConstraintKind::Group, path.place);
    spec->root->value = value;
    return typeOfSet(c, &path, governor, {spec, use.scope});
}

/* object.&a.&value, with no set of objects on the way. */
bool isOneValue(Compilation &c, TypeUse use, const Setting &setting) {
    const Target target = resolve(c, use.type->ref, use.scope);
    const bool ofObject = target.argument != nullptr
                              ? target.argument->kind == ArgumentKind::Object
                              : target.assignment->kind == AssignmentKind::Value;
    return ofObject && std::find(use.type->fieldIsUpper.begin(), use.type->fieldIsUpper.end(),
                                 true) == use.type->fieldIsUpper.end() &&
           (setting.kind == FieldKind::FixedValue || setting.kind == FieldKind::VariableValue);
}

TypeUse followField(Compilation &c, TypeUse use) {
    const Type &type = *use.type;
    if (const FieldTarget target = fieldTarget(c, use)) {
        if (target.kind == FieldKind::FixedValue || target.kind == FieldKind::FixedSet)
            return governorOf(target.lastClass, *target.last());
        if (target.kind == FieldKind::Object || target.kind == FieldKind::ObjectSet)
            error(c.diagnostics, type.fields.back().place,
                  "`&" + std::string(type.fields.back().text) + "` holds objects, not a type");
        return {};
    }
    if (!tryResolve(c, type.ref, use.scope)) {
        resolve(c, type.ref, use.scope);
        return {};
    }
    Type owner;
    owner.kind = TypeKind::Reference;
    owner.ref = type.ref;
    if (classOf(c, {&owner, use.scope}))
        return {}; /* it lacks the field, which was reported */
    const std::vector<Setting> settings =
        settingsOf(c, type.ref, type.fields, type.fieldIsUpper, use.scope);
    if (settings.empty())
        return {};
    const Setting &first = settings.front();
    if (first.kind == FieldKind::Type && settings.size() == 1)
        return first.type;
    const bool isObject =
        first.kind == FieldKind::Object || first.kind == FieldKind::ObjectSet;
    if (first.kind != FieldKind::Type && !isObject && !isOneValue(c, use, first))
        return typeOfFields(c, use, first.governor);
    Reference last;
    last.name = type.fields.back();
    reportNoType(c, last,
                 first.kind == FieldKind::Type ? "a field of several objects"
                 : isObject                    ? "a field that holds objects"
                                               : "a value");
    return {};
}

bool isStep(const Type &type) {
    return type.kind == TypeKind::Reference || type.kind == TypeKind::Selection ||
           type.kind == TypeKind::Field;
}

/* One mistake of a circle is told where the first of its types stands. */
void reportCircle(Compilation &c, TypeUse first) {
    error(c.diagnostics, first.type->place, "the definition goes in a circle: it refers to itself");
}

/* Most types are asked for in one scope only, which is kept at hand. */
void keepBase(Compilation &c, TypeUse use, TypeUse base) {
    if (use.type->baseScope != nullptr) {
        c.bases[{use.type, use.scope}] = base;
        return;
    }
    use.type->baseScope = use.scope;
    use.type->base = base.type;
    use.type->scopeOfBase = base.scope;
}

} // namespace

TypeUse follow(Compilation &c, TypeUse use) {
    if (!use)
        return {};
    DepthGuard guard(c);
    if (!guard.ok)
        return {};
    switch (use.type->kind) {
    case TypeKind::Reference:
        return followReference(c, use.type->ref, use.scope);
    case TypeKind::Selection:
        return followSelection(c, use);
    case TypeKind::Field:
        return followField(c, use);
    default:
        return {};
    }
}

TypeUse baseOf(Compilation &c, TypeUse use) {
    if (!use || !isStep(*use.type))
        return use;
    if (use.type->baseScope == use.scope)
        return {use.type->base, use.type->scopeOfBase};
    if (auto known = c.bases.find({use.type, use.scope}); known != c.bases.end())
        return known->second;
    std::vector<TypeUse> chain;
    TypeUse result = use;
    std::unordered_set<UseKey, UseHash> seen;
    while (result && isStep(*result.type)) {
        const UseKey key{result.type, result.scope};
        if (result.type->baseScope == result.scope) {
            result = {result.type->base, result.type->scopeOfBase};
            break;
        }
        if (auto known = c.bases.find(key); known != c.bases.end()) {
            result = known->second;
            break;
        }
        if (!seen.insert(key).second) {
            reportCircle(c, result);
            result = {};
            break;
        }
        chain.push_back(result);
        const TypeUse step = follow(c, result);
        if (!step && isOpenType(c, result))
            break; /* an open type is its own base */
        result = step;
    }
    for (const TypeUse &step : chain)
        keepBase(c, step, result);
    return result;
}

const Assignment *definitionOf(Compilation &c, TypeUse use) {
    if (!use || use.type->kind != TypeKind::Reference)
        return nullptr;
    return tryResolve(c, use.type->ref, use.scope).assignment;
}

namespace {

bool isPlainReference(const Type &type) {
    return type.kind == TypeKind::Reference && type.tags.empty() && type.constraints.empty();
}

/* Notes of all definitions from a reference on that they lead to no class. */
void noteNoClass(Compilation &c, TypeUse use) {
    while (isPlainReference(*use.type)) {
        const Target target = tryResolve(c, use.type->ref, use.scope);
        const Assignment *assignment = target.assignment;
        if (assignment == nullptr || assignment->kind != AssignmentKind::Type ||
            assignment->parameterized || assignment->isNoClass)
            return;
        assignment->isNoClass = true;
        use = {assignment->type, target.scope};
    }
}

} // namespace

ClassUse classOf(Compilation &c, TypeUse use) {
    const TypeUse first = use;
    TypeUse mark; /* comes back if the references go in a circle */
    for (std::size_t steps = 0; use && isPlainReference(*use.type) && use != mark; ++steps) {
        if ((steps & (steps + 1)) == 0) /* 2^n - 1 steps were taken */
            mark = use;
        const Target target = tryResolve(c, use.type->ref, use.scope);
        if (target.argument != nullptr) {
            if (target.argument->kind != ArgumentKind::Class &&
                target.argument->kind != ArgumentKind::Type)
                return {};
            use = {target.argument->type, target.argument->scope};
            continue;
        }
        const Assignment *assignment = target.assignment;
        if (assignment == nullptr)
            return {};
        if (assignment->kind == AssignmentKind::Class)
            return {assignment->objectClass, target.scope, assignment};
        if (assignment->kind != AssignmentKind::Type)
            return {};
        if (assignment->isNoClass)
            break;
        use = {assignment->type, target.scope};
    }
    if (use && use != mark)
        noteNoClass(c, first);
    return {};
}

} // namespace asntree
