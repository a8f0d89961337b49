#include "store/tree.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include <sys/mman.h>

#include "base/fatal.h"
#include "base/toolinfo.h"
#include "store/layout.h"
#include "store/strings.h"

namespace {

/* An open tree. A count in a header may promise more records than the file has bytes, so space is
   reserved for no more than can follow, and everything else grows with what was really read. */
struct TreeFile {
    std::FILE *stream;
    std::size_t size; /* in bytes; 0 if unknown */
};

bool readBytes(const TreeFile &file, void *bytes, std::size_t count) {
    return std::fread(bytes, 1, count, file.stream) == count;
}

std::size_t sizeOfStream(std::FILE *stream) {
    const long end = std::fseek(stream, 0, SEEK_END) == 0 ? std::ftell(stream) : -1;
    std::rewind(stream);
    return end > 0 ? static_cast<std::size_t>(end) : 0;
}

std::size_t plausibleCount(const TreeFile &file, RecNr count, std::size_t bytesEach) {
    return std::min(static_cast<std::size_t>(count), file.size / bytesEach);
}

/* The records of a large tree are read all over the place, for which the processor has to find a page
   each time: the fewer there are, the better. Where the system has none, nothing is lost. */
void askForLargePages([[maybe_unused]] void *memory, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
    constexpr std::uintptr_t LARGE_PAGE = 1u << 21;
    const auto start = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t first = (start + LARGE_PAGE - 1) / LARGE_PAGE * LARGE_PAGE;
    const std::uintptr_t end = (start + size) / LARGE_PAGE * LARGE_PAGE;
    if (first < end)
        madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
#endif
}

template <typename Rec>
bool readRecords(const TreeFile &file, RecKind kind, RecNr count, std::vector<Rec> *records) {
    constexpr std::size_t BLOCK = 64;
    const auto bytesEach = static_cast<std::size_t>(recSize[kind]);
    std::vector<std::uint8_t> block(BLOCK * bytesEach);
    records->reserve(plausibleCount(file, count, bytesEach));
    askForLargePages(records->data(), records->capacity() * sizeof(Rec));
    auto left = static_cast<std::size_t>(count);
    while (left > 0) {
        const std::size_t inBlock = std::min(left, BLOCK);
        if (!readBytes(file, block.data(), inBlock * bytesEach))
            return false;
        for (std::size_t i = 0; i < inBlock; ++i)
            decodeRec(kind, block.data() + i * bytesEach, &records->emplace_back());
        left -= inBlock;
    }
    return true;
}

/* C is the type of the characters; `append` adds a text to the module. */
template <typename C>
bool readStrings(const TreeFile &file, RecNr count, ModRec *module,
                 void (*append)(ModRec *, std::basic_string_view<C>)) {
    std::vector<std::uint8_t> bytes;
    std::basic_string<C> text;
    for (RecNr nr = 0; nr < count; ++nr) {
        std::uint8_t countBytes[2];
        if (!readBytes(file, countBytes, sizeof countBytes))
            return false;
        const std::size_t length = std::size_t{countBytes[0]} << 8 | countBytes[1];
        if (length == 0 || length > MAX_STRI_LENGTH)
            return false;
        bytes.resize(length * sizeof(C));
        if (!readBytes(file, bytes.data(), bytes.size()))
            return false;
        text.assign(length, C{});
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            C &element = text[i / sizeof(C)];
            element = static_cast<C>(static_cast<std::uint32_t>(element) << 8 | bytes[i]);
        }
        append(module, text);
    }
    return true;
}

bool readSubTree(const TreeFile &file, ModRec *module, RecKind kind, RecNr count) {
    switch (kind) {
    case REC_MNODE:
        return readRecords(file, kind, count, &module->mNodes);
    case REC_TNODE:
        return readRecords(file, kind, count, &module->tNodes);
    case REC_VNODE:
        return readRecords(file, kind, count, &module->vNodes);
    case REC_TAG:
        return readRecords(file, kind, count, &module->tagRecs);
    case REC_SUB:
        return readRecords(file, kind, count, &module->subRecs);
    case REC_TED:
        return readRecords(file, kind, count, &module->tedRecs);
    case REC_SNODE:
        return readRecords(file, kind, count, &module->sNodes);
    case REC_STRI8:
        return readStrings<char>(file, count, module, appendStri);
    case REC_STRI16:
        return readStrings<char16_t>(file, count, module, appendStri16);
    case REC_STRI32:
        return readStrings<char32_t>(file, count, module, appendStri32);
    default:
        return false;
    }
}

TreeStatus readOpenTree(TreeFile file, ModRec *module, Text *message) {
    std::vector<std::uint8_t> header(static_cast<std::size_t>(recSize[REC_MNODE]));
    if (!readBytes(file, header.data(), header.size()))
        return TREE_INVALID;
    /* What was current before is gone, also if the same record is asked for again. */
    recJustRead[REC_MNODE] = {};
    decodeRec(REC_MNODE, header.data(), &mNode);
    if (!checkMNode(message))
        return TREE_INVALID;

    file.size = sizeOfStream(file.stream);
    const auto counts = mNode.counts;
    for (int kind = 0; kind < REC_KINDS; ++kind) {
        const RecNr count = counts[static_cast<std::size_t>(kind)];
        if (count != 0 && !readSubTree(file, module, static_cast<RecKind>(kind), count))
            return TREE_INVALID;
    }
    if (!module->mNodes.empty())
        recJustRead[REC_MNODE] = {module, 1};
    return TREE_READ;
}

bool inTable(RecNr number, RecKind kind) {
    return number >= 0 && number <= mNode.counts[static_cast<std::size_t>(kind)];
}

} // namespace

bool checkMNode(Text *message) {
    message->clear();
    const TimeStamp &stamp = mNode.stamp;
    if (stamp.version != TREE_VERSION && stamp.treeVersion != TREE_VERSION) {
        *message =
            "Syntax tree generated by KETRA version " + printVersionStri(stamp.treeVersion, -1);
        *message += ", expected " + printVersionStri(TREE_VERSION, -1);
        return false;
    }
    const auto negative = [](std::int32_t count) { return count < 0; };
    return stamp.treeVersion == TREE_VERSION && stamp.date >= 0 && stamp.time >= 0 &&
           mNode.moduleName > 0 && inTable(mNode.moduleName, REC_STRI8) &&
           inTable(mNode.filePrefix, REC_STRI8) && inTable(mNode.firstTNode, REC_TNODE) &&
           inTable(mNode.firstVNode, REC_VNODE) && inTable(mNode.reservedVNode, REC_VNODE) &&
           inTable(mNode.moduleValue, REC_VNODE) && mNode.exportsMode <= 2 &&
           mNode.nrOfEntryTypes >= 0 && mNode.nrOfVisibleTypes >= 0 && mNode.nrOfObjects >= 0 &&
           inTable(mNode.tedFirst, REC_TED) && inTable(mNode.tedLast, REC_TED) &&
           std::none_of(mNode.counts.begin(), mNode.counts.end(), negative);
}

/* A file is read record by record, as its header counts them. What references in it lead to is
   checked when they are followed. */

TreeStatus readTree(ModRec *module, Text *message) {
    const Text path = stxDir + module->genPrefix + ".stx";
    std::FILE *stream = std::fopen(path.c_str(), "rb");
    if (stream == nullptr)
        return TREE_MISSING;
    const TreeStatus status = readOpenTree({stream, 0}, module, message);
    if (std::fclose(stream) != 0)
        fatalError(FATAL_CLOSE, "Syntax tree file");
    return status;
}
