#include "asntree/references.h"

#include <algorithm>

#include "asntree/lexer.h"

namespace asntree {

namespace {

/* Names that modules pass on to one another may go in a circle. */
constexpr int MAX_STEPS = 1000;

bool isDummy(const Assignment *around, std::string_view name) {
    return around != nullptr &&
           std::any_of(around->parameters.begin(), around->parameters.end(),
                       [name](const FormalParameter &p) { return p.name.text == name; });
}

std::uint32_t tokenAt(const SourceFile &file, std::uint32_t offset) {
    auto place = std::lower_bound(
        file.tokens.begin(), file.tokens.end(), offset,
        [](const Token &token, std::uint32_t wanted) { return token.offset < wanted; });
    return static_cast<std::uint32_t>(place - file.tokens.begin());
}

const ModuleInfo &infoOf(const Compilation &c, const Assignment &assignment) {
    return *c.moduleInfos.at(assignment.module);
}

} // namespace

const ModuleInfo *moduleNamed(const Compilation &c, const ModuleInfo &module,
                              std::string_view name) {
    for (std::size_t i = 0; i < module.imports.size(); ++i)
        if (module.syntax->imports[i].module.text == name)
            return module.imports[i];
    if (module.syntax->name.text == name)
        return &module;
    auto found = c.modulesByName.find(name);
    return found == c.modulesByName.end() || found->second.empty() ? nullptr
                                                                   : found->second.front();
}

const Assignment *definitionNamed(const Compilation &c, const ModuleInfo &module,
                                  std::string_view name) {
    const ModuleInfo *at = &module;
    for (int steps = 0; at != nullptr && steps < MAX_STEPS; ++steps) {
        if (auto own = at->names.find(name); own != at->names.end())
            return own->second;
        auto imported = at->imported.find(name);
        at = imported == at->imported.end() ? nullptr : imported->second.module;
    }
    const auto &predefined = c.modules.front()->names;
    auto builtin = predefined.find(name);
    return builtin == predefined.end() ? nullptr : builtin->second;
}

const Assignment *definitionNamed(const Compilation &c, const ModuleInfo &module,
                                  const Reference &reference) {
    if (!reference.module.given())
        return definitionNamed(c, module, reference.name.text);
    const ModuleInfo *other = moduleNamed(c, module, reference.module.text);
    return other == nullptr ? nullptr : definitionNamed(c, *other, reference.name.text);
}

bool namesClass(const Compilation &c, const Assignment &assignment) {
    const Assignment *at = &assignment;
    for (int steps = 0; at != nullptr && steps < MAX_STEPS; ++steps) {
        if (at->kind == AssignmentKind::Class)
            return true;
        if (at->kind != AssignmentKind::Type || at->type == nullptr ||
            at->isNoClass || at->type->kind != TypeKind::Reference || !at->type->tags.empty() ||
            !at->type->constraints.empty() || isDummy(at, at->type->ref.name.text))
            return false;
        at = definitionNamed(c, infoOf(c, *at), at->type->ref);
    }
    return false;
}

DefinitionKind kindOfDefinition(const Compilation &c, const Assignment &assignment) {
    if (assignment.kind == AssignmentKind::Macro)
        return DefinitionKind::Macro;
    if (assignment.parameterized)
        return DefinitionKind::Parameterized;
    if (assignment.kind == AssignmentKind::Class || assignment.kind == AssignmentKind::Type)
        return namesClass(c, assignment) ? DefinitionKind::Class : DefinitionKind::Type;
    bool isObject = false;
    if (assignment.type != nullptr && assignment.type->kind == TypeKind::Reference)
        if (const Assignment *governor =
                definitionNamed(c, infoOf(c, assignment), assignment.type->ref))
            isObject = namesClass(c, *governor);
    if (assignment.kind == AssignmentKind::Value)
        return isObject ? DefinitionKind::Object : DefinitionKind::Value;
    return isObject ? DefinitionKind::ObjectSet : DefinitionKind::ValueSet;
}

TokenRange tokensOf(const Compilation &c, const Assignment &assignment) {
    const Module &module = *assignment.module;
    const SourceFile &file = c.sources[module.file];
    const bool last = assignment.index + 1 >= module.assignments.size();
    const std::uint32_t end =
        last ? module.end.offset : module.assignments[assignment.index + 1]->name.place.offset;
    return {module.file, tokenAt(file, assignment.name.place.offset), tokenAt(file, end)};
}

std::vector<const Assignment *> definitionsNamedIn(const Compilation &c, const ModuleInfo &module,
                                                   const Assignment *around, TokenRange range,
                                                   bool lower) {
    std::vector<const Assignment *> found;
    if (!range.given())
        return found;
    const SourceFile &file = c.sources[range.file];
    const ModuleInfo *at = &module;
    for (std::uint32_t i = range.begin; i < range.end && i < file.tokens.size(); ++i) {
        const Token &token = file.tokens[i];
        const bool isName =
            token.kind == TokenKind::Upper || (lower && token.kind == TokenKind::Lower);
        if (!isName)
            continue;
        const std::string_view name = textOf(file, token);
        const bool dotFollows = i + 2 < file.tokens.size() &&
                                file.tokens[i + 1].kind == TokenKind::Dot &&
                                (file.tokens[i + 2].kind == TokenKind::Upper ||
                                 file.tokens[i + 2].kind == TokenKind::Lower);
        if (token.kind == TokenKind::Upper && dotFollows) {
            at = moduleNamed(c, module, name);
            i += 2;
            if (at != nullptr)
                if (const Assignment *other = definitionNamed(c, *at, textOf(file, file.tokens[i])))
                    found.push_back(other);
            continue;
        }
        if (isDummy(around, name))
            continue;
        if (const Assignment *other = definitionNamed(c, module, name))
            found.push_back(other);
    }
    return found;
}

std::vector<const ModuleInfo *> modulesNamedIn(const Compilation &c, const ModuleInfo &module) {
    std::vector<const ModuleInfo *> found;
    const std::vector<Assignment *> &all = module.syntax->assignments;
    if (all.empty())
        return found;
    const SourceFile &file = c.sources[module.syntax->file];
    const std::uint32_t end = tokensOf(c, *all.back()).end;
    for (std::uint32_t i = tokensOf(c, *all.front()).begin; i + 2 < end; ++i) {
        const TokenKind behind = file.tokens[i + 2].kind;
        if (file.tokens[i].kind != TokenKind::Upper || file.tokens[i + 1].kind != TokenKind::Dot ||
            (behind != TokenKind::Upper && behind != TokenKind::Lower))
            continue;
        if (const ModuleInfo *other = moduleNamed(c, module, textOf(file, file.tokens[i])))
            found.push_back(other);
    }
    return found;
}

bool standsBefore(const Compilation &c, const ModuleInfo &a, const ModuleInfo &b) {
    if (a.syntax->name.text != b.syntax->name.text)
        return a.syntax->name.text < b.syntax->name.text;
    if (a.identifier != b.identifier)
        return a.identifier < b.identifier;
    const std::string &pathA = c.sources[a.syntax->file].path;
    const std::string &pathB = c.sources[b.syntax->file].path;
    return pathA != pathB ? pathA < pathB
                          : a.syntax->name.place.offset < b.syntax->name.place.offset;
}

} // namespace asntree
