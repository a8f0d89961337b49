#include <filesystem>
#include <list>

#include "asntree/listing.h"
#include "asntree/source.h"

/* Listings of trees that lie in files. */

namespace asntree {

namespace {

bool loadTree(const std::string &path, Tree &tree, std::string &why) {
    Sources sources;
    const SourceFile *file = readSource(sources, path, why);
    return file != nullptr && readTree(file->text, tree, why);
}

} // namespace

bool listFile(const std::string &path, std::string &listing, std::string &why) {
    Tree tree;
    if (!loadTree(path, tree, why)) {
        why = path + ": " + why;
        return false;
    }
    /* Imports are named by the trees beside this one, as far as they are there. */
    std::list<Tree> imports;
    KnownTrees known;
    for (std::size_t i = 1; i < tree.mNodes.size(); ++i) {
        const RecNr prefix = tree.mNodes[i].filePrefix;
        if (prefix < 1 || static_cast<std::size_t>(prefix) > tree.strings8.size())
            continue;
        const std::string &name = tree.strings8[static_cast<std::size_t>(prefix) - 1];
        const auto beside = std::filesystem::path(path).replace_filename(name + ".stx");
        std::string unused;
        if (name.find('/') == name.npos && loadTree(beside.string(), imports.emplace_back(), unused))
            known.emplace(name, &imports.back());
    }
    listing = listTree(tree, known, {});
    return true;
}

} // namespace asntree
