#include "cbet/forms.h"

#include <algorithm>

#include "cbet/control.h"
#include "cbet/vars.h"
#include "model/backend.h"
#include "model/compwalk.h"
#include "model/iterators.h"
#include "model/modules.h"
#include "model/typeextension.h"
#include "model/typequeries.h"
#include "model/typetables.h"
#include "model/typewalk.h"
#include "model/valuesets.h"
#include "options/ketracnf.h"
#include "store/ketramac.h"
#include "store/records.h"

namespace {

/* Bit of the type info cache. */
enum : int { CACHE_DEFINED_BASE = 1 };

bool isAnyForm(int form, int first, int last) {
    return form >= first && form <= last;
}

bool isStringType(AsnType *type) {
    return isStringKind(getTypeMainType(type));
}

bool isArray(AsnType *type) {
    return isListType(type) && getVF(type) == VF_STRU;
}

} // namespace

/* --- values --- */

/* A frame counts as one whatever form the type would have. */
int cGetVF(AsnType *type) {
    return cIsFrameType(type) ? static_cast<int>(VF_FRM) : getVF(type);
}

int cGetHomeVF(AsnType *type) {
    return getVF(type) == VF_STRU ? static_cast<int>(VF_STRU) : cGetVF(type);
}

/* VF_UI8 */
const char *cGetVFStri(AsnType *type) {
    if (getTypeMainType(type) == TYP_REAL &&
        testCGenerationOption(getModuleOfType(type), CGEN_REAL))
        return "VF_REAL";
    const int form = cGetVF(type);
    return form < VF_COUNT ? vfIdArr[form] : "?!?";
}

bool cIsSimpleType(AsnType *type) {
    const int form = getVF(type);
    return isAnyForm(form, VF_BOOL, VF_REAL128) || form == VF_NULL;
}

/* Value forms stand in groups: numbers, static strings, dynamic strings and lists, the rest. */
bool cIsPredefinedType(AsnType *type) {
    const int form = getVF(type);
    return isAnyForm(form, VF_BOOL, VF_REAL128) || isAnyForm(form, VF_DYNS0, VF_NULL) ||
           isAnyForm(form, VF_ANY, VF_BMPSTR);
}

/* Without "C-GENERATION=ANY-FUNCTIONS" an ANY is carried as it stands, as are those of a MORLA
   application. */
bool cIsFrameType(AsnType *type) {
    const int form = getVF(type);
    if (form == VF_FRM || testTypeOption(type, OPT_FRAME))
        return true;
    if (form != VF_ANY && form != VF_OPEN)
        return false;
    AsnModule *module = getModuleOfType(type);
    return isMorlaApplication(module) || !testCGenerationOption(module, CGEN_ANY_FUNCTIONS);
}

int cTableAccessFunctionIndexVF(AsnModule *module, long n) {
    constexpr long BYTE_VALUES = 256, SHORT_VALUES = 65536;
    if (testCGenerationOption(module, CGEN_OLD))
        return n <= SHORT_VALUES ? VF_I16 : VF_I32;
    if (n <= BYTE_VALUES)
        return VF_UI8;
    return n <= SHORT_VALUES ? VF_UI16 : VF_UI32;
}

bool cIsHeldInStructure(AsnType *type) {
    const int form = cGetVF(type);
    return isExtensibleEnumeratedList(type) ||
           (form >= VF_STAS0 && form < VF_COUNT && form != VF_FRM && form != VF_NULL);
}

bool cIsNumberByAddress(AsnType *type) {
    return getVF(type) == VF_I64 || isExtensibleEnumeratedList(type);
}

/* --- strings and lists --- */

/* The characters lie in the structure, or behind a pointer in it. */
bool cIsStaticString(AsnType *type) {
    return isStringType(type) && isAnyForm(getVF(type), VF_STAS0, VF_STAS);
}

bool cIsDynamicString(AsnType *type) {
    const int form = getVF(type);
    return isStringType(type) &&
           (isAnyForm(form, VF_DYNS0, VF_DYNS) || isAnyForm(form, VF_BMPSTR0, VF_BMPSTR));
}

/* The elements lie in the structure, behind a pointer, or each in an ASNHOME of a linked list. */
bool cIsStaticArray(AsnType *type) {
    return isArray(type) && !testTypeOption(type, OPT_DYNAMIC_ARRAY);
}

bool cIsDynamicArray(AsnType *type) {
    return isArray(type) && testTypeOption(type, OPT_DYNAMIC_ARRAY);
}

bool cIsLinkedList(AsnType *type) {
    return getVF(type) == VF_LIST;
}

/* --- control members --- */

namespace {

/* Strings that hold their length beside the characters; BMPString has forms of its own. */
bool isCountedString(AsnType *type) {
    const int form = getVF(type);
    if (!isStringType(type) || getTypeMainType(type) == TYP_UNISTR)
        return false;
    return isAnyForm(form, VF_STAS8, VF_STAS) ||
           (getTypeMainType(type) == TYP_BMPSTR ? isAnyForm(form, VF_BMPSTR8, VF_BMPSTR)
                                                : isAnyForm(form, VF_DYNS8, VF_DYNS));
}

} // namespace

/* compmask, choice or n */
bool cHasControlMember(AsnType *type) {
    switch (getTypeMainType(type)) {
    case TYP_SEQ:
    case TYP_SET:
        return !cIsHomeComponent(type) && isOptionalTypeComps(type) && getVFSize(type) > VF_NONE;
    case TYP_SEQOF:
    case TYP_SETOF:
        return getVF(type) == VF_STRU && getVFSize(type) > VF_NONE;
    case TYP_CHOICE:
        return !cIsHomeComponent(type);
    default:
        return isCountedString(type);
    }
}

bool cIsControlMember(AsnType *type) {
    return cHasControlMember(type) && !cIsHometab(type);
}

/* Components count as a walk shows them, those of COMPONENTS OF too. */
int cNrOfMaskWords(AsnType *type) {
    if (!isSequenceOrSetKind(getTypeMainType(type)))
        return 0;
    const int words = (nrOfWalkedComps(type) + CONTROL_WORD_BITS - 1) / CONTROL_WORD_BITS;
    return std::max(words, 1);
}

const char *cBitMacro(AsnType *type) {
    return cNrOfMaskWords(type) > 1 || getVFSize(type) == VF_I32 ? "BITL" : "BIT";
}

const char *cControlSuffix(AsnType *type) {
    return getVFSize(type) == VF_I32 ? "L" : "";
}

/* Wide enough for the greatest size that the constraint lets through. */
int cIgnoredCountVF(AsnType *type) {
    const bool isArrayOrString = cIsStaticString(type) || cIsDynamicString(type) || isArray(type);
    if (!isArrayOrString || getTypeOptions(type)->sizeLimitMode != 0)
        return VF_NONE;
    sint64 low, high, alloc;
    getInt64SizeEndpoints(type, &low, &high, &alloc);
    if (i64cmp(high, alloc) <= 0)
        return VF_NONE;
    if (i64cmpl(high, 0xFF) < 0)
        return VF_UI8;
    return i64cmpl(high, 0xFFFF) < 0 ? VF_UI16 : VF_UI32;
}

/* --- homes --- */

/* An ASNHOME holds numbers, strings and lists itself. */
bool cIsPtrAsnHomeMember(AsnType *type) {
    const int form = cGetHomeVF(type);
    return isAnyForm(form, VF_STAS0, VF_STAS) || form == VF_STRU ||
           isAnyForm(form, VF_OBJI, VF_EXTERNAL_1994);
}

bool cIsHomeComponent(AsnType *type) {
    return testTypeOption(type, OPT_COMPS_AS_POINTERS);
}

/* The entry functions of such an application take their variables one by one. */
bool cIsHometab(AsnType *type) {
    return cIsInEntryFunction() && isEntryType(type) && isMorlaApplication(getModuleOfType(type));
}

bool cHasCompHomes(AsnType *type) {
    return cIsHomeComponent(type) || cIsHometab(type);
}

bool cIsAsnHomeComp(AsnType *father, AsnType *comp) {
    if (father != nullptr && (cIsLinkedList(father) || cHasCompHomes(father)))
        return true;
    return testTypeOption(comp, OPT_HOME);
}

bool cIsPointerMember(AsnType *type) {
    return testTypeOption(type, OPT_POINTER) || testTypeOption(type, OPT_HOME);
}

/* --- definitions --- */

namespace {

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

/* An ASNHOME says nothing of what it holds, so that its structure needs a name. */
bool cHasOwnDefinition(AsnType *father, AsnType *comp) {
    if (cIsPredefinedType(comp))
        return false;
    return cIsLinkedList(father) || (testTypeOption(comp, OPT_HOME) && !isTypeExtensionmarker(comp));
}
