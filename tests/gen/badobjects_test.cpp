#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>

#include "tests/support/runtool.h"
#include "tests/support/treewriter.h"

/* Classes, objects and sets that don't hold together: the run ends with a message, or goes on where
   a row can still be written. */

namespace {

constexpr RecNr NOWHERE = 9999;

/* A class with a field of each kind, and an object of it. */
struct Desk {
    explicit Desk(TreeWriter &writer)
        : w(writer), code(w.valueField("code", w.ref("Code")).optional()),
          arg(w.typeField("Arg").optional()), next(w.valueField("next", w.ref("OP")).optional()),
          codes(w.setField("Codes", w.ref("Code")).optional()),
          others(w.setField("Others", w.ref("OP")).optional()),
          op(w.define("OP", w.objectClass({code, arg, next, codes, others}))),
          number(w.define("Code", w.integer(0, 9))), first(define("first", {})) {}

    ValueNode define(const char *name, std::initializer_list<ValueNode> parts) {
        const ValueNode object = w.object(op, parts);
        return w.defineValue(name, op, object);
    }
    /* The object that has one part alone. */
    ValueNode with(ValueNode part) { return define("with", {part}); }
    RecNr single(const char *name) { return w.single(w.valueRef(name).governedBy(op)); }
    TypeNode setOf(TypeNode governor, RecNr elements) {
        TypeNode set = elements == 0 ? governor : governor.constrained(elements);
        set->nodeFlags |= NODE_SET;
        return set;
    }

    TreeWriter &w;
    TypeNode code, arg, next, codes, others, op, number;
    ValueNode first;
};

struct BadCase {
    const char *name;
    std::function<void(Desk &)> build; /* may change records of the finished tree */
    int status;
    const char *message; /* the whole standard error of the run */
    /* The row of the object `with`, where sets stand within rows and where they have tables of
       their own; null: the run ends before there is one. */
    const char *row = nullptr;
    const char *separate = nullptr;
};

[[maybe_unused]] void PrintTo(const BadCase &value, std::ostream *out) {
    *out << value.name;
}

/* The class of an object, or the governor of a field, is replaced in the finished tree. */
void firstIsOf(Desk &d, RecNr governor) {
    d.w.finish();
    d.first->governorRec = governor;
}

void withoutGovernor(Desk &d, TypeNode field, ValueNode setting) {
    d.with(setting);
    d.w.finish();
    field->refRecord = 0;
}

void valueWithoutGovernor(Desk &d) {
    const ValueNode five = d.w.defineValue("five", d.number, d.w.intValue(5));
    d.with(d.w.fieldValue(d.code, d.w.valueRef("five")));
    d.w.finish();
    five->governorRec = 0;
}

void settings(Desk &d, std::function<void(ValueNode)> change) {
    const ValueNode arg = d.w.fieldType(d.arg, d.w.ref("Code"));
    d.with(arg);
    d.w.finish();
    change(arg);
}

void inlineWithinItself(Desk &d) {
    const ValueNode loop = d.w.object(d.op, {});
    loop->refRecord = d.w.fieldValue(d.next, d.w.valueRefTo(1, loop));
    d.with(d.w.fieldValue(d.next, loop));
}

TypeNode setOfItself(Desk &d) {
    const TypeNode self = d.w.defineSet("Self", d.w.ref("OP"), 0);
    return self.constrained(d.w.sub(SUB_UNION, {d.single("first"), d.w.includes(self)}));
}

/* Sets that a set of values contains aren't shown: what remains is its own value. */
void valueSetOfItself(Desk &d) {
    const TypeNode self = d.w.defineSet("Self", d.w.ref("Code"), 0);
    const RecNr one = d.w.single(d.w.intValue(1).governedBy(d.number));
    const RecNr elements = d.w.sub(SUB_UNION, {one, d.w.includes(self)});
    d.with(d.w.fieldType(d.codes, d.w.ref("Self")));
    d.w.finish();
    self->constraintRec = elements;
}

RecNr twice(Desk &d, SubKind kind) {
    return d.w.sub(kind, {d.single("first"), d.single("first")});
}

RecNr extensible(Desk &d) {
    return d.w.sub(SUB_UNION, {d.single("first"), d.w.sub(SUB_EXTENDED_VALUE_SET)});
}

ValueNode othersAre(Desk &d, RecNr elements) {
    return d.w.fieldType(d.others, d.setOf(d.w.ref("OP"), elements));
}

ValueNode codesAre(Desk &d, RecNr elements) {
    return d.w.fieldType(d.codes, d.setOf(d.w.ref("Code"), elements));
}

ValueNode listOf(Desk &d, MainType kind) {
    return d.w.listValue(kind, {d.w.intValue(1).governedBy(d.number)});
}

#define INTERNAL_FAULT(detail) "\nFATAL ERROR : Internal error\n" detail "\n"
#define NO_CLASS INTERNAL_FAULT("              Using class method with a non-class construct.\n")
#define TOO_COMPLEX INTERNAL_FAULT("              Too complex object set\n")
constexpr const char *UNREADABLE = "\nFATAL ERROR : Can not read record from syntax tree\n\n";
constexpr const char *INCONSISTENT =
    "\nFATAL ERROR : Syntax tree inconsistent\n              t\n\n";
constexpr const char *NO_GOVERNOR = "./t.asn:0: warning: Unknown leaf type: TYP_SYNONYM\n";

const BadCase cases[] = {
    /* classes */
    {"object_without_class", [](Desk &d) { firstIsOf(d, 0); }, 2, NO_CLASS},
    {"object_of_a_type", [](Desk &d) { firstIsOf(d, d.number.nr); }, 2, NO_CLASS},
    {"class_nowhere", [](Desk &d) { firstIsOf(d, NOWHERE); }, 2, UNREADABLE},
    {"class_of_itself",
     [](Desk &d) {
         d.w.define("A", d.w.ref("B"));
         d.w.define("B", d.w.ref("A"));
     },
     2, INCONSISTENT},
    /* governors; a field without one counts as a value, or as a set of values, of no known type */
    {"value_field_without_governor",
     [](Desk &d) { withoutGovernor(d, d.code, d.w.fieldValue(d.code, d.w.intValue(5))); }, 0,
     NO_GOVERNOR, "{ BIT(0), 5, NULL, NULL, { 0 }, { NULL } }",
     "{ BIT(0), 5, NULL, NULL, NULL, NULL }"},
    {"value_set_field_without_governor",
     [](Desk &d) { withoutGovernor(d, d.codes, codesAre(d, d.w.single(d.w.intValue(5)))); }, 0,
     NO_GOVERNOR, "{ BIT(3), 0, NULL, NULL, { 5 }, { NULL } }",
     "{ BIT(3), 0, NULL, NULL, tValueSet0, NULL }"},
    {"object_field_without_governor",
     [](Desk &d) { withoutGovernor(d, d.next, d.w.fieldValue(d.next, d.w.valueRef("first"))); }, 0,
     NO_GOVERNOR, "{ BIT(2), 0, NULL, 0 /* NOT YET IMPLEMENTED!! */, { 0 }, { NULL } }",
     "{ BIT(2), 0, NULL, 0 /* NOT YET IMPLEMENTED!! */, NULL, NULL }"},
    {"object_set_field_without_governor",
     [](Desk &d) { withoutGovernor(d, d.others, othersAre(d, d.single("first"))); }, 0, NO_GOVERNOR,
     "{ BIT(4), 0, NULL, NULL, { 0 }, { 0 /* NOT YET IMPLEMENTED!! */ } }",
     "{ BIT(4), 0, NULL, NULL, NULL, NULL }"},
    {"value_without_governor", valueWithoutGovernor, 2, INTERNAL_FAULT("")},
    /* settings */
    {"settings_nowhere", [](Desk &d) { settings(d, [](ValueNode arg) { arg->next = NOWHERE; }); },
     2, UNREADABLE},
    {"settings_in_circle", [](Desk &d) { settings(d, [](ValueNode arg) { arg->next = arg.nr; }); },
     0, "", "{ BIT(1), 0, NULL /* ONLY ENTRY TYPES ARE SUPPORTED HERE */, NULL, { 0 }, { NULL } }",
     "{ BIT(1), 0, NULL /* ONLY ENTRY TYPES ARE SUPPORTED HERE */, NULL, NULL, NULL }"},
    {"type_nowhere", [](Desk &d) { settings(d, [](ValueNode arg) { arg->refRecord = NOWHERE; }); },
     2, UNREADABLE},
    {"object_set_without_constraint", [](Desk &d) { d.with(othersAre(d, 0)); }, 0, "",
     "{ BIT(4), 0, NULL, NULL, { 0 }, { NULL } }", "{ BIT(4), 0, NULL, NULL, NULL, NULL }"},
    {"value_set_without_constraint", [](Desk &d) { d.with(codesAre(d, 0)); }, 0, "",
     "{ BIT(3), 0, NULL, NULL, { 0 }, { NULL } }", "{ BIT(3), 0, NULL, NULL, NULL, NULL }"},
    {"text_for_a_number",
     [](Desk &d) { d.with(d.w.fieldValue(d.code, d.w.textValue(TYP_IA5STR, "five"))); }, 0, "",
     "{ BIT(0), { \"five\" }, NULL, NULL, { 0 }, { NULL } }",
     "{ BIT(0), { \"five\" }, NULL, NULL, NULL, NULL }"},
    {"structure_for_a_number", [](Desk &d) { d.with(d.w.fieldValue(d.code, listOf(d, TYP_SEQ))); },
     0, "", "{ BIT(0), { 0 }, NULL, NULL, { 0 }, { NULL } }",
     "{ BIT(0), { 0 }, NULL, NULL, NULL, NULL }"},
    {"choice_for_a_number", [](Desk &d) { d.with(d.w.fieldValue(d.code, listOf(d, TYP_CHOICE))); },
     0, "", "{ BIT(0), { 0 }, NULL, NULL, { 0 }, { NULL } }",
     "{ BIT(0), { 0 }, NULL, NULL, NULL, NULL }"},
    {"number_for_an_object", [](Desk &d) { d.with(d.w.fieldValue(d.next, d.w.intValue(5))); }, 0,
     "", "{ BIT(2), 0, NULL, NULL, { 0 }, { NULL } }", "{ BIT(2), 0, NULL, NULL, NULL, NULL }"},
    {"number_in_an_object_set",
     [](Desk &d) { d.with(othersAre(d, d.w.single(d.w.intValue(5).governedBy(d.op)))); }, 0, "",
     "{ BIT(4), 0, NULL, NULL, { 0 }, { NULL } }", "{ BIT(4), 0, NULL, NULL, NULL, NULL }"},
    /* objects and sets of themselves; a row may well name itself */
    {"object_names_itself", [](Desk &d) { d.with(d.w.fieldValue(d.next, d.w.valueRef("with"))); },
     0, "", "{ BIT(2), 0, NULL, &tOP [1] /* with */, { 0 }, { NULL } }",
     "{ BIT(2), 0, NULL, &tOP [1] /* with */, NULL, NULL }"},
    {"object_is_itself",
     [](Desk &d) { d.w.defineValue("me", d.op, d.w.valueRef("me").governedBy(d.op)); }, 2,
     INCONSISTENT},
    {"inline_within_itself", inlineWithinItself, 2, INCONSISTENT},
    {"set_of_itself", [](Desk &d) { setOfItself(d); }, 2, INCONSISTENT},
    {"field_set_of_itself",
     [](Desk &d) {
         setOfItself(d);
         d.with(d.w.fieldType(d.others, d.w.ref("Self")));
     },
     2, INCONSISTENT},
    {"value_set_of_itself", valueSetOfItself, 0, "", "{ BIT(3), 0, NULL, NULL, { 1 }, { NULL } }",
     "{ BIT(3), 0, NULL, NULL, tValueSet0, NULL }"},
    /* sets that are no lists */
    {"set_too_complex",
     [](Desk &d) { d.w.defineSet("S", d.w.ref("OP"), twice(d, SUB_INTERSECTION)); }, 2,
     TOO_COMPLEX},
    {"field_set_too_complex", [](Desk &d) { d.with(othersAre(d, twice(d, SUB_EXCEPT))); }, 2,
     TOO_COMPLEX},
    {"field_set_with_marker", [](Desk &d) { d.with(othersAre(d, extensible(d))); }, 2, TOO_COMPLEX},
    {"value_set_too_complex",
     [](Desk &d) {
         const RecNr range = d.w.range(1, 3);
         d.with(codesAre(d, d.w.sub(SUB_INTERSECTION, {range, d.w.range(2, 5)})));
     },
     0, "", "{ BIT(3), 0, NULL, NULL, { 0 }, { NULL } }", "{ BIT(3), 0, NULL, NULL, NULL, NULL }"},
    {"value_set_too_large", [](Desk &d) { d.with(codesAre(d, d.w.range(0, MAX_VALUE))); }, 2,
     INTERNAL_FAULT("              Too complex value set\n")},
};

/* The row of the object `with`, on one line. */
std::string rowOf(const std::string &table) {
    const std::string heading = "/* with 1 */";
    std::istringstream words(table.substr(std::min(table.find(heading), table.size())));
    std::string row, word;
    while (words >> word && word != "};")
        row += (row.empty() ? "" : " ") + word;
    return row.substr(std::min(heading.size() + 1, row.size()));
}

class BadObjects : public testing::TestWithParam<BadCase> {};

TEST_P(BadObjects, EndWithAMessageOrLeaveARow) {
    const BadCase &given = GetParam();
    for (const char *option : {"-TABO=no", "-TABO=yes"}) {
        SCOPED_TRACE(option);
        WorkDir dir;
        TreeWriter w("Bad_Module", "t");
        w.option("-TAB=yes");
        w.option(option);
        Desk desk(w);
        given.build(desk);
        ASSERT_TRUE(w.save(dir.path("t.stx")));
        const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", "t"});
        EXPECT_EQ(run.status, given.status);
        EXPECT_EQ(run.err, given.message);
        if (given.row != nullptr) {
            EXPECT_EQ(rowOf(dir.read("t.tab")), option[6] == 'n' ? given.row : given.separate);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Gen, BadObjects, testing::ValuesIn(cases),
                         [](const auto &suite) { return suite.param.name; });

} // namespace
