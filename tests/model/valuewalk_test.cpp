#include "model/valuewalk.h"

#include "model/typequeries.h"
#include "model/typevalues.h"
#include "tests/model/modelsetup.h"

namespace {

std::string refOf(AsnValue *value) {
    return getRefOf(value);
}

std::string idOf(AsnValue *value) {
    return getIdOf(value);
}

/* Its names, and the module of the base. */
std::string wayOf(AsnValue *value) {
    EXPECT_EQ(getTypeMainType(getTypeOfValue(value)), TYP_INTEGER);
    return refOf(value) + "=" + idOf(value) + "@" + value->baseModule->filePrefix + " ";
}

TEST(Values, WalkOverAModuleShowsItsDefinitions) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    other.defineValue("far", other.define("Far", other.integer()), other.intValue(99));
    m.import(other, "other");
    TreeWriter w("Vals", "vals");
    const std::int32_t otherNr = w.import(other);
    w.exportsMarked();
    TypeNode integer = w.define("Int", w.integer());
    w.defineValue("one", integer, w.intValue(1)).exported();
    w.defineValue("hidden", integer, w.intValue(2))->skipInWalk = 1;
    w.defineValue("item", integer, w.intValue(3))->compStatus = 0;
    w.defineValue("two", integer, w.intValue(4)).exported(false).naming("-VNAME=Zwei");
    w.define("Class", w.objectClass({w.typeField("T")}));
    w.defineValue("object", w.findType("Class"), w.object(w.findType("Class"), {}));
    w.defineValue("step", integer, w.valueRefTo(otherNr, other.findValue("far")));
    w.defineValue("again", integer, w.valueRef("step"));
    m.load(w);
    std::string all, visible, byNumber;
    forEachValue(m.module, [&](AsnValue *value, int nbr) {
        all += std::to_string(nbr) + wayOf(value);
        /* A walk inside doesn't disturb the outer one. */
        forEachVisValue(m.module, [&](AsnValue *, int) {});
    });
    EXPECT_EQ(all, "0one=one@vals 1two=Zwei@vals 2step=step@other 3again=again@other ");
    forEachVisValue(m.module, [&](AsnValue *value, int nbr) {
        visible += std::to_string(nbr) + refOf(value) + " ";
    });
    EXPECT_EQ(visible, "0one 1step 2again "); /* their base is exported where it stands */
    /* By its number a record is found whatever its status. */
    const auto note = [&](AsnValue *value, int) { byNumber += refOf(value) + " "; };
    for (RecNr nr = 1; nr <= 6; ++nr)
        forValueByRecNr(m.module, note, nr, KIND_VALUE);
    EXPECT_EQ(byNumber, "one item two step ");
}

Text lengthText(AsnValue *value) {
    return std::to_string(octetStringLength(value));
}

/* Values, each to be shown in a way of its own. */
struct ShownValues {
    using Print = Text (*)(AsnValue *value);
    ModelSetup m;
    TreeWriter w{"Vals", "vals"};
    std::map<std::string, Print> prints;
    ModelSetup::Rows rows;

    void add(const char *expected, Print print, TypeNode type, ValueNode value) {
        rows.emplace_back("v" + std::to_string(rows.size()), expected);
        prints[rows.back().first] = print;
        w.defineValue(rows.back().first, type, value);
    }
    void expectTexts() {
        m.load(w);
        m.expectValues([&](AsnValue *value) { return prints[refOf(value)](value); }, rows);
    }
};

TEST(Values, TextsOfNumbers) {
    ShownValues v;
    v.w.option("-DECIMALS=4");
    setInfValueStri("MIN_LONG", "MAX_LONG", nullptr, "MAXREAL");
    TypeNode boolean = v.w.define("B", v.w.boolean());
    v.add("TRUE", booleanValueStri, boolean, v.w.boolValue(true));
    v.add("FALSE", booleanValueStri, boolean, v.w.boolValue(false));
    TypeNode integer = v.w.define("I", v.w.integer());
    v.add("MIN_LONG", integerValueStri, integer, v.w.intValue(MIN_VALUE));
    v.add("MAX_LONG", integerValueStri, integer, v.w.intValue(MAX_VALUE));
    v.add("-4294967296", integerValueStri, integer, v.w.intValue(-4294967296));
    TypeNode real = v.w.define("R", v.w.real());
    v.add("{15, 10, -1}", realValueStri, real, v.w.realValue(15, 10, -1));
    v.add("15.00E-1", doubleRealValueStri, real, v.w.realValue(15, 10, -1));
    v.add("-12345.E3", doubleRealValueStri, real, v.w.realValue(-12345, 10, 3));
    const auto addSpecial = [&](int code, const char *text, const char *doubleText) {
        v.add(text, realValueStri, real, v.w.realValue(code, -1, 0));
        v.add(doubleText, doubleRealValueStri, real, v.w.realValue(code, -1, 0));
    };
    addSpecial(REAL_PLUS_INFINITY, "MAXREAL", "DBL_MAX");
    addSpecial(REAL_MINUS_INFINITY, "MINUS-INFINITY", "-DBL_MAX");
    addSpecial(REAL_ZERO, "0", "0.0");
    v.expectTexts();
    v.m.withValue("v5", [](AsnValue *value) {
        EXPECT_EQ(doubleRealValue(value), 1.5);
        getGlobalOptions(value->ownerModule)->decimals = DECIMALS_BINARY;
        EXPECT_EQ(doubleRealValueStri(value), "15.00000000E-1");
    });
    v.m.withValue("v4", [](AsnValue *value) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(integerValue(value), 0x7FFFFFFF);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("** Integer value\n"),
                  std::string::npos);
    });
    v.m.withValue("v8", [](AsnValue *value) { EXPECT_TRUE(isPlusInfinity(value)); });
}

TEST(Values, LengthsFollowTheGoverningType) {
    ShownValues v;
    TypeNode named =
        v.w.define("Named", v.w.numbered(v.w.string(TYP_BITSTR), {{"a", 0}, {"b", 1}}));
    v.add("2", lengthText, named, v.w.bitsValue("1000"));
    v.add("6", lengthText, named, v.w.listValue(TYP_BITSTR, {v.w.intValue(5)}));
    TypeNode bits = v.w.define("Bits", v.w.string(TYP_BITSTR));
    v.add("4", lengthText, bits, v.w.bitsValue("1000"));
    v.add("8", lengthText, bits, v.w.hexValue("A1"));
    TypeNode octets = v.w.define("Octets", v.w.string(TYP_OCTSTR));
    v.add("2", lengthText, octets, v.w.hexValue("ABC"));
    v.add("2", lengthText, v.w.ref("Octets"), v.w.hexValue("ABCD"));
    const ValueNode ab = v.w.textValue(TYP_IA5STR, "ab"), cde = v.w.textValue(TYP_IA5STR, "cde");
    v.add("5", lengthText, v.w.string(TYP_IA5STR), v.w.listValue(TYP_IA5STR, {ab, cde}));
    v.expectTexts();
}

/* "a#0=5 b-" for a component with a value of its number, and one without. */
std::string componentsShown(AsnValue *value) {
    std::string text;
    forEachPresentOrAbsentValueComp(
        value, [&](AsnValue *, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr) {
            text += (compNbr == 0 ? "" : " ") + getTypeCompRef(comp);
            EXPECT_EQ(compValue == nullptr, presentNbr == -1);
            if (compValue == nullptr)
                text += "-";
            else if (getValueMainType(compValue) == TYP_INTEGER)
                text += "#" + std::to_string(presentNbr) + "=" + shown(int64Value(compValue));
            else
                text += "#" + std::to_string(presentNbr) + "{" + componentsShown(compValue) + "}";
        });
    return text;
}

TEST(Values, ComponentsPresentAndAbsent) {
    ModelSetup m;
    auto build = [](TreeWriter &w) {
        TypeNode inner = w.define("Inner", w.sequence({w.comp("x", w.integer()).optional(),
                                                       w.comp("y", w.integer()).optional()}));
        TypeNode nested = w.comp("n", w.ref("Inner")).optional();
        w.define("Rec", w.sequence({w.comp("a", w.integer()).optional(), nested,
                                    w.comp("b", w.integer()), w.comp("c", w.null()).optional()}));
        ValueNode y = w.intValue(8).named("y").governedBy(inner);
        ValueNode n = w.listValue(TYP_SEQ, {y}).named("n").governedBy(nested);
        ValueNode b = w.intValue(3).named("b").governedBy(inner);
        w.defineValue("v", w.findType("Rec"), w.listValue(TYP_SEQ, {n, b}));
        ValueNode a = w.intValue(4).named("a").governedBy(inner);
        w.defineValue("first", w.findType("Rec"), w.listValue(TYP_SEQ, {a}));
    };
    TreeWriter other("Other", "other");
    build(other);
    m.import(other, "other");
    TreeWriter w("Vals", "vals");
    const std::int32_t otherNr = w.import(other);
    build(w);
    w.defineValue("none", w.findType("Rec"), w.value(TYP_SEQ));
    w.define("Away", w.ref(other, "Rec"));
    /* The components of a value are those of the module that it refers to. */
    w.defineValue("far", w.findType("Away"), w.valueRefTo(otherNr, other.findValue("v")));
    m.load(w);
    m.expectValues(componentsShown, {{"v", "a- n#0{x- y#0=8} b#1=3 c-"},
                                     {"first", "a#0=4 n- b- c-"},
                                     {"none", "a- n- b- c-"},
                                     {"far", "a- n#0{x- y#0=8} b#1=3 c-"}});
    m.withValue("v", [](AsnValue *value) {
        std::string text;
        forEachValueComp(value, [&](AsnValue *, AsnValue *comp, int nbr) {
            text += std::to_string(nbr) + refOf(comp) + " ";
        });
        EXPECT_EQ(text, "0n 1b ");
    });
}

/* --- values that belong to types --- */

std::string numbersOf(AsnType *type) {
    std::string text;
    forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int nbr) {
        text += refOf(value) + std::to_string(nbr) + "=" + shown(int64Value(value)) + " ";
    });
    return text + std::to_string(getNrOfNamedNumbers(type));
}

std::string defaultsOf(AsnType *type) {
    std::string text;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int nbr) {
        forDefaultValue(comp, [&](AsnType *, AsnValue *value) {
            text += std::to_string(nbr) + "=" + shown(int64Value(value)) + " ";
        });
    });
    return text;
}

TEST(Values, OfTypes) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    other.define("Far", other.enumerated({{"p", 1}, {"q", 2}}));
    m.import(other, "other");
    TreeWriter w("Vals", "vals");
    w.import(other);
    const ValueNode item = w.intValue(6);
    w.define("S", w.sequence({w.comp("a", w.integer()).defaultTo(w.intValue(5)),
                              w.comp("b", w.integer()).defaultTo(item),
                              w.comp("far", w.ref(other, "Far"))}));
    item->compStatus = 0;
    w.define("N", w.numbered(w.integer(), {{"low", -1}}));
    w.define("Holes",
             w.enumerated({{"a", 3}, {"b", 1}, NamedNumber::extension(), {"c", 9}, {"d", 8}}));
    m.load(w);
    m.expectTypes(numbersOf, {{"Holes", "a0=3 b1=1 -1=0 c2=9 d3=8 4"},
                              {"N", "low0=-1 1"},
                              {"S.far", "p0=1 q1=2 2"},
                              {"S.a", "0"}});
    m.expectTypes(defaultsOf, {{"S", "0=5 1=6 "}});
}

/* --- broken trees --- */

void walkValues(void (*spoil)(TreeWriter &w)) {
    ModelSetup m;
    TreeWriter w("Broken", "broken");
    TypeNode comp = w.comp("a", w.integer()).defaultTo(w.intValue(5));
    TypeNode type = w.define("S", w.sequence({comp}));
    w.define("E", w.enumerated({{"x", 1}, {"y", 2}}));
    w.defineValue("v", type, w.listValue(TYP_SEQ, {w.intValue(1).named("a").governedBy(comp)}));
    w.defineValue("r", type, w.valueRef("v"));
    w.finish();
    spoil(w);
    m.load(w);
    forEachType(m.module, [](AsnType *t, int) {
        forEachNamedNumber(t, [](AsnType *, AsnValue *, int) {});
        forEachTypeComp(t, [](AsnType *, AsnType *c, int) {
            forDefaultValue(c, [](AsnType *, AsnValue *) {});
        });
    });
    forEachValue(m.module, [](AsnValue *value, int) {
        auto descend = [](auto &self, AsnValue *father) -> void {
            forEachValueComp(father, [&](AsnValue *, AsnValue *c, int) { self(self, c); });
        };
        descend(descend, value);
    });
    exit(0);
}

TEST(ValuesDeathTest, BrokenTreesEndTheRun) {
    const char *const unread = "Can not read record";
    expectFatal(walkValues,
                {{[](TreeWriter &w) { w.findValue("v")->governorRec = 0; }, "Internal error"},
                 {[](TreeWriter &w) { w.findValue("v")->governorRec = 99; }, unread},
                 {[](TreeWriter &w) { w.findValue("v")->governorModule = 9; }, unread},
                 {[](TreeWriter &w) { w.findValue("v")->refRecord = 99; }, unread},
                 {[](TreeWriter &w) { w.findValue("v")->next = w.findValue("v"); }, "broken"},
                 {[](TreeWriter &w) { w.findValue("r")->refRecord = w.findValue("r"); }, "broken"},
                 {[](TreeWriter &w) { w.findValue("v")->refRecord = w.findValue("v"); }, "broken"},
                 {[](TreeWriter &w) { w.tNodes[0].defaultValue = 99; }, unread},
                 {[](TreeWriter &w) { w.vNodes[0].valueKind = TYP_CLASS; },
                  "Cannot obtain a default value"},
                 {[](TreeWriter &w) { w.vNodes[2].next = 2; }, "broken"},
                 {[](TreeWriter &w) { w.findType("E")->namedNumbersRec = 99; }, unread},
                 /* Each level has the next one twice. */
                 {[](TreeWriter &w) {
                      RecNr inner = 0;
                      for (int level = 0; level < 60; ++level) {
                          VNode node = w.vNodes[w.findValue("v") - 1];
                          node.refRecord = inner;
                          node.next = 0;
                          node.next = w.addV(node);
                          inner = w.addV(node);
                      }
                      w.findValue("v")->refRecord = inner;
                  },
                  "broken"}});
}

} // namespace
