#include <cstdint>
#include <cstdlib>

#include "asntree/compile.h"
#include "asntree/directives.h"
#include "asntree/emit.h"
#include "asntree/listing.h"
#include "asntree/options.h"
#include "asntree/search.h"

/* ASN.1 text through the whole compiler, up to the bytes of the trees and their listings. */

namespace {

using namespace asntree;

void emitAll(Compilation &c, Settings &settings) {
    Directives directives;
    takeDirectives(c, settings, directives);
    const Plan plan = makePlan(c, settings, definitionWords(c, directives));
    std::vector<EmittedTree> trees;
    if (c.diagnostics.errors != 0 || !emitTrees(c, plan, settings, &directives, trees))
        return;
    KnownTrees known;
    for (std::size_t i = 0; i < trees.size(); ++i)
        known.emplace(plan.trees[i].genPrefix, &trees[i].tree);
    for (std::size_t i = 0; i < trees.size(); ++i) {
        Tree again;
        std::string why;
        if (!readTree(storedBytes(trees[i].tree), again, why))
            std::abort(); /* what is written can be read */
        listTree(trees[i].tree, known, listingNotes(c, plan.trees[i], trees[i]));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    Settings settings;
    Search search;
    Compilation c;
    settings.strict = size % 5 == 0;
    settings.skipUnsupported = size % 2 == 0;
    c.diagnostics.strict = settings.strict;
    std::string text(reinterpret_cast<const char *>(data), size);
    addFile(c, *addSource(c.sources, "text.asn", std::move(text)));
    addImportedModules(c, settings, search);
    if (checkAll(c))
        emitAll(c, settings);
    printed(c.diagnostics, true);
    return 0;
}
