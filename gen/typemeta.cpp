#include "gen/typemeta.h"

#include <memory>
#include <vector>

#include "cbet/builtintypes.h"
#include "cbet/forms.h"
#include "cbet/names.h"
#include "gen/meta.h"
#include "model/backend.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typenames.h"
#include "model/typequeries.h"
#include "store/strings.h"

namespace {

/* A handle takes one each time it is filled: using those again that came back is a fiftieth of all
   work less. */
std::vector<std::unique_ptr<BETypMetaRec>> freeMetaRecs;

BETypMetaRec *takeMetaRec() {
    if (freeMetaRecs.empty())
        return new BETypMetaRec;
    BETypMetaRec *meta = freeMetaRecs.back().release();
    freeMetaRecs.pop_back();
    return meta;
}

BETypeInfo makeTypeInfo(AsnType *type) {
    BETypeInfo info;
    info.typeId = allocateUniqStri(cTypeId(type));
    info.baseTypeId = allocateUniqStri(cBaseTypeId(type));
    info.homeTypeId = homeTypeId(type);
    return info;
}

/* The names that a type has in its own module, where it was written: those are kept. Under the
   options of another module, or as part of another structure, it may have others. */
bool isAtItsPlace(AsnType *type) {
    return type->ownerModule->modRec == type->posModule && structureTakenInto(type) == nullptr;
}

bool isPartOfDefinition(AsnType *type) {
    while ((type = getFatherOfTypeComp(type)) != nullptr)
        if (isDefinedBaseType(type))
            return true;
    return false;
}

/* A field that shows the parts of a definition names them for itself; to others they have the names
   that the definition gives them. */
void replaceTypeInfo(AsnType *type, const BETypeInfo &info) {
    if (!isPartOfDefinition(type)) {
        getBETypeInfoCache(type);
        *getTypeInfoCache(type)->generatorInfo = info;
        getTypeInfoCache(type)->generatorInfo->isGiven = true;
    }
    if (BETypMetaRec *meta = getBETypMetaRec(type); meta != nullptr)
        meta->names = info;
}

} // namespace

/* --- the ways in --- */

BETypMetaRec *newBETypMetaRec(AsnType *type) {
    if (isPartialTypeInfo(type))
        return nullptr;
    BETypMetaRec *meta = takeMetaRec();
    const BETypeInfo *kept = getTypeInfoCache(type)->generatorInfo;
    const bool isGiven = kept != nullptr && kept->isGiven && structureTakenInto(type) == nullptr;
    if (isGiven || isAtItsPlace(type))
        meta->names = *getBETypeInfoCache(type);
    else
        meta->names = makeTypeInfo(type);
    meta->accessRoutines = getBEModMetaRec(getModuleOfType(type))->accessRoutines;
    return meta;
}

void deleteBETypMetaRec(BETypMetaRec *meta) {
    freeMetaRecs.emplace_back(meta);
}

const char *homeTypeId(AsnType *type) {
    return cIsPredefinedType(type) ? nullptr : cBuiltinType(getTypeMainType(type)).character;
}

/* Kept with the record of the type, whatever handle asks. */
const BETypeInfo *getBETypeInfoCache(AsnType *type) {
    TypeInfoCache *cache = getTypeInfoCache(type);
    if (cache->generatorInfo == nullptr)
        cache->generatorInfo = &type->posModule->metaRec->typeInfos.emplace_back(makeTypeInfo(type));
    return cache->generatorInfo;
}

void renewBETypeInfo(AsnType *type) {
    replaceTypeInfo(type, makeTypeInfo(type));
}

/* struct t_argument_OPERATION for a structure that stands in a field of a class */
void setBETypeInfoNames(AsnType *type, const char *name) {
    BETypeInfo info = makeTypeInfo(type);
    info.typeId = allocateUniqStri(name);
    info.baseTypeId = allocateUniqStri(cStructTag(name).c_str());
    replaceTypeInfo(type, info);
}

/* --- what generators ask --- */

const char *getMetaTypeId(AsnType *type) {
    const BETypMetaRec *meta = getBETypMetaRec(type);
    return meta == nullptr ? "" : meta->names.typeId;
}

const char *getMetaBaseTypeId(AsnType *type) {
    const BETypMetaRec *meta = getBETypMetaRec(type);
    return meta == nullptr ? "" : meta->names.baseTypeId;
}

Text getMetaCompId(AsnType *type) {
    if (getBETypMetaRec(type) == nullptr)
        return "";
    if (isTypeExtensionmarker(type))
        return "extensionmarker";
    return isComponentType(type) ? getTypeCompId(type) : "";
}

Text getMetaMemberName(AsnType *type) {
    return cLoneName(getMetaCompId(type), getModuleOfType(type));
}

Text getMetaTypeName(AsnType *type) {
    return cLoneName(getMetaTypeId(type), getModuleOfType(type));
}

const char *getMetaHomeTypeId(AsnType *type) {
    const BETypMetaRec *meta = getBETypMetaRec(type);
    return meta == nullptr ? nullptr : meta->names.homeTypeId;
}

int getMetaTypeAccessRoutines(AsnType *type) {
    const BETypMetaRec *meta = getBETypMetaRec(type);
    return meta == nullptr ? ACCESS_NONE : meta->accessRoutines;
}
