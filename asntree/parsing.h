#pragma once

#include <string>
#include <string_view>

#include "asntree/parser.h"

/* What the files of the parser share: the cursor over the tokens of a range, and the functions that
   parse one construct each. After a mistake that can't be passed over `Parser::failed` is set: from
   then on every token looks like the end, so all functions return soon, and nothing more is
   reported until the caller, who knows where to go on, clears it. */

namespace asntree {

/* Deeper nesting of types, values, constraints or brackets is refused. */
constexpr int MAX_NESTING = 250;
constexpr std::uint32_t NO_TOKEN = 0xFFFFFFFF;

/* Where a type stands: it decides whether an instance of a macro may stand in its place, and where
   that ends. */
enum class TypePlace : std::uint8_t { Elsewhere, Assignment, Governor, Component, Setting };

struct Parser {
    ParseContext &context;
    SourceFile &file;
    const ModuleWords *words = nullptr; /* of the module; null if it isn't known */
    std::uint32_t pos = 0;
    std::uint32_t end = 0; /* number of the first token behind the range */
    int depth = 0;
    bool failed = false;
    TypePlace typePlace = TypePlace::Elsewhere;
    bool pairs = false;      /* a name in front of a value is a CHOICE without its colon */
    bool quietPairs = false; /* ... which is no slip, since the governor is a macro */
    bool inSet = false;      /* braces in an element set are objects or values, never tables */
    std::uint32_t softError = NO_TOKEN; /* where the last mistake was that was passed over */
    std::uint32_t lastAssign = 0;       /* behind the last "::=" */
};

Parser parserOf(ParseContext &context, TokenRange range);

/* --- the cursor --- */

extern const Token END_TOKEN;

inline const Token &peek(const Parser &p, std::uint32_t ahead = 0) {
    return p.failed || p.pos + ahead >= p.end ? END_TOKEN : p.file.tokens[p.pos + ahead];
}
inline bool at(const Parser &p, TokenKind kind) {
    return peek(p).kind == kind;
}
inline bool atWord(const Parser &p, Word word) {
    return peek(p).word == word;
}
inline bool nextIs(const Parser &p, TokenKind kind, std::uint32_t ahead = 1) {
    return peek(p, ahead).kind == kind;
}
inline void advance(Parser &p) {
    if (!p.failed && p.pos < p.end)
        ++p.pos;
}
inline bool take(Parser &p, TokenKind kind) {
    if (!at(p, kind))
        return false;
    advance(p);
    return true;
}
inline bool takeWord(Parser &p, Word word) {
    if (!atWord(p, word))
        return false;
    advance(p);
    return true;
}
/* These report what stands there instead. */
bool expect(Parser &p, TokenKind kind);
bool expectWord(Parser &p, Word word);

/* Place of the current token, and behind the one in front of it. */
Place here(const Parser &p);
Place behind(const Parser &p);
TokenRange rangeFrom(const Parser &p, std::uint32_t begin);
/* The current token as a name, without "&". */
Name nameHere(const Parser &p);
Name takeName(Parser &p);
std::string quoted(std::string_view text);

/* A mistake that ends the parsing of this construct. */
void fail(Parser &p, Place place, std::string text);
/* "WHAT expected, found ..." at the current token. */
void failExpected(Parser &p, std::string_view what);
/* A mistake that parsing goes on behind. */
void complain(Parser &p, Place place, std::string text);
/* Whether all of the range was used; reports what is left. */
bool finished(Parser &p);

/* Passes over a pair of braces with all between them. */
TokenRange skipBraces(Parser &p);
/* Adds the directives that stand in front of the current token. */
void claimDirectives(Parser &p, std::vector<std::uint32_t> &list);

/* One level of nesting; refuses too many of them. */
struct Nesting {
    Parser &p;
    explicit Nesting(Parser &parser);
    ~Nesting() { --p.depth; }
    Nesting(const Nesting &) = delete;
    Nesting &operator=(const Nesting &) = delete;
};

/* Sets a member of the parser for the time of a block. */
template <typename Member> struct Scoped {
    Member &member;
    Member old;
    Scoped(Member &place, Member value) : member(place), old(place) { member = value; }
    ~Scoped() { member = old; }
    Scoped(const Scoped &) = delete;
    Scoped &operator=(const Scoped &) = delete;
};

/* A comma was taken; true, with a warning, if the list ends behind it. */
bool isCommaTooMany(Parser &p, TokenKind close);

/* --- references and macros --- */

bool isRedefined(const Parser &p, Word word);
/* A name, or a reserved word that the module uses as one. */
bool isUpperName(const Parser &p, const Token &token);
bool isAllCapitals(std::string_view name);
bool isMacroName(const Parser &p, std::string_view name);
/* ARGUMENT, ERRORS, SYNTAX ...: what stands in instances of the well-known ones. */
bool isMacroClause(std::string_view word);
/* [Module.] name [{parameters}] {.&field}; something that can begin one stands there. */
void parseReference(Parser &p, Reference &ref, std::vector<Name> &fields,
                    std::vector<bool> &fieldIsUpper);
/* Makes `type`, a plain reference that was just read, an instance of a macro if what follows says
   so. */
void checkForMacro(Parser &p, Type &type);

/* A type or value is expected, and `Name ::=` stands there. */
inline bool beginsNextAssignment(const Parser &p) {
    return (at(p, TokenKind::Upper) || at(p, TokenKind::Lower)) && nextIs(p, TokenKind::Assign);
}
/* Number of the token that the next assignment behind `from` begins with, or END, or the end of the
   range. `low`: where it may begin at the earliest. */
std::uint32_t nextAssignment(const Parser &p, std::uint32_t from, std::uint32_t low);
/* First token of the module header whose DEFINITIONS is at `definitions`. */
std::uint32_t headerStart(const Parser &p, std::uint32_t definitions, std::uint32_t low);

/* --- types, values, constraints, classes --- */

bool beginsType(const Parser &p, const Token &token);
bool beginsValue(const Token &token);

/* None of these returns null. */
Type *parseType(Parser &p);
Value *parseValue(Parser &p);
/* "(" ... ")" */
ConstraintSpec *parseConstraint(Parser &p);
/* What stands between the parentheses, or between the braces of a set. */
void parseElementSets(Parser &p, ConstraintSpec &spec);
/* "! 5", "! Type : value"; the "!" stands there. Null after a message. */
Value *parseException(Parser &p, ConstraintSpec *spec);
/* The components behind "{" up to and with "}". */
void parseComponents(Parser &p, Type &type);
/* CLASS { ... } WITH SYNTAX { ... } */
void parseObjectClass(Parser &p, ObjectClass &objectClass);

} // namespace asntree
