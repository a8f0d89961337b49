#include "asntree/lexer.h"

#include <gtest/gtest.h>

namespace {

using namespace asntree;

/* Tokens as their text, separated by blanks, a bad one as "BAD"; directives as "@words" in front of
   their token; then the messages, "!" in front of each, with "line:column". */
std::string lexed(const std::string &text, bool strict = false) {
    Sources sources;
    Diagnostics diagnostics(sources);
    diagnostics.strict = strict;
    SourceFile *file = addSource(sources, "x", text);
    lex(*file, diagnostics);
    std::string out;
    std::size_t directive = 0;
    for (std::size_t i = 0; i < file->tokens.size(); ++i) {
        while (directive < file->directives.size() && file->directives[directive].token == i)
            out += "@" + std::string(file->directives[directive++].words) + " ";
        const Token &token = file->tokens[i];
        const bool string = token.kind >= TokenKind::BString && token.kind <= TokenKind::CString;
        if (token.kind != TokenKind::End)
            out += (token.kind == TokenKind::Bad ? "BAD"
                    : string                     ? "<" + stringContent(*file, token) + ">"
                                                 : std::string(textOf(*file, token))) +
                   " ";
    }
    for (const Diagnostic &message : diagnostics.list) {
        const LineColumn place = lineAndColumn(*file, message.place.offset);
        out += "!" + std::to_string(place.line) + ":" + std::to_string(place.column) +
               (message.severity == Severity::Error ? "e " : "w ");
    }
    if (!out.empty())
        out.pop_back();
    return out;
}

TEST(Lexer, Corners) {
    using std::string_literals::operator""s;
    static const std::pair<std::string, std::string> cases[] = {
        /* names and numbers */
        {"a--b\nc-d a-1 A", "a c-d a-1 A"},
        {"a-- b --c", "a c"},
        {"a- b-- x\n", "a b !1:2e"},
        {"a_b a_b", "a_b a_b !1:2w"},
        {"x\xE2\x80\x91y \"\xE2\x80\x91\"", "x-y <\xE2\x80\x91>"},
        {"0..5 0.5 1.e5 1e-5 2E x", "0 .. 5 0.5 1.e5 1e-5 2 E x"},
        {"10 007 1.50 1e05", "10 007 1.50 1e05 !1:4e !1:15e"},
        {"&Foo &b & c", "&Foo &b BAD c !1:9e"},
        {"[[ [ ]] ... .. . ::= : =", "[[ [ ]] ... .. . ::= : ="},
        /* comments */
        {"a -- b -- c -- d\rx--y\x0Bz -- \x0Cw", "a c x z w"},
        {"a /* /* */ -- */ b /**/ c", "a b c"},
        {"a\n /* /* */", "a !2:2e"},
        {"a */ b", "a b !1:3e"},
        {"-----\n-------- a -----\n", "a !1:5w"},
        {"a, --@ int=u8 \nb --@x-- c --@", "a , @int=u8 b @x c @"},
        /* strings */
        {"'01 \n1'B 'aF\xC2\xA0 0'H", "<011> <AF0> !2:5w"},
        {"'012'B 'G'H '01' 'x", "<012> <G> BAD BAD !1:4e !1:9e !1:16e !1:18e"},
        {"don't, a\nb", "don BAD b !1:4e"},
        {"\"a\"\"b \t\r\n \xC2\xA0 c\" \"\"", "<a\"bc> <>"},
        {"\"\xFF\xC3\xA4\" --\xFF\n/*\xFF*/", "<\xFF\xC3\xA4>"},
        {"a \"b\nc", "a BAD c !1:3e"},
        {"A ::= <A>' <A/> <A>\"</A></A> b < C ::= <x>",
         "A ::= <A>' <A/> <A>\"</A></A> b < C ::= BAD !1:40e"},
        /* characters */
        {"\xEF\xBB\xBF\xC2\xA0"
         "a\xC2\xA0"
         "b",
         "a b"},
        {"a \xE2\x80\x93 b\xE2\x80\x83 c \xFF\x01# d\0e"s,
         "a BAD b c BAD d BAD e !1:3e !1:6e !1:10e !1:15e"},
        {"M\0O\0D\0"s, "!1:1e"},
        {"END\r\n\x1A", "END"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(lexed(text), expected) << text;
    EXPECT_EQ(lexed("a_b", true), "a_b !1:2e");
}

TEST(Lexer, ModuleHeaders) {
    const std::string far(20000, ' ');
    const std::string text =
        "-- No DEFINITIONS here\nA DEFINITIONS ::= BEGIN x \"DEFINITIONS\" END" + far +
        "\n/* C */ B-c -- {x --{ iso 1 }\n\"/IRI\" DEFINITIONS D DEFINITIONS";
    EXPECT_EQ(moduleHeaders(text), (std::vector<std::string>{"A", "B-c", "D"}));
}

TEST(Diagnostics, LinesAndCarets) {
    Sources sources;
    Diagnostics diagnostics(sources);
    SourceFile *file =
        addSource(sources, "x.asn", "one\r\n\t\xC3\xA4 two\n" + std::string(500, 'x'));
    error(diagnostics, {0, 9}, "second", {{{0, 0}, "remark"}});
    error(diagnostics, {0, 9}, "once more at the place");
    warning(diagnostics, {}, "nowhere");
    note(diagnostics, {0, 0}, "for listings");
    for (std::uint32_t i = 0; i < 60; ++i)
        error(diagnostics, {0, 200 + i}, "much");
    const std::string text = printed(diagnostics, false);
    const std::string first = "asntree: warning: nowhere\n"
                              "x.asn:2:4: error: second\n"
                              "            \xC3\xA4 two\n"
                              "              ^\n"
                              "x.asn:1:1: note: remark\n"
                              "    one\n    ^\n"
                              "x.asn:3:188: error: much\n"
                              "    ... x";
    EXPECT_EQ(text.substr(0, first.size()), first);
    EXPECT_TRUE(text.ends_with("\nasntree: 11 more errors are not shown\n"));
    EXPECT_EQ(text.find("listings"), text.npos);
    EXPECT_EQ(lineText(*file, 2), "\t\xC3\xA4 two");
}

TEST(Diagnostics, NearestName) {
    EXPECT_EQ(nearestName("integer", {"Interval", "INTEGER"}), "INTEGER");
    EXPECT_EQ(nearestName("Certficate", {"Certificates", "Certificate"}), "Certificate");
    EXPECT_EQ(nearestName("ab", {"ac", "Foo"}), "");
}

} // namespace
