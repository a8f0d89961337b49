#include "model/bounds.h"

#include <cstdio>

#include "model/modules.h"
#include "model/typequeries.h"

namespace {

constexpr std::int32_t MAX_INT32 = 0x7FFFFFFF;
constexpr std::int32_t MIN_INT32 = -MAX_INT32 - 1;

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

void getInt64SizeEndpoints(AsnType *type, sint64 *low, sint64 *high, sint64 *alloc) {
    *low = type->lowerEndpoint;
    *high = type->upperEndpoint;
    const std::uint32_t limit = type->base.typeOptions.sizeLimit;
    *alloc = limit != 0 ? i64ultosint64(limit) : *high;
}

