#include "model/beoptions.h"

#include "options/catalogue.h"
#include "store/records.h"
#include "store/strings.h"

void forEachBEOption(ModRec *module, RecNr first, RecNr last,
                     Call<void(const char *text, const char *comment)> func) {
    if (first == 0)
        return;
    for (RecNr nr = first; nr <= last; ++nr) {
        readRec(module, REC_TED, nr);
        if (tedRec.tedKind != TED_BACKEND_OPTION || tedRec.tedText == 0)
            continue;
        const char *text = getStri(module, tedRec.tedText);
        func(text, parseBECommentOption(text));
    }
}

void forEachBEComment(ModRec *module, RecNr first, RecNr last,
                      Call<void(const char *comment, int nbr)> func) {
    int nbr = 0;
    forEachBEOption(module, first, last, [&](const char *, const char *comment) {
        if (comment != nullptr)
            func(comment, nbr++);
    });
}
