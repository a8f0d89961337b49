#include <algorithm>

#include "asntree/names.h"
#include "asntree/references.h"
#include "asntree/values.h"

/* Modules of a run: their names, identifiers and imports. */

namespace asntree {

namespace {

std::vector<std::string> identifierOf(Compilation &c, TokenRange braces, const Scope *scope) {
    std::vector<std::string> arcs;
    if (braces.given())
        for (const Number &number : arcsOf(c, braces, scope))
            arcs.push_back(textOf(number));
    return arcs;
}

std::string joined(const std::vector<std::string> &arcs) {
    std::string text;
    for (const std::string &arc : arcs)
        text.append(text.empty() ? "" : ".").append(arc);
    return text;
}

/* Identifiers that agree but for the last arc, the import's being the smaller one for successors,
   or of which the module's goes on where the import's ends, for descendants. */
bool isRelative(const ImportFrom &import, const std::vector<std::string> &wanted,
                const std::vector<std::string> &found) {
    if (wanted.empty() || found.size() < wanted.size())
        return false;
    if (import.descendants && std::equal(wanted.begin(), wanted.end(), found.begin()))
        return true;
    return import.successors && found.size() == wanted.size() &&
           std::equal(wanted.begin(), wanted.end() - 1, found.begin()) &&
           Number::ofDigits(wanted.back()) <= Number::ofDigits(found.back());
}

ModuleInfo *moduleByIdentifier(Compilation &c, const ImportFrom &import,
                               const std::vector<std::string> &wanted) {
    if (wanted.empty())
        return nullptr;
    auto found = c.modulesByIdentifier.find(joined(wanted));
    if (found != c.modulesByIdentifier.end())
        return found->second.front();
    auto named = c.modulesByName.find(import.module.text);
    if (named != c.modulesByName.end())
        for (ModuleInfo *module : named->second)
            if (isRelative(import, wanted, module->identifier))
                return module;
    return nullptr;
}

/* The module that an import means: the one with its identifier, whatever its name, else the one
   with its name. */
ModuleInfo *moduleOfImport(Compilation &c, const ModuleInfo &importer, const ImportFrom &import) {
    const std::vector<std::string> wanted = identifierOf(c, import.identifier, &importer.root);
    if (ModuleInfo *module = moduleByIdentifier(c, import, wanted))
        return module;
    auto named = c.modulesByName.find(import.module.text);
    return named == c.modulesByName.end() ? nullptr : named->second.front();
}

/* The definitions in which one of the names stands, by their tokens. */
std::vector<std::string_view> definitionsThatName(Compilation &c, const ModuleInfo &module,
                                                  const std::vector<Name> &names) {
    std::unordered_set<std::string_view> wanted;
    for (const Name &name : names)
        wanted.insert(name.text);
    const SourceFile &file = c.sources[module.syntax->file];
    std::vector<std::string_view> found;
    const std::vector<Assignment *> &all = module.syntax->assignments;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::uint32_t begin = all[i]->name.place.offset;
        const std::uint32_t end =
            i + 1 < all.size() ? all[i + 1]->name.place.offset : module.syntax->end.offset;
        auto token = std::lower_bound(
            file.tokens.begin(), file.tokens.end(), begin,
            [](const Token &t, std::uint32_t offset) { return t.offset < offset; });
        for (; token != file.tokens.end() && token->offset < end; ++token)
            if (wanted.count(textOf(file, *token)) != 0) {
                found.push_back(all[i]->name.text);
                break;
            }
    }
    return found;
}

void reportMissingModule(Compilation &c, const ModuleInfo &importer, const ImportFrom &import) {
    constexpr std::size_t SHOWN = 8;
    std::string needed;
    const auto names = definitionsThatName(c, importer, import.symbols);
    for (std::size_t i = 0; i < names.size() && i < SHOWN; ++i)
        needed.append(i == 0 ? "; needed by `" : ", `").append(names[i]).append("`");
    if (names.size() > SHOWN)
        needed += " and " + std::to_string(names.size() - SHOWN) + " more";
    error(c.diagnostics, import.module.place,
          "module `" + std::string(import.module.text) + "`, from which `" +
              std::string(importer.syntax->name.text) + "` imports, is not among the files" +
              needed);
}

/* Follows what a module only passes on, to where the name is defined; null if it leads nowhere. */
ModuleInfo *definingModule(ModuleInfo *module, std::string_view name) {
    for (int steps = 0; module != nullptr && steps < 1000; ++steps) {
        if (module->names.count(name) != 0)
            return module;
        auto next = module->imported.find(name);
        if (next == module->imported.end())
            return nullptr;
        module = next->second.module;
    }
    return nullptr;
}

/* True if a name is handed on from module to module until it is back where it was asked for. */
bool goesInCircle(const ModuleInfo &importer, const ModuleInfo &from, std::string_view name) {
    const ModuleInfo *module = &from;
    for (int steps = 0; module != nullptr && module != &importer && steps < 1000; ++steps) {
        const auto next = module->imported.find(name);
        if (module->names.count(name) != 0 || next == module->imported.end())
            return false;
        module = next->second.module;
    }
    return module == &importer && importer.names.count(name) == 0;
}

void linkSymbol(Compilation &c, ModuleInfo &importer, std::uint32_t number, const Name &symbol) {
    ModuleInfo *from = importer.imports[number];
    const ImportedName entry{from, &symbol};
    auto [place, isNew] = importer.imported.emplace(symbol.text, entry);
    if (isNew)
        return;
    if (place->second.module == from && from != nullptr) {
        warning(c.diagnostics, symbol.place,
                "`" + std::string(symbol.text) + "` is imported twice from the same module",
                {{place->second.symbol->place, "first here"}});
        return;
    }
    if (place->second.module == from)
        return;
    place->second.ambiguous = definingModule(place->second.module, symbol.text) !=
                              definingModule(from, symbol.text);
    place->second.other = &symbol;
}

/* A name that another module doesn't have, doesn't export, or has from a missing module. */
void checkSymbol(Compilation &c, ModuleInfo &importer, const ModuleInfo &from, const Name &symbol,
                 bool isOtherVersion) {
    const std::string name(symbol.text);
    const std::string module(from.syntax->name.text);
    const bool known = from.names.count(symbol.text) != 0 || from.imported.count(symbol.text) != 0;
    if (!known) {
        if (isBuiltinName(symbol.text) || isWellKnownMacro(symbol.text) || from.incomplete)
            return;
        std::vector<std::string_view> candidates;
        for (const auto &[candidate, assignment] : from.names)
            candidates.push_back(candidate);
        std::sort(candidates.begin(), candidates.end());
        const std::string_view near = nearestName(symbol.text, candidates);
        error(c.diagnostics, symbol.place, "module `" + module + "` does not define `" + name + "`",
              near.empty() ? std::vector<Remark>{}
                           : std::vector<Remark>{{from.names.at(near)->name.place,
                                                  "did you mean `" + std::string(near) + "`?"}});
        importer.imported.at(symbol.text).module = nullptr;
    } else if (from.syntax->exportsMode == ExportsMode::List &&
               from.exported.count(symbol.text) == 0) {
        /* Another version of the module, as the identifier says, may well export it. */
        const auto report = isOtherVersion ? warning : error;
        report(c.diagnostics, symbol.place,
               "module `" + module + "` does not export `" + name + "`",
               {{from.syntax->name.place, "its EXPORTS list does not name it"}});
    } else if (goesInCircle(importer, from, symbol.text)) {
        error(c.diagnostics, symbol.place,
              "`" + name + "` is imported in a circle: none of the modules defines it");
    } else if (importer.names.count(symbol.text) != 0 &&
               definingModule(const_cast<ModuleInfo *>(&from), symbol.text) != &importer) {
        slip(c.diagnostics, symbol.place,
             "`" + name + "` is imported and defined too; the definition counts");
    }
}

/* Warns of an import whose identifier isn't that of the module at hand; true if it is so. */
bool isOfOtherVersion(Compilation &c, const ModuleInfo &importer, const ImportFrom &import,
                      const ModuleInfo &found) {
    const std::vector<std::string> wanted = identifierOf(c, import.identifier, &importer.root);
    if (wanted.empty() || found.identifier.empty() || wanted == found.identifier ||
        isRelative(import, wanted, found.identifier))
        return false;
    warning(c.diagnostics, import.module.place,
            "module `" + std::string(import.module.text) + "` is imported by the identifier " +
                joined(wanted) + ", the one at hand has " + joined(found.identifier),
            {{found.syntax->name.place, "it stands here"}});
    return true;
}

void nameDefinition(Compilation &c, ModuleInfo &info, Assignment *assignment) {
    auto [place, isNew] = info.names.emplace(assignment->name.text, assignment);
    if (isNew)
        return;
    error(c.diagnostics, assignment->name.place,
          "`" + std::string(assignment->name.text) + "` is defined twice",
          {{place->second->name.place, "first defined here"}});
}

/* Files have headers that were copied from one another; in one file it is a mistake at all events. */
void checkIdentifierIsNew(Compilation &c, const ModuleInfo &info) {
    if (info.identifier.empty())
        return;
    const ModuleInfo &first = *c.modulesByIdentifier[joined(info.identifier)].front();
    if (first.syntax->name.text == info.syntax->name.text)
        return;
    const auto report = first.syntax->file == info.syntax->file ? error : warning;
    report(c.diagnostics, info.syntax->name.place,
           "module `" + std::string(info.syntax->name.text) + "` has the object identifier of `" +
               std::string(first.syntax->name.text) + "`",
           {{first.syntax->name.place, "the other one"}});
}

void checkModuleIsNew(Compilation &c, const ModuleInfo &info) {
    for (const ModuleInfo *other : c.modulesByName[info.syntax->name.text]) {
        if (other == &info || other->identifier != info.identifier)
            continue;
        error(c.diagnostics, info.syntax->name.place,
              "module `" + std::string(info.syntax->name.text) + "` is given twice",
              {{other->syntax->name.place, "first given here"}});
        return;
    }
}

} // namespace

ModuleInfo *addModule(Compilation &c, Module *module) {
    auto owned = std::make_unique<ModuleInfo>();
    ModuleInfo *info = owned.get();
    info->syntax = module;
    info->root.module = info;
    info->number = static_cast<std::uint32_t>(c.modules.size());
    c.modules.push_back(std::move(owned));
    c.moduleInfos.emplace(module, info);
    for (std::size_t i = 0; i < module->assignments.size(); ++i) {
        module->assignments[i]->module = module;
        module->assignments[i]->index = static_cast<std::uint32_t>(i);
        nameDefinition(c, *info, module->assignments[i]);
    }
    for (const Name &name : module->exports)
        info->exported.insert(name.text);
    info->identifier = identifierOf(c, module->identifier, &info->root);
    if (info->identifier.empty() && module->identifier.given() && !module->identifier.empty())
        slip(c.diagnostics, module->name.place,
             "the identifier of module `" + std::string(module->name.text) +
                 "` is passed over: it has an arc without a number");
    if (c.modules.size() > 1) { /* the predefined module is found by nobody's import */
        c.modulesByName[module->name.text].push_back(info);
        if (!info->identifier.empty())
            c.modulesByIdentifier[joined(info->identifier)].push_back(info);
        checkModuleIsNew(c, *info);
        checkIdentifierIsNew(c, *info);
    }
    return info;
}

std::vector<const ImportFrom *> missingModules(Compilation &c, const ModuleInfo &module) {
    std::vector<const ImportFrom *> missing;
    for (const ImportFrom &import : module.syntax->imports)
        if (moduleOfImport(c, module, import) == nullptr)
            missing.push_back(&import);
    return missing;
}

namespace {

/* From here on the order in which files were named doesn't count. */
void orderModules(Compilation &c) {
    const auto before = [&c](const auto &a, const auto &b) { return standsBefore(c, *a, *b); };
    std::sort(c.modules.begin() + 1, c.modules.end(), before);
    for (std::size_t i = 0; i < c.modules.size(); ++i)
        c.modules[i]->number = static_cast<std::uint32_t>(i);
    for (auto &[name, modules] : c.modulesByName)
        std::sort(modules.begin(), modules.end(), before);
    for (auto &[identifier, modules] : c.modulesByIdentifier)
        std::sort(modules.begin(), modules.end(), before);
}

void checkExports(Compilation &c, const ModuleInfo &info) {
    std::unordered_map<std::string_view, Place> seen;
    for (const Name &name : info.syntax->exports) {
        const std::string text = "`" + std::string(name.text) + "` is exported";
        const auto [first, isNew] = seen.try_emplace(name.text, name.place);
        if (!isNew)
            warning(c.diagnostics, name.place, text + " twice", {{first->second, "first here"}});
        else if (info.names.count(name.text) == 0 && info.imported.count(name.text) == 0 &&
                 !isBuiltinName(name.text) && !isWellKnownMacro(name.text) && !info.incomplete)
            error(c.diagnostics, name.place, text + ", but neither defined nor imported");
    }
}

} // namespace

void linkImports(Compilation &c) {
    orderModules(c);
    for (const auto &info : c.modules) {
        info->imports.clear();
        for (const ImportFrom &import : info->syntax->imports)
            info->imports.push_back(moduleOfImport(c, *info, import));
    }
    for (const auto &info : c.modules)
        for (std::uint32_t i = 0; i < info->imports.size(); ++i)
            for (const Name &symbol : info->syntax->imports[i].symbols)
                linkSymbol(c, *info, i, symbol);
    for (const auto &info : c.modules)
        for (std::uint32_t i = 0; i < info->imports.size(); ++i) {
            const ImportFrom &import = info->syntax->imports[i];
            const ModuleInfo *from = info->imports[i];
            if (from == nullptr) {
                reportMissingModule(c, *info, import);
                continue;
            }
            const bool isOtherVersion = isOfOtherVersion(c, *info, import, *from);
            for (const Name &symbol : import.symbols)
                checkSymbol(c, *info, *from, symbol, isOtherVersion);
        }
    for (const auto &info : c.modules)
        checkExports(c, *info);
}

} // namespace asntree
