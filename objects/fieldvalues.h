#pragma once

#include "model/valuewalk.h"
#include "objects/objects.h"

/* What the fields of an object hold. A walk over the contents does nothing for a field of another
   kind; call-backs borrow what they get. */

/* One field of an object; lives on the stack of the walk that shows it. */
struct AsnFieldValue {
    AsnObject *fieldObject = nullptr;
    ModRec *valueModule = nullptr; /* the setting */
    RecNr valueRecord = 0;         /* 0 if it is absent */
    AsnObjClassField *field = nullptr;
    bool isDefault = false; /* the setting is the DEFAULT of the class */
    bool isAbsent = false;  /* there is no setting at all */
};

/* In the order of the classes. */
enum PredefinedField { PREDEFINED_ID, PREDEFINED_TYPE, PREDEFINED_PROPERTY };

using FieldTypeCall = Call<void(AsnFieldValue *value, AsnType *type)>;
using FieldEntryTypeCall = Call<void(AsnFieldValue *value, AsnType *type, int entryIndex)>;
using FieldAsnValueCall = Call<void(AsnFieldValue *value, AsnValue *asnValue)>;
using FieldValueSetCall = Call<void(AsnFieldValue *value, AsnValue *asnValue, int index)>;
using FieldObjectCall = Call<void(AsnFieldValue *value, AsnObject *object)>;
using FieldObjectSetCall = Call<void(AsnFieldValue *value, AsnObject *object, int index)>;

/* Each setting or default of an optional field: `optionalNr` counts the calls, `fieldNr` the fields
   of the class. The result is the number of calls. */
int forEachOptionalObjectFieldValue(
    AsnObject *object,
    Call<void(AsnObject *object, AsnFieldValue *value, int optionalNr, int fieldNr)> func);
/* Every field of the class, with an empty value for one that is missing. */
void forEachPossibleObjectFieldValue(
    AsnObject *object, Call<void(AsnObject *object, AsnFieldValue *value, int fieldNr)> func);

/* The fields of an object of TYPE-IDENTIFIER or ABSTRACT-SYNTAX: `id`, `Type` and in the latter
   `property`, with an empty value for one that is missing. Their classes have no records, so that
   questions of the field itself have no answer here. */
void forEachPredefinedFieldValue(AsnObject *object,
                                 Call<void(AsnFieldValue *value, PredefinedField field)> func);

/* Main type of the field's governor. */
int getFieldBaseValueMainType(AsnFieldValue *value);

void forTypeFieldValue(AsnFieldValue *value, FieldTypeCall func);
void forEntryTypeFieldValue(AsnFieldValue *value, FieldEntryTypeCall func);
void forFixedTypeValueFieldValue(AsnFieldValue *value, FieldAsnValueCall func);
/* Single values, and each integer of a range of an INTEGER. `index` counts from 0. */
void forFixedTypeValueSetFieldValue(AsnFieldValue *value, FieldValueSetCall func);
int getFixedTypeValueSetFieldSize(AsnFieldValue *value);
void forObjectFieldValue(AsnFieldValue *value, FieldObjectCall func);
/* Fatal error 13 for a set that is no list of objects. `index` counts from 0. */
void forObjectSetFieldValue(AsnFieldValue *value, FieldObjectSetCall func);
/* The place of the constraint that holds the objects of an object set field; none if the field is absent
   or its set has no constraint. Moves the current records. */
NodePlace findFieldSetConstraint(const AsnFieldValue *value);

AsnObject *getObjectOfFieldValue(AsnFieldValue *value);
AsnObjClassField *getObjClassFieldOfFieldValue(AsnFieldValue *value);
bool isTypeFieldValue(AsnFieldValue *value);
bool isFixedTypeValueFieldValue(AsnFieldValue *value);
bool isFixedTypeValueSetFieldValue(AsnFieldValue *value);
bool isObjectFieldValue(AsnFieldValue *value);
bool isObjectSetFieldValue(AsnFieldValue *value);
/* Neither a setting nor a default. */
bool isEmptyFieldValue(AsnFieldValue *value);
