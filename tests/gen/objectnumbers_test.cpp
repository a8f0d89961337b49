#include "gen/classmeta.h"

#include <gtest/gtest.h>

#include "objects/objectsets.h"
#include "tests/support/inprocess.h"

namespace {

/* Two classes whose objects take turns, and an inline object in a set. */
void defineObjects(TreeWriter &w) {
    TypeNode a = w.define("A", w.objectClass({}));
    TypeNode b = w.define("B", w.objectClass({})).backendOption("-ACCESS-ROUTINES=NONE");
    w.define("C", w.ref("A"));
    for (const char *name : {"a0", "b0", "a2"}) {
        TypeNode objClass = name[0] == 'a' ? a : b;
        w.defineValue(name, objClass, w.object(objClass, {}));
    }
    RecNr parts[] = {w.single(w.object(a, {})), w.single(w.valueRef("a2").governedBy(a)),
                     w.single(w.valueRef("b0").governedBy(b))};
    w.defineSet("Set", w.ref("A"), w.sub(SUB_UNION, {parts[0], parts[1], parts[2]}));
}

std::string rowsOfSet(AsnModule *module) {
    std::string text;
    forEachObjectSet(module, [&](AsnObjectSet *objectSet, int) {
        forObjectSet(objectSet, [&](AsnObjectSet *, AsnObject *object, int) {
            const std::string id = getMetaObjectId(object);
            text += (id.empty() ? "<>" : id) + "=" + std::to_string(getMetaObjectNr(object)) + " ";
        });
    });
    return text;
}

TEST(ObjectNumbers, RowsOfNamedAndOfImportedModules) {
    TreeWriter other("Far_Module", "far");
    defineObjects(other);
    TreeWriter w("Mod", "mod");
    const std::int32_t farNr = w.import(other);
    ValueNode place = w.value(TYP_NONE);
    place->refModule = farNr;
    place->refRecord = other.findType("Set").nr;
    RecNr contained = w.sub(SUB_INCLUDES);
    w.subRecs[static_cast<std::size_t>(contained) - 1].first = place;
    w.defineSet("Near", w.ref(other, "A"), contained);
    WorkDir dir;
    ASSERT_TRUE(other.save(dir.path("far.stx")));
    startTool(dir, w);
    withModule("mod", [](AsnModule *module) {
        initializeObjects(module);
        EXPECT_EQ(rowsOfSet(module), "<>=1 a2=2 b0=0 ");
    });
    withModule("far", [](AsnModule *module) {
        EXPECT_EQ(rowsOfSet(module), "<>=1 a2=2 b0=0 ");
        std::string ids;
        forEachObjClass(module, [&](AsnObjClass *objClass, int) {
            ids += std::string(getMetaClassId(objClass)) + "/" + getMetaBaseClassId(objClass) +
                   std::to_string(getMetaClassAccessRoutines(objClass)) + " ";
        });
        EXPECT_EQ(ids, "A/A1 B/B0 C/A1 ");
    });
}

} // namespace
