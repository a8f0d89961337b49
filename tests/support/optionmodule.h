#pragma once

#include <string>
#include <vector>

#include "options/ketracnf.h"

/* Module records with options, made without a file, for tests of the options themselves. */

/* Fills the hooks of loading and options as the tool does, but without its usage text. */
void installOptionHooks();

/* A module that counts as loaded, named on the command line (only before all others that are not).
   Its prefix length is that of the run. */
ModRec *makeOptionModule(const std::string &prefix, const std::string &moduleName,
                         int prefixLength);

/* One option as a tree stores it, its first character included. */
struct StoredOption {
    int kind; /* TedKind */
    std::string text;
};

/* Adds the records to the module and settles its options as if it had just been read. */
void settleOptions(ModRec *module, const std::vector<StoredOption> &options);
/* The same with general options alone, given without the first character. */
void settleGeneralOptions(ModRec *module, const std::vector<std::string> &options);
