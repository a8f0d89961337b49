#include "tests/support/treewriter.h"

#include <fstream>

/* The module and its header; changes of the bytes of a file. */

TreeWriter::TreeWriter(std::string_view moduleName, std::string_view filePrefix) {
    MNode node;
    node.stamp = {TREE_VERSION, TREE_VERSION, 20240229, 120000};
    node.moduleName = str(moduleName);
    node.filePrefix = str(filePrefix);
    mNodes.push_back(node);
    source("./", std::string(filePrefix) + ".asn");
}

RecNr TreeWriter::addT(const TNode &node) {
    typeNotes.emplace_back();
    return Tree::addT(node);
}

RecNr TreeWriter::addV(const VNode &node) {
    valueNotes.emplace_back();
    return Tree::addV(node);
}

void TreeWriter::exportsMarked() {
    header().exportsMode = 1;
}

std::int32_t TreeWriter::import(const TreeWriter &other, bool follow) {
    const MNode &node = other.mNodes.front();
    auto text = [&](RecNr nr) { return other.strings8[static_cast<std::size_t>(nr - 1)]; };
    std::int32_t number = import(text(node.moduleName), text(node.filePrefix), follow);
    importedTrees[number] = &other;
    return number;
}

std::int32_t TreeWriter::import(std::string_view moduleName, std::string_view filePrefix,
                                bool follow) {
    auto known = importNumbers.find(moduleName);
    if (known != importNumbers.end())
        return known->second;
    MNode node;
    node.stamp = header().stamp;
    node.moduleName = str(moduleName);
    node.filePrefix = str(filePrefix);
    node.importMark = follow ? 0x10 : 0;
    std::int32_t number = addM(node);
    importNumbers.emplace(moduleName, number);
    return number;
}

void TreeWriter::source(std::string_view directory, std::string_view fileName) {
    header().sourceDirectory = str(directory);
    header().sourceFileName = str(fileName);
}

void TreeWriter::option(std::string_view text) {
    moduleOptions.push_back({TED_OPTION, str(text)});
}

void TreeWriter::backendOption(std::string_view text) {
    moduleOptions.push_back({TED_BACKEND_OPTION, str(text)});
}

std::string TreeWriter::bytes() {
    finish();
    return asntree::storedBytes(*this);
}

bool TreeWriter::save(const std::string &path) {
    std::ofstream file(path, std::ios::binary);
    file << bytes();
    file.close();
    return file.good();
}

/* --- changes of a finished file --- */

std::uint32_t peekTree(const std::string &file, std::size_t offset, int width) {
    std::uint32_t number = 0;
    for (int i = 0; i < width; ++i)
        number =
            number << 8 | static_cast<std::uint8_t>(file.at(offset + static_cast<std::size_t>(i)));
    return number;
}

void pokeTree(std::string &file, std::size_t offset, int width, std::uint64_t number) {
    for (int i = width - 1; i >= 0; --i, number >>= 8)
        file.at(offset + static_cast<std::size_t>(i)) = static_cast<char>(number & 0xFF);
}

namespace {

constexpr std::size_t COUNTS_OFFSET = 36;

std::size_t countOf(const std::string &file, int kind) {
    return peekTree(file, COUNTS_OFFSET + 4 * static_cast<std::size_t>(kind), 4);
}

/* The bytes of the record at `offset`. */
std::size_t sizeAt(const std::string &file, int kind, std::size_t offset) {
    auto size = static_cast<std::size_t>(recSize[static_cast<std::size_t>(kind)]);
    return kind >= REC_STRI8 ? 2 + size * peekTree(file, offset, 2) : size;
}

} // namespace

std::size_t recordOffset(const std::string &file, RecKind wanted, RecNr nr) {
    std::size_t offset = 0;
    for (int kind = 0; kind < REC_KINDS; ++kind) {
        std::size_t count = kind == wanted ? static_cast<std::size_t>(nr - 1) : countOf(file, kind);
        for (std::size_t i = 0; i < count; ++i)
            offset += sizeAt(file, kind, offset);
        if (kind == wanted)
            break;
    }
    return offset;
}

std::vector<std::size_t> recordBoundaries(const std::string &file) {
    std::vector<std::size_t> places = {0};
    for (int kind = 0; kind < REC_KINDS; ++kind)
        for (std::size_t i = countOf(file, kind); i > 0; --i)
            places.push_back(places.back() + sizeAt(file, kind, places.back()));
    return places;
}

void pokeCount(std::string &file, RecKind kind, std::int32_t count) {
    pokeTree(file, COUNTS_OFFSET + 4 * static_cast<std::size_t>(kind), 4,
             static_cast<std::uint32_t>(count));
}
