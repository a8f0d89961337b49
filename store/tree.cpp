#include "store/tree.h"

#include <ctime>
#include <limits>

#include "base/fatal.h"
#include "base/files.h"
#include "store/records.h"
#include "store/strings.h"

TreeHooks treeHooks;

namespace {

/* Nodes of a module that is only imported count as dealt with from the start. */
constexpr std::int16_t STAMP_NAMED = 5;
constexpr std::int16_t STAMP_IMPORTED = std::numeric_limits<std::int16_t>::max();

bool isNamed(const ModRec *module) {
    return static_cast<std::size_t>(module->listPlace) < modRecList.namedCount;
}

/* The header of `module` is the current MNode. Options come last, since they may ask for anything
   else, and before the imports, since they may say under which prefix these are found. */
void initModRec(ModRec *module) {
    module->moduleName = getStri(module, mNode.moduleName);
    module->stamp = mNode.stamp;
    module->state = MOD_LOADED;
    module->moduleValue = mNode.moduleValue;
    module->importMark = mNode.importMark & 0x0F;
    module->reservedMark = mNode.reservedMark;
    module->reservedVNode = mNode.reservedVNode;
    module->firstType = mNode.firstTNode;
    module->firstValue = mNode.firstVNode;
    module->exportsMode = mNode.exportsMode;
    if (treeHooks.settleStoredOptions != nullptr)
        treeHooks.settleStoredOptions(module);
}

void stampNodes(ModRec *module) {
    const std::int16_t stamp = isNamed(module) ? STAMP_NAMED : STAMP_IMPORTED;
    for (TNode &node : module->tNodes)
        node.stamp = stamp;
    for (VNode &node : module->vNodes)
        node.stamp = stamp;
}

/* Reads one tree, without its imports. */
TreeStatus readOneTree(ModRec *module, Text *message) {
    const TreeStatus status = readTree(module, message);
    if (status != TREE_READ) {
        module->state = MOD_FAILED;
        return status;
    }
    initModRec(module);
    stampNodes(module);
    return TREE_READ;
}

/* The import that MNode `nr` of a module describes. */
PicRec *addImport(ModRec *module, RecNr nr) {
    readRec(module, REC_MNODE, nr);
    const char *name = getStri(module, mNode.moduleName);
    PicRec *pic = createPicRec(module->imports, allocateUniqStri(name));
    pic->picNr = nr;
    const char *prefix = optionalStri(module, mNode.filePrefix);
    pic->picMod = findOrCreateModRec(prefix, prefix, name);
    pic->picMark = static_cast<std::uint8_t>(mNode.importMark >> 4);
    return pic;
}

/* A module whose imports are being read. Imports may be nested as deeply as there are modules, so
   they wait here and not on the stack. */
struct OpenModule {
    ModRec *module;
    RecNr nextImport;
};

/* One failure fails all modules on the way to it. */
TreeStatus failOpenModules(const std::vector<OpenModule> &open, TreeStatus status) {
    for (const OpenModule &entry : open) {
        entry.module->state = MOD_FAILED;
        entry.module->imports.recs.back()->picMod = nullptr;
    }
    return status;
}

/* Reads a tree and all that it imports. A module counts as loaded before its imports are read, so
   circles of imports come to an end. */
TreeStatus readSyntaxTree(ModRec *module, Text *message) {
    if (const TreeStatus status = readOneTree(module, message); status != TREE_READ)
        return status;
    std::vector<OpenModule> open = {{module, 2}};
    while (!open.empty()) {
        OpenModule &top = open.back();
        if (top.nextImport > recCount(top.module, REC_MNODE)) {
            open.pop_back();
            continue;
        }
        const PicRec *pic = addImport(top.module, top.nextImport++);
        ModRec *imported = pic->picMod;
        if (Text(pic->picName) == PREDEFINED_MODULE) {
            /* A tree that was read under this prefix has records, so it stays what it is. */
            if (imported->state == MOD_NAMED)
                imported->state = MOD_PREDEFINED;
        } else if (imported->state == MOD_FAILED) {
            return failOpenModules(open, TREE_MISSING);
        } else if (imported->state == MOD_NAMED) {
            if (!isFilePrefix(imported->genPrefix)) {
                *message = "not a file prefix: " + imported->genPrefix;
                return failOpenModules(open, TREE_INVALID);
            }
            const TreeStatus status = readOneTree(imported, message);
            if (status != TREE_READ)
                return failOpenModules(open, status);
            open.push_back({imported, 2});
        }
    }
    return TREE_READ;
}

[[noreturn]] void loadingFailed(TreeStatus status, const ModRec *module, const Text &message) {
    const int code = status == TREE_INCONSISTENT ? FATAL_INCONSISTENT
                     : status == TREE_MISSING    ? FATAL_NO_TREE
                                                 : FATAL_INVALID_TREE;
    const Text detail = message.empty() ? module->filePrefix : module->filePrefix + ": " + message;
    fatalError(code, detail.c_str());
}

} // namespace

/* Records of modules are made before their trees are read, by the command line, options and
   imports, in whatever order these name them. */

ModRec *appendModRec(bool named) {
    auto &records = modRecList.records;
    if (named) {
        if (modRecList.namedCount != records.size())
            fatalError(FATAL_INTERNAL, "A module was named too late.");
        ++modRecList.namedCount;
    }
    ModRec *module = records.emplace_back(std::make_unique<ModRec>()).get();
    module->listPlace = static_cast<int>(records.size()) - 1;
    if (treeHooks.newOptions != nullptr)
        module->options = treeHooks.newOptions();
    if (treeHooks.newMetaRec != nullptr)
        module->metaRec = treeHooks.newMetaRec();
    return module;
}

void readAllSyntaxTrees() {
    const std::size_t namedCount = modRecList.namedCount;
    for (std::size_t i = 0; i < namedCount; ++i) {
        cMP = modRecList.records[i].get();
        if (cMP->state != MOD_NAMED)
            continue;
        Text message;
        const TreeStatus status = readSyntaxTree(cMP, &message);
        if (status != TREE_READ)
            loadingFailed(status, cMP, message);
    }
    const auto &records = modRecList.records;
    cMP = namedCount < records.size() ? records[namedCount].get() : nullptr;
}

/* When all trees are there, records that nothing refers to go, and the places of the others are
   final. */

void removeUnreferencedModuleRecords() {
    auto &records = modRecList.records;
    std::size_t kept = 0;
    std::size_t keptNamed = 0;
    for (auto &record : records) {
        if (record->state == MOD_NAMED) {
            if (cMP == record.get())
                cMP = nullptr;
            continue;
        }
        if (isNamed(record.get()))
            ++keptNamed;
        records[kept++] = std::move(record);
    }
    records.resize(kept);
    for (std::size_t i = 0; i < kept; ++i)
        records[i]->listPlace = static_cast<int>(i);
    modRecList.namedCount = keptNamed;
    modRecList.byGenPrefix.clear();
    modRecList.indexed = 0;
}

void initBackendVars() {
    if (modRecList.records.empty())
        fatalError(FATAL_INTERNAL, "No module record list.");
    std::fill(std::begin(recJustRead), std::end(recJustRead), NodePlace{});
    int place = 0;
    for (const auto &record : modRecList.records) {
        record->listPlace = place++;
        if (record->state == MOD_PREDEFINED)
            continue;
        readRec(record.get(), REC_MNODE, 1);
        record->firstType = mNode.firstTNode;
        record->firstValue = mNode.firstVNode;
        record->exportsMode = mNode.exportsMode;
        record->circularImports.reset();
        record->typeInfoCache.assign(record->tNodes.size() + 1, {});
        record->typesByName = {};
        record->valuesByName = {};
    }
}

/* A module is found by its generation prefix, which names its tree file too. */

ModRec *findOrCreateModRec(const char *filePrefix, const char *genPrefix, const char *moduleName) {
    /* Named modules get their prefix after their record, so the index follows when it is asked. */
    ModRecList &list = modRecList;
    for (; list.indexed < list.records.size(); ++list.indexed) {
        ModRec *record = list.records[list.indexed].get();
        list.byGenPrefix.emplace(record->genPrefix, record);
    }
    if (const auto known = list.byGenPrefix.find(genPrefix); known != list.byGenPrefix.end())
        return known->second;
    ModRec *module = appendModRec(false);
    module->moduleName = moduleName;
    module->filePrefix = filePrefix;
    module->genPrefix = genPrefix;
    return module;
}

PicRec *createPicRec(PicList &imports, const char *name) {
    PicRec *pic = imports.recs.emplace_back(std::make_unique<PicRec>()).get();
    pic->picName = name;
    return pic;
}

void getTimeStamp(TimeStamp *stamp) {
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    if (const std::tm *found = std::localtime(&now); found != nullptr)
        local = *found;
    stamp->version = TREE_VERSION;
    stamp->treeVersion = TREE_VERSION;
    stamp->date = (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday;
    stamp->time = local.tm_hour * 10000 + local.tm_min * 100 + local.tm_sec;
}
