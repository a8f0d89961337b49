#include "asntree/emitter.h"

#include "asntree/references.h"

/* The definition lists. */

namespace asntree {

namespace {

bool isLower(const Assignment &assignment) {
    const char first = assignment.name.text.front();
    return first >= 'a' && first <= 'z';
}

bool isExported(const Assignment &assignment, const TreeState &ts) {
    const Module &module = *assignment.module;
    if (ts.out->tree.mNodes.front().exportsMode == 0 || module.exportsMode != ExportsMode::List)
        return true;
    const ModuleInfo *info = nullptr;
    for (const ModuleInfo *candidate : ts.plan->modules)
        if (candidate->syntax == &module)
            info = candidate;
    return info != nullptr && info->exported.contains(assignment.name.text);
}

void appendValue(TreeState &ts, RecNr nr) {
    RecNr &end = ts.lastValue == 0 ? ts.tree().header().firstVNode : ts.tree().v(ts.lastValue).next;
    end = nr;
    ts.lastValue = nr;
}

void allocateType(Emitter &e, TreeState &ts, const Assignment &assignment, bool isPlaceholder) {
    const RecNr nr = newType(ts, TCS_HEADER, 0, lineOf(e, assignment.name.place));
    TNode &node = ts.tree().t(nr);
    node.nameIdx = nameNr(ts, assignment.name.text);
    if (isExported(assignment, ts))
        node.nodeFlags |= NODE_EXPORTED;
    if (isPlaceholder) {
        node.mainType = TYP_NONE;
        node.skipInWalk = 1;
    }
    appendType(ts, nr);
    e.types.emplace(&assignment, DefinitionPlace{ts.number, nr});
}

void allocateValue(Emitter &e, TreeState &ts, const Assignment &assignment) {
    const RecNr nr = ts.tree().addV({});
    VNode &node = ts.tree().v(nr);
    node.nameIdx = nameNr(ts, assignment.name.text);
    node.compStatus = VCS_DEFINITION;
    node.lineNr = lineOf(e, assignment.name.place);
    if (isExported(assignment, ts))
        node.valueFlags = VALUE_EXPORTED;
    appendValue(ts, nr);
    e.values.emplace(&assignment, DefinitionPlace{ts.number, nr});
}

} // namespace

void appendType(TreeState &ts, RecNr nr) {
    RecNr &end = ts.lastType == 0 ? ts.tree().header().firstTNode : ts.tree().t(ts.lastType).next;
    end = nr;
    ts.lastType = nr;
}

void addTypeOption(TreeState &ts, RecNr nr, int kind, std::string_view text) {
    ts.typeOptions[nr].push_back({static_cast<std::uint8_t>(kind), ts.tree().str(text)});
}

void allocateDefinitions(Emitter &e, TreeState &ts) {
    for (const Assignment *assignment : ts.plan->definitions) {
        if (e.excluded.contains(assignment))
            continue;
        const DefinitionKind kind = kindOfDefinition(e.c, *assignment);
        if (kind == DefinitionKind::Macro)
            continue;
        if (kind == DefinitionKind::Value || kind == DefinitionKind::Object)
            allocateValue(e, ts, *assignment);
        else if (kind != DefinitionKind::Parameterized || !isLower(*assignment))
            allocateType(e, ts, *assignment, kind == DefinitionKind::Parameterized);
    }
}

namespace {

/* The naming options of a definition, from the plan and from words. */
void emitNaming(Emitter &e, TreeState &ts, const Assignment &assignment) {
    auto overrides = e.plan.overrides.find(&assignment);
    if (overrides == e.plan.overrides.end())
        return;
    for (const std::string &text : overrides->second) {
        const RecNr stri = ts.tree().str(text);
        if (auto type = e.types.find(&assignment); type != e.types.end()) {
            ts.tree().t(type->second.nr).optionBits |= optionMask(OPT_NAMING);
            ts.typeOptions[type->second.nr].push_back({TED_OPTION, stri});
        } else if (auto value = e.values.find(&assignment); value != e.values.end()) {
            ts.tree().v(value->second.nr).valueFlags |= VALUE_NAMING;
            ts.valueOptions[value->second.nr].push_back({TED_OPTION, stri});
        }
    }
}

void emitEntry(Emitter &e, TreeState &ts, const Assignment &assignment, RecNr nr) {
    auto entry = e.plan.entries.find(&assignment);
    if (entry == e.plan.entries.end())
        return;
    ts.tree().t(nr).entryFlags = entry->second.flags;
    ts.tree().t(nr).entryCategories = entry->second.categories;
}

void emitValueDefinition(Emitter &e, TreeState &ts, RecNr nr, const Assignment &assignment) {
    const Scope *scope = &moduleOf(e.c, &assignment)->root;
    TypeUse governor{assignment.type, scope};
    const TypeUse macro = macroUse(e, governor);
    const bool isMacro = bool(macro);
    if (isMacro)
        governor = macro;
    const Datum *datum = readDatum(e.c, {assignment.value, scope}, governor);
    const NodeReference node =
        !isMacro ? governorNode(e, ts, governor)
        : datum->kind == DatumKind::Integer ? NodeReference{ts.number, plainInteger(ts)}
                                            : NodeReference{ts.number, plainIdentifier(ts)};
    const PlaceNr place = placeOfNode(ts, node);
    fillValue(e, ts, nr, *datum, place);
    governBy(e, ts, nr, place);
    if (isMacro)
        emitMacroTypes(e, ts, assignment);
}

void emitDefinition(Emitter &e, TreeState &ts, const Assignment &assignment, DefinitionKind kind) {
    const RecNr nr = kind == DefinitionKind::Value || kind == DefinitionKind::Object
                         ? e.values.at(&assignment).nr
                         : e.types.at(&assignment).nr;
    switch (kind) {
    case DefinitionKind::Type:
        emitEntry(e, ts, assignment, nr);
        fillType(e, ts, {nr, {assignment.type, &moduleOf(e.c, &assignment)->root}, nullptr,
                         &assignment, {}, {}});
        break;
    case DefinitionKind::Class:
        emitClassDefinition(e, ts, nr, assignment);
        break;
    case DefinitionKind::Value:
        emitValueDefinition(e, ts, nr, assignment);
        break;
    case DefinitionKind::Object:
        emitObjectDefinition(e, ts, nr, assignment);
        break;
    case DefinitionKind::ValueSet:
    case DefinitionKind::ObjectSet:
        emitSetDefinition(e, ts, nr, assignment);
        break;
    case DefinitionKind::Parameterized:
    case DefinitionKind::Macro:
        break;
    }
    emitNaming(e, ts, assignment);
    runQueue(e, ts);
}

} // namespace

void emitDefinitions(Emitter &e, TreeState &ts) {
    for (const Assignment *assignment : ts.plan->definitions) {
        const DefinitionKind kind = kindOfDefinition(e.c, *assignment);
        if (e.excluded.contains(assignment) || kind == DefinitionKind::Parameterized ||
            kind == DefinitionKind::Macro)
            continue;
        e.current = assignment;
        emitDefinition(e, ts, *assignment, kind);
    }
    e.current = nullptr;
}

} // namespace asntree
