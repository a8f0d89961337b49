#include "model/compwalk.h"

#include "model/typeextension.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

/* A walk forwards, and one in reverse that must give every component the same number and tags. */
std::string compsOf(AsnType *type) {
    const std::string text = forwardText(type);
    EXPECT_EQ(reverseText(type), text);
    EXPECT_EQ(forwardText(type), text);
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
    setup.expectTypes(compsOf, {{"S", "a/0 U2, x/1 U2, b/2 U1"},
                                {"Nested", "a/0 C0, x/1 C1, b/2 C2, c/3 C3, .../4, x/5 C4"},
                                {"Nothing", ""},
                                {"Inline", "q/0 U5, r/1 U5"},
                                {"Empty", ""},
                                {"Synonym", ""}}); /* a synonym definition has none of its own */
    setup.withType("S", [](AsnType *type) {
        forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int compNbr) {
            EXPECT_EQ(father, type);
            EXPECT_EQ(getFatherOfTypeComp(comp), type);
            EXPECT_EQ(comp->inCompOf, compNbr == 1);
        });
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
    setup.expectTypes(compsOf,
                      {{"S", "x/0 C0, y/1 C1, b/2 C2, .../3"}, {"Implied", "a/0 C0, b/1 C1"}});
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
    setup.expectTypes(compsOf, {{"S", "a/0 U5, p/1 U2, q/2 U1, b/3 U5"}});
    setup.withType("S", [](AsnType *type) {
        std::string modules;
        forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
            modules += getModuleOfType(comp)->modRec->filePrefix + " ";
            EXPECT_EQ(isBaseTypeInCurrentModule(comp), !comp->inCompOf);
        });
        EXPECT_EQ(modules, "taker lender lender taker ");
    });
}

/* The marker's number, first component, behind an optional one. Questions about extensions walk the same
   components and must disturb nothing. */
std::string placesOf(AsnType *type) {
    std::string text;
    forEachTypeComp(type, [&](AsnType *father, AsnType *comp, int) {
        text += std::to_string(getTypeExtensionmarkerCompNbr(father)) +
                (isFirstActualTypeComp(comp) ? "1" : "") +
                (prevTypeCompIsOptional(comp) ? "b" : "") + " ";
    });
    return text + (lastTypeCompIsOptional(type) ? " optional" : "");
}

TEST(CompWalk, PlacesAroundTheMarker) {
    TreeWriter w("Places", "places");
    w.define("S", w.sequence({w.comp("a", w.null()).optional(), w.comp("b", w.null()), w.marker(),
                              w.comp("c", w.null()), w.comp("d", w.null()).optional()}));
    w.define("F", w.sequence({w.marker(), w.comp("a", w.null())}));
    w.define("N", w.sequence({w.comp("a", w.null())}));
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(placesOf,
                      {{"S", "21 2b 2 2 2  optional"}, {"F", "01 01 "}, {"N", "-11 "}});
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

/* The names of nested structures, each level between braces. */
std::string nestedText(AsnType *type) {
    std::string text;
    forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
        text += nameOf(comp) + "{" + nestedText(comp) + "}";
    });
    return text;
}

TEST(CompWalk, TreesThatNeverEnd) {
    TreeWriter w("Endless", "endless");
    std::vector<TypeNode> spliced{w.comp("s", w.ref("Self"))};
    w.define("Self", w.sequence({w.comp("a", w.null()), spliced.front()}));
    /* Each level doubles what the next one brings in, or has its components twice. */
    std::string last = "D0";
    w.define(last, w.sequence({w.comp("a", w.null())}));
    TypeNode inner = w.sequence({w.comp("a", w.null())});
    std::vector<std::pair<TypeNode, TypeNode>> twins;
    for (int i = 1; i <= 60; ++i) {
        const TypeNode first = w.comp("p", w.ref(last));
        const TypeNode second = w.comp("q", w.ref(last));
        last = "D" + std::to_string(i);
        w.define(last, w.sequence({first, second}));
        spliced.insert(spliced.end(), {first, second});
        twins.emplace_back(w.comp("p", inner), w.comp("q", w.sequence({})));
        inner = w.sequence({twins.back().first, twins.back().second});
    }
    w.define("Shared", inner);
    const TypeNode loop =
        w.define("Loop", w.sequence({w.comp("a", w.null()), w.comp("b", w.null())}));
    w.finish();
    for (TypeNode comp : spliced)
        comp->compStatus = TCS_COMPOF;
    for (const auto &[first, second] : twins) {
        second->refRecord = first->refRecord;
        second->nrOfComps = first->nrOfComps;
    }
    w.tNodes[static_cast<std::size_t>(loop->refRecord)].next = loop->refRecord;
    ModelSetup setup;
    setup.load(w);
    for (const char *name : {"Self", "D60", "Loop"}) {
        EXPECT_EXIT(setup.expectTypes(forwardText, {{name, ""}}), exitsWith2, "endless") << name;
        EXPECT_EXIT(setup.expectTypes(reverseText, {{name, ""}}), exitsWith2, "endless") << name;
    }
    EXPECT_EXIT(setup.expectTypes(nestedText, {{"Shared", ""}}), exitsWith2, "endless");
}

} // namespace
