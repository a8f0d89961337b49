#include <algorithm>

#include "asntree/optionparts.h"
#include "base/text.h"
#include "options/checkers.h"

/* What the options say for one module: the compiler's own, and those of the tree's catalogue that
   are the compiler's to obey. */

namespace asntree {

namespace {

using M = ModuleSettings;

constexpr OptionWord severities[] = {{0, "IGNORE"}, {1, "WARNING"}, {2, "ERROR"}, {0, nullptr}};
constexpr OptionWord extensionWords[] = {{0, "SKIP"}, {1, "SAVE"}, {0, nullptr}};
constexpr OptionWord additionWords[] = {{0, "OPTIONAL"}, {1, "STRICT"}, {0, nullptr}};
constexpr OptionWord constraintWords[] = {{static_cast<std::uint8_t>(ExtConstraints::None), "NONE"},
                                          {static_cast<std::uint8_t>(ExtConstraints::Root), "ROOT"},
                                          {static_cast<std::uint8_t>(ExtConstraints::Mark), "MARK"},
                                          {0, nullptr}};

struct ObeyedRow {
    const char *name;
    bool own; /* unknown to velmo */
    bool (*take)(M &settings, const ObeyedRow &row, const char *value);
    std::uint8_t M::*place = nullptr;
    const OptionWord *words = nullptr;
    int max = 0;
};

bool takeIntSize(M &settings, const ObeyedRow &row, const char *value) {
    return intSizeOptionOK(&(settings.*row.place), value, row.place == &M::intForm);
}

bool takeRealSize(M &settings, const ObeyedRow &, const char *value) {
    if (!realSizeOptionOK(&settings.realForm, value))
        return false;
    if (settings.realForm == VF_NONE)
        settings.realForm = VF_REAL64;
    return true;
}

bool takeByte(M &settings, const ObeyedRow &row, const char *value) {
    return byteOptionOK(&(settings.*row.place), value, 0, row.max, row.words);
}

bool takeNameLength(M &settings, const ObeyedRow &, const char *value) {
    return byteOptionOK(&settings.nameLength, value, 8, 128, nullptr);
}

bool takeCategories(M &settings, const ObeyedRow &row, const char *value) {
    return bitVector8OptionOK(&(settings.*row.place), value);
}

/* -EXTERNAL= and -STANDARD-VERSION= */
bool takeYear(M &settings, const ObeyedRow &, const char *value) {
    const std::string_view year = value;
    if (year != "1990" && year != "1994")
        return false;
    settings.external = year == "1990" ? VF_EXTERNAL_1990 : VF_EXTERNAL_1994;
    return true;
}

/* Only the word OLD says something about forms that this compiler chooses. */
bool takeCGeneration(M &settings, const ObeyedRow &, const char *value) {
    if (strUpper(":" + std::string(value) + ":").find(":OLD:") != std::string::npos) {
        settings.intForm = settings.choiceForm = VF_I16;
        settings.listForm = settings.maskForm = VF_I32;
    }
    return true;
}

/* -DEFINITION-CATEGORY= and -MORLA=. With a prefix in front the category is one module's alone; that
   others of the run then hold large numbers with a sign does no harm. */
bool takeMorla(M &settings, const ObeyedRow &, const char *value) {
    const std::string word = strUpper(value);
    settings.entriesInHomes = word.find("MORLA-") != word.npos || word == "1" || word == "2";
    return true;
}

bool takeConstraints(M &settings, const ObeyedRow &row, const char *value) {
    std::uint8_t choice = 0;
    if (!byteOptionOK(&choice, value, 1, 0, row.words))
        return false;
    settings.extConstraints = static_cast<ExtConstraints>(choice);
    return true;
}

template <std::uint32_t M::*place>
bool takeLimit(M &settings, const ObeyedRow &, const char *value) {
    std::int32_t limit = 0;
    if (!int32OptionOK(&limit, value, 0, 2147483647))
        return false;
    settings.*place = static_cast<std::uint32_t>(limit);
    return true;
}

constexpr ObeyedRow obeyedRows[] = {
    {"INT=", false, takeIntSize, &M::intForm},
    {"N=", false, takeIntSize, &M::listForm},
    {"COMPMASK=", false, takeIntSize, &M::maskForm},
    {"CHOICE=", false, takeIntSize, &M::choiceForm},
    {"REAL=", false, takeRealSize},
    {"C-GENERATION=", false, takeCGeneration},
    {"NAMELEN=", false, takeNameLength},
    {"DEFINITION-CATEGORY=", false, takeMorla},
    {"MORLA=", false, takeMorla},
    {"EXTENSIONS=", false, takeByte, &M::saveExtensions, extensionWords, 1},
    {"RECURSION=", false, takeByte, &M::recursion, severities, RECURSION_IS_ERROR},
    {"STANDARD-VERSION=", false, takeYear},
    {"ENCF=", false, takeCategories, &M::encodeCategories},
    {"DECF=", false, takeCategories, &M::decodeCategories},
    {"ASKF=", false, takeCategories, &M::askCategories},
    {"PRIF=", false, takeCategories, &M::printCategories},
    {"STATIC-LIMIT=", true, takeLimit<&M::staticLimit>},
    {"ARRAY-LIMIT=", true, takeLimit<&M::arrayLimit>},
    {"EXTERNAL=", true, takeYear},
    {"ADDITIONS=", true, takeByte, &M::strictAdditions, additionWords, 1},
    {"EXT-CONSTRAINTS=", true, takeConstraints, nullptr, constraintWords},
};

bool storesName(const std::vector<StoredOption> &stored, std::string_view begin) {
    return std::any_of(stored.begin(), stored.end(), [begin](const StoredOption &option) {
        return option.text.starts_with(begin);
    });
}

/* Names may stand with "-" or with "_" in an option. */
bool sameName(std::string_view a, std::string_view b) {
    return convertHyphens(std::string(a)) == convertHyphens(std::string(b));
}

/* "-ENTRY=Type:category:symbol"; the category as digits. */
std::string entryText(const EntryOption &entry) {
    std::string text = "-ENTRY=" + entry.type + ":";
    for (int category = 0; category < 8; ++category)
        if ((entry.categories >> category & 1) != 0)
            text += static_cast<char>('0' + category);
    return text + ":" + entry.symbol;
}

} // namespace

ObeyedOption obey(ModuleSettings &settings, const char *option) {
    for (const ObeyedRow &row : obeyedRows)
        if (const char *value = isOptionStri(option, row.name))
            return {true, row.own, row.take(settings, row, value)};
    return {};
}

bool isInScope(const Settings &settings, ScopeNr scope, std::string_view filePrefix,
               std::string_view moduleName) {
    if (scope == 0)
        return true;
    const std::vector<std::string> &names = settings.scopes[scope - 1];
    return std::any_of(names.begin(), names.end(), [&](const std::string &name) {
        return name == filePrefix || name == moduleName;
    });
}

ModuleSettings moduleSettings(const Settings &settings, std::string_view filePrefix,
                              std::string_view moduleName) {
    ModuleSettings result;
    for (const ModuleOption &option : settings.options)
        if (isInScope(settings, option.scope, filePrefix, moduleName))
            obey(result, option.text.c_str() + 1);
    return result;
}

std::vector<StoredOption> storedOptions(const Settings &settings, std::string_view filePrefix,
                                        std::string_view moduleName,
                                        const std::vector<std::string_view> &others) {
    const auto standsInTree = [&](std::string_view module) {
        return module.empty() || sameName(module, moduleName) ||
               std::any_of(others.begin(), others.end(),
                           [&](std::string_view other) { return sameName(module, other); });
    };
    std::vector<StoredOption> stored;
    for (const PrefixChoice &choice : settings.prefixes)
        if (choice.filePrefix != choice.genPrefix)
            stored.push_back({TED_OPTION, "-PREFIX=" + choice.module + ":" + choice.filePrefix +
                                              ":" + choice.genPrefix});
    for (const ModuleOption &option : settings.options)
        if (option.stored && isInScope(settings, option.scope, filePrefix, moduleName))
            stored.push_back({option.tedKind, option.text});
    for (const EntryOption &entry : settings.entries)
        if (!entry.symbol.empty() && entry.type != "*" && standsInTree(entry.module) &&
            isInScope(settings, entry.scope, filePrefix, moduleName))
            stored.push_back({TED_OPTION, entryText(entry)});
    if (!storesName(stored, "-NAMELEN="))
        stored.insert(stored.begin(), {TED_OPTION, "-NAMELEN=128"});
    if (!storesName(stored, "-BEO=VELMO=CPLUSPLUS="))
        stored.push_back({TED_BACKEND_OPTION, "-BEO=VELMO=CPLUSPLUS=YES"});
    return stored;
}

} // namespace asntree
