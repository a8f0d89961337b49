#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>

#include "base/call.h"
#include "base/text.h"
#include "project/symbols.h"

/* The browser tree: a node for the project, below it one for each module, below that one for each
   type, class, object and object set, and below these one for each C item made from them. */

/* Finds children by name, and the place of a new one, without a walk over all of them. */
struct ChildIndex;
struct ChildIndexDeleter {
    void operator()(ChildIndex *index) const;
};

struct BrowserNode {
    std::uint32_t level = 0; /* 0 at the root; known once the node is inserted */
    SymbolNr name = NO_SYMBOL;
    SymbolNr directory = NO_SYMBOL; /* of the ASN.1 source or the generated file */
    SymbolNr file = NO_SYMBOL;
    std::int32_t line = 0; /* from 1 */
    SymbolNr kind = NO_SYMBOL;
    SymbolNr aux1 = NO_SYMBOL; /* free for the caller */
    SymbolNr aux2 = NO_SYMBOL;
    BrowserNode *firstChild = nullptr; /* owned, with its siblings */
    BrowserNode *lastChild = nullptr;
    BrowserNode *next = nullptr; /* sibling */
    BrowserNode *previous = nullptr;
    std::unique_ptr<ChildIndex, ChildIndexDeleter> index; /* made when first needed */
};

/* All texts of the tree; made on first use, null before and behind. */
extern SymbolTable *taviBrowserSymbolTable;
/* The root; null while there are no outputs. */
extern BrowserNode *g_taviBrowserTree;
/* The module under work; null before the first. */
extern BrowserNode *g_taviModuleNode;
/* The type, class, object or set under work, or the module; null before the first module. */
extern BrowserNode *g_taviTypeNode;
/* Of the file of the tree: ".acd", unless "TREE-FILE-SUFFIX=" replaced it. */
extern Text g_taviTreeFileSuffix;

/* A node on its own; taviBrowserInsertSubNode hands it over to the tree. Texts may be null. */
BrowserNode *taviBrowserNewNode(const char *name, const char *directory, const char *file,
                                std::int32_t line, const char *kind, const char *aux1,
                                const char *aux2);
/* The node becomes a child, the last one or, if `sorted`, the one in front of the first child with
   a greater name (by strcmp). It must have no children yet. */
void taviBrowserInsertSubNode(BrowserNode *parent, BrowserNode *node, bool sorted);
/* The first child of that name, or null. */
BrowserNode *taviBrowserFindSubNode(BrowserNode *parent, const char *name);
/* The name of a node; empty if it has none. */
const char *taviBrowserName(const BrowserNode *node);

/* Calls for the node, for all below it, and then for its later siblings and what is below them. */
void taviBrowserTraverseTree(BrowserNode *node, Call<void(const BrowserNode *node)> func);
/* Writes the line of a node; a line number below 0 is written as 0:
   level:name:'directory and file':line:kind:aux1:aux2 */
void taviBrowserPrintNode(std::FILE *file, const BrowserNode *node);
/* Writes the tree to the file of the outputs that ends in `suffix`, a line for each node. */
void taviBrowserPrintTree(BrowserNode *root, const char *suffix);
/* Deletes the node, its later siblings, all below them, and the texts of all nodes. */
void taviBrowserDeleteTree(BrowserNode *node);
