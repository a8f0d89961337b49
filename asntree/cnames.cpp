#include "asntree/cnames.h"

#include <algorithm>

#include "asntree/reservednames.h"

namespace asntree {

namespace {

std::string withUnderscores(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

/* Collects the names of one definition. */
struct Collector {
    std::vector<NameUse> &uses;
    std::uint32_t owner;
    std::string text; /* reused, so that most names cost no memory of their own */

    void add(NameRole role, std::string_view a, std::string_view b = {}, std::string_view d = {}) {
        text.assign(a).append(b).append(d);
        uses.push_back({hashOf(text), owner, role});
    }
    void derived(std::string_view a, std::string_view b, std::string_view d = {}) {
        add(NameRole::Derived, a, b, d);
    }
};

void addTypeNames(Collector &out, const std::string &name, const std::string &prefix,
                  const Type &type) {
    out.derived("t_", name);
    for (const std::string_view word : {"enc", "dec", "ask", "pri", "e", "d", "a", "p"})
        out.derived(word, name);
    if (type.kind == TypeKind::SequenceOf || type.kind == TypeKind::SetOf)
        out.derived("item_", name);
    for (const NamedItem &item : type.items)
        if (!item.marker)
            out.derived(withUnderscores(item.name.text), "_", name);
    out.derived(prefix, name);
}

/* Component defines end in the name of the definition, whatever they are nested in, bodies of
   parameterized definitions included. */
void addComponentNames(Collector &out, const NameTable &table, const std::string &name,
                       const Assignment &assignment) {
    std::vector<std::pair<const Type *, const ModuleInfo *>> open{
        {assignment.type, table.c.moduleInfos.at(assignment.module)}};
    std::unordered_set<const Assignment *> bodies;
    while (!open.empty()) {
        const auto [type, module] = open.back();
        open.pop_back();
        if (type->element != nullptr)
            open.emplace_back(type->element, module);
        for (const Component &component : type->components) {
            if (component.name.given())
                out.derived(withUnderscores(component.name.text), "_", name);
            if (component.type != nullptr)
                open.emplace_back(component.type, module);
        }
        if (type->kind != TypeKind::Reference || !type->ref.hasParameters)
            continue;
        const Assignment *body = definitionNamed(table.c, *module, type->ref);
        if (body != nullptr && body->type != nullptr && bodies.insert(body).second)
            open.emplace_back(body->type, table.c.moduleInfos.at(body->module));
    }
}

void addClassNames(Collector &out, const std::string &name, const std::string &prefix,
                   const Assignment &assignment) {
    out.derived("t_", name);
    out.derived(name, "_iter");
    out.derived(prefix, name);
    if (assignment.objectClass == nullptr)
        return;
    for (const ClassField &field : assignment.objectClass->fields)
        out.derived(withUnderscores(field.name.text), "_", name);
}

void addNames(const NameTable &table, std::uint32_t number, std::vector<NameUse> &uses) {
    const NamedDefinition &definition = table.definitions[number];
    const std::string name = nameInC(table, definition);
    const std::string &prefix = table.plan.trees[definition.tree].genPrefix;
    Collector out{uses, number, {}};
    switch (definition.kind) {
    case DefinitionKind::Type:
        out.add(NameRole::Own, name);
        if (definition.assignment->type == nullptr)
            break;
        addTypeNames(out, name, prefix, *definition.assignment->type);
        if (table.given.componentDefines[definition.tree])
            addComponentNames(out, table, name, *definition.assignment);
        break;
    case DefinitionKind::Class:
        out.add(NameRole::Own, name);
        addClassNames(out, name, prefix, *definition.assignment);
        break;
    case DefinitionKind::ValueSet:
        out.add(NameRole::Own, name);
        break;
    case DefinitionKind::Value:
        out.add(NameRole::Define, name);
        break;
    case DefinitionKind::Object:
        out.add(NameRole::Define, name);
        out.derived(prefix, name);
        break;
    case DefinitionKind::ObjectSet:
        out.add(NameRole::Own, name);
        out.derived(prefix, name);
        out.derived("first", name, "Obj");
        out.derived("next", name, "Obj");
        break;
    case DefinitionKind::Parameterized:
    case DefinitionKind::Macro:
        break;
    }
}

/* The names of components and fields of one tree, each once. */
void addMembers(const TreePlan &tree, std::uint32_t number, std::vector<NameUse> &uses) {
    std::unordered_set<std::string_view> names;
    std::vector<const Type *> open;
    for (const Assignment *assignment : tree.definitions) {
        if (assignment->type != nullptr)
            open.push_back(assignment->type);
        if (assignment->objectClass != nullptr)
            for (const ClassField &field : assignment->objectClass->fields)
                names.insert(field.name.text);
        while (!open.empty()) {
            const Type *type = open.back();
            open.pop_back();
            if (type->element != nullptr)
                open.push_back(type->element);
            for (const Component &component : type->components) {
                if (component.name.given())
                    names.insert(component.name.text);
                if (component.type != nullptr)
                    open.push_back(component.type);
            }
        }
    }
    for (std::string_view name : names)
        uses.push_back({hashOf(withUnderscores(name)), number, NameRole::Member});
}

} // namespace

std::uint64_t hashOf(std::string_view name) {
    std::uint64_t hash = 14695981039346656037u;
    for (char ch : name)
        hash = (hash ^ static_cast<unsigned char>(ch)) * 1099511628211u;
    return hash;
}

std::string nameInC(const NameTable &table, const NamedDefinition &definition) {
    return nameInC(definition.naming, definition.assignment->name.text,
                   table.given.nameLengths[definition.tree]);
}

void fillTable(NameTable &table) {
    static const std::vector<std::string> none;
    for (std::uint32_t tree = 0; tree < table.plan.trees.size(); ++tree) {
        for (const Assignment *assignment : table.plan.trees[tree].definitions) {
            NamedDefinition definition;
            definition.assignment = assignment;
            definition.kind = kindOfDefinition(table.c, *assignment);
            definition.tree = tree;
            if (namingPrefix(definition.kind).empty())
                continue;
            auto overrides = table.given.overrides.find(assignment);
            definition.naming =
                namingOf(table.given.rules[tree], definition.kind, assignment->name.text,
                         overrides == table.given.overrides.end() ? none : overrides->second);
            definition.given = definition.naming.pref;
            table.definitions.push_back(std::move(definition));
        }
        addMembers(table.plan.trees[tree], tree, table.fixed);
    }
    for (std::string_view name : reservedNames())
        table.fixed.push_back({hashOf(name), 0, NameRole::Reserved});
    for (std::string_view name : reservedMembers())
        table.fixed.push_back({hashOf(name), 0, NameRole::ReservedMember});
}

std::vector<NameUse> allNames(const NameTable &table) {
    std::vector<NameUse> uses = table.fixed;
    for (std::uint32_t number = 0; number < table.definitions.size(); ++number)
        addNames(table, number, uses);
    std::sort(uses.begin(), uses.end(), [](const NameUse &a, const NameUse &b) {
        if (a.hash != b.hash)
            return a.hash < b.hash;
        return a.role != b.role ? a.role < b.role : a.owner < b.owner;
    });
    return uses;
}

} // namespace asntree
