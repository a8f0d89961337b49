#include "asntree/plan.h"

#include "asntree/entries.h"
#include "asntree/merge.h"
#include "asntree/options.h"
#include "asntree/prefixes.h"
#include "asntree/rename.h"

namespace asntree {

namespace {

bool isYes(std::string_view value) {
    return value == "1" || value == "YES" || value == "yes" || value == "Yes";
}

/* What the options that are stored in a tree say of names; their order there counts. */
void addGivenNames(const Settings &settings, const TreePlan &tree, GivenNames &given) {
    constexpr std::string_view COMPONENT_DEFINES = "-CDEFS=";
    const std::string_view module = tree.modules.front()->syntax->name.text;
    NamingRules rules;
    bool componentDefines = false;
    for (const StoredOption &option :
         storedOptions(settings, tree.filePrefix, module, furtherModules(tree))) {
        if (option.tedKind != TED_OPTION)
            continue;
        addNamingOption(rules, option.text);
        if (option.text.starts_with(COMPONENT_DEFINES))
            componentDefines = isYes(option.text.substr(COMPONENT_DEFINES.size()));
    }
    given.rules.push_back(std::move(rules));
    given.nameLengths.push_back(moduleSettings(settings, tree.filePrefix, module).nameLength);
    given.componentDefines.push_back(componentDefines);
}

} // namespace

std::vector<std::string_view> furtherModules(const TreePlan &tree) {
    std::vector<std::string_view> names;
    for (const ModuleInfo *module : tree.modules)
        if (module != tree.modules.front())
            names.push_back(module->syntax->name.text);
    return names;
}

Plan makePlan(Compilation &c, const Settings &settings, const DefinitionWords &words) {
    Plan plan;
    plan.overrides = words.naming;
    mergeModules(c, settings, plan);
    choosePrefixes(c, settings, plan);
    GivenNames given{{}, {}, {}, words.naming};
    for (TreePlan &tree : plan.trees) {
        orderDefinitions(c, tree);
        addGivenNames(settings, tree, given);
    }
    chooseEntries(c, settings, words.entries, plan);
    renameClashes(c, settings, given, plan);
    return plan;
}

} // namespace asntree
