#include "objects/objects.h"

#include "base/fatal.h"
#include "model/position.h"
#include "model/walk.h"
#include "options/naming.h"

/* An object is a value whose governor is a class. An inline object has a record like any other,
   and no name. */

void getObjectPath(AsnObject *object) {
    const RecNr governorRec = vNode.governorRec;
    const std::int32_t governorModule = vNode.governorModule;
    takeValue<AsnObject>(object, nullptr, KIND_OBJECT);
    object->governor = governorForAsnObject(object->posModule, governorModule, governorRec);
    if (object->governor == nullptr)
        fatalError(FATAL_INTERNAL, "Using class method with a non-class construct.");
}

void forEachObject(AsnModule *module, Call<void(AsnObject *object, int nbr)> func) {
    forEachDefinition<AsnObject>(module, KIND_OBJECT, getObjectPath, func);
}

void forObjectByRecNr(AsnModule *module, Call<void(AsnObject *object, int nbr)> func, RecNr recNr) {
    requireCall(func);
    if (!takeVNode(module->modRec, KIND_OBJECT, recNr))
        return;
    AsnObject object(module, module);
    getObjectPath(&object);
    func(&object, 0);
}

/* What objects are asked beside what all handles answer. */

AsnObjClass *getObjClassOfObject(AsnObject *object) {
    return object->governor;
}
bool isDefinedBaseObject(AsnObject *object) {
    return object->base.compStatus == VCS_DEFINITION;
}
std::int32_t getObjectDefinitionLine(AsnObject *object) {
    const NodeContext kept(REC_VNODE);
    readRec(object->posModule, REC_VNODE, object->posRecord);
    return vNode.lineNr;
}

