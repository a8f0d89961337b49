#include "model/typevalues.h"

#include "tests/model/modelsetup.h"

namespace {

std::string shownEnd(AsnValue *value) {
    EXPECT_EQ(isPlusInfinity(value) || isMinusInfinity(value), getTypeOfValue(value) == nullptr);
    return getValueMainType(value) == TYP_REAL ? realValueStri(value) : integerValueStri(value);
}

/* "[1 5)" for a range with a closed lower and an open upper end. */
std::string endpointsShown(AsnType *type) {
    std::string text;
    forTypeEndpoints(
        type, [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
            text += (lowClosed ? "[" : "(") + shownEnd(low) + " " + shownEnd(high) +
                    (highClosed ? "]" : ")");
        });
    return text;
}

TEST(EndpointValues, OfEachSortOfType) {
    ModelSetup m;
    TreeWriter w("Ends", "ends");
    const ValueNode half = w.realValue(5, 10, -1);
    w.define("Real", w.real().constrained(w.rangeOf(0, half, SUB_UPPER_CLOSED)));
    w.define("AnyReal", w.real());
    w.define("Int", w.integer(-3, 5));
    w.define("Free", w.integer());
    w.define("Text", w.string(TYP_IA5STR, 1, 8));
    w.define("AnyText", w.string(TYP_OCTSTR));
    w.define("List", w.listOf(TYP_SEQOF, w.null(), 2, MAX_VALUE));
    w.define("Enum", w.enumerated({{"a", 7}, {"b", 1}, NamedNumber::extension(), {"c", 9}}));
    w.define("NoItems", w.enumerated({}));
    w.define("Bool", w.boolean());
    const RecNr text = w.textValue(TYP_IA5STR, "a");
    w.define("Odd", w.integer().constrained(w.rangeOf(text, text, SUB_LOWER_CLOSED)));
    m.load(w);
    m.expectTypes(endpointsShown, {{"Real", "(MINUS-INFINITY {5, 10, -1}]"},
                                   {"AnyReal", "[MINUS-INFINITY PLUS-INFINITY]"},
                                   {"Int", "[-3 5]"},
                                   {"Free", "[MINUS-INFINITY PLUS-INFINITY]"},
                                   {"Text", "[1 8]"},
                                   {"AnyText", "(MINUS-INFINITY PLUS-INFINITY)"},
                                   {"Enum", "(1 9)"},
                                   {"NoItems", "(PLUS-INFINITY MINUS-INFINITY)"},
                                   {"Bool", ""},
                                   /* The record that the walk before left current doesn't count. */
                                   {"Int", "[-3 5]"},
                                   {"List", "[2 PLUS-INFINITY)"},
                                   /* An end that cannot be worked out. */
                                   {"Odd", "(MINUS-INFINITY PLUS-INFINITY)"}});
}

} // namespace
