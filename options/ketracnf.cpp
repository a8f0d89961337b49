#include "options/ketracnf.h"

namespace {

void setPair(GlobalOptions *options, int category, GenChoice choice) {
    const auto index = static_cast<std::size_t>(category);
    options->genArr[index] = choice;
    options->genArr[index + CAT_PAIR_DISTANCE] = choice;
}

void setCoding(GlobalOptions *options, GenChoice functions, GenChoice prototypes, GenChoice third) {
    setPair(options, CAT_ENC, functions);
    setPair(options, CAT_ENC_EXT, prototypes);
    setPair(options, CAT_ENC_U, third);
}

} // namespace

void initGenArr(GlobalOptions *options, int definitionCategory) {
    auto &genArr = options->genArr;
    genArr[CAT_TYP] = genArr[CAT_DEF] = 1;
    genArr[CAT_TAB_EXT] = 0;
    setPair(options, CAT_ASK, GEN_NONE);
    setPair(options, CAT_ASK_EXT, GEN_NONE);
    setPair(options, CAT_ASK_U, GEN_NONE);
    switch (definitionCategory) {
    case DEFCAT_STAND_ALONE:
        genArr[CAT_TAB] = 0;
        setCoding(options, GEN_SEPARATE, GEN_COMBINED, GEN_COMBINED);
        break;
    case DEFCAT_MORLA_SERVICE:
        genArr[CAT_TAB] = 1;
        setCoding(options, GEN_NONE, GEN_NONE, GEN_NONE);
        break;
    case DEFCAT_MORLA_PROTOCOL:
        genArr[CAT_TAB] = 1;
        setCoding(options, GEN_COMBINED, GEN_COMBINED, GEN_NONE);
        break;
    case DEFCAT_MORLA_IOS:
        genArr[CAT_TAB] = genArr[CAT_TAB_EXT] = 1;
        break;
    default: /* other definitions keep what is set */
        break;
    }
}
