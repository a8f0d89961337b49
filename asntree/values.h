#pragma once

#include <cstdint>
#include <deque>

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
    Text,      /* character strings: `characters` */
    Time,      /* GeneralizedTime, UTCTime and those of 2008: `text` */
    Structure, /* SEQUENCE, SET, and what is associated with one: `members` */
    List,      /* `members` without components */
    Choice,    /* one member */
    Open,      /* a value of an open type or ANY: `type`, one member */
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
    TypeUse type;                         /* of the member */
    Datum *value = nullptr;
};

struct DatumArc {
    std::string name;   /* as written; empty if there is none */
    Number number;
    Target reference;   /* a value that gives the arc, or arcs at the head */
};

/* A value. Where it is a reference to a definition, `reference` names that, and all else tells what
   the reference leads to. */
struct Datum {
    DatumKind kind = DatumKind::Bad;
    Place place;
    TypeUse type;               /* the governor it was read by */
    Target reference;
    bool isTrue = false;        /* Boolean */
    Number number;              /* Integer, Item: its number */
    std::string_view item;      /* Item, or the named number by which an integer is given */
    RealNumber real;
    std::string text;           /* Bits, Octets, Time */
    bool fromBits = false;      /* the digits are binary */
    std::u32string characters;  /* Text */
    std::vector<std::string_view> bits; /* NamedBits: names */
    std::vector<Number> bitNumbers;     /* parallel */
    std::vector<DatumArc> arcs;         /* as written */
    std::vector<Number> identifier;     /* all arcs, references resolved */
    std::vector<DatumMember> members;
};

/* Reads a value by its governor and reports what doesn't fit the type (constraints are checked by
   checkDatum). Never null. The datum lives as long as the compilation. */
const Datum *readDatum(Compilation &c, ValueUse use, TypeUse governor);
/* The same for the value of a definition, or of an argument; read once. */
const Datum *datumOf(Compilation &c, const Target &target);

/* A whole number that a value in the place of a tag number, named number, endpoint or size gives;
   nothing after a message. */
std::optional<Number> integerOf(Compilation &c, ValueUse use);
/* The arcs of an object identifier in braces, as in the header of a module or behind an import. */
std::vector<Number> arcsOf(Compilation &c, TokenRange braces, const Scope *scope, bool quiet);

/* The items of an ENUMERATED, INTEGER or BIT STRING with their numbers settled (of an ENUMERATED
   those without a number too); the marker is passed over. Read once for each type and scope. */
struct SettledItem {
    const NamedItem *item;
    Number number;
    bool addition = false; /* behind the marker */
};
const std::vector<SettledItem> &itemsOf(Compilation &c, TypeUse base);

/* The components of a SEQUENCE, SET or CHOICE with COMPONENTS OF expanded, markers left out. */
struct SettledComponent {
    const Component *component;
    TypeUse type;
    bool addition = false;  /* between the markers */
    const Scope *scope = nullptr;
};
const std::vector<SettledComponent> &componentsOf(Compilation &c, TypeUse base);

} // namespace asntree
