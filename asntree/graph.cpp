#include "asntree/graph.h"

#include <algorithm>

namespace asntree {

Graph graphOf(std::uint32_t nodes, const Edges &edges) {
    Graph graph;
    graph.first.assign(nodes + 1, 0);
    for (const auto &[from, to] : edges)
        ++graph.first[from + 1];
    for (std::uint32_t n = 0; n < nodes; ++n)
        graph.first[n + 1] += graph.first[n];
    graph.targets.resize(edges.size());
    std::vector<std::uint32_t> place(graph.first.begin(), graph.first.end() - 1);
    for (const auto &[from, to] : edges)
        graph.targets[place[from]++] = to;
    return graph;
}

namespace {

constexpr std::uint32_t UNSEEN = 0xFFFFFFFF;

/* Tarjan's walk with a stack of its own: a chain of ten thousand nodes is nothing unusual. */
struct Walk {
    struct Frame {
        std::uint32_t node;
        std::uint32_t edge; /* the next one */
    };
    const Graph &graph;
    Groups groups;
    std::vector<std::uint32_t> order; /* of the first visit */
    std::vector<std::uint32_t> low;
    std::vector<std::uint32_t> open; /* visited, and in no group yet */
    std::vector<Frame> frames;
    std::uint32_t visits = 0;

    explicit Walk(const Graph &g) : graph(g), order(g.nodes(), UNSEEN), low(g.nodes(), UNSEEN) {
        groups.groupOf.assign(g.nodes(), UNSEEN);
    }
};

void enter(Walk &walk, std::uint32_t node) {
    walk.order[node] = walk.low[node] = walk.visits++;
    walk.open.push_back(node);
    walk.frames.push_back({node, walk.graph.first[node]});
}

void closeGroup(Walk &walk, std::uint32_t root) {
    const auto number = static_cast<std::uint32_t>(walk.groups.members.size());
    std::vector<std::uint32_t> members;
    std::uint32_t node = UNSEEN;
    do {
        node = walk.open.back();
        walk.open.pop_back();
        walk.groups.groupOf[node] = number;
        members.push_back(node);
    } while (node != root);
    std::sort(members.begin(), members.end());
    walk.groups.members.push_back(std::move(members));
}

void visit(Walk &walk, std::uint32_t root) {
    enter(walk, root);
    while (!walk.frames.empty()) {
        Walk::Frame &frame = walk.frames.back();
        const std::uint32_t node = frame.node;
        if (frame.edge < walk.graph.first[node + 1]) {
            const std::uint32_t next = walk.graph.targets[frame.edge++];
            if (walk.order[next] == UNSEEN)
                enter(walk, next);
            else if (walk.groups.groupOf[next] == UNSEEN)
                walk.low[node] = std::min(walk.low[node], walk.order[next]);
            continue;
        }
        walk.frames.pop_back();
        if (walk.low[node] == walk.order[node])
            closeGroup(walk, node);
        if (!walk.frames.empty()) {
            const std::uint32_t father = walk.frames.back().node;
            walk.low[father] = std::min(walk.low[father], walk.low[node]);
        }
    }
}

} // namespace

Groups groupsOf(const Graph &graph) {
    Walk walk(graph);
    for (std::uint32_t node = 0; node < graph.nodes(); ++node)
        if (walk.order[node] == UNSEEN)
            visit(walk, node);
    return std::move(walk.groups);
}

} // namespace asntree
