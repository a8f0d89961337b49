#include <cstdint>
#include <string>

#include "asntree/listing.h"
#include "driver/velmo_main.h"
#include "fuzz/child.h"
#include "show/velmo_show.h"

/* Trees: what the generator makes of one, with the trees of the examples beside it for its imports,
   and what the listing and the display show of it. */

namespace {

int list() {
    std::string listing, why;
    return asntree::listFile("../trees/fuzz.stx", listing, why) ? 0 : 1;
}

int generate() {
    std::string words[] = {"velmo", "-S=../trees/", "-TAVI-PREFIX=browser", "fuzz"};
    char *argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    return velmo_main(4, argv);
}

int show() {
    std::string words[] = {"velmo-show", "-S=../trees/", "fuzz"};
    char *argv[] = {words[0].data(), words[1].data(), words[2].data(), nullptr};
    return velmo_show(3, argv);
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
