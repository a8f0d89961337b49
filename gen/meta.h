#pragma once

#include <deque>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "gen/typemeta.h"
#include "store/ketradef.h"

/* What this generator keeps for each handle of the model, and small questions that all generators
   ask. The marks that generators set on types stand in model/stamps.h. */

struct AsnModule;
struct AsnType;

enum Verbosity : int { VERBOSITY_QUIET = 0, VERBOSITY_TERSE = 1, VERBOSITY_VERBOSE = 2 };
enum EntryTag : int { ENTRYTAG_IGNORE = 0, ENTRYTAG_WARN = 1 };

/* Which entry shares which parameter list. Entries of one type share a list. */
struct AsnParamRec {
    std::int32_t moduleNr = 0;
    std::int32_t typeNr = 0;
    std::int32_t listIndex = 0;
};

/* Parts of "TAB-CODFUNC=" or "TAB-TSTFUNC="; an empty part was not given. */
struct TabFuncNames {
    Text first;  /* for encoding or asking */
    Text second; /* for decoding or printing */
    Text header; /* included in place of the generated prototypes */
};

/* A module's record, which the module owns. */
struct BEModMetaRec {
    std::vector<AsnParamRec> asnParams;                            /* by entry number */
    std::unordered_map<std::uint64_t, std::int32_t> asnParamLists; /* type -> index of its list */
    std::vector<std::uint32_t> objectNrs;     /* row of an object in its table plus 1, by unique
                                                 number; 0 without a row */
    std::vector<const char *> objectTableIds; /* name of that table, in the same way */
    bool objectsNumbered = false;             /* a pass has filled them */
    bool hasObjectRows = false;               /* and found a row */
    bool introPrinted = false;                /* the heading of values is out */
    std::uint8_t verbosity = VERBOSITY_TERSE;
    std::uint8_t entryTag = ENTRYTAG_IGNORE;
    Text logFile; /* empty for none */
    TabFuncNames tabCodFunc;
    TabFuncNames tabTstFunc;
    bool tabMorlaParam = true;
    int accessRoutines = ACCESS_MACROS;
    bool brunIncludeHook = false;
    bool brunModuleId = false;
    bool tabValueSetN = false;
    Text codFuncPref;
    /* Numbers that component defines have so far, by name. */
    std::unordered_map<Text, int> componentDefines;
    /* Of definitions with nested structures, by record: the names of their components, at any
       depth, that stand for several numbers. */
    std::unordered_map<std::uint64_t, std::unordered_set<Text>> ambiguousComps;
    std::deque<BETypeInfo> typeInfos; /* of its types, each at its place for the whole run */
    bool cPlusPlus = false; /* words of C++ are no names either */
};

struct BEClassMetaRec {
    int accessRoutines = ACCESS_MACROS;
};

/* Sizes the tables that depend on the module's tree. */
void initBEModMetaRec(AsnModule *module, BEModMetaRec *meta);

bool getMetaIntroPrinted(AsnModule *module);
void setMetaIntroPrinted(AsnModule *module, bool printed);
int getMetaEntryTag(AsnModule *module);
int getMetaVerbosity(AsnModule *module);
/* Null for none. */
const char *getMetaLogFile(AsnModule *module);
/* Empty for none. */
const char *getMetaCodFuncPref(AsnModule *module);

/* "CPLUSPLUS=". */
bool avoidsCPlusPlusWords(AsnModule *module);

/* Separate entry parameter lists. addMetaAsnParams is called for the entries in their order and
   returns true if the entry needs a list of its own. */
void resetMetaAsnParams(AsnModule *module);
bool addMetaAsnParams(AsnType *type, int entryNr);
const std::vector<AsnParamRec> &getMetaAsnParams(AsnModule *module);
int getMetaAsnParamIndex(AsnType *type, int entryNr);

/* C type of a ValueForm; null if there is none. */
const char *getLangType(int valueForm);

bool needsTableMacros(AsnModule *module);
bool needsComponentDefines(AsnModule *module);
bool needsAlternativeEncodings(AsnModule *module);
bool needsTableAccessFuncs(AsnModule *module);
bool needsSeparateAsnParams(AsnModule *module);
