#include "objects/fieldvalues.h"

#include "store/classify.h"
#include "store/ketramac.h"
#include "store/records.h"

namespace {

/* Each field of the class with its value. Two cursors move together: an object has values only for
   the fields that were set, in the order of the fields, and a value names its field. */
void forEachField(AsnObject *object, Call<void(AsnFieldValue *value)> func) {
    if (object->base.valueKind != TYP_CLASS)
        return;
    RecNr next = object->base.refRecord;
    forEachObjClassField(object->governor, [&](AsnObjClass *, AsnObjClassField *field, int) {
        AsnFieldValue value;
        value.fieldObject = object;
        value.field = field;
        value.valueModule = object->baseModule;
        const bool isSet =
            next != 0 && storedVNode(object->baseModule, next).governorRec == field->posRecord;
        if (isSet) {
            value.valueRecord = next;
            next = storedVNode(object->baseModule, next).next;
        } else if (isDefaultFieldValue(field)) {
            value.valueModule = field->posModule;
            value.valueRecord = field->base.defaultValue;
            value.isDefault = true;
        } else {
            value.isAbsent = true;
        }
        func(&value);
    });
}

/* A setting says by its kind which field of a predefined class it is for. */
PredefinedField predefinedFieldOf(ModRec *module, RecNr setting) {
    const NodeContext kept(REC_VNODE);
    readRec(module, REC_VNODE, setting);
    skipValues(true);
    if (vNode.valueKind == TYP_OBJID)
        return PREDEFINED_ID;
    return vNode.valueKind == TYP_BITSTR ? PREDEFINED_PROPERTY : PREDEFINED_TYPE;
}

bool isOfKind(const AsnFieldValue *value, int kind) {
    return value->field->fieldKind == kind;
}

} // namespace

/* Walks over the fields of an object, with or without those that are absent. Settings may leave
   fields out, so the fields lead and settings are matched to them. */

int forEachOptionalObjectFieldValue(
    AsnObject *object,
    Call<void(AsnObject *object, AsnFieldValue *value, int optionalNr, int fieldNr)> func) {
    requireCall(func);
    int optionalNr = 0;
    forEachField(object, [&](AsnFieldValue *value) {
        if (!value->isAbsent && isOptionalField(value->field))
            func(object, value, optionalNr++, value->field->fieldNr);
    });
    return optionalNr;
}

void forEachPossibleObjectFieldValue(
    AsnObject *object, Call<void(AsnObject *object, AsnFieldValue *value, int fieldNr)> func) {
    requireCall(func);
    forEachField(object, [&](AsnFieldValue *value) { func(object, value, value->field->fieldNr); });
}

void forEachPredefinedFieldValue(AsnObject *object,
                                 Call<void(AsnFieldValue *value, PredefinedField field)> func) {
    requireCall(func);
    const int fields = object->governor->base.mainType == TYP_ABSTR_STX ? 3 : 2;
    RecNr next = isClassKind(object->base.valueKind) ? object->base.refRecord : 0;
    for (int nr = PREDEFINED_ID; nr < fields; ++nr) {
        AsnObjClassField field;
        field.fieldClass = object->governor;
        field.fieldNr = nr;
        field.fieldKind = nr == PREDEFINED_TYPE ? FIELD_TYPE : FIELD_FIXED_VALUE;
        AsnFieldValue value;
        value.fieldObject = object;
        value.field = &field;
        value.valueModule = object->baseModule;
        value.isAbsent = next == 0 || predefinedFieldOf(object->baseModule, next) != nr;
        if (!value.isAbsent) {
            value.valueRecord = next;
            next = storedVNode(object->baseModule, next).next;
        }
        func(&value, static_cast<PredefinedField>(nr));
    }
}

/* What sort of field it is decides which of the walks in fieldcontents.cpp answers. */

int getFieldBaseValueMainType(AsnFieldValue *value) {
    readRec(value->field->posModule, REC_TNODE, value->field->posRecord);
    skipTypes(true);
    return tNode.mainType;
}

AsnObject *getObjectOfFieldValue(AsnFieldValue *value) {
    return value->fieldObject;
}
AsnObjClassField *getObjClassFieldOfFieldValue(AsnFieldValue *value) {
    return value->field;
}
bool isTypeFieldValue(AsnFieldValue *value) {
    return isOfKind(value, FIELD_TYPE);
}
bool isFixedTypeValueFieldValue(AsnFieldValue *value) {
    return isOfKind(value, FIELD_FIXED_VALUE);
}
bool isFixedTypeValueSetFieldValue(AsnFieldValue *value) {
    return isOfKind(value, FIELD_FIXED_VALUE_SET);
}
bool isObjectFieldValue(AsnFieldValue *value) {
    return isOfKind(value, FIELD_OBJECT);
}
bool isObjectSetFieldValue(AsnFieldValue *value) {
    return isOfKind(value, FIELD_OBJECT_SET);
}
bool isEmptyFieldValue(AsnFieldValue *value) {
    return value->isAbsent && !value->isDefault;
}
