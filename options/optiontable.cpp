#include "options/optiontable.h"

#include <algorithm>
#include <cstring>

#include "options/checkers.h"
#include "options/cmdline.h"

namespace {

struct OptionRow {
    const char *name;
    bool (*check)(ModRec *module, const OptionRow &row, const char *value);
    std::uint8_t GlobalOptions::*place = nullptr; /* null: nobody reads the value */
    int min = 0;
    int max = 0;
    int preset = 0;
    const OptionWord *words = nullptr;
};

constexpr std::int32_t MAX_LIMIT = 2147483647;

constexpr OptionWord noYes[] = {{0, "NO"}, {1, "YES"}, {0, nullptr}};
constexpr OptionWord severities[] = {{0, "IGNORE"}, {1, "WARNING"}, {2, "ERROR"}, {0, nullptr}};
constexpr OptionWord generateWords[] = {{GENERATE_NONE, "none"},
                                        {GENERATE_ENTRIES, "entries"},
                                        {GENERATE_VISIBLES, "visibles"},
                                        {GENERATE_BOTH, "entries-and-visibles"},
                                        {0, nullptr}};
constexpr OptionWord lengthWords[] = {
    {LENGTH_INDEFINITE, "indefinite"},
    {LENGTH_INDEFINITE, "no"},
    {LENGTH_DEFINITE, "definite"},
    {LENGTH_DEFINITE, "yes"},
    {LENGTH_DEFINITE_INDEFINITE_COMPS, "definite-indefinitecomps"},
    {LENGTH_DEFINITE_DEFINITE_COMPS, "definite-definitecomps"},
    {0, nullptr}};
constexpr OptionWord extensionWords[] = {{0, "SKIP"}, {1, "SAVE"}, {0, nullptr}};
constexpr OptionWord namedNumberWords[] = {{SETN_NONE, "none"},
                                           {SETN_NAMED_NUMBERS, "named-numbers"},
                                           {SETN_NAMED_NUMBERS_AND_BITS, "named-numbers-and-bits"},
                                           {0, nullptr}};
constexpr OptionWord generationWords[] = {
    {GEN_NONE, "none"}, {GEN_COMBINED, "combined"}, {GEN_SEPARATE, "separate"}, {0, nullptr}};
constexpr OptionWord definitionWords[] = {{DEFCAT_STAND_ALONE, "STAND-ALONE"},
                                          {DEFCAT_MORLA_SERVICE, "MORLA-SERVICE"},
                                          {DEFCAT_MORLA_PROTOCOL, "MORLA-PROTOCOL"},
                                          {DEFCAT_MORLA_IOS, "MORLA-IOS"},
                                          {DEFCAT_OTHER, "OTHER"},
                                          {0, nullptr}};

std::uint8_t *placeOf(ModRec *module, const OptionRow &row) {
    return row.place == nullptr ? nullptr : &(module->options.get()->*row.place);
}

/* The number as the word that an option would say, if there is one. */
Text wordOf(std::uint8_t number, const OptionWord *words) {
    for (; words != nullptr && words->word != nullptr; ++words)
        if (words->value == number)
            return words->word;
    return std::to_string(number);
}

/* Forms of values */

bool anyValue(ModRec *, const OptionRow &, const char *) {
    return true;
}

template <Text GlobalOptions::*place>
bool anyText(ModRec *module, const OptionRow &, const char *value) {
    module->options.get()->*place = value;
    return true;
}

template <Text GlobalOptions::*place>
bool directoryText(ModRec *module, const OptionRow &, const char *value) {
    Text &directory = module->options.get()->*place;
    directory = value;
    if (!directory.empty() && directory.back() != '/')
        directory += '/';
    return true;
}

bool boolean(ModRec *module, const OptionRow &row, const char *value) {
    return booleOptionOK(placeOf(module, row), value);
}

bool byteNumber(ModRec *module, const OptionRow &row, const char *value) {
    return byteOptionOK(placeOf(module, row), value, row.min, row.max, row.words);
}

bool limitNumber(ModRec *, const OptionRow &row, const char *value) {
    return int32OptionOK(nullptr, value, row.min, row.max);
}

bool intSize(ModRec *, const OptionRow &, const char *value) {
    return intSizeOptionOK(nullptr, value, false);
}

bool unsignedIntSize(ModRec *, const OptionRow &, const char *value) {
    return intSizeOptionOK(nullptr, value, true);
}

bool realSize(ModRec *, const OptionRow &, const char *value) {
    return realSizeOptionOK(nullptr, value);
}

bool realLimit(ModRec *, const OptionRow &, const char *value) {
    return realLimOptionOK(value);
}

/* The range has room for years between, the standard has none. */
bool standardVersion(ModRec *, const OptionRow &row, const char *value) {
    std::int32_t year = 0;
    return int32OptionOK(&year, value, row.min, row.max) && (year == row.min || year == row.max);
}

/* In a MORLA application the number 0 is refused; the word "NO" is not. */
bool morlaByte(ModRec *module, const OptionRow &row, const char *value) {
    const int min = isMorlaCategory(module->options->definitionCategory) ? 1 : 0;
    return byteOptionOK(placeOf(module, row), value, min, row.max, row.words);
}

template <FileCategory category>
bool generationByte(ModRec *module, const OptionRow &row, const char *value) {
    return byteOptionOK(&module->options->genArr[category], value, row.min, row.max, row.words);
}

/* Table functions need tables. */
bool tableFunctions(ModRec *module, const OptionRow &row, const char *value) {
    auto &genArr = module->options->genArr;
    return byteOptionOK(&genArr[CAT_TAB_EXT], value, row.min, genArr[CAT_TAB], row.words);
}

/* Up to three fields for the categories from `first` on, each of which speaks for two files. What
   is left out at the end keeps its setting. */
template <FileCategory first>
bool generationTriple(ModRec *module, const OptionRow &row, const char *value) {
    constexpr std::size_t MAX_FIELDS = 3;
    std::array<std::uint8_t, MAX_FIELDS> choices{};
    std::size_t count = 0;
    while (*value != '\0') {
        const Text field(value, std::strcspn(value, ":"));
        if (count == MAX_FIELDS ||
            !byteOptionOK(&choices[count], field.c_str(), row.min, row.max, row.words))
            return false;
        ++count;
        value += field.size();
        if (*value == ':' && (*++value == '\0') && count == MAX_FIELDS)
            return false; /* a fourth one, although there is nothing in it */
    }
    auto &genArr = module->options->genArr;
    for (std::size_t i = 0; i < count; ++i)
        genArr[first + i] = genArr[first + CAT_PAIR_DISTANCE + i] = choices[i];
    return true;
}

bool setDefinitionCategory(ModRec *module, std::uint8_t category) {
    GlobalOptions *options = module->options.get();
    options->definitionCategory = category;
    initGenArr(options, category);
    options->memory = options->zeroHome = 1;
    return true;
}

bool definitionCategoryNumber(ModRec *module, const OptionRow &row, const char *value) {
    std::uint8_t category = 0;
    return byteOptionOK(&category, value, row.min, row.max, row.words) &&
           setDefinitionCategory(module, category);
}

/* A word; with a file prefix in front it is for that module alone. */
bool definitionCategoryWord(ModRec *module, const OptionRow &row, const char *value) {
    bool applies = true;
    if (const char *colon = std::strchr(value, ':')) {
        applies = module->filePrefix == std::string_view(value, colon);
        value = colon + 1;
    }
    std::uint8_t category = 0;
    if (isAsciiDigit(*value) || !byteOptionOK(&category, value, 0, 0, row.words))
        return false;
    return !applies || setDefinitionCategory(module, category);
}

struct GenerationWord {
    const char *word;
    unsigned set;
    unsigned clear;
};

constexpr unsigned bitMask(CGenerationBit bit) {
    return 1u << bit;
}

constexpr GenerationWord cGenerationWords[] = {
    {"OLD",
     bitMask(CGEN_OLD) | bitMask(CGEN_REAL) | bitMask(CGEN_COMMONTIME) | bitMask(CGEN_EXTERNAL) |
         bitMask(CGEN_SIGNED_CONTROL_MEMBER) | bitMask(CGEN_ANY_FUNCTIONS),
     0},
    {"REAL", bitMask(CGEN_REAL), 0},
    {"REAL-N", 0, bitMask(CGEN_REAL)},
    {"COMMONTIME", bitMask(CGEN_COMMONTIME), 0},
    {"DATETIMEZ", 0, bitMask(CGEN_COMMONTIME)},
    {"EXTERNAL", bitMask(CGEN_EXTERNAL), 0},
    {"EXTERNAL-N", 0, bitMask(CGEN_EXTERNAL)},
    {"SIGNED-CONTROL-MEMBER", bitMask(CGEN_SIGNED_CONTROL_MEMBER), 0},
    {"UNSIGNED-CONTROL-MEMBER", 0, bitMask(CGEN_SIGNED_CONTROL_MEMBER)},
    {"ANY-FUNCTIONS", bitMask(CGEN_ANY_FUNCTIONS), 0},
    {"NO-ANY-FUNCTIONS", 0, bitMask(CGEN_ANY_FUNCTIONS)},
};

bool cGeneration(ModRec *module, const OptionRow &row, const char *value) {
    unsigned bits = 0;
    while (*value != '\0') {
        const Text word(value, std::strcspn(value, ":"));
        const auto *found = std::find_if(
            std::begin(cGenerationWords), std::end(cGenerationWords),
            [&word](const auto &entry) { return strCaseComp(word.c_str(), entry.word) == 0; });
        if (found == std::end(cGenerationWords))
            return false;
        bits = (bits | found->set) & ~found->clear;
        value += word.size();
        if (*value == ':')
            ++value;
    }
    module->options.get()->*row.place = static_cast<std::uint8_t>(bits);
    return true;
}

bool combineWords(ModRec *module, const OptionRow &, const char *value) {
    std::vector<Text> words;
    if (!splitCombineOption(value, module->options->prefixLength, &words))
        return false;
    module->options->combine = value;
    return true;
}

using G = GlobalOptions;

constexpr OptionRow optionTable[] = {
    {"INFO=", anyText<&G::info>},
    {"C=", directoryText<&G::codeDirectory>},
    {"H=", directoryText<&G::headerDirectory>},
    {"COD=", generationTriple<CAT_ENC>, nullptr, 0, 2, 0, generationWords},
    {"TST=", generationTriple<CAT_ASK>, nullptr, 0, 2, 0, generationWords},
    {"TYP=", generationByte<CAT_TYP>, nullptr, 0, 1, 0, noYes},
    {"DEF=", generationByte<CAT_DEF>, nullptr, 0, 1, 0, noYes},
    {"TAB=", generationByte<CAT_TAB>, nullptr, 0, 1, 0, noYes},
    {"TABF=", tableFunctions, nullptr, 0, 1, 0, noYes},
    {"INT=", unsignedIntSize},
    {"N=", intSize},
    {"COMPMASK=", intSize},
    {"CHOICE=", intSize},
    {"REAL=", realSize},
    {"REALLIM=", realLimit},
    {"PUSHPATH=", boolean, &G::pushPath, 0, 1, 0},
    {"XREF=", boolean},
    {"LIST=", boolean},
    {"ANSI-C=", boolean, &G::ansiC, 0, 1, 1},
    {"REENTRANT=", boolean},
    {"PLMBOOLE=", boolean},
    {"NEAR=", boolean},
    {"ALTTAB=", boolean, &G::altTab, 0, 1, 0},
    {"ASNHC=", boolean},
    {"OPTVARS=", boolean, &G::optVars, 0, 1, 0},
    {"OMIT-SKIPPED-FIELDS=", boolean, &G::omitSkippedFields, 0, 1, 0},
    {"STANDARD-VERSION=", standardVersion, nullptr, 1990, 1994},
    {"DEFINITION-CATEGORY=", definitionCategoryWord, nullptr, 0, 0, 0, definitionWords},
    {"MORLA=", definitionCategoryNumber, nullptr, 0, 2},
    {"DECIMALS=", byteNumber, &G::decimals, 0, 127, DECIMALS_BINARY},
    {"DIAGLEVEL=", anyValue},
    {"COMPTAG=", byteNumber, nullptr, 0, 2},
    {"EXPLICIT=", byteNumber, nullptr, 0, 2},
    {"NAMELEN=", byteNumber, &G::nameLen, 8, 128, 32},
    {"RECURSION=", byteNumber, nullptr, 0, 2, 0, severities},
    {"TAGUSAGE=", byteNumber, nullptr, 0, 2, 0, severities},
    {"GENERATE=", byteNumber, &G::generate, 0, 3, GENERATE_BOTH, generateWords},
    {"MEMORY=", morlaByte, &G::memory, 0, 1, 0, noYes},
    {"DEFINITELEN=", byteNumber, &G::definiteLen, 0, 3, LENGTH_INDEFINITE, lengthWords},
    {"EXTENSIONS=", byteNumber, nullptr, 0, 1, 0, extensionWords},
    {"ZEROHOME=", morlaByte, &G::zeroHome, 0, 1, 0, noYes},
    {"TDEFS=", byteNumber, &G::tDefs, 0, 1, 0, noYes},
    {"CDEFS=", byteNumber, &G::cDefs, 0, 1, 0, noYes},
    {"TABO=", byteNumber, &G::tabO, 0, 1, 0, noYes},
    {"SETN=", byteNumber, &G::setN, 0, 2, SETN_NAMED_NUMBERS_AND_BITS, namedNumberWords},
    {"ALTMAX=", byteNumber, &G::altMax, 0, MAX_ALTERNATIVES, 0},
    {"C-GENERATION=", cGeneration, &G::cGeneration},
    {"SEGLISTLIM=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"DYNLISTLIM=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"DYNARRLIM=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"SEGSTRLIM=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"DYNSTRLIM=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"SPLIT=", limitNumber, nullptr, 0, MAX_LIMIT},
    {"COMBINE=", combineWords},
    {"TABREF=", anyText<&G::tabRef>},
};

/* The categories of files that an option chooses for, from `first` on. */
struct CategoryOption {
    std::string_view name;
    FileCategory first;
    int count;
};
constexpr CategoryOption categoryOptions[] = {{"COD=", CAT_ENC, 3}, {"TST=", CAT_ASK, 3},
                                              {"TYP=", CAT_TYP, 1}, {"DEF=", CAT_DEF, 1},
                                              {"TAB=", CAT_TAB, 1}, {"TABF=", CAT_TAB_EXT, 1}};

Text choicesOf(const GlobalOptions &options, const CategoryOption &option,
               const OptionWord *words) {
    Text choices;
    for (int i = 0; i < option.count; ++i)
        choices.append(i == 0 ? "" : ":")
            .append(wordOf(options.genArr[static_cast<std::size_t>(option.first + i)], words));
    return choices;
}

/* The words of "C-GENERATION=" that would set the same bits. */
Text generationBits(unsigned bits) {
    Text words;
    for (const GenerationWord &row : cGenerationWords)
        if (row.set != 0 && (row.set & (row.set - 1)) == 0 && (bits & row.set) != 0)
            words.append(words.empty() ? "" : ":").append(row.word);
    return words;
}

/* The value in force; empty if the option has none, or nobody reads it. */
Text valueInForce(const GlobalOptions &options, const OptionRow &row) {
    for (const CategoryOption &option : categoryOptions)
        if (option.name == row.name)
            return choicesOf(options, option, row.words);
    if (row.check == definitionCategoryWord)
        return wordOf(options.definitionCategory, row.words);
    for (const auto &[name, text] :
         {std::pair("INFO=", &G::info), std::pair("C=", &G::codeDirectory),
          std::pair("H=", &G::headerDirectory), std::pair("TABREF=", &G::tabRef),
          std::pair("COMBINE=", &G::combine)})
        if (std::strcmp(name, row.name) == 0)
            return options.*text;
    if (row.place == nullptr)
        return {};
    const std::uint8_t value = options.*row.place;
    if (row.check == cGeneration)
        return generationBits(value);
    if (row.place == &G::decimals && value == DECIMALS_BINARY)
        return {};
    return wordOf(value, row.check == boolean ? noYes : row.words);
}

} // namespace

void forEachOptionInForce(const GlobalOptions &options,
                          Call<void(const char *name, const Text &value)> func) {
    for (const OptionRow &row : optionTable)
        func(row.name, valueInForce(options, row));
}

void initMetaRec(GlobalOptions *options) {
    static std::uint8_t prefixLength = 0;
    if (prefixLength == 0)
        prefixLength = options->prefixLength;
    *options = GlobalOptions();
    options->prefixLength = prefixLength;
    for (const OptionRow &row : optionTable)
        if (row.place != nullptr)
            options->*row.place = static_cast<std::uint8_t>(row.preset);
    initGenArr(options, options->definitionCategory);
}

bool tableOptionOK(ModRec *module, const char *text, bool *known) {
    for (const OptionRow &row : optionTable) {
        if (const char *value = isOptionStri(text, row.name)) {
            *known = true;
            return row.check(module, row, value);
        }
    }
    *known = false;
    return false;
}

bool alternativeOptionOK(GlobalOptions *options,
                         std::array<std::uint8_t, MAX_ALTERNATIVES> *categories,
                         const char *value) {
    const char *colon = std::strchr(value, ':');
    if (colon == nullptr)
        return false;
    std::uint8_t number = 0;
    if (!byteOptionOK(&number, Text(value, colon).c_str(), 0, options->altMax - 1, nullptr))
        return false;
    return bitVector8OptionOK(&(*categories)[number], colon + 1);
}

bool splitCombineOption(const char *value, int prefixLength, std::vector<Text> *words) {
    constexpr std::size_t MIN_WORDS = 2;
    const char *end = std::strchr(value, ':');
    if (end == nullptr)
        return false;
    for (;;) {
        Text word(value, end);
        Text prefix = word;
        if (!validFilePrefix(prefix, prefixLength))
            return false;
        words->push_back(word);
        if (*end == '\0')
            break;
        value = end + 1;
        end = value + std::strcspn(value, ",");
    }
    std::vector<Text> sorted = *words;
    std::sort(sorted.begin(), sorted.end());
    const bool repeated = std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
    return !repeated && words->size() >= MIN_WORDS;
}
