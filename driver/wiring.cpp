#include "driver/driver.h"

#include "base/fatal.h"
#include "cbet/names.h"
#include "gen/classmeta.h"
#include "gen/meta.h"
#include "gen/tooloptions.h"
#include "model/hooks.h"
#include "options/catalogue.h"
#include "options/hooks.h"
#include "options/ketracnf.h"
#include "project/ketratavi.h"
#include "store/tree.h"

namespace {

void tellSummary(const char *text, const char *detail) {
    if (taviIsActive())
        taviSummaryFatalError(text, detail);
}

} // namespace

void installHooks() {
    setFatalErrorListener(tellSummary);

    treeHooks.newOptions = std::make_shared<GlobalOptions>;
    treeHooks.newMetaRec = std::make_shared<BEModMetaRec>;
    treeHooks.settleStoredOptions = settleStoredOptions;

    optionHooks.globalBEOptionOK = globalBEOptionOK;
    optionHooks.isTAVIOption = taviIsTAVIOption;
    optionHooks.taviOptionOK = taviOptionOK;

    nameHooks.avoidsCPlusPlusWords = avoidsCPlusPlusWords;

    modelHooks.initBEModMetaRec = initBEModMetaRec;
    modelHooks.newBETypMetaRec = newBETypMetaRec;
    modelHooks.deleteBETypMetaRec = deleteBETypMetaRec;
    modelHooks.typeBEOptionOK = typeBEOptionOK;
    modelHooks.newBEClassMetaRec = newBEClassMetaRec;
    modelHooks.deleteBEClassMetaRec = deleteBEClassMetaRec;
    modelHooks.classBEOptionOK = classBEOptionOK;
}
