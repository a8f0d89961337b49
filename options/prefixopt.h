#pragma once

#include "store/ketradef.h"

/* The option "PREFIX=", which ties a module to the prefixes of its generated files and names. */

/* The text behind "PREFIX=": module name, file prefix and generation prefix. Makes the record of
   that module and notes it in the options of `module`. False if the syntax is wrong. */
bool prefixOptOK(ModRec *module, const char *text);
/* Warns of a prefix of more than `limit` characters; `text` goes on to the end of the option. */
void checkPrefixOptionPart(const char *what, const char *text, int limit);
