#include "objects/objects.h"

#include "model/typequeries.h"
#include "model/valuequeries.h"
#include "objects/fieldvalues.h"
#include "objects/objectorder.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string idOf(AsnObject *object) {
    const Text text = getIdOf(object);
    return text.empty() ? "<>" : text;
}

std::string classOf(AsnObjClass *objClass) {
    return getDefObjClassId(objClass);
}

/* "OP[ a0 <>1 s2! ]3": a class, its objects with their rows ("!" for a skipped one), the rows of
   the table. */
std::string inClassOrder(AsnModule *module, bool withBuiltins) {
    std::string text;
    forEachObjectInClassOrder(
        module,
        [&](AsnObjClass *objClass, bool skipped) {
            text += classOf(objClass) + (skipped ? "![ " : "[ ");
        },
        [&](AsnObjClass *, AsnObject *object, int tableIndex, bool skipped) {
            text += idOf(object) + std::to_string(tableIndex) + (skipped ? "! " : " ");
            /* Walks inside don't disturb the outer one. */
            forEachObject(module, [](AsnObject *, int) {});
        },
        [&](AsnObjClass *, int tableCount, bool) {
            text += "]" + std::to_string(tableCount) + " ";
        },
        withBuiltins);
    return text;
}

void withObject(const ModelSetup &setup, const std::string &name,
                Call<void(AsnObject *object)> func) {
    bool found = false;
    forEachObject(setup.module, [&](AsnObject *object, int) {
        if (getRefOf(object) != name)
            return;
        found = true;
        func(object);
    });
    EXPECT_TRUE(found) << name;
}

/* A class whose objects hold an object, and objects, of the same class. */
struct Linked {
    explicit Linked(TreeWriter &writer, const char *name = "OP")
        : w(writer), next(w.valueField("next", w.ref(name)).optional()),
          others(w.setField("Others", w.ref(name)).optional()),
          op(w.define(name, w.objectClass({next, others}))) {}
    ValueNode object(std::initializer_list<ValueNode> parts = {}) { return w.object(op, parts); }
    ValueNode ref(const char *name) { return w.valueRef(name).governedBy(op); }
    ValueNode nextIs(ValueNode value) { return w.fieldValue(next, value); }
    /* The field set to a reference to a set, or to one that is written in place. */
    ValueNode othersAre(TypeNode set) {
        if (set->nameIdx == 0)
            set->nodeFlags |= NODE_SET;
        return w.fieldType(others, set);
    }
    TreeWriter &w;
    TypeNode next;
    TypeNode others;
    TypeNode op;
};

TEST(Objects, DefinitionsOfAModule) {
    TreeWriter other("Far_Module", "far");
    Linked far(other);
    other.defineValue("far", far.op, far.object()).line(4);
    TreeWriter w("Mod", "mod");
    const std::int32_t farNr = w.import(other);
    TypeNode integer = w.define("Int", w.integer());
    w.defineValue("number", integer, w.intValue(1));
    ValueNode alias = w.valueRefTo(farNr, other.findValue("far"));
    w.defineValue("alias", integer, alias).naming("-ONAME=Alias").line(11);
    alias->governorModule = farNr;
    alias->governorRec = far.op.nr;
    Linked own(w, "OWN");
    w.defineValue("here", own.op, own.object());
    w.defineValue("hidden", own.op, own.object())->skipInWalk = 1;
    ModelSetup setup;
    setup.import(other, "far");
    setup.load(w);

    std::string all;
    forEachObject(setup.module, [&](AsnObject *object, int nbr) {
        all +=
            std::to_string(nbr) + idOf(object) + ":" + classOf(getObjClassOfObject(object)) + " ";
    });
    EXPECT_EQ(all, "0Alias:OP 1here:OWN ");
    withObject(setup, "alias", [&](AsnObject *object) {
        EXPECT_EQ(getBaseRefOf(object), "far");
        EXPECT_EQ(object->baseModule->moduleName, "Far_Module");
        EXPECT_EQ(getModuleOf(object), setup.module);
        EXPECT_EQ(getObjectDefinitionLine(object), 11) << "its own, not that of what it refers to";
        EXPECT_TRUE(isDefinedBaseObject(object));
    });
    int calls = 0;
    forObjectByRecNr(
        setup.module, [&](AsnObject *, int) { ++calls; }, w.findValue("hidden").nr);
    EXPECT_EQ(calls, 1);
    forObjectByRecNr(
        setup.module, [&](AsnObject *, int) { ++calls; }, w.findValue("number").nr);
    forObjectByRecNr(
        setup.module, [&](AsnObject *, int) { ++calls; }, 0);
    EXPECT_EQ(calls, 1);
    EXPECT_EXIT(forEachObject(setup.module, nullptr), exitsWith2, "Call-back");
}

TEST(ObjectOrder, ClassesInTurnEachNumberedFromZero) {
    TreeWriter w("Mod", "mod");
    Linked a(w, "A"), b(w, "B"), c(w, "C");
    c.op.skipped();
    w.define("ALIAS", w.ref("A"));
    w.defineValue("a1", a.op, a.object());
    w.defineValue("b1", b.op, b.object());
    w.defineValue("c1", c.op, c.object());
    w.defineValue("a2", w.findType("ALIAS"), w.object(w.findType("ALIAS"), {}));
    w.defineValue("c2", c.op, c.object());
    w.defineValue("b2", b.op, b.object());
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(inClassOrder(setup.module, false), "A[ a10 a21 ]2 B[ b10 b21 ]2 C![ c10! c20! ]0 ");
    EXPECT_EQ(inClassOrder(setup.module, true), inClassOrder(setup.module, false));
    int rows = 0;
    forEachObjectInClassOrder(
        setup.module, nullptr, nullptr,
        [&](AsnObjClass *, int tableCount, bool) { rows += tableCount; }, true);
    EXPECT_EQ(rows, 4);
    EXPECT_EXIT(forEachObjectInClassOrder(setup.module, nullptr, nullptr, nullptr, true),
                exitsWith2, "Call-back");
}

TEST(ObjectOrder, InlineObjectsFollowTheFirstObjectOrComeFirst) {
    TreeWriter w("Mod", "mod");
    Linked a(w, "A"), b(w, "B"), only(w, "ONLY");
    TypeNode skippedField = w.valueField("x", w.ref("B")).skipped();
    TypeNode holder = w.define("HOLDER", w.objectClass({skippedField}));
    /* An inline object that holds another one. */
    ValueNode inner = a.nextIs(a.object());
    ValueNode outer = a.nextIs(a.object({inner}));
    w.defineValue("a1", a.op, a.object({outer}));
    w.defineValue("b1", b.op, b.object());
    w.defineValue("a2", a.op, a.object());
    ValueNode skipped = w.fieldValue(skippedField, b.object());
    w.defineValue("h", holder, w.object(holder, {skipped}));
    w.defineSet("Bs", w.ref("B"), w.sub(SUB_UNION, {w.single(b.ref("b1")), w.single(b.object())}));
    w.defineSet("Only", w.ref("ONLY"), w.single(only.object()));
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(inClassOrder(setup.module, true),
              "A[ a10 <>1 <>2 a23 ]4 B[ <>0! <>0 b11 ]2 HOLDER[ h0 ]1 ONLY[ <>0 ]1 ");
    EXPECT_EQ(inClassOrder(setup.module, false), "A[ a10 a21 ]2 B[ b10 ]1 HOLDER[ h0 ]1 ");
}

TEST(ObjectOrder, AnInlineObjectIsListedAtEachAppearance) {
    TreeWriter w("Mod", "mod");
    Linked a(w, "A");
    TypeNode set = w.defineSet("Set", w.ref("A"),
                               w.sub(SUB_UNION, {w.single(a.object()), w.single(a.ref("a2"))}));
    ValueNode first = a.othersAre(w.ref("Set"));
    w.defineValue("a1", a.op, a.object({first}));
    ValueNode second = a.othersAre(set);
    w.defineValue("a2", a.op, a.object({second}));
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(inClassOrder(setup.module, true), "A[ a10 <>1 <>2 <>3 a24 ]5 ");
}

TEST(ObjectOrder, InlineObjectsOfOtherModulesBelongToThose) {
    TreeWriter other("Far_Module", "far");
    Linked far(other);
    for (int i = 0; i < 50; ++i)
        other.intValue(i);
    TypeNode farSet = other.defineSet("FarSet", other.ref("OP"), other.single(far.object()));
    TreeWriter w("Mod", "mod");
    const std::int32_t farNr = w.import(other);
    ValueNode place = w.value(TYP_NONE);
    place->refModule = farNr;
    place->refRecord = farSet.nr;
    RecNr contained = w.sub(SUB_INCLUDES);
    w.subRecs[static_cast<std::size_t>(contained) - 1].first = place;
    w.defineSet("Near", w.ref(other, "OP"), contained);
    ModelSetup setup;
    setup.import(other, "far");
    setup.load(w);
    EXPECT_EQ(inClassOrder(setup.module, true), "");
    AsnModule *module = getAsnModule(modRecList.records.back().get());
    EXPECT_EQ(inClassOrder(module, true), "OP[ <>0 ]1 ");
}

/* A class with a type field, values and sets of values, some of them optional. */
struct Protocol {
    explicit Protocol(TreeWriter &writer)
        : w(writer), id(w.valueField("id", w.integer(0, 255))), arg(w.typeField("Arg").optional()),
          prio(w.valueField("prio", w.integer(0, 9)).optional().defaultTo(w.intValue(7))),
          note(w.valueField("note", w.string(TYP_IA5STR, 1, 9)).optional()),
          codes(w.setField("Codes", w.integer()).optional()),
          op(w.define("OP", w.objectClass({id, arg, prio, note, codes}))) {}
    TypeNode values(RecNr elements) {
        TypeNode set = w.integer().constrained(elements);
        set->nodeFlags |= NODE_SET;
        return set;
    }
    ValueNode withCodes(TypeNode set) { return w.fieldType(codes, set); }
    TreeWriter &w;
    TypeNode id, arg, prio, note, codes, op;
};

std::string contentsOf(AsnFieldValue *value) {
    std::string text;
    forTypeFieldValue(value, [&](AsnFieldValue *, AsnType *type) {
        EXPECT_TRUE(isPartialTypeInfo(type));
        text += "type " + nameOf(type);
    });
    forEntryTypeFieldValue(value, [&](AsnFieldValue *, AsnType *, int entryIndex) {
        text += " entry " + std::to_string(entryIndex);
    });
    forFixedTypeValueFieldValue(value, [&](AsnFieldValue *, AsnValue *asnValue) {
        text += getValueMainType(asnValue) == TYP_INTEGER ? "value " + integerValueStri(asnValue)
                                                          : "other value";
    });
    forFixedTypeValueSetFieldValue(value, [&](AsnFieldValue *, AsnValue *asnValue, int index) {
        text += (index > 0 ? "," : "") + shown(int64Value(asnValue));
    });
    forObjectFieldValue(value, [&](AsnFieldValue *, AsnObject *object) { text += idOf(object); });
    forObjectSetFieldValue(value, [&](AsnFieldValue *, AsnObject *object, int index) {
        text += std::to_string(index) + idOf(object) + " ";
    });
    return text;
}

/* "0:value 5|1:-|2:value 7 default": each field of the class. */
std::string fieldsOf(AsnObject *object) {
    std::string text;
    forEachPossibleObjectFieldValue(object, [&](AsnObject *, AsnFieldValue *value, int fieldNr) {
        text += (fieldNr > 0 ? "|" : "") + std::to_string(fieldNr) + ":" +
                (isEmptyFieldValue(value) ? "-" : contentsOf(value)) +
                (value->isDefault ? " default" : "");
        EXPECT_EQ(contentsOf(value).empty(), isEmptyFieldValue(value));
    });
    return text;
}

std::string optionalFieldsOf(AsnObject *object) {
    std::string text;
    const int count = forEachOptionalObjectFieldValue(
        object, [&](AsnObject *, AsnFieldValue *, int optionalNr, int fieldNr) {
            text += std::to_string(optionalNr) + "=" + std::to_string(fieldNr) + " ";
        });
    return text + "of " + std::to_string(count);
}

TEST(FieldValues, SettingsDefaultsAndGaps) {
    TreeWriter w("Mod", "mod");
    w.define("Msg", w.sequence({})).entry();
    w.define("Plain", w.sequence({}));
    w.define("Msg2", w.sequence({})).entry();
    w.define("Alias", w.ref("Msg2"));
    Protocol p(w);
    w.defineValue("seven", w.define("Int", w.integer()), w.intValue(77));
    ValueNode id = w.fieldValue(p.id, w.intValue(5));
    ValueNode arg = w.fieldType(p.arg, w.ref("Alias"));
    ValueNode prio = w.fieldValue(p.prio, w.valueRef("seven"));
    ValueNode note = w.fieldValue(p.note, w.textValue(TYP_IA5STR, "hi"));
    w.defineValue("full", p.op, w.object(p.op, {id, arg, prio, note}));
    id = w.fieldValue(p.id, w.intValue(6));
    note = w.fieldValue(p.note, w.textValue(TYP_IA5STR, "ho"));
    w.defineValue("gaps", p.op, w.object(p.op, {id, note}));
    id = w.fieldValue(p.id, w.intValue(8));
    arg = w.fieldType(p.arg, w.ref("Plain"));
    w.defineValue("plain", p.op, w.object(p.op, {id, arg}));
    /* A setting that names no field of the class stops the settings behind it from being seen. */
    ValueNode stray = w.fieldValue(w.findType("Msg"), w.intValue(1));
    id = w.fieldValue(p.id, w.intValue(9));
    w.defineValue("stray", p.op, w.object(p.op, {stray, id}));
    w.defineValue("bare", p.op, w.object(p.op, {}));
    ModelSetup setup;
    setup.load(w);

    struct Row {
        const char *name;
        const char *fields;
        const char *optional;
    };
    const Row rows[] = {
        {"full", "0:value 5|1:type  entry 1|2:value 77|3:other value|4:-", "0=1 1=2 2=3 of 3"},
        {"gaps", "0:value 6|1:-|2:value 7 default|3:other value|4:-", "0=2 1=3 of 2"},
        {"plain", "0:value 8|1:type |2:value 7 default|3:-|4:-", "0=1 1=2 of 2"},
        {"stray", "0:-|1:-|2:value 7 default|3:-|4:-", "0=2 of 1"},
        {"bare", "0:-|1:-|2:value 7 default|3:-|4:-", "0=2 of 1"},
    };
    for (const Row &row : rows)
        withObject(setup, row.name, [&](AsnObject *object) {
            EXPECT_EQ(fieldsOf(object), row.fields) << row.name;
            EXPECT_EQ(optionalFieldsOf(object), row.optional) << row.name;
        });
}

TEST(FieldValues, ValueSets) {
    TreeWriter w("Mod", "mod");
    Protocol p(w);
    const std::uint8_t open = 0;
    auto define = [&](const char *name, TypeNode set) {
        ValueNode codes = p.withCodes(set);
        w.defineValue(name, p.op, w.object(p.op, {codes}));
    };
    define("range", p.values(w.range(1, 3)));
    RecNr low = w.intValue(1).nr;
    RecNr high = w.intValue(5).nr;
    define("open", p.values(w.rangeOf(low, high, open)));
    RecNr parts[] = {w.single(w.intValue(8)), w.range(-2, -1), w.single(w.intValue(3))};
    define("union", p.values(w.sub(SUB_UNION, {parts[0], parts[1], parts[2]})));
    define("none", p.values(w.range(3, 1)));
    define("all", p.values(w.range(MIN_VALUE, MAX_VALUE)));
    TypeNode real = w.real().constrained(w.range(1, 3));
    real->nodeFlags |= NODE_SET;
    define("real", real);
    /* The set's elements count, not what restricts their type. */
    w.define("Small", w.integer(0, 100));
    define("named", w.refTo(1, w.defineSet("Named", w.ref("Small"), w.single(w.intValue(42))).nr));
    define("bare", w.ref("Small"));
    ModelSetup setup;
    setup.load(w);
    auto codesOf = [&](const char *name) {
        std::string text;
        withObject(setup, name, [&](AsnObject *object) {
            forEachPossibleObjectFieldValue(object, [&](AsnObject *, AsnFieldValue *value, int nr) {
                if (nr == 4)
                    text = contentsOf(value) + "#" +
                           std::to_string(getFixedTypeValueSetFieldSize(value));
            });
        });
        return text;
    };
    const char *const rows[][2] = {
        {"range", "1,2,3#3"}, {"open", "2,3,4#3"}, {"union", "8,-2,-1,3#4"},
        {"none", "#0"},       {"real", "#0"},      {"named", "42#1"},
        {"bare", "#0"}};
    for (const auto &row : rows)
        EXPECT_EQ(codesOf(row[0]), row[1]) << row[0];
    EXPECT_EXIT(codesOf("all"), exitsWith2, "Too complex value set");
}

TEST(FieldValues, ObjectsAndObjectSets) {
    TreeWriter w("Mod", "mod");
    Linked a(w, "A");
    RecNr parts[] = {w.single(a.ref("x")), w.single(a.object())};
    w.defineSet("Set", w.ref("A"), w.sub(SUB_UNION, {parts[0], parts[1]}));
    TypeNode bare = w.define("Bare", w.ref("A"));
    bare->nodeFlags |= NODE_SET;
    w.defineValue("x", a.op, a.object());
    ValueNode next = a.nextIs(w.valueRef("x"));
    ValueNode others = a.othersAre(w.ref("Set"));
    w.defineValue("y", a.op, a.object({next, others}));
    others = a.othersAre(w.ref("A").constrained(w.single(a.ref("y"))));
    w.defineValue("inPlace", a.op, a.object({others}));
    others = a.othersAre(w.ref("Bare"));
    w.defineValue("empty", a.op, a.object({others}));
    ModelSetup setup;
    setup.load(w);
    std::string all;
    forEachObject(setup.module, [&](AsnObject *object, int) {
        all += idOf(object) + "(";
        forEachPossibleObjectFieldValue(object, [&](AsnObject *, AsnFieldValue *value, int nr) {
            all += (nr > 0 ? ";" : "") + contentsOf(value);
        });
        all += ") ";
    });
    EXPECT_EQ(all, "x(;) y(x;0x 1<> ) inPlace(;0y ) empty(;) ");
}

} // namespace
