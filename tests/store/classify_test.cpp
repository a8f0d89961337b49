#include "store/classify.h"

#include <gtest/gtest.h>

#include "store/records.h"
#include "store/strings.h"
#include "store/tree.h"
#include "store/values.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

/* Records made one by one, since most of these chains are more tangled than a compiler's. */
struct Tangle {
    ModRec *module = appendModRec(true);
    Tangle() { module->filePrefix = "tangle"; }

    RecNr type(int mainType, RecNr refRecord = 0, RecNr auxRecord = 0, std::int32_t refModule = 1) {
        TNode node;
        node.mainType = static_cast<std::uint8_t>(mainType);
        node.refModule = refModule;
        node.refRecord = refRecord;
        node.auxRecord = auxRecord;
        module->tNodes.push_back(node);
        return recCount(module, REC_TNODE);
    }
    RecNr value(int kind, RecNr refRecord = 0, RecNr auxRecord = 0) {
        VNode node;
        node.valueKind = static_cast<std::uint8_t>(kind);
        node.refModule = 1;
        node.refRecord = refRecord;
        node.auxRecord = auxRecord;
        module->vNodes.push_back(node);
        return recCount(module, REC_VNODE);
    }
    RecNr step(std::int32_t refModule, RecNr refRecord, RecNr next = 0) {
        module->sNodes.push_back({refModule, refRecord, next});
        return recCount(module, REC_SNODE);
    }
    TNode &at(RecNr nr) { return storedTNode(module, nr); }
    void makeCurrent(RecNr nr) { readRec(module, REC_TNODE, nr); }
    /* Import 2 is the predefined module. */
    void importPredefined() {
        PicRec *pic = createPicRec(module->imports, allocateUniqStri(PREDEFINED_MODULE));
        pic->picNr = 2;
        pic->picMod = findOrCreateModRec("iso", "iso", PREDEFINED_MODULE);
    }
};

RecNr skipped(Tangle *t, RecNr from, bool throughFields) {
    t->makeCurrent(from);
    skipTypes(throughFields);
    return recJustRead[REC_TNODE].nr;
}

TEST(SkipTypes, FollowsReferencesAsFarAsAsked) {
    Tangle t;
    const RecNr integer = t.type(TYP_INTEGER);
    const RecNr synonym = t.type(TYP_SYNONYM, integer);
    const RecNr unresolved = t.type(TYP_SYNONYM, 0);
    const RecNr throughUnresolved = t.type(TYP_SYNONYM, unresolved);
    const RecNr selection = t.type(TYP_SELECTION, 99, t.step(1, synonym));
    const RecNr last = t.step(1, synonym);
    const RecNr field = t.type(TYP_FIELDLIST, integer, t.step(1, 98, last));
    const RecNr toField = t.type(TYP_SYNONYM, field);
    const RecNr always = t.type(TYP_FIELDLIST, 0, last, FIELDLIST_ALWAYS_FOLLOWED);
    const RecNr byValue = t.type(TYP_FIELDLIST, 0, t.step(1, -t.value(TYP_INTEGER, synonym)));
    const RecNr bare = t.type(TYP_FIELDLIST, integer);
    struct Row {
        RecNr from, plain, throughFields;
    };
    const Row rows[] = {
        {integer, integer, integer},
        {synonym, integer, integer},
        {unresolved, unresolved, unresolved},
        {throughUnresolved, unresolved, unresolved},
        {selection, integer, integer},
        {field, field, integer},
        {toField, field, integer},
        {always, integer, integer},
        {byValue, byValue, integer},
        {bare, bare, bare},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(skipped(&t, row.from, false), row.plain) << row.from;
        EXPECT_EQ(skipped(&t, row.from, true), row.throughFields) << row.from;
    }
}

TEST(SkipTypes, PathsIntoThePredefinedModuleTakeTheRecordOfTheFieldList) {
    Tangle t;
    t.importPredefined();
    const RecNr open = t.type(TYP_OPEN);
    const RecNr synonym = t.type(TYP_SYNONYM, open);
    RecNr list = t.type(TYP_FIELDLIST, synonym, t.step(2, 5));
    EXPECT_EQ(skipped(&t, list, true), open);
    EXPECT_EQ(skipped(&t, list, false), list);
    t.makeCurrent(list);
    EXPECT_FALSE(skipFieldList());
    EXPECT_EQ(tNode.mainType, TYP_OPEN);
    /* A long chain of such lists costs no stack. */
    const RecNr path = t.at(list).auxRecord;
    for (int i = 0; i < 300000; ++i)
        list = t.type(TYP_FIELDLIST, list, path);
    EXPECT_EQ(skipped(&t, list, true), open);
}

TEST(SkipTypes, NotesTheFirstTopLevelInstantiation) {
    Tangle t;
    const RecNr base = t.type(TYP_SEQ);
    const RecNr second = t.type(TYP_SYNONYM, base, 7);
    const RecNr first = t.type(TYP_SYNONYM, second, 7);
    const RecNr inner = t.type(TYP_SYNONYM, first, 7);
    t.at(inner).parentRec = base;
    t.makeCurrent(inner);
    EXPECT_TRUE(isInstantiatedTNode());
    EXPECT_FALSE(isTopLevelInstantiatedTNode());
    NodePlace place;
    skipTypesCatchInst(true, &place);
    EXPECT_EQ(place, (NodePlace{t.module, first}));
    EXPECT_EQ(recJustRead[REC_TNODE].nr, base);
    t.makeCurrent(base);
    skipTypesCatchInst(true, &place);
    EXPECT_EQ(place, NodePlace{});
    for (const int kind : {TYP_SELECTION, TYP_ANY, TYP_FIELDLIST}) {
        t.makeCurrent(t.type(kind, 0, 7));
        EXPECT_FALSE(isInstantiatedTNode()) << kind;
    }
}

TEST(SkipTypes, BrokenChainsEndTheRun) {
    Tangle t;
    t.importPredefined();
    const RecNr a = t.type(TYP_SYNONYM, 2);
    t.type(TYP_SYNONYM, a);
    const RecNr self = t.type(TYP_SELECTION, 0, t.step(1, 3));
    const RecNr circle = t.type(TYP_FIELDLIST, 4, t.step(2, 1));
    t.step(1, 1, 3);
    for (const RecNr nr : {a, self, circle, t.type(TYP_FIELDLIST, 0, 3)})
        EXPECT_EXIT(skipped(&t, nr, true), exitsWith2,
                    "^\nFATAL ERROR : Syntax tree inconsistent\n +tangle\n\n$")
            << nr;
    const RecNr least = std::numeric_limits<RecNr>::min();
    for (const RecNr nr :
         {t.type(TYP_SYNONYM, 99), t.type(TYP_SYNONYM, 1, 0, 9), t.type(TYP_SYNONYM, 1, 0, 0),
          t.type(TYP_SELECTION, 0, t.step(1, -1)), t.type(TYP_FIELDLIST, 0, t.step(9, 1)),
          t.type(TYP_FIELDLIST, 0, t.step(1, least)),
          t.type(TYP_FIELDLIST, 0, t.step(1, 1, least))})
        EXPECT_EXIT(skipped(&t, nr, true), exitsWith2, "Can not read record from syntax tree")
            << nr;
}

TEST(SkipValues, FollowsSynonymsAndFields) {
    Tangle t;
    const RecNr number = t.value(TYP_INTEGER);
    const RecNr synonym = t.value(TYP_SYNONYM, number);
    const RecNr field = t.value(TYP_FIELDLIST, 0, t.step(1, -synonym));
    const RecNr unresolved = t.value(TYP_SYNONYM);
    const auto end = [&](RecNr from, bool throughFields) {
        readRec(t.module, REC_VNODE, from);
        skipValues(throughFields);
        return recJustRead[REC_VNODE].nr;
    };
    EXPECT_EQ(end(synonym, false), number);
    EXPECT_EQ(end(field, false), field);
    EXPECT_EQ(end(field, true), number);
    EXPECT_EQ(end(unresolved, true), unresolved);
    const RecNr toType = t.value(TYP_FIELDLIST, 0, t.step(1, 1));
    EXPECT_EXIT(end(toType, true), exitsWith2, "Can not read record");
    storedVNode(t.module, number) = storedVNode(t.module, field);
    EXPECT_EXIT(end(synonym, true), exitsWith2, "Syntax tree inconsistent");
}

/* The letters of the questions that are answered with yes; each leaves its record current. */
std::string yes(std::initializer_list<std::pair<char, bool (*)()>> questions, RecKind kind) {
    std::string letters;
    const NodePlace place = recJustRead[kind];
    for (const auto &[letter, question] : questions) {
        if (question())
            letters += letter;
        EXPECT_EQ(recJustRead[kind], place);
    }
    return letters;
}

TEST(Classify, TypesClassesAndSets) {
    Tangle t;
    const auto kinds = [&](RecNr nr, bool isSet = false) {
        t.at(nr).nodeFlags = isSet ? static_cast<std::uint32_t>(NODE_SET) : 0;
        recJustRead[REC_TNODE] = {};
        t.makeCurrent(nr);
        return yes({{'C', isClassTNode}, {'O', isObjSetTNode}}, REC_TNODE);
    };
    const RecNr integer = t.type(TYP_INTEGER);
    EXPECT_EQ(kinds(integer), "");
    /* A reference to a set looks like its type; the set itself tells by its flag. */
    const RecNr valueSet = t.type(TYP_SYNONYM, integer);
    EXPECT_EQ(kinds(valueSet, true), "");
    EXPECT_EQ(kinds(t.type(TYP_SYNONYM, valueSet)), "");
    for (const int kind : {TYP_CLASS, TYP_TYPE_ID, TYP_ABSTR_STX}) {
        const RecNr cls = t.type(kind);
        EXPECT_EQ(kinds(t.type(TYP_SYNONYM, cls)), "C");
        EXPECT_EQ(kinds(t.type(TYP_SYNONYM, cls), true), "CO");
        EXPECT_EQ(kinds(cls, true), "O");
    }

    const auto valueKinds = [&](RecNr nr, bool isSet) {
        storedVNode(t.module, nr).valueFlags = isSet ? VALUE_SET : 0;
        recJustRead[REC_VNODE] = {};
        readRec(t.module, REC_VNODE, nr);
        return yes({{'O', isObjVNode}}, REC_VNODE);
    };
    const RecNr object = t.value(TYP_SYNONYM, t.value(TYP_CLASS));
    const RecNr number = t.value(TYP_INTEGER);
    EXPECT_EQ(valueKinds(number, false) + valueKinds(number, true), "");
    EXPECT_EQ(valueKinds(object, false) + valueKinds(object, true), "O");
}

TEST(Find, FirstDefinitionInListOrder) {
    Tangle t;
    const RecNr broken = 77;
    for (const char *name : {"Late", "A", "B", "A", "C"}) {
        const RecNr nr = t.type(TYP_NULL);
        t.at(nr).nameIdx = putStri(t.module, name);
        t.at(nr).next = nr + 1;
    }
    t.module->firstType = 2;
    t.at(4).nameIdx = -t.at(4).nameIdx;
    t.at(5).next = broken;
    const auto find = [&](const char *name) {
        return findTypeById(t.module, name) ? recJustRead[REC_TNODE].nr : 0;
    };
    EXPECT_EQ(find("B"), 3);
    EXPECT_EQ(find("A"), 2);
    EXPECT_EQ(find("C"), 5);
    EXPECT_EQ(find("B"), 3);
    EXPECT_EXIT(find("b"), exitsWith2, "Can not read record");
    t.at(5).next = 2;
    t.module->typesByName = {};
    EXPECT_EXIT(find("Late"), exitsWith2, "Syntax tree inconsistent\n +tangle");

    for (const char *name : {"x", "", "y"}) {
        const RecNr nr = t.value(TYP_NULL);
        storedVNode(t.module, nr).nameIdx = *name == '\0' ? 0 : putStri(t.module, name);
        storedVNode(t.module, nr).next = nr < 3 ? nr + 1 : 0;
    }
    t.module->firstValue = 1;
    EXPECT_FALSE(findValueById(t.module, "z"));
    EXPECT_TRUE(findValueById(t.module, "y"));
    EXPECT_EQ(recJustRead[REC_VNODE].nr, 3);
}

} // namespace
