#include "asntree/classes.h"

namespace asntree {

FieldKind fieldKind(Compilation &c, ClassUse objectClass, const ClassField &field) {
    if (!field.path.empty())
        return field.upper ? FieldKind::VariableSet : FieldKind::VariableValue;
    if (field.governor == nullptr)
        return FieldKind::Type;
    if (classOf(c, governorOf(objectClass, field)))
        return field.upper ? FieldKind::ObjectSet : FieldKind::Object;
    return field.upper ? FieldKind::FixedSet : FieldKind::FixedValue;
}

const ClassField *findField(ClassUse objectClass, std::string_view name, bool upper) {
    for (const ClassField &field : objectClass.objectClass->fields)
        if (field.name.text == name && field.upper == upper)
            return &field;
    return nullptr;
}

namespace {

void reportNoField(Compilation &c, const Name &name, ClassUse objectClass) {
    std::vector<std::string_view> candidates;
    for (const ClassField &field : objectClass.objectClass->fields)
        candidates.push_back(field.name.text);
    const std::string_view near = nearestName(name.text, candidates);
    std::vector<Remark> remarks{{objectClass.objectClass->place, "the class"}};
    if (!near.empty())
        remarks.push_back({{}, "did you mean `&" + std::string(near) + "`?"});
    error(c.diagnostics, name.place, "the class has no field `&" + std::string(name.text) + "`",
          remarks);
}

} // namespace

FieldTarget fieldTarget(Compilation &c, TypeUse use) {
    FieldTarget result;
    if (!use || use.type->kind != TypeKind::Field)
        return result;
    Type governor;
    governor.kind = TypeKind::Reference;
    governor.ref = use.type->ref;
    ClassUse objectClass = classOf(c, {&governor, use.scope});
    if (!objectClass)
        return result;
    result.objectClass = objectClass;
    for (std::size_t i = 0; i < use.type->fields.size(); ++i) {
        const Name &name = use.type->fields[i];
        const ClassField *field =
            objectClass ? findField(objectClass, name.text, use.type->fieldIsUpper[i]) : nullptr;
        if (field == nullptr) {
            if (objectClass)
                reportNoField(c, name, objectClass);
            return {};
        }
        result.path.push_back(field);
        result.lastClass = objectClass;
        result.kind = fieldKind(c, objectClass, *field);
        objectClass = classOf(c, governorOf(objectClass, *field));
    }
    return result;
}

bool isOpenType(Compilation &c, TypeUse use) {
    if (!use || use.type->kind != TypeKind::Field)
        return false;
    const FieldTarget target = fieldTarget(c, use);
    return target && (target.kind == FieldKind::Type || target.kind == FieldKind::VariableValue ||
                      target.kind == FieldKind::VariableSet);
}

} // namespace asntree
