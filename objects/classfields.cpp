#include "base/fatal.h"
#include "model/modules.h"
#include "model/typequeries.h"
#include "model/typewalk.h"
#include "model/walk.h"
#include "objects/classes.h"
#include "store/classify.h"

namespace {

/* The kind of the field whose node is current. */
int currentFieldKind() {
    const bool isVariable = isVariabTypeFieldTNode();
    if (isObjSetTNode())
        return FIELD_OBJECT_SET;
    if (isClassTNode())
        return FIELD_OBJECT;
    if (isValFieldTNode())
        return isVariable ? FIELD_VARIABLE_VALUE : FIELD_FIXED_VALUE;
    if (isValSetFieldTNode())
        return isVariable ? FIELD_VARIABLE_VALUE_SET : FIELD_FIXED_VALUE_SET;
    return FIELD_TYPE;
}

void readFieldTNode(const AsnObjClassField *field) {
    readRec(field->posModule, REC_TNODE, field->posRecord);
}

/* To the class that governs the field whose node is current, or to an instance of one. */
void goToGovernorClass() {
    ChainGuard guard(REC_TNODE);
    while (!isTopLevelInstantiatedTNode()) {
        guard.step(currModule(REC_TNODE));
        if (tNode.mainType == TYP_SELECTION && tNode.auxRecord != 0)
            fatalError(FATAL_INTERNAL, nullptr);
        if (!followTypeReference())
            return;
    }
}

void forClassField(AsnObjClassField *field, int kind,
                   Call<void(AsnObjClassField *field, AsnObjClass *governor)> func) {
    requireCall(func);
    if (field->fieldKind != kind)
        return;
    if (field->governor == nullptr) {
        readFieldTNode(field);
        AsnModule *module = getAsnModule(currModule(REC_TNODE));
        field->governor = std::make_shared<AsnObjClass>(module, module);
        goToGovernorClass();
        getClassPath(field->governor.get());
    }
    func(field, field->governor.get());
}

/* A handle on the current TNode for the time of a call. The parts of a type are walked in the module that
   has them. */
void callWithType(AsnObjClassField *field,
                  Call<void(AsnObjClassField *field, AsnType *type)> func) {
    AsnModule *module = getAsnModule(currModule(REC_TNODE));
    AsnType type(module, module);
    getTypePath(nullptr, &type);
    func(field, &type);
}

void findFields(AsnObjClass *objClass) {
    ChainGuard guard(REC_TNODE);
    for (RecNr nr = objClass->base.refRecord; nr != 0;) {
        guard.step(objClass->baseModule);
        readRec(objClass->baseModule, REC_TNODE, nr);
        AsnObjClassField &field = objClass->fields.emplace_back();
        field.fieldClass = objClass;
        field.fieldNr = static_cast<int>(objClass->fields.size()) - 1;
        field.posModule = objClass->baseModule;
        field.posRecord = nr;
        field.base = tNode;
        getFixRec(&field.compId, KIND_FIELD);
        field.fieldKind = currentFieldKind();
        nr = field.base.next;
    }
}

} // namespace

/* The fields of a class are found once for each handle. Which type or class governs one is found
   when it is asked for: few are. */

void forEachObjClassField(
    AsnObjClass *objClass,
    Call<void(AsnObjClass *objClass, AsnObjClassField *field, int nbr)> func) {
    requireCall(func);
    if (isPredefinedObjClass(objClass))
        return;
    if (objClass->fields.empty())
        findFields(objClass);
    for (AsnObjClassField &field : objClass->fields)
        func(objClass, &field, field.fieldNr);
}

void forFixedTypeValueField(AsnObjClassField *field,
                            Call<void(AsnObjClassField *field, AsnType *type)> func) {
    requireCall(func);
    if (!isFixedTypeValueField(field))
        return;
    readFieldTNode(field);
    skipTypes(true);
    callWithType(field, func);
}

void forFixedTypeValueSetField(AsnObjClassField *field,
                               Call<void(AsnObjClassField *field, AsnType *type)> func) {
    requireCall(func);
    if (!isFixedTypeValueSetField(field))
        return;
    readFieldTNode(field);
    ChainGuard guard(REC_TNODE);
    while (tNode.mainType == TYP_SYNONYM && tNode.refRecord != 0) {
        guard.step(currModule(REC_TNODE));
        followSynonymType();
    }
    const NodePlace set = saveNodeContext(REC_TNODE);
    if (takeTNode(set.module, KIND_VALUE_SET, set.nr) || takeTNode(set.module, KIND_TYPE, set.nr))
        callWithType(field, func);
}

void forObjectField(AsnObjClassField *field,
                    Call<void(AsnObjClassField *field, AsnObjClass *governor)> func) {
    forClassField(field, FIELD_OBJECT, func);
}

void forObjectSetField(AsnObjClassField *field,
                       Call<void(AsnObjClassField *field, AsnObjClass *governor)> func) {
    forClassField(field, FIELD_OBJECT_SET, func);
}

AsnObjClass *getObjClassOfField(AsnObjClassField *field) {
    return field->fieldClass;
}
/* The kinds of field. Each is told by its record alone, as currentFieldKind has noted. */

bool isTypeField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_TYPE;
}
bool isFixedTypeValueField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_FIXED_VALUE;
}
bool isFixedTypeValueSetField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_FIXED_VALUE_SET;
}
bool isVariableTypeValueField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_VARIABLE_VALUE;
}
bool isVariableTypeValueSetField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_VARIABLE_VALUE_SET;
}
bool isObjectField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_OBJECT;
}
bool isObjectSetField(AsnObjClassField *field) {
    return field->fieldKind == FIELD_OBJECT_SET;
}

/* The sign of a field's status has no meaning. */
bool isOptionalField(AsnObjClassField *field) {
    return field->base.compStatus == TCS_OPTIONAL || field->base.compStatus == -TCS_OPTIONAL;
}
bool isDefaultFieldValue(AsnObjClassField *field) {
    return field->base.defaultValue != 0;
}

bool isGovernorSkipped(AsnObjClassField *field) {
    if (field->governorSkipped.has_value()) /* each object asks again */
        return *field->governorSkipped;
    bool skipped = false;
    auto testType = [&](AsnObjClassField *, AsnType *type) {
        skipped = testTypeOption(type, OPT_SKIPPED);
    };
    auto testClass = [&](AsnObjClassField *, AsnObjClass *governor) {
        skipped = testOptionOf(governor, OPT_SKIPPED);
    };
    forFixedTypeValueField(field, testType);
    forFixedTypeValueSetField(field, testType);
    forObjectField(field, testClass);
    forObjectSetField(field, testClass);
    field->governorSkipped = skipped;
    return skipped;
}
