#pragma once

#include "base/call.h"
#include "model/backend.h"

/* Information object classes: handles on the classes of a module, on their fields, and on the type
   or class that governs a field. The current records move in all of these. A missing call-back is
   fatal error 18, a chain of references or a list without end fatal error 15. */

struct AsnObject;
struct AsnObjectSet;
struct BEClassMetaRec; /* the generator's record of a class */

/* A class as it was met (its position) and as it is in the end (its base). */
struct AsnObjClass {
    AsnModule *walkModule = nullptr;  /* its class cursor walks this handle; borrowed */
    AsnModule *ownerModule = nullptr; /* getModuleOfObjClass; borrowed */
    AsnObjClass *father = nullptr;    /* the class from which this one was reached, or null */

    ModRec *posModule = nullptr; /* the record at which the class was met */
    RecNr posRecord = 0;
    FixRec compId;                    /* name of the position; its id is null if it has none */
    std::int32_t compStatus = 0;      /* CompStatus of the position */
    RecNr defaultValue = 0;           /* VNode of the position's DEFAULT, 0 without one */
    int stamp = 0;                    /* copy of the position's stored stamp */
    int firstMainType = 0;            /* of the position; of an instantiation, of the base */
    RecNr auxRecord = 0;              /* of the position */
    std::uint16_t firstTypeFlags = 0; /* of the position, with the two instantiation bits */
    TypeOptions typeOptions;          /* of the position */

    ModRec *baseModule = nullptr; /* the record at which the synonym chain ends */
    RecNr baseRecord = 0;
    FixRec baseId; /* name of the base */
    int defLevel = 0;
    TNode base; /* the base record with the option bits of the chain */

    std::vector<DynaNode> embeddingEntries; /* embedded text, from the position to the base */
    int chainDepth = 0;                     /* synonym steps */
    bool hasCommentOption = false;          /* the position holds a comment option */
    BEClassMetaRec *metaRec = nullptr;      /* owned; null for a nameless handle */
    RecNr walkSteps = 0;                    /* classes that the handle's walk has visited */
    bool live = false;                      /* false once given back */
};

enum FieldKind : int {
    FIELD_TYPE = 0,
    FIELD_FIXED_VALUE,        /* a value of a fixed type */
    FIELD_FIXED_VALUE_SET,    /* values of a fixed type */
    FIELD_VARIABLE_VALUE,     /* a value of the type that another field names */
    FIELD_VARIABLE_VALUE_SET, /* values of such a type */
    FIELD_OBJECT,
    FIELD_OBJECT_SET,
};

/* One field of a class; lives on the stack of the walk that shows it. */
struct AsnObjClassField {
    AsnObjClass *fieldClass = nullptr;
    int fieldKind = FIELD_TYPE; /* FieldKind */
    int fieldNr = 0;            /* from 0 */
    ModRec *posModule = nullptr;
    RecNr posRecord = 0;
    FixRec compId;
    TNode base; /* a copy of the field's record */
};

/* An empty handle; getClassPath fills it. Null, or a handle already given back, may be deleted. */
AsnObjClass *newAsnObjClass(AsnModule *walkModule, AsnModule *ownerModule);
void delAsnObjClass(AsnObjClass *objClass);

/* Fills the handle, whose modules are set, from the current TNode. `father` may be null. Fatal
   error 13 if the chain does not end in a class, or inside newBEClassMetaRec. */
void getClassPath(AsnObjClass *father, AsnObjClass *objClass);

/* The classes of a module. nextObjClass refills the handle; at the end it deletes it and gives
   null. `nbr` counts the calls from 0. */
AsnObjClass *firstObjClass(AsnModule *module);
AsnObjClass *nextObjClass(AsnObjClass *objClass);
void forEachObjClass(AsnModule *module, Call<void(AsnObjClass *objClass, int nbr)> func);

/* The class at record `recNr` of module number `moduleIndex`, as seen from the object or set: a
   handle on a module of its own, both to be deleted by the caller (delGovernorClass); null if that
   is no class. */
AsnObjClass *governorForAsnObject(AsnObject *object, std::int32_t moduleIndex, RecNr recNr);
AsnObjClass *governorForAsnObjectSet(AsnObjectSet *objectSet, std::int32_t moduleIndex,
                                     RecNr recNr);
/* Deletes the handle and its module; null is left alone. */
void delGovernorClass(AsnObjClass *objClass);

/* The module and record in which the chain of references ends; the module is a new handle. */
AsnModule *findTheAnotherModuleOfObjClass(AsnObjClass *objClass, RecNr *recNr);
/* Calls with a handle on the class there. */
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
/* Two handles mean one class: their bases are the same record. */
bool isTheSameObjClass(const AsnObjClass *a, const AsnObjClass *b);
bool isInstantiatedClass(AsnObjClass *objClass);
/* The handle is not in use. */
bool isPartialClassInfo(AsnObjClass *objClass);
bool isObjClassCommentOption(AsnObjClass *objClass);
/* At least one field is optional. */
bool isOptionalObjClassFields(AsnObjClass *objClass);
int getNrOfObjClassFields(AsnObjClass *objClass);
/* Record numbers from 0. */
RecNr getUniqueObjClassNr(AsnObjClass *objClass);
RecNr getUniqueBaseObjClassNr(AsnObjClass *objClass);
std::int32_t getClassDefinitionLine(AsnObjClass *objClass);
AsnModule *getModuleOfObjClass(AsnObjClass *objClass);
BEClassMetaRec *getBEClassMetaRec(AsnObjClass *objClass);
/* `bit` is a TypeOption: OPT_SKIPPED; OPT_NEAR of a field. */
bool testObjClassOption(AsnObjClass *objClass, int bit);
bool testObjClassFieldOption(AsnObjClassField *field, int bit);

AsnObjClass *getObjClassOfField(AsnObjClassField *field);
int getObjClassFieldKind(AsnObjClassField *field);
int getObjClassFieldNr(AsnObjClassField *field);
bool isTypeField(AsnObjClassField *field);
bool isFixedTypeValueField(AsnObjClassField *field);
bool isFixedTypeValueSetField(AsnObjClassField *field);
bool isVariableTypeValueField(AsnObjClassField *field);
bool isVariableTypeValueSetField(AsnObjClassField *field);
bool isObjectField(AsnObjClassField *field);
bool isObjectSetField(AsnObjClassField *field);
bool isOptionalField(AsnObjClassField *field);
bool isMandatoryField(AsnObjClassField *field);
bool isDefaultFieldValue(AsnObjClassField *field);

/* The mark that generators share with types (model/stamps.h), as it is stored now. */
int getObjClassStamp(AsnObjClass *objClass);
int getBaseObjClassStamp(AsnObjClass *objClass);
void setObjClassStamp(AsnObjClass *objClass, int stamp);
void setBaseObjClassStamp(AsnObjClass *objClass, int stamp);

/* Names: "Ref" gives the ASN.1 name, "Id" the C name. */
Text getObjClassRef(AsnObjClass *objClass);
/* Of the position if the class is defined there, else of the base. */
Text getDefObjClassId(AsnObjClass *objClass);
/* Of the base; "TYPE-IDENTIFIER" or "TYPE_IDENTIFIER" and the like for a predefined class. Fatal
   error 13 if it is no class. */
Text getBaseObjClassRef(AsnObjClass *objClass);
Text getBaseObjClassId(AsnObjClass *objClass);
Text getObjClassFieldRef(AsnObjClassField *field);
Text getObjClassFieldId(AsnObjClassField *field);
