#pragma once

#include <deque>
#include <string_view>
#include <unordered_map>

#include "store/text.h"

/* A table of texts, each stored once and known by a number. */

using SymbolNr = int;
inline constexpr SymbolNr NO_SYMBOL = 0;

struct SymbolTable {
    std::deque<Text> texts; /* by number, from 1; a deque, since the numbers below point to them */
    std::unordered_map<std::string_view, SymbolNr> numbers;
};

SymbolTable *newSymbolTable();
/* The number of a text, which is added if it is new. */
SymbolNr putSymbol(SymbolTable *table, const char *text);
/* Valid as long as the table. Fatal error 9 if the number isn't from putSymbol. */
const char *getSymbol(const SymbolTable *table, SymbolNr number);
/* Null is left alone. */
void deleteSymbolTable(SymbolTable *table);
