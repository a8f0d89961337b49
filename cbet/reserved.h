#pragma once

#include <string_view>

#include "base/text.h"

/* Words that mean something in C, and so can't be the name of anything there. Names that are put
   together of several parts never meet one; a name that stands alone gets "_" behind it. */

struct AsnModule;

/* What names need of the tool; it sets them before the first file is written. */
struct NameHooks {
    /* True if the words of C++ count for the module as well; null for never. */
    bool (*avoidsCPlusPlusWords)(AsnModule *module) = nullptr;
};
extern NameHooks nameHooks;

/* True for a keyword of C99, and of C++ up to C++20 if `cPlusPlus`. */
bool cIsReservedWord(std::string_view word, bool cPlusPlus);

/* The words of C++ count for the module as well. */
bool cAvoidsCPlusPlusWords(AsnModule *module);

/* The name of a member, a type, a class or a define that stands alone in the C of `module`. */
Text cLoneName(std::string_view name, AsnModule *module);
