#include "tool/options.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "base/toolinfo.h"

namespace tool {

namespace {

/* Options that velmo alone knows; asntree stores them in trees under velmo's name. */
constexpr std::string_view velmoOptions[] = {
    "VERBOSE=",         "ENTRYTAG=",         "LOGFILE=",         "TAB-CODFUNC=",
    "TAB-TSTFUNC=",     "TAB-MORLA-PARAM=",  "TAB-VALUE-SET-N=", "ACCESS-ROUTINES=",
    "BRUN-GENERATION=", "TREE-FILE-SUFFIX=", "COD-FUNC-PREF=",   "CPLUSPLUS=",
    "TAVI-PREFIX=",     "TAVI-DIRECTORY=",
};

bool complain(const std::string &text) {
    std::fprintf(stderr, "velmo-tool: error: %s\n", text.c_str());
    return false;
}

std::string upper(std::string_view text) {
    std::string result(text);
    for (char &c : result)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    return result;
}

/* Values in homes come in an array for each type, which a program for all types can't serve. */
bool makesHomes(const std::string &option) {
    return option.starts_with("-MORLA=") ||
           (option.starts_with("-DEFINITION-CATEGORY=") && option.find("MORLA") != option.npos);
}

bool takeCompilerOption(Options &options, std::string_view text) {
    const std::string name = upper(text);
    if (makesHomes(name))
        return complain("values in homes can't be served: " + std::string(text));
    const bool isVelmos =
        std::any_of(std::begin(velmoOptions), std::end(velmoOptions),
                    [&](std::string_view option) { return name.starts_with("-" + std::string(option)); });
    options.compiled.push_back((isVelmos ? "-BEO=VELMO=" : "") +
                               std::string(text.substr(isVelmos ? 1 : 0)));
    return true;
}

bool takeOption(Options &options, std::string_view text) {
    const struct {
        std::string_view name;
        std::string Options::*value;
    } values[] = {{"--output=", &Options::output}, {"--keep=", &Options::keep}, {"--cc=", &Options::compiler}};
    const struct {
        std::string_view name;
        bool Options::*value;
    } flags[] = {{"--verbose", &Options::verbose}, {"--help", &Options::help}, {"--version", &Options::version}};
    for (const auto &option : values)
        if (text.starts_with(option.name) && text.size() > option.name.size()) {
            options.*option.value = text.substr(option.name.size());
            return true;
        }
    for (const auto &option : flags)
        if (text == option.name) {
            options.*option.value = true;
            return true;
        }
    return complain("unknown option: " + std::string(text) +
                    "; options of asntree and velmo stand behind \"--\"");
}

} // namespace

bool parseCommandLine(int argc, char **argv, Options &options) {
    const char *const cc = std::getenv("CC");
    options.compiler = cc != nullptr && *cc != 0 ? cc : "cc";
    bool behind = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view text = argv[i];
        const bool isOption = (text.starts_with('-') || text.starts_with('+')) && text.size() > 1;
        if (behind && !isOption)
            return complain("only options stand behind \"--\": " + std::string(text));
        if (text == "--")
            behind = true;
        else if (behind ? !takeCompilerOption(options, text) : isOption && !takeOption(options, text))
            return false;
        else if (text.empty())
            return complain("an empty argument");
        else if (!isOption)
            options.files.emplace_back(text);
    }
    if (options.files.empty() && !options.help && !options.version)
        return complain("no file is named; velmo-tool --help tells more");
    if (options.output.empty() && !options.files.empty())
        options.output = stemOf(options.files.front()) + "-tool";
    return true;
}

std::string stemOf(const std::string &path) {
    const std::string name = path.substr(path.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == name.npos || dot == 0 ? name : name.substr(0, dot);
}

const char *usageText() {
    return R"(Usage:

  velmo-tool [options] FILE ... [-- options of asntree and velmo]

Makes a program from ASN.1 modules that prints, checks, converts and encodes their messages:
velmo-tool ldap.asn1 makes ldap-tool in the current directory.

  --output=FILE           the program (the name of the first FILE, and "-tool")
  --keep=DIR              leaves trees, C and the program's main part in DIR
  --cc=COMMAND            the C compiler ($CC, or cc); it gets the options in $CFLAGS, too
  --verbose               says what is run
  --help, --version

Behind "--" stand options and option files (+FILE) of asntree, and all options of velmo, as in
velmo-tool ldap.asn1 -- -A=modules -DEFINITELEN=NO. The program says with --help what it does.
)";
}

std::string versionText() {
    return programVersion("velmo-tool") + "\n";
}

} // namespace tool
