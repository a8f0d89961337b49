#include "tests/support/inprocess.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "cbet/cbet.h"
#include "driver/driver.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typenames.h"
#include "model/typequeries.h"

namespace {

Text plainName(AsnType *type) {
    return getTypeRef(type);
}

/* Goes down from `type` along the names that are left. */
bool descend(AsnType *type, const std::string &place, Call<void(AsnType *)> func) {
    if (place.empty()) {
        func(type);
        return true;
    }
    const std::size_t end = std::min(place.find('.'), place.size());
    const std::string name = place.substr(0, end);
    const std::string rest = end < place.size() ? place.substr(end + 1) : std::string();
    bool found = false;
    forEachTypeCompOrElem(type, [&](AsnType *, AsnType *son, int) {
        const bool wanted = isElemType(son) ? name == "*" : plainName(son) == name;
        if (wanted && !found)
            found = descend(son, rest, func);
    });
    return found;
}

} // namespace

void startTool(const WorkDir &dir, const std::vector<std::string> &arguments) {
    /* Options refer to the texts for the rest of the run. */
    static std::vector<std::string> texts;
    static std::vector<char *> argv;
    texts = {"velmo", "-S=" + dir.path() + "/"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    for (std::string &text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);
    installHooks();
    cInitCBET(
        [] { initBackend(static_cast<int>(texts.size()), argv.data(), "VELMO", 107, 0, nullptr); });
}

void startTool(const WorkDir &dir, TreeWriter &tree) {
    const std::string prefix =
        tree.strings8[static_cast<std::size_t>(tree.header().filePrefix) - 1];
    tree.save(dir.path(prefix + ".stx"));
    startTool(dir, {prefix});
}

void withModule(const std::string &genPrefix, Call<void(AsnModule *)> func) {
    for (const auto &record : modRecList.records) {
        if (record->genPrefix != genPrefix)
            continue;
        cMP = record.get();
        func(getAsnModule(record.get()));
        return;
    }
    std::fprintf(stderr, "no module %s\n", genPrefix.c_str());
    std::abort();
}

void withType(const std::string &place, Call<void(AsnType *)> func) {
    const std::size_t end = std::min(place.find('.'), place.size());
    bool found = false;
    forFirstModule([&](AsnModule *module) {
        forEachType(module, [&](AsnType *type, int) {
            if (plainName(type) == place.substr(0, end) && !found)
                found = descend(type, end < place.size() ? place.substr(end + 1) : "", func);
        });
    });
    if (!found) {
        std::fprintf(stderr, "no type %s\n", place.c_str());
        std::abort();
    }
}
