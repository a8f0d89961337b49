#include <ostream>

#include <gtest/gtest.h>

#include "cbet/checks.h"
#include "cbet/forms.h"
#include "cbet/vars.h"
#include "model/modules.h"
#include "tests/support/cbetrun.h"

/* The check of constraints in decoders: one row for each form of a constraint on component x. */

namespace {

struct CheckRow {
    const char *name;
    TypeNode (*make)(TreeWriter &w);
    const char *text; /* within the ok block, or with "!" in front the whole text */
    int warnings = 0;
};

void PrintTo(const CheckRow &row, std::ostream *out) {
    *out << row.name;
}

RecNr single(TreeWriter &w, int n) {
    return w.single(w.intValue(n));
}

RecNr letter(TreeWriter &w, const char *text) {
    return w.single(w.textValue(TYP_IA5STR, text));
}

RecNr letters(TreeWriter &w, const char *low, const char *high, std::uint8_t flags) {
    const RecNr from = w.textValue(TYP_IA5STR, low);
    return w.rangeOf(from, w.textValue(TYP_IA5STR, high), flags);
}

constexpr std::uint8_t CLOSED = SUB_LOWER_CLOSED | SUB_UPPER_CLOSED;

const CheckRow rows[] = {
    {"IntegerRangeGoesToTheRunTime", [](TreeWriter &w) { return w.integer(0, 255); }, "!"},
    {"IntegerHoles",
     [](TreeWriter &w) {
         return w.integer().constrained(
             w.sub(SUB_UNION, {single(w, 1), w.range(3, 4), single(w, 7)}));
     },
     "!if ((1 < home->x && home->x < 3) || (4 < home->x && home->x < 7)){\nreportError "
     "(ASNG_F(asncodg) CONSTRAINT_FAIL);\n}\n"},
    {"RealFromBelow",
     [](TreeWriter &w) {
         return w.real().constrained(w.rangeOf(w.realValue(15, 10, -1), 0, CLOSED));
     },
     "ok1 = (15.00000000E-1 <= home->x) ;\n"},
    {"RealBetweenOpenEnds",
     [](TreeWriter &w) {
         const RecNr low = w.realValue(1, 10, 0);
         return w.real().constrained(w.rangeOf(low, w.realValue(2, 10, 0), 0));
     },
     "ok1 = (1.000000000E0 < home->x && home->x < 2.000000000E0) ;\n"},
    {"RealWithoutBounds",
     [](TreeWriter &w) { return w.real().constrained(w.rangeOf(0, 0, CLOSED)); }, "!"},
    {"StringSizeGoesToTheRunTime", [](TreeWriter &w) { return w.string(TYP_IA5STR, 1, 8); }, "!"},
    {"StringSizesWithHole",
     [](TreeWriter &w) {
         return w.string(TYP_OCTSTR)
             .form(VF_STAS8, VF_UI8)
             .constrained(w.size(w.sub(SUB_UNION, {w.range(2, 4), single(w, 7)})));
     },
     "ok1 = ((2 <= staStrLen (&home->x) && staStrLen (&home->x) <= 4) || \n"
     "(staStrLen (&home->x) == 7));\n"},
    {"AlphabetOfStaticString",
     [](TreeWriter &w) {
         return w.string(TYP_IA5STR, 1, 8).constrained(w.alphabet(letters(w, "a", "c", CLOSED)));
     },
     "ok1 = (staChrStrStrspn (&home->x, \"abc\") == staStrLen (&home->x));\n"},
    {"AlphabetOfFixedString",
     [](TreeWriter &w) {
         return w.string(TYP_IA5STR, 3, 3)
             .constrained(
                 w.alphabet(w.sub(SUB_UNION, {letters(w, "a", "b", CLOSED), letter(w, "xyz")})));
     },
     "ok1 = (staChrStrStrspn0 (&home->x, \"abxyz\") == 3);\n"},
    {"AlphabetOfDynamicString",
     [](TreeWriter &w) { return w.string(TYP_IA5STR).constrained(w.alphabet(letter(w, "01"))); },
     "ok1 = (dynChrStrStrspn (&home->x, \"01\") == dynStrLen (&home->x));\n"},
    {"LongAlphabetStaysOnItsLine",
     [](TreeWriter &w) {
         const char *all = "0123456789abcdefghijklmnopqrstuvwxyz";
         return w.string(TYP_IA5STR).constrained(w.alphabet(letter(w, all)));
     },
     "ok1 = (dynChrStrStrspn (&home->x, \"0123456789abcdefghijklmnopqrstuvwxyz\") ==\n"
     "dynStrLen (&home->x));\n"},
    {"CharactersThatEndALiteralAreEscaped",
     [](TreeWriter &w) {
         const RecNr range = letters(w, " ", "#", CLOSED), list = letter(w, "\\?\?/\xE9");
         return w.string(TYP_VISSTR).constrained(w.alphabet(w.sub(SUB_UNION, {range, list})));
     },
     "ok1 = (dynChrStrStrspn (&home->x, \" !\\\"#\\\\?\\?/\xE9\") == dynStrLen (&home->x));\n"},
    {"AlphabetOfWideCharacters",
     [](TreeWriter &w) {
         return w.string(TYP_BMPSTR)
             .constrained(w.alphabet(w.sub(SUB_UNION, {w.single(w.text32Value(U"ab\xFC"))})));
     },
     "ok1 = (dynChrStrStrspn (&home->x, \"ab\xFC\") == dynStrLen (&home->x));\n"},
    {"AlphabetsOfOtherTypes",
     [](TreeWriter &w) {
         const TypeNode other =
             w.anonymous(w.string(TYP_IA5STR).constrained(w.alphabet(letter(w, "x"))));
         const RecNr low = w.text16Value(u"m"), high = w.text16Value(u"n");
         const RecNr parts =
             w.sub(SUB_UNION, {w.alphabet(letters(w, "a", "b", CLOSED)), w.includes(other),
                               w.rangeOf(low, high, CLOSED), w.single(w.text16Value(u"\xE9"))});
         return w.string(TYP_BMPSTR).constrained(w.alphabet(parts));
     },
     "ok1 = (dynChrStrStrspn (&home->x, \"abxmn\xE9\") == dynStrLen (&home->x));\n"},
    {"AlphabetOfWhatIsInBoth",
     [](TreeWriter &w) {
         const RecNr both = w.sub(SUB_INTERSECTION, {letter(w, "ab"), letter(w, "bc")});
         return w.string(TYP_IA5STR).constrained(w.alphabet(both));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"AlphabetFromMoreThanACharacter",
     [](TreeWriter &w) {
         return w.string(TYP_IA5STR).constrained(w.alphabet(letters(w, "ab", "c", CLOSED)));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"AlphabetBeyondTheCharactersOfC",
     [](TreeWriter &w) {
         const RecNr low = w.text32Value(U"\xFFFFFFFE"), high = w.text32Value(U"\xFFFFFFFF");
         const RecNr all =
             w.sub(SUB_UNION, {w.rangeOf(low, high, CLOSED), letters(w, "a", "c", CLOSED)});
         return w.string(TYP_VISSTR).constrained(w.alphabet(all));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"AlphabetWithOpenEnd",
     [](TreeWriter &w) {
         return w.string(TYP_IA5STR)
             .constrained(w.alphabet(letters(w, "a", "c", SUB_LOWER_CLOSED)));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"BooleanValue",
     [](TreeWriter &w) { return w.boolean().constrained(w.single(w.boolValue(true))); },
     "ok1 = (home->x == TRUE);\n"},
    {"StringValueAndSize",
     [](TreeWriter &w) {
         return w.string(TYP_VISSTR, 1, 4).constrained(w.single(w.textValue(TYP_VISSTR, "on")));
     },
     "ok1 = (strcmp (home->x.st, \"on\") == 0);\n"},
    {"TwoChecksInOneVariable",
     [](TreeWriter &w) {
         const RecNr range = w.rangeOf(w.realValue(1, 10, 0), 0, CLOSED);
         return w.real().constrained(range).constrained(
             w.rangeOf(0, w.realValue(3, 10, 0), CLOSED));
     },
     "ok1 = (1.000000000E0 <= home->x) ;\nok1 = ok1 && (home->x <= 3.000000000E0) ;\n"},
    {"ListSizesAreCheckedInTheList",
     [](TreeWriter &w) { return w.listOf(TYP_SEQOF, w.null(), 0, 9).asArray(); }, "!"},
    {"ListOfFixedSize", [](TreeWriter &w) { return w.listOf(TYP_SEQOF, w.null(), 3, 3).asArray(); },
     "ok1 = (staArrLen (&home->x) == 3);\n"},
    {"ListSizesWithHole",
     [](TreeWriter &w) {
         return w.listOf(TYP_SEQOF, w.null())
             .asList()
             .constrained(w.size(w.sub(SUB_UNION, {single(w, 2), w.range(5, MAX_VALUE)})));
     },
     "ok1 = ((listLen (&home->x) == 2) || (5 <= listLen (&home->x)));\n"},
    {"InnerSubtyping",
     [](TreeWriter &w) {
         return w.listOf(TYP_SEQOF, w.null()).constrained(w.sub(SUB_WITH_COMPONENT, {}));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"ObjectIdentifierValue",
     [](TreeWriter &w) {
         return w.type(TYP_OBJID).constrained(w.single(w.objectIdentifier({w.intValue(1)})));
     },
     "!/* WARNING: Unimplemented type constraint. */\n", 1},
    {"TableConstraint", [](TreeWriter &w) { return w.real().constrained(w.sub(SUB_TABLE)); }, "!"},
    {"Skipped",
     [](TreeWriter &w) { return w.boolean().constrained(w.single(w.boolValue(true))).skipped(); },
     "!"},
};

class Checks : public testing::TestWithParam<CheckRow> {};

TEST_P(Checks, AreWritten) {
    const CheckRow &row = GetParam();
    TreeWriter w("Mod", "mod");
    w.define("T", w.sequence({w.comp("x", row.make(w))}));
    CbetRun run(w);
    testing::internal::CaptureStderr();
    run.forComp("T", "x", [](AsnType *comp) { cCheckConstraints(BODY_FILE, comp); });
    const std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(run.body(),
              row.text[0] == '!'
                  ? std::string(row.text + 1)
                  : std::string("{\nBOOLE ok1;\n") + row.text +
                        "if (!ok1){\nreportError (ASNG_F(asncodg) CONSTRAINT_FAIL);\n}\n}\n");
    EXPECT_EQ(err.find("body.c:") != std::string::npos, row.warnings == 1) << err;
    testing::internal::CaptureStderr(); /* without a file, at the place in the module, once */
    for (int i = 0; i < 2; ++i)
        run.forComp("T", "x", [](AsnType *comp) { cCheckConstraints(0, comp); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              row.warnings == 0 ? "" : "./mod.asn:0: warning: Unimplemented type constraint.\n");
    EXPECT_EQ(cVarCount(VAR_OK), 0);
}

INSTANTIATE_TEST_SUITE_P(Forms, Checks, testing::ValuesIn(rows),
                         [](const auto &row) { return std::string(row.param.name); });

/* What a definition demands is checked in its own function, what a use adds is checked there. */
TEST(ChecksInPlace, LocalAndEntryConstraints) {
    TreeWriter w("Mod", "mod");
    w.define("List", w.listOf(TYP_SEQOF, w.null(), 2, 9).asArray());
    w.define("User", w.sequence({w.comp("plain", w.ref("List")),
                                 w.comp("more", w.ref("List").constrained(w.size(4, 9)))}));
    w.define("Flag", w.boolean().constrained(w.single(w.boolValue(true)))).entry();
    CbetRun run(w);
    run.generate(decodingKind);
    const std::string decoders = run.body();
    EXPECT_NE(functionText(decoders, "dList").find("ok1 = (staArrLen (home) >= 2);\n"),
              std::string::npos);
    const std::string user = functionText(decoders, "dUser");
    EXPECT_EQ(user.find("&home->plain) >="), std::string::npos);
    EXPECT_NE(user.find("ok1 = (staArrLen (&home->more) >= 4);\n"), std::string::npos);
    EXPECT_NE(functionText(decoders, "decFlag").find("ok1 = (*home == TRUE);\n"),
              std::string::npos);
}

/* An element that refers to a list is the item's, not that of the structure around. */
TEST(ChecksInPlace, ReferenceToAListInAList) {
    TreeWriter w("Mod", "mod");
    w.define("List", w.listOf(TYP_SEQOF, w.null()).asList());
    w.define("User", w.listOf(TYP_SEQOF, w.ref("List").constrained(w.size(2, 2))).asList());
    CbetRun run(w);
    run.generate(decodingKind);
    const std::string user = functionText(run.body(), "dUser");
    EXPECT_NE(user.find("ok1 = (listLen (&a1->val.list) == 2);\n"), std::string::npos) << user;
}

TEST(ChecksInPlace, NoSizeIsRight) {
    TreeWriter w("Mod", "mod");
    const RecNr none = w.sub(SUB_INTERSECTION, {w.range(1, 2), w.range(5, 6)});
    w.define("List", w.listOf(TYP_SEQOF, w.null()).asList().constrained(w.size(none))).entry();
    CbetRun run(w);
    run.generate(decodingKind);
    EXPECT_NE(run.body().find("ok1 = (FALSE);\n"), std::string::npos) << run.body();
}

TEST(ChecksInPlace, IndexForms) {
    TreeWriter w("Mod", "mod");
    CbetRun run(w);
    struct Row {
        long count;
        int form, oldForm;
    };
    forFirstModule([&](AsnModule *module) {
        for (const Row &row : {Row{256, VF_UI8, VF_I16}, Row{257, VF_UI16, VF_I16},
                               Row{65536, VF_UI16, VF_I16}, Row{65537, VF_UI32, VF_I32}}) {
            run.options().cGeneration = 0;
            EXPECT_EQ(cTableAccessFunctionIndexVF(module, row.count), row.form);
            run.options().cGeneration = 1u << CGEN_OLD;
            EXPECT_EQ(cTableAccessFunctionIndexVF(module, row.count), row.oldForm);
        }
    });
}

} // namespace
