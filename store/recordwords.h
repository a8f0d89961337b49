#pragma once

#include <span>

#include "store/ketradef.h"

/* The numbers and bits of records in words, for people: what a tree's listing and the display of a
   module say. */

/* "SEQUENCE OF", "VisibleString"; for what is no type a word for what it is ("reference"), "?" for
   a number outside the table. */
const char *typeWord(int mainType);
/* A ValueForm: "ui8", "stru"; "?" for another number. */
const char *formWord(int form);
/* The decimal number; the two that stand for infinity are MIN and MAX. */
Text numberText(sint64 number);

struct BitWord {
    std::uint32_t bit; /* the mask */
    const char *word;
};
/* Bits of TNode.optionBits, TNode.typeFlags, and the functions in TNode.entryFlags. */
std::span<const BitWord> typeOptionWords();
std::span<const BitWord> typeFlagWords();
std::span<const BitWord> entryFunctionWords();
