#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace asntree {

/* A directed graph over the numbers from 0 on. The edges of node n are targets[first[n]] to
   targets[first[n + 1] - 1], in the order in which they were given. */
struct Graph {
    std::vector<std::uint32_t> first;
    std::vector<std::uint32_t> targets;

    std::uint32_t nodes() const { return static_cast<std::uint32_t>(first.size() - 1); }
};

using Edges = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

Graph graphOf(std::uint32_t nodes, const Edges &edges);

/* The strongly connected groups of a graph. They are numbered so that a group stands behind all
   that it leads to, and otherwise in the order of the nodes. */
struct Groups {
    std::vector<std::uint32_t> groupOf;              /* by node */
    std::vector<std::vector<std::uint32_t>> members; /* by group, ascending */
};
Groups groupsOf(const Graph &graph);

} // namespace asntree
