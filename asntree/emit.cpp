#include "asntree/emitter.h"

#include "asntree/graph.h"

/* The run over all trees. */

namespace asntree {

std::string treeName(std::string_view name) {
    std::string text(name);
    for (char &letter : text)
        if (letter == '-')
            letter = '_';
    return text;
}

RecNr nameNr(TreeState &ts, std::string_view name) {
    return name.empty() ? 0 : ts.tree().str(treeName(name));
}

std::int32_t lineOf(Emitter &e, Place place) {
    if (!place.known())
        return 0;
    return static_cast<std::int32_t>(lineAndColumn(e.c.sources[place.file], place.offset).line);
}

void addNote(Emitter &e, TreeState &ts, std::string text) {
    ts.out->notes.push_back({e.current, std::move(text)});
}

namespace {

std::string fullName(const Assignment &assignment) {
    return std::string(assignment.module->name.text) + "." + std::string(assignment.name.text);
}

} // namespace

void leaveOut(Emitter &e, Place place, const std::string &what) {
    if (e.current == nullptr || !e.excluded.insert(e.current).second)
        return;
    e.newlyExcluded.push_back(e.current);
    warning(e.c.diagnostics, place, "`" + fullName(*e.current) + "` is left out: " + what);
}

void refuse(Emitter &e, Place place, const std::string &what) {
    if (e.current == nullptr || e.excluded.contains(e.current))
        return;
    if (e.settings.skipUnsupported)
        return leaveOut(e, place.known() ? place : e.current->name.place, what);
    error(e.c.diagnostics, place.known() ? place : e.current->name.place,
          "`" + fullName(*e.current) + "`: " + what);
    e.failed = true;
}

namespace {

/* Trees refer to one another by numbers, so what is left out is left out before any is given. */
void makeTrees(Emitter &e, std::vector<EmittedTree> &trees) {
    trees.assign(e.plan.trees.size(), {});
    e.trees.clear();
    e.types.clear();
    e.values.clear();
    e.classFields.clear();
    for (std::size_t i = 0; i < e.plan.trees.size(); ++i) {
        TreeState &ts = e.trees.emplace_back();
        ts.number = static_cast<std::uint32_t>(i);
        ts.plan = &e.plan.trees[i];
        ts.out = &trees[i];
        ts.settings = moduleSettings(e.settings, ts.plan->filePrefix,
                                     ts.plan->modules.front()->syntax->name.text);
        emitHeader(e, ts);
        allocateDefinitions(e, ts);
        allocateFields(e, ts);
    }
    for (TreeState &ts : e.trees) {
        emitDefinitions(e, ts);
        emitModuleIdentifier(e, ts);
        runQueue(e, ts);
    }
    for (TreeState &ts : e.trees)
        resolvePlaces(e, ts);
    for (TreeState &ts : e.trees)
        aliasForeignInstances(e, ts);
    for (TreeState &ts : e.trees) {
        setEndpoints(e, ts);
        markRecursion(e, ts);
        narrowHeldNumbers(e, ts);
    }
    for (TreeState &ts : e.trees) {
        countDefinitions(e, ts);
        layOutOptions(e, ts);
    }
}

void noteLeftOut(Emitter &e, std::vector<EmittedTree> &trees) {
    for (std::size_t i = 0; i < trees.size(); ++i)
        for (const Assignment *definition : e.plan.trees[i].definitions)
            if (e.excluded.contains(definition))
                trees[i].leftOut.push_back(definition);
    if (e.settings.listingDirectory.empty())
        return;
    for (const auto &[definition, place] : e.types)
        trees[place.tree].types.emplace(definition, place.nr);
    for (const auto &[definition, place] : e.values)
        trees[place.tree].values.emplace(definition, place.nr);
}

} // namespace

bool emitTrees(Compilation &c, const Plan &plan, const Settings &settings,
               const Directives *directives, std::vector<EmittedTree> &trees) {
    Emitter e(c, plan, settings);
    e.directives = directives;
    findOctetTypes(e);
    leaveOutMacros(e);
    const int errors = c.diagnostics.errors;
    do {
        e.newlyExcluded.clear();
        makeTrees(e, trees);
    } while (!e.failed && !e.newlyExcluded.empty());
    noteLeftOut(e, trees);
    return !e.failed && c.diagnostics.errors == errors;
}

} // namespace asntree
