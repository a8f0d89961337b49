#include "model/typenames.h"

#include "model/modules.h"
#include "model/nametexts.h"
#include "model/typequeries.h"
#include "model/typetables.h"

namespace {

constexpr const char *NO_NAME = "?!?";

/* The plain name of a record: idLen cuts printed names only. */
Text &plainId(Text &dst, const char *prefix, const FixRec &fixRec, const char *suffix) {
    return joinTexts(dst, prefix, fixRec.id, suffix);
}

/* A component that has a name. */
bool hasCompName(AsnType *type) {
    return type->compId.id != nullptr && isComponentType(type);
}

/* Kinds for which a C type is generated. */
bool hasGeneratedType(AsnType *type) {
    return type->base.mainType == TYP_ENUM || isStructuredType(type) || isListType(type);
}

} // namespace

Text &getTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    return plainId(dst, prefix, type->compId, suffix);
}

Text &getBaseTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (isLeafType(type))
        return getTypeMainTypeRef(dst, prefix, type, suffix);
    return plainId(dst, prefix, type->baseId, suffix);
}

Text &getDefTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (isDefinedType(type))
        return printFixRec(dst, prefix, &type->compId, suffix);
    if (isDefinedBaseType(type))
        return printFixRec(dst, prefix, &type->baseId, suffix);
    return joinTexts(dst, prefix, NO_NAME, suffix);
}

Text &getDefBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (isDefinedBaseType(type))
        return printFixRec(dst, prefix, &type->baseId, suffix);
    return joinTexts(dst, prefix, "?!?NOT-A-DEFINED-TYPE", suffix);
}

Text &getTypeCompId(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (hasCompName(type))
        return printFixRec(dst, prefix, &type->compId, suffix);
    return joinTexts(dst, prefix, NO_NAME, suffix);
}

Text &getTypeCompRef(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (hasCompName(type))
        return plainId(dst, prefix, type->compId, suffix);
    return joinTexts(dst, prefix, NO_NAME, suffix);
}

Text &getBaseTypeId(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    if (!hasGeneratedType(type))
        return joinTexts(dst, prefix, targetLangType(getVF(type)), suffix);
    if (type->baseId.id != nullptr)
        return printFixRec(dst, prefix, &type->baseId, suffix);
    return joinTexts(dst, prefix, NO_NAME, suffix);
}

Text &getTypeIdConvKindRaw(Text &dst, const char *prefix, AsnType *type, const char *suffix,
                           int kind) {
    const FixChain *chain = globalFixRecForKind(type->ownerModule, kind);
    const FixRec none;
    return getTypeIdConvFix(dst, prefix, type, suffix, chain == nullptr ? &none : &chain->head);
}

Text &getTypeIdConvFix(Text &dst, const char *prefix, AsnType *type, const char *suffix,
                       const FixRec *fixRec) {
    if (type->compId.id == nullptr)
        return joinTexts(dst, prefix, nullptr, suffix);
    FixRec copy = *fixRec;
    copy.id = type->compId.id;
    copy.idLen = type->compId.idLen;
    return printFixRec(dst, prefix, &copy, suffix);
}

Text &getTypeCompStatusStri(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    const int status = type->compStatus;
    const bool hasWord = status >= 0 && status < COMP_STATUS_WORDS;
    return joinTexts(dst, prefix, hasWord ? compStatusArr[status] : nullptr, suffix);
}

Text &getTypeMainTypeStri(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    const int mainType = getTypeMainType(type);
    if (mainType < TYP_COUNT)
        return joinTexts(dst, prefix, typeArr[mainType].word, suffix);
    dst.clear();
    return dst;
}

Text &getTypeMainTypeRef(Text &dst, const char *prefix, AsnType *type, const char *suffix) {
    const int mainType = getTypeMainType(type);
    if (mainType < BUILTIN_TYPES)
        return joinTexts(dst, prefix, typeArr[mainType].text, suffix);
    dst.clear();
    return dst;
}
