#include "project/taviconf.h"

#include <string_view>

#include "base/fatal.h"
#include "base/files.h"
#include "options/checkers.h"

TaviRec taviRecord;

bool taviIsTAVIOption(const char *text) {
    constexpr std::string_view prefix = "TAVI-";
    return strnCaseComp(text, prefix.data(), prefix.size()) == 0;
}

bool taviOptionOK(const char *text) {
    constexpr std::size_t MAX_LENGTH = 32;
    if (const char *prefix = isOptionStri(text, "TAVI-PREFIX="))
        return alnumSpecialStriOptionOK(&taviRecord.prefix, prefix, "-_", 1, MAX_LENGTH);
    if (const char *directory = isOptionStri(text, "TAVI-DIRECTORY="))
        return directoryOptionOK(&taviRecord.directory, directory);
    return false;
}

std::FILE *taviOpenTextFile(const char *suffix, const char *mode) {
    if (!taviIsActive())
        fatalError(mode[0] == 'r' ? FATAL_OPEN_READ : FATAL_OPEN_WRITE, "No TAVI-PREFIX");
    return fopenTextFile(taviRecord.directory.c_str(), (taviRecord.prefix + suffix).c_str(), mode);
}

void taviCloseTextFile(std::FILE *file, const char *suffix) {
    const bool failed = std::ferror(file) != 0;
    if (std::fclose(file) != 0 || failed)
        fatalError(FATAL_WRITE, (taviRecord.directory + taviRecord.prefix + suffix).c_str());
}
