#pragma once

#include <memory_resource>
#include <string_view>
#include <unordered_map>
#include <vector>

/* A table of texts, each stored once and known by a number. */

using SymbolNr = int;
inline constexpr SymbolNr NO_SYMBOL = 0;

struct SymbolTable {
    /* Texts and entries are only added, and go all at once. */
    std::pmr::monotonic_buffer_resource memory;
    std::vector<const char *> texts; /* by number, from 1; in `memory` */
    std::pmr::unordered_map<std::string_view, SymbolNr> numbers{&memory};
};

SymbolTable *newSymbolTable();
/* The number of a text, which is added if it is new. */
SymbolNr putSymbol(SymbolTable *table, const char *text);
/* Valid as long as the table. Fatal error 9 if the number isn't from putSymbol. */
const char *getSymbol(const SymbolTable *table, SymbolNr number);
/* Null is left alone. */
void deleteSymbolTable(SymbolTable *table);
