#include "model/typequeries.h"

#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "options/ketracnf.h"
#include "options/naming.h"
#include "store/ketramac.h"
#include "store/records.h"

namespace {

bool hasFirstFlag(const AsnType *type, TypeFlag flag) {
    return (type->firstTypeFlags & flag) != 0;
}

bool hasBaseFlag(const AsnType *type, TypeFlag flag) {
    return (type->base.typeFlags & flag) != 0;
}

} // namespace

/* What the base says, and what was noted where the type was met. A handle holds both, so that no
   question follows references again. */

int getTypeMainType(AsnType *type) {
    return type->base.mainType;
}

int getTypeCompStatus(AsnType *type) {
    return type->compStatus;
}

int getBaseTypeCompStatus(AsnType *type) {
    return type->base.compStatus;
}

int getTypeCompNbr(AsnType *type) {
    return type->compNbr;
}

int getNrOfTypeComps(AsnType *type) {
    return isListType(type) ? 1 : type->base.nrOfComps;
}

std::int32_t getTypeDefinitionLine(AsnType *type) {
    return type->base.lineNr;
}

int getTypeDefinitionLevel(AsnType *type) {
    return type->defLevel;
}

RecNr getUniqueBaseTypeNr(AsnType *type) {
    return type->baseRecord - 1;
}

BETypMetaRec *getBETypMetaRec(AsnType *type) {
    return type->metaRec.get();
}

AsnModule *getModuleOfType(AsnType *type) {
    return type->ownerModule;
}

AsnType *getFatherOfTypeComp(AsnType *type) {
    return type->father;
}

bool isPartialTypeInfo(AsnType *type) {
    return type->partial;
}

/* Flags of records. Those of the position speak of the definition or component as it is written,
   those of the base of the content that it has in the end. */

TypeOptions *getTypeOptions(AsnType *type) {
    return &type->typeOptions;
}

bool testTypeOption(AsnType *type, int bit) {
    return testOptionBit(type->base.optionBits, bit);
}

bool isRecursiveType(AsnType *type) {
    return hasFirstFlag(type, TYPE_RECURSIVE);
}

bool isInstantiatedType(AsnType *type) {
    return hasFirstFlag(type, TYPE_INSTANTIATED);
}

bool isMandatoryTypeComps(AsnType *type) {
    return hasBaseFlag(type, TYPE_HAS_MANDATORY);
}

bool isOptionalTypeComps(AsnType *type) {
    return hasBaseFlag(type, TYPE_HAS_OPTIONAL);
}

/* How the compiler of the tree wants the value to be held. */

int getVF(AsnType *type) {
    return type->base.valueFieldCode;
}

int getVFSize(AsnType *type) {
    return type->base.controlFieldCode;
}

/* What stands at the position: a definition, a name for one, a component, an element or a
   selection. */

bool isSynonymType(AsnType *type) {
    return isDefinedType(type) && type->firstMainType == TYP_SYNONYM;
}

bool isDefinedType(AsnType *type) {
    return type->compStatus == TCS_HEADER;
}

bool isDefinedBaseType(AsnType *type) {
    return type->base.compStatus == TCS_HEADER && type->baseId.id != nullptr;
}

bool isSelectionType(AsnType *type) {
    return type->isSelection;
}
bool isSelectedContent(const AsnType *type) {
    return type->contentModule != type->baseModule || type->contentRecord != type->baseRecord;
}

bool isComponentType(AsnType *type) {
    return type->compStatus == TCS_MANDATORY || type->compStatus == TCS_OPTIONAL ||
           type->compStatus == TCS_CHOICE;
}

bool isCompOrElemType(AsnType *type) {
    return isComponentType(type) || isElemType(type);
}

bool isElemType(AsnType *type) {
    return type->compStatus == TCS_MULTIPLE;
}

/* What sort of content the base has. */

bool isStructuredType(AsnType *type) {
    return isStructureKind(type->base.mainType);
}

bool isListType(AsnType *type) {
    return isListKind(type->base.mainType);
}

bool isRestrCharStringType(AsnType *type) {
    return isRestrCharStringKind(type->base.mainType);
}

bool isAnyDefinedByType(AsnType *type) {
    return type->base.mainType == TYP_ANY && type->base.auxRecord != 0;
}

/* What is written behind a component, or in it. */

bool isMandatoryTypeComp(AsnType *type) {
    return type->compStatus == TCS_MANDATORY;
}

bool isOptionalTypeComp(AsnType *type) {
    return type->compStatus == TCS_OPTIONAL;
}

bool isDefaultValue(AsnType *type) {
    return type->defaultValue != 0;
}

bool isNamedNumbers(AsnType *type) {
    const int mainType = type->base.mainType;
    return (mainType == TYP_INTEGER || mainType == TYP_ENUM || mainType == TYP_BITSTR) &&
           type->base.namedNumbersRec != 0;
}

/* A part that COMPONENTS OF or a selection took into another structure belongs to that one in C,
   wherever it is defined. So the fathers are asked, up to the definition around the part. */

AsnType *structureTakenInto(AsnType *type) {
    AsnType *structure = nullptr;
    for (AsnType *part = type; part != nullptr; part = part->father) {
        if (part != type && isSelectedContent(part))
            structure = part;
        if (part != type && isDefinedBaseType(part))
            break;
        if (part->compStatus == TCS_COMPOF)
            continue;
        if (part->inCompOf)
            structure = part->father;
        else if (part->father != nullptr && part->father->compStatus == TCS_COMPOF)
            structure = part->father->father;
    }
    return structure;
}

bool isBaseTypeInCurrentModule(AsnType *type) {
    if (type->posModule != type->baseModule)
        return false;
    const AsnType *structure = structureTakenInto(type);
    return structure == nullptr || structure->baseModule == type->baseModule;
}

bool isConstraints(AsnType *type) {
    const auto &places = type->constraintList.places;
    if (places.size() != 1)
        return !places.empty();
    readRec(places.front().module, REC_SUB, places.front().nr);
    return subRec.subKind != SUB_PASSED_OVER;
}

/* Leaves are what generated code handles by one call of the run-time library. */

bool isLeafType(AsnType *type) {
    if (testTypeOption(type, OPT_SKIPPED))
        return true;
    return getNrOfTypeComps(type) == 0 && !isTypeExtensionmarkerComp(type);
}

bool isMorlaLeafType(AsnType *type) {
    return isListType(type) || isLeafType(type);
}

/* Entry types have functions that applications call. The options of the module decide first:
   without entry types in it, marks of single types mean nothing. */

bool isEntryType(AsnType *type) {
    return getNrOfEntryTypes(type->ownerModule) > 0 && (type->entryFlags & ENTRY_TYPE_FLAG) != 0;
}

bool isEntryTypeFunction(AsnType *type, int function) {
    return getNrOfEntryTypes(type->ownerModule) > 0 && testOptionBit(type->entryFlags, function);
}

bool isEntryBaseType(AsnType *type) {
    return (type->base.entryFlags & ENTRY_TYPE_FLAG) != 0;
}

bool typeIsInEntryCategory(AsnType *type, int category) {
    return isEntryType(type) && testOptionBit(type->entryCategories, category);
}

bool isVisibleType(AsnType *type) {
    return getNrOfVisibleTypes(type->ownerModule) >= 1 &&
           (type->ownerModule->modRec->exportsMode == 0 ||
            (type->base.nodeFlags & NODE_EXPORTED) != 0);
}

/* The name that "ENTRY=" gives the entry in tables, found by the name of the type. */

const char *getEntrySymbolByName(AsnType *type) {
    const Text name = getTypeRef(type);
    const FixChain &entries = getGlobalOptions(type->ownerModule)->entries;
    const FixRec *record = findGlbFixRecByName(entries, name.c_str());
    return record == nullptr ? nullptr : record->pref;
}

bool isEntrySymbol(AsnType *type) {
    return isEntryType(type) && getEntrySymbolByName(type) != nullptr;
}

Text getEntrySymbol(AsnType *type) {
    return orEmpty(getEntrySymbolByName(type));
}

bool isDefiniteLengthEncoding(AsnType *type) {
    const int form = getGlobalOptions(type->ownerModule)->definiteLen;
    if (form == LENGTH_DEFINITE)
        return true;
    if (form != LENGTH_DEFINITE_INDEFINITE_COMPS && form != LENGTH_DEFINITE_DEFINITE_COMPS)
        return false;
    const std::uint8_t ofType = type->typeOptions.definiteLength;
    if (ofType == LENGTH_FORM_NOT_SET)
        return isDefinedType(type) || form == LENGTH_DEFINITE_DEFINITE_COMPS;
    return ofType == 1;
}
