#include "asntree/reading.h"

/* Which types' values may stand for one another, and what types are called. */

namespace asntree {

namespace {

constexpr std::string_view valueTexts[] = {
    "TRUE",
    "FALSE",
    "NULL",
    "a number",
    "a number with a fraction or exponent",
    "PLUS-INFINITY",
    "MINUS-INFINITY",
    "NOT-A-NUMBER",
    "a binary string",
    "a hexadecimal string",
    "a character string",
    "a reference",
    "a field of an object",
    "`alternative : value`",
    "`Type : value`",
    "CONTAINING",
    "something in braces",
    "MIN",
    "MAX",
    "an object",
};

/* Structures of great depth or size count as the same: they may refer to themselves. */
struct Comparison {
    static constexpr int MAX_DEPTH = 6;
    Compilation &c;
    int left = 10000; /* pairs of types that may yet be compared */
    int depth = 0;
};

bool sameItems(Compilation &c, TypeUse a, TypeUse b) {
    const auto &items = itemsOf(c, a);
    if (items.size() != itemsOf(c, b).size())
        return false;
    for (const SettledItem &item : items) {
        const SettledItem *other = findItem(c, b, item.item->name.text);
        if (other == nullptr || !(other->number == item.number))
            return false;
    }
    return true;
}

bool compare(Comparison &comparison, TypeUse a, TypeUse b);

bool sameComponents(Comparison &comparison, TypeUse a, TypeUse b) {
    const auto &list = componentsOf(comparison.c, a);
    const auto &other = componentsOf(comparison.c, b);
    if (list.size() != other.size())
        return false;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].name != other[i].name || !compare(comparison, list[i].type, other[i].type))
            return false;
    return true;
}

/* Two strings of characters, whatever the alphabets: a value that doesn't fit shows as such. */
bool areStrings(TypeKind a, TypeKind b) {
    return isCharacterString(a) && isCharacterString(b) && a != TypeKind::CharacterString &&
           b != TypeKind::CharacterString;
}

bool compareKinds(Comparison &comparison, TypeUse a, TypeUse b) {
    const TypeKind kind = a.type->kind;
    if (kind != b.type->kind)
        return areStrings(kind, b.type->kind) || (isIsoTime(kind) && isIsoTime(b.type->kind));
    switch (kind) {
    case TypeKind::Enumerated:
        return sameItems(comparison.c, a, b);
    case TypeKind::Sequence:
    case TypeKind::Set:
    case TypeKind::Choice:
        return sameComponents(comparison, a, b);
    case TypeKind::SequenceOf:
    case TypeKind::SetOf:
        return compare(comparison, {a.type->element, a.scope}, {b.type->element, b.scope});
    default:
        return true;
    }
}

bool compare(Comparison &comparison, TypeUse a, TypeUse b) {
    if (a == b || comparison.depth > Comparison::MAX_DEPTH || --comparison.left < 0)
        return true;
    a = baseOf(comparison.c, a);
    b = baseOf(comparison.c, b);
    if (!a || !b || a == b) /* an empty one was reported */
        return true;
    const TypeKind kinds[] = {a.type->kind, b.type->kind};
    for (const TypeKind kind : kinds)
        if (kind == TypeKind::Macro || kind == TypeKind::Bad)
            return true;
    if (isOpen(kinds[0]) || isOpen(kinds[1]))
        return isOpen(kinds[0]) && isOpen(kinds[1]);
    ++comparison.depth;
    const bool same = compareKinds(comparison, a, b);
    --comparison.depth;
    return same;
}

} // namespace

std::string_view kindText(ValueKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < std::size(valueTexts) ? valueTexts[index] : "this";
}

std::string describeType(TypeUse type) {
    if (!type)
        return "a type";
    if (type.type->kind == TypeKind::Reference || type.type->kind == TypeKind::Macro)
        return quote(textOf(type.type->ref));
    if (type.type->kind != TypeKind::Field)
        return std::string(kindText(type.type->kind));
    std::string text = textOf(type.type->ref);
    for (const Name &field : type.type->fields)
        text.append(".&").append(field.text);
    return quote(text);
}

bool compatible(Compilation &c, TypeUse a, TypeUse b) {
    Comparison comparison{c};
    return compare(comparison, a, b);
}

} // namespace asntree
