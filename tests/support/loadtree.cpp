#include "tests/support/loadtree.h"

#include <cstdio>
#include <cstdlib>

#include "store/tree.h"

ModRec *nameModule(const WorkDir &dir, const std::string &prefix) {
    stxDir = dir.path() + "/";
    ModRec *module = appendModRec(true);
    module->filePrefix = prefix;
    module->genPrefix = prefix;
    return module;
}

ModRec *loadTree(const WorkDir &dir, TreeWriter &tree) {
    const std::string prefix =
        tree.strings8[static_cast<std::size_t>(tree.header().filePrefix) - 1];
    if (!tree.save(dir.path(prefix + ".stx"))) {
        std::perror("can't save a tree");
        std::abort();
    }
    ModRec *module = nameModule(dir, prefix);
    readAllSyntaxTrees();
    removeUnreferencedModuleRecords();
    initBackendVars();
    return module;
}
