#include <gtest/gtest.h>

#include "tests/support/runtool.h"

namespace {

constexpr const char *definitions = R"(
Deep ::= SEQUENCE { a INTEGER OPTIONAL, b BOOLEAN OPTIONAL, text NumericString (SIZE (0..9)) OPTIONAL }
Far ::= SEQUENCE { deep Deep, list SEQUENCE OF INTEGER }
Open ::= SEQUENCE { a INTEGER, ... }
Texts ::= SEQUENCE { digits NumericString }
Pick ::= CHOICE { x INTEGER, far Far }
Grow ::= ENUMERATED { one, two, ... }
Skipped ::= IA5String --@ skip
KIND ::= CLASS { &id INTEGER UNIQUE, &deep Deep OPTIONAL, &far Far OPTIONAL, &open Open OPTIONAL,
    &texts Texts OPTIONAL, &pick Pick OPTIONAL, &grow Grow OPTIONAL, &Grows Grow OPTIONAL,
    &digits NumericString (SIZE (0..9)) OPTIONAL, &code NumericString OPTIONAL, &Type, &var &Type OPTIONAL,
    &Vars &Type OPTIONAL, &Picks Pick OPTIONAL }
HIDDEN ::= CLASS { &id INTEGER UNIQUE } --@ skip
USER ::= CLASS { &id INTEGER UNIQUE, &other HIDDEN OPTIONAL, &Others HIDDEN OPTIONAL, &Texts Skipped OPTIONAL }
one KIND ::= { &id 1, &deep { a 1, b TRUE, text "12" }, &far { deep {}, list { 1 } }, &open { a 1 },
    &texts { digits "1" }, &pick far : { deep {}, list {} }, &grow two, &digits "123", &code "45",
    &Type INTEGER, &var 5, &Vars { 1 | 2 }, &Picks { x : 1 | far : { deep {}, list {} } } }
two KIND ::= { &id 2, &Type NULL }
hidden HIDDEN ::= { &id 1 }
user USER ::= { &id 1, &other hidden, &Others { hidden }, &Texts { "a" | "b" } }
low WIDE ::= { &id 1, &f0 1, &f32 4, &f33 5 }
high WIDE ::= { &id 2, &f32 5 }
none WIDE ::= { &id 3 }
)";

/* What a row holds, and what the run says that it can't. */
const std::pair<const char *, std::vector<const char *>> generated[] = {
    {"rows.tab",
     {
         "static Pick rowsValueSet0 [] = {\n  { 0, { .x = 1 } },\n"
         "  { 0 } /* Complex choice: NOT YET IMPLEMENTED!! */\n};",
         "    1,\n    {\n      BIT(0)|BIT(1)|BIT(2),\n      1,\n      TRUE,\n      { 2, \"12\" }\n "
         "   },\n"
         "    { 0 } /* Complex sequence: NOT YET IMPLEMENTED!! */,\n"
         "    { 0 } /* Complex sequence: NOT YET IMPLEMENTED!! */,\n"
         "    { 0 } /* Complex sequence: NOT YET IMPLEMENTED!! */,\n"
         "    { 0 } /* Complex choice: NOT YET IMPLEMENTED!! */,\n    { FALSE, 1 },\n",
         "    { 3, \"123\" },\n    { 2, (BYTE_TYPE *)\"45\" },\n",
         "    0 /* var NOT SUPPORTED */,\n    0 /* Vars NOT SUPPORTED */,\n    rowsValueSet0\n",
         "    2,\n    { 0 },\n    { 0 },\n    { 0 },\n    { 0 },\n    { 0 },\n    { 0 },\n",
         "    { BITL(1), BITL(1) | BITL(2) },\n    1,\n    1,\n    0,\n",
         "    { 0L, BITL(1) },\n    2,\n    0,\n",
         "    { 0L },\n    3,\n    0,\n",
         "    0 /* other GOVERNOR SKIPPED */,\n    0 /* Others GOVERNOR SKIPPED */,\n"
         "    0 /* Texts GOVERNOR SKIPPED */\n",
     }},
    {"rows.typ",
     {
         "  SKIPPED var; /* NOT SUPPORTED */\n  SKIPPED Vars; /* NOT SUPPORTED */\n",
         "  sint32 compmask [2];\n  sint64 id;\n  sint64 f0;\n",
         "  SKIPPED other; /* GOVERNOR SKIPPED */\n  SKIPPED Others; /* GOVERNOR SKIPPED */\n"
         "  SKIPPED Texts; /* GOVERNOR SKIPPED */\n",
     }},
};

TEST(ObjectRows, HoldWhatAConstantCan) {
    WorkDir dir;
    std::string wide = "WIDE ::= CLASS { &id INTEGER UNIQUE";
    for (int i = 0; i < 35; ++i)
        wide += ", &f" + std::to_string(i) + " INTEGER OPTIONAL";
    dir.write("rows.asn", std::string("Rows DEFINITIONS IMPLICIT TAGS ::= BEGIN\n") + wide + " }" +
                              definitions + "END\n");
    ASSERT_EQ(0, runProgram(dir, asntreeProgram, {"-TAB=yes", "-TABO=yes", "rows.asn"}).status);
    ASSERT_EQ(0, runVelmo(dir, {"rows"}).status);
    for (const auto &[file, parts] : generated)
        for (const char *part : parts)
            EXPECT_NE(std::string::npos, dir.read(file).find(part)) << part << dir.read(file);
    const ProgramRun compiled = runProgram(dir, "gcc",
                                           {"-std=c99", "-Wall", "-Wextra", "-fsyntax-only", "-I.",
                                            "-I" + sourceDir + "/rts", "-xc", "rows.tab"});
    EXPECT_EQ(0, compiled.status) << compiled.err;
}

} // namespace
