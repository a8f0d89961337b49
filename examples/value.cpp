#include "examples/modules.h"

/* value.asn, in its order; what its comments say stands here as forms. */

namespace {

constexpr std::uint8_t CLOSED = SUB_LOWER_CLOSED | SUB_UPPER_CLOSED;

RecNr one(TreeWriter &w, std::int64_t number) {
    return w.single(w.intValue(number));
}

/* Elements of a braced list are made from left to right. */
TypeNode number(TreeWriter &w, std::string_view name, RecNr constraint) {
    return w.define(name, w.integer().constrained(constraint));
}

void makeSimpleRanges(TreeWriter &w) {
    w.define("Percent", w.numbered(w.integer(0, 100), {{"none", 0}, {"all", 100}}));
    number(w, "Holes", w.sub(SUB_UNION, {w.range(0, 9), w.range(20, 29), one(w, 40)}));
    RecNr low = w.intValue(0), high = w.intValue(100);
    number(w, "Inside", w.rangeOf(low, high, 0)).endpoints(1, 99);
    number(w, "Positive", w.range(1, MAX_VALUE));
    number(w, "Below", w.range(MIN_VALUE, 0));
    w.define("Upper_Half", w.ref("Percent").constrained(w.range(50, MAX_VALUE)));
    RecNr fifty = w.intValue(50);
    w.define("Lower_Half", w.ref("Percent").constrained(w.rangeOf(0, fifty, SUB_LOWER_CLOSED)));
}

void makeNumberSets(TreeWriter &w, const TreeWriter &stock) {
    number(w, "Both", w.sub(SUB_INTERSECTION, {w.range(0, 50), w.range(25, 75)}));
    w.define("Not_Half", w.ref("Percent").constrained(w.sub(SUB_ALL_EXCEPT, {one(w, 50)})));
    number(w, "Edges", w.sub(SUB_EXCEPT, {w.range(0, 100), w.range(40, 60)}));
    const TypeNode contained = w.findType("Percent");
    number(w, "Some_More", w.sub(SUB_UNION, {w.includes(contained), one(w, 200)}));
    RecNr least = w.valueRefTo(w.import(stock), stock.findValue("maxAmount").nr);
    RecNr most = w.intValue(20000);
    number(w, "Big_Amount", w.rangeOf(least, most, CLOSED));
    number(w, "Growing_Range", w.sub(SUB_UNION, {w.range(0, 9), one(w, 20)})).extensible();
    w.define("Huge", w.integer().form(VF_I64));
    RecNr zero = w.realValue(0, 10, 0), unit = w.realValue(1, 10, 0);
    w.define("Ratio", w.real().constrained(w.rangeOf(zero, unit, CLOSED)));
    w.define("Light", w.enumerated({{"red", 0}, {"yellow", 1}, {"green", 2}}));
    RecNr red = w.single(w.itemOf("Light", "red"));
    RecNr yellow = w.single(w.itemOf("Light", "yellow"));
    w.define("Warm", w.ref("Light").constrained(w.sub(SUB_UNION, {red, yellow})));
}

TypeNode sized(TreeWriter &w, TypeNode type, RecNr size) {
    return type.constrained(w.size(size));
}

void makeSizes(TreeWriter &w) {
    w.define("Switches",
             w.numbered(w.string(TYP_BITSTR, 2, 5), {{"first", 0}, {"second", 1}, {"last", 4}}));
    RecNr digest = w.sub(SUB_UNION, {one(w, 4), w.range(8, 16)});
    w.define("Digest", sized(w, w.string(TYP_OCTSTR), digest)).entry();

    TypeNode word = w.string(TYP_IA5STR, 1, 8);
    RecNr first = w.textValue(TYP_IA5STR, "a"), last = w.textValue(TYP_IA5STR, "z");
    RecNr letters = w.rangeOf(first, last, CLOSED);
    RecNr hyphen = w.single(w.textValue(TYP_IA5STR, "-"));
    w.define("Word", word.constrained(w.alphabet(w.sub(SUB_UNION, {letters, hyphen})))).entry();
    RecNr vowels = w.alphabet(w.single(w.textValue(TYP_VISSTR, "aeiou")));
    w.define("Vowels", w.string(TYP_VISSTR).constrained(vowels));
    RecNr yes = w.single(w.textValue(TYP_IA5STR, "yes"));
    RecNr no = w.single(w.textValue(TYP_IA5STR, "no"));
    w.define("Reply", w.string(TYP_IA5STR).constrained(w.sub(SUB_UNION, {yes, no})));
    w.define("Short_Word", w.ref("Word").constrained(w.size(1, 4)));
    RecNr open = w.sub(SUB_UNION, {w.range(1, 4), w.range(6, 8)});
    w.define("Open_Size", sized(w, w.string(TYP_OCTSTR), open)).extensible();
    RecNr count = w.sub(SUB_UNION, {w.range(0, 3), one(w, 5)});
    w.define("Marks", sized(w, w.listOf(TYP_SEQOF, w.ref("Percent")), count)).entry();
    RecNr low = w.sub(SUB_WITH_COMPONENT, {w.range(0, 10)});
    w.define("Low_Marks", w.ref("Marks").constrained(low));
}

void makeStructures(TreeWriter &w, const TreeWriter &stock) {
    const TypeNode percent = w.comp("percent", w.ref("Percent").constrained(w.range(10, 20)));
    const TypeNode holes = w.comp("holes", w.ref("Holes")).optional();
    const TypeNode word = w.comp("word", w.ref("Word").constrained(w.size(2, 2)));
    w.define("Limits",
             w.sequence({
                 percent,
                 holes,
                 w.comp("light", w.ref("Light")).implicit(0).defaultTo(w.itemOf("Light", "yellow")),
                 word.implicit(1).optional(),
                 w.comp("marks", w.ref("Marks")).implicit(2),
                 w.comp("amount", w.ref(stock, "Amount")).implicit(3).defaultTo(w.intValue(5)),
                 w.marker(),
             }))
        .entry();
    RecNr fifteen = one(w, 15);
    RecNr parts =
        w.withComponents({{percent, fifteen, 0}, {word, 0, SUB_ABSENT}, {holes, 0, SUB_PRESENT}});
    w.define("No_Word", w.ref("Limits").constrained(parts));
}

void makeNumberValues(TreeWriter &w, const TreeWriter &stock) {
    const auto value = [&](const char *name, TypeNode type, ValueNode is) {
        w.defineValue(name, type, is);
    };
    value("yes", w.boolean(), w.boolValue(true));
    value("half", w.ref("Percent"), w.intValue(50));
    value("most", w.ref("Percent"), w.itemOf("Percent", "all"));
    value("again", w.ref("Percent"), w.valueRef("half"));
    value("greatest", w.ref(stock, "Amount"),
          w.valueRefTo(w.import(stock), stock.findValue("maxAmount").nr));
    value("large", w.integer(0, 4294967295), w.intValue(4000000000));
    value("lowest", w.ref("Huge"), w.intValue(MIN_VALUE + 1));
    value("wide", w.ref("Huge"), w.intValue((std::int64_t{1} << 53) + 1));
    value("endless", w.ref("Huge"), w.intValue(MAX_VALUE));
    value("stop", w.ref("Light"), w.itemOf("Light", "red"));
    value("third", w.ref("Ratio"), w.realValue(333, 10, -3));
    value("nothing", w.ref("Ratio"), w.realValue(0, -1, 0));
    value("limitless", w.real(), w.realValue(-1, -1, 0));
}

void makeStringValues(TreeWriter &w) {
    const auto text = [&](const char *name, MainType kind, const char *is) {
        w.defineValue(name, w.string(kind), w.textValue(kind, is));
    };
    w.defineValue("pattern", w.string(TYP_BITSTR), w.bitsValue("010011"));
    w.defineValue("nibbles", w.string(TYP_BITSTR), w.hexValue("A5F"));
    w.defineValue(
        "outer", w.ref("Switches"),
        w.listValue(TYP_BITSTR, {w.itemOf("Switches", "first"), w.itemOf("Switches", "last")}));
    w.defineValue("octets", w.ref("Digest"), w.hexValue("0A0B0C0D"));
    w.defineValue("odd_octets", w.ref("Digest"), w.bitsValue("01010101"));
    text("greeting", TYP_IA5STR, "good morning");
    text("price_tag", TYP_PRISTR, "1.50");
    text("digits", TYP_NUMSTR, "12 34");
}

void makeOtherValues(TreeWriter &w) {
    const auto arc = [&](std::int64_t number) { return w.intValue(number); };
    w.defineValue("company", w.type(TYP_OBJID),
                  w.objectIdentifier(
                      {arc(1).named("iso"), arc(2).named("member_body"), arc(840), arc(113549)}));
    w.defineValue("product", w.type(TYP_OBJID),
                  w.objectIdentifier({w.valueRef("company"), arc(7)}));
    w.defineValue("moment", w.type(TYP_GENTIME), w.timeValue(TYP_GENTIME, "20021231235959.5Z"));
    w.defineValue("short_moment", w.type(TYP_UTCTIME), w.timeValue(TYP_UTCTIME, "0207121230+0200"));
    w.defineValue("null_value", w.null(), w.nullValue());
    w.defineValue("title", w.string(TYP_BMPSTR), w.text16Value(u"Title"));
    const ValueNode percent = arc(15).named("percent");
    const ValueNode light = w.itemOf("Light", "red").named("light");
    const ValueNode marks = w.listValue(TYP_SEQOF, {arc(1), arc(2)}).named("marks");
    w.defineValue("limits", w.ref("Limits"), w.listValue(TYP_SEQ, {percent, light, marks}));
}

} // namespace

void makeValue(TreeWriter &w, const TreeWriter &stock) {
    makeSimpleRanges(w);
    makeNumberSets(w, stock);
    makeSizes(w);
    makeStructures(w, stock);
    makeNumberValues(w, stock);
    makeStringValues(w);
    makeOtherValues(w);
}
