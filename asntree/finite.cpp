#include "asntree/check.h"

#include "asntree/constraints.h"

/* Types of finite size. A type is one if it is builtin, or a SEQUENCE or SET whose mandatory
   components are, or a CHOICE with an alternative that is; a list is one if it may be empty, or if
   its elements are. What never turns out to be one holds itself without end. */

namespace asntree {

namespace {

struct FiniteSearch {
    Compilation &c;
    std::unordered_set<UseKey, UseHash> finite;
    /* Definitions to be asked again as soon as the key is known to be finite. */
    std::unordered_map<UseKey, std::vector<TypeUse>, UseHash> waiting;
};

/* A list that its own SIZE keeps from being empty. */
bool isNeverEmpty(FiniteSearch &search, TypeUse list) {
    if (list.type->constraints.empty())
        return false;
    const NumberSet sizes = sizesOf(search.c, list, ExtensionView::Root);
    return !sizes.empty() && Number::of(0) < sizes.lower();
}

/* True if the type is known to be finite. If not, `blocker` is a type that it waits for. */
bool isFinite(FiniteSearch &search, TypeUse use, TypeUse &blocker, int depth) {
    if (!use || depth > DepthGuard::MAX_DEPTH)
        return true;
    switch (use.type->kind) {
    case TypeKind::Reference:
    case TypeKind::Selection:
    case TypeKind::Field: {
        const TypeUse next = follow(search.c, use);
        if (!next || search.finite.count({next.type, next.scope}) != 0)
            return true;
        const Assignment *definition = definitionOf(search.c, use);
        if (definition == nullptr || definition->kind != AssignmentKind::Type)
            return isFinite(search, next, blocker, depth + 1); /* it stands in no definition */
        blocker = next;
        return false;
    }
    case TypeKind::Sequence:
    case TypeKind::Set:
        for (const Component &component : use.type->components)
            if (component.type != nullptr && component.presence == Presence::Mandatory &&
                !isFinite(search, {component.type, use.scope}, blocker, depth + 1))
                return false;
        return true;
    case TypeKind::Choice: {
        bool some = false, alternatives = false;
        for (const Component &component : use.type->components) {
            if (component.type == nullptr)
                continue;
            alternatives = true;
            some = some || isFinite(search, {component.type, use.scope}, blocker, depth + 1);
        }
        return some || !alternatives;
    }
    case TypeKind::SequenceOf:
    case TypeKind::SetOf:
        return !isNeverEmpty(search, use) ||
               isFinite(search, {use.type->element, use.scope}, blocker, depth + 1);
    default:
        return true;
    }
}

/* What a CHOICE waits for: each of its alternatives may free it, so it is registered at all. */
void waitFor(FiniteSearch &search, TypeUse definition, TypeUse use, int depth) {
    if (!use || depth > DepthGuard::MAX_DEPTH)
        return;
    if (use.type->kind == TypeKind::Choice || use.type->kind == TypeKind::Sequence ||
        use.type->kind == TypeKind::Set) {
        for (const Component &component : use.type->components)
            if (component.type != nullptr && component.presence == Presence::Mandatory)
                waitFor(search, definition, {component.type, use.scope}, depth + 1);
        return;
    }
    if (use.type->kind == TypeKind::SequenceOf || use.type->kind == TypeKind::SetOf) {
        if (isNeverEmpty(search, use))
            waitFor(search, definition, {use.type->element, use.scope}, depth + 1);
        return;
    }
    TypeUse blocker;
    if (!isFinite(search, use, blocker, depth) && blocker)
        search.waiting[{blocker.type, blocker.scope}].push_back(definition);
}

void settle(FiniteSearch &search, TypeUse first) {
    std::vector<TypeUse> work{first};
    while (!work.empty()) {
        const TypeUse use = work.back();
        work.pop_back();
        const UseKey key{use.type, use.scope};
        TypeUse blocker;
        if (search.finite.count(key) != 0 || !isFinite(search, use, blocker, 0))
            continue;
        search.finite.insert(key);
        if (auto found = search.waiting.find(key); found != search.waiting.end()) {
            work.insert(work.end(), found->second.begin(), found->second.end());
            search.waiting.erase(found);
        }
    }
}

struct Definition {
    TypeUse use;
    Place place;
};

/* Of the types that wait for one another in a circle, and of those that wait for them, the first one
   that is a definition itself is told. `path` is what waits for `from`, in order. */
void reportEndless(FiniteSearch &search, const std::vector<Definition> &path, std::size_t from) {
    const Definition *first = nullptr;
    const auto isBefore = [](const Definition &a, const Definition &b) {
        const bool instanceA = a.use.scope->definition != nullptr;
        const bool instanceB = b.use.scope->definition != nullptr;
        if (instanceA != instanceB)
            return instanceB;
        return a.place.file != b.place.file ? a.place.file < b.place.file
                                            : a.place.offset < b.place.offset;
    };
    for (std::size_t i = from; i < path.size(); ++i)
        if (first == nullptr || isBefore(path[i], *first))
            first = &path[i];
    if (first != nullptr)
        error(search.c.diagnostics, first->place,
              "no value of this type has a finite size: it always holds itself");
}

/* Goes from a type that is not finite to what it waits for, and so on, until that comes back. */
void followEndless(FiniteSearch &search, const std::unordered_map<UseKey, Place, UseHash> &places,
                   Definition at, std::unordered_set<UseKey, UseHash> &told) {
    std::vector<Definition> path;
    std::unordered_map<UseKey, std::size_t, UseHash> positions;
    for (;;) {
        const UseKey key{at.use.type, at.use.scope};
        if (told.count(key) != 0)
            break; /* leads to what was told */
        if (auto [known, isNew] = positions.emplace(key, path.size()); !isNew) {
            reportEndless(search, path, known->second);
            break;
        }
        path.push_back(at);
        TypeUse blocker;
        isFinite(search, at.use, blocker, 0);
        const auto place = places.find({blocker.type, blocker.scope});
        if (place == places.end()) {
            reportEndless(search, path, path.size() - 1);
            break;
        }
        at = {blocker, place->second};
    }
    for (const Definition &passed : path)
        told.insert({passed.use.type, passed.use.scope});
}

} // namespace

void checkFiniteSizes(Compilation &c) {
    FiniteSearch search{c, {}, {}};
    std::vector<std::pair<TypeUse, Place>> all;
    for (const auto &info : c.modules)
        for (const Assignment *assignment : info->syntax->assignments)
            if (assignment->kind == AssignmentKind::Type && !assignment->parameterized &&
                !classOf(c, {assignment->type, &info->root}))
                all.push_back({{assignment->type, &info->root}, assignment->name.place});
    for (const auto &[instance, scope] : c.instances)
        if (instance.definition->kind == AssignmentKind::Type)
            all.push_back({{instance.definition->type, scope.get()}, instance.definition->name.place});
    for (const auto &[use, place] : all) {
        settle(search, use);
        if (search.finite.count({use.type, use.scope}) == 0)
            waitFor(search, use, use, 0);
        settle(search, use);
    }
    std::unordered_map<UseKey, Place, UseHash> endless;
    for (const auto &[use, place] : all)
        if (search.finite.count({use.type, use.scope}) == 0 && baseOf(c, use))
            endless.emplace(UseKey{use.type, use.scope}, place);
    std::unordered_set<UseKey, UseHash> told;
    for (const auto &[use, place] : all)
        if (endless.count({use.type, use.scope}) != 0)
            followEndless(search, endless, {use, place}, told);
}

} // namespace asntree
