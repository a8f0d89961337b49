#include "objects/classes.h"

#include "model/hooks.h"
#include "store/records.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string defId(AsnObjClass *objClass) {
    return getDefObjClassId(objClass);
}

std::string baseId(AsnObjClass *objClass) {
    return getBaseObjClassId(objClass);
}

std::string fieldId(AsnObjClassField *field) {
    return getIdOf(field);
}

void withClass(const ModelSetup &setup, const std::string &name,
               Call<void(AsnObjClass *objClass)> func) {
    bool found = false;
    forEachObjClass(setup.module, [&](AsnObjClass *objClass, int) {
        if (getRefOf(objClass) != name)
            return;
        found = true;
        func(objClass);
    });
    EXPECT_TRUE(found) << name;
}

/* "0 code kind 1, 1 Arg kind 0": number, name and kind of each field. */
std::string fieldsOf(AsnObjClass *objClass) {
    std::string text;
    forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int nbr) {
        text += (text.empty() ? "" : ", ") + std::to_string(nbr) + " " + fieldId(field) + " kind " +
                std::to_string(field->fieldKind);
    });
    return text;
}

TEST(Classes, WalkShowsClassesAloneAndNests) {
    TreeWriter w("Mod", "mod");
    w.define("A", w.objectClass({w.typeField("T")}));
    w.define("Int", w.integer());
    w.define("Hidden", w.objectClass({})).hidden();
    w.define("B", w.ref("A"));
    w.defineSet("Set", w.ref("A"), w.sub(SUB_UNION));
    w.define("P", w.type(TYP_TYPE_ID));
    w.define("Q", w.type(TYP_ABSTR_STX)).naming("-CLNAME=Stx");
    ModelSetup setup;
    setup.load(w);

    std::string all;
    forEachObjClass(setup.module, [&](AsnObjClass *objClass, int nbr) {
        int inner = 0;
        forEachObjClass(setup.module, [&](AsnObjClass *, int) { ++inner; });
        EXPECT_EQ(inner, 4);
        all += std::to_string(nbr) + defId(objClass) + "/" + baseId(objClass) + " ";
    });
    EXPECT_EQ(all, "0A/A 1B/A 2P/TYPE_IDENTIFIER 3Stx/ABSTRACT_SYNTAX ");
    EXPECT_EXIT(forEachObjClass(setup.module, nullptr), exitsWith2, "Call-back");

    withClass(setup, "P", [](AsnObjClass *objClass) {
        EXPECT_EQ(getBaseObjClassRef(objClass), "TYPE-IDENTIFIER");
        EXPECT_TRUE(isPredefinedObjClass(objClass));
        EXPECT_EQ(fieldsOf(objClass), "");
    });
}

TEST(Classes, AliasSpeaksOfItselfAndOfItsBase) {
    TreeWriter w("Mod", "mod");
    w.define("A", w.objectClass({w.typeField("T").optional(), w.typeField("U")}))
        .option(OPT_COMPS_AS_POINTERS)
        .text("t1", "base")
        .backendOption("-//far")
        .line(3);
    w.define("B", w.ref("A"))
        .skipped()
        .option(OPT_BIT_2)
        .text("t1", "own")
        .backendOption("-//near")
        .backendOption("-VELMO=X");
    w.define("C", w.ref("A"));
    ModelSetup setup;
    static std::string options;
    modelHooks.newBEClassMetaRec = [](AsnObjClass *) {
        return reinterpret_cast<BEClassMetaRec *>(&options);
    };
    modelHooks.classBEOptionOK = [](AsnObjClass *, BEClassMetaRec *, const char *option, bool) {
        options += option;
        return true;
    };
    setup.load(w);

    withClass(setup, "B", [](AsnObjClass *objClass) {
        EXPECT_EQ(defId(objClass) + " " + baseId(objClass), "B A");
        EXPECT_EQ(objClass->embeddingEntries.size(), 2u);
        EXPECT_TRUE(testOptionOf(objClass, OPT_SKIPPED));
        EXPECT_TRUE(testOptionOf(objClass, OPT_COMPS_AS_POINTERS));
        for (int bit : {OPT_EMBEDDED_TEXT, OPT_BIT_2, OPT_NAMING})
            EXPECT_FALSE(testOptionOf(objClass, bit)) << bit;
        EXPECT_TRUE(isOptionalObjClassFields(objClass));
        EXPECT_EQ(getNrOfObjClassFields(objClass), 2);
        EXPECT_EQ(getClassDefinitionLine(objClass), 3);
    });
    EXPECT_NE(options.find("-VELMO=X"), std::string::npos);
    withClass(setup, "C", [](AsnObjClass *objClass) {
        EXPECT_FALSE(testOptionOf(objClass, OPT_SKIPPED));
    });
}

/* One field of each kind. */
void defineAllKinds(TreeWriter &w) {
    w.define("Other", w.objectClass({w.typeField("T")}));
    w.define("Small", w.integer(0, 9));
    TypeNode variable = w.valueField("vval", w.openType());
    TypeNode variableSet = w.setField("VSet", w.openType());
    variable->nodeFlags |= NODE_VARIABLE_TYPE_FIELD;
    variableSet->nodeFlags |= NODE_VARIABLE_TYPE_FIELD;
    TypeNode code = w.valueField("code", w.ref("Small"));
    code.naming("-FNAME=codeField");
    w.define("ALL", w.objectClass({w.typeField("Arg"), code,
                                   w.setField("Codes", w.ref("Small")).optional(), variable,
                                   variableSet, w.valueField("other", w.ref("Other")),
                                   w.setField("Others", w.ref("Other")).option(OPT_NEAR)}));
}

TEST(Classes, FieldsOfAllKinds) {
    TreeWriter w("Mod", "mod");
    defineAllKinds(w);
    ModelSetup setup;
    setup.load(w);

    withClass(setup, "ALL", [](AsnObjClass *objClass) {
        EXPECT_EQ(fieldsOf(objClass), "0 Arg kind 0, 1 codeField kind 1, 2 Codes kind 2, "
                                      "3 vval kind 3, 4 VSet kind 4, 5 other kind 5, "
                                      "6 Others kind 6");
        /* Each question of a governor answers for its own kind of field alone. */
        std::string governors, optional;
        forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int) {
            auto type = [&](AsnObjClassField *, AsnType *governor) {
                governors += fieldId(field) + "=" + nameOf(governor) + " ";
            };
            auto other = [&](AsnObjClassField *, AsnObjClass *governor) {
                governors += fieldId(field) + "=" + defId(governor) + " ";
                EXPECT_TRUE(isBaseObjClassInCurrentModule(governor));
            };
            forFixedTypeValueField(field, type);
            forFixedTypeValueSetField(field, type);
            forObjectField(field, other);
            forObjectSetField(field, other);
            optional += isOptionalField(field) ? fieldId(field) : "";
            EXPECT_EQ(testOptionOf(field, OPT_NEAR), fieldId(field) == "Others");
        });
        EXPECT_EQ(governors, "codeField=Small Codes=Small other=Other Others=Other ");
        EXPECT_EQ(optional, "Codes");
    });
}

TEST(Classes, OtherModulesLendTheirs) {
    TreeWriter other("Far_Module", "far");
    other.define("FAR", other.objectClass({other.valueField("code", other.integer(0, 9))}));
    TreeWriter w("Mod", "mod");
    w.import(other);
    w.define("NEAR", w.ref(other, "FAR"));
    w.define("OWN", w.objectClass({w.valueField("link", w.ref(other, "FAR")),
                                   w.valueField("self", w.ref("OWN"))}));
    ModelSetup setup;
    setup.import(other, "far");
    setup.load(w);

    std::string all;
    forEachObjClass(setup.module, [&](AsnObjClass *objClass, int) {
        all += defId(objClass) + (isBaseObjClassInCurrentModule(objClass) ? " " : "(far) ");
    });
    EXPECT_EQ(all, "NEAR(far) OWN ");
    withClass(setup, "NEAR", [](AsnObjClass *objClass) {
        EXPECT_EQ(fieldsOf(objClass), "0 code kind 1");
        int calls = 0;
        forObjClassDefinedInAnotherModule(objClass, [&](AsnObjClass *defined) {
            ++calls;
            EXPECT_EQ(defId(defined), "FAR");
            EXPECT_EQ(getModuleOf(defined)->modRec->moduleName, "Far_Module");
        });
        EXPECT_EQ(calls, 1);
    });
    withClass(setup, "OWN", [](AsnObjClass *objClass) {
        std::string governors;
        forEachObjClassField(objClass, [&](AsnObjClass *, AsnObjClassField *field, int) {
            forObjectField(field, [&](AsnObjClassField *, AsnObjClass *governor) {
                governors += defId(governor) + ":" + fieldsOf(governor) + ";";
                EXPECT_EQ(isBaseObjClassInCurrentModule(governor), fieldId(field) == "self");
            });
        });
        EXPECT_EQ(governors, "FAR:0 code kind 1;OWN:0 link kind 5, 1 self kind 5;");
    });
}

TEST(Classes, FieldOfAClassLeadsToItsGovernor) {
    TreeWriter w("Mod", "mod");
    w.define("ERR", w.objectClass({w.typeField("Parameter")}));
    TypeNode error = w.valueField("error", w.ref("ERR"));
    TypeNode op = w.define("OP", w.objectClass({error}));
    w.define("VIA", w.classField(op, {error}));
    ModelSetup setup;
    setup.load(w);
    withClass(setup, "VIA", [](AsnObjClass *objClass) {
        EXPECT_EQ(fieldsOf(objClass), "0 Parameter kind 0");
        EXPECT_EQ(objClass->firstMainType, TYP_FIELDLIST);
    });
}

TEST(Classes, InstanceHasTheNameOfItsDefinition) {
    TreeWriter w("Mod", "mod");
    TypeNode head = w.parameterisedHead("PARAM", w.objectClass({w.typeField("T")}));
    w.define("INST", w.instance(head));
    ModelSetup setup;
    setup.load(w);
    withClass(setup, "INST", [](AsnObjClass *objClass) {
        EXPECT_EQ(defId(objClass) + " " + baseId(objClass), "INST INST");
        EXPECT_EQ(objClass->firstMainType, TYP_CLASS);
        EXPECT_EQ(objClass->base.compStatus, TCS_HEADER);
        EXPECT_EQ(fieldsOf(objClass), "0 T kind 0");
    });
}

TEST(Classes, BrokenTreesEndTheRun) {
    TreeWriter w("Mod", "mod");
    TypeNode field = w.typeField("T");
    w.define("RING", w.objectClass({field}));
    w.define("OK", w.objectClass({}));
    w.finish();
    field->next = field.nr;
    ModelSetup setup;
    setup.load(w);
    EXPECT_EXIT(withClass(setup, "RING", [](AsnObjClass *c) { fieldsOf(c); }), exitsWith2,
                "inconsistent");
    modelHooks.newBEClassMetaRec = [](AsnObjClass *objClass) -> BEClassMetaRec * {
        forEachObjClass(objClass->walkModule, [](AsnObjClass *, int) {});
        return nullptr;
    };
    EXPECT_EXIT(forEachObjClass(setup.module, [](AsnObjClass *, int) {}), exitsWith2,
                "Class iterator called inside BEClassMetaRec constructor.");
    modelHooks.newBEClassMetaRec = nullptr;

    withClass(setup, "OK", [&](AsnObjClass *objClass) {
        objClass->base.mainType = TYP_INTEGER;
        EXPECT_EXIT(getBaseObjClassRef(objClass), exitsWith2,
                    "Trying to take objectclassreference from a non-class construct.");
        EXPECT_EXIT(isPredefinedObjClass(objClass), exitsWith2,
                    "Using class method with a non-class construct.");
    });
    EXPECT_EXIT(
        {
            readRec(setup.module->modRec, REC_TNODE, field.nr);
            AsnObjClass noClass(setup.module, setup.module);
            getClassPath(&noClass);
        },
        exitsWith2, "Non ObjectClass TNode found in the end of chain");
}

} // namespace
