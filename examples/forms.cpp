#include "examples/modules.h"

/* forms.asn, in its order; what its comments say stands here as options and forms. */

namespace {

constexpr std::int64_t BIG = std::int64_t{1} << 53;

TypeNode number(TreeWriter &w, std::string_view name, std::int64_t low, std::int64_t high) {
    return w.define(name, w.integer(low, high));
}

TypeNode string(TreeWriter &w, std::string_view name, MainType kind, std::int64_t low,
                std::int64_t high) {
    return w.define(name, w.string(kind, low, high));
}

void makeNumbers(TreeWriter &w) {
    w.define("Flag", w.boolean());
    w.define("Clean_Flag", w.boolean()).option(OPT_NORMALISE_TRUE).entry();
    number(w, "Byte", 0, 255).entry();
    number(w, "Word", 0, 65535);
    number(w, "Count", 0, 4294967295);
    number(w, "Big_Count", 0, BIG).form(VF_UI64);
    number(w, "Shift", -100, 100);
    number(w, "Level", -1000, 1000);
    number(w, "Number", MIN_VALUE, MAX_VALUE);
    number(w, "Big_Number", -BIG, BIG);
    w.define("Grade", w.numbered(w.integer(1, 6), {{"worst", 1}, {"best", 6}}));
    TypeNode odd = w.integer();
    RecNr one = w.single(w.intValue(1)), three = w.single(w.intValue(3));
    RecNr five = w.single(w.intValue(5)), rest = w.range(7, 9);
    w.define("Odd_Numbers", odd.constrained(w.sub(SUB_UNION, {one, three, five, rest})));
    TypeNode open = w.integer();
    RecNr root = w.range(0, 10), addition = w.range(20, 30);
    w.define("Open_Range", open.constrained(w.sub(SUB_UNION, {root, addition})).extensible());

    w.define("Colour", w.enumerated({{"red", 0}, {"green", 1}, {"blue", 2}})).entry();
    w.define("Month", w.enumerated({{"first", 1}, {"last", 300}}));
    w.define("Signal",
             w.enumerated({{"stop", 0}, {"go", 1}, NamedNumber::extension(), {"wait", 2}}));

    w.define("Measured", w.real().form(VF_REAL32));
    w.define("Calculated", w.real());
    w.define("Exact", w.real().form(VF_REAL128));
}

void makeOctetStrings(TreeWriter &w) {
    string(w, "Mask", TYP_BITSTR, 12, 12);
    w.define("Rights",
             w.numbered(w.string(TYP_BITSTR, 0, 20), {{"read", 0}, {"write", 1}, {"own", 2}}));
    w.define("Bits", w.string(TYP_BITSTR));
    string(w, "Key", TYP_OCTSTR, 16, 16).entry();
    string(w, "Packet", TYP_OCTSTR, 0, 200);
    string(w, "Block", TYP_OCTSTR, 1, 256);
    string(w, "Image", TYP_OCTSTR, 0, 70000).form(VF_STAS, VF_UI32);
    w.define("Blob", w.string(TYP_OCTSTR)).entry();
    w.define("Segments", w.string(TYP_OCTSTR).form(VF_LIST));
    string(w, "Hash", TYP_OCTSTR, 32, 32).form(VF_DYNS0);
    string(w, "Chunk", TYP_OCTSTR, 0, 100).form(VF_DYNS8, VF_UI8);
    string(w, "Page", TYP_OCTSTR, 0, 4000);
}

void makeCharacterStrings(TreeWriter &w) {
    string(w, "Digits", TYP_NUMSTR, 1, 15);
    string(w, "Code", TYP_PRISTR, 2, 2);
    string(w, "Paper", TYP_TELSTR, 0, 80);
    string(w, "Screen", TYP_VIDSTR, 0, 80);
    string(w, "Line", TYP_VISSTR, 0, 80);
    TypeNode label = w.string(TYP_IA5STR);
    RecNr first = w.textValue(TYP_IA5STR, "a"), last = w.textValue(TYP_IA5STR, "z");
    label.constrained(w.alphabet(w.rangeOf(first, last, SUB_LOWER_CLOSED | SUB_UPPER_CLOSED)));
    w.define("Label", label.constrained(w.size(1, 8)));
    string(w, "Drawing", TYP_GRASTR, 0, 80);
    string(w, "Note", TYP_GENSTR, 0, 80);
    w.define("Note_Kind", w.string(TYP_OBJDESCR));
    w.define("Any_Text", w.string(TYP_UNISTR));
    string(w, "Sign", TYP_BMPSTR, 1, 1);
    string(w, "Title", TYP_BMPSTR, 1, 64);
    string(w, "Verse", TYP_BMPSTR, 0, 256);
    string(w, "Fixed_Text", TYP_BMPSTR, 500, 500).form(VF_BMPSTR0);
    string(w, "Short_Text", TYP_BMPSTR, 0, 100).form(VF_BMPSTR8, VF_UI8);
    string(w, "Long_Text", TYP_BMPSTR, 0, 1000);
    w.define("Text", w.string(TYP_BMPSTR));
}

void makeSingleForms(TreeWriter &w) {
    w.define("Nothing", w.null()).entry();
    w.define("Identifier", w.type(TYP_OBJID));
    w.define("Moment", w.type(TYP_GENTIME));
    w.define("Short_Moment", w.type(TYP_UTCTIME));
    w.define("Outside", w.type(TYP_EXTERNAL_1990));
    w.define("New_Outside", w.type(TYP_EXTERNAL_1994));
    w.define("Something", w.any()).entry();
    w.define("Presented", w.type(TYP_EMB_PDV)).skipped();
}

void makeLists(TreeWriter &w) {
    w.define("Bytes", w.listOf(TYP_SEQOF, w.integer(0, 255)));
    w.define("Words", w.listOf(TYP_SEQOF, w.integer(0, 65535), 1, 10)).entry();
    w.define("Fields", w.listOf(TYP_SETOF, w.ref("Byte"), 0, 1000)).asDynamicArray();
    w.define("Capped", w.listOf(TYP_SEQOF, w.ref("Byte"), 0, 200)).asArray().sizeLimit(10, false);
    string(w, "Capped_Name", TYP_IA5STR, 0, 200).sizeLimit(20, false);
    w.define("Strict", w.listOf(TYP_SEQOF, w.ref("Byte"), 0, 200)).asArray().sizeLimit(10, true);
    w.define("Labels", w.listOf(TYP_SETOF, w.string(TYP_IA5STR, 1, 8)));
    w.define("Pairs", w.listOf(TYP_SEQOF, w.sequence({w.comp("key", w.ref("Byte")),
                                                      w.comp("value", w.ref("Word"))})));
    w.define("Table", w.listOf(TYP_SEQOF, w.listOf(TYP_SEQOF, w.ref("Byte"), 1, 4), 1, 4));
    w.define("Homes", w.listOf(TYP_SEQOF, w.ref("Point").option(OPT_HOME), 1, 5));
}

void makePlainStructures(TreeWriter &w) {
    w.define("Point", w.sequence({
                          w.comp("x", w.ref("Level")),
                          w.comp("y", w.ref("Level")),
                          w.comp("z", w.ref("Level")).optional(),
                      }))
        .entry();
    w.define("Empty", w.sequence({}));
    w.define("Empty_Set", w.set({}));
    w.define("Only_Marker", w.sequence({w.marker()}));
    w.define(
        "Bag",
        w.set({
            w.comp("number", w.ref("Number")).implicit(0),
            w.comp("label", w.ref("Label")).implicit(1).optional(),
            w.comp("colour", w.ref("Colour")).implicit(2).defaultTo(w.itemOf("Colour", "green")),
        }));
    w.define("Shape", w.choice({
                          w.comp("point", w.ref("Point")).implicit(0),
                          w.comp("line", w.sequence({w.comp("from", w.ref("Point")),
                                                     w.comp("to", w.ref("Point"))}))
                              .implicit(1),
                          w.comp("text", w.string(TYP_IA5STR, 1, 16)).implicit(2),
                          w.comp("sealed", w.ref("Framed")).implicit(3),
                          w.marker(),
                      }))
        .entry();
}

void makeNestedStructures(TreeWriter &w) {
    TypeNode inner = w.choice({
        w.comp("yes", w.null()),
        w.comp("no", w.set({w.comp("reason", w.ref("Byte")),
                            w.comp("since", w.ref("Moment")).optional()})),
    });
    TypeNode list = w.listOf(
        TYP_SEQOF, w.sequence({w.comp("a", w.ref("Byte")), w.comp("b", w.ref("Flag")).optional()}),
        0, 3);
    TypeNode outer =
        w.sequence({w.comp("inner", inner).explicitly(0).optional(), w.comp("list", list)});
    w.define("Deep", w.sequence({w.comp("outer", outer), w.comp("last", w.ref("Flag"))})).entry();
    w.define("Growing", w.sequence({
                            w.comp("old", w.ref("Byte")),
                            w.marker(),
                            w.comp("new", w.ref("Word")).implicit(0).optional(),
                            w.comp("newer", w.ref("Flag")).implicit(1),
                        }));
    w.define("Keeping", w.sequence({w.comp("old", w.ref("Byte")), w.marker()}))
        .option(OPT_SAVE_EXTENSIONS);
    w.define("Wide",
             w.sequence({w.componentsOf(w.ref("Point")), w.comp("w", w.ref("Level")).implicit(0)}));
}

void makeOpenStructures(TreeWriter &w, const TreeWriter &stock) {
    w.define("From_Stock", w.sequence({
                               w.comp("article", w.ref(stock, "Article")),
                               w.comp("rest", w.any()).explicitly(0).optional(),
                               w.comp("info", w.openType()).explicitly(1).optional(),
                           }))
        .entry();
    TypeNode kind = w.comp("kind", w.ref("Identifier"));
    TypeNode value = w.comp("value", w.anyDefinedBy(kind));
    w.define("Class_Of", w.sequence({kind, value}));

    std::vector<TypeNode> comps;
    for (int i = 0; i < 40; ++i) {
        TypeNode comp = w.comp("c" + std::to_string(i), w.ref(i % 3 == 1 ? "Flag" : "Byte"));
        comps.push_back(i % 3 == 1 ? comp.implicit(i).optional() : comp.implicit(i));
    }
    w.define("Many", w.structure(TYP_SET, comps));
}

void makeCircles(TreeWriter &w) {
    w.define("Chain", w.sequence({w.comp("value", w.ref("Byte")),
                                  w.comp("next", w.ref("Chain")).optional()}))
        .entry();
    w.define("Leaf_Tree", w.sequence({w.comp("label", w.ref("Label")),
                                      w.comp("sons", w.listOf(TYP_SETOF, w.ref("Leaf_Tree")))}));
    w.define("Term", w.choice({
                         w.comp("number", w.ref("Number")).implicit(0),
                         w.comp("sum", w.ref("Sum")).implicit(1),
                         w.comp("negative", w.ref("Term")).explicitly(2),
                     }));
    w.define("Sum", w.sequence({w.comp("left", w.ref("Term")), w.comp("right", w.ref("Term"))}));
}

void makePlaces(TreeWriter &w) {
    auto point = [&](std::string_view name, int tag) {
        return w.comp(name, w.ref("Point")).implicit(tag);
    };
    w.define("Placed", w.sequence({
                           point("plain", 0),
                           point("behind", 1).option(OPT_POINTER),
                           point("near", 2).option(OPT_POINTER).optional(),
                           w.comp("housed", w.ref("Byte")).implicit(3).option(OPT_HOME).optional(),
                           point("big_one", 4).option(OPT_HOME).optional(),
                           point("gone", 5).skipped().optional(),
                           w.comp("framed", w.ref("Framed")).implicit(6).optional(),
                       }))
        .entry();
    w.define("All_Housed",
             w.sequence({w.comp("a", w.ref("Byte")).implicit(0), point("b", 1).optional()}))
        .option(OPT_COMPS_AS_POINTERS);
    w.define("All_Behind", w.choice({w.comp("a", w.ref("Word")).implicit(0), point("b", 1)}))
        .option(OPT_COMPS_POINTER);
    auto twoBytes = [&] {
        return w.sequence({w.comp("a", w.ref("Byte")), w.comp("b", w.ref("Byte"))});
    };
    w.define("Framed", twoBytes()).option(OPT_FRAME).entry();
    w.define("Ready", w.any().form(VF_FRM));
    w.define("Skipped", twoBytes()).skipped().entry();
}

void makeReferences(TreeWriter &w) {
    w.define("Alias", w.ref("Byte")).entry();
    w.define("Second_Alias", w.ref("Alias").constrained(w.range(0, 9)));
    w.define("Tagged", w.ref("Point")).explicitly(5);
    w.define("Twice_Tagged", w.ref("Point")).tag(TAG_APP, 6, true).implicit(7).entry();
    TypeNode shape = w.findType("Shape");
    w.define("Picked", w.selection("sealed", shape));
    auto couple = [&](std::string_view content) {
        return w.instance(w.parameterisedHead(
            "Couple", w.sequence({w.comp("first", w.ref(content)),
                                  w.comp("second", w.ref(content)).optional()})));
    };
    w.define("Couple", w.type(TYP_NONE)).hidden();
    w.define("Words_Couple", couple("Word")).entry();
    w.define("With_Couple",
             w.sequence({w.comp("couple", couple("Point")), w.comp("ok", w.ref("Flag"))}));
}

} // namespace

void makeForms(TreeWriter &w, const TreeWriter &stock) {
    makeNumbers(w);
    makeOctetStrings(w);
    makeCharacterStrings(w);
    makeSingleForms(w);
    makeLists(w);
    makePlainStructures(w);
    makeNestedStructures(w);
    makeOpenStructures(w, stock);
    makeCircles(w);
    makePlaces(w);
    makeReferences(w);
}
