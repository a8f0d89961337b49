#include "gen/foreigntables.h"

#include <algorithm>
#include <vector>

#include "cbet/forms.h"
#include "gen/fileset.h"
#include "gen/objecttables.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "objects/fieldvalues.h"
#include "objects/objectorder.h"
#include "objects/objectsets.h"
#include "store/records.h"

namespace {

struct ForeignTable {
    ModRec *module;
    bool entries = false;
    bool objects = false;
};

class ForeignTables {
public:
    explicit ForeignTables(AsnModule *module) : module_(module) {}

    void collect() {
        forEachObjectInClassOrder(
            module_, nullptr,
            [this](AsnObjClass *, AsnObject *object, int, bool skipped) {
                if (!skipped)
                    visitRow(object);
            },
            nullptr, true);
        forEachObjectSet(module_, [this](AsnObjectSet *objectSet, int) {
            forObjectSet(objectSet,
                         [this](AsnObjectSet *, AsnObject *object, int) { noteObject(object); });
        });
    }

    const std::vector<ForeignTable> &found() const { return found_; }

private:
    void noteEntryType(AsnFieldValue *value) {
        forEntryTypeFieldValue(value, [this](AsnFieldValue *, AsnType *type, int) {
            if (ForeignTable *table = tableOf(getModuleOfType(type)))
                table->entries = true;
        });
    }

    void visitRow(AsnObject *object) {
        if (isPredefinedObjClass(getObjClassOfObject(object)))
            forEachPredefinedFieldValue(object, [this](AsnFieldValue *value, PredefinedField) {
                noteEntryType(value);
            });
        forEachPossibleObjectFieldValue(object, [this](AsnObject *, AsnFieldValue *value, int) {
            const char *note = nullptr;
            if (isEmptyFieldValue(value) ||
                isSkippedField(getObjClassFieldOfFieldValue(value), &note))
                return;
            if (isTypeFieldValue(value))
                noteEntryType(value);
            forObjectFieldValue(value,
                                [this](AsnFieldValue *, AsnObject *inner) { noteObject(inner); });
            forObjectSetFieldValue(
                value, [this](AsnFieldValue *, AsnObject *inner, int) { noteObject(inner); });
        });
    }

    void noteObject(AsnObject *object) {
        if (ForeignTable *table = tableOf(getModuleOf(object)))
            table->objects = true;
    }

    /* Null for a table of the module itself. */
    ForeignTable *tableOf(AsnModule *other) {
        if (other->modRec == module_->modRec)
            return nullptr;
        const auto known =
            std::find_if(found_.begin(), found_.end(),
                         [&](const ForeignTable &table) { return table.module == other->modRec; });
        return known != found_.end() ? &*known : &found_.emplace_back(ForeignTable{other->modRec});
    }

    AsnModule *module_;
    std::vector<ForeignTable> found_;
};

struct ReferredModules {
    std::unordered_set<const ModRec *> found;
    int depth = 0; /* of types within one another */
};

/* Definitions of the module itself are walked on their own. */
void collectReferredTypes(AsnType *type, ReferredModules &modules) {
    const NestingGuard guard(&modules.depth, type->posModule);
    modules.found.insert(type->baseModule);
    if (cIsDefinedBaseType(type) && !isDefinedType(type))
        return;
    if (!isLeafType(type) && type->baseModule == type->posModule)
        forEachTypeCompOrElem(type, [&modules](AsnType *, AsnType *son, int) {
            collectReferredTypes(son, modules);
        });
}

} // namespace

/* Types come through classes and objects too, so that imports alone don't tell. */
std::unordered_set<const ModRec *> modulesOfReferredTypes(AsnModule *module) {
    ReferredModules modules;
    forEachEntryVisType(module, [&](AsnType *type, int) { collectReferredTypes(type, modules); });
    return modules.found;
}

void forEachForeignTable(AsnModule *module,
                         Call<void(AsnModule *other, bool entries, bool objects)> func) {
    ForeignTables tables(module);
    tables.collect();
    for (const ForeignTable &table : tables.found()) {
        AsnModule *other = getAsnModule(table.module);
        int first, second;
        if (getTableFileKind(other, getGenArr(other), &first, &second))
            func(other, table.entries, table.objects);
    }
}
