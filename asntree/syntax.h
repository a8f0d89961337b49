#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "asntree/source.h"

/* The syntax of ASN.1 modules: what the parser makes of the text, before any name is resolved.
   Nodes live in the arena of the compilation and are never freed one by one; the vectors in them
   are freed with it. Names point into the text of their file. */

namespace asntree {

struct Type;
struct Value;
struct Constraint;
struct ConstraintSpec;
struct ObjectClass;
struct Assignment;
struct Module;
struct Scope; /* compilation.h */

/* A name with its place; empty if there is none. */
struct Name {
    std::string_view text;
    Place place;

    bool given() const { return !text.empty(); }
};

/* `Module.name` or `name`, with actual parameters or without: what stands in braces behind it, a
   range of tokens for each parameter. */
struct Reference {
    Name module; /* empty if none is written */
    Name name;
    std::vector<TokenRange> parameters;
    bool hasParameters = false; /* braces stand behind the name */
};

/* --- types --- */

enum class TypeKind : std::uint8_t {
    Boolean,
    Integer,
    Enumerated,
    Real,
    BitString,
    OctetString,
    Null,
    Sequence,
    SequenceOf,
    Set,
    SetOf,
    Choice,
    Any,
    EmbeddedPdv,
    ObjectIdentifier,
    RelativeOid,
    OidIri,
    RelativeOidIri,
    Utf8String,
    NumericString,
    PrintableString,
    TeletexString, /* T61String too */
    VideotexString,
    VisibleString, /* ISO646String too */
    Ia5String,
    GraphicString,
    GeneralString,
    BmpString,
    UniversalString,
    CharacterString,
    GeneralizedTime,
    UtcTime,
    Time,
    Date,
    TimeOfDay,
    DateTime,
    Duration,
    External,
    ObjectDescriptor,
    InstanceOf,
    Reference, /* a type, a class, or a dummy reference of either */
    Selection, /* alternative < Type */
    Field,     /* CLASS.&field, object.&Type, Set.&Type, with more steps: `ref` and `fields` */
    Macro,     /* an instance of a macro of 1988: `ref` names it, `tokens` is what follows */
    Bad,       /* could not be parsed, and was reported */
};

enum class TagClassWord : std::uint8_t { Universal, Application, Context, Private };
enum class TagModeWord : std::uint8_t { None, Implicit, Explicit };

struct TagSpec {
    TagClassWord tagClass = TagClassWord::Context;
    TagModeWord mode = TagModeWord::None; /* as written */
    Value *number = nullptr;              /* a number or a reference to an INTEGER value */
    Place place;
};

/* Item of an ENUMERATED, named number or named bit. */
struct NamedItem {
    Name name;
    Value *number = nullptr; /* null: none is written */
    bool marker = false;     /* "..." */
};

enum class ComponentKind : std::uint8_t { Component, ComponentsOf, Marker };
enum class Presence : std::uint8_t { Mandatory, Optional, Default };

/* A component, alternative, COMPONENTS OF item or extension marker, in the order of the text. */
struct Component {
    ComponentKind kind = ComponentKind::Component;
    Presence presence = Presence::Mandatory;
    Name name; /* empty: a component of 1988 without identifier */
    Place place;
    Type *type = nullptr;      /* null for a marker */
    Value *defaultValue = nullptr;
    std::vector<std::uint32_t> directives; /* numbers in the file's list */
};

struct Type {
    TypeKind kind = TypeKind::Bad;
    Place place;                        /* of the first token, tags included */
    Place end;                          /* behind the last token */
    std::vector<TagSpec> tags;          /* outermost first */
    std::vector<ConstraintSpec *> constraints; /* in the order of the text; SIZE in front of OF too */
    Reference ref;                      /* Reference, Field, Macro, InstanceOf (its class) */
    std::vector<Name> fields;           /* Field: the steps, names without "&" */
    std::vector<bool> fieldIsUpper;     /* Field: &Upper or &lower, by step */
    std::vector<NamedItem> items;       /* Enumerated, Integer, BitString */
    bool hasItems = false;              /* braces are written */
    std::vector<Component> components;  /* Sequence, Set, Choice */
    Type *element = nullptr;            /* SequenceOf, SetOf; Selection: the CHOICE */
    Name identifier;                    /* SequenceOf: of the element; Selection; Any: DEFINED BY */
    TokenRange tokens;                  /* Macro */
    std::vector<std::uint32_t> directives; /* of an element of a list: numbers in the file's list */
    /* What baseOf() found for the scope in which it was first asked; null as long as it wasn't. */
    mutable const Scope *baseScope = nullptr;
    mutable const Type *base = nullptr;
    mutable const Scope *scopeOfBase = nullptr;
};

/* --- values --- */

enum class ValueKind : std::uint8_t {
    True,
    False,
    Null,
    Number,      /* `text`: digits; `negative` */
    Real,        /* `text`; `negative` */
    PlusInfinity,
    MinusInfinity,
    NotANumber,
    BString,
    HString,
    CString,
    Reference,   /* `ref`: a value, an item of the governor, or a dummy reference; with parameters
                    also `tokens`, between their braces: perhaps a CHOICE without its colon */
    Field,       /* object.&value, Set.&value: `ref` and `fields` */
    Choice,      /* `ref.name` : `inner` */
    Typed,       /* `type` : `inner`, a value of an open type */
    Containing,  /* CONTAINING `inner` */
    Braced,      /* `tokens`: what stands between the braces; read when the governor is known */
    Min,         /* MIN and MAX: endpoints of ranges, and values of 1988 */
    Max,
    Object,      /* `tokens`: an object of a macro of 1988 without braces, or WITH SYNTAX in braces */
    Bad,
};

struct Value {
    ValueKind kind = ValueKind::Bad;
    bool negative = false;
    Place place;
    Place end;
    std::uint32_t token = 0; /* Number, Real, strings: the number of the token in the file */
    std::string_view text;   /* the token as it is written */
    Reference ref;
    std::vector<Name> fields; /* names without "&" */
    std::vector<bool> fieldIsUpper;
    Value *inner = nullptr;
    Type *type = nullptr;
    TokenRange tokens;
};

/* What braces may hold, by governor. `name` is empty for an element of a list. */
struct NamedValue {
    Name name;
    Value *value = nullptr;
    Place place;
};

/* One arc of OBJECT IDENTIFIER or RELATIVE-OID: a name, a number, or a name with a number or a
   reference in parentheses. */
struct Arc {
    Name name;              /* a value reference if nothing else is given: `ref` */
    Value *number = nullptr; /* Number, Reference or Field; null: the name stands alone */
    Reference ref;           /* the name once more, with its module */
    Place place;
};

/* --- constraints --- */

enum class ConstraintKind : std::uint8_t {
    Union,        /* `operands` */
    Intersection, /* `operands` */
    Except,       /* `operands`: included, excluded */
    AllExcept,    /* `operands`: excluded */
    SingleValue,  /* `value` */
    Range,        /* `lower`, `upper`, `lowerOpen`, `upperOpen` */
    Contained,    /* `type`, INCLUDES or not: a contained subtype, or the type of an open type */
    Size,         /* `inner` */
    Alphabet,     /* `inner` */
    WithComponent,  /* `inner` */
    WithComponents, /* `parts`; `partial` */
    Pattern,      /* `value` */
    Settings,     /* `value`: a CString */
    UserDefined,  /* CONSTRAINED BY { `tokens` } */
    Table,        /* `ref`: the object set (not given if `tokens`, between the braces, is more than
                     a reference); `relation`: the paths behind "@" */
    Contents,     /* CONTAINING `type` (may be null), ENCODED BY `value` (may be null) */
    Group,        /* braces or field path that only a governor can tell: value or set; `value` */
    Bad,
};

enum class PresenceWord : std::uint8_t { None, Present, Absent, Optional };

struct ComponentConstraint {
    Name name;
    ConstraintSpec *inner = nullptr; /* null: none */
    PresenceWord presence = PresenceWord::None;
};

/* A component relation: "@a.b", "@.a" with `level` 1, "@..a" with 2. */
struct AtPath {
    int level = 0; /* 0: from the outermost type */
    std::vector<Name> steps;
};

struct Constraint {
    ConstraintKind kind = ConstraintKind::Bad;
    bool lowerOpen = false; /* MIN< or value< in front of ".." */
    bool upperOpen = false;
    bool partial = false;   /* WITH COMPONENTS { ..., */
    bool includes = false;  /* Contained: INCLUDES is written */
    Place place;
    std::vector<Constraint *> operands;
    Value *value = nullptr;
    Value *lower = nullptr; /* kind Min for MIN */
    Value *upper = nullptr;
    Type *type = nullptr;
    ConstraintSpec *inner = nullptr;
    std::vector<ComponentConstraint> parts;
    Reference ref;
    std::vector<AtPath> relation;
    TokenRange tokens; /* UserDefined, Table: between the braces */
};

/* What stands in one pair of parentheses, or behind SIZE; also a value set's braces. */
struct ConstraintSpec {
    Place place;
    Constraint *root = nullptr;      /* null in a value set of "{...}" alone */
    bool extensible = false;         /* "..." is written */
    Constraint *additions = nullptr; /* behind ", ...,"; null if none */
    bool hasException = false;       /* "!" */
    Type *exceptionType = nullptr;   /* ! Type : value */
    Value *exception = nullptr;
    /* Of a set that is used as a type: the scope of its names, where that isn't the governor's. */
    const Scope *scope = nullptr;
};

/* The scope of a constraint that stands on a type with the scope `otherwise`. */
inline const Scope *scopeOf(const ConstraintSpec &spec, const Scope *otherwise) {
    return spec.scope != nullptr ? spec.scope : otherwise;
}

/* --- classes, objects, sets --- */

/* One field of a class. Which kind of field it is depends also on the governor: a class makes
   &lower an object and &Upper an object set. */
struct ClassField {
    Name name; /* without "&" */
    bool upper = false;
    Type *governor = nullptr;          /* null: a type field, or `path` governs */
    std::vector<Name> path;            /* variable type: &Type.&x, names without "&" */
    std::vector<bool> pathIsUpper;
    bool unique = false;
    bool optional = false;
    TokenRange defaultSetting; /* DEFAULT: all its tokens; braces included */
    Place place;
    std::vector<std::uint32_t> directives;
};

/* A piece of WITH SYNTAX. */
struct SyntaxItem {
    enum Kind : std::uint8_t { Literal, Field, Group } kind = Literal;
    Name text; /* Literal: the word or ","; Field: the name without "&" */
    bool upper = false;
    std::vector<SyntaxItem> group; /* [ ... ] */
};

struct ObjectClass {
    Place place;
    std::vector<ClassField> fields;
    std::vector<SyntaxItem> syntax;
    bool hasSyntax = false;
};

/* One setting of an object: the field, and the tokens that set it, whose meaning the field gives. */
struct FieldSetting {
    Name field; /* without "&" */
    bool upper = false;
    TokenRange tokens;
    Place place;
};

/* --- assignments and modules --- */

struct FormalParameter {
    Type *governor = nullptr; /* null: a type or a class by `name` */
    Name name;                /* Upper or Lower */
};

enum class AssignmentKind : std::uint8_t {
    Type,  /* Upper ::= `type`; an alias of a class looks the same */
    Class, /* UPPER ::= CLASS */
    Value, /* lower `type` ::= `value`; also objects */
    Set,   /* Upper `type` ::= { `tokens` }, or without braces; also object sets */
    Macro, /* UPPER MACRO ::= BEGIN ... END: read over */
};

struct Assignment {
    AssignmentKind kind = AssignmentKind::Type;
    Module *module = nullptr;
    Name name;
    bool parameterized = false;
    std::vector<FormalParameter> parameters;
    Type *type = nullptr; /* or the governor */
    ObjectClass *objectClass = nullptr;
    Value *value = nullptr;
    TokenRange tokens; /* Set: between the braces */
    std::uint32_t index = 0; /* in the module's list */
    std::vector<std::uint32_t> directives;
    mutable bool isNoClass = false; /* classOf() found that it leads to a type */
};

enum class TagDefault : std::uint8_t { Explicit, Implicit, Automatic };
enum class ExportsMode : std::uint8_t { None, All, List };

struct ImportFrom {
    Name module;
    std::vector<Name> symbols; /* "{}" of a parameterised reference is read over */
    TokenRange identifier;     /* an object identifier behind the name: between its braces */
    Name identifierRef;        /* or a value reference */
    bool successors = false;   /* WITH SUCCESSORS */
    bool descendants = false;  /* WITH DESCENDANTS */
};

struct Module {
    std::uint32_t file = 0;
    Name name;
    TokenRange identifier; /* between the braces; not given if none is written */
    std::string_view iri;  /* with its quotes */
    TagDefault tags = TagDefault::Explicit;
    bool tagsWritten = false;
    bool extensibilityImplied = false;
    ExportsMode exportsMode = ExportsMode::None;
    std::vector<Name> exports;
    std::vector<ImportFrom> imports;
    std::vector<Assignment *> assignments;
    Place end;
};

/* What the parser has to know of a module to tell types from instances of macros, and reserved
   words from names: a word may be the name of a definition in a module that is older than it. */
struct ModuleWords {
    std::uint32_t firstToken = 0;         /* of the module, in its file */
    std::vector<Word> redefined;          /* reserved words that the module defines or imports */
    std::vector<std::string_view> macros; /* sorted: what it defines as MACRO, and imported names
                                             in capitals, which may be macros */
    bool otherInstructions = false;       /* "[...]" without "TAG:" is not a tag */
};

/* Owns the nodes of the syntax. */
struct Arena {
    std::vector<std::vector<ModuleWords>> words; /* by file; in the order of the modules */
    std::vector<std::unique_ptr<Type[]>> typeBlocks;
    std::vector<std::unique_ptr<Value[]>> valueBlocks;
    std::vector<std::unique_ptr<Constraint[]>> constraintBlocks;
    std::vector<std::unique_ptr<ConstraintSpec[]>> specBlocks;
    std::vector<std::unique_ptr<ObjectClass>> classes;
    std::vector<std::unique_ptr<Assignment>> assignments;
    std::vector<std::unique_ptr<Module>> modules;
    std::size_t types = 0; /* used in the last block of each */
    std::size_t values = 0;
    std::size_t constraints = 0;
    std::size_t specs = 0;
};

Type *newType(Arena &arena, TypeKind kind, Place place);
Value *newValue(Arena &arena, ValueKind kind, Place place);
Constraint *newConstraint(Arena &arena, ConstraintKind kind, Place place);
ConstraintSpec *newConstraintSpec(Arena &arena, Place place);

} // namespace asntree
