#include "examples/modules.h"

/* stock.asn and shop.asn */

void makeStock(TreeWriter &w) {
    w.option("-TST=1:1"); /* orders.c prints values */
    w.exportsMarked();
    w.define("Article",
             w.sequence({
                 w.comp("number", w.ref("ArticleNumber")),
                 w.comp("description", w.string(TYP_IA5STR, 1, 40)).implicit(0).optional(),
                 w.comp("unit", w.ref("Unit")).defaultTo(w.itemOf("Unit", "piece")),
             }))
        .exported();
    w.define("ArticleNumber", w.string(TYP_OCTSTR, 6, 6));
    w.define("Unit", w.enumerated({{"piece", 0}, {"metre", 1}, {"kilogram", 2}, {"litre", 5}}))
        .exported();
    ValueNode limit = w.valueRef("maxAmount");
    ValueNode none = w.intValue(0);
    w.define("Amount",
             w.integer().constrained(w.rangeOf(none, limit, SUB_LOWER_CLOSED | SUB_UPPER_CLOSED)))
        .exported();
    TypeNode number = w.integer();
    w.defineValue("maxAmount", number, w.intValue(10000)).exported();
    w.define("Shelf_Count", w.ref("Amount")).exported();
    w.define("Address", w.sequence({
                            w.comp("street", w.string(TYP_IA5STR, 1, 60)),
                            w.comp("town", w.string(TYP_IA5STR, 1, 60)),
                            w.comp("country", w.string(TYP_PRISTR, 2, 2)).implicit(0).optional(),
                        }))
        .exported();
}

namespace {

void makeOrder(TreeWriter &w, const TreeWriter &stock) {
    w.define("Order", w.sequence({
                          w.comp("number", w.integer(0, 2147483647)),
                          w.comp("ship_to", w.ref(stock, "Address")),
                          w.comp("bill_to", w.ref(stock, "Address")).implicit(0).optional(),
                          w.comp("lines", w.listOf(TYP_SEQOF, w.ref("Line"), 1, 20)),
                          w.comp("state", w.ref("State")).defaultTo(w.itemOf("State", "open")),
                          w.marker(),
                      }))
        .application(1)
        .option(OPT_SAVE_EXTENSIONS)
        .entry();
    w.define("Line", w.sequence({
                         w.comp("article", w.ref(stock, "Article")),
                         w.comp("amount", w.ref(stock, "Amount")),
                         w.comp("unit", w.ref(stock, "Unit")).optional(),
                     }));
    w.define(
        "State",
        w.enumerated(
            {{"open", 0}, {"packed", 1}, {"sent", 2}, NamedNumber::extension(), {"returned", 3}}));
}

void makeAnswer(TreeWriter &w, const TreeWriter &stock) {
    w.define("Answer", w.choice({
                           w.comp("accepted", w.ref("Order")).explicitly(0),
                           w.comp("refused", w.ref("Reason")).implicit(1),
                           w.comp("later", w.ref(stock, "Amount")).implicit(2),
                       }))
        .entry();
    TypeNode code =
        w.numbered(w.integer(0, 255), {{"unknownArticle", 1}, {"outOfStock", 2}, {"notPaid", 3}});
    w.define("Reason",
             w.sequence({w.comp("code", code), w.comp("text", w.ref("UTF_Text")).optional()}));
    w.define("UTF_Text", w.string(TYP_BMPSTR, 1, 100));
}

} // namespace

void makeShop(TreeWriter &w, const TreeWriter &stock) {
    w.option("-TST=1:1");
    makeOrder(w, stock);
    w.define("Measure", w.ref(stock, "Unit")).entry();
    w.define("Place", w.ref(stock, "Address")).entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("Supply", w.ref(stock, "Shelf_Count").constrained(w.range(0, 500)));
    w.define("Customer", w.sequence({
                             w.componentsOf(w.ref(stock, "Address")),
                             w.comp("since", w.type(TYP_GENTIME)).implicit(1).optional(),
                         }))
        .entry();
    makeAnswer(w, stock);
    TypeNode shelfCount = w.ref(stock, "Shelf_Count");
    w.defineValue("fullShelf", shelfCount,
                  w.valueRefTo(w.import(stock), stock.findValue("maxAmount").nr));
}
