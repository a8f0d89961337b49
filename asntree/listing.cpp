#include "asntree/listing.h"

#include <algorithm>
#include <cstdio>

#include "asntree/listtext.h"
#include "store/recordwords.h"

namespace asntree {

std::string stringAt(const Tree &tree, RecNr nr) {
    const std::int64_t number = nr < 0 ? -static_cast<std::int64_t>(nr) : nr;
    if (number == 0 || static_cast<std::size_t>(number) > tree.strings8.size())
        return {};
    std::string text = tree.strings8[static_cast<std::size_t>(number) - 1];
    for (char &ch : text)
        if (static_cast<unsigned char>(ch) < 0x20 || ch == 0x7F)
            ch = '?'; /* a listing stays lines of text, whatever a tree holds */
    return text;
}

namespace {

/* The tree that a module number leads to, and what to call it; null if it isn't known. */
const Tree *treeAt(const Lister &lister, std::int32_t module, std::string &prefix) {
    if (module <= 1)
        return &lister.tree;
    const MNode *import = recordAt(lister.tree.mNodes, module);
    if (import == nullptr)
        return nullptr;
    prefix = stringAt(lister.tree, import->filePrefix);
    auto found = lister.known.find(prefix);
    if (stringAt(lister.tree, import->moduleName) == PREDEFINED_MODULE)
        prefix = PREDEFINED_MODULE;
    return found == lister.known.end() ? nullptr : found->second;
}

template <typename Record>
std::string nameAt(const Lister &lister, std::int32_t module, RecNr nr,
                   std::vector<Record> Tree::*records) {
    std::string prefix;
    const Tree *tree = treeAt(lister, module, prefix);
    const Record *record = tree == nullptr ? nullptr : recordAt(tree->*records, nr);
    const std::string name = record == nullptr ? "" : stringAt(*tree, record->nameIdx);
    if (name.empty())
        return prefix + "#" + std::to_string(nr);
    return (prefix.empty() ? "" : prefix + ".") + name;
}

} // namespace

std::string typeNameAt(const Lister &lister, std::int32_t module, RecNr nr) {
    return nameAt(lister, module, nr, &Tree::tNodes);
}

std::string valueNameAt(const Lister &lister, std::int32_t module, RecNr nr) {
    return nameAt(lister, module, nr, &Tree::vNodes);
}

namespace {

std::vector<std::string> stepsAt(const Lister &lister, RecNr first) {
    constexpr std::size_t MAX_STEPS = 100;
    std::vector<std::string> names;
    const SNode *step = recordAt(lister.tree.sNodes, first);
    for (; step != nullptr && names.size() < MAX_STEPS;
         step = recordAt(lister.tree.sNodes, step->next))
        names.push_back(step->refRecord > 0
                            ? typeNameAt(lister, step->refModule, step->refRecord)
                            : valueNameAt(lister, step->refModule,
                                          step->refRecord == INT32_MIN ? 0 : -step->refRecord));
    return names;
}

/* The fields behind a class, without the modules that these stand in. */
std::string fieldPath(const Lister &lister, RecNr first) {
    std::string text;
    for (const std::string &name : stepsAt(lister, first))
        text += ".&" + name.substr(name.rfind('.') + 1);
    return text;
}

} // namespace

std::string pathText(const Lister &lister, RecNr first) {
    std::string text;
    for (const std::string &name : stepsAt(lister, first))
        text += (text.empty() ? "" : ".") + name;
    return text;
}

namespace {

void addWord(std::string &words, const std::string &word) {
    words += (words.empty() ? "" : ", ") + word;
}

void addWords(std::string &words, std::span<const BitWord> table, std::uint32_t bits) {
    for (const BitWord &row : table)
        if ((bits & row.bit) != 0)
            addWord(words, row.word);
}

std::string formText(const TNode &node) {
    std::string words;
    if (node.valueFieldCode != VF_NONE || node.controlFieldCode != VF_NONE) {
        words = formWord(node.valueFieldCode);
        if (node.controlFieldCode != VF_NONE)
            words += std::string("/") + formWord(node.controlFieldCode);
    }
    const std::string low = numberText(node.lowerEndpoint);
    const std::string high = numberText(node.upperEndpoint);
    const bool hasBounds = (node.lowerEndpoint.hi | node.upperEndpoint.hi) != 0 ||
                           (node.lowerEndpoint.lo | node.upperEndpoint.lo) != 0;
    if (hasBounds && (low != "MIN" || high != "MAX"))
        addWord(words, low + ".." + high);
    addWords(words, typeFlagWords(), node.typeFlags);
    addWords(words, typeOptionWords(), node.optionBits);
    if (node.typeOptions.definiteLength != LENGTH_FORM_NOT_SET)
        addWord(words, node.typeOptions.definiteLength != 0 ? "definite" : "indefinite");
    if (node.typeOptions.skipKind != 0)
        addWord(words, "skip call");
    if (node.typeOptions.sizeLimit != 0)
        addWord(words, "limit " + std::to_string(node.typeOptions.sizeLimit) +
                           (node.typeOptions.sizeLimitMode != 0 ? " else error" : " else ignored"));
    return words.empty() ? "" : "  {" + words + "}";
}

std::string entryText(const TNode &node) {
    if ((node.entryFlags & ENTRY_TYPE_FLAG) == 0)
        return {};
    std::string text = "  entry ";
    for (int category = 0; category < 8; ++category)
        if ((node.entryCategories >> category & 1) != 0)
            text += static_cast<char>('0' + category);
    for (const BitWord &row : entryFunctionWords())
        if ((node.entryFlags & row.bit) != 0)
            text.append(" ").append(row.word);
    return text;
}

std::string typeText(Lister &lister, const TNode &node) {
    switch (node.mainType) {
    case TYP_SYNONYM: {
        std::string text = typeNameAt(lister, node.refModule, node.refRecord);
        if (node.auxRecord != 0)
            text += " of parameterized " + pathText(lister, node.auxRecord);
        return text;
    }
    case TYP_SELECTION:
        return pathText(lister, node.auxRecord) + " < " + typeNameAt(lister, 1, node.refRecord);
    case TYP_FIELDLIST:
        return typeNameAt(lister, node.refModule, node.refRecord) + fieldPath(lister, node.auxRecord);
    case TYP_ANY:
        return node.auxRecord == 0 ? "ANY" : "ANY DEFINED BY " + pathText(lister, node.auxRecord);
    case TYP_NONE:
        return "parameterized";
    default:
        return typeWord(node.mainType);
    }
}

std::string statusText(Lister &lister, const TNode &node) {
    if (const VNode *value = recordAt(lister.tree.vNodes, node.defaultValue))
        return " DEFAULT " + valueText(lister, *value, 0);
    return node.compStatus == TCS_OPTIONAL ? " OPTIONAL" : "";
}

void addLine(Lister &lister, int depth, const std::string &text) {
    lister.out.append(static_cast<std::size_t>(4 * depth), ' ').append(text).append("\n");
}

void listOptions(Lister &lister, int depth, RecNr first, RecNr last) {
    for (RecNr nr = first; nr >= 1 && nr <= last && lister.spend(); ++nr) {
        const TedRec *ted = recordAt(lister.tree.tedRecs, nr);
        if (ted == nullptr)
            return;
        if (ted->tedKind != TED_REMOVED)
            addLine(lister, depth,
                    (ted->tedKind == TED_TEXT ? "text " : "option ") +
                        stringAt(lister.tree, ted->tedText));
    }
}

void listItems(Lister &lister, int depth, RecNr first) {
    std::string text;
    for (const VNode *item = recordAt(lister.tree.vNodes, first); item != nullptr;
         item = recordAt(lister.tree.vNodes, item->next)) {
        if (!lister.spend())
            return;
        text += text.empty() ? "" : ", ";
        text += stringAt(lister.tree, item->nameIdx);
        text += item->valueKind == TYP_EXTENSION_MARKER ? "..."
                                                        : "(" + valueText(lister, *item, 0) + ")";
    }
    if (!text.empty())
        addLine(lister, depth, "items " + text);
}

bool isFieldOf(const TNode *father) {
    return father != nullptr && father->mainType == TYP_CLASS;
}

void listType(Lister &lister, const TNode &node, int depth, const TNode *father);

void listParts(Lister &lister, const TNode &node, int depth) {
    const bool isList = node.mainType == TYP_SEQOF || node.mainType == TYP_SETOF;
    const bool hasParts = isList || node.mainType == TYP_SEQ || node.mainType == TYP_SET ||
                          node.mainType == TYP_CHOICE || node.mainType == TYP_CLASS;
    if (!hasParts || depth > MAX_LISTED_DEPTH)
        return;
    for (const TNode *part = recordAt(lister.tree.tNodes, node.refRecord); part != nullptr;
         part = isList ? nullptr : recordAt(lister.tree.tNodes, part->next)) {
        if (!lister.spend())
            return;
        listType(lister, *part, depth + 1, &node);
    }
}

/* The name in front of a part: of a component, a field, or what stands for one. */
std::string partName(const Lister &lister, const TNode &node, const TNode *father) {
    const std::string name = stringAt(lister.tree, node.nameIdx);
    if (isFieldOf(father))
        return (node.nameIdx < 0 ? "value &" : "&") + name + " ";
    if (node.compStatus == TCS_COMPOF)
        return "COMPONENTS OF ";
    if (node.compStatus == TCS_MULTIPLE)
        return "* " + name + (name.empty() ? "" : " ");
    return name + (name.empty() ? "" : " ");
}

void listType(Lister &lister, const TNode &node, int depth, const TNode *father) {
    std::string line = father == nullptr ? stringAt(lister.tree, node.nameIdx) + " ::= "
                                         : partName(lister, node, father);
    line += tagsText(lister, node.firstTagRec);
    if ((node.nodeFlags & NODE_SET) != 0)
        line += "set of ";
    if ((node.nodeFlags & NODE_VARIABLE_TYPE_FIELD) != 0)
        line += "variable ";
    line += typeText(lister, node);
    if (node.constraintRec != 0)
        line += " (" + constraintText(lister, node.constraintRec, 0) + ")";
    line += statusText(lister, node);
    line += formText(node) + entryText(node);
    if (father == nullptr && (node.nodeFlags & NODE_EXPORTED) != 0)
        line += "  exported";
    addLine(lister, depth, line);
    listOptions(lister, depth + 1, node.tedFirst, node.tedLast);
    listItems(lister, depth + 1, node.namedNumbersRec);
    listParts(lister, node, depth);
    /* What an instantiation is an instance of stands in no list. */
    const TNode *body = node.mainType == TYP_SYNONYM && node.auxRecord != 0 && node.refModule <= 1
                            ? recordAt(lister.tree.tNodes, node.refRecord)
                            : nullptr;
    if (body != nullptr && body->compStatus == TCS_PARAM_HEAD && depth < MAX_LISTED_DEPTH &&
        lister.bodies.insert(node.refRecord).second)
        listType(lister, *body, depth + 1, &node);
}

void listValue(Lister &lister, const VNode &node) {
    std::string line = stringAt(lister.tree, node.nameIdx) + " ";
    const TNode *governor =
        node.governorModule <= 1 ? recordAt(lister.tree.tNodes, node.governorRec) : nullptr;
    if (governor != nullptr && governor->nameIdx == 0)
        line += typeText(lister, *governor);
    else
        line += typeNameAt(lister, node.governorModule, node.governorRec);
    line += " ::= " + valueText(lister, node, 0);
    if ((node.valueFlags & VALUE_EXPORTED) != 0)
        line += "  exported";
    addLine(lister, 0, line);
    if ((node.valueFlags & VALUE_NAMING) != 0 || node.tedFirst != 0)
        listOptions(lister, 1, node.tedFirst, node.tedLast);
}

/* --- the order of definitions --- */

struct Listed {
    bool isValue;
    RecNr nr;
    std::int32_t line;
};

template <typename Record>
std::vector<Listed> definitionsFrom(const std::vector<Record> &records, RecNr first, bool isValue) {
    std::vector<Listed> list;
    const Record *record = recordAt(records, first);
    while (record != nullptr && list.size() < records.size()) {
        list.push_back({isValue, static_cast<RecNr>(record - records.data()) + 1, record->lineNr});
        record = recordAt(records, record->next);
    }
    return list;
}

bool isAscending(const std::vector<Listed> &list) {
    return std::is_sorted(list.begin(), list.end(),
                          [](const Listed &a, const Listed &b) { return a.line < b.line; });
}

/* Types and values by their lines; in a merged tree, where lines of several files meet, all types
   come first. */
std::vector<Listed> definitionsOf(const Tree &tree) {
    const MNode &header = tree.mNodes.front();
    const std::vector<Listed> types = definitionsFrom(tree.tNodes, header.firstTNode, false);
    const std::vector<Listed> values = definitionsFrom(tree.vNodes, header.firstVNode, true);
    std::vector<Listed> all = types;
    if (isAscending(types) && isAscending(values)) {
        all.clear();
        std::merge(types.begin(), types.end(), values.begin(), values.end(),
                   std::back_inserter(all),
                   [](const Listed &a, const Listed &b) { return a.line < b.line; });
        return all;
    }
    all.insert(all.end(), values.begin(), values.end());
    return all;
}

void listHeader(Lister &lister) {
    const MNode &header = lister.tree.mNodes.front();
    addLine(lister, 0,
            "module " + stringAt(lister.tree, header.moduleName) + ", tree " +
                stringAt(lister.tree, header.filePrefix) + ", from " +
                stringAt(lister.tree, header.sourceDirectory) +
                stringAt(lister.tree, header.sourceFileName));
    if (const VNode *value = recordAt(lister.tree.vNodes, header.moduleValue))
        addLine(lister, 1, "identifier " + valueText(lister, *value, 0));
    if (header.exportsMode != 0)
        addLine(lister, 1, header.exportsMode == 1 ? "exports a list" : "exports nothing");
    listOptions(lister, 1, header.tedFirst, header.tedLast);
    for (std::size_t i = 1; i < lister.tree.mNodes.size(); ++i) {
        const MNode &import = lister.tree.mNodes[i];
        addLine(lister, 1,
                "import " + stringAt(lister.tree, import.moduleName) + ", tree " +
                    stringAt(lister.tree, import.filePrefix) +
                    ((import.importMark >> 4) != 0 ? "" : ", nothing of its imports"));
    }
}

} // namespace

std::string listTree(const Tree &tree, const KnownTrees &known,
                     const std::vector<ListingNote> &notes) {
    Lister lister(tree, known);
    std::unordered_map<std::int64_t, std::vector<const std::string *>> byRecord;
    const auto keyOf = [](bool isValue, RecNr nr) {
        return static_cast<std::int64_t>(nr) * 2 + (isValue ? 1 : 0);
    };
    for (const ListingNote &note : notes)
        byRecord[note.record == 0 ? 0 : keyOf(note.ofValue, note.record)].push_back(&note.text);
    const auto listNotes = [&](std::int64_t key) {
        if (auto found = byRecord.find(key); found != byRecord.end())
            for (const std::string *text : found->second)
                addLine(lister, 1, "note: " + *text);
    };
    listHeader(lister);
    listNotes(0);
    for (const Listed &item : definitionsOf(tree)) {
        lister.out += "\n";
        if (item.isValue)
            listValue(lister, *recordAt(tree.vNodes, item.nr));
        else
            listType(lister, *recordAt(tree.tNodes, item.nr), 0, nullptr);
        listNotes(keyOf(item.isValue, item.nr));
    }
    return std::move(lister.out);
}

} // namespace asntree
