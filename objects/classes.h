#pragma once

#include <optional>

#include "base/call.h"
#include "model/backend.h"

/* Information object classes: handles on the classes of a module, on their fields, and on the type
   or class that governs a field. The current records move in all of these. A missing call-back is
   fatal error 18, a chain of references or a list without end fatal error 15. */

enum FieldKind : int {
    FIELD_TYPE = 0,
    FIELD_FIXED_VALUE,        /* a value of a fixed type */
    FIELD_FIXED_VALUE_SET,    /* values of a fixed type */
    FIELD_VARIABLE_VALUE,     /* a value of the type that another field names */
    FIELD_VARIABLE_VALUE_SET, /* values of such a type */
    FIELD_OBJECT,
    FIELD_OBJECT_SET,
};

struct AsnObjClass;

/* One field of a class. */
struct AsnObjClassField {
    AsnObjClass *fieldClass = nullptr;
    int fieldKind = FIELD_TYPE; /* FieldKind */
    int fieldNr = 0;            /* from 0 */
    ModRec *posModule = nullptr;
    RecNr posRecord = 0;
    FixRec compId;
    TNode base; /* a copy of the field's record */
    std::shared_ptr<AsnObjClass> governor; /* of an object or object set, once it was asked for */
    std::optional<bool> governorSkipped;   /* likewise */
};

/* A class as it was met (its position) and as it is in the end (its base). */
struct AsnObjClass : TypePosition<AsnObjClass> {
    using TypePosition::TypePosition;

    DynaNodes embeddingEntries;             /* embedded text, from the position to the base */
    std::vector<AsnObjClassField> fields;   /* found at the first question */
    MetaOwner<BEClassMetaRec> metaRec;      /* null for a nameless handle */
};

/* Fills the handle from the current TNode. Fatal error 13 if the chain does not end in a class, or
   inside newBEClassMetaRec. */
void getClassPath(AsnObjClass *objClass);

/* The classes of a module. `nbr` counts the calls from 0. */
void forEachObjClass(AsnModule *module, Call<void(AsnObjClass *objClass, int nbr)> func);

/* The class at record `recNr` of module number `moduleIndex`, as an object or a set of the module
   `fromModule` names it: handles that are kept for the rest of the run; null if that is no class. */
AsnObjClass *governorForAsnObject(ModRec *fromModule, std::int32_t moduleIndex, RecNr recNr);
AsnObjClass *governorForAsnObjectSet(ModRec *fromModule, std::int32_t moduleIndex, RecNr recNr);

/* Calls with a handle on the class at which the chain of references ends, in its own module. */
void forObjClassDefinedInAnotherModule(AsnObjClass *objClass,
                                       Call<void(AsnObjClass *defined)> func);

/* The fields of a class in their order; a predefined class has none. */
void forEachObjClassField(AsnObjClass *objClass,
                          Call<void(AsnObjClass *objClass, AsnObjClassField *field, int nbr)> func);
/* The governor of a field of the kind named; nothing happens for a field of another kind. */
void forFixedTypeValueField(AsnObjClassField *field,
                            Call<void(AsnObjClassField *field, AsnType *type)> func);
void forFixedTypeValueSetField(AsnObjClassField *field,
                               Call<void(AsnObjClassField *field, AsnType *type)> func);
void forObjectField(AsnObjClassField *field,
                    Call<void(AsnObjClassField *field, AsnObjClass *governor)> func);
void forObjectSetField(AsnObjClassField *field,
                       Call<void(AsnObjClassField *field, AsnObjClass *governor)> func);

/* TYPE-IDENTIFIER or ABSTRACT-SYNTAX. */
bool isPredefinedObjClass(AsnObjClass *objClass);
/* The same, met where no definition gives it another name. */
bool isPlainPredefinedObjClass(AsnObjClass *objClass);
bool isBaseObjClassInCurrentModule(AsnObjClass *objClass);
/* At least one field is optional. */
bool isOptionalObjClassFields(AsnObjClass *objClass);
int getNrOfObjClassFields(AsnObjClass *objClass);
std::int32_t getClassDefinitionLine(AsnObjClass *objClass);
BEClassMetaRec *getBEClassMetaRec(AsnObjClass *objClass);
/* True if C has no structure for the class, or no type for the type, that the field's values have. */
bool isGovernorSkipped(AsnObjClassField *field);

AsnObjClass *getObjClassOfField(AsnObjClassField *field);
bool isTypeField(AsnObjClassField *field);
bool isFixedTypeValueField(AsnObjClassField *field);
bool isFixedTypeValueSetField(AsnObjClassField *field);
bool isVariableTypeValueField(AsnObjClassField *field);
bool isVariableTypeValueSetField(AsnObjClassField *field);
bool isObjectField(AsnObjClassField *field);
bool isObjectSetField(AsnObjClassField *field);
bool isOptionalField(AsnObjClassField *field);
bool isDefaultFieldValue(AsnObjClassField *field);

/* The mark that generators share with types (model/stamps.h), as it is stored now. */
int getObjClassStamp(AsnObjClass *objClass);
void setObjClassStamp(AsnObjClass *objClass, int stamp);

/* The C name of the position if the class is defined there, else of the base. */
Text getDefObjClassId(AsnObjClass *objClass);
/* The ASN.1 name of the base, and the C name; "TYPE-IDENTIFIER" or "TYPE_IDENTIFIER" and the like
   for a predefined class. Fatal error 13 if it is no class. */
Text getBaseObjClassRef(AsnObjClass *objClass);
Text getBaseObjClassId(AsnObjClass *objClass);
