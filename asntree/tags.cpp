#include "asntree/tags.h"

#include <algorithm>
#include <map>

namespace asntree {

namespace {

/* The universal tag of a builtin type; 0 for those without one. */
int universalTag(TypeKind kind) {
    switch (kind) {
    case TypeKind::Boolean:
        return 1;
    case TypeKind::Integer:
        return 2;
    case TypeKind::BitString:
        return 3;
    case TypeKind::OctetString:
        return 4;
    case TypeKind::Null:
        return 5;
    case TypeKind::ObjectIdentifier:
        return 6;
    case TypeKind::ObjectDescriptor:
        return 7;
    case TypeKind::External:
    case TypeKind::InstanceOf:
        return 8;
    case TypeKind::Real:
        return 9;
    case TypeKind::Enumerated:
        return 10;
    case TypeKind::EmbeddedPdv:
        return 11;
    case TypeKind::Utf8String:
        return 12;
    case TypeKind::RelativeOid:
        return 13;
    case TypeKind::Time:
        return 14;
    case TypeKind::Sequence:
    case TypeKind::SequenceOf:
        return 16;
    case TypeKind::Set:
    case TypeKind::SetOf:
        return 17;
    case TypeKind::NumericString:
        return 18;
    case TypeKind::PrintableString:
        return 19;
    case TypeKind::TeletexString:
        return 20;
    case TypeKind::VideotexString:
        return 21;
    case TypeKind::Ia5String:
        return 22;
    case TypeKind::UtcTime:
        return 23;
    case TypeKind::GeneralizedTime:
        return 24;
    case TypeKind::GraphicString:
        return 25;
    case TypeKind::VisibleString:
        return 26;
    case TypeKind::GeneralString:
        return 27;
    case TypeKind::UniversalString:
        return 28;
    case TypeKind::CharacterString:
        return 29;
    case TypeKind::BmpString:
        return 30;
    case TypeKind::Date:
        return 31;
    case TypeKind::TimeOfDay:
        return 32;
    case TypeKind::DateTime:
        return 33;
    case TypeKind::Duration:
        return 34;
    case TypeKind::OidIri:
        return 35;
    case TypeKind::RelativeOidIri:
        return 36;
    default:
        return 0;
    }
}

/* The type at which a chain of references has its outermost tag: the first one that is tagged, or
   the base. */
TypeUse taggedOrBase(Compilation &c, TypeUse type) {
    const TypeUse base = baseOf(c, type);
    while (base && type && type != base && type.type->tags.empty())
        type = follow(c, type);
    return base ? type : TypeUse{};
}

void appendOuterTags(Compilation &c, TypeUse type, std::vector<Tag> &tags);

void appendAlternatives(Compilation &c, TypeUse choice, std::vector<Tag> &tags) {
    const std::vector<SettledComponent> &alternatives = componentsOf(c, choice);
    if (hasAutomaticTags(c, choice)) {
        for (std::size_t i = 0; i < alternatives.size(); ++i)
            tags.push_back({TagClassWord::Context, static_cast<std::int64_t>(i)});
        return;
    }
    for (const SettledComponent &alternative : alternatives)
        appendOuterTags(c, alternative.type, tags);
}

void appendOuterTags(Compilation &c, TypeUse type, std::vector<Tag> &tags) {
    DepthGuard guard(c);
    if (!guard.ok)
        return;
    const TypeUse use = taggedOrBase(c, type);
    if (!use)
        return;
    if (!use.type->tags.empty()) {
        const TagSpec &tag = use.type->tags.front();
        tags.push_back({tag.tagClass, tagNumber(c, tag, use.scope)});
    } else if (use.type->kind == TypeKind::Choice) {
        appendAlternatives(c, use, tags);
    } else if (const int number = universalTag(use.type->kind); number != 0) {
        tags.push_back({TagClassWord::Universal, number});
    }
}

/* Tags that one component claims, in a message against another. */
struct Claims {
    Compilation &c;
    TypeUse structure;
    std::map<Tag, const Component *> owners;

    void add(const Component &component, const std::vector<Tag> &tags, const char *rule) {
        for (const Tag &tag : tags) {
            auto [place, isNew] = owners.emplace(tag, &component);
            if (isNew || place->second == &component)
                continue;
            error(c.diagnostics, component.place,
                  "`" + std::string(component.name.text) + "` has the tag " + textOf(tag) +
                      " of `" + std::string(place->second->name.text) + "`: " + rule,
                  {{place->second->place, "the other one"}});
            return;
        }
    }
};

void checkAllDistinct(Compilation &c, TypeUse structure, const char *rule) {
    Claims claims{c, structure, {}};
    for (const SettledComponent &part : componentsOf(c, structure))
        claims.add(*part.component, outerTags(c, part.type), rule);
}

/* In a SEQUENCE only the components of a run of OPTIONAL and DEFAULT ones, and the one behind it,
   have to be told apart. What may be missing of the root is followed by additions, and these by the
   second root. */
void checkRuns(Compilation &c, TypeUse structure) {
    constexpr const char *rule =
        "a run of OPTIONAL components and the one behind it need distinct tags";
    Claims claims{c, structure, {}};
    for (const SettledComponent &part : componentsOf(c, structure)) {
        claims.add(*part.component, outerTags(c, part.type), rule);
        if (part.component->presence == Presence::Mandatory)
            claims.owners.clear();
    }
}

} // namespace

bool hasAutomaticTags(Compilation &c, TypeUse structure) {
    (void)c;
    if (!structure || structure.scope->module->syntax->tags != TagDefault::Automatic)
        return false;
    return std::none_of(structure.type->components.begin(), structure.type->components.end(),
                        [](const Component &component) {
                            return component.kind == ComponentKind::Component &&
                                   component.type != nullptr && !component.type->tags.empty();
                        });
}

std::vector<std::int64_t> automaticNumbers(Compilation &c, TypeUse structure) {
    const std::vector<SettledComponent> &components = componentsOf(c, structure);
    std::vector<std::int64_t> numbers(components.size());
    std::int64_t next = 0;
    for (const bool additions : {false, true})
        for (std::size_t i = 0; i < components.size(); ++i)
            if (components[i].addition == additions)
                numbers[i] = next++;
    return numbers;
}

std::vector<Tag> outerTags(Compilation &c, TypeUse type) {
    std::vector<Tag> tags;
    appendOuterTags(c, type, tags);
    return tags;
}

bool isUntagged(Compilation &c, TypeUse type) {
    const TypeUse use = taggedOrBase(c, type);
    return use && use.type->tags.empty() &&
           (use.type->kind == TypeKind::Choice || use.type->kind == TypeKind::Any ||
            use.type->kind == TypeKind::Field);
}

std::int64_t tagNumber(Compilation &c, const TagSpec &tag, const Scope *scope) {
    const std::optional<Number> number = integerOf(c, {tag.number, scope});
    if (!number)
        return 0;
    const std::optional<std::int64_t> small = asInt64(*number);
    if (small && *small >= 0 && *small <= 0x7FFFFFFF)
        return *small;
    error(c.diagnostics, tag.place,
          "a tag's number lies between 0 and 2147483647, this one is " + textOf(*number));
    return 0;
}

std::string textOf(const Tag &tag) {
    constexpr const char *words[] = {"UNIVERSAL ", "APPLICATION ", "", "PRIVATE "};
    return "[" + std::string(words[static_cast<int>(tag.tagClass)]) + std::to_string(tag.number) +
           "]";
}

void checkTags(Compilation &c, TypeUse structure) {
    if (hasAutomaticTags(c, structure))
        return;
    if (structure.type->kind == TypeKind::Choice)
        checkAllDistinct(c, structure, "alternatives of a CHOICE need distinct tags");
    else if (structure.type->kind == TypeKind::Set)
        checkAllDistinct(c, structure, "components of a SET need distinct tags");
    else
        checkRuns(c, structure);
}

} // namespace asntree
