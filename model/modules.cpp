#include "model/modules.h"

#include <algorithm>

#include "model/backvar.h"
#include "model/beoptions.h"
#include "model/hooks.h"
#include "model/nametexts.h"
#include "options/catalogue.h"
#include "options/ketracnf.h"
#include "store/records.h"
#include "store/strings.h"

ModelHooks modelHooks;

namespace {

/* Handles that were given back; their memory stays valid, so giving one back twice does no harm. */
std::vector<std::unique_ptr<AsnModule>> allModules;
std::vector<AsnModule *> freeModules;

int exportingWalkDepth = 0;
std::uint32_t exportingWalk = 0; /* number of the outermost walk */

ModRec *moduleInList(std::size_t place) {
    return place < modRecList.records.size() ? modRecList.records[place].get() : nullptr;
}

ModRec *lastNamedModule() {
    return modRecList.namedCount == 0 ? nullptr : moduleInList(modRecList.namedCount - 1);
}

/* The record behind this one in the list of all modules. */
ModRec *moduleBehind(const ModRec *modRec) {
    const auto place = static_cast<std::size_t>(modRec->listPlace);
    return moduleInList(place + 1);
}

void setCacheFlag(InfoCache *cache, int bit, bool value) {
    const std::uint32_t mask = 1u << (static_cast<unsigned>(bit) % 32u);
    cache->known |= mask;
    cache->answers = value ? cache->answers | mask : cache->answers & ~mask;
}

} // namespace

AsnModule *initAsnModule(AsnModule *module, ModRec *modRec) {
    const MNode &header = storedMNode(modRec, 1);
    module->modRec = modRec;
    module->counts = &header.counts;
    module->live = true;
    if (!modRec->hadHandle) {
        modRec->hadHandle = true;
        modRec->options->sourceDirectory = optionalStri(modRec, header.sourceDirectory);
        modRec->options->sourceFileName = optionalStri(modRec, header.sourceFileName);
        if (modelHooks.initBEModMetaRec != nullptr)
            modelHooks.initBEModMetaRec(module, modRec->metaRec);
    }
    return module;
}

AsnModule *newAsnModule(ModRec *modRec) {
    if (freeModules.empty()) {
        allModules.push_back(std::make_unique<AsnModule>());
        freeModules.push_back(allModules.back().get());
    }
    AsnModule *module = freeModules.back();
    freeModules.pop_back();
    *module = AsnModule();
    return initAsnModule(module, modRec);
}

void delAsnModule(AsnModule *module) {
    if (module == nullptr || !module->live)
        return;
    module->live = false;
    freeModules.push_back(module);
}

void saveAsnModState(const AsnModule *from, AsnModule *to) {
    to->cursors = from->cursors;
}

AsnModule *firstModule(ModRec *modRec) {
    cMP = modRec;
    return modRec == nullptr ? nullptr : newAsnModule(modRec);
}

AsnModule *nextModule(AsnModule *module, ModRec *specific) {
    if (module == nullptr) {
        cMP = nullptr;
        return nullptr;
    }
    if (specific == nullptr && module->modRec == lastNamedModule()) {
        delAsnModule(module);
        cMP = nullptr;
        return nullptr;
    }
    cMP = specific != nullptr ? specific : moduleBehind(module->modRec);
    *module = AsnModule();
    return initAsnModule(module, cMP);
}

void forEachModule(Call<void(AsnModule *module)> func) {
    requireCall(func);
    ModRec *before = cMP;
    AsnModule *module = firstModule(modRecList.namedCount == 0 ? nullptr : moduleInList(0));
    while (module != nullptr) {
        ModRec *current = cMP;
        func(module);
        cMP = current;
        module = nextModule(module, nullptr);
    }
    cMP = before;
}

void forFirstModule(Call<void(AsnModule *module)> func) {
    requireCall(func);
    ModRec *before = cMP;
    AsnModule *module = firstModule(modRecList.namedCount == 0 ? nullptr : moduleInList(0));
    if (module != nullptr)
        func(module);
    delAsnModule(module);
    cMP = before;
}

void forEachExportingModule(AsnModule *module, Call<void(AsnModule *exporting)> func) {
    requireCall(func);
    ModRec *before = cMP;
    {
        NestingGuard guard(&exportingWalkDepth, module->modRec);
        if (exportingWalkDepth == 1)
            ++exportingWalk;
        module->modRec->exportingWalk = exportingWalk;
        AsnModule *exporting = nullptr;
        for (const auto &import : module->modRec->imports.recs) {
            ModRec *modRec = import->picMod;
            if (modRec == nullptr || modRec->state == MOD_PREDEFINED)
                continue;
            exporting = exporting == nullptr ? firstModule(modRec) : nextModule(exporting, modRec);
            if (modRec->exportingWalk != exportingWalk && import->picMark != 0) {
                func(exporting);
                modRec->exportingWalk = exportingWalk;
            }
        }
        delAsnModule(exporting);
    }
    cMP = before;
}

Text getModuleRef(AsnModule *module) {
    return module->modRec->moduleName;
}

Text getModulePrefix(AsnModule *module) {
    return module->modRec->genPrefix;
}

Text getModuleFilePath(AsnModule *module) {
    const GlobalOptions *options = getGlobalOptions(module);
    return concat(options->sourceDirectory, options->sourceFileName);
}

BEModMetaRec *getBEModMetaRec(AsnModule *module) {
    return module->modRec->metaRec;
}

bool isTheSameModule(AsnModule *a, AsnModule *b) {
    return a->modRec == b->modRec;
}

bool isCurrentModule(AsnModule *module) {
    return module->modRec == cMP;
}

GlobalOptions *getGlobalOptions(AsnModule *module) {
    return module->modRec->options;
}

const std::uint8_t *getGenArr(AsnModule *module) {
    return getGlobalOptions(module)->genArr.data();
}

int getGenerationOption(AsnModule *module, int category) {
    if (category <= CAT_NONE || category >= CATEGORIES)
        return GEN_NONE;
    return getGenArr(module)[category];
}

bool testCGenerationOption(AsnModule *module, int bit) {
    const bool inverse = bit < 0;
    const unsigned number = inverse ? 0u - static_cast<unsigned>(bit) : static_cast<unsigned>(bit);
    const std::uint32_t bits = getGlobalOptions(module)->cGeneration;
    const bool isSet = ((bits >> (number % 32u)) & 1u) != 0;
    return isSet != inverse;
}

bool isMorlaApplication(AsnModule *module) {
    return isMorlaCategory(getGlobalOptions(module)->definitionCategory);
}

int getNrOfVisibleTypes(AsnModule *module) {
    return getGlobalOptions(module)->nrOfVisibleTypes;
}

int getNrOfEntryTypes(AsnModule *module) {
    return getGlobalOptions(module)->nrOfEntryTypes;
}

int getNrOfObjects(AsnModule *module) {
    return getGlobalOptions(module)->nrOfObjects;
}

int getNrOfObjectSets(AsnModule *module) {
    return getGlobalOptions(module)->nrOfObjectSets;
}

int getNrOfTypeNodes(AsnModule *module) {
    return (*module->counts)[REC_TNODE];
}

int getNrOfValueNodes(AsnModule *module) {
    return (*module->counts)[REC_VNODE];
}

int getUniqueModuleNr(AsnModule *module) {
    return module->modRec->listPlace;
}

bool isCombinedModule(AsnModule *module) {
    return isCombinedModules(module, module);
}

bool isCombinedModules(AsnModule *module, AsnModule *other) {
    const auto &combined = getGlobalOptions(module)->combined;
    const auto contains = [&](const ModRec *modRec) {
        return std::find(combined.begin(), combined.end(), modRec) != combined.end();
    };
    return contains(module->modRec) && contains(other->modRec);
}

FixChain *globalFixRecForKind(AsnModule *module, int kind) {
    return fixRecForKind(getGlobalOptions(module), kind);
}

bool isGlobalCommentOption(AsnModule *module) {
    return getGlobalOptions(module)->comments.first > 0;
}

void forEachGlobalCommentOption(AsnModule *module,
                                Call<void(AsnModule *module, const char *text, int index)> func) {
    requireCall(func);
    if (!isGlobalCommentOption(module))
        return;
    const TedRange range = getGlobalOptions(module)->comments;
    forEachBEComment(module->modRec, range.first, range.last,
                     [&](const char *comment, int index) { func(module, comment, index); });
}

InfoCache *getModuleInfoCache(AsnModule *module) {
    return &module->modRec->moduleInfoCache;
}

void setModuleInfoCacheBetFlag(InfoCache *cache, int bit, bool value) {
    setCacheFlag(cache, bit, value);
}

TypeInfoCache *getTypeInfoCache(AsnType *type) {
    return &type->posModule->typeInfoCache[static_cast<std::size_t>(type->posRecord) - 1];
}

void setTypeInfoCacheBetFlag(TypeInfoCache *cache, int bit, bool value) {
    setCacheFlag(cache, bit, value);
}

void setTargetLangTypes(const char *const *table) {
    targetLangTypeArr = table;
}
