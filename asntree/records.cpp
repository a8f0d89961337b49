#include "asntree/records.h"

#include <algorithm>
#include <type_traits>

#include "store/layout.h"

namespace asntree {

namespace {

template <typename Record> RecNr append(std::vector<Record> &records, const Record &record) {
    records.push_back(record);
    return static_cast<RecNr>(records.size());
}

} // namespace

RecNr Tree::addM(const MNode &node) {
    return append(mNodes, node);
}
RecNr Tree::addT(const TNode &node) {
    return append(tNodes, node);
}
RecNr Tree::addV(const VNode &node) {
    return append(vNodes, node);
}
RecNr Tree::addTag(const TagRec &tag) {
    return append(tagRecs, tag);
}
RecNr Tree::addSub(const SubRec &sub) {
    return append(subRecs, sub);
}
RecNr Tree::addTed(const TedRec &ted) {
    return append(tedRecs, ted);
}
RecNr Tree::addS(const SNode &step) {
    return append(sNodes, step);
}

RecNr Tree::str(std::string_view text) {
    auto [place, isNew] = stringNumbers.try_emplace(std::string(text), 0);
    if (isNew)
        place->second = append(strings8, std::string(text));
    return place->second;
}

RecNr Tree::str16(std::u16string_view text) {
    return append(strings16, std::u16string(text));
}

RecNr Tree::str32(std::u32string_view text) {
    return append(strings32, std::u32string(text));
}

sint64 storedNumber(std::int64_t number) {
    return {static_cast<std::int32_t>(number >> 32), static_cast<std::uint32_t>(number)};
}

void putValueBytes(VNode &node, std::size_t offset, int width, std::uint64_t number) {
    for (int i = width - 1; i >= 0; --i, number >>= 8)
        node.value[offset + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(number & 0xFF);
}

std::uint64_t valueBytes(const VNode &node, std::size_t offset, int width) {
    std::uint64_t number = 0;
    for (int i = 0; i < width; ++i)
        number = number << 8 | node.value[offset + static_cast<std::size_t>(i)];
    return number;
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

template <typename String>
void putStringRecords(std::string &file, const std::vector<String> &strings) {
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

std::string storedBytes(Tree &tree) {
    if (!tree.keepCounts) {
        const std::size_t sizes[REC_KINDS] = {
            tree.mNodes.size(),   tree.tNodes.size(),    tree.vNodes.size(), tree.tagRecs.size(),
            tree.subRecs.size(),  tree.tedRecs.size(),   tree.sNodes.size(), tree.strings8.size(),
            tree.strings16.size(), tree.strings32.size()};
        for (int kind = 0; kind < REC_KINDS; ++kind)
            tree.header().counts[static_cast<std::size_t>(kind)] =
                static_cast<std::int32_t>(sizes[kind]);
    }
    std::string file;
    putRecords(file, REC_MNODE, tree.mNodes);
    putRecords(file, REC_TNODE, tree.tNodes);
    putRecords(file, REC_VNODE, tree.vNodes);
    putRecords(file, REC_TAG, tree.tagRecs);
    putRecords(file, REC_SUB, tree.subRecs);
    putRecords(file, REC_TED, tree.tedRecs);
    putRecords(file, REC_SNODE, tree.sNodes);
    putStringRecords(file, tree.strings8);
    putStringRecords(file, tree.strings16);
    putStringRecords(file, tree.strings32);
    return file;
}

} // namespace asntree
