#include <algorithm>

#include <gtest/gtest.h>

#include "tests/asntree/compiled.h"

/* Mistakes with the line of their message; what isn't named there is accepted. */

namespace {

struct Case {
    const char *text; /* of a module, or of several; one body has its header in front */
    const char *errors;
};

void expectErrors(const std::vector<Case> &cases) {
    for (const Case &one : cases) {
        const std::string text = one.text;
        const bool whole = text.find("DEFINITIONS") != text.npos;
        const std::string head = "M DEFINITIONS AUTOMATIC TAGS ::= BEGIN ";
        EXPECT_EQ(compileText(whole ? text : head + text + "\nEND\n").errors, one.errors) << text;
    }
}

const std::vector<Case> values = {
    {R"(
C ::= CLASS { &id INTEGER UNIQUE, &Type OPTIONAL }
o C ::= { &id 5 }
a INTEGER ::= o
b CHARACTER STRING ::= "abc"
c CHARACTER STRING ::= { identification fixed : NULL, string-value 'AB'H }
d CHARACTER STRING ::= 5
e BOOLEAN ::= o.&id
f INTEGER ::= o.&Type
g IA5String ::= { }
h IA5String ::= { 5 }
i OID-IRI ::= 5
j TIME-OF-DAY ::= "25:00:00"
k TIME (SETTINGS "Year=L5x") ::= "2024"
l TIME (SETTINGS "Date=YMD Year=L5") ::= "+12024-01-01"
m GeneralizedTime ::= "202402291200+1x"
n GeneralizedTime ::= "202402291260"
p GeneralizedTime ::= "20240229120061"
q GeneralizedTime ::= "20240229120059."
r GeneralizedTime ::= "20240229120059x"
s UTCTime ::= "9912312359x"
t UTCTime ::= "991231235961Z"
u UTCTime ::= "9912312359"
v ANY ::= C.&Type : NULL : NULL
w C.&Type ::= 5
x REAL ::= { mantissa sa, base 2, exponent 5 }
sa SEQUENCE { a INTEGER, b INTEGER, c INTEGER, d INTEGER, e INTEGER } ::= { a 1 }
Named ::= SEQUENCE OF x INTEGER
y Named ::= { x 5, x 6 }
z Named ::= { 5 }
aa Named ::= { y 5 }
P {C:obj} ::= SEQUENCE { a INTEGER DEFAULT obj }
Q ::= P{o})",
     R"(4: `o` is an object, not a value
7: a value of CHARACTER STRING is its components in braces, not a number
8: the value is of type INTEGER, but one of BOOLEAN is needed
9: the object does not set `&Type`
10: a value of IA5String is a text in quotation marks, not something in braces
11: a character of IA5String is written as {column, row}, or in quotation marks
12: a value of OID-IRI is a text in quotation marks, not a number
13: a value of TIME-OF-DAY is written as "hh:mm:ss", with numbers that times have
14: SETTINGS holds properties of times, as "Basic=Date Date=YMD"
16: a value of GeneralizedTime is written as "YYYYMMDDhhmmss.fZ", with numbers that times have
17: a value of GeneralizedTime is written as "YYYYMMDDhhmmss.fZ", with numbers that times have
18: a value of GeneralizedTime is written as "YYYYMMDDhhmmss.fZ", with numbers that times have
19: a value of GeneralizedTime is written as "YYYYMMDDhhmmss.fZ", with numbers that times have
20: a value of GeneralizedTime is written as "YYYYMMDDhhmmss.fZ", with numbers that times have
21: a value of UTCTime is written as "YYMMDDhhmmssZ", with numbers that times have
22: a value of UTCTime is written as "YYMMDDhhmmssZ", with numbers that times have
23: a value of UTCTime is written as "YYMMDDhhmmssZ", with numbers that times have
25: warning: a value of an open type is written with its type: `Type : value`
27: the components `b`, `c`, `d` and others, which are not OPTIONAL, are missing in the value of SEQUENCE
30: each element of `Named` has the name `x` in front
31: the elements of `Named` are called `x`, not `y`
32: `obj` is an object, not a value
)"},
    {R"(
A ::= BIT STRING { first(0), second(1) }
a A ::= { frist }
b A ::= { 5 }
c A ::= { first second }
d OBJECT IDENTIFIER ::= { iso C 5 }
e OBJECT IDENTIFIER ::= { 1 3 x(s) }
f OBJECT IDENTIFIER ::= { 1 3, 5 }
g OBJECT IDENTIFIER ::= { 1 3 M.five }
five INTEGER ::= 5
s BOOLEAN ::= TRUE
S ::= SEQUENCE { a INTEGER, b BOOLEAN, c NULL OPTIONAL }
h S ::= { a 5, c NULL, b TRUE }
i S ::= { 5, b TRUE })",
     R"(3: `frist` is no named bit of `A`
4: an identifier expected, found "5"
5: "," or "}" expected, found "second"
6: an arc of an object identifier expected, found "C"
7: the value is of type BOOLEAN, but one of INTEGER is needed
8: an arc of an object identifier expected, found ","
13: the component `b` is out of order: values of a SEQUENCE have its order
14: warning: the value of the component `a` stands without its name
)"},
};

TEST(AsntreeMessages, Values) {
    expectErrors(values);
}

const std::vector<Case> valuesOfChosenTypes = {
    {R"(
D ::= CLASS { &Type, &id INTEGER, &obj D OPTIONAL, &v &obj.&Type OPTIONAL }
a D ::= { &Type BOOLEAN, &id 5 }
b D ::= { &Type NULL, &obj a, &v TRUE, &id 5 }
c D ::= { &Type NULL, &obj a, &v NULL, &id 5 }
d ANY ::= a.&Type : TRUE
e ANY ::= a.&Type : 5
f ANY ::= name < Ch : 5
g D.&id ::= "x"
Ch ::= CHOICE { name INTEGER, s SEQUENCE { a INTEGER, b INTEGER } }
h Ch ::= { name 5 }
i Ch ::= { s { a 5, b 6 } }
j Ch ::= { name 5, s {a 1, b 2} }
k Ch ::= { 5 }
l SEQUENCE { name < Ch, D.&Type, BOOLEAN } ::= { name 5, type BOOLEAN : TRUE, boolean TRUE }
m SEQUENCE { a ANY } ::= { a INTEGER : 5 }
n SEQUENCE { a INTEGER } ::= m
E ::= ENUMERATED { x, y }
P {E:v} ::= SEQUENCE { a E DEFAULT v }
Q ::= P{y}
R ::= P{z})",
     R"(5: a value of BOOLEAN is TRUE or FALSE, not NULL
7: a value of `a.&Type` is TRUE or FALSE, not a number
9: a value of `D.&id` is a whole number, not a character string
11: warning: the value of a CHOICE is written as `alternative : value`
12: warning: the value of a CHOICE is written as `alternative : value`
13: a value of `Ch` is `alternative : value`, not something in braces
14: a value of `Ch` is `alternative : value`, not something in braces
15: warning: a component without an identifier
15: warning: a component without an identifier
15: warning: a component without an identifier
17: the value is of type SEQUENCE, but one of SEQUENCE is needed
21: `z` is no item of `E`
)"},
};

TEST(AsntreeMessages, ValuesOfChosenTypes) {
    expectErrors(valuesOfChosenTypes);
}

const std::vector<Case> oneForOneMistake = {
    {R"(
A ::= INTEGER (1 | 3 | 5 | 7 | 9 | 11 | 13 | 15 | 17 | 19)
B ::= A (20)
C ::= INTEGER (5..1)
a C ::= 3
D ::= C (0..3)
G ::= SEQUENCE { a INTEGER (0..5), b INTEGER (0..5), c SEQUENCE { d SEQUENCE OF S } OPTIONAL,
                 e CHOICE { f INTEGER (1) } OPTIONAL }
H ::= SEQUENCE { a INTEGER, b INTEGER, c SEQUENCE { d SEQUENCE OF INTEGER } OPTIONAL,
                 e CHOICE { f INTEGER } OPTIONAL }
S ::= INTEGER (0..3)
b H ::= { a 9, b 9 }
c G ::= b
d H ::= { a 5, b 5, c {d {3, 4}} }
e G ::= d
f H ::= { a 5, b 5, e f:5 }
g G ::= f
h H ::= { a 5, b 5, c {d {3}}, e f:1 }
i G ::= h
j IA5String ::= k
k IA5String ::= "x"
l ANY ::= TRUE
K ::= CLASS { &Type, &v &Type.Foo }
L ::= "ééééééééééééééééééééé"
CL ::= CLASS { &id INTEGER }
m CL ::= { &id 5 }
n OBJECT IDENTIFIER ::= { iso m 5 }
P ::= SEQUENCE { a [1] CHOICE { x [0] NULL, ... } OPTIONAL, b Q OPTIONAL, ... }
Q ::= [APPLICATION 1] CHOICE { x [0] NULL, ... })",
     "3: the value 20 reaches outside the parent, which allows 1 | 3 | 5 | 7 | 9 | 11 | 13 | 15 "
     "| ...\n4: the range is reversed: its lower end 5 is greater than its upper end 1\n"
     "13: the value 9 doesn't fit INTEGER, which allows 0..5\n"
     "15: the value 4 doesn't fit `S`, which allows 0..3\n"
     "17: the value 5 doesn't fit INTEGER, which allows 1\n"
     "22: warning: a value of an open type is written with its type: `Type : value`\n"
     "23: a field (\"&name\") expected, found \"Foo\"\n"
     "24: a type expected, found \"ééééééééééééééééééé...\n"
     "27: the arc `m` needs its number behind it in parentheses: it is neither a name that is "
     "known here nor a value\n"},
    {R"(
M { iso foo(bar) 5 } DEFINITIONS ::= BEGIN
A ::= SEQUENCE { a CHOICE { x [0] NULL, ... } OPTIONAL, ... } END
N { 1 3 99999999999 } DEFINITIONS ::= BEGIN B ::= NULL END)",
     R"(2: warning: the identifier of module `M` is passed over: it has an arc without a number
3: warning: an addition that isn't known could belong here as well as to the structure around it
4: warning: the identifier of the module is left out: a tree can't hold arcs of more than 32 bits
)"},
};

TEST(AsntreeMessages, OneForOneMistake) {
    expectErrors(oneForOneMistake);
    std::string many;
    for (int i = 0; i < 5100; ++i)
        many += "\nv" + std::to_string(i) +
                " ANY ::= " + (i % 50 == 0 ? "T" + std::to_string(i) + ":" : "") + "5";
    const std::string errors = compileText("M DEFINITIONS ::= BEGIN" + many + "\nEND").errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 250) << errors.substr(0, 1000);
}

const std::vector<Case> typesOfReferredValues = {
    {R"(
E1 ::= ENUMERATED { a, b }
E2 ::= ENUMERATED { b(1), a(0) }
E3 ::= ENUMERATED { a(1), b(0) }
E4 ::= ENUMERATED { a, c }
e1 E1 ::= a
e2 E2 ::= e1
e3 E3 ::= e1
e4 E4 ::= e1
S1 ::= SEQUENCE { a INTEGER, b SEQUENCE OF BOOLEAN }
S2 ::= SEQUENCE { a INTEGER (0..5), b [7] SEQUENCE OF BOOLEAN }
S3 ::= SEQUENCE { a INTEGER, c SEQUENCE OF BOOLEAN }
S4 ::= SEQUENCE { a INTEGER, b SEQUENCE OF NULL }
S5 ::= SEQUENCE { a INTEGER }
s1 S1 ::= { a 5, b {TRUE} }
s2 S2 ::= s1
s3 S3 ::= s1
s4 S4 ::= s1
s5 S5 ::= s1
C ::= CLASS { &Type }
O ::= SEQUENCE { a C.&Type }
o1 O ::= { a BOOLEAN:TRUE }
o2 O ::= o1
o3 C.&Type ::= S5:s1)",
     R"(8: the value is of type `E1`, but one of `E3` is needed
9: the value is of type `E1`, but one of `E4` is needed
17: the value is of type `S1`, but one of `S3` is needed
18: the value is of type `S1`, but one of `S4` is needed
19: the value is of type `S1`, but one of `S5` is needed
24: the value is of type `S1`, but one of `S5` is needed
)"},
};

TEST(AsntreeMessages, TypesOfReferredValues) {
    expectErrors(typesOfReferredValues);
}

const std::vector<Case> references = {
    {R"(
M DEFINITIONS ::= BEGIN IMPORTS Foobar, Far FROM N;
A ::= Foobat
B ::= N.Hidden
c N.Foobar ::= TRUE
D ::= N.Nothing
E ::= N.Foobar
F ::= Far END
N DEFINITIONS ::= BEGIN EXPORTS Foobar, Far; IMPORTS Far FROM O;
Foobar ::= NULL Hidden ::= NULL END
O {1 2 3 4} DEFINITIONS ::= BEGIN Far ::= REAL END
P DEFINITIONS ::= BEGIN IMPORTS Far FROM O {1 2 3} WITH DESCENDANTS; W ::= Far END
Q DEFINITIONS ::= BEGIN IMPORTS Far FROM O {1 2 3 2} WITH SUCCESSORS; W ::= Far END
R DEFINITIONS ::= BEGIN IMPORTS Far FROM O {1 2 3 5} WITH SUCCESSORS; W ::= Far END)",
     R"(3: `Foobat` is not defined
4: module `N` does not export `Hidden`
5: a value of `N.Foobar` is NULL, not TRUE
6: `Nothing` is not defined in module `N`
14: warning: module `O` is imported by the identifier 1.2.3.5, the one at hand has 1.2.3.4
)"},
    {R"(
C ::= CLASS { &id INTEGER UNIQUE, &Type OPTIONAL }
D ::= C
o C ::= { &id 5 }
P1 {C:Set} ::= SEQUENCE { a Set }
U1 ::= P1{{o}}
P2 {Class} ::= SEQUENCE { a Class }
U2 ::= P2{C}
U3 ::= SEQUENCE { a D }
P4 {C:obj} ::= SEQUENCE { b INTEGER (obj.&id) }
U4 ::= P4{nobody}
T1 ::= C.&Type ({Os}{@i})
T2 ::= SEQUENCE { i Id ({Os}), x INTEGER, t C.&Type ({Os}{@i}), u C.&Type ({Os}{@x}),
                  v C.&Type ({Os}{@y}) }
Id ::= C.&id
Os C ::= { o }
T3 ::= SEQUENCE { i C.&id ({Other.o}), j C.&id ({o | nobody}), k C.&id ({o | M.o}),
                  l C.&id ({o | {&id 5, &Type NULL}}) })",
     R"(5: `Set` is an object set, not a type
7: `Class` is a class, not a type
9: `D` is a class, not a type
11: `nobody` is not defined
12: warning: the path leads nowhere: no structure stands around it
13: warning: `x` is no field of the class whose objects the table holds, so it can't choose among them
14: `y` is no component where the path leads
17: module `Other` is not among the files
17: `nobody` is not defined
18: two objects of the set have the same value in the UNIQUE field `&id`
)"},
};

TEST(AsntreeMessages, References) {
    expectErrors(references);
}

const std::vector<Case> classesAndObjects = {
    {R"(
C1 ::= CLASS { &id INTEGER, &Type OPTIONAL, &x BOOLEAN OPTIONAL }
       WITH SYNTAX { [&Type] [[&x]] ID &id }
a C1 ::= { ID 5 }
b C1 ::= { NULL ID 5 }
c C1 ::= { TRUE ID 5 }
d C1 ::= { NULL TRUE ID 5 }
e C1 ::= { Foo ID 5 }
Foo ::= NULL
C2 ::= CLASS { &id INTEGER OPTIONAL, &Type OPTIONAL, &Obj C1 OPTIONAL }
       WITH SYNTAX { [[&Type] [OBJ &Obj]] [ID &id] STOP }
f C2 ::= { ID 5 STOP }
g C2 ::= { OBJ {a} ID 5 STOP }
h C2 ::= { STOP }
i C2 ::= { REAL ID 5 }
j C2 ::= { REAL REAL STOP }
C3 ::= CLASS { &id INTEGER, &b INTEGER OPTIONAL }
k C3 ::= { &id 5, }
l C3 ::= { &id 5 &b 6 }
m C3 ::= { &idd 5, &b {6, 7}, &id 3 }
C4 ::= CLASS { &v &5 }
C5 ::= CLASS { &s IA5String UNIQUE, &id SEQUENCE { a INTEGER, b BOOLEAN } UNIQUE }
n C5 ::= { &s "a", &id {a 1, b TRUE} }
o C5 ::= { &s "b", &id {a 1, b TRUE} }
p C5 ::= { &s "a", &id {a 2, b TRUE} }
S1 C5 ::= { n | o }
S2 C5 ::= { n | p }
S3 C5 ::= { o | p }
C6 ::= CLASS { &s IA5String } WITH SYNTAX { DATE &s })",
     R"(15: "STOP" expected, found "}"
16: "OBJ", "ID" or "STOP" expected, found "REAL"
18: warning: a comma too many at the end of a list
19: "," or "}" expected, found "&b"
20: the class has no field `&idd`
20: a value of INTEGER is a whole number, not something in braces
21: the name of a field must follow "&" at once
26: two objects of the set have the same value in the UNIQUE field `&id`
27: two objects of the set have the same value in the UNIQUE field `&s`
29: warning: "DATE" can't be a word of WITH SYNTAX
)"},
};

TEST(AsntreeMessages, ClassesAndObjects) {
    expectErrors(classesAndObjects);
}

const std::vector<Case> constraints = {
    {R"(
A ::= EMBEDDED PDV (WITH COMPONENTS {..., data-valu ABSENT})
B ::= CHARACTER STRING (WITH COMPONENTS {..., string-value PRESENT})
C ::= INSTANCE OF TYPE-IDENTIFIER (WITH COMPONENTS {type-id, value})
D ::= S (WITH COMPONENTS {a (1..5), })
E ::= S (WITH COMPONENTS 5)
F ::= REAL (5..<5)
G ::= TIME (SETTINGS 5)
H ::= INTEGER (INTEGER:5)
S ::= SEQUENCE { a INTEGER })",
     R"(2: EMBEDDED PDV has no component `data-valu`
5: warning: a comma too many at the end of a list
6: "{" expected, found "5"
7: the range is empty: nothing lies between its ends
8: a character string expected, found "5"
9: a value of INTEGER is a whole number, not `Type : value`
)"},
    {"I ::= INTEGER (MIN)", "1: INTEGER has no bound that MIN could stand for\n"},
};

TEST(AsntreeMessages, Constraints) {
    expectErrors(constraints);
}

} // namespace
