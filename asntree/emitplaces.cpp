#include "asntree/emitter.h"

#include <algorithm>

#include "store/ketramac.h"

/* Numbers of nodes that stand inside definitions, found by name when all records are there. */

namespace asntree {

namespace {

constexpr int MAX_CHAIN = 10000;

PlaceNr addPlace(TreeState &ts, PendingPlace place) {
    ts.places.push_back(place);
    return static_cast<PlaceNr>(ts.places.size() - 1);
}

} // namespace

/* The same node is asked for several times in a row. */
PlaceNr placeOfNode(TreeState &ts, NodeReference node) {
    if (!ts.places.empty()) {
        const PendingPlace &last = ts.places.back();
        if (last.kind == PendingPlace::Node && last.tree == node.tree && last.nr == node.nr)
            return static_cast<PlaceNr>(ts.places.size() - 1);
    }
    return addPlace(ts, {PendingPlace::Node, 0, {}, node.tree, node.nr});
}

PlaceNr placeOfNode(TreeState &ts, RecNr nr) {
    return placeOfNode(ts, NodeReference{ts.number, nr});
}

PlaceNr componentPlace(TreeState &ts, PlaceNr parent, std::string_view name) {
    auto [place, isNew] = ts.placesByName.try_emplace({parent, name}, 0);
    if (isNew)
        place->second = addPlace(ts, {PendingPlace::Component, parent, name, 0, 0});
    return place->second;
}

PlaceNr elementPlace(TreeState &ts, PlaceNr parent) {
    auto [place, isNew] = ts.placesByName.try_emplace({parent, std::string_view()}, 0);
    if (isNew)
        place->second = addPlace(ts, {PendingPlace::Element, parent, {}, 0, 0});
    return place->second;
}

TreeState *treeOfModule(Emitter &e, TreeState &ts, std::int32_t moduleNr) {
    if (moduleNr <= 1)
        return &ts;
    const auto place = static_cast<std::size_t>(moduleNr);
    const std::int64_t tree =
        place < ts.treesOfImports.size() ? ts.treesOfImports[place] : std::int64_t{-1};
    return tree < 0 ? nullptr : &e.trees[static_cast<std::size_t>(tree)];
}

namespace {

/* One step of a reference; tree null if there is none. */
TreeNode referred(Emitter &e, TreeNode node) {
    const TNode &rec = node.rec();
    if (rec.mainType == TYP_SYNONYM && rec.refRecord > 0)
        return {treeOfModule(e, *node.tree, rec.refModule), rec.refRecord};
    return {};
}

} // namespace

TreeNode baseNode(Emitter &e, TreeNode node) {
    for (int steps = 0; steps < MAX_CHAIN; ++steps) {
        const TreeNode next = referred(e, node);
        if (next.tree == nullptr)
            break;
        node = next;
    }
    return node;
}

namespace {

bool hasName(const TreeState &ts, RecNr nameIdx, std::string_view name) {
    if (nameIdx == 0)
        return false;
    const std::string &stored =
        ts.out->tree.strings8[static_cast<std::size_t>(std::abs(nameIdx) - 1)];
    return stored.size() == name.size() &&
           std::equal(stored.begin(), stored.end(), name.begin(),
                      [](char a, char b) { return a == b || (a == '_' && b == '-'); });
}

/* The component of a structure, through COMPONENTS OF. */
TreeNode findComponentNode(Emitter &e, TreeNode structure, std::string_view name, int depth) {
    for (RecNr nr = structure.rec().refRecord; nr != 0;) {
        const TNode &node = structure.tree->tree().t(nr);
        if (node.compStatus == TCS_COMPOF && depth < 100) {
            const TreeNode other = baseNode(e, {structure.tree, nr});
            if (isStructureKind(other.rec().mainType))
                if (TreeNode found = findComponentNode(e, other, name, depth + 1); found.nr != 0)
                    return found;
        } else if (hasName(*structure.tree, node.nameIdx, name)) {
            return {structure.tree, nr};
        }
        nr = node.next;
    }
    return {};
}

struct Resolver {
    Emitter &e;
    TreeState &ts;
    std::vector<TreeNode> known; /* by place */
    std::vector<bool> isKnown;

    TreeNode node(PlaceNr place);
};

/* Places are made behind those that they are seen from. */
TreeNode Resolver::node(PlaceNr place) {
    if (isKnown[place])
        return known[place];
    isKnown[place] = true;
    const PendingPlace &wanted = ts.places[place];
    TreeNode found;
    if (wanted.kind == PendingPlace::Node) {
        found = {&e.trees[wanted.tree], wanted.nr};
    } else if (TreeNode parent = node(wanted.parent); parent.nr != 0) {
        const TreeNode base = baseNode(e, parent);
        const int kind = base.rec().mainType;
        if (wanted.kind == PendingPlace::Component && isStructureKind(kind))
            found = findComponentNode(e, base, wanted.name, 0);
        else if (wanted.kind == PendingPlace::Element && isListKind(kind))
            found = {base.tree, base.rec().refRecord};
    }
    known[place] = found;
    return found;
}

/* Items of a type by name; long lists are read into a table once. */
struct ItemFinder {
    std::map<std::pair<const TreeState *, RecNr>, std::unordered_map<std::string, RecNr>> tables;

    RecNr find(TreeNode type, std::string_view name);
    RecNr findInTable(TreeNode type, std::string_view name);
};

RecNr ItemFinder::find(TreeNode type, std::string_view name) {
    constexpr int SHORT_LIST = 32;
    const Tree &tree = type.tree->tree();
    RecNr nr = type.rec().namedNumbersRec;
    for (int i = 0; nr != 0 && i < SHORT_LIST; ++i, nr = tree.v(nr).next)
        if (hasName(*type.tree, tree.v(nr).nameIdx, name))
            return nr;
    return nr == 0 ? 0 : findInTable(type, name);
}

RecNr ItemFinder::findInTable(TreeNode type, std::string_view name) {
    auto [place, isNew] = tables.try_emplace({type.tree, type.nr});
    if (isNew) {
        const Tree &tree = type.tree->tree();
        for (RecNr nr = type.rec().namedNumbersRec; nr != 0; nr = tree.v(nr).next)
            if (tree.v(nr).nameIdx != 0)
                place->second.emplace(
                    tree.strings8[static_cast<std::size_t>(tree.v(nr).nameIdx - 1)], nr);
    }
    auto found = place->second.find(treeName(name));
    return found == place->second.end() ? 0 : found->second;
}

} // namespace

void resolvePlaces(Emitter &e, TreeState &ts) {
    Resolver resolver{e, ts, std::vector<TreeNode>(ts.places.size()),
                      std::vector<bool>(ts.places.size())};
    ItemFinder items;
    for (const ConstraintFixup &fixup : ts.constraintFixups) {
        const TreeNode node = resolver.node(fixup.component);
        if (node.nr == 0)
            continue;
        ts.tree().sub(fixup.sub).compModule = moduleNumber(e, ts, node.tree->number);
        ts.tree().sub(fixup.sub).compTNode = node.nr;
    }
    for (const GovernorFixup &fixup : ts.governorFixups) {
        const TreeNode node = resolver.node(fixup.place);
        if (node.nr == 0)
            continue;
        ts.tree().v(fixup.value).governorModule = moduleNumber(e, ts, node.tree->number);
        ts.tree().v(fixup.value).governorRec = node.nr;
    }
    for (const ItemFixup &fixup : ts.itemFixups) {
        const TreeNode node = resolver.node(fixup.place);
        if (node.nr == 0)
            continue;
        const TreeNode type = baseNode(e, node);
        const RecNr item = items.find(type, fixup.name);
        if (item == 0)
            continue; /* the number stands in the value itself */
        VNode &value = ts.tree().v(fixup.value);
        value.valueKind = TYP_SYNONYM;
        value.refModule = moduleNumber(e, ts, type.tree->number);
        value.refRecord = item;
        value.value = {};
    }
}

} // namespace asntree
