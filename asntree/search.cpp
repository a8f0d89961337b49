#include "asntree/search.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "asntree/lexer.h"
#include "asntree/names.h"
#include "asntree/parser.h"
#include "asntree/values.h"

namespace asntree {

namespace fs = std::filesystem;

namespace {

constexpr const char *suffixes[] = {".asn", ".asn1", ".ASN", ".ASN1"};
/* Octets in which the first header of a file stands, behind all that comments say. */
constexpr std::size_t BEGINNING = 64 * 1024;

bool isFile(const std::string &path) {
    std::error_code failure;
    return fs::is_regular_file(path, failure) || fs::is_fifo(path, failure);
}

bool isSource(const fs::path &path) {
    return std::find(std::begin(suffixes), std::end(suffixes), path.extension().string()) !=
           std::end(suffixes);
}

/* The same file by whatever way it is reached. */
std::string keyOf(const std::string &path) {
    std::error_code failure;
    const fs::path whole = fs::weakly_canonical(path, failure);
    return failure ? path : whole.string();
}

void listDirectories(Search &search) {
    if (search.listed)
        return;
    search.listed = true;
    for (const std::string &directory : search.directories) {
        std::vector<std::string> names;
        std::error_code failure;
        fs::directory_iterator entries(directory.empty() ? "." : directory, failure);
        for (; !failure && entries != fs::directory_iterator(); entries.increment(failure))
            if (isSource(entries->path()) && isFile(entries->path().string()))
                names.push_back(directory + entries->path().filename().string());
        std::sort(names.begin(), names.end());
        search.all.insert(search.all.end(), names.begin(), names.end());
    }
}

std::string readText(const std::string &path, std::size_t limit) {
    std::string text;
    std::ifstream file(path, std::ios::binary);
    char block[16 * 1024];
    while (file && text.size() < limit) {
        file.read(block, static_cast<std::streamsize>(std::min(sizeof block, limit - text.size())));
        text.append(block, static_cast<std::size_t>(file.gcount()));
    }
    return text;
}

void addHeaders(Search &search, const std::string &path, std::string_view text) {
    for (std::string &name : moduleHeaders(text)) {
        std::vector<std::string> &files = search.files[name];
        if (std::find(files.begin(), files.end(), path) == files.end())
            files.push_back(path);
    }
}

void readBeginnings(Search &search) {
    if (search.listed)
        return;
    listDirectories(search);
    for (const std::string &path : search.all) {
        const std::string text = readText(path, BEGINNING);
        addHeaders(search, path, text);
        if (text.size() == BEGINNING)
            search.begun.push_back(path);
    }
}

/* Files with the header of a module; those whose whole text has to be read for it come last. */
std::vector<std::string> filesOf(Search &search, const std::string &module) {
    readBeginnings(search);
    if (search.files.count(module) == 0 && !search.readWhole) {
        search.readWhole = true;
        for (const std::string &path : search.begun)
            addHeaders(search, path, readText(path, std::string::npos));
    }
    auto found = search.files.find(module);
    return found == search.files.end() ? std::vector<std::string>() : found->second;
}

/* The modules of a file; nothing if it was read before or can't be read. */
std::vector<Module *> parsePath(Compilation &c, Search &search, const std::string &path,
                                std::string &why) {
    if (!search.read.insert(keyOf(path)).second)
        return {};
    SourceFile *file = readSource(c.sources, path, why);
    if (file == nullptr)
        return {};
    lex(*file, c.diagnostics);
    ParseContext context = c.parsing();
    return parseFile(context, *file);
}

/* The modules of a file that are in no run yet. */
std::vector<Module *> &spareOf(Compilation &c, Search &search, const std::string &path) {
    std::string why;
    std::vector<Module *> modules = parsePath(c, search, path, why);
    if (!why.empty())
        error(c.diagnostics, {}, path + ": " + why);
    std::vector<Module *> &spare = search.spare[path];
    spare.insert(spare.end(), modules.begin(), modules.end());
    return spare;
}

bool hasIdentifier(Compilation &c, const ModuleInfo &importer, const ImportFrom &import,
                   const Module &module) {
    if (!import.identifier.given())
        return true;
    const std::vector<Number> wanted = arcsOf(c, import.identifier, &importer.root, true);
    return wanted.empty() || wanted == arcsOf(c, module.identifier, &importer.root, true);
}

/* Of several files with modules of the name the first one with the identifier counts, else the
   first one of all. */
bool addImported(Compilation &c, Search &search, const ModuleInfo &importer,
                 const ImportFrom &import) {
    std::vector<Module *> *from = nullptr;
    std::size_t chosen = 0;
    for (const std::string &path : filesOf(search, std::string(import.module.text))) {
        std::vector<Module *> &spare = spareOf(c, search, path);
        auto named = std::find_if(spare.begin(), spare.end(), [&import](const Module *module) {
            return module->name.text == import.module.text;
        });
        if (named == spare.end())
            continue;
        const bool fits = hasIdentifier(c, importer, import, **named);
        if (from == nullptr || fits) {
            from = &spare;
            chosen = static_cast<std::size_t>(named - spare.begin());
        }
        if (fits)
            break;
    }
    if (from == nullptr)
        return false;
    Module *module = (*from)[chosen];
    from->erase(from->begin() + static_cast<std::ptrdiff_t>(chosen));
    addModule(c, module);
    return true;
}

} // namespace

std::string findNamedFile(const Search &search, const std::string &file) {
    std::vector<std::string> directories{""};
    if (!file.empty() && file.front() != '/')
        directories.insert(directories.end(), search.directories.begin(),
                           search.directories.end());
    for (const std::string &directory : directories) {
        if (isFile(directory + file))
            return directory + file;
        for (const char *suffix : suffixes)
            if (isFile(directory + file + suffix))
                return directory + file + suffix;
    }
    return {};
}

bool addNamedFile(Compilation &c, Search &search, const std::string &path) {
    std::string why;
    for (Module *module : parsePath(c, search, path, why))
        addModule(c, module)->named = true;
    if (!why.empty())
        error(c.diagnostics, {}, path + ": " + why);
    return why.empty();
}

void addImportedModules(Compilation &c, Search &search) {
    std::unordered_set<std::string> missed;
    for (std::size_t i = 1; i < c.modules.size(); ++i)
        for (const ImportFrom *import : missingModules(c, *c.modules[i])) {
            const std::string name(import->module.text);
            if (missed.count(name) == 0 && c.modulesByName.count(import->module.text) == 0 &&
                !addImported(c, search, *c.modules[i], *import))
                missed.insert(name);
        }
}

} // namespace asntree
