#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/support/treewriter.h"

/* Writes a tree for measurements: maketree NUMBER FILE [components]. The tree has NUMBER types, a
   mixture of leaves, structures that refer to other types, lists, choices and enumerations, in the
   proportions of large real modules; every tenth type is an entry type. With "components" it has
   few types, with NUMBER components in all, most of them in a SEQUENCE, a SET and a CHOICE. */

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

void makeMixture(TreeWriter &w, int count) {
    for (int i = 0; i < count; ++i) {
        TypeNode type = w.define(typeName(i), makeType(w, i, count)).line(i + 1);
        if (i % 10 == 0)
            type.entry();
    }
}

constexpr MainType structureKinds[] = {TYP_SEQ, TYP_SET, TYP_CHOICE};

TypeNode makeMember(TreeWriter &w, int i) {
    switch (i % 5) {
    case 0:
        return w.string(TYP_OCTSTR, 1, 20);
    case 1:
        return w.listOf(TYP_SEQOF, w.boolean(), 0, 9);
    case 2:
        return w.ref("Type_0");
    default:
        return w.integer(0, i);
    }
}

/* One structure of many components. */
TypeNode makeLarge(TreeWriter &w, MainType kind, int count) {
    std::vector<TypeNode> comps;
    for (int i = 0; i < count; ++i) {
        TypeNode comp = w.comp("member_" + std::to_string(i), makeMember(w, i)).implicit(i);
        comps.push_back(kind != TYP_CHOICE && i % 3 == 1 ? comp.optional() : comp);
    }
    return w.structure(kind, comps);
}

void makeComponents(TreeWriter &w, int count) {
    constexpr int parts = 10; /* three large structures of three parts each, the rest smaller */
    w.option("-TST=1:1");
    int type = 0;
    for (int i = 0; i < parts; ++i)
        w.define(typeName(type++), makeLarge(w, structureKinds[i % 3], count / parts / parts));
    for (MainType kind : structureKinds)
        w.define(typeName(type++), makeLarge(w, kind, count * 3 / parts)).entry();
}

} // namespace

int main(int argc, char **argv) {
    int count = argc >= 3 ? std::atoi(argv[1]) : 0;
    bool ofComponents = argc == 4 && std::strcmp(argv[3], "components") == 0;
    if (count < 1 || argc > 4 || (argc == 4 && !ofComponents)) {
        std::fputs("usage: maketree NUMBER FILE [components]\n", stderr);
        return 1;
    }
    TreeWriter w("Large_Module", "large");
    if (ofComponents)
        makeComponents(w, count);
    else
        makeMixture(w, count);
    if (!w.save(argv[2])) {
        std::perror(argv[2]);
        return 1;
    }
    return 0;
}
