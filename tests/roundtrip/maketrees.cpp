#include <cstdio>

#include "tests/support/treewriter.h"

/* maketrees [OPTION ...]: trees of types in forms for which ASN.1 text has no words, with general
   options, in the working directory. */

namespace {

/* Values kept as encodings in each place, with tags that are those of what is around them. Both
   ways of saying so to the tool have to come to the same octets: names end in their number. */

using Framing = TypeNode (*)(TypeNode);

struct FrameTypes {
    TreeWriter &w;
    Framing frame;

    TypeNode pair() const {
        return frame(w.sequence({w.comp("a", w.integer(0, 255)), w.comp("b", w.integer(0, 255))}));
    }
    TypeNode list() const { return frame(w.listOf(TYP_SEQOF, w.integer(0, 255), 0, 9).asArray()); }
    TypeNode number() const { return frame(w.integer(0, 255)); }
    TypeNode text() const { return frame(w.string(TYP_IA5STR)); }
    TypeNode pick() const {
        return frame(w.choice({w.comp("yes", w.null()), w.comp("no", w.boolean()).implicit(0)}));
    }
};

void makeFramesOf(const FrameTypes &types, const std::string &nr) {
    TreeWriter &w = types.w;
    w.define("Only" + nr, w.sequence({w.comp("x", types.pair())}));
    w.define("Only_List" + nr, w.sequence({w.comp("x", types.list())}));
    w.define("Some" + nr, w.listOf(TYP_SEQOF, types.pair(), 0, 9).asArray());
    w.define("Some_Lists" + nr, w.listOf(TYP_SEQOF, types.list()).asList());
    w.define("Wrapped" + nr, w.sequence({w.comp("x", types.pair()).explicitly(0).explicitly(0),
                                         w.comp("n", types.number()).explicitly(1).explicitly(1),
                                         w.comp("l", types.list()).explicitly(2).implicit(2)}));
    w.define("Taken" + nr, w.set({w.comp("l", types.list()).implicit(40),
                                  w.comp("t", types.text()).implicit(1).optional(),
                                  w.comp("x", types.pair()).implicit(2).optional()}));
    w.define("Either" + nr, w.choice({w.comp("x", types.pair()), w.comp("n", types.number()),
                                      w.comp("l", types.list()).explicitly(0),
                                      w.comp("p", types.pick()).explicitly(1)}));
    w.define("Picks" + nr, w.sequence({w.comp("one", types.pick()),
                                       w.comp("two", types.pick()).explicitly(0).optional(),
                                       w.comp("three", types.pick()).explicitly(3).explicitly(3)}));
    w.define("Pair" + nr, types.pair());
    w.define("Tagged_Pair" + nr, types.pair().explicitly(16).implicit(16));
    w.define("List" + nr, types.list().implicit(3));
    w.define("Number" + nr, types.number().explicitly(2));
    w.define("Pick" + nr, types.pick());
    w.define("Tagged_Pick" + nr, types.pick().explicitly(4));
    w.define("Inner" + nr,
             w.sequence({w.comp("x", w.ref("Pair" + nr)),
                         w.comp("y", w.any().form(VF_FRM)).explicitly(0).explicitly(0),
                         w.comp("s", types.frame(w.string(TYP_OCTSTR, 1, 3))),
                         w.comp("e", types.frame(w.set({})))}));
}

void makeKept(TreeWriter &w) {
    makeFramesOf({w, [](TypeNode type) { return type.form(VF_FRM); }}, "1");
    makeFramesOf({w, [](TypeNode type) { return type.option(OPT_FRAME); }}, "2");
    /* Whether its tag has been looked at when an ANY is decoded depends on its place. */
    const auto any = [&] { return w.any().form(VF_FRM); };
    w.define("Any_After",
             w.sequence({w.comp("n", w.boolean()).optional(), w.comp("x", any())}));
    w.define("Any_Of", w.choice({w.comp("n", w.boolean()), w.comp("x", any())}));
    w.define("Any_Tagged", w.listOf(TYP_SEQOF, any().explicitly(0)).asList());
}

void makeOther(TreeWriter &w) {
    const auto pair = [&] {
        return std::vector{w.comp("a", w.integer(0, 255)).implicit(0),
                           w.comp("b", w.sequence({w.comp("x", w.boolean())})).implicit(1)};
    };
    w.define("Clean_Flag", w.boolean()).option(OPT_NORMALISE_TRUE);
    w.define("Exact", w.real().form(VF_REAL128));
    w.define("Segments", w.string(TYP_OCTSTR).form(VF_LIST));
    w.define("Digest", w.string(TYP_OCTSTR, 32, 32)).form(VF_DYNS0);
    w.define("Fixed_Text", w.string(TYP_BMPSTR, 20, 20)).form(VF_BMPSTR0);
    w.define("Outside", w.type(TYP_EXTERNAL_1990));
    TypeNode housed = w.structure(TYP_SEQ, pair());
    w.define("All_Housed", housed).option(OPT_COMPS_AS_POINTERS);
    TypeNode behind = w.structure(TYP_CHOICE, pair());
    w.define("All_Behind", behind).option(OPT_COMPS_POINTER);
}

/* Every type is an entry type, so that a program can go through all of them by their entry tables.
 */
bool save(TreeWriter &w, const char *file, int nrOfOptions, char **options) {
    for (const std::string_view option :
         std::vector<std::string_view>(options, options + nrOfOptions))
        option.starts_with("-BEO=") ? w.backendOption(option) : w.option(option);
    for (auto &[name, nr] : w.typeNames)
        TypeNode{&w, nr}.entry();
    return w.save(file);
}

} // namespace

int main(int argc, char **argv) {
    TreeWriter kept("Kept_Values", "kept"), other("Other_Forms", "other");
    kept.option("-TPREF=Kept");
    other.option("-TPREF=Other");
    makeKept(kept);
    makeOther(other);
    if (save(kept, "kept.stx", argc - 1, argv + 1) && save(other, "other.stx", argc - 1, argv + 1))
        return 0;
    std::fputs("maketrees: a tree can't be written\n", stderr);
    return 1;
}
