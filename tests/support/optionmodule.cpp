#include "tests/support/optionmodule.h"

#include "gen/meta.h"
#include "gen/tooloptions.h"
#include "options/catalogue.h"
#include "options/hooks.h"
#include "store/ketravar.h"
#include "store/strings.h"
#include "store/tree.h"

void installOptionHooks() {
    treeHooks.newOptions = std::make_shared<GlobalOptions>;
    treeHooks.newMetaRec = std::make_shared<BEModMetaRec>;
    treeHooks.settleStoredOptions = settleStoredOptions;
    optionHooks.globalBEOptionOK = globalBEOptionOK;
}

ModRec *makeOptionModule(const std::string &prefix, const std::string &moduleName,
                         int prefixLength) {
    installOptionHooks();
    ModRec *module = appendModRec(true);
    module->filePrefix = module->genPrefix = prefix;
    module->moduleName = moduleName;
    module->state = MOD_LOADED;
    module->options->prefixLength = static_cast<std::uint8_t>(prefixLength);
    return module;
}

void settleOptions(ModRec *module, const std::vector<StoredOption> &options) {
    const auto first = static_cast<RecNr>(module->tedRecs.size()) + 1;
    for (const StoredOption &option : options) {
        TedRec record;
        record.tedKind = static_cast<std::uint8_t>(option.kind);
        record.tedText = putStri(module, option.text.c_str());
        module->tedRecs.push_back(record);
    }
    mNode = MNode();
    mNode.tedFirst = first;
    mNode.tedLast = static_cast<RecNr>(module->tedRecs.size());
    settleStoredOptions(module);
}

void settleGeneralOptions(ModRec *module, const std::vector<std::string> &options) {
    std::vector<StoredOption> stored;
    for (const std::string &option : options)
        stored.push_back({TED_OPTION, "-" + option});
    settleOptions(module, stored);
}
