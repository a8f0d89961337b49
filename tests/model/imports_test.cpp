#include <gtest/gtest.h>

#include <deque>
#include <random>

#include "model/modules.h"
#include "tests/support/inprocess.h"

namespace {

using Graph = std::vector<std::vector<int>>; /* whom each module imports from */

/* The answers by their definition: a table of 0, 1 and 2 for every pair, and a search for each. */
struct StatusTable {
    std::vector<std::vector<int>> status;

    bool search(std::size_t a, std::size_t b, std::vector<bool> &seen) const {
        if (status[b][a] != 0)
            return true;
        if (seen[b])
            return false;
        seen[b] = true;
        for (std::size_t c = 0; c < status.size(); ++c) {
            if (c == b || status[b][c] == 0)
                continue;
            if (status[b][c] == 2 || (c != a && search(a, c, seen)))
                return true;
        }
        return false;
    }

    explicit StatusTable(const Graph &graph)
        : status(graph.size(), std::vector<int>(graph.size())) {
        const std::size_t count = graph.size();
        for (std::size_t m = 0; m < count; ++m)
            for (const int target : graph[m]) {
                const auto e = static_cast<std::size_t>(target);
                status[m][e] = status[e][m] == 0 ? 1 : 2;
                if (status[e][m] != 0)
                    status[e][m] = 2;
            }
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t j = 0; j < count; ++j) {
                std::vector<bool> seen(count);
                if (i != j && status[i][j] == 1 && search(i, j, seen))
                    status[i][j] = 2;
            }
    }

    bool circular(std::size_t m) const {
        return std::count(status[m].begin(), status[m].end(), 2) > 0;
    }
};

/* Module n of the graph is the n-th on the command line; the answers, one digit each. */
void expectCircles(const Graph &graph, const std::string &expected) {
    WorkDir dir;
    std::deque<TreeWriter> trees;
    std::vector<std::string> names;
    for (std::size_t m = 0; m < graph.size(); ++m) {
        names.push_back("m" + std::to_string(m));
        trees.emplace_back("M" + std::to_string(m), names.back());
    }
    for (std::size_t m = 0; m < graph.size(); ++m) {
        /* The last one first, since the order of imports makes no difference. */
        for (auto target = graph[m].rbegin(); target != graph[m].rend(); ++target)
            trees[m].import(trees[static_cast<std::size_t>(*target)]);
        ASSERT_TRUE(trees[m].save(dir.path(names[m] + ".stx")));
    }
    startTool(dir, names);
    std::string answers;
    forEachModule([&](AsnModule *module) { answers += isCircularImports(module) ? '1' : '0'; });
    EXPECT_EQ(answers, expected);
}

std::string byTable(const Graph &graph) {
    const StatusTable table(graph);
    std::string answers;
    for (std::size_t m = 0; m < graph.size(); ++m)
        answers += table.circular(m) ? '1' : '0';
    return answers;
}

/* A ring of three is found by those behind it in the list only; its members always know. */
TEST(Imports, RingInFrontAndBehind) {
    expectCircles({{1}, {2}, {3}, {1}, {3}}, "01111");
}

TEST(Imports, RandomGraphsAsTheTableSays) {
    /* All graphs in one start: modules of a graph import from one another only. */
    std::mt19937 random(7);
    Graph graph;
    std::string expected;
    for (int part = 0; part < 40; ++part) {
        const int count = 2 + static_cast<int>(random() % 7);
        const int first = static_cast<int>(graph.size());
        Graph small(static_cast<std::size_t>(count));
        for (int m = 0; m < count; ++m)
            for (int e = 0; e < count; ++e)
                if (m != e && random() % static_cast<unsigned>(count) < 1 + random() % 2)
                    small[static_cast<std::size_t>(m)].push_back(e);
        expected += byTable(small);
        for (std::vector<int> targets : small) {
            for (int &target : targets)
                target += first;
            graph.push_back(targets);
        }
    }
    EXPECT_NE(expected.find('0'), std::string::npos);
    EXPECT_NE(expected.find('1'), std::string::npos);
    expectCircles(graph, expected);
}

/* Three hundred modules, each importing from all behind it. */
TEST(Imports, ManyModules) {
    Graph graph(300);
    for (int m = 0; m < 300; ++m)
        for (int e = m + 1; e < 300; ++e)
            graph[static_cast<std::size_t>(m)].push_back(e);
    expectCircles(graph, std::string(300, '0'));
}

} // namespace
