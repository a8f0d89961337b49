#include "project/ketratavi.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/model/modelsetup.h"

/* The browser tree itself: order of nodes, search by name, its lines. */

namespace {

BrowserNode *plainNode(const char *name) {
    return taviBrowserNewNode(name, nullptr, nullptr, 1, "kind", nullptr, nullptr);
}

std::vector<const BrowserNode *> childrenOf(BrowserNode *parent) {
    std::vector<const BrowserNode *> children;
    for (const BrowserNode *child = parent->firstChild; child != nullptr; child = child->next)
        children.push_back(child);
    return children;
}

/* Where a node goes by a walk over all children. */
void insertByWalk(std::vector<const BrowserNode *> *children, const BrowserNode *node,
                  bool sorted) {
    const std::string name = taviBrowserName(node);
    const auto isLater = [&](const BrowserNode *child) { return name < taviBrowserName(child); };
    const auto end = children->end();
    children->insert(sorted ? std::find_if(children->begin(), end, isLater) : end, node);
}

/* Sorted and unsorted children together, many of one name, against a walk over all. */
TEST(BrowserTree, ChildrenAreFoundAndKeptInOrder) {
    std::mt19937 numbers(7);
    for (int round = 0; round < 200; ++round) {
        BrowserNode *root = plainNode("root");
        std::vector<const BrowserNode *> expected;
        const auto names = 1 + numbers() % 30, sortedOfTen = numbers() % 11;
        for (int i = 0; i < 60; ++i) {
            const std::string name(1, static_cast<char>('A' + numbers() % names));
            BrowserNode *node = plainNode(name.c_str());
            const bool sorted = numbers() % 10 < sortedOfTen;
            taviBrowserInsertSubNode(root, node, sorted);
            insertByWalk(&expected, node, sorted);
            ASSERT_EQ(childrenOf(root), expected);
            ASSERT_EQ(root->lastChild, expected.back());
            const std::string sought(1, static_cast<char>('A' + numbers() % names));
            const auto first =
                std::find_if(expected.begin(), expected.end(), [&](const BrowserNode *child) {
                    return taviBrowserName(child) == sought;
                });
            ASSERT_EQ(taviBrowserFindSubNode(root, sought.c_str()),
                      first == expected.end() ? nullptr : *first);
        }
        taviBrowserDeleteTree(root);
    }
}

TEST(BrowserTree, LinesOfTheFile) {
    const WorkDir dir;
    ASSERT_TRUE(taviOptionOK("TAVI-PREFIX=p-1_"));
    ASSERT_TRUE(taviOptionOK(("TAVI-DIRECTORY=" + dir.path()).c_str()));
    BrowserNode *root = taviBrowserNewProjectTree("Type", nullptr, nullptr);
    BrowserNode *child = taviBrowserNewNode("c", "d/", "f.x", -1, "k", "one", "two");
    taviBrowserInsertSubNode(root, child, true);
    taviBrowserInsertSubNode(child, taviBrowserNewNode("", "", nullptr, 7, nullptr, "", ""), false);
    taviBrowserInsertSubNode(root, plainNode(nullptr), false);
    taviBrowserPrintTree(root, ".x");
    taviBrowserDeleteTree(root);
    EXPECT_EQ(dir.read("p-1_.x"), "0:p-1_:'':0:Type::\n"
                                  "1:c:'d/f.x':0:k:one:two\n"
                                  "2::'':7:::\n"
                                  "1::'':1:kind::\n");
}

TEST(BrowserTreeDeathTest, WithoutAPrefix) {
    const auto exitsWith2 = testing::ExitedWithCode(2);
    EXPECT_FALSE(taviOptionOK("TAVI-PREFIX="));
    EXPECT_FALSE(taviOptionOK("tavi-prefix=x"));
    EXPECT_FALSE(taviOptionOK("TAVI-PREFIX=a.b"));
    EXPECT_FALSE(taviOptionOK(("TAVI-PREFIX=" + std::string(33, 'x')).c_str()));
    EXPECT_TRUE(taviOptionOK("TAVI-DIRECTORY=d"));
    EXPECT_FALSE(taviIsActive());
    EXPECT_EXIT(taviBrowserNewProjectTree("Type", nullptr, nullptr), exitsWith2,
                "for reading\n +No TAVI-PREFIX");
    EXPECT_EXIT(taviOpenTextFile(".x", "r"), exitsWith2, "for reading\n +No TAVI-PREFIX");
    EXPECT_EXIT(taviOpenTextFile(".x", "a"), exitsWith2, "for writing\n +No TAVI-PREFIX");
    EXPECT_TRUE(taviOptionOK(("TAVI-PREFIX=" + std::string(32, 'x')).c_str()));
    EXPECT_TRUE(taviIsActive());
}

} // namespace
