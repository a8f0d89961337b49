#include "asntree/search.h"

#include <algorithm>
#include <filesystem>

#include "asntree/compile.h"
#include "asntree/lexer.h"
#include "asntree/names.h"
#include "asntree/parser.h"
#include "asntree/values.h"

namespace asntree {

namespace fs = std::filesystem;

namespace {

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
    if (!import.identifier.given())
        return true;
    const std::vector<Number> wanted = arcsOf(c, import.identifier, &importer.root, true);
    return wanted.empty() || wanted == arcsOf(c, module.identifier, &importer.root, true);
}

/* Of several files with modules of the name the first one with the identifier counts, else the
   first one of all. */
bool addImported(Compilation &c, const Settings &settings, Search &search,
                 const ModuleInfo &importer, const ImportFrom &import) {
    SpareModules *from = nullptr;
    std::size_t chosen = 0;
    for (const std::string &path :
         findModule(settings, search.index, std::string(import.module.text))) {
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
    const std::string path = findSource(settings, name, tried);
    if (path.empty()) {
        std::string text = "there is no file " + name;
        for (std::size_t i = 1; i < tried.size(); ++i)
            text += (i == 1 ? " (nor " : ", ") + tried[i];
        error(c.diagnostics, {}, text + (tried.size() > 1 ? ")" : ""));
        return false;
    }
    if (!search.read.insert(wholePath(path)).second)
        return true;
    SourceFile *file = readFile(c, path);
    if (file != nullptr)
        addFile(c, *file, true);
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
