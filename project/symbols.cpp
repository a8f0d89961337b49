#include "project/symbols.h"

#include <cstring>

#include "base/fatal.h"

SymbolTable *newSymbolTable() {
    return new SymbolTable;
}

SymbolNr putSymbol(SymbolTable *table, const char *text) {
    const std::string_view wanted = text;
    const auto known = table->numbers.find(wanted);
    if (known != table->numbers.end())
        return known->second;
    auto *copy = static_cast<char *>(table->memory.allocate(wanted.size() + 1, 1));
    std::memcpy(copy, text, wanted.size() + 1);
    table->texts.push_back(copy);
    const auto number = static_cast<SymbolNr>(table->texts.size());
    table->numbers.emplace(copy, number);
    return number;
}

const char *getSymbol(const SymbolTable *table, SymbolNr number) {
    if (number < 1 || static_cast<std::size_t>(number) > table->texts.size())
        fatalError(FATAL_READ_RECORD, nullptr);
    return table->texts[static_cast<std::size_t>(number) - 1];
}

void deleteSymbolTable(SymbolTable *table) {
    delete table;
}
