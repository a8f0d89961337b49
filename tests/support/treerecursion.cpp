#include "tests/support/treederive.h"

#include "asntree/graph.h"
#include "store/ketramac.h"

/* Which definitions contain themselves. */

namespace {

std::size_t at(RecNr nr) {
    return static_cast<std::size_t>(nr - 1);
}

/* A reference inside a definition to another one; `list` is the list whose element it is, 0 for
 * none. */
struct Edge {
    RecNr reference;
    RecNr target;
    RecNr list;
};

/* Adds the references of a node and of what is nested in it. */
void addEdges(const TreeWriter &tree, RecNr nr, RecNr list, std::vector<Edge> &edges) {
    const TNode &node = tree.tNodes[at(nr)];
    if (node.mainType == TYP_SYNONYM && node.refModule <= 1 && node.refRecord > 0)
        edges.push_back({nr, node.refRecord, list});
    else if (isListKind(node.mainType) && node.refModule <= 1 && node.refRecord > 0)
        addEdges(tree, node.refRecord, nr, edges);
    else if (isStructureKind(node.mainType))
        for (RecNr comp = node.refRecord; comp != 0; comp = tree.tNodes[at(comp)].next)
            addEdges(tree, comp, 0, edges);
}

} // namespace

void markRecursion(TreeWriter &tree) {
    std::vector<std::vector<Edge>> edges(tree.tNodes.size());
    asntree::Edges pairs;
    for (RecNr nr = tree.header().firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next) {
        addEdges(tree, nr, 0, edges[at(nr)]);
        for (const Edge &edge : edges[at(nr)])
            pairs.emplace_back(at(nr), at(edge.target));
    }
    const asntree::Groups groups =
        asntree::groupsOf(asntree::graphOf(static_cast<std::uint32_t>(tree.tNodes.size()), pairs));
    for (RecNr nr = tree.header().firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next) {
        for (const Edge &edge : edges[at(nr)]) {
            if (groups.groupOf[at(nr)] != groups.groupOf[at(edge.target)])
                continue;
            TypeNode{&tree, nr}.flag(TYPE_RECURSIVE);
            TreeWriter::TypeNotes *list = edge.list == 0 ? nullptr : &tree.typeNotes[at(edge.list)];
            if (list != nullptr && !list->arrayWanted)
                list->listWanted = true;
            else if (edge.reference != nr)
                TypeNode{&tree, edge.reference}.flag(TYPE_RECURSIVE).option(OPT_POINTER);
        }
    }
}
