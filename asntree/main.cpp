#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>
#include <unistd.h>
#include <unordered_set>

#include "asntree/compile.h"
#include "asntree/directives.h"
#include "asntree/emit.h"
#include "asntree/listing.h"
#include "asntree/options.h"
#include "asntree/output.h"
#include "asntree/plan.h"
#include "asntree/search.h"
#include "gen/meta.h"
#include "gen/tooloptions.h"
#include "options/hooks.h"
#include "store/tree.h"

/* asntree: compiles ASN.1 modules into syntax trees. */

namespace {

using namespace asntree;

enum ExitStatus { STATUS_GOOD = 0, STATUS_USAGE = 1, STATUS_ERRORS = 2 };

bool wantsColor(const Settings &settings) {
    return settings.color == ColorWish::Always ||
           (settings.color == ColorWish::Auto && isatty(STDERR_FILENO) != 0);
}

void printMessages(Compilation &c, const Settings &settings) {
    const std::string text = printed(c.diagnostics, wantsColor(settings));
    std::fwrite(text.data(), 1, text.size(), stderr);
}

/* Reads and checks everything; true without errors. */
bool readModules(Compilation &c, const Settings &settings) {
    Search search;
    bool found = true;
    for (const std::string &name : settings.files)
        found = addNamedFile(c, settings, search, name) && found;
    if (!found)
        return false;
    addImportedModules(c, settings, search);
    return checkAll(c);
}

/* Trees and listings beside their places; the message of the first failure otherwise. */
bool writeTrees(const Compilation &c, const Settings &settings, const Plan &plan,
                std::vector<EmittedTree> &trees, Outputs &outputs, std::string &why) {
    KnownTrees known;
    for (std::size_t i = 0; i < trees.size(); ++i)
        known.emplace(plan.trees[i].genPrefix, &trees[i].tree);
    for (std::size_t i = 0; i < trees.size(); ++i) {
        const TreePlan &planned = plan.trees[i];
        if (!writeBeside(outputs, treePath(settings, planned), storedBytes(trees[i].tree), why))
            return false;
        if (!settings.listingDirectory.empty() &&
            !writeBeside(outputs, listingPath(settings, planned),
                         listTree(trees[i].tree, known, listingNotes(c, planned, trees[i])), why))
            return false;
    }
    return true;
}

bool writeDependencies(const Compilation &c, const Settings &settings, const Plan &plan,
                       Outputs &outputs, std::string &why) {
    if (settings.dependencyFile.empty())
        return true;
    std::vector<std::string> targets, sources;
    for (const TreePlan &tree : plan.trees)
        targets.push_back(treePath(settings, tree));
    std::unordered_set<std::string_view> known; /* directives in option files make these sources too */
    for (const Sources *files : {&c.sources, &settings.optionFiles})
        for (const SourceFile &file : files->files)
            if (&file != &c.sources.files.front() && known.insert(file.path).second)
                sources.push_back(file.path); /* the first one is predefined */
    return writeBeside(outputs, settings.dependencyFile, dependencyText(targets, sources), why);
}

/* What is written beside its place while a run may still fail. */
Outputs outputs;

/* An allocation failed: nothing is left to go on with. */
[[noreturn]] void endWithoutMemory() {
    std::fputs("asntree: not enough memory\n", stderr);
    dropOutputs(outputs);
    std::_Exit(STATUS_ERRORS);
}

bool writeAll(const Compilation &c, const Settings &settings, const Plan &plan,
              std::vector<EmittedTree> &trees) {
    std::string why;
    if (writeTrees(c, settings, plan, trees, outputs, why) &&
        writeDependencies(c, settings, plan, outputs, why) && putInPlace(outputs, why))
        return true;
    dropOutputs(outputs);
    std::fprintf(stderr, "asntree: %s\n", why.c_str());
    return false;
}

/* The status, if all that was said on the standard output got there. */
ExitStatus finished(ExitStatus status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    std::fputs("asntree: the standard output can't be written\n", stderr);
    return STATUS_ERRORS;
}

ExitStatus compile(Compilation &c, Settings &settings) {
    c.diagnostics.warningsAreErrors = settings.warningsAreErrors;
    c.diagnostics.strict = settings.strict;
    if (!readModules(c, settings))
        return STATUS_ERRORS;
    placeOptionFiles(settings, c.sources);
    Directives directives;
    takeDirectives(c, settings, directives);
    const Plan plan = makePlan(c, settings, definitionWords(c, directives));
    std::vector<EmittedTree> trees;
    if (c.diagnostics.errors != 0 || !emitTrees(c, plan, settings, &directives, trees) ||
        c.diagnostics.errors != 0)
        return STATUS_ERRORS;
    if (settings.checkOnly)
        return STATUS_GOOD;
    if (!writeAll(c, settings, plan, trees))
        return STATUS_ERRORS;
    std::fputs(summaryText(settings, plan).c_str(), stdout);
    return finished(STATUS_GOOD);
}

/* --list: all that can be listed, and what is wrong with the others. */
ExitStatus listTrees(const Settings &settings) {
    ExitStatus status = STATUS_GOOD;
    for (const std::string &path : settings.files) {
        std::string listing, why;
        if (listFile(path, listing, why)) {
            std::fwrite(listing.data(), 1, listing.size(), stdout);
            continue;
        }
        std::fprintf(stderr, "asntree: %s\n", why.c_str());
        status = STATUS_ERRORS;
    }
    return finished(status);
}

} // namespace

int main(int argc, char **argv) {
    std::set_new_handler(endWithoutMemory);
    optionHooks.globalBEOptionOK = globalBEOptionOK;
    treeHooks.newMetaRec = std::make_shared<BEModMetaRec>;
    Settings settings;
    std::string message;
    const bool good = parseCommandLine(argc, argv, settings, message);
    std::fputs(message.c_str(), stderr);
    if (!good)
        return STATUS_USAGE;
    if (settings.help || settings.version) {
        std::fputs(settings.help ? usageText() : versionText().c_str(), stdout);
        return finished(STATUS_GOOD);
    }
    if (settings.list)
        return listTrees(settings);
    auto *c = new Compilation; /* freeing each node of a large run takes longer than it is worth */
    const ExitStatus status = compile(*c, settings);
    printMessages(*c, settings);
    std::fflush(nullptr);
    _Exit(status);
}
