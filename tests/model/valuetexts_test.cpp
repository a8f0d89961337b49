#include "model/valuetexts.h"

#include "tests/model/modelsetup.h"

namespace {

/* Number and digits or characters as each function gives them; "-" for no call. */
using StringCall = Call<void(AsnValue *value, std::int32_t length, const char *text)>;
std::string textBy(AsnValue *value, void (*walk)(AsnValue *, StringCall)) {
    std::string text = "-";
    walk(value, [&](AsnValue *, std::int32_t length, const char *characters) {
        text = std::to_string(length) + ":" + characters;
    });
    return text;
}

std::string stringText(AsnValue *value) {
    EXPECT_EQ(textBy(value, forOctetStringValue), textBy(value, forBitStringValueX));
    return textBy(value, forBitStringValueB) + " " + textBy(value, forBitStringValueX) + " " +
           textBy(value, forCharacterStringValue);
}

TEST(ValueTexts, StringsInTheirForms) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    TypeNode farBits = other.define("Bits", other.string(TYP_BITSTR));
    other.defineValue("far", farBits, other.listValue(TYP_BITSTR, {other.intValue(2)}));
    m.import(other, "other");
    TreeWriter w("Texts", "texts");
    const std::int32_t otherNr = w.import(other);
    TypeNode bits = w.define("Bits", w.string(TYP_BITSTR));
    TypeNode octets = w.define("Octets", w.string(TYP_OCTSTR));
    TypeNode ia5 = w.define("Ia5", w.string(TYP_IA5STR));
    ModelSetup::Rows rows;
    const auto add = [&](const char *expected, TypeNode type, ValueNode value) {
        rows.emplace_back("v" + std::to_string(rows.size()), expected);
        return w.defineValue(rows.back().first, type, value);
    };
    w.defineValue("seven", bits, w.intValue(7));
    w.defineValue("plain", ia5, w.textValue(TYP_IA5STR, "a b"));
    add("4:1010 1:A0 -", bits, w.bitsValue("1010"));
    add("1:1 1:80 -", octets, w.bitsValue("1"));
    add("9:101010101 2:AA80 -", bits, w.bitsValue("101010101"));
    add("4:1010 1:A0 -", octets, w.hexValue("A"));
    add("12:101010111100 3:ABC0 -", bits, w.hexValue("ABC"));
    add("8:00001111 2:0F -", octets, w.hexValue("0F"));
    add("6:000101 1:14 -", bits, w.listValue(TYP_BITSTR, {w.intValue(3), w.intValue(5)}));
    add("8:10000001 1:81 -", bits, w.listValue(TYP_BITSTR, {w.valueRef("seven"), w.intValue(0)}));
    add("0: 0: -", bits, w.value(TYP_BITSTR));
    add("0: 0: -", bits, w.bitsValue(""));
    add("3:001 1:20 -", bits, w.valueRefTo(otherNr, other.findValue("far")));
    add("- - -", bits, w.intValue(7));
    add("- - 3:a b", ia5, w.textValue(TYP_IA5STR, "a b"));
    add("- - 5:aba b", ia5,
        w.listValue(TYP_IA5STR, {w.textValue(TYP_IA5STR, "ab"), w.valueRef("plain")}));
    add("- - -", w.define("Bmp", w.string(TYP_BMPSTR)), w.text16Value(u"ab"));
    /* The length beside the text of a time doesn't count. */
    add("- - 4:2002", w.define("Time", w.type(TYP_GENTIME)), w.timeValue(TYP_GENTIME, "2002"))
        ->value[1] = 1;
    m.load(w);
    m.expectValues(stringText, rows);
}

/* The arcs twice, with blanks and with dots and names, and how many they are; "-" for none. */
std::string arcsOf(AsnValue *value) {
    const Text plain = objectIdentifierValueStri(value, nullptr, nullptr, "x");
    const Text named = objectIdentifierValueStri(value, ".", "(", ")");
    const int count = getNrOfObjectIdentifierComps(value);
    const std::string counted = count == 0 ? "-" : std::to_string(count);
    return plain + " " + named + " " + counted;
}

TEST(ValueTexts, ArcsOfObjectIdentifiers) {
    ModelSetup m;
    TreeWriter w("Texts", "texts");
    TypeNode oid = w.define("Oid", w.type(TYP_OBJID));
    w.defineValue("number", w.define("Int", w.integer()), w.intValue(4294967295));
    w.defineValue("iso", oid, w.objectIdentifier({w.intValue(1), w.intValue(2), w.intValue(3)}));
    w.defineValue("named", oid,
                  w.objectIdentifier({w.intValue(1).named("mine"), w.intValue(2), w.intValue(0)}));
    w.defineValue(
        "letters", oid,
        w.objectIdentifier({w.intValue(0), w.intValue(0), w.intValue(24), w.intValue(1)}));
    w.defineValue("prefixed", oid, w.objectIdentifier({w.valueRef("iso"), w.intValue(1)}));
    w.defineValue("deep", oid,
                  w.objectIdentifier({w.valueRef("prefixed"), w.valueRef("number").named("n")}));
    w.defineValue("inside", oid, w.objectIdentifier({w.intValue(1), w.valueRef("iso")}));
    w.defineValue("nothing", oid, w.value(TYP_OBJID));
    m.load(w);
    m.expectValues(arcsOf,
                   {{"iso", "1 2 3 1(iso).2(member-body).3 3"},
                    {"named", "1 2 0 1(mine).2(joint-iso-ccitt).0 3"},
                    {"letters", "0 0 24 1 0(ccitt).0(recommendation).24(x).1 4"},
                    {"prefixed", "1 2 3 1 1(iso).2(member-body).3.1(iso) 4"},
                    {"deep", "1 2 3 1 4294967295 1(iso).2(member-body).3.1(iso).4294967295(n) 5"},
                    {"inside", "  -"},
                    {"nothing", "  -"},
                    {"number", "  -"}});
}

/* --- broken trees --- */

void showTexts(ValueNode (*make)(TreeWriter &w)) {
    ModelSetup m;
    TreeWriter w("Broken", "broken");
    TypeNode bits = w.define("T", w.type(TYP_OBJID));
    w.defineValue("v", bits, make(w));
    m.load(w);
    m.withValue("v", [](AsnValue *value) {
        forBitStringValueB(value, [](AsnValue *, std::int32_t, const char *) {});
        getNrOfObjectIdentifierComps(value);
    });
    exit(0);
}

TEST(ValueTextsDeathTest, BrokenTreesEndTheRun) {
    struct Row {
        ValueNode (*make)(TreeWriter &w);
        const char *message;
    };
    const Row rows[] = {
        {[](TreeWriter &w) { return w.listValue(TYP_BITSTR, {w.boolValue(true)}); },
         "Internal error"},
        {[](TreeWriter &w) { return w.listValue(TYP_BITSTR, {w.intValue(4294967296)}); },
         "Too long named bit value"},
        {[](TreeWriter &w) { return w.listValue(TYP_BITSTR, {w.intValue(100'001)}); },
         "Too long named bit value"},
        {[](TreeWriter &w) { return w.listValue(TYP_BITSTR, {w.intValue(-1)}); },
         "Too long named bit value"},
        {[](TreeWriter &w) { return w.objectIdentifier({w.intValue(4294967296)}); },
         "Too large object identifier element value"},
        {[](TreeWriter &w) { return w.objectIdentifier({w.intValue(-1)}); },
         "Too large object identifier element value"},
        /* An identifier that begins with itself, and a list that comes back to itself. */
        {[](TreeWriter &w) { return w.objectIdentifier({w.valueRefTo(1, 2)}); }, "broken"},
        {[](TreeWriter &w) {
             const ValueNode bit = w.intValue(1);
             const ValueNode list = w.listValue(TYP_BITSTR, {bit});
             bit->next = bit;
             return list;
         },
         "broken"},
    };
    for (const Row &row : rows)
        EXPECT_EXIT(showTexts(row.make), exitsWith2, row.message) << &row - rows;
}

} // namespace
