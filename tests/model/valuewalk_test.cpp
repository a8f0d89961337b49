#include "model/valuewalk.h"

#include "model/hooks.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string refOf(AsnValue *value) {
    Text text;
    return getValueRef(text, nullptr, value, nullptr);
}

std::string idOf(AsnValue *value) {
    Text text;
    return getValueId(text, nullptr, value, nullptr);
}

TEST(Values, WalkOverAModuleShowsItsDefinitions) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    w.exportsMarked();
    TypeNode integer = w.define("Int", w.integer());
    w.defineValue("one", integer, w.intValue(1)).exported();
    w.defineValue("hidden", integer, w.intValue(2))->skipInWalk = 1;
    w.defineValue("item", integer, w.intValue(3))->compStatus = 0;
    w.defineValue("two", integer, w.intValue(4)).exported(false).naming("-VNAME=Zwei");
    w.define("Class", w.objectClass({w.typeField("T")}));
    w.defineValue("object", w.findType("Class"), w.object(w.findType("Class"), {}));
    w.defineValue("again", integer, w.valueRef("two"));
    m.load(w);
    std::string all, visible;
    forEachValue(m.module, [&](AsnValue *value, int nbr) {
        all += std::to_string(nbr) + refOf(value) + "=" + idOf(value) + " ";
        /* A walk inside doesn't disturb the outer one. */
        forEachVisValue(m.module, [&](AsnValue *, int) {});
    });
    EXPECT_EQ(all, "0one=one 1two=Zwei 2again=again ");
    forEachVisValue(m.module, [&](AsnValue *value, int nbr) {
        visible += std::to_string(nbr) + refOf(value) + " ";
    });
    EXPECT_EQ(visible, "0one ");
    /* By its number a record is found whatever its status. */
    std::string byNumber;
    for (RecNr nr = 1; nr <= 6; ++nr)
        forValueByRecNr(
            m.module, [&](AsnValue *value, int) { byNumber += refOf(value) + " "; }, nr,
            KIND_VALUE);
    EXPECT_EQ(byNumber, "one item two again ");
}

TEST(Values, ReferencesLeadToTheBase) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    other.defineValue("far", other.define("Far", other.integer()), other.intValue(99)).line(7);
    m.import(other, "other");
    TreeWriter w("Vals", "vals");
    const std::int32_t otherNr = w.import(other);
    TypeNode type = w.define("T", w.integer());
    w.defineValue("direct", type, w.intValue(5));
    w.defineValue("step", type, w.valueRefTo(otherNr, other.findValue("far")));
    w.defineValue("twice", type, w.valueRef("step"));
    m.load(w);
    m.withValue("twice", [&](AsnValue *value) {
        EXPECT_EQ(integerValue(value), 99);
        EXPECT_EQ(value->posModule, m.module->modRec);
        EXPECT_EQ(value->baseModule->moduleName, "Other");
        Text text;
        EXPECT_EQ(getBaseValueId(text, "<", value, ">"), "<far>");
        EXPECT_EQ(getTypeMainType(getTypeOfValue(value)), TYP_INTEGER);
        EXPECT_EQ(getTypeRef(text, nullptr, getTypeOfValue(value), nullptr), "T");
    });
    m.withValue("direct", [](AsnValue *value) {
        EXPECT_EQ(value->baseRecord, value->posRecord);
        EXPECT_EQ(getValueCompStatus(value), VCS_DEFINITION);
    });
}

TEST(Values, SimpleOnesAsText) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    w.option("-DECIMALS=4");
    TypeNode boolean = w.define("B", w.boolean());
    TypeNode integer = w.define("I", w.integer());
    TypeNode real = w.define("R", w.real());
    w.defineValue("yes", boolean, w.boolValue(true));
    w.defineValue("no", boolean, w.boolValue(false));
    w.defineValue("least", integer, w.intValue(MIN_VALUE));
    w.defineValue("most", integer, w.intValue(MAX_VALUE));
    w.defineValue("large", integer, w.intValue(-4294967296));
    w.defineValue("small", real, w.realValue(15, 10, -1));
    w.defineValue("negative", real, w.realValue(-12345, 10, 3));
    w.defineValue("plus", real, w.realValue(REAL_PLUS_INFINITY, -1, 0));
    w.defineValue("minus", real, w.realValue(REAL_MINUS_INFINITY, -1, 0));
    w.defineValue("zero", real, w.realValue(REAL_ZERO, -1, 0));
    m.load(w);
    setInfValueStri("MIN_LONG", "MAX_LONG", nullptr, "MAXREAL");
    struct Row {
        const char *name;
        Text &(*print)(Text &dst, const char *prefix, AsnValue *value, const char *suffix);
        const char *expected;
    };
    const Row rows[] = {
        {"yes", booleanValueStri, "TRUE"},
        {"no", booleanValueStri, "FALSE"},
        {"least", integerValueStri, "MIN_LONG"},
        {"most", integerValueStri, "MAX_LONG"},
        {"large", integerValueStri, "-4294967296"},
        {"small", realValueStri, "{15, 10, -1}"},
        {"plus", realValueStri, "MAXREAL"},
        {"minus", realValueStri, "MINUS-INFINITY"},
        {"zero", realValueStri, "0"},
        {"small", doubleRealValueStri, "15.00E-1"},
        {"negative", doubleRealValueStri, "-12345.E3"},
        {"plus", doubleRealValueStri, "DBL_MAX"},
        {"minus", doubleRealValueStri, "-DBL_MAX"},
        {"zero", doubleRealValueStri, "0.0"},
    };
    for (const Row &row : rows)
        m.withValue(row.name, [&](AsnValue *value) {
            Text text = "old";
            EXPECT_EQ(row.print(text, nullptr, value, nullptr), row.expected) << row.name;
        });
    m.withValue("small", [](AsnValue *value) {
        EXPECT_EQ(doubleRealValue(value), 1.5);
        getGlobalOptions(value->ownerModule)->decimals = DECIMALS_BINARY;
        Text text;
        EXPECT_EQ(doubleRealValueStri(text, "(", value, ")"), "(15.00000000E-1)");
    });
    m.withValue("large", [](AsnValue *value) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(integerValue(value), 0x7FFFFFFF);
        EXPECT_NE(testing::internal::GetCapturedStderr().find("** Integer value\n"),
                  std::string::npos);
    });
    m.withValue("plus", [](AsnValue *value) { EXPECT_TRUE(isPlusInfinity(value)); });
}

TEST(Values, LengthsFollowTheGoverningType) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    TypeNode named = w.define("Named", w.numbered(w.string(TYP_BITSTR), {{"a", 0}, {"b", 1}}));
    TypeNode bits = w.define("Bits", w.string(TYP_BITSTR));
    TypeNode octets = w.define("Octets", w.string(TYP_OCTSTR));
    TypeNode text = w.define("Chars", w.string(TYP_IA5STR));
    w.defineValue("trimmed", named, w.bitsValue("1000"));
    w.defineValue("whole", bits, w.bitsValue("1000"));
    w.defineValue("hexbits", bits, w.hexValue("A1"));
    w.defineValue("octets", octets, w.hexValue("ABC"));
    w.defineValue("viaRef", w.ref("Octets"), w.hexValue("ABCD"));
    w.defineValue("list", named, w.listValue(TYP_BITSTR, {w.intValue(5)}));
    w.defineValue(
        "joined", text,
        w.listValue(TYP_IA5STR, {w.textValue(TYP_IA5STR, "ab"), w.textValue(TYP_IA5STR, "cde")}));
    m.load(w);
    const std::pair<const char *, int> rows[] = {{"trimmed", 2}, {"whole", 4},  {"hexbits", 8},
                                                 {"octets", 2},  {"viaRef", 2}, {"list", 6},
                                                 {"joined", 5}};
    for (const auto &[name, length] : rows)
        m.withValue(name, [&, expected = length](AsnValue *value) {
            EXPECT_EQ(bitStringLength(value), expected) << refOf(value);
        });
}

/* "a#0=5 b-" for a component with a value of its number, and one without. */
std::string componentsShown(AsnValue *value) {
    std::string text;
    forEachPresentOrAbsentValueComp(
        value, [&](AsnValue *, AsnType *comp, int compNbr, AsnValue *compValue, int presentNbr) {
            Text name;
            text += (compNbr == 0 ? "" : " ") + getTypeCompRef(name, nullptr, comp, nullptr);
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
    const char *const rows[][2] = {
        {"v", "a- n#0{x- y#0=8} b#1=3 c-"},
        {"first", "a#0=4 n- b- c-"},
        {"none", "a- n- b- c-"},
        {"far", "a- n#0{x- y#0=8} b#1=3 c-"},
    };
    for (const auto &row : rows)
        m.withValue(row[0],
                    [&](AsnValue *value) { EXPECT_EQ(componentsShown(value), row[1]) << row[0]; });
    m.withValue("v", [](AsnValue *value) {
        std::string text;
        forEachValueComp(value, [&](AsnValue *, AsnValue *comp, int nbr) {
            text += std::to_string(nbr) + refOf(comp) + " ";
            forEachValueElem(comp, [&](AsnValue *father, AsnValue *elem, int) {
                text += "(" + refOf(father) + "." + refOf(elem) + ") ";
            });
        });
        EXPECT_EQ(text, "0n (n.y) 1b ");
    });
}

TEST(Values, CommentsOfTheDefinitionItself) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    TypeNode type = w.define("T", w.integer());
    ValueNode value = w.defineValue("v", type, w.intValue(1));
    ValueNode reference = w.defineValue("r", type, w.valueRef("v"));
    w.finish();
    value->tedFirst = w.tedRecs.empty() ? 1 : static_cast<RecNr>(w.tedRecs.size()) + 1;
    for (const char *text : {"-// first", "-BEO=OTHER=1", "-BEO=// second"})
        w.tedRecs.push_back({TED_BACKEND_OPTION, w.str(text)});
    value->tedLast = static_cast<RecNr>(w.tedRecs.size());
    reference->tedFirst = reference->tedLast = value->tedFirst;
    m.load(w);
    static int options = 0;
    modelHooks.valueBEOptionOK = [](AsnValue *, BEValMetaRec *, const char *option) {
        options += std::string(option) == "-BEO=OTHER=1" ? 1 : 100;
        return true;
    };
    std::string text;
    m.withValue("v", [&](AsnValue *v) {
        EXPECT_TRUE(isValueCommentOption(v));
        forEachValueCommentOption(v, [&](AsnValue *, const char *option, int nbr) {
            text += std::to_string(nbr) + option + ";";
        });
    });
    EXPECT_EQ(text, "0// first;1 second;");
    EXPECT_EQ(options, 2);
    m.withValue("r", [](AsnValue *v) { EXPECT_FALSE(isValueCommentOption(v)); });
}

/* --- values that belong to types --- */

TEST(TypeValues, NamedNumbersWithAndWithoutTheMarker) {
    ModelSetup m;
    TreeWriter other("Other", "other");
    other.define("Far", other.enumerated({{"p", 1}, {"q", 2}}));
    m.import(other, "other");
    TreeWriter w("Vals", "vals");
    w.import(other);
    w.define("E", w.enumerated({{"a", 4}, NamedNumber::extension(), {"b", 6}}));
    w.define("N", w.numbered(w.integer(), {{"low", -1}}));
    w.define("S", w.sequence({w.comp("far", w.ref(other, "Far"))}));
    w.define("None", w.integer());
    m.load(w);
    auto shownNumbers = [](AsnType *type) {
        std::string text;
        forEachNamedNumberExtMark(type, [&](AsnType *, AsnValue *value, int nbr) {
            text += refOf(value) + std::to_string(nbr) + "=" + shown(int64Value(value)) + " ";
        });
        return text + std::to_string(getNrOfNamedNumbers(type));
    };
    m.withType("E", [&](AsnType *type) {
        EXPECT_EQ(shownNumbers(type), "a0=4 -1=0 b1=6 2");
        EXPECT_TRUE(isNamedNumbers(type));
    });
    m.withType("N", [&](AsnType *type) { EXPECT_EQ(shownNumbers(type), "low0=-1 1"); });
    m.withComp("S", "far", [&](AsnType *comp) { EXPECT_EQ(shownNumbers(comp), "p0=1 q1=2 2"); });
    m.withType("None", [&](AsnType *type) { EXPECT_EQ(shownNumbers(type), "0"); });
}

TEST(TypeValues, ItemsOfAnEnumerationSorted) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    w.define("Mixed", w.enumerated({{"a", 3}, {"b", 1}, {"c", 2}}));
    w.define("Holes",
             w.enumerated({{"a", 3}, {"b", 1}, NamedNumber::extension(), {"c", 9}, {"d", 8}}));
    w.define("Bare", w.enumerated({{"a", 7}, NamedNumber::extension()}));
    w.define("Empty", w.enumerated({}));
    w.define("Large", w.enumerated({{"a", 4294967296}}));
    m.load(w);
    auto sorted = [](AsnType *type) {
        std::string text;
        forSortedEnumeratedValueArray(type, [&](AsnType *, int rootCount, const std::int32_t *roots,
                                                bool rootContinued, int addCount,
                                                const std::int32_t *additions, bool addContinued) {
            for (int i = 0; i < rootCount; ++i)
                text += std::to_string(roots[i]) + " ";
            text +=
                std::string(rootContinued ? "continued " : "") + std::to_string(addCount) + ": ";
            for (int i = 0; i < addCount; ++i)
                text += std::to_string(additions[i]) + " ";
            text += addContinued ? "continued" : "";
        });
        return text;
    };
    const char *const rows[][2] = {
        {"Mixed", "1 2 3 continued -1: "},
        {"Holes", "1 3 2: 8 9 continued"},
        {"Bare", "7 continued 0: "},
        {"Empty", "-1: "},
    };
    for (const auto &row : rows)
        m.withType(row[0], [&](AsnType *type) { EXPECT_EQ(sorted(type), row[1]) << row[0]; });
    m.withType("Large", [&](AsnType *type) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(sorted(type), "2147483647 continued -1: ");
        EXPECT_NE(testing::internal::GetCapturedStderr().find("** Too large enumerated item\n"),
                  std::string::npos);
    });
}

TEST(TypeValues, DefaultsOfComponents) {
    ModelSetup m;
    TreeWriter w("Vals", "vals");
    const ValueNode five = w.intValue(5);
    const ValueNode item = w.intValue(6);
    w.define("S", w.sequence({w.comp("a", w.integer()).defaultTo(five),
                              w.comp("b", w.integer()).defaultTo(item), w.comp("c", w.null())}));
    item->compStatus = 0;
    m.load(w);
    std::string text;
    m.withType("S", [&](AsnType *type) {
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int nbr) {
            forDefaultValue(comp, [&](AsnType *, AsnValue *value) {
                text += std::to_string(nbr) + "=" + shown(int64Value(value)) + " ";
            });
        });
    });
    EXPECT_EQ(text, "0=5 1=6 ");
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
    struct Row {
        void (*spoil)(TreeWriter &w);
        const char *message;
    };
    const Row rows[] = {
        {[](TreeWriter &w) { w.findValue("v")->governorRec = 0; }, "Internal error"},
        {[](TreeWriter &w) { w.findValue("v")->governorRec = 99; }, "Can not read record"},
        {[](TreeWriter &w) { w.findValue("v")->governorModule = 9; }, "Can not read record"},
        {[](TreeWriter &w) { w.findValue("v")->refRecord = 99; }, "Can not read record"},
        {[](TreeWriter &w) { w.findValue("v")->next = w.findValue("v"); }, "broken"},
        {[](TreeWriter &w) { w.findValue("r")->refRecord = w.findValue("r"); }, "broken"},
        {[](TreeWriter &w) { w.findValue("v")->refRecord = w.findValue("v"); }, "broken"},
        {[](TreeWriter &w) { w.tNodes[0].defaultValue = 99; }, "Can not read record"},
        {[](TreeWriter &w) { w.vNodes[0].valueKind = TYP_CLASS; }, "Cannot obtain a default value"},
        {[](TreeWriter &w) { w.vNodes[2].next = 2; }, "broken"},
        {[](TreeWriter &w) { w.findType("E")->namedNumbersRec = 99; }, "Can not read record"},
    };
    for (const Row &row : rows)
        EXPECT_EXIT(walkValues(row.spoil), exitsWith2, row.message) << &row - rows;
}

} // namespace
