#include <gtest/gtest.h>

#include "tests/support/codingcase.h"
#include "tests/support/gencase.h"

/* Functions of structures and lists: tags, presence, order, nesting. */

namespace {

TypeNode byte(TreeWriter &w) {
    return w.integer(0, 255);
}

/* Mandatory and optional components behind one another in every order. */
void optionalPlaces(TreeWriter &w) {
    const auto must = [&](const char *name) { return w.comp(name, w.boolean()); };
    const auto may = [&](const char *name, int tag) {
        return w.comp(name, byte(w)).implicit(tag).optional();
    };
    w.define("First", w.sequence({may("a", 0), must("b")}));
    w.define("Middle", w.sequence({must("a"), may("b", 0), may("c", 1), must("d"), must("e")}));
    w.define("Last", w.sequence({must("a"), may("b", 0)}));
    w.define("All", w.sequence({may("a", 0), may("b", 1)}));
    w.define("None", w.sequence({must("a"), must("b")}));
    w.define("Default", w.sequence({must("a"), w.comp("b", byte(w)).defaultTo(w.intValue(3))}));
}

/* An untagged CHOICE is found by the tags of its alternatives. */
void untaggedChoices(TreeWriter &w) {
    w.define("Pick", w.choice({w.comp("a", byte(w)).implicit(0), w.comp("b", w.boolean()),
                               w.comp("c", w.ref("Inner")), w.marker()}));
    w.define("Inner", w.choice({w.comp("d", w.null()), w.comp("e", w.null()).implicit(40)}));
    w.define("Places",
             w.sequence({w.comp("must", w.ref("Pick")), w.comp("may", w.ref("Inner")).optional(),
                         w.comp("then", w.ref("Pick")), w.comp("number", byte(w)),
                         w.comp("tagged", w.ref("Pick")).explicitly(1),
                         w.comp("last", w.ref("Inner")).optional()}));
    w.define("Members", w.set({w.comp("pick", w.ref("Pick")),
                               w.comp("tagged", w.ref("Inner")).explicitly(1).optional()}));
    w.define("List", w.listOf(TYP_SEQOF, w.ref("Pick")).asList());
    w.define("TaggedTop", w.choice({w.comp("x", w.null()), w.comp("y", w.boolean())}).explicitly(2))
        .entry();
}

void choices(TreeWriter &w) {
    w.define("Single", w.choice({w.comp("only", byte(w)).implicit(0)})).entry();
    w.define("SingleOpen", w.choice({w.comp("only", byte(w)).implicit(0), w.marker()}));
    w.define(
        "Nested",
        w.choice(
            {w.comp("inner", w.choice({w.comp("a", w.null()), w.comp("b", w.boolean())})),
             w.comp("tagged", w.choice({w.comp("c", w.null())})).explicitly(3),
             w.comp("list", w.listOf(TYP_SEQOF, byte(w), 0, 3)),
             w.comp("structure", w.sequence({w.comp("d", w.null()).optional()})).implicit(1)}));
}

/* Two explicit tags and an implicit one around each kind of value. */
void explicitTags(TreeWriter &w) {
    const auto chain = [](TypeNode type) { return type.explicitly(7).explicitly(40); };
    w.define("Chains",
             w.sequence({w.comp("number", chain(byte(w))), w.comp("may", chain(byte(w))).optional(),
                         w.comp("structure", chain(w.ref("Part"))),
                         w.comp("list", chain(w.listOf(TYP_SEQOF, byte(w), 1, 5))),
                         w.comp("pick", chain(w.choice({w.comp("x", w.null())}))),
                         w.comp("any", chain(w.any())),
                         w.comp("replaced", w.ref("Tagged")).implicit(2)}));
    w.define("Part", w.sequence({w.comp("x", byte(w))}));
    w.define("Tagged", w.boolean().explicitly(30)).entry();
    w.define("Wide", w.boolean().implicit(31)).entry();
    w.define("Outer", w.ref("Part").application(1).explicitly(31)).entry();
    w.define("List", w.listOf(TYP_SETOF, chain(byte(w))).asList().explicitly(0)).entry();
}

TypeNode setOf(TreeWriter &w, int count, bool withOptional) {
    std::vector<TypeNode> comps;
    for (int i = 0; i < count; ++i) {
        const TypeNode comp = w.comp("c" + std::to_string(i), byte(w)).implicit(i);
        comps.push_back(withOptional && i % 5 == 1 ? comp.optional() : comp);
    }
    return w.structure(TYP_SET, comps);
}

void sets(TreeWriter &w) {
    w.define("One", setOf(w, 1, false));
    w.define("Three", setOf(w, 3, false)).entry();
    w.define("Mixed", setOf(w, 3, true));
    w.define("Eight", setOf(w, 8, false));
    w.define("Open", w.set({w.comp("a", w.null()), w.comp("b", w.boolean()), w.marker()}));
    w.define("OneMayBe", w.set({w.comp("a", w.null()).optional()}));
}

/* More components than a word has bits: the mask is an array. */
void largeSets(TreeWriter &w) {
    w.define("Forty", setOf(w, 40, false));
    w.define("FortyMixed", setOf(w, 40, true));
}

void listForms(TreeWriter &w) {
    w.define("Linked", w.listOf(TYP_SEQOF, byte(w))).entry();
    w.define("Static", w.listOf(TYP_SETOF, byte(w), 1, 9).asArray());
    w.define("Fixed", w.listOf(TYP_SEQOF, byte(w), 3, 3).form(VF_STRU, VF_NONE));
    w.define("Dynamic", w.listOf(TYP_SEQOF, byte(w), 0, 500).asDynamicArray());
    w.define("DynamicParts", w.listOf(TYP_SEQOF, w.ref("Part"), 0, 5).asDynamicArray());
    w.define("Pointers", w.listOf(TYP_SEQOF, w.ref("Part").option(OPT_POINTER), 0, 300).asArray());
    w.define("Homes", w.listOf(TYP_SEQOF, byte(w).option(OPT_HOME), 1, 5).asArray());
    w.define("OpenSize", w.listOf(TYP_SEQOF, byte(w), 1, 5).extensible());
    w.define("Holes",
             w.listOf(TYP_SEQOF, byte(w))
                 .asList()
                 .constrained(w.size(w.sub(SUB_UNION, {w.range(2, 4), w.single(w.intValue(7))}))));
    w.define("Part", w.sequence({w.comp("x", byte(w))}));
    w.define("Members", w.sequence({w.comp("linked", w.listOf(TYP_SEQOF, byte(w)).asList()),
                                    w.comp("array", w.listOf(TYP_SEQOF, byte(w), 2, 5)),
                                    w.comp("more", w.ref("Static").constrained(w.size(2, 9)))}));
}

/* Each form of list in each other, and what else an element can be. */
void listsInLists(TreeWriter &w) {
    const auto linked = [&](TypeNode elem) { return w.listOf(TYP_SEQOF, elem).asList(); };
    const auto array = [&](TypeNode elem) { return w.listOf(TYP_SEQOF, elem, 1, 4).asArray(); };
    w.define("LinkedInLinked", linked(linked(byte(w))));
    w.define("ArrayInLinked", linked(array(byte(w))));
    w.define("LinkedInArray", array(linked(byte(w))));
    w.define("ArrayInArray", array(array(array(byte(w)))));
    w.define("DynamicInDynamic",
             w.listOf(TYP_SEQOF, w.listOf(TYP_SEQOF, byte(w), 0, 9).asDynamicArray(), 0, 300)
                 .asDynamicArray());
    w.define("Structures",
             linked(w.sequence({w.comp("x", linked(w.null())), w.comp("y", byte(w)).optional()})));
    w.define("Choices", array(w.choice({w.comp("x", w.null()), w.comp("y", array(byte(w)))})));
    w.define("Defined", linked(w.ref("ArrayInArray").constrained(w.size(2, 4))));
}

void recursion(TreeWriter &w) {
    w.define("Ping", w.sequence({w.comp("pong", w.ref("Pong")).optional()})).entry();
    w.define("Pong", w.choice({w.comp("ping", w.ref("Ping")), w.comp("end", w.null())}));
    w.define("Tree", w.sequence({w.comp("leaf", byte(w)),
                                 w.comp("sons", w.listOf(TYP_SEQOF, w.ref("Tree")).asList())}));
    w.define("Filter",
             w.choice({w.comp("all", w.listOf(TYP_SETOF, w.ref("Filter")).asList()).implicit(0),
                       w.comp("not", w.ref("Filter")).explicitly(1), w.comp("item", w.null())}));
}

/* What stands behind the marker is passed over, or kept in the places that a value has for it. */
void extensible(TreeWriter &w, bool kept, bool asHomes) {
    const auto with = [&](TypeNode type) {
        if (kept)
            type.option(OPT_SAVE_EXTENSIONS);
        return asHomes ? type.option(OPT_COMPS_AS_POINTERS) : type;
    };
    const auto comps = [&](TypeNode last) {
        return std::vector{w.comp("a", byte(w)), last, w.marker()};
    };
    w.define("Ended", with(w.structure(TYP_SEQ, comps(w.comp("b", w.boolean())))));
    w.define("MayEnd", with(w.structure(TYP_SEQ, comps(w.comp("b", w.boolean()).optional()))));
    w.define("Only", with(w.sequence({w.marker()})));
    w.define("Set", with(w.structure(TYP_SET, comps(w.comp("b", w.boolean()).optional()))));
    w.define("SmallSet", with(w.set({w.comp("a", byte(w)), w.marker()})));
    w.define("Choice", with(w.structure(TYP_CHOICE, comps(w.comp("b", w.boolean())))));
    w.define("Added", with(w.sequence({w.comp("a", byte(w)), w.marker(),
                                       w.comp("added", w.null()).optional()})));
    w.define("Inner",
             w.sequence({w.comp("in", with(w.sequence({w.comp("a", w.null()), w.marker()}))),
                         w.comp("pick", with(w.choice({w.comp("b", w.boolean()), w.marker()})))}));
}

/* Components that lie in homes of their own. */
void componentHomes(TreeWriter &w) {
    const auto members = [&] {
        return std::vector{
            w.comp("number", byte(w)),
            w.comp("text", w.string(TYP_IA5STR, 1, 8)).optional(),
            w.comp("part", w.ref("Part")),
            w.comp("inner", w.sequence({w.comp("z", byte(w)).optional()})).implicit(0),
            w.comp("list", w.listOf(TYP_SEQOF, w.null()).asList()).implicit(1),
            w.comp("pick", w.choice({w.comp("p", w.null()), w.comp("q", w.real())}))};
    };
    w.define("Sequence", w.structure(TYP_SEQ, members()).option(OPT_COMPS_AS_POINTERS)).entry();
    w.define("Set", w.structure(TYP_SET, members()).option(OPT_COMPS_AS_POINTERS));
    w.define("Choice", w.structure(TYP_CHOICE, members()).option(OPT_COMPS_AS_POINTERS));
    w.define("Part", w.sequence({w.comp("x", byte(w))}));
    w.define("Single",
             w.sequence({w.comp("home", w.ref("Part").option(OPT_HOME)),
                         w.comp("far", w.ref("Part").option(OPT_POINTER)),
                         w.comp("inner",
                                w.sequence({w.comp("x", byte(w)).optional()}).option(OPT_HOME))}));
}

/* A dynamic array in a home of its own, and a frame of what has no tag: its encoder names none. */
void brokenPlaces(TreeWriter &w) {
    w.define("Homes",
             w.sequence({w.comp("array", w.listOf(TYP_SEQOF, byte(w), 0, 500).asDynamicArray())})
                 .option(OPT_COMPS_AS_POINTERS));
    w.define(
        "Framed",
        w.sequence({w.comp(
            "pick", w.choice({w.comp("a", byte(w)), w.comp("b", w.real())}).option(OPT_FRAME))}));
}

/* Elements beyond the limit are passed over and counted, or an error. */
void sizeLimits(TreeWriter &w) {
    const auto list = [&] { return w.listOf(TYP_SEQOF, byte(w), 0, 200).asArray(); };
    w.define("Ignoring", list().sizeLimit(10, false)).entry();
    w.define("Refusing", list().sizeLimit(10, true));
    w.define("Same", w.listOf(TYP_SEQOF, byte(w), 0, 10).asArray().sizeLimit(10, false));
    w.define("Choices",
             w.listOf(TYP_SEQOF, w.choice({w.comp("a", w.null()), w.comp("b", w.boolean())}), 2, 99)
                 .asArray()
                 .sizeLimit(5, false));
    w.define("Member", w.sequence({w.comp("list", list().sizeLimit(3, false))}));
    w.define("Strings",
             w.sequence({w.comp("cut", w.string(TYP_IA5STR, 0, 200).sizeLimit(20, false)),
                         w.comp("refused", w.string(TYP_OCTSTR, 0, 200).sizeLimit(20, true))}));
}

void componentsOf(TreeWriter &w) {
    w.define("Base", w.sequence({w.comp("x", byte(w)), w.comp("y", w.boolean()).optional(),
                                 w.marker(), w.comp("z", w.null()).optional()}));
    w.define("Whole", w.sequence({w.comp("a", w.null()), w.componentsOf(w.ref("Base"))}));
    w.define("Numbered",
             w.sequence({w.comp("a", w.null()), w.componentsOf(w.ref("Base"))}).automaticTags());
}

/* What is nested in a component that is brought in belongs to the structure that it is brought
   into. */
void nestedComponentsOf(TreeWriter &w) {
    const auto parts = [&] {
        const TypeNode inner =
            w.sequence({w.comp("z", byte(w)).optional(), w.comp("text", w.string(TYP_IA5STR, 1, 8))});
        return w.sequence({w.comp("deep", inner), w.comp("number", byte(w))});
    };
    w.define("Base", w.sequence({w.comp("list", w.listOf(TYP_SEQOF, parts())).implicit(0),
                                 w.comp("in", parts()).implicit(1)}));
    w.define("Whole", w.sequence({w.comp("a", w.boolean()), w.componentsOf(w.ref("Base"))}));
    w.define("Inside", w.sequence({w.comp("one", w.sequence({w.componentsOf(w.ref("Base"))})),
                                   w.comp("two", w.set({w.componentsOf(w.ref("Whole"))}))}));
}

/* Values whose way to their home is not that of a plain member. */
void valuesInHomes(TreeWriter &w) {
    const auto home = [&](const char *name, TypeNode type, int tag) {
        return w.comp(name, type.option(OPT_HOME)).implicit(tag);
    };
    const auto bytes = [&] { return w.listOf(TYP_SEQOF, byte(w)).asList(); };
    const auto frame = [](TypeNode type) { return type.option(OPT_FRAME); };
    w.define("Homes", w.sequence({home("list", bytes(), 0),
                                  home("lists", w.listOf(TYP_SEQOF, bytes()).asList(), 1),
                                  home("flag", frame(w.boolean()), 2),
                                  home("text", frame(w.string(TYP_IA5STR, 1, 8)), 3)}));
    w.define("Frames", w.listOf(TYP_SEQOF, frame(w.boolean())).asList());
    w.define("Pointers", w.sequence({w.comp("open", w.openType()).explicitly(0),
                                     w.comp("number", byte(w)).optional()})
                             .option(OPT_COMPS_AS_POINTERS));
    w.define("OnePointer",
             w.sequence({w.comp("open", w.openType().option(OPT_POINTER)).explicitly(0)}));
}

/* A selection is its alternative, wherever it stands. */
void selections(TreeWriter &w) {
    const TypeNode part = w.sequence({w.comp("x", w.sequence({w.comp("y", byte(w)).optional()}))});
    const TypeNode pick =
        w.define("Pick", w.choice({w.comp("number", byte(w)).implicit(0), w.comp("u", w.ref("U")),
                                   w.comp("part", part).implicit(1)}));
    w.define("U", w.sequence({w.comp("x", w.boolean())}));
    w.define("Named", w.selection("u", pick));
    w.define("Number", w.selection("number", pick)).entry(ENTRY_ENCODE | ENTRY_DECODE);
    w.define("Part", w.selection("part", pick)).entry(ENTRY_ENCODE | ENTRY_DECODE);
    const auto members = [&](TypeNode named, TypeNode number, TypeNode inner, TypeNode elem) {
        return w.sequence({w.comp("named", named), w.comp("number", number),
                           w.comp("part", inner).optional(),
                           w.comp("list", w.listOf(TYP_SEQOF, elem).asList())});
    };
    w.define("Direct", members(w.selection("u", pick), w.selection("number", pick),
                               w.selection("part", pick), w.selection("part", pick)));
    w.define("Behind", members(w.ref("Named"), w.ref("Number"), w.ref("Part"), w.ref("Part")));
}

/* What is skipped has no tag of its own, but comes behind that of the structure. */
void skippedFirst(TreeWriter &w) {
    w.define("Pick", w.choice({w.marker(), w.comp("a", w.ref("Inner")), w.comp("b", w.null())}));
    w.define("Inner", w.choice({w.comp("c", byte(w)).application(0), w.comp("d", w.boolean())}));
    w.define("First", w.sequence({w.comp("pick", w.ref("Pick").skipped()), w.comp("x", byte(w))}));
    w.define("List", w.listOf(TYP_SEQOF, w.any().skipped()).asList());
}

/* The marker begins no chain of tests. */
void markerFirst(TreeWriter &w) {
    const auto pick = [&] {
        return w.choice({w.marker(), w.comp("a", byte(w)), w.comp("b", w.boolean())});
    };
    w.define("Pick", pick());
    w.define("Pointers", pick().option(OPT_COMPS_AS_POINTERS));
    w.define("Kept", pick().option(OPT_COMPS_AS_POINTERS).option(OPT_SAVE_EXTENSIONS));
    w.define("OnlyMarker", w.choice({w.marker()}));
}

/* Sizes that are written where a list is used are checked there. */
void listSizes(TreeWriter &w) {
    const auto sized = [&](RecNr sizes) { return w.ref("Array").constrained(w.size(sizes)); };
    w.define("Array", w.listOf(TYP_SEQOF, byte(w), 0, 6).asArray());
    w.define("Uses",
             w.sequence({w.comp("gap", sized(w.sub(SUB_UNION, {w.range(4, 6), w.range(0, 0)}))),
                         w.comp("shorter", sized(w.range(0, 3))),
                         w.comp("longer", sized(w.range(2, 6))),
                         w.comp("none", sized(w.sub(SUB_INTERSECTION, {w.range(1, 2),
                                                                       w.range(4, 5)})))}));
    w.define("Linked", w.listOf(TYP_SEQOF, sized(w.range(3, 3))).asList());
}

/* The function of A is written once, whoever refers to it; no function knows a "home" that it
   hasn't. */
void morlaSynonyms(TreeWriter &w) {
    constexpr int morla = ENTRY_ENCODE | ENTRY_DECODE | 1 << 6;
    w.exportsMarked();
    w.define("A", w.sequence({w.comp("x", byte(w)).optional()}));
    w.define("B", w.sequence({w.comp("a", w.ref("A"))})).entry(morla);
    w.define("C", w.ref("A")).entry(morla);
    w.define("D", w.sequence({w.comp("a", w.ref("A"))})).entry(morla);
    w.define("E", w.set({w.comp("x", byte(w)).optional(), w.comp("y", w.null())})).entry(morla);
}

const CodingCase cases[] = {
    {"optionalplaces", optionalPlaces, {"-DEFINITELEN=definite"}, {}, ALL},
    {"untaggedchoices", untaggedChoices, {}, {}, ALL},
    {"choices", choices, {}, {}, ALL_AND_TYPES},
    {"explicittags", explicitTags},
    {"explicittags_definite", explicitTags, {"-DEFINITELEN=definite"}},
    {"sets", sets, {}, {"-Wno-sign-compare"}, ALL},
    {"largesets", largeSets, {}, {"-Wno-int-in-bool-context"}},
    {"listforms", listForms, {}, {}, ALL_AND_TYPES},
    {"listsinlists", listsInLists, {}, {}, ALL_AND_TYPES},
    {"recursion", recursion, {}, {}, ALL_AND_TYPES},
    {"extensions_skipped", [](TreeWriter &w) { extensible(w, false, false); }, {}, {}, ALL},
    {"extensions_kept", [](TreeWriter &w) { extensible(w, true, false); }, {}, {}, ALL},
    {"extensions_skipped_homes", [](TreeWriter &w) { extensible(w, false, true); }},
    {"extensions_kept_homes", [](TreeWriter &w) { extensible(w, true, true); }, {"-MEMORY=yes"}},
    {"componenthomes", componentHomes, {}, {}, ALL_AND_TYPES},
    {"componenthomes_memory", componentHomes, {"-MEMORY=yes"}},
    {"brokenplaces", brokenPlaces, {}, {""}},
    {"sizelimits", sizeLimits, {}, {"-Wno-unused-but-set-variable"}, ALL},
    {"componentsof", componentsOf},
    {"componentsof_nested", nestedComponentsOf, {}, {}, CODING_AND_TYPES},
    {"selections", selections, {}, {}, CODING_AND_TYPES},
    {"skippedfirst", skippedFirst},
    {"valuesinhomes", valuesInHomes, {}, {}, ALL_AND_TYPES},
    {"markerfirst", markerFirst, {}, {}, ALL},
    {"listsizes", listSizes},
    {"morla_synonyms",
     morlaSynonyms,
     {"-DEFINITION-CATEGORY=MORLA-PROTOCOL", "-ZEROHOME=no"},
     {},
     CODING},
};

class CodingStructures : public testing::TestWithParam<CodingCase> {};

TEST_P(CodingStructures, AreWrittenAsExpectedAndCompile) {
    EXPECT_EQ(faultsOf(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Constructs, CodingStructures, testing::ValuesIn(cases),
                         [](const auto &row) { return std::string(row.param.name); });

/* The count of a linked list's surplus and CHARACTER STRING are errors at their lines; the rest
   compiles all the same. */
TEST(CodingStructuresDirect, WhatCHasNoPlaceForIsAnError) {
    WorkDir dir;
    TreeWriter w("Home_Module", "m");
    w.source("", "m.asn");
    for (const char *option : {"-COD=1:1", "-TST=1:1"})
        w.option(option);
    const TypeNode array = w.listOf(TYP_SEQOF, w.integer(0, 255), 0, 9).asDynamicArray();
    const TypeNode number = w.integer(0, 255).form(VF_UI64);
    w.define("Row", w.sequence({w.comp("array", array).option(OPT_HOME),
                                w.comp("number", number).option(OPT_HOME)}))
        .entry();
    const TypeNode list = w.listOf(TYP_SEQOF, w.boolean(), 0, 100).asList();
    w.define("List", list.sizeLimit(5, false)).entry().line(7);
    w.define("Text", w.sequence({w.comp("text", w.type(TYP_CHASTR).form(VF_DYNS)).line(9)})).entry();
    ASSERT_TRUE(w.save(dir.path("m.stx")));
    const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", "m"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("m.asn:7: error: A linked list"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("m.asn:9: error: CHARACTER STRING"), std::string::npos) << run.err;
    EXPECT_EQ(compilerMessages(dir, {"mcod.c", "mtst.c"}), "");
}

} // namespace
