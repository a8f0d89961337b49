#include "project/symbols.h"

#include "driver/fatal.h"

SymbolTable *newSymbolTable() {
    return new SymbolTable;
}

SymbolNr putSymbol(SymbolTable *table, const char *text) {
    const auto known = table->numbers.find(text);
    if (known != table->numbers.end())
        return known->second;
    table->texts.emplace_back(text);
    const auto number = static_cast<SymbolNr>(table->texts.size());
    table->numbers.emplace(table->texts.back(), number);
    return number;
}

const char *getSymbol(const SymbolTable *table, SymbolNr number) {
    if (number < 1 || static_cast<std::size_t>(number) > table->texts.size())
        fatalError(FATAL_READ_RECORD, nullptr);
    return table->texts[static_cast<std::size_t>(number) - 1].c_str();
}

void deleteSymbolTable(SymbolTable *table) {
    delete table;
}
