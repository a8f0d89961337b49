#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include "asntree/compile.h"
#include "asntree/directives.h"
#include "asntree/emit.h"
#include "asntree/options.h"
#include "driver/driver.h"
#include "fuzz/child.h"

/* Option files: what the compiler makes of one for a module, and the generator for its tree. */

namespace {

using namespace asntree;

std::string moduleText;

int compile() {
    installHooks();
    Settings settings;
    std::string message, words[] = {"asntree", "+../fuzz.opt", "stock"};
    char *argv[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    if (!parseCommandLine(3, argv, settings, message))
        return 1;
    Compilation c;
    addFile(c, *addSource(c.sources, "stock.asn", moduleText));
    if (!checkAll(c))
        return 2;
    placeOptionFiles(settings, c.sources);
    Directives directives;
    takeDirectives(c, settings, directives);
    const Plan plan = makePlan(c, settings, definitionWords(c, directives));
    std::vector<EmittedTree> trees;
    if (c.diagnostics.errors == 0)
        emitTrees(c, plan, settings, &directives, trees);
    printed(c.diagnostics, false);
    return 0;
}

int generate() {
    return runMain(velmo_main, {"velmo", "+../fuzz.opt", "-S=../trees/", "stock"});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    copyTrees(FUZZ_TREES);
    if (moduleText.empty()) {
        std::ifstream file(FUZZ_MODULE, std::ios::binary);
        moduleText.assign(std::istreambuf_iterator<char>(file), {});
    }
    writeInput("fuzz.opt", data, size);
    inChild(1, compile);
    inChild(2, generate);
    return 0;
}
