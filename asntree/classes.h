#pragma once

#include "asntree/names.h"

/* Classes and their fields; what CLASS.&field.&x means as a type. */

namespace asntree {

enum class FieldKind : std::uint8_t {
    Type,          /* &Type */
    FixedValue,    /* &value INTEGER */
    VariableValue, /* &value &Type */
    FixedSet,      /* &Set INTEGER */
    VariableSet,   /* &Set &Type */
    Object,        /* &object CLASS */
    ObjectSet,     /* &Objects CLASS */
};

FieldKind fieldKind(Compilation &c, ClassUse objectClass, const ClassField &field);
/* Null if the class has no field of that name. */
const ClassField *findField(ClassUse objectClass, std::string_view name, bool upper);
/* The governor of a field as a use: a type, or a class for objects and object sets. */
inline TypeUse governorOf(ClassUse objectClass, const ClassField &field) {
    return {field.governor, objectClass.scope};
}

/* Where the steps of CLASS.&a.&b lead. */
struct FieldTarget {
    ClassUse objectClass;              /* of the first step */
    std::vector<const ClassField *> path;
    ClassUse lastClass;                /* of the last step */
    FieldKind kind = FieldKind::Type;  /* of the last step */
    const ClassField *last() const { return path.empty() ? nullptr : path.back(); }
    explicit operator bool() const { return !path.empty(); }
};

/* For a type of kind Field whose reference is a class (empty without a message for one that is an
   object or object set). Reports fields that aren't there. */
FieldTarget fieldTarget(Compilation &c, TypeUse use);

/* True for an open type: a Field that leads to a type field or to a field of variable type. */
bool isOpenType(Compilation &c, TypeUse use);

} // namespace asntree
