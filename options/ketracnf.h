#pragma once

#include <array>
#include <vector>

#include "options/naming.h"
#include "store/ketradef.h"

/* The options of a module. Every module has its own block: defaults, then what its tree says, then
   what the command line says. Only values that somebody reads are kept. */

/* The category of a generated file: its slot in the output layer and its place in a module's
   generation choices. The functions that belong together lie six places apart. */
enum FileCategory : int {
    CAT_NONE = 0,
    CAT_TYP,
    CAT_DEF,
    CAT_TAB,
    CAT_TAB_EXT,
    CAT_ENC,
    CAT_ENC_EXT,
    CAT_ENC_U, /* never opened, as all that end so */
    CAT_ASK,
    CAT_ASK_EXT,
    CAT_ASK_U,
    CAT_DEC,
    CAT_DEC_EXT,
    CAT_DEC_U,
    CAT_PRI,
    CAT_PRI_EXT,
    CAT_PRI_U,
    CATEGORIES,
};
/* From a category of encoding to that of decoding, from asking to printing. */
inline constexpr int CAT_PAIR_DISTANCE = 6;

/* What a module chose for a category. */
enum GenChoice : std::uint8_t { GEN_NONE = 0, GEN_COMBINED = 1, GEN_SEPARATE = 2 };

enum DefinitionCategory : std::uint8_t {
    DEFCAT_STAND_ALONE = 0,
    DEFCAT_MORLA_SERVICE = 1,
    DEFCAT_MORLA_PROTOCOL = 2,
    DEFCAT_MORLA_IOS = 3,
    DEFCAT_OTHER = 255,
};

/* Values of "GENERATE=". */
enum GenerateFunctions : std::uint8_t {
    GENERATE_NONE = 0,
    GENERATE_ENTRIES = 1,
    GENERATE_VISIBLES = 2,
    GENERATE_BOTH = 3,
};

/* Bits of "C-GENERATION=". */
enum CGenerationBit : int {
    CGEN_OLD = 0,
    CGEN_REAL = 1,
    CGEN_COMMONTIME = 2,
    CGEN_EXTERNAL = 3,
    CGEN_SIGNED_CONTROL_MEMBER = 4,
    CGEN_ANY_FUNCTIONS = 5,
};

/* Values of "DEFINITELEN=". */
enum DefiniteLength : std::uint8_t {
    LENGTH_INDEFINITE = 0,
    LENGTH_DEFINITE = 1,
    LENGTH_DEFINITE_INDEFINITE_COMPS = 2,
    LENGTH_DEFINITE_DEFINITE_COMPS = 3,
};

/* Values of "SETN=". */
enum NamedNumberFunctions : std::uint8_t {
    SETN_NONE = 0,
    SETN_NAMED_NUMBERS = 1,
    SETN_NAMED_NUMBERS_AND_BITS = 2,
};

/* "DECIMALS=" was not given: REAL values are binary. */
inline constexpr std::uint8_t DECIMALS_BINARY = 255;
inline constexpr int MAX_ALTERNATIVES = 8;
inline constexpr int DEFAULT_PREFIX_LENGTH = 5;

struct GlobalOptions {
    const char *sourceDirectory = ""; /* of the ASN.1 text; from the header */
    const char *sourceFileName = "";
    Text info;            /* "INFO="; empty if not given, as all texts here */
    Text codeDirectory;   /* "C=", with its "/" */
    Text headerDirectory; /* "H=", with its "/" */
    std::array<std::uint8_t, CATEGORIES> genArr{};
    std::uint8_t prefixLength = 0; /* characters of a file prefix; 0 before it is known */
    std::uint8_t definitionCategory = DEFCAT_STAND_ALONE;
    /* The values below have their defaults in the table of options. */
    std::uint8_t pushPath = 0;
    std::uint8_t ansiC = 0;
    std::uint8_t altTab = 0;
    std::uint8_t optVars = 0;
    std::uint8_t omitSkippedFields = 0;
    std::uint8_t decimals = 0;
    std::uint8_t nameLen = 0;
    std::uint8_t generate = 0; /* GenerateFunctions */
    std::uint8_t memory = 0;
    std::uint8_t definiteLen = 0; /* DefiniteLength */
    std::uint8_t zeroHome = 0;
    std::uint8_t tDefs = 0;
    std::uint8_t cDefs = 0;
    std::uint8_t tabO = 0;
    std::uint8_t setN = 0; /* NamedNumberFunctions */
    std::uint8_t altMax = 0;
    std::uint8_t cGeneration = 0;                         /* CGenerationBit */
    std::array<std::uint8_t, MAX_ALTERNATIVES> altEncF{}; /* sets of entry categories */
    std::array<std::uint8_t, MAX_ALTERNATIVES> altDecF{};
    Text tabRef;
    Text combine;                   /* "COMBINE="; after checkCombinedModules its first word */
    std::vector<ModRec *> combined; /* modules that "COMBINE=" names */

    std::array<FixChain, FIX_KINDS> fix; /* by kind minus 1 */
    FixChain entries;

    std::int32_t nrOfEntryTypes = 0; /* from the header */
    std::int32_t nrOfVisibleTypes = 0;
    std::int32_t nrOfObjects = 0;
    std::int32_t nrOfObjectSets = 0;
    TedRange tedRange; /* the tree's options, from the header */
    TedRange comments; /* first and last record of a comment option */
};

/* Sets everything to its default. The prefix length is that of the whole run, which the first block
   that is initialised gives. Stands in optiontable.cpp, as the defaults do. */
void initMetaRec(GlobalOptions *options);

/* The generation choices of a definition category; some leave positions as they are. */
void initGenArr(GlobalOptions *options, int definitionCategory);

inline bool isMorlaCategory(int category) {
    return category >= DEFCAT_MORLA_SERVICE && category <= DEFCAT_MORLA_IOS;
}
