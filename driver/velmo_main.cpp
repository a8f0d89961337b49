#include "driver/velmo_main.h"

#include <cstdio>

#include "cbet/cbet.h"
#include "driver/fatal.h"
#include "driver/init_backend.h"
#include "driver/toolinfo.h"
#include "driver/usage.h"
#include "driver/wiring.h"
#include "gen/ask.h"
#include "gen/classmeta.h"
#include "gen/decode.h"
#include "gen/encode.h"
#include "gen/entrytable.h"
#include "gen/fileset.h"
#include "gen/meta.h"
#include "gen/print.h"
#include "gen/types.h"
#include "gen/values.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "project/ketratavi.h"
#include "store/tree.h"

namespace {

constexpr ToolInfo velmo = {
    .name = "VELMO",
    .version = 107,
    .patchLevel = 0,
    .usage = velmoUsage,
    .copyrightNotice = "Copyright \xA9 2026 the authors of velmo. What it generates is yours.",
};

void printProgInfo(AsnModule *module) {
    if (getMetaVerbosity(module) == VERBOSITY_QUIET)
        return;
    Text banner, part;
    banner = Text("\n") + toolInfo.name + " ";
    banner += printVersionStri(part, "Version ", toolInfo.version, toolInfo.patchLevel, "");
    banner += printVersionStri(part, " for KETRA Version ", TREE_VERSION, -1, "\n");
    banner += formatToolCopyright() + "\n";
    std::printf("%s\n", banner.c_str());
}

/* What other modules may ask of this one has to be known before the first file is written. */
void initModule(AsnModule *module) {
    Text message;
    getModuleRef(message, "initializing ", module, nullptr);
    verboseMsg(module, VERBOSITY_VERBOSE, message.c_str());
    resetStamps();
    initializeObjects(module);
}

/* Tables name the functions, and the log names all files, so the order binds. */
void genModule(AsnModule *module) {
    Text message;
    getModuleRef(message, "generating ", module, nullptr);
    verboseMsg(module, VERBOSITY_VERBOSE, message.c_str());
    resetStamps();
    openModuleFiles(module);
    taviBeginModule(module);
    generateTypes(module);
    generateEncodingFunctions(module);
    generateDecodingFunctions(module);
    generateAskingFunctions(module);
    generatePrintingFunctions(module);
    generateTables(module);
    generateValues(module);
    generateLogFile(module);
    closeModuleFiles(module);
}

void printDone(AsnModule *module) {
    verboseMsg(module, getMetaVerbosity(module), "done");
}

} // namespace

int velmo_main(int argc, char **argv) {
    installMemoryHandler();
    toolInfo = velmo;
    installHooks();
    cInitCBET([&] { initBackend(argc, argv); });
    taviBeginProject();
    forFirstModule(printProgInfo);
    forEachModule(initModule);
    forEachModule(genModule);
    taviEndProject();
    forFirstModule(printDone);
    checkStandardOutput();
    return glbExitCode;
}
