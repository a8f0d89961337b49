#include "model/bounds.h"

#include <cstdio>

#include "model/iterators.h"
#include "model/modules.h"
#include "model/othermodule.h"
#include "model/typequeries.h"
#include "model/typevalues.h"
#include "model/valuequeries.h"

namespace {

constexpr std::int32_t MAX_INT32 = 0x7FFFFFFF;
constexpr std::int32_t MIN_INT32 = -MAX_INT32 - 1;

struct EnumBounds {
    sint64 rootLow = i64min();
    sint64 rootHigh = i64min();
    sint64 addLow = i64min();
    sint64 addHigh = i64min();
    bool markerMet = false;
    bool additionMet = false;
};

void widen(sint64 *low, sint64 *high, sint64 number) {
    if (i64cmp(number, *low) < 0)
        *low = number;
    if (i64cmp(number, *high) > 0)
        *high = number;
}

void findBounds(EnumBounds *bounds, AsnValue *value, int nbr) {
    if (isValueExtensionmarker(value)) {
        bounds->markerMet = true;
        return;
    }
    const sint64 number = int64Value(value);
    if (nbr == 0) {
        bounds->rootLow = number;
        bounds->rootHigh = number;
    } else if (!bounds->markerMet) {
        widen(&bounds->rootLow, &bounds->rootHigh, number);
    } else if (bounds->additionMet) {
        widen(&bounds->addLow, &bounds->addHigh, number);
    } else {
        bounds->additionMet = true;
        bounds->addLow = number;
        bounds->addHigh = number;
    }
}

void findItemBounds(EnumBounds *bounds, AsnType *type) {
    forEachNamedNumberExtMark(
        type, [&](AsnType *, AsnValue *value, int nbr) { findBounds(bounds, value, nbr); });
}

/* The items stand on another definition than the type's own. */
bool itemsAreElsewhere(AsnType *type) {
    if (!isSynonymType(type) && !isDefinedBaseType(type))
        return false;
    return type->posModule != type->baseModule || type->posRecord != type->baseRecord;
}

void convertBound(std::int32_t *out, sint64 bound, AsnType *type, const char *message) {
    if (out != nullptr)
        *out = int64ToInt32(bound, type->ownerModule, getTypeDefinitionLine(type), message);
}

} // namespace

std::int32_t int64ToInt32(sint64 value, AsnModule *module, std::int32_t line, const char *message) {
    if (i64ismax(value))
        return MAX_INT32;
    if (i64ismin(value))
        return MIN_INT32;
    std::int32_t number = 0;
    if (!i64tol(value, &number) && module != nullptr)
        int64Warning(module, line, message);
    return number;
}

void int64Warning(AsnModule *module, std::int32_t line, const char *message) {
    const Text path = getModuleFilePath(module);
    std::fprintf(stderr, "%s:%d:BET Warning\n", path.c_str(), line);
    std::fputs("** Type constraint information does not fit in 32 bits\n", stderr);
    if (message != nullptr)
        std::fprintf(stderr, "** %s\n", message);
}

void getSizeEndpoints(AsnType *type, std::int32_t *low, std::int32_t *high, std::int32_t *alloc) {
    const std::int32_t line = getTypeDefinitionLine(type);
    *low = int64ToInt32(type->lowerEndpoint, type->ownerModule, line, "Lower size endpoint");
    *high = int64ToInt32(type->upperEndpoint, type->ownerModule, line, "Upper size endpoint");
    const std::uint32_t limit = type->base.typeOptions.sizeLimit;
    *alloc = limit != 0 ? static_cast<std::int32_t>(limit) : *high;
}

void getInt64SizeEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc) {
    *low = type->lowerEndpoint;
    *high = type->upperEndpoint;
    const std::uint32_t limit = type->base.typeOptions.sizeLimit;
    *alloc = limit != 0 ? i64ultosint64(limit) : *high;
}

void getExtendedEnumeratedBounds(AsnType *type, std::int32_t *rootLow, std::int32_t *rootHigh,
                                 std::int32_t *addLow, std::int32_t *addHigh) {
    EnumBounds bounds;
    const auto findOfBase = [&](AsnType *base) { findItemBounds(&bounds, base); };
    if (!itemsAreElsewhere(type))
        findItemBounds(&bounds, type);
    else if (isBaseTypeInCurrentModule(type))
        forDefinedBaseType(type, findOfBase);
    else
        forTypeDefinedInAnotherModule(type, findOfBase);

    const char *const rootMessage = "Large enumeration item value";
    const char *const addMessage = "Large extension addition enumeration item";
    convertBound(rootLow, bounds.rootLow, type, rootMessage);
    convertBound(rootHigh, bounds.rootHigh, type, rootMessage);
    convertBound(addLow, bounds.addLow, type, addMessage);
    convertBound(addHigh, bounds.addHigh, type, addMessage);
}
