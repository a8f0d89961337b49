#include "asntree/tags.h"

#include <algorithm>
#include <map>

namespace asntree {

namespace {

/* The type at which a chain of references has its outermost tag: the first one that is tagged, or
   the base. */
TypeUse taggedOrBase(Compilation &c, TypeUse type) {
    const TypeUse base = baseOf(c, type);
    while (base && type && type != base && type.type->tags.empty())
        type = follow(c, type);
    return base ? type : TypeUse{};
}

struct OuterTags {
    std::vector<Tag> tags;
    std::unordered_set<UseKey, UseHash> choices; /* that were gone through */
};

void appendOuterTags(Compilation &c, TypeUse type, OuterTags &outer);

void appendAlternatives(Compilation &c, TypeUse choice, OuterTags &outer) {
    if (!outer.choices.insert({choice.type, choice.scope}).second)
        return; /* choices that hold one another twice would be endless work */
    const std::vector<SettledComponent> &alternatives = componentsOf(c, choice);
    if (hasAutomaticTags(c, choice)) {
        for (std::size_t i = 0; i < alternatives.size(); ++i)
            outer.tags.push_back({TagClassWord::Context, static_cast<std::int64_t>(i)});
        return;
    }
    for (const SettledComponent &alternative : alternatives)
        appendOuterTags(c, alternative.type, outer);
}

void appendOuterTags(Compilation &c, TypeUse type, OuterTags &outer) {
    DepthGuard guard(c);
    if (!guard.ok)
        return;
    const TypeUse use = taggedOrBase(c, type);
    if (!use)
        return;
    if (!use.type->tags.empty()) {
        const TagSpec &tag = use.type->tags.front();
        outer.tags.push_back({tag.tagClass, tagNumber(c, tag, use.scope)});
    } else if (use.type->kind == TypeKind::Choice) {
        appendAlternatives(c, use, outer);
    } else if (const auto *row = builtinKind(use.type->kind); row != nullptr && row->tag != 0) {
        outer.tags.push_back({TagClassWord::Universal, row->tag});
    }
}

bool isOpenUntagged(Compilation &c, TypeUse type) {
    const TypeUse use = taggedOrBase(c, type);
    return use && use.type->tags.empty() &&
           (use.type->kind == TypeKind::Any || use.type->kind == TypeKind::Field);
}

/* Tags that one component claims, in a message against another. */
struct Claims {
    Compilation &c;
    TypeUse structure;
    const char *rule;
    std::map<Tag, const SettledComponent *> owners{};
    bool any = false;  /* something was claimed */
    bool open = false; /* by a type that may have any tag */

    void add(const SettledComponent &part) {
        const Component &component = *part.component;
        const bool isOpen = isOpenUntagged(c, part.type);
        if (any && (open || isOpen))
            slip(c.diagnostics, placeIn(c, structure, component),
                 std::string("an open type or ANY may have the tag of its neighbour: ") + rule);
        any = true;
        open = open || isOpen;
        for (const Tag &tag : outerTags(c, part.type)) {
            auto [place, isNew] = owners.emplace(tag, &part);
            if (isNew || place->second == &part)
                continue;
            const SettledComponent &other = *place->second;
            error(c.diagnostics, placeIn(c, structure, component),
                  "`" + std::string(part.name) + "` has the tag " + textOf(tag) + " of `" +
                      std::string(other.name) + "`: " + rule,
                  {{other.component->place, "the other one"}});
            return;
        }
    }
    void clear() {
        owners.clear();
        any = open = false;
    }
};

void checkAllDistinct(Compilation &c, TypeUse structure, const char *rule) {
    Claims claims{c, structure, rule};
    for (const SettledComponent &part : componentsOf(c, structure))
        claims.add(part);
}

/* In a SEQUENCE only the components of a run of OPTIONAL and DEFAULT ones, and the one behind it,
   have to be told apart. What may be missing of the root is followed by additions, and these by the
   second root. */
void checkRuns(Compilation &c, TypeUse structure) {
    constexpr const char *rule =
        "a run of OPTIONAL components and the one behind it need distinct tags";
    Claims claims{c, structure, rule};
    for (const SettledComponent &part : componentsOf(c, structure)) {
        claims.add(part);
        if (part.component->presence == Presence::Mandatory)
            claims.clear();
    }
}

/* A message of the first version goes on with the second root where a later one has additions. */
void checkSecondRoot(Compilation &c, TypeUse structure) {
    std::map<Tag, const SettledComponent *> additions;
    for (const SettledComponent &part : componentsOf(c, structure)) {
        if (part.addition)
            for (const Tag &tag : outerTags(c, part.type))
                additions.emplace(tag, &part);
        if (part.addition || additions.empty())
            continue;
        for (const Tag &tag : outerTags(c, part.type))
            if (const auto found = additions.find(tag); found != additions.end())
                error(c.diagnostics, placeIn(c, structure, *part.component),
                      "`" + std::string(part.name) + "` has the tag " + textOf(tag) + " of `" +
                          std::string(found->second->name) +
                          "`: additions and what follows them need distinct tags",
                      {{found->second->component->place, "the other one"}});
        if (part.component->presence == Presence::Mandatory)
            return;
    }
}

bool hasMarker(TypeUse structure) {
    const auto isMarker = [](const Component &component) {
        return component.kind == ComponentKind::Marker;
    };
    return structure.scope->module->syntax->extensibilityImplied ||
           std::any_of(structure.type->components.begin(), structure.type->components.end(),
                       isMarker);
}

/* A type in whose place a later version may send a tag that isn't known yet. */
bool hasOpenEnd(Compilation &c, TypeUse type) {
    const DepthGuard guard(c);
    const TypeUse use = guard.ok ? taggedOrBase(c, type) : TypeUse{};
    if (!use || !use.type->tags.empty() || use.type->kind != TypeKind::Choice)
        return false;
    if (hasMarker(use))
        return true;
    const std::vector<SettledComponent> &alternatives = componentsOf(c, use);
    return !hasAutomaticTags(c, use) && std::any_of(alternatives.begin(), alternatives.end(),
                                                    [&c](const SettledComponent &alternative) {
                                                        return hasOpenEnd(c, alternative.type);
                                                    });
}

/* A tag that isn't known must lead to one place where it may have been added, not to several: in a
   SEQUENCE those that lie in a run of OPTIONAL components, with the marker behind it. */
void checkOpenEnds(Compilation &c, TypeUse structure) {
    const bool isSequence = structure.type->kind == TypeKind::Sequence;
    const bool extensible = hasMarker(structure);
    const SettledComponent *first = nullptr;
    const auto report = [&](Place place, const std::string &other) {
        slip(c.diagnostics, place,
             "an addition that isn't known could belong here as well as to " + other);
    };
    for (const SettledComponent &part : componentsOf(c, structure)) {
        if (isSequence && part.addition)
            break;
        if (hasOpenEnd(c, part.type)) {
            const Place place = placeIn(c, structure, *part.component);
            if (first != nullptr)
                return report(place, "`" + std::string(first->name) + "`");
            if (!isSequence && extensible)
                return report(place, "the structure around it");
            first = &part;
        }
        if (isSequence && part.component->presence == Presence::Mandatory)
            first = nullptr;
    }
    if (first != nullptr && extensible)
        report(placeIn(c, structure, *first->component), "the structure around it");
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
    OuterTags outer;
    appendOuterTags(c, type, outer);
    return std::move(outer.tags);
}

Place placeIn(Compilation &c, TypeUse structure, const Component &component) {
    for (const Component &own : structure.type->components)
        if (&own == &component)
            return component.place;
    for (const Component &item : structure.type->components) {
        if (item.kind != ComponentKind::ComponentsOf)
            continue;
        const TypeUse other = baseOf(c, {item.type, structure.scope});
        if (other)
            for (const SettledComponent &part : componentsOf(c, other))
                if (part.component == &component)
                    return item.place;
    }
    return component.place;
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

namespace {

bool isTagged(const Component &component) {
    return component.kind == ComponentKind::Component && component.type != nullptr &&
           !component.type->tags.empty();
}

/* Whether tags are automatic is decided by the root alone, lest additions change them; so they may
   have no tags where the root has none. */
void checkTaggedAdditions(Compilation &c, TypeUse structure) {
    if (structure.scope->module->syntax->tags != TagDefault::Automatic)
        return;
    const Component *tagged = nullptr;
    bool untaggedRoot = false;
    int markers = 0;
    for (const Component &component : structure.type->components) {
        if (component.kind == ComponentKind::Marker)
            ++markers;
        else if (markers != 1 && isTagged(component))
            return;
        else if (markers != 1)
            untaggedRoot = true;
        else if (tagged == nullptr && isTagged(component))
            tagged = &component;
    }
    if (untaggedRoot && tagged != nullptr)
        error(
            c.diagnostics, tagged->type->tags.front().place,
            "an addition has no tag where those in front of the \"...\" are tagged automatically");
}

} // namespace

void checkTags(Compilation &c, TypeUse structure) {
    checkTaggedAdditions(c, structure);
    if (hasAutomaticTags(c, structure))
        return;
    if (structure.type->kind == TypeKind::Choice)
        checkAllDistinct(c, structure, "alternatives of a CHOICE need distinct tags");
    else if (structure.type->kind == TypeKind::Set)
        checkAllDistinct(c, structure, "components of a SET need distinct tags");
    else {
        checkRuns(c, structure);
        checkSecondRoot(c, structure);
    }
    checkOpenEnds(c, structure);
}

} // namespace asntree
