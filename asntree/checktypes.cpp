#include <algorithm>
#include <unordered_map>

#include "asntree/check.h"
#include "asntree/constraints.h"
#include "asntree/reading.h"
#include "asntree/tags.h"

/* Types: their parts, tags, names and constraints. */

namespace asntree {

namespace {

/* Structures around a type, innermost last: paths of component relations start in one of them. */
using Outer = std::vector<TypeUse>;

void checkTypeIn(Compilation &c, TypeUse use, Outer &outer);

std::string quoted(std::string_view name) {
    return "`" + std::string(name) + "`";
}

/* The mode counts that is written, and only on the tag that stands directly in front of the type. */
void checkTagsOf(Compilation &c, TypeUse use) {
    const std::vector<TagSpec> &tags = use.type->tags;
    for (const TagSpec &tag : tags)
        tagNumber(c, tag, use.scope);
    if (tags.empty() || tags.back().mode != TagModeWord::Implicit)
        return;
    Type inner = *use.type;
    inner.tags.clear();
    const TypeKind kind = inner.kind;
    const bool named = kind == TypeKind::Reference || kind == TypeKind::Selection ||
                       kind == TypeKind::Field;
    const TypeUse next = named ? follow(c, use) : TypeUse{};
    const bool open = kind == TypeKind::Choice || kind == TypeKind::Any ||
                      (kind == TypeKind::Field && isOpenType(c, use)) ||
                      (next && isUntagged(c, next));
    if (open)
        error(c.diagnostics, tags.back().place,
              "IMPLICIT can't stand in front of an untagged CHOICE, an open type or ANY, which have "
              "no tag that it could replace");
}

void checkNamesOnce(Compilation &c, TypeUse structure) {
    std::unordered_map<std::string_view, const Component *> names;
    const char *what = structure.type->kind == TypeKind::Choice ? "alternative" : "component";
    for (const SettledComponent &part : componentsOf(c, structure)) {
        auto [place, isNew] = names.emplace(part.name, part.component);
        if (!isNew)
            error(c.diagnostics, placeIn(c, structure, *part.component),
                  std::string(what) + " " + quoted(part.name) + " stands twice",
                  {{place->second->place, "first here"}});
    }
}

void checkComponentsOf(Compilation &c, TypeUse structure, const Component &item) {
    const TypeUse base = baseOf(c, {item.type, structure.scope});
    if (base && base.type->kind != structure.type->kind)
        error(c.diagnostics, item.place,
              structure.type->kind == TypeKind::Set
                  ? "COMPONENTS OF in a SET needs a SET"
                  : "COMPONENTS OF in a SEQUENCE needs a SEQUENCE");
}

/* `! 5`, `! Type : value` behind a marker. */
void checkException(Compilation &c, const Value *value, const Scope *scope) {
    if (value == nullptr)
        return;
    if (value->kind == ValueKind::Typed && baseOf(c, {value->type, scope}))
        checkValue(c, {value->inner, scope}, {value->type, scope});
    else if (value->kind != ValueKind::Typed)
        integerOf(c, {value, scope});
}

void checkStructure(Compilation &c, TypeUse use, Outer &outer) {
    outer.push_back(use);
    for (const Component &component : use.type->components) {
        if (component.kind == ComponentKind::Marker)
            checkException(c, component.defaultValue, use.scope);
        if (component.type == nullptr)
            continue;
        const TypeUse type{component.type, use.scope};
        checkTypeIn(c, type, outer);
        if (component.kind == ComponentKind::ComponentsOf)
            checkComponentsOf(c, use, component);
        else if (component.defaultValue != nullptr && baseOf(c, type))
            checkValue(c, {component.defaultValue, use.scope}, type);
    }
    outer.pop_back();
    checkNamesOnce(c, use);
    checkTags(c, use);
}

void checkClassifier(Compilation &c, TypeUse use, const Outer &outer) {
    const Name &name = use.type->identifier;
    if (!name.given() || outer.empty())
        return;
    for (const SettledComponent &part : componentsOf(c, outer.back()))
        if (part.component->name.text == name.text)
            return;
    error(c.diagnostics, name.place,
          "ANY DEFINED BY names " + quoted(name.text) + ", which is no component beside it",
          {{outer.back().type->place, "the structure"}});
}

void checkExpression(Compilation &c, const Constraint &constraint, TypeUse use,
                     const Scope *scope, Outer &outer) {
    if (constraint.kind == ConstraintKind::Table)
        checkTable(c, constraint, use, outer);
    if ((constraint.kind == ConstraintKind::Contained ||
         constraint.kind == ConstraintKind::Contents) &&
        constraint.type != nullptr)
        checkTypeIn(c, {constraint.type, scope}, outer);
    for (const Constraint *operand : constraint.operands)
        checkExpression(c, *operand, use, scope, outer);
}

void checkConstraintsOf(Compilation &c, TypeUse use, Outer &outer) {
    for (const ConstraintSpec *spec : use.type->constraints)
        for (const Constraint *part : {spec->root, spec->additions})
            if (part != nullptr)
                checkExpression(c, *part, use, scopeOf(*spec, use.scope), outer);
    checkConstraints(c, use);
}

void checkInstanceOf(Compilation &c, TypeUse use) {
    Type governor;
    governor.kind = TypeKind::Reference;
    governor.place = use.type->place;
    governor.ref = use.type->ref;
    const ClassUse objectClass = classOf(c, {&governor, use.scope});
    if (objectClass && objectClass.definition->name.text == "TYPE-IDENTIFIER" &&
        objectClass.scope->module->predefined)
        return;
    if (objectClass || resolve(c, use.type->ref, use.scope))
        error(c.diagnostics, use.type->ref.name.place,
              "INSTANCE OF needs a class that is derived from TYPE-IDENTIFIER");
}

/* Capitals that are imported may be a macro, and then anything may follow; of a class or a type there
   are no instances. */
void checkMacro(Compilation &c, TypeUse use) {
    Type named;
    named.kind = TypeKind::Reference;
    named.place = use.type->place;
    named.ref = use.type->ref;
    const Target target = tryResolve(c, named.ref, use.scope);
    if (target.assignment == nullptr || target.assignment->kind == AssignmentKind::Macro)
        return;
    const bool isClass = bool(classOf(c, {&named, use.scope}));
    const TypeUse base = isClass ? TypeUse{} : baseOf(c, {&named, use.scope});
    if (isClass || (base && base.type->kind != TypeKind::Macro && base.type->kind != TypeKind::Bad))
        error(c.diagnostics, use.type->ref.name.place,
              quoted(named.ref.name.text) + " is no macro, so what follows it has no meaning",
              {{target.assignment->name.place, "defined here"}});
}

void checkParts(Compilation &c, TypeUse use, Outer &outer) {
    switch (use.type->kind) {
    case TypeKind::Sequence:
    case TypeKind::Set:
    case TypeKind::Choice:
        checkStructure(c, use, outer);
        break;
    case TypeKind::SequenceOf:
    case TypeKind::SetOf:
        checkTypeIn(c, {use.type->element, use.scope}, outer);
        break;
    case TypeKind::Macro:
        checkMacro(c, use);
        break;
    case TypeKind::Selection:
        checkTypeIn(c, {use.type->element, use.scope}, outer);
        baseOf(c, use);
        break;
    case TypeKind::Reference:
    case TypeKind::Field:
        baseOf(c, use);
        break;
    case TypeKind::Integer:
    case TypeKind::Enumerated:
    case TypeKind::BitString:
        if (use.type->hasItems)
            checkItems(c, use);
        break;
    case TypeKind::Any:
        checkClassifier(c, use, outer);
        break;
    case TypeKind::InstanceOf:
        checkInstanceOf(c, use);
        break;
    default:
        break;
    }
}

void checkTypeIn(Compilation &c, TypeUse use, Outer &outer) {
    if (!use)
        return;
    DepthGuard guard(c);
    if (!guard.ok) {
        error(c.diagnostics, use.type->place, "types are nested too deep here");
        return;
    }
    checkParts(c, use, outer);
    checkTagsOf(c, use);
    if (!use.type->constraints.empty() && baseOf(c, use))
        checkConstraintsOf(c, use, outer);
}

/* The structure in which a relation's path starts: `level` structures above the innermost one, or
   the outermost for "@" without a dot. */
const TypeUse *startOfPath(const AtPath &path, const Outer &outer) {
    if (path.level == 0)
        return &outer.front();
    const std::size_t up = static_cast<std::size_t>(path.level) - 1;
    return up < outer.size() ? &outer[outer.size() - 1 - up] : nullptr;
}

/* The field of a class that a component is of, through all references to it. */
FieldTarget fieldOf(Compilation &c, TypeUse type) {
    while (type && type.type->kind == TypeKind::Reference)
        type = follow(c, type);
    return fieldTarget(c, type);
}

/* The set of objects that restricts a component, by a table or a relation on it or on a type that it
   refers to; null if there is none, or if it is written in line. */
const ConstraintSpec *tableOf(Compilation &c, TypeUse type) {
    for (; type; type = follow(c, type)) {
        for (const ConstraintSpec *spec : type.type->constraints)
            if (spec->root != nullptr && spec->root->kind == ConstraintKind::Table &&
                spec->root->ref.name.given())
                return setOf(c, spec->root->ref, type.scope).set;
        if (type.type->kind != TypeKind::Reference)
            break;
    }
    return nullptr;
}

bool hasComponents(TypeKind kind) {
    return kind == TypeKind::Sequence || kind == TypeKind::Set || kind == TypeKind::Choice;
}

/* Only a field of the same objects can choose among those of the table. */
void checkEndOfPath(Compilation &c, const Name &last, TypeUse type, ClassUse objectClass,
                    const ConstraintSpec *set) {
    const TypeUse base = baseOf(c, type);
    if (!base || base.type->kind == TypeKind::Bad)
        return;
    const FieldTarget field = fieldOf(c, type);
    const ConstraintSpec *own = tableOf(c, type);
    if (!field || field.objectClass.objectClass != objectClass.objectClass)
        slip(c.diagnostics, last.place,
             quoted(last.text) + " is no field of the class whose objects the table holds, so it "
                                 "can't choose among them");
    else if (own != nullptr && own != set)
        slip(c.diagnostics, last.place,
             quoted(last.text) + " is restricted by another set of objects than this, so it can't "
                                 "choose among them");
}

void checkPath(Compilation &c, const AtPath &path, const Outer &outer, ClassUse objectClass,
               const ConstraintSpec *set) {
    if (outer.empty()) {
        slip(c.diagnostics, path.steps.front().place,
             "the path leads nowhere: no structure stands around it");
        return;
    }
    const TypeUse *start = startOfPath(path, outer);
    if (start == nullptr) {
        /* A list counts as a level for some, so one too many is let pass. */
        if (static_cast<std::size_t>(path.level) > outer.size() + 1)
            error(c.diagnostics, path.steps.front().place,
                  "the path goes out of the type: it has fewer structures than the path has dots");
        return;
    }
    TypeUse type = *start;
    for (const Name &step : path.steps) {
        const TypeUse base = baseOf(c, type);
        if (!base || !hasComponents(base.type->kind)) {
            if (base && base.type->kind != TypeKind::Bad && !isOpen(base.type->kind) &&
                base.type->kind != TypeKind::Macro)
                error(c.diagnostics, step.place,
                      "the path can't go on with " + quoted(step.text) + ": " +
                          std::string(kindText(base.type->kind)) + " has no components",
                      {{base.type->place, "this type"}});
            return;
        }
        type = {};
        for (const SettledComponent &part : componentsOf(c, base))
            if (part.component->name.text == step.text)
                type = part.type;
        if (!type) {
            error(c.diagnostics, step.place,
                  quoted(step.text) + " is no component where the path leads",
                  {{base.type->place, "in this type"}});
            return;
        }
    }
    checkEndOfPath(c, path.steps.back(), type, objectClass, set);
}

} // namespace

void checkTable(Compilation &c, const Constraint &table, TypeUse type, const Outer &outer) {
    const FieldTarget field = fieldTarget(c, type);
    const SetUse set = setOf(c, table.ref, type.scope);
    if (!set)
        return;
    if (!field) {
        if (type.type->kind != TypeKind::Reference && type.type->kind != TypeKind::InstanceOf)
            error(c.diagnostics, table.place,
                  "a table constraint restricts a field of a class (CLASS.&field)");
        return;
    }
    const Target target = resolve(c, table.ref, type.scope);
    const TypeUse governor = target.assignment != nullptr
                                 ? TypeUse{target.assignment->type, target.scope}
                                 : target.argument->governor;
    const ClassUse own = classOf(c, governor);
    if (own && own.objectClass != field.objectClass.objectClass)
        error(c.diagnostics, table.place,
              quoted(table.ref.name.text) + " holds objects of another class than the field's",
              {{field.objectClass.objectClass->place, "the class of the field"}});
    for (const AtPath &path : table.relation)
        checkPath(c, path, outer, field.objectClass, set.set);
}

void checkType(Compilation &c, TypeUse use) {
    Outer outer;
    checkTypeIn(c, use, outer);
}

} // namespace asntree
