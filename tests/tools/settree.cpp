#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "asntree/listing.h"
#include "asntree/records.h"
#include "store/recordwords.h"

/* settree TREE.stx PATH CHANGE ...: changes the record of a type in a tree, for what ASN.1 text can't
   say. PATH is Type.component.component, "*" for the element of a list. A CHANGE is "+word" or "-word"
   for an option or flag, as velmo-show calls it with "_" for a blank; "form=", "control=" and "type="
   with a word, or a field of numbers with one. */

namespace {

using asntree::Tree;

bool is(const std::string &word, const char *other) {
    std::string spaced = word;
    for (char &c : spaced)
        c = c == '_' ? ' ' : c;
    return spaced == other;
}

RecNr named(const Tree &tree, RecNr first, const std::string &name) {
    for (RecNr nr = first; nr != 0; nr = tree.t(nr).next) {
        const RecNr index = std::abs(tree.t(nr).nameIdx);
        if (name == "*" || (index != 0 && tree.strings8[static_cast<std::size_t>(index - 1)] == name))
            return nr;
    }
    return 0;
}

RecNr find(Tree &tree, const std::string &path) {
    RecNr nr = 0, first = tree.header().firstTNode;
    for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + 1) {
        end = path.find('.', begin);
        nr = named(tree, first, path.substr(begin, end - begin));
        if (nr == 0)
            return 0;
        first = tree.t(nr).refRecord;
    }
    return nr;
}

bool setBit(TNode &node, const std::string &word, bool on) {
    for (const BitWord &option : typeOptionWords())
        if (is(word, option.word)) {
            node.optionBits = on ? node.optionBits | option.bit : node.optionBits & ~option.bit;
            return true;
        }
    for (const BitWord &flag : typeFlagWords())
        if (is(word, flag.word)) {
            const std::uint32_t bits = on ? node.typeFlags | flag.bit : node.typeFlags & ~flag.bit;
            node.typeFlags = static_cast<std::uint16_t>(bits);
            return true;
        }
    return false;
}

/* The number that a word stands for, or the one that is written; -1 for none of both. */
int numberOf(const std::string &word, const char *(*wordOf)(int), int count) {
    for (int number = 0; number < count; ++number)
        if (is(word, wordOf(number)))
            return number;
    return -1;
}

bool setField(TNode &node, const std::string &field, const std::string &text) {
    const auto put = [](auto &place, int number) {
        place = static_cast<std::remove_reference_t<decltype(place)>>(number);
        return number >= 0;
    };
    if (field == "form")
        return put(node.valueFieldCode, numberOf(text, formWord, VF_COUNT));
    if (field == "control")
        return put(node.controlFieldCode, numberOf(text, formWord, VF_COUNT));
    if (field == "type")
        return put(node.mainType, numberOf(text, typeWord, TYP_COUNT));
    if (field == "entryFlags")
        return put(node.entryFlags, std::atoi(text.c_str()));
    if (field == "auxRecord")
        return put(node.auxRecord, std::atoi(text.c_str()));
    if (field == "nrOfComps")
        return put(node.nrOfComps, std::atoi(text.c_str()));
    return false;
}

bool change(TNode &node, const std::string &word) {
    if (word.starts_with("+") || word.starts_with("-"))
        return setBit(node, word.substr(1), word[0] == '+');
    const std::size_t equals = word.find('=');
    return equals != std::string::npos &&
           setField(node, word.substr(0, equals), word.substr(equals + 1));
}

int fail(const char *what, const char *word) {
    std::fprintf(stderr, "settree: %s: %s\n", what, word);
    return 1;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 4)
        return fail("usage", "settree TREE.stx PATH CHANGE ...");
    std::ifstream file(argv[1], std::ios::binary);
    Tree tree;
    std::string why;
    if (!asntree::readTree({std::istreambuf_iterator<char>(file), {}}, tree, why))
        return fail(argv[1], why.c_str());
    const RecNr nr = find(tree, argv[2]);
    if (nr == 0)
        return fail("there is no such type", argv[2]);
    for (int i = 3; i < argc; ++i)
        if (!change(tree.t(nr), argv[i]))
            return fail("no change of a record", argv[i]);
    std::ofstream out(argv[1], std::ios::binary);
    out << asntree::storedBytes(tree);
    out.close();
    if (!out)
        return fail("can't write", argv[1]);
    return 0;
}
