#include <gtest/gtest.h>

#include "tests/asntree/compiled.h"

/* Which values fit a constraint: each row has a type, values that fit it and values that don't. */

namespace {

struct Row {
    const char *type;
    std::vector<const char *> good;
    std::vector<const char *> bad;
};

const char *const head =
    "M DEFINITIONS AUTOMATIC TAGS ::= BEGIN "
    "R ::= REAL (0..1) "
    "N ::= INTEGER { five(5) } "
    "B ::= BIT STRING { first(0), second(1) } "
    "L ::= SEQUENCE OF INTEGER SI ::= SET OF INTEGER LR ::= SEQUENCE OF REAL SC ::= SET OF C "
    "S ::= SEQUENCE { a INTEGER, b BOOLEAN OPTIONAL, c NULL OPTIONAL } "
    "C ::= CHOICE { a INTEGER, b BOOLEAN } ";

const Row rows[] = {
    {"REAL (0..1)", {"0.5", "{1, 2, -1}", "1", "0"}, {"{1, 2, 1}", "1.5", "-1", "PLUS-INFINITY"}},
    {"REAL (0<..<1)", {"0.5"}, {"0", "1", "NOT-A-NUMBER"}},
    {"REAL (0..MAX)", {"5", "PLUS-INFINITY"}, {"-1", "MINUS-INFINITY", "NOT-A-NUMBER"}},
    {"REAL (MIN..0)", {"-5", "MINUS-INFINITY"}, {"1", "PLUS-INFINITY"}},
    {"REAL (MIN..MAX)", {"0", "MINUS-INFINITY"}, {}},
    {"REAL (0.5 | NOT-A-NUMBER)", {"{1, 2, -1}", "NOT-A-NUMBER"}, {"0.25", "PLUS-INFINITY"}},
    {"REAL (0..1 | 5..6)", {"0", "6"}, {"3"}},
    {"REAL (0..5 ^ 3..6)", {"3", "5"}, {"2", "6"}},
    {"REAL (0..9 EXCEPT 5)", {"4"}, {"5", "10"}},
    {"REAL (ALL EXCEPT (2..3))", {"1", "4"}, {"2", "2.5"}},
    {"REAL (R)", {"0.5"}, {"2"}},
    {"REAL (INCLUDES R ^ 0.5)", {"0.5"}, {"0", "2"}},
    {"REAL (0..1, ...)", {"0.5", "2"}, {}},
    {"REAL (WITH COMPONENTS {..., base (10)})", {"{1, 10, 2}"}, {}},
    {"BOOLEAN (TRUE)", {"TRUE"}, {"FALSE"}},
    {"NULL (NULL)", {"NULL"}, {}},
    {"OCTET STRING ('AB'H | '00'H)", {"'AB'H", "'10101011'B", "'0'H"}, {"'CD'H", "'ABAB'H"}},
    {"OCTET STRING (ALL EXCEPT 'AB'H)", {"'00000000'B", "'AC'H"}, {"'AB'H", "'10101011'B"}},
    {"BIT STRING ('10'B | ''B)", {"'10'B", "''B"}, {"'1'B", "'01'B", "'8'H"}},
    {"B ({first})", {"{first}"}, {}},
    {"B ('10'B)", {"'10'B", "'1'B", "{first}"}, {}},
    {"B (SIZE (2))", {"{first}", "'1'B"}, {}},
    {"L ({1, 2} | {3})", {"{1, 2}", "{3}"}, {"{2, 1}", "{1}", "{}", "{1, 3}"}},
    {"SI ({1, 2})", {"{1, 2}", "{2, 1}"}, {"{1}", "{1, 2, 2}"}},
    {"S ({a 1, b TRUE})", {"{a 1, b TRUE}"}, {"{a 2, b TRUE}", "{a 1, b FALSE}"}},
    {"S ({a 1, b TRUE} | {a 1})", {"{a 1}"}, {}},
    {"C (a:1 | b:TRUE)", {"a:1", "b:TRUE"}, {"a:2", "b:FALSE"}},
    {"L (WITH COMPONENT (0..9))", {"{}", "{1, 9}"}, {"{1, 10}"}},
    {"LR (WITH COMPONENT (R))", {"{1, 0}"}, {"{1, 2}"}},
    {"SC (WITH COMPONENT (b:TRUE))", {"{b:TRUE}"}, {"{b:TRUE, a:1}"}},
    {"S (WITH COMPONENTS {..., a (1..5), b PRESENT})",
     {"{a 5, b TRUE}"},
     {"{a 5}", "{a 6, b TRUE}"}},
    {"S (WITH COMPONENTS {a, b ABSENT, c OPTIONAL})", {"{a 5}"}, {"{a 5, b TRUE}"}},
    {"S (WITH COMPONENTS {..., a (1..5, ...), b (TRUE)})", {"{a 9, b TRUE}"}, {"{a 9, b FALSE}"}},
    {"C (WITH COMPONENTS {..., b (TRUE)})", {"a:1", "b:TRUE"}, {"b:FALSE"}},
    {"N (1..9 EXCEPT five)", {"1", "9"}, {"five", "5", "10"}},
    {"OBJECT IDENTIFIER ({2 5 4} | {1 3})", {"{2 5 4}"}, {"{2 5 5}", "{2 5}"}},
    {"IA5String (\"ab\" | \"cd\")", {"\"cd\""}, {"\"ad\"", "\"c\""}},
    {"IA5String (FROM (\"a\"..\"c\") ^ SIZE (2))", {"\"ca\""}, {"\"ad\"", "\"c\""}},
};

TEST(AsntreeVerdicts, ValuesFitConstraints) {
    for (const Row &row : rows) {
        std::string text = head, expected;
        int line = 1;
        for (const char *value : row.good) {
            text += "v" + std::to_string(line++) + " " + row.type + " ::= " + value + "\n";
        }
        for (const char *value : row.bad) {
            text += "v" + std::to_string(line) + " " + row.type + " ::= " + value + "\n";
            expected += std::to_string(line++) + ": ";
        }
        std::string lines;
        std::istringstream messages(compileText(text + "END").errors);
        for (std::string message; std::getline(messages, message);)
            lines += message.substr(0, message.find(':') + 2);
        EXPECT_EQ(lines, expected) << text << messages.str();
    }
}

} // namespace
