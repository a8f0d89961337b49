#include <gtest/gtest.h>

#include "tests/asntree/compiled.h"

/* What stands in the trees of rare texts, as their listings tell it, and what is said of them. */

namespace {

struct Row {
    const char *text; /* of a module, or of several; one body has its header in front */
    std::vector<const char *> listed;
    const char *errors = "";
    std::vector<std::string> options = {};
};

void expectAll(const std::vector<Row> &rows) {
    for (const Row &row : rows) {
        const std::string text = row.text;
        const bool whole = text.find("DEFINITIONS") != text.npos;
        const std::string head = "M DEFINITIONS AUTOMATIC TAGS ::= BEGIN ", tail = "\nEND\n";
        const Compiled result = compileText(whole ? text : head + text + tail, row.options);
        EXPECT_EQ(result.errors, row.errors) << text;
        for (const char *wanted : row.listed)
            EXPECT_NE(result.listing.find(wanted), std::string::npos) << wanted << "\n"
                                                                      << text << result.listing;
    }
}

TEST(AsntreeTrees, InstancesThatHoldThemselves) {
    expectAll({
        {R"(
T {X} ::= SEQUENCE { a X, b T{X} OPTIONAL }
T-1 ::= NULL
U ::= SEQUENCE { t T{INTEGER}, c CHOICE { d T{BOOLEAN} } })",
         {"t T of parameterized T\n        T SEQUENCE",
          "\nT_2 ::= T of parameterized T  {recursive}  exported\n",
          "\nT_3 ::= T of parameterized T  {recursive}  exported\n",
          "a BOOLEAN  {bool}\n        b T_3 OPTIONAL  {recursive, pointer}\n"}},
        {R"(
V {X} ::= SEQUENCE { a X, b [7] V{X} (WITH COMPONENTS {..., b ABSENT}) OPTIONAL }
W ::= SEQUENCE OF V{REAL})",
         {"b [7] IMPLICIT V_1 (WITH COMPONENTS (b ABSENT)) OPTIONAL  {recursive, pointer}"}},
        {R"(
A {X} ::= B{X}
B {X} ::= SEQUENCE { v X, n A{X} OPTIONAL }
C ::= SEQUENCE { a A{INTEGER}, again A{INTEGER} }
D ::= A{BOOLEAN})",
         {"a A of parameterized A\n        A SEQUENCE", "n A_1 OPTIONAL\n",
          "again A of parameterized A", "n D OPTIONAL  {recursive, pointer}\n"}},
        {R"(
M DEFINITIONS ::= BEGIN T {X} ::= SEQUENCE { x X } U ::= T{INTEGER} END
N DEFINITIONS ::= BEGIN IMPORTS U FROM M; Q ::= SEQUENCE { q U, l SEQUENCE OF U } END)",
         {"    q U\n    l SEQUENCE OF  {list, 0..MAX}\n        * U\n"}},
        {"Self ::= SEQUENCE { s Self OPTIONAL }",
         {"s Self OPTIONAL  {recursive, pointer}"},
         "1: warning: `Self` contains itself (-RECURSION=)\n",
         {"-RECURSION=WARNING"}},
        {"Other ::= NULL Self ::= CHOICE { n NULL, s Self }",
         {},
         "1: `Self` contains itself (-RECURSION=)\n",
         {"-RECURSION=ERROR"}},
    });
}

const char *const chosen = R"(
C ::= CLASS { &id INTEGER UNIQUE, &Type, &obj C OPTIONAL, &Objs C OPTIONAL }
      WITH SYNTAX { &id &Type [OBJ &obj] [OBJS &Objs] }
o1 C ::= { 1 NULL }
o2 C ::= { 2 REAL OBJ o1 }
o3 C ::= { 3 REAL OBJ o2 OBJS {o1 | o2} }
o4 C ::= o3
All C ::= { o1 | o2 | o3 }
Same C ::= { All ^ (o1 | o3), ... }
But C ::= { All EXCEPT o1 }
Field C ::= { o3.&Objs }
Fields C ::= { All.&obj | o2 }
Sets C ::= { All.&Objs }
More C ::= { o2 | But, ... , o1 }
P {C:Par} ::= SEQUENCE { i C.&id ({Par}), t C.&Type ({Par}{@i}), n INTEGER (Par.&id) }
With {C:Par} C ::= { Par | o2 }
P1 ::= P{{But | o1}}
P2 ::= P{{With{{o1}}}}
Outer ::= SEQUENCE { COMPONENTS OF Inner, t C.&Type ({All}{@i}) }
Inner ::= SEQUENCE { i C.&id ({All}), x BOOLEAN }
Path ::= SEQUENCE { t C.&obj.&Type, i C.&obj.&id }
outer Outer ::= { i 1, x TRUE, t NULL : NULL }
o5 C ::= { 5 NULL OBJS {o1, ..., o2} })";

const std::vector<Row> classesAndObjects = {
    {chosen,
     {"\no4 C ::= o3  exported\n", "Same ::= set of C (o1 | o3 | ...)",
      "But ::= set of C (o2 | o3)", "Field ::= set of C (o1 | o2)", "Fields ::= set of C (o1 | o2)",
      "Sets ::= set of C (o1 | o2)", "More ::= set of C (o2 | INCLUDES But | ... | o1)",
      "n INTEGER (2 | 3 | 1)  {ui8, 1..3}", "n INTEGER (1 | 2)  {ui8, 1..2}",
      "COMPONENTS OF Inner\n    t C.&Type (component relation)", "t C.&obj.&Type\n    i INTEGER",
      "outer Outer ::= {i 1, x TRUE, t NULL}"}},
    {R"(
C ::= CLASS { &id INTEGER UNIQUE, &Set INTEGER DEFAULT {1 | 2}, &Objs C OPTIONAL, &Type OPTIONAL,
              &v &Type DEFAULT INTEGER:5, &Vals &Type OPTIONAL }
o C ::= {&id 1, &Set {3 | 4}}
D ::= CLASS { &Objs C DEFAULT {o}, &obj C DEFAULT o, &Set INTEGER DEFAULT {1 | 2, ...} }
d D ::= { &obj o }
E ::= CLASS { &id INTEGER (0..9) } WITH SYNTAX { &id }
EE ::= E
e EE ::= { 5 }
Es EE ::= { e })",
     {"&Set set of INTEGER DEFAULT INTEGER", "value &v variable C.&Type OPTIONAL",
      "&Vals set of variable C.&Type OPTIONAL", "&Objs set of C DEFAULT C\n    &obj C DEFAULT o\n",
      "note: only the values of the first version stand in the set",
      "\ne EE ::= {&id 5}  exported\nEs ::= set of EE (e)"}},
    {R"(
FIELDS {T} ::= CLASS { &v T, &id INTEGER UNIQUE, &Type }
p FIELDS{BOOLEAN} ::= { &v TRUE, &id 1, &Type NULL }
q FIELDS{BOOLEAN} ::= { &v FALSE, &id 2, &Type REAL }
Both FIELDS{BOOLEAN} ::= { p | q, ... }
S ::= SEQUENCE { i FIELDS{BOOLEAN}.&id ({Both}), v FIELDS{BOOLEAN}.&Type ({Both}{@i}) })",
     {"p FIELDS ::= {&v TRUE, &id 1, &Type NULL}", "Both ::= set of FIELDS (p | q | ...)",
      "v FIELDS.&Type (component relation)"}},
    {R"(
C ::= CLASS { &id INTEGER UNIQUE, &Set INTEGER OPTIONAL, &rel RELATIVE-OID OPTIONAL }
D ::= CLASS { &obj C, &Objs C }
a C ::= {&id 1, &Set {3 | 4}, &rel {5 6}}
b C ::= {&id 2}
Both C ::= {a | b}
d D ::= { &obj a, &Objs { a | b } }
I1 ::= INTEGER (Both.&id)
I2 ::= INTEGER (Both.&Set)
I3 ::= INTEGER (d.&obj.&id)
I4 ::= INTEGER (d.&Objs.&id | 9)
I5 INTEGER ::= { Both.&Set | 9 }
I6 INTEGER (0..20) ::= { 1 | 2 }
I7 ::= SEQUENCE { a I6 }
v1 INTEGER ::= d.&obj.&id
v2 RELATIVE-OID ::= a.&rel
v3 INTEGER ::= M.v1)",
     {"I1 ::= INTEGER (1 | 2)  {ui8, 1..2}", "I2 ::= INTEGER (3 | 4)  {ui8, 3..4}",
      "I3 ::= INTEGER (1)  {ui8, 1..1}", "I4 ::= INTEGER (1 | 2 | 9)  {ui8, 1..9}",
      "I5 ::= set of INTEGER (3 | 4 | 9)", "I6 ::= set of INTEGER ((1 | 2) ^ 0..20)", "    a I6\n",
      "v1 INTEGER ::= 1 ", "v2 OCTET STRING ::= '0506'H"}},
};

TEST(AsntreeTrees, ClassesAndObjects) {
    expectAll(classesAndObjects);
}

TEST(AsntreeTrees, Constraints) {
    expectAll({
        {R"(
A ::= IA5String ("a" | "b" | "c" EXCEPT "b")
B ::= IA5String (ALL EXCEPT "b")
C ::= OCTET STRING (SIZE (1) | SIZE (5))
D ::= OCTET STRING (SIZE (1..10) ^ SIZE (5..20))
E ::= OCTET STRING (SIZE (1..10) EXCEPT SIZE (5))
F ::= OCTET STRING (ALL EXCEPT SIZE (5))
G ::= REAL (0..10 EXCEPT 5)
H ::= BIT STRING { a(0) } (SIZE (5))
J ::= INTEGER (0..10) (MIN | MAX)
K ::= INTEGER (c < Ch)
Ch ::= CHOICE { c INTEGER (1..4) }
L ::= IA5String (SIZE (1..9)) (FROM ("a".."z")) (SIZE (3))
T ::= UTCTime (FROM ("0".."9")))",
         {"A ::= IA5String (\"a\" | \"b\" | (\"c\" EXCEPT \"b\"))",
          "B ::= IA5String (ALL EXCEPT (\"b\"))",
          "C ::= OCTET STRING (SIZE (1 | 5))  {stas8/ui8, 1..5}",
          "D ::= OCTET STRING (SIZE (1..10 ^ 5..20))  {stas8/ui8, 5..10}",
          "E ::= OCTET STRING (SIZE ((1..4 | 6..10) ^ 1..10))  {stas8/ui8, 1..10}",
          "F ::= OCTET STRING (SIZE ((0..4 | 6..MAX) ^ 0..MAX))",
          "10, exponent 0} EXCEPT {mantissa 5", "H ::= BIT STRING (SIZE (0..5))",
          "T ::= UTCTime  {comt}", "J ::= INTEGER (0..10 ^ (0 | 10))  {ui8, 0..10}",
          "K ::= INTEGER (INCLUDES ", "{ui8, 1..4}"}},
        {R"(
I ::= INTEGER (1..5, ..., 7)
S ::= SEQUENCE { a INTEGER (0..10, ...), s IA5String (SIZE (1..3, ..., 9)) })",
         {"I ::= INTEGER (1..5 | 7)  {ui8, 1..7, extensible}",
          "a INTEGER (0..10)  {ui8, 0..10, extensible}",
          "s IA5String (SIZE (1..3 | 9))  {stas8/ui8, 1..9, extensible}"},
         "",
         {"-EXT-CONSTRAINTS=MARK"}},
        {R"(
P {INTEGER:Set} ::= SEQUENCE { s Set, t INTEGER (Set | 9) }
P1 ::= P{{1 | 2}})",
         {"s INTEGER (1 | 2)  {ui8, 1..2}", "| 9)  {ui8, 1..9}"}},
    });
}

TEST(AsntreeTrees, Values) {
    std::string items = "E ::= ENUMERATED { i0(0)";
    for (int i = 1; i <= 40; ++i)
        items += ", i" + std::to_string(i) + "(" + std::to_string(i) + ")";
    items += " } e E ::= i39 f E ::= i2 L ::= SEQUENCE OF E l L ::= { i40, i0 }";
    expectAll({
        {items.c_str(), {"\ne E ::= i39  exported\nf E ::= i2  exported\n", "l L ::= {i40, i0}"}},
        {R"(
Big ::= INTEGER (0..115792089237316195423570985008687907853269984665640564039457584007913129639936)
a Big ::= 115792089237316195423570985008687907853269984665640564039457584007913129639936
b Big ::= 200
Neg ::= INTEGER (-99999999999999999999999..5)
c Neg ::= -256
d Neg ::= -129
e Neg ::= 5
f RELATIVE-OID ::= { 5 300 99999 })",
         {"Big ::= [UNIVERSAL 2] IMPLICIT OCTET STRING",
          "a Big ::= '010000000000000000000000000000000000000000000000000000000000000000'H",
          "b Big ::= '00C8'H", "c Neg ::= 'FF00'H", "d Neg ::= 'FF7F'H", "e Neg ::= '05'H",
          "f OCTET STRING ::= '05822C868D1F'H"}},
        {"a UTF8String ::= \"\u00E9\u20AC\U0001F600\" b UTF8String ::= \"\xC0\x80\xED\xA0\x80\""
         " c IA5String ::= \"a\u00A0\n  b\"",
         {"a OCTET STRING ::= 'C3A9E282ACF09F9880'H", "b OCTET STRING ::= 'C380C280C3ADC2A0C280'H",
          "c IA5String ::= \"ab\""}},
        {R"(
a REAL ::= NOT-A-NUMBER
b REAL ::= { 99999999999999999999, 10, 3 }
c REAL ::= { 1, 2, 40000 }
d REAL ::= { 1, 2, 4 }
E ::= ENUMERATED { a(99999999999999999999), b }
F ::= SEQUENCE { e E, g G }
G ::= EMBEDDED PDV
H ::= CHARACTER STRING)",
         {"d REAL ::= {mantissa 1, base 2, exponent 4}", "G ::= [UNIVERSAL 11] IMPLICIT SEQUENCE",
          "H ::= [UNIVERSAL 29] IMPLICIT SEQUENCE"},
         "2: warning: `M.a` is left out: a tree can't hold NOT-A-NUMBER\n"
         "3: warning: `M.b` is left out: a tree can't hold this REAL value\n"
         "4: warning: `M.c` is left out: a tree can't hold this REAL value\n"
         "6: warning: `M.E` is left out: a tree can't hold the number 99999999999999999999\n"
         "7: warning: `M.F` is left out: it refers to `E`, which is left out\n",
         {"--skip-unsupported"}},
    });
}

TEST(AsntreeTrees, Macros) {
    expectAll(
        {{R"(
M DEFINITIONS ::= BEGIN
OBJECT-TYPE MACRO ::= BEGIN TYPE NOTATION ::= "" VALUE NOTATION ::= value (VALUE INTEGER) END
OPERATION MACRO ::= BEGIN TYPE NOTATION ::= "" VALUE NOTATION ::= value (VALUE INTEGER) END
ERROR MACRO ::= BEGIN TYPE NOTATION ::= "" VALUE NOTATION ::= value (VALUE INTEGER) END
UNKNOWN MACRO ::= BEGIN TYPE NOTATION ::= "" VALUE NOTATION ::= value (VALUE INTEGER) END
COPY MACRO ::= M.UNKNOWN
Text ::= TEXTUAL-CONVENTION DISPLAY-HINT "255a" STATUS current DESCRIPTION "text"
         SYNTAX OCTET STRING (SIZE (0..255))
Row ::= SEQUENCE { text Text, bits BITS { a(0) } }
Bad ::= SEQUENCE { m UNKNOWN FOO { a, b } (x) BAR OPTIONAL, n BOOLEAN }
bits OBJECT-TYPE SYNTAX BITS { a(0), b(1) } MAX-ACCESS read-only STATUS current
     DEFVAL { {a} } ::= { 1 3 6 2 }
op OPERATION ARGUMENT arg INTEGER RESULT SEQUENCE { a INTEGER } ERRORS { e1, Err } LINKED { op } ::= 5
op2 OPERATION ARGUMENT [1] name < Ch TIMER 5 PRIORITY {1} ::= 8
Err ::= ERROR PARAMETER INTEGER
Both ::= SEQUENCE { o OPERATION, e ERROR }
Ch ::= CHOICE { name INTEGER }
e1 ERROR PARAMETER p INTEGER ::= 1
e2 ERROR ::= localValue : 7
x UNKNOWN FOO "a" ::= 5
END)",
          {"Text ::= OCTET STRING (SIZE (0..255))", "    bits OCTET STRING  {dyns/ui32, 0..MAX}",
           "Bits_Syntax ::= OCTET STRING", "Op_Argument ::= INTEGER", "Op_Result ::= SEQUENCE",
           "Op2_Argument ::= [1] EXPLICIT INTEGER", "E1_Parameter ::= INTEGER",
           "Err ::= CHOICE  {stru/i8}", "    e CHOICE  {stru/i8}\n        localValue INTEGER",
           "\nbits OBJECT IDENTIFIER ::= {1, 3, 6, 2}", "\nop INTEGER ::= 5", "e2 INTEGER ::= 7"},
          "11: warning: `M.Bad` is left out: a tree can't hold instances of this macro\n"
          "21: warning: `x` is left out: it is an instance of the macro UNKNOWN, which isn't "
          "known\n",
          {"--skip-unsupported"}}});
}

TEST(AsntreeTrees, Words) {
    expectAll({
        {R"(
C ::= CLASS { &id INTEGER, --@ int=16
              &x REAL, --@ real=32
              &y IA5String, &z IA5String (SIZE (1..9)) } --@ .z dynamic comment=text
T {X} ::= SEQUENCE { a INTEGER, b SEQUENCE OF X } --@ .a int=8
U ::= SEQUENCE { a T{INTEGER}, any ANY } --@ .any any=5:U any=6:M.C
T1 ::= INTEGER --@ name=Foo prefix=p_ suffix=_s conv=HL
v T1 ::= 5 --@ name=Value)",
         {"&id INTEGER  {i16}", "&x REAL  {real32}", "option -//text",
          "&z IA5String (SIZE (1..9))  {dyns8/ui8, 1..9}",
          "a INTEGER  {i8}\n            b SEQUENCE OF",
          "option $ANY=5:U\n        option $ANY=6:M.C\n",
          "option -TCONV=HL\n    option -TPREF=p_\n    option -TNAME=Foo\n    option -TSUFF=_s\n",
          "option -VNAME=Value\n"}},
        {R"(
T {X} ::= SEQUENCE { a INTEGER } --@ entry
a INTEGER ::= 5 --@ entry
E ::= INTEGER --@ .&a.*x int=8
C ::= CLASS { &id INTEGER } --@ .&id real=32)",
         {},
         "2: `T` can't be an entry: it has parameters\n"
         "3: `entry` can only be said of the definition of a type\n"
         "4: this is no path of components and `*`\n5: `real=32` can only be said of a REAL\n"},
        {R"(
M DEFINITIONS ::= BEGIN IMPORTS U FROM N Z FROM P;
MyType2Go ::= REAL
Type2Go-long ::= U
One ::= Z END
N DEFINITIONS ::= BEGIN U ::= NULL One ::= REAL END
P DEFINITIONS ::= BEGIN Z ::= NULL Two ::= REAL END
Q DEFINITIONS ::= BEGIN Two ::= REAL Any ::= NULL END)",
         {"\nMyType2Go ::= REAL  {real64}  entry 7 enc dec ask pri  exported\nType2Go_long",
          "`One` is called `mone` in C: `One` of module `N`",
          "`One` is called `none` in C: `One` of module `M`",
          "\nTwo ::= REAL  {real64}  entry 7 enc dec ask pri  exported\nmodule M"},
         "",
         {"-TCONV=HL", "-NAMELEN=9", "-TNAME=MyType2Go:Any", "-entry=7", "-UNIQUE=INCLUDES"}},
        {R"(
Ab-Cd DEFINITIONS ::= BEGIN U ::= NULL END
Ab-Ce DEFINITIONS ::= BEGIN U ::= NULL END
Ab-C-E DEFINITIONS ::= BEGIN U ::= NULL END
A-B-C-D-E-F DEFINITIONS ::= BEGIN U ::= NULL END)",
         {"module A_B_C_D_E_F, tree ABCD,", "module Ab_C_E, tree AbCE,", "module Ab_Cd, tree Ab_2,",
          "module Ab_Ce, tree Ab_3,"},
         "",
         {"-PREFIXLEN=4", "-PREFIX=None:a:b"}},
    });
}

} // namespace
