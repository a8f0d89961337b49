#include "gen/meta.h"

#include <algorithm>
#include <cstdio>

#include "gen/fileset.h"
#include "model/backend.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "options/ketracnf.h"

namespace {

/* The record whose parameters an entry has: the end of its synonyms, and of an instance what it is
   an instance of. */
AsnParamRec findAsnParamRec(AsnType *type) {
    AsnParamRec record;
    record.moduleNr = type->baseModule->listPlace;
    record.typeNr = getUniqueBaseTypeNr(type);
    return record;
}

} // namespace

/* --- records of modules, and of what keeps nothing --- */

void initBEModMetaRec(AsnModule *module, BEModMetaRec *meta) {
    if (!meta->objectNrs.empty())
        return;
    const auto count = static_cast<std::size_t>(getNrOfValueNodes(module)) + 1;
    meta->objectNrs.resize(count);
    meta->objectTableIds.resize(count);
}

/* --- options and marks of a module --- */

bool getMetaIntroPrinted(AsnModule *module) {
    return getBEModMetaRec(module)->introPrinted;
}

void setMetaIntroPrinted(AsnModule *module, bool printed) {
    getBEModMetaRec(module)->introPrinted = printed;
}

int getMetaEntryTag(AsnModule *module) {
    return getBEModMetaRec(module)->entryTag;
}

int getMetaVerbosity(AsnModule *module) {
    return getBEModMetaRec(module)->verbosity;
}

const char *getMetaLogFile(AsnModule *module) {
    const Text &name = getBEModMetaRec(module)->logFile;
    return name.empty() ? nullptr : name.c_str();
}

bool avoidsCPlusPlusWords(AsnModule *module) {
    return getBEModMetaRec(module)->cPlusPlus;
}

const char *getMetaCodFuncPref(AsnModule *module) {
    return getBEModMetaRec(module)->codFuncPref.c_str();
}

/* --- parameter lists of entries: each type has one, whatever number of entries name it --- */

void resetMetaAsnParams(AsnModule *module) {
    BEModMetaRec *meta = getBEModMetaRec(module);
    meta->asnParams.clear();
    meta->asnParamLists.clear();
}

bool addMetaAsnParams(AsnType *type, int entryNr) {
    constexpr unsigned MODULE_SHIFT = 32;
    BEModMetaRec *meta = getBEModMetaRec(getModuleOfType(type));
    AsnParamRec record = findAsnParamRec(type);
    const std::uint64_t key = static_cast<std::uint64_t>(record.moduleNr) << MODULE_SHIFT |
                              static_cast<std::uint32_t>(record.typeNr);
    const auto nextList = static_cast<std::int32_t>(meta->asnParamLists.size());
    const auto [list, isNew] = meta->asnParamLists.emplace(key, nextList);
    record.listIndex = list->second;

    const auto index = static_cast<std::size_t>(entryNr);
    meta->asnParams.resize(std::max(meta->asnParams.size(), index + 1));
    meta->asnParams[index] = record;
    return isNew;
}

const std::vector<AsnParamRec> &getMetaAsnParams(AsnModule *module) {
    return getBEModMetaRec(module)->asnParams;
}

int getMetaAsnParamIndex(AsnType *type, int entryNr) {
    return getMetaAsnParams(getModuleOfType(type))[static_cast<std::size_t>(entryNr)].listIndex;
}

const char *getLangType(int valueForm) {
    return valueForm >= 0 && valueForm < VF_COUNT ? defaultCTypeArr[valueForm] : nullptr;
}

/* --- what options ask of the generators, where there is a file for it --- */

bool needsTableMacros(AsnModule *module) {
    return fiDef != 0 && getGlobalOptions(module)->tDefs != 0;
}

bool needsComponentDefines(AsnModule *module) {
    return fiDef != 0 && getGlobalOptions(module)->cDefs != 0;
}

bool needsAlternativeEncodings(AsnModule *module) {
    return getGlobalOptions(module)->altTab != 0;
}

bool needsTableAccessFuncs(AsnModule *module) {
    return getGenerationOption(module, CAT_TAB_EXT) != GEN_NONE;
}

bool needsSeparateAsnParams(AsnModule *module) {
    return isMorlaApplication(module) && getGlobalOptions(module)->tabO != 0;
}
