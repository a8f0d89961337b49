#include "model/valuetexts.h"

#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string shownText(AsnValue *, std::int32_t length, const char *text) {
    return std::to_string(length) + ":" + text;
}

TEST(ValueTexts, BitAndOctetStringsInTheirTwoForms) {
    ModelSetup m;
    TreeWriter w("Texts", "texts");
    TypeNode bits = w.define("Bits", w.string(TYP_BITSTR));
    TypeNode octets = w.define("Octets", w.string(TYP_OCTSTR));
    w.defineValue("seven", bits, w.intValue(7));
    struct Row {
        ValueNode (*make)(TreeWriter &w);
        const char *binary, *hexadecimal;
    };
    const Row rows[] = {
        {[](TreeWriter &w2) { return w2.bitsValue("1010"); }, "4:1010", "1:A0"},
        {[](TreeWriter &w2) { return w2.bitsValue("1"); }, "1:1", "1:80"},
        {[](TreeWriter &w2) { return w2.bitsValue("101010101"); }, "9:101010101", "2:AA80"},
        {[](TreeWriter &w2) { return w2.hexValue("A"); }, "4:1010", "1:A0"},
        {[](TreeWriter &w2) { return w2.hexValue("ABC"); }, "12:101010111100", "3:ABC0"},
        {[](TreeWriter &w2) { return w2.hexValue("0F"); }, "8:00001111", "2:0F"},
        {[](TreeWriter &w2) {
             return w2.listValue(TYP_BITSTR, {w2.intValue(3), w2.intValue(5)});
         },
         "6:000101", "1:14"},
        {[](TreeWriter &w2) {
             return w2.listValue(TYP_BITSTR, {w2.valueRef("seven"), w2.intValue(0)});
         },
         "8:10000001", "1:81"},
        {[](TreeWriter &w2) { return w2.value(TYP_BITSTR); }, "0:", "0:"},
        {[](TreeWriter &w2) { return w2.bitsValue(""); }, "0:", "0:"},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i)
        w.defineValue("v" + std::to_string(i), i % 2 == 0 ? bits : octets, rows[i].make(w));
    m.load(w);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        m.withValue("v" + std::to_string(i), [&](AsnValue *value) {
            std::string text;
            auto take = [&](AsnValue *v, std::int32_t length, const char *digits) {
                text = shownText(v, length, digits);
            };
            forBitStringValueB(value, take);
            EXPECT_EQ(text, rows[i].binary) << i;
            forBitStringValueX(value, take);
            EXPECT_EQ(text, rows[i].hexadecimal) << i;
            text.clear();
            forOctetStringValue(value, take);
            EXPECT_EQ(text, rows[i].hexadecimal) << i;
        });
    m.withValue("seven", [](AsnValue *value) {
        forOctetStringValue(value, [](AsnValue *, std::int32_t, const char *) { ADD_FAILURE(); });
    });
}

TEST(ValueTexts, NamedBitsOfAnotherModuleAreReadThere) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    TypeNode bits = other.define("Bits", other.string(TYP_BITSTR));
    other.defineValue("far", bits, other.listValue(TYP_BITSTR, {other.intValue(2)}));
    m.import(other, "other");
    TreeWriter w("Texts", "texts");
    const std::int32_t otherNr = w.import(other);
    w.defineValue("near", w.define("T", w.string(TYP_BITSTR)),
                  w.valueRefTo(otherNr, other.findValue("far")));
    m.load(w);
    m.withValue("near", [](AsnValue *value) {
        Text text;
        std::int32_t length = 0;
        EXPECT_TRUE(makeBitString(value, &text, &length));
        EXPECT_EQ(shownText(value, length, text.c_str()), "3:001");
    });
}

TEST(ValueTexts, CharacterStringsAndTimes) {
    ModelSetup m;
    TreeWriter w("Texts", "texts");
    TypeNode ia5 = w.define("Ia5", w.string(TYP_IA5STR));
    TypeNode time = w.define("Time", w.type(TYP_GENTIME));
    TypeNode bmp = w.define("Bmp", w.string(TYP_BMPSTR));
    w.defineValue("plain", ia5, w.textValue(TYP_IA5STR, "a b"));
    w.defineValue("joined", ia5,
                  w.listValue(TYP_IA5STR, {w.textValue(TYP_IA5STR, "ab"), w.valueRef("plain")}));
    ValueNode moment = w.defineValue("moment", time, w.timeValue(TYP_GENTIME, "2002"));
    moment->value[1] = 1; /* the length beside the text doesn't count */
    w.defineValue("wide", bmp, w.text16Value(u"ab"));
    m.load(w);
    const char *const rows[][2] = {
        {"plain", "3:a b"}, {"joined", "5:aba b"}, {"moment", "4:2002"}, {"wide", ""}};
    for (const auto &row : rows)
        m.withValue(row[0], [&](AsnValue *value) {
            std::string text;
            forCharacterStringValue(value,
                                    [&](AsnValue *v, std::int32_t length, const char *characters) {
                                        text = shownText(v, length, characters);
                                    });
            EXPECT_EQ(text, row[1]);
        });
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
    const char *const rows[][3] = {
        {"iso", "1 2 3", "1(iso).2(member-body).3"},
        {"named", "1 2 0", "1(mine).2(joint-iso-ccitt).0"},
        {"letters", "0 0 24 1", "0(ccitt).0(recommendation).24(x).1"},
        {"prefixed", "1 2 3 1", "1(iso).2(member-body).3.1(iso)"},
        {"deep", "1 2 3 1 4294967295", "1(iso).2(member-body).3.1(iso).4294967295(n)"},
    };
    for (const auto &row : rows)
        m.withValue(row[0], [&](AsnValue *value) {
            Text text;
            EXPECT_EQ(objectIdentifierValueStri(text, "{", value, nullptr, nullptr, "x", "}"),
                      std::string("{") + row[1] + "}");
            EXPECT_EQ(objectIdentifierValueStri(text, nullptr, value, ".", "(", ")", nullptr),
                      row[2]);
            forObjectIdentifierValue(value, [&](AsnValue *, int count, const std::uint32_t *numbers,
                                                const char *const *names) {
                EXPECT_EQ(count, getNrOfObjectIdentifierComps(value));
                EXPECT_EQ(std::to_string(numbers[0]) + (names[0] == nullptr ? "" : "("),
                          std::string(row[2]).substr(0, 2));
            });
        });
    for (const char *name : {"inside", "nothing", "number"})
        m.withValue(name, [](AsnValue *value) {
            Text text = "old";
            EXPECT_EQ(objectIdentifierValueStri(text, "{", value, nullptr, nullptr, nullptr, "}"),
                      "");
            EXPECT_EQ(getNrOfObjectIdentifierComps(value), 0);
        });
}

TEST(ValueTexts, Times) {
    struct Row {
        MainType kind;
        const char *text;
        std::vector<int> fields;
    };
    constexpr int NONE = TIME_NO_OFFSET;
    const Row rows[] = {
        {TYP_GENTIME, "20021231235959.5Z", {2002, 12, 31, 23, 59, 59, 500, 1, NONE, NONE}},
        {TYP_UTCTIME, "0207121230+0200", {1902, 7, 12, 12, 30, 0, 0, 0, 2, 0}},
        {TYP_GENTIME, "19851106210627.3", {1985, 11, 6, 21, 6, 27, 300, 0, NONE, NONE}},
        {TYP_GENTIME, "1985110621,25-05", {1985, 11, 6, 21, 0, 0, 250, 0, -5, NONE}},
        {TYP_GENTIME, "19851106210627.123-0530", {1985, 11, 6, 21, 6, 27, 123, 0, -5, 30}},
        {TYP_GENTIME, "19851106210627.1234Z", {1985, 11, 6, 21, 6, 27, 0, 1, NONE, NONE}},
        {TYP_UTCTIME, "9912312359+123", {1999, 12, 31, 23, 59, 0, 0, 0, 0, 0}},
        {TYP_GENTIME, "2002", {2002, 0, 0, 0, 0, 0, 0, 0, NONE, NONE}},
        {TYP_UTCTIME, "", {1900, 0, 0, 0, 0, 0, 0, 0, NONE, NONE}},
    };
    ModelSetup m;
    TreeWriter w("Texts", "texts");
    for (std::size_t i = 0; i < std::size(rows); ++i)
        w.defineValue("v" + std::to_string(i), w.type(rows[i].kind),
                      w.timeValue(rows[i].kind, rows[i].text));
    w.defineValue("number", w.integer(), w.intValue(1));
    m.load(w);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        m.withValue("v" + std::to_string(i), [&](AsnValue *value) {
            forTimeValue(value, [&](AsnValue *, const AsnTime *t) {
                const std::vector<int> fields = {
                    t->year,   t->month,        t->day, t->hour,        t->minute,
                    t->second, t->milliseconds, t->utc, t->offsetHours, t->offsetMinutes};
                EXPECT_EQ(fields, rows[i].fields) << rows[i].text;
            });
        });
    m.withValue("number", [](AsnValue *value) {
        forTimeValue(value, [](AsnValue *, const AsnTime *) { ADD_FAILURE(); });
    });
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
        {[](TreeWriter &w) { return w.listValue(TYP_BITSTR, {w.intValue(2000000000)}); },
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
