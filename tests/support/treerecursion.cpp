#include "tests/support/treederive.h"

#include <algorithm>

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

/* Finds the groups of definitions that reach one another (Tarjan), without recursion, since trees
   for measurements have chains of a hundred thousand references. */
struct Groups {
    explicit Groups(const TreeWriter &tree);
    const std::vector<Edge> &edgesOf(RecNr nr) const { return edges_[at(nr)]; }
    bool sameGroup(RecNr a, RecNr b) const { return group_[at(a)] == group_[at(b)]; }

private:
    void visit(RecNr root);
    void enter(RecNr nr);
    void leave(RecNr nr);

    struct Frame {
        RecNr nr;
        std::size_t nextEdge;
    };
    std::vector<std::vector<Edge>> edges_;
    std::vector<int> order_, low_, group_;
    std::vector<RecNr> open_;
    std::vector<Frame> frames_;
    int count_ = 0;
};

Groups::Groups(const TreeWriter &tree) {
    const std::size_t size = tree.tNodes.size();
    edges_.resize(size);
    order_.assign(size, 0);
    low_.assign(size, 0);
    group_.assign(size, 0);
    for (RecNr nr = tree.mNodes.front().firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next)
        addEdges(tree, nr, 0, edges_[at(nr)]);
    for (RecNr nr = tree.mNodes.front().firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next)
        if (order_[at(nr)] == 0)
            visit(nr);
}

void Groups::enter(RecNr nr) {
    order_[at(nr)] = low_[at(nr)] = ++count_;
    open_.push_back(nr);
    frames_.push_back({nr, 0});
}

/* All edges of `nr` are done: it may be the first of a group. */
void Groups::leave(RecNr nr) {
    if (low_[at(nr)] == order_[at(nr)]) {
        RecNr member = 0;
        do {
            member = open_.back();
            open_.pop_back();
            group_[at(member)] = nr;
        } while (member != nr);
    }
    frames_.pop_back();
    if (!frames_.empty()) {
        int &low = low_[at(frames_.back().nr)];
        low = std::min(low, low_[at(nr)]);
    }
}

void Groups::visit(RecNr root) {
    enter(root);
    while (!frames_.empty()) {
        Frame &frame = frames_.back();
        if (frame.nextEdge == edges_[at(frame.nr)].size()) {
            leave(frame.nr);
            continue;
        }
        RecNr target = edges_[at(frame.nr)][frame.nextEdge++].target;
        if (order_[at(target)] == 0)
            enter(target);
        else if (group_[at(target)] == 0)
            low_[at(frame.nr)] = std::min(low_[at(frame.nr)], order_[at(target)]);
    }
}

} // namespace

void markRecursion(TreeWriter &tree) {
    Groups groups(tree);
    for (RecNr nr = tree.header().firstTNode; nr != 0; nr = tree.tNodes[at(nr)].next) {
        for (const Edge &edge : groups.edgesOf(nr)) {
            if (!groups.sameGroup(nr, edge.target))
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
