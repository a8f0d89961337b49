#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/i64.h"
#include "base/text.h"

/* The records of a syntax tree, as they are held in memory, and the numbers that stand in them.

   Records of a kind are numbered from 1; 0 means none. A number refers to the records of one
   module; a reference that leaves the module has a module number beside it: 1 is the module itself,
   n from 2 on the module that its MNode number n describes. */

using RecNr = std::int32_t;

enum RecKind : int {
    REC_MNODE = 0,
    REC_TNODE = 1,
    REC_VNODE = 2,
    REC_TAG = 3,
    REC_SUB = 4,
    REC_TED = 5,
    REC_SNODE = 6,
    REC_STRI8 = 7,
    REC_STRI16 = 8,
    REC_STRI32 = 9,
    REC_KINDS = 10,
};

/* Bytes of a record in a file; for strings, of one element. */
inline constexpr int recSize[REC_KINDS] = {112, 116, 76, 16, 36, 8, 20, 1, 2, 4};

/* The version of syntax trees that is read, printed as 2.13. */
inline constexpr int TREE_VERSION = 213;
/* This string number stands for the empty text and has no record. */
inline constexpr RecNr EMPTY_STRI = 0x7FFFFFFA;
/* Elements of a string record, the ending zero included. */
inline constexpr int MAX_STRI_LENGTH = 32001;
/* The module that has no file; a reference into it ends there. */
inline constexpr const char *PREDEFINED_MODULE = "ISO8824";
/* Longest text of an option. */
inline constexpr std::size_t MAX_OPTION_LENGTH = 512;

struct TimeStamp {
    std::int16_t version = 0;     /* major * 100 + minor */
    std::int16_t treeVersion = 0; /* the one that is printed */
    std::int32_t date = 0;        /* year * 10000 + month * 100 + day */
    std::int32_t time = 0;        /* hour * 10000 + minute * 100 + second */
};

/* Record 1 describes the module, each later one an import. */
struct MNode {
    TimeStamp stamp;
    RecNr moduleName = 0; /* string numbers */
    RecNr filePrefix = 0;
    RecNr firstTNode = 0; /* heads of the definition lists */
    RecNr firstVNode = 0;
    RecNr reservedVNode = 0;
    RecNr moduleValue = 0;
    std::array<std::int32_t, REC_KINDS> counts{};
    std::uint8_t exportsMode =
        0; /* 0: all definitions are visible to others; 1, 2: the marked ones */
    std::uint8_t importMark = 0; /* high half nonzero: exports are followed through this import */
    std::uint8_t reservedMark = 0;
    RecNr sourceDirectory = 0; /* string numbers */
    RecNr sourceFileName = 0;
    std::int32_t nrOfEntryTypes = 0;
    std::int32_t nrOfVisibleTypes = 0;
    std::int32_t nrOfObjects = 0;
    std::int32_t nrOfObjectSets = 0;
    RecNr tedFirst = 0; /* the module's options */
    RecNr tedLast = 0;
};

/* Kinds of types; values use the same numbers. */
enum MainType : int {
    TYP_BOOLEAN = 0,
    TYP_INTEGER,
    TYP_ENUM,
    TYP_REAL,
    TYP_BITSTR,
    TYP_OCTSTR,
    TYP_NULL,
    TYP_SEQ,
    TYP_SEQOF,
    TYP_SET,
    TYP_SETOF,
    TYP_CHOICE,
    TYP_ANY,
    TYP_EMB_PDV,
    TYP_OBJID,
    TYP_NUMSTR,
    TYP_PRISTR,
    TYP_TELSTR,
    TYP_VIDSTR,
    TYP_VISSTR,
    TYP_IA5STR,
    TYP_GRASTR,
    TYP_GENSTR,
    TYP_BMPSTR,
    TYP_UNISTR,
    TYP_CHASTR,
    TYP_GENTIME,
    TYP_UTCTIME,
    TYP_EXTERNAL_1990,
    TYP_EXTERNAL_1994,
    TYP_OBJDESCR,
    TYP_INSTANCE_OF,
    TYP_SYNONYM,
    TYP_EXTENSION_MARKER,
    TYP_SELECTION,
    TYP_FIELDLIST,
    TYP_OPEN,
    TYP_CLASS,
    TYP_TYPE_ID,
    TYP_ABSTR_STX,
    TYP_NONE,
    TYP_COUNT,
    TYP_INVALID = 41, /* never in a file: an endpoint that could not be found */
};

/* How a value is held in generated C. */
enum ValueForm : int {
    VF_NONE = 0,
    VF_BOOL,
    VF_UI8,
    VF_UI16,
    VF_UI32,
    VF_UI64,
    VF_I8,
    VF_I16,
    VF_I32,
    VF_I64,
    VF_REAL32,
    VF_REAL64,
    VF_REAL128,
    VF_STAS0,
    VF_STAS8,
    VF_STAS16,
    VF_STAS,
    VF_DYNS0,
    VF_DYNS8,
    VF_DYNS16,
    VF_DYNS,
    VF_LIST,
    VF_FRM,
    VF_NULL,
    VF_STRU,
    VF_ANY,
    VF_EMB_PDV,
    VF_OBJI,
    VF_COMT,
    VF_EXTERNAL_1990,
    VF_EXTERNAL_1994,
    VF_OPEN,
    VF_BMPSTR0,
    VF_BMPSTR8,
    VF_BMPSTR16,
    VF_BMPSTR,
    VF_COUNT,
};

/* Status of a TNode in the list that it stands in. */
enum CompStatus : int {
    TCS_PARAM_HEAD = -5, /* head of a parameterised definition, as reached from an instantiation */
    TCS_MANDATORY = 0,
    TCS_OPTIONAL,
    TCS_COMPOF,
    TCS_CHOICE,
    TCS_MULTIPLE,
    TCS_HEADER,
    TCS_FORMAL,
};

/* Status of a VNode: a definition of the module, or an element of some other list. */
enum : int { VCS_DEFINITION = 2 };

/* Bits of TNode.optionBits, by number. */
enum TypeOption : int {
    OPT_EMBEDDED_TEXT = 1, /* the TedRec range holds embedded text lines */
    OPT_BIT_2 = 2,         /* speaks of the record alone; cleared in a handle's copy */
    OPT_NAMING = 3,        /* the TedRec range holds naming overrides */
    OPT_SKIPPED = 5,
    OPT_HOME = 6,              /* held as an ASNHOME member */
    OPT_POINTER = 7,           /* held through a pointer */
    OPT_COMPS_AS_POINTERS = 8, /* components are held through pointers: no control member */
    OPT_COMPS_POINTER = 9,     /* components take OPT_POINTER */
    OPT_FRAME = 10,
    OPT_LIST_HOME_STORED = 11, /* on a list type it becomes OPT_LIST_HOME */
    OPT_LIST_HOME = 12,        /* elements live in list items */
    OPT_DYNAMIC_ARRAY = 13,    /* a list in format VF_STRU is a dynamic array */
    OPT_NORMALISE_TRUE = 14,   /* a BOOLEAN that is true becomes 0xFF */
    OPT_NEAR = 15,             /* pointers to the member are near pointers */
    OPT_SAVE_EXTENSIONS = 17,  /* unknown components of the extension marker are kept */
};

inline constexpr std::uint32_t optionMask(TypeOption option) {
    return 1u << option;
}

/* Bits of TNode.nodeFlags. */
enum NodeFlag : std::uint32_t {
    NODE_EXPORTED = 1u << 1,
    NODE_SET = 1u << 3, /* a value set, or an object set if the type under it is a class */
    NODE_VARIABLE_TYPE_FIELD = 1u << 5,
};

/* Bits of TNode.typeFlags. */
enum TypeFlag : std::uint16_t {
    TYPE_HAS_OPTIONAL = 0x001,
    TYPE_HAS_UNTAGGED = 0x008, /* an untagged CHOICE or open type stands among the components */
    TYPE_RECURSIVE = 0x020,
    TYPE_HAS_MANDATORY = 0x040,
    TYPE_EXTENSIBLE = 0x080,
    TYPE_AUTOMATIC_TAGS = 0x100,
    TYPE_INSTANTIATED = 0x200,           /* set in handles only */
    TYPE_TOP_LEVEL_INSTANTIATED = 0x400, /* set in handles only */
    TYPE_IGNORABLE = 0x800,
};

/* TNode.entryFlags: this bit marks an entry type, the bits below it the functions that it gets. */
inline constexpr std::uint8_t ENTRY_TYPE_FLAG = 0x40;

struct TypeOptions {
    std::uint8_t definiteLength = 0; /* 0 indefinite, 1 definite, 255 not set here */
    std::uint8_t skipKind = 0;       /* 0 ignore, 1 skip call-back */
    std::uint32_t sizeLimit = 0;     /* 0: none */
    std::uint8_t sizeLimitMode = 0;  /* 0: extra elements are ignored, 1: they are an error */
};

inline constexpr std::uint8_t LENGTH_FORM_NOT_SET = 255;
/* TNode.refModule of a field list that every synonym walk goes through. */
inline constexpr std::int32_t FIELDLIST_ALWAYS_FOLLOWED = -2;

/* A type, component, class, class field, value set or object set. */
struct TNode {
    RecNr nameIdx = 0;   /* string number; negative in a value field of a class; 0 nameless */
    RecNr parentRec = 0; /* 0: stands at the top level of a definition */
    std::int32_t lineNr = 0;
    std::int32_t compStatus = 0; /* CompStatus */
    RecNr defaultValue = 0;
    RecNr next = 0;
    RecNr constraintRec = 0;
    RecNr firstTagRec = 0;
    std::uint32_t optionBits = 0; /* TypeOption */
    std::uint32_t nodeFlags = 0;  /* NodeFlag */
    RecNr tedFirst = 0;
    RecNr tedLast = 0;
    std::int16_t stamp = 0; /* work field of the generators; overwritten when a tree is loaded */
    std::uint8_t mainType = 0;
    std::uint8_t valueFieldCode = 0;   /* ValueForm of the value */
    std::uint8_t controlFieldCode = 0; /* ValueForm of its control member, 0 if it has none */
    std::uint16_t typeFlags = 0;       /* TypeFlag */
    std::uint8_t entryFlags = 0;
    std::uint8_t entryCategories = 0;
    TypeOptions typeOptions;
    std::int16_t nrOfComps = 0;
    std::int32_t refModule = 0;
    RecNr refRecord = 0; /* meaning by mainType */
    RecNr namedNumbersRec = 0;
    std::int32_t skipInWalk = 0;
    RecNr auxRecord = 0; /* first SNode of a path */
    sint64 lowerEndpoint;
    sint64 upperEndpoint;
};

/* Bits of VNode.valueFlags. */
enum ValueFlag : std::uint8_t {
    VALUE_EXPORTED = 0x01,
    VALUE_SET = 0x02,
    VALUE_NAMING = 0x08,    /* the TedRec range may hold naming overrides */
    VALUE_INHERITED = 0xF2, /* what a handle takes over along a synonym chain */
};

/* A value, object, named number or list element. */
struct VNode {
    RecNr nameIdx = 0;
    std::int32_t compStatus = 0;
    std::uint8_t valueFlags = 0;
    std::int32_t lineNr = 0;
    RecNr governorRec = 0;
    std::int32_t governorModule = 0;
    RecNr next = 0;
    std::int16_t stamp = 0;
    std::uint8_t valueKind = 0; /* MainType */
    std::int32_t refModule = 0;
    RecNr refRecord = 0; /* meaning by valueKind */
    RecNr tedFirst = 0;
    RecNr tedLast = 0;
    std::array<std::uint8_t, 12> value{}; /* as in the file; read with the functions of values.h */
    std::int32_t skipInWalk = 0;
    RecNr auxRecord = 0;
};

enum TagClass : int { TAG_UNI = 0, TAG_APP, TAG_CTX, TAG_PRV, TAG_CLASS_NONE = 5 };
enum TagMode : int { TAG_MODE_EXPLICIT = 1 };

struct TagRec {
    std::int32_t tagClass = 0;
    std::int32_t tagMode = 0; /* 1: the next inner tag stays; else it is replaced by this one */
    std::int32_t tagNumber = 0;
    RecNr next = 0;
};

enum SubKind : int {
    SUB_UNION = 1,
    SUB_INTERSECTION = 2,
    SUB_CATENATION = 3,
    SUB_EXCEPT = 4,
    SUB_ALL_EXCEPT = 5,
    SUB_RANGE = 10,
    SUB_ALPHABET = 11,
    SUB_SIZE = 12,
    SUB_SINGLE_VALUE = 13,
    SUB_INCLUDES = 14,
    SUB_WITH_COMPONENT = 15,
    SUB_WITH_COMPONENTS = 16,
    SUB_TABLE = 17,
    SUB_USER_DEFINED = 18,
    SUB_COMPONENT_RELATION = 19,
    SUB_EXCEPTION = 20,
    SUB_TYPE_CONSTRAINT = 21,
    SUB_EXTENDED_VALUE_SET = 22,
    SUB_PASSED_OVER = 24,
};

/* Bits of SubRec.subFlags. */
enum SubFlag : std::uint8_t {
    SUB_EXCEPTION_FOLLOWS = 0x01,
    SUB_FULL_SPECIFICATION = 0x02,
    SUB_PRESENT = 0x04,
    SUB_ABSENT = 0x08,
    SUB_OPTIONAL = 0x10,
    SUB_LOWER_CLOSED = 0x20,
    SUB_UPPER_CLOSED = 0x40,
};

/* One node of the tree of a constraint. */
struct SubRec {
    std::uint8_t subKind = 0;
    std::uint8_t subFlags = 0;
    std::int32_t compModule = 0;
    RecNr compTNode = 0;
    RecNr next = 0;
    RecNr first = 0;  /* meaning by subKind */
    RecNr second = 0; /* of a range: VNode of the upper endpoint, 0 for MAX */
};

enum TedKind : int { TED_REMOVED = 0, TED_TEXT = 1, TED_BACKEND_OPTION = 2, TED_OPTION = 3 };

/* One option or line of embedded text. */
struct TedRec {
    std::uint8_t tedKind = 0;
    RecNr tedText = 0; /* string number */
};

/* Record numbers of options; 0, 0 for none. */
struct TedRange {
    RecNr first = 0;
    RecNr last = 0;
};

/* One step of a reference path; the last one says where it ends. */
struct SNode {
    std::int32_t refModule = 0;
    RecNr refRecord = 0; /* above 0 a TNode, else the negated number of a VNode */
    RecNr next = 0;
};

/* State of a ModRec. */
enum ModState : std::uint8_t {
    MOD_NAMED = 0, /* no attempt was made to read the tree */
    MOD_FAILED = 1,
    MOD_LOADED = 2,
    MOD_PREDEFINED = 3, /* no file, no records, and no walk visits it */
};

struct ModRec;
struct GlobalOptions; /* options/ketracnf.h */
struct BEModMetaRec;  /* the generator's */
struct BETypeInfo;    /* the generator's */
struct AsnModule;
struct ObjClassList;  /* the model's */

/* One import of a module. */
struct PicRec {
    const char *picName = nullptr; /* interned */
    std::int32_t picNr = 0; /* MNode number: the module number of references */
    ModRec *picMod = nullptr; /* null after a failure */
    std::uint8_t picMark = 0;
};

/* A list of imports in the order in which they were added. */
struct PicList {
    std::vector<std::unique_ptr<PicRec>> recs;
    auto begin() const { return recs.begin(); }
    auto end() const { return recs.end(); }
    std::size_t size() const { return recs.size(); }
};

/* Definitions by name. It grows along the definition list as far as lookups have walked so far. */
struct DefinitionIndex {
    std::unordered_map<std::string_view, RecNr> byName; /* the first definition of each name */
    RecNr next = 0;                                     /* where the walk goes on; 0 at the end */
    bool begun = false;
    std::size_t walked = 0;
};

/* What is worked out once for a TNode: bit n of `known` says that bit n of `answers` is valid. */
struct TypeInfoCache {
    std::uint32_t known = 0;
    std::uint32_t answers = 0;
    BETypeInfo *generatorInfo = nullptr; /* owned by the generator */
};

/* The numbers of a module's texts of eight bits, for those that are added behind the tree. */
struct StriIndex {
    std::unordered_map<const char *, RecNr> numbers; /* by interned text; of equal ones the last */
    std::size_t filled = 0;                          /* so many texts are in it */
};

/* What is known of one module. Never freed before the end of the run, unless it stayed unread. */
struct ModRec {
    Text moduleName; /* before the tree is read, as an option or an import gave it */
    TimeStamp stamp;
    Text filePrefix; /* of output file names */
    Text genPrefix;  /* of generated identifiers; names the tree file and finds the record */
    std::int32_t moduleValue = 0;
    std::uint8_t state = MOD_NAMED;
    std::shared_ptr<AsnModule> handle; /* how the model shows it; null before use */

    std::vector<MNode> mNodes; /* record n is element n - 1 */
    std::vector<TNode> tNodes;
    std::vector<VNode> vNodes;
    std::vector<TagRec> tagRecs;
    std::vector<SubRec> subRecs;
    std::vector<TedRec> tedRecs;
    std::vector<SNode> sNodes;
    std::vector<const char *> stri8; /* interned */
    std::vector<const char16_t *> stri16;
    std::vector<const char32_t *> stri32;
    StriIndex striIndex;

    std::shared_ptr<GlobalOptions> options; /* made with the record */
    PicList imports;                  /* in MNode order */
    RecNr firstType = 0;
    RecNr firstValue = 0;
    RecNr reservedVNode = 0;
    std::uint8_t exportsMode = 0;
    std::uint8_t importMark = 0;
    std::uint8_t reservedMark = 0;
    std::shared_ptr<BEModMetaRec> metaRec; /* the generator's record of the module */
    TedRange cmdOptions;             /* the options of the command line */
    std::optional<bool> circularImports; /* once it was asked for (model/imports.cpp) */
    std::vector<TypeInfoCache> typeInfoCache; /* by TNode number minus 1; one element to spare */
    std::shared_ptr<const ObjClassList> objectOrder; /* the objects, class by class; null before use */
    int listPlace = 0;           /* place in modRecList; final when all trees are read */
    DefinitionIndex typesByName; /* filled by findTypeById and findValueById */
    DefinitionIndex valuesByName;
};
