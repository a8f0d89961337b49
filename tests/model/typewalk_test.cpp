#include "model/tags.h"
#include "model/typewalk.h"

#include "model/hooks.h"
#include "model/iterators.h"
#include "model/stamps.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

std::string idsOf(AsnType *type) {
    const Text def = getDefTypeId(type) + " ";
    const Text base = getDefBaseTypeId(type) + " ";
    return def + base + getBaseTypeId(type);
}

/* Names of the definition, of its base and of the C type; kind of the base; records left on the
   way; "s" for a synonym, "d" for a base that is a definition, "i" for an instance, "x" for a
   selection, "m" for a base in another module. */
std::string handleText(AsnType *type) {
    const Text kind = getTypeMainTypeStri(type);
    return idsOf(type) + " " + kind.substr(4) + " " + std::to_string(type->chainDepth) + " " +
           (isSynonymType(type) ? "s" : "") + (isDefinedBaseType(type) ? "d" : "") +
           (isInstantiatedType(type) ? "i" : "") +
           (isSelectionType(type) ? "x" : "") + (isBaseTypeInCurrentModule(type) ? "" : "m");
}

/* Definitions of every way from a position to its base, one of them in another module. */
struct Definitions {
    TreeWriter other{"Other", "other"}, w{"Mine", "mine"};
    ModelSetup setup;
    Definitions() {
        other.define("Middle", other.ref("Base"));
        other.define("Base", other.sequence({other.comp("x", other.boolean())}));
        w.import(other);
        w.define("T", w.ref("S"));
        w.define("S", w.enumerated({{"a", 1}}));
        w.define("Far", w.ref(other, "Middle"));
        const TypeNode head =
            w.parameterisedHead("P", w.sequence({w.comp("x", w.integer()), w.comp("y", w.null())}));
        w.define("U", w.instance(head));
        w.define("V", w.ref("U"));
        const TypeNode choice = w.define("C", w.choice({w.comp("b", w.boolean()).implicit(0)}));
        w.define("Sel", w.selection("b", choice));
        const TypeNode code = w.valueField("code", w.integer(0, 9)), arg = w.typeField("Arg");
        const TypeNode box = w.valueField("box", w.ref(other, "Base"));
        const TypeNode op = w.define("OP", w.objectClass({code, arg, box}));
        w.define("H",
                 w.sequence({w.comp("t", w.ref("T")), w.comp("far", w.ref("Far")),
                             w.comp("inst", w.instance(head)), w.comp("u", w.ref("U")),
                             w.comp("in", w.sequence({})), w.comp("code", w.classField(op, {code})),
                             w.comp("arg", w.classField(op, {arg})),
                             w.comp("box", w.classField(op, {box}))}));
        setup.import(other, "other");
        setup.load(w);
    }
};

TEST(TypeWalk, HandlesSpeakOfThePositionAndItsBase) {
    Definitions d;
    const ModelSetup::Rows rows = {
        {"T", "T S S ENUM 1 sd"},
        {"S", "S S S ENUM 0 d"},
        {"Far", "Far Base Base SEQ 2 sdm"},
        {"U", "U U U SEQ 0 di"},
        {"V", "V U U SEQ 2 sd"},
        {"Sel", "Sel Sel BOOLE BOOLEAN 1 dx"},
        {"H.t", "S S S ENUM 2 d"},
        {"H.far", "Base Base Base SEQ 3 dm"},
        /* What is no definition belongs to the C type of its father. */
        {"H.inst", "?!? ?!?NOT-A-DEFINED-TYPE H SEQ 0 i"},
        {"H.u", "U U U SEQ 2 d"},
        {"H.in", "?!? ?!?NOT-A-DEFINED-TYPE H SEQ 0 "},
        {"H.code", "?!? ?!?NOT-A-DEFINED-TYPE uint8 INTEGER 1 "},
        {"H.arg", "?!? ?!?NOT-A-DEFINED-TYPE OPENTYPE OPEN 1 "},
    };
    d.setup.expectTypes(handleText, rows);
    std::string types;
    forEachType(d.setup.module, [&](AsnType *type, int) { types += nameOf(type) + " "; });
    EXPECT_EQ(types, "T S Far U V C Sel H "); /* a class is no type */
    d.setup.withType("H.code", [](AsnType *comp) {
        EXPECT_EQ(comp->firstMainType, TYP_FIELDLIST);
        EXPECT_EQ(tagsOf(comp), "U2");
        EXPECT_EQ(comp->nrOfConstraints, 1);
    });
    d.setup.withType("U", [](AsnType *type) {
        /* Marking the base of an instance marks its name too. */
        setBaseTypeStamp(type, 21);
        EXPECT_EQ(getTypeStamp(type) * 100 + getBaseTypeStamp(type), 2121);
    });
}

TEST(TypeWalk, StepsToTheDefinitionBehindAReference) {
    Definitions d;
    std::string visited;
    const auto note = [&](AsnType *defined) {
        visited += nameOf(defined) + "@" + getModuleOfType(defined)->modRec->moduleName + " ";
    };
    d.setup.withType("Far", [&](AsnType *type) {
        forNextDefinedType(type, note);
        forTypeDefinedInAnotherModule(type, note);
    });
    d.setup.withType("V", [&](AsnType *type) { forSynonymType(type, note); });
    d.setup.withType("Sel", [&](AsnType *type) {
        EXPECT_EQ(tagsOf(type), "C0");
    });
    EXPECT_EQ(visited, "Middle@Other Base@Other U@Mine ");
    d.setup.withType("H.far", [](AsnType *comp) {
        forEachTypeComp(comp, [&](AsnType *father, AsnType *x, int) {
            EXPECT_EQ(x->walkModule->modRec->moduleName, "Other");
            EXPECT_EQ(getModuleOfType(x)->modRec, father->baseModule);
        });
        EXPECT_EQ(comp->walkModule->modRec->moduleName, "Mine");
        EXPECT_EQ(forwardText(comp), "x/0 U1");
    });
    visited.clear();
    d.setup.withType("H.box", [&](AsnType *comp) { forTypeDefinedInAnotherModule(comp, note); });
    EXPECT_EQ(visited, "Base@Other ") << "behind the field";
}

TEST(TypeWalk, EndpointsAreTheNarrowestOfTheChain) {
    TreeWriter w("Chains", "chains");
    w.define("T", w.ref("S").endpoints(1, 15)).line(7);
    w.define("S", w.integer(0, 10)).line(9);
    ModelSetup setup;
    setup.load(w);
    const auto ends = [](AsnType *type) {
        return shown(type->lowerEndpoint) + ".." + shown(type->upperEndpoint) + " line " +
               std::to_string(getTypeDefinitionLine(type));
    };
    setup.expectTypes(ends, {{"T", "1..10 line 9"}, {"S", "0..10 line 9"}});
}

/* What a link in the middle has to say counts for all in front of it, and the way to the end is
   gone once for all of them. */
TEST(TypeWalk, LongChainsAreGoneThroughOnce) {
    constexpr int LINKS = 3000;
    const auto name = [](int nr) { return "T" + std::to_string(nr); };
    TreeWriter w("Chains", "chains");
    for (int nr = 0; nr < LINKS; ++nr) {
        const TypeNode link = w.ref(name(nr + 1));
        w.define(name(nr), nr == LINKS / 2 ? link.implicit(5).endpoints(1, 7) : link);
    }
    w.define(name(LINKS), w.integer(0, 10));
    ModelSetup setup;
    setup.load(w);
    const auto linkText = [](AsnType *type) {
        std::string outermost;
        forOutermostTag(type, [&](AsnType *, const AsnTag *tag, int) {
            outermost = std::to_string(tag->tagNumber);
        });
        return handleText(type) + " " + outermost + " " + shown(type->lowerEndpoint) + ".." + shown(type->upperEndpoint);
    };
    const std::int64_t reads = workLeft;
    int links = LINKS;
    forEachType(setup.module, [&](AsnType *type, int) { EXPECT_EQ(type->chainDepth, links--); });
    EXPECT_EQ(links, -1);
    EXPECT_LT(reads - workLeft, 200 * LINKS);
    setup.expectTypes(linkText, {{"T1", "T1 T3000 uint8 INTEGER 2999 sd 5 1..7"},
                                 {"T1501", "T1501 T3000 uint8 INTEGER 1499 sd 2 0..10"}});
}

/* Name, level and C type of each element, the outermost first. */
std::string elementsOf(AsnType *type) {
    std::string text;
    forEachTypeCompOrElem(type, [&](AsnType *, AsnType *elem, int compNbr) {
        text += nameOf(elem) + "/" + std::to_string(compNbr) + " " +
                std::to_string(getTypeDefinitionLevel(elem)) + " " + getBaseTypeId(elem) + "; " +
                (isListType(elem) && !isDefinedBaseType(elem) ? elementsOf(elem) : "");
    });
    return text;
}

TEST(TypeWalk, ElementsGoByTheNameOfTheirFather) {
    TreeWriter w("Lists", "lists");
    w.define("L", w.listOf(TYP_SEQOF, w.listOf(TYP_SETOF, w.sequence({}))));
    w.define("H", w.sequence({w.comp("m", w.listOf(TYP_SEQOF, w.enumerated({{"a", 1}})))}));
    w.define("Of", w.listOf(TYP_SEQOF, w.ref("L")));
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(elementsOf, {{"L", "/0 1 L; /0 2 L; "},
                                   {"H.m", "m/0 1 H; "}, /* an inline element takes its name over */
                                   {"Of", "/0 0 L; "}});
    setup.withType("L", [](AsnType *type) {
        EXPECT_EQ(forwardText(type), "");
        EXPECT_EQ(getNrOfTypeComps(type), 1);
    });
}

std::string bitsOf(AsnType *type) {
    std::string text;
    for (int bit = OPT_SKIPPED; bit <= OPT_NEAR; ++bit)
        text += testTypeOption(type, bit) ? std::to_string(bit) + " " : "";
    forTypeElem(type, [&](AsnType *, AsnType *elem) { text += "of " + bitsOf(elem); });
    return text;
}

TEST(TypeWalk, OptionBitsComeFromChainAndFather) {
    TreeWriter w("Bits", "bits");
    const TypeNode next = w.comp("next", w.ref("Node")).optional();
    const TypeNode skipped = w.comp("skipped", w.ref("Node")).optional().skipped();
    w.define("Node", w.sequence({next, skipped}));
    w.define("Near", w.ref("Skip").option(OPT_NEAR));
    w.define("Skip", w.ref("Int").skipped());
    w.define("Int", w.integer());
    w.define("Home", w.sequence({w.comp("a", w.integer())}).option(OPT_COMPS_AS_POINTERS));
    w.define("Ptr", w.sequence({w.comp("a", w.sequence({}).option(OPT_COMPS_AS_POINTERS))})
                        .option(OPT_COMPS_POINTER));
    w.define("Items",
             w.listOf(TYP_SEQOF, w.integer().option(OPT_POINTER)).option(OPT_LIST_HOME_STORED));
    w.define("Refs", w.sequence({w.comp("a", w.ref("Int").option(OPT_HOME)),
                                 w.comp("b", w.ref("Int").option(OPT_POINTER))}));
    w.define("Frame",
             w.sequence({w.comp("b", w.ref("Int").option(OPT_POINTER))}).option(OPT_FRAME));
    w.finish();
    for (TypeNode comp : {next, skipped})
        comp->optionBits &= ~optionMask(OPT_POINTER);
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(bitsOf, {{"Node.next", "7 "}, /* a pointer, or the type had no end */
                               {"Node.skipped", "5 "},
                               {"Near", "5 15 "},
                               {"Home.a", "6 "},
                               {"Ptr.a", "7 "},
                               {"Items", "12 of "},
                               {"Refs.a", "6 "},
                               {"Refs.b", "7 "},
                               {"Frame.b", ""}});
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
    modelHooks.deleteBETypMetaRec = [](BETypMetaRec *) { --metaRecs; };
    modelHooks.typeBEOptionOK = [](AsnType *, BETypMetaRec *meta, const char *option, bool last) {
        optionsSeen += std::string(option) + (last ? "*" : "") + (meta ? " " : "? ");
        return true;
    };
    setup.load(w);
    setup.withType("T", [](AsnType *) {
        EXPECT_EQ(optionsSeen, "-A=1 -B=2* ");
        EXPECT_EQ(metaRecs, 1);
    });
    EXPECT_EQ(metaRecs, 0);

    EXPECT_TRUE(setCreateBETypMetaFlag(false));
    optionsSeen.clear();
    setup.withType("T", [](AsnType *type) {
        EXPECT_EQ(getBETypMetaRec(type), nullptr);
    });
    EXPECT_EQ(optionsSeen, "");
    EXPECT_FALSE(setCreateBETypMetaFlag(true));

    modelHooks.newBETypMetaRec = [](AsnType *type) -> BETypMetaRec * {
        forEachType(type->walkModule, [](AsnType *, int) {});
        return nullptr;
    };
    EXPECT_EXIT(forEachType(setup.module, [](AsnType *, int) {}), exitsWith2,
                "Type iterator called inside BETypMetaRec constructor.");
}

void buildTypes(void (*spoil)(TreeWriter &w)) {
    TreeWriter w("Loops", "loops");
    w.define("A", w.ref("B").implicit(1));
    w.define("B", w.integer());
    w.finish();
    spoil(w);
    ModelSetup setup;
    setup.load(w);
    forEachType(setup.module, [](AsnType *, int) {});
}

TEST(TypeWalk, BrokenChainsEndTheRun) {
    buildTypes([](TreeWriter &) {});
    expectFatal(buildTypes,
                {{[](TreeWriter &w) { w.findType("A")->refRecord = w.findType("A").nr; }, "loops"},
                 {[](TreeWriter &w) { w.tagRecs[0].next = 1; }, "loops"},
                 {[](TreeWriter &w) { w.findType("A")->refModule = 7; }, "Can not read record"},
                 {[](TreeWriter &w) { w.findType("A")->refRecord = -1; }, "Can not read record"}});
}

} // namespace
