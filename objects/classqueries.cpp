#include "base/fatal.h"
#include "objects/classes.h"
#include "store/records.h"

namespace {

void requireClass(const AsnObjClass *objClass, const char *message) {
    if (!isClassKind(objClass->base.mainType))
        fatalError(FATAL_INTERNAL, message);
}

constexpr const char *NO_CLASS = "Using class method with a non-class construct.";
constexpr const char *NO_CLASS_NAME =
    "Trying to take objectclassreference from a non-class construct.";

void stampRecord(ModRec *module, RecNr record, int stamp) {
    readRec(module, REC_TNODE, record);
    tNode.stamp = static_cast<std::int16_t>(stamp);
    writeRec(module, REC_TNODE, record);
}

/* The word of a predefined class in C. */
const char *predefinedClassId(int mainType) {
    return mainType == TYP_TYPE_ID ? "TYPE_IDENTIFIER" : "ABSTRACT_SYNTAX";
}

} // namespace

/* TYPE-IDENTIFIER and ABSTRACT-SYNTAX have no fields in the tree, so each question about fields
   says first which sort of class it is. */

bool isPredefinedObjClass(AsnObjClass *objClass) {
    requireClass(objClass, NO_CLASS);
    return objClass->base.mainType != TYP_CLASS;
}

bool isPlainPredefinedObjClass(AsnObjClass *objClass) {
    const auto isNamed = [](std::int32_t status, const FixRec &id) {
        return status == TCS_HEADER && id.id != nullptr;
    };
    return isPredefinedObjClass(objClass) && !isNamed(objClass->compStatus, objClass->compId) &&
           !isNamed(objClass->base.compStatus, objClass->baseId);
}

bool isBaseObjClassInCurrentModule(AsnObjClass *objClass) {
    return objClass->baseModule == objClass->ownerModule->modRec;
}

bool isOptionalObjClassFields(AsnObjClass *objClass) {
    requireClass(objClass, NO_CLASS);
    return (objClass->base.typeFlags & TYPE_HAS_OPTIONAL) != 0;
}
int getNrOfObjClassFields(AsnObjClass *objClass) {
    requireClass(objClass, NO_CLASS);
    return objClass->base.nrOfComps;
}
std::int32_t getClassDefinitionLine(AsnObjClass *objClass) {
    return objClass->base.lineNr;
}
BEClassMetaRec *getBEClassMetaRec(AsnObjClass *objClass) {
    return objClass->metaRec.get();
}
/* Marks stand in the records of classes as in those of types: a class is a TNode. */

int getObjClassStamp(AsnObjClass *objClass) {
    return storedTNode(objClass->posModule, objClass->posRecord).stamp;
}

void setObjClassStamp(AsnObjClass *objClass, int stamp) {
    stampRecord(objClass->posModule, objClass->posRecord, stamp);
}

/* Names. What has no name of its own goes by that of the class behind it. */

Text getDefObjClassId(AsnObjClass *objClass) {
    const bool isDefined = objClass->compStatus == TCS_HEADER;
    return printFixRec(isDefined ? objClass->compId : objClass->baseId);
}

Text getBaseObjClassRef(AsnObjClass *objClass) {
    requireClass(objClass, NO_CLASS_NAME);
    if (isPredefinedObjClass(objClass))
        return orEmpty(typeRow(objClass->base.mainType).text);
    return orEmpty(objClass->baseId.id);
}

Text getBaseObjClassId(AsnObjClass *objClass) {
    requireClass(objClass, NO_CLASS_NAME);
    if (isPredefinedObjClass(objClass))
        return orEmpty(predefinedClassId(objClass->base.mainType));
    return printFixRec(objClass->baseId);
}
