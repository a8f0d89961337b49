#pragma once

struct BEModMetaRec;

/* What the options need of the tool above them; it sets them before it parses the command line. */
struct OptionHooks {
    /* Checks an option of the tool itself and stores it; false if it is invalid. "VERSION" ends the
       run. */
    bool (*globalBEOptionOK)(BEModMetaRec *meta, const char *option) = nullptr;
    /* Is it an option of the project outputs; stores it, false if it is invalid. Both or neither
       are set; without them such an option is unknown. */
    bool (*isTAVIOption)(const char *option) = nullptr;
    bool (*taviOptionOK)(const char *option) = nullptr;
};
extern OptionHooks optionHooks;
