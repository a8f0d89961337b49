#include "asntree/emitter.h"

#include <algorithm>

/* Uses of parameterized types. Each gets a copy of the definition's body, since generated C has no
   parameters: a record outside of the list, which the use refers to. */

namespace asntree {

std::string freeName(TreeState &ts, std::string_view wish) {
    if (ts.usedNames.empty())
        for (RecNr nr = ts.tree().header().firstTNode; nr != 0; nr = ts.tree().t(nr).next)
            ts.usedNames.insert(
                ts.tree().strings8[static_cast<std::size_t>(ts.tree().t(nr).nameIdx - 1)]);
    std::string name = treeName(wish);
    for (int i = 1; !ts.usedNames.insert(name).second; ++i)
        name = treeName(wish) + "_" + std::to_string(i);
    return name;
}

namespace {

constexpr std::size_t MAX_INSTANCES = 2'000'000;

const InstanceFrame *frameOf(const InstanceFrame *frame, const Scope *scope) {
    while (frame != nullptr && frame->scope != scope)
        frame = frame->outer;
    return frame;
}

/* The node refers to a definition of this tree. */
void referToOwn(TreeState &ts, RecNr nr, RecNr definition) {
    TNode &node = ts.tree().t(nr);
    node.mainType = TYP_SYNONYM;
    node.refModule = 1;
    node.refRecord = definition;
}

void pathToPlaceholder(Emitter &e, TreeState &ts, RecNr nr, const Assignment *definition) {
    auto placeholder = e.types.find(definition);
    if (placeholder == e.types.end())
        return;
    const std::int32_t module = moduleNumber(e, ts, placeholder->second.tree);
    const RecNr step = ts.tree().addS({module, placeholder->second.nr, 0});
    ts.tree().t(nr).auxRecord = step;
}

/* An instance that holds itself needs a name to which its inside can refer: it becomes a definition
   of this tree. */
RecNr definitionOfRecursive(Emitter &e, TreeState &ts, const Layers &layers) {
    const Target &target = layers.target;
    auto [place, isNew] = ts.recursiveInstances.try_emplace(target.scope, 0);
    if (!isNew)
        return place->second;
    const std::string name = freeName(ts, target.assignment->name.text);
    const RecNr nr = newType(ts, TCS_HEADER, 0, lineOf(e, target.assignment->name.place));
    place->second = nr;
    ts.tree().t(nr).nameIdx = ts.tree().str(name);
    ts.tree().t(nr).nodeFlags |= NODE_EXPORTED;
    appendType(ts, nr);
    addNote(e, ts,
            "an instance of `" + std::string(target.assignment->name.text) +
                "` holds itself; it is the definition " + name);
    TypeUse plain = layers.last();
    if (!plain.type->tags.empty() || !plain.type->constraints.empty()) {
        Type *bare = newType(e.c.arena, TypeKind::Reference, plain.type->place);
        bare->ref = plain.type->ref;
        plain.type = bare;
    }
    ts.queue.push_back({nr, plain, nullptr, nullptr, {}, {}});
    return nr;
}

/* The layers of a use with those of the definition's body behind them. Where the body is an instance
   itself, that one's body follows. `frame` becomes that of the innermost. */
Layers withBody(Emitter &e, TreeState &ts, const Layers &layers, const InstanceFrame *&frame) {
    constexpr int MAX_NESTED = 200;
    Layers all = layers;
    for (int nested = 0; nested < MAX_NESTED; ++nested) {
        const Layers body = layersOf(e, {all.target.assignment->type, all.target.scope});
        all.uses.insert(all.uses.end(), body.uses.begin(), body.uses.end());
        all.isDummy.insert(all.isDummy.end(), body.isDummy.begin(), body.isDummy.end());
        all.target = body.target;
        if (all.target.assignment == nullptr || all.target.scope->definition == nullptr ||
            frameOf(frame, all.target.scope) != nullptr)
            break;
        ts.frames.push_back({frame, all.target.scope, 0});
        frame = &ts.frames.back();
    }
    return all;
}

bool isBare(const Pending &pending, const Layers &layers) {
    return !pending.tag &&
           std::all_of(layers.uses.begin(), layers.uses.end(), [](const TypeUse &layer) {
               return layer.type->tags.empty() && layer.type->constraints.empty();
           });
}

} // namespace

void emitInstance(Emitter &e, TreeState &ts, const Pending &pending, const Layers &layers) {
    const Target &target = layers.target;
    if (const InstanceFrame *outer = frameOf(pending.frame, target.scope); outer != nullptr) {
        RecNr definition = outer->definition;
        if (definition == 0)
            definition = definitionOfRecursive(e, ts, layers);
        referToOwn(ts, pending.nr, definition);
        emitTags(e, ts, pending, layers);
        emitConstraints(e, ts, pending, layers);
        return;
    }
    if (++ts.instances > MAX_INSTANCES)
        return refuse(e, layers.last().type->place,
                      "its parameterized types come to more instances than a tree can hold");
    const bool isDefinition =
        ts.tree().t(pending.nr).compStatus == TCS_HEADER && ts.tree().t(pending.nr).parentRec == 0;
    ts.frames.push_back(
        {pending.frame, target.scope, isDefinition && isBare(pending, layers) ? pending.nr : 0});
    const InstanceFrame *frame = &ts.frames.back();
    const Layers all = withBody(e, ts, layers, frame);
    /* A body that is a reference needs no copy: the use is that reference, with all that stands on
       the way. */
    Pending inner{pending.nr, pending.use, frame, nullptr, pending.tag, {}};
    if (all.target.assignment == nullptr) {
        const RecNr copy = newType(ts, TCS_PARAM_HEAD, 0, lineOf(e, target.assignment->name.place));
        ts.tree().t(copy).nameIdx = nameNr(ts, target.assignment->name.text);
        referToOwn(ts, pending.nr, copy);
        pathToPlaceholder(e, ts, pending.nr, target.assignment);
        inner.nr = copy;
        inner.item = target.assignment;
    }
    fillFromLayers(e, ts, inner, all);
}

/* The generator takes a reference to an instance in another module for a type of its own. A hidden
   synonym on this side, which is a definition to it, keeps it the one type that it is. */
void aliasForeignInstances(Emitter &e, TreeState &ts) {
    std::map<std::pair<std::int32_t, RecNr>, RecNr> aliases;
    const auto count = static_cast<RecNr>(ts.tree().tNodes.size());
    for (RecNr nr = 1; nr <= count; ++nr) {
        const TNode node = ts.tree().t(nr);
        if (node.mainType != TYP_SYNONYM || node.refModule <= 1 || node.parentRec == 0 ||
            node.skipInWalk != 0 || node.compStatus == TCS_COMPOF)
            continue;
        TreeState *owner = treeOfModule(e, ts, node.refModule);
        if (owner == nullptr || owner->tree().t(node.refRecord).auxRecord == 0 ||
            owner->tree().t(node.refRecord).mainType != TYP_SYNONYM)
            continue;
        RecNr &alias = aliases[{node.refModule, node.refRecord}];
        if (alias == 0) {
            const TNode &target = owner->tree().t(node.refRecord);
            const std::string name =
                owner->tree().strings8[static_cast<std::size_t>(target.nameIdx - 1)];
            alias = newType(ts, TCS_HEADER, 0, 0);
            TNode &made = ts.tree().t(alias);
            made.skipInWalk = 1;
            made.mainType = TYP_SYNONYM;
            made.refModule = node.refModule;
            made.refRecord = node.refRecord;
            made.nameIdx = ts.tree().str(name);
        }
        ts.tree().t(nr).refModule = 1;
        ts.tree().t(nr).refRecord = alias;
    }
}

} // namespace asntree
