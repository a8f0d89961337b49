#include "driver/driver.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "base/fatal.h"
#include "base/toolinfo.h"
#include "cbet/cbet.h"
#include "gen/classmeta.h"
#include "gen/fileset.h"
#include "gen/generators.h"
#include "gen/messages.h"
#include "gen/meta.h"
#include "model/modules.h"
#include "model/stamps.h"
#include "project/ketratavi.h"

const char *const velmoUsage[] = {
    "Usage:",
    "",
    "  velmo [options] [option-files] [syntax-file [syntax-file ...]]",
    "",
    "Options:",
    "",
    "  General back-end options (e.g.):",
    "    -S=syntax-file-directory                    Default: .",
    "",
    "  VELMO specific options:",
    "    -VERBOSE={quiet|terse|verbose}              Default: terse",
    "    -ENTRYTAG={ignore|warn}                     Default: ignore",
    "    -LOGFILE=log-file-name                      Default:",
    "    -COD-FUNC-PREF=character-string             Default:\"\"",
    "",
    "Option files:",
    "  +filename    A text file with one global option or syntax file name",
    "               per line.",
    "",
    "Example:",
    "  The files asn/x.asn asn/y.asn contain two ASN.1 modules. The file pdus.opt",
    "   contains declaration of PDUs defined in those modules.",
    "",
    "  # pdus.opt - Declaration of PDUs and SDUs defined in x.asn and y.asn",
    "  -ENTRY=X-PDU:PDU",
    "  -ENTRY=Y-prim:sdu",
    "",
    "  Compilation of the ASN.1 modules and generation of a C implementation:",
    "",
    "  $ ketmap -option-file=prefix.opt -A=asn x y",
    "  $ ketra +prefix.opt +pdus.opt -A=asn -L=lst -S=stx -C=src -H=inc x y",
    "  $ velmo +prefix.opt -S=stx x y",
    "",
    nullptr,
};

namespace {

constexpr const char *TOOL_NAME = "VELMO";
constexpr int TOOL_PATCH_LEVEL = 0;
constexpr const char *TOOL_COPYRIGHT =
    "Copyright \xA9 2026 the authors of velmo. What it generates is yours.";

/* A standard stream that was closed lends its number to the first file that is opened, and messages
   would end up in generated code. What takes its place here can't be written to. */
void occupyStandardStreams() {
    int file = 0;
    do
        file = open("/dev/null", O_RDONLY);
    while (file >= 0 && file <= STDERR_FILENO);
    if (file >= 0)
        close(file);
}

void printProgInfo(AsnModule *module) {
    if (getMetaVerbosity(module) == VERBOSITY_QUIET)
        return;
    Text banner = Text("\n") + backendName + " ";
    banner += "Version " + printVersionStri(backendVersion, backendPatchLevel);
    banner += " for KETRA Version " + printVersionStri(TREE_VERSION, -1) + "\n";
    banner += formatToolCopyright() + "\n";
    std::printf("%s\n", banner.c_str());
}

/* Each pass over a module begins with a word to the user and with nodes that nobody has marked. */
void beginPass(AsnModule *module, const char *what) {
    const Text message = concat(what, getModuleRef(module));
    verboseMsg(module, VERBOSITY_VERBOSE, message.c_str());
    resetStamps();
}

/* What other modules may ask of this one has to be known before the first file is written. */
void initModule(AsnModule *module) {
    beginPass(module, "initializing ");
    initializeObjects(module);
}

/* Tables name the functions, and the log names all files, so the order binds. */
void genModule(AsnModule *module) {
    beginPass(module, "generating ");
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
    occupyStandardStreams();
    installMemoryHandler();
    if (answerQuestion(argc, argv, "velmo", velmoUsage))
        return 0;
    copyrightNotice = TOOL_COPYRIGHT;
    installHooks();
    cInitCBET(
        [&] { initBackend(argc, argv, TOOL_NAME, houseVersion, TOOL_PATCH_LEVEL, velmoUsage); });
    taviBeginProject();
    forFirstModule(printProgInfo);
    forEachModule(initModule);
    forEachModule(genModule);
    taviEndProject();
    forFirstModule(printDone);
    checkStandardOutput();
    return glbExitCode;
}
