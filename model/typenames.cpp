#include "model/typenames.h"

#include "model/typequeries.h"
#include "model/typetables.h"
#include "options/naming.h"

namespace {

constexpr const char *NO_NAME = "?!?";

/* A component that has a name. */
bool hasCompName(AsnType *type) {
    return type->compId.id != nullptr && isComponentType(type);
}

/* Kinds for which a C type is generated. */
bool hasGeneratedType(AsnType *type) {
    return type->base.mainType == TYP_ENUM || isStructuredType(type) || isListType(type);
}

} // namespace

/* Names as ASN.1 has them, and as options make them for C. A name of the position is that of the
   definition or component; where it has none, the base may still have one. */

Text getTypeRef(AsnType *type) {
    return orEmpty(type->compId.id);
}

Text getBaseTypeRef(AsnType *type) {
    if (isLeafType(type))
        return getTypeMainTypeRef(type);
    return orEmpty(type->baseId.id);
}

Text getDefTypeId(AsnType *type) {
    if (isDefinedType(type))
        return printFixRec(type->compId);
    if (isDefinedBaseType(type))
        return printFixRec(type->baseId);
    return NO_NAME;
}

Text getDefBaseTypeId(AsnType *type) {
    if (isDefinedBaseType(type))
        return printFixRec(type->baseId);
    return "?!?NOT-A-DEFINED-TYPE";
}

Text getTypeCompId(AsnType *type) {
    if (hasCompName(type))
        return printFixRec(type->compId);
    return NO_NAME;
}

Text getTypeCompRef(AsnType *type) {
    if (hasCompName(type))
        return orEmpty(type->compId.id);
    return NO_NAME;
}

Text getBaseTypeId(AsnType *type) {
    if (!hasGeneratedType(type))
        return orEmpty(targetLangType(getVF(type)));
    if (type->baseId.id != nullptr)
        return printFixRec(type->baseId);
    return NO_NAME;
}

/* Words for numbers, as messages and generated comments have them. */

Text getTypeCompStatusStri(AsnType *type) {
    const int status = type->compStatus;
    const bool hasWord = status >= 0 && status < COMP_STATUS_WORDS;
    return hasWord ? compStatusArr[status] : "";
}

Text getTypeMainTypeStri(AsnType *type) {
    const int mainType = getTypeMainType(type);
    return mainType < TYP_COUNT ? typeArr[mainType].word : "";
}

Text getTypeMainTypeRef(AsnType *type) {
    const int mainType = getTypeMainType(type);
    return orEmpty(mainType < BUILTIN_TYPES ? typeArr[mainType].text : nullptr);
}
