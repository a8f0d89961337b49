#include "store/layout.h"

#include <cstring>
#include <utility>

namespace {

/* How many numbers of which width a member holds. */
template <typename T> struct Shape {
    static constexpr std::uint8_t width = sizeof(T);
    static constexpr std::uint8_t count = 1;
};
template <typename T, std::size_t N> struct Shape<std::array<T, N>> {
    static constexpr std::uint8_t width = sizeof(T);
    static constexpr std::uint8_t count = N;
};
/* The high word comes first, in the file as in memory. */
template <> struct Shape<sint64> {
    static constexpr std::uint8_t width = sizeof(std::uint32_t);
    static constexpr std::uint8_t count = 2;
};
static_assert(offsetof(sint64, hi) == 0 && offsetof(sint64, lo) == 4);

#define ROW(offset, Rec, field)                                                                    \
    {                                                                                              \
        offset, Shape<decltype(Rec::field)>::width, Shape<decltype(Rec::field)>::count,            \
            static_cast<std::uint16_t>(offsetof(Rec, field))                                       \
    }

/* One row for each member: its offset in the file, and how many numbers of which width it holds
   there. What lies between the rows is passed over. */

constexpr RecField mNodeLayout[] = {
    ROW(0, MNode, stamp.version),    ROW(2, MNode, stamp.treeVersion),
    ROW(4, MNode, stamp.date),       ROW(8, MNode, stamp.time),
    ROW(12, MNode, moduleName),      ROW(16, MNode, filePrefix),
    ROW(20, MNode, firstTNode),      ROW(24, MNode, firstVNode),
    ROW(28, MNode, reservedVNode),   ROW(32, MNode, moduleValue),
    ROW(36, MNode, counts),          ROW(76, MNode, exportsMode),
    ROW(77, MNode, importMark),      ROW(78, MNode, reservedMark),
    ROW(80, MNode, sourceDirectory), ROW(84, MNode, sourceFileName),
    ROW(88, MNode, nrOfEntryTypes),  ROW(92, MNode, nrOfVisibleTypes),
    ROW(96, MNode, nrOfObjects),     ROW(100, MNode, nrOfObjectSets),
    ROW(104, MNode, tedFirst),       ROW(108, MNode, tedLast),
};

constexpr RecField tNodeLayout[] = {
    ROW(0, TNode, nameIdx),
    ROW(4, TNode, parentRec),
    ROW(8, TNode, lineNr),
    ROW(12, TNode, compStatus),
    ROW(16, TNode, defaultValue),
    ROW(20, TNode, next),
    ROW(24, TNode, constraintRec),
    ROW(28, TNode, firstTagRec),
    ROW(32, TNode, optionBits),
    ROW(36, TNode, nodeFlags),
    ROW(40, TNode, tedFirst),
    ROW(44, TNode, tedLast),
    ROW(48, TNode, stamp),
    ROW(50, TNode, mainType),
    ROW(51, TNode, valueFieldCode),
    ROW(52, TNode, controlFieldCode),
    ROW(54, TNode, typeFlags),
    ROW(56, TNode, entryFlags),
    ROW(57, TNode, entryCategories),
    ROW(60, TNode, typeOptions.definiteLength),
    ROW(61, TNode, typeOptions.skipKind),
    ROW(64, TNode, typeOptions.sizeLimit),
    ROW(68, TNode, typeOptions.sizeLimitMode),
    ROW(72, TNode, nrOfComps),
    ROW(76, TNode, refModule),
    ROW(80, TNode, refRecord),
    ROW(84, TNode, namedNumbersRec),
    ROW(92, TNode, skipInWalk),
    ROW(96, TNode, auxRecord),
    ROW(100, TNode, lowerEndpoint),
    ROW(108, TNode, upperEndpoint),
};

constexpr RecField vNodeLayout[] = {
    ROW(0, VNode, nameIdx),    ROW(4, VNode, compStatus),   ROW(8, VNode, valueFlags),
    ROW(16, VNode, lineNr),    ROW(24, VNode, governorRec), ROW(28, VNode, governorModule),
    ROW(32, VNode, next),      ROW(36, VNode, stamp),       ROW(38, VNode, valueKind),
    ROW(40, VNode, refModule), ROW(44, VNode, refRecord),   ROW(48, VNode, tedFirst),
    ROW(52, VNode, tedLast),   ROW(56, VNode, value),       ROW(68, VNode, skipInWalk),
    ROW(72, VNode, auxRecord),
};

constexpr RecField tagLayout[] = {
    ROW(0, TagRec, tagClass),
    ROW(4, TagRec, tagMode),
    ROW(8, TagRec, tagNumber),
    ROW(12, TagRec, next),
};

constexpr RecField subLayout[] = {
    ROW(4, SubRec, subKind),    ROW(5, SubRec, subFlags), ROW(8, SubRec, compModule),
    ROW(12, SubRec, compTNode), ROW(20, SubRec, next),    ROW(28, SubRec, first),
    ROW(32, SubRec, second),
};

constexpr RecField tedLayout[] = {
    ROW(0, TedRec, tedKind),
    ROW(4, TedRec, tedText),
};

constexpr RecField sNodeLayout[] = {
    ROW(4, SNode, refModule),
    ROW(8, SNode, refRecord),
    ROW(16, SNode, next),
};

#undef ROW

/* Each row begins at or behind the end of the one before it, and the last ends inside the record.
 */
template <std::size_t N> constexpr bool fits(const RecField (&rows)[N], RecKind kind) {
    int end = 0;
    for (const RecField &row : rows) {
        if (row.offset < end)
            return false;
        end = row.offset + row.width * row.count;
    }
    return end <= recSize[kind];
}
static_assert(fits(mNodeLayout, REC_MNODE));
static_assert(fits(tNodeLayout, REC_TNODE));
static_assert(fits(vNodeLayout, REC_VNODE));
static_assert(fits(tagLayout, REC_TAG));
static_assert(fits(subLayout, REC_SUB));
static_assert(fits(tedLayout, REC_TED));
static_assert(fits(sNodeLayout, REC_SNODE));

/* Written without a loop, compilers make one instruction of it. */
template <typename T> void decodeNumber(const std::uint8_t *bytes, std::uint8_t *member) {
    std::uint32_t number;
    if constexpr (sizeof(T) == 4)
        number = std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                 std::uint32_t{bytes[2]} << 8 | bytes[3];
    else
        number = std::uint32_t{bytes[0]} << 8 | bytes[1];
    const T narrow = static_cast<T>(number);
    std::memcpy(member, &narrow, sizeof narrow);
}

/* Each kind of record has code of its own for its rows, since large trees have many records. */
template <const auto &rows> void decodeRows(const std::uint8_t *bytes, std::uint8_t *record) {
    const auto decodeRow = [&]<std::size_t nr>() {
        constexpr RecField row = rows[nr];
        for (std::size_t at = 0; at < row.count * row.width; at += row.width) {
            const std::uint8_t *from = bytes + row.offset + at;
            std::uint8_t *to = record + row.member + at;
            if constexpr (row.width == 4)
                decodeNumber<std::uint32_t>(from, to);
            else if constexpr (row.width == 2)
                decodeNumber<std::uint16_t>(from, to);
            else
                *to = *from;
        }
    };
    [&]<std::size_t... nrs>(std::index_sequence<nrs...>) {
        (decodeRow.template operator()<nrs>(), ...);
    }(std::make_index_sequence<std::size(rows)>());
}

template <typename T> void encodeNumber(const std::uint8_t *member, std::uint8_t *bytes) {
    T number;
    std::memcpy(&number, member, sizeof number);
    for (std::size_t i = sizeof number; i > 0; --i) {
        bytes[i - 1] = static_cast<std::uint8_t>(number);
        number = static_cast<T>(number >> 8);
    }
}

} // namespace

std::span<const RecField> recLayout(RecKind kind) {
    switch (kind) {
    case REC_MNODE:
        return mNodeLayout;
    case REC_TNODE:
        return tNodeLayout;
    case REC_VNODE:
        return vNodeLayout;
    case REC_TAG:
        return tagLayout;
    case REC_SUB:
        return subLayout;
    case REC_TED:
        return tedLayout;
    case REC_SNODE:
        return sNodeLayout;
    default:
        return {};
    }
}

void decodeRec(RecKind kind, const std::uint8_t *bytes, void *record) {
    auto *members = static_cast<std::uint8_t *>(record);
    switch (kind) {
    case REC_MNODE:
        return decodeRows<mNodeLayout>(bytes, members);
    case REC_TNODE:
        return decodeRows<tNodeLayout>(bytes, members);
    case REC_VNODE:
        return decodeRows<vNodeLayout>(bytes, members);
    case REC_TAG:
        return decodeRows<tagLayout>(bytes, members);
    case REC_SUB:
        return decodeRows<subLayout>(bytes, members);
    case REC_TED:
        return decodeRows<tedLayout>(bytes, members);
    case REC_SNODE:
        return decodeRows<sNodeLayout>(bytes, members);
    default:
        return;
    }
}

void encodeRec(RecKind kind, const void *record, std::uint8_t *bytes) {
    for (const RecField &row : recLayout(kind)) {
        const auto *from = static_cast<const std::uint8_t *>(record) + row.member;
        std::uint8_t *to = bytes + row.offset;
        for (int i = 0; i < row.count; ++i, from += row.width, to += row.width) {
            if (row.width == 4)
                encodeNumber<std::uint32_t>(from, to);
            else if (row.width == 2)
                encodeNumber<std::uint16_t>(from, to);
            else
                *to = *from;
        }
    }
}
