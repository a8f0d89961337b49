#include "asntree/emitter.h"

#include "asntree/references.h"

/* Instances of the macros of 1988. A tree holds the values of those that are known, and the types
   that they name. */

namespace asntree {

namespace {

constexpr std::string_view knownMacros[] = {
    "OPERATION",           "ERROR",              "OBJECT-TYPE",    "TRAP-TYPE",
    "MODULE-IDENTITY",     "OBJECT-IDENTITY",    "OBJECT-GROUP",   "NOTIFICATION-TYPE",
    "NOTIFICATION-GROUP",  "MODULE-COMPLIANCE",  "AGENT-CAPABILITIES",
    "TEXTUAL-CONVENTION",  "ABSTRACT-OPERATION", "ABSTRACT-ERROR",
};

bool isKnown(std::string_view name) {
    for (const std::string_view known : knownMacros)
        if (name == known)
            return true;
    return false;
}

/* CHOICE { localValue INTEGER, globalValue OBJECT IDENTIFIER } */
TypeUse operationType(Emitter &e, const Scope *scope) {
    if (e.operationType == nullptr) {
        Type *choice = newType(e.c.arena, TypeKind::Choice, {});
        for (const auto &[name, kind] : {std::pair{"localValue", TypeKind::Integer},
                                         {"globalValue", TypeKind::ObjectIdentifier}}) {
            Component component;
            component.name.text = name;
            component.type = newType(e.c.arena, kind, {});
            choice->components.push_back(component);
        }
        e.operationType = choice;
    }
    return {e.operationType, scope};
}

bool hasValue(Emitter &e, const Assignment &assignment, TypeUse macro) {
    return assignment.value != nullptr &&
           readDatum(e.c, {assignment.value, macro.scope}, macro)->kind != DatumKind::Bad;
}

} // namespace

TypeUse macroUse(Emitter &e, TypeUse use) {
    if (use.type->kind == TypeKind::Macro)
        return use;
    if (use.type->kind != TypeKind::Reference || use.type->ref.hasParameters)
        return {};
    const Target target = tryResolve(e.c, use.type->ref, use.scope);
    if (target.assignment == nullptr || target.assignment->kind != AssignmentKind::Macro)
        return {};
    const Type *&bare = e.bareMacros[use.type];
    if (bare == nullptr) {
        Type *macro = newType(e.c.arena, TypeKind::Macro, use.type->place);
        macro->ref = use.type->ref;
        macro->tokens = {use.type->place.file, 0, 0};
        bare = macro;
    }
    return {bare, use.scope};
}

void leaveOutMacros(Emitter &e) {
    for (const TreePlan &tree : e.plan.trees)
        for (const Assignment *assignment : tree.definitions) {
            if (assignment->type == nullptr || assignment->parameterized)
                continue;
            const TypeUse macro =
                macroUse(e, {assignment->type, &moduleOf(e.c, assignment)->root});
            if (!macro)
                continue;
            const std::string_view name = macro.type->ref.name.text;
            const bool stays = assignment->kind == AssignmentKind::Value
                                   ? isKnown(name) && hasValue(e, *assignment, macro)
                                   : bool(typeOfMacro(e, macro));
            if (stays)
                continue;
            e.excluded.insert(assignment);
            warning(e.c.diagnostics, assignment->name.place,
                    "`" + std::string(assignment->name.text) +
                        "` is left out: it is an instance of the macro " +
                        std::string(name) + ", which isn't known");
        }
}

TypeUse typeOfMacro(Emitter &e, TypeUse macro) {
    const std::string_view name = macro.type->ref.name.text;
    if (name == "OPERATION" || name == "ERROR")
        return operationType(e, macro.scope);
    return {};
}

namespace {

/* "Login_Argument" of ARGUMENT in `login`. */
std::string nameOfClause(const Assignment &assignment, std::string_view word) {
    std::string name = treeName(assignment.name.text);
    if (name[0] >= 'a' && name[0] <= 'z')
        name[0] = static_cast<char>(name[0] - 'a' + 'A');
    name += "_";
    name += word[0];
    for (const char letter : word.substr(1))
        name += letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    return treeName(name);
}

bool isPlainReference(const Type &type) {
    return type.kind == TypeKind::Reference && !type.ref.hasParameters && type.tags.empty() &&
           type.constraints.empty();
}

} // namespace

void emitMacroTypes(Emitter &e, TreeState &ts, const Assignment &assignment) {
    ParseContext parsing = e.c.parsing();
    const Scope *scope = &moduleOf(e.c, &assignment)->root;
    if (assignment.type->kind != TypeKind::Macro)
        return;
    for (const MacroClause &clause : readMacroClauses(parsing, assignment.type->tokens)) {
        if (clause.type == nullptr || clause.word.text.empty() || isPlainReference(*clause.type))
            continue;
        const std::string name = freeName(ts, nameOfClause(assignment, clause.word.text));
        const RecNr nr = newType(ts, TCS_HEADER, 0, lineOf(e, clause.type->place));
        ts.tree().t(nr).nameIdx = ts.tree().str(name);
        ts.tree().t(nr).nodeFlags |= NODE_EXPORTED;
        appendType(ts, nr);
        addNote(e, ts,
                "the type of " + std::string(clause.word.text) + " is the definition " + name);
        ts.queue.push_back({nr, {clause.type, scope}, nullptr, nullptr, {}, {}});
    }
}

} // namespace asntree
