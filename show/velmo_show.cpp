#include "show/show.h"

#include <cstdio>
#include <vector>

#include "base/fatal.h"
#include "base/toolinfo.h"
#include "cbet/cbet.h"
#include "driver/driver.h"
#include "model/modules.h"
#include "model/valuequeries.h"

namespace {

constexpr const char *showUsage[] = {
    "Usage:",
    "",
    "  velmo-show [options] [option-files] syntax-file [definition ...]",
    "",
    "Prints the syntax tree of a module in ASN.1 notation, with what velmo knows of each "
    "definition.",
    "",
    "Definitions:",
    "  Type, value, CLASS, object or Set; Type.component or Type.*.component for a part of a type,",
    "  \"*\" being the elements of a list. Default: the whole module with its options",
    "",
    "Options:",
    "  -S=syntax-file-directory                      Default: .",
    "  All options and option files of velmo are taken, and shown as they would be in force there.",
    "",
    "Example:",
    "  $ velmo-show -S=stx x Type.comp",
    "",
    nullptr,
};

/* The command line without the definitions: what follows the first name is one. */
std::vector<char *> takeDefinitions(int argc, char **argv, std::vector<Text> *definitions) {
    std::vector<char *> arguments;
    bool isModuleNamed = false;
    for (int i = 0; i < argc; ++i) {
        const bool isName = i > 0 && argv[i][0] != '-' && argv[i][0] != '+';
        if (isName && isModuleNamed)
            definitions->push_back(argv[i]);
        else
            arguments.push_back(argv[i]);
        isModuleNamed = isModuleNamed || isName;
    }
    arguments.push_back(nullptr);
    return arguments;
}

/* In the first of the named modules that has it. */
void showNamed(const Text &path) {
    bool found = false;
    forEachModule([&](AsnModule *module) { found = found || showDefinition(module, path); });
    if (found)
        return;
    std::fprintf(stderr, "\nERROR : No such definition: %s\n", path.c_str());
    glbExitCode = 1;
}

} // namespace

int velmo_show(int argc, char **argv) {
    installMemoryHandler();
    if (answerQuestion(argc, argv, "velmo-show", showUsage))
        return 0;
    std::vector<Text> definitions;
    std::vector<char *> arguments = takeDefinitions(argc, argv, &definitions);
    /* velmo's own hooks: options are judged and names are formed as they are there. */
    installHooks();
    noteOptions();
    cInitCBET([&] {
        initBackend(static_cast<int>(arguments.size()) - 1, arguments.data(), "VELMO-SHOW",
                    houseVersion, 0, showUsage);
    });
    setInfValueStri("MIN", "MAX", "MINUS-INFINITY", "PLUS-INFINITY");
    if (definitions.empty())
        forEachModule([](AsnModule *module) { showModule(module); });
    for (const Text &path : definitions)
        showNamed(path);
    checkStandardOutput();
    return glbExitCode;
}
