#include "tests/support/treewriter.h"

#include <cstdio>

#include "store/layout.h"

/* Records, strings, the module, and the bytes of the file. */

TreeWriter::TreeWriter(std::string_view moduleName, std::string_view filePrefix) {
    MNode node;
    node.stamp = {TREE_VERSION, TREE_VERSION, 20240229, 120000};
    node.moduleName = str(moduleName);
    node.filePrefix = str(filePrefix);
    mNodes.push_back(node);
    source("./", std::string(filePrefix) + ".asn");
}

namespace {

template <typename Record> RecNr append(std::vector<Record> &records, const Record &record) {
    records.push_back(record);
    return static_cast<RecNr>(records.size());
}

} // namespace

RecNr TreeWriter::addT(const TNode &node) {
    typeNotes.emplace_back();
    return append(tNodes, node);
}

RecNr TreeWriter::addV(const VNode &node) {
    valueNotes.emplace_back();
    return append(vNodes, node);
}

RecNr TreeWriter::addTag(const TagRec &tag) {
    return append(tagRecs, tag);
}
RecNr TreeWriter::addSub(const SubRec &sub) {
    return append(subRecs, sub);
}
RecNr TreeWriter::addS(const SNode &step) {
    return append(sNodes, step);
}

RecNr TreeWriter::str(std::string_view text) {
    auto [place, isNew] = stringNumbers.try_emplace(std::string(text), 0);
    if (isNew)
        place->second = append(strings8, std::string(text));
    return place->second;
}

RecNr TreeWriter::str16(std::u16string_view text) {
    return append(strings16, std::u16string(text));
}

RecNr TreeWriter::str32(std::u32string_view text) {
    return append(strings32, std::u32string(text));
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
    std::int32_t number = append(mNodes, node);
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

void TreeWriter::text(std::string_view place, std::string_view line) {
    moduleOptions.push_back({TED_TEXT, str("-" + std::string(place) + " " + std::string(line))});
}

/* --- bytes --- */

namespace {

template <typename Record>
void putRecords(std::string &file, RecKind kind, const std::vector<Record> &records) {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(recSize[kind]));
    for (const Record &record : records) {
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
        encodeRec(kind, &record, bytes.data());
        file.append(bytes.begin(), bytes.end());
    }
}

void putNumber(std::string &file, std::uint64_t number, int width) {
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
        file.push_back(static_cast<char>((number >> shift) & 0xFF));
}

/* Each string with its ending zero, which its count includes. */
template <typename String> void putStrings(std::string &file, const std::vector<String> &strings) {
    using Unsigned = std::make_unsigned_t<typename String::value_type>;
    constexpr int width = static_cast<int>(sizeof(typename String::value_type));
    for (const String &string : strings) {
        putNumber(file, string.size() + 1, 2);
        for (auto element : string)
            putNumber(file, static_cast<Unsigned>(element), width);
        putNumber(file, 0, width);
    }
}

} // namespace

std::string TreeWriter::bytes() {
    finish();
    if (!keepCounts) {
        const std::size_t sizes[REC_KINDS] = {
            mNodes.size(),  tNodes.size(), vNodes.size(),   tagRecs.size(),   subRecs.size(),
            tedRecs.size(), sNodes.size(), strings8.size(), strings16.size(), strings32.size()};
        for (int kind = 0; kind < REC_KINDS; ++kind)
            header().counts[static_cast<std::size_t>(kind)] =
                static_cast<std::int32_t>(sizes[kind]);
    }
    std::string file;
    putRecords(file, REC_MNODE, mNodes);
    putRecords(file, REC_TNODE, tNodes);
    putRecords(file, REC_VNODE, vNodes);
    putRecords(file, REC_TAG, tagRecs);
    putRecords(file, REC_SUB, subRecs);
    putRecords(file, REC_TED, tedRecs);
    putRecords(file, REC_SNODE, sNodes);
    putStrings(file, strings8);
    putStrings(file, strings16);
    putStrings(file, strings32);
    return file;
}

bool TreeWriter::save(const std::string &path) {
    std::string file = bytes();
    std::FILE *stream = std::fopen(path.c_str(), "wb");
    if (stream == nullptr)
        return false;
    bool written = std::fwrite(file.data(), 1, file.size(), stream) == file.size();
    return std::fclose(stream) == 0 && written;
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

bool addModuleOption(std::string &file, std::string_view option) {
    constexpr std::size_t FIRST_OFFSET = 104, LAST_OFFSET = 108;
    const auto teds = static_cast<std::int32_t>(countOf(file, REC_TED));
    const auto strings = static_cast<std::int32_t>(countOf(file, REC_STRI8));
    const std::uint32_t first = peekTree(file, FIRST_OFFSET, 4);
    if (first != 0 && peekTree(file, LAST_OFFSET, 4) != static_cast<std::uint32_t>(teds))
        return false;
    std::string text, record;
    putStrings(text, std::vector<std::string>{std::string(option)});
    putRecords(record, REC_TED, std::vector<TedRec>{{TED_OPTION, strings + 1}});
    file.insert(recordOffset(file, REC_STRI8, strings + 1), text);
    file.insert(recordOffset(file, REC_TED, teds + 1), record);
    pokeCount(file, REC_TED, teds + 1);
    pokeCount(file, REC_STRI8, strings + 1);
    if (first == 0)
        pokeTree(file, FIRST_OFFSET, 4, static_cast<std::uint32_t>(teds + 1));
    pokeTree(file, LAST_OFFSET, 4, static_cast<std::uint32_t>(teds + 1));
    return true;
}
