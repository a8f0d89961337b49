#pragma once

#include "asntree/diagnostics.h"
#include "asntree/lexer.h"
#include "asntree/syntax.h"

namespace asntree {

/* What all parsing functions need. */
struct ParseContext {
    Sources &sources;
    Diagnostics &diagnostics;
    Arena &arena;
};

/* Parses all modules of a file that was lexed. After a mistake parsing goes on with the next
   assignment. */
std::vector<Module *> parseFile(ParseContext &context, SourceFile &file);

/* Text that was kept until its governor was known. Each function reports what doesn't parse, null or
   an empty list comes then; all of the range has to be used up unless something else is said. */

Type *readType(ParseContext &context, TokenRange range);
Value *readValue(ParseContext &context, TokenRange range);
/* What stands between the braces of a value:
   - comma separated values, the elements of a list;
   - components by name: `a 1, b TRUE`;
   - arcs of an OBJECT IDENTIFIER, without commas;
   - identifiers of named bits. */
std::vector<Value *> readValueList(ParseContext &context, TokenRange range);
std::vector<NamedValue> readNamedValues(ParseContext &context, TokenRange range);
std::vector<Arc> readArcs(ParseContext &context, TokenRange range);
std::vector<Name> readIdentifiers(ParseContext &context, TokenRange range);
/* `identifier value` as the only thing in braces: a CHOICE value without its colon. False, and
   nothing is reported, if the text doesn't have this form. */
bool readPair(ParseContext &context, TokenRange range, NamedValue &pair);

/* An element set (a value set or object set) between its braces, or as a whole parameter. Objects
   stand in it as single values: a Reference, a Braced value, or a Field; sets of objects as
   Contained types of kind Reference or Field. */
ConstraintSpec *readSet(ParseContext &context, TokenRange range);
/* The same where braces may stand around it, as in a parameter or setting. */
ConstraintSpec *readBracedSet(ParseContext &context, TokenRange range);

/* An object between its braces: with the default syntax `{ &a 1, &B INTEGER }`; with a defined one
   by the words of the class. The settings are cut, not read: in defined syntax the extent of a
   setting follows from its field, whose kind `settingOf` tells by the field's name. */
enum class SettingKind : std::uint8_t { Type, Value, Set, Object, ObjectSet };
struct SettingKinds {
    void *state = nullptr;
    SettingKind (*settingOf)(void *state, std::string_view field) = nullptr;
};
std::vector<FieldSetting> readObject(ParseContext &context, TokenRange range,
                                     const ObjectClass &objectClass, SettingKinds kinds,
                                     bool &sound);

/* Clauses of an instance of OPERATION, ERROR, OBJECT-TYPE or another macro: what the words in front
   of types name. Only words that are known to be followed by a type, a value or a list of values
   are told; the rest is read over. */
struct MacroClause {
    Name word;    /* ARGUMENT, RESULT, PARAMETER, SYNTAX, ERRORS, LINKED ... */
    Type *type = nullptr;
    std::vector<Value *> values;
};
/* True for the macros of published standards, which modules use without their definition. */
bool isWellKnownMacro(std::string_view name);
std::vector<MacroClause> readMacroClauses(ParseContext &context, TokenRange range);

} // namespace asntree
