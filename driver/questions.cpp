#include "driver/driver.h"

#include <cstdio>
#include <cstring>

#include "base/toolinfo.h"
#include "store/ketradef.h"

bool answerQuestion(int argc, char **argv, const char *program, const char *const *usageText) {
    for (int i = 1; i < argc; ++i) {
        const bool isHelp = std::strcmp(argv[i], "--help") == 0;
        if (!isHelp && std::strcmp(argv[i], "--version") != 0)
            continue;
        for (const char *const *line = usageText; isHelp && *line != nullptr; ++line)
            std::printf("%s\n", *line);
        if (!isHelp)
            std::printf("%s, trees of version %s\n", programVersion(program).c_str(),
                        printVersionStri(TREE_VERSION, -1).c_str());
        checkStandardOutput();
        return true;
    }
    return false;
}
