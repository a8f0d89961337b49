#include "gen/tooloptions.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "base/toolinfo.h"
#include "gen/meta.h"
#include "model/typequeries.h"
#include "options/catalogue.h"
#include "options/checkers.h"
#include "options/hooks.h"
#include "project/ketratavi.h"

namespace {

/* This tool's name behind "BEO=". */
constexpr std::string_view toolWord = "VELMO=";

constexpr OptionWord verbosityWords[] = {{VERBOSITY_QUIET, "QUIET"},
                                         {VERBOSITY_TERSE, "TERSE"},
                                         {VERBOSITY_VERBOSE, "VERBOSE"},
                                         {0, nullptr}};
constexpr OptionWord entryTagWords[] = {
    {ENTRYTAG_IGNORE, "IGNORE"}, {ENTRYTAG_WARN, "WARN"}, {0, nullptr}};
constexpr OptionWord accessWords[] = {{ACCESS_NONE, "NONE"},
                                      {ACCESS_MACROS, "MACROS"},
                                      {ACCESS_FUNCTIONS, "FUNCTIONS"},
                                      {0, nullptr}};

[[noreturn]] bool versionOption(BEModMetaRec *, const char *) {
    printVersionInfo(TREE_VERSION);
    checkStandardOutput();
    std::exit(EXIT_SUCCESS);
}

/* --- plain values --- */

bool verboseOption(BEModMetaRec *meta, const char *value) {
    return byteOptionOK(&meta->verbosity, value, VERBOSITY_QUIET, VERBOSITY_VERBOSE,
                        verbosityWords);
}

bool entryTagOption(BEModMetaRec *meta, const char *value) {
    return byteOptionOK(&meta->entryTag, value, ENTRYTAG_IGNORE, ENTRYTAG_WARN, entryTagWords);
}

bool logFileOption(BEModMetaRec *meta, const char *value) {
    constexpr std::size_t MAX_LENGTH = 513;
    return alnumSpecialStriOptionOK(&meta->logFile, value, "./\\[]_-", 1, MAX_LENGTH);
}

/* The end of a part that is a C identifier (or empty), with `special` allowed at any place. */
const char *skipNamePart(const char *text, char special) {
    const char *end = text;
    while (*end != '\0' && (*end == special || *end == '_' || isAsciiAlpha(*end) ||
                            (end != text && isAsciiDigit(*end))))
        ++end;
    return end;
}

/* Two name parts and a header file, with ":" between them. */
bool tabFuncNameOptionOK(TabFuncNames *dst, const char *value) {
    constexpr std::ptrdiff_t MAX_LENGTH = 10;
    TabFuncNames names;
    for (Text *part : {&names.first, &names.second, &names.header}) {
        const bool isLast = part == &names.header;
        const char *end = skipNamePart(value, isLast ? '.' : '_');
        if (end - value > MAX_LENGTH || *end != (isLast ? '\0' : ':'))
            return false;
        part->assign(value, end);
        value = end + 1;
    }
    *dst = names;
    return true;
}

/* --- names for tables: "TAB-CODFUNC=enc,dec,file" --- */

bool tabCodFuncOption(BEModMetaRec *meta, const char *value) {
    return tabFuncNameOptionOK(&meta->tabCodFunc, value);
}

bool tabTstFuncOption(BEModMetaRec *meta, const char *value) {
    return tabFuncNameOptionOK(&meta->tabTstFunc, value);
}

/* --- switches --- */

bool boolOptionOK(bool *dst, const char *value) {
    std::uint8_t truth = 0;
    if (!booleOptionOK(&truth, value))
        return false;
    *dst = truth != 0;
    return true;
}

bool tabMorlaParamOption(BEModMetaRec *meta, const char *value) {
    return boolOptionOK(&meta->tabMorlaParam, value);
}

bool tabValueSetNOption(BEModMetaRec *meta, const char *value) {
    return boolOptionOK(&meta->tabValueSetN, value);
}

void warnOfAccessFunctions() {
    constexpr const char *WARNING =
        "*** Warning: VELMO option ACCESS-ROUTINES=FUNCTIONS not yet implemented";
    static bool warned = false;
    if (warned)
        return;
    warned = true;
    std::puts(WARNING);
    if (taviIsActive())
        taviSummaryMessage(WARNING);
}

/* Access functions are foreseen, but there are none yet: asking for them changes nothing. */
bool accessRoutinesOptionOK(int *dst, const char *value) {
    std::uint8_t routines = 0;
    if (!byteOptionOK(&routines, value, ACCESS_NONE, ACCESS_FUNCTIONS, accessWords))
        return false;
    if (routines == ACCESS_FUNCTIONS) {
        warnOfAccessFunctions();
        return false;
    }
    *dst = routines;
    return true;
}

bool accessRoutinesOption(BEModMetaRec *meta, const char *value) {
    return accessRoutinesOptionOK(&meta->accessRoutines, value);
}

/* One word of "BRUN-GENERATION=", "no-" in front switches off. */
bool brunWord(std::string_view word, bool *includeHook, bool *moduleId) {
    constexpr std::string_view negation = "no-";
    const bool isOn = strnCaseComp(Text(word).c_str(), negation.data(), negation.size()) != 0;
    if (!isOn)
        word.remove_prefix(negation.size());
    if (strCaseComp(Text(word).c_str(), "include-brunhook") == 0)
        *includeHook = isOn;
    else if (strCaseComp(Text(word).c_str(), "mid") == 0)
        *moduleId = isOn;
    else
        return false;
    return true;
}

/* A list of words, each of which sets one switch. */
bool brunGenerationOption(BEModMetaRec *meta, const char *value) {
    bool includeHook = meta->brunIncludeHook;
    bool moduleId = meta->brunModuleId;
    while (*value != '\0') {
        const std::size_t length = std::strcspn(value, ":");
        if (!brunWord({value, length}, &includeHook, &moduleId))
            return false;
        value += length;
        /* A ":" at the end would have an empty part behind it. */
        if (*value == ':' && *++value == '\0')
            return false;
    }
    meta->brunIncludeHook = includeHook;
    meta->brunModuleId = moduleId;
    return true;
}

/* There is one browser tree for all modules. */
bool treeFileSuffixOption(BEModMetaRec *, const char *value) {
    constexpr std::size_t MAX_LENGTH = 4;
    return alnumSpecialStriOptionOK(&g_taviTreeFileSuffix, value, ".", 1, MAX_LENGTH);
}

/* The word goes in front of encoding and decoding functions alone; entry tables go on naming plain
   "enc" and "dec", which "TAB-CODFUNC=" replaces. */
bool codFuncPrefOption(BEModMetaRec *meta, const char *value) {
    constexpr std::size_t MAX_LENGTH = 5;
    return alnumSpecialStriOptionOK(&meta->codFuncPref, value, "_", 1, MAX_LENGTH);
}

bool cPlusPlusOption(BEModMetaRec *meta, const char *value) {
    return boolOptionOK(&meta->cPlusPlus, value);
}

/* An option that is written on a type or class. */
bool definitionOptionOK(int *accessRoutines, const char *option) {
    const char *text = parseBEOption(option, toolWord.data(), toolWord.size());
    if (text == nullptr)
        return true;
    const char *value = isOptionStri(text, "ACCESS-ROUTINES=");
    return value == nullptr || accessRoutinesOptionOK(accessRoutines, value);
}

struct ToolOption {
    const char *name;
    bool (*check)(BEModMetaRec *meta, const char *value);
};

constexpr ToolOption toolOptions[] = {
    {"VERSION", versionOption},
    {"VERBOSE=", verboseOption},
    {"ENTRYTAG=", entryTagOption},
    {"LOGFILE=", logFileOption},
    {"TAB-CODFUNC=", tabCodFuncOption},
    {"TAB-TSTFUNC=", tabTstFuncOption},
    {"TAB-MORLA-PARAM=", tabMorlaParamOption},
    {"TAB-VALUE-SET-N=", tabValueSetNOption},
    {"ACCESS-ROUTINES=", accessRoutinesOption},
    {"BRUN-GENERATION=", brunGenerationOption},
    {"TREE-FILE-SUFFIX=", treeFileSuffixOption},
    {"COD-FUNC-PREF=", codFuncPrefOption},
    {"CPLUSPLUS=", cPlusPlusOption},
};

/* --- the ways in: options of modules, types and classes --- */

bool toolOptionOK(BEModMetaRec *meta, const char *text) {
    for (const ToolOption &row : toolOptions)
        if (const char *value = isOptionStri(text, row.name))
            return row.check(meta, value);
    return taviIsTAVIOption(text) && taviOptionOK(text);
}

} // namespace

bool globalBEOptionOK(BEModMetaRec *meta, const char *option) {
    const char *text = parseBEOption(option, toolWord.data(), toolWord.size());
    if (text == nullptr || toolOptionOK(meta, text))
        return true;
    if (taviIsActive())
        taviSummaryMessage(formatText("(W) Global option ignored: %.50s", option).c_str());
    return false;
}

bool typeBEOptionOK(AsnType *type, BETypMetaRec *meta, const char *option, bool) {
    if (meta == nullptr || definitionOptionOK(&meta->accessRoutines, option))
        return true;
    if (taviIsActive())
        taviWarn(getModuleOfType(type), getTypeDefinitionLine(type), SUMMARY_OPTION_IGNORED,
                 option);
    return false;
}

bool classBEOptionOK(AsnObjClass *, BEClassMetaRec *meta, const char *option, bool) {
    return meta == nullptr || definitionOptionOK(&meta->accessRoutines, option);
}
