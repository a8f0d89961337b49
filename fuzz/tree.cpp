#include <cstdint>
#include <string>

#include "asntree/listing.h"
#include "driver/driver.h"
#include "fuzz/child.h"
#include "show/show.h"

/* Trees: what the generator makes of one, with the trees of the examples beside it for its imports,
   and what the listing and the display show of it. */

namespace {

int list() {
    std::string listing, why;
    return asntree::listFile("../trees/fuzz.stx", listing, why) ? 0 : 1;
}

int generate() {
    return runMain(velmo_main, {"velmo", "-S=../trees/", "-TAVI-PREFIX=browser", "fuzz"});
}

int show() {
    return runMain(velmo_show, {"velmo-show", "-S=../trees/", "fuzz"});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    copyTrees(FUZZ_TREES);
    writeInput("trees/fuzz.stx", data, size);
    inChild(1, list);
    inChild(2, generate);
    inChild(2, show);
    return 0;
}
