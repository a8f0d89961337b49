#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "store/ketradef.h"

/* The records of a syntax tree that is being made, and the bytes of its file. */

namespace asntree {

/* Record lists that may be filled by hand. Number n of a kind stands at index n - 1. */
struct Tree {
    std::vector<MNode> mNodes; /* the module's own header first, then its imports */
    std::vector<TNode> tNodes;
    std::vector<VNode> vNodes;
    std::vector<TagRec> tagRecs;
    std::vector<SubRec> subRecs;
    std::vector<TedRec> tedRecs;
    std::vector<SNode> sNodes;
    std::vector<std::string> strings8; /* without the ending zero */
    std::vector<std::u16string> strings16;
    std::vector<std::u32string> strings32;
    /* Where each 8-bit string stands that was given to str(). */
    std::unordered_map<std::string, RecNr> stringNumbers;
    /* storedBytes() sets the header's ten counts unless this is set. */
    bool keepCounts = false;

    MNode &header() { return mNodes.front(); }
    TNode &t(RecNr nr) { return tNodes[static_cast<std::size_t>(nr - 1)]; }
    const TNode &t(RecNr nr) const { return tNodes[static_cast<std::size_t>(nr - 1)]; }
    VNode &v(RecNr nr) { return vNodes[static_cast<std::size_t>(nr - 1)]; }
    const VNode &v(RecNr nr) const { return vNodes[static_cast<std::size_t>(nr - 1)]; }
    SubRec &sub(RecNr nr) { return subRecs[static_cast<std::size_t>(nr - 1)]; }

    /* Each appends a record and returns its number; an 8-bit string that is there already isn't
       added again. */
    RecNr addM(const MNode &node);
    RecNr addT(const TNode &node);
    RecNr addV(const VNode &node);
    RecNr addTag(const TagRec &tag);
    RecNr addSub(const SubRec &sub);
    RecNr addTed(const TedRec &ted);
    RecNr addS(const SNode &step);
    RecNr str(std::string_view text);
    RecNr str16(std::u16string_view text);
    RecNr str32(std::u32string_view text);
};

/* A number as the records hold it. */
sint64 storedNumber(std::int64_t number);
/* Writes a number of `width` octets, high octet first, into the 12 octets of a value. */
void putValueBytes(VNode &node, std::size_t offset, int width, std::uint64_t number);
/* The same number again. */
std::uint64_t valueBytes(const VNode &node, std::size_t offset, int width);

/* The whole file. */
std::string storedBytes(Tree &tree);

} // namespace asntree
