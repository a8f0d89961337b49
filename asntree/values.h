#pragma once

#include <cstdint>
#include <deque>
#include <span>

#include "asntree/kinds.h"
#include "asntree/names.h"
#include "asntree/number.h"

/* Values, read by the type that governs them. */

namespace asntree {

enum class DatumKind : std::uint8_t {
    Bad, /* was reported */
    Boolean,
    Integer,
    Item, /* of an ENUMERATED */
    Real,
    Bits,   /* `text`: binary digits, from a bstring or hstring */
    Octets, /* `text`: hexadecimal digits as written, or binary ones; `fromBits` */
    NamedBits,
    Null,
    ObjectIdentifier,
    RelativeOid,
    Text,       /* character strings and the IRI types: `characters` */
    Time,       /* GeneralizedTime, UTCTime and those of 2008: `text` */
    Structure,  /* SEQUENCE, SET, and what is associated with one: `members` */
    List,       /* `members` without components */
    Choice,     /* one member */
    Open,       /* a value of an open type or ANY: `type`, one member */
    Containing, /* CONTAINING: `type`, one member */
};

struct RealNumber {
    enum Special : std::uint8_t { None, PlusInfinity, MinusInfinity, NotANumber } special = None;
    Number mantissa;
    int base = 10;
    std::int64_t exponent = 0;
};

struct DatumMember {
    const Component *component = nullptr; /* null in lists */
    std::string_view name;                /* the component's, settled; empty in lists */
    TypeUse type;                         /* of the member */
    const Datum *value = nullptr;
};

struct DatumArc {
    std::string name; /* as written; empty if there is none */
    Number number;
    Target reference; /* a value that gives the arc, or arcs at the head */
};

/* A value. Where it is a reference to a definition, `reference` names that, and all else tells what
   the reference leads to. Texts and lists are views of what the compilation keeps, so that a
   reference shares them with what it leads to. */
struct Datum {
    DatumKind kind = DatumKind::Bad;
    Place place;
    TypeUse type; /* the governor it was read by */
    Target reference;
    bool isTrue = false;   /* Boolean */
    Number number;         /* Integer, Item: its number */
    std::string_view item; /* Item, or the named number by which an integer is given */
    RealNumber real;
    std::string_view text;                  /* Bits, Octets, Time */
    bool fromBits = false;                  /* the digits are binary */
    std::u32string_view characters;         /* Text */
    std::span<const std::string_view> bits; /* NamedBits: names */
    std::span<const Number> bitNumbers;     /* parallel */
    std::span<const DatumArc> arcs;         /* as written */
    std::span<const Number> identifier;     /* all arcs, references resolved */
    std::span<const DatumMember> members;
};

/* Reads a value by its governor and reports what doesn't fit the type (constraints are checked by
   checkDatum). Never null. The datum lives as long as the compilation. */
const Datum *readDatum(Compilation &c, ValueUse use, TypeUse governor);
/* The same for the value of a definition, or of an argument; read once. */
const Datum *datumOf(Compilation &c, const Target &target);

/* A whole number that a value in the place of a tag number, named number, endpoint or size gives;
   nothing after a message. */
std::optional<Number> integerOf(Compilation &c, ValueUse use);
/* The arcs of an object identifier in braces, as in the header of a module or behind an import; none,
   and no message, where they are wrong. */
std::vector<Number> arcsOf(Compilation &c, TokenRange braces, const Scope *scope);

/* The items of an ENUMERATED, INTEGER or BIT STRING with their numbers settled (of an ENUMERATED
   those without a number too); the marker is passed over. Read once for each type and scope. */
struct SettledItem {
    const NamedItem *item;
    Number number;
    bool addition = false; /* behind the marker */
};
const std::vector<SettledItem> &itemsOf(Compilation &c, TypeUse base);
/* Null if there is no item of that name. */
const SettledItem *findItem(Compilation &c, TypeUse base, std::string_view name);
/* Reports items of one type node that are given twice, by name or number, and the other rules. */
void checkItems(Compilation &c, TypeUse type);

/* Whether a text is property settings of TIME, as "Basic=Date Date=YMD". */
bool isTimeSettings(std::string_view text);

/* The components of a SEQUENCE, SET or CHOICE with COMPONENTS OF expanded, markers left out. */
struct SettledComponent {
    const Component *component;
    TypeUse type;
    bool addition = false; /* between the markers */
    std::string_view name; /* for a component of 1988 without identifier, made from its type */
};
const std::vector<SettledComponent> &componentsOf(Compilation &c, TypeUse base);
/* Null if there is no component of that name. */
const SettledComponent *findComponent(Compilation &c, TypeUse base, std::string_view name);

/* True if values of one type may stand where the other governs: the types are the same but for
   tags, constraints and names of numbers and bits. Both are followed to their bases. */
bool compatible(Compilation &c, TypeUse a, TypeUse b);
/* What a type is called in messages: the name of its definition, or the words of a builtin one. */
std::string describeType(TypeUse type);

} // namespace asntree
