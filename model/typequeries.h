#pragma once

#include "base/call.h"
#include "model/backend.h"

/* What a handle tells of its type. Names are in typenames.h, bounds in valuesets.h, extension markers
   in typeextension.h. */

int getTypeMainType(AsnType *type);
int getTypeCompStatus(AsnType *type);
int getBaseTypeCompStatus(AsnType *type);
int getTypeCompNbr(AsnType *type);
/* 1 for a list: its element. */
int getNrOfTypeComps(AsnType *type);
/* Main type of a list's element, TYP_NONE for other types. */
std::int32_t getTypeDefinitionLine(AsnType *type);
int getTypeDefinitionLevel(AsnType *type);
/* From 0. */
RecNr getUniqueBaseTypeNr(AsnType *type);
BETypMetaRec *getBETypMetaRec(AsnType *type);
AsnModule *getModuleOfType(AsnType *type);
AsnType *getFatherOfTypeComp(AsnType *type);
bool isPartialTypeInfo(AsnType *type);
TypeOptions *getTypeOptions(AsnType *type);
/* `bit` is a TypeOption. */
bool testTypeOption(AsnType *type, int bit);
bool isRecursiveType(AsnType *type);
bool isInstantiatedType(AsnType *type);
bool isMandatoryTypeComps(AsnType *type);
bool isOptionalTypeComps(AsnType *type);

/* How a value, and its control member, is held: ValueForm. */
int getVF(AsnType *type);
int getVFSize(AsnType *type);

bool isSynonymType(AsnType *type);
bool isDefinedType(AsnType *type);
bool isDefinedBaseType(AsnType *type);
bool isSelectionType(AsnType *type);
/* The content is that of an alternative, which a selection has taken over. */
bool isSelectedContent(const AsnType *type);
bool isComponentType(AsnType *type);
bool isCompOrElemType(AsnType *type);
bool isElemType(AsnType *type);
/* SEQUENCE, SET or CHOICE. */
bool isStructuredType(AsnType *type);
bool isListType(AsnType *type);
bool isRestrCharStringType(AsnType *type);
bool isAnyDefinedByType(AsnType *type);
bool isMandatoryTypeComp(AsnType *type);
bool isOptionalTypeComp(AsnType *type);
bool isDefaultValue(AsnType *type);
bool isNamedNumbers(AsnType *type);
bool isBaseTypeInCurrentModule(AsnType *type);
/* The structure whose part a component, or what is nested in it, becomes by COMPONENTS OF or by a
   selection: the outermost one if there are several. Null if it stands where it was written. */
AsnType *structureTakenInto(AsnType *type);
/* Constraints that restrict something. */
bool isConstraints(AsnType *type);
/* No parts that the C type shows. */
bool isLeafType(AsnType *type);
bool isMorlaLeafType(AsnType *type);

/* `function` is a bit of TNode.entryFlags. */
bool isEntryType(AsnType *type);
bool isEntryTypeFunction(AsnType *type, int function);
bool isEntryBaseType(AsnType *type);
bool typeIsInEntryCategory(AsnType *type, int category);
bool isVisibleType(AsnType *type);
/* The symbol that an option gives to the entry type of this name, null for none. */
const char *getEntrySymbolByName(AsnType *type);
bool isEntrySymbol(AsnType *type);
Text getEntrySymbol(AsnType *type);

/* Lengths are encoded in definite form. */
bool isDefiniteLengthEncoding(AsnType *type);
