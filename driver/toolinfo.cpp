#include "driver/toolinfo.h"

#include <cstdio>

#include "driver/fatal.h"
#include "store/tree.h"

Text backendName;
int backendVersion = 0;
int backendPatchLevel = 0;
const char *copyrightNotice = nullptr;
int backendVerbosity = 0;

namespace {

constexpr char COPYRIGHT_SIGN = '\xA9';

Text formattedNotice(const char *text) {
    Text notice;
    while (*text != '\0') {
        char c = *text++;
        if (c == COPYRIGHT_SIGN)
            notice += "(c)";
        else
            notice += c;
        if (c == '.') {
            notice += '\n';
            while (*text == ' ')
                ++text;
        }
    }
    return notice;
}

} // namespace

void setBackendVerbosity(int level) {
    backendVerbosity = level;
}

const Text &formatToolCopyright() {
    static const Text notice = formattedNotice(orEmpty(copyrightNotice));
    return notice;
}

void printVersionInfo() {
    Text toolVersion, treeVersion;
    printVersionStri(toolVersion, "", backendVersion, backendPatchLevel, "");
    printVersionStri(treeVersion, "", TREE_VERSION, -1, "\n");
    std::printf("\n%s version %s for KETRA version%s ", backendName.c_str(), toolVersion.c_str(),
                "");
    std::printf("%s%s\n", treeVersion.c_str(), formatToolCopyright().c_str());
    checkStandardOutput();
}

void checkStandardOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        fatalError(FATAL_WRITE, "Standard output");
}
