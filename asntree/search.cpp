#include "asntree/search.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "asntree/compile.h"
#include "asntree/lexer.h"
#include "asntree/names.h"
#include "asntree/parser.h"
#include "asntree/predefined.h"
#include "asntree/values.h"

namespace asntree {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view suffixes[] = {".asn", ".asn1", ".ASN", ".ASN1"};
/* Octets in which the first header of a file stands, behind all that comments say. */
constexpr std::size_t BEGINNING = 64 * 1024;

/* A file, a pipe or the like. */
bool isFile(const std::string &path) {
    std::error_code failure;
    return fs::exists(path, failure) && !fs::is_directory(path, failure);
}

/* Sources of a directory in the order of their names. */
std::vector<std::string> listSources(const std::string &directory, SourceIndex &index) {
    std::vector<std::string> paths;
    std::error_code failure;
    fs::directory_iterator entry(directory, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        const std::string suffix = entry->path().extension().string();
        std::error_code ignored;
        if (std::find(std::begin(suffixes), std::end(suffixes), suffix) != std::end(suffixes) &&
            entry->is_regular_file(ignored))
            paths.push_back(directory + entry->path().filename().string());
    }
    if (failure)
        index.problems.push_back("can't read the directory " + directory + ": " +
                                 failure.message());
    std::sort(paths.begin(), paths.end());
    return paths;
}

/* Enters the headers in the first `limit` octets of a file; true if there is more. */
bool addHeaders(SourceIndex &index, const std::string &path, std::size_t limit) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    char block[16 * 1024];
    while (file && text.size() < limit) {
        file.read(block, sizeof block);
        text.append(block, static_cast<std::size_t>(file.gcount()));
    }
    for (const std::string &module : moduleHeaders(text)) {
        std::vector<std::string> &files = index.files[module];
        if (std::find(files.begin(), files.end(), path) == files.end())
            files.push_back(path);
    }
    return text.size() >= limit;
}

/* The files that seem to hold a module. */
std::vector<std::string> filesOf(const Settings &settings, SourceIndex &index,
                                 const std::string &module) {
    if (!index.made)
        for (const std::string &directory : settings.sourceDirectories)
            for (const std::string &path : listSources(directory, index))
                if (addHeaders(index, path, BEGINNING))
                    index.begun.push_back(path);
    index.made = true;
    if (index.files.count(module) == 0 && !index.whole) {
        index.whole = true;
        for (const std::string &path : index.begun)
            addHeaders(index, path, std::string::npos);
    }
    auto found = index.files.find(module);
    return found == index.files.end() ? std::vector<std::string>() : found->second;
}

/* The path that a name on the command line means, empty if there is none; `tried` gets what was
   looked for. */
std::string findNamed(const Settings &settings, const std::string &name,
                      std::vector<std::string> &tried) {
    const auto exists = [&tried](const std::string &path) {
        tried.push_back(path);
        return isFile(path);
    };
    if (exists(name))
        return name;
    std::vector<std::string> directories = settings.sourceDirectories;
    if (directories.empty() || name.starts_with('/'))
        directories = {""};
    for (const std::string &directory : directories) {
        if (!directory.empty() && exists(directory + name))
            return tried.back();
        for (std::string_view suffix : suffixes)
            if (exists(directory + name + std::string(suffix)))
                return tried.back();
    }
    return {};
}

/* The same for a file by whatever way it is reached. */
std::string wholePath(const std::string &path) {
    std::error_code failure;
    const fs::path whole = fs::weakly_canonical(path, failure);
    return failure ? path : whole.string();
}

SourceFile *readFile(Compilation &c, const std::string &path) {
    std::string why;
    SourceFile *file = readSource(c.sources, path, why);
    if (file == nullptr)
        error(c.diagnostics, {}, "can't read " + path + ": " + why);
    return file;
}

/* The modules of a file that are in no run yet. */
SpareModules &spareOf(Compilation &c, Search &search, const std::string &path) {
    SpareModules &spare = search.spare[path];
    if (!search.read.insert(wholePath(path)).second)
        return spare;
    const int errors = c.diagnostics.errors;
    if (SourceFile *file = readFile(c, path)) {
        lex(*file, c.diagnostics);
        ParseContext context = c.parsing();
        spare.modules = parseFile(context, *file);
    }
    spare.incomplete = c.diagnostics.errors != errors;
    return spare;
}

bool hasIdentifier(Compilation &c, const ModuleInfo &importer, const ImportFrom &import,
                   const Module &module) {
    if (!import.identifier.given() || !module.identifier.given())
        return !import.identifier.given();
    const std::vector<Number> wanted = arcsOf(c, import.identifier, &importer.root);
    return wanted.empty() || wanted == arcsOf(c, module.identifier, &importer.root);
}

/* Of several files with modules of the name the first one with the identifier counts, else the
   first one of all. */
bool addImported(Compilation &c, const Settings &settings, Search &search,
                 const ModuleInfo &importer, const ImportFrom &import) {
    SpareModules *from = nullptr;
    std::size_t chosen = 0;
    for (const std::string &path :
         filesOf(settings, search.index, std::string(import.module.text))) {
        SpareModules &spare = spareOf(c, search, path);
        auto named = std::find_if(
            spare.modules.begin(), spare.modules.end(),
            [&import](const Module *module) { return module->name.text == import.module.text; });
        if (named == spare.modules.end())
            continue;
        const bool fits = hasIdentifier(c, importer, import, **named);
        if (from == nullptr || fits) {
            from = &spare;
            chosen = static_cast<std::size_t>(named - spare.modules.begin());
        }
        if (fits)
            break;
    }
    if (from == nullptr)
        return false;
    addModule(c, from->modules[chosen])->incomplete = from->incomplete;
    from->modules.erase(from->modules.begin() + static_cast<std::ptrdiff_t>(chosen));
    return true;
}

} // namespace

bool addNamedFile(Compilation &c, const Settings &settings, Search &search,
                  const std::string &name) {
    std::vector<std::string> tried;
    const std::string path = findNamed(settings, name, tried);
    if (path.empty()) {
        std::string text = "there is no file " + name;
        for (std::size_t i = 1; i < tried.size(); ++i)
            text += (i == 1 ? " (nor " : ", ") + tried[i];
        error(c.diagnostics, {}, text + (tried.size() > 1 ? ")" : ""));
        return false;
    }
    if (!search.read.insert(wholePath(path)).second)
        return true;
    if (c.modules.empty())
        addPredefinedModule(c); /* its text is the first source of every run */
    SourceFile *file = readFile(c, path);
    if (file != nullptr)
        addFile(c, *file);
    return file != nullptr;
}

void addImportedModules(Compilation &c, const Settings &settings, Search &search) {
    std::unordered_set<std::string> missed;
    for (std::size_t i = 1; i < c.modules.size(); ++i)
        for (const ImportFrom *import : missingModules(c, *c.modules[i])) {
            const std::string name(import->module.text);
            if (missed.count(name) == 0 && c.modulesByName.count(import->module.text) == 0 &&
                !addImported(c, settings, search, *c.modules[i], *import))
                missed.insert(name);
        }
    for (const std::string &problem : search.index.problems)
        warning(c.diagnostics, {}, problem);
}

} // namespace asntree
