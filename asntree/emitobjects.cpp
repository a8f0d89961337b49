#include "asntree/emitter.h"

/* Information objects and the settings of their fields. */

namespace asntree {

namespace {

constexpr int INLINE_OBJECT = 3;

/* A setting that is a type or a set: a value that stands for a TNode. */
RecNr typeSetting(TreeState &ts, RecNr type) {
    VNode node;
    node.valueKind = TYP_NONE;
    node.refModule = 1;
    node.refRecord = type;
    return ts.tree().addV(node);
}

/* True if the part is there that the kind of the field asks for; a mistake was reported else. */
bool isComplete(const Setting &setting) {
    switch (setting.kind) {
    case FieldKind::Type:
        return bool(setting.type);
    case FieldKind::FixedValue:
    case FieldKind::VariableValue:
    case FieldKind::Object:
        return setting.value && setting.governor;
    default:
        return setting.set && setting.governor;
    }
}

RecNr emitSetting(Emitter &e, TreeState &ts, const Setting &setting, PlaceNr field) {
    if (!isComplete(setting))
        return 0;
    switch (setting.kind) {
    case FieldKind::Type:
        return typeSetting(ts, hiddenType(e, ts, setting.type, nullptr, TCS_MANDATORY));
    case FieldKind::FixedValue:
        return emitValue(e, ts, setting.value, setting.governor, field, TCS_MANDATORY);
    case FieldKind::VariableValue: {
        const PlaceNr place = placeOfNode(ts, governorNode(e, ts, setting.governor));
        return emitValue(e, ts, setting.value, setting.governor, place, TCS_MANDATORY);
    }
    case FieldKind::FixedSet:
    case FieldKind::VariableSet:
        return typeSetting(ts, hiddenSet(e, ts, setting.set, setting.governor, false));
    case FieldKind::ObjectSet:
        return typeSetting(ts, hiddenSet(e, ts, setting.set, setting.governor, true));
    case FieldKind::Object:
        return emitObjectReference(e, ts, setting.value, classOf(e.c, setting.governor),
                                   TCS_MANDATORY);
    }
    return 0;
}

int kindOfClass(const ClassUse &objectClass) {
    if (!isPredefinedClass(objectClass))
        return TYP_CLASS;
    return objectClass.definition->name.text == "ABSTRACT-SYNTAX" ? TYP_ABSTR_STX : TYP_TYPE_ID;
}

/* The settings in the order of the class; what is left out or by default isn't there. */
void fillObject(Emitter &e, TreeState &ts, RecNr nr, const ObjectUse &use) {
    const ObjectInfo &info = readObject(e.c, use);
    ts.tree().v(nr).valueKind = static_cast<std::uint8_t>(kindOfClass(use.objectClass));
    RecNr last = 0;
    for (const Setting &setting : info.settings) {
        if (!setting.given || setting.field == nullptr)
            continue;
        const PlaceNr field =
            placeOfNode(ts, fieldNode(e, ts, use.objectClass, *setting.field));
        const RecNr value = emitSetting(e, ts, setting, field);
        if (value == 0)
            continue;
        governBy(e, ts, value, field);
        ts.tree().v(value).nameIdx = 0;
        ts.tree().v(value).lineNr = lineOf(e, setting.place);
        (last == 0 ? ts.tree().v(nr).refRecord : ts.tree().v(last).next) = value;
        last = value;
    }
}

/* The class by the name that governs, which may be an alias. */
NodeReference governingClass(Emitter &e, TreeState &ts, TypeUse governor, ClassUse objectClass) {
    if (governor.type->kind == TypeKind::Reference) {
        const Target target = tryResolve(e.c, governor.type->ref, governor.scope);
        if (auto found = e.types.find(target.assignment);
            found != e.types.end() && target.scope->definition == nullptr)
            return {found->second.tree, found->second.nr};
    }
    return classNode(e, ts, objectClass);
}

} // namespace

void emitObjectDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment) {
    const Scope *scope = &moduleOf(e.c, &assignment)->root;
    const TypeUse governor{assignment.type, scope};
    const ClassUse objectClass = classOf(e.c, governor);
    if (!objectClass)
        return refuse(e, assignment.name.place, "the class of this object is left out");
    governBy(e, ts, nr, placeOfNode(ts, governingClass(e, ts, governor, objectClass)));
    if (assignment.value->kind == ValueKind::Reference) {
        const Target target = resolve(e.c, assignment.value->ref, scope);
        if (target.assignment != nullptr && target.scope->definition == nullptr &&
            referToValue(e, ts, nr, target.assignment))
            return;
    }
    const ObjectUse use = objectOf(e.c, {assignment.value, scope}, objectClass);
    if (!use)
        return refuse(e, assignment.name.place, "a tree can't hold this object");
    fillObject(e, ts, nr, use);
}

RecNr emitObject(Emitter &e, TreeState &ts, const ObjectUse &use, int status) {
    VNode node;
    node.compStatus = use.definition != nullptr ? status : INLINE_OBJECT;
    node.lineNr = lineOf(e, use.value->place);
    const RecNr nr = ts.tree().addV(node);
    governBy(e, ts, nr, placeOfNode(ts, classNode(e, ts, use.objectClass)));
    const bool isDefined = use.definition != nullptr &&
                           (use.scope == nullptr || use.scope->definition == nullptr);
    if (isDefined && referToValue(e, ts, nr, use.definition))
        return nr;
    ts.tree().v(nr).compStatus = INLINE_OBJECT;
    fillObject(e, ts, nr, use);
    return nr;
}

RecNr emitObjectReference(Emitter &e, TreeState &ts, ValueUse value, ClassUse objectClass,
                          int status) {
    if (!value || !objectClass)
        return 0;
    const ObjectUse use = objectOf(e.c, value, objectClass);
    if (!use) {
        refuse(e, value.value->place, "a tree can't hold this object");
        return 0;
    }
    return emitObject(e, ts, use, status);
}

} // namespace asntree
