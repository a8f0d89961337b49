#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/treewriter.h"

/* Writes a tree for measurements: maketree NUMBER-OF-TYPES FILE. The types are a mixture of leaves,
   structures that refer to other types, lists, choices and enumerations, in the
   proportions of large real modules; every tenth type is an entry type. */

namespace {

std::string typeName(int i) {
    return "Type_" + std::to_string(i);
}

bool isSynonym(int i) {
    return i % 10 == 9;
}

/* Modules are written from the top down, so a type refers to types behind it in its group of 50, or
   to any type of the group before. */
TypeNode farRef(TreeWriter &w, int i, int count, int salt) {
    constexpr int group = 50;
    int distance = (i * 7 + salt * 13) % group;
    int start = i - i % group;
    int target = i + distance + 1;
    if (target >= start + group || target >= count)
        target = start > 0 ? start - group + distance : 0;
    /* A synonym stands for no other one: real modules have short chains, and each use of a type
       costs the length of its chain. */
    if (isSynonym(i) && isSynonym(target))
        --target;
    return w.ref(typeName(target));
}

TypeNode makeStructure(TreeWriter &w, MainType kind, int i, int count) {
    std::vector<TypeNode> comps;
    for (int c = 0; c < 6; ++c) {
        TypeNode type = c % 2 == 0 ? w.integer(0, 255 << c) : farRef(w, i, count, c);
        TypeNode comp = w.comp("member_" + std::to_string(c), type).implicit(c);
        comps.push_back(kind != TYP_CHOICE && c % 3 == 1 ? comp.optional() : comp);
    }
    if (i % 4 == 0)
        comps.push_back(w.marker());
    return w.structure(kind, comps);
}

TypeNode makeType(TreeWriter &w, int i, int count) {
    switch (i % 10) {
    case 0:
    case 1:
    case 2:
        return makeStructure(w, TYP_SEQ, i, count);
    case 3:
        return makeStructure(w, TYP_SET, i, count);
    case 4:
        return makeStructure(w, TYP_CHOICE, i, count);
    case 5:
        return w.listOf(TYP_SEQOF, farRef(w, i, count, 1));
    case 6:
        return w.string(TYP_OCTSTR, 1, 20);
    case 7:
        return w.enumerated({{("red_" + std::to_string(i)).c_str(), 0},
                             {("green_" + std::to_string(i)).c_str(), 1}});
    case 8:
        return w.integer(0, i);
    default:
        return farRef(w, i, count, 2);
    }
}

} // namespace

int main(int argc, char **argv) {
    int count = argc == 3 ? std::atoi(argv[1]) : 0;
    if (count < 1) {
        std::fputs("usage: maketree NUMBER-OF-TYPES FILE\n", stderr);
        return 1;
    }
    TreeWriter w("Large_Module", "large");
    for (int i = 0; i < count; ++i) {
        TypeNode type = w.define(typeName(i), makeType(w, i, count)).line(i + 1);
        if (i % 10 == 0)
            type.entry();
    }
    if (!w.save(argv[2])) {
        std::perror(argv[2]);
        return 1;
    }
    return 0;
}
