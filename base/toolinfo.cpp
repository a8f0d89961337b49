#include "base/toolinfo.h"

#include <cstdio>

#include "base/fatal.h"

Text backendName;
int backendVersion = 0;
int backendPatchLevel = 0;
const char *copyrightNotice = nullptr;
/* CMakeLists.txt has the numbers. */
const int houseVersion = VELMO_VERSION_MAJOR * 100 + VELMO_VERSION_MINOR;

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

const Text &formatToolCopyright() {
    static const Text notice = formattedNotice(orEmpty(copyrightNotice));
    return notice;
}

Text programVersion(const char *program) {
    return concat(program, " ", houseVersion / 100, ".", houseVersion % 100);
}

Text printVersionStri(int version, int patchLevel) {
    const Text text = formatText("%d.%02d", version / 100, version % 100);
    return patchLevel < 1 ? text : concat(text, ".", patchLevel);
}

void printVersionInfo(int treeVersion) {
    const Text tool = printVersionStri(backendVersion, backendPatchLevel);
    const Text tree = printVersionStri(treeVersion, -1);
    std::printf("\n%s version %s for KETRA version ", backendName.c_str(), tool.c_str());
    std::printf("%s\n%s\n", tree.c_str(), formatToolCopyright().c_str());
    checkStandardOutput();
}

void checkStandardOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        fatalError(FATAL_WRITE, "Standard output");
}
