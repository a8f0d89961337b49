#include "tests/support/treedump.h"

#include <vector>

#include "base/text.h"
#include "store/layout.h"

namespace {

constexpr const char *TYPE_WORDS[TYP_COUNT] = {
    "BOOLEAN",   "INTEGER", "ENUMERATED", "REAL",   "BITSTR",   "OCTSTR",  "NULL",
    "SEQ",       "SEQOF",   "SET",        "SETOF",  "CHOICE",   "ANY",     "EMBPDV",
    "OBJID",     "NUMSTR",  "PRISTR",     "TELSTR", "VIDSTR",   "VISSTR",  "IA5STR",
    "GRASTR",    "GENSTR",  "BMPSTR",     "UNISTR", "CHASTR",   "GENTIME", "UTCTIME",
    "EXT1990",   "EXT1994", "OBJDESCR",   "INSTOF", "SYNONYM",  "MARKER",  "SELECTION",
    "FIELDLIST", "OPEN",    "CLASS",      "TYPEID", "ABSTRSTX", "NONE"};

constexpr const char *FORM_WORDS[VF_COUNT] = {
    "none",  "bool",   "ui8",     "ui16",    "ui32",  "ui64",  "i8",     "i16",   "i32",
    "i64",   "real32", "real64",  "real128", "stas0", "stas8", "stas16", "stas",  "dyns0",
    "dyns8", "dyns16", "dyns",    "list",    "frm",   "null",  "stru",   "any",   "embpdv",
    "obji",  "comt",   "ext1990", "ext1994", "open",  "bmp0",  "bmp8",   "bmp16", "bmp"};

/* The records of a file, decoded. */
struct Dump {
    const std::string &file;
    std::size_t offset = 0;
    std::vector<std::string> strings; /* kind 7, read ahead for the names */
    std::string out;
    MNode header;

    const std::uint8_t *bytes() const {
        return reinterpret_cast<const std::uint8_t *>(file.data()) + offset;
    }
    std::string name(RecNr nr) const {
        std::size_t index = static_cast<std::size_t>(nr < 0 ? -static_cast<std::int64_t>(nr) : nr);
        if (nr == 0)
            return "-";
        return index <= strings.size() ? "\"" + strings[index - 1] + "\""
                                       : "?" + std::to_string(nr);
    }
};

const char *word(const char *const *words, int count, int index) {
    return index < count ? words[index] : "?";
}

void field(std::string &line, const char *label, std::int64_t number) {
    if (number != 0)
        line += formatText(" %s %lld", label, static_cast<long long>(number));
}

void bits(std::string &line, const char *label, std::uint32_t number) {
    if (number != 0)
        line += formatText(" %s 0x%X", label, number);
}

std::string endpointText(sint64 n) {
    auto number = static_cast<std::int64_t>(
        static_cast<std::uint64_t>(static_cast<std::uint32_t>(n.hi)) << 32 | n.lo);
    return number == INT64_MIN ? "MIN" : number == INT64_MAX ? "MAX" : std::to_string(number);
}

void range(std::string &line, const char *label, RecNr first, RecNr last) {
    if (first != 0 || last != 0)
        line += formatText(" %s %d-%d", label, first, last);
}

void reference(std::string &line, const char *label, std::int32_t module, RecNr nr) {
    if (module != 0 || nr != 0)
        line += formatText(" %s %d:%d", label, module, nr);
}

std::string describe(const Dump &dump, const MNode &node) {
    std::string line = dump.name(node.moduleName) + " prefix " + dump.name(node.filePrefix);
    line += formatText(" version %d/%d date %d time %d", node.stamp.version, node.stamp.treeVersion,
                       node.stamp.date, node.stamp.time);
    field(line, "types", node.firstTNode);
    field(line, "values", node.firstVNode);
    field(line, "identifier", node.moduleValue);
    field(line, "exports", node.exportsMode);
    bits(line, "mark", node.importMark);
    field(line, "entry", node.nrOfEntryTypes);
    field(line, "visible", node.nrOfVisibleTypes);
    field(line, "objects", node.nrOfObjects);
    field(line, "objectSets", node.nrOfObjectSets);
    range(line, "options", node.tedFirst, node.tedLast);
    return line;
}

std::string describe(const Dump &dump, const TNode &node) {
    std::string line = dump.name(node.nameIdx) + " ";
    line += word(TYPE_WORDS, TYP_COUNT, node.mainType);
    line += formatText(" status %d", node.compStatus);
    reference(line, "ref", node.refModule, node.refRecord);
    field(line, "path", node.auxRecord);
    field(line, "comps", node.nrOfComps);
    if (node.valueFieldCode != 0 || node.controlFieldCode != 0)
        line += formatText(" form %s/%s", word(FORM_WORDS, VF_COUNT, node.valueFieldCode),
                           word(FORM_WORDS, VF_COUNT, node.controlFieldCode));
    if (node.nameIdx < 0)
        line += " valueField";
    field(line, "next", node.next);
    field(line, "parent", node.parentRec);
    field(line, "line", node.lineNr);
    field(line, "default", node.defaultValue);
    field(line, "constraint", node.constraintRec);
    field(line, "tags", node.firstTagRec);
    bits(line, "options", node.optionBits);
    bits(line, "node", node.nodeFlags);
    bits(line, "flags", node.typeFlags);
    bits(line, "entry", node.entryFlags);
    bits(line, "categories", node.entryCategories);
    field(line, "items", node.namedNumbersRec);
    field(line, "hidden", node.skipInWalk);
    range(line, "teds", node.tedFirst, node.tedLast);
    if (node.typeOptions.definiteLength != LENGTH_FORM_NOT_SET)
        line += formatText(" lengthForm %d", node.typeOptions.definiteLength);
    field(line, "skipKind", node.typeOptions.skipKind);
    field(line, "limit", node.typeOptions.sizeLimit);
    field(line, "limitMode", node.typeOptions.sizeLimitMode);
    std::string low = endpointText(node.lowerEndpoint), high = endpointText(node.upperEndpoint);
    if (low != "MIN" || high != "MAX")
        line += " bounds " + low + ".." + high;
    return line;
}

std::string describe(const Dump &dump, const VNode &node) {
    std::string line = dump.name(node.nameIdx) + " ";
    line += word(TYPE_WORDS, TYP_COUNT, node.valueKind);
    line += formatText(" status %d", node.compStatus);
    reference(line, "ref", node.refModule, node.refRecord);
    reference(line, "governor", node.governorModule, node.governorRec);
    field(line, "next", node.next);
    bits(line, "flags", node.valueFlags);
    field(line, "line", node.lineNr);
    field(line, "path", node.auxRecord);
    field(line, "hidden", node.skipInWalk);
    range(line, "teds", node.tedFirst, node.tedLast);
    std::string bytes;
    bool isZero = true;
    for (std::uint8_t byte : node.value) {
        bytes += formatText("%02X", byte);
        isZero = isZero && byte == 0;
    }
    return isZero ? line : line + " bytes " + bytes;
}

std::string describe(const Dump &, const TagRec &tag) {
    std::string line = formatText("[%d %d] mode %d", tag.tagClass, tag.tagNumber, tag.tagMode);
    field(line, "next", tag.next);
    return line;
}

std::string describe(const Dump &, const SubRec &sub) {
    std::string line = formatText("kind %d", sub.subKind);
    bits(line, "flags", sub.subFlags);
    reference(line, "component", sub.compModule, sub.compTNode);
    field(line, "first", sub.first);
    field(line, "second", sub.second);
    field(line, "next", sub.next);
    return line;
}

std::string describe(const Dump &dump, const TedRec &ted) {
    return formatText("kind %d ", ted.tedKind) + dump.name(ted.tedText);
}

std::string describe(const Dump &, const SNode &step) {
    std::string line = "step";
    reference(line, "ref", step.refModule, step.refRecord);
    field(line, "next", step.next);
    return line;
}

/* Lists the records of a kind; false at the end of the file. */
template <typename Record> bool dumpKind(Dump &dump, RecKind kind, const char *letter) {
    const auto size = static_cast<std::size_t>(recSize[kind]);
    for (std::int32_t nr = 1; nr <= dump.header.counts[static_cast<std::size_t>(kind)];
         ++nr, dump.offset += size) {
        if (dump.file.size() - dump.offset < size)
            return false;
        Record record;
        decodeRec(kind, dump.bytes(), &record);
        dump.out += letter + std::to_string(nr) + " " + describe(dump, record) + "\n";
    }
    return true;
}

/* Reads the strings of a kind from `offset` on; false at the end of the file. */
bool readStrings(Dump &dump, RecKind kind, std::size_t *offset, std::vector<std::string> &texts) {
    const auto width = static_cast<std::size_t>(recSize[kind]);
    for (std::int32_t nr = 1; nr <= dump.header.counts[static_cast<std::size_t>(kind)]; ++nr) {
        if (dump.file.size() < *offset + 2)
            return false;
        std::size_t count = static_cast<std::uint8_t>(dump.file[*offset]) * 256u +
                            static_cast<std::uint8_t>(dump.file[*offset + 1]);
        *offset += 2;
        if (count == 0 || dump.file.size() < *offset + count * width)
            return false;
        std::string text;
        for (std::size_t i = 0; i + 1 < count; ++i)
            text += dump.file[*offset + i * width + width - 1];
        texts.push_back(text);
        *offset += count * width;
    }
    return true;
}

/* Names stand behind all that refers to them. */
void readNames(Dump &dump) {
    std::size_t offset = 0;
    for (int kind = REC_MNODE; kind < REC_STRI8; ++kind) {
        auto count = static_cast<std::size_t>(dump.header.counts[static_cast<std::size_t>(kind)]);
        offset += count * static_cast<std::size_t>(recSize[static_cast<std::size_t>(kind)]);
    }
    readStrings(dump, REC_STRI8, &offset, dump.strings);
}

bool dumpRecords(Dump &dump) {
    if (!(dumpKind<MNode>(dump, REC_MNODE, "M") && dumpKind<TNode>(dump, REC_TNODE, "T") &&
          dumpKind<VNode>(dump, REC_VNODE, "V") && dumpKind<TagRec>(dump, REC_TAG, "G") &&
          dumpKind<SubRec>(dump, REC_SUB, "C") && dumpKind<TedRec>(dump, REC_TED, "O") &&
          dumpKind<SNode>(dump, REC_SNODE, "S")))
        return false;
    constexpr const char *letters[] = {"a", "b", "c"};
    for (int kind = REC_STRI8; kind <= REC_STRI32; ++kind) {
        std::vector<std::string> texts;
        bool whole = readStrings(dump, static_cast<RecKind>(kind), &dump.offset, texts);
        for (std::size_t i = 0; i < texts.size(); ++i)
            dump.out +=
                letters[kind - REC_STRI8] + std::to_string(i + 1) + " \"" + texts[i] + "\"\n";
        if (!whole)
            return false;
    }
    return true;
}

} // namespace

std::string dumpTree(const std::string &file) {
    Dump dump{file, 0, {}, {}, {}};
    if (file.size() < static_cast<std::size_t>(recSize[REC_MNODE]))
        return "broken: no header\n";
    decodeRec(REC_MNODE, dump.bytes(), &dump.header);
    for (std::int32_t count : dump.header.counts)
        if (count < 0)
            return "broken: negative count\n";
    readNames(dump);
    if (!dumpRecords(dump))
        dump.out += formatText("broken at byte %zu\n", dump.offset);
    else if (dump.offset != file.size())
        dump.out += formatText("%zu bytes behind the last record\n", file.size() - dump.offset);
    return dump.out;
}
