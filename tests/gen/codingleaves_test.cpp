#include <gtest/gtest.h>

#include "tests/support/codingcase.h"

/* Functions of values without components: each form, with its bounds and checks. */

namespace {

constexpr std::int64_t BIG = std::int64_t{1} << 40;
constexpr std::uint8_t CLOSED = SUB_LOWER_CLOSED | SUB_UPPER_CLOSED;

RecNr one(TreeWriter &w, int n) {
    return w.single(w.intValue(n));
}

TypeNode odd(TreeWriter &w, TypeNode type) {
    return type.constrained(w.sub(SUB_UNION, {one(w, 1), one(w, 3), w.range(5, 9)}));
}

void integers(TreeWriter &w) {
    w.define("Flags", w.sequence({w.comp("plain", w.boolean()),
                                  w.comp("clean", w.boolean().option(OPT_NORMALISE_TRUE))}));
    w.define(
        "Numbers",
        w.sequence({w.comp("ui8", w.integer(0, 255)), w.comp("ui16", w.integer(1, 65535)),
                    w.comp("ui32", w.integer(0, 4294967295)),
                    w.comp("ui64", w.integer(0, BIG).form(VF_UI64)),
                    w.comp("si8", w.integer(-100, 100)), w.comp("si16", w.integer(-1000, 1000)),
                    w.comp("si32", w.integer()), w.comp("si64", w.integer(-BIG, BIG)),
                    w.comp("open64", w.integer().form(VF_I64))}));
    w.define("Holes", w.sequence({w.comp("odd", odd(w, w.integer()).form(VF_UI8)),
                                  w.comp("named", w.numbered(w.integer(1, 6), {{"worst", 1}}))}));
    w.define("Extensible", odd(w, w.integer()).form(VF_UI8).extensible()).entry();
}

void enumerations(TreeWriter &w) {
    const NamedNumber marker = NamedNumber::extension();
    w.define("Enums",
             w.sequence({w.comp("simple", w.enumerated({{"red", 0}, {"green", 1}})),
                         w.comp("holes", w.enumerated({{"a", 1}, {"b", 3}, {"c", 5}})),
                         w.comp("wide", w.enumerated({{"low", 0}, {"high", BIG}})),
                         w.comp("open", w.enumerated({{"stop", 0}, {"go", 1}, marker})),
                         w.comp("openHoles", w.enumerated({{"stop", 0}, {"go", 2}, marker}))}));
    w.define("Top", w.enumerated({{"stop", 0}, {"go", 2}, marker})).entry();
}

void reals(TreeWriter &w) {
    const auto between = [&](RecNr low, RecNr high, std::uint8_t closed) {
        return w.real().constrained(w.rangeOf(low, high, closed));
    };
    w.define("Reals",
             w.sequence({w.comp("small", w.real().form(VF_REAL32)), w.comp("plain", w.real()),
                         w.comp("large", w.real().form(VF_REAL128)),
                         w.comp("positive", between(w.realValue(0, 10, 0), 0, CLOSED)),
                         w.comp("open", between(w.realValue(15, 10, -1), w.realValue(2, 10, 3), 0)),
                         w.comp("below", between(0, w.realValue(1, 10, 0), SUB_LOWER_CLOSED))}));
    w.define("Top", w.real()).entry();
}

/* One string in each way that it can be held. */
void stringForms(TreeWriter &w) {
    const auto text = [&](std::int64_t low, std::int64_t high) {
        return w.string(TYP_OCTSTR, low, high);
    };
    w.define("Octets",
             w.sequence({w.comp("stas0", text(16, 16)), w.comp("stas8", text(0, 200)),
                         w.comp("stas16", text(1, 256)),
                         w.comp("stas", text(0, 300).form(VF_STAS, VF_UI32)),
                         w.comp("dyns0", text(32, 32).form(VF_DYNS0)),
                         w.comp("dyns8", text(0, 100).form(VF_DYNS8, VF_UI8)),
                         w.comp("dyns16", text(2, 4000)), w.comp("dyns", w.string(TYP_OCTSTR)),
                         w.comp("segments", w.string(TYP_OCTSTR).form(VF_LIST))}));
    w.define("Bits", w.sequence({w.comp("fixed", w.string(TYP_BITSTR, 12, 12)),
                                 w.comp("counted", w.string(TYP_BITSTR, 0, 20)),
                                 w.comp("dynamic", w.string(TYP_BITSTR))}));
    w.define("Wide",
             w.sequence({w.comp("bmp0", w.string(TYP_BMPSTR, 500, 500).form(VF_BMPSTR0)),
                         w.comp("bmp8", w.string(TYP_BMPSTR, 0, 9).form(VF_BMPSTR8, VF_UI8)),
                         w.comp("bmp16", w.string(TYP_BMPSTR, 0, 1000)),
                         w.comp("bmp", w.string(TYP_BMPSTR))}));
    w.define("Top", text(1, 8)).entry();
}

void stringKinds(TreeWriter &w) {
    std::vector<TypeNode> comps;
    const struct {
        const char *name;
        MainType kind;
    } kinds[] = {
        {"numeric", TYP_NUMSTR},  {"printable", TYP_PRISTR}, {"teletex", TYP_TELSTR},
        {"videotex", TYP_VIDSTR}, {"visible", TYP_VISSTR},   {"ia5", TYP_IA5STR},
        {"graphic", TYP_GRASTR},  {"general", TYP_GENSTR},   {"bmp", TYP_BMPSTR},
    };
    for (const auto &kind : kinds)
        comps.push_back(w.comp(kind.name, w.string(kind.kind, 0, 80)));
    comps.push_back(w.comp("descriptor", w.string(TYP_OBJDESCR)));
    w.define("Kinds", w.structure(TYP_SEQ, comps));
}

void stringChecks(TreeWriter &w) {
    const auto letters = [&](const char *low, const char *high) {
        const RecNr from = w.textValue(TYP_IA5STR, low);
        return w.alphabet(w.rangeOf(from, w.textValue(TYP_IA5STR, high), CLOSED));
    };
    const auto sizes = [&] { return w.size(w.sub(SUB_UNION, {one(w, 2), w.range(5, 9)})); };
    w.define(
        "Checked",
        w.sequence({w.comp("letters", w.string(TYP_IA5STR, 1, 8).constrained(letters("a", "c"))),
                    w.comp("fixed", w.string(TYP_IA5STR, 3, 3).constrained(letters("0", "9"))),
                    w.comp("long", w.string(TYP_IA5STR).constrained(letters("#", "["))),
                    w.comp("sizes", w.string(TYP_IA5STR).constrained(sizes())),
                    w.comp("value", w.string(TYP_IA5STR, 0, 9)
                                        .constrained(w.single(w.textValue(TYP_IA5STR, "on")))),
                    w.comp("yes", w.boolean().constrained(w.single(w.boolValue(true))))}));
    w.define("Top", w.string(TYP_IA5STR, 1, 8).constrained(letters("x", "z"))).entry();
    w.define("Extensible", w.string(TYP_IA5STR, 1, 8).extensible()).entry();
}

void singleForms(TreeWriter &w) {
    w.define("Others",
             w.sequence({w.comp("nothing", w.null()), w.comp("oid", w.type(TYP_OBJID)),
                         w.comp("moment", w.type(TYP_GENTIME)), w.comp("utc", w.type(TYP_UTCTIME)),
                         w.comp("outside", w.type(TYP_EXTERNAL_1990)),
                         w.comp("newOutside", w.type(TYP_EXTERNAL_1994)),
                         w.comp("empty", w.sequence({})), w.comp("none", w.set({}))}));
    w.define("Nothing", w.null()).entry();
    w.define("Oid", w.type(TYP_OBJID)).entry();
    w.define("Empty", w.sequence({})).entry();
}

void unsupported(TreeWriter &w) {
    w.define("Unknown", w.sequence({w.comp("presented", w.type(TYP_EMB_PDV)),
                                    w.comp("universal", w.string(TYP_UNISTR)),
                                    w.comp("instance", w.type(TYP_INSTANCE_OF)),
                                    w.comp("known", w.boolean())}))
        .entry();
}

/* ANY and open types in each place, as frames and as functions of the application. */
void anything(TreeWriter &w) {
    const TypeNode kind = w.comp("kind", w.integer(0, 9));
    w.define("Any", w.sequence({kind, w.comp("plain", w.any()), w.comp("mayBe", w.any()).optional(),
                                w.comp("then", w.boolean()), w.comp("tagged", w.any()).implicit(0),
                                w.comp("taggedMayBe", w.openType()).explicitly(1).optional(),
                                w.comp("byKind", w.anyDefinedBy(kind)).explicitly(2)}))
        .entry();
    w.define("Opens", w.listOf(TYP_SEQOF, w.openType()).asList());
    w.define("AnyArray", w.listOf(TYP_SETOF, w.any().explicitly(3), 1, 9).asArray());
    w.define("Choice", w.choice({w.comp("a", w.any()), w.comp("b", w.openType()).explicitly(40)}));
    w.define("Top", w.any()).entry();
    w.define("TaggedTop", w.openType().explicitly(5)).entry();
}

void frames(TreeWriter &w) {
    const auto frame = [](TypeNode type) { return type.option(OPT_FRAME); };
    w.define("Frames",
             w.sequence({w.comp("number", frame(w.integer())),
                         w.comp("text", frame(w.string(TYP_IA5STR))).implicit(31),
                         w.comp("list", frame(w.listOf(TYP_SEQOF, w.null()))).explicitly(0),
                         w.comp("structure", frame(w.sequence({w.comp("x", w.null())}))).optional(),
                         w.comp("pick", frame(w.choice({w.comp("x", w.null())}))).explicitly(1)}));
    w.define("Top", frame(w.integer())).entry();
    w.define("TopList", frame(w.listOf(TYP_SEQOF, w.null())).explicitly(2)).entry();
}

void skipped(TreeWriter &w) {
    w.define(
        "Skips",
        w.sequence(
            {w.comp("ignored", w.integer().skipped(0)),
             w.comp("refused", w.integer().skipped(1)).optional(),
             w.comp("wide", w.sequence({w.comp("x", w.null())}).skipped(0)).implicit(31),
             w.comp("chain", w.string(TYP_OCTSTR).skipped(0)).explicitly(1).explicitly(2),
             w.comp("pick", w.choice({w.comp("a", w.null()).implicit(7), w.comp("b", w.boolean())})
                                .skipped(0)),
             w.comp("any", w.any().skipped(0))}));
    w.define("SkippedList", w.listOf(TYP_SEQOF, w.null().skipped(0)).asList());
    w.define("Ignored", w.integer().skipped(0)).entry();
    w.define("Refused", w.sequence({w.comp("x", w.null())}).skipped(1)).entry();
}

/* A definition that is the type of a class's field is a type of its own, named as itself. */
void fieldTypes(TreeWriter &w) {
    const TypeNode id = w.valueField("id", w.integer(0, 255));
    const TypeNode pair = w.valueField("pair", w.sequence({w.comp("a", w.boolean())}));
    const TypeNode kind = w.typeField("Kind");
    w.define("OP", w.objectClass({id, pair, kind}));
    w.define("Id", w.classField(w.ref("OP"), {id})).entry();
    w.define("Pair", w.classField(w.ref("OP"), {pair})).entry();
    w.define("Kind", w.classField(w.ref("OP"), {kind}));
    w.define("Same", w.ref("Pair")).entry();
    w.define("User", w.sequence({w.comp("i", w.ref("Id")), w.comp("p", w.ref("Same")).optional(),
                                 w.comp("q", w.classField(w.ref("OP"), {pair}))}));
}

const CodingCase cases[] = {
    {"integers", integers, {}, {}, ALL_AND_TYPES},
    {"enumerations", enumerations, {}, {}, ALL_AND_TYPES},
    {"reals", reals, {}, {}, ALL},
    {"reals_decimals", reals, {"-DECIMALS=3"}},
    {"stringforms", stringForms, {}, {}, ALL_AND_TYPES},
    {"stringkinds", stringKinds, {}, {}, ALL_AND_TYPES},
    {"stringchecks", stringChecks},
    {"singleforms", singleForms, {}, {}, ALL_AND_TYPES},
    {"unsupported", unsupported, {}, {""}, ALL},
    {"any_frames", anything, {}, {}, ALL},
    {"any_functions", anything, {"-C-GENERATION=ANY-FUNCTIONS"}, {}, ALL},
    {"frames", frames, {}, {}, ALL},
    {"skipped", skipped, {}, {}, ALL},
    {"fieldtypes", fieldTypes, {}, {}, ALL_AND_TYPES},
};

class CodingLeaves : public testing::TestWithParam<CodingCase> {};

TEST_P(CodingLeaves, AreWrittenAsExpectedAndCompile) {
    EXPECT_EQ(faultsOf(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Forms, CodingLeaves, testing::ValuesIn(cases),
                         [](const auto &row) { return std::string(row.param.name); });

} // namespace
