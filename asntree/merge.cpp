#include "asntree/merge.h"

#include <algorithm>

#include "asntree/graph.h"
#include "asntree/references.h"

namespace asntree {

namespace {

/* The modules that have trees, in an order that the command line doesn't change. */
std::vector<ModuleInfo *> sortedModules(const Compilation &c) {
    std::vector<ModuleInfo *> modules;
    for (const auto &info : c.modules)
        if (!info->predefined)
            modules.push_back(info.get());
    std::sort(modules.begin(), modules.end(),
              [&c](const ModuleInfo *a, const ModuleInfo *b) { return standsBefore(c, *a, *b); });
    return modules;
}

using Numbers = std::unordered_map<const ModuleInfo *, std::uint32_t>;

/* Who includes whom. The bodies of parameterized definitions that a module instantiates may name
   further modules, but those are reached through the module of the body already. */
Edges includesOf(const Compilation &c, const std::vector<ModuleInfo *> &modules,
                 const Numbers &numbers) {
    Edges edges;
    for (std::uint32_t n = 0; n < modules.size(); ++n) {
        auto add = [&](const ModuleInfo *other) {
            auto found = other == nullptr ? numbers.end() : numbers.find(other);
            if (found != numbers.end() && found->second != n)
                edges.emplace_back(n, found->second);
        };
        for (const ModuleInfo *other : modules[n]->imports)
            add(other);
        for (const ModuleInfo *other : modulesNamedIn(c, *modules[n]))
            add(other);
    }
    return edges;
}

/* The numbers of the modules that a MERGE= option names. */
std::vector<std::uint32_t> mergedModules(Compilation &c, const MergeChoice &merge,
                                         const std::vector<ModuleInfo *> &modules) {
    std::vector<std::uint32_t> found;
    for (const std::string &name : merge.modules) {
        const std::size_t before = found.size();
        for (std::uint32_t n = 0; n < modules.size(); ++n)
            if (modules[n]->syntax->name.text == name)
                found.push_back(n);
        if (found.size() == before)
            error(c.diagnostics, {},
                  merge.where + "-MERGE=" + merge.prefix + ": there is no module `" + name +
                      "` in this run");
    }
    return found;
}

/* "`A` and `B`", "`A`, `B`, `C` and 5 more". */
std::string listed(const std::vector<ModuleInfo *> &modules) {
    constexpr std::size_t SHOWN = 12;
    const std::size_t shown = modules.size() > SHOWN + 1 ? SHOWN : modules.size();
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) {
        if (i > 0)
            text += i + 1 == modules.size() ? " and " : ", ";
        text.append("`").append(modules[i]->syntax->name.text).append("`");
    }
    if (shown < modules.size())
        text += " and " + std::to_string(modules.size() - shown) + " more";
    return text;
}

void noteMerge(Compilation &c, TreePlan &tree, bool wanted) {
    const std::string text = std::string(wanted ? "merged as -MERGE= says: "
                                                : "merged, since they import one another: ") +
                             listed(tree.modules);
    tree.notes.push_back(text);
    note(c.diagnostics, tree.modules.front()->syntax->name.place, text);
}

} // namespace

void mergeModules(Compilation &c, const Settings &settings, Plan &plan) {
    const std::vector<ModuleInfo *> modules = sortedModules(c);
    Numbers numbers;
    for (std::uint32_t n = 0; n < modules.size(); ++n)
        numbers.emplace(modules[n], n);
    Edges edges = includesOf(c, modules, numbers);
    std::vector<std::string> wantedPrefix(modules.size());
    for (const MergeChoice &merge : settings.merges) {
        const std::vector<std::uint32_t> members = mergedModules(c, merge, modules);
        for (std::size_t i = 0; i < members.size(); ++i) {
            edges.emplace_back(members[i], members[(i + 1) % members.size()]);
            wantedPrefix[members[i]] = merge.prefix;
        }
    }
    const Groups groups = groupsOf(graphOf(static_cast<std::uint32_t>(modules.size()), edges));
    for (const std::vector<std::uint32_t> &members : groups.members) {
        TreePlan tree;
        for (std::uint32_t n : members) {
            tree.modules.push_back(modules[n]);
            plan.treeOfModule.emplace(modules[n], plan.trees.size());
            if (tree.filePrefix.empty())
                tree.filePrefix = tree.genPrefix = wantedPrefix[n];
        }
        if (members.size() > 1)
            noteMerge(c, tree, !tree.filePrefix.empty());
        plan.trees.push_back(std::move(tree));
    }
    for (const auto &[from, to] : edges)
        if (groups.groupOf[from] != groups.groupOf[to])
            plan.trees[groups.groupOf[from]].includes.push_back(groups.groupOf[to]);
    for (TreePlan &tree : plan.trees) {
        std::sort(tree.includes.begin(), tree.includes.end());
        tree.includes.erase(std::unique(tree.includes.begin(), tree.includes.end()),
                            tree.includes.end());
    }
}

void orderDefinitions(const Compilation &c, TreePlan &tree) {
    std::vector<const Assignment *> all;
    for (const ModuleInfo *module : tree.modules)
        for (const Assignment *assignment : module->syntax->assignments)
            all.push_back(assignment);
    if (tree.modules.size() < 2) {
        tree.definitions = std::move(all);
        return;
    }
    std::unordered_map<const Assignment *, std::uint32_t> numbers;
    for (std::uint32_t n = 0; n < all.size(); ++n)
        numbers.emplace(all[n], n);
    Edges edges;
    for (std::uint32_t n = 0; n < all.size(); ++n) {
        /* Types stand in another list of the tree than values and objects. */
        const bool lower = all[n]->kind == AssignmentKind::Value;
        const ModuleInfo &module = *c.moduleInfos.at(all[n]->module);
        for (const Assignment *other :
             definitionsNamedIn(c, module, all[n], tokensOf(c, *all[n]), lower)) {
            auto found = numbers.find(other);
            if (found != numbers.end() && found->second != n)
                edges.emplace_back(n, found->second);
        }
    }
    const Groups groups = groupsOf(graphOf(static_cast<std::uint32_t>(all.size()), edges));
    for (const std::vector<std::uint32_t> &group : groups.members)
        for (std::uint32_t n : group)
            tree.definitions.push_back(all[n]);
}

} // namespace asntree
