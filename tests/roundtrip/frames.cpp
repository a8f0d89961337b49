#include "tests/roundtrip/frames.h"

/* Values kept as encodings in each place, with tags that are those of what is around them. Both
   ways of saying so to the tool have to come to the same octets: names end in their number. */

namespace {

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
                         w.comp("y", w.any().form(VF_FRM)).explicitly(0).explicitly(0)}));
}

} // namespace

void makeFrames(TreeWriter &w) {
    makeFramesOf({w, [](TypeNode type) { return type.form(VF_FRM); }}, "1");
    makeFramesOf({w, [](TypeNode type) { return type.option(OPT_FRAME); }}, "2");
}
