#pragma once

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "asntree/records.h"

/* Builds a syntax tree in memory and writes it as a ".stx" file.

   A tree is a set of record lists that may be filled by hand, and the functions below that make
   records for the common shapes of ASN.1, so that a test reads much as the module that it builds:

       TreeWriter w("Post_Office", "post");
       w.define("Parcel", w.sequence({
           w.comp("weight", w.integer(0, 255)),
           w.comp("label", w.string(TYP_IA5STR, 1, 8)).implicit(0).optional(),
           w.marker()}));
       w.define("Parcels", w.listOf(TYP_SEQOF, w.ref("Parcel"))).entry();
       w.save("stx/post.stx");

   Names stand in a tree with "_" for "-". What a compiler would work out is worked out by finish():
   references by name, value forms and control members that were not given, numbers of components,
   flags, endpoints, ranges of options, counts of the header. A field that a test sets by hand after
   finish() stays as it set it.

   A call makes its records at once, and C++ doesn't say in which order the arguments of one
   function are worked out: where the bytes of a tree matter, a call has at most one argument that
   makes records (elements of a braced list are worked out from left to right, as are calls that are
   chained with "."). */

struct TreeWriter;

inline constexpr std::int64_t MIN_VALUE = std::numeric_limits<std::int64_t>::min();
inline constexpr std::int64_t MAX_VALUE = std::numeric_limits<std::int64_t>::max();

/* Functions of an entry type: bits of TNode.entryFlags. */
enum EntryFunction : std::uint8_t {
    ENTRY_ENCODE = 1u << 2,
    ENTRY_DECODE = 1u << 3,
    ENTRY_ASK = 1u << 4,
    ENTRY_PRINT = 1u << 5,
    ENTRY_ALL_FUNCTIONS = ENTRY_ENCODE | ENTRY_DECODE | ENTRY_ASK | ENTRY_PRINT,
};

/* A named number, named bit or item of an enumeration; `marker` for the extension marker. */
struct NamedNumber {
    NamedNumber(const char *itemName, std::int64_t itemNumber)
        : name(itemName), number(itemNumber) {}
    static NamedNumber extension() { return NamedNumber(nullptr, 0); }
    const char *name; /* null: the extension marker */
    std::int64_t number;
};

/* A TNode of a tree: a type, component, class, class field or set. The functions change the record
   and return the same handle. */
struct TypeNode {
    TreeWriter *tree = nullptr;
    RecNr nr = 0;

    TNode &rec() const;
    TNode *operator->() const { return &rec(); }

    /* Appends a tag behind those that the node has, so that tags are given as ASN.1 writes them. */
    TypeNode tag(TagClass tagClass, int number, bool isExplicit) const;
    TypeNode implicit(int number) const { return tag(TAG_CTX, number, false); }
    TypeNode explicitly(int number) const { return tag(TAG_CTX, number, true); }
    TypeNode application(int number) const { return tag(TAG_APP, number, false); }
    TypeNode automaticTags() const; /* for the components of this structure */

    TypeNode optional() const;
    TypeNode defaultTo(RecNr value) const; /* a VNode, which gets this node as its governor */
    TypeNode extensible() const;           /* a constraint or named list with "..." */

    /* How the value is held in C, and its control member. Without them finish() chooses. */
    TypeNode form(ValueForm value, ValueForm control = VF_NONE) const;
    TypeNode asList() const;  /* LIST */
    TypeNode asArray() const; /* static array */

    TypeNode option(TypeOption bit) const;
    TypeNode flag(TypeFlag bit) const;
    TypeNode skipped(int skipKind = 0) const;
    TypeNode sizeLimit(std::uint32_t limit, bool tooLongIsError) const;
    TypeNode lengthForm(std::uint8_t form) const;
    /* Sets the record of the constraint; a second one makes a catenation. */
    TypeNode constrained(RecNr sub) const;
    TypeNode endpoints(std::int64_t low, std::int64_t high) const;
    TypeNode line(int number) const;

    /* An entry type of the module, with the functions and categories (bit n: category n) given. */
    TypeNode entry(int functions = ENTRY_ALL_FUNCTIONS, int categories = 1) const;
    TypeNode exported(bool is = true) const;
    /* No walk over the module's definitions meets it. */
    TypeNode hidden() const;

    /* Back-end option ("-X=...", or "-//..." for a comment), naming override ("-NAME=..."), and a
       line of embedded text for a place ("t1", "t2" ...). */
    TypeNode backendOption(std::string_view text) const;
    TypeNode naming(std::string_view text) const;
    TypeNode text(std::string_view place, std::string_view line) const;
};

/* A VNode: a value, named number, object, field value or element of a value. */
struct ValueNode {
    TreeWriter *tree = nullptr;
    RecNr nr = 0;

    VNode &rec() const;
    VNode *operator->() const { return &rec(); }
    operator RecNr() const { return nr; }

    ValueNode named(std::string_view name) const;
    ValueNode governedBy(TypeNode type) const;
    ValueNode exported(bool is = true) const;
    ValueNode naming(std::string_view text) const;
    ValueNode line(int number) const;
};

/* One component in WITH COMPONENTS. */
struct ComponentConstraint {
    TypeNode component;
    RecNr sub = 0;             /* 0: none beside presence */
    std::uint8_t presence = 0; /* SUB_PRESENT, SUB_ABSENT, SUB_OPTIONAL or 0 */
    std::int32_t moduleNr = 1; /* of the component */
};

struct TreeWriter : asntree::Tree {
    /* A module without definitions or options, compiled at a fixed moment. */
    TreeWriter(std::string_view moduleName, std::string_view filePrefix);
    TreeWriter(const TreeWriter &) = delete;
    TreeWriter &operator=(const TreeWriter &) = delete;

    /* As those of Tree, with notes beside the records. */
    RecNr addT(const TNode &node);
    RecNr addV(const VNode &node);

    /* --- the module --- */

    /* Appends to the definition list, exported unless exportsMode says otherwise. */
    TypeNode define(std::string_view name, TypeNode type);
    ValueNode defineValue(std::string_view name, TypeNode governor, ValueNode value);
    /* The definition with this name; nr 0 if there is none. */
    TypeNode findType(std::string_view name) const;
    ValueNode findValue(std::string_view name) const;
    /* EXPORTS: only what is marked as exported is visible. */
    void exportsMarked();
    /* The module number of an import; a module is imported once. `follow`: others reach what it
       exports through this module. */
    std::int32_t import(const TreeWriter &other,
                        bool follow = true); /* `other` must outlive this */
    std::int32_t import(std::string_view moduleName, std::string_view filePrefix,
                        bool follow = true);
    void source(std::string_view directory, std::string_view fileName);
    /* General option ("-PREFIX=abc") and back-end option of the module. */
    void option(std::string_view text);
    void backendOption(std::string_view text);

    /* --- types; none of these is in a list yet --- */

    TypeNode type(MainType mainType); /* any kind, with the form that it has without constraint */
    TypeNode boolean() { return type(TYP_BOOLEAN); }
    TypeNode null() { return type(TYP_NULL); }
    TypeNode integer() { return type(TYP_INTEGER); }
    TypeNode integer(std::int64_t low, std::int64_t high); /* MIN_VALUE, MAX_VALUE: no bound */
    TypeNode numbered(TypeNode type, std::initializer_list<NamedNumber> numbers);
    TypeNode enumerated(std::initializer_list<NamedNumber> items);
    TypeNode real() { return type(TYP_REAL); }
    /* Bit, octet and character strings. */
    TypeNode string(MainType mainType) { return type(mainType); }
    TypeNode string(MainType mainType, std::int64_t low, std::int64_t high);
    TypeNode any() { return type(TYP_ANY); }
    /* ANY DEFINED BY; `classifier` is a component that was made before. Entries of its table follow
       by anyEntry. */
    TypeNode anyDefinedBy(TypeNode classifier);
    void anyEntry(TypeNode any, std::string_view valueName, std::string_view typeName);
    TypeNode openType() { return type(TYP_OPEN); }

    TypeNode sequence(std::initializer_list<TypeNode> comps);
    TypeNode set(std::initializer_list<TypeNode> comps);
    TypeNode choice(std::initializer_list<TypeNode> comps);
    TypeNode structure(MainType mainType, const std::vector<TypeNode> &comps);
    TypeNode comp(std::string_view name, TypeNode type);
    TypeNode componentsOf(TypeNode reference);
    TypeNode marker(); /* "..." among components */
    TypeNode listOf(MainType mainType, TypeNode element);
    TypeNode listOf(MainType mainType, TypeNode element, std::int64_t low, std::int64_t high);

    /* A reference to a definition of this tree, or of an imported one, which may be made later. */
    TypeNode ref(std::string_view name);
    TypeNode ref(const TreeWriter &other, std::string_view name);
    TypeNode refTo(std::int32_t moduleNr, RecNr record);
    /* `alternative < Choice`, a definition of this tree or another that was made before. */
    TypeNode selection(std::string_view alternative, TypeNode choice);
    /* The head of a parameterised definition with its parameters replaced, and a type that is an
       instance of it. The name is that of the parameterised definition. */
    TypeNode parameterisedHead(std::string_view name, TypeNode type);
    TypeNode instance(TypeNode head);
    /* A type of a governor or the like, which stands in no list. */
    TypeNode anonymous(TypeNode type);

    /* --- values; without name and list until put somewhere --- */

    ValueNode value(MainType kind);
    ValueNode boolValue(bool is);
    ValueNode intValue(std::int64_t number);
    ValueNode realValue(std::int64_t mantissa, int base, int exponent);
    ValueNode bitsValue(std::string_view digits); /* '0101'B */
    ValueNode hexValue(std::string_view digits);  /* '0AF'H */
    ValueNode textValue(MainType kind, std::string_view text);
    ValueNode text16Value(std::u16string_view text);
    ValueNode text32Value(std::u32string_view text);
    ValueNode timeValue(MainType kind, std::string_view text);
    ValueNode nullValue() { return value(TYP_NULL); }
    ValueNode valueRef(std::string_view name);
    /* An item or named number of a type of this tree, or of what it refers to. */
    ValueNode itemOf(std::string_view typeName, std::string_view itemName);
    ValueNode valueRefTo(std::int32_t moduleNr, RecNr record);
    /* A value that has a list of others: components, elements, segments, named bits, arcs. */
    ValueNode listValue(MainType kind, std::initializer_list<ValueNode> parts);
    ValueNode listValue(MainType kind, const std::vector<ValueNode> &parts);
    /* OBJECT IDENTIFIER; an arc is an intValue, named or not. */
    ValueNode objectIdentifier(std::initializer_list<ValueNode> arcs);

    /* --- constraints: numbers of SubRecs --- */

    RecNr range(std::int64_t low,
                std::int64_t high); /* closed, MIN_VALUE and MAX_VALUE as MIN, MAX */
    RecNr rangeOf(RecNr low, RecNr high, std::uint8_t flags); /* VNodes, 0 for MIN and MAX */
    RecNr single(RecNr value);
    RecNr sub(SubKind kind,
              std::initializer_list<RecNr> parts = {}); /* operators, SIZE, table ... */
    RecNr size(RecNr inner) { return sub(SUB_SIZE, {inner}); }
    RecNr size(std::int64_t low, std::int64_t high) { return size(range(low, high)); }
    RecNr alphabet(RecNr inner) { return sub(SUB_ALPHABET, {inner}); }
    RecNr includes(TypeNode contained);
    RecNr withComponents(std::initializer_list<ComponentConstraint> parts, bool full = false);

    /* --- classes, objects, sets --- */

    TypeNode objectClass(std::initializer_list<TypeNode> fields);
    TypeNode typeField(std::string_view name);
    TypeNode valueField(std::string_view name, TypeNode governor); /* also objects, by a class */
    TypeNode setField(std::string_view name, TypeNode governor);
    /* CLASS.&field as a type; the last name is the target. */
    TypeNode classField(TypeNode classRef, std::initializer_list<TypeNode> path);
    /* An object: each part is a value named by fieldValue or fieldType. */
    ValueNode object(TypeNode objClass, std::initializer_list<ValueNode> parts);
    ValueNode fieldValue(TypeNode field, ValueNode value);
    ValueNode fieldType(TypeNode field, TypeNode type);
    /* A value set or an object set as a definition; its elements stand in the constraint. */
    TypeNode defineSet(std::string_view name, TypeNode governor, RecNr elements);

    /* --- writing --- */

    /* Works out what a compiler would; the second call does nothing. */
    void finish();
    /* The whole file; finishes the tree first. */
    std::string bytes();
    /* The same to a file; false if that fails. */
    bool save(const std::string &path);

    /* --- what the functions of the tree writer remember beside the records --- */

    struct Option {
        std::uint8_t kind;
        RecNr text;
    };
    struct TypeNotes {
        std::string refName; /* reference to resolve, with the tree that has it */
        const TreeWriter *refTree = nullptr;
        bool formGiven = false;
        bool endpointsGiven = false;
        bool arrayWanted = false; /* a list as array, whatever its size */
        bool listWanted = false;  /* a list that stays one, however short */
        std::vector<Option> options;
    };
    struct ValueNotes {
        std::string refName;
        std::string refType; /* the type of an item, empty for a reference to a definition */
        std::vector<Option> options;
    };
    std::vector<TypeNotes> typeNotes; /* parallel to tNodes */
    std::vector<ValueNotes> valueNotes;
    std::vector<Option> moduleOptions;
    RecNr lastDefinition = 0; /* ends of the definition lists */
    RecNr lastValueDefinition = 0;
    RecNr plainInteger = 0; /* hidden INTEGER that governs sizes, made when first asked for */
    bool finished = false;
    std::unordered_map<std::string, RecNr> typeNames;
    std::unordered_map<std::string, RecNr> valueNames;
    std::map<std::string, std::int32_t, std::less<>> importNumbers;
    std::map<std::int32_t, const TreeWriter *> importedTrees; /* by module number, where known */
};

/* --- changes of a finished file, as for broken trees --- */

/* Where record `nr` of a kind starts in a file whose counts are sound; for nr one behind the last,
   where the records of the kind end. */
std::size_t recordOffset(const std::string &file, RecKind kind, RecNr nr);
/* All places where a record starts or ends, in ascending order. */
std::vector<std::size_t> recordBoundaries(const std::string &file);
/* Numbers in the file, big-endian. */
std::uint32_t peekTree(const std::string &file, std::size_t offset, int width);
void pokeTree(std::string &file, std::size_t offset, int width, std::uint64_t number);
/* The header's count of a kind. */
void pokeCount(std::string &file, RecKind kind, std::int32_t count);
