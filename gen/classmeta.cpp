#include "gen/classmeta.h"

#include "cbet/names.h"
#include "model/modules.h"
#include "objects/classes.h"
#include "objects/objectorder.h"
#include "objects/objects.h"
#include "store/records.h"
#include "store/strings.h"

namespace {

/* What is known of an object in a table of its own module: null for a record that the table has no
   place for. */
template <typename Entry>
/* Tables by unique object number are as long as the module has values; null beyond. */
Entry *placeOfObject(const AsnObject *object, std::vector<Entry> BEModMetaRec::*table) {
    std::vector<Entry> &entries = (*object->posModule->metaRec).*table;
    const auto index = static_cast<std::size_t>(object->posRecord) - 1;
    return index < entries.size() ? &entries[index] : nullptr;
}

/* A module that isn't named on the command line is numbered when a row of it is first asked for. */
void numberObjectsOf(ModRec *modRec) {
    const NodeContext type(REC_TNODE);
    const NodeContext value(REC_VNODE);
    const NodeContext constraint(REC_SUB);
    const NodeContext step(REC_SNODE);
    initializeObjects(getAsnModule(modRec));
}

} // namespace

/* --- records of handles --- */

BEClassMetaRec *newBEClassMetaRec(AsnObjClass *objClass) {
    auto *meta = new BEClassMetaRec;
    meta->accessRoutines = getBEModMetaRec(getModuleOf(objClass))->accessRoutines;
    return meta;
}

void deleteBEClassMetaRec(BEClassMetaRec *meta) {
    delete meta;
}

/* --- names --- */

Text getMetaClassId(AsnObjClass *objClass) {
    if (getBEClassMetaRec(objClass) == nullptr)
        return "";
    return isPlainPredefinedObjClass(objClass) ? getBaseObjClassId(objClass)
                                               : getDefObjClassId(objClass);
}

Text getMetaBaseClassId(AsnObjClass *objClass) {
    return getBEClassMetaRec(objClass) == nullptr ? "" : getBaseObjClassId(objClass);
}

Text getMetaClassName(AsnObjClass *objClass) {
    return cLoneName(getMetaClassId(objClass), getModuleOf(objClass));
}

int getMetaClassAccessRoutines(AsnObjClass *objClass) {
    const BEClassMetaRec *meta = getBEClassMetaRec(objClass);
    return meta == nullptr ? ACCESS_NONE : meta->accessRoutines;
}

Text getMetaObjectId(AsnObject *object) {
    return getIdOf(object);
}

/* --- rows: set by the first pass over all modules, asked by the second --- */

void setMetaObjectNr(AsnObject *object, int nr) {
    if (std::uint32_t *place = placeOfObject(object, &BEModMetaRec::objectNrs))
        *place = static_cast<std::uint32_t>(nr) + 1;
}

int getMetaObjectNr(AsnObject *object) {
    if (!object->posModule->metaRec->objectsNumbered)
        numberObjectsOf(object->posModule);
    const std::uint32_t *place = placeOfObject(object, &BEModMetaRec::objectNrs);
    return place == nullptr ? -1 : static_cast<int>(*place) - 1;
}

bool hasObjectRows(AsnModule *module) {
    if (!getBEModMetaRec(module)->objectsNumbered)
        numberObjectsOf(module->modRec);
    return getBEModMetaRec(module)->hasObjectRows;
}

/* A class that only names another one has no structure, but the other one's. */
bool hasOwnStructure(AsnObjClass *objClass) {
    return isBaseObjClassInCurrentModule(objClass) ||
           (objClass->compStatus == TCS_HEADER &&
            objClass->posModule == objClass->ownerModule->modRec);
}

const char *tableClassId(AsnObjClass *objClass) {
    const char *id = nullptr;
    if (hasOwnStructure(objClass))
        return allocateUniqStri(getMetaClassId(objClass));
    forObjClassDefinedInAnotherModule(
        objClass, [&](AsnObjClass *defined) { id = allocateUniqStri(getMetaClassId(defined)); });
    return id;
}

Text objectTableName(AsnModule *module, const char *classId) {
    return concat(cModulePrefix(module), classId);
}

const char *getMetaObjectTableId(AsnObject *object) {
    getMetaObjectNr(object);
    const auto *place = placeOfObject(object, &BEModMetaRec::objectTableIds);
    return place == nullptr || *place == nullptr ? tableClassId(getObjClassOfObject(object))
                                                 : *place;
}

/* Each object gets the number of its row, in the order of the tables. */
void initializeObjects(AsnModule *module) {
    BEModMetaRec *meta = getBEModMetaRec(module);
    meta->objectsNumbered = true;
    const char *tableId = nullptr;
    auto beginTable = [&](AsnObjClass *objClass, bool) { tableId = tableClassId(objClass); };
    auto numberObject = [&](AsnObjClass *, AsnObject *object, int tableIndex, bool skipped) {
        if (skipped) /* has no row at this place, but maybe at another one */
            return;
        meta->hasObjectRows = true;
        setMetaObjectNr(object, tableIndex);
        if (const char **place = placeOfObject(object, &BEModMetaRec::objectTableIds))
            *place = tableId;
    };
    forEachObjectInClassOrder(module, beginTable, numberObject, nullptr, true);
}
