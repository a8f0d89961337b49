#include <gtest/gtest.h>

#include "tests/support/runtool.h"

namespace {

struct Shown {
    const char *name;
    const char *definition; /* behind the name */
    const char *line;       /* how it is shown; null: as it was written */
};

/* What velmo-show says of one definition, without the facts. */
const Shown shown[] = {
    {"Strings", R"( ::= IA5String ("a" | "bc" | ("d" EXCEPT "e")))", nullptr},
    {"Others", R"( ::= IA5String (ALL EXCEPT "no"))", nullptr},
    {"Included", R"( ::= IA5String (Word | "four"))", R"(IA5String (INCLUDES Far.Word | "four"))"},
    {"Nameless", " ::= IA5String (INCLUDES IA5String (SIZE (2)))", nullptr},
    {"Anything", " ::= IA5String (INCLUDES IA5String)", nullptr},
    {"Some", " ::= Wide (WITH COMPONENTS {..., one (1..5)})",
     "Far.Wide (WITH COMPONENTS {..., one (1..5)})"},
    {"Only", " ::= Rest (WITH COMPONENTS {a (2) PRESENT})", nullptr},
    {"Chosen", " ::= Pick (WITH COMPONENTS {..., y PRESENT})", nullptr},
    {"Unwanted", " ::= Pick (WITH COMPONENTS {..., x ABSENT})", nullptr},
    {"Alias", " ::= Wide", "Far.Wide"},
    {"Alias.two", "", "SEQUENCE {"},
    {"Rest.a", "", "INTEGER OPTIONAL"},
    {"Rest.any", "", "[1] ANY OPTIONAL"},
    {"Rest.open", "", "[2] TYPE-IDENTIFIER.&Type OPTIONAL"},
    {"ALIAS", " ::= KIND", nullptr},
    {"same", " KIND ::= first", nullptr},
    {"octets", " OCTET STRING ::= 'AB01'H", nullptr},
    {"quoted", R"( IA5String ::= "say ""it""")", nullptr},
    {"wide", " UniversalString ::= \"z\"", nullptr},
    {"time", " GeneralizedTime ::= \"20240101000000Z\"", nullptr},
    {"euro", " BMPString ::= { 0, 0, 32, 172 }", R"("<8364>")"},
    {"flags", " BIT STRING ::= '101'B", nullptr},
};

constexpr const char *far = R"(Far DEFINITIONS ::= BEGIN
Wide ::= SEQUENCE { one INTEGER, two SEQUENCE { three NULL } }
Word ::= IA5String (SIZE (1..3))
Small INTEGER ::= { 1 | 2 }
KIND ::= CLASS { &id INTEGER UNIQUE, &Type OPTIONAL, &Set INTEGER OPTIONAL, &next KIND OPTIONAL }
first KIND ::= { &id 1, &Type BOOLEAN, &Set Small }
END
)";
constexpr const char *near = R"(Rest ::= SEQUENCE { a INTEGER OPTIONAL, any [1] ANY OPTIONAL,
    open [2] TYPE-IDENTIFIER.&Type OPTIONAL, ... }
Pick ::= CHOICE { x NULL, y INTEGER, ... }
OWN ::= CLASS { &code INTEGER UNIQUE, &Any, &one &Any, &Some &Any }
mine KIND ::= { &id 2, &Set Small, &next first }
object TYPE-IDENTIFIER ::= { Wide IDENTIFIED BY { 1 2 3 } }
)";

/* The first line of each definition that was asked for. */
std::string headsOf(const std::string &text) {
    std::string heads, line;
    bool begins = true;
    for (std::istringstream lines(text); std::getline(lines, line); begins = line.empty())
        if (begins)
            heads += line + "\n";
    return heads;
}

TEST(Show, Notation) {
    const std::string program = velmoProgram + "-show";
    WorkDir dir;
    std::string text = "Near DEFINITIONS IMPLICIT TAGS ::= BEGIN\n"
                       "IMPORTS Wide, Word, Small, KIND, first FROM Far;\n";
    text += near;
    for (const Shown &row : shown)
        text += *row.definition == 0 ? "" : std::string(row.name) + row.definition + "\n";
    dir.write("far.asn", far);
    dir.write("near.asn", text + "END\n");
    ASSERT_EQ(0, runProgram(dir, asntreeProgram, {"far.asn", "near.asn"}).status);
    for (const Shown &row : shown) {
        const std::string definition = std::string(row.name) + row.definition;
        const std::string head = definition.substr(0, definition.find("::= ") + 4);
        const std::string expected = row.line == nullptr ? definition
                                     : *row.definition == 0
                                         ? std::string(row.name) + " ::= " + row.line
                                         : head + row.line;
        EXPECT_EQ(expected + "\n", headsOf(runProgram(dir, program, {"near", row.name}).out));
    }
    const std::string whole = runProgram(dir, program, {"near"}).out;
    for (const char *line :
         {"    -- imports from Far, module 2 in references, far.stx\n", "\n    &one &Any,\n",
          "\n    &Some &Any\n", "\n    &Set {1 | 2}\n", "\n    &id {1 2 3}\n    &Type Far.Wide\n",
          "\n    &next first\n", "which has no tree\n"})
        EXPECT_NE(std::string::npos, whole.find(line)) << line << whole;
}

} // namespace
