#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/support/treewriter.h"

/* Writes a tree of information objects for measurements: makeobjects NUMBER-OF-OBJECTS FILE
   [separate]. The objects belong to 50 classes in turn, as in a module that lists its operations by
   subject; each has a number and a set of three numbers and, but for the first ones, an object of
   its class before it and a set of such objects. Every tenth object of a class is written inline in
   the set of the class. The tool writes all tables; with "separate" those of sets stand beside the
   rows. */

namespace {

constexpr int CLASSES = 50;
constexpr int INLINE_EVERY = 10;

struct ObjectClass {
    TypeNode code, codes, next, others, node;
    std::string name;
    std::string lastObject;
    std::vector<RecNr> elements;
};

ObjectClass makeClass(TreeWriter &w, int i) {
    ObjectClass c;
    c.name = "CLASS_" + std::to_string(i);
    c.code = w.valueField("code", w.integer(0, 65535));
    c.codes = w.setField("Codes", w.ref("Code"));
    c.next = w.valueField("next", w.ref(c.name)).optional();
    c.others = w.setField("Others", w.ref(c.name)).optional();
    c.node = w.define(c.name, w.objectClass({c.code, c.codes, c.next, c.others}));
    return c;
}

ValueNode makeObject(TreeWriter &w, const ObjectClass &c, int number) {
    ValueNode code = w.fieldValue(c.code, w.intValue(number));
    TypeNode three = w.ref("Code").constrained(w.range(1, 3));
    three->nodeFlags |= NODE_SET;
    ValueNode codes = w.fieldType(c.codes, three);
    if (c.lastObject.empty())
        return w.object(c.node, {code, codes});
    ValueNode next = w.fieldValue(c.next, w.valueRef(c.lastObject));
    TypeNode set = w.ref(c.name).constrained(w.single(w.valueRef(c.lastObject)));
    set->nodeFlags |= NODE_SET;
    ValueNode others = w.fieldType(c.others, set);
    return w.object(c.node, {code, codes, next, others});
}

void addObject(TreeWriter &w, ObjectClass &c, int i) {
    const int number = i / CLASSES;
    ValueNode object = makeObject(w, c, number);
    if (number % INLINE_EVERY == INLINE_EVERY - 1) {
        c.elements.push_back(w.single(object));
        return;
    }
    c.lastObject = "object_" + std::to_string(i);
    w.defineValue(c.lastObject, c.node, object);
    c.elements.push_back(w.single(w.valueRef(c.lastObject).governedBy(c.node)));
}

void defineAll(TreeWriter &w, const ObjectClass &c) {
    RecNr all = w.sub(SUB_UNION);
    RecNr *end = &w.subRecs[static_cast<std::size_t>(all) - 1].first;
    for (RecNr element : c.elements) {
        *end = element;
        end = &w.subRecs[static_cast<std::size_t>(element) - 1].next;
    }
    w.defineSet("All_" + c.name, w.ref(c.name), all);
}

} // namespace

int main(int argc, char **argv) {
    const bool separate = argc == 4 && std::strcmp(argv[3], "separate") == 0;
    const int count = argc == 3 || separate ? std::atoi(argv[1]) : 0;
    if (count < 1) {
        std::fputs("usage: makeobjects NUMBER-OF-OBJECTS FILE [separate]\n", stderr);
        return 1;
    }
    TreeWriter w("Large_Objects", "large");
    for (const char *option : {"-TAB=yes", "-TDEFS=yes", separate ? "-TABO=yes" : "-TABO=no"})
        w.option(option);
    w.define("Code", w.integer(0, 99));
    std::vector<ObjectClass> classes;
    for (int i = 0; i < CLASSES; ++i)
        classes.push_back(makeClass(w, i));
    for (int i = 0; i < count; ++i)
        addObject(w, classes[static_cast<std::size_t>(i % CLASSES)], i);
    for (const ObjectClass &c : classes)
        defineAll(w, c);
    if (!w.save(argv[2])) {
        std::perror(argv[2]);
        return 1;
    }
    return 0;
}
