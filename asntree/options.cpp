#include "asntree/options.h"

#include <algorithm>

#include "asntree/optionparts.h"
#include "asntree/words.h"
#include "base/toolinfo.h"
#include "options/cmdline.h"

namespace asntree {

namespace {

struct Flag {
    std::string_view name;
    bool Settings::*place;
};
constexpr Flag flags[] = {
    {"--check", &Settings::checkOnly}, {"--werror", &Settings::warningsAreErrors},
    {"--strict", &Settings::strict},   {"--skip-unsupported", &Settings::skipUnsupported},
    {"--list", &Settings::list},       {"--help", &Settings::help},
    {"-h", &Settings::help},           {"-?", &Settings::help},
    {"--version", &Settings::version},
};

bool takeColor(OptionReader &reader, std::string_view text) {
    constexpr std::string_view name = "--color=";
    if (!text.starts_with(name))
        return false;
    const std::string_view value = text.substr(name.size());
    if (value == "always" || value == "never" || value == "auto")
        reader.settings.color = value == "always"  ? ColorWish::Always
                                : value == "never" ? ColorWish::Never
                                                   : ColorWish::Auto;
    else
        refuse(reader, "--color= must be auto, always or never, not " + std::string(value));
    return true;
}

bool takeLongOption(OptionReader &reader, std::string_view text) {
    for (const Flag &flag : flags) {
        if (text == flag.name) {
            reader.settings.*flag.place = true;
            return true;
        }
    }
    if (takeColor(reader, text))
        return true;
    if (!text.starts_with("--"))
        return false;
    std::vector<std::string_view> names{"--color="};
    for (const Flag &flag : flags)
        names.push_back(flag.name);
    const std::string_view nearest = nearestName(text, names);
    refuse(reader, "unknown option: " + std::string(text) +
                       (nearest.empty() ? "" : "; did you mean " + std::string(nearest) + "?"));
    return true;
}

/* "-BEO=tool=...": names in capitals as the tool expects them. */
void upperToolOption(std::string &text) {
    constexpr std::string_view prefix = "-BEO=";
    const std::string tool = strUpper(text.substr(prefix.size(), sizeof "VELMO=" - 1));
    if (tool != "VELMO=")
        return;
    const std::size_t end = text.find('=', prefix.size() + tool.size());
    for (std::size_t at = prefix.size(); at < std::min(end, text.size()); ++at)
        if (isAsciiLower(text[at]))
            text[at] = static_cast<char>(text[at] - 'a' + 'A');
}

bool isPrintable(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

} // namespace

void refuse(OptionReader &reader, const std::string &text) {
    reader.failed = true;
    reader.message += (reader.where.empty() ? "asntree: " : reader.where) + "error: " + text + "\n";
}

void warn(OptionReader &reader, const std::string &text) {
    reader.message +=
        (reader.where.empty() ? "asntree: " : reader.where) + "warning: " + text + "\n";
}

void takeOption(OptionReader &reader, std::string_view given) {
    if (takeLongOption(reader, given))
        return;
    if (given.size() > MAX_OPTION_LENGTH || !isPrintable(given)) {
        refuse(reader, (given.size() > MAX_OPTION_LENGTH
                            ? "an option of more than 512 characters: "
                            : "an option with a character that can't be printed: ") +
                           std::string(given.substr(0, 40)));
        return;
    }
    std::string text(given);
    if (!given.starts_with("-//")) /* a comment for generated files */
        optionToUpper(text);
    if (text == "-VERSION") {
        reader.settings.version = true;
        return;
    }
    if (takeRunOption(reader, text))
        return;
    ModuleOption option{text, TED_OPTION, true, reader.scope, reader.where};
    ModuleSettings unused;
    const ObeyedOption obeyed = obey(unused, text.c_str() + 1);
    option.stored = !obeyed.own;
    if (obeyed.known && !obeyed.good)
        refuse(reader, "wrong value: " + text);
    else if (text.starts_with("-BEO="))
        option.tedKind = TED_BACKEND_OPTION;
    if (option.tedKind == TED_BACKEND_OPTION)
        upperToolOption(option.text);
    if (!obeyed.known || obeyed.good)
        reader.settings.options.push_back(std::move(option));
}

bool parseCommandLine(int argc, char **argv, Settings &settings, std::string &message) {
    OptionReader reader{settings, message, false, 0, false, {}};
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument.starts_with('+'))
            readOptionFile(reader, std::string(argument.substr(1)));
        else if (argument.starts_with('-') && argument.size() > 1)
            takeOption(reader, argument);
        else if (argument.empty())
            refuse(reader, "an empty argument");
        else
            settings.files.emplace_back(argument);
    }
    if (reader.inScope)
        warn(reader, "-END-SCOPE is missing");
    for (const PrefixChoice &choice : settings.prefixes) {
        const bool fileFits = choice.filePrefix.size() <= settings.prefixLength;
        if (!fileFits || choice.genPrefix.size() > settings.prefixLength)
            refuse(reader, "the prefix " + (fileFits ? choice.genPrefix : choice.filePrefix) +
                               " of the module " + choice.module + " has more than " +
                               std::to_string(settings.prefixLength) + " characters (-PREFIXLEN=)");
    }
    if (settings.prefixStart.size() >= settings.prefixLength)
        refuse(reader, "-PREFIX=*:" + settings.prefixStart + " leaves no room in " +
                           std::to_string(settings.prefixLength) + " characters (-PREFIXLEN=)");
    checkStoredOptions(reader);
    if (settings.files.empty() && !settings.help && !settings.version && !reader.failed)
        refuse(reader, "no file is named; asntree --help tells more");
    return !reader.failed;
}

void placeOptionFiles(Settings &settings, Sources &sources) {
    std::vector<std::uint32_t> numbers(settings.optionFiles.files.size(), Place::NO_FILE);
    for (PathDirective &directive : settings.directives) {
        std::uint32_t &number = numbers[directive.file];
        if (number == Place::NO_FILE) {
            const SourceFile &file = settings.optionFiles[directive.file];
            number = addSource(sources, file.path, file.text)->number;
        }
        directive.pathPlace = {number, directive.pathOffset};
        directive.wordsPlace = {number, directive.wordsOffset};
    }
}

constexpr const char *USAGE = R"(Usage:

  asntree [options] [+option-file ...] FILE ...
  asntree --list TREE.stx ...

Compiles ASN.1 modules into syntax trees. FILE is a path, or a prefix x that stands for x.asn,
x.asn1, x.ASN or x.ASN1 in one of the directories of -A=.

Where things are:
  -A=directory            where sources are looked for; may be repeated
  -S=directory            where trees go
  -L=directory            where listings go; without it there are none
  -MD=file                writes what the trees depend on, for make and ninja

What is done:
  --check                 only messages, no trees
  --werror                warnings are errors
  --strict                slips that published modules hold are errors
  --skip-unsupported      leaves out, with a warning, what a tree can't hold
  --list                  prints what stands in trees, for people to read and to compare
  --color=WHEN            auto, always or never
  --help, --version

Names of files and in C:
  -PREFIX=Module:file:gen prefixes of the files and names that are generated from a module
  -PREFIX=*:start         what all other prefixes begin with
  -PREFIXLEN=N            longest prefix, 1 to 32 (32)
  -MERGE=prefix:Module,.. puts modules into one tree
  -UNIQUE=WHERE           no two C names are equal: YES in the run, INCLUDES in modules that include
                          one another, NO (YES)

Entries:
  -ENTRY=Module.Type:category:symbol
                          shorter: Type, Type:PDU, *, Module.*; a category alone is for all entries
  -ENCF= -DECF= -ASKF= -PRIF=
                          categories that get functions to encode, decode, ask and print

Forms in C (-INT= -REAL= -N= -COMPMASK= -CHOICE= and others as in the manual):
  -STATIC-LIMIT=N         octets of the longest static string (256)
  -ARRAY-LIMIT=N          elements of the longest array (32)
  -EXTERNAL=YEAR          1990 or 1994 (1994)
  -EXTENSIONS=WORD        SAVE or SKIP what later versions add (SAVE)
  -ADDITIONS=WORD         mandatory additions are OPTIONAL or STRICT (OPTIONAL)
  -EXT-CONSTRAINTS=WORD   of an extensible constraint NONE is kept, its ROOT, or all with a MARK (NONE)

All other options are stored in the trees; -BEO=VELMO=... are those of velmo. Options between
-BEGIN-SCOPE=prefix:prefix and -END-SCOPE are for these modules alone.

Option files hold an option or file a line, and lines "@Module.Type.component words".
)";

const char *usageText() {
    return USAGE;
}

std::string versionText() {
    return programVersion("asntree") + ", trees of version " + printVersionStri(TREE_VERSION, -1) + "\n";
}

} // namespace asntree
