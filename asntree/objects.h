#pragma once

#include "asntree/classes.h"

/* Information objects and sets of them, read by their class. */

namespace asntree {

/* An object: a definition, one written in line, or an argument. */
struct ObjectUse {
    const Value *value = nullptr; /* kind Braced or Object: the object as it is written */
    const Scope *scope = nullptr;
    ClassUse objectClass;
    const Assignment *definition = nullptr; /* the definition that holds it; null: in line */
    explicit operator bool() const { return value != nullptr; }
};

/* What one field of an object holds. Which members count says `kind`. */
struct Setting {
    const ClassField *field = nullptr;
    FieldKind kind = FieldKind::Type;
    bool given = false;     /* false: the field is absent, or `byDefault` */
    bool byDefault = false; /* the class's DEFAULT, with the members below */
    Place place;
    TypeUse type;      /* Type */
    ValueUse value;    /* FixedValue, VariableValue, Object */
    TypeUse governor;  /* of values and sets, with variable types settled by this object */
    SetUse set;        /* FixedSet, VariableSet, ObjectSet */
};

struct ObjectInfo {
    ObjectUse use;
    std::vector<Setting> settings; /* one for each field, in the order of the class */
    bool sound = false;            /* false: something was reported */
};

struct ObjectSetInfo {
    std::vector<ObjectUse> objects; /* all of them, sets in it expanded, each object once */
    bool extensible = false;
    bool simple = true; /* a union of objects and sets, as written; no EXCEPT, ^ or field paths */
    bool sound = false;
    bool done = false; /* false while it is read */
};

/* The object that a value in the position of an object stands for, behind references and field
   paths (`object.&field`); empty after a message. */
ObjectUse objectOf(Compilation &c, ValueUse use, ClassUse objectClass);
/* What the DEFAULT of a field that has one holds; a field of variable type has no governor. */
Setting defaultSetting(Compilation &c, ClassUse objectClass, const ClassField &field);
/* Reads an object once; never null. */
const ObjectInfo &readObject(Compilation &c, const ObjectUse &use);
/* Reads a set once; never null. For a definition: the set of its tokens. */
const ObjectSetInfo &readObjectSet(Compilation &c, SetUse use, ClassUse objectClass);
/* The set that a definition of kind Set, or a reference to one, means: its elements. */
SetUse setOf(Compilation &c, const Reference &reference, const Scope *scope);
SetUse setOfDefinition(Compilation &c, const Assignment *assignment, const Scope *scope);

/* object.&a.&b and Set.&a.&b: what the last step gives, one setting for an object, any number for
   a set. */
std::vector<Setting> settingsOf(Compilation &c, const Reference &reference,
                                const std::vector<Name> &fields,
                                const std::vector<bool> &fieldIsUpper, const Scope *scope);

} // namespace asntree
