#include "gen/classmeta.h"

#include "model/classes.h"
#include "model/modules.h"
#include "model/objectorder.h"
#include "model/objects.h"
#include "store/records.h"

namespace {

/* The number of an object's row, kept with the module that defines the object: null for a record
   that the module's table of numbers has no place for. */
std::uint32_t *objectNrPlace(const AsnObject *object) {
    std::vector<std::uint32_t> &numbers = object->posModule->metaRec->objectNrs;
    const auto index = static_cast<std::size_t>(object->posRecord) - 1;
    return index < numbers.size() ? &numbers[index] : nullptr;
}

/* A module that isn't named on the command line is numbered when a row of it is first asked for. */
void numberObjectsOf(ModRec *modRec) {
    const NodeContext type(REC_TNODE);
    const NodeContext value(REC_VNODE);
    const NodeContext constraint(REC_SUB);
    const NodeContext step(REC_SNODE);
    AsnModule *module = newAsnModule(modRec);
    initializeObjects(module);
    delAsnModule(module);
}

} // namespace

BEClassMetaRec *newBEClassMetaRec(AsnObjClass *objClass) {
    auto *meta = new BEClassMetaRec;
    getDefObjClassId(meta->classId, "", objClass, "");
    getBaseObjClassId(meta->baseClassId, "", objClass, "");
    meta->accessRoutines = getBEModMetaRec(getModuleOfObjClass(objClass))->accessRoutines;
    return meta;
}

void deleteBEClassMetaRec(BEClassMetaRec *meta) {
    delete meta;
}

BEObjMetaRec *newBEObjMetaRec(AsnObject *object) {
    auto *meta = new BEObjMetaRec;
    getObjectId(meta->objectId, "", object, "");
    return meta;
}

void deleteBEObjMetaRec(BEObjMetaRec *meta) {
    delete meta;
}

BEObjSetMetaRec *newBEObjSetMetaRec() {
    return new BEObjSetMetaRec;
}

void deleteBEObjSetMetaRec(BEObjSetMetaRec *meta) {
    delete meta;
}

const char *getMetaClassId(AsnObjClass *objClass) {
    const BEClassMetaRec *meta = getBEClassMetaRec(objClass);
    return meta == nullptr ? "" : meta->classId.c_str();
}

const char *getMetaBaseClassId(AsnObjClass *objClass) {
    const BEClassMetaRec *meta = getBEClassMetaRec(objClass);
    return meta == nullptr ? "" : meta->baseClassId.c_str();
}

int getMetaClassAccessRoutines(AsnObjClass *objClass) {
    const BEClassMetaRec *meta = getBEClassMetaRec(objClass);
    return meta == nullptr ? ACCESS_NONE : meta->accessRoutines;
}

const char *getMetaObjectId(AsnObject *object) {
    const BEObjMetaRec *meta = getBEObjMetaRec(object);
    return meta == nullptr ? "" : meta->objectId.c_str();
}

void setMetaObjectNr(AsnObject *object, std::uint32_t nr) {
    if (std::uint32_t *place = objectNrPlace(object))
        *place = nr;
}

std::uint32_t getMetaObjectNr(AsnObject *object) {
    if (!object->posModule->metaRec->objectsNumbered)
        numberObjectsOf(object->posModule);
    const std::uint32_t *place = objectNrPlace(object);
    return place == nullptr ? 0 : *place;
}

void initializeObjects(AsnModule *module) {
    getBEModMetaRec(module)->objectsNumbered = true;
    forEachObjectInClassOrder(
        module, nullptr,
        [](AsnObjClass *, AsnObject *object, int tableIndex, bool) {
            setMetaObjectNr(object, static_cast<std::uint32_t>(tableIndex));
        },
        nullptr, true);
}
