#pragma once

#include <string_view>

#include "store/ketradef.h"

/* The option "PREFIX=", which ties a module to the prefixes of its generated files and names. */

/* The texts between the ":"; an empty prefix is that of the part before it. All are parts of the
   option's text, which ends behind the last one. */
struct PrefixOption {
    std::string_view moduleName;
    std::string_view filePrefix;
    std::string_view genPrefix;
    bool genPrefixGiven = false;
};

/* Splits the text behind "PREFIX="; false if the syntax is wrong. */
bool parsePrefixOption(const char *text, PrefixOption *parts);

/* The text behind "PREFIX=": module name, file prefix and generation prefix. Makes the record of
   that module and notes it in the options of `module`. False if the syntax is wrong. */
bool prefixOptOK(ModRec *module, const char *text);
/* Warns of a prefix of more than `limit` characters; `text` goes on to the end of the option. */
void checkPrefixOptionPart(const char *what, const char *text, int limit);
