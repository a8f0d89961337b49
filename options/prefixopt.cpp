#include "options/prefixopt.h"

#include <cstdio>
#include <cstring>

#include "options/ketracnf.h"
#include "store/strings.h"
#include "store/tree.h"

namespace {

constexpr std::size_t MAX_MODULE_NAME = 128;

template <typename Test> std::string_view skipChars(const char *text, Test isGood) {
    const char *end = text;
    while (isGood(*end))
        ++end;
    return {text, static_cast<std::size_t>(end - text)};
}

bool isModuleNameChar(char c) {
    return c == '-' || isAsciiAlnum(c);
}

const char *behind(std::string_view part) {
    return part.data() + part.size();
}

const char *skipColon(const char *text) {
    return *text == ':' ? text + 1 : text;
}

} // namespace

bool parsePrefixOption(const char *text, PrefixOption *parts) {
    if (!isAsciiUpper(*text))
        return false;
    parts->moduleName = skipChars(text, isModuleNameChar);
    parts->filePrefix = skipChars(skipColon(behind(parts->moduleName)), isSymbolChar);
    const char *rest = behind(parts->filePrefix);
    if (*rest != '\0' && *rest != ':')
        return false;
    if (parts->filePrefix.empty())
        parts->filePrefix = parts->moduleName;

    parts->genPrefix = skipChars(skipColon(rest), isSymbolChar);
    if (*behind(parts->genPrefix) != '\0')
        return false;
    parts->genPrefixGiven = !parts->genPrefix.empty();
    if (!parts->genPrefixGiven)
        parts->genPrefix = parts->filePrefix;
    return true;
}

bool prefixOptOK(ModRec *module, const char *text) {
    PrefixOption parts;
    if (!parsePrefixOption(text, &parts))
        return false;
    const int limit = module->options->prefixLength;
    const auto length = static_cast<std::size_t>(limit);

    const Text name = convertHyphens(Text(parts.moduleName.substr(0, MAX_MODULE_NAME)));
    const auto storeStri = [module](std::string_view part) {
        return getStri(module, putStri(module, Text(part).c_str()));
    };
    const char *moduleName = storeStri(name);
    const char *filePrefix = storeStri(parts.filePrefix.substr(0, length));
    const char *genPrefix = storeStri(parts.genPrefix.substr(0, length));

    checkPrefixOptionPart("file prefix", parts.filePrefix.data(), limit);
    if (parts.genPrefixGiven)
        checkPrefixOptionPart("generation prefix", parts.genPrefix.data(), limit);
    findOrCreateModRec(filePrefix, genPrefix, moduleName);
    return true;
}

void checkPrefixOptionPart(const char *what, const char *text, int limit) {
    if (std::strcspn(text, ":") <= static_cast<std::size_t>(limit))
        return;
    std::fprintf(stderr,
                 "\nWARNING : A %s '%s' is longer than %d characters.\n"
                 "          Truncating it to %d characters.\n"
                 "          Check value of the PREFIXLEN option.\n",
                 what, text, limit, limit);
}
