#include "objects/objectsets.h"

#include "model/modules.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

/* A class with one value field, and objects that set it. */
struct Operations {
    explicit Operations(TreeWriter &writer)
        : w(writer), code(w.valueField("code", w.integer(0, 255))),
          op(w.define("OP", w.objectClass({code}))) {
        for (const char *name : {"a", "b", "c"})
            w.defineValue(name, op, object(0));
    }
    ValueNode object(int number) {
        ValueNode value = w.fieldValue(code, w.intValue(number));
        return w.object(op, {value});
    }
    RecNr single(const char *name) { return w.single(w.valueRef(name).governedBy(op)); }
    TreeWriter &w;
    TypeNode code;
    TypeNode op;
};

std::string objectsOf(AsnObjectSet *objectSet) {
    std::string text;
    forObjectSet(objectSet, [&](AsnObjectSet *father, AsnObject *object, int index) {
        EXPECT_EQ(father, nullptr);
        text += std::to_string(index) + getIdOf(object) + " ";
    });
    return text;
}

void withSet(const ModelSetup &setup, const std::string &name,
             Call<void(AsnObjectSet *objectSet)> func) {
    bool found = false;
    forEachObjectSet(setup.module, [&](AsnObjectSet *objectSet, int) {
        if (getDefObjectSetId(objectSet) != name)
            return;
        found = true;
        func(objectSet);
    });
    EXPECT_TRUE(found) << name;
}

TEST(ObjectSets, ContainedSetsStandInPlaceAndMarkersCountForNothing) {
    TreeWriter w("Mod", "mod");
    Operations ops(w);
    TypeNode inner = w.defineSet("Inner", w.ref("OP"),
                                 w.sub(SUB_UNION, {ops.single("c"), w.single(ops.object(7)),
                                                   w.sub(SUB_EXTENDED_VALUE_SET)}));
    w.defineSet("Outer", w.ref("OP"),
                w.sub(SUB_UNION, {ops.single("b"), w.includes(inner), ops.single("a")}));
    w.defineSet("One", w.ref("OP"), ops.single("b"));
    w.defineSet("Empty", w.ref("OP"), w.sub(SUB_UNION));
    TypeNode bare = w.define("Bare", w.ref("OP"));
    bare->nodeFlags |= NODE_SET;
    ModelSetup setup;
    setup.load(w);

    std::string all;
    forEachObjectSet(setup.module, [&](AsnObjectSet *objectSet, int nbr) {
        all += std::to_string(nbr) + getDefObjectSetId(objectSet) + ": " + objectsOf(objectSet);
        EXPECT_EQ(getDefObjClassId(getObjClassOfObjectSet(objectSet)), "OP");
    });
    EXPECT_EQ(all, "0Inner: 0c 1 1Outer: 0b 1c 2 3a 2One: 0b 3Empty: 4Bare: ");
    withSet(setup, "Outer", [&](AsnObjectSet *outer) {
        /* A call-back may walk another set. */
        std::string nested;
        forObjectSet(outer, [&](AsnObjectSet *, AsnObject *, int index) {
            withSet(setup, "One", [&](AsnObjectSet *one) {
                nested += std::to_string(index) + "(" + objectsOf(one) + ")";
            });
        });
        EXPECT_EQ(nested, "0(0b )1(0b )2(0b )3(0b )");
        EXPECT_EXIT(forObjectSet(outer, nullptr), exitsWith2, "Call-back");
    });
}

TEST(ObjectSets, NamesAndOptions) {
    TreeWriter w("Mod", "mod");
    Operations ops(w);
    w.defineSet("Set", w.ref("OP"), ops.single("a"))
        .naming("-OSNAME=OpSet")
        .backendOption("-//hello")
        .line(12);
    w.define("P", w.type(TYP_TYPE_ID));
    w.defineSet("Ids", w.ref("P"), w.sub(SUB_UNION)).skipped();
    ModelSetup setup;
    setup.load(w);
    withSet(setup, "OpSet", [](AsnObjectSet *objectSet) {
        EXPECT_EQ(getDefObjectSetId(objectSet), "OpSet");
        objectSet->compStatus = objectSet->base.compStatus = TCS_MANDATORY;
        EXPECT_EQ(getDefObjectSetId(objectSet), "?!?");
    });
    withSet(setup, "Ids", [](AsnObjectSet *objectSet) {
        EXPECT_TRUE(isPredefinedObjClass(getObjClassOfObjectSet(objectSet)));
    });
}

TEST(ObjectSets, ClassAndObjectsOfOtherModules) {
    TreeWriter base("Base_Module", "base");
    Operations ops(base);
    TypeNode far = base.defineSet("FarSet", base.ref("OP"), ops.single("c"));
    TreeWriter middle("Middle", "middle");
    middle.import(base);
    middle.define("MID", middle.ref(base, "OP"));
    TreeWriter w("Mod", "mod");
    const std::int32_t baseNr = w.import(base);
    w.import(middle);
    RecNr farObject = w.single(w.valueRefTo(baseNr, base.findValue("b")));
    ValueNode place = w.value(TYP_NONE);
    place->refModule = baseNr;
    place->refRecord = far.nr;
    RecNr contained = w.sub(SUB_INCLUDES);
    w.subRecs[static_cast<std::size_t>(contained) - 1].first = place;
    w.defineSet("Near", w.ref(middle, "MID"), w.sub(SUB_UNION, {farObject, contained}));
    TreeWriter user("User", "user");
    user.import(middle);
    user.defineSet("Unnamed", user.ref(middle, "MID"), user.sub(SUB_UNION));
    w.import(user);
    ModelSetup setup;
    setup.import(base, "base");
    setup.import(middle, "middle");
    setup.import(user, "user");
    setup.load(w);
    withSet(setup, "Near", [](AsnObjectSet *objectSet) {
        EXPECT_EQ(objectsOf(objectSet), "0b 1c ");
        EXPECT_EQ(getObjClassOfObjectSet(objectSet)->baseModule->moduleName, "Base_Module");
    });
    /* The class lies in a module that the set's module doesn't import itself. */
    for (const auto &record : modRecList.records) {
        if (record->moduleName != "User")
            continue;
        AsnModule *module = getAsnModule(record.get());
        forEachObjectSet(module, [](AsnObjectSet *objectSet, int) {
            EXPECT_EQ(getDefObjClassId(getObjClassOfObjectSet(objectSet)), "OP");
        });
    }
}

/* Each path through the sets is short, but there is no end of paths. */
TEST(ObjectSets, SetsThatDoubleOverAndOverEndTheRun) {
    TreeWriter w("Mod", "mod");
    Operations ops(w);
    TypeNode level = w.defineSet("Level", w.ref("OP"), ops.single("a"));
    for (int i = 0; i < 40; ++i)
        level = w.defineSet("Level" + std::to_string(i), w.ref("OP"),
                            w.sub(SUB_UNION, {w.includes(level), w.includes(level)}));
    ModelSetup setup;
    setup.load(w);
    EXPECT_EXIT(withSet(setup, "Level39", [](AsnObjectSet *objectSet) { objectsOf(objectSet); }),
                exitsWith2, "inconsistent");
}

} // namespace
