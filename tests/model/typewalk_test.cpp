#include "model/typewalk.h"

#include "model/backpro.h"
#include "model/hooks.h"
#include "store/records.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string defId(AsnType *type) {
    Text text;
    return getDefTypeId(text, nullptr, type, nullptr);
}

std::string defBaseId(AsnType *type) {
    Text text;
    return getDefBaseTypeId(text, nullptr, type, nullptr);
}

/* Upper bound of the range at a place of the constraint list, in reading order. */
std::string upperBound(AsnType *type, std::size_t place) {
    const auto &places = type->constraintList.places;
    const NodePlace &root = places[places.size() - 1 - place];
    readRec(root.module, REC_SUB, root.nr);
    readRec(root.module, REC_VNODE, subRec.second);
    return i64tostr(valueInt(vNode));
}

TEST(TypeWalk, SynonymSpeaksOfItselfAndOfItsBase) {
    TreeWriter w("Chains", "chains");
    w.define("T", w.ref("S").constrained(w.range(1, 5))).line(7);
    w.define("S", w.integer(0, 10)).line(9);
    w.define("P", w.integer(3, 4));
    ModelSetup setup;
    setup.load(w);

    setup.withType("T", [](AsnType *type) {
        EXPECT_TRUE(isSynonymType(type));
        EXPECT_EQ(type->firstMainType, TYP_SYNONYM);
        EXPECT_EQ(getTypeMainType(type), TYP_INTEGER);
        EXPECT_EQ(type->chainDepth, 1);
        EXPECT_EQ(defId(type) + " " + defBaseId(type), "T S");
        EXPECT_EQ(getTypeDefinitionLine(type), 9);
        EXPECT_NE(getUniqueTypeNr(type), getUniqueBaseTypeNr(type));
        /* The base's constraint is read first, the one of the position last. */
        EXPECT_EQ(type->nrOfConstraints, 2);
        EXPECT_EQ(type->nrOfLocalConstraints, 1);
        EXPECT_EQ(upperBound(type, 0) + " " + upperBound(type, 1), "10 5");
        EXPECT_EQ(shown(type->lowerEndpoint) + ".." + shown(type->upperEndpoint), "1..5");
    });
    setup.withType("P", [](AsnType *type) {
        EXPECT_FALSE(isSynonymType(type));
        EXPECT_EQ(type->chainDepth, 0);
        EXPECT_EQ(type->nrOfLocalConstraints, 1);
        EXPECT_EQ(defId(type) + " " + defBaseId(type), "P P");
    });
}

TEST(TypeWalk, ImportedBaseIsFoundInItsModule) {
    TreeWriter other("Other_Module", "other");
    other.define("Middle", other.ref("Base"));
    other.define("Base", other.sequence({other.comp("x", other.boolean())}));
    TreeWriter w("Mine", "mine");
    w.import(other);
    w.define("Local", w.ref(other, "Middle"));
    w.define("Holder", w.sequence({w.comp("a", w.ref("Local")), w.comp("b", w.integer())}));
    ModelSetup setup;
    setup.import(other, "other");
    setup.load(w);

    setup.withType("Local", [](AsnType *type) {
        EXPECT_FALSE(isBaseTypeInCurrentModule(type));
        EXPECT_EQ(type->baseModule->moduleName, "Other_Module");
        EXPECT_EQ(type->chainDepth, 2);
        std::string visited;
        const auto note = [&](AsnType *defined) {
            Text name;
            getModuleRef(name, nullptr, getModuleOfType(defined), nullptr);
            visited += nameOf(defined) + "@" + name + " ";
        };
        forNextDefinedType(type, note);
        forSynonymTypeInAnotherModule(type, note);
        forTypeDefinedInAnotherModule(type, note);
        EXPECT_EQ(visited, "Middle@Other_Module Middle@Other_Module Base@Other_Module ");
    });
    setup.withComp("Holder", "a", [](AsnType *comp) {
        EXPECT_EQ(defBaseId(comp), "Base");
        /* Its components are walked in their own module. */
        forEachTypeComp(comp, [&](AsnType *father, AsnType *x, int) {
            EXPECT_EQ(x->walkModule->modRec->moduleName, "Other_Module");
            EXPECT_EQ(getModuleOfType(x)->modRec, father->baseModule);
            EXPECT_EQ(nameOf(x), "x");
        });
        EXPECT_EQ(comp->walkModule->modRec->moduleName, "Mine");
        EXPECT_EQ(forwardText(comp), "x/0 U1");
    });
}

TEST(TypeWalk, InstantiationLendsItsName) {
    TreeWriter w("Params", "params");
    const TypeNode head =
        w.parameterisedHead("T", w.sequence({w.comp("x", w.integer()), w.comp("y", w.null())}));
    w.define("U", w.instance(head));
    w.define("V", w.ref("U"));
    w.define("Holder", w.sequence({w.comp("a", w.instance(head)), w.comp("b", w.ref("U"))}));
    ModelSetup setup;
    setup.load(w);

    setup.withType("U", [](AsnType *type) {
        EXPECT_TRUE(isTopLevelInstantiatedType(type));
        EXPECT_EQ(type->firstMainType, TYP_SEQ);
        EXPECT_TRUE(isDefinedBaseType(type));
        EXPECT_EQ(defId(type) + " " + defBaseId(type), "U U");
        EXPECT_EQ(forwardText(type), "x/0 U2, y/1 U5");
        /* Marking the base marks the name, which stands for it. */
        setBaseTypeStamp(type, 21);
        EXPECT_EQ(getTypeStamp(type), 21);
        EXPECT_EQ(getBaseTypeStamp(type), 21);
    });
    setup.withType("V", [](AsnType *type) {
        EXPECT_FALSE(isInstantiatedType(type));
        EXPECT_TRUE(isDefinedBaseType(type));
        EXPECT_EQ(defId(type) + " " + defBaseId(type), "V U");
        std::string base;
        forSynonymType(type, [&](AsnType *baseType) { base = nameOf(baseType); });
        EXPECT_EQ(base, "U");
    });
    setup.withComp("Holder", "a", [](AsnType *comp) {
        EXPECT_TRUE(isInstantiatedType(comp));
        EXPECT_FALSE(isTopLevelInstantiatedType(comp));
        EXPECT_EQ(getBaseTypeCompStatus(comp), TCS_PARAM_HEAD);
        Text id;
        EXPECT_EQ(getBaseTypeId(id, nullptr, comp, nullptr), "Holder");
    });
    setup.withComp("Holder", "b", [](AsnType *comp) { EXPECT_EQ(defBaseId(comp), "U"); });
}

TEST(TypeWalk, SelectionIsFollowedOnRequest) {
    TreeWriter w("Select", "select");
    const TypeNode choice =
        w.define("C", w.choice({w.comp("a", w.integer()).implicit(0), w.comp("b", w.boolean())}));
    w.define("S", w.selection("b", choice));
    ModelSetup setup;
    setup.load(w);

    setup.withType("S", [](AsnType *type) {
        EXPECT_TRUE(isSelectionType(type));
        EXPECT_EQ(type->chainDepth, 0);
        int calls = 0;
        forSelectionType(type, [&](AsnType *, AsnType *selected, AsnType *chosenFrom) {
            ++calls;
            EXPECT_EQ(nameOf(selected) + " of " + nameOf(chosenFrom), "b of C");
            EXPECT_EQ(getFatherOfTypeComp(selected), chosenFrom);
        });
        EXPECT_EQ(calls, 1);
        AsnType *governor = governorForAsnValue(type->posModule, 1, type->posRecord);
        ASSERT_NE(governor, nullptr);
        EXPECT_TRUE(isPartialTypeInfo(governor));
        EXPECT_EQ(getTypeMainType(governor), TYP_BOOLEAN);
        AsnModule *module = getModuleOfType(governor);
        delAsnType(governor);
        delAsnModule(module);
    });
}

TEST(TypeWalk, FieldListLeadsToTheFieldsType) {
    TreeWriter w("Fields", "fields");
    const TypeNode code = w.valueField("code", w.integer(0, 9));
    const TypeNode arg = w.typeField("Arg");
    const TypeNode op = w.define("OP", w.objectClass({code, arg}));
    w.define("Msg", w.sequence({w.comp("code", w.classField(op, {code})),
                                w.comp("arg", w.classField(op, {arg}))}));
    ModelSetup setup;
    setup.load(w);

    setup.withComp("Msg", "code", [](AsnType *comp) {
        EXPECT_EQ(comp->firstMainType, TYP_FIELDLIST);
        EXPECT_EQ(getTypeMainType(comp), TYP_INTEGER);
        EXPECT_EQ(tagsOf(comp), "U2");
        EXPECT_EQ(comp->nrOfConstraints, 1);
    });
    setup.withComp("Msg", "arg", [](AsnType *comp) {
        EXPECT_EQ(getTypeMainType(comp), TYP_OPEN);
        EXPECT_EQ(getNrOfTags(comp), 0);
    });
    std::string types;
    forEachType(setup.module, [&](AsnType *type, int) { types += nameOf(type) + " "; });
    EXPECT_EQ(types, "Msg "); /* a class is no type */
}

TEST(TypeWalk, ElementsGoByTheNameOfTheirFather) {
    TreeWriter w("Lists", "lists");
    w.define("L", w.listOf(TYP_SEQOF, w.listOf(TYP_SETOF, w.sequence({}))));
    w.define("H", w.sequence({w.comp("m", w.listOf(TYP_SEQOF, w.integer()))}));
    w.define("Of", w.listOf(TYP_SEQOF, w.ref("L")));
    ModelSetup setup;
    setup.load(w);

    setup.withType("L", [](AsnType *type) {
        EXPECT_EQ(getTypeElemMainType(type), TYP_SETOF);
        int calls = 0;
        forTypeElem(type, [&](AsnType *, AsnType *elem) {
            EXPECT_EQ(getTypeDefinitionLevel(elem), 1);
            EXPECT_EQ(nameOf(elem), "");
            forTypeElem(elem, [&](AsnType *, AsnType *inner) {
                ++calls;
                EXPECT_EQ(getTypeDefinitionLevel(inner), 2);
                Text id;
                EXPECT_EQ(getBaseTypeId(id, nullptr, inner, nullptr), "L");
            });
        });
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(forwardText(type), "");
        EXPECT_EQ(getNrOfTypeComps(type), 1);
    });
    setup.withComp("H", "m", [](AsnType *comp) {
        std::string numbers;
        forEachTypeCompOrElem(comp, [&](AsnType *, AsnType *elem, int compNbr) {
            numbers += nameOf(elem) + "/" + std::to_string(compNbr);
        });
        EXPECT_EQ(numbers, "m/0"); /* an inline element takes over the component's name */
    });
    setup.withType("Of", [](AsnType *type) {
        forTypeElem(type, [](AsnType *, AsnType *elem) {
            EXPECT_EQ(defBaseId(elem), "L");
            EXPECT_EQ(getTypeDefinitionLevel(elem), 0);
        });
    });
}

TEST(TypeWalk, OptionBitsComeFromChainAndFather) {
    TreeWriter w("Bits", "bits");
    w.define("Node", w.sequence({w.comp("next", w.ref("Node")).optional()})).flag(TYPE_RECURSIVE);
    w.define("Near", w.ref("Skip").option(OPT_NEAR));
    w.define("Skip", w.ref("Int").skipped());
    w.define("Int", w.integer());
    w.define("Home", w.sequence({w.comp("a", w.integer())}).option(OPT_COMPS_AS_POINTERS));
    w.define("Ptr", w.sequence({w.comp("a", w.sequence({}).option(OPT_COMPS_AS_POINTERS))})
                        .option(OPT_COMPS_POINTER));
    w.define("Items",
             w.listOf(TYP_SEQOF, w.integer().option(OPT_POINTER)).option(OPT_LIST_HOME_STORED));
    ModelSetup setup;
    setup.load(w);

    setup.withComp("Node", "next", [](AsnType *comp) {
        EXPECT_TRUE(isRecursiveType(comp));
        EXPECT_TRUE(testTypeOption(comp, OPT_POINTER));
    });
    setup.withType("Near", [](AsnType *type) {
        EXPECT_TRUE(testTypeOption(type, OPT_SKIPPED));
        EXPECT_TRUE(testTypeOption(type, OPT_NEAR));
    });
    setup.withComp("Home", "a", [](AsnType *comp) { EXPECT_TRUE(testTypeOption(comp, OPT_HOME)); });
    setup.withComp("Ptr", "a", [](AsnType *comp) {
        EXPECT_TRUE(testTypeOption(comp, OPT_POINTER));
        EXPECT_FALSE(testTypeOption(comp, OPT_COMPS_AS_POINTERS));
    });
    setup.withType("Items", [](AsnType *type) {
        EXPECT_FALSE(testTypeOption(type, OPT_LIST_HOME_STORED));
        EXPECT_TRUE(testTypeOption(type, OPT_LIST_HOME));
        forTypeElem(type, [](AsnType *, AsnType *elem) {
            EXPECT_FALSE(testTypeOption(elem, OPT_POINTER));
        });
    });
}

int metaRecs = 0;
std::string optionsSeen;

TEST(TypeWalk, OptionsAreAppliedFromPositionToBaseOnceTheMetaRecordExists) {
    TreeWriter w("Meta", "meta");
    w.define("T", w.ref("S")).backendOption("-A=1").backendOption("-//remark");
    w.define("S", w.integer()).backendOption("-B=2").backendOption("-//other");
    ModelSetup setup;
    modelHooks.newBETypMetaRec = [](AsnType *) {
        ++metaRecs;
        return reinterpret_cast<BETypMetaRec *>(&metaRecs);
    };
    modelHooks.deleteBETypMetaRec = [](AsnType *, BETypMetaRec *) { --metaRecs; };
    modelHooks.typeBEOptionOK = [](AsnType *, BETypMetaRec *meta, const char *option, bool last) {
        optionsSeen += std::string(option) + (last ? "*" : "") + (meta ? " " : "? ");
        return true;
    };
    setup.load(w);

    setup.withType("T", [](AsnType *type) {
        EXPECT_EQ(optionsSeen, "-A=1 -B=2* ");
        std::string comments;
        forEachTypeCommentOption(type, [&](AsnType *, const char *comment, int nbr) {
            comments += std::string(comment) + "#" + std::to_string(nbr);
        });
        EXPECT_EQ(comments, "//remark#0");
        EXPECT_EQ(metaRecs, 1);
    });
    EXPECT_EQ(metaRecs, 0);

    const bool before = setCreateBETypMetaFlag(false);
    EXPECT_TRUE(before);
    optionsSeen.clear();
    setup.withType("T", [](AsnType *type) {
        EXPECT_EQ(getBETypMetaRec(type), nullptr);
        EXPECT_FALSE(isTypeCommentOption(type));
    });
    EXPECT_EQ(optionsSeen, "");
    EXPECT_FALSE(setCreateBETypMetaFlag(before));

    modelHooks.newBETypMetaRec = [](AsnType *type) -> BETypMetaRec * {
        forEachType(type->walkModule, [](AsnType *, int) {});
        return nullptr;
    };
    EXPECT_EXIT(forEachType(setup.module, [](AsnType *, int) {}), exitsWith2,
                "Type iterator called inside BETypMetaRec constructor.");
}

TEST(TypeWalk, ChainsWithoutEndAreFound) {
    TreeWriter w("Loops", "loops");
    w.define("A", w.ref("B"));
    w.define("B", w.ref("A"));
    w.define("C", w.integer().implicit(1));
    w.finish();
    w.tagRecs.back().next = static_cast<RecNr>(w.tagRecs.size());
    ModelSetup setup;
    setup.load(w);
    EXPECT_EXIT(forEachType(setup.module, [](AsnType *, int) {}), exitsWith2, "loops");
    const auto buildC = [&] {
        AsnType *type = newAsnType(setup.module, setup.module);
        readRec(setup.module->modRec, REC_TNODE, 3);
        getTypePath(nullptr, type, false);
    };
    EXPECT_EXIT(buildC(), exitsWith2, "loops");
}

TEST(TypeWalk, HandlesAreRecycledClean) {
    TreeWriter w("Clean", "clean");
    w.define("T", w.integer(1, 2).explicitly(3)).backendOption("-//remark");
    ModelSetup setup;
    setup.load(w);
    delAsnType(nullptr);
    AsnType *type = firstType(setup.module);
    ASSERT_NE(type, nullptr);
    type->extMarkerNbr = 4;
    delAsnType(type);
    delAsnType(type);
    AsnType *fresh = newAsnType(setup.module, setup.module);
    EXPECT_EQ(fresh->nrOfTags, 0);
    EXPECT_TRUE(fresh->tagEntries.empty());
    EXPECT_TRUE(fresh->constraintList.places.empty());
    EXPECT_EQ(fresh->extMarkerNbr, -1);
    EXPECT_FALSE(fresh->hasCommentOption);
    AsnType *second = newAsnType(setup.module, setup.module);
    EXPECT_NE(fresh, second);
    delAsnType(fresh);
    delAsnType(second);
}

} // namespace
