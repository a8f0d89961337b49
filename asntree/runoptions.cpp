#include <algorithm>

#include "asntree/optionparts.h"
#include "asntree/words.h"
#include "options/checkers.h"
#include "options/naming.h"
#include "options/prefixopt.h"

/* Options that the run obeys as a whole. */

namespace asntree {

namespace {

/* Each result is null, or what the value has to be. */

const char *takeSourceDirectory(OptionReader &reader, const std::string &value) {
    std::string directory;
    if (!directoryOptionOK(&directory, value.c_str()))
        return "a directory";
    reader.settings.sourceDirectories.push_back(directory);
    return nullptr;
}

const char *takeTreeDirectory(OptionReader &reader, const std::string &value) {
    return directoryOptionOK(&reader.settings.treeDirectory, value.c_str()) ? nullptr
                                                                            : "a directory";
}

const char *takeListingDirectory(OptionReader &reader, const std::string &value) {
    return directoryOptionOK(&reader.settings.listingDirectory, value.c_str()) ? nullptr
                                                                               : "a directory";
}

const char *takeDependencyFile(OptionReader &reader, const std::string &value) {
    reader.settings.dependencyFile = value;
    return value.empty() ? "a file" : nullptr;
}

const char *takePrefixLength(OptionReader &reader, const std::string &value) {
    reader.settings.prefixLengthGiven = true;
    return byteOptionOK(&reader.settings.prefixLength, value.c_str(), 1, 32, nullptr)
               ? nullptr
               : "a number from 1 to 32";
}

/* "*:start"; a module's own part needs room behind it. */
const char *takePrefixStart(OptionReader &reader, const std::string &start) {
    constexpr std::size_t LONGEST = 16;
    if (start.empty() || start.size() > LONGEST || !isAsciiAlpha(start[0]) ||
        !std::all_of(start.begin(), start.end(),
                     [](char ch) { return isAsciiAlnum(ch) || ch == '_'; }))
        return "*: and a letter, and up to 15 letters, digits and \"_\"";
    reader.settings.prefixStart = start;
    return nullptr;
}

const char *takePrefix(OptionReader &reader, const std::string &value) {
    if (value.starts_with("*:"))
        return takePrefixStart(reader, value.substr(2));
    PrefixOption parts;
    if (!parsePrefixOption(value.c_str(), &parts))
        return "Module:file-prefix:generation-prefix";
    reader.settings.prefixes.push_back({std::string(parts.moduleName),
                                        std::string(parts.filePrefix),
                                        std::string(parts.genPrefix)});
    return nullptr;
}

bool isName(std::string_view text) {
    return !text.empty() && isAsciiUpper(text[0]) &&
           std::all_of(text.begin(), text.end(), isSymbolChar);
}

/* The parts of a list; an empty one is left for the caller to find. */
std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.emplace_back(text.substr(0, end));
        if (end == text.npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

const char *takeMerge(OptionReader &reader, const std::string &value) {
    constexpr const char *NEEDED = "prefix:Module,Module";
    const std::size_t colon = value.find(':');
    if (colon == value.npos)
        return NEEDED;
    MergeChoice choice{value.substr(0, colon), split(value.substr(colon + 1), ','), reader.where};
    const bool prefixOk = !choice.prefix.empty() && choice.prefix.size() <= 32 &&
                          std::all_of(choice.prefix.begin(), choice.prefix.end(), isSymbolChar);
    if (!prefixOk || !std::all_of(choice.modules.begin(), choice.modules.end(), isName))
        return NEEDED;
    reader.settings.merges.push_back(std::move(choice));
    return nullptr;
}

const char *takeUnique(OptionReader &reader, const std::string &value) {
    constexpr OptionWord words[] = {{static_cast<std::uint8_t>(UniqueNames::Run), "YES"},
                                    {static_cast<std::uint8_t>(UniqueNames::Includes), "INCLUDES"},
                                    {static_cast<std::uint8_t>(UniqueNames::No), "NO"},
                                    {0, nullptr}};
    std::uint8_t choice = 0;
    if (!byteOptionOK(&choice, value.c_str(), 1, 0, words))
        return "YES, INCLUDES or NO";
    reader.settings.unique = static_cast<UniqueNames>(choice);
    return nullptr;
}

/* "Type", "Module.Type", "Module.*" or "*" */
bool readEntryName(std::string_view text, EntryOption &entry) {
    const std::size_t dot = text.find('.');
    if (dot != text.npos) {
        entry.module = text.substr(0, dot);
        text.remove_prefix(dot + 1);
    }
    entry.type = text;
    return (dot == text.npos || isName(entry.module) || entry.module.empty()) &&
           (text == "*" || isName(text)) && (dot == text.npos) == entry.module.empty();
}

const char *takeEntry(OptionReader &reader, const std::string &value) {
    constexpr const char *NEEDED =
        "a type (Module.Type, Type, Module.* or *), a category (PDU, SDU or digits from 0 to 7) "
        "and a symbol, with \":\" between them";
    EntryOption entry;
    entry.scope = reader.scope;
    entry.where = reader.where;
    const std::size_t colon = value.find(':');
    const std::string head = value.substr(0, colon);
    if (colon == value.npos && readCategories(head, entry.categories)) {
        reader.settings.entries.push_back(std::move(entry));
        return nullptr;
    }
    if (!head.empty() && !readEntryName(head, entry))
        return NEEDED;
    if (colon != value.npos) {
        const char *rest = value.c_str() + colon + 1;
        const char *category = nullptr;
        const char *symbol = nullptr;
        if (!parseEntryOption(rest, &category, &symbol))
            return NEEDED;
        entry.symbol = symbol == nullptr ? "" : symbol;
        std::string text = value.substr(colon + 1);
        text.resize(std::min(text.find(':'), text.size()));
        if (!text.empty() && !readCategories(text, entry.categories))
            return NEEDED;
    } else if (head.empty()) {
        return NEEDED;
    }
    reader.settings.entries.push_back(std::move(entry));
    return nullptr;
}

const char *beginScope(OptionReader &reader, const std::string &value) {
    constexpr std::size_t MAX_SCOPES = 1000;
    if (reader.inScope)
        warn(reader, "-BEGIN-SCOPE within a scope ends that one");
    std::vector<std::string> names = split(value, ':');
    const auto isBad = [](const std::string &name) {
        return name.empty() || !std::all_of(name.begin(), name.end(), isSymbolChar);
    };
    if (std::any_of(names.begin(), names.end(), isBad))
        return "file prefixes or names of modules with \":\" between them";
    std::vector<std::vector<std::string>> &scopes = reader.settings.scopes;
    const auto known = std::find(scopes.begin(), scopes.end(), names);
    reader.inScope = true;
    if (known == scopes.end() && scopes.size() >= MAX_SCOPES)
        return "one of at most 1000 different scopes";
    reader.scope = static_cast<ScopeNr>(known - scopes.begin()) + 1;
    if (reader.scope > scopes.size())
        scopes.push_back(std::move(names));
    return nullptr;
}

const char *endScope(OptionReader &reader, const std::string &) {
    if (!reader.inScope)
        warn(reader, "-END-SCOPE without -BEGIN-SCOPE");
    reader.scope = 0;
    reader.inScope = false;
    return nullptr;
}

struct RunOption {
    const char *name;
    const char *(*take)(OptionReader &reader, const std::string &value);
};
constexpr RunOption runOptions[] = {
    {"A=", takeSourceDirectory},  {"S=", takeTreeDirectory},        {"L=", takeListingDirectory},
    {"MD=", takeDependencyFile},  {"PREFIXLEN=", takePrefixLength}, {"PREFIX=", takePrefix},
    {"MERGE=", takeMerge},        {"UNIQUE=", takeUnique},          {"ENTRY=", takeEntry},
    {"BEGIN-SCOPE=", beginScope}, {"END-SCOPE", endScope},
};

} // namespace

bool takeRunOption(OptionReader &reader, const std::string &text) {
    for (const RunOption &option : runOptions) {
        const char *value = isOptionStri(text.c_str() + 1, option.name);
        if (value == nullptr)
            continue;
        if (const char *needed = option.take(reader, value))
            refuse(reader, "the value must be " + std::string(needed) + ": " + text);
        return true;
    }
    return false;
}

} // namespace asntree
