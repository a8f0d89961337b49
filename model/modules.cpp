#include "model/modules.h"

#include <algorithm>

#include "model/hooks.h"
#include "options/ketracnf.h"
#include "options/naming.h"
#include "store/records.h"
#include "store/strings.h"

ModelHooks modelHooks;

/* Records of a generator go back to it: the model has no idea what they are made of. */

void DropMeta::operator()(BETypMetaRec *meta) const {
    if (modelHooks.deleteBETypMetaRec != nullptr)
        modelHooks.deleteBETypMetaRec(meta);
}
void DropMeta::operator()(BEClassMetaRec *meta) const {
    if (modelHooks.deleteBEClassMetaRec != nullptr)
        modelHooks.deleteBEClassMetaRec(meta);
}

AsnModule *getAsnModule(ModRec *modRec) {
    const MNode &header = storedMNode(modRec, 1);
    if (modRec->handle == nullptr) {
        modRec->handle = std::make_shared<AsnModule>(AsnModule{modRec});
        modRec->options->sourceDirectory = optionalStri(modRec, header.sourceDirectory);
        modRec->options->sourceFileName = optionalStri(modRec, header.sourceFileName);
        if (modelHooks.initBEModMetaRec != nullptr)
            modelHooks.initBEModMetaRec(modRec->handle.get(), modRec->metaRec.get());
    }
    return modRec->handle.get();
}

/* Walks put the module under work back, since a call may walk itself. */

void forEachModule(Call<void(AsnModule *module)> func) {
    requireCall(func);
    ModRec *before = cMP;
    for (std::size_t place = 0; place < modRecList.namedCount; ++place) {
        cMP = modRecList.records[place].get();
        func(getAsnModule(cMP));
    }
    cMP = before;
}

void forFirstModule(Call<void(AsnModule *module)> func) {
    requireCall(func);
    if (modRecList.namedCount == 0)
        return;
    ModRec *before = cMP;
    cMP = modRecList.records[0].get();
    func(getAsnModule(cMP));
    cMP = before;
}

/* What the header of the tree says, and the options that were settled when it was loaded. */

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
    return module->modRec->metaRec.get();
}

bool isCurrentModule(AsnModule *module) {
    return module->modRec == cMP;
}

GlobalOptions *getGlobalOptions(AsnModule *module) {
    return module->modRec->options.get();
}

const std::uint8_t *getGenArr(AsnModule *module) {
    return getGlobalOptions(module)->genArr.data();
}

int getGenerationOption(AsnModule *module, int category) {
    if (category <= CAT_NONE || category >= CATEGORIES)
        return GEN_NONE;
    return getGenArr(module)[category];
}

/* A negative bit asks for the opposite, so that a table can name a choice by one number. */

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

/* Counts are those of the header, so that no walk is needed to see whether there is anything to
   do. */

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

int getNrOfValueNodes(AsnModule *module) {
    return storedMNode(module->modRec, 1).counts[REC_VNODE];
}

int getUniqueModuleNr(AsnModule *module) {
    return module->modRec->listPlace;
}

/* Answers that don't depend on the handle are kept with the record: many handles are made for
   it. */

TypeInfoCache *getTypeInfoCache(AsnType *type) {
    return &type->posModule->typeInfoCache[static_cast<std::size_t>(type->posRecord) - 1];
}

void setTypeInfoCacheBetFlag(TypeInfoCache *cache, int bit, bool value) {
    const std::uint32_t mask = 1u << (static_cast<unsigned>(bit) % 32u);
    cache->known |= mask;
    cache->answers = value ? cache->answers | mask : cache->answers & ~mask;
}
