#include <algorithm>

#include "asntree/listing.h"
#include "store/layout.h"

/* What a listing is made from: the bytes of a tree, and the notes of the compiler. */

namespace asntree {

namespace {

/* The bytes of a file that aren't read yet. */
struct Bytes {
    const std::string &file;
    std::size_t at = 0;

    std::size_t left() const { return file.size() - at; }
    const std::uint8_t *data() const {
        return reinterpret_cast<const std::uint8_t *>(file.data()) + at;
    }
};

template <typename Record>
bool readRecords(Bytes &bytes, RecKind kind, std::int32_t count, std::vector<Record> &records) {
    const auto size = static_cast<std::size_t>(recSize[kind]);
    if (count < 0 || static_cast<std::size_t>(count) > bytes.left() / size)
        return false;
    records.resize(static_cast<std::size_t>(count));
    for (Record &record : records) {
        decodeRec(kind, bytes.data(), &record);
        bytes.at += size;
    }
    return true;
}

template <typename String>
bool readStrings(Bytes &bytes, std::int32_t count, std::vector<String> &strings) {
    constexpr std::size_t width = sizeof(typename String::value_type);
    for (std::int32_t nr = 0; nr < count; ++nr) {
        if (bytes.left() < 2)
            return false;
        const std::size_t length =
            static_cast<std::size_t>(bytes.data()[0] * 256 + bytes.data()[1]);
        bytes.at += 2;
        if (length == 0 || bytes.left() < length * width)
            return false;
        String text;
        for (std::size_t i = 0; i + 1 < length; ++i) {
            std::uint32_t element = 0;
            for (std::size_t octet = 0; octet < width; ++octet)
                element = element << 8 | bytes.data()[i * width + octet];
            text += static_cast<typename String::value_type>(element);
        }
        bytes.at += length * width;
        strings.push_back(std::move(text));
    }
    return count >= 0;
}

} // namespace

bool readTree(const std::string &bytes, Tree &tree, std::string &why) {
    Bytes rest{bytes};
    std::vector<MNode> header;
    if (!readRecords(rest, REC_MNODE, 1, header)) {
        why = "it is no syntax tree";
        return false;
    }
    if (header[0].stamp.treeVersion != TREE_VERSION) {
        why = "it is no syntax tree of version 2.13";
        return false;
    }
    const std::array<std::int32_t, REC_KINDS> &counts = header[0].counts;
    rest.at = 0;
    if (counts[REC_MNODE] >= 1 && readRecords(rest, REC_MNODE, counts[REC_MNODE], tree.mNodes) &&
        readRecords(rest, REC_TNODE, counts[REC_TNODE], tree.tNodes) &&
        readRecords(rest, REC_VNODE, counts[REC_VNODE], tree.vNodes) &&
        readRecords(rest, REC_TAG, counts[REC_TAG], tree.tagRecs) &&
        readRecords(rest, REC_SUB, counts[REC_SUB], tree.subRecs) &&
        readRecords(rest, REC_TED, counts[REC_TED], tree.tedRecs) &&
        readRecords(rest, REC_SNODE, counts[REC_SNODE], tree.sNodes) &&
        readStrings(rest, counts[REC_STRI8], tree.strings8) &&
        readStrings(rest, counts[REC_STRI16], tree.strings16) &&
        readStrings(rest, counts[REC_STRI32], tree.strings32))
        return true;
    why = "the syntax tree is cut off or broken";
    return false;
}

namespace {

/* The definition in whose text a place lies; null in front of the first one. */
const Assignment *definitionAt(const Module &module, Place place) {
    const auto &all = module.assignments;
    auto behind = std::upper_bound(
        all.begin(), all.end(), place.offset,
        [](std::uint32_t offset, const Assignment *a) { return offset < a->name.place.offset; });
    return behind == all.begin() ? nullptr : *(behind - 1);
}

ListingNote noteOf(const EmittedTree &emitted, const Assignment *definition,
                   const std::string &text) {
    if (definition == nullptr)
        return {false, 0, text};
    if (auto type = emitted.types.find(definition); type != emitted.types.end())
        return {false, type->second, text};
    auto value = emitted.values.find(definition);
    if (value != emitted.values.end())
        return {true, value->second, text};
    /* A definition without a record: the tree as a whole has the note. */
    return {false, 0, std::string(definition->name.text) + ": " + text};
}

bool isSame(const ListingNote &a, const ListingNote &b) {
    return a.ofValue == b.ofValue && a.record == b.record && a.text == b.text;
}

} // namespace

std::vector<ListingNote> listingNotes(const Compilation &c, const TreePlan &plan,
                                      const EmittedTree &emitted) {
    std::unordered_map<std::uint32_t, std::vector<const Module *>> modules; /* by file */
    for (const ModuleInfo *info : plan.modules)
        modules[info->syntax->file].push_back(info->syntax);
    std::vector<ListingNote> notes;
    for (const Diagnostic &diagnostic : c.diagnostics.list) {
        auto found = diagnostic.severity == Severity::Note ? modules.find(diagnostic.place.file)
                                                           : modules.end();
        if (found == modules.end())
            continue;
        for (const Module *module : found->second)
            if (diagnostic.place.offset >= module->name.place.offset &&
                diagnostic.place.offset <= module->end.offset)
                notes.push_back(
                    noteOf(emitted, definitionAt(*module, diagnostic.place), diagnostic.text));
    }
    for (const EmitNote &note : emitted.notes)
        notes.push_back(noteOf(emitted, note.definition, note.text));
    std::vector<ListingNote> once;
    for (ListingNote &note : notes)
        if (once.empty() || !isSame(once.back(), note))
            once.push_back(std::move(note));
    return once;
}

} // namespace asntree
