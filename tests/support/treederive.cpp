#include "tests/support/treederive.h"

#include <algorithm>

#include "store/ketramac.h"

void TreeWriter::finish() {
    if (finished)
        return;
    finished = true;
    resolveReferences(*this);
    governConstraints(*this);
    markRecursion(*this);
    deriveTypes(*this);
    layOutHeader(*this);
}

namespace {

constexpr int MAX_CHAIN = 1000;

std::size_t at(RecNr nr) {
    return static_cast<std::size_t>(nr - 1);
}

const TreeWriter *treeOfModule(const TreeWriter &tree, std::int32_t moduleNr) {
    if (moduleNr <= 1)
        return &tree;
    auto found = tree.importedTrees.find(moduleNr);
    return found == tree.importedTrees.end() ? nullptr : found->second;
}

bool isStringKind(int kind) {
    return kind == TYP_BITSTR || kind == TYP_OCTSTR || isRestrCharStringKind(kind);
}

bool hasSize(int kind) {
    return isStringKind(kind) || isListKind(kind);
}

} // namespace

/* --- references --- */

TreePlace referredType(TreePlace place) {
    const TNode &node = place.rec();
    if (node.mainType != TYP_SYNONYM)
        return {};
    const TreeWriter *tree = treeOfModule(*place.tree, node.refModule);
    RecNr nr = node.refRecord;
    const std::string &name = place.tree->typeNotes[at(place.nr)].refName;
    if (tree != nullptr && nr == 0 && !name.empty())
        nr = tree->findType(name).nr;
    return nr > 0 && tree != nullptr ? TreePlace{tree, nr} : TreePlace{};
}

TreePlace baseType(TreePlace place) {
    for (int steps = 0; steps < MAX_CHAIN; ++steps) {
        TreePlace next = referredType(place);
        if (next.tree == nullptr)
            break;
        place = next;
    }
    return place;
}

namespace {

/* Sets the place of an item of a type, which may lie in another tree. */
void resolveItem(TreeWriter &tree, VNode &value, const TreeWriter::ValueNotes &notes) {
    TypeNode type = tree.findType(notes.refType);
    if (type.nr == 0)
        return;
    TreePlace place{&tree, type.nr};
    for (int steps = 0; steps < MAX_CHAIN; ++steps) {
        TreePlace next = referredType(place);
        if (next.tree == nullptr)
            break;
        if (next.tree != place.tree)
            value.refModule = place.rec().refModule;
        place = next;
    }
    auto nameOf = [&](const VNode &item) {
        return item.nameIdx > 0 ? place.tree->strings8[at(item.nameIdx)] : std::string();
    };
    RecNr item = place.rec().namedNumbersRec;
    while (item != 0 && nameOf(place.tree->vNodes[at(item)]) != notes.refName)
        item = place.tree->vNodes[at(item)].next;
    value.refRecord = item;
}

} // namespace

void resolveReferences(TreeWriter &tree) {
    for (std::size_t i = 0; i < tree.tNodes.size(); ++i)
        if (tree.tNodes[i].mainType == TYP_SYNONYM && tree.tNodes[i].refRecord == 0)
            tree.tNodes[i].refRecord = referredType({&tree, static_cast<RecNr>(i + 1)}).nr;
    for (std::size_t i = 0; i < tree.vNodes.size(); ++i) {
        VNode &value = tree.vNodes[i];
        const TreeWriter::ValueNotes &notes = tree.valueNotes[i];
        if (!notes.refType.empty())
            resolveItem(tree, value, notes);
        else if (!notes.refName.empty())
            value.refRecord = tree.findValue(notes.refName).nr;
        /* A value is governed by what its type refers to, as long as that adds nothing. */
        if (value.governorRec <= 0 || value.governorModule != 1)
            continue;
        const TNode &governor = tree.tNodes[at(value.governorRec)];
        if (governor.skipInWalk != 0 && governor.mainType == TYP_SYNONYM &&
            governor.constraintRec == 0 && governor.firstTagRec == 0) {
            value.governorModule = governor.refModule;
            value.governorRec = governor.refRecord;
        }
    }
}

/* --- governors --- */

namespace {

/* The hidden INTEGER that governs sizes. */
RecNr integerOfSizes(TreeWriter &tree) {
    if (tree.plainInteger == 0)
        tree.plainInteger = tree.anonymous(tree.integer().form(VF_UI32)).nr;
    return tree.plainInteger;
}

void governValue(TreeWriter &tree, RecNr value, RecNr governor) {
    if (value == 0 || tree.vNodes[at(value)].governorRec != 0)
        return;
    tree.vNodes[at(value)].governorRec = governor;
    tree.vNodes[at(value)].governorModule = 1;
}

void governList(TreeWriter &tree, RecNr sub, RecNr type, bool inSize, int depth);

void governOne(TreeWriter &tree, RecNr nr, RecNr type, bool inSize, int depth) {
    SubRec node = tree.subRecs[at(nr)];
    RecNr governor = inSize ? integerOfSizes(tree) : type;
    switch (node.subKind) {
    case SUB_RANGE:
        governValue(tree, node.first, governor);
        governValue(tree, node.second, governor);
        if (inSize && node.compTNode == 0) {
            tree.subRecs[at(nr)].compModule = 1;
            tree.subRecs[at(nr)].compTNode = governor;
        }
        break;
    case SUB_SINGLE_VALUE:
        governValue(tree, node.first, governor);
        break;
    case SUB_WITH_COMPONENT:
        governList(tree, node.first, tree.tNodes[at(type)].refRecord, false, depth);
        break;
    case SUB_WITH_COMPONENTS:
        for (RecNr part = node.first; part != 0; part = tree.subRecs[at(part)].next)
            governOne(tree, part, tree.subRecs[at(part)].compTNode, false, depth);
        break;
    case SUB_INCLUDES:
        break;
    default:
        governList(tree, node.first, type, inSize || node.subKind == SUB_SIZE, depth);
    }
}

void governList(TreeWriter &tree, RecNr sub, RecNr type, bool inSize, int depth) {
    if (depth > MAX_CHAIN)
        return;
    for (; sub != 0; sub = tree.subRecs[at(sub)].next)
        governOne(tree, sub, type, inSize, depth + 1);
}

} // namespace

void governConstraints(TreeWriter &tree) {
    for (std::size_t i = 0; i < tree.tNodes.size(); ++i)
        if (RecNr root = tree.tNodes[i].constraintRec; root != 0)
            governList(tree, root, static_cast<RecNr>(i + 1), false, 0);
}

/* --- bounds --- */

namespace {

Bounds common(Bounds a, Bounds b) {
    return {std::max(a.low, b.low), std::min(a.high, b.high)};
}

/* The number that a VNode holds or refers to, or `otherwise`. */
std::int64_t numberOf(const TreeWriter *tree, RecNr nr, std::int64_t otherwise) {
    for (int steps = 0; tree != nullptr && nr > 0 && steps < MAX_CHAIN; ++steps) {
        const VNode &value = tree->vNodes[at(nr)];
        if (value.valueKind == TYP_INTEGER)
            return static_cast<std::int64_t>(asntree::valueBytes(value, 0, 8));
        if (value.valueKind != TYP_SYNONYM)
            break;
        nr = value.refRecord;
        tree = treeOfModule(*tree, value.refModule);
    }
    return otherwise;
}

/* What a constraint leaves of `all`, which is what it says nothing about. */
Bounds boundsOfSub(const TreeWriter *tree, RecNr nr, bool ofSize, Bounds all) {
    const SubRec &node = tree->subRecs[at(nr)];
    auto part = [&](RecNr sub) { return boundsOfSub(tree, sub, ofSize, all); };
    switch (node.subKind) {
    case SUB_RANGE:
        return ofSize ? all
                      : Bounds{numberOf(tree, node.first, all.low),
                               numberOf(tree, node.second, all.high)};
    case SUB_SINGLE_VALUE:
        return ofSize ? all
                      : Bounds{numberOf(tree, node.first, all.low),
                               numberOf(tree, node.first, all.high)};
    case SUB_SIZE:
        return ofSize ? boundsOfSub(tree, node.first, false, all) : all;
    case SUB_INCLUDES: {
        const VNode &contained = tree->vNodes[at(node.first)];
        const TreeWriter *other = treeOfModule(*tree, contained.refModule);
        return other == nullptr ? all : boundsOf({other, contained.refRecord});
    }
    case SUB_EXCEPT:
        return part(node.first);
    case SUB_UNION: {
        Bounds sum = part(node.first);
        for (RecNr sub = tree->subRecs[at(node.first)].next; sub != 0;
             sub = tree->subRecs[at(sub)].next) {
            Bounds more = part(sub);
            sum = {std::min(sum.low, more.low), std::max(sum.high, more.high)};
        }
        return sum;
    }
    case SUB_INTERSECTION:
    case SUB_CATENATION: {
        Bounds rest = all;
        for (RecNr sub = node.first; sub != 0; sub = tree->subRecs[at(sub)].next)
            rest = common(rest, part(sub));
        return rest;
    }
    default:
        return all;
    }
}

Bounds boundsOfItems(TreePlace place) {
    Bounds bounds{MAX_VALUE, MIN_VALUE};
    for (RecNr nr = place.rec().namedNumbersRec; nr != 0; nr = place.tree->vNodes[at(nr)].next) {
        if (place.tree->vNodes[at(nr)].valueKind == TYP_EXTENSION_MARKER)
            continue;
        std::int64_t number = numberOf(place.tree, nr, 0);
        bounds = {std::min(bounds.low, number), std::max(bounds.high, number)};
    }
    return bounds.low > bounds.high ? Bounds{} : bounds;
}

} // namespace

Bounds boundsOf(TreePlace place) {
    int kind = baseType(place).rec().mainType;
    Bounds all;
    if (hasSize(kind))
        all.low = 0;
    if (kind != TYP_INTEGER && kind != TYP_ENUM && !hasSize(kind))
        return all;
    Bounds bounds = all;
    for (int steps = 0; place.tree != nullptr && steps < MAX_CHAIN; ++steps) {
        const TNode &node = place.rec();
        if (node.mainType == TYP_ENUM)
            bounds = common(bounds, boundsOfItems(place));
        else if (node.constraintRec != 0 && kind != TYP_ENUM)
            bounds =
                common(bounds, boundsOfSub(place.tree, node.constraintRec, hasSize(kind), all));
        place = referredType(place);
    }
    return bounds;
}
