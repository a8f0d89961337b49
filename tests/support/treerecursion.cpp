#include "asntree/recursion.h"
#include "tests/support/treederive.h"

void markRecursion(TreeWriter &tree) {
    for (const asntree::RecursiveReference &found : asntree::recursiveReferences(tree)) {
        TypeNode{&tree, found.definition}.flag(TYPE_RECURSIVE);
        TreeWriter::TypeNotes *list =
            found.list == 0 ? nullptr : &tree.typeNotes[static_cast<std::size_t>(found.list - 1)];
        if (list != nullptr && !list->arrayWanted)
            list->listWanted = true;
        else if (found.reference != found.definition)
            TypeNode{&tree, found.reference}.flag(TYPE_RECURSIVE).option(OPT_POINTER);
    }
}
