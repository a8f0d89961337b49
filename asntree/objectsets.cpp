#include "asntree/objects.h"

#include <algorithm>

/* Sets of objects, and what the fields of their objects hold. */

namespace asntree {

namespace {

/* Objects in the order of the text, each once. */
struct Collected {
    std::vector<ObjectUse> objects;
    std::unordered_set<UseKey, UseHash> known;

    void add(const ObjectUse &object) {
        if (object && known.insert({object.value, object.scope}).second)
            objects.push_back(object);
    }
    bool has(const ObjectUse &object) const {
        return known.count({object.value, object.scope}) != 0;
    }
};

struct SetReader {
    Compilation &c;
    ClassUse objectClass;
    const Scope *scope;
    ObjectSetInfo &info;
};

void collect(SetReader &reader, const Constraint &expression, Collected &into);

/* A set that is named in a set: by reference, or as what the field of an object holds. */
void collectSet(SetReader &reader, SetUse set, Collected &into) {
    if (!set) {
        reader.info.sound = false;
        return;
    }
    const ObjectSetInfo &inner = readObjectSet(reader.c, set, reader.objectClass);
    for (const ObjectUse &object : inner.objects)
        into.add(object);
    reader.info.extensible = reader.info.extensible || inner.extensible;
    reader.info.sound = reader.info.sound && inner.sound;
}

/* A set that is named in a set, if it may stand there; empty after a message. */
SetUse namedSet(SetReader &reader, const Reference &reference) {
    const SetUse set = setOf(reader.c, reference, reader.scope);
    if (!set)
        return {};
    const std::string name = "`" + std::string(reference.name.text) + "`";
    const Target target = resolve(reader.c, reference, reader.scope);
    const ClassUse own = classOf(reader.c, target.argument != nullptr
                                               ? target.argument->governor
                                               : TypeUse{target.assignment->type, target.scope});
    if (!own || own.objectClass != reader.objectClass.objectClass) {
        error(reader.c.diagnostics, reference.name.place,
              own ? name + " holds objects of another class" : name + " is no set of objects");
        return {};
    }
    const auto known = reader.c.objectSetsOfSets.find({set.set, set.scope});
    if (known == reader.c.objectSetsOfSets.end() || known->second == nullptr ||
        known->second->done)
        return set;
    error(reader.c.diagnostics, reference.name.place, name + " holds itself, in a circle");
    return {};
}

void collectObject(SetReader &reader, const Value &value, Collected &into) {
    const ObjectUse object = objectOf(reader.c, {&value, reader.scope}, reader.objectClass);
    if (!object)
        reader.info.sound = false;
    into.add(object);
}

/* object.&Set, Set.&object and their like. */
void collectFields(SetReader &reader, const Reference &reference, const std::vector<Name> &fields,
                   const std::vector<bool> &isUpper, Collected &into) {
    reader.info.simple = false;
    for (const Setting &setting : settingsOf(reader.c, reference, fields, isUpper, reader.scope)) {
        if (setting.kind == FieldKind::ObjectSet)
            collectSet(reader, setting.set, into);
        else if (setting.kind == FieldKind::Object)
            into.add(objectOf(reader.c, setting.value, reader.objectClass));
    }
}

void collectElement(SetReader &reader, const Constraint &element, Collected &into) {
    const Value *value = element.value;
    const Type *type = element.type;
    if (type != nullptr && type->kind == TypeKind::Reference) {
        collectSet(reader, namedSet(reader, type->ref), into);
    } else if (type != nullptr && type->kind == TypeKind::Field) {
        collectFields(reader, type->ref, type->fields, type->fieldIsUpper, into);
    } else if (value != nullptr && value->kind == ValueKind::Field) {
        collectFields(reader, value->ref, value->fields, value->fieldIsUpper, into);
    } else if (value != nullptr) {
        collectObject(reader, *value, into);
    } else {
        error(reader.c.diagnostics, element.place,
              "an object or an object set is expected in a set of objects");
        reader.info.sound = false;
    }
}

void collectIntersection(SetReader &reader, const Constraint &expression, Collected &into) {
    reader.info.simple = false;
    std::vector<Collected> operands(expression.operands.size());
    for (std::size_t i = 0; i < operands.size(); ++i)
        collect(reader, *expression.operands[i], operands[i]);
    for (const ObjectUse &object : operands.front().objects)
        if (std::all_of(operands.begin() + 1, operands.end(),
                        [&object](const Collected &other) { return other.has(object); }))
            into.add(object);
}

void collectExcept(SetReader &reader, const Constraint &expression, Collected &into) {
    reader.info.simple = false;
    Collected included, excluded;
    collect(reader, *expression.operands.front(), included);
    collect(reader, *expression.operands.back(), excluded);
    for (const ObjectUse &object : included.objects)
        if (!excluded.has(object))
            into.add(object);
}

void collect(SetReader &reader, const Constraint &expression, Collected &into) {
    DepthGuard guard(reader.c);
    if (!guard.ok)
        return;
    switch (expression.kind) {
    case ConstraintKind::Union:
        for (const Constraint *operand : expression.operands)
            collect(reader, *operand, into);
        break;
    case ConstraintKind::Intersection:
        collectIntersection(reader, expression, into);
        break;
    case ConstraintKind::Except:
        collectExcept(reader, expression, into);
        break;
    case ConstraintKind::AllExcept:
        error(reader.c.diagnostics, expression.place,
              "ALL EXCEPT has no meaning for objects: there is no set of all of them");
        reader.info.sound = false;
        break;
    default:
        collectElement(reader, expression, into);
        break;
    }
}

/* What stands in front of the "&" of a field, and isn't what fields of objects are asked of. */
void refuseField(Compilation &c, const Name &name, bool isClass) {
    error(c.diagnostics, name.place,
          "`" + std::string(name.text) +
              (isClass ? "` is a class; `&` follows objects and object sets of it here"
                       : "` is no object or object set; `&` can't follow"));
}

/* The objects that the first step of a field path stands on. */
std::vector<ObjectUse> startOfPath(Compilation &c, const Reference &reference, const Scope *scope) {
    const Target target = resolve(c, reference, scope);
    if (!target)
        return {};
    Value value;
    value.kind = ValueKind::Reference;
    value.place = reference.name.place;
    value.ref = reference;
    const Assignment *assignment = target.assignment;
    const TypeUse governor = assignment != nullptr ? TypeUse{assignment->type, target.scope}
                                                   : target.argument->governor;
    const bool isClassItself = assignment != nullptr && assignment->kind == AssignmentKind::Class;
    const ClassUse objectClass = isClassItself ? ClassUse{} : classOf(c, governor);
    const bool isOtherName = assignment != nullptr && assignment->kind == AssignmentKind::Type;
    if (!objectClass || isOtherName) {
        refuseField(c, reference.name, isClassItself || objectClass);
        return {};
    }
    const bool isSet = assignment != nullptr ? assignment->kind == AssignmentKind::Set
                                             : target.argument->kind == ArgumentKind::ObjectSet;
    if (isSet)
        return readObjectSet(c, setOf(c, reference, scope), objectClass).objects;
    const ObjectUse object = objectOf(c, {&value, scope}, objectClass);
    return object ? std::vector<ObjectUse>{object} : std::vector<ObjectUse>{};
}

/* What a step gives for each object; objects of it are where the next step goes on. */
std::vector<Setting> step(Compilation &c, const std::vector<ObjectUse> &objects, const Name &name,
                          bool upper) {
    std::vector<Setting> found;
    for (const ObjectUse &object : objects) {
        if (findField(object.objectClass, name.text, upper) == nullptr) {
            error(c.diagnostics, name.place,
                  "the class has no field `&" + std::string(name.text) + "`",
                  {{object.objectClass.objectClass->place, "the class"}});
            return {};
        }
        for (const Setting &setting : readObject(c, object).settings)
            if (setting.field->name.text == name.text && setting.field->upper == upper &&
                (setting.given || setting.byDefault))
                found.push_back(setting);
    }
    return found;
}

std::vector<ObjectUse> objectsIn(Compilation &c, const std::vector<Setting> &settings,
                                 const Name &step) {
    std::vector<ObjectUse> objects;
    for (const Setting &setting : settings) {
        const ClassUse objectClass = classOf(c, setting.governor);
        if (setting.kind == FieldKind::Object) {
            if (const ObjectUse object = objectOf(c, setting.value, objectClass))
                objects.push_back(object);
        } else if (setting.kind == FieldKind::ObjectSet) {
            for (const ObjectUse &object : readObjectSet(c, setting.set, objectClass).objects)
                objects.push_back(object);
        } else {
            error(c.diagnostics, step.place,
                  "`&" + std::string(step.text) + "` holds no object, so no field can follow");
            return {};
        }
    }
    return objects;
}

} // namespace

const ObjectSetInfo &readObjectSet(Compilation &c, SetUse use, ClassUse objectClass) {
    ObjectSetInfo *&known = c.objectSetsOfSets[{use.set, use.scope}];
    if (known != nullptr)
        return *known;
    c.objectSets.emplace_back();
    known = &c.objectSets.back();
    ObjectSetInfo &info = *known; /* a set that fields lead back to meets it empty */
    info.done = !use || !objectClass;
    if (info.done)
        return info;
    info.sound = true;
    info.extensible = use.set->extensible;
    SetReader reader{c, objectClass, use.scope, info};
    Collected all;
    if (use.set->root != nullptr)
        collect(reader, *use.set->root, all);
    if (use.set->additions != nullptr)
        collect(reader, *use.set->additions, all);
    info.objects = std::move(all.objects);
    info.done = true;
    return info;
}

SetUse setOfDefinition(Compilation &c, const Assignment *assignment, const Scope *scope) {
    ConstraintSpec *&set = c.setsOfDefinitions[assignment];
    if (set == nullptr) {
        ParseContext parsing = c.parsing();
        set = readSet(parsing, assignment->tokens);
        if (set == nullptr) { /* was reported; an empty set silences what follows */
            set = newConstraintSpec(c.arena, assignment->name.place);
            set->extensible = true;
        }
    }
    return {set, scope};
}

SetUse setOf(Compilation &c, const Reference &reference, const Scope *scope) {
    const Target target = resolve(c, reference, scope);
    if (target.assignment != nullptr && target.assignment->kind == AssignmentKind::Set)
        return setOfDefinition(c, target.assignment, target.scope);
    if (target.argument != nullptr && (target.argument->kind == ArgumentKind::ObjectSet ||
                                       target.argument->kind == ArgumentKind::ValueSet))
        return {target.argument->set, target.argument->scope};
    if (target)
        error(c.diagnostics, reference.name.place,
              "`" + std::string(reference.name.text) + "` is no set");
    return {};
}

std::vector<Setting> settingsOf(Compilation &c, const Reference &reference,
                                const std::vector<Name> &fields,
                                const std::vector<bool> &fieldIsUpper, const Scope *scope) {
    DepthGuard guard(c);
    if (!guard.ok)
        return {};
    std::vector<ObjectUse> objects = startOfPath(c, reference, scope);
    std::vector<Setting> settings;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        settings = step(c, objects, fields[i], fieldIsUpper[i]);
        if (i + 1 < fields.size())
            objects = objectsIn(c, settings, fields[i]);
    }
    return settings;
}

} // namespace asntree
