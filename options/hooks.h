#pragma once

#include "store/ketradef.h"

struct BEModMetaRec;

/* What became of an option of a tree or of the command line. */
enum class OptionFate { Taken, Refused, ForOtherModules };

/* What the options need of the tool above them; it sets them before it parses the command line. */
struct OptionHooks {
    /* Checks an option of the tool itself and stores it; false if it is invalid. "VERSION" ends the
       run. */
    bool (*globalBEOptionOK)(BEModMetaRec *meta, const char *option) = nullptr;
    /* Is it an option of the project outputs; stores it, false if it is invalid. Both or neither
       are set; without them such an option is unknown. */
    bool (*isTAVIOption)(const char *option) = nullptr;
    bool (*taviOptionOK)(const char *option) = nullptr;

    /* Told of each option of the command line when it has become record `nr` of the module in cMP;
       `file` is the option file, null for the command line itself. Null tells nobody. */
    void (*optionStored)(RecNr nr, const char *file) = nullptr;
    /* Told of each option that a pass has settled; twice of one that two passes look at. */
    void (*optionSettled)(ModRec *module, RecNr nr, OptionFate fate) = nullptr;
};
extern OptionHooks optionHooks;
