#include <algorithm>
#include <unordered_set>

#include "asntree/reading.h"

/* Components of SEQUENCE, SET and CHOICE as a value or constraint sees them. */

namespace asntree {

namespace {

constexpr char LARGE_TO_SMALL = 0x20;

bool isLarge(char c) {
    return c >= 'A' && c <= 'Z';
}

/* A keyword of capitals: "BIT STRING" becomes "bitString". */
std::string nameFromWords(std::string_view words) {
    std::string name;
    bool begins = false;
    for (const char c : words) {
        if (c == ' ' || c == '-') {
            begins = true;
            continue;
        }
        name += begins ? c : static_cast<char>(c | LARGE_TO_SMALL);
        begins = false;
    }
    return name;
}

std::string nameFromType(const Type &type) {
    if (type.kind == TypeKind::Selection)
        return std::string(type.identifier.text);
    if (type.kind == TypeKind::Field && !type.fields.empty()) {
        std::string name(type.fields.back().text);
        name[0] = static_cast<char>(name[0] | LARGE_TO_SMALL);
        return name;
    }
    const bool named = type.kind == TypeKind::Reference || type.kind == TypeKind::Macro;
    const std::string_view text = named ? type.ref.name.text : kindText(type.kind);
    if (!named && std::none_of(text.begin(), text.end(), [](char c) { return c >= 'a'; }))
        return nameFromWords(text);
    std::string name(text);
    if (!name.empty() && isLarge(name[0]))
        name[0] = static_cast<char>(name[0] | LARGE_TO_SMALL);
    return name;
}

/* Names the components that have none, with a number behind a name that is taken. */
void settleNames(Compilation &c, std::vector<SettledComponent> &list) {
    std::unordered_set<std::string_view> taken;
    for (const SettledComponent &component : list)
        taken.insert(component.name);
    std::unordered_map<std::string_view, int> counts;
    for (SettledComponent &component : list) {
        if (!component.name.empty())
            continue;
        std::string &name = memosOf(c).texts.emplace_back(nameFromType(*component.type.type));
        if (taken.count(name) != 0) {
            const std::string stem = name;
            int &count = counts.try_emplace(memosOf(c).texts.emplace_back(stem), 1).first->second;
            do
                name = stem + std::to_string(++count);
            while (taken.count(name) != 0);
        }
        component.name = name;
        taken.insert(component.name);
    }
}

const ComponentTable &componentTable(Compilation &c, TypeUse base);

/* COMPONENTS OF stands for the components of both roots of another type. */
void addComponentsOf(Compilation &c, TypeUse base, const Component &item, bool addition,
                     std::vector<SettledComponent> &out) {
    const TypeUse other = baseOf(c, {item.type, base.scope});
    if (!other)
        return;
    if (other.type->kind != base.type->kind) {
        error(c.diagnostics, item.place,
              "COMPONENTS OF in a " + std::string(kindText(base.type->kind)) + " needs a " +
                  std::string(kindText(base.type->kind)) + ", but " +
                  describeType({item.type, base.scope}) + " is a " +
                  std::string(kindText(other.type->kind)));
        return;
    }
    const DepthGuard guard(c);
    const ComponentTable *table = guard.ok ? &componentTable(c, other) : nullptr;
    if (table == nullptr)
        error(c.diagnostics, item.place, "COMPONENTS OF lie too deep in one another here");
    if (table == nullptr || !table->done)
        return; /* a type that holds itself is reported by the check of sizes */
    constexpr std::size_t MOST = 100000; /* such types may double one another */
    if (out.size() + table->components.size() > MOST) {
        error(c.diagnostics, item.place, "COMPONENTS OF gives too many components");
        return;
    }
    for (const SettledComponent &component : table->components) {
        if (component.addition)
            continue;
        out.push_back(component);
        out.back().addition = addition;
    }
}

const ComponentTable &componentTable(Compilation &c, TypeUse base) {
    const auto [entry, isNew] = memosOf(c).components.try_emplace({base.type, base.scope});
    ComponentTable &table = entry->second;
    if (!isNew)
        return table;
    int markers = 0;
    std::vector<SettledComponent> list;
    for (const Component &component : base.type->components) {
        if (component.kind == ComponentKind::Marker)
            ++markers;
        else if (component.kind == ComponentKind::ComponentsOf)
            addComponentsOf(c, base, component, markers == 1, list);
        else if (component.type != nullptr)
            list.push_back({&component, {component.type, base.scope}, markers == 1, component.name.text});
    }
    settleNames(c, list);
    table.components = std::move(list);
    for (std::size_t i = 0; i < table.components.size(); ++i)
        table.byName.try_emplace(table.components[i].name, i);
    table.done = true;
    return table;
}

} // namespace

const std::vector<SettledComponent> &componentsOf(Compilation &c, TypeUse base) {
    return componentTable(c, base).components;
}

const SettledComponent *findComponent(Compilation &c, TypeUse base, std::string_view name) {
    const ComponentTable &table = componentTable(c, base);
    const auto found = table.byName.find(name);
    return found == table.byName.end() ? nullptr : &table.components[found->second];
}

} // namespace asntree
