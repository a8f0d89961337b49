#include "model/constraints.h"

#include "model/typequeries.h"
#include "model/valuetexts.h"
#include "tests/model/modelsetup.h"

namespace {

const auto exitsWith2 = testing::ExitedWithCode(2);

std::string shownValue(AsnValue *value) {
    Text text;
    if (getValueMainType(value) == TYP_REAL)
        return realValueStri(text, nullptr, value, nullptr);
    forCharacterStringValue(value, [&](AsnValue *, std::int32_t, const char *characters) {
        text = std::string("\"") + characters + "\"";
    });
    return text.empty() ? shown(int64Value(value)) : text;
}

/* A tree of constraints as text, by way of every walk there is; each acts on its own kind only. */
std::string shownTree(AsnType *type, AsnConstraint *constraint) {
    std::string text;
    auto add = [&](AsnConstraint *part) {
        text += (text.empty() ? "" : " ") + shownTree(type, part);
    };
    auto addNumbered = [&](AsnType *, AsnConstraint *part, int nbr) {
        text += std::to_string(nbr) + ":" + shownTree(type, part) + " ";
    };
    auto addPlain = [&](AsnType *, AsnConstraint *part) { add(part); };
    forUnionConstraint(type, constraint, addNumbered);
    forIntersectionConstraint(type, constraint, addNumbered);
    forEachCatenatedConstraint(type, constraint, addPlain);
    forExceptConstraint(type, constraint,
                        [&](AsnType *, AsnConstraint *included, AsnConstraint *excluded) {
                            add(included);
                            add(excluded);
                        });
    forAllExceptConstraint(type, constraint, addPlain);
    forSizeConstraint(type, constraint, addPlain);
    forPermittedAlphabetConstraint(type, constraint, addPlain);
    forSingleValueConstraint(type, constraint,
                             [&](AsnType *, AsnValue *value) { text += shownValue(value); });
    forValueRangeConstraint(
        type, constraint,
        [&](AsnType *, AsnValue *low, bool lowClosed, AsnValue *high, bool highClosed) {
            text += shownValue(low) + (lowClosed ? "" : "<") + ".." + (highClosed ? "" : "<") +
                    shownValue(high);
        });
    forContSubtypeConstraint(type, constraint,
                             [&](AsnType *, AsnType *contained, AsnConstraint *inner) {
                                 Text name;
                                 text += getTypeRef(name, nullptr, contained, "/");
                                 text += shownTree(type, inner);
                             });
    forWithComponentConstraint(type, constraint,
                               [&](AsnType *, AsnType *element, AsnConstraint *inner) {
                                   text += "of " + shownTree(element, inner);
                               });
    forWithComponentsConstraint(
        type, constraint, [&](AsnType *, AsnType *comp, AsnConstraint *inner, int compNbr) {
            Text name;
            text += " " + std::to_string(compNbr) + getTypeCompRef(name, ":", comp, "=") +
                    std::to_string(getPresenceConstraintKind(inner)) + shownTree(comp, inner);
        });
    const char *word = subKindName(getConstraintKind(constraint));
    return std::string(word == nullptr ? "?" : word) + "(" + text + ")";
}

std::string shownConstraints(AsnType *type) {
    std::string text;
    forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
        text += (text.empty() ? "" : ", ") + shownTree(type, constraint);
    });
    return text;
}

RecNr one(TreeWriter &w, std::int64_t number) {
    return w.single(w.intValue(number));
}

RecNr openRange(TreeWriter &w, std::int64_t low, std::int64_t high) {
    const RecNr lower = w.intValue(low).nr;
    return w.rangeOf(lower, w.intValue(high).nr, 0);
}

TEST(Constraints, EachKindShowsItsParts) {
    struct Row {
        TypeNode (*make)(TreeWriter &w);
        const char *expected;
    };
    const Row rows[] = {
        {[](TreeWriter &w) {
             const RecNr first = w.range(1, 5);
             return w.integer().constrained(w.sub(SUB_UNION, {first, one(w, 9)}));
         },
         "union(0:range(1..5) 1:single value(9) )"},
        {[](TreeWriter &w) {
             const RecNr first = w.range(MIN_VALUE, 5);
             return w.integer().constrained(w.sub(SUB_INTERSECTION, {first, openRange(w, 1, 7)}));
         },
         "INTERSECTION(0:range(MIN..5) 1:range(1<..<7) )"},
        {[](TreeWriter &w) {
             const RecNr all = w.sub(SUB_ALL_EXCEPT, {one(w, 3)});
             const RecNr except = w.sub(SUB_EXCEPT, {w.range(1, MAX_VALUE), one(w, 2)});
             return w.integer().constrained(w.sub(SUB_CATENATION, {all, except}));
         },
         "catenated(ALL EXPECT(single value(3)) EXCEPT(range(1..MAX) single value(2)))"},
        {[](TreeWriter &w) {
             return w.string(TYP_OCTSTR).constrained(w.size(MIN_VALUE, MAX_VALUE));
         },
         "size(range(0..MAX))"},
        {[](TreeWriter &w) { return w.real().constrained(w.range(MIN_VALUE, MAX_VALUE)); },
         "range(MINUS-INFINITY..PLUS-INFINITY)"},
        {[](TreeWriter &w) {
             const RecNr a = w.textValue(TYP_IA5STR, "a");
             const RecNr z = w.textValue(TYP_IA5STR, "z");
             const std::uint8_t closed = SUB_LOWER_CLOSED | SUB_UPPER_CLOSED;
             return w.string(TYP_IA5STR).constrained(w.alphabet(w.rangeOf(a, z, closed)));
         },
         "permitted alphabet(range(\"a\"..\"z\"))"},
        {[](TreeWriter &w) { return w.integer().constrained(w.includes(w.findType("Small"))); },
         "INCLUDES(Small/range(1..3))"},
        {[](TreeWriter &w) { return w.integer().constrained(w.includes(w.findType("Free"))); },
         "INCLUDES()"},
        {[](TreeWriter &w) {
             TypeNode list = w.listOf(TYP_SEQOF, w.integer());
             return list.constrained(w.sub(SUB_WITH_COMPONENT, {w.range(1, 2)}));
         },
         "WITH COMPONENT(of range(1..2))"},
        {[](TreeWriter &w) {
             return w.integer().constrained(
                 w.sub(SUB_CATENATION, {w.sub(SUB_TABLE), w.sub(SUB_USER_DEFINED)}));
         },
         "catenated(table() user defined())"},
        {[](TreeWriter &w) { return w.integer().constrained(w.sub(SUB_PASSED_OVER)); }, ""},
    };
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    w.define("Small", w.integer(1, 3));
    w.define("Free", w.integer());
    for (std::size_t i = 0; i < std::size(rows); ++i)
        w.define("T" + std::to_string(i), rows[i].make(w));
    m.load(w);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        m.withType("T" + std::to_string(i), [&](AsnType *type) {
            EXPECT_EQ(shownConstraints(type), rows[i].expected);
            EXPECT_EQ(isConstraints(type), rows[i].expected[0] != '\0');
            EXPECT_EQ(isLocalTypeConstraints(type), rows[i].expected[0] != '\0');
        });
}

TEST(Constraints, BaseComesFirstAndLocalOnesAreTold) {
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    w.define("S", w.integer(1, 10));
    w.define("T", w.ref("S").constrained(w.range(1, 3)));
    w.define("Plain", w.ref("S"));
    m.load(w);
    m.withType("T", [](AsnType *type) {
        EXPECT_EQ(shownConstraints(type), "range(1..10), range(1..3)");
        std::string local;
        forEachLocalTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
            local += shownTree(type, constraint);
        });
        EXPECT_EQ(local, "range(1..3)");
        EXPECT_TRUE(isLocalTypeConstraints(type));
        EXPECT_EQ(getNrOfTypeConstraints(type) * 10 + getNrOfLocalTypeConstraints(type), 21);
        /* Step by step the list is the same, and a walk inside doesn't disturb it. */
        AsnConstraint *constraint = firstConstraint(type);
        EXPECT_EQ(shownTree(type, constraint), "range(1..10)");
        shownConstraints(type);
        constraint = nextConstraint(constraint);
        EXPECT_EQ(shownTree(type, constraint), "range(1..3)");
        EXPECT_EQ(nextConstraint(constraint), nullptr);
    });
    m.withType("Plain", [](AsnType *type) {
        EXPECT_FALSE(isLocalTypeConstraints(type));
        forEachLocalTypeConstraint(type, [](AsnType *, AsnConstraint *) { ADD_FAILURE(); });
    });
}

TEST(Constraints, SimpleUnionsHoldOnlyRangesAndValues) {
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    auto both = [&](SubKind inner, RecNr part) {
        const RecNr set = w.sub(inner, {part});
        return w.integer().constrained(w.sub(SUB_UNION, {w.range(1, 2), set}));
    };
    w.define("Simple", both(SUB_INTERSECTION, one(w, 1)));
    w.define("Deep", both(SUB_CATENATION, w.sub(SUB_ALL_EXCEPT, {one(w, 2)})));
    w.define("NoUnion", w.integer(1, 2));
    m.load(w);
    const std::pair<const char *, bool> rows[] = {
        {"Simple", true}, {"Deep", false}, {"NoUnion", false}};
    for (const auto &[name, simple] : rows)
        m.withType(name, [&, is = simple](AsnType *type) {
            forEachTypeConstraint(type, [&](AsnType *, AsnConstraint *constraint) {
                EXPECT_EQ(isSimpleUnionConstraint(constraint), is);
            });
        });
}

/* S ::= SEQUENCE { a INTEGER, b INTEGER OPTIONAL, c SEQUENCE OF INTEGER OPTIONAL } */
struct Structure {
    TypeNode a, b, c, sequence, x, y, choice;
    explicit Structure(TreeWriter &w)
        : a(w.comp("a", w.integer())), b(w.comp("b", w.integer()).optional()),
          c(w.comp("c", w.listOf(TYP_SEQOF, w.integer())).optional()),
          sequence(w.define("S", w.sequence({a, b, c}))), x(w.comp("x", w.integer())),
          y(w.comp("y", w.boolean())), choice(w.define("C", w.choice({x, y}))) {}
};

TEST(Constraints, ComponentsMeetWhatIsSaidOfThem) {
    ModelSetup m;
    TreeWriter far("Far", "far");
    const Structure there(far);
    m.import(far, "far");
    TreeWriter w("Limits", "limits");
    const std::int32_t farNr = w.import(far);
    const Structure s(w);
    const RecNr small = w.range(1, 2);
    w.define("Partial",
             w.ref("S").constrained(w.withComponents({{s.b, 0, SUB_ABSENT}, {s.a, small, 0}})));
    w.define("Full", w.ref("S").constrained(w.withComponents({{s.b, w.range(1, 3), 0}}, true)));
    const RecNr element = w.sub(SUB_WITH_COMPONENT, {w.range(4, 5)});
    w.define("Nested", w.ref("S").constrained(w.withComponents({{s.c, element, SUB_PRESENT}})));
    w.define("Choice", w.ref("C").constrained(w.withComponents({{s.y, 0, SUB_PRESENT}})));
    w.define("Away", w.ref(far, "S").constrained(
                         w.withComponents({{there.b, 0, SUB_OPTIONAL, farNr}}, true)));
    w.define("WrongModule",
             w.ref(far, "S").constrained(w.withComponents({{there.b, 0, SUB_OPTIONAL, 1}})));
    w.define("Holder",
             w.sequence(
                 {w.comp("s", w.ref("S").constrained(w.withComponents({{s.b, 0, SUB_ABSENT}})))}));
    m.load(w);
    const char *const rows[][2] = {
        {"Partial", "WITH COMPONENTS( 0:a=255range(1..2) 1:b=3exception specification())"},
        {"Full", "WITH COMPONENTS( 0:a=3exception specification() 1:b=2range(1..3)"
                 " 2:c=3exception specification())"},
        {"Nested", "WITH COMPONENTS( 2:c=2WITH COMPONENT(of range(4..5)))"},
        {"Choice", "WITH COMPONENTS( 0:x=3exception specification()"
                   " 1:y=2exception specification())"},
        {"Away", "WITH COMPONENTS( 0:a=3exception specification() 1:b=4exception specification()"
                 " 2:c=3exception specification())"},
        {"WrongModule", "WITH COMPONENTS()"},
    };
    for (const auto &row : rows)
        m.withType(row[0],
                   [&](AsnType *type) { EXPECT_EQ(shownConstraints(type), row[1]) << row[0]; });
    m.withComp("Holder", "s", [](AsnType *comp) {
        EXPECT_EQ(shownConstraints(comp), "WITH COMPONENTS( 1:b=3exception specification())");
    });
}

TEST(Constraints, ElementsAreReachedThroughSynonyms) {
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    w.define("List", w.listOf(TYP_SETOF, w.integer()));
    w.define("Again", w.ref("List"));
    w.define("T", w.ref("Again").constrained(w.sub(SUB_WITH_COMPONENT, {w.range(4, 5)})));
    m.load(w);
    m.withType("T", [](AsnType *type) {
        EXPECT_EQ(shownConstraints(type), "WITH COMPONENT(of range(4..5))");
    });
}

/* --- broken trees --- */

void walkConstraints(void (*spoil)(TreeWriter &w)) {
    ModelSetup m;
    TreeWriter w("Broken", "broken");
    const Structure s(w);
    w.define("T", w.ref("S").constrained(w.withComponents({{s.a, w.range(1, 2), 0}})));
    w.define("U", w.integer().constrained(one(w, 5)));
    w.finish();
    spoil(w);
    m.load(w);
    forEachType(m.module, [](AsnType *type, int) { shownConstraints(type); });
    exit(0);
}

TEST(ConstraintsDeathTest, BrokenTreesEndTheRun) {
    struct Row {
        void (*spoil)(TreeWriter &w);
        const char *message;
    };
    const Row rows[] = {
        {[](TreeWriter &w) { w.findType("U")->constraintRec = 44; }, "Can not read record"},
        {[](TreeWriter &w) { w.subRecs[1].first = 44; }, "Can not read record"},
        {[](TreeWriter &w) { w.subRecs[2].first = 44; }, "Can not read record"},
        {[](TreeWriter &w) { w.subRecs[2].first = 0; },
         "Unable to construct a value for a constraint"},
        {[](TreeWriter &w) { w.vNodes[2].valueKind = TYP_CLASS; },
         "Unable to construct a value for a constraint"},
        {[](TreeWriter &w) { w.vNodes[2].governorRec = 0; }, "Internal error"},
        {[](TreeWriter &w) { w.subRecs[0].next = 1; }, "broken"},
        {[](TreeWriter &w) { w.subRecs[2].subKind = SUB_INCLUDES; }, "Can not read record"},
        /* A synonym that stands for nothing has no components to go on with. */
        {[](TreeWriter &w) { w.findType("T")->refRecord = 0; }, "broken"},
    };
    for (const Row &row : rows)
        EXPECT_EXIT(walkConstraints(row.spoil), exitsWith2, row.message) << &row - rows;
}

TEST(ConstraintsDeathTest, MissingCallBacksEndTheRun) {
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    w.define("T", w.integer());
    m.load(w);
    m.withType("T", [](AsnType *type) {
        AsnConstraint constraint;
        EXPECT_EXIT(forEachTypeConstraint(type, nullptr), exitsWith2, "Call-back");
        EXPECT_EXIT(forSizeConstraint(type, &constraint, nullptr), exitsWith2, "Call-back");
    });
}

} // namespace
