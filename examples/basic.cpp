#include "examples/modules.h"

/* basic.asn */
void makeBasic(TreeWriter &w) {
    w.define("Msg", w.sequence({
                        w.comp("id", w.integer(0, 255)),
                        w.comp("name", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional(),
                        w.comp("ok", w.boolean()),
                    }))
        .entry();
    w.define("Pick", w.choice({
                         w.comp("a", w.integer(0, 255)).implicit(0),
                         w.comp("b", w.boolean()).implicit(1),
                     }))
        .entry();
    w.define("Vals", w.listOf(TYP_SEQOF, w.integer(0, 255), 1, 9)).entry();
    w.define("Node", w.sequence({
                         w.comp("value", w.integer(0, 255)),
                         w.comp("next", w.ref("Node")).optional(),
                     }))
        .entry();
}
