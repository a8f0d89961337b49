#include "project/browser.h"

#include <cstring>
#include <map>

#include "project/taviconf.h"

SymbolTable *taviBrowserSymbolTable = nullptr;
BrowserNode *g_taviBrowserTree = nullptr;
BrowserNode *g_taviModuleNode = nullptr;
BrowserNode *g_taviTypeNode = nullptr;
Text g_taviTreeFileSuffix = ".acd";

/* Children may be sorted or not. A sorted one goes in front of the first child with a greater name,
   and that child's name is also greater than those of all in front of it, so these children alone
   have to be searched. */
struct ChildIndex {
    std::map<std::string_view, BrowserNode *> rising; /* greater than all in front of them */
    std::unordered_map<std::string_view, BrowserNode *> firstOfName;
};

void ChildIndexDeleter::operator()(ChildIndex *index) const {
    delete index;
}

namespace {

const char *textOf(SymbolNr symbol) {
    return symbol == NO_SYMBOL ? "" : getSymbol(taviBrowserSymbolTable, symbol);
}

SymbolNr symbolOf(const char *text) {
    return text == nullptr ? NO_SYMBOL : putSymbol(taviBrowserSymbolTable, text);
}

/* Notes a child behind which there is none yet. */
void noteLastChild(ChildIndex *index, BrowserNode *child) {
    const std::string_view name = taviBrowserName(child);
    if (index->rising.empty() || index->rising.rbegin()->first < name)
        index->rising.emplace_hint(index->rising.end(), name, child);
    index->firstOfName.try_emplace(name, child);
}

ChildIndex *indexOf(BrowserNode *parent) {
    if (parent->index == nullptr) {
        parent->index.reset(new ChildIndex);
        for (BrowserNode *child = parent->firstChild; child != nullptr; child = child->next)
            noteLastChild(parent->index.get(), child);
    }
    return parent->index.get();
}

void linkBefore(BrowserNode *parent, BrowserNode *node, BrowserNode *later) {
    node->next = later;
    node->previous = later->previous;
    later->previous = node;
    (node->previous != nullptr ? node->previous->next : parent->firstChild) = node;
}

void linkLast(BrowserNode *parent, BrowserNode *node) {
    node->previous = parent->lastChild;
    (parent->lastChild != nullptr ? parent->lastChild->next : parent->firstChild) = node;
    parent->lastChild = node;
    if (parent->index != nullptr)
        noteLastChild(parent->index.get(), node);
}

void linkSorted(BrowserNode *parent, BrowserNode *node) {
    ChildIndex *index = indexOf(parent);
    const std::string_view name = taviBrowserName(node);
    const auto later = index->rising.upper_bound(name);
    if (later == index->rising.end()) {
        linkLast(parent, node);
        return;
    }
    linkBefore(parent, node, later->second);
    /* If a child of this name stands in front of it, that is the greatest one there. */
    if (later == index->rising.begin() || std::prev(later)->first != name) {
        index->rising.emplace_hint(later, name, node);
        index->firstOfName[name] = node;
    }
}

/* The tree is a few levels deep and very broad. */
void deleteNodes(BrowserNode *node) {
    while (node != nullptr) {
        BrowserNode *next = node->next;
        deleteNodes(node->firstChild);
        delete node;
        node = next;
    }
}

} // namespace

const char *taviBrowserName(const BrowserNode *node) {
    return textOf(node->name);
}

BrowserNode *taviBrowserNewNode(const char *name, const char *directory, const char *file,
                                std::int32_t line, const char *kind, const char *aux1,
                                const char *aux2) {
    if (taviBrowserSymbolTable == nullptr)
        taviBrowserSymbolTable = newSymbolTable();
    auto *node = new BrowserNode;
    node->name = symbolOf(name);
    node->directory = symbolOf(directory);
    node->file = symbolOf(file);
    node->line = line;
    node->kind = symbolOf(kind);
    node->aux1 = symbolOf(aux1);
    node->aux2 = symbolOf(aux2);
    return node;
}

void taviBrowserInsertSubNode(BrowserNode *parent, BrowserNode *node, bool sorted) {
    node->level = parent->level + 1;
    if (sorted)
        linkSorted(parent, node);
    else
        linkLast(parent, node);
}

BrowserNode *taviBrowserFindSubNode(BrowserNode *parent, const char *name) {
    const auto &known = indexOf(parent)->firstOfName;
    const auto place = known.find(name);
    return place == known.end() ? nullptr : place->second;
}

void taviBrowserTraverseTree(BrowserNode *node, Call<void(const BrowserNode *node)> func) {
    requireCall(func);
    for (; node != nullptr; node = node->next) {
        func(node);
        if (node->firstChild != nullptr)
            taviBrowserTraverseTree(node->firstChild, func);
    }
}

void taviBrowserPrintNode(std::FILE *file, const BrowserNode *node) {
    std::fprintf(file, "%u:%s:'%s%s':%d:%s:%s:%s\n", node->level, textOf(node->name),
                 textOf(node->directory), textOf(node->file), node->line < 0 ? 0 : node->line,
                 textOf(node->kind), textOf(node->aux1), textOf(node->aux2));
}

void taviBrowserPrintTree(BrowserNode *root, const char *suffix) {
    std::FILE *file = taviOpenTextFile(suffix, "w");
    taviBrowserTraverseTree(root,
                            [file](const BrowserNode *node) { taviBrowserPrintNode(file, node); });
    taviCloseTextFile(file, suffix);
}

void taviBrowserDeleteTree(BrowserNode *node) {
    deleteNodes(node);
    deleteSymbolTable(taviBrowserSymbolTable);
    taviBrowserSymbolTable = nullptr;
}
