#include "driver/driver.h"

#include "base/fatal.h"
#include "base/files.h"
#include "base/toolinfo.h"
#include "options/catalogue.h"
#include "options/cmdline.h"
#include "store/ketravar.h"
#include "store/tree.h"

namespace {

/* Each module gets the options of the command line as records of its own, behind those of its tree,
   so that they are checked against its own defaults and win. */
void settleCmdLineOptions(ModRec *module, int argc, char **argv) {
    cMP = module;
    unsigned kinds = 0;
    module->cmdOptions = {};
    parseCmdLineOptions(argc, argv, &kinds, &module->cmdOptions);
    checkGlobalBEOptions(module, module->cmdOptions);
}

} // namespace

void initBackend(int argc, char **argv, const char *toolName, int version, int patchLevel,
                 const char *const *usageText) {
    backendName = orEmpty(toolName);
    backendVersion = version;
    backendPatchLevel = patchLevel;
    backendUsage = usageText;
    initFiles();
    getTimeStamp(&timeStamp);
    ModRec *first = appendModRec(true);
    cMP = first;
    parseCmdLineParams(argc, argv);
    readAllSyntaxTrees();
    removeUnreferencedModuleRecords();
    initBackendVars();

    for (const auto &module : modRecList.records)
        if (module->state != MOD_PREDEFINED)
            settleCmdLineOptions(module.get(), argc, argv);
    cMP = first;
}
