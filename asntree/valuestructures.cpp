#include <algorithm>

#include "asntree/objects.h"
#include "asntree/reading.h"

/* Values made of other values: structures, lists, choices, and values of open types. */

namespace asntree {

namespace {

void keepMembers(Reading &r, DatumKind kind, std::vector<DatumMember> members) {
    r.datum.kind = kind;
    r.datum.members = memosOf(r.c).members.emplace_back(std::move(members));
}

bool isSound(const std::vector<DatumMember> &members) {
    return std::none_of(members.begin(), members.end(), [](const DatumMember &member) {
        return member.value->kind == DatumKind::Bad;
    });
}

DatumMember readMember(Reading &r, const SettledComponent &component, const Value *value) {
    return {component.component, component.name, component.type,
            readAnew(r.c, {value, r.use.scope}, component.type)};
}

void reportUnknown(Reading &r, const Name &name, std::string_view what) {
    std::vector<std::string_view> candidates;
    for (const SettledComponent &component : componentsOf(r.c, r.base))
        candidates.push_back(component.name);
    const std::string_view near = nearestName(name.text, candidates);
    std::vector<Remark> remarks;
    if (!near.empty())
        remarks.push_back({{}, "did you mean " + quote(near) + "?"});
    error(r.c.diagnostics, name.place,
          describeType(r.governor) + " has no " + std::string(what) + " " + quote(name.text),
          remarks);
}

/* The components of a value in their places. */
struct Filling {
    Reading &r;
    const std::vector<SettledComponent> &components;
    std::vector<const NamedValue *> given; /* parallel; null: not given */
    std::size_t next = 0;                  /* of a SEQUENCE: behind the last one given */
    bool slipped = false;
};

bool placeNamed(Filling &f, const NamedValue &part) {
    Reading &r = f.r;
    const SettledComponent *component = findComponent(r.c, r.base, part.name.text);
    if (component == nullptr) {
        reportUnknown(r, part.name, "component");
        return false;
    }
    const auto index = static_cast<std::size_t>(component - f.components.data());
    if (f.given[index] != nullptr) {
        error(r.c.diagnostics, part.name.place,
              "the component " + quote(part.name.text) + " is given twice",
              {{f.given[index]->place, "first given here"}});
        return false;
    }
    if (index < f.next && r.base.type->kind == TypeKind::Sequence) {
        error(r.c.diagnostics, part.name.place,
              "the component " + quote(part.name.text) +
                  " is out of order: values of a SEQUENCE have its order");
        return false;
    }
    f.given[index] = &part;
    f.next = index + 1;
    return true;
}

/* A value without a name stands for the next component. That was the way of 1988 for components
   without identifier. */
bool placeNext(Filling &f, const NamedValue &part) {
    Reading &r = f.r;
    while (f.next < f.components.size() && f.given[f.next] != nullptr)
        ++f.next;
    if (f.next == f.components.size()) {
        error(r.c.diagnostics, part.place,
              "the value has more components than " + describeType(r.governor));
        return false;
    }
    if (f.components[f.next].component->name.given() && !f.slipped) {
        slip(r.c.diagnostics, part.place,
             "the value of the component " + quote(f.components[f.next].name) +
                 " stands without its name");
        f.slipped = true;
    }
    f.given[f.next++] = &part;
    return true;
}

bool checkComplete(Filling &f) {
    std::string missing;
    int count = 0;
    for (std::size_t i = 0; i < f.components.size(); ++i) {
        const SettledComponent &component = f.components[i];
        if (f.given[i] != nullptr || component.addition ||
            component.component->presence != Presence::Mandatory)
            continue;
        if (++count <= 3)
            missing += (missing.empty() ? "" : ", ") + quote(component.name);
    }
    if (count == 0)
        return true;
    if (count > 3)
        missing += " and others";
    error(f.r.c.diagnostics, f.r.value().place,
          std::string(count == 1 ? "the component " : "the components ") + missing +
              (count == 1 ? ", which is not OPTIONAL, is" : ", which are not OPTIONAL, are") +
              " missing in the value of " + describeType(f.r.governor));
    return false;
}

} // namespace

void readStructure(Reading &r) {
    if (r.value().kind != ValueKind::Braced) {
        reportMismatch(r, "its components in braces");
        return;
    }
    ParseContext parsing = r.c.parsing();
    const auto parts = readNamedValues(parsing, r.value().tokens);
    if (parts.empty() && !r.value().tokens.empty())
        return;
    Filling filling{r, componentsOf(r.c, r.base), {}};
    filling.given.resize(filling.components.size());
    for (const NamedValue &part : parts)
        if (!(part.name.given() ? placeNamed(filling, part) : placeNext(filling, part)))
            return;
    std::vector<DatumMember> members;
    for (std::size_t i = 0; i < filling.components.size(); ++i)
        if (filling.given[i] != nullptr)
            members.push_back(readMember(r, filling.components[i], filling.given[i]->value));
    if (isSound(members) && checkComplete(filling))
        keepMembers(r, DatumKind::Structure, std::move(members));
}

namespace {

/* Elements that stand behind the identifier of the list's type. */
std::vector<const Value *> namedElements(Reading &r, bool &sound) {
    ParseContext parsing = r.c.parsing();
    std::vector<const Value *> values;
    const Name &identifier = r.base.type->identifier;
    for (const NamedValue &part : readNamedValues(parsing, r.value().tokens)) {
        if (!part.name.given()) {
            error(r.c.diagnostics, part.place,
                  "each element of " + describeType(r.governor) + " has the name " +
                      quote(identifier.text) + " in front");
            sound = false;
            return {};
        }
        if (part.name.text != identifier.text) {
            error(r.c.diagnostics, part.name.place,
                  "the elements of " + describeType(r.governor) + " are called " +
                      quote(identifier.text) + ", not " + quote(part.name.text));
            sound = false;
            return {};
        }
        values.push_back(part.value);
    }
    return values;
}

} // namespace

void readList(Reading &r) {
    if (r.value().kind != ValueKind::Braced) {
        reportMismatch(r, "its elements in braces");
        return;
    }
    bool sound = true;
    std::vector<const Value *> values;
    if (r.base.type->identifier.given()) {
        values = namedElements(r, sound);
    } else {
        ParseContext parsing = r.c.parsing();
        for (const Value *value : readValueList(parsing, r.value().tokens))
            values.push_back(value);
    }
    if (!sound || (values.empty() && !r.value().tokens.empty()))
        return;
    const TypeUse element{r.base.type->element, r.base.scope};
    std::vector<DatumMember> members;
    members.reserve(values.size());
    for (const Value *value : values)
        members.push_back({nullptr, {}, element, readAnew(r.c, {value, r.use.scope}, element)});
    if (isSound(members))
        keepMembers(r, DatumKind::List, std::move(members));
}

namespace {

void readAlternative(Reading &r, const Name &name, const Value *value) {
    const SettledComponent *component = findComponent(r.c, r.base, name.text);
    if (component == nullptr) {
        reportUnknown(r, name, "alternative");
        return;
    }
    std::vector<DatumMember> members{readMember(r, *component, value)};
    if (isSound(members))
        keepMembers(r, DatumKind::Choice, std::move(members));
}

} // namespace

void readChoice(Reading &r) {
    const Value &value = r.value();
    NamedValue pair;
    if (value.kind == ValueKind::Choice) {
        readAlternative(r, value.ref.name, value.inner);
        return;
    }
    if (value.kind == ValueKind::Braced) { /* { alternative value } of 1988 */
        ParseContext parsing = r.c.parsing();
        if (readPair(parsing, value.tokens, pair) && pair.value != nullptr) {
            slip(r.c.diagnostics, value.place,
                 "the value of a CHOICE is written as `alternative : value`");
            readAlternative(r, pair.name, pair.value);
            return;
        }
    }
    reportMismatch(r, "`alternative : value`");
}

bool readChoiceWithoutColon(Reading &r) {
    const Value &value = r.value();
    if (r.base.type->kind != TypeKind::Choice || !value.ref.hasParameters ||
        !value.tokens.given() || findComponent(r.c, r.base, value.ref.name.text) == nullptr)
        return false;
    Value *inner = newValue(r.c.arena, ValueKind::Braced, value.place);
    inner->end = value.end;
    inner->tokens = value.tokens;
    slip(r.c.diagnostics, value.place, "\":\" is missing between an alternative and its value");
    readAlternative(r, value.ref.name, inner);
    return true;
}

namespace {

/* The type that a value without one can only be of. */
std::optional<TypeKind> obviousType(ValueKind kind) {
    switch (kind) {
    case ValueKind::Null:
        return TypeKind::Null;
    case ValueKind::True:
    case ValueKind::False:
        return TypeKind::Boolean;
    case ValueKind::Number:
        return TypeKind::Integer;
    default:
        return std::nullopt;
    }
}

void keepOpen(Reading &r, TypeUse type, const Value *value, DatumKind kind) {
    std::vector<DatumMember> members{
        {nullptr, {}, type, readAnew(r.c, {value, r.use.scope}, type)}};
    if (!isSound(members))
        return;
    keepMembers(r, kind, std::move(members));
    r.datum.type = type;
}

} // namespace

void readOpen(Reading &r) {
    const Value &value = r.value();
    if (value.kind == ValueKind::Typed) {
        keepOpen(r, {value.type, r.use.scope}, value.inner, DatumKind::Open);
        return;
    }
    const auto kind = obviousType(value.kind);
    if (!kind) {
        reportMismatch(r, "`Type : value`");
        return;
    }
    slip(r.c.diagnostics, value.place,
         "a value of an open type is written with its type: `Type : value`");
    keepOpen(r, builtinType(r.c, *kind), &value, DatumKind::Open);
}

namespace {

/* The type behind CONTAINING in the constraints of a string; empty if there is none. */
TypeUse containedType(Compilation &c, TypeUse type) {
    for (int steps = 0; type && steps < 1000; ++steps) {
        for (const ConstraintSpec *spec : type.type->constraints)
            if (spec->root != nullptr && spec->root->kind == ConstraintKind::Contents &&
                spec->root->type != nullptr)
                return {spec->root->type, type.scope};
        type = follow(c, type);
    }
    return {};
}

} // namespace

void readContaining(Reading &r) {
    const TypeKind kind = r.base.type->kind;
    if (kind != TypeKind::BitString && kind != TypeKind::OctetString) {
        error(r.c.diagnostics, r.value().place,
              "CONTAINING makes a value of BIT STRING or OCTET STRING, not of " +
                  describeType(r.governor));
        return;
    }
    const TypeUse type = containedType(r.c, r.governor);
    if (!type) {
        error(r.c.diagnostics, r.value().place,
              describeType(r.governor) + " has no constraint CONTAINING");
        return;
    }
    keepOpen(r, type, r.value().inner, DatumKind::Containing);
}

} // namespace asntree
