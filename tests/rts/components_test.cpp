#include <gtest/gtest.h>

#include "tests/rts/testingcontext.h"

/* Components of asking functions, which are written as the generated ones are. What can be told by
   the name and path of an error stands with the values of the examples. */

namespace {

struct Outer {
    uint8 compmask;
    uint8 id;
    uint8 more;
    sint8 choice;
    struct {
        uint8 n;
        uint8 elem[3];
    } few;
};

void askOuter(ASNTSTG *asntstg, Outer *home) {
    ask_BegComp("Outer", TCS_HEADER, TYP_SEQ);
    home->compmask = 0;
    if (ask_BegComp("id", TCS_MANDATORY, TYP_INTEGER))
        a_uint8(&home->id, 0, 255);
    if (ask_BegComp("more", TCS_OPTIONAL, TYP_INTEGER)) {
        home->compmask |= BIT(1);
        a_uint8(&home->more, 0, 255);
    }
    if (ask_BegComp("inner", TCS_MANDATORY, TYP_CHOICE)) {
        home->choice = -1;
        if (ask_BegComp("empty", TCS_CHOICE, TYP_NULL)) {
            home->choice = 0;
            a_NullType();
        }
        ask_EndAnyChoiceComp();
    }
    /* The array has no test of its bound, as one whose type has none. */
    if (ask_BegComp("few", TCS_MANDATORY, TYP_SEQOF)) {
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
    ask_EndComp();
}

std::string askFrom(const std::string &script, Outer *value, std::string *questions = nullptr) {
    Owned owned;
    return asked(
        script, [&](ASNTSTG *g) { askOuter(g, value); }, owned, questions);
}

TEST(Components, TheErrorTellsNameLineAndPath) {
    const std::pair<const char *, const char *> cases[] = {
        {"", "INPUT_FAIL 1 Outer.id"},
        {"{\n\nid: 256", "CONSTRAINT_FAIL 3 Outer.id"},
        {"{ id: 1\n more: 2\n few: { } }", "MM_FAIL 3 Outer.inner"},
        {"{ id: 1 inner: empty: NULL\nfew: { 1 2\n3 4 } }", "AM_FAIL 3 Outer.few[3]"},
        {"-- a comment\r\n{id : 7,-- more\n-\tinner:empty:NULL{1,2} 3", "INPUT_FAIL 3 Outer"},
    };
    for (auto [script, result] : cases) {
        Outer value = {};
        EXPECT_EQ(result, askFrom(script, &value)) << script;
        EXPECT_LE(value.few.n, 3);
    }
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

/* --- a person --- */

TEST(Dialogue, AsksAgainAfterAWrongAnswer) {
    Outer value = {};
    std::string questions;
    EXPECT_EQ("ASN_OK", askFrom("{\nx y z\n300 4\n7\n-\ninner: empty: TRUE\nNULL\n1\n2\n}\n}\n",
                                &value, &questions));
    EXPECT_EQ(7, value.id);
    EXPECT_EQ(2, value.few.n);
    EXPECT_EQ("Outer (SEQUENCE): Outer.id (INTEGER): INPUT_FAIL, please answer once more\n"
              "Outer.id (INTEGER): CONSTRAINT_FAIL, please answer once more\n"
              "Outer.id (INTEGER): Outer.more (INTEGER, optional): Outer.inner (CHOICE): "
              "INPUT_FAIL, please answer once more\n",
              questions.substr(0, questions.find("Outer.inner.empty")));
    EXPECT_EQ("INPUT_FAIL 3 Outer.id", askFrom("{\nx\n", &value, &questions))
        << "the end is no answer";
}

TEST(Dialogue, TheRestStaysInTheStream) {
    std::FILE *in = std::tmpfile();
    std::fputs("12(", in);
    std::rewind(in);
    auto context = std::make_unique<ASNTSTG>();
    uint8 number = 0;
    asnOpenTester(context.get(), in, nullptr, nullptr);
    asnAskUint8(context.get(), &number, 0, 255);
    EXPECT_TRUE(asnCloseTester(context.get(), nullptr));
    EXPECT_EQ(12, number);
    EXPECT_EQ('(', std::fgetc(in));
    std::fclose(in);
}

} // namespace
