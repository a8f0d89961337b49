#include "asntree/names.h"

#include <algorithm>

#include "asntree/classes.h"
#include "asntree/instances.h"
#include "asntree/objects.h"

namespace asntree {

namespace {

struct BuiltinName {
    std::string_view name;
    TypeKind kind;
};
/* Types that modules older than the type import from where it was first defined. */
constexpr BuiltinName builtinNames[] = {
    {"UTF8String", TypeKind::Utf8String},
    {"NumericString", TypeKind::NumericString},
    {"PrintableString", TypeKind::PrintableString},
    {"TeletexString", TypeKind::TeletexString},
    {"T61String", TypeKind::TeletexString},
    {"VideotexString", TypeKind::VideotexString},
    {"VisibleString", TypeKind::VisibleString},
    {"ISO646String", TypeKind::VisibleString},
    {"IA5String", TypeKind::Ia5String},
    {"GraphicString", TypeKind::GraphicString},
    {"GeneralString", TypeKind::GeneralString},
    {"BMPString", TypeKind::BmpString},
    {"UniversalString", TypeKind::UniversalString},
    {"GeneralizedTime", TypeKind::GeneralizedTime},
    {"UTCTime", TypeKind::UtcTime},
    {"EXTERNAL", TypeKind::External},
    {"ObjectDescriptor", TypeKind::ObjectDescriptor},
    {"DATE", TypeKind::Date},
    {"TIME", TypeKind::Time},
    {"TIME-OF-DAY", TypeKind::TimeOfDay},
    {"DATE-TIME", TypeKind::DateTime},
    {"DURATION", TypeKind::Duration},
    {"OID-IRI", TypeKind::OidIri},
    {"RELATIVE-OID-IRI", TypeKind::RelativeOidIri},
    {"RELATIVE-OID", TypeKind::RelativeOid},
    {"REAL", TypeKind::Real},
    {"BOOLEAN", TypeKind::Boolean},
    {"INTEGER", TypeKind::Integer},
};

/* The builtin type of a name as an argument, so that it is followed like any other. */
const Argument *builtinArgument(Compilation &c, std::string_view name) {
    for (const BuiltinName &row : builtinNames) {
        if (row.name != name)
            continue;
        Argument &argument = c.builtinsByName[row.name];
        if (argument.type == nullptr) {
            argument.kind = ArgumentKind::Type;
            argument.type = newType(c.arena, row.kind, {});
            argument.scope = &c.modules.front()->root;
            argument.key = row.name;
        }
        return &argument;
    }
    return nullptr;
}

/* A lookup: what was found, or why not. */
struct Lookup {
    Assignment *assignment = nullptr;
    ModuleInfo *module = nullptr;
    const Argument *argument = nullptr;
    bool silent = false; /* nothing was found, and that was reported elsewhere */
    const ImportedName *ambiguous = nullptr;
};

Lookup lookInModule(Compilation &c, ModuleInfo *module, std::string_view name) {
    Lookup result;
    for (int steps = 0; steps < 1000; ++steps) {
        if (auto own = module->names.find(name); own != module->names.end()) {
            result.assignment = own->second;
            result.module = module;
            return result;
        }
        auto imported = module->imported.find(name);
        if (imported == module->imported.end()) {
            result.silent = module->incomplete;
            break;
        }
        if (imported->second.ambiguous && steps == 0) {
            result.ambiguous = &imported->second;
            return result;
        }
        if (imported->second.module == nullptr) {
            result.silent = true;
            return result;
        }
        module = imported->second.module;
    }
    const auto &predefined = c.modules.front()->names;
    if (name == "TYPE-IDENTIFIER" || name == "ABSTRACT-SYNTAX") {
        result.assignment = predefined.at(name);
        result.module = c.modules.front().get();
    } else {
        result.argument = builtinArgument(c, name);
    }
    return result;
}

/* The module that the qualifier of `Module.name` means: an import by that name, the module itself,
   or any module of the run. `known` is false if there is none. */
ModuleInfo *qualifier(Compilation &c, ModuleInfo *module, std::string_view name, bool &known) {
    known = true;
    for (std::size_t i = 0; i < module->imports.size(); ++i)
        if (module->syntax->imports[i].module.text == name)
            return module->imports[i];
    if (module->syntax->name.text == name)
        return module;
    auto found = c.modulesByName.find(name);
    if (found != c.modulesByName.end())
        return found->second.front();
    known = false;
    return nullptr;
}

/* To look for similar names among very many takes time; beyond this many errors few are shown. */
constexpr int MOST_SUGGESTIONS = 4 * Diagnostics::MAX_ERRORS;

void reportUndefined(Compilation &c, const Reference &reference, const ModuleInfo &module) {
    std::vector<std::string_view> candidates;
    for (const auto &[name, assignment] : module.names)
        candidates.push_back(name);
    for (const auto &[name, imported] : module.imported)
        candidates.push_back(name);
    const std::string_view near = c.diagnostics.errors < MOST_SUGGESTIONS
                                      ? nearestName(reference.name.text, candidates)
                                      : std::string_view();
    std::vector<Remark> remarks;
    if (!near.empty()) {
        auto own = module.names.find(near);
        const Place place = own != module.names.end() ? own->second->name.place
                                                      : module.imported.at(near).symbol->place;
        remarks.push_back({place, "did you mean `" + std::string(near) + "`?"});
    }
    std::string text = "`" + std::string(reference.name.text) + "` is not defined";
    if (reference.module.given())
        text += " in module `" + std::string(reference.module.text) + "`";
    error(c.diagnostics, reference.name.place, text, remarks);
}

/* The dummy reference of this name, null if there is none. */
const Argument *dummyOf(const Scope *scope, std::string_view name) {
    if (scope->definition == nullptr)
        return nullptr;
    const auto &parameters = scope->definition->parameters;
    for (std::size_t i = 0; i < scope->arguments.size() && i < parameters.size(); ++i)
        if (parameters[i].name.text == name)
            return &scope->arguments[i];
    return nullptr;
}

Lookup lookUp(Compilation &c, const Reference &reference, const Scope *scope, bool quiet) {
    if (!reference.module.given()) {
        if (const Argument *argument = dummyOf(scope, reference.name.text)) {
            Lookup found;
            found.argument = argument;
            return found;
        }
        return lookInModule(c, scope->module, reference.name.text);
    }
    bool known = false;
    ModuleInfo *module = qualifier(c, scope->module, reference.module.text, known);
    Lookup none;
    none.silent = true;
    if (!known && !quiet)
        error(c.diagnostics, reference.module.place,
              "module `" + std::string(reference.module.text) + "` is not among the files");
    if (module == nullptr)
        return none;
    if (module != scope->module && module->syntax->exportsMode == ExportsMode::List &&
        module->exported.count(reference.name.text) == 0 && !quiet &&
        module->names.count(reference.name.text) != 0)
        error(c.diagnostics, reference.name.place,
              "module `" + std::string(reference.module.text) + "` does not export `" +
                  std::string(reference.name.text) + "`");
    return lookInModule(c, module, reference.name.text);
}

void reportMissing(Compilation &c, const Reference &reference, const Scope *scope,
                   const Lookup &found) {
    if (found.silent)
        return;
    if (found.ambiguous != nullptr) {
        error(c.diagnostics, reference.name.place,
              "`" + std::string(reference.name.text) +
                  "` is imported from two modules; write the module's name in front",
              {{found.ambiguous->symbol->place, "imported here"},
               {found.ambiguous->other->place, "and here"}});
        return;
    }
    bool known = false;
    const ModuleInfo *module = reference.module.given()
                                   ? qualifier(c, scope->module, reference.module.text, known)
                                   : scope->module;
    reportUndefined(c, reference, *module);
}

Target resolveBy(Compilation &c, const Reference &reference, const Scope *scope, bool quiet) {
    if (scope == nullptr || reference.name.text.empty())
        return {};
    const Lookup found = lookUp(c, reference, scope, quiet);
    if (found.argument != nullptr)
        return found.argument->kind == ArgumentKind::Bad ? Target{}
                                                         : Target{nullptr, nullptr, found.argument};
    if (found.assignment == nullptr) {
        if (!quiet)
            reportMissing(c, reference, scope, found);
        return {};
    }
    if (!found.assignment->parameterized) {
        if (reference.hasParameters && !reference.parameters.empty()) {
            if (!quiet)
                error(c.diagnostics, reference.name.place,
                      "`" + std::string(reference.name.text) + "` has no parameters",
                      {{found.assignment->name.place, "defined here"}});
            return {};
        }
        return {found.assignment, &found.module->root, nullptr};
    }
    const Scope *instance = instantiate(c, found.assignment, reference, scope, quiet);
    if (instance == nullptr)
        return {};
    return {found.assignment, instance, nullptr};
}

} // namespace

Target resolve(Compilation &c, const Reference &reference, const Scope *scope) {
    return resolveBy(c, reference, scope, false);
}

Target tryResolve(Compilation &c, const Reference &reference, const Scope *scope) {
    return resolveBy(c, reference, scope, true);
}

bool isBuiltinName(std::string_view name) {
    return std::any_of(std::begin(builtinNames), std::end(builtinNames),
                       [name](const BuiltinName &row) { return row.name == name; });
}

std::string textOf(const Reference &reference) {
    std::string text;
    if (reference.module.given())
        text.append(reference.module.text).append(".");
    return text.append(reference.name.text);
}

} // namespace asntree
