#include <gtest/gtest.h>

#include "tests/support/runtool.h"

/* Texts of many levels, or that come to many: each is taken, by the generator too, or ends with a
   message; the stack bears it with the frames of the sanitizers. */

namespace {

/* `open` and `close` go round `core` so many times; `said` is what becomes of many, null if they
   are taken. */
struct Nesting {
    const char *front, *open, *core, *close, *behind;
    const char *said;
};

constexpr const char *DEEP = "nested more than 250 levels deep";
constexpr const char *BRACES = "braces are nested too deeply";

const Nesting nestings[] = {
    {"A ::= ", "SEQUENCE { a ", "NULL", " }", "", DEEP},
    {"A ::= ", "CHOICE { a ", "NULL", " }", "", DEEP},
    {"A ::= ", "SET (SIZE (1)) OF ", "NULL", "", "", DEEP},
    {"A ::= ", "SEQUENCE { a INTEGER DEFAULT 1, b ", "NULL", " }", "", DEEP},
    {"A ::= ", "[1] ", "NULL", "", "", nullptr},
    {"A ::= ", "a < CHOICE { a ", "NULL", " }", "", DEEP},
    {"A ::= INTEGER (", "(", "1", ")", ")", DEEP},
    {"A ::= INTEGER ", "(1)", "", "", "", nullptr},
    {"A ::= INTEGER (", "1 | ", "1", "", ")", nullptr},
    {"A ::= INTEGER (", "ALL EXCEPT (", "1", ")", ")", DEEP},
    {"A ::= IA5String (", "SIZE (", "1", ")", ")", DEEP},
    {"A ::= IA5String (", "FROM (", "\"a\"", ")", ")", DEEP},
    {"A ::= OCTET STRING ", "(CONTAINING OCTET STRING ", "(SIZE (1))", ")", "", DEEP},
    {"B ::= SEQUENCE OF B\nA ::= B ", "(WITH COMPONENT ", "(SIZE (1))", ")", "", DEEP},
    {"B ::= SEQUENCE { a B OPTIONAL }\nA ::= B ", "(WITH COMPONENTS { a ", "", "})", "", DEEP},
    {"B ::= SEQUENCE OF B\na B ::= ", "{ ", "", " }", "", BRACES},
    {"B ::= SEQUENCE { a B OPTIONAL }\na B ::= ", "{ a ", "{}", " }", "", BRACES},
    {"B ::= CHOICE { a [0] B, b INTEGER }\na B ::= ", "a : ", "b : 1", "", "", DEEP},
    {"A ::= SEQUENCE { ..., ", "[[ ", "a NULL", " ]]", " }", "version brackets can't stand in"},
    {"B { T } ::= SEQUENCE OF T\nA ::= ", "B { ", "NULL", " }", "", BRACES},
    {"B { T } ::= SEQUENCE OF T\nA ::= B { ", "{ ", "NULL", " }", " }", BRACES},
    {"A { ", "{ ", "T", " }", " } ::= NULL", "a type expected"},
    {"", "/* ", "", " */", "A ::= NULL", nullptr},
    {"", "/* ", "", "", "A ::= NULL", "this comment has no end"},
    {"A ::= CLASS { &a NULL OPTIONAL } WITH SYNTAX { ", "[ A ", "&a", " ]", " }", DEEP},
    {"a TYPE-IDENTIFIER ::= ", "{ ", "NULL IDENTIFIED BY { 1 2 }", " }", "", BRACES},
    {"a TYPE-IDENTIFIER ::= { NULL IDENTIFIED BY { 1 2 } }\nA TYPE-IDENTIFIER ::= { ", "( ", "a",
     " )", " }", DEEP},
    {"B TYPE-IDENTIFIER ::= { ... }\nA ::= TYPE-IDENTIFIER.&Type (", "{ ", "B", " }", ")", BRACES},
    {"B ::= CLASS { &b B }\nA ::= B", ".&b", "", "", "", "`&b` holds objects"},
    {"A ", "MACRO ::= BEGIN ", "", "END ", "B ::= NULL", nullptr},
    {"T0 ::= NULL\nA ::= SEQUENCE { ", "a CHOICE { ", "b NULL", " }", " }", DEEP},
};

/* What comes to much by a few lines that repeat one another; `said` as above. */
struct Growth {
    const char *first,
        *next; /* of the definitions; "#" stands for a number, "@" for the last one */
    const char *said;
};

const Growth growths[] = {
    {"B { T } ::= SEQUENCE OF B { SET OF T }\nA ::= B { NULL }", "",
     "is instantiated without end"},
    {"B { INTEGER : n } ::= SEQUENCE { a B { {n} } OPTIONAL }\nA ::= B { 1 }", "",
     "is instantiated without end"},
    {"B { T } ::= SEQUENCE { a B { SET OF T } OPTIONAL, b B { SEQUENCE OF T } OPTIONAL }\nA ::= B "
     "{ NULL }",
     "", "more instances of one another than can be"},
    {"A0 { T } ::= SEQUENCE OF T\nA ::= A99 { NULL }",
     "A# { T } ::= SEQUENCE { a A@ { SET OF T }, b A@ { T } }",
     "more instances of one another than can be"},
    {"A0 ::= SEQUENCE { a NULL }", "A# ::= SEQUENCE { COMPONENTS OF A@, b# A@ }", nullptr},
    {"a0 IA5String ::= \"ab\"", "a# IA5String ::= { a@, a@ }", "more than 1000000 characters"},
    {"a0 RELATIVE-OID ::= { 1 2 }", "a# RELATIVE-OID ::= { a@ a@ }", "more than 10000 arcs"},
    {"A0 ::= CHOICE { a NULL, ... }", "A# ::= CHOICE { b# A@, c# A@ }", "need distinct tags"},
    {"A0 ::= SEQUENCE { a NULL }",
     "A# ::= SEQUENCE { ..., ..., a SEQUENCE { COMPONENTS OF A@ }, b [1] SEQUENCE { COMPONENTS OF "
     "A@ } }",
     "more types than a tree can hold"},
    {"A0 ::= SEQUENCE { a NULL }",
     "A# ::= SEQUENCE { a SEQUENCE { COMPONENTS OF A@ }, b [1] SEQUENCE { COMPONENTS OF A@ } }",
     nullptr},
    {"A0 ::= INTEGER", "A# ::= A@", nullptr},
};

std::string repeated(std::size_t times, const std::string &text) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string replaced(std::string text, char letter, std::size_t number) {
    for (std::size_t at; (at = text.find(letter)) != std::string::npos;)
        text.replace(at, 1, std::to_string(number));
    return text;
}

constexpr const char *ANYTHING = "";

/* Null in `said`: it is taken. */
void expectEnd(const std::string &definitions, const char *said) {
    WorkDir dir;
    dir.write("text.asn", "M DEFINITIONS ::= BEGIN\n" + definitions + "\nEND\n");
    const ProgramRun run = runProgram(dir, asntreeProgram, {"text.asn"});
    const std::string begin = definitions.substr(0, 200);
    EXPECT_TRUE(run.status == 0 ? said == nullptr || said == ANYTHING
                                : run.status == 2 && said != nullptr)
        << begin << "\n"
        << run.err.substr(0, 2000);
    EXPECT_NE(run.err.find(said == nullptr ? "" : said), std::string::npos)
        << begin << "\n"
        << run.err.substr(0, 2000);
    EXPECT_EQ(run.err.find("Sanitizer"), std::string::npos) << begin << "\n" << run.err;
    if (run.status != 0)
        return;
    const ProgramRun generation = runVelmo(dir, {"text"});
    EXPECT_LE(generation.status, 2) << begin << "\n" << generation.err;
    EXPECT_EQ(generation.err.find("Sanitizer"), std::string::npos) << begin << "\n"
                                                                   << generation.err;
}

TEST(Nesting, EndsWithAMessage) {
    for (const Nesting &n : nestings)
        for (std::size_t times : {80, 50'000})
            expectEnd(n.front + repeated(times, n.open) + n.core + repeated(times, n.close) +
                          n.behind,
                      times > 250 ? n.said : ANYTHING);
}

TEST(Nesting, GrowthEndsWithAMessage) {
    for (const Growth &g : growths) {
        std::string definitions = g.first;
        for (std::size_t i = 1; i < 100 && *g.next != 0; ++i)
            definitions += "\n" + replaced(replaced(g.next, '@', i - 1), '#', i);
        expectEnd(definitions, g.said);
    }
}

} // namespace
