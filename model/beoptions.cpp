#include "model/beoptions.h"

#include "options/catalogue.h"
#include "store/records.h"
#include "store/strings.h"

void forEachBEOption(ModRec *module, RecNr first, RecNr last, Call<void(const char *text)> func) {
    if (first == 0)
        return;
    for (RecNr nr = first; nr <= last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_BACKEND_OPTION || tedRec.tedText == 0)
            continue;
        const char *text = getStri(module, tedRec.tedText);
        if (parseBECommentOption(text) == nullptr)
            func(text);
    }
}
