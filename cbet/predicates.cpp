#include "cbet/predicates.h"

#include <cstdio>

#include "cbet/vars.h"
#include "model/backend.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "model/typewalk.h"
#include "options/ketracnf.h"
#include "store/records.h"

namespace {

/* Bits of the type info cache. Skipped types use others. */
enum : int { CACHE_DEFINED_BASE = 1 };

bool isAnyForm(int form, int first, int last) {
    return form >= first && form <= last;
}

bool isStringType(AsnType *type) {
    const int main = getTypeMainType(type);
    return main == TYP_BITSTR || main == TYP_OCTSTR || isRestrCharStringType(type);
}

bool isArray(AsnType *type) {
    return isListType(type) && getVF(type) == VF_STRU;
}

/* String forms that hold their length beside the characters. */
bool isCountedForm(int form, ValueForm firstDynamic, ValueForm lastDynamic) {
    return isAnyForm(form, VF_STAS8, VF_STAS) || isAnyForm(form, firstDynamic, lastDynamic);
}

/* True if the references go on to a definition, through selections too. */
bool leadsToDefinition(AsnType *type, int *depth) {
    const NestingGuard guard(depth, type->posModule);
    bool result = false;
    forNextDefinedType(type, [&](AsnType *next) {
        if (isInstantiatedType(next))
            return;
        if (isDefinedType(next))
            result = true;
        else
            result = leadsToDefinition(next, depth);
    });
    return result;
}

/* Follows the references from definition to definition until one of the current module is no
 * synonym. */
bool followToCurrentModule(AsnType *type, Call<void(AsnType *)> func, int *depth) {
    const NestingGuard guard(depth, type->posModule);
    bool result = false;
    forNextDefinedType(type, [&](AsnType *next) {
        if (next->posModule == cMP && !isSynonymType(next)) {
            result = true;
            if (func)
                func(next);
        } else {
            result = followToCurrentModule(next, func, depth);
        }
    });
    return result;
}

} // namespace

bool cIsSimpleType(AsnType *type) {
    const int form = getVF(type);
    return isAnyForm(form, VF_BOOL, VF_REAL128) || form == VF_NULL;
}

bool cIsPredefinedType(AsnType *type) {
    const int form = getVF(type);
    return isAnyForm(form, VF_BOOL, VF_REAL128) || isAnyForm(form, VF_DYNS0, VF_NULL) ||
           isAnyForm(form, VF_ANY, VF_BMPSTR);
}

bool cIsFrameType(AsnType *type) {
    const int form = getVF(type);
    if (form == VF_FRM || testTypeOption(type, OPT_FRAME))
        return true;
    if (form != VF_ANY && form != VF_OPEN)
        return false;
    AsnModule *module = getModuleOfType(type);
    return isMorlaApplication(module) || !testCGenerationOption(module, CGEN_ANY_FUNCTIONS);
}

bool cIsStaticString(AsnType *type) {
    return isStringType(type) && isAnyForm(getVF(type), VF_STAS0, VF_STAS);
}

bool cIsDynamicString(AsnType *type) {
    const int form = getVF(type);
    return isStringType(type) &&
           (isAnyForm(form, VF_DYNS0, VF_DYNS) || isAnyForm(form, VF_BMPSTR0, VF_BMPSTR));
}

bool cIsStaticArray(AsnType *type) {
    return isArray(type) && !testTypeOption(type, OPT_DYNAMIC_ARRAY);
}

bool cIsDynamicArray(AsnType *type) {
    return isArray(type) && testTypeOption(type, OPT_DYNAMIC_ARRAY);
}

bool cIsPtrAsnHomeMember(AsnType *type) {
    const int form = cGetHomeVF(type);
    return isAnyForm(form, VF_STAS0, VF_STAS) || form == VF_STRU ||
           isAnyForm(form, VF_OBJI, VF_EXTERNAL_1994);
}

bool cIsHomeComponent(AsnType *type) {
    return testTypeOption(type, OPT_COMPS_AS_POINTERS);
}

bool cIsHometab(AsnType *type) {
    return cIsInEntryFunction() && isEntryType(type) && isMorlaApplication(getModuleOfType(type));
}

bool cHasCompHomes(AsnType *type) {
    return cIsHomeComponent(type) || cIsHometab(type);
}

bool cIsControlMember(AsnType *type) {
    const int form = getVF(type);
    const int size = getVFSize(type);
    const int main = getTypeMainType(type);
    switch (main) {
    case TYP_SEQ:
    case TYP_SET:
        return !cHasCompHomes(type) && isOptionalTypeComps(type) && size > VF_NONE;
    case TYP_SEQOF:
    case TYP_SETOF:
        return form == VF_STRU && size > VF_NONE;
    case TYP_CHOICE:
        return !cHasCompHomes(type);
    case TYP_BMPSTR:
        return isCountedForm(form, VF_BMPSTR8, VF_BMPSTR);
    default:
        return (main == TYP_BITSTR || main == TYP_OCTSTR ||
                (main >= TYP_NUMSTR && main <= TYP_GENSTR)) &&
               isCountedForm(form, VF_DYNS8, VF_DYNS);
    }
}

int cGetVF(AsnType *type) {
    return cIsFrameType(type) ? static_cast<int>(VF_FRM) : getVF(type);
}

int cGetHomeVF(AsnType *type) {
    return getVF(type) == VF_STRU ? static_cast<int>(VF_STRU) : cGetVF(type);
}

const char *cGetVFStri(AsnType *type) {
    if (getTypeMainType(type) == TYP_REAL &&
        testCGenerationOption(getModuleOfType(type), CGEN_REAL))
        return "VF_REAL";
    const int form = cGetVF(type);
    return form < VF_COUNT ? vfIdArr[form] : "?!?";
}

bool cIsDefinedBaseType(AsnType *type) {
    TypeInfoCache *cache = getTypeInfoCache(type);
    if ((cache->known >> CACHE_DEFINED_BASE & 1u) != 0)
        return (cache->answers >> CACHE_DEFINED_BASE & 1u) != 0;
    bool result = isDefinedBaseType(type);
    if (!isDefinedType(type) && type->firstMainType == TYP_SYNONYM &&
        type->posModule != type->baseModule) {
        const bool createMeta = setCreateBETypMetaFlag(false);
        int depth = 0;
        result = leadsToDefinition(type, &depth);
        setCreateBETypMetaFlag(createMeta);
    }
    setTypeInfoCacheBetFlag(cache, CACHE_DEFINED_BASE, result);
    return result;
}

/* The answer depends on the module under work and on COMPONENTS OF, so it isn't kept with the
 * record. */
bool cIsBaseTypeGeneratedInCurrentModule(AsnType *type) {
    if (isBaseTypeInCurrentModule(type) || isInstantiatedType(type))
        return true;
    if (!cIsDefinedBaseType(type)) {
        AsnType *structure = structureTakenInto(type);
        return structure != nullptr && cIsBaseTypeGeneratedInCurrentModule(structure);
    }
    const bool createMeta = setCreateBETypMetaFlag(false);
    int depth = 0;
    const bool result = followToCurrentModule(type, nullptr, &depth);
    setCreateBETypMetaFlag(createMeta);
    return result;
}

void cForTypeGeneratedInCurrentModule(AsnType *type, Call<void(AsnType *defined)> func) {
    requireCall(func);
    int depth = 0;
    if (!isBaseTypeInCurrentModule(type))
        followToCurrentModule(type, func, &depth);
    else if (isSynonymType(type))
        forSynonymType(type, [&](AsnType *base) { func(base); });
    else
        forDefinedBaseType(type, [&](AsnType *base) { func(base); });
}
