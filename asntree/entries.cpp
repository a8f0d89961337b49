#include "asntree/entries.h"

#include <algorithm>

#include "asntree/classes.h"
#include "asntree/graph.h"
#include "asntree/references.h"
#include "store/ketradef.h"

namespace asntree {

namespace {

/* Functions of an entry type: bits of TNode.entryFlags. */
enum EntryBit : std::uint8_t {
    ENCODED_ENTRY = 1u << 2,
    DECODED_ENTRY = 1u << 3,
    ASKED_ENTRY = 1u << 4,
    PRINTED_ENTRY = 1u << 5,
};
constexpr std::uint8_t FIRST_CATEGORY = 1;

EntryChoice choiceOf(const ModuleSettings &settings, std::uint8_t categories) {
    const struct {
        std::uint8_t set;
        std::uint8_t bit;
    } rows[] = {{settings.encodeCategories, ENCODED_ENTRY},
                {settings.decodeCategories, DECODED_ENTRY},
                {settings.askCategories, ASKED_ENTRY},
                {settings.printCategories, PRINTED_ENTRY}};
    EntryChoice choice{ENTRY_TYPE_FLAG, categories};
    for (const auto &row : rows)
        if ((row.set & categories) != 0)
            choice.flags = static_cast<std::uint8_t>(choice.flags | row.bit);
    return choice;
}

bool canBeEntry(const Compilation &c, const Assignment &assignment) {
    return assignment.kind == AssignmentKind::Type &&
           kindOfDefinition(c, assignment) == DefinitionKind::Type;
}

/* --- who names whom --- */

/* What is still to be looked at of one definition. */
struct Names {
    Compilation &c;
    const Assignment *around;
    std::vector<std::pair<const Type *, const ModuleInfo *>> types;
    std::vector<std::pair<const Constraint *, const ModuleInfo *>> constraints;
    std::vector<const Assignment *> found;
    std::unordered_set<const Type *> fieldsSeen; /* governors of class fields */

    void add(const Type *type, const ModuleInfo *module) {
        if (type != nullptr)
            types.emplace_back(type, module);
    }
    void add(const ConstraintSpec *spec, const ModuleInfo *module) {
        if (spec == nullptr)
            return;
        add(spec->root, module);
        add(spec->additions, module);
    }
    void add(const Constraint *constraint, const ModuleInfo *module) {
        if (constraint != nullptr)
            constraints.emplace_back(constraint, module);
    }
};

void nameReference(Names &names, const Reference &reference, const ModuleInfo &module) {
    const bool isDummy =
        !reference.module.given() &&
        std::any_of(names.around->parameters.begin(), names.around->parameters.end(),
                    [&](const FormalParameter &p) { return p.name.text == reference.name.text; });
    if (!isDummy)
        if (const Assignment *other = definitionNamed(names.c, module, reference))
            names.found.push_back(other);
    for (const TokenRange &parameter : reference.parameters)
        for (const Assignment *other :
             definitionsNamedIn(names.c, module, names.around, parameter, false))
            names.found.push_back(other);
}

/* CLASS.&field names the type that the field has, if it has one. */
void nameField(Names &names, const Type &type, const ModuleInfo &module) {
    const Assignment *objectClass = definitionNamed(names.c, module, type.ref);
    if (objectClass == nullptr || !namesClass(names.c, *objectClass))
        return;
    const FieldTarget target = fieldTarget(names.c, {&type, &module.root});
    if (!target || target.last()->governor == nullptr || target.lastClass.scope == nullptr ||
        !names.fieldsSeen.insert(target.last()->governor).second)
        return;
    names.add(target.last()->governor, target.lastClass.scope->module);
}

void nameType(Names &names, const Type &type, const ModuleInfo &module) {
    switch (type.kind) {
    case TypeKind::Reference:
        nameReference(names, type.ref, module);
        break;
    case TypeKind::Field:
        nameField(names, type, module);
        break;
    default:
        break;
    }
    for (const Component &component : type.components)
        names.add(component.type, &module);
    names.add(type.element, &module);
    /* What an open type is constrained to is encoded by itself. */
    if (type.kind != TypeKind::Field && type.kind != TypeKind::Any)
        for (const ConstraintSpec *spec : type.constraints)
            names.add(spec, &module);
}

void nameConstraint(Names &names, const Constraint &constraint, const ModuleInfo &module) {
    if (constraint.kind != ConstraintKind::Contents)
        names.add(constraint.type, &module);
    for (const Constraint *operand : constraint.operands)
        names.add(operand, &module);
    names.add(constraint.inner, &module);
    for (const ComponentConstraint &part : constraint.parts)
        names.add(part.inner, &module);
}

/* The definitions that a type names. */
std::vector<const Assignment *> namedBy(Compilation &c, const Assignment &assignment) {
    const ModuleInfo *module = moduleOf(c, &assignment);
    Names names{c, &assignment, {}, {}, {}, {}};
    names.add(assignment.type, module);
    while (!names.types.empty() || !names.constraints.empty()) {
        if (!names.types.empty()) {
            const auto [type, where] = names.types.back();
            names.types.pop_back();
            nameType(names, *type, *where);
        } else {
            const auto [constraint, where] = names.constraints.back();
            names.constraints.pop_back();
            nameConstraint(names, *constraint, *where);
        }
    }
    return std::move(names.found);
}

/* The types of the run that no type names, and circles of types that none outside names. */
std::vector<const Assignment *> unnamedTypes(Compilation &c, const Plan &plan) {
    std::vector<const Assignment *> types;
    std::unordered_map<const Assignment *, std::uint32_t> numbers;
    for (const TreePlan &tree : plan.trees)
        for (const Assignment *assignment : tree.definitions)
            if (assignment->kind == AssignmentKind::Type && !namesClass(c, *assignment)) {
                numbers.emplace(assignment, static_cast<std::uint32_t>(types.size()));
                types.push_back(assignment);
            }
    Edges edges;
    for (std::uint32_t n = 0; n < types.size(); ++n)
        for (const Assignment *other : namedBy(c, *types[n]))
            if (auto found = numbers.find(other); found != numbers.end())
                edges.emplace_back(n, found->second);
    const Groups groups = groupsOf(graphOf(static_cast<std::uint32_t>(types.size()), edges));
    std::vector<bool> named(groups.members.size(), false);
    for (const auto &[from, to] : edges)
        if (groups.groupOf[from] != groups.groupOf[to])
            named[groups.groupOf[to]] = true;
    std::vector<const Assignment *> unnamed;
    for (std::uint32_t n = 0; n < types.size(); ++n)
        if (!named[groups.groupOf[n]])
            unnamed.push_back(types[n]);
    return unnamed;
}

/* --- what options and words say --- */

/* What is settled for the entries of one module. */
struct ModuleEntries {
    ModuleSettings settings;
    std::uint8_t common = FIRST_CATEGORY; /* categories of entries that none are given for */
    bool spokenOf = false;                /* options or words say which types are entries */
};

struct Chooser {
    Compilation &c;
    const Settings &settings;
    Plan &plan;
    std::unordered_map<const Module *, ModuleEntries> modules;
    std::unordered_map<std::string, std::vector<const Assignment *>> typesByName;

    void choose(const Assignment *assignment, std::uint8_t categories) {
        const ModuleEntries &module = modules.at(assignment->module);
        EntryChoice &choice = plan.entries[assignment];
        const auto all = static_cast<std::uint8_t>(choice.categories |
                                                   (categories != 0 ? categories : module.common));
        choice = choiceOf(module.settings, all);
    }
    bool inScope(const EntryOption &entry, const Module &module) const {
        const TreePlan &tree = plan.trees[plan.treeOfModule.at(c.moduleInfos.at(&module))];
        return isInScope(settings, entry.scope, tree.filePrefix, module.name.text);
    }
};

/* Names may stand with "-" or with "_" in an option. */
std::string optionName(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

void fillChooser(Chooser &chooser) {
    for (const TreePlan &tree : chooser.plan.trees) {
        for (const ModuleInfo *info : tree.modules) {
            const Module *module = info->syntax;
            ModuleEntries &entries = chooser.modules[module];
            entries.settings = moduleSettings(chooser.settings, tree.filePrefix, module->name.text);
            for (const EntryOption &entry : chooser.settings.entries)
                if (chooser.inScope(entry, *module)) {
                    if (!entry.type.empty())
                        entries.spokenOf = true;
                    else if (entry.categories != 0)
                        entries.common = entry.categories;
                }
        }
        for (const Assignment *assignment : tree.definitions)
            if (canBeEntry(chooser.c, *assignment)) {
                chooser.typesByName[optionName(assignment->name.text)].push_back(assignment);
                chooser.typesByName["*"].push_back(assignment);
            }
    }
}

void chooseNamed(Chooser &chooser, const EntryOption &entry) {
    const std::string wanted = optionName(entry.module);
    bool found = false;
    for (const Assignment *assignment : chooser.typesByName[optionName(entry.type)]) {
        const Module &module = *assignment->module;
        if ((!wanted.empty() && optionName(module.name.text) != wanted) ||
            !chooser.inScope(entry, module))
            continue;
        found = true;
        chooser.choose(assignment, entry.categories);
    }
    if (found || entry.type == "*")
        return;
    const std::string module = entry.module.empty() ? "" : entry.module + ".";
    error(chooser.c.diagnostics, {},
          entry.where + "-ENTRY=" + module + entry.type + ": there is no type `" + entry.type +
              (entry.module.empty() ? "` in this run" : "` in module `" + entry.module + "`"));
}

void chooseWords(Chooser &chooser, const std::vector<EntryWord> &words) {
    for (const EntryWord &word : words) {
        if (canBeEntry(chooser.c, *word.definition)) {
            chooser.modules.at(word.definition->module).spokenOf = true;
            chooser.choose(word.definition, word.categories);
        } else if (word.definition->parameterized) { /* else it was reported where the word stands */
            error(chooser.c.diagnostics, word.definition->name.place,
                  "`" + std::string(word.definition->name.text) +
                      "` can't be an entry: it has parameters");
        }
    }
}

} // namespace

void chooseEntries(Compilation &c, const Settings &settings, const std::vector<EntryWord> &words,
                   Plan &plan) {
    Chooser chooser{c, settings, plan, {}, {}};
    fillChooser(chooser);
    for (const EntryOption &entry : settings.entries)
        if (!entry.type.empty())
            chooseNamed(chooser, entry);
    chooseWords(chooser, words);
    for (const Assignment *assignment : unnamedTypes(c, plan))
        if (canBeEntry(c, *assignment) && !chooser.modules.at(assignment->module).spokenOf)
            chooser.choose(assignment, 0);
}

} // namespace asntree
