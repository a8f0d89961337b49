#include "model/typequeries.h"

#include "model/any.h"
#include "model/iterators.h"
#include "model/valuesets.h"
#include "tests/model/handletexts.h"
#include "tests/model/modelsetup.h"

namespace {

TEST(TypeQueries, Leaves) {
    TreeWriter w("Leaves", "leaves");
    w.define("Int", w.integer());
    w.define("Enum", w.enumerated({{"one", 1}, NamedNumber::extension()}));
    w.define("Empty", w.sequence({}));
    w.define("Marked", w.sequence({w.marker()}));
    w.define("Implied", w.sequence({})).extensible();
    w.define("Full", w.set({w.comp("a", w.null())}));
    w.define("Skipped", w.set({w.comp("a", w.null())})).skipped();
    w.define("List", w.listOf(TYP_SEQOF, w.null()));
    w.define("Counted", w.listOf(TYP_SEQOF, w.null())).rec().nrOfComps = 0;
    w.define("SkippedList", w.listOf(TYP_SEQOF, w.null())).skipped();
    ModelSetup setup;
    setup.load(w);
    std::string leaves;
    std::string morla;
    forEachType(setup.module, [&](AsnType *type, int) {
        leaves += isLeafType(type) ? nameOf(type) + " " : "";
        morla += isMorlaLeafType(type) ? nameOf(type) + " " : "";
    });
    EXPECT_EQ(leaves, "Int Enum Empty Skipped SkippedList ");
    EXPECT_EQ(morla, "Int Enum Empty Skipped List Counted SkippedList ");
}

TEST(TypeQueries, EntryAndVisibleTypes) {
    TreeWriter w("Entries", "entries");
    w.exportsMarked();
    w.option("-ENTRY=First:PDU:first_symbol");
    w.define("First", w.null()).entry(ENTRY_ENCODE, 0x05).exported();
    w.define("Hidden", w.null()).entry().hidden();
    w.define("Second", w.null()).entry();
    w.define("Third", w.null()).exported();
    w.define("Fourth", w.null());
    ModelSetup setup;
    setup.load(w);
    std::string text;
    const auto note = [&](AsnType *type, int nbr) {
        text += nameOf(type) + std::to_string(nbr) + " ";
    };
    forEachEntryType(setup.module, note);
    text += "| ";
    forEachEntryVisType(setup.module, note);
    EXPECT_EQ(text, "First0 Second1 | First0 Second1 Third2 ");

    setup.withType("First", [](AsnType *type) {
        EXPECT_TRUE(isEntryTypeFunction(type, 2));
        EXPECT_FALSE(isEntryTypeFunction(type, 3));
        EXPECT_TRUE(typeIsInEntryCategory(type, 2));
        EXPECT_FALSE(typeIsInEntryCategory(type, 1));
        EXPECT_EQ(getEntrySymbol(type), "first_symbol");
    });
    setup.withType("Second", [](AsnType *type) {
        EXPECT_FALSE(isEntrySymbol(type));
        EXPECT_EQ(getEntrySymbol(type), "");
    });

    /* By number: a record that a walk passes over is no entry type of the module. */
    text.clear();
    const RecNr second = w.findType("Second").nr;
    const RecNr hidden = w.findType("Hidden").nr;
    forEntryTypeByRecNr(setup.module, note, second);
    forEntryTypeByRecNr(setup.module, note, hidden);
    forEntryTypeByRecNr(setup.module, note, w.findType("Third").nr);
    forTypeByRecNr(setup.module, note, KIND_TYPE, hidden);
    forTypeByRecNr(setup.module, note, KIND_CLASS, hidden);
    EXPECT_EQ(text, "Second1 Hidden0 ");
}

TEST(TypeQueries, LengthForms) {
    TreeWriter w("Lengths", "lengths");
    w.define("T", w.ref("S"));
    w.define("S", w.ref("R").lengthForm(0));
    w.define(
        "R",
        w.sequence({w.comp("a", w.null()), w.comp("b", w.null()).lengthForm(1)}).lengthForm(1));
    ModelSetup setup;
    setup.load(w);
    const auto forms = [&](std::uint8_t form) {
        getGlobalOptions(setup.module)->definiteLen = form;
        std::string text;
        forEachType(setup.module, [&](AsnType *type, int) {
            text += isDefiniteLengthEncoding(type) ? "1" : "0";
            forEachTypeComp(type, [&](AsnType *, AsnType *comp, int) {
                text += isDefiniteLengthEncoding(comp) ? "y" : "n";
            });
        });
        return text;
    };
    EXPECT_EQ(forms(LENGTH_INDEFINITE), "000nn");
    EXPECT_EQ(forms(LENGTH_DEFINITE), "111yy");
    /* T takes its form from S, the first on its chain that has one. */
    EXPECT_EQ(forms(LENGTH_DEFINITE_INDEFINITE_COMPS), "001ny");
    EXPECT_EQ(forms(LENGTH_DEFINITE_DEFINITE_COMPS), "001yy");
    EXPECT_EQ(forms(4), "000nn");
}

std::string namesOf(AsnType *type) {
    const Text a = getBaseTypeId(type) + " ";
    const Text b = getBaseTypeRef(type) + " ";
    const Text c = "<" + getTypeMainTypeStri(type) + "> ";
    const Text d = getTypeCompStatusStri(type);
    return a + b + c + d;
}

TEST(TypeQueries, Names) {
    TreeWriter w("Names", "names");
    w.define("Leaf", w.integer().form(VF_UI16));
    w.define("List", w.listOf(TYP_SEQOF, w.null()));
    w.define("Renamed", w.sequence({w.comp("my_comp", w.ref("Leaf"))})).naming("-TNAME=Other");
    w.define("Odd", w.integer().form(VF_STRU));
    ModelSetup setup;
    setup.load(w);
    setup.expectTypes(namesOf, {{"Leaf", "uint16 INTEGER <TYP_INTEGER> TCS_HEADER"},
                                {"List", "List List <TYP_SEQOF> TCS_HEADER"},
                                {"Renamed", "Other Renamed <TYP_SEQ> TCS_HEADER"},
                                {"Odd", "?!? INTEGER <TYP_INTEGER> TCS_HEADER"}});
    setup.withType("Renamed.my_comp", [](AsnType *comp) {
        EXPECT_EQ(getTypeCompId(comp), "my_comp");
        EXPECT_EQ(getDefTypeId(comp), "Leaf");
    });
}

TEST(TypeQueries, NumbersOf32Bits) {
    TreeWriter w("Numbers", "numbers");
    w.source("src/", "numbers.asn");
    w.define("S", w.string(TYP_OCTSTR, 2, 9)).sizeLimit(5, false).line(12);
    w.define("L", w.string(TYP_OCTSTR)).endpoints(1, MAX_VALUE);
    ModelSetup setup;
    setup.load(w);
    testing::internal::CaptureStderr();
    EXPECT_EQ(int64ToInt32(i64min(), setup.module, 1, "m"), INT32_MIN);
    EXPECT_EQ(int64ToInt32(i64ultosint64(0x80000000u), nullptr, 1, "m"), INT32_MAX);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(int64ToInt32(i64ultosint64(0x80000000u), setup.module, 12, "Integer value"),
              INT32_MAX);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "src/numbers.asn:12:BET Warning\n"
              "** Type constraint information does not fit in 32 bits\n"
              "** Integer value\n");
}

TEST(TypeQueries, AnyDefinedBy) {
    TreeWriter w("Anys", "anys");
    const TypeNode code = w.comp("code", w.integer());
    const TypeNode any = w.anyDefinedBy(code);
    w.anyEntry(any, "one", "First");
    any.backendOption("-OTHER=1");
    w.anyEntry(any, "missing", "First");
    w.anyEntry(any, "two", "Second");
    w.define("Before", w.sequence({w.comp("x", w.null()), w.comp("y", w.null())}));
    w.define("S", w.sequence({w.componentsOf(w.ref("Before")), code, w.comp("arg", any)}));
    w.define("First", w.boolean());
    w.define("Second", w.null());
    w.defineValue("one", w.anonymous(w.integer()), w.intValue(1));
    w.defineValue("two", w.anonymous(w.integer()), w.intValue(2));
    ModelSetup setup;
    setup.load(w);
    setup.withType("S.arg", [&](AsnType *comp) {
        ASSERT_TRUE(isAnyDefinedByType(comp));
        std::string rows;
        EXPECT_EQ(forAnyType(comp,
                             [&](AsnType *, AsnValue *value, AsnType *type, int nbr) {
                                 rows += i64tostr(int64Value(value)) + " " + nameOf(type) +
                                         std::to_string(nbr) + ", ";
                             }),
                  2);
        forAnyDefinedByClassifierType(
            comp->father, comp, [&](AsnType *, AsnType *classifier, AsnType *) {
                rows += nameOf(classifier) + std::to_string(classifier->compNbr);
            });
        EXPECT_EQ(rows, "1 First0, 2 Second1, code2");
        setup.withType("Before", [&](AsnType *strange) {
            EXPECT_EXIT(forAnyDefinedByClassifierType(
                            strange, comp, [](AsnType *, AsnType *, AsnType *) {}),
                        exitsWith2, "Unable to construct AsnType for an ANY DEFINED BY classifier");
        });
        comp->base.auxRecord = 0;
        forAnyDefinedByClassifierType(comp->father, comp,
                                      [](AsnType *, AsnType *, AsnType *) { ADD_FAILURE(); });
    });
}

} // namespace
