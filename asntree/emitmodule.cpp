#include "asntree/emitter.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include "store/ketramac.h"

/* The header of a tree, its imports, its options. */

namespace asntree {

namespace {

constexpr std::uint8_t FOLLOWED_IMPORT = 0x10;

/* Text of source file and directory: "dir/" and "name.asn". */
std::pair<std::string, std::string> splitPath(const std::string &path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {"./", path};
    return {path.substr(0, slash + 1), path.substr(slash + 1)};
}

/* Seconds since 1970 that stand for the compilation: of the newest source, so that the same input
   gives the same tree, or what the environment says. */
std::int64_t stampSeconds(Emitter &e, const TreePlan &plan) {
    if (const char *epoch = std::getenv("SOURCE_DATE_EPOCH"); epoch != nullptr && *epoch != 0) {
        char *end = nullptr;
        const long long seconds = std::strtoll(epoch, &end, 10);
        if (*end == 0 && seconds >= 0)
            return seconds;
    }
    std::int64_t newest = 0;
    for (const ModuleInfo *module : plan.modules)
        newest = std::max(newest, fileOf(e.c, *module).modified);
    return newest;
}

TimeStamp stampOf(std::int64_t seconds) {
    const std::time_t time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    if (gmtime_r(&time, &parts) == nullptr || parts.tm_year > 8000)
        parts = {};
    return {TREE_VERSION, TREE_VERSION,
            (parts.tm_year + 1900) * 10000 + (parts.tm_mon + 1) * 100 + parts.tm_mday,
            parts.tm_hour * 10000 + parts.tm_min * 100 + parts.tm_sec};
}

/* 0: all definitions are exported; a merged tree exports what one of its modules does. */
std::uint8_t exportsModeOf(const TreeState &ts) {
    std::uint8_t mode = 2;
    for (const ModuleInfo *module : ts.plan->modules) {
        if (module->syntax->exportsMode != ExportsMode::List)
            return 0;
        if (!module->syntax->exports.empty())
            mode = 1;
    }
    return mode;
}

std::int32_t addImport(TreeState &ts, std::string_view name, std::string_view prefix,
                       TimeStamp stamp, std::uint8_t mark) {
    MNode node;
    node.stamp = stamp;
    node.moduleName = nameNr(ts, name);
    node.filePrefix = ts.tree().str(prefix);
    node.importMark = mark;
    return ts.tree().addM(node);
}

void addListedImports(Emitter &e, TreeState &ts) {
    for (const ModuleInfo *module : ts.plan->modules)
        for (const ModuleInfo *imported : module->imports) {
            if (imported->predefined)
                predefinedModule(ts);
            else if (auto tree = e.plan.treeOfModule.find(imported);
                     tree != e.plan.treeOfModule.end())
                moduleNumber(e, ts, static_cast<std::uint32_t>(tree->second));
        }
}

} // namespace

void emitHeader(Emitter &e, TreeState &ts) {
    const ModuleInfo &first = *ts.plan->modules.front();
    MNode node;
    node.stamp = stampOf(stampSeconds(e, *ts.plan));
    node.moduleName = nameNr(ts, first.syntax->name.text);
    node.filePrefix = ts.tree().str(ts.plan->filePrefix);
    const auto [directory, file] = splitPath(fileOf(e.c, first).path);
    node.sourceDirectory = ts.tree().str(directory);
    node.sourceFileName = ts.tree().str(file);
    node.exportsMode = exportsModeOf(ts);
    ts.tree().addM(node);
    addListedImports(e, ts);
}

std::int32_t moduleNumber(Emitter &e, TreeState &ts, std::uint32_t tree) {
    if (tree == ts.number)
        return 1;
    auto [place, isNew] = ts.imports.try_emplace(tree, 0);
    if (isNew) {
        const TreePlan &plan = e.plan.trees[tree];
        place->second = addImport(ts, plan.modules.front()->syntax->name.text, plan.genPrefix,
                                  stampOf(stampSeconds(e, plan)), FOLLOWED_IMPORT);
        ts.treesOfImports.resize(static_cast<std::size_t>(place->second) + 1, -1);
        ts.treesOfImports.back() = tree;
    }
    return place->second;
}

std::int32_t predefinedModule(TreeState &ts) {
    if (ts.predefinedImport == 0)
        ts.predefinedImport =
            addImport(ts, PREDEFINED_MODULE, "iso8824", ts.tree().header().stamp, 0);
    return ts.predefinedImport;
}

/* The module's own object identifier, which stands in no list. */
void emitModuleIdentifier(Emitter &e, TreeState &ts) {
    const ModuleInfo &module = *ts.plan->modules.front();
    e.current = nullptr;
    if (!module.syntax->identifier.given() || module.identifier.empty())
        return;
    ParseContext parsing = e.c.parsing();
    const std::vector<Arc> written = readArcs(parsing, module.syntax->identifier);
    const std::vector<Number> numbers = arcsOf(e.c, module.syntax->identifier, &module.root);
    if (numbers.empty())
        return;
    if (!std::all_of(numbers.begin(), numbers.end(), isHeldArc)) {
        warning(e.c.diagnostics, module.syntax->name.place,
                "the identifier of the module is left out: a tree can't hold arcs of more than 32 "
                "bits");
        return;
    }
    const RecNr nr = ts.tree().addV({});
    ts.tree().header().moduleValue = nr;
    std::vector<DatumArc> arcs;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        arcs.push_back({written.size() == numbers.size() ? std::string(written[i].name.text) : "",
                        numbers[i], {}});
    VNode node;
    node.valueKind = TYP_OBJID;
    node.compStatus = VCS_DEFINITION;
    node.governorRec = plainIdentifier(ts);
    node.governorModule = 1;
    ts.tree().v(nr) = node;
    emitArcs(e, ts, nr, arcs, numbers);
}

/* --- options --- */

namespace {

TedRange placeOptions(Tree &tree, const std::vector<TedRec> &options) {
    const RecNr first = static_cast<RecNr>(tree.tedRecs.size()) + 1;
    for (const TedRec &option : options)
        tree.addTed(option);
    return {first, static_cast<RecNr>(tree.tedRecs.size())};
}

/* In the order of the numbers, so that the same input gives the same tree. */
std::vector<RecNr> sortedKeys(const std::unordered_map<RecNr, std::vector<TedRec>> &options) {
    std::vector<RecNr> keys;
    for (const auto &[nr, list] : options)
        keys.push_back(nr);
    std::sort(keys.begin(), keys.end());
    return keys;
}

} // namespace

void layOutOptions(Emitter &e, TreeState &ts) {
    Tree &tree = ts.tree();
    std::vector<TedRec> general;
    for (const StoredOption &option :
         storedOptions(e.settings, ts.plan->filePrefix,
                       ts.plan->modules.front()->syntax->name.text, furtherModules(*ts.plan)))
        general.push_back({static_cast<std::uint8_t>(option.tedKind), tree.str(option.text)});
    const TedRange range = placeOptions(tree, general);
    tree.header().tedFirst = range.first;
    tree.header().tedLast = range.last;
    for (const RecNr nr : sortedKeys(ts.typeOptions)) {
        const TedRange own = placeOptions(tree, ts.typeOptions.at(nr));
        tree.t(nr).tedFirst = own.first;
        tree.t(nr).tedLast = own.last;
    }
    for (const RecNr nr : sortedKeys(ts.valueOptions)) {
        const TedRange own = placeOptions(tree, ts.valueOptions.at(nr));
        tree.v(nr).tedFirst = own.first;
        tree.v(nr).tedLast = own.last;
    }
}

void countDefinitions(Emitter &e, TreeState &ts) {
    Tree &tree = ts.tree();
    MNode counts = tree.header();
    for (RecNr nr = counts.firstTNode; nr != 0; nr = tree.t(nr).next) {
        const TNode &node = tree.t(nr);
        if (node.skipInWalk != 0)
            continue;
        const bool isSet = (node.nodeFlags & NODE_SET) != 0;
        const bool isClass = isClassKind(baseNode(e, {&ts, nr}).rec().mainType);
        if ((node.entryFlags & ENTRY_TYPE_FLAG) != 0)
            ++counts.nrOfEntryTypes;
        if (!isSet && !isClass && (node.nodeFlags & NODE_EXPORTED) != 0)
            ++counts.nrOfVisibleTypes;
        if (isSet && isClass)
            ++counts.nrOfObjectSets;
    }
    for (RecNr nr = counts.firstVNode; nr != 0; nr = tree.v(nr).next) {
        const VNode &node = tree.v(nr);
        TreeState *owner = treeOfModule(e, ts, node.governorModule);
        if (owner != nullptr && node.governorRec > 0 &&
            isClassKind(baseNode(e, {owner, node.governorRec}).rec().mainType))
            ++counts.nrOfObjects;
    }
    tree.header() = counts;
}

} // namespace asntree
