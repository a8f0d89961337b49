#include "cbet/imports.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "model/modules.h"

namespace {

/* Bit of the module info cache. */
enum : int { CACHE_CIRCULAR = 5 };

enum ImportStatus : char {
    IMPORT_PLAIN = 1,
    IMPORT_CIRCLE = 2, /* part of a circle, or leads to one */
};

struct Import {
    int target = 0;
    ImportStatus status = IMPORT_PLAIN;
};

/* One module: its imports in ascending order, and who imports from it. */
struct ImportRow {
    std::vector<Import> imports;
    std::vector<int> importers;
    int circle = -1;          /* modules that reach one another have the same number */
    bool meetsCircle = false; /* an import of status IMPORT_CIRCLE can be reached from here */
};
using ImportTable = std::vector<ImportRow>;

ImportTable readImports() {
    ImportTable table(modRecList.records.size());
    for (const auto &record : modRecList.records) {
        if (record->state == MOD_PREDEFINED)
            continue;
        AsnModule *module = getAsnModule(record.get());
        const int row = getUniqueModuleNr(module);
        forEachExportingModule(module, [&](AsnModule *exporting) {
            const int target = getUniqueModuleNr(exporting);
            table[static_cast<std::size_t>(row)].imports.push_back({target, IMPORT_PLAIN});
            table[static_cast<std::size_t>(target)].importers.push_back(row);
        });
    }
    for (ImportRow &row : table)
        std::sort(row.imports.begin(), row.imports.end(),
                  [](const Import &a, const Import &b) { return a.target < b.target; });
    return table;
}

/* Modules in the order in which a depth first walk along the imports leaves them. */
std::vector<int> leavingOrder(const ImportTable &table) {
    std::vector<int> order;
    std::vector<bool> seen(table.size());
    std::vector<std::pair<std::size_t, std::size_t>> path; /* module, imports done */
    for (std::size_t start = 0; start < table.size(); ++start) {
        if (!seen[start])
            path.emplace_back(start, 0);
        seen[start] = true;
        while (!path.empty()) {
            auto &[row, done] = path.back();
            if (done == table[row].imports.size()) {
                order.push_back(static_cast<int>(row));
                path.pop_back();
                continue;
            }
            const auto target = static_cast<std::size_t>(table[row].imports[done++].target);
            if (!seen[target])
                path.emplace_back(target, 0);
            seen[target] = true;
        }
    }
    return order;
}

/* Numbers the circles: walking against the imports, from the module left last on, reaches exactly
   the modules that also reach the start. */
void findCircles(ImportTable &table) {
    const std::vector<int> order = leavingOrder(table);
    int circle = 0;
    std::vector<int> open;
    for (auto start = order.rbegin(); start != order.rend(); ++start, ++circle) {
        open.push_back(*start);
        while (!open.empty()) {
            ImportRow &row = table[static_cast<std::size_t>(open.back())];
            open.pop_back();
            if (row.circle >= 0)
                continue;
            row.circle = circle;
            open.insert(open.end(), row.importers.begin(), row.importers.end());
        }
    }
}

/* Everything that reaches `module` now meets a circle. */
void markMeeting(ImportTable &table, int module) {
    std::vector<int> open{module};
    while (!open.empty()) {
        ImportRow &row = table[static_cast<std::size_t>(open.back())];
        open.pop_back();
        if (std::exchange(row.meetsCircle, true))
            continue;
        open.insert(open.end(), row.importers.begin(), row.importers.end());
    }
}

bool importsFrom(const ImportRow &row, int target) {
    const auto found = std::lower_bound(row.imports.begin(), row.imports.end(), target,
                                        [](const Import &a, int b) { return a.target < b; });
    return found != row.imports.end() && found->target == target;
}

/* The status of all imports, in this order: two modules that import each other; then, row by row,
   an import whose target reaches the importer, or reaches an import that has the status already. */
void markCircles(ImportTable &table) {
    const int count = static_cast<int>(table.size());
    for (int row = 0; row < count; ++row)
        for (Import &import : table[static_cast<std::size_t>(row)].imports)
            if (import.target != row &&
                importsFrom(table[static_cast<std::size_t>(import.target)], row)) {
                import.status = IMPORT_CIRCLE;
                markMeeting(table, row);
            }
    for (int row = 0; row < count; ++row)
        for (Import &import : table[static_cast<std::size_t>(row)].imports) {
            const ImportRow &target = table[static_cast<std::size_t>(import.target)];
            if (import.status == IMPORT_CIRCLE || import.target == row)
                continue;
            if (target.meetsCircle ||
                target.circle == table[static_cast<std::size_t>(row)].circle) {
                import.status = IMPORT_CIRCLE;
                markMeeting(table, row);
            }
        }
}

void storeAnswers(const ImportTable &table) {
    for (std::size_t row = 0; row < table.size(); ++row) {
        bool circular = false;
        for (const Import &import : table[row].imports)
            circular |= import.status == IMPORT_CIRCLE && import.target != static_cast<int>(row);
        setModuleInfoCacheBetFlag(&modRecList.records[row]->moduleInfoCache, CACHE_CIRCULAR,
                                  circular);
    }
}

} // namespace

bool cIsCircularImports(AsnModule *module) {
    InfoCache *cache = getModuleInfoCache(module);
    if ((cache->known >> CACHE_CIRCULAR & 1u) == 0) {
        ModRec *current = cMP;
        ImportTable table = readImports();
        findCircles(table);
        markCircles(table);
        storeAnswers(table);
        cMP = current;
    }
    return (cache->answers >> CACHE_CIRCULAR & 1u) != 0;
}
