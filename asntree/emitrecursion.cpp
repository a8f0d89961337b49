#include "asntree/emitter.h"

#include "asntree/graph.h"
#include "store/ketramac.h"

/* Which definitions of a tree contain themselves. Those of different trees never do: modules that
   name one another in a circle stand in one tree. */

namespace asntree {

namespace {

std::uint32_t at(RecNr nr) {
    return static_cast<std::uint32_t>(nr - 1);
}

/* A reference inside a definition to another one; `list` is the list whose element it is, or 0. */
struct Edge {
    RecNr owner;
    RecNr reference;
    RecNr target;
    RecNr list;
};

struct Visit {
    RecNr nr;
    RecNr list;
};

bool isDefinition(const TNode &node) {
    return node.compStatus == TCS_HEADER && node.parentRec == 0;
}

/* All references inside a definition, through copies of parameterized bodies. */
void addEdges(const Tree &tree, RecNr owner, std::vector<Visit> &stack, std::vector<Edge> &edges) {
    stack.push_back({owner, 0});
    while (!stack.empty()) {
        const Visit visit = stack.back();
        stack.pop_back();
        const TNode &node = tree.t(visit.nr);
        if (node.mainType == TYP_SYNONYM && node.refModule <= 1 && node.refRecord > 0) {
            if (isDefinition(tree.t(node.refRecord)))
                edges.push_back({owner, visit.nr, node.refRecord, visit.list});
            else if (tree.t(node.refRecord).compStatus == TCS_PARAM_HEAD)
                stack.push_back({node.refRecord, visit.list});
        } else if (isListKind(node.mainType) && node.refModule <= 1 && node.refRecord > 0) {
            stack.push_back({node.refRecord, visit.nr});
        } else if (isStructureKind(node.mainType)) {
            for (RecNr comp = node.refRecord; comp != 0; comp = tree.t(comp).next)
                stack.push_back({comp, 0});
        }
    }
}

void makeList(TNode &node) {
    node.valueFieldCode = VF_LIST;
    node.controlFieldCode = VF_NONE;
    node.optionBits &= ~optionMask(OPT_DYNAMIC_ARRAY);
}

} // namespace

void markRecursion(Emitter &e, TreeState &ts) {
    (void)e;
    Tree &tree = ts.tree();
    std::vector<Edge> edges;
    std::vector<Visit> stack;
    for (RecNr nr = tree.header().firstTNode; nr != 0; nr = tree.t(nr).next)
        addEdges(tree, nr, stack, edges);
    Edges pairs;
    for (const Edge &edge : edges)
        pairs.emplace_back(at(edge.owner), at(edge.target));
    const Groups groups =
        groupsOf(graphOf(static_cast<std::uint32_t>(tree.tNodes.size()), pairs));
    for (const Edge &edge : edges) {
        if (groups.groupOf[at(edge.owner)] != groups.groupOf[at(edge.target)])
            continue;
        tree.t(edge.owner).typeFlags |= TYPE_RECURSIVE;
        if (edge.list != 0) {
            makeList(tree.t(edge.list));
        } else if (edge.reference != edge.owner) {
            TNode &reference = tree.t(edge.reference);
            reference.typeFlags |= TYPE_RECURSIVE;
            reference.optionBits |= optionMask(OPT_POINTER);
        }
    }
}

namespace {

void narrow(Emitter &e, TreeNode node) {
    const TreeNode base = baseNode(e, node);
    if (base.rec().mainType != TYP_INTEGER || base.rec().valueFieldCode != VF_UI64)
        return;
    base.rec().valueFieldCode = VF_I64;
    base.tree->out->notes.push_back(
        {{}, nullptr,
         "line " + std::to_string(base.rec().lineNr) +
             ": the number is held with a sign, since items of lists and homes have no other form"});
}

} // namespace

void narrowHeldNumbers(Emitter &e, TreeState &ts) {
    const auto count = static_cast<RecNr>(ts.tree().tNodes.size());
    for (RecNr nr = 1; nr <= count; ++nr) {
        const TNode &node = ts.tree().t(nr);
        if (isListKind(node.mainType) && node.valueFieldCode == VF_LIST && node.refRecord > 0)
            narrow(e, {&ts, node.refRecord});
        else if ((node.optionBits & optionMask(OPT_HOME)) != 0 ||
                 (ts.settings.entriesInHomes && (node.entryFlags & ENTRY_TYPE_FLAG) != 0))
            narrow(e, {&ts, nr});
    }
}

} // namespace asntree
