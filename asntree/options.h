#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "asntree/source.h"
#include "store/ketradef.h"

/* The command line and the option files that it names: what they say for the run, for each module,
   and for single definitions. */

namespace asntree {

/* Number of a scope: 0 is all modules, n stands for `scopes[n - 1]` of the settings. */
using ScopeNr = std::uint32_t;

/* An option as it is stored in trees and obeyed for their modules. */
struct ModuleOption {
    std::string text; /* "-NAME=value", the name in capitals */
    int tedKind = TED_OPTION;
    bool stored = true; /* false: it is this compiler's alone */
    ScopeNr scope = 0;
    std::string where; /* "pdus.opt:3: ", or empty on the command line */
};

/* "-PREFIX=Module:file:gen" */
struct PrefixChoice {
    std::string module; /* with its hyphens */
    std::string filePrefix;
    std::string genPrefix;
};

/* "-MERGE=prefix:Module,Module" */
struct MergeChoice {
    std::string prefix;
    std::vector<std::string> modules;
    std::string where;
};

/* "-ENTRY=Module.Type:category:symbol" and its shorter forms */
struct EntryOption {
    std::string module;          /* empty: any */
    std::string type;            /* "*": all definitions; empty: what holds for all entries */
    std::uint8_t categories = 0; /* bit n: category n; 0: none was given */
    std::string symbol;          /* empty: none was given */
    ScopeNr scope = 0;
    std::string where;
};

/* "@Module.Type.component words" in an option file */
struct PathDirective {
    std::vector<std::string> path; /* module, definition, then components, fields and "*" */
    std::uint32_t file = 0;        /* number in `optionFiles` */
    std::uint32_t pathOffset = 0;
    std::uint32_t wordsOffset = 0;
    std::string words;
    Place pathPlace; /* both known once `placeOptionFiles` was called */
    Place wordsPlace;
};

enum class UniqueNames : std::uint8_t { Run, Includes, No };
enum class ExtConstraints : std::uint8_t { None, Root, Mark };
enum class ColorWish : std::uint8_t { Auto, Always, Never };

struct Settings {
    std::vector<std::string> files;             /* as named: paths or prefixes */
    std::vector<std::string> sourceDirectories; /* -A=; each ends with "/" */
    std::string treeDirectory;                  /* -S=, the same; empty: the current one */
    std::string listingDirectory;               /* -L=; empty: no listings */
    std::string dependencyFile;                 /* -MD= */
    std::uint8_t prefixLength = 32;             /* -PREFIXLEN= */
    bool prefixLengthGiven = false;
    UniqueNames unique = UniqueNames::Run;
    ColorWish color = ColorWish::Auto;
    bool checkOnly = false;
    bool list = false; /* --list: the files are trees */
    bool warningsAreErrors = false;
    bool strict = false;
    bool skipUnsupported = false;
    bool help = false;
    bool version = false;
    std::vector<PrefixChoice> prefixes;
    std::string prefixStart; /* -PREFIX=*:start: in front of all prefixes that no option gives */
    std::vector<MergeChoice> merges;
    std::vector<EntryOption> entries;
    std::vector<ModuleOption> options;            /* in their order */
    std::vector<std::vector<std::string>> scopes; /* file prefixes or names of modules */
    std::vector<PathDirective> directives;
    Sources optionFiles;
};

inline constexpr std::uint8_t RECURSION_IS_ERROR = 2;

/* What the options say for one module. */
struct ModuleSettings {
    std::uint8_t intForm = VF_NONE; /* VF_NONE chooses by the range; the same below */
    std::uint8_t realForm = VF_REAL64;
    std::uint8_t listForm = VF_NONE;   /* -N=: control form of lists */
    std::uint8_t maskForm = VF_NONE;   /* -COMPMASK= */
    std::uint8_t choiceForm = VF_NONE; /* -CHOICE= */
    std::uint8_t external = VF_EXTERNAL_1994;
    std::uint8_t nameLength = 128;
    std::uint8_t saveExtensions = 1;  /* -EXTENSIONS= */
    std::uint8_t recursion = 0;       /* -RECURSION=: 0, 1 warns, RECURSION_IS_ERROR */
    std::uint8_t strictAdditions = 0; /* -ADDITIONS=STRICT */
    bool entriesInHomes = false;      /* a MORLA application */
    ExtConstraints extConstraints = ExtConstraints::None;
    std::uint8_t encodeCategories = 255; /* -ENCF= and so on: categories that get functions */
    std::uint8_t decodeCategories = 255;
    std::uint8_t askCategories = 255;
    std::uint8_t printCategories = 255;
    std::uint32_t staticLimit = 256; /* octets */
    std::uint32_t arrayLimit = 32;   /* elements */
};

struct StoredOption {
    int tedKind;
    std::string text;
};

/* Reads the command line and its option files. False if something in them is wrong. `message` gets
   a line for each mistake, and for what is passed over although it looks like more than a comment,
   which alone is no failure. Without a mistake, `help` and `version` don't need any file. */
bool parseCommandLine(int argc, char **argv, Settings &settings, std::string &message);

/* Gives the option files that hold directives to the sources of a run, and the directives their
   places in them. */
void placeOptionFiles(Settings &settings, Sources &sources);

/* True if a scope holds a module. */
bool isInScope(const Settings &settings, ScopeNr scope, std::string_view filePrefix,
               std::string_view moduleName);
ModuleSettings moduleSettings(const Settings &settings, std::string_view filePrefix,
                              std::string_view moduleName);
/* The options of a tree, in the order in which they are stored: those of the command line, NAMELEN=
   first and the word for C++ names last if they aren't among them. Entry options are stored where
   they give a symbol, prefix options where the two prefixes differ. `others`: further modules that
   stand in the tree. */
std::vector<StoredOption> storedOptions(const Settings &settings, std::string_view filePrefix,
                                        std::string_view moduleName,
                                        const std::vector<std::string_view> &others = {});

const char *usageText();
std::string versionText();

} // namespace asntree
