#pragma once

#include "base/call.h"
#include "options/ketracnf.h"

/* The table of general options: name, form, limits and default of each. */

/* Checks an option ("NAME=value") against the table and stores it in the options of `module`. False
   if the value is wrong, or the table doesn't have the name and `*known` is false. */
bool tableOptionOK(ModRec *module, const char *text, bool *known);

/* "ALTENCF=" and "ALTDECF=": an alternative's number and its set of entry categories. */
bool alternativeOptionOK(GlobalOptions *options,
                         std::array<std::uint8_t, MAX_ALTERNATIVES> *categories, const char *value);

/* The words of a "COMBINE=" value; false if they are malformed, repeated or fewer than two. */
bool splitCombineOption(const char *value, int prefixLength, std::vector<Text> *words);

/* Each general option ("NAME=") with the value in force in the words of an option; empty if it has
   none, or one that nobody reads. */
void forEachOptionInForce(const GlobalOptions &options,
                          Call<void(const char *name, const Text &value)> func);
