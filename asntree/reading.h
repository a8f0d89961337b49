#pragma once

#include <deque>

#include "asntree/numberset.h"
#include "asntree/values.h"

/* What the files that read values and constraints share. */

namespace asntree {

struct DatumKey {
    ValueUse value;
    TypeUse governor;
    bool operator==(const DatumKey &) const = default;
};
struct DatumHash {
    std::size_t operator()(const DatumKey &key) const {
        const std::hash<const void *> hash;
        return ((hash(key.value.value) * 31 + hash(key.value.scope)) * 31 +
                hash(key.governor.type)) *
                   31 +
               hash(key.governor.scope);
    }
};

struct ItemTable {
    std::vector<SettledItem> items;
    std::unordered_map<std::string_view, std::size_t> byName; /* the first of a name */
    std::unordered_map<std::string, std::size_t> byNumber;    /* the first of a number, as text */
};

struct ComponentTable {
    std::vector<SettledComponent> components;
    std::unordered_map<std::string_view, std::size_t> byName;
    bool done = false; /* false while COMPONENTS OF are worked out */
};

/* What a type or constraint is asked for. */
enum class Aspect : std::uint8_t { Values, Sizes, Characters };
constexpr std::size_t ASPECTS = 3;

/* What was read once, and the texts and lists that values view. */
struct ValueMemos {
    std::unordered_map<DatumKey, const Datum *, DatumHash> datums; /* null: being read */
    std::unordered_map<UseKey, ItemTable, UseHash> items;
    std::unordered_map<UseKey, ComponentTable, UseHash> components;
    struct KnownExtent {
        NumberSet set;
        bool done = false; /* false while it is worked out */
    };
    std::unordered_map<UseKey, KnownExtent, UseHash> extents[ASPECTS][2]; /* by ExtensionView */
    /* From references in long chains to the next type with a constraint, or the base. */
    std::unordered_map<UseKey, TypeUse, UseHash> jumps;
    std::unordered_map<TypeKind, const Type *> builtins;
    std::deque<std::string> texts;
    std::deque<std::u32string> characters;
    std::deque<std::vector<std::string_view>> names;
    std::deque<std::vector<Number>> numbers;
    std::deque<std::vector<DatumArc>> arcs;
    std::deque<std::vector<DatumMember>> members;
};
ValueMemos &memosOf(Compilation &c);

/* A builtin type that no module holds, as the governor of endpoints, tags and base numbers. */
TypeUse builtinType(Compilation &c, TypeKind kind);
/* A type of the module of associated types (External1994 ...); empty if there is none. */
TypeUse predefinedType(Compilation &c, std::string_view name);

/* As readDatum, for a part of a value that is read once with the whole: it isn't remembered. */
const Datum *readAnew(Compilation &c, ValueUse use, TypeUse governor);

/* A value while it is read: `datum.kind` stays Bad until all is well. */
struct Reading {
    Compilation &c;
    ValueUse use;
    TypeUse governor;
    TypeUse base; /* what the governor stands for */
    Datum &datum;

    const Value &value() const { return *use.value; }
};

/* "BOOLEAN: TRUE or FALSE expected, not a number". */
void reportMismatch(Reading &reading, std::string_view expected);
std::string_view kindText(ValueKind kind);
std::string quote(std::string_view name);
/* True for a dummy reference. Within the check of a body without arguments it leads nowhere. */
bool isDummy(const Scope *scope, const Reference &reference);
/* The content of a value that is a string of any kind. */
std::string contentOf(Compilation &c, const Value &value);

void readIdentifier(Reading &reading); /* OBJECT IDENTIFIER, RELATIVE-OID */
void readReal(Reading &reading);
void readBits(Reading &reading);
void readOctets(Reading &reading);
void readCharacters(Reading &reading);
void readIri(Reading &reading);
void readTime(Reading &reading);
void readStructure(Reading &reading); /* SEQUENCE, SET */
void readList(Reading &reading);
void readChoice(Reading &reading);
/* `alternative {...}`, which looks like a reference with parameters; false if it is one. */
bool readChoiceWithoutColon(Reading &reading);
void readOpen(Reading &reading); /* open types and ANY */
void readContaining(Reading &reading);
void readMacroValue(Reading &reading);

/* The characters of a string type. */
NumberSet alphabetOf(TypeKind kind);
/* "`x`", "U+00E9". */
std::string textOfCharacter(char32_t character);

} // namespace asntree
