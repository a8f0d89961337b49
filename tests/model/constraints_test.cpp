#include "model/constraints.h"

#include "model/typequeries.h"
#include "model/valuetexts.h"
#include "tests/model/modelsetup.h"

namespace {

std::string shownValue(AsnValue *value) {
    Text text;
    if (getValueMainType(value) == TYP_REAL)
        return realValueStri(value);
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
                                 text += getTypeRef(contained) + "/";
                                 text += shownTree(type, inner);
                             });
    forWithComponentConstraint(type, constraint,
                               [&](AsnType *, AsnType *element, AsnConstraint *inner) {
                                   text += "of " + shownTree(element, inner);
                               });
    forWithComponentsConstraint(
        type, constraint, [&](AsnType *, AsnType *comp, AsnConstraint *inner, int compNbr) {
            text += " " + std::to_string(compNbr) + ":" + getTypeCompRef(comp) + "=" +
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

TEST(Constraints, EachKindShowsItsParts) {
    ModelSetup m;
    TreeWriter w("Limits", "limits");
    w.define("Small", w.integer(1, 3));
    w.define("Free", w.integer());
    ModelSetup::Rows rows;
    const auto add = [&](const char *expected, TypeNode type, RecNr sub) {
        rows.emplace_back("T" + std::to_string(rows.size()), expected);
        w.define(rows.back().first, type.constrained(sub));
    };
    const auto number = [&](const char *expected, RecNr sub) { add(expected, w.integer(), sub); };
    const RecNr low = w.range(1, 5), upTo = w.range(MIN_VALUE, 5);
    number("union(0:range(1..5) 1:single value(9) )", w.sub(SUB_UNION, {low, one(w, 9)}));
    const RecNr deep = w.sub(SUB_INTERSECTION, {one(w, 1)});
    number("union(0:INTERSECTION(0:single value(1) ) )", w.sub(SUB_UNION, {deep}));
    const RecNr odd = w.sub(SUB_CATENATION, {w.sub(SUB_ALL_EXCEPT, {one(w, 2)})});
    number("union(0:catenated(ALL EXPECT(single value(2))) )", w.sub(SUB_UNION, {odd}));
    number("INTERSECTION(0:range(MIN..5) 1:range(1<..<7) )",
           w.sub(SUB_INTERSECTION, {upTo, openRange(w, 1, 7)}));
    const RecNr all = w.sub(SUB_ALL_EXCEPT, {one(w, 3)});
    const RecNr except = w.sub(SUB_EXCEPT, {w.range(1, MAX_VALUE), one(w, 2)});
    number("catenated(ALL EXPECT(single value(3)) EXCEPT(range(1..MAX) single value(2)))",
           w.sub(SUB_CATENATION, {all, except}));
    add("size(range(0..MAX))", w.string(TYP_OCTSTR), w.size(MIN_VALUE, MAX_VALUE));
    add("range(MINUS-INFINITY..PLUS-INFINITY)", w.real(), w.range(MIN_VALUE, MAX_VALUE));
    const RecNr a = w.textValue(TYP_IA5STR, "a"), z = w.textValue(TYP_IA5STR, "z");
    add("permitted alphabet(range(\"a\"..\"z\"))", w.string(TYP_IA5STR),
        w.alphabet(w.rangeOf(a, z, SUB_LOWER_CLOSED | SUB_UPPER_CLOSED)));
    number("INCLUDES(Small/range(1..3))", w.includes(w.findType("Small")));
    number("INCLUDES()", w.includes(w.findType("Free")));
    add("WITH COMPONENT(of range(1..2))", w.listOf(TYP_SEQOF, w.integer()),
        w.sub(SUB_WITH_COMPONENT, {w.range(1, 2)}));
    const RecNr table = w.sub(SUB_TABLE);
    number("catenated(table() user defined())",
           w.sub(SUB_CATENATION, {table, w.sub(SUB_USER_DEFINED)}));
    number("", w.sub(SUB_PASSED_OVER));
    m.load(w);
    m.expectTypes(shownConstraints, rows);
    for (const auto &[name, expected] : rows)
        m.withType(name, [&, any = !expected.empty()](AsnType *type) {
            EXPECT_EQ(isConstraints(type), any);
            EXPECT_EQ(isLocalTypeConstraints(type), any);
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
    });
    m.withType("Plain", [](AsnType *type) {
        EXPECT_FALSE(isLocalTypeConstraints(type));
        forEachLocalTypeConstraint(type, [](AsnType *, AsnConstraint *) { ADD_FAILURE(); });
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
    w.define("List", w.listOf(TYP_SETOF, w.integer()));
    w.define("Again", w.ref("List"));
    w.define("Elements", w.ref("Again").constrained(w.sub(SUB_WITH_COMPONENT, {w.range(4, 5)})));
    m.load(w);
    const std::string absent = "=3exception specification()",
                      optional = "=4exception specification()";
    m.expectTypes(
        shownConstraints,
        {{"Partial", "WITH COMPONENTS( 0:a=255range(1..2) 1:b" + absent + ")"},
         {"Full", "WITH COMPONENTS( 0:a" + absent + " 1:b=2range(1..3) 2:c" + absent + ")"},
         {"Nested", "WITH COMPONENTS( 2:c=2WITH COMPONENT(of range(4..5)))"},
         {"Choice", "WITH COMPONENTS( 0:x" + absent + " 1:y=2exception specification())"},
         {"Away", "WITH COMPONENTS( 0:a" + absent + " 1:b" + optional + " 2:c" + absent + ")"},
         {"WrongModule", "WITH COMPONENTS()"},
         {"Holder.s", "WITH COMPONENTS( 1:b" + absent + ")"},
         {"Elements", "WITH COMPONENT(of range(4..5))"}});
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
    const char *const unread = "Can not read record";
    const char *const noValue = "Unable to construct a value for a constraint";
    expectFatal(walkConstraints,
                {{[](TreeWriter &w) { w.findType("U")->constraintRec = 44; }, unread},
                 {[](TreeWriter &w) { w.subRecs[1].first = 44; }, unread},
                 {[](TreeWriter &w) { w.subRecs[2].first = 44; }, unread},
                 {[](TreeWriter &w) { w.subRecs[2].first = 0; }, noValue},
                 {[](TreeWriter &w) { w.vNodes[2].valueKind = TYP_CLASS; }, noValue},
                 {[](TreeWriter &w) { w.vNodes[2].governorRec = 0; }, "Internal error"},
                 {[](TreeWriter &w) { w.subRecs[0].next = 1; }, "broken"},
                 {[](TreeWriter &w) { w.subRecs[2].subKind = SUB_INCLUDES; }, unread},
                 /* A synonym that stands for nothing has no components to go on with. */
                 {[](TreeWriter &w) { w.findType("T")->refRecord = 0; }, "broken"}});
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
