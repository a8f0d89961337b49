#include "asntree/recursion.h"

#include "asntree/graph.h"
#include "store/ketramac.h"

namespace asntree {

namespace {

std::uint32_t at(RecNr nr) {
    return static_cast<std::uint32_t>(nr - 1);
}

struct Visit {
    RecNr nr;
    RecNr list;
};

bool isDefinition(const TNode &node) {
    return node.compStatus == TCS_HEADER && node.parentRec == 0;
}

/* All references inside a definition to others, through copies of parameterized bodies. */
void addReferences(const Tree &tree, RecNr definition, std::vector<Visit> &stack,
                   std::vector<RecursiveReference> &references) {
    stack.push_back({definition, 0});
    while (!stack.empty()) {
        const Visit visit = stack.back();
        stack.pop_back();
        const TNode &node = tree.t(visit.nr);
        if (node.mainType == TYP_SYNONYM && node.refModule <= 1 && node.refRecord > 0) {
            if (isDefinition(tree.t(node.refRecord)))
                references.push_back({definition, visit.nr, visit.list});
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

} // namespace

std::vector<RecursiveReference> recursiveReferences(const Tree &tree) {
    std::vector<RecursiveReference> references;
    std::vector<Visit> stack;
    for (RecNr nr = tree.mNodes.front().firstTNode; nr != 0; nr = tree.t(nr).next)
        addReferences(tree, nr, stack, references);
    const auto target = [&tree](const RecursiveReference &reference) {
        return at(tree.t(reference.reference).refRecord);
    };
    Edges edges;
    for (const RecursiveReference &reference : references)
        edges.emplace_back(at(reference.definition), target(reference));
    const Groups groups =
        groupsOf(graphOf(static_cast<std::uint32_t>(tree.tNodes.size()), edges));
    std::erase_if(references, [&](const RecursiveReference &reference) {
        return groups.groupOf[at(reference.definition)] != groups.groupOf[target(reference)];
    });
    return references;
}

} // namespace asntree
