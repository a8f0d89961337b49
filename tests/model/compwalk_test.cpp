#include "model/compwalk.h"

#include "model/typeextension.h"
#include "store/records.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

/* A walk forwards, and one in reverse that must give every component the same number and tags. */
std::string compsOf(ModelSetup &setup, const std::string &name) {
    std::string text;
    setup.withType(name, [&](AsnType *type) {
        text = forwardText(type);
        EXPECT_EQ(reverseText(type), text);
        EXPECT_EQ(forwardText(type), text);
    });
    return text;
}

TEST(CompWalk, ComponentsOfStandsForTheRootOfItsType) {
    TreeWriter w("Spliced", "spliced");
    w.define("T", w.sequence({w.comp("x", w.integer()), w.marker(), w.comp("y", w.real())}));
    w.define("S", w.sequence({w.comp("a", w.integer()), w.componentsOf(w.ref("T")),
                              w.comp("b", w.boolean())}));
    w.define("Nested", w.sequence({w.componentsOf(w.ref("S")), w.comp("c", w.null()), w.marker(),
                                   w.componentsOf(w.ref("T"))})
                           .automaticTags());
    w.define("Leading", w.sequence({w.marker(), w.comp("z", w.null())}));
    w.define("Nothing", w.sequence({w.componentsOf(w.ref("Leading"))}));
    w.define("Inline", w.sequence({w.componentsOf(w.sequence({w.comp("q", w.null())})),
                                   w.comp("r", w.null())}));
    w.define("Empty", w.sequence({}));
    w.define("Synonym", w.ref("S"));
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(compsOf(setup, "S"), "a/0 U2, x/1 U2, b/2 U1");
    EXPECT_EQ(compsOf(setup, "Nested"), "a/0 C0, x/1 C1, b/2 C2, c/3 C3, .../4, x/5 C4");
    EXPECT_EQ(compsOf(setup, "Nothing"), "");
    EXPECT_EQ(compsOf(setup, "Inline"), "q/0 U5, r/1 U5");
    EXPECT_EQ(compsOf(setup, "Empty"), "");
    EXPECT_EQ(compsOf(setup, "Synonym"), ""); /* a synonym definition has none of its own */
    setup.withType("S", [](AsnType *type) {
        forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int compNbr) {
            EXPECT_EQ(father, type);
            EXPECT_EQ(getFatherOfTypeComp(comp), type);
            EXPECT_EQ(comp->inCompOf, compNbr == 1);
        });
        EXPECT_EQ(getNrOfMandatoryTypeComps(type), 3);
    });
}

TEST(CompWalk, NumbersDoNotDependOnTheStoredCount) {
    TreeWriter w("Counts", "counts");
    w.define("T", w.sequence({w.comp("x", w.integer()), w.comp("y", w.null())}));
    const TypeNode s =
        w.define("S", w.sequence({w.componentsOf(w.ref("T")), w.comp("b", w.real()), w.marker()})
                          .automaticTags());
    /* Extensible by the module's default, without a marker in the list. */
    w.define("Implied", w.sequence({w.comp("a", w.null()), w.comp("b", w.null())}))
        .automaticTags()
        .extensible();
    w.finish();
    s->nrOfComps = 9;
    ModelSetup setup;
    setup.load(w);
    EXPECT_EQ(compsOf(setup, "S"), "x/0 C0, y/1 C1, b/2 C2, .../3");
    EXPECT_EQ(compsOf(setup, "Implied"), "a/0 C0, b/1 C1");
    setup.withType("Implied",
                   [](AsnType *type) { EXPECT_EQ(getTypeExtensionmarkerCompNbr(type), -1); });
}

TEST(CompWalk, ImportedComponentsOf) {
    TreeWriter other("Lender", "lender");
    other.define("Outer", other.sequence({other.comp("p", other.ref("Int")),
                                          other.componentsOf(other.ref("Far"))}));
    other.define("Int", other.integer());
    other.define("Far", other.sequence({other.comp("q", other.boolean())}));
    TreeWriter w("Taker", "taker");
    w.import(other);
    w.define("S", w.sequence({w.comp("a", w.null()), w.componentsOf(w.ref(other, "Outer")),
                              w.comp("b", w.null())}));
    ModelSetup setup;
    setup.import(other, "lender");
    setup.load(w);
    EXPECT_EQ(compsOf(setup, "S"), "a/0 U5, p/1 U2, q/2 U1, b/3 U5");
    setup.withType("S", [](AsnType *type) {
        std::string modules;
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
            modules += getModuleOfType(comp)->modRec->filePrefix + " ";
            EXPECT_EQ(isBaseTypeInCurrentModule(comp), !comp->inCompOf);
        });
        EXPECT_EQ(modules, "taker lender lender taker ");
    });
}

TEST(CompWalk, RunningStateOfAWalk) {
    TreeWriter w("State", "state");
    w.define("S", w.sequence({w.comp("a", w.null()).optional(), w.comp("b", w.null()), w.marker(),
                              w.comp("c", w.null()).optional()}));
    ModelSetup setup;
    setup.load(w);
    setup.withType("S", [](AsnType *type) {
        std::string seen;
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
            /* A question about extensions walks the same components and must disturb nothing. */
            const bool extension = isTypeExtension(comp);
            seen += prevTypeCompIsOptional(comp) ? 'o' : '-';
            seen += extension ? 'e' : ' ';
        });
        EXPECT_EQ(seen, "- o - -e");
        EXPECT_TRUE(lastTypeCompIsOptional(type));
        EXPECT_EQ(getNrOfOptionalTypeComps(type), 2);
        EXPECT_EQ(getNrOfMandatoryTypeComps(type), 2);
        EXPECT_TRUE(lastTypeCompIsOptional(type));
    });
}

TEST(CompWalk, PlacesAroundTheMarker) {
    TreeWriter w("Places", "places");
    w.define("S", w.sequence({w.comp("a", w.null()), w.comp("b", w.null()), w.marker(),
                              w.comp("c", w.null()), w.comp("d", w.null()).optional()}));
    w.define("F", w.sequence({w.marker(), w.comp("a", w.null())}));
    w.define("N", w.sequence({w.comp("a", w.null())}));
    ModelSetup setup;
    setup.load(w);
    /* root, last of it, extension, addition, first, mandatory, optional one, first component */
    const auto places = [&](const std::string &name) {
        std::string text;
        setup.withType(name, [&](AsnType *type) {
            forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int) {
                text += std::string(isExtensionRootComponent(father, comp) ? "r" : "") +
                        (isLastExtensionRootComponent(father, comp) ? "l" : "") +
                        (isTypeExtension(comp) ? "e" : "") +
                        (isExtensionAdditionComponent(father, comp) ? "a" : "") +
                        (isFirstExtensionAdditionComponent(father, comp) ? "f" : "") +
                        (isMandatoryExtensionAdditionComponent(father, comp) ? "m" : "") +
                        (isOptionalExtensionAdditionComponent(father, comp) ? "o" : "") +
                        (isFirstActualTypeComp(comp) ? "1" : "") + " ";
            });
        });
        return text;
    };
    EXPECT_EQ(places("S"), "r1 rl  eafm eao ");
    EXPECT_EQ(places("F"), "1 eafm1 ");
    EXPECT_EQ(places("N"), "r1 ");
}

TEST(CompWalk, WalksNest) {
    TreeWriter w("Nested", "nested");
    w.define("S",
             w.sequence({w.comp("a", w.sequence({w.comp("x", w.null()), w.comp("y", w.null())})),
                         w.comp("b", w.null())}));
    w.define("T", w.null());
    ModelSetup setup;
    setup.load(w);
    std::string text;
    forEachType(setup.module, [&](AsnType *type, int nbr) {
        text += nameOf(type) + std::to_string(nbr) + "(";
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
            text += nameOf(comp) + "{" + forwardText(comp) + "}";
            forEachType(setup.module, [&](AsnType *inner, int) { text += nameOf(inner); });
            text += reverseText(type).empty() ? "" : ".";
        });
        text += ")";
    });
    EXPECT_EQ(text, "S0(a{x/0 U5, y/1 U5}ST.b{}ST.)T1()");
}

TEST(CompWalk, DirectStepsForwardsAndBackwards) {
    TreeWriter w("Steps", "steps");
    w.define("S",
             w.sequence({w.comp("a", w.null()), w.comp("b", w.null()), w.comp("c", w.null())}));
    ModelSetup setup;
    setup.load(w);
    setup.withType("S", [](AsnType *type) {
        std::string text;
        for (AsnType *c = firstTypeComp(type, true, 0); c != nullptr; c = nextTypeComp(c, 0))
            text += nameOf(c);
        for (AsnType *c = lastTypeComp(type, 0); c != nullptr; c = prevTypeComp(c, 0))
            text += nameOf(c);
        EXPECT_EQ(text, "abccba");
        EXPECT_EQ(type->walkModule->cursors[KIND_COMPONENT], 0);
        EXPECT_EQ(firstTypeComp(nullptr, true, 0), nullptr);
        EXPECT_EXIT(forEachTypeComp(type, nullptr), exitsWith2, "Call-back function not defined");
    });
}

TEST(CompWalk, TreesThatNeverEnd) {
    TreeWriter w("Endless", "endless");
    std::vector<TypeNode> spliced{w.comp("s", w.ref("Self"))};
    w.define("Self", w.sequence({w.comp("a", w.null()), spliced.front()}));
    /* Each level doubles what the next one brings in. */
    std::string last = "D0";
    w.define(last, w.sequence({w.comp("a", w.null())}));
    for (int i = 1; i <= 60; ++i) {
        const TypeNode first = w.comp("p", w.ref(last));
        const TypeNode second = w.comp("q", w.ref(last));
        last = "D" + std::to_string(i);
        w.define(last, w.sequence({first, second}));
        spliced.insert(spliced.end(), {first, second});
    }
    const TypeNode loop =
        w.define("Loop", w.sequence({w.comp("a", w.null()), w.comp("b", w.null())}));
    w.finish();
    for (TypeNode comp : spliced)
        comp->compStatus = TCS_COMPOF;
    w.tNodes[static_cast<std::size_t>(loop->refRecord)].next = loop->refRecord;
    ModelSetup setup;
    setup.load(w);
    for (const char *name : {"Self", "D60", "Loop"}) {
        EXPECT_EXIT(setup.withType(name, [](AsnType *type) { forwardText(type); }), exitsWith2,
                    "endless")
            << name;
        EXPECT_EXIT(setup.withType(name, [](AsnType *type) { reverseText(type); }), exitsWith2,
                    "endless")
            << name;
    }
}

TEST(CompWalk, LongListsInReverse) {
    TreeWriter w("Long", "long");
    std::vector<TypeNode> comps;
    constexpr int COUNT = 30000;
    for (int i = 0; i < COUNT; ++i)
        comps.push_back(w.comp("c" + std::to_string(i), w.null()));
    w.define("S", w.structure(TYP_SEQ, comps));
    ModelSetup setup;
    setup.load(w);
    setup.withType("S", [](AsnType *type) {
        int expected = COUNT;
        forEachTypeCompRevOrd(type, [&](AsnType *, AsnType *comp, int compNbr) {
            --expected;
            ASSERT_EQ(compNbr, expected);
            ASSERT_EQ(nameOf(comp), "c" + std::to_string(expected));
        });
        EXPECT_EQ(expected, 0);
    });
}

} // namespace
