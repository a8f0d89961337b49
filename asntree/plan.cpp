#include "asntree/plan.h"

#include "asntree/entries.h"
#include "asntree/merge.h"
#include "asntree/options.h"
#include "asntree/prefixes.h"
#include "asntree/rename.h"

namespace asntree {

namespace {

/* Naming options are stored in a tree as they were given; what counts is their order there. */
NamingRules namingRules(const Settings &settings, const TreePlan &tree) {
    NamingRules rules;
    for (const StoredOption &option :
         storedOptions(settings, tree.filePrefix, tree.modules.front()->syntax->name.text))
        if (option.tedKind == TED_OPTION)
            addNamingOption(rules, option.text);
    return rules;
}

} // namespace

Plan makePlan(Compilation &c, const Settings &settings, const DefinitionWords &words) {
    Plan plan;
    mergeModules(c, settings, plan);
    choosePrefixes(c, settings, plan);
    GivenNames given{{}, {}, words.naming};
    for (TreePlan &tree : plan.trees) {
        orderDefinitions(c, tree);
        given.rules.push_back(namingRules(settings, tree));
        given.nameLengths.push_back(
            moduleSettings(settings, tree.filePrefix, tree.modules.front()->syntax->name.text)
                .nameLength);
    }
    chooseEntries(c, settings, words.entries, plan);
    renameClashes(c, settings, given, plan);
    return plan;
}

} // namespace asntree
