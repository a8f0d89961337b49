#include "show/show.h"

#include "show/writer.h"
#include "store/records.h"
#include "store/strings.h"

Text recordText(const ModRec *module, RecNr nr, std::int32_t line) {
    const Text where = module == cMP ? "" : " of " + module->moduleName;
    return "record " + std::to_string(nr) + where +
           (line == 0 ? "" : ", line " + std::to_string(line));
}

void showWrittenOptions(int level, ModRec *module, const TedRange &range) {
    for (RecNr nr = range.first; nr != 0 && nr <= range.last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind == TED_REMOVED)
            continue;
        const Text text = optionalStri(module, tedRec.tedText);
        showFact(level, (tedRec.tedKind == TED_TEXT ? "text " : "option ") + text);
    }
}
