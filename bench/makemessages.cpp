#include <cstdio>

#include "tests/support/treewriter.h"

/* Writes the tree of messages.asn: makemessages FILE. */

namespace {

TypeNode octets(TreeWriter &w) {
    return w.string(TYP_OCTSTR, 0, 40);
}

TypeNode number(TreeWriter &w) {
    return w.integer(INT32_MIN, INT32_MAX);
}

void makeHints(TreeWriter &w) {
    std::vector<TypeNode> hints;
    for (const char *name : {"title", "given", "family", "street", "town", "region", "country",
                             "phone", "mail", "company", "division", "room"})
        hints.push_back(w.comp(name, w.string(TYP_IA5STR, 1, 32))
                            .implicit(static_cast<int>(hints.size()))
                            .optional());
    w.define("Hints", w.structure(TYP_SEQ, hints));
}

void makeFilter(TreeWriter &w) {
    w.define("Filter", w.choice({w.comp("every", w.ref("Terms")).implicit(0),
                                 w.comp("some", w.ref("Terms")).implicit(1),
                                 w.comp("none", w.null()).implicit(2)}));
    w.define("Terms", w.listOf(TYP_SEQOF, w.ref("Term"), 1, 4).asArray());
    w.define("Term", w.choice({w.comp("equal", w.ref("Pair")).implicit(3),
                               w.comp("part", w.ref("Part")).implicit(4),
                               w.comp("present", octets(w)).implicit(7)}));
    w.define("Pair", w.sequence({w.comp("name", octets(w)), w.comp("text", octets(w))}));
    TypeNode pieces = w.listOf(TYP_SEQOF, w.ref("Piece"), 1, 3).asArray();
    w.define("Part", w.sequence({w.comp("name", octets(w)), w.comp("pieces", pieces)}));
    w.define("Piece", w.choice({w.comp("first", octets(w)).implicit(0),
                                w.comp("middle", octets(w)).implicit(1),
                                w.comp("final", octets(w)).implicit(2)}));
}

void makeSearch(TreeWriter &w) {
    TypeNode find = w.comp("find", w.ref("Find")).application(3);
    TypeNode operation = w.choice({find, w.comp("stop", w.null()).application(4)});
    w.define("Search", w.sequence({w.comp("number", w.integer(0, INT32_MAX)),
                                   w.comp("operation", operation)}))
        .entry();
    w.define("Find",
             w.sequence({w.comp("base", w.string(TYP_OCTSTR, 0, 100)),
                         w.comp("scope", w.enumerated({{"here", 0}, {"below", 1}, {"all", 2}})),
                         w.comp("limit", w.integer(0, INT32_MAX)),
                         w.comp("filter", w.ref("Filter")), w.comp("hints", w.ref("Hints"))}));
    makeFilter(w);
    makeHints(w);
}

void makeLevels(TreeWriter &w) {
    for (int i = 1; i <= 24; ++i) {
        TypeNode deeper = i == 1 ? w.integer(0, 255) : w.ref("Level" + std::to_string(i - 1));
        w.define("Level" + std::to_string(i), w.choice({w.comp("deeper", deeper).explicitly(0),
                                                        w.comp("truth", w.boolean()).implicit(1)}))
            .entry();
    }
}

} // namespace

int main(int argc, char **argv) {
    TreeWriter w("Measured_Messages", "bench");
    w.option("-COD=1:1");
    w.option("-DEFINITELEN=definite");
    w.define("Small", w.sequence({
                          w.comp("id", w.integer(0, 255)),
                          w.comp("name", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional(),
                          w.comp("ok", w.boolean()),
                      }))
        .entry();
    w.define("Numbers", w.listOf(TYP_SEQOF, number(w), 0, 1000).asArray()).entry();
    w.define("Chain", w.listOf(TYP_SEQOF, number(w)).asList()).entry();
    makeSearch(w);
    makeLevels(w);
    if (argc == 2 && w.save(argv[1]))
        return 0;
    std::fputs("usage: makemessages FILE\n", stderr);
    return 1;
}
