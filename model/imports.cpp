#include "model/modules.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

/* --- walks along imports --- */

/* A module whose imports are being visited. */
struct OpenModule {
    ModRec *modRec;
    AsnModule *handle; /* null for the module that the walk started from */
    std::size_t nextImport;
};

class ExporterWalk {
public:
    ExporterWalk(Call<bool(AsnModule *)> descends, Call<void(AsnModule *)> func)
        : descends_(descends), func_(func) {}

    void run(ModRec *start) {
        visited_.insert(start);
        open_.push_back({start, nullptr, 0});
        while (!open_.empty()) {
            if (ModRec *next = nextExporter(open_.back()))
                enter(next);
            else
                leave();
        }
    }

private:
    /* The next module to visit among the imports of an open one, null behind the last. */
    ModRec *nextExporter(OpenModule &module) {
        while (module.nextImport < module.modRec->imports.size()) {
            const PicRec &import = *module.modRec->imports.recs[module.nextImport++];
            if (import.picMod != nullptr && import.picMod->state != MOD_PREDEFINED &&
                import.picMark != 0 && visited_.insert(import.picMod).second)
                return import.picMod;
        }
        return nullptr;
    }

    void enter(ModRec *modRec) {
        cMP = modRec;
        AsnModule *handle = getAsnModule(modRec);
        std::size_t firstImport =
            descends_ && !descends_(handle) ? modRec->imports.size() : std::size_t{0};
        open_.push_back({modRec, handle, firstImport});
    }

    void leave() {
        OpenModule done = open_.back();
        open_.pop_back();
        if (done.handle == nullptr)
            return;
        cMP = done.modRec;
        func_(done.handle);
    }

    Call<bool(AsnModule *)> descends_;
    Call<void(AsnModule *)> func_;
    std::unordered_set<const ModRec *> visited_;
    std::vector<OpenModule> open_;
};

} // namespace

void forEachExporterFirst(AsnModule *module, Call<bool(AsnModule *)> descends,
                          Call<void(AsnModule *)> func) {
    requireCall(func);
    ModRec *current = cMP;
    ExporterWalk(descends, func).run(module->modRec);
    cMP = current;
}

void forEachExportingModule(AsnModule *module, Call<void(AsnModule *exporting)> func) {
    forEachExporterFirst(
        module, [](AsnModule *) { return false; }, func);
}

/* --- circles among importing modules --- */

namespace {

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
        modRecList.records[row]->circularImports = circular;
    }
}

} // namespace

bool isCircularImports(AsnModule *module) {
    std::optional<bool> &answer = module->modRec->circularImports;
    if (!answer) {
        ModRec *current = cMP;
        ImportTable table = readImports();
        findCircles(table);
        markCircles(table);
        storeAnswers(table);
        cMP = current;
    }
    return *answer;
}
