#include <gtest/gtest.h>

#include <vector>

#include "tests/rts/testingcontext.h"

/* Components in all arrangements that generated functions have, written as those are. */

namespace {

struct Inner {
    sint8 choice;
    union {
        BOOLE flag;
        uint16 number;
    } i1;
};

struct Outer {
    uint8 compmask;
    uint8 id;
    uint8 more;
    Inner inner;
    struct {
        uint8 n;
        uint8 elem[3];
    } few;
    LIST inners;
    FRAME_PTR any;
    FRAME_PTR framed;
    EXTENSIONMARKER extensionmarker;
};

void aInner(ASNTSTG *asntstg, Inner *home) {
    home->choice = -1;
    if (ask_BegComp("flag", TCS_CHOICE, TYP_BOOLEAN)) {
        home->choice = 0;
        a_Boolean(&home->i1.flag);
    } else if (ask_BegComp("number", TCS_CHOICE, TYP_INTEGER)) {
        home->choice = 1;
        a_uint16(&home->i1.number, 0, 1000);
    }
}

void pInner(ASNTSTG *asntstg, const Inner *home) {
    switch (home->choice) {
    case 0:
        p_Boolean("flag", home->i1.flag);
        break;
    case 1:
        p_uint16("number", home->i1.number);
        break;
    }
}

/* The array has no test of its bound, as one whose type has none. */
void askFew(ASNTSTG *asntstg, Outer *home) {
    staArrInit(&home->few);
    uint32 n1 = 0;
    while (TRUE) {
        if (!ask_BegComp(NULL, TCS_MULTIPLE, TYP_INTEGER))
            break;
        a_uint8(&home->few.elem[n1], 0, 255);
        incStaArrLen(&home->few);
        n1++;
    }
    ask_EndComp();
}

void askInners(ASNTSTG *asntstg, Outer *home) {
    listInit(&home->inners);
    ASNHOME *a1 = NULL;
    while (TRUE) {
        if (listLen(&home->inners) >= 2)
            break;
        if (!ask_BegComp(NULL, TCS_MULTIPLE, TYP_CHOICE))
            break;
        appendList(NULL, &home->inners, &a1, VF_STRU, sizeof(Inner));
        aInner(asntstg, static_cast<Inner *>(a1->val.stru));
        ask_EndAnyChoiceComp();
        incListLen(&home->inners);
    }
    ask_EndComp();
}

void askOuter(ASNTSTG *asntstg, Outer *home) {
    ask_BegComp("Outer", TCS_HEADER, TYP_SEQ);
    home->compmask = 0;
    initExtensionmarker(&home->extensionmarker);
    if (ask_BegComp("id", TCS_MANDATORY, TYP_INTEGER))
        a_uint8(&home->id, 0, 255);
    if (ask_BegComp("more", TCS_OPTIONAL, TYP_INTEGER)) {
        home->compmask |= BIT(1);
        a_uint8(&home->more, 0, 255);
    }
    if (ask_BegComp("inner", TCS_MANDATORY, TYP_CHOICE)) {
        aInner(asntstg, &home->inner);
        ask_EndAnyChoiceComp();
    }
    if (ask_BegComp("few", TCS_MANDATORY, TYP_SEQOF))
        askFew(asntstg, home);
    if (ask_BegComp("inners", TCS_MANDATORY, TYP_SETOF))
        askInners(asntstg, home);
    if (ask_BegComp("any", TCS_OPTIONAL, TYP_ANY)) {
        home->compmask |= BIT(2);
        a_Frame_0(&home->any);
        ask_EndAnyChoiceComp();
    }
    if (ask_BegComp("framed", TCS_OPTIONAL, TYP_SEQ)) {
        home->compmask |= BIT(3);
        a_Frame(&home->framed, TYP_SEQ);
    }
    ask_EndComp();
}

void priOuter(ASNTSTG *asntstg, const Outer *home) {
    pri_BegComp("Outer", TCS_HEADER, TYP_SEQ);
    p_uint8("id", home->id);
    if (home->compmask & BIT(1))
        p_uint8("more", home->more);
    pri_BegComp("inner", TCS_MANDATORY, TYP_CHOICE);
    pInner(asntstg, &home->inner);
    pri_EndComp();
    pri_BegComp("few", TCS_MANDATORY, TYP_SEQOF);
    for (uint32 n1 = 0; n1 < staArrLen(&home->few); n1++)
        p_uint8(NULL, home->few.elem[n1]);
    pri_EndComp();
    pri_BegComp("inners", TCS_MANDATORY, TYP_SETOF);
    for (const ASNHOME *a1 = firstListItem(&home->inners); a1; a1 = nextListItem(a1)) {
        pri_BegComp(NULL, TCS_MULTIPLE, TYP_CHOICE);
        pInner(asntstg, static_cast<const Inner *>(a1->val.stru));
        pri_EndComp();
    }
    pri_EndComp();
    if (home->compmask & BIT(2)) {
        pri_BegComp("any", TCS_OPTIONAL, TYP_ANY);
        p_Frame_0(&home->any);
        pri_EndComp();
    }
    if (home->compmask & BIT(3)) {
        pri_BegComp("framed", TCS_OPTIONAL, TYP_SEQ);
        p_Frame(&home->framed, TYP_SEQ);
        pri_EndComp();
    }
    if (home->extensionmarker.n > 0)
        p_Extensionmarker(&home->extensionmarker);
    pri_EndComp();
}

std::string askAgain(const std::string &script, Outer *value, Owned &owned) {
    return asked(
        script, [&](ASNTSTG *g) { askOuter(g, value); }, owned);
}

std::string error(const std::string &script) {
    Owned owned;
    Outer value = {};
    return askAgain(script, &value, owned);
}

const char *const WHOLE = "Outer: {\n"
                          "  id: 7\n"
                          "  more: 8\n"
                          "  inner: number: 999\n"
                          "  few: {\n"
                          "    1\n"
                          "    2\n"
                          "    3\n"
                          "  }\n"
                          "  inners: {\n"
                          "    flag: TRUE\n"
                          "    number: 0\n"
                          "  }\n"
                          "  any: '020105'H\n"
                          "  framed: '30800000'H\n"
                          "  ...: { '800101'H '9F2A00'H }\n"
                          "}\n";

TEST(Components, PrintedAsTheyAreAsked) {
    Owned owned;
    Outer value = {};
    EXPECT_EQ("ASN_OK", askAgain(WHOLE, &value, owned));
    EXPECT_EQ(2U, value.extensionmarker.n);
    EXPECT_FALSE(value.any->typed);
    EXPECT_TRUE(value.framed->typed);
    EXPECT_EQ(3, value.few.n);
    EXPECT_EQ(WHOLE, printed([&](ASNTSTG *g) { priOuter(g, &value); }));

    const char *const least =
        "Outer: {\n  id: 7\n  inner: flag: FALSE\n  few: { }\n  inners: { }\n}\n";
    EXPECT_EQ("ASN_OK", askAgain(least, &value, owned));
    EXPECT_EQ(least, printed([&](ASNTSTG *g) { priOuter(g, &value); }));
}

TEST(Components, WrittenFreely) {
    Owned owned;
    Outer value = {};
    EXPECT_EQ("ASN_OK", askAgain("-- a comment\r\n{id : 7,-- more\n-\tinner:flag:TRUE{1,2}, {}}",
                                 &value, owned));
    EXPECT_EQ(0, value.compmask);
    EXPECT_EQ(2, value.few.n);
    EXPECT_EQ("ASN_OK", askAgain("7 8 inner: flag: TRUE 1 } {}", &value, owned))
        << "without braces";
    EXPECT_EQ(2, value.compmask);
}

TEST(Components, TheErrorTellsNameAndLine) {
    const std::pair<const char *, const char *> cases[] = {
        {"", "INPUT_FAIL 1 Outer.id"},
        {"Other: {\n id: 1 }", "MM_FAIL 1 Outer.id"},
        {"{\n\nid: 256", "CONSTRAINT_FAIL 3 Outer.id"},
        {"{ id: 1\n more: 2\n few: { } }", "MM_FAIL 3 Outer.inner"},
        {"{ id: 1 inner:\n wrong: 3 }", "INPUT_FAIL 2 Outer.inner.wrong"},
        {"{ id: 1 inner: number: 1001 }", "CONSTRAINT_FAIL 1 Outer.inner.number"},
        {"{ id: 1 inner: number: 1\nfew: { 1 2\n3 4 } }", "AM_FAIL 3 Outer.few[3]"},
        {"{ id: 1 inner: number: 1 few: { 1 x } }", "INPUT_FAIL 1 Outer.few[1]"},
        {"{ id: 1 inner: number: 1 few: { 1", "INPUT_FAIL 1 Outer.few[1]"},
        {"{ id: 1 inner: number: 1 few: { } inners: { number: 1 number: 2 number: 3 } }",
         "AM_FAIL 1 Outer.inners.number"},
        {"{ id: 1 inner: number: 1 few: { } inners: { flag: 1 } }",
         "INPUT_FAIL 1 Outer.inners[0].flag"},
        {"{ id: 1 inner: number: 1 few: { } inners: { } any: '0203'H }", "VALUE_FAIL 1 Outer.any"},
        {"{ id: 1 inner: number: 1 few: { } inners: { } framed: { } }",
         "INPUT_FAIL 1 Outer.framed"},
        {"{ id: 1 inner: number: 1 few: { } inners: { } id: 2 }", "INPUT_FAIL 1 Outer.id"},
        {"{ id: 1 inner: number: 1 few: { } inners: { }", "INPUT_FAIL 1 Outer"},
        {"{ id: 1 inner: number: 1 few: { ...: { } }", "INPUT_FAIL 1 Outer.few[0]"},
        {"{ ...: { '0500'H 5", "INPUT_FAIL 1 Outer...."},
    };
    for (auto [script, result] : cases)
        EXPECT_EQ(result, error(script)) << script;
}

TEST(Components, ValuesThatAreNoneOfTheirType) {
    Outer value = {};
    value.inner.choice = 5;
    EXPECT_EQ("Outer: {\n  id: 0\n  inner: ?\n  few: { }\n  inners: { }\n}\nVALUE_FAIL",
              printed([&](ASNTSTG *g) { priOuter(g, &value); }));
}

/* --- circles --- */

struct Chain {
    BOOLE hasNext;
    Chain *next;
};

void askChain(ASNTSTG *asntstg, Chain *home) {
    if (ask_BegComp("next", TCS_OPTIONAL, TYP_SEQ)) {
        home->hasNext = TRUE;
        home->next = static_cast<Chain *>(allocAsn(NULL, MB_STG, sizeof(Chain)));
        askChain(asntstg, home->next);
    }
    ask_EndComp();
}

TEST(Components, NestingHasAnEnd) {
    std::string script = "{";
    for (int i = 0; i < 100000; ++i)
        script += "next:{";
    Owned owned;
    Chain chain = {};
    const std::string result = asked(
        script,
        [&](ASNTSTG *asntstg) {
            ask_BegComp("Chain", TCS_HEADER, TYP_SEQ);
            askChain(asntstg, &chain);
        },
        owned);
    EXPECT_EQ("DEPTH_FAIL 1 ", result.substr(0, 13));
    EXPECT_EQ(ASN_PATH_TEXT - 1 - result.substr(13).size(), 0U)
        << "as much of the path as there is room";
}

/* Elements that need no word would otherwise come without end. */
TEST(Components, EachElementTakesAWord) {
    Owned owned;
    int elements = 0;
    EXPECT_EQ("INPUT_FAIL 1 L[1]", asked(
                                       "{ other: 5 }",
                                       [&](ASNTSTG *asntstg) {
                                           ask_BegComp("L", TCS_HEADER, TYP_SEQOF);
                                           while (ask_BegComp(NULL, TCS_MULTIPLE, TYP_SEQ)) {
                                               ++elements;
                                               if (ask_BegComp("a", TCS_OPTIONAL, TYP_NULL))
                                                   a_NullType();
                                               ask_EndComp();
                                           }
                                           ask_EndComp();
                                       },
                                       owned));
    EXPECT_EQ(1, elements);
}

TEST(Components, DynamicArrays) {
    struct {
        uint8 n;
        uint8 *elem;
    } array;
    Owned owned;
    auto ask = [&](ASNTSTG *asntstg) {
        ask_BegComp("A", TCS_HEADER, TYP_SEQOF);
        dynArrInit(&array);
        uint32 n1 = 0;
        a_UpperBound((AsnAllocType **)&array.elem, 1000, sizeof(uint8));
        while (ask_BegComp(NULL, TCS_MULTIPLE, TYP_INTEGER)) {
            a_uint8(&array.elem[n1], 0, 255);
            incDynArrLen(&array);
            n1++;
        }
        ask_EndComp();
    };
    std::string script = "{";
    for (int i = 0; i < 255; ++i)
        script += " " + std::to_string(i);
    EXPECT_EQ("ASN_OK", asked(script + "}", ask, owned));
    EXPECT_EQ(255, array.n);
    EXPECT_EQ(254, array.elem[254]);
    EXPECT_EQ("AM_FAIL", asked(script + " 1 }", ask, owned).substr(0, 7))
        << "the length counts to 255";
}

/* --- a person --- */

TEST(Dialogue, AsksAgainAfterAWrongAnswer) {
    Owned owned;
    Outer value = {};
    std::string questions;
    EXPECT_EQ("ASN_OK", asked(
                            "{\nx y z\n300 4\n7\n-\ninner: number: 2000\n20\n1\n2\n}\n{}\n}\n",
                            [&](ASNTSTG *g) { askOuter(g, &value); }, owned, &questions));
    EXPECT_EQ(7, value.id);
    EXPECT_EQ(20, value.inner.i1.number);
    EXPECT_EQ(2, value.few.n);
    EXPECT_EQ("Outer (SEQUENCE): Outer.id (INTEGER): INPUT_FAIL, please answer once more\n"
              "Outer.id (INTEGER): CONSTRAINT_FAIL, please answer once more\n"
              "Outer.id (INTEGER): Outer.more (INTEGER, optional): Outer.inner (CHOICE): "
              "CONSTRAINT_FAIL, please answer once more\n",
              questions.substr(0, questions.find("Outer.inner.number")));
    EXPECT_EQ("INPUT_FAIL 3 Outer.id",
              asked(
                  "{\nx\n", [&](ASNTSTG *g) { askOuter(g, &value); }, owned, &questions))
        << "the end is no answer";
}

TEST(Dialogue, TheRestStaysInTheStream) {
    std::FILE *in = std::tmpfile();
    std::fputs("{ id: 1 inner: flag: TRUE few: { } inners: { } }next", in);
    std::rewind(in);
    ASNTSTG *g = new ASNTSTG;
    Owned owned;
    Outer value = {};
    asnOpenTester(g, in, nullptr, &owned.memory);
    askOuter(g, &value);
    EXPECT_TRUE(asnCloseTester(g, nullptr));
    EXPECT_EQ('n', std::fgetc(in));
    uint8 number = 0;
    std::fputs("12(", (std::rewind(in), in));
    std::rewind(in);
    asnOpenTester(g, in, nullptr, nullptr);
    asnAskUint8(g, &number, 0, 255);
    EXPECT_TRUE(asnCloseTester(g, nullptr));
    EXPECT_EQ('(', std::fgetc(in));
    delete g;
    std::fclose(in);
}

/* --- hostile scripts --- */

/* Whatever a script says, the sanitizers are content, the end comes, and what was accepted prints
   as a text that is accepted again. */
TEST(Dialogue, AnyScript) {
    const std::string pieces[] = {"{",      "}",    "'",    "\"",      ":",
                                  "-",      "--",   "\n",   "\\",      "...:",
                                  "id:",    "0",    "9999", "few",     "'B",
                                  "'H",     "TRUE", "few:", "inner: ", "any:",
                                  "flag: ", ",",    " ",    "\x80",    std::string(1, '\0')};
    unsigned long long seed = 7;
    auto random = [&seed](std::size_t n) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<std::size_t>(seed >> 33) % n;
    };
    int accepted = 0;
    for (int i = 0; i < 4000; ++i) {
        std::string script = WHOLE;
        for (std::size_t change = random(4) + 1; change > 0; --change) {
            const std::size_t place = random(script.size() + 1);
            const std::string &piece = pieces[random(std::size(pieces))];
            if (random(2) == 0)
                script.insert(place, piece);
            else
                script.replace(place, random(6), piece);
        }
        Owned owned;
        Outer value = {};
        if (askAgain(script, &value, owned) != "ASN_OK")
            continue;
        ++accepted;
        const std::string text = printed([&](ASNTSTG *g) { priOuter(g, &value); });
        EXPECT_EQ("ASN_OK", askAgain(text, &value, owned)) << script;
        EXPECT_EQ(text, printed([&](ASNTSTG *g) { priOuter(g, &value); })) << script;
        EXPECT_LE(value.few.n, 3);
    }
    EXPECT_GT(accepted, 100);
}

} // namespace
