#include "asntree/prefixes.h"

#include <algorithm>
#include <map>

#include "asntree/references.h"

namespace asntree {

namespace {

/* Prefixes that no module may have: files of the run-time layer would be overwritten or included in
   place of the module's, and some systems keep names for devices. */
constexpr std::string_view reservedPrefixes[] = {
    "asn",    "asntyp",  "asncodec", "asntst", "asnuti", "asnstrc", "asnstrt", "asnapi",
    "asnint", "asntest", "con",      "prn",    "aux",    "nul",     "com1",    "com2",
    "com3",   "com4",    "com5",     "com6",   "com7",   "com8",    "com9",    "lpt1",
    "lpt2",   "lpt3",    "lpt4",     "lpt5",   "lpt6",   "lpt7",    "lpt8",    "lpt9"};

bool isLetter(char ch) {
    return (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
}

char lower(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

/* Two prefixes with the same key would name the same file, or the same guard of an include. */
std::string keyOf(std::string_view prefix) {
    std::string key;
    for (char ch : prefix)
        key += ch == '-' ? '_' : lower(ch);
    return key;
}

std::string withUnderscores(std::string_view name) {
    std::string text(name);
    std::replace(text.begin(), text.end(), '-', '_');
    return text;
}

bool isReserved(const std::string &key) {
    return std::find(std::begin(reservedPrefixes), std::end(reservedPrefixes), key) !=
           std::end(reservedPrefixes);
}

/* Names in C begin with a prefix, so it has to begin with a letter. */
bool isGoodPrefix(std::string_view prefix, std::size_t length) {
    return !prefix.empty() && prefix.size() <= length && isLetter(prefix.front()) &&
           std::all_of(
               prefix.begin(), prefix.end(),
               [](char ch) { return isLetter(ch) || (ch >= '0' && ch <= '9') || ch == '_'; }) &&
           !isReserved(keyOf(prefix));
}

std::string_view stemOf(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash != path.npos)
        path.remove_prefix(slash + 1);
    return path.substr(0, path.find_last_of('.'));
}

/* The files that hold one module, by their texts: of a file that was searched for a module others
   may not be in the run. */
std::vector<bool> filesOfOneModule(const Sources &sources) {
    std::vector<bool> single;
    for (const SourceFile &file : sources.files)
        single.push_back(
            std::count_if(file.tokens.begin(), file.tokens.end(),
                          [](const Token &token) { return token.word == Word::DEFINITIONS; }) == 1);
    return single;
}

/* The prefixes that are given away, by key, with what they are given to. */
struct Taken {
    std::map<std::string, std::string> owners;
    bool has(std::string_view prefix) const {
        const std::string key = keyOf(prefix);
        return owners.count(key) != 0 || isReserved(key);
    }
    void add(std::string_view prefix, std::string owner) {
        owners.emplace(keyOf(prefix), std::move(owner));
    }
};

std::vector<const ModuleInfo *> sortedModules(const Compilation &c, const Plan &plan) {
    std::vector<const ModuleInfo *> modules;
    for (const TreePlan &tree : plan.trees)
        modules.insert(modules.end(), tree.modules.begin(), tree.modules.end());
    std::sort(modules.begin(), modules.end(),
              [&c](const ModuleInfo *a, const ModuleInfo *b) { return standsBefore(c, *a, *b); });
    return modules;
}

void takeGiven(Compilation &c, Taken &taken, const std::string &option, const std::string &prefix,
               const std::string &owner) {
    if (!taken.has(prefix)) {
        taken.add(prefix, owner);
        return;
    }
    auto other = taken.owners.find(keyOf(prefix));
    error(c.diagnostics, {},
          option + ": the prefix `" + prefix + "` is " +
              (other == taken.owners.end() ? "that of files of the run-time layer or of a device"
                                           : "that of " + other->second + " too"));
}

void takePrefixOptions(Compilation &c, const Settings &settings, Plan &plan, Taken &taken,
                       const std::vector<const ModuleInfo *> &modules) {
    std::unordered_map<std::string, const ModuleInfo *> byName;
    for (const ModuleInfo *module : modules)
        byName.emplace(withUnderscores(module->syntax->name.text), module);
    for (const PrefixChoice &choice : settings.prefixes) {
        auto found = byName.find(withUnderscores(choice.module));
        if (found == byName.end())
            continue; /* an option file may serve many runs */
        auto [place, isNew] = plan.prefixes.emplace(
            found->second, ModulePrefixes{choice.filePrefix, choice.genPrefix});
        if (!isNew)
            error(c.diagnostics, {},
                  "-PREFIX=" + choice.module + ": the module has a prefix already, `" +
                      place->second.gen + "`");
        else
            takeGiven(c, taken, "-PREFIX=" + choice.module, choice.genPrefix,
                      "module `" + choice.module + "`");
    }
}

/* Modules alone in a file get the file's name, unless several want the same one. */
void takeFileNames(const Compilation &c, const Settings &settings, Plan &plan, Taken &taken,
                   const std::vector<const ModuleInfo *> &modules) {
    std::map<std::string, std::vector<const ModuleInfo *>> wishes;
    std::map<std::string, std::string> names;
    const std::vector<bool> single = filesOfOneModule(c.sources);
    for (const ModuleInfo *module : modules) {
        const SourceFile &file = c.sources[module->syntax->file];
        const std::string stem = settings.prefixStart + withUnderscores(stemOf(file.path));
        if (plan.prefixes.count(module) != 0 || !isGoodPrefix(stem, settings.prefixLength) ||
            !single[module->syntax->file])
            continue;
        wishes[keyOf(stem)].push_back(module);
        names[keyOf(stem)] = stem;
    }
    for (const auto &[key, wishing] : wishes)
        if (wishing.size() == 1 && !taken.has(key)) {
            plan.prefixes.emplace(wishing.front(), ModulePrefixes{names[key], names[key]});
            taken.add(key, "module `" + std::string(wishing.front()->syntax->name.text) + "`");
        }
}

void takeModuleNames(const Settings &settings, Plan &plan, Taken &taken,
                     const std::vector<const ModuleInfo *> &modules) {
    const std::size_t length = settings.prefixLength;
    const std::string &start = settings.prefixStart;
    std::unordered_map<std::string, int> counters;
    for (const ModuleInfo *module : modules) {
        if (plan.prefixes.count(module) != 0)
            continue;
        const std::string name(module->syntax->name.text);
        std::string prefix = start + prefixOfName(name, length - start.size());
        int &counter = counters[keyOf(prefix)];
        const std::string plain = prefix;
        while (taken.has(prefix)) {
            counter = counter == 0 ? 2 : counter + 1;
            const std::string tail = "_" + std::to_string(counter);
            prefix = plain.substr(0, length > tail.size() ? length - tail.size() : 1) + tail;
        }
        taken.add(prefix, "module `" + name + "`");
        plan.prefixes.emplace(module, ModulePrefixes{prefix, prefix});
    }
}

} // namespace

std::string prefixOfName(std::string_view moduleName, std::size_t length) {
    std::vector<std::string_view> words;
    while (!moduleName.empty()) {
        const std::size_t end = std::min(moduleName.find('-'), moduleName.size());
        words.push_back(moduleName.substr(0, end));
        moduleName.remove_prefix(std::min(end + 1, moduleName.size()));
    }
    std::size_t longest = 0;
    for (std::string_view word : words)
        longest = std::max(longest, word.size());
    std::string text;
    for (const std::string_view between : {"_", ""})
        for (std::size_t limit = longest; limit > 0; --limit) {
            /* Words of one letter with "_" between them say less than letters alone. */
            if (limit < 3 && !between.empty())
                break;
            text.clear();
            for (std::string_view word : words)
                text.append(text.empty() ? "" : between).append(word.substr(0, limit));
            if (text.size() <= length)
                return text;
        }
    return text.substr(0, length);
}

void choosePrefixes(Compilation &c, const Settings &settings, Plan &plan) {
    const std::vector<const ModuleInfo *> modules = sortedModules(c, plan);
    Taken taken;
    for (const TreePlan &tree : plan.trees)
        if (!tree.genPrefix.empty())
            takeGiven(c, taken, "-MERGE=" + tree.genPrefix, tree.genPrefix, "merged modules");
    std::unordered_map<const ModuleInfo *, bool> byOption;
    takePrefixOptions(c, settings, plan, taken, modules);
    for (const auto &[module, prefixes] : plan.prefixes)
        byOption[module] = true;
    takeFileNames(c, settings, plan, taken, modules);
    takeModuleNames(settings, plan, taken, modules);
    for (TreePlan &tree : plan.trees) {
        if (!tree.genPrefix.empty())
            continue;
        auto given = std::find_if(tree.modules.begin(), tree.modules.end(),
                                  [&](const ModuleInfo *m) { return byOption.count(m) != 0; });
        const ModuleInfo *first = given == tree.modules.end() ? tree.modules.front() : *given;
        tree.filePrefix = plan.prefixes.at(first).file;
        tree.genPrefix = plan.prefixes.at(first).gen;
    }
}

} // namespace asntree
